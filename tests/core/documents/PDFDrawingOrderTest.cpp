// SPDX-License-Identifier: GPL-3.0-only
// Texts are shown several at a time; nobody may see it.
#include "core/documents/PDFDocument.h"

#include "support/SavedPDF.h"

#include <gmock/gmock.h>

#include <functional>

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using ZEP::Core::PDFDocument;
using namespace ZEP::Overmarks::Testing;

constexpr auto regular = PDFDocument::FontTypeRegular;
constexpr auto plain = PDFDocument::LineCapPlain;
constexpr auto dash = "\xe2\x80\x94\xe2\x80\x94\xe2\x80\x94"; // wide enough to be looked at
const juce::Colour black { 0xff000000 };
const juce::Colour blue { 0xff1761b5 };
const juce::Colour white { 0xffffffff };

class PDFDrawingOrder : public SavedPDF
{
protected:
    void drawDashes (float x, float y) { document.drawText (juce::String::fromUTF8 (dash), x, y); }

    /** @param hide  covers a line of text, whose baseline it gets, with white */
    void expectToHideWhatComesBefore (const std::function<void (float y)>& hide)
    {
        document.setFont (regular, 60);
        drawDashes (100, 500);
        drawDashes (100, 300);
        hide (500);
        hide (300);
        drawDashes (100, 300);
        EXPECT_EQ (darkest (here), 255);
        EXPECT_LT (darkest (here.translated (0, -200)), 20);
    }

    const juce::Rectangle<float> here { 100, 500, 60, 60 };
};

TEST_F (PDFDrawingOrder, aTextIsSeen)
{
    document.setFont (regular, 60);
    drawDashes (100, 500);
    EXPECT_LT (darkest (here), 20);
    EXPECT_EQ (darkest (here.translated (0, -100)), 255);
}

TEST_F (PDFDrawingOrder, aShapeHidesTheTextsBeforeItAndNoneAfterIt)
{
    expectToHideWhatComesBefore (
        [this] (float y)
        {
            document.setFillColor (white);
            document.fillRect (80, y - 10, 300, 90);
            document.setFillColor (black);
        });
}

TEST_F (PDFDrawingOrder, aLineHidesTheTextsBeforeItAndNoneAfterIt)
{
    document.setStrokeColor (white);
    expectToHideWhatComesBefore ([this] (float y)
                                 { document.drawLine (80, y + 30, 400, y + 30, 100, plain); });
}

TEST_F (PDFDrawingOrder, theLaterOfTwoTextsIsOnTop)
{
    document.setFont (regular, 60);
    drawDashes (100, 500);
    document.setFillColor (white);
    drawDashes (100, 500);
    EXPECT_GT (darkest (here), 120) << "but where the edges let something through";
}

TEST_F (PDFDrawingOrder, transparentTextsShowEachOther)
{
    document.setFont (regular, 60);
    document.setFillColor (black.withAlpha (0.5f));
    drawDashes (100, 500);
    drawDashes (100, 500);
    drawDashes (100, 300);
    EXPECT_EQ (saved().page().textColours.size(), 3u)
        << "letters that are shown together may not show through each other";
    EXPECT_NEAR (darkest (here), 64, 10);
    EXPECT_NEAR (darkest (here.translated (0, -200)), 128, 10);
}

TEST_F (PDFDrawingOrder, aLimitHoldsForTheTextsAfterItAlone)
{
    document.setFont (regular, 60);
    drawDashes (100, 500);
    document.setClip ({ 0, 0, 50, 50 });
    drawDashes (100, 300);
    EXPECT_LT (darkest (here), 20);
    EXPECT_EQ (darkest (here.translated (0, -200)), 255);
}

TEST_F (PDFDrawingOrder, textsInTurnHaveTheirColours)
{
    for (const auto& colour : { black, blue, blue, black })
    {
        document.setFillColor (colour);
        document.drawText ("Anna", 40, 700);
    }

    EXPECT_THAT (saved().page().textColours, ElementsAre (black, blue, black));
}

TEST_F (PDFDrawingOrder, textsInOneFontStandEachAtItsPlace)
{
    document.setFont (regular, 10);

    for (int i = 0; i < 40; ++i)
        document.drawText ("take" + juce::String (i), 40.0f + 100.0f * static_cast<float> (i % 4),
                           700.0f - 15.0f * static_cast<float> (i / 4));

    const auto page = saved().page();

    for (int i = 0; i < 40; ++i)
    {
        const auto word = page.word ("take" + std::to_string (i));
        EXPECT_NEAR (word.x, 40.0f + 100.0f * static_cast<float> (i % 4), 0.1);
        EXPECT_NEAR (word.bottom + document.getCurrentFontDescent(), 700 - 15 * (i / 4), 0.1);
    }
}

