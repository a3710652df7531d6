// SPDX-License-Identifier: GPL-3.0-only
// Texts on a page: where they stand, how they break, what can be searched.
#include "core/documents/PDFDocument.h"

#include "support/ChildProcess.h"
#include "support/CollectedLog.h"
#include "support/SavedPDF.h"
#include "support/TemporaryFolder.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <limits>

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using ZEP::Core::PDFDocument;
using namespace ZEP::Overmarks::Testing;

constexpr auto regular = PDFDocument::FontTypeRegular;
constexpr auto bold = PDFDocument::FontTypeBold;

const juce::Rectangle<float> place { 100, 400, 200, 100 };

juce::String utf8 (const char* text) { return juce::String::fromUTF8 (text); }

class PDFDocumentTextTest : public SavedPDF
{
protected:
    float baselineOf (const PDFPage::Word& word) const
    {
        return word.bottom + document.getCurrentFontDescent();
    }

    std::vector<std::string> linesOf (const juce::String& text, float width)
    {
        float height = 0;
        std::vector<std::string> lines;

        for (const auto& line : document.layoutTextForWidth (text, width, height))
            lines.push_back (line.toStdString());

        return lines;
    }

    float heightOf (const juce::String& text, float width)
    {
        float height = -1;
        document.layoutTextForWidth (text, width, height);
        return height;
    }
};

// ---- where it stands -----------------------------------------------------------------------------------------------------

TEST_F (PDFDocumentTextTest, aTextBeginsOnTheBaselineAtItsPoint)
{
    document.setFont (bold, 12);
    document.drawText ("Timeline", 40, 725);
    const auto word = saved().page().word ("Timeline");
    EXPECT_NEAR (word.x, 40, 0.5);
    EXPECT_NEAR (baselineOf (word), 725, 0.5);
}

TEST_F (PDFDocumentTextTest, aTextHasTheFillColour)
{
    const juce::Colour blue { 23, 97, 181 };
    document.setStrokeColor (juce::Colours::red);
    document.setFillColor (blue);
    document.drawText ("ANNA", 40, 725);
    EXPECT_THAT (saved().page().textColours, ElementsAre (blue));
}

TEST_F (PDFDocumentTextTest, theDescentGrowsWithTheFont)
{
    document.setFont (regular, 10);
    const auto small = document.getCurrentFontDescent();
    EXPECT_GT (small, 1.0f);
    EXPECT_LT (small, 4.0f);
    document.setFont (regular, 20);
    EXPECT_NEAR (document.getCurrentFontDescent(), 2 * small, 0.01);
    document.setFont (bold, 10);
    EXPECT_GT (document.getCurrentFontDescent(), 1.0f);
}

TEST_F (PDFDocumentTextTest, boldIsWider)
{
    document.setFont (regular, 20);
    document.drawText ("regular", 40, 700);
    document.setFont (bold, 20);
    document.drawText ("regular", 40, 600);
    const auto page = saved().page();
    EXPECT_GT (page.word ("regular", 1).right, page.word ("regular", 0).right + 1);
}

struct Place
{
    int flags;
    float x;      ///< 0 left, 1 centre, 2 right
    float height; ///< 0 bottom, 1 centre, 2 top
};

class Justified : public PDFDocumentTextTest, public testing::WithParamInterface<Place>
{
};

TEST_P (Justified, oneLineStandsInsideItsRectangle)
{
    const auto [flags, column, row] = GetParam();
    document.setFont (regular, 20);
    document.drawText ("hidden", place, juce::Justification (flags));
    const auto word = saved().page().word ("hidden");
    const auto freeWidth = place.getWidth() - (word.right - word.x);
    const auto freeHeight = place.getHeight() - (word.top - word.bottom);
    EXPECT_NEAR (word.x, place.getX() + freeWidth * column / 2, 0.5);
    EXPECT_NEAR (word.bottom, place.getY() + freeHeight * row / 2, 0.5);
}

TEST_P (Justified, severalLinesStandInItAsABlock)
{
    const auto [flags, column, row] = GetParam();
    document.setFont (regular, 20);
    document.drawMultilineText ("wide line\nof", place, juce::Justification (flags));
    const auto page = saved().page();
    const auto first = page.word ("wide"), last = page.word ("of");
    EXPECT_NEAR (first.bottom, last.top, 0.5);
    EXPECT_NEAR (last.bottom, place.getY() + (place.getHeight() - (first.top - last.bottom)) * row / 2, 0.5);
    EXPECT_NEAR (last.x, place.getX() + (place.getWidth() - (last.right - last.x)) * column / 2, 0.5);
}

