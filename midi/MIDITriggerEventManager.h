// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "midi/MIDITriggerEvent.h"
#include "midiio/MIDINotifications.h"

#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** The list of the user's MIDI triggers, which fires them.

    An application derives from it, edits `events`, calls writeTriggerEventsToFile() after each edit, and registers with the
    MIDI system exactly the messages that are in the list. The rule that is easily missed: a trigger fires on the MIDI
    system's thread and there is no lock, so `events` must not be edited while messages can arrive. The same goes for making
    and destroying the object. MIDISystem::closeAllInputs(), which waits for what is on its way, stands before an edit and
    before the end, openAllInputs() after an edit and after the start; with inputs of its own the application calls receive()
    no more, and then waitUntilDelivered().

    The list outlives every project. */
class OVERMARKS_API MIDITriggerEventManager
{
public:
    /** Observes the MIDI system, reads the file, and registers what was in it and nothing else. */
    MIDITriggerEventManager();

    /** A message of the list has arrived. Of several triggers with the same message the last of the list fires.

        Called on the MIDI system's thread with a lock of the notification centre held. So it must not post a notification,
        which every setter of an Event does, nor wait for another thread, nor take the message manager's lock: any of them
        can stand still for ever. It hands the trigger over with juce::MessageManager::callAsync() or a juce::AsyncUpdater. */
    virtual void onMIDITriggerEventFired (std::shared_ptr<MIDITriggerEvent> triggerEvent) = 0;

    virtual ~MIDITriggerEventManager();

    MIDITriggerEventManager (const MIDITriggerEventManager&) = delete;
    MIDITriggerEventManager& operator= (const MIDITriggerEventManager&) = delete;

    /** Appends the stored triggers to the list. Without a file an error is logged; a damaged one gives nothing. */
    void readTriggerEventsFromFile();

    /** Stores the list in place of the stored one. A failure is not reported; MIDITriggerEventFile::write() tells it. */
    void writeTriggerEventsToFile();

    /** Takes the news that a registered message has come in, with the reference that comes with it.
        Throws std::out_of_range if the message or the time is missing, Poco::BadCastException if one is something else. */
    void onUserDefinedTriggerMsgReceived (ZEP::MIDIIO::UserEventTriggerReceivedNotification* notification);

    std::vector<std::shared_ptr<MIDITriggerEvent>> events; ///< in the user's order; see above

private:
    void registerTriggers() const;
    void stopObserving();
};

} // namespace ZEP::Overmarks
