// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/BatchEventExportSession.h"

#include "export/EventPDFExporter.h"
#include "export/ExportSupport.h"
#include "export/frame/EventExporterFactory.h"
#include "export/print/PDFPrintAdapter.h"
#include "support/CollectedLog.h"

#include <Poco/Logger.h>
#include <gmock/gmock.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <regex>
#include <thread>

using namespace ExportSupport;
using namespace std::chrono_literals;
using ZEP::Overmarks::Testing::CollectedLog;

namespace
{

/** Writes an empty file in the place of a printed one. */
class TouchingAdapter final : public PDFPrintAdapter
{
public:
    void initWithCallerObject (EventPDFExporter*) override {}
    void exportHTMLString (const std::string&, const std::string& toFilePath) override
    {
        std::ofstream stream (toFilePath);
    }
};

/** Notes what a batch tells, and on which thread. */
class Diary final : public BatchEventExportSession::Delegate
{
public:
    void batchProgressChanged (int current, int total) override
    {
        note ("(" + std::to_string (current) + ", " + std::to_string (total) + ")");

        if (atProgress)
            atProgress();
    }

    void batchFinished() override { end ("finished"); }
    void batchCancelled() override { end ("cancelled"); }

    /** Waits for the end. @returns all that was told */
    std::vector<std::string> wait()
    {
        std::unique_lock locked (lock);
        EXPECT_TRUE (change.wait_for (locked, 30s, [this] { return hasEnded; }));
        return entries;
    }

    std::function<void()> atProgress;
    std::thread::id thread;

private:
    void note (const std::string& entry)
    {
        const std::scoped_lock locked (lock);
        entries.push_back (entry);
        thread = std::this_thread::get_id();
    }

    void end (const std::string& entry)
    {
        note (entry);
        const std::scoped_lock locked (lock);
        hasEnded = true;
        change.notify_all();
    }

    std::mutex lock;
    std::condition_variable change;
    std::vector<std::string> entries;
    bool hasEnded = false;
};

using Entries = std::vector<std::string>;

class BatchEventExportSessionTest : public ExportTest
{
protected:
    std::shared_ptr<EventExportSettingsSet> newSettings (int type, const std::string& name) const
    {
        auto made = std::make_shared<EventExportSettingsSet> (*settings);
        made->exportType = static_cast<EventExportType> (type);
        made->fileName = text (name);
        return made;
    }

    std::shared_ptr<EventExportSettingsSet> byTimecode (int type, const std::string& name) const
    {
        auto made = newSettings (type, name);
        made->events = events ({ { .cueNumber = "1" } });
        return made;
    }

    std::shared_ptr<EventExportSettingsSet> byCharacter (int type, const std::string& name,
                                                         int characters) const
    {
        auto made = newSettings (type, name);

        for (int i = 0; i < characters; ++i)
            made->eventsByCharacter[juce::String (i)] = events ({ { .cueNumber = "1" } });

        return made;
    }

    /** PDF documents are printed by nobody. */
    static std::shared_ptr<EventExporter> makeExporter (std::shared_ptr<EventExportSettingsSet> set)
    {
        auto made = EventExporterFactory::eventExporter (std::move (set));

        if (auto* sheet = dynamic_cast<EventPDFExporter*> (made.get()))
            sheet->makePrintAdapter = [] { return std::make_unique<TouchingAdapter>(); };

        return made;
    }

    Entries run (BatchEventExportSession::SettingsSets sets)
    {
        BatchEventExportSession session (std::move (sets));
        session.delegate = &diary;
        session.makeExporter = makeExporter;
        session.start();
        return diary.wait();
    }

    Diary diary;
};

constexpr int none = 0, pdf = 1, csv = 3, asc = 4, arendis = 5;

/** Counts how often it is cancelled, and does nothing else. */
class IdleExporter final : public EventExporter
{
public:
    IdleExporter (std::shared_ptr<EventExportSettingsSet> set, std::function<void()> whatToDo,
                  std::atomic<int>& count)
        : EventExporter (std::move (set)),
          work (std::move (whatToDo)),
          cancellations (count)
    {
    }

    juce::String exportEventsByCharacter() override { return exportEventsByTimecode(); }
    juce::String exportEventsByTimecode() override
    {
        work();
        return "an error";
    }
    EventExportType type() const override { return EventExportTypeWord; }
    void cancel() override { ++cancellations; }

private:
    std::function<void()> work;
    std::atomic<int>& cancellations;
};

} // namespace

TEST_F (BatchEventExportSessionTest, anEmptyListFinishesAtOnce)
{
    EXPECT_EQ (run ({}), Entries { "finished" });
}

