// SPDX-License-Identifier: GPL-3.0-only
// What MIDI costs: a stream of pan positions from the cable to the lines, and finding one trigger among many.
//
// "allocations" is how often a message takes memory. The manager of the lines must never do so for an update; on the way
// through the MIDI system the notification is made anew for each message, and nothing else.
#include "core/system/SystemUtility.h"
#include "midi/MIDISpannerEventManager.h"
#include "midi/MIDITriggerEventManager.h"
#include "midiio/MIDISystem.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <new>
#include <string>
#include <vector>

namespace
{

std::atomic<std::int64_t> allocations { 0 };

} // namespace

void* operator new (std::size_t size)
{
    allocations.fetch_add (1, std::memory_order_relaxed);

    if (auto* const memory = std::malloc (size == 0 ? 1 : size))
        return memory;

    throw std::bad_alloc();
}

void operator delete (void* memory) noexcept { std::free (memory); }
void operator delete (void* memory, std::size_t) noexcept { std::free (memory); }

namespace
{

using namespace ZEP::Overmarks;
using namespace ZEP::MIDIIO;

constexpr auto patience = std::chrono::seconds (60);
constexpr int lines = 64; ///< objects that are panned at the same time

std::string spannerBytes (int line, int command, int position)
{
    std::string bytes = "\xF0\x7D\x53\x50";
    bytes += {
        0, 0, 0, 0, static_cast<char> (line), 1, static_cast<char> (command), static_cast<char> (position)
    };
    return bytes + "\x7F\x7F\x7F\xF7";
}

void receive (const std::string& bytes)
{
    MIDISystem::sharedMIDISystem()->receive (
        { reinterpret_cast<const std::uint8_t*> (bytes.data()), bytes.size() }, 0.0);
}

void waitForDelivery (benchmark::State& state)
{
    if (! MIDISystem::sharedMIDISystem()->waitUntilDelivered (patience))
        state.SkipWithError ("The messages weren't delivered");
}

/** Lines to be moved, and a message for each. */
std::vector<std::string> makeLines()
{
    std::vector<std::string> updates;

    for (int line = 0; line < lines; ++line)
    {
        receive (spannerBytes (line, 0, 0));
        updates.push_back (spannerBytes (line, 2, line));
    }

    return updates;
}

Poco::AutoPtr<SpannerEventReceivedNotification> newsOf (const std::string& bytes)
{
    return new SpannerEventReceivedNotification ({ { SpannerEventNotificationMIDIMsgDictKey, bytes },
                                                   { SpannerEventNotificationTimestampDictKey, 0.0 } });
}

void tellAllocations (benchmark::State& state, std::int64_t before)
{
    const auto messages = state.iterations() * state.range (0);
    state.counters["allocations"] = static_cast<double> (allocations - before)
                                    / static_cast<double> (std::max<std::int64_t> (1, messages));
    state.SetItemsProcessed (messages);
}

/** From the bytes of the input to the moved line. */
void spannerUpdatesThroughTheSystem (benchmark::State& state)
{
    const MIDISpannerEventManager manager;
    const auto updates = makeLines();
    waitForDelivery (state);
    const auto before = allocations.load();

    for (auto _ : state)
    {
        for (int i = 0; i < state.range (0); ++i)
            receive (updates[static_cast<std::size_t> (i % lines)]);

        waitForDelivery (state);
    }

    tellAllocations (state, before);
}
BENCHMARK (spannerUpdatesThroughTheSystem)
    ->RangeMultiplier (10)
    ->Range (1000, 100000)
    ->Unit (benchmark::kMillisecond)
    ->UseRealTime();

/** The manager's part of it. */
void spannerUpdates (benchmark::State& state)
{
    MIDISpannerEventManager manager;
    std::vector<Poco::AutoPtr<SpannerEventReceivedNotification>> updates;

    for (const auto& bytes : makeLines())
        updates.push_back (newsOf (bytes));

    waitForDelivery (state);
    const auto before = allocations.load();

    for (auto _ : state)
        for (int i = 0; i < state.range (0); ++i)
            manager.onSpannerEventReceived (updates[static_cast<std::size_t> (i % lines)]);

    const auto taken = allocations - before;
    tellAllocations (state, before);

    if (taken >= state.range (0))
        state.SkipWithError ("An update takes memory");
}
BENCHMARK (spannerUpdates)->RangeMultiplier (10)->Range (1000, 100000)->Unit (benchmark::kMillisecond);

class Manager final : public MIDITriggerEventManager
{
public:
    void onMIDITriggerEventFired (std::shared_ptr<MIDITriggerEvent>) override { ++fired; }

    int fired = 0;
};

/** A user without bindings, who leaves nothing behind. */
class NewUser final
{
public:
    NewUser()
    {
        folder.getChildFile ("midiEventsV3.bin").create();
        ZEP::Core::SystemUtility::Configuration configuration;
        configuration.supportPath = folder.getFullPathName();
        ZEP::Core::SystemUtility::configure (configuration);
    }

    NewUser (const NewUser&) = delete;
    NewUser& operator= (const NewUser&) = delete;

    ~NewUser()
    {
        ZEP::Core::SystemUtility::configure ({});
        folder.deleteRecursively();
    }

private:
    const juce::File folder = juce::File::createTempFile ("bench");
};

/** One message, with so many bindings. */
void triggerAmongMany (benchmark::State& state)
{
    const NewUser user;
    Manager manager;

    for (int i = 0; i < state.range (0); ++i)
    {
        manager.events.push_back (std::make_shared<MIDITriggerEvent>());
        manager.events.back()->triggerMessage =
            "NoteOn " + std::to_string (i / 128 + 1) + " " + std::to_string (i % 128);
    }

    Poco::AutoPtr<UserEventTriggerReceivedNotification> news (new UserEventTriggerReceivedNotification (
        { { UserTriggerEventNotificationEventDictKey, manager.events.back()->triggerMessage },
          { UserTriggerEventTimestampDictKey, 0.0 } }));

    for (auto _ : state)
        manager.onUserDefinedTriggerMsgReceived (news.duplicate());

    if (manager.fired == 0)
        state.SkipWithError ("Nothing has fired");
}
BENCHMARK (triggerAmongMany)->RangeMultiplier (10)->Range (1000, 10000)->Unit (benchmark::kMicrosecond);

} // namespace
