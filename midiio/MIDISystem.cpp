// SPDX-License-Identifier: GPL-3.0-only
#include "midiio/MIDISystem.h"

#include "midiio/LongestWait.h"
#include "midiio/MIDIInputWatch.h"
#include "midiio/MIDIInputs.h"
#include "midiio/MIDIMessageFinder.h"
#include "midiio/MIDIMessageQueue.h"
#include "midiio/MIDIMessageText.h"
#include "midiio/MIDINotifications.h"
#include "midiio/SafeCall.h"
#include "midiio/SpannerMessage.h"

#include <Poco/AutoPtr.h>
#include <Poco/NotificationCenter.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <thread>
#include <unordered_set>
#include <utility>

namespace ZEP::MIDIIO
{

namespace
{

using Bytes = std::span<const std::uint8_t>;

std::string_view asText (Bytes bytes)
{
    return { reinterpret_cast<const char*> (bytes.data()), bytes.size() };
}

bool isSpanner (Bytes message) { return SpannerMessage::hasHeader (asText (message)); }

/** The end mark is not counted: it is no position. */
bool isWholeSpanner (Bytes message)
{
    return SpannerMessage::fromBytes (asText (message.first (message.size() - 1))).has_value();
}

bool isOfUse (Bytes message)
{
    return isSpanner (message) ? isWholeSpanner (message) : ! MIDIMessageText::textOf (message).empty();
}

/** Tells all observers at once, on this thread. */
template <typename NotificationClass>
void post (const std::string& keyOfMessage, std::string message, const std::string& keyOfTime, double time)
{
    Poco::AutoPtr<NotificationClass> news (new NotificationClass (std::map<std::string, Poco::Any>()));
    news->userInfo.emplace (keyOfMessage, std::move (message));
    news->userInfo.emplace (keyOfTime, time);
    Poco::NotificationCenter::defaultCenter().postNotification (news);
}

/** What is registered: asked for each message, and listed in the order in which it came. */
class TriggerSet final
{
public:
    void clear()
    {
        inOrder.clear();
        found.clear();
    }

    void add (const std::string& message)
    {
        if (found.insert (message).second)
            inOrder.push_back (message);
    }

    [[nodiscard]] bool contains (const std::string& message) const { return found.contains (message); }
    [[nodiscard]] const std::vector<std::string>& list() const { return inOrder; }

private:
    std::vector<std::string> inOrder;
    std::unordered_set<std::string> found;
};

/** Somebody waits for the next message. */
struct Learner
{
    std::optional<std::string> message;
    bool isDone = false;
};

} // namespace

/** What the system consists of, and its two threads: one delivers, the other looks for inputs. Both live as long as the
    process, are begun when they are first needed, and do nothing once the process ends. */
class MIDISystem::Parts final
{
public:
    Parts()
        : inputs (std::make_unique<SystemMIDIDevices>(),
                  [this] (Bytes message, double timeStamp) { receive (message, timeStamp); }),
          watch (inputs, std::chrono::seconds (1))
    {
    }

    void receive (Bytes bytes, double timeStamp);
    void deliver (Bytes message, double timeStamp);
    bool teach (const std::string& text);
    void cancelLearning();
    void end();

    void needDelivery()
    {
        std::call_once (deliveryBegun, [this] { std::thread ([this] { deliverForEver(); }).detach(); });
    }

    bool isOnDeliveringThread() const { return std::this_thread::get_id() == deliveringThread; }

    std::mutex mutex; ///< guards what follows
    TriggerSet triggers;
    Monitor monitor;
    std::vector<Learner*> learners; ///< each belongs to the call that waits
    std::condition_variable learnt;

    MIDIMessageQueue queue;
    MIDIInputs inputs;
    MIDIInputWatch watch;

private:
    void deliverForEver();
    void deliverSafely (Bytes message, double timeStamp);
    void deliverText (const std::string& text, double timeStamp);

