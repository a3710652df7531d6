// SPDX-License-Identifier: GPL-3.0-only
// A key of a MIDI keyboard that sets a streamer where the picture is. There need not be a keyboard: bytes do as well.

#include "Reel.h"

#include "core/system/SystemUtility.h"
#include "midi/MIDITriggerEventManager.h"
#include "midiio/MIDISystem.h"

#include <juce_events/juce_events.h>

#include <array>
#include <iostream>

using namespace ZEP::Core;
using namespace ZEP::MIDIIO;
using namespace ZEP::Overmarks;

namespace
{

class StreamerKeys final : public MIDITriggerEventManager
{
public:
    explicit StreamerKeys (const Project& projectAtWork) : project (projectAtWork) {}

    /** The file of the triggers and the registration with the MIDI system follow each edit of the list. */
    void assignKey (const std::string& message, const std::string& label, int seconds)
    {
        const auto trigger = std::make_shared<MIDITriggerEvent>();
        trigger->triggerMessage = message;
        trigger->label = label;
        trigger->event = Event::create (EventTypeStreamer, project.timeInfo, 0, -1, -1.0f, seconds);
        events.push_back (trigger);
        writeTriggerEventsToFile();
        MIDISystem::sharedMIDISystem()->addMIDIEventTrigger (message);
    }

    /** Comes on the MIDI system's thread, where no event may be changed: the work is handed over. */
    void onMIDITriggerEventFired (std::shared_ptr<MIDITriggerEvent> trigger) override
    {
        juce::MessageManager::callAsync ([this, trigger] { addStreamer (*trigger); });
    }

    juce::String playhead; ///< where the picture is

private:
    void addStreamer (const MIDITriggerEvent& trigger) const
    {
        const auto streamer = std::make_shared<Event> (*trigger.event);
        streamer->setUndoBypass (true); // a new event's first values are no steps of the user
        streamer->setStartTCString (playhead);
        streamer->setUndoBypass (false);
        project.list->addEvents ({ streamer }, true);
        std::cout << trigger.label << ": " << streamer->description() << " at "
                  << streamer->getStartTCString() << "\n";
    }

    const Project& project;
};

} // namespace

int main (int, char** argv)
{
    const juce::ScopedJuceInitialiser_GUI framework; // for the messages to this thread
    SystemUtility::Configuration configuration;
    configuration.supportPath =
        example::fileFromArgument (argv[2]).getFullPathName(); // of the triggers' file
    SystemUtility::configure (configuration);
    const auto project = example::openReel (example::fileFromArgument (argv[1]));

    StreamerKeys keys (project);
    keys.assignKey ("NoteOn 1 60", "middle C", 2);
    keys.assignKey ("CC 1 64", "pedal", 5);
    keys.playhead = "02:03:30:00";

    // An application calls openAllInputs(). These are the bytes that a keyboard sends for its middle C, and for a key that
    // isn't assigned.
    auto& midi = *MIDISystem::sharedMIDISystem();
    midi.receive (std::array<std::uint8_t, 6> { 0x90, 60, 100, 0x90, 61, 100 }, 0.0);
    midi.closeAllInputs(); // also waits until all that has come in is delivered
    juce::MessageManager::getInstance()->stopDispatchLoop(); // when all that is waiting is done
    juce::MessageManager::getInstance()->runDispatchLoop();

    std::cout << project.list->eventsWithTypeMask (EventTypeStreamer).size() << " streamers in the list, "
              << keys.events.size() << " keys assigned\n";
}