TEST_F (PDFDrawingOrder, whatIsReadFromTheRightOrIsInNoFontMayStandBetween)
{
    document.setFont (regular, 10);
    const char* texts[] = { "Anna", "ميناء",       "Bernd", "Carla \xf4\x8f\xbf\xbd Dora",
                            "Emil", "Ida آنا Jan", "Kai" };
    auto y = 700.0f;

    for (const auto* text : texts)
        document.drawText (juce::String::fromUTF8 (text), 40, y -= 30);

    const auto page = saved().page();
    const auto baselineOf = [&] (const char* word)
    { return page.word (word).bottom + document.getCurrentFontDescent(); };
    EXPECT_NEAR (baselineOf ("Anna"), 670, 0.1);
    EXPECT_NEAR (baselineOf ("Bernd"), 610, 0.1);
    EXPECT_NEAR (baselineOf ("Carla"), 580, 0.1);
    EXPECT_NEAR (baselineOf ("Dora"), 580, 0.1);
    EXPECT_NEAR (baselineOf ("Emil"), 550, 0.1);
    EXPECT_NEAR (baselineOf ("Ida"), 520, 0.1);
    EXPECT_NEAR (baselineOf ("Kai"), 490, 0.1);
    EXPECT_GT (page.word ("Jan").x, page.word ("Ida").right);
    EXPECT_THAT (juce::String::fromUTF8 (page.text.c_str()).removeCharacters (" ").toStdString(),
                 HasSubstr ("ميناء"));
}

TEST_F (PDFDrawingOrder, fontsOfTwoSizesKeepThem)
{
    auto y = 700.0f;

    for (const auto size : { 10.0f, 20.0f, 20.0f, 10.0f })
    {
        document.setFont (regular, size);
        document.drawText ("size" + juce::String (juce::roundToInt (size)), 40, y -= 50);
    }

    const auto page = saved().page();
    const auto heightOf = [&page] (int occurrence, const char* word)
    { return page.word (word, occurrence).top - page.word (word, occurrence).bottom; };

    for (const auto occurrence : { 0, 1 })
        EXPECT_NEAR (heightOf (occurrence, "size20"), 2 * heightOf (occurrence, "size10"), 0.1);

    EXPECT_GT (heightOf (1, "size10"), 5);
}

TEST_F (PDFDrawingOrder, whatNobodySeesIsNotInTheFile)
{
    document.setFont (regular, 10);

    auto y = 720.0f;

    for (const auto* unseen : { "\t", "\xc2\xad", "\xe2\x80\x8b" })
    {
        document.drawText (juce::String::fromUTF8 (unseen), 40, y);
        document.drawText ("Anna", 40, y -= 20);
        document.drawText (juce::String::fromUTF8 (unseen), 40, y);
    }

    document.drawText ("hidden", 40, 5000);
    document.drawText ("hidden", 40, -5000);
    document.drawText ("hidden", -5000, 700);
    document.drawText ("Bernd", 40, 600);
    document.setClip ({ 0, 0, 50, 50 });
    document.drawText ("hidden", 40, 700);
    document.drawText ("hidden", 50, 20);
    document.drawText ("Carla", 10, 20);
    document.drawText ("hidden", 40, 700);
    const auto page = saved().page();
    EXPECT_EQ (page.replacedTexts, 0);
    EXPECT_EQ (page.count ("Anna"), 3);
    EXPECT_EQ (page.count ("Bernd"), 1);
    EXPECT_EQ (page.count ("Carla"), 1);
    EXPECT_THAT (page.text, testing::Not (HasSubstr ("hidden")));
}

TEST_F (PDFDrawingOrder, hyphensDotsAndMarksStandBetweenOthers)
{
    document.setFont (regular, 10);
    document.drawText ("first", 40, 800);
    document.drawMultilineText (juce::String::fromUTF8 ("harbour\xc2\xadmaster\n\nslowly"),
                                { 40, 600, 50, 100 }, juce::Justification::topLeft);
    document.drawText ("a text that is much too long for its place", { 40, 500, 80, 20 },
                       juce::Justification::left);
    document.drawText (juce::String::fromUTF8 ("x\xcc\xa3\xcc\x83 q\xcc\x8a"), 40,
                       400); // letters that have no sign of their own
    document.drawText ("last", 40, 300);
    const auto page = saved().page();
    EXPECT_NEAR (page.word ("first").x, 40, 0.1);
    EXPECT_EQ (page.count ("slowly"), 1);
    EXPECT_THAT (page.text, HasSubstr ("harbour"));
    EXPECT_EQ (page.count ("master"), 1);
    EXPECT_THAT (page.text, HasSubstr ("x\xcc\xa3\xcc\x83"));
    EXPECT_THAT (page.text, HasSubstr ("q\xcc\x8a"));
    EXPECT_NEAR (page.word ("last").bottom + document.getCurrentFontDescent(), 300, 0.1);
}

TEST_F (PDFDrawingOrder, textsAtTheEndOfAPageStayOnIt)
{
    document.drawText ("first", 40, 700);
    document.addPage();
    document.drawText ("second", 40, 700);
    const auto pdf = saved();
    EXPECT_EQ (pdf.page (0).count ("first"), 1);
    EXPECT_EQ (pdf.page (0).count ("second"), 0);
    EXPECT_EQ (pdf.page (1).count ("second"), 1);
}

} // namespace
