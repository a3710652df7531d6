// SPDX-License-Identifier: GPL-3.0-only
// Cue sheets as PDF: cancelled at any moment, printed on several threads at once, and by browsers that die.
#include "export/EventPDFExporter.h"
#include "export/ExportSupport.h"
#include "export/print/DrawnCueSheetExporter.h"
#include "export/print/PDFPrintAdapter.h"
#include "export/print/ZEP_EventPDFExporter.h"
#include "support/RandomMoments.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

using namespace ExportSupport;
using ZEP::Overmarks::Testing::RandomMoments;
using ZEP::Overmarks::Testing::roundsOf;

namespace
{

class PrintThreads : public ExportTest
{
protected:
    PrintThreads()
    {
        settings->exportType = EventExportTypePDF;
        settings->options[EventExportPaperKey] = "a4";
        addCharacter ("a", "ANNA");
        addCharacter ("b", "BEN");
        addCharacter ("c", "CARL");
    }

    void addThreeCharacters() const
    {
        for (const auto* id : { "a", "b", "c" })
            settings->eventsByCharacter[id] = events ({ { .characterID = id, .words = "Hello" } });
    }

    /** Calls cancel() from another thread at some moment of the work. */
    template <typename Exporter, typename Work>
    static void cancelWithin (Exporter& exporter, RandomMoments& moments, int mostMicroseconds,
                              const Work& work)
    {
        std::thread canceller (
            [&]
            {
                moments.pass (mostMicroseconds);
                exporter.cancel();
            });
        work();
        canceller.join();
    }

    void expectWholeDocuments (std::size_t atMost) const
    {
        const auto names = folder.names();
        ASSERT_LE (names.size(), atMost);

        for (const auto& name : names)
        {
            const auto bytes = folder.bytes (name);
            ASSERT_TRUE (bytes.starts_with ("%PDF-") && bytes.ends_with ("%%EOF\n")) << name;
        }
    }

    void removeDocuments() const
    {
        for (const auto& name : folder.names())
            std::filesystem::remove (folder.path / name);
    }

    const int rounds = roundsOf (1000);
};

TEST_F (PrintThreads, drawnSheetsThatAreCancelledAtAnyMomentAreWholeOrNotThere)
{
    addThreeCharacters();
    std::size_t written = 0, wanted = 0;
    const int sheets = roundsOf (200); // drawing takes its time

    for (int round = 0; round < sheets; ++round)
    {
        RandomMoments moments (round);
        const bool isCombined = round % 4 == 0;
        settings->options[EventExportCombineIntoSingleFileKey] = isCombined;
        wanted += isCombined ? 1 : 3;
        DrawnCueSheetExporter exporter (settings);
        progress.reports.clear();
        exporter.delegate = &progress;
        cancelWithin (exporter, moments, 8000, [&] { ASSERT_EQ (exporter.exportEventsByCharacter(), ""); });
        ASSERT_NO_FATAL_FAILURE (expectWholeDocuments (3)) << "round " << round;
        written += folder.names().size();

        for (const auto& [current, total] : progress.reports)
            ASSERT_TRUE (current >= 1 && current <= total && total == 3) << current << " of " << total;

        removeDocuments();
    }

    EXPECT_LT (written, wanted) << "else the test has seen nothing";
}

/** Puts a file in the place of a document after a while. */
class SlowAdapter final : public PDFPrintAdapter
{
public:
    explicit SlowAdapter (int seed) : moments (seed) {}

    void initWithCallerObject (EventPDFExporter*) override { moments.pass(); }

    void exportHTMLString (const std::string&, const std::string& toFilePath) override
    {
        moments.pass();
        std::ofstream (toFilePath) << "%PDF-%%EOF\n";
    }

private:
    RandomMoments moments;
};

TEST_F (PrintThreads, printedSheetsThatAreCancelledAtAnyMomentAreThoseThatWereTold)
{
    addThreeCharacters();
    int cancelled = 0;

    for (int round = 0; round < rounds; ++round)
    {
        RandomMoments moments (round);
        EventPDFExporter exporter (settings);
        progress.reports.clear();
        exporter.delegate = &progress;
        exporter.makePrintAdapter = [round] { return std::make_unique<SlowAdapter> (round); };
        cancelWithin (exporter, moments, 1500, [&] { ASSERT_EQ (exporter.exportEventsByCharacter(), ""); });
        ASSERT_NO_FATAL_FAILURE (expectWholeDocuments (3)) << "round " << round;
        ASSERT_EQ (folder.names().size(), progress.reports.size()) << "round " << round;
        cancelled += folder.names().size() < 3 ? 1 : 0;

        for (int i = 0; i < static_cast<int> (progress.reports.size()); ++i)
            ASSERT_EQ (progress.reports[static_cast<std::size_t> (i)], std::pair (i + 1, 3));

        removeDocuments();
    }

    EXPECT_GT (cancelled, 0) << "else the test has seen nothing";
}

std::size_t openFiles()
{
    const std::filesystem::directory_iterator descriptors ("/proc/self/fd");
    return static_cast<std::size_t> (std::distance (begin (descriptors), end (descriptors)));
}

TEST_F (PrintThreads, browsersThatDieAtAnyMomentAreToldOnEachThreadAndLeaveNothing)
{
    constexpr int threads = 4;
    folder.write ("browser", "#!/bin/sh\ncase $$ in *[13]) exit 1 ;; *[57]) sleep 0.00$(($$ % 5)) ;; esac\n"
                             "kill -KILL $$\n");
    ::chmod ((folder.path / "browser").c_str(), 0755);
    settings->options[EventExportBrowserKey] = folder.file ("browser").getFullPathName();
    std::mutex lock;
    std::vector<std::string> reasons;
    const auto before = openFiles();
    std::vector<std::thread> printing;

    for (int thread = 0; thread < threads; ++thread)
        printing.emplace_back (
            [&, thread]
            {
                for (int round = thread; round < rounds; round += threads)
                {
                    EventPDFExporter exporter (settings);
                    ZEP_EventPDFExporter adapter;
                    adapter.initWithCallerObject (&exporter);
                    adapter.exportHTMLString ("<p>Hi</p>",
                                              (folder.path / (std::to_string (thread) + ".pdf")).string());
                    const std::lock_guard guard (lock);
                    reasons.push_back (adapter.failure().toStdString());
                }
            });

    for (auto& thread : printing)
        thread.join();

    EXPECT_EQ (reasons, std::vector<std::string> (static_cast<std::size_t> (rounds),
                                                  "the browser has ended before the page was printed"));
    EXPECT_EQ (folder.names(), std::vector<std::string> { "browser" });
    EXPECT_EQ (openFiles(), before);
}

} // namespace
