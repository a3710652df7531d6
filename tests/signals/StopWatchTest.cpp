// SPDX-License-Identifier: GPL-3.0-only
// docxHandler, which ends when its caller cancels it or somebody stops it.
#include "docxHandler/StopWatch.h"

#include "signals/Child.h"
#include "support/RandomMoments.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <optional>
#include <unistd.h>

using DocxHandler::StopWatch;
using namespace ZEP::Overmarks::Testing;

namespace
{

constexpr int done = 0;

TEST (StopWatchThreads, aSignalAtAnyMomentEndsTheToolOrItsWorkWasDone)
{
    int finished = 0;
    const int rounds = roundsOf (1000);

    for (int round = 0; round < rounds; ++round)
    {
        Child child (
            [round]
            {
                RandomMoments moments (round);
                StopWatch watch;
                moments.pass (300);
                watch.watch ({}, StopWatch::EarlierWord::counts);
                moments.pass (1500);
                return done;
            });
        RandomMoments moments (round + 1);
        moments.pass (3000);
        child.send (SIGTERM);
        const auto status = child.wait();
        ASSERT_TRUE (status == done || status == 128 + SIGTERM) << "round " << round << ": " << status;
        finished += status == done ? 1 : 0;
    }

    EXPECT_LT (finished, rounds) << "else the test has seen nothing";
}

TEST (StopWatchThreads, aWordInTheFileAtAnyMomentCancelsIt)
{
    const TemporaryFolder folder;

    // It looks twenty times a second.
    for (int round = 0; round < roundsOf (1000) / 20; ++round)
    {
        const auto word = folder.path / ("cancel" + std::to_string (round));
        Child child (
            [&]
            {
                StopWatch watch;
                watch.watch (word, StopWatch::EarlierWord::counts);
                ::sleep (60);
                return done;
            });
        RandomMoments moments (round);
        moments.pass (60'000);
        folder.write (word.filename().string(), "cancel\n");
        ASSERT_EQ (child.wait(), StopWatch::cancelledStatus) << "round " << round;
    }
}

} // namespace