TEST_F (BatchEventExportSessionTest, itsThreadHasAName)
{
    EXPECT_EQ (BatchEventExportSession ({}).getThreadName(), "Batch Event Export");
}

TEST_F (BatchEventExportSessionTest, threeSetsByTimecodeReportEachStep)
{
    EXPECT_EQ (run ({ byTimecode (csv, "a"), byTimecode (csv, "b"), byTimecode (csv, "c") }),
               (Entries { "(1, 3)", "(2, 3)", "(3, 3)", "finished" }));
    EXPECT_EQ (folder.names(), (std::vector<std::string> { "a.csv", "b.csv", "c.csv" }));
    EXPECT_NE (diary.thread, std::this_thread::get_id());
}

TEST_F (BatchEventExportSessionTest, theExportersOwnReportsComeInBetween)
{
    EXPECT_EQ (run ({ byTimecode (pdf, "a"), byTimecode (csv, "b") }),
               (Entries { "(1, 2)", "(1, 2)", "(2, 2)", "finished" }));
}

TEST_F (BatchEventExportSessionTest, aSetByCharacterCountsItsCharactersBehindWhatWasDoneBefore)
{
    EXPECT_EQ (run ({ byTimecode (csv, "a"), byCharacter (pdf, "b", 4) }),
               (Entries { "(1, 5)", "(2, 5)", "(3, 5)", "(4, 5)", "(5, 5)", "(5, 5)", "finished" }));
    EXPECT_EQ (folder.names().size(), 5u);
}

TEST_F (BatchEventExportSessionTest, aSetWithoutAnythingEndsBelowTheTotal)
{
    EXPECT_EQ (run ({ newSettings (csv, "a"), byTimecode (csv, "b") }),
               (Entries { "(0, 2)", "(1, 2)", "finished" }));
    EXPECT_EQ (folder.names(), std::vector<std::string> { "b.csv" });
}

TEST_F (BatchEventExportSessionTest, aSetWithBothIsExportedByTimecodeAlone)
{
    auto both = byCharacter (csv, "a", 3);
    both->events = events ({ { .cueNumber = "1" } });
    EXPECT_EQ (run ({ both }), (Entries { "(1, 3)", "finished" }));
    EXPECT_EQ (folder.names(), std::vector<std::string> { "a.csv" });
}

TEST_F (BatchEventExportSessionTest, cancellingBeforeTheSecondSetLeavesTheFirstDocument)
{
    BatchEventExportSession session ({ byTimecode (csv, "a"), byTimecode (csv, "b") });
    session.delegate = &diary;
    diary.atProgress = [&session] { session.cancel(); };
    session.start();
    EXPECT_EQ (diary.wait(), (Entries { "(1, 2)", "cancelled" }));
    EXPECT_EQ (folder.names(), std::vector<std::string> { "a.csv" });
}

TEST_F (BatchEventExportSessionTest, cancellingBeforeTheStartWritesNothing)
{
    BatchEventExportSession session ({ byTimecode (csv, "a") });
    session.delegate = &diary;
    session.cancel();
    session.start();
    EXPECT_EQ (diary.wait(), Entries { "cancelled" });
    EXPECT_TRUE (folder.names().empty());
}

TEST_F (BatchEventExportSessionTest, cancellingEndsARunningSheetByCharacterEarly)
{
    BatchEventExportSession session ({ byCharacter (pdf, "a", 4), byTimecode (csv, "b") });
    session.delegate = &diary;
    session.makeExporter = makeExporter;
    diary.atProgress = [&session] { session.cancel(); };
    session.start();
    EXPECT_EQ (diary.wait(), (Entries { "(1, 5)", "(4, 5)", "cancelled" }));
    EXPECT_EQ (folder.names().size(), 1u);
}

TEST_F (BatchEventExportSessionTest, theRunningExporterIsCancelledFromAnotherThread)
{
    std::atomic<int> cancellations { 0 };
    std::atomic<bool> isRunning { false };
    BatchEventExportSession session ({ byTimecode (2, "a") });
    session.delegate = &diary;
    session.makeExporter = [&] (const auto& set)
    {
        return std::make_shared<IdleExporter> (
            set,
            [&]
            {
                isRunning = true;

                while (cancellations == 0)
                    std::this_thread::sleep_for (1ms);
            },
            cancellations);
    };
    session.start();

    while (! isRunning)
        std::this_thread::sleep_for (1ms);

    session.cancel();
    EXPECT_EQ (diary.wait(), (Entries { "(1, 1)", "finished" })) << "there was no document after it";
    EXPECT_EQ (cancellations, 1);
}

