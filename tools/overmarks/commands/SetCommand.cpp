// SPDX-License-Identifier: GPL-3.0-only
// overmarks set: edits a list by the attributes' keys, as the cells of a table do.
#include "AttributeText.h"
#include "ListSource.h"
#include "Suggestion.h"
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

/** "KEY=VALUE", or "KEY~PART" in a filter. */
struct Term
{
    const EventAttribute* attribute;
    juce::String value;
    bool isPart;

    bool matches (Event& event) const
    {
        const auto text = attributeText (event, *attribute);
        return isPart ? text.containsIgnoreCase (value) : text == value;
    }
};

Term parseTerm (const std::string& option, const std::string& text, bool allowPart)
{
    const auto sign = text.find_first_of (allowPart ? "=~" : "=");

    if (sign == std::string::npos || sign == 0)
        throw WrongUsage (option + "\"" + text + "\" is not of the form KEY=VALUE"
                          + (allowPart ? " or KEY~PART" : ""));

    return { &attributeWithKey (juce::String (text.substr (0, sign))),
             juce::String::fromUTF8 (text.c_str() + sign + 1), text[sign] == '~' };
}

std::vector<Term> parseTerms (const std::string& option, const std::vector<std::string>& texts,
                              bool allowPart)
{
    std::vector<Term> terms;

    for (const auto& text : texts)
        terms.push_back (parseTerm (option, text, allowPart));

    return terms;
}

EventArray::Events chosenEvents (const EventArray& list, const SetOptions& options)
{
    const auto filter = parseTerms ("--where: ", options.where, true);
    EventArray::Events chosen;

    for (const auto& event : list.events)
    {
        bool isChosen = options.uuid.empty() ? event != list.fadeInEvent && event != list.fadeOutEvent
                                             : event->getUuid() == juce::String (options.uuid);

        for (const auto& term : filter)
            isChosen = isChosen && term.matches (*event);

        if (isChosen)
            chosen.push_back (event);
    }

    return chosen;
}

/** Sets one cell and tells how many undo steps that made. */
int setCell (const std::shared_ptr<Event>& event, const Term& term, Session& session)
{
    auto* history = UndoRedoHelpers::sharedUndoManager();
    history->clearUndoHistory();

    if (! EventKeyValueEditor (event).setValueForKey (attributeValue (*event, *term.attribute, term.value),
                                                      term.attribute->key, true))
        session.report ({ {},
                          0,
                          {},
                          event->oneLineDescription() + ": " + term.attribute->key + " can't be set on a "
                              + event->typeString() });

    const int steps = history->getUndoDescriptions().size();
    history->clearUndoHistory();
    return steps;
}

void editList (const SetOptions& options, Session& session)
{
    options.listOptions.applyToProcess();
    options.output.check ({ options.list });
    const auto changes = parseTerms ({}, options.assignments, false);
    const auto project = loadList (options.list, options.listOptions, session);
    const auto chosen = chosenEvents (*project.list, options);

    if (chosen.empty())
        throw CommandFailure ("No event of the list is meant; nothing was written");

    int steps = 0;

    for (const auto& event : chosen)
        for (const auto& change : changes)
            steps += setCell (event, change, session);

    project.list->sortContentAndUpdateFilteredEvents();
    options.output.write (project, session);
    session.say (juce::String (chosen.size()) + " events, " + juce::String (steps) + " steps");

    if (session.wantsJSON)
        session.data (json { { "project", options.output.path },
                             { "events", chosen.size() },
                             { "steps", steps },
                             { "problems", session.problemsAsJSON() } });
}

} // namespace

void addSetCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<SetOptions>();
    auto* command =
        program.add_subcommand ("set", "Edit events by attribute; says how many undo steps that makes");
    command->footer (
        "Example:\n  overmarks set film.json -o film.json --where CharacterID=ANNA Done=yes Notes=\"softer, please\"");
    command->add_option ("LIST", options->list, "Project in JSON or cue list")->required();
    command->add_option ("ASSIGNMENT", options->assignments, "KEY=VALUE, see overmarks keys")->required();
    command
        ->add_option ("--where", options->where,
                      "KEY=VALUE or KEY~PART: only events where that holds; repeatable")
        ->allow_extra_args (false);
    command->add_option ("--uuid", options->uuid, "Only the event with this identity");
    options->output.addTo (*command, true);
    options->listOptions.addTo (*command);
    session.addOutputOptions (*command);
    command->callback ([options, &session] { editList (*options, session); });
}

} // namespace overmarks