INSTANTIATE_TEST_SUITE_P (PDFDocument, Justified,
                          testing::Values (Place { 33, 0, 1 }, Place { 36, 1, 1 }, Place { 34, 2, 1 },
                                           Place { 17, 0, 0 }, Place { 20, 1, 0 }, Place { 18, 2, 0 },
                                           Place { 9, 0, 2 }, Place { 12, 1, 2 }, Place { 10, 2, 2 }));

TEST_F (PDFDocumentTextTest, aTextThatIsTooWideEndsAtTheEdgeAndIsFoundAsAWhole)
{
    document.setFont (regular, 10);
    document.drawText ("THE OLD HARBOUR MASTER'S WIFE", { 100, 400, 80, 11 },
                       juce::Justification::centredLeft);
    const auto page = saved().page();
    EXPECT_THAT (page.text, HasSubstr ("THE OLD HARBOUR MASTER'S WIFE"));
    EXPECT_LE (page.words.back().right, 180.5f);
    EXPECT_GT (page.words.back().right, 165.0f);
}

TEST_F (PDFDocumentTextTest, aTextThatJustFitsIsWhole)
{
    document.setFont (bold, 10);
    const auto width = document.widthOfLine ("23:59:59:24");
    document.drawText ("23:59:59:24", { 100, 400, width, 11 }, juce::Justification::centredLeft);
    document.drawText ("23:59:59:24", { 100, 300, width - 1, 11 }, juce::Justification::centredLeft);
    document.drawText ("23:59:59:24", 100, 200);
    const auto page = saved().page();
    EXPECT_EQ (page.word ("23:59:59:24", 0).right, page.word ("23:59:59:24", 2).right);
    EXPECT_LT (page.word ("23:59:59:24", 1).right, page.word ("23:59:59:24", 2).right - 1)
        << "one that doesn't fit is shorter";
}

TEST_F (PDFDocumentTextTest, theWidthOfALineIsThatOfItsLetters)
{
    document.setFont (bold, 20);
    document.drawText ("harbour", 100, 400);
    const auto word = saved().page().word ("harbour");
    EXPECT_NEAR (document.widthOfLine ("harbour"), word.right - word.x, 0.1);
    EXPECT_NEAR (document.widthOfLine ("harbour\nharbour"), document.widthOfLine ("harbour harbour"), 0.01);
    EXPECT_EQ (document.widthOfLine ({}), 0.0f);
}

TEST_F (PDFDocumentTextTest, oneLineStaysOneLine)
{
    document.drawText (utf8 ("one\ntwo\r\nthree\rfour\u2028five\u2029six"), 40, 700);
    document.drawText ("seven\neight", { 40, 600, 200, 20 }, juce::Justification::centredLeft);
    const auto page = saved().page();
    EXPECT_NEAR (page.word ("six").bottom, page.word ("one").bottom, 0.01);
    EXPECT_NEAR (page.word ("eight").bottom, page.word ("seven").bottom, 0.01);
    EXPECT_THAT (page.text, HasSubstr ("one two three four five six"));
}

TEST_F (PDFDocumentTextTest, aRectangleWithoutWidthLeavesTheTextWhole)
{
    for (const auto width : { 0.0f, -10.0f })
        document.drawText ("whole text", { 100, 400 + width, width, 20 }, juce::Justification::centredLeft);

    EXPECT_EQ (saved().page().count ("text"), 2);
}

TEST_F (PDFDocumentTextTest, aTextAtNoPlaceIsNotDrawn)
{
    for (const auto odd :
         { std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(), 1.0e30f })
    {
        document.drawText ("x", odd, 10);
        document.drawText ("x", 10, odd);
        document.drawText ("x", { odd, 10, 20, 20 }, juce::Justification::left);
        document.drawMultilineText ("x", { 10, 10, 20, odd }, juce::Justification::left);
    }

    EXPECT_TRUE (saved().page().words.empty());
}

