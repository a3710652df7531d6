// SPDX-License-Identifier: GPL-3.0-only
// What the examples begin with; documents.cpp does it step by step, and says what can go wrong.
#pragma once

#include "core/timecode/TCToolbox.h"
#include "import/frame/EventFileImporterFactory.h"
#include "import/frame/EventRowReader.h"
#include "list/Project.h"
#include "preferences/UserDefaultsRegistrar.h"

#include <stdexcept>

namespace example
{

/** A file or folder as it was typed. */
inline juce::File fileFromArgument (const char* argument)
{
    return juce::File::getCurrentWorkingDirectory().getChildFile (juce::String::fromUTF8 (argument));
}

/** The cue list of a reel that starts at 02:00:00:00 and has 25 frames a second, as the project at work. */
inline ZEP::Overmarks::Project openReel (const juce::File& list)
{
    using namespace ZEP::Core;
    using namespace ZEP::Overmarks;
    UserDefaultsRegistrar::registerUserDefaults();

    _TCDef pal; // its rate is 25
    pal.undefined = false;
    auto project =
        Project::createEmpty (std::make_shared<TimeInfo> (pal, TCToolbox::tcTimeFromString ("02:00:00:00")));
    project.name = "Harbour Lights";
    project.makeCurrent();

    juce::String error;
    const auto importer = EventFileImporterFactory::fileImporterWithFilepath (list.getFullPathName(), error,
                                                                              {}, project.timeInfo);

    if (importer == nullptr || error.isNotEmpty())
        throw std::runtime_error ("This cue list can't be read. " + error.toStdString());

    const EventRowReader reader (project.timeInfo, project.characters);
    project.list->addEvents (reader.read (*importer).events, false); // no step of the user's
    return project;
}

} // namespace example
