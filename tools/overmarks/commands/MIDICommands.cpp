// SPDX-License-Identifier: GPL-3.0-only
// overmarks midi: the MIDI messages that fire events, and what comes in. They belong to the user, not to a project.
#include "ListSource.h"
#include "ProjectForm.h"
#include "TextTable.h"
#include "commands/Commands.h"
#include "commands/MIDITriggers.h"

#include "midi/MIDITriggerEventFile.h"
#include "midiio/MIDIMessageText.h"
#include "midiio/MIDISystem.h"

#include <memory>
#include <utility>

namespace overmarks
{

using namespace ZEP::Overmarks;
using ZEP::MIDIIO::MIDIMessageText;
using ZEP::MIDIIO::MIDISystem;

namespace
{

struct BindOptions
{
    std::string list;
    std::string message;
    std::string uuid;
    std::string label;
    bool isDryRun = false;
    ListOptions listOptions;
};

struct UnbindOptions
{
    std::string message;
    bool isDryRun = false;
};

juce::String textOf (const std::string& text) { return juce::String::fromUTF8 (text.c_str()); }

juce::String counted (std::size_t number, const juce::String& one)
{
    return juce::String (number) + " " + one + (number == 1 ? "" : "s");
}

/** The stored triggers of somebody who is going to replace the file. */
MIDITriggerEventFile::Triggers triggersToEdit (const Session& session)
{
    auto stored = storedMIDITriggers();

    if (stored.isUnreadable)
        throw CommandFailure (stored.problem + "; nothing was changed");
    if (stored.problem.isNotEmpty())
        session.say (stored.problem);

    return std::move (stored.triggers);
}

void store (const MIDITriggerEventFile::Triggers& triggers)
{
    if (const auto written = MIDITriggerEventFile::write (triggers); written.failed())
        throw CommandFailure (written.getErrorMessage());
}

void requireMessage (const std::string& message)
{
    if (! MIDIMessageText::isMessageText (message))
        throw WrongUsage ("--message: \"" + textOf (message)
                          + "\" is no MIDI message. Write it as \"NoteOn 1 60\", \"NoteOff 1 60\", "
                            "\"CC 1 64\", \"PC 1 5\" or \"MMC 02\": channels count from 1, the rest from 0");
}

/** Takes a message's triggers out of the list and tells how many there were. */
std::size_t forget (MIDITriggerEventFile::Triggers& triggers, const std::string& message)
{
    return std::erase_if (triggers,
                          [&message] (const auto& trigger) { return trigger->triggerMessage == message; });
}

// ---- midi list ------------------------------------------------------------------------------------------------------

json asJSON (const MIDITriggerEvent& trigger)
{
    return { { "message", trigger.triggerMessage },
             { "label", trigger.label },
             { "colour", trigger.colour.toDisplayString (true).toLowerCase().toStdString() },
             { "actionIndex", trigger.actionIndex },
             { "event",
               { { "uuid", trigger.event->getUuid().toStdString() },
                 { "type", static_cast<int> (trigger.event->getType()) },
                 { "cueNumber", trigger.event->getCueNumber().toStdString() },
                 { "text", trigger.event->getText().getText().toStdString() } } } };
}

std::string tableOf (const MIDITriggerEventFile::Triggers& triggers)
{
    TextTable table ({ { "Message", TextTable::keepsItsWidth },
                       { "Label" },
                       { "Type", TextTable::keepsItsWidth, 1 },
                       { "Cue" },
                       { "Text", 20 },
                       { "Event", TextTable::keepsItsWidth, 2 } });

    for (const auto& trigger : triggers)
        table.addRow ({ textOf (trigger->triggerMessage), textOf (trigger->label),
                        trigger->event->typeString(), trigger->event->getCueNumber(),
                        trigger->event->getText().getText(), trigger->event->getUuid() });

    return table.textForStandardOutput();
}

std::string tableOf (const std::vector<MIDISystem::Input>& inputs)
{
    TextTable table (std::vector<juce::String> { "Input", "Name" });

    for (const auto& input : inputs)
        table.addRow ({ textOf (input.identifier), textOf (input.name) });

    return table.textForStandardOutput();
}

void showMIDI (Session& session)
{
    const auto [triggers, problem, isUnreadable] = storedMIDITriggers();

    if (problem.isNotEmpty())
        session.report ({ {}, 0, {}, problem });

    const auto inputs = MIDISystem::sharedMIDISystem()->inputs();

    if (session.wantsJSON)
    {
        auto bindings = json::array(), devices = json::array();

        for (const auto& trigger : triggers)
            bindings.push_back (asJSON (*trigger));
        for (const auto& input : inputs)
            devices.push_back ({ { "identifier", input.identifier }, { "name", input.name } });

        session.data (json { { "file", MIDITriggerEventFile::path().toStdString() },
                             { "bindings", bindings },
                             { "inputs", devices },
                             { "problems", session.problemsAsJSON() } });
    }
    else
    {
        session.data (tableOf (triggers));

        if (! inputs.empty())
            session.data ("\n" + tableOf (inputs));
    }

    session.say (counted (triggers.size(), "binding") + ", " + counted (inputs.size(), "input"));
}

// ---- midi bind, midi unbind -----------------------------------------------------------------------------------------

std::shared_ptr<Event> eventWithIdentity (const EventArray& list, const std::string& uuid)
{
    for (const auto& event : list.events)
        if (event->getUuid() == textOf (uuid))
            return event;

    throw CommandFailure ("No event of the list has the identity " + textOf (uuid) + "; nothing was bound");
}

void bind (const BindOptions& options, Session& session)
{
    requireMessage (options.message);
    options.listOptions.applyToProcess (session);
    const auto project = loadList (options.list, options.listOptions, session);
    const auto trigger = std::make_shared<MIDITriggerEvent>();
    trigger->triggerMessage = options.message;
    trigger->label = options.label;
    trigger->event = eventWithIdentity (*project.list, options.uuid);

    auto triggers = triggersToEdit (session);
    const auto replaced = forget (triggers, options.message);
    triggers.push_back (trigger);

    if (! options.isDryRun)
        store (triggers);

    session.say (textOf (options.message) + (options.isDryRun ? " would fire " : " fires ")
                 + trigger->event->oneLineDescription()
                 + (replaced > 0 ? ", and no longer what it fired before" : ""));

    if (! session.wantsJSON)
        return;

    json document { { "file", MIDITriggerEventFile::path().toStdString() },
                    { "binding", asJSON (*trigger) },
                    { "replaced", replaced } };

    if (options.isDryRun)
        document["dryRun"] = true;

    session.data (document);
}

void unbind (const UnbindOptions& options, Session& session)
{
    const auto message = textOf (options.message);
    auto triggers = triggersToEdit (session);
    const auto removed = forget (triggers, options.message);

    if (removed == 0)
        throw CommandFailure ("Nothing is bound to \"" + message + "\"");

    if (options.isDryRun)
    {
        session.say ("Would write " + MIDITriggerEventFile::path() + ": " + message + " would fire nothing, "
                     + counted (removed, "binding") + " removed");
    }
    else
    {
        store (triggers);
        session.say (message + " fires nothing any more; " + counted (removed, "binding") + " removed");
    }

    if (! session.wantsJSON)
        return;

    json document { { "file", MIDITriggerEventFile::path().toStdString() }, { "removed", removed } };

    if (options.isDryRun)
        document["dryRun"] = true;

    session.data (document);
}

void addListTo (CLI::App& midi, Session& session)
{
    auto* command =
        midi.add_subcommand ("list", "Show what is bound to MIDI messages, and the inputs there are");
    command->footer ("Example:\n  overmarks midi list");
    session.addOutputOptions (*command);
    command->callback ([&session] { showMIDI (session); });
}

void addBindTo (CLI::App& midi, Session& session)
{
    auto options = std::make_shared<BindOptions>();
    auto* command = midi.add_subcommand ("bind", "Let a MIDI message fire an event of a list");
    command->footer ("Example:\n  overmarks midi bind film.overmarks --message \"NoteOn 1 60\" --uuid ID");
    command->add_option ("LIST", options->list, projectOrCueList)->required();
    command
        ->add_option ("--message", options->message, "NoteOn 1 60, NoteOff 1 60, CC 1 64, PC 1 5 or MMC 02")
        ->required()
        ->type_name ("MESSAGE");
    command->add_option ("--uuid", options->uuid, "The identity of the event, see overmarks list --json")
        ->required()
        ->type_name ("ID");
    command->add_option ("--label", options->label, "A text of your own for the binding");
    command->add_flag ("--dry-run", options->isDryRun, "Only say what would be bound");
    options->listOptions.addTo (*command);
    session.addOutputOptions (*command);
    command->callback ([options, &session] { bind (*options, session); });
}

void addUnbindTo (CLI::App& midi, Session& session)
{
    auto options = std::make_shared<UnbindOptions>();
    auto* command = midi.add_subcommand ("unbind", "Let a MIDI message fire nothing any more");
    command->footer ("Example:\n  overmarks midi unbind --message \"NoteOn 1 60\"");
    command->add_option ("--message", options->message, "As overmarks midi list shows it")
        ->required()
        ->type_name ("MESSAGE");
    command->add_flag ("--dry-run", options->isDryRun, "Only say what would be unbound");
    session.addOutputOptions (*command);
    command->callback ([options, &session] { unbind (*options, session); });
}

} // namespace

StoredMIDITriggers storedMIDITriggers()
{
    using State = MIDITriggerEventFile::State;
    auto content = MIDITriggerEventFile::load();
    StoredMIDITriggers stored { std::move (content.triggers) };
    stored.isUnreadable = content.state == State::unreadable;

    switch (content.state)
    {
        case State::damaged:
            stored.problem = MIDITriggerEventFile::path() + " is damaged; nothing can be read from it";
            break;
        case State::unreadable:
            stored.problem = MIDITriggerEventFile::path() + " can't be read: " + content.reason;
            break;
        case State::missing:
        case State::sound: break;
    }

    return stored;
}

void addMIDICommand (CLI::App& program, Session& session)
{
    auto* midi =
        program.add_subcommand ("midi", "MIDI messages that fire events: list, bind, unbind, monitor");
    midi->footer ("Example:\n  overmarks midi list\nDetails: overmarks midi list --help");
    midi->require_subcommand (1);
    session.addOutputOptions (*midi);
    addListTo (*midi, session);
    addBindTo (*midi, session);
    addUnbindTo (*midi, session);
    addMIDIMonitorCommand (*midi, session);
}

} // namespace overmarks
