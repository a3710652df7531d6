// SPDX-License-Identifier: GPL-3.0-only
// A Word export while docxHandler runs: the delegate is told, and somebody cancels.
#include "export/word/WordExportSupport.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <thread>

using namespace WordExportSupport;

TEST_F (WordExportTest, theDelegateHearsHowFarTheToolIs)
{
    tool.install ("echo completionLevel=50 > \"$progress\"; sleep 0.5");
    for (const auto* id : { "a", "b", "c" })
        settings->eventsByCharacter[id] = events ({ { "T1" } });
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    const auto reports = listener.all();
    ASSERT_GE (reports.size(), 3u);
    EXPECT_EQ (reports.front(), std::pair (1, 3));
    EXPECT_THAT (reports, testing::Contains (std::pair (3, 3)));
}

TEST_F (WordExportTest, byTimecodeAndCombinedThereIsNoProgressOnTheWay)
{
    tool.install ("echo completionLevel=50 > \"$progress\"; sleep 0.5");
    settings->eventsByCharacter["a"] = events ({ { "T1" } });
    exporter.exportEventsByTimecode();
    combine();
    exporter.exportEventsByCharacter();
    EXPECT_EQ (listener.all(), (Reports { { 1, 1 }, { 1, 1 } }));
}

TEST_F (WordExportTest, cancellingFromAnotherThreadReachesTheTool)
{
    tool.install (R"(
touch "$here/started"
for i in 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20
do
    sleep 0.1
    if grep -q cancel "$cancel" 2> /dev/null; then echo cancelled > "$here/end"; exit 1; fi
done
echo late > "$here/end")");
    settings->eventsByCharacter["a"] = events ({ { "T1" } });
    std::thread canceller (
        [this]
        {
            for (int i = 0; i < 200 && ! std::filesystem::exists (tool.resources / "started"); ++i)
                std::this_thread::sleep_for (std::chrono::milliseconds (10));
            exporter.cancel();
        });
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    canceller.join();
    EXPECT_EQ (tool.note ("end"), "cancelled\n");
    EXPECT_TRUE (exporter.cancelled);
    EXPECT_EQ (listener.all(), (Reports { { 1, 1 } }));
}

TEST_F (WordExportTest, cancelledBeforeItBeginsAnExportStartsNoTool)
{
    settings->eventsByCharacter["a"] = events ({ { "T1" } });
    exporter.cancel();
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (tool.runs(), 0);
    combine();
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (tool.runs(), 0);
    EXPECT_THAT (tool.temporaryFiles(), testing::IsEmpty());
}
