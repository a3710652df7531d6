// SPDX-License-Identifier: GPL-3.0-only
// Whole sheets: which cue stands where, headings and footers, files.
#include "export/print/DrawnCueSheetExporter.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "core/system/SystemUtility.h"
#include "export/print/DrawnCueSupport.h"
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

constexpr float left = 30, width = 535, divider = 450;

class DrawnCueSheetTest : public ExportTest
{
protected:
    DrawnCueSheetTest()
    {
        settings->exportType = EventExportTypePDF;
        settings->layout = EventExportLayoutActor;
        settings->projectSettings.projectName = "Harbour";
        addCharacter ("c1", "ANNA", "A", "Miller");
        addCharacter ("c2", "TOM");
    }

    std::shared_ptr<Event> cue (int number, const std::string& character = "c1",
                                const std::string& words = "Hello?") const
    {
        return event ({ "A" + std::to_string (number), number * 100, number * 100 + 80, character, words });
    }

    Events cues (int count, const std::string& character = "c1") const
    {
        Events made;

        for (int i = 1; i <= count; ++i)
            made.push_back (cue (i, character));

        return made;
    }

    ReadPDF byTimecode (const Events& events, PaperSize paper = PaperSize::a4())
    {
        settings->events = events;
        DrawnCueSheetExporter exporter (settings, paper);
        exporter.delegate = &progress;
        EXPECT_EQ (exporter.exportEventsByTimecode(), "");
        return ReadPDF (folder.file ("Reel 2.pdf"));
    }

    juce::String byCharacter()
    {
        DrawnCueSheetExporter exporter (settings, PaperSize::a4());
        exporter.delegate = &progress;
        return exporter.exportEventsByCharacter();
    }

    /** The boxes of the cues on a page: their upper and lower ends, from the top. */
    static std::vector<std::pair<float, float>> boxesOn (const PDFPage& page)
    {
        std::vector<std::pair<float, float>> boxes;

        for (const auto& box : page.outlines)
            if (box.isRounded)
                boxes.emplace_back (box.y + box.h, box.y);

        return boxes;
    }
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

TEST_F (DrawnCueSheetTest, aCueThatIsTallerThanAPageGoesOnFromLineToLine)
{
    std::string words;

    for (int i = 0; i < 150; ++i)
        words += "line" + std::to_string (i) + "\n";

    auto tall = cue (2, "c1", words + "end");
    tall->setNotes (text ("softly"));
    const auto pdf = byTimecode ({ cue (1), tall, cue (3) });
    ASSERT_EQ (pdf.pages.size(), 5u);
    EXPECT_EQ (pdf.page (0).count ("A2"), 0) << "it begins on a fresh page";
    EXPECT_EQ (pdf.page (1).count ("A2"), 1);
    int next = 0;

    for (std::size_t i = 1; i < pdf.pages.size(); ++i)
        for (const auto& word : pdf.page (i).words)
            if (word.text.rfind ("line", 0) == 0)
            {
                EXPECT_EQ (word.text, "line" + std::to_string (next++));
                EXPECT_GE (word.bottom, 44.0f);
                EXPECT_LE (word.top, 842 - 30 - 17.0f);
            }

    EXPECT_EQ (next, 150);
    EXPECT_THAT (pdf.page (2).text, HasSubstr ("A2 (continued)"));
    EXPECT_THAT (pdf.page (1).text, Not (HasSubstr ("(continued)")));
    EXPECT_EQ (pdf.page (4).count ("softly"), 1);
    EXPECT_EQ (pdf.page (4).count ("A3"), 1);
}

TEST_F (DrawnCueSheetTest, aTallCueOfOneEndlessParagraphHasAnEndToo)
{
    settings->showTakeNumbers = true;
    auto tall = cue (1, "c1", juce::String::repeatedString ("more words ", 1500).toStdString());
    tall->setNotes (juce::String::repeatedString ("many notes ", 1500));
    const auto pdf = byTimecode ({ tall, cue (2) });
    EXPECT_GT (pdf.pages.size(), 4u);
    EXPECT_EQ (pdf.pages.back().count ("A2"), 1);
    int words = 0, notes = 0;

    for (const auto& page : pdf.pages)
    {
        words += page.count ("words");
        notes += page.count ("notes");
    }

    EXPECT_EQ (words, 1500);
    EXPECT_EQ (notes, 1500);
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
    EXPECT_EQ (ReadPDF (folder.file ("Reel 2.pdf")).pages.size(), 1u);
}

TEST_F (DrawnCueSheetTest, aFullDiskIsAnError)
{
    const CollectedLog log;
    const FullDisk disk (500);
    settings->events = cues (2);
    DrawnCueSheetExporter exporter (settings);
    EXPECT_EQ (exporter.exportEventsByTimecode(),
               "Error writing file to " + folder.directory() + "/Reel 2.pdf");
    EXPECT_TRUE (folder.names().empty());
    EXPECT_EQ (log.lines().size(), 1u);
}

TEST_F (DrawnCueSheetTest, theFirstFailureEndsAWalk)
{
    const CollectedLog log;
    settings->outputDirectory = folder.directory() + "/nowhere";
    settings->eventsByCharacter["c2"] = cues (1, "c2");
    settings->eventsByCharacter["c1"] = cues (1, "c1");
    EXPECT_EQ (byCharacter(), "Error writing file to " + folder.directory() + "/nowhere/Reel 2_ANNA.pdf");
    EXPECT_EQ (log.lines().size(), 1u);
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
}

} // namespace