TEST_F (PDFDocumentTextTest, oddSizesBecomeSizesThatALetterCanHave)
{
    for (const auto odd : { 0.0f, -5.0f, std::numeric_limits<float>::quiet_NaN(), 1.0e9f })
    {
        document.setFont (regular, odd);
        document.drawText ("x", 10, 10);
        EXPECT_GT (document.getCurrentFontDescent(), 0.0f);
        EXPECT_LT (document.getCurrentFontDescent(), 500.0f);
    }

    EXPECT_EQ (saved().pages.size(), 1u);
}

// ---- lines ---------------------------------------------------------------------------------------------------------------

TEST_F (PDFDocumentTextTest, anEmptyTextHasNoLinesAndNoHeight)
{
    EXPECT_TRUE (linesOf ({}, 100).empty());
    EXPECT_EQ (heightOf ({}, 100), 0.0f);
    document.drawMultilineText ({}, place, juce::Justification::left);
    document.drawText ({}, place, juce::Justification::left);
    EXPECT_TRUE (saved().page().words.empty());
}

TEST_F (PDFDocumentTextTest, aTextBreaksBetweenWords)
{
    document.setFont (regular, 11);
    const auto lines = linesOf ("Where were you last night, and with whom?", 100);
    EXPECT_GT (lines.size(), 1u);
    std::string whole;

    for (const auto& line : lines)
        whole += (whole.empty() ? "" : " ") + line;

    EXPECT_EQ (whole, "Where were you last night, and with whom?");
}

TEST_F (PDFDocumentTextTest, theHeightIsThatOfAllLines)
{
    document.setFont (regular, 11);
    const auto one = heightOf ("x", 100);
    EXPECT_GT (one, 11.0f);
    EXPECT_LT (one, 16.0f);
    EXPECT_NEAR (heightOf ("x\ny\nz", 100), 3 * one, 0.01);
    EXPECT_THAT (document.lineHeightsForWidth ("x\ny\nz", 100), ElementsAre (one, one, one));
}

TEST_F (PDFDocumentTextTest, everyKindOfLineBreakCounts)
{
    EXPECT_THAT (linesOf (utf8 ("a\nb\r\nc\rd\u2028e\u2029f\n\ng"), 100),
                 ElementsAre ("a", "b", "c", "d", "e", "f", "", "g"));
}

TEST_F (PDFDocumentTextTest, aWordThatIsTooLongIsBroken)
{
    const juce::String word = juce::String::repeatedString ("Donau", 30);
    const auto lines = linesOf (word, 100);
    EXPECT_GT (lines.size(), 3u);
    std::string whole;

    for (const auto& line : lines)
        whole += line;

    EXPECT_EQ (whole, word.toStdString());
}

TEST_F (PDFDocumentTextTest, withoutAWidthOnlyTheTextsOwnBreaksCount)
{
    for (const auto width : { 0.0f, -20.0f, std::numeric_limits<float>::quiet_NaN() })
        EXPECT_THAT (linesOf ("a rather long line\nand another", width),
                     ElementsAre ("a rather long line", "and another"));
}

TEST_F (PDFDocumentTextTest, whatIsDrawnBreaksAsItWasMeasured)
{
    document.setFont (regular, 14);
    const juce::String text =
        "I told you: at the harbour, with Tom, until the lights went out.\nAnd then home.";
    const auto lines = linesOf (text, place.getWidth());
    const auto height = heightOf (text, place.getWidth());
    document.drawMultilineText (text, place.withHeight (height), juce::Justification::bottomLeft);
    const auto page = saved().page();
    float top = place.getY() + height;

    for (const auto& line : lines)
    {
        const auto first = page.word (line.substr (0, line.find (' ')));
        EXPECT_NEAR (first.x, place.getX(), 0.5) << line;
        EXPECT_NEAR (first.top, top, 0.5) << line;
        top -= height / static_cast<float> (lines.size());
        EXPECT_THAT (page.text, HasSubstr (line));
    }
}

