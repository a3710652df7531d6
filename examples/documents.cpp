// SPDX-License-Identifier: GPL-3.0-only
// The way of a cue list through a studio: a file becomes a table, the table events, the events documents.

#include "Reel.h"

#include "export/frame/EventExporterFactory.h"

#include <iostream>

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

std::shared_ptr<TimeInfo> reelTwo()
{
    _TCDef pal;
    pal.undefined = false;
    return std::make_shared<TimeInfo> (pal, TCToolbox::tcTimeFromString ("02:00:00:00"));
}

/** The table of a file, null for a file that can't be read. The importer reads it while it is made. */
std::shared_ptr<EventFileImporter> readTable (const juce::File& file, const Project& project)
{
    juce::String error; // added to by the importer; empty means that the table is good
    auto importer = EventFileImporterFactory::fileImporterWithFilepath (file.getFullPathName(), error, {},
                                                                        project.timeInfo);

    if (importer == nullptr)
        error = "No importer takes " + file.getFileExtension();
    if (error.isNotEmpty())
        std::cout << error << "\n";

    return error.isEmpty() ? importer : nullptr;
}

/** Nothing is guessed: a cell that can't be understood is a problem that the dialogue editor has to hear of. */
void addEvents (Project& project, EventFileImporter& table)
{
    const EventRowReader reader (project.timeInfo, project.characters);
    const auto result = reader.read (table);

    for (const auto& problem : result.problems)
        std::cout << "Row " << problem.row + 1 << ", " << problem.column << ": " << problem.message << "\n";

    project.list->addEvents (result.events, false); // sorts them in; an import is no step of the user's
    std::cout << result.events.size() << " events, " << project.characters->characters().size()
              << " characters, first cue at " << project.list->filteredEvents.front()->getStartTCString()
              << "\n";
}

/** One document of everything that the filter lets through, in the order that the user sees. */
void write (const Project& project, EventExportType type, const juce::File& folder)
{
    const auto settings = std::make_shared<EventExportSettingsSet>();
    settings->exportType = type;
    settings->events = project.list->sortedFilteredEvents;
    settings->projectSettings.projectName = project.name;
    settings->outputDirectory = folder.getFullPathName();
    settings->fileName = "Reel 2";
    settings->options[EventExportCSVDelimiterKey] = 1; // comma
    settings->options[EventExportCSVTemplateKey] = 0;  // the library's own table
    settings->options[EventExportAppVersionKey] = "1.0";

    const auto error = EventExporterFactory::eventExporter (settings)->exportEventsByTimecode();
    std::cout << exportTypeName (type) << ": " << (error.isEmpty() ? "written" : error) << "\n";
}

} // namespace

int main (int, char** argv)
{
    UserDefaultsRegistrar::registerUserDefaults(); // once, before any event is made
    auto project = Project::createEmpty (reelTwo());
    project.name = "Harbour Lights";
    project.makeCurrent(); // its cast is the one that events look their characters up in

    const auto table = readTable (example::fileFromArgument (argv[1]), project);

    if (table == nullptr)
        return 1;

    addEvents (project, *table);
    const auto folder = example::fileFromArgument (argv[2]);
    for (const auto type : { EventExportTypeCSV, EventExportTypeExcel, EventExportTypeWord })
        write (project, type, folder);
}
