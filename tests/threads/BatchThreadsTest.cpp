// SPDX-License-Identifier: GPL-3.0-only
// A batch of documents that somebody cancels, starts or takes away at any moment.
#include "export/frame/BatchEventExportSession.h"

#include "export/ExportSupport.h"
#include "support/RandomMoments.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using namespace ExportSupport;
using ZEP::Overmarks::Testing::RandomMoments;
using ZEP::Overmarks::Testing::roundsOf;

namespace
{

using SettingsSets = BatchEventExportSession::SettingsSets;

/** Writes nothing, and takes its time for each character. It can be cancelled, as the writers of PDF and Word documents can. */
class SlowExporter final : public EventExporter
{
public:
    SlowExporter (std::shared_ptr<EventExportSettingsSet> set, int seed)
        : EventExporter (std::move (set)),
          moments (seed)
    {
    }

    juce::String exportEventsByCharacter() override
    {
        const auto total = static_cast<int> (settings->eventsByCharacter.size());

        for (int current = 0; current < total && ! isCancelled; ++current)
        {
            moments.pass();
            delegate->progressChanged (this, current + 1, total);
        }

        return {};
    }

    juce::String exportEventsByTimecode() override
    {
        moments.pass();
        delegate->progressChanged (this, 1, 1);
        return {};
    }

    EventExportType type() const override { return EventExportTypePDF; }
    void cancel() override { isCancelled = true; }

private:
    RandomMoments moments;
    std::atomic<bool> isCancelled { false };
};

/** All that a batch tells, in its order. */
class Account final : public BatchEventExportSession::Delegate
{
public:
    void batchProgressChanged (int current, int total) override
    {
        const std::lock_guard guard (lock);
        isLate = isLate || isOver;
        steps.emplace_back (current, total);
    }

    void batchFinished() override { end (finished); }
    void batchCancelled() override { end (cancelled); }

    /** From now on every call is too late. */
    void close()
    {
        const std::lock_guard guard (lock);
        isOver = true;
    }

    // To be read when the batch has gone.
    std::vector<std::pair<int, int>> steps;
    int finished = 0, cancelled = 0;
    bool isLate = false;

private:
    void end (int& kind)
    {
        const std::lock_guard guard (lock);
        isLate = isLate || isOver;
        isOver = true; // the last call
        ++kind;
    }

    std::mutex lock;
    bool isOver = false;
};

class BatchThreads : public ExportTest
{
protected:
    /** One to four documents, by timecode or of up to three characters. */
    SettingsSets someDocuments (RandomMoments& moments) const
    {
        SettingsSets sets;

        for (int documents = 1 + moments.upTo (3); documents > 0; --documents)
        {
            auto made = std::make_shared<EventExportSettingsSet> (*settings);

            if (const int characters = moments.upTo (3); characters == 0)
                made->events = { cue };
            else
                for (int i = 0; i < characters; ++i)
                    made->eventsByCharacter[juce::String (i)] = { cue };

            sets.push_back (made);
        }

        return sets;
    }

    static int stepsOf (const EventExportSettingsSet& set)
    {
        return set.events.empty() ? static_cast<int> (set.eventsByCharacter.size()) : 1;
    }

    static int stepsOf (const SettingsSets& sets)
    {
        int steps = 0;

        for (const auto& set : sets)
            steps += stepsOf (*set);

        return steps;
    }

    struct Batch
    {
        Batch (const SettingsSets& setsOfBatch, int seed) : sets (setsOfBatch), session (setsOfBatch)
        {
            session.delegate = &account;
            session.makeExporter = [seed] (const auto& set)
            { return std::make_shared<SlowExporter> (set, seed); };
            session.exportEnded = [this] (EventExporter& exporter, const juce::String&)
            { tried.push_back (exporter.settings); };
        }

        SettingsSets sets;
        Account account;
        SettingsSets tried; ///< on the session's thread
        BatchEventExportSession session;
    };

