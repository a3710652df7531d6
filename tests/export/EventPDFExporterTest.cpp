// SPDX-License-Identifier: GPL-3.0-only
#include "export/EventPDFExporter.h"

#include "core/system/SystemUtility.h"
#include "export/ExportSupport.h"
#include "export/GoldenFiles.h"
#include "export/frame/EventExporterFactory.h"
#include "export/print/PDFPrintAdapter.h"
#include "support/CollectedLog.h"

using namespace ExportSupport;
using ZEP::Core::SystemUtility;
using ZEP::Overmarks::Testing::CollectedLog;

namespace
{

struct Printed
{
    EventPDFExporter* caller;
    std::string html;
    std::string path;
    bool withLittlePatience;

    std::string name() const { return std::filesystem::path (path).filename().string(); }
};

/** Keeps what it should print. */
class KeepingAdapter final : public PDFPrintAdapter
{
public:
    KeepingAdapter (std::vector<Printed>& documents, std::string words)
        : printed (documents),
          failureWords (std::move (words))
    {
    }

    void initWithCallerObject (EventPDFExporter* exporter) override { caller = exporter; }

    void exportHTMLString (const std::string& html, const std::string& toFilePath) override
    {
        printed.push_back ({ caller, html, toFilePath, expectsLittle });
    }

    juce::String failure() const override { return text (failureWords); }
    bool hasWaitedInVain() const override { return failureWords == "hangs"; }
    void expectLittle() override { expectsLittle = true; }

private:
    std::vector<Printed>& printed;
    std::string failureWords;
    EventPDFExporter* caller = nullptr;
    bool expectsLittle = false;
};

class EventPDFExporterTest : public ExportTest
{
protected:
    EventPDFExporterTest()
    {
        SystemUtility::Configuration configuration;
        configuration.resourcePath = "/usr/share/overmarks/resources";
        SystemUtility::configure (configuration);
        settings->exportType = EventExportTypePDF;
        settings->projectSettings.projectName = "Film";
        exporter.delegate = &progress;
        exporter.makePrintAdapter = [this]
        { return std::make_unique<KeepingAdapter> (printed, failureWords); };
        addCharacter ("c1", "Ann", "A", "Mary Miller");
        addCharacter ("c2", "tom");
        addCharacter ("c3", "Bo/b");
    }

    ~EventPDFExporterTest() override { SystemUtility::configure ({}); }

    std::string head (const std::string& names)
    {
        return exporter.documentHeader().toStdString() + exporter.firstPageHeader (text (names)).toStdString()
               + "<div style=\"height:30px\"></div>";
    }

    std::string cue (const std::shared_ptr<Event>& event)
    {
        return exporter.oneCueContent (event).toStdString();
    }

    using Reports = std::vector<std::pair<int, int>>;

    std::string failureWords;
    std::vector<Printed> printed;
    EventPDFExporter exporter { settings };
};

/** A cue list with every kind of row that a sheet can have. */
class CueSheetTest : public EventPDFExporterTest
{
protected:
    CueSheetTest()
    {
        settings->projectSettings = { "/films/Film & Co.overmarks", text ("Film \xE2\x80\x93 Reel 2"),
                                      "Stage 1", "Sue Supervisor", "" };
        settings->timelineSettings.timelineName = "Timeline 1";
        settings->timelineSettings.episodeReel = "R2";
        settings->timelineSettings.pictureVersion = "v7";
        settings->showTakeNumbers = true;

        auto first = event (
            { "A1", oneHour + 100, oneHour + 175, "c1", "\xE2\x80\x9CStop!\xE2\x80\x9D\nnow", "loud" });
        first->setReason (4);
        first->setNumRecordedTakes (3);
        first->setSelectedTake (2);
        first->setAltTake (3);

        auto second = event ({ "T<1>", oneHour + 200, oneHour + 300, "c2",
                               "\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82" });
        second->setEngineeringNotes (text ("Boom only"));
        second->setIsForcedNarrative (true);
        second->setNumRecordedTakes (26);

        settings->events = { first, second,
                             event ({ "3", oneHour + 400, oneHour + 500, "nobody", "Who & what" }) };
    }
};

} // namespace

