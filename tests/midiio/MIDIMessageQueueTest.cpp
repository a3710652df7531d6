// SPDX-License-Identifier: GPL-3.0-only
#include "midiio/MIDIMessageQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace
{

using namespace std::chrono_literals;
using ZEP::MIDIIO::MIDIMessageQueue;
using Bytes = std::vector<std::uint8_t>;
using testing::ElementsAre;

/** Takes all that waits, on a thread of its own, as the MIDI system does. */
struct Delivery
{
    explicit Delivery (MIDIMessageQueue& queueToEmpty)
        : queue (queueToEmpty),
          thread (
              [this]
              {
                  while (queue.deliver (
                      [this] (auto message, double time) {
                          taken.push_back ({ { message.begin(), message.end() }, time });
                      }))
                  {
                  }
              })
    {
    }

    ~Delivery()
    {
        queue.close();
        thread.join();
    }

    Delivery (const Delivery&) = delete;
    Delivery& operator= (const Delivery&) = delete;

    MIDIMessageQueue& queue;
    std::vector<std::pair<Bytes, double>> taken;
    std::thread thread;
};

TEST (MIDIMessageQueue, handsOverInTheOrderOfArrival)
{
    MIDIMessageQueue queue;
    Delivery delivery (queue);
    EXPECT_TRUE (queue.add (Bytes { 1 }, 0.5));
    EXPECT_TRUE (queue.add (Bytes { 2, 3 }, 1.5));
    ASSERT_TRUE (queue.waitUntilDelivered (10s));
    EXPECT_THAT (delivery.taken, ElementsAre (std::pair (Bytes { 1 }, 0.5), std::pair (Bytes { 2, 3 }, 1.5)));
}

TEST (MIDIMessageQueue, waitingForNothingEndsAtOnce)
{
    MIDIMessageQueue queue;
    EXPECT_TRUE (queue.waitUntilDelivered (0ms));
}

TEST (MIDIMessageQueue, waitingEndsWithTheGivenTime)
{
    MIDIMessageQueue queue;
    EXPECT_TRUE (queue.add (Bytes { 1 }, 0));
    EXPECT_FALSE (queue.waitUntilDelivered (5ms));
}

TEST (MIDIMessageQueue, aReceiverCantWaitForItself)
{
    MIDIMessageQueue queue;
    bool hasWaited = true;
    EXPECT_TRUE (queue.add (Bytes { 1 }, 0));
    EXPECT_TRUE (queue.deliver ([&] (auto, double) { hasWaited = queue.waitUntilDelivered (10s); }));
    EXPECT_FALSE (hasWaited);
}

TEST (MIDIMessageQueue, whatDoesntFitIsLostAndTheRestIsDelivered)
{
    MIDIMessageQueue queue;
    const Bytes half (MIDIMessageQueue::mostBytesWaiting / 2);
    EXPECT_TRUE (queue.add (half, 1));
    EXPECT_TRUE (queue.add (half, 2));
    EXPECT_FALSE (queue.add (Bytes { 1 }, 3));
    int taken = 0;
    EXPECT_TRUE (queue.deliver ([&] (auto, double) { ++taken; }));
    EXPECT_EQ (taken, 2);
    EXPECT_TRUE (queue.add (Bytes { 1 }, 4));
}

TEST (MIDIMessageQueue, nothingIsHandedOverAfterClosing)
{
    MIDIMessageQueue queue;
    EXPECT_TRUE (queue.add (Bytes { 1 }, 0));
    queue.close();
    EXPECT_FALSE (queue.deliver ([] (auto, double) { FAIL(); }));
    EXPECT_FALSE (queue.add (Bytes { 2 }, 0));
}

TEST (MIDIMessageQueue, aReceiverMayCloseIt)
{
    MIDIMessageQueue queue;
    int taken = 0;
    EXPECT_TRUE (queue.add (Bytes { 1 }, 0));
    EXPECT_TRUE (queue.add (Bytes { 2 }, 0));
    EXPECT_FALSE (queue.deliver (
        [&] (auto, double)
        {
            ++taken;
            queue.close();
        }));
    EXPECT_EQ (taken, 1);
}

TEST (MIDIMessageQueue, closingEndsTheWait)
{
    MIDIMessageQueue queue;
    EXPECT_TRUE (queue.add (Bytes { 1 }, 0));
    bool isDelivered = true;
    std::thread waiting ([&] { isDelivered = queue.waitUntilDelivered (std::chrono::milliseconds::max()); });
    std::this_thread::sleep_for (10ms);
    EXPECT_FALSE (queue.isOver());
    queue.close();
    waiting.join();
    EXPECT_FALSE (isDelivered);
    EXPECT_TRUE (queue.isOver());
    EXPECT_FALSE (queue.waitUntilDelivered (10s));
}

TEST (MIDIMessageQueue, waitingForAWeekOrForEverIsATimeToo)
{
    MIDIMessageQueue queue;
    Delivery delivery (queue);
    EXPECT_TRUE (queue.add (Bytes { 1 }, 0));
    EXPECT_TRUE (queue.waitUntilDelivered (std::chrono::milliseconds::max()));
    EXPECT_TRUE (queue.add (Bytes { 2 }, 0));
    EXPECT_TRUE (queue.waitUntilDelivered (std::chrono::hours (24 * 7)));
    EXPECT_EQ (delivery.taken.size(), 2u);
}

} // namespace
