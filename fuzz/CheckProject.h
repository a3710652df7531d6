// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Application.h"

#include "list/Project.h"
#include "list/ProjectFile.h"
#include "list/ProjectJSON.h"

#include <string>

/** A project that was read from anywhere is sound, can be opened, and comes out of both of its stored forms as the same. */
inline void checkProject (ZEP::Overmarks::Project& project)
{
    using ZEP::Overmarks::ProjectFile;
    using ZEP::Overmarks::ProjectJSON;

    std::string bytes;
    law (ProjectFile::toBytes (project, bytes).isEmpty(), "a project that was read can be saved");
    ZEP::Overmarks::Project fromFile;
    law (ProjectFile::fromBytes (bytes, "saved", fromFile).isEmpty(), "a saved project can be opened");
    std::string again;
    law (ProjectFile::toBytes (fromFile, again).isEmpty() && again == bytes,
         "a project that is opened is saved as the same bytes");

    const auto text = ProjectJSON::toText (project);
    law (isUTF8 (text), "a project in JSON is UTF-8");
    law (ProjectJSON::toText (fromFile) == text, "a file keeps everything that JSON tells");
    ZEP::Overmarks::Project fromText;
    const auto complaint = ProjectJSON::fromText (text, fromText);

    // A file keeps a time reference that no picture has; JSON is strict with it.
    if (! complaint.startsWith ("timeInfo"))
    {
        if (complaint.isNotEmpty())
            std::cerr << complaint << std::endl;

        law (complaint.isEmpty(), "a project in JSON can be read");
        law (ProjectJSON::toText (fromText) == text, "a project in JSON is read and written as the same");
    }

    project.makeCurrent();
    const auto events = project.list->events.size();
    project.list->sortContentAndUpdateFilteredEvents();
    law (project.list->events.size() == events, "sorting loses nothing");

    for (const auto& event : project.list->events)
    {
        checkText (event->getText());
        checkText (event->getNotes());
        checkText (event->getEngineeringNotes());
        checkText (event->getCueNumber() + event->getStartTCString() + event->getEndTCString());
        checkText (event->description() + event->oneLineDescription());
    }

    law (isUTF8 (ProjectJSON::shownEvents (project.list->events)), "a table of events is UTF-8");
}
