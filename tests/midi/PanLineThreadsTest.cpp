// SPDX-License-Identifier: GPL-3.0-only
// Pan lines with everybody at work: messages from the MIDI system, timers from the message loop, and a drawing routine.
#include "midi/PanLineSupport.h"
#include "midiio/MIDISystem.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <vector>

namespace ZEP::Overmarks::Testing
{
namespace
{

using namespace std::chrono_literals;
using ZEP::MIDIIO::MIDISystem;

/** Lets the message loop run, as the application's main thread does. */
void runLoopFor (int milliseconds)
{
    const auto end = juce::Time::getMillisecondCounter() + static_cast<juce::uint32> (milliseconds);

    while (juce::Time::getMillisecondCounter() < end)
        juce::MessageManager::getInstance()->runDispatchLoopUntil (10);
}

class PanLineTimes : public PanLines
{
protected:
    float guardedAlpha()
    {
        const std::lock_guard lock (manager.mutex);
        return alpha();
    }

    /** Half a minute at most. */
    void runLoopUntilFaded()
    {
        for (const auto end = now() + 30s; guardedAlpha() != faded && now() < end;)
            runLoopFor (1);

        EXPECT_EQ (guardedAlpha(), faded);
    }

    static std::chrono::steady_clock::time_point now() { return std::chrono::steady_clock::now(); }

    /** The framework counts a timer from its last look at the clock, so it may come a tenth of a second early. */
    static constexpr auto lifetime = std::chrono::milliseconds (MIDISpannerEventManager::lifetime - 500);
};

TEST_F (PanLineTimes, aLineFadesAfterFiveSecondsOfSilence)
{
    const auto start = now();
    send ({});
    EXPECT_FLOAT_EQ (guardedAlpha(), alive);
    EXPECT_EQ (listener.calls, 1);
    runLoopUntilFaded();
    EXPECT_GE (now() - start, lifetime);
    EXPECT_EQ (guardedAlpha(), faded);
    EXPECT_EQ (listener.calls, 2);
}

TEST_F (PanLineTimes, anUpdateWithinTheFiveSecondsMovesTheLineAndPostponesItsFading)
{
    send ({ .position = 0 });
    runLoopFor (1000);
    ASSERT_EQ (listener.calls, 1) << "this machine is too busy";
    const auto start = now();
    send ({ .command = updatesLines, .position = 127 });
    EXPECT_EQ (line (0).position, 1.0f);
    EXPECT_FLOAT_EQ (guardedAlpha(), alive);
    EXPECT_EQ (listener.calls, 2);
    runLoopUntilFaded();
    EXPECT_GE (now() - start, lifetime);
    EXPECT_EQ (listener.calls, 3);
}

TEST_F (PanLineTimes, anUpdateOfAnotherGroupDoesntPostponeTheFading)
{
    send ({ .group = 1 });
    runLoopFor (3000);
    ASSERT_EQ (listener.calls, 1) << "this machine is too busy";
    const auto start = now();
    send ({ .group = 2, .command = updatesLines });
    EXPECT_FLOAT_EQ (guardedAlpha(), alive);
    runLoopUntilFaded();
    EXPECT_LT (now() - start, lifetime); // it counts from the first message, three seconds before
}

TEST_F (PanLineTimes, theTimerGoesOnUntilAMessageStopsIt)
{
    manager.startTimer (7, 20); // every five seconds would take long

    for (const auto end = now() + 30s; listener.calls < 3 && now() < end;)
        runLoopFor (10);

    EXPECT_GE (listener.calls, 3);
    send ({});
    send ({ .command = removesLines });
    const int calls = listener.calls;
    runLoopFor (100);
    EXPECT_EQ (listener.calls, calls);
}

TEST_F (PanLineTimes, messagesTimersAndADrawingRoutineDontDisturbEachOther)
{
    constexpr int rounds = 300, identities = 4;
    auto* const system = MIDISystem::sharedMIDISystem();
    std::atomic<bool> isOver { false };
    std::atomic<int> sums { 0 };

    std::thread input (
        [&]
        {
            for (int round = 0; round < rounds; ++round)
            {
                const int command = round % 50 == 49 ? removesLines
                                    : round % 5 == 0 ? createsLine
                                                     : updatesLines;
                const auto text =
                    SpannerBytes { .identity = { 0, 0, 0, 0, round % identities }, .command = command }
                        .text();
                system->receive ({ reinterpret_cast<const std::uint8_t*> (text.data()), text.size() }, round);
                std::this_thread::sleep_for (1ms);
            }

            isOver = true;
        });

    std::thread drawing (
        [&]
        {
            while (! isOver)
            {
                const std::lock_guard lock (manager.mutex);

                for (const auto& drawn : *manager.panLines)
                    sums += drawn->position > 0.5f && drawn->colour.getFloatAlpha() > 0.5f ? 1 : 0;
            }
        });

    while (! isOver)
    {
        for (int identity = 0; identity < identities; ++identity)
            manager.startTimer (identity, 1); // a fading each millisecond instead of each five seconds

        juce::MessageManager::getInstance()->runDispatchLoopUntil (2);
    }

    input.join();
    drawing.join();
    ASSERT_TRUE (system->waitUntilDelivered (10s));
    EXPECT_GT (listener.calls, rounds); // once for each message, and for the fadings

    const std::lock_guard lock (manager.mutex);
    EXPECT_EQ (manager.panLines->size(), 0u); // the last message removes
}

TEST_F (PanLineTimes, aManagerMayGoInTheMiddleOfABurstOnceTheInputsAreClosed)
{
    constexpr int burst = 500, rounds = 20;
    auto* const system = MIDISystem::sharedMIDISystem();
    const auto text = SpannerBytes().text();

    for (int round = 0; round < rounds; ++round)
    {
        CountingListener told;
        MIDISpannerEventManager another;
        another.listener = &told;

        for (int sent = 0; sent < burst; ++sent)
            system->receive ({ reinterpret_cast<const std::uint8_t*> (text.data()), text.size() }, sent);

        ASSERT_TRUE (system->closeAllInputs());
        EXPECT_EQ (told.calls, burst);
        EXPECT_EQ (another.panLines->size(), static_cast<std::size_t> (burst));
    }
}

} // namespace
} // namespace ZEP::Overmarks::Testing
