// SPDX-License-Identifier: GPL-3.0-only
// How much room each text of a drawn cue has, and how large its letters are.
#include "export/FittingWords.h"
#include "export/print/DrawnCueSupport.h"

using namespace ExportSupport;

namespace
{

class DrawnCueWidthsTest : public DrawnCueTest
{
protected:
    FittingWords words (PDFDocument::FontType font, float size, float wide)
    {
        document->setFont (font, size);
        return { *document, wide };
    }

    PDFPage drawnAnew (const std::shared_ptr<Event>& cueToDraw)
    {
        document =
            std::make_shared<PDFDocument> (folder.file ("cues.pdf").getFullPathName(), PaperSize::a4());
        return drawn (cueToDraw);
    }

    /** That a word has as large letters as that. */
    void expectSize (const PDFPage& page, const juce::String& word, PDFDocument::FontType font, float size)
    {
        const auto found = page.word (word.toStdString());
        document->setFont (font, size);
        EXPECT_NEAR (found.right - found.x, document->widthOfLine (word), 0.3) << word;
    }

    void setReason (const juce::String& reason)
    {
        settings->options[EventExportADRCueDefaultReasonsKey] =
            juce::Array<juce::var> { juce::var ("None"), juce::var (reason) };
    }
};

TEST_F (DrawnCueWidthsTest, aNameEndsBeforeTheEdgeOfTheBox)
{
    words (regular, 10, 80)
        .expectTheWidth (
            [this] (const juce::String& word)
            {
                addCharacter ("c1", word.toStdString());
                return drawnAnew (cue ("Hello?"));
            });
}

TEST_F (DrawnCueWidthsTest, aReasonAndEngineeringNotesHaveTheWidthOfTheTextsAlone)
{
    const auto wide = words (regular, 8, w - 115 - 10);
    settings->layout = EventExportLayoutEngineer;
    wide.expectTheWidth ([this] (const juce::String& word)
                         { return drawnAnew (cue ("Hello?", {}, word.toStdString(), 0)); });
    settings->layout = EventExportLayoutDirector;
    wide.expectTheWidth (
        [this] (const juce::String& word)
        {
            setReason (word);
            return drawnAnew (cue ("Hello?", {}, {}, 1));
        });
}

TEST_F (DrawnCueWidthsTest, aReasonAndEngineeringNotesShareTheRowWithoutMeeting)
{
    settings->layout = EventExportLayoutEngineer;
    words (regular, 8, 140)
        .expectTheWidth (
            [this] (const juce::String& word)
            {
                setReason (word);
                return drawnAnew (cue ("Hello?", {}, "boom", 1));
            });
    setReason ("Noise");
    words (regular, 8, w - 5 - 338)
        .expectTheWidth ([this] (const juce::String& word)
                         { return drawnAnew (cue ("Hello?", {}, word.toStdString(), 1)); });
}

TEST_F (DrawnCueWidthsTest, aCueNumberWithoutEndHasLettersOfFourPointsAndIsCut)
{
    auto numbered = cue ("Hello?");
    numbered->setCueNumber (juce::String::repeatedString ("7", 200));
    const auto page = drawnAnew (numbered);
    const auto found = std::find_if (page.words.begin(), page.words.end(),
                                     [] (const auto& word) { return word.text.starts_with ("777"); });
    ASSERT_NE (found, page.words.end());
    document->setFont (bold, 4);
    float high = 0;
    document->layoutTextForWidth ("7", 0, high);
    EXPECT_NEAR (found->top - found->bottom, high, 0.2);
    EXPECT_LE (found->right, divider + 5 + 105.1f);
    EXPECT_GT (found->right, divider + 5 + 100);
}

TEST_F (DrawnCueWidthsTest, eachTextHasTheLettersOfItsKind)
{
    settings->layout = EventExportLayoutEngineer;
    settings->showTakeNumbers = true;
    const auto page = drawnAnew (cue ("Hello?", "softly", "boom", 2));
    expectSize (page, "A101", bold, 14);
    expectSize (page, "ANNA", regular, 10);
    expectSize (page, "01:00:00:00", bold, 10);
    expectSize (page, "01:00:03:05", bold, 10);
    expectSize (page, "Hello?", regular, 11);
    expectSize (page, "NOTES:", bold, 8);
    expectSize (page, "softly", regular, 8);
    expectSize (page, "REASON:", bold, 8);
    expectSize (page, "Noise", regular, 8);
    expectSize (page, "boom", regular, 8);
    expectSize (page, "24", regular, 8);
}

TEST_F (DrawnCueWidthsTest, withAReasonAloneTheBoxesForTakesHaveTheSameLetters)
{
    settings->showTakeNumbers = true;
    const auto page = drawnAnew (cue ("Hello?", {}, {}, 2));
    expectSize (page, "24", regular, 8);
    expectSize (page, "Noise", regular, 8);
}

TEST_F (DrawnCueWidthsTest, nothingButTheNameHasAColour)
{
    for (const auto layout : { EventExportLayoutDirector, EventExportLayoutActor, EventExportLayoutEngineer })
        for (const int reason : { 0, 2 })
        {
            settings->layout = layout;
            settings->showTakeNumbers = reason == 0;
            auto colours = drawnAnew (cue ("Hello?", "softly", "boom", reason)).textColours;
            EXPECT_EQ (std::erase (colours, nameBlue), 1);
            std::erase (colours, black);
            EXPECT_TRUE (colours.empty());
        }
}

TEST_F (DrawnCueWidthsTest, whatIsDrawnBehindACueBeginsInBlack)
{
    auto drawing = proxy (cue ("Hello?"));
    drawing.draw (x, y, w);
    document->drawLine (100, 100, 200, 100, 1, PDFDocument::LineCapPlain);
    document->fillRect (100, 50, 10, 10);
    document->saveToPath();
    const auto page = ReadPDF (folder.file ("cues.pdf")).page();
    EXPECT_TRUE (page.hasLine (100, 100, 200, 100, 1, black));
    EXPECT_TRUE (page.hasFill ({ 100, 50, 10, 10 }, black));
}

} // namespace