TEST_F (BatchEventExportSessionTest, anExporterThatIsMadeWhileSomebodyCancelsIsToldToo)
{
    std::atomic<int> cancellations { 0 };
    BatchEventExportSession session ({ byTimecode (2, "a") });
    session.delegate = &diary;
    session.makeExporter = [&] (const auto& set)
    {
        session.cancel();
        return std::make_shared<IdleExporter> (
            set, [] {}, cancellations);
    };
    session.start();
    diary.wait();
    EXPECT_EQ (cancellations, 1);
}

TEST_F (BatchEventExportSessionTest, kindsWithoutAnExporterAreLoggedAndTheirStepsCounted)
{
    const CollectedLog log;
    EXPECT_EQ (run ({ byTimecode (none, "a"), byCharacter (asc, "b", 2), byTimecode (arendis, "c"), nullptr,
                      byTimecode (csv, "d") }),
               (Entries { "(1, 5)", "(3, 5)", "(4, 5)", "(5, 5)", "finished" }));
    EXPECT_EQ (log.lines(), (Entries { "There is no exporter for a document with type: None",
                                       "There is no exporter for a document with type: ASC",
                                       "There is no exporter for a document with type: Arendis" }));
    EXPECT_EQ (folder.names(), std::vector<std::string> { "d.csv" });
}

TEST_F (BatchEventExportSessionTest, anExportWithAMissingOptionIsLoggedAndTheOthersGoOn)
{
    const CollectedLog log;
    auto lacking = byTimecode (csv, "a");
    lacking->options.clear();
    EXPECT_EQ (run ({ lacking, byTimecode (csv, "b") }), (Entries { "(1, 2)", "(2, 2)", "finished" }));
    ASSERT_EQ (log.lines().size(), 1u);
    EXPECT_THAT (log.lines()[0], testing::StartsWith ("Error exporting document with type: CSV: "));
    EXPECT_EQ (folder.names(), std::vector<std::string> { "b.csv" });
}

TEST_F (BatchEventExportSessionTest, errorsAreToldToWhoeverAsksAndStopNothing)
{
    std::atomic<int> cancellations { 0 };
    Entries errors;
    BatchEventExportSession session ({ byTimecode (2, "a"), byTimecode (2, "b") });
    session.delegate = &diary;
    session.makeExporter = [&] (const auto& set)
    {
        return std::make_shared<IdleExporter> (
            set, [] {}, cancellations);
    };
    session.exportEnded = [&errors] (EventExporter& exporter, const juce::String& error)
    { errors.push_back (exporter.settings->fileName.toStdString() + ": " + error.toStdString()); };
    session.start();
    EXPECT_EQ (diary.wait(), (Entries { "(1, 2)", "(2, 2)", "finished" }));
    EXPECT_EQ (errors, (Entries { "a: an error", "b: an error" }));
}

TEST_F (BatchEventExportSessionTest, whatAnApplicationsFunctionsThrowIsLoggedAndStopsNothing)
{
    const CollectedLog log;
    BatchEventExportSession session ({ byTimecode (csv, "a"), byTimecode (csv, "b") });
    session.delegate = &diary;
    session.makeExporter = [] (const auto& made) -> std::shared_ptr<EventExporter>
    {
        if (made->fileName == "a")
            throw std::runtime_error ("no exporter today");

        return EventExporterFactory::eventExporter (made);
    };
    session.exportEnded = [] (auto&, const auto&) { throw std::runtime_error ("nobody listens"); };
    session.start();
    EXPECT_EQ (diary.wait(), (Entries { "(1, 2)", "(2, 2)", "finished" }));
    EXPECT_EQ (log.lines(), (Entries { "Error exporting document with type: CSV: no exporter today",
                                       "Error exporting document with type: CSV: nobody listens" }));
}

TEST_F (BatchEventExportSessionTest, theTimeOfEachDocumentIsLoggedForTheDeveloper)
{
    const CollectedLog log;
    Poco::Logger::get ("ZEP").setLevel (Poco::Message::PRIO_DEBUG);
    run ({ byTimecode (csv, "a") });
    ASSERT_EQ (log.lines().size(), 1u);
    std::smatch seconds;
    const auto line = log.lines()[0];
    ASSERT_TRUE (
        std::regex_match (line, seconds, std::regex ("Exporting document with type: CSV took : ([0-9.e-]+)")))
        << line;
    EXPECT_LT (std::stod (seconds.str (1)), 60) << line;
}

TEST_F (BatchEventExportSessionTest, withoutADelegateItWorksAsWell)
{
    {
        BatchEventExportSession session ({ byTimecode (csv, "a"), byCharacter (csv, "b", 2) });
        session.start();
    }

    EXPECT_EQ (folder.names().size(), 3u) << "its end waits for the thread";
}
