// SPDX-License-Identifier: GPL-3.0-only
// What stands at the edges of a drawn sheet's pages, and where a cue is cut that goes on over several.
#include "core/system/SystemUtility.h"
#include "export/FittingWords.h"
#include "export/print/DrawnSheetSupport.h"

#include <gmock/gmock.h>

#include <regex>

using namespace ExportSupport;
using testing::HasSubstr;
using testing::Not;

namespace
{

const juce::Colour footerGrey { 0xff555555 };

class DrawnPageEdgesTest : public DrawnSheetTest
{
protected:
    static float widthOf (const std::string& word, float size)
    {
        PDFDocument document ("/dev/null", PaperSize::a4());
        document.setFont (regular, size);
        return document.widthOfLine (text (word));
    }

    static void expectMiddle (const PDFPage::Word& word, float height)
    {
        EXPECT_NEAR ((word.bottom + word.top) / 2, height, 0.3) << word.text;
    }

    /** The second page of twelve cues of ANNA's. */
    PDFPage laterPage()
    {
        settings->eventsByCharacter["c1"] = cues (12);
        EXPECT_EQ (byCharacter(), "");
        return ReadPDF (folder.file ("Reel 2_ANNA.pdf")).page (1);
    }
};

// ---- the line above the cues of a later page -----------------------------------------------------------------------------

TEST_F (DrawnPageEdgesTest, aLaterPageNamesTheProjectOnTheLeftAndWhomItIsForOnTheRight)
{
    const auto page = laterPage();
    EXPECT_NEAR (page.word ("Harbour").x, left, 0.3);
    EXPECT_NEAR (page.word ("Harbour").right - page.word ("Harbour").x, widthOf ("Harbour", 9), 0.3);
    EXPECT_NEAR (page.word ("(Miller)").right, left + width, 0.3);
    expectMiddle (page.word ("Harbour"), 842 - 30 - 4.5f);
    expectMiddle (page.word ("(Miller)"), 842 - 30 - 4.5f);
    EXPECT_EQ (page.textColours.at (0), footerGrey);
    EXPECT_EQ (page.textColours.at (1), footerGrey);
    EXPECT_EQ (page.textColours.at (2), black) << "and the cue below is black again";
}

TEST_F (DrawnPageEdgesTest, theProjectHasHalfOfTheLineAndDoesNotMeetTheCharacter)
{
    PDFDocument document ("/dev/null", PaperSize::a4());
    document.setFont (regular, 9);
    const FittingWords words (document, width / 2 - 8);
    words.expectTheWidth (
        [this] (const juce::String& word)
        {
            settings->projectSettings.projectName = word;
            return laterPage();
        });
}

TEST_F (DrawnPageEdgesTest, aSheetByTimecodeIsForNobodyAlone)
{
    const auto page = byTimecode (cues (12)).page (1);
    EXPECT_THAT (page.text, Not (HasSubstr ("Miller")));
    EXPECT_EQ (page.count ("Harbour"), 1);
}

TEST_F (DrawnPageEdgesTest, aCueThatGoesOnIsNamedBesideWhomThePageIsFor)
{
    auto tall = cue (2, "c1", juce::String::repeatedString ("more words\n", 70).toStdString());
    settings->eventsByCharacter["c1"] = { tall };
    EXPECT_EQ (byCharacter(), "");
    const ReadPDF pdf (folder.file ("Reel 2_ANNA.pdf"));
    EXPECT_THAT (pdf.pages.back().text, HasSubstr ("ANNA (Miller), A2 (continued)"));
    const auto byTime = byTimecode ({ tall });
    EXPECT_THAT (byTime.pages.back().text, HasSubstr ("A2 (continued)"));
    EXPECT_THAT (byTime.pages.back().text, Not (HasSubstr (", A2")));
}

// ---- the footer ----------------------------------------------------------------------------------------------------------

TEST_F (DrawnPageEdgesTest, theFooterHasItsFourTextsOnOneLevelAndGrey)
{
    const auto page = byTimecode (cues (1)).page();
    const auto version = ZEP::Core::SystemUtility::executableVersion().toStdString();
    const auto last = page.word ("1/1");
    const auto layout = page.word ("Layout");
    const auto year = page.word (std::to_string (juce::Time::getCurrentTime().getYear()));

    for (const auto& word : { page.word (version), page.word ("Page:"), last, layout, year })
        expectMiddle (word, 20 + 7.5f);

    EXPECT_NEAR (last.right, left + width - 4, 0.3);
    EXPECT_NEAR ((page.word ("Actor").x + layout.right) / 2, left + 130 + (width - 28) / 2, 0.3);
    EXPECT_NEAR (page.word (version).right - page.word (version).x, widthOf (version, 9), 0.3);

    const auto day = page.word (std::to_string (juce::Time::getCurrentTime().getDayOfMonth()));
    const auto time = std::find_if (page.words.begin(), page.words.end(),
                                    [] (const auto& word) {
                                        return word.bottom < 40
                                               && std::regex_match (word.text, std::regex ("\\d\\d?:\\d\\d"));
                                    });
    ASSERT_NE (time, page.words.end()) << "hours and minutes without seconds";
    EXPECT_NEAR ((day.x + time->right) / 2, left + width / 2, 0.3);

    for (std::size_t i = page.textColours.size() - 4; i < page.textColours.size(); ++i)
        EXPECT_EQ (page.textColours[i], footerGrey);
}

TEST_F (DrawnPageEdgesTest, noCueComesNearerToTheFooterThanEightPoints)
{
    // Of many heights, so that some just fit and some just don't.
    Events events;

    for (int i = 0; i < 150; ++i)
        events.push_back (cue (i, "c1", juce::String::repeatedString ("word\n", i * 7 % 31).toStdString()));

    float lowest = 842;

    for (const auto& page : byTimecode (events).pages)
        for (const auto& box : boxesOn (page))
            lowest = std::min (lowest, box.second);

    EXPECT_GE (lowest, 20 + 24 + 8 - 0.1f);
    EXPECT_LT (lowest, 20 + 24 + 8 + 12) << "what fits is there";
}

TEST_F (DrawnPageEdgesTest, aLaterPagesFirstCueStandsRightBelowItsLine)
{
    EXPECT_NEAR (boxesOn (laterPage()).front().first, 842 - 30 - 18, 0.1);
}

// ---- where a tall cue is cut ---------------------------------------------------------------------------------------------

/** A cue that takes several pages, on paper that may have any of the kinds of sheet. */
class CutsOfTallCue : public DrawnPageEdgesTest
{
protected:
    /** That each page shows a part of the cue from line to line, and that the parts follow each other. */
    static void expectCutsBetweenLines (const ReadPDF& pdf)
    {
        int slices = 0;
        float shown = 0;

        for (const auto& page : pdf.pages)
        {
            if (page.clipBoxes.empty())
                continue;

            const auto clip = page.clipBoxes.front();
            ++slices;
            shown += clip.getHeight();
            EXPECT_NEAR (clip.getX(), left - 1, 0.1) << "the line of the box is there";
            EXPECT_NEAR (clip.getWidth(), width + 2, 0.1);
            EXPECT_GE (clip.getY(), 20 + 24 + 8 - 1 - 0.1f);
            EXPECT_NEAR (clip.getBottom(), 842 - 30 - 18 + (slices == 1 ? 1 : 0), 0.1);

            for (const auto& word : page.words)
                if (word.x > left + 4 && word.right < divider && word.bottom > 46 && word.top < 842 - 40)
                {
                    EXPECT_GE (word.bottom, clip.getY() - 0.2f) << word.text;
                    EXPECT_LE (word.top, clip.getBottom() + 0.2f) << word.text;
                }
        }

        ASSERT_GE (slices, 2);
        const auto boxes = boxesOn (pdf.pages.back());
        ASSERT_FALSE (boxes.empty());
        EXPECT_NEAR (shown, boxes.back().first - boxes.back().second + 2, 0.6)
            << "all of the cue, with half of its line above and below, and nothing twice";
    }

