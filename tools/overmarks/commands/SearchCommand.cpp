// SPDX-License-Identifier: GPL-3.0-only
// overmarks search: what the search field of an application would find.
#include "FilterOptions.h"
#include "ListSource.h"
#include "ProjectForm.h"
#include "TextTable.h"
#include "commands/Commands.h"

#include <memory>

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

using Results = std::vector<std::shared_ptr<EventSearchResultProxy>>;

struct SearchOptions
{
    std::string list;
    std::string query;
    ListOptions listOptions;
    FilterOptions filter;
};

bool isGroup (const EventSearchResultProxy& result) { return result.type == CueGroupResultType; }

json asJSON (const EventSearchResultProxy& result)
{
    auto identities = json::array();

    for (const auto& event : result.events)
        identities.push_back (event->getUuid().toStdString());

    return { { "type", result.type },
             { "text", result.text.toStdString() },
             { "startTC", result.startTC.toStdString() },
             { "endTC", result.endTC.toStdString() },
             { "cueNumber", result.cueNumber.toStdString() },
             { "character", result.character.toStdString() },
             { "actor", result.actor.toStdString() },
             { "events", identities } };
}

json documentOf (const Results& results)
{
    auto rows = json::array();

    for (const auto& result : results)
        rows.push_back (asJSON (*result));

    return { { "results", rows } };
}

std::string tableOf (const Results& results)
{
    constexpr int whole = TextTable::keepsItsWidth;
    TextTable table (std::vector<TextTable::Column> { { "Cue" },
                                                      { "Start TC", whole },
                                                      { "End TC", whole, 1 },
                                                      { "Type", whole, 2 },
                                                      { "Character", 9 },
                                                      { "Actor", 8, 3 },
                                                      { "Text", 20 } });

    for (const auto& result : results)
    {
        const auto& first = *result->events.front();
        const auto type =
            isGroup (*result) ? juce::String (result->events.size()) + " lines" : first.typeString();
        table.addRow ({ result->cueNumber, result->startTC, result->endTC, type, result->character,
                        result->actor, result->text },
                      ! isGroup (*result) && first.isHiddenByFilter());
    }

    return table.textForStandardOutput();
}

void searchList (const SearchOptions& options, Session& session)
{
    options.listOptions.applyToProcess (session);
    const auto project = loadList (options.list, options.listOptions, session);
    options.filter.applyTo (project, session);
    const auto results = project.list->itemsForSearchString (juce::String (options.query));

    if (session.wantsJSON)
        session.data (documentOf (results));
    else
        session.data (tableOf (results));

    session.say (counted (results.size(), "result"));
}

} // namespace

void addSearchCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<SearchOptions>();
    auto* command = program.add_subcommand ("search", "Search cue numbers and texts of the list");
    command->footer ("A cue of several lines has a row for itself before the rows of its lines.\n"
                     "Example:\n  overmarks search film.overmarks tomorrow\n"
                     "  overmarks search film.overmarks \"#A12\" --character ANNA");
    command->add_option ("LIST", options->list, projectOrCueList)->required();
    command
        ->add_option ("QUERY", options->query,
                      "Part of a cue number or text in any case, or # and a whole cue number")
        ->required();
    options->filter.addTo (*command);
    options->listOptions.addTo (*command);
    session.addOutputOptions (*command);
    command->callback ([options, &session] { searchList (*options, session); });
}

} // namespace overmarks