    std::once_flag deliveryBegun;
    std::atomic<std::thread::id> deliveringThread;
    std::atomic<bool> hasToldOfLoss { false };
};

// ---- from the inputs to the observers -------------------------------------------------------------------------------

void MIDISystem::Parts::receive (Bytes bytes, double timeStamp)
{
    MIDIMessageFinder finder (bytes);

    for (auto message = finder.next(); ! message.empty(); message = finder.next())
    {
        if (! isOfUse (message))
            continue;

        needDelivery();

        if (! queue.add (message, timeStamp) && ! hasToldOfLoss.exchange (true))
            tellLog (queue.isOver() ? "MIDI messages were lost: the program is ending"
                                    : "MIDI messages were lost: they come in faster than they are handled");
    }
}

void MIDISystem::Parts::deliverForEver()
{
    deliveringThread = std::this_thread::get_id();
    const auto take = [this] (Bytes message, double timeStamp) { deliverSafely (message, timeStamp); };

    while (queue.deliver (take))
        hasToldOfLoss = false;
}

void MIDISystem::Parts::deliverSafely (Bytes message, double timeStamp)
{
    callSafely ("A MIDI message wasn't handled: ", [&] { deliver (message, timeStamp); });
}

void MIDISystem::Parts::deliver (Bytes message, double timeStamp)
{
    if (isSpanner (message))
        post<SpannerEventReceivedNotification> (SpannerEventNotificationMIDIMsgDictKey,
                                                std::string (asText (message)),
                                                SpannerEventNotificationTimestampDictKey, timeStamp);
    else
        deliverText (MIDIMessageText::textOf (message), timeStamp);
}

void MIDISystem::Parts::deliverText (const std::string& text, double timeStamp)
{
    Monitor currentMonitor;
    bool isTrigger = false;

    {
        const std::lock_guard lock (mutex);

        if (teach (text))
            return;

        currentMonitor = monitor;
        isTrigger = triggers.contains (text);
    }

    if (currentMonitor != nullptr)
        callSafely ("A MIDI message wasn't shown: ", [&] { currentMonitor (text, timeStamp); });

    if (isTrigger)
        post<UserEventTriggerReceivedNotification> (UserTriggerEventNotificationEventDictKey, text,
                                                    UserTriggerEventTimestampDictKey, timeStamp);
}

/** Gives the message to those who wait for one. @returns whether there was any */
bool MIDISystem::Parts::teach (const std::string& text)
{
    if (learners.empty())
        return false;

    for (auto* const learner : std::exchange (learners, {}))
        *learner = { text, true };

    learnt.notify_all();
    return true;
}

void MIDISystem::Parts::end()
{
    watch.end();
    inputs.closeAll();
    queue.close();
    cancelLearning();
}

void MIDISystem::Parts::cancelLearning()
{
    const std::lock_guard lock (mutex);

    for (auto* const learner : std::exchange (learners, {}))
        learner->isDone = true;

    learnt.notify_all();
}

// ---- the operations -------------------------------------------------------------------------------------------------

MIDISystem* MIDISystem::sharedMIDISystem()
{
    static const ZEP::Core::ProcessLifetime<MIDISystem> system;
    return &system.get();
}

MIDISystem::MIDISystem() : parts (std::make_unique<Parts>())
{
    // Whatever this needs has to be there before, so that it goes after.
    Poco::NotificationCenter::defaultCenter();
    std::atexit ([] { sharedMIDISystem()->parts->end(); });
}

MIDISystem::~MIDISystem() = default;

void MIDISystem::clearMIDITriggerEvents()
{
    const std::lock_guard lock (parts->mutex);
    parts->triggers.clear();
}

void MIDISystem::addMIDIEventTrigger (const std::string& message)
{
    const std::lock_guard lock (parts->mutex);
    parts->triggers.add (message);
}

std::vector<std::string> MIDISystem::midiEventTriggers() const
{
    const std::lock_guard lock (parts->mutex);
    return parts->triggers.list();
}

void MIDISystem::receive (Bytes bytes, double timeStamp) { parts->receive (bytes, timeStamp); }

bool MIDISystem::waitUntilDelivered (std::chrono::milliseconds atMost)
{
    return parts->queue.waitUntilDelivered (atMost);
}

std::optional<std::string> MIDISystem::learnMessage (std::chrono::milliseconds atMost)
{
    if (parts->isOnDeliveringThread())
        return {};

    Learner learner;
    std::unique_lock lock (parts->mutex);
    parts->learners.push_back (&learner);
    parts->learnt.wait_for (lock, withinAYear (atMost), [&learner] { return learner.isDone; });
    std::erase (parts->learners, &learner);
    return learner.message;
}

void MIDISystem::cancelLearning() { parts->cancelLearning(); }

void MIDISystem::setMonitor (Monitor newMonitor)
{
    // The former one goes with the argument, without the lock.
    const std::lock_guard lock (parts->mutex);
    parts->monitor.swap (newMonitor);
}

std::vector<MIDISystem::Input> MIDISystem::inputs()
{
    parts->inputs.look();
    std::vector<Input> found;

    for (const auto& input : parts->inputs.list())
        found.push_back ({ input.identifier, input.name, input.isOpen });

    return found;
}

bool MIDISystem::openInput (const std::string& identifier)
{
    parts->watch.begin();
    return parts->inputs.open (identifier);
}

void MIDISystem::closeInput (const std::string& identifier) { parts->inputs.close (identifier); }

void MIDISystem::openAllInputs()
{
    parts->watch.begin();
    parts->inputs.openAll();
}

bool MIDISystem::closeAllInputs()
{
    constexpr auto patience = std::chrono::seconds (10);
    parts->inputs.closeAll();
    return parts->queue.waitUntilDelivered (patience);
}

void MIDISystem::setInputsChanged (std::function<void()> whatToDo)
{
    parts->watch.setChanged (std::move (whatToDo));
    parts->watch.begin();
}

} // namespace ZEP::MIDIIO