TEST_F (PDFDocumentTextTest, aClipHidesWhatIsOutsideUntilItIsLifted)
{
    document.setFont (regular, 10);
    document.setClip ({ 100, 400, 200, 50 });
    document.drawMultilineText ("hidden\nshown", { 100, 400, 200, 56 }, juce::Justification::topLeft);
    document.drawMultilineText ("above", { 100, 460, 200, 20 }, juce::Justification::topLeft);
    document.setClip ({});
    document.drawMultilineText ("later", { 100, 500, 200, 20 }, juce::Justification::topLeft);
    document.setClip ({ 1, 1, 1, 1 });
    document.addPage();
    document.drawMultilineText ("next", { 100, 500, 200, 20 }, juce::Justification::topLeft);
    const auto pdf = saved();
    EXPECT_GE (pdf.page().clips, 1);
    EXPECT_EQ (pdf.page().count ("shown"), 1);
    EXPECT_EQ (pdf.page().count ("above"), 0);
    EXPECT_EQ (pdf.page().count ("later"), 1);
    EXPECT_EQ (pdf.page (1).count ("next"), 1);
}

// ---- letters -------------------------------------------------------------------------------------------------------------

TEST_F (PDFDocumentTextTest, everyScriptCanBeSearched)
{
    const char* words[] = { "Smörgåsbord", "Straße", "Гавань", "Λιμάνι", "Přístav", "»naïve«", "1½" };
    float y = 700;

    for (const auto* word : words)
        document.drawText (utf8 (word), 40, y -= 30);

    document.drawText (utf8 ("ميناء"), 40, 100);
    const auto page = saved().page();

    for (const auto* word : words)
        EXPECT_THAT (page.text, HasSubstr (word));

    // The reader sees gaps between joined letters of some fonts.
    EXPECT_THAT (utf8 (page.text.c_str()).removeCharacters (" ").toStdString(), HasSubstr ("ميناء"));
}

TEST_F (PDFDocumentTextTest, aLineInAnotherScriptStandsOnTheSameBaseline)
{
    document.setFont (regular, 10);
    document.drawText ("Anna", { 100, 400, 80, 11 }, juce::Justification::centredLeft);
    document.drawText (utf8 ("Anna آنا"), { 200, 400, 80, 11 }, juce::Justification::centredLeft);
    const auto page = saved().page();
    EXPECT_NEAR (page.word ("Anna", 0).bottom, page.word ("Anna", 1).bottom, 0.01);
}

TEST_F (PDFDocumentTextTest, aParagraphThatIsReadFromTheRightStandsThere)
{
    document.drawMultilineText (utf8 ("ميناء"), place, juce::Justification::bottomLeft);
    document.drawText (utf8 ("ميناء"), place.translated (0, -200), juce::Justification::bottomLeft);
    const auto page = saved().page();
    float rightOfUpper = 0, leftOfLower = 999;

    for (const auto& word : page.words)
        if (word.bottom > 300)
            rightOfUpper = std::max (rightOfUpper, word.right);
        else
            leftOfLower = std::min (leftOfLower, word.x);

    EXPECT_NEAR (rightOfUpper, place.getRight(), 0.5);
    EXPECT_NEAR (leftOfLower, place.getX(), 0.5);
}

TEST_F (PDFDocumentTextTest, controlCharactersAreLeftOut)
{
    document.drawText (utf8 ("sa\x01"
                             "fe\x1b[31m and\tsound\x7f\u0085"),
                       40, 700);
    EXPECT_THAT (saved().page().text, HasSubstr ("safe[31m and sound"));
}

TEST_F (PDFDocumentTextTest, whatIsNoCharacterHarmsNothing)
{
    document.drawText (juce::String (juce::CharPointer_UTF8 ("lone \xed\xa0\x80 half")), 40, 700);
    document.drawText (utf8 ("clapper 🎬 and \ufffe\U0010ffff"), 40, 600);
    const auto page = saved().page();
    EXPECT_EQ (page.count ("lone"), 1);
    EXPECT_EQ (page.count ("half"), 1);
    EXPECT_EQ (page.count ("clapper"), 1);
}

TEST_F (PDFDocumentTextTest, aTextThatNoPaperHoldsIsCutAndLogged)
{
    const CollectedLog log;
    float height = 0;
    const auto lines =
        document.layoutTextForWidth (juce::String::repeatedString ("mad ", 75000), 400, height);
    EXPECT_EQ (log.lines(), std::vector<std::string> {
                                "A text of 300000 bytes is too long for a page; 200000 are shown" });
    EXPECT_TRUE (lines.back().endsWith (utf8 ("…")));
}

