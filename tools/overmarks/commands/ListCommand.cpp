// SPDX-License-Identifier: GPL-3.0-only
// overmarks list: the table that an application would draw.
#include "AttributeText.h"
#include "FilterOptions.h"
#include "ListSource.h"
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

std::string tableOf (const EventArray::Events& events)
{
    struct Column
    {
        const char* title;
        const juce::String& key;
    };
    static const Column columns[] = {
        { "Cue", KV::KV_CueNumber },
        { "Start TC", KV::KV_StartTCString },
        { "End TC", KV::KV_EndTCString },
        { "Type", KV::KV_Type },
        { "Character", KV::KV_CharacterID },
        { "Actor", KV::KV_Actor },
        { "Text", KV::KV_Text },
        { "Notes", KV::KV_Notes },
        { "Reason", KV::KV_Reason },
        { "Takes", KV::KV_NumRecordedTakes },
        { "Done", KV::KV_Done },
    };
    std::vector<juce::String> titles;

    for (const auto& column : columns)
        titles.emplace_back (column.title);

    TextTable table (titles);

    for (const auto& event : events)
    {
        std::vector<juce::String> cells;

        for (const auto& column : columns)
            cells.push_back (attributeText (*event, attributeWithKey (column.key)));

        table.addRow (cells, event->isHiddenByFilter());
    }

    return table.textForStandardOutput();
}

void showList (const ListCommandOptions& options, Session& session)
{
    options.listOptions.applyToProcess();
    const auto project = loadList (options.list, options.listOptions, session);
    options.filter.applyTo (*project.list);
    const auto& shown = project.list->sortedFilteredEvents;

    if (session.wantsJSON)
        session.data (ProjectJSON::shownEvents (shown));
    else
        session.data (tableOf (shown));

    session.say (juce::String (shown.size()) + " events");
}

} // namespace

void addListCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<ListCommandOptions>();
    auto* command = program.add_subcommand ("list", "Show the list as a table");
    command->footer ("Example:\n  overmarks list film.json --sort CueNumber");
    command->add_option ("LIST", options->list, "Project in JSON or cue list")->required();
    options->filter.addTo (*command);
    options->listOptions.addTo (*command);
    session.addOutputOptions (*command);
    command->callback ([options, &session] { showList (*options, session); });
}

} // namespace overmarks
