// SPDX-License-Identifier: GPL-3.0-only
// The MIDI system with many at work: inputs send, inputs come and go, somebody learns, shows, registers, and ends.
#include "midiio/MIDISystem.h"

#include "midiio/Desk.h"
#include "midiio/MIDIInputWatch.h"
#include "midiio/MIDIMessageQueue.h"
#include "midiio/MIDINotifications.h"
#include "support/RandomMoments.h"

#include <Poco/NObserver.h>
#include <Poco/NotificationCenter.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace
{

using namespace std::chrono_literals;
using namespace ZEP::MIDIIO;
using namespace ZEP::MIDIIO::Testing;
using ZEP::Overmarks::Testing::RandomMoments;
using ZEP::Overmarks::Testing::roundsOf;
using Bytes = std::vector<std::uint8_t>;

// ---- the queue ----------------------------------------------------------------------------------------------------------

/** What each of several inputs has sent, as it arrives. */
struct Arrivals
{
    /** A message is its input and a number that counts up. */
    void take (MIDIMessageQueue::Bytes message, double number)
    {
        isLate = isLate || isOver;
        auto& last = lastOfInput.at (message[0]);
        isInOrder = isInOrder && number == last + 1;
        last = static_cast<int> (number);
        ++count;
    }

    std::vector<int> lastOfInput = std::vector<int> (4, -1);
    int count = 0;
    bool isInOrder = true;
    std::atomic<bool> isOver { false };
    bool isLate = false;
};

TEST (MIDIQueueThreads, closedAtAnyMomentItLosesNothingThatWasWaitedForAndHandsOverNothingLater)
{
    for (int round = 0; round < roundsOf (1000); ++round)
    {
        MIDIMessageQueue queue;
        Arrivals arrivals;
        std::atomic<int> added { 0 }, waitedFor { 0 };
        std::vector<std::thread> threads;
        threads.emplace_back (
            [&]
            {
                while (queue.deliver ([&] (auto message, double time) { arrivals.take (message, time); }))
                {
                }
            });

        for (std::uint8_t input = 0; input < 3; ++input)
            threads.emplace_back (
                [&, input]
                {
                    RandomMoments moments (round * 3 + input);

                    for (int sent = 0; sent < 20 && queue.add (Bytes { input }, sent); ++sent)
                    {
                        ++added;
                        moments.pass (20);
                    }

                    const int before = added;

                    if (queue.waitUntilDelivered (1min))
                        for (int most = waitedFor;
                             most < before && ! waitedFor.compare_exchange_weak (most, before);)
                        {
                        }
                });

        RandomMoments moments (round);
        moments.pass (1000);
        arrivals.isOver = queue.close();

        for (auto& thread : threads)
            thread.join();

        ASSERT_FALSE (arrivals.isLate) << "round " << round;
        ASSERT_TRUE (arrivals.isInOrder) << "round " << round;
        ASSERT_LE (arrivals.count, added) << "round " << round;
        ASSERT_GE (arrivals.count, waitedFor) << "round " << round;
    }
}

// ---- the watch ----------------------------------------------------------------------------------------------------------

/** An application's window, to which the watch tells what has changed. */
struct Window
{
    explicit Window (int seed) : moments (seed) {}

    void changed()
    {
        isLate = isLate || isClosed;
        moments.pass (200);
        isLate = isLate || isClosed;
        ++calls;
    }

    RandomMoments moments;
    int calls = 0; ///< on one thread, and on another one when the watch has gone
    std::atomic<bool> isClosed { false };
    std::atomic<bool> isLate { false };
};

TEST (MIDIWatchThreads, aWatchThatGoesAtAnyMomentTellsNobodyAfterwards)
{
    std::vector<std::unique_ptr<Window>> windows;
    int calls = 0;

    for (int round = 0; round < roundsOf (1000); ++round)
    {
        Desk desk { { { "20-0", "Keys" } }, {}, {}, 0, {} };
        MIDIInputs inputs (std::make_unique<DeskDevices> (desk), [] (auto, double) {});
        RandomMoments moments (round);
        windows.push_back (std::make_unique<Window> (round));
        auto& window = *windows.back();

        {
            MIDIInputWatch watch (inputs, 1ms);
            watch.setChanged ([&window] { window.changed(); });
            watch.begin();

            for (int changes = 1 + moments.upTo (4); changes > 0; --changes)
            {
                {
                    const std::lock_guard lock (desk.mutex);
                    desk.plugged = { { std::to_string (changes) + "-0", "Pedal" } };
                }

                moments.pass (1500);
            }

            if (moments.upTo (1) == 1)
                watch.setChanged ({});
        }

        window.isClosed = true;
        calls += window.calls;
    }

    EXPECT_GT (calls, 0) << "else the test has seen nothing";

    for (const auto& window : windows)
        EXPECT_FALSE (window->isLate);
}

TEST (MIDIWatchThreads, inputsThatComeGoOpenAndCloseOnManyThreadsAreListedAsTheyAre)
{
    for (int round = 0; round < roundsOf (1000) / 10; ++round)
    {
        Desk desk { { { "20-0", "Keys" }, { "24-0", "Pedal" } }, {}, {}, 0, {} };
        MIDIInputs inputs (std::make_unique<DeskDevices> (desk), [] (auto, double) {});
        MIDIInputWatch watch (inputs, 1ms);
        watch.begin();
        std::vector<std::thread> hands;

        for (int hand = 0; hand < 3; ++hand)
            hands.emplace_back (
                [&, hand]
                {
                    RandomMoments moments (round * 3 + hand);

                    for (int step = 0; step < 20; ++step, moments.pass (100))
                        switch (moments.upTo (4))
                        {
                            case 0: inputs.openAll(); break;
                            case 1: inputs.closeAll(); break;
                            case 2: static_cast<void> (inputs.open ("24-0")); break;
                            case 3: inputs.close ("24-0"); break;
                            default:
                                const std::lock_guard lock (desk.mutex);
                                desk.plugged = moments.upTo (1) == 0
                                                   ? std::vector<MIDIDevices::Device> { { "20-0", "Keys" } }
                                                   : std::vector<MIDIDevices::Device> { { "24-0", "Pedal" } };
                        }
                });

        for (auto& hand : hands)
            hand.join();

        watch.end();
        inputs.look();
        std::size_t open = 0;

        for (const auto& input : inputs.list())
        {
            ASSERT_EQ (input.isOpen, desk.open.contains (input.identifier));
            open += input.isOpen ? 1 : 0;
        }

        ASSERT_EQ (open, desk.open.size());
    }
}

// ---- the system ---------------------------------------------------------------------------------------------------------

/** What an observer hears; it stays when the observer has gone. */
struct Heard
{
    int messages = 0; ///< on the system's thread
    std::atomic<bool> isClosed { false };
    std::atomic<bool> isLate { false };
};

class Listener final
{
public:
    explicit Listener (Heard& heardByThis) : heard (heardByThis)
    {
        Poco::NotificationCenter::defaultCenter().addObserver (observer);
    }

    ~Listener() { Poco::NotificationCenter::defaultCenter().removeObserver (observer); }
    Listener (const Listener&) = delete;
    Listener& operator= (const Listener&) = delete;

private:
    void take (const Poco::AutoPtr<UserEventTriggerReceivedNotification>&)
    {
        heard.isLate = heard.isLate || heard.isClosed;
        ++heard.messages;
    }

    Heard& heard;
    Poco::NObserver<Listener, UserEventTriggerReceivedNotification> observer { *this, &Listener::take };
};

class MIDISystemThreads : public testing::Test
{
protected:
    MIDISystemThreads()
    {
        system.clearMIDITriggerEvents();
        system.addMIDIEventTrigger ("NoteOn 1 60");
    }

    ~MIDISystemThreads() override
    {
        system.setMonitor ({});
        system.clearMIDITriggerEvents();
    }

    static constexpr int burst = 10;
    const Bytes note { 0x90, 60, 100 };
    MIDISystem& system = *MIDISystem::sharedMIDISystem();
    const int rounds = roundsOf (1000);
};

TEST_F (MIDISystemThreads, noMessageIsLostWhoeverLearnsShowsAndRegistersMeanwhile)
{
    Heard heard;
    const Listener listener (heard);
    int learnt = 0, sent = 0;
    std::atomic<int> shown { 0 };

    for (int round = 0; round < rounds; ++round)
    {
        // Learning takes a message away from all others, whoever waits for one.
        std::optional<std::string> lesson;
        std::thread pupil (
            [&]
            {
                RandomMoments moments (round);
                moments.pass();
                lesson = system.learnMessage (std::chrono::milliseconds (moments.upTo (1)));
            });
        std::thread operatorAtDesk (
            [&]
            {
                RandomMoments moments (round + 1);

                for (int step = 0; step < 5; ++step, moments.pass (100))
                {
                    system.addMIDIEventTrigger ("PC 1 " + std::to_string (moments.upTo (100)));
                    system.setMonitor ([&shown] (const std::string&, double) { ++shown; });

                    if (moments.upTo (3) == 0)
                        system.cancelLearning();
                }
            });
        RandomMoments moments (round + 2);

        for (int i = 0; i < burst; ++i, ++sent, moments.pass (50))
            system.receive (note, sent);

        pupil.join();
        operatorAtDesk.join();
        ASSERT_TRUE (system.waitUntilDelivered (1min));
        learnt += lesson.has_value() ? 1 : 0;
        ASSERT_EQ (heard.messages + learnt, sent) << "round " << round;
        ASSERT_LE (shown, heard.messages);
    }
}

TEST_F (MIDISystemThreads, anObserverThatGoesAtAnyMomentHearsNothingAfterwards)
{
    std::atomic<bool> isOver { false };
    std::vector<std::unique_ptr<Heard>> everybody;
    int messages = 0;
    std::thread input (
        [&]
        {
            for (RandomMoments moments (0); ! isOver; moments.pass (30))
                system.receive (note, 0);
        });

    for (int round = 0; round < rounds; ++round)
    {
        RandomMoments moments (round);
        auto& heard = *everybody.emplace_back (std::make_unique<Heard>());

        {
            const Listener listener (heard);
            moments.pass();
        }

        heard.isClosed = true;
        messages += heard.messages;
    }

    isOver = true;
    input.join();
    ASSERT_TRUE (system.waitUntilDelivered (1min));
    EXPECT_GT (messages, 0) << "else the test has seen nothing";

    for (const auto& heard : everybody)
        EXPECT_FALSE (heard->isLate);
}

} // namespace