TEST_F (PDFDocumentTextTest, afterTheEndNothingIsLaidOut)
{
    const CollectedLog log;
    document.saveToPath();
    const auto tooLong = juce::String::repeatedString ("mad ", 75000);
    document.drawText (tooLong, 40, 700);
    document.drawText (tooLong, place, juce::Justification::left);
    document.drawMultilineText (tooLong, place, juce::Justification::topLeft);
    EXPECT_EQ (log.lines(), std::vector<std::string>());
}

TEST_F (PDFDocumentTextTest, aTextThatIsTooLongIsToldOnce)
{
    const CollectedLog log;
    const auto text = juce::String::repeatedString ("mad ", 75000);
    heightOf (text, 400);

    for (int page = 0; page < 3; ++page)
        document.drawMultilineText (text, place.withWidth (400), juce::Justification::left);

    EXPECT_EQ (log.lines().size(), 1u);
}

TEST_F (PDFDocumentTextTest, aTextOfNothingButLineBreaksIsCutAndLogged)
{
    const CollectedLog log;
    document.setFont (regular, 11);
    const auto text = juce::String::repeatedString ("mad\n", 49000) + "end";
    const auto lineHeight = heightOf ("mad", 400);
    const auto lines = linesOf (text, 400);
    const auto most = static_cast<std::size_t> (60000.0f / lineHeight);
    EXPECT_NEAR (static_cast<double> (lines.size()), static_cast<double> (most), 1.0);
    EXPECT_LE (heightOf (text, 400), 60000.0f);
    EXPECT_EQ (lines.back(), "mad…");
    EXPECT_EQ (log.lines(), std::vector<std::string> { "A text of 49001 lines is too tall for paper; "
                                                       + std::to_string (lines.size()) + " are shown" });
    document.drawMultilineText (text, { 50, 700 - heightOf (text, 400), 400, heightOf (text, 400) },
                                juce::Justification::bottomLeft);
    EXPECT_GT (saved().page().count ("mad"), 40);
}

TEST_F (PDFDocumentTextTest, blankLinesThatNobodyReadsAreNoPaper)
{
    const CollectedLog log;
    EXPECT_THAT (linesOf ("mad" + juce::String::repeatedString ("\n", 80000) + "end", 400),
                 ElementsAre ("mad…"));
    EXPECT_EQ (log.lines().size(), 1u);
}

TEST_F (PDFDocumentTextTest, aLongLineIsCutWithoutAWord)
{
    const CollectedLog log;
    document.drawText (juce::String::repeatedString ("mad", 100000), place, juce::Justification::left);
    EXPECT_TRUE (log.lines().empty());
    EXPECT_LE (saved().page().words.back().right, place.getRight() + 0.5f);
}

TEST_F (PDFDocumentTextTest, thousandsOfDifferentTextsAreDrawnAsTheyAre)
{
    for (int i = 0; i < 20000; ++i)
    {
        document.setFont (i % 2 == 0 ? regular : bold, 8);
        document.drawText ("T" + juce::String (i % 18000), { 10, 10, 80, 10 }, juce::Justification::left);
    }

    document.addPage();
    document.drawText ("T17", { 10, 10, 80, 10 }, juce::Justification::left);
    EXPECT_EQ (saved().page (1).count ("T17"), 1);
}

TEST (PDFDocumentFonts, aMachineWithoutFontsGetsADocumentNevertheless)
{
    const TemporaryFolder folder;
    folder.write ("fonts.conf", "<fontconfig></fontconfig>");
    const auto said = inChildProcess (
        [&folder]
        {
            ::setenv ("FONTCONFIG_FILE", folder.file ("fonts.conf").getFullPathName().toRawUTF8(), 1);
            PDFDocument document (folder.file ("sheet.pdf").getFullPathName());
            document.setFont (PDFDocument::FontTypeBold, 12);
            document.drawText ("x", 10, 10);
            document.drawMultilineText ("x y z", { 10, 10, 50, 50 }, juce::Justification::left);
            document.saveToPath();
            return std::string (document.saveResult().wasOk() ? "saved" : "failed");
        });
    EXPECT_EQ (said, "saved");
    EXPECT_EQ (ReadPDF (folder.file ("sheet.pdf")).pages.size(), 1u);
}

} // namespace
