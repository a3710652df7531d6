// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_MIDIIO/Export.h"
#include "core/system/ProcessLifetime.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace ZEP::MIDIIO
{

/** The MIDI inputs of the machine and what comes in through them.

    A message that is registered as a trigger is posted as a UserEventTriggerReceivedNotification, a spanner message as a
    SpannerEventReceivedNotification, both to the default Poco::NotificationCenter and both on one thread that this system
    has for it: an observer works on that thread, one message after the other in the order in which they came. What an
    observer throws ends up in the log. Nothing is opened by itself: an application calls openAllInputs(), or hands in the
    bytes of an input of its own with receive().

    While an observer, a monitor or a learning call's thread is at work nothing else is delivered, and the notification
    centre holds the observer's lock: an observer must not wait for another thread, nor take the lock of JUCE's message
    manager (juce::MessageManagerLock), and it must not post a notification, which every change of an Event does. It hands
    such work over with juce::MessageManager::callAsync() or a juce::AsyncUpdater. To take an observer away, close the inputs
    first and see that closeAllInputs() returns true.

    A note-on without velocity is a note-off, and other text forms are those of MIDIMessageText. One object for the process,
    never destroyed; every operation from any thread. A machine without MIDI has no inputs, and everything else works. */
class ZEP_MIDIIO_API MIDISystem final
{
public:
    static MIDISystem* sharedMIDISystem(); ///< Never null, never destroyed.

    MIDISystem (const MIDISystem&) = delete;
    MIDISystem& operator= (const MIDISystem&) = delete;

    // ---- triggers ---------------------------------------------------------------------------------------------------

    /** Forgets all registered messages. One that is being delivered right now still arrives. */
    void clearMIDITriggerEvents();

    /** From now on the arrival of this message is posted, once however often it is registered.
        @param message  text form; one that no message has never arrives */
    void addMIDIEventTrigger (const std::string& message);

    /** The registered messages, each once, in the order of registration. */
    [[nodiscard]] std::vector<std::string> midiEventTriggers() const;

    // ---- messages ---------------------------------------------------------------------------------------------------

    /** Takes bytes as they come over the cable: any number of messages, with running status and real-time bytes. What isn't
        whole is passed over, and a spanner message that is too short for what it commands as well. Returns at once. Only so
        much waits for delivery (4 MiB); what comes on top of that is lost, and so is what comes while the process ends.
        @param timeStamp  seconds; handed on as it is */
    void receive (std::span<const std::uint8_t> bytes, double timeStamp);

    /** Waits until everything that was received before this call has been delivered. @returns false if that takes longer
        than the given time, or for a call from an observer, which would wait for itself */
    bool waitUntilDelivered (std::chrono::milliseconds atMost);

    /** Waits for the next message that has a text form and returns it; that message fires nothing.
        @returns nothing after the given time, after cancelLearning(), or for a call from an observer */
    [[nodiscard]] std::optional<std::string> learnMessage (std::chrono::milliseconds atMost);

    /** Ends all calls of learnMessage() that are waiting now. */
    void cancelLearning();

    /** Sees every message with a text form before it is posted, registered or not, on the thread of the notifications. What
        learnMessage() returns it doesn't see. What it throws ends up in the log, and the message is posted all the same. */
    using Monitor = std::function<void (const std::string& message, double timeStamp)>;

    /** @param newMonitor  may be empty; the former one may still be running when this returns */
    void setMonitor (Monitor newMonitor);

    // ---- inputs -----------------------------------------------------------------------------------------------------

    /** An input that is plugged in. */
    struct Input
    {
        std::string identifier; ///< of the moment: an input that comes back may have another one
        std::string name;       ///< for a person; two may share one
        bool isOpen = false;    ///< by this system
    };

    /** What is there now. An input that was unplugged and is back within a second under the same identifier can't be told
        from one that stayed: it may be shown as open and be silent. Close it and open it again then. */
    [[nodiscard]] std::vector<Input> inputs();

    /** Opens an input, and again each time it comes back, until it is closed. @returns whether it is open now */
    bool openInput (const std::string& identifier);

    /** Closes an input for as long as nobody opens it again, also after openAllInputs() and when it comes back. Messages that
        it has sent may still be delivered.
        @param identifier  the one of the moment, or the one that openInput() was called with */
    void closeInput (const std::string& identifier);

    /** Opens all inputs and each one that comes, until closeAllInputs(); those that were closed one by one as well. */
    void openAllInputs();

    /** Closes all inputs and waits until everything that has been received is delivered and nobody is being told any more.
        Then observers may go and what they read may be edited, as long as the application doesn't call receive() itself.
        Not to be called while an observer of any notification is at work on the calling thread: the centre would wait for it.
        @returns false if an observer has not come to an end within ten seconds, or for a call from an observer of this
        system, which would wait for itself */
    bool closeAllInputs();

    /** Tells within two seconds that an input has come or gone; then ask inputs(). Called on a thread of its own; what
        it throws ends up in the log.
        @param whatToDo  may be empty; the former one may still be running when this returns */
    void setInputsChanged (std::function<void()> whatToDo);

private:
    class Parts;

    MIDISystem();
    ~MIDISystem();

    template <typename>
    friend class ZEP::Core::ProcessLifetime;

    std::unique_ptr<Parts> parts;
};

} // namespace ZEP::MIDIIO
