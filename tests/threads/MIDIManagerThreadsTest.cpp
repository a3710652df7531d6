// SPDX-License-Identifier: GPL-3.0-only
// Pan lines and triggers that go while messages come in and lines fade.
#include "midi/MIDISpannerEventManager.h"
#include "midi/TriggerFolder.h"
#include "midiio/MIDISystem.h"
#include "support/CollectedLog.h"
#include "support/RandomMoments.h"
#include "support/SpannerBytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace ZEP::Overmarks::Testing
{
namespace
{

using namespace std::chrono_literals;
using ZEP::MIDIIO::MIDISystem;

/** An input of the application's own, which sends until it is told to stop; it has sent nothing more when stop() returns. */
class BusyInput final
{
public:
    template <typename MakeMessage>
    explicit BusyInput (int seed, const MakeMessage& makeMessage)
        : thread (
            [this, seed, makeMessage]
            {
                for (RandomMoments moments (seed); ! isOver; moments.pass (30))
                {
                    const std::string bytes = makeMessage (moments);
                    MIDISystem::sharedMIDISystem()->receive (
                        { reinterpret_cast<const std::uint8_t*> (bytes.data()), bytes.size() }, 0);
                    ++sent;
                }
            })
    {
    }

    BusyInput (const BusyInput&) = delete;
    BusyInput& operator= (const BusyInput&) = delete;
    ~BusyInput() { stop(); }

    /** @returns how many messages it has sent */
    int stop()
    {
        isOver = true;

        if (thread.joinable())
            thread.join();

        return sent;
    }

private:
    std::atomic<bool> isOver { false };
    std::atomic<int> sent { 0 };
    std::thread thread;
};

std::string someSpannerMessage (RandomMoments& moments)
{
    const int command = moments.upTo (20) == 0  ? removesLines
                        : moments.upTo (3) == 0 ? createsLine
                                                : updatesLines;
    return SpannerBytes { .identity = { 0, 0, 0, 0, moments.upTo (3) }, .command = command }.text();
}

/** A drawing routine's window. */
struct Window final : public MIDISpannerEventManager::Listener
{
    void panLinesChanged() override
    {
        isLate = isLate || isClosed;
        ++calls;
    }

    std::atomic<int> calls { 0 };
    std::atomic<bool> isClosed { false };
    std::atomic<bool> isLate { false };
};

class PanLineThreads : public testing::Test
{
protected:
    /** Lines that fade each millisecond instead of each five seconds, on the thread of the message loop. */
    static void letFade (MIDISpannerEventManager& manager, RandomMoments& moments)
    {
        for (int identity = 0; identity < 4; ++identity)
            manager.startTimer (identity, 1 + moments.upTo (1));

        juce::MessageManager::getInstance()->runDispatchLoopUntil (1 + moments.upTo (2));
    }

    static bool haveAllFaded (MIDISpannerEventManager& manager)
    {
        const std::lock_guard lock (manager.mutex);
        return std::all_of (manager.panLines->begin(), manager.panLines->end(),
                            [] (const auto& line) { return line->colour.getFloatAlpha() == 0.0f; });
    }

    juce::ScopedJuceInitialiser_GUI messageLoop;
    const int rounds = roundsOf (1000);
};

TEST_F (PanLineThreads, aManagerThatGoesAtAnyMomentTellsNobodyAfterwards)
{
    std::vector<std::unique_ptr<Window>> windows;
    BusyInput input (1, someSpannerMessage);
    int calls = 0;

    for (int round = 0; round < rounds; ++round)
    {
        RandomMoments moments (round);
        auto& window = *windows.emplace_back (std::make_unique<Window>());

        {
            MIDISpannerEventManager manager;
            manager.listener = &window;
            letFade (manager, moments);
            moments.pass (200);
        }

        window.isClosed = true;
        calls += window.calls;
    }

    input.stop();
    ASSERT_TRUE (MIDISystem::sharedMIDISystem()->waitUntilDelivered (1min));
    juce::MessageManager::getInstance()->runDispatchLoopUntil (20);
    EXPECT_GT (calls, 0) << "else the test has seen nothing";

    for (const auto& window : windows)
        EXPECT_FALSE (window->isLate);
}

TEST_F (PanLineThreads, noMessageAndNoFadingIsLostWhileSomebodyDraws)
{
    constexpr int lines = 4;
    MIDISpannerEventManager manager;
    Window window;
    manager.listener = &window;
    std::atomic<bool> isOver { false };
    std::thread drawing (
        [&]
        {
            for (RandomMoments moments (2); ! isOver; moments.pass (50))
            {
                const std::lock_guard lock (manager.mutex);

                for (const auto& line : *manager.panLines)
                    EXPECT_TRUE (line->colour.getFloatAlpha() == 0.0f
                                 || line->colour.getFloatAlpha() > 0.59f);
            }
        });
    auto* const system = MIDISystem::sharedMIDISystem();

    for (int round = 0; round < rounds; ++round)
    {
        RandomMoments moments (round);
        const int before = window.calls;

        for (int identity = 0; identity < lines; ++identity)
        {
            const auto text =
                SpannerBytes { .identity = { 0, 0, 0, 0, identity }, .command = createsLine }.text();
            system->receive ({ reinterpret_cast<const std::uint8_t*> (text.data()), text.size() }, round);
            moments.pass (50);
        }

        ASSERT_TRUE (system->waitUntilDelivered (1min));
        ASSERT_GE (window.calls, before + lines);

        {
            const std::lock_guard lock (manager.mutex);
            ASSERT_EQ (manager.panLines->size(), static_cast<std::size_t> (lines)) << "round " << round;
        }

        if (round % 50 == 0)
            for (const auto end = std::chrono::steady_clock::now() + 1min; ! haveAllFaded (manager);)
            {
                ASSERT_LT (std::chrono::steady_clock::now(), end) << "a fading is lost";
                letFade (manager, moments);
            }

        const auto text = SpannerBytes { .command = removesLines }.text();
        system->receive ({ reinterpret_cast<const std::uint8_t*> (text.data()), text.size() }, round);
        ASSERT_TRUE (system->waitUntilDelivered (1min));
        const std::lock_guard lock (manager.mutex);
        ASSERT_TRUE (manager.panLines->empty()) << "round " << round;
    }

    isOver = true;
    drawing.join();
}

/** A list of triggers that asks in its destructor whether it is still called. */
class FrailManager final : public MIDITriggerEventManager
{
public:
    explicit FrailManager (std::atomic<int>& callsOfAll) : calls (callsOfAll) {}
    ~FrailManager() override { words = "gone"; }

    void onMIDITriggerEventFired (std::shared_ptr<MIDITriggerEvent> triggerEvent) override
    {
        if (words == "alive" && triggerEvent->triggerMessage == "NoteOn 1 60")
            ++calls;
    }

private:
    std::atomic<int>& calls;
    std::string words { "alive" };
};

using TriggerThreads = TriggerFolder;

TEST_F (TriggerThreads, aListThatGoesAtAnyMomentOnceTheInputsAreSilentHasFiredForEachMessage)
{
    const CollectedLog log; // there is no file at first
    auto* const system = MIDISystem::sharedMIDISystem();
    {
        std::atomic<int> none { 0 };
        FrailManager first (none);
        first.events = { trigger ("NoteOn 1 60") };
        first.writeTriggerEventsToFile();
    }

    for (int round = 0; round < roundsOf (1000); ++round)
    {
        RandomMoments moments (round);
        std::atomic<int> calls { 0 };
        int sent = 0;

        {
            const FrailManager manager (calls);
            BusyInput one (round, [] (auto&) { return std::string ("\x90\x3c\x64", 3); });
            BusyInput other (round + 1, [] (auto&) { return std::string ("\x90\x3c\x64", 3); });
            moments.pass (500);
            sent = one.stop() + other.stop();
            ASSERT_TRUE (system->closeAllInputs());
        }

        ASSERT_EQ (calls, sent) << "round " << round;
    }
}

TEST_F (TriggerThreads, aListThatIsEditedBetweenMessagesFiresWhatItHoldsThen)
{
    const CollectedLog log;
    auto* const system = MIDISystem::sharedMIDISystem();
    FiringManager manager;
    system->addMIDIEventTrigger ("NoteOn 1 60");
    const std::vector<std::uint8_t> note { 0x90, 60, 100 };

    for (int round = 0; round < roundsOf (1000); ++round)
    {
        RandomMoments moments (round);
        manager.events = { trigger ("NoteOn 1 60", std::to_string (round)) };
        const int burst = 1 + moments.upTo (5);
        std::thread input (
            [&]
            {
                for (int i = 0; i < burst; ++i, moments.pass (20))
                    system->receive (note, 0);
            });
        input.join();
        ASSERT_TRUE (system->closeAllInputs());
        ASSERT_EQ (manager.fired.size(), static_cast<std::size_t> (burst));
        ASSERT_EQ (manager.fired.back()->label, std::to_string (round));
        manager.fired.clear();
    }
}

} // namespace
} // namespace ZEP::Overmarks::Testing
