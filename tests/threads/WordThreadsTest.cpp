// SPDX-License-Identifier: GPL-3.0-only
// Word exports: the helper that tells how far the tool is, and a person who cancels at any moment.
#include "export/word/EventWordExporter.h"
#include "export/word/ProgressBarHelper.h"
#include "export/word/WordExportSupport.h"
#include "support/RandomMoments.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <memory>
#include <thread>
#include <vector>

using namespace WordExportSupport;
using ZEP::Overmarks::Testing::RandomMoments;
using ZEP::Overmarks::Testing::roundsOf;

namespace
{

/** Knows when nobody may call any more. */
class ClosingListener final : public EventExporter::Delegate
{
public:
    void progressChanged (EventExporter*, int current, int total) override
    {
        calls += 1;
        isWrong = isWrong || isClosed || total != 10 || current < 0 || current > total;
    }

    std::atomic<int> calls { 0 };
    std::atomic<bool> isClosed { false }, isWrong { false };
};

/** Does the work on many threads at once, since most of it is waiting. @param work  takes the number of the round */
template <typename Work>
void onManyThreads (int rounds, const Work& work)
{
    constexpr int threads = 50;
    std::vector<std::thread> workers;

    for (int worker = 0; worker < threads; ++worker)
        workers.emplace_back (
            [&work, rounds, worker]
            {
                for (int round = worker; round < rounds; round += threads)
                    work (round);
            });

    for (auto& worker : workers)
        worker.join();
}

class WordThreads : public WordExportTest
{
protected:
    /** As the tool does, but for half a line now and then. */
    void writeProgress (RandomMoments& moments) const
    {
        const auto line = "completionLevel=" + std::to_string (moments.upTo (100));
        tool.plant ("new", moments.upTo (9) == 0 ? line.substr (0, 9) : line + "\n");
        std::rename (tool.inTemporary ("new").c_str(), tool.inTemporary ("P2CcomWordExporter.txt").c_str());
    }

    const int rounds = roundsOf (1000);
};

TEST_F (WordThreads, aHelperThatGoesAtAnyMomentTellsNobodyAfterwards)
{
    std::atomic<bool> isOver { false };
    std::atomic<int> calls { 0 }, wrong { 0 };
    std::thread toolAtWork (
        [&]
        {
            for (RandomMoments moments (0); ! isOver; moments.pass (5000))
                writeProgress (moments);
        });

    onManyThreads (rounds,
                   [&] (int round)
                   {
                       RandomMoments moments (round);
                       ClosingListener told;
                       EventWordExporter ofHelper (std::make_shared<EventExportSettingsSet>());
                       auto helper = std::make_unique<ProgressBarHelper> (&ofHelper, &told, 10);
                       moments.pass (250'000);

                       if (moments.upTo (3) == 0)
                           ofHelper.cancelled = true; // as cancel() does, which would write a file as well

                       helper.reset();
                       told.isClosed = true;
                       ofHelper.comFilePaths.clear(); // they belong to all of these exporters
                       calls += told.calls;
                       wrong += told.isWrong ? 1 : 0;
                   });

    isOver = true;
    toolAtWork.join();
    EXPECT_EQ (wrong, 0);
    EXPECT_GT (calls, 0);
}

/** Waits for the word to stop and heeds it; after twenty seconds it tells that none has come. */
constexpr auto heedsTheWord = R"(
for i in 0 1 2 3 4 5 6 7 8 9
do
    for j in 0 1 2 3 4 5 6 7 8 9 0 1 2 3 4 5 6 7 8 9
    do
        { read -r word < "$cancel"; } 2> /dev/null && exit 3
        echo "completionLevel=$i$j" > "$progress"
        sleep 0.1
    done
done
echo late >> "$here/late")";

TEST_F (WordThreads, whenEverSomebodyCancelsTheToolHearsOfIt)
{
    tool.install (heedsTheWord);
    const auto cue = event ({ .cueNumber = "A1" });
    std::atomic<int> wrong { 0 }, begun { 0 };

    onManyThreads (rounds,
                   [&] (int round)
                   {
                       RandomMoments moments (round);
                       auto set = std::make_shared<EventExportSettingsSet> (*settings);
                       const auto name = "run" + std::to_string (round);
                       std::filesystem::create_directory (folder.path / name);
                       set->outputDirectory = folder.file (name).getFullPathName();

                       for (int i = 0; i < 10; ++i)
                           set->eventsByCharacter[text (name + "-" + std::to_string (i))] = { cue };

                       ClosingListener told;
                       EventWordExporter ofRound (set);
                       ofRound.delegate = &told;
                       ofRound.comFilePaths = { text (tool.inTemporary ("P" + name)),
                                                text (tool.inTemporary ("C" + name)) };
                       std::thread canceller (
                           [&]
                           {
                               // At any moment, or at one at which the tool is at work.
                               for (int i = 0; i < 60'000 && round % 2 == 0 && ! tool.has ("P" + name); ++i)
                                   std::this_thread::sleep_for (std::chrono::milliseconds (1));

                               moments.pass (60'000);
                               ofRound.cancel();
                           });
                       const auto error = ofRound.exportEventsByCharacter();
                       told.isClosed = true;
                       canceller.join();
                       begun += told.calls > 0 ? 1 : 0;
                       wrong += error.isNotEmpty() || told.isWrong ? 1 : 0;
                   });

    EXPECT_EQ (wrong, 0);
    EXPECT_GT (begun, 0) << "else no tool was cancelled";
    EXPECT_EQ (tool.note ("late"), "");
    EXPECT_EQ (tool.temporaryFiles(), Names()) << "what exporters leave behind";
}

} // namespace