    static std::string lines (int number)
    {
        std::string made;

        for (int i = 0; i < number; ++i)
            made += (i > 0 ? "\n" : "") + std::string ("line") + std::to_string (i);

        return made;
    }

    static std::string paragraph (int number)
    {
        std::string made;

        for (int i = 0; i < number; ++i)
            made += "some words of very different lengths, incomprehensibilities a i ";

        return made;
    }
};

TEST_F (CutsOfTallCue, goBetweenTheLinesOfItsText)
{
    for (const auto layout : { EventExportLayoutActor, EventExportLayoutDirector })
        for (const auto& words : { lines (150), paragraph (200) })
        {
            settings->layout = layout;
            expectCutsBetweenLines (byTimecode ({ cue (1, "c1", words) }));
        }
}

TEST_F (CutsOfTallCue, goBetweenTheLinesOfItsNotes)
{
    for (const bool hasTakes : { false, true })
        for (const auto& words : { lines (250), paragraph (300) })
        {
            settings->showTakeNumbers = hasTakes;
            auto noted = cue (1, "c1", "Hello?");
            noted->setNotes (text (words));
            expectCutsBetweenLines (byTimecode ({ noted }));
        }
}

TEST_F (CutsOfTallCue, goOnHoweverLowThePaperIs)
{
    // 48 points above and 52 below, so that nothing is left of the first, and a line's height of the second.
    for (const auto& [height, mostPages] : { std::pair (90.0f, 14u), std::pair (120.0f, 8u) })
    {
        const auto pdf = byTimecode ({ cue (1, "c1", "Hello?") }, { 595, height });
        EXPECT_GT (pdf.pages.size(), 3u);
        EXPECT_LE (pdf.pages.size(), mostPages);
    }
}

TEST_F (CutsOfTallCue, leaveRoomForWhatFollows)
{
    const auto pdf = byTimecode ({ cue (1, "c1", lines (70)), cue (2) });
    const auto& last = pdf.pages.back();
    const auto boxes = boxesOn (last);
    ASSERT_EQ (boxes.size(), 2u);
    EXPECT_NEAR (boxes[1].first, boxes[0].second - 8, 0.1);
    EXPECT_FALSE (last.clipBoxes.empty());
    EXPECT_EQ (last.count ("A2"), 1) << "and isn't cut with it";
}

} // namespace
