// SPDX-License-Identifier: GPL-3.0-only
#include "DocumentOrder.h"

#include "Suggestion.h"

#include "core/system/SystemUtility.h"
#include "export/EventCSVExporter.h"
#include "export/frame/ByCharacterWalk.h"
#include "export/frame/EventExporterFactory.h"
#include "export/frame/OutputFileNames.h"

#include <unistd.h>

#include <iostream>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

void refuseToReplaceSource (const juce::File& file, const std::string& source)
{
    if (source != "-" && fileFromPath (source).getLinkedTarget() == file.getLinkedTarget())
        throw CommandFailure (file.getFullPathName()
                              + ": the document would replace the list that it is made from");
}

/** Asks on a terminal; without one there is nobody to ask, and the answer is no. */
bool askOnTerminal (const juce::String& question)
{
    std::cerr << question << "\n[y/N] " << std::flush;

    if (isatty (STDIN_FILENO) == 0)
    {
        std::cerr << "no (--yes agrees)\n";
        return false;
    }

    std::string answer;
    std::getline (std::cin, answer);
    return answer == "y" || answer == "Y" || answer == "yes";
}

/** The events as the list shows them, under the identifiers of their characters. */
std::map<juce::String, EventArray::Events> groupedByCharacter (const EventArray::Events& events)
{
    std::map<juce::String, EventArray::Events> groups;

    for (const auto& event : events)
        groups[event->getCharacterID()].push_back (event);

    return groups;
}

std::vector<juce::File> filesOf (const EventExportSettingsSet& settings, const DocumentFormat& format,
                                 bool byCharacter)
{
    if (! byCharacter)
        return { OutputFileNames (settings.outputDirectory, settings.fileName, format.extension).single() };

    const ByCharacterWalk walk (settings, format.extension);

    if (walk.isCombined())
        return { walk.singleFile() };

    std::vector<juce::File> files;

    for (const auto& block : walk.blocks())
        files.push_back (block.file);

    return files;
}

} // namespace

void DocumentOrder::addTo (CLI::App& command)
{
    command.add_flag ("--by-character", byCharacter, "One file for each character");
    command.add_flag ("--combine", combine, "With --by-character: all characters in one file");
    command.add_flag ("--take-numbers", takeNumbers, "Print boxes for the numbers of the takes");
    command.add_option ("--delimiter", delimiter, "comma, semicolon or tab (comma)");
    command.add_option ("--title", title, "Title of the project (the list's name)");
    command.add_option ("--studio", studio, "Sound studio");
    command.add_option ("--supervisor", supervisor, "Sound supervisor");
    command.add_option ("--company", company, "Production company");
    command.add_option ("--timeline", timeline, "Name of the timeline");
    command.add_option ("--reel", reel, "Episode or reel");
    command.add_option ("--picture-version", pictureVersion, "Version of the picture");
    command.add_option ("--language", language, "Language code of the dialogue");
    command.add_flag ("--yes", yes, "Agree to what the exporter would ask");
    command.add_flag ("--force", policy.force, "Replace existing files");
    command.add_flag ("--dry-run", policy.dryRun, "Only say what would be written");
}

int DocumentOrder::delimiterNumber() const
{
    const std::vector<std::string> names { "comma", "semicolon", "tab" };

    for (std::size_t i = 0; i < names.size(); ++i)
        if (names[i] == delimiter)
            return static_cast<int> (i) + 1;

    throw WrongUsage ("--delimiter: \"" + delimiter + "\" is none of comma, semicolon, tab."
                      + didYouMean (delimiter, names));
}

juce::String DocumentOrder::titleFor (const Project& project) const
{
    return title.empty() ? project.name : juce::String (title);
}

std::shared_ptr<EventExportSettingsSet> DocumentOrder::settingsFor (const Project& project,
                                                                    const std::string& source,
                                                                    const DocumentFormat& format) const
{
    auto settings = std::make_shared<EventExportSettingsSet>();
    settings->exportType = format.type;
    settings->events = project.list->sortedFilteredEvents;
    settings->eventsByCharacter = groupedByCharacter (project.list->sortedFilteredEvents);
    settings->showTakeNumbers = takeNumbers;
    settings->projectSettings = { source == "-" ? juce::String() : fileFromPath (source).getFullPathName(),
                                  titleFor (project), studio, supervisor, company };
    settings->timelineSettings = { timeline, reel, pictureVersion, language, {} };
    settings->options[EventExportCSVDelimiterKey] = delimiterNumber();
    settings->options[EventExportCSVTemplateKey] = format.csvTemplate;
    settings->options[EventExportCombineIntoSingleFileKey] = combine;
    settings->options[EventExportAppVersionKey] = SystemUtility::executableVersion();
    return settings;
}

std::vector<juce::File> DocumentOrder::write (const Project& project, const std::string& source,
                                              const DocumentFormat& format, const juce::File& folder,
                                              const juce::String& fileName) const
{
    auto settings = settingsFor (project, source, format);
    settings->outputDirectory = folder.getFullPathName();
    settings->fileName = fileName;
    const auto files = filesOf (*settings, format, byCharacter);

    for (const auto& file : files)
    {
        refuseToReplaceSource (file, source);
        refuseToReplace (file, policy);
    }

    if (policy.dryRun)
        return files;

    const auto exporter = EventExporterFactory::eventExporter (settings);

    if (auto* csv = dynamic_cast<EventCSVExporter*> (exporter.get()))
        csv->askToContinue = [this] (const juce::String&, const juce::String& question)
        { return yes || askOnTerminal (question); };

    const auto error = byCharacter ? exporter->exportEventsByCharacter() : exporter->exportEventsByTimecode();

    if (error.isNotEmpty())
        throw CommandFailure (error);

    return files;
}

} // namespace overmarks