    /** What holds for every batch that was started, however it ended; its session has come to an end. */
    static void expectThatItAddsUp (const Batch& batch)
    {
        const auto& account = batch.account;
        ASSERT_EQ (account.finished + account.cancelled, 1);
        ASSERT_FALSE (account.isLate) << "told after the last word";
        const int total = stepsOf (batch.sets);
        int before = 0;

        for (const auto& [current, of] : account.steps)
        {
            ASSERT_EQ (of, total);
            ASSERT_GE (current, before);
            ASSERT_LE (current, total);
            before = current;
        }

        ASSERT_EQ (before, stepsOf (batch.tried)) << "each document that was tried counts as done";
        ASSERT_TRUE (std::equal (batch.tried.begin(), batch.tried.end(), batch.sets.begin()));
        ASSERT_EQ (account.finished == 1, batch.tried.size() == batch.sets.size()) << "cancelled in between";
    }

    const std::shared_ptr<Event> cue = event ({ .cueNumber = "A1" });
    const int rounds = roundsOf (1000);
};

TEST_F (BatchThreads, cancelledAtAnyMomentABatchAddsUpAndEndsOnce)
{
    int finished = 0, cancelled = 0;

    for (int round = 0; round < rounds; ++round)
    {
        RandomMoments moments (round), ownMoments (round + 1);
        std::optional<Batch> batch (std::in_place, someDocuments (moments), round);
        std::thread canceller (
            [&]
            {
                ownMoments.pass (1500);
                batch->session.cancel();
            });
        moments.pass();
        batch->session.start();
        canceller.join();
        batch->session.stopThread (-1);
        ASSERT_NO_FATAL_FAILURE (expectThatItAddsUp (*batch)) << "round " << round;
        finished += batch->account.finished;
        cancelled += batch->account.cancelled;
    }

    EXPECT_EQ (finished + cancelled, rounds);
    EXPECT_GT (cancelled, 0) << "else the test has seen nothing";
}

TEST_F (BatchThreads, aBatchThatGoesAtAnyMomentTellsNobodyAfterwards)
{
    std::vector<std::unique_ptr<Account>> accounts;

    for (int round = 0; round < rounds; ++round)
    {
        RandomMoments moments (round);
        const auto sets = someDocuments (moments);
        accounts.push_back (std::make_unique<Account>());

        {
            BatchEventExportSession session (sets);
            session.delegate = accounts.back().get();
            session.makeExporter = [round] (const auto& set)
            { return std::make_shared<SlowExporter> (set, round); };
            session.start();
            moments.pass (1000);

            if (moments.upTo (1) == 1)
                session.cancel();

            moments.pass (1000);
        }

        accounts.back()->close();
    }

    for (const auto& account : accounts)
    {
        EXPECT_EQ (account->finished + account->cancelled, 1);
        EXPECT_FALSE (account->isLate);
    }
}

TEST_F (BatchThreads, startedAndCancelledFromManySidesItRunsOnce)
{
    for (int round = 0; round < rounds; ++round)
    {
        RandomMoments moments (round);
        Batch batch (someDocuments (moments), round);
        std::vector<std::thread> threads;

        for (int side = 0; side < 4; ++side)
            threads.emplace_back (
                [&batch, side, round]
                {
                    RandomMoments own (round * 4 + side);
                    own.pass (1000);

                    if (side < 3)
                        batch.session.start();
                    else
                        batch.session.cancel();
                });

        for (auto& thread : threads)
            thread.join();

        batch.session.start(); // as late as that
        batch.session.stopThread (-1);
        ASSERT_NO_FATAL_FAILURE (expectThatItAddsUp (batch)) << "round " << round;
    }
}

TEST_F (BatchThreads, aBatchThatWasNeverStartedGoesInSilence)
{
    Account account;

    {
        BatchEventExportSession session ({ settings });
        session.delegate = &account;
        session.cancel();
    }

    EXPECT_EQ (account.finished + account.cancelled, 0);
    EXPECT_TRUE (account.steps.empty());
}

TEST_F (BatchThreads, oneStartedASecondTimeStaysAtItsEnd)
{
    RandomMoments moments (1);
    Batch batch (someDocuments (moments), 1);
    batch.session.start();
    batch.session.stopThread (-1);
    batch.session.start();
    batch.session.stopThread (-1);
    expectThatItAddsUp (batch);
    EXPECT_EQ (batch.account.finished, 1);
}

} // namespace