TEST_F (EventPDFExporterTest, isMadeByTheFactoryForTheKindPDF)
{
    const auto made = EventExporterFactory::eventExporter (settings);
    ASSERT_NE (dynamic_cast<EventPDFExporter*> (made.get()), nullptr);
    EXPECT_EQ (made->type(), EventExportTypePDF);
}

TEST_F (CueSheetTest, directorsSheetGoldenFile)
{
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    expectGoldenFile ("html/director.html", printed.at (0).html);
}

TEST_F (CueSheetTest, actorsSheetGoldenFile)
{
    settings->layout = EventExportLayoutActor;
    settings->showTakeNumbers = false;
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    expectGoldenFile ("html/actor.html", printed.at (0).html);
}

TEST_F (CueSheetTest, engineersSheetGoldenFile)
{
    settings->layout = EventExportLayoutEngineer;
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    expectGoldenFile ("html/engineer.html", printed.at (0).html);
}

TEST_F (EventPDFExporterTest, theStyleSheetHasOneTab)
{
    const auto style = exporter.documentHeader().toStdString();
    EXPECT_EQ (style.size(), 3617u);
    EXPECT_EQ (style.find ('\t'), style.find ("\t margin-right: 10px;"));
    EXPECT_EQ (style.find ('\t', style.find ('\t') + 1), std::string::npos);
    EXPECT_EQ (exporter.htmlFooter(), "</body></html>");
}

TEST_F (EventPDFExporterTest, aSheetByTimecodeIsHeadCuesAndEnd)
{
    settings->events = events ({ { "1", 0, 25, "c2", "Hi" }, { "2", 50, 75, "c1", "Ho" } });
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    ASSERT_EQ (printed.size(), 1u);
    EXPECT_EQ (printed[0].html, head ("tom, Ann (Mary Miller)") + cue (settings->events[0])
                                    + cue (settings->events[1]) + "</body></html>");
    EXPECT_EQ (printed[0].path, (folder.path / "Reel 2.pdf").string());
    EXPECT_EQ (printed[0].caller, &exporter);
    EXPECT_EQ (progress.reports, (Reports { { 1, 1 } }));
    EXPECT_EQ (progress.senders, std::vector<EventExporter*> { &exporter });
}

TEST_F (EventPDFExporterTest, aCharacterOfSeveralCuesIsNamedOnceInTheHead)
{
    addCharacter ("c4", "Ann", "", "Mary Miller");
    settings->events = events ({ { .characterID = "c1" },
                                 { .characterID = "c1" },
                                 { .characterID = "c4" },
                                 { .characterID = "nobody" },
                                 { .characterID = "c3" } });
    exporter.exportEventsByTimecode();
    EXPECT_NE (printed.at (0).html.find (head ("Ann (Mary Miller), Bo/b")), std::string::npos);
}

TEST_F (EventPDFExporterTest, aListWithoutEventsIsAHeadAlone)
{
    exporter.exportEventsByTimecode();
    EXPECT_EQ (printed.at (0).html, head ("") + "</body></html>");
}

TEST_F (EventPDFExporterTest, aCueWithoutACharacterHasNoNameAndItsNumberStandsAsItIs)
{
    const auto page = cue (event ({ .cueNumber = "<i>7", .characterID = "nobody" }));
    EXPECT_NE (page.find ("<div class=\"cueDetailsCueNumber\"><i>7</div>"), std::string::npos);
    EXPECT_NE (page.find ("font-weight:bold;\"></p>"), std::string::npos);
}

TEST_F (EventPDFExporterTest, theIconsAreFilesOfTheResourceFolder)
{
    const auto page = cue (event ({}));

    for (
        const auto* icon :
        { "<img width=\"16\" src=\"file:///usr/share/overmarks/resources/pdf-export-character-icon.png\"/>",
          "<img width=\"14\" src=\"file:///usr/share/overmarks/resources/pdf-export-in-point-icon.png\"/>",
          "<img width=\"14\" src=\"file:///usr/share/overmarks/resources/pdf-export-out-point-icon.png\"/>" })
        EXPECT_NE (page.find (icon), std::string::npos) << icon;
}

TEST_F (EventPDFExporterTest, cueTextIsCleanedOfTypographyButNotOfMarks)
{
    const auto page = cue (event ({ .words = "\xE2\x80\x9CHi\xE2\x80\x9D <b>&" }));
    EXPECT_NE (page.find ("<p style=\"margin:10px;\">\"Hi\" <b>&</p>"), std::string::npos);
}

