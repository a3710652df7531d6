// SPDX-License-Identifier: GPL-3.0-only
#include "DocumentOptions.h"

#include "OptionValues.h"
#include "Suggestion.h"

#include "core/system/SystemUtility.h"

#include <algorithm>
#include <type_traits>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

// Each in the order of the numbers that the settings have for it, from 1.
const std::vector<std::string> delimiters { "comma", "semicolon", "tab" };
const std::vector<std::string> layouts { "director", "actor", "engineer" };
const std::vector<std::string> papers { "a4", "letter" };
const std::vector<std::string> engines { "browser", "drawn" };

int numberOf (const std::string& option, const std::string& value, const std::vector<std::string>& known)
{
    const auto found = std::find (known.begin(), known.end(), value);

    if (found == known.end())
        refuseValue (option, value, known);

    return static_cast<int> (found - known.begin()) + 1;
}

/** The number that an option names; else the one that the project keeps, as far as it is one; else the first. */
int numberOf (const std::string& option, const std::string& value, int kept,
              const std::vector<std::string>& known)
{
    if (! value.empty())
        return numberOf (option, value, known);

    return kept > 0 && kept <= static_cast<int> (known.size()) ? kept : 1;
}

/** What an option says; else what the project keeps. */
juce::String givenOr (const std::string& option, const juce::String& kept)
{
    return option.empty() ? kept : juce::String (option);
}

/** The events as the list shows them, under the identifiers of their characters. */
std::map<juce::String, EventArray::Events> groupedByCharacter (const EventArray::Events& events)
{
    std::map<juce::String, EventArray::Events> groups;

    for (const auto& event : events)
        groups[event->getCharacterID()].push_back (event);

    return groups;
}

} // namespace

template <typename Value>
CLI::Option* DocumentOptions::add (CLI::App& command, const std::string& name, Value& value,
                                   const std::string& explanation)
{
    CLI::Option* option = nullptr;

    if constexpr (std::is_same_v<Value, bool>)
        option = command.add_flag (name, value, explanation);
    else
        option = command.add_option (name, value, explanation);

    declared.push_back (option);
    return option;
}

void DocumentOptions::addTo (CLI::App& command)
{
    add (command, "--by-character", byCharacter, "One file for each character");
    add (command, "--combine", combine, "With --by-character: all characters in one file");
    takesOneOf (
        add (command, "--layout", layout, "director, actor or engineer (the project's, else director)"),
        layouts);
    add (command, "--browser", browser, "Name or path of the browser that prints (the installed one)")
        ->type_name ("FILE");
    takesOneOf (add (command, "--engine", engine, "browser or drawn: what a PDF is made with (browser)"),
                engines);
    add (command, "--take-numbers", takeNumbers, "Print boxes for the numbers of the takes");
    takesOneOf (
        add (command, "--delimiter", delimiter, "comma, semicolon or tab (the project's, else comma)"),
        delimiters);
    addSheetTo (command);
    add (command, "--company", company, "Production company");
    add (command, "--reel", reel, "Episode or reel");
    add (command, "--picture-version", pictureVersion, "Version of the picture");
    add (command, "--language", language, "Language code of the dialogue");
    add (command, "--yes", yes, "Agree to what the exporter would ask");
    addPolicyTo (command);
}

void DocumentOptions::addToOverview (CLI::App& command)
{
    addSheetTo (command);
    addPolicyTo (command);
}

/** The paper, and what stands at the head of every kind of sheet. */
void DocumentOptions::addSheetTo (CLI::App& command)
{
    takesOneOf (add (command, "--paper", paper, "a4 or letter (what is usual at this place)"), papers);
    add (command, "--title", title, "Title of the project (the project's, else the list's name)");
    add (command, "--studio", studio, "Sound studio");
    add (command, "--supervisor", supervisor, "Sound supervisor");
    add (command, "--timeline", timeline, "Name of the timeline");
}

void DocumentOptions::addPolicyTo (CLI::App& command)
{
    command.add_flag ("--force", policy.force, "Replace existing files");
    command.add_flag ("--dry-run", policy.dryRun, "Only say what would be written");
}

void DocumentOptions::check() const
{
    if (! delimiter.empty())
        numberOf ("--delimiter", delimiter, delimiters);
    if (! layout.empty())
        numberOf ("--layout", layout, layouts);
    if (! paper.empty())
        numberOf ("--paper", paper, papers);
    if (! engine.empty())
        numberOf ("--engine", engine, engines);
}

void DocumentOptions::sayWhatIsUnused (const std::vector<const DocumentFormat*>& formats,
                                       const std::string& names, const Session& session) const
{
    for (const auto* option : declared)
    {
        const auto name = option->get_name();
        const auto uses = [&name] (const DocumentFormat* format)
        { return std::find (format->options.begin(), format->options.end(), name) != format->options.end(); };

        if (option->count() > 0 && std::none_of (formats.begin(), formats.end(), uses))
            session.say (juce::String (name + " makes no difference to " + names));
    }

    if (combine && ! byCharacter)
        session.say ("--combine makes no difference without --by-character");
}

const DocumentFormat& DocumentOptions::madeAs (const DocumentFormat& format) const
{
    return engine == "drawn" && format.name == drawnCueSheet().name ? drawnCueSheet() : format;
}

bool DocumentOptions::hasFileForEachCharacter (const DocumentFormat& format) const
{
    return byCharacter && ! combine && format.canBeByCharacter();
}

std::shared_ptr<EventExportSettingsSet> DocumentOptions::settingsFor (const Project& project,
                                                                      const std::string& source,
                                                                      const DocumentFormat& format) const
{
    const auto& kept = project.documents;
    auto settings = std::make_shared<EventExportSettingsSet>();
    settings->exportType = format.type;
    settings->events = project.list->sortedFilteredEvents;
    settings->eventsByCharacter = groupedByCharacter (project.list->sortedFilteredEvents);
    settings->layout = static_cast<EventExportLayout> (numberOf ("--layout", layout, kept.layout, layouts));
    settings->showTakeNumbers = takeNumbers;
    settings->projectSettings = { source == "-" ? juce::String() : fileFromPath (source).getFullPathName(),
                                  givenOr (title, kept.title.isEmpty() ? project.name : kept.title),
                                  givenOr (studio, kept.studioName),
                                  givenOr (supervisor, kept.soundSupervisor),
                                  givenOr (company, kept.productionCompany) };
    settings->timelineSettings = { givenOr (timeline, kept.timelineName),
                                   givenOr (reel, kept.episodeReel),
                                   givenOr (pictureVersion, kept.pictureVersion),
                                   givenOr (language, kept.language),
                                   {} };
    settings->options[EventExportCSVDelimiterKey] =
        numberOf ("--delimiter", delimiter, kept.delimiter, delimiters);
    settings->options[EventExportCSVTemplateKey] = format.csvTemplate;
    settings->options[EventExportCombineIntoSingleFileKey] = combine;
    settings->options[EventExportAppVersionKey] = SystemUtility::executableVersion();

    if (! paper.empty())
        settings->options[EventExportPaperKey] = juce::String (paper);
    if (! browser.empty())
        settings->options[EventExportBrowserKey] = juce::String (browser);

    return settings;
}

} // namespace overmarks
