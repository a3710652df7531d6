// SPDX-License-Identifier: GPL-3.0-only
// overmarks set: edits a list by the attributes' keys, as the cells of a table do.
#include "AttributeText.h"
#include "EventMatcher.h"
#include "ListSource.h"
#include "OptionValues.h"
#include "ProjectForm.h"
#include "commands/Commands.h"
#include "commands/ProjectOutput.h"

#include "core/undo/UndoRedoHelpers.h"
#include "event/EventKeyValueEditor.h"

#include <memory>
#include <utility>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

struct SetOptions
{
    std::string list;
    std::vector<std::string> assignments;
    std::vector<std::string> where;
    std::string uuid;
    ListOptions listOptions;
    ProjectOutput output;
};

/** "KEY=VALUE": the new value of a cell. */
struct Change
{
    const EventAttribute* attribute;
    juce::String value;
};

std::vector<Change> parseChanges (const std::vector<std::string>& assignments)
{
    std::vector<Change> changes;

    for (const auto& text : assignments)
    {
        const auto sign = text.find ('=');

        if (sign == std::string::npos || sign == 0)
            throw WrongUsage ("\"" + text + "\" is not of the form KEY=VALUE");

        changes.push_back ({ &settableAttributeWithKey (juce::String (text.substr (0, sign))),
                             juce::String (text.substr (sign + 1)) });
    }

    return changes;
}

EventArray::Events chosenEvents (const EventArray& list, const std::string& uuid,
                                 const std::vector<EventMatcher>& conditions)
{
    EventArray::Events chosen;

    for (const auto& event : list.events)
    {
        const bool isMeant = uuid.empty() ? event != list.fadeInEvent && event != list.fadeOutEvent
                                          : event->getUuid() == juce::String (uuid);

        if (isMeant && matchesAll (conditions, *event))
            chosen.push_back (event);
    }

    return chosen;
}

/** Sets one cell and tells how many undo steps that made. */
int setCell (const std::shared_ptr<Event>& event, const Change& change, Session& session)
{
    auto* history = UndoRedoHelpers::sharedUndoManager();
    history->clearUndoHistory();

    if (! EventKeyValueEditor (event).setValueForKey (
            attributeValue (*event, *change.attribute, change.value), change.attribute->key, true))
        session.report ({ {},
                          0,
                          {},
                          event->oneLineDescription() + ": " + change.attribute->key + " can't be set on a "
                              + event->typeString() });

    const int steps = history->getUndoDescriptions().size();
    history->clearUndoHistory();
    return steps;
}

void editList (const SetOptions& options, Session& session)
{
    options.listOptions.applyToProcess (session);
    const auto changes = parseChanges (options.assignments);
    std::vector<EventMatcher> conditions;

    for (const auto& condition : options.where)
        conditions.emplace_back ("--where", condition);

    options.output.check ({ options.list }, isProjectFile (options.list, options.listOptions));
    const auto project = loadList (options.list, options.listOptions, session);
    const auto chosen = chosenEvents (*project.list, options.uuid, conditions);

    if (chosen.empty())
        throw CommandFailure ("No event of the list is meant; nothing was written");

    int steps = 0;

    for (const auto& event : chosen)
        for (const auto& change : changes)
            steps += setCell (event, change, session);

    project.list->sortContentAndUpdateFilteredEvents();
    options.output.write (project, session);
    session.say (counted (chosen.size(), "event") + ", "
                 + counted (static_cast<std::size_t> (steps), "step"));
    options.output.tell (session, { { "events", chosen.size() }, { "steps", steps } });
}

} // namespace

void addSetCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<SetOptions>();
    auto* command =
        program.add_subcommand ("set", "Edit events by attribute; says how many undo steps that makes");
    command->footer (
        "Example:\n  overmarks set film.overmarks -o film.overmarks --where CharacterID=ANNA Done=yes Notes=\"softer, please\"");
    command->add_option ("LIST", options->list, projectOrCueList)->required();
    takesOneOf (
        command->add_option ("ASSIGNMENT", options->assignments, "KEY=VALUE, see overmarks keys")->required(),
        withEqualsSign (settableAttributeKeys()));
    takesOneOf (command
                    ->add_option ("--where", options->where,
                                  "KEY=VALUE or KEY~PART: only events where that holds; repeatable")
                    ->allow_extra_args (false),
                withEqualsSign (attributeKeys()))
        ->type_name ("FILTER");
    command->add_option ("--uuid", options->uuid, "Only the event with this identity")->type_name ("ID");
    options->output.addTo (*command);
    options->listOptions.addTo (*command);
    session.addOutputOptions (*command);
    command->callback ([options, &session] { editList (*options, session); });
}

} // namespace overmarks