TEST_F (EventPDFExporterTest, anActorReadsLargerLetters)
{
    settings->layout = EventExportLayoutActor;
    EXPECT_NE (cue (event ({ .words = "Hi" })).find ("<p style=\"margin:10px; font-size:16px;\">Hi</p>"),
               std::string::npos);
}

TEST_F (EventPDFExporterTest, boxesForTakesAreThereOnlyWhenAskedFor)
{
    EXPECT_EQ (cue (event ({})).find ("takeNumberBox"), std::string::npos);
    settings->showTakeNumbers = true;
    EXPECT_NE (cue (event ({})).find (exporter.oneCueTakeNumberBoxes (event ({})).toStdString()),
               std::string::npos);
}

TEST_F (EventPDFExporterTest, eachCharacterHasADocumentInTheOrderOfTheNames)
{
    const auto ann = event ({ .characterID = "c1" });
    const auto bob = event ({ .characterID = "c3" });
    const auto tom = event ({ .characterID = "c2" });
    const auto nobody = event ({ .cueNumber = "9" });
    settings->eventsByCharacter = {
        { "c1", { ann, ann } }, { "c2", { tom } }, { "c3", { bob } }, { "", { nobody, nobody } }
    };
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    ASSERT_EQ (printed.size(), 4u);
    EXPECT_EQ (printed[0].name(), "Reel 2_<no char>.pdf");
    EXPECT_EQ (printed[0].html, head ("") + cue (nobody) + cue (nobody) + "</body></html>");
    EXPECT_EQ (printed[1].name(), "Reel 2_Ann.pdf");
    EXPECT_EQ (printed[1].html, head ("Ann (Mary Miller)") + cue (ann) + cue (ann) + "</body></html>");
    EXPECT_EQ (printed[2].name(), "Reel 2_Bo_b.pdf");
    EXPECT_EQ (printed[3].name(), "Reel 2_tom.pdf");
    EXPECT_EQ (progress.reports, (Reports { { 1, 4 }, { 2, 4 }, { 3, 4 }, { 4, 4 } }));
}

TEST_F (EventPDFExporterTest, aCombinedDocumentHoldsEachHeadInsideTheBodyOfTheFirst)
{
    const auto ann = event ({ .characterID = "c1" });
    const auto tom = event ({ .characterID = "c2" });
    settings->options[EventExportCombineIntoSingleFileKey] = true;
    settings->eventsByCharacter = { { "c2", { tom } }, { "c1", { ann } } };
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    ASSERT_EQ (printed.size(), 1u);
    const std::string pageBreak = "<p style=\"page-break-after: always;\">&nbsp;</p>";
    EXPECT_EQ (printed[0].html, head ("Ann (Mary Miller)") + cue (ann) + pageBreak + head ("tom") + cue (tom)
                                    + pageBreak + "</body></html>");
    EXPECT_EQ (printed[0].name(), "Reel 2.pdf");
    EXPECT_EQ (progress.reports, (Reports { { 2, 2 } }));
}

TEST_F (EventPDFExporterTest, noCharactersAreNoDocumentButACombinedOneIsAPageWithoutContent)
{
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_TRUE (printed.empty());
    EXPECT_TRUE (progress.reports.empty());
    settings->options[EventExportCombineIntoSingleFileKey] = true;
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    ASSERT_EQ (printed.size(), 1u);
    EXPECT_EQ (printed[0].html, "</body></html>");
    EXPECT_EQ (progress.reports, (Reports { { 0, 0 } }));
}

TEST_F (EventPDFExporterTest, cancellingEndsTheWalkBeforeTheNextCharacter)
{
    struct Canceller final : EventExporter::Delegate
    {
        void progressChanged (EventExporter* exporter, int, int) override { exporter->cancel(); }
    } canceller;

    exporter.delegate = &canceller;
    settings->eventsByCharacter = { { "c1", { event ({}) } }, { "c2", { event ({}) } } };
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    ASSERT_EQ (printed.size(), 1u);
    EXPECT_EQ (printed[0].name(), "Reel 2_Ann.pdf");
    EXPECT_EQ (exporter.exportEventsByCharacter(), "") << "it is never taken back";
    EXPECT_EQ (printed.size(), 1u);
}

