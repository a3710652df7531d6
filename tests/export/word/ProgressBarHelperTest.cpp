// SPDX-License-Identifier: GPL-3.0-only
#include "export/word/ProgressBarHelper.h"

#include "export/ExportSupport.h"
#include "export/word/EventWordExporter.h"
#include "support/StandInTool.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <thread>

using namespace ExportSupport;
using testing::Each;
using testing::IsEmpty;
using ZEP::Overmarks::Testing::StandInTool;

namespace
{

using Reports = std::vector<std::pair<int, int>>;
using std::chrono::milliseconds;

/** Waits for what is told on another thread. */
class Listener final : public EventExporter::Delegate
{
public:
    void progressChanged (EventExporter* exporter, int current, int total) override
    {
        const std::lock_guard lock (mutex);
        reports.emplace_back (current, total);
        sender = exporter;
        told.notify_all();
    }

    /** Waits until so much has been told, but no longer than ten seconds. */
    Reports atLeast (std::size_t number)
    {
        std::unique_lock lock (mutex);
        told.wait_for (lock, std::chrono::seconds (10), [&] { return reports.size() >= number; });
        return reports;
    }

    EventExporter* sender = nullptr;

private:
    std::mutex mutex;
    std::condition_variable told;
    Reports reports;
};

class ProgressBarHelperTest : public testing::Test
{
protected:
    /** Nobody ever sees half a line. */
    void tell (const std::string& lines) const
    {
        tool.plant ("new", lines);
        std::rename (tool.inTemporary ("new").c_str(), tool.inTemporary ("P2CcomWordExporter.txt").c_str());
    }

    /** Waits for the end of the helper's own thread, no longer than ten seconds. */
    static bool ends (ProgressBarHelper& helper) { return helper.waitForThreadToExit (10000); }

    const StandInTool tool;
    Listener listener;
    EventWordExporter exporter { std::make_shared<EventExportSettingsSet>() };
};

} // namespace

TEST_F (ProgressBarHelperTest, isAThreadWithANameThatRunsFromTheStart)
{
    const ProgressBarHelper helper (&exporter, &listener, 3);
    EXPECT_EQ (helper.getThreadName(), "Progress Bar Helper");
    EXPECT_TRUE (helper.isThreadRunning());
    EXPECT_EQ (helper.exporter, &exporter);
    EXPECT_EQ (helper.delegate, &listener);
    EXPECT_EQ (helper.numFiles, 3);
}

TEST_F (ProgressBarHelperTest, withoutAnExporterNothingRuns)
{
    ProgressBarHelper helper (nullptr, &listener, 3);
    EXPECT_FALSE (helper.isThreadRunning());
    helper.startThread(); // nor for long, should somebody start it
    EXPECT_TRUE (ends (helper));
    EXPECT_THAT (listener.atLeast (0), IsEmpty());
}

TEST_F (ProgressBarHelperTest, waitsForTheFileAndThenTellsFilesForPercent)
{
    const ProgressBarHelper helper (&exporter, &listener, 3);
    std::this_thread::sleep_for (milliseconds (450));
    EXPECT_TRUE (helper.isThreadRunning());
    EXPECT_THAT (listener.atLeast (0), IsEmpty());
    tell ("completionLevel=50\n");
    EXPECT_EQ (listener.atLeast (1).front(), std::pair (1, 3));
    EXPECT_EQ (listener.sender, &exporter);
}

TEST_F (ProgressBarHelperTest, looksFiveTimesASecond)
{
    tell ("completionLevel=10");
    const ProgressBarHelper helper (&exporter, &listener, 10);
    const auto start = std::chrono::steady_clock::now();
    listener.atLeast (4);
    EXPECT_GE (std::chrono::steady_clock::now() - start, milliseconds (790));
}

TEST_F (ProgressBarHelperTest, endsAtAHundredPerCent)
{
    tell ("completionLevel=100");
    ProgressBarHelper helper (&exporter, &listener, 3);
    EXPECT_TRUE (ends (helper));
    EXPECT_EQ (listener.atLeast (1), (Reports { { 3, 3 } }));
}

TEST_F (ProgressBarHelperTest, filesAreRoundedDownAndLevelsOutOfRangeAreToldAsTheyAre)
{
    for (const auto& [level, files] : { std::pair (33, 0), std::pair (34, 1), std::pair (-50, -1),
                                        std::pair (200, 6), std::pair (999999999, 29999999) })
    {
        Listener told;
        tell ("completionLevel=" + std::to_string (level));
        const ProgressBarHelper helper (&exporter, &told, 3);
        EXPECT_EQ (told.atLeast (1).front(), std::pair (files, 3)) << level;
    }
}

TEST_F (ProgressBarHelperTest, linesThatAreNoLevelAreOverlooked)
{
    for (const auto* lines : { "", "\ncompletionLevel=50", "completionLevel=1=2" })
    {
        Listener told;
        tell (lines);
        const ProgressBarHelper helper (&exporter, &told, 3);
        std::this_thread::sleep_for (milliseconds (300));
        EXPECT_TRUE (helper.isThreadRunning()) << lines;
        EXPECT_THAT (told.atLeast (0), IsEmpty()) << lines;
    }
}

TEST_F (ProgressBarHelperTest, aLevelThatIsCutOffCountsAsNone)
{
    tell ("completionLevel=");
    const ProgressBarHelper helper (&exporter, &listener, 3);
    EXPECT_EQ (listener.atLeast (1).front(), std::pair (0, 3));
}

TEST_F (ProgressBarHelperTest, withoutADelegateItRunsOnUntilItIsStopped)
{
    tell ("completionLevel=100");
    const ProgressBarHelper helper (&exporter, nullptr, 3);
    std::this_thread::sleep_for (milliseconds (500));
    EXPECT_TRUE (helper.isThreadRunning());
}

TEST_F (ProgressBarHelperTest, aCancelledExportEndsItAfterOneMoreLook)
{
    tell ("completionLevel=50");
    exporter.cancelled = true;
    ProgressBarHelper helper (&exporter, &listener, 4);
    EXPECT_TRUE (ends (helper));
    EXPECT_EQ (listener.atLeast (1), (Reports { { 2, 4 } }));
}

TEST_F (ProgressBarHelperTest, aFileThatCannotBeReadEndsIt)
{
    ASSERT_EQ (::mkfifo (tool.inTemporary ("P2CcomWordExporter.txt").c_str(), 0600), 0);
    ProgressBarHelper helper (&exporter, &listener, 3);
    EXPECT_TRUE (helper.waitForThreadToExit (3000));
    EXPECT_THAT (listener.atLeast (0), IsEmpty());
}

TEST_F (ProgressBarHelperTest, aFileThatIsNoneEndsNothing)
{
    std::filesystem::create_directory (tool.temporary / "P2CcomWordExporter.txt");
    const ProgressBarHelper helper (&exporter, &listener, 3);
    std::this_thread::sleep_for (milliseconds (500));
    EXPECT_TRUE (helper.isThreadRunning());
    EXPECT_THAT (listener.atLeast (0), IsEmpty());
}
