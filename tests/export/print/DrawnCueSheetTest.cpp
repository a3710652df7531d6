// SPDX-License-Identifier: GPL-3.0-only
// Whole sheets: which cue stands where, headings and footers, files. Cues that are taller than a page: DrawnTallCueTest.cpp.
#include "core/cast/ADRCueReasonsManager.h"
#include "core/system/SystemUtility.h"
#include "export/print/DrawnSheetSupport.h"
#include "support/CollectedLog.h"
#include "support/FullDisk.h"

#include <gmock/gmock.h>

using namespace ExportSupport;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using ZEP::Core::ADRCueReasonsManager;
using ZEP::Overmarks::Testing::CollectedLog;
using ZEP::Overmarks::Testing::FullDisk;

namespace
{

class DrawnCueSheetTest : public DrawnSheetTest
{
};

// ---- cues ----------------------------------------------------------------------------------------------------------------

TEST_F (DrawnCueSheetTest, cuesFollowEachOtherEightPointsApart)
{
    const auto pdf = byTimecode (cues (3));
    ASSERT_EQ (pdf.pages.size(), 1u);
    const auto boxes = boxesOn (pdf.page());
    ASSERT_EQ (boxes.size(), 3u);

    for (std::size_t i = 0; i < 3; ++i)
    {
        EXPECT_NEAR (boxes[i].first - boxes[i].second, 84, 0.5);
        EXPECT_NEAR (pdf.page().word ("A" + std::to_string (i + 1)).x, divider + 5, 0.5);

        EXPECT_NEAR (boxes[0].first - boxes[i].first, 92 * static_cast<float> (i), 0.5);
    }
}

TEST_F (DrawnCueSheetTest, noCueIsSplitAndNoneIsLost)
{
    auto events = cues (60);

    for (std::size_t i = 0; i < events.size(); ++i)
        events[i]->setText (
            text (std::string ("Word "))
            + juce::String::repeatedString ("and more words ", static_cast<int> (i % 13) * 9));

    const auto pdf = byTimecode (events);
    EXPECT_GT (pdf.pages.size(), 8u);
    std::size_t count = 0;

    for (const auto& page : pdf.pages)
    {
        auto above = 812.5f;

        for (const auto& [top, bottom] : boxesOn (page))
        {
            EXPECT_LT (top, above);
            EXPECT_GE (bottom, 44.0f) << "the footer";
            EXPECT_EQ (page.count ("A" + std::to_string (++count)), 1);
            above = bottom;
        }
    }

    EXPECT_EQ (count, 60u);
}

TEST_F (DrawnCueSheetTest, aCueThatDoesNotFitAnyMoreBeginsTheNextPage)
{
    auto events = cues (12);
    const auto pdf = byTimecode (events);
    ASSERT_EQ (pdf.pages.size(), 2u);
    const auto first = boxesOn (pdf.page (0)), second = boxesOn (pdf.page (1));
    EXPECT_LT (first.back().second - 8 - 84, 52.0f);
    EXPECT_NEAR (second.front().first, 842 - 30 - 18, 0.5);
}

TEST_F (DrawnCueSheetTest, theIconsOfTheLibraryAreThere)
{
    settings->events = cues (2);
    DrawnCueSheetExporter exporter (settings, PaperSize::a4());
    exporter.appIcon = {};
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    const ReadPDF pdf (folder.file ("Reel 2.pdf"));
    EXPECT_EQ (pdf.page().pictures.size(), 6u);
    EXPECT_EQ (pdf.numberOfImages(), 3);
}

TEST_F (DrawnCueSheetTest, theReasonsAreTheProcesssOwn)
{
    settings->layout = EventExportLayoutDirector;
    auto noisy = cue (1);
    noisy->setReason (ADRCueReasonsManager::sharedManager()->codeForCodeText ("AR4") - 1);
    EXPECT_THAT (byTimecode ({ noisy }).page().text, HasSubstr ("(AR4)"));
}

TEST_F (DrawnCueSheetTest, reasonsOfTheSettingsComeFirst)
{
    settings->layout = EventExportLayoutDirector;
    settings->options[EventExportADRCueDefaultReasonsKey] = juce::Array<juce::var> { "None", "Weather" };
    auto noisy = cue (1);
    noisy->setReason (1);
    EXPECT_EQ (byTimecode ({ noisy }).page().count ("Weather"), 1);
    EXPECT_EQ (settings->options.count (EventExportADRCueUserReasonsKey), 0u) << "the settings are only read";
}

TEST_F (DrawnCueSheetTest, reasonsAreThoseOfTheBeginningForAllFiles)
{
    struct NewNames final : public EventExporter::Delegate
    {
        void progressChanged (EventExporter*, int, int) override
        {
            ADRCueReasonsManager::sharedManager()->setUserReasonNames ({ "Weather" });
        }
    } newNames;

    ADRCueReasonsManager::sharedManager()->setUserReasonNames ({ "Rewrite" });
    settings->layout = EventExportLayoutDirector;

    for (const auto* id : { "c1", "c2" })
    {
        settings->eventsByCharacter[id] = cues (1, id);
        settings->eventsByCharacter[id].front()->setReason (ADRCueReasonsManager::firstUserReasonCode - 1);
    }

    DrawnCueSheetExporter exporter (settings, PaperSize::a4());
    exporter.delegate = &newNames;
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (ReadPDF (folder.file ("Reel 2_ANNA.pdf")).page().count ("Rewrite"), 1);
    EXPECT_EQ (ReadPDF (folder.file ("Reel 2_TOM.pdf")).page().count ("Rewrite"), 1);
    ADRCueReasonsManager::sharedManager()->setUserReasonNames ({});
}

TEST_F (DrawnCueSheetTest, allReasonsOfTheProcessAreInTheLists)
{
    ADRCueReasonsManager::sharedManager()->setUserReasonNames ({ "Rewrite" });
    DrawnCueSheet::addReasons (*settings);
    const auto* defaults = settings->options.at (EventExportADRCueDefaultReasonsKey).getArray();
    const auto* users = settings->options.at (EventExportADRCueUserReasonsKey).getArray();
    ASSERT_EQ (defaults->size(), 33);
    EXPECT_EQ (defaults->getReference (0), "None");
    EXPECT_EQ (users->size(), 8);
    EXPECT_EQ (users->getReference (0), "Rewrite");
    ADRCueReasonsManager::sharedManager()->setUserReasonNames ({});
}

// ---- headings and footers ------------------------------------------------------------------------------------------------

TEST_F (DrawnCueSheetTest, theHeadingTellsWhatIsKnown)
{
    settings->projectSettings = { "/films/harbour.overmarks", "Harbour", "Studio7", "Doe", "Lighthouse" };
    settings->timelineSettings = { "Timeline4", "Reel3", "v12", {}, {} };
    const auto page = byTimecode ({ cue (1), cue (2, "c2") }).page();

    for (const auto* words :
         { "Harbour", "Project File", "/films/harbour.overmarks", "Sound Supervisor", "Doe", "Produced By",
           "Lighthouse", "Sound Studio", "Studio7", "Timeline Name", "Timeline4", "Episode/Reel", "Reel3",
           "Picture Version", "v12", "Characters (Actors)", "ANNA (Miller), TOM" })
        EXPECT_THAT (page.text, HasSubstr (words));

    EXPECT_EQ (page.fills.size(), 8u);

    for (const auto& field : page.fills)
        EXPECT_LE (field.x + field.w, left + width + 0.1f);
}

TEST_F (DrawnCueSheetTest, whatIsNotKnownHasNoRow)
{
    const auto page = byTimecode ({ cue (1) }).page();
    EXPECT_THAT (page.text, Not (HasSubstr ("Project File")));
    EXPECT_THAT (page.text, Not (HasSubstr ("Sound")));
    EXPECT_THAT (page.text, HasSubstr ("Episode/Reel"));
    EXPECT_THAT (page.text, HasSubstr ("Picture Version"));
    EXPECT_EQ (page.fills.size(), 3u);
}

TEST_F (DrawnCueSheetTest, aLargeCastLeavesRoomForCues)
{
    Events events;

    for (int i = 0; i < 300; ++i)
    {
        const auto id = "x" + std::to_string (i);
        addCharacter (id, "CHARACTER " + std::to_string (i));
        events.push_back (cue (i, id));
    }

    settings->projectSettings.projectName = juce::String::repeatedString ("The Harbour ", 200);
    const auto pdf = byTimecode (events);
    EXPECT_THAT (pdf.page().text, HasSubstr ("…"));
    EXPECT_GT (boxesOn (pdf.page()).size(), 1u);
}

TEST_F (DrawnCueSheetTest, aFieldOfTheHeadingIsCutAtItsLastLine)
{
    const auto heightOfField = [this] (const juce::String& supervisor)
    {
        settings->projectSettings.soundSupervisor = supervisor;
        const auto page = byTimecode ({ cue (1) }).page();
        return page.fills.empty() ? 0.0f : page.fills.front().h;
    };

    const auto threeLines = heightOfField ("a\nb\nc");
    EXPECT_GT (threeLines, 40.0f);

    for (const auto* letter : { "l", "i", ".", "W", "ll ", "l\n", "й", "文" })
    {
        EXPECT_NEAR (heightOfField (juce::String::repeatedString (text (letter), 900)), threeLines, 8.0f)
            << letter;
    }
}

TEST_F (DrawnCueSheetTest, theFooterTellsVersionTimeLayoutAndPage)
{
    const char* names[] = { "Director Layout", "Actor Layout", "Engineer Layout" };

    for (const auto layout : { EventExportLayoutDirector, EventExportLayoutActor, EventExportLayoutEngineer })
    {
        settings->layout = layout;
        const auto pdf = byTimecode (cues (12));
        ASSERT_EQ (pdf.pages.size(), 2u);
        EXPECT_THAT (pdf.page (0).text, HasSubstr ("Page: 1/2"));
        EXPECT_THAT (pdf.page (1).text, HasSubstr ("Page: 2/2"));

        for (const auto& page : pdf.pages)
        {
            EXPECT_THAT (page.text, HasSubstr (names[layout - 1]));
            EXPECT_THAT (page.text,
                         HasSubstr (juce::Time::getCurrentTime().toString (true, false).toStdString()));
            const auto version = page.word (ZEP::Core::SystemUtility::executableVersion().toStdString());
            EXPECT_NEAR (version.x, left + 28, 0.5);
            EXPECT_NEAR ((version.bottom + version.top) / 2, 20 + 7.5f, 0.5);
            EXPECT_TRUE (page.hasLine (left + 4, 44, left + width - 8, 44, 0.25f, juce::Colour (0xff555555)));
        }
    }
}

TEST_F (DrawnCueSheetTest, theFooterHasTheIconOfTheApplication)
{
    settings->events = cues (1);
    DrawnCueSheetExporter exporter (settings, PaperSize::a4());
    exporter.appIcon = juce::Image (juce::Image::ARGB, 16, 16, true);
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_TRUE (ReadPDF (folder.file ("Reel 2.pdf")).page().hasPicture ({ left + 4, 20, 16, 16 }));
}

TEST_F (DrawnCueSheetTest, theIconComesFromTheResourceFolder)
{
    ZEP::Core::SystemUtility::Configuration configuration;
    configuration.resourcePath = folder.directory();
    ZEP::Core::SystemUtility::configure (configuration);
    {
        juce::FileOutputStream stream (folder.file ("dbln-app-icon.png"));
        juce::PNGImageFormat().writeImageToStream (juce::Image (juce::Image::ARGB, 16, 16, true), stream);
    }
    EXPECT_TRUE (byTimecode (cues (1)).page().hasPicture ({ left + 4, 20, 16, 16 }));
    ZEP::Core::SystemUtility::configure ({});
}

TEST_F (DrawnCueSheetTest, thePaperCanBeChosen)
{
    const auto pdf = byTimecode (cues (12), PaperSize::letter());
    EXPECT_EQ (pdf.page().width, 612.0f);
    EXPECT_EQ (pdf.page().height, 792.0f);
    EXPECT_EQ (pdf.pages.size(), 2u);
    EXPECT_EQ (pdf.title(), "Harbour");
}

// ---- files ---------------------------------------------------------------------------------------------------------------

TEST_F (DrawnCueSheetTest, byTimecodeThereIsOneFileAndOneReport)
{
    byTimecode (cues (2));
    EXPECT_EQ (folder.names(), std::vector<std::string> { "Reel 2.pdf" });
    EXPECT_THAT (progress.reports, ElementsAre (std::pair (1, 1)));
    EXPECT_EQ (DrawnCueSheetExporter (settings).type(), EventExportTypePDF);
}

TEST_F (DrawnCueSheetTest, aListWithoutEventsIsAHeading)
{
    const auto pdf = byTimecode ({});
    ASSERT_EQ (pdf.pages.size(), 1u);
    EXPECT_EQ (pdf.page().count ("Harbour"), 1);
    EXPECT_TRUE (boxesOn (pdf.page()).empty());
}

TEST_F (DrawnCueSheetTest, byCharacterEachHasAFileThatNamesItOnEachPage)
{
    settings->eventsByCharacter["c2"] = cues (1, "c2");
    settings->eventsByCharacter["c1"] = cues (12, "c1");
    settings->eventsByCharacter["lost"] = cues (1, "lost");
    EXPECT_EQ (byCharacter(), "");
    EXPECT_THAT (folder.names(), ElementsAre ("Reel 2_<no char>.pdf", "Reel 2_ANNA.pdf", "Reel 2_TOM.pdf"));
    EXPECT_THAT (progress.reports, ElementsAre (std::pair (1, 3), std::pair (2, 3), std::pair (3, 3)));
    const ReadPDF annas (folder.file ("Reel 2_ANNA.pdf"));
    ASSERT_EQ (annas.pages.size(), 2u);
    EXPECT_THAT (annas.page (0).text, HasSubstr ("ANNA (Miller)"));
    EXPECT_THAT (annas.page (1).text, HasSubstr ("ANNA (Miller)"));
    EXPECT_EQ (annas.page (0).count ("TOM"), 0);
}

TEST_F (DrawnCueSheetTest, combinedEachCharacterBeginsAFreshPageWithAHeading)
{
    settings->options[EventExportCombineIntoSingleFileKey] = true;
    settings->eventsByCharacter["c2"] = cues (1, "c2");
    settings->eventsByCharacter["c1"] = cues (12, "c1");
    EXPECT_EQ (byCharacter(), "");
    EXPECT_EQ (folder.names(), std::vector<std::string> { "Reel 2.pdf" });
    EXPECT_THAT (progress.reports, ElementsAre (std::pair (2, 2)));
    const ReadPDF pdf (folder.file ("Reel 2.pdf"));
    ASSERT_EQ (pdf.pages.size(), 3u);
    EXPECT_THAT (pdf.page (0).text, HasSubstr ("Characters (Actors)"));
    EXPECT_THAT (pdf.page (1).text, Not (HasSubstr ("Characters (Actors)")));
    EXPECT_THAT (pdf.page (2).text, HasSubstr ("Characters (Actors)"));
    EXPECT_EQ (pdf.page (2).count ("TOM"), 2);
    EXPECT_THAT (pdf.page (2).text, HasSubstr ("Page: 3/3"));
}

TEST_F (DrawnCueSheetTest, withoutCharactersThereIsNoFileOrAHeading)
{
    EXPECT_EQ (byCharacter(), "");
    EXPECT_TRUE (folder.names().empty());
    settings->options[EventExportCombineIntoSingleFileKey] = true;
    EXPECT_EQ (byCharacter(), "");
    const ReadPDF pdf (folder.file ("Reel 2.pdf"));
    ASSERT_EQ (pdf.pages.size(), 1u);
    EXPECT_THAT (pdf.page().text, HasSubstr ("Characters (Actors)"));
}

TEST_F (DrawnCueSheetTest, aFullDiskIsAnError)
{
    const CollectedLog log;
    const FullDisk disk (500);
    settings->events = cues (2);
    DrawnCueSheetExporter exporter (settings);
    EXPECT_EQ (exporter.exportEventsByTimecode(),
               "Error writing file to " + folder.directory() + "/Reel 2.pdf: File too large");
    EXPECT_TRUE (folder.names().empty());
    EXPECT_TRUE (log.lines().empty()) << "it is told once";
}

TEST_F (DrawnCueSheetTest, theFirstFailureEndsAWalk)
{
    const CollectedLog log;
    settings->outputDirectory = folder.directory() + "/nowhere";
    settings->eventsByCharacter["c2"] = cues (1, "c2");
    settings->eventsByCharacter["c1"] = cues (1, "c1");
    EXPECT_EQ (byCharacter(), "Error writing file to " + folder.directory()
                                  + "/nowhere/Reel 2_ANNA.pdf: No such file or directory");
    EXPECT_TRUE (log.lines().empty());
}

// ---- cancelling ----------------------------------------------------------------------------------------------------------

/** Cancels after a number of files. */
class Canceller final : public EventExporter::Delegate
{
public:
    explicit Canceller (int afterFiles) : after (afterFiles) {}

    void progressChanged (EventExporter* exporter, int current, int) override
    {
        if (current == after)
            exporter->cancel();
    }

private:
    int after;
};

TEST_F (DrawnCueSheetTest, whatIsCancelledIsNotWrittenAndWhatIsThereStays)
{
    settings->eventsByCharacter["c2"] = cues (1, "c2");
    settings->eventsByCharacter["c1"] = cues (1, "c1");
    DrawnCueSheetExporter exporter (settings);
    Canceller canceller (1);
    exporter.delegate = &canceller;
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_THAT (folder.names(), ElementsAre ("Reel 2_ANNA.pdf"));
}

TEST_F (DrawnCueSheetTest, aCancelledDocumentLeavesTheOldOne)
{
    folder.write ("Reel 2.pdf", "precious");
    settings->events = cues (2);
    settings->eventsByCharacter["c1"] = cues (1);
    settings->options[EventExportCombineIntoSingleFileKey] = true;
    DrawnCueSheetExporter exporter (settings);
    exporter.delegate = &progress;
    exporter.cancel();
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (folder.bytes ("Reel 2.pdf"), "precious");
    EXPECT_TRUE (progress.reports.empty()) << "no file is done";
}

} // namespace
