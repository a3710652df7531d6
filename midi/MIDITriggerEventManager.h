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
    and destroying the object: open the inputs after the one, close them before the other.

    The list outlives every project. */
class OVERMARKS_API MIDITriggerEventManager
{
public:
    /** Observes the MIDI system, reads the file, and registers what was in it and nothing else. */
    MIDITriggerEventManager();

    /** A message of the list has arrived. Called on the MIDI system's thread, so whatever takes time or draws goes to a
        thread of the application. Of several triggers with the same message the last of the list fires. */
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

    std::vector<std::shared_ptr<MIDITriggerEvent>> events;
};

} // namespace ZEP::Overmarks
