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

    A note-on without velocity is a note-off, and other text forms are those of MIDIMessageText. One object for the process,
    never destroyed; every operation from any thread. A machine without MIDI has no inputs, and everything else works. */
class ZEP_MIDIIO_API MIDISystem final
{
public:
    static MIDISystem* sharedMIDISystem();

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
        much waits for delivery (4 MiB); what comes on top of that is lost.
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

    /** Sees every message with a text form before it is posted, registered or not, on the thread of the notifications. */
    using Monitor = std::function<void (const std::string& message, double timeStamp)>;

    /** @param newMonitor  may be empty; the former one may still be running when this returns */
    void setMonitor (Monitor newMonitor);

    // ---- inputs -----------------------------------------------------------------------------------------------------

    struct Input
    {
        std::string identifier; ///< of the moment: an input that comes back may have another one
        std::string name;
        bool isOpen = false;
    };

    /** What is there now. */
    [[nodiscard]] std::vector<Input> inputs();

    /** Opens an input, and again each time it comes back, until it is closed. @returns whether it is open now */
    bool openInput (const std::string& identifier);
    void closeInput (const std::string& identifier);

    /** Opens all inputs and each one that comes, until closeAllInputs(). */
    void openAllInputs();
    void closeAllInputs();

    /** Tells within two seconds that an input has come or gone; then ask inputs(). Called on a thread of its own.
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
