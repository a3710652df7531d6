// SPDX-License-Identifier: GPL-3.0-only
// overmarks list: the table that an application would draw.
#include "AttributeText.h"
#include "FilterOptions.h"
#include "ListSource.h"
#include "ProjectForm.h"
#include "TextTable.h"
#include "commands/Commands.h"

#include "event/EventKeyValueEditor.h"
#include "list/ProjectJSON.h"

#include <memory>

namespace overmarks
{

using namespace ZEP::Overmarks;
using KV = EventKeyValueEditor;

namespace
{

struct ListCommandOptions
{
    std::string list;
    ListOptions listOptions;
    FilterOptions filter;
};

/** A column of the table and the attribute that fills it. */
struct ListColumn
{
    ListColumn (const TextTable::Column& columnOfTable, const juce::String& key)
        : column (columnOfTable),
          attribute (&attributeWithKey (key))
    {
    }

    TextTable::Column column;
    const EventAttribute* attribute;
};

const std::vector<ListColumn>& listColumns()
{
    constexpr int whole = TextTable::keepsItsWidth;
    static const std::vector<ListColumn> columns {
        { { "Cue" }, KV::KV_CueNumber },
        { { "Start TC", whole }, KV::KV_StartTCString },
        { { "End TC", whole, 2 }, KV::KV_EndTCString },
        { { "Type", whole, 3 }, KV::KV_Type },
        { { "Character", 9 }, KV::KV_CharacterID },
        { { "Actor", 8, 4 }, KV::KV_Actor },
        { { "Text", 20 }, KV::KV_Text },
        { { "Notes", 10, 5 }, KV::KV_Notes },
        { { "Reason", 8, 6 }, KV::KV_Reason },
        { { "Takes", whole, 7 }, KV::KV_NumRecordedTakes },
        { { "Done", whole, 1 }, KV::KV_Done },
    };
    return columns;
}

std::string tableOf (const EventArray::Events& events)
{
    std::vector<TextTable::Column> columns;

    for (const auto& shown : listColumns())
        columns.push_back (shown.column);

    TextTable table (columns);

    for (const auto& event : events)
    {
        std::vector<juce::String> cells;

        for (const auto& shown : listColumns())
            cells.push_back (attributeText (*event, *shown.attribute));

        table.addRow (cells, event->isHiddenByFilter());
    }

    return table.textForStandardOutput();
}

void showList (const ListCommandOptions& options, Session& session)
{
    options.listOptions.applyToProcess (session);
    const auto project = loadList (options.list, options.listOptions, session);
    options.filter.applyTo (project, session);
    const auto& shown = project.list->sortedFilteredEvents;

    if (session.wantsJSON)
        ProjectJSON::writeShownEvents (shown,
                                       [&session] (const std::string& part) { session.partOfJSON (part); });
    else
        session.data (tableOf (shown));

    session.say (counted (shown.size(), "event"));
}

} // namespace

void addListCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<ListCommandOptions>();
    auto* command = program.add_subcommand ("list", "Show the list as a table");
    command->footer ("Example:\n  overmarks list film.overmarks --sort CueNumber");
    command->add_option ("LIST", options->list, projectOrCueList)->required();
    options->filter.addTo (*command);
    options->listOptions.addTo (*command);
    session.addOutputOptions (*command);
    command->callback ([options, &session] { showList (*options, session); });
}

} // namespace overmarks