TEST_F (EventPDFExporterTest, aCancelledCombinedDocumentIsDropped)
{
    settings->options[EventExportCombineIntoSingleFileKey] = true;
    settings->eventsByCharacter = { { "c1", { event ({}) } } };
    exporter.cancel();
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_TRUE (printed.empty());
    EXPECT_TRUE (progress.reports.empty());
}

TEST_F (EventPDFExporterTest, cancellingHasNoEffectByTimecode)
{
    exporter.cancel();
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (printed.size(), 1u);
    EXPECT_EQ (progress.reports, (Reports { { 1, 1 } }));
}

TEST_F (EventPDFExporterTest, afterTwoDocumentsThatWereWaitedForInVainTheRestAreTriedWithLessPatience)
{
    failureWords = "hangs";
    settings->eventsByCharacter = { { "c1", { event ({}) } },
                                    { "c2", { event ({}) } },
                                    { "c3", { event ({}) } } };
    int told = 0;
    exporter.printFailed = [&told] (const EventPDFExporter::PrintFailure&) { ++told; };
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    ASSERT_EQ (printed.size(), 3u);
    EXPECT_FALSE (printed[0].withLittlePatience);
    EXPECT_FALSE (printed[1].withLittlePatience);
    EXPECT_TRUE (printed[2].withLittlePatience);
    ASSERT_EQ (exporter.printFailures.size(), 3u);
    EXPECT_EQ (told, 3);
    EXPECT_EQ (progress.reports, (Reports { { 1, 3 }, { 2, 3 }, { 3, 3 } }));
}

TEST_F (EventPDFExporterTest, otherFailuresLetTheRestBeTried)
{
    failureWords = "no paper";
    settings->eventsByCharacter = { { "c1", { event ({}) } },
                                    { "c2", { event ({}) } },
                                    { "c3", { event ({}) } } };
    exporter.printFailed = {};
    exporter.exportEventsByCharacter();
    EXPECT_EQ (printed.size(), 3u);
    EXPECT_EQ (exporter.printFailures.size(), 3u);
    for (const auto& document : printed)
        EXPECT_FALSE (document.withLittlePatience) << document.name();
}

TEST_F (EventPDFExporterTest, documentsThatArePrintedAreNeverShortOfPatience)
{
    settings->eventsByCharacter = { { "c1", { event ({}) } },
                                    { "c2", { event ({}) } },
                                    { "c3", { event ({}) } } };
    exporter.exportEventsByCharacter();
    ASSERT_EQ (printed.size(), 3u);
    for (const auto& document : printed)
        EXPECT_FALSE (document.withLittlePatience) << document.name();
}

TEST_F (EventPDFExporterTest, whatCannotBePrintedIsNoErrorButIsLoggedAndKept)
{
    const CollectedLog log;
    failureWords = "no paper";
    settings->eventsByCharacter = { { "c1", { event ({}) } }, { "c2", { event ({}) } } };
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    const auto path = folder.directory().toStdString();
    EXPECT_EQ (log.lines(),
               (std::vector<std::string> { "Error printing " + path + "/Reel 2_Ann.pdf: no paper",
                                           "Error printing " + path + "/Reel 2_tom.pdf: no paper" }));
    ASSERT_EQ (exporter.printFailures.size(), 2u);
    EXPECT_EQ (exporter.printFailures[1].file, folder.file ("Reel 2_tom.pdf"));
    EXPECT_EQ (exporter.printFailures[1].reason, "no paper");
    EXPECT_EQ (progress.reports, (Reports { { 1, 2 }, { 2, 2 } }));
}

TEST_F (EventPDFExporterTest, aMissingOptionEndsAnExportByCharacter)
{
    settings->options.erase (EventExportCombineIntoSingleFileKey);
    EXPECT_THROW (exporter.exportEventsByCharacter(), std::out_of_range);
}

TEST_F (EventPDFExporterTest, aSeasonOfCuesIsBuilt)
{
    constexpr int cues = 20'000;
    const auto one = event ({ "A1", 0, 25, "c1", "Hello there", "quiet" });
    settings->events.assign (cues, one);
    exporter.exportEventsByTimecode();
    EXPECT_EQ (printed.at (0).html.size(),
               (head ("Ann (Mary Miller)") + "</body></html>").size() + cues * cue (one).size());
}
