// SPDX-License-Identifier: GPL-3.0-only
// What a drawn cue looks like, read back from its page; how high it is stands in EventPDFDrawingProxyHeightTest.cpp.
#include "export/print/DrawnCueSupport.h"

#include "support/SavedPDF.h"

#include <gmock/gmock.h>

using namespace ExportSupport;
using testing::HasSubstr;
using testing::Not;
using ZEP::Overmarks::Testing::darkestOf;

namespace
{

class EventPDFDrawingProxyTest : public DrawnCueTest
{
protected:
    void registerIcons (juce::Colour colour = juce::Colours::transparentBlack) const
    {
        juce::Image image (juce::Image::ARGB, 14, 14, true);
        image.clear (image.getBounds(), colour);

        for (const auto& icon :
             { EventPDFDrawingProxy::kCharacterIconIdentifier, EventPDFDrawingProxy::kInPointIconIdentifier,
               EventPDFDrawingProxy::kOutPointIconIdentifier })
            document->setImage (image, icon, false);
    }

    /** The baseline of the lowest row, without boxes for takes. */
    float lowestRow() const { return y - height + 5 + 4; }
};

// ---- the box -------------------------------------------------------------------------------------------------------------

TEST_F (EventPDFDrawingProxyTest, theBoxHasRoundCornersAndAColumnOnTheRight)
{
    const auto page = drawn (cue ("Hello?"));
    ASSERT_EQ (page.outlines.size(), 1u);
    EXPECT_TRUE (page.outlines[0].isRounded);
    EXPECT_TRUE (page.hasOutline ({ x, y - height, w, height }, 1, lineGrey));
    EXPECT_EQ (page.lines.size(), 2u);
    EXPECT_TRUE (page.hasLine (divider, y - 26, x + w, y - 26, 1, lineGrey));
    EXPECT_TRUE (page.hasLine (divider, y, divider, y - height, 1, lineGrey));
}

TEST_F (EventPDFDrawingProxyTest, theIdentifiersOfTheIconsAreThoseThatApplicationsUse)
{
    EXPECT_EQ (EventPDFDrawingProxy::kCharacterIconIdentifier, "CharIconIdentifier");
    EXPECT_EQ (EventPDFDrawingProxy::kInPointIconIdentifier, "InPointIconIdentifier");
    EXPECT_EQ (EventPDFDrawingProxy::kOutPointIconIdentifier, "OutPointIconIdentifier");
}

TEST_F (EventPDFDrawingProxyTest, theColumnTellsNumberCharacterAndTimes)
{
    registerIcons();
    const auto page = drawn (cue ("Hello?"));
    expectCentred (page, "A101", divider + 5, y - 24, 26);
    expectCentred (page, "ANNA", divider + 23, y - 43, 11);
    expectCentred (page, "01:00:00:00", divider + 23, y - 62, 11);
    expectCentred (page, "01:00:03:05", divider + 23, y - 76, 11);
    EXPECT_NEAR (page.word ("A101").top - page.word ("A101").bottom, 14 * 1.1, 1.0);
    EXPECT_NEAR (page.word ("ANNA").top - page.word ("ANNA").bottom, 10 * 1.1, 1.0);
    EXPECT_EQ (page.pictures.size(), 3u);
    EXPECT_TRUE (page.hasPicture ({ divider + 6, y - 46, 14, 14 }));
    EXPECT_TRUE (page.hasPicture ({ divider + 6, y - 62, 12, 10 }));
    EXPECT_TRUE (page.hasPicture ({ divider + 6, y - 77, 12, 10 }));
}

TEST_F (EventPDFDrawingProxyTest, theColumnHasItsIconsWhereItIsDrawnAloneToo)
{
    registerIcons();
    proxy (cue ("Hello?")).drawRightSection (x, y, w, height);
    document->saveToPath();
    const auto page = ReadPDF (folder.file ("cues.pdf")).page();
    EXPECT_EQ (page.count ("A101"), 1);
    EXPECT_TRUE (page.outlines.empty());
    EXPECT_EQ (page.pictures.size(), 3u);
    EXPECT_TRUE (page.hasPicture ({ divider + 6, y - 77, 12, 10 }));
}

TEST_F (EventPDFDrawingProxyTest, theSectionOfTextsIsDrawnAloneToo)
{
    auto drawing = proxy (cue ("Hello?", "close"));
    const auto high = drawing.drawingHeight (w);
    drawing.drawContentSection (x, y, w, high);
    document->saveToPath();
    const auto page = ReadPDF (folder.file ("cues.pdf")).page();
    EXPECT_EQ (page.count ("Hello?"), 1);
    EXPECT_EQ (page.count ("close"), 1);
    EXPECT_EQ (page.count ("A101"), 0);
    EXPECT_TRUE (page.outlines.empty());
}

TEST_F (EventPDFDrawingProxyTest, anIconIsOnTopOfACueNumberThatReachesIt)
{
    registerIcons (juce::Colours::white);
    auto drawing = proxy (cue ("Hello?"));
    drawing.cueNumberHeight = 74; // its middle is that of the icon
    document->setFillColor (black);
    drawing.draw (x, y, w);
    drawing.drawRightSection (x, y - 300, w, 84);
    document->saveToPath();
    const auto file = folder.file ("cues.pdf");

    for (const auto top : { y, y - 300 })
    {
        EXPECT_EQ (darkestOf (file, { divider + 7, top - 45, 12, 12 }), 255) << top;
        EXPECT_LT (darkestOf (file, { divider + 21, top - 45, 12, 12 }), 100) << top;
    }
}

TEST_F (EventPDFDrawingProxyTest, aLowBoxDoesNotCutItsIcons)
{
    registerIcons();
    auto drawing = proxy (cue ("Hello?"));
    drawing.minimumHeight = 30.0f;
    drawing.rightSectionWidth = 10.0f;
    ASSERT_LT (drawing.drawingHeight (w), 60.0f);
    drawing.draw (x, y, w);
    document->saveToPath();
    const auto page = ReadPDF (folder.file ("cues.pdf")).page();
    const auto edge = x + w - 10;
    EXPECT_TRUE (page.hasPicture ({ edge + 6, y - 46, 14, 14 }));
    EXPECT_TRUE (page.hasPicture ({ edge + 6, y - 62, 12, 10 }));
    EXPECT_TRUE (page.hasPicture ({ edge + 6, y - 77, 12, 10 }));
}

TEST_F (EventPDFDrawingProxyTest, onlyTheNameOfTheCharacterIsBlue)
{
    const auto page = drawn (cue ("Hello?"));
    EXPECT_THAT (page.textColours, testing::ElementsAre (black, nameBlue, black, black, black));
}

TEST_F (EventPDFDrawingProxyTest, theCueNumberTakesTheColourThatStands)
{
    auto drawing = proxy (cue ("Hello?"));
    document->setFillColor (juce::Colours::red);
    drawing.draw (x, y, w);
    document->saveToPath();
    EXPECT_EQ (ReadPDF (folder.file ("cues.pdf")).page().textColours.front(), juce::Colours::red);
}

TEST_F (EventPDFDrawingProxyTest, aCueOfNobodyHasNoName)
{
    auto nobodys = cue ("Hello?");
    nobodys->setCharacterID ("nobody");
    const auto page = drawn (nobodys);
    EXPECT_EQ (page.count ("ANNA"), 0);
    EXPECT_EQ (page.textColours.size(), 4u);
}

TEST_F (EventPDFDrawingProxyTest, aLongNameStaysInItsColumn)
{
    addCharacter ("c1", "THE OLD HARBOUR MASTER'S WIFE");
    const auto page = drawn (cue ("Hello?"));

    for (const auto& word : page.words)
        EXPECT_LE (word.right, x + w) << word.text;
}

TEST_F (EventPDFDrawingProxyTest, withoutIconsTheRestIsDrawn)
{
    const auto page = drawn (cue ("Hello?"));
    EXPECT_TRUE (page.pictures.empty());
    EXPECT_EQ (page.count ("ANNA"), 1);
}

// ---- the texts -----------------------------------------------------------------------------------------------------------

TEST_F (EventPDFDrawingProxyTest, theCueTextStandsAtTheTop)
{
    const auto page = drawn (cue (twoLines));
    EXPECT_NEAR (page.word ("I").x, x + 5, 0.5);
    EXPECT_NEAR (page.word ("I").top, y - 5, 0.5);
    EXPECT_NEAR (page.word ("more.").bottom, y - 5 - heightOf (twoLines, 11, 410), 0.5);
    EXPECT_NEAR (page.word ("I").top - page.word ("I").bottom, 11 * 1.1, 1.0);
}

TEST_F (EventPDFDrawingProxyTest, actorsReadLargerLetters)
{
    settings->layout = EventExportLayoutActor;
    const auto page = drawn (cue (twoLines));
    EXPECT_NEAR (page.word ("I").top - page.word ("I").bottom, 14 * 1.1, 1.0);
    EXPECT_NEAR (page.word ("I").top, y - 5, 0.5);
    EXPECT_NEAR (page.word ("more.").bottom, y - 5 - heightOf (twoLines, 14, 410), 0.5);
}

TEST_F (EventPDFDrawingProxyTest, notesStandOnBlueAtTheBottom)
{
    const std::string notes = "softly " + twoLines + " " + twoLines;
    settings->layout = EventExportLayoutActor;
    const auto page = drawn (cue ("Hello?", notes));
    const auto high = heightOf (notes, 8, 347);
    const auto c = lowestRow();
    ASSERT_GT (high, 15.0f) << "one line is no test";
    expectBaseline (page, "NOTES:", x + 5, c + high - 5 - 6, bold, 8);
    EXPECT_EQ (page.fills.size(), 1u);
    EXPECT_TRUE (page.hasFill ({ x + 63, c - 4, w - 5 - 178, high + 2 }, fieldBlue));
    EXPECT_NEAR (page.word ("softly").x, x + 66, 0.5);
    EXPECT_NEAR (page.word ("softly").top, c - 3 + high, 0.5);
    EXPECT_EQ (page.textColours.back(), black);
}

TEST_F (EventPDFDrawingProxyTest, aReasonHasARowOfItsOwn)
{
    const auto page = drawn (cue ("Hello?", {}, {}, 1));
    const auto c = lowestRow();
    expectBaseline (page, "REASON:", x + 5, c, bold, 8);
    EXPECT_TRUE (page.hasFill ({ x + 63, c - 4, w - 5 - 178, 13 }, fieldBlue));
    expectCentred (page, "Clarity", x + 66, c - 2, 10);
}

TEST_F (EventPDFDrawingProxyTest, theRowStandsAboveTheNotes)
{
    const auto page = drawn (cue ("Hello?", "softly", {}, 1));
    const auto high = heightOf ("softly", 8, 347);
    const auto c = lowestRow();
    expectBaseline (page, "NOTES:", x + 5, c + high - 11, bold, 8);
    expectBaseline (page, "REASON:", x + 5, c + high + 6, bold, 8);
    EXPECT_TRUE (page.hasFill ({ x + 63, c + high + 2, w - 5 - 178, 13 }, fieldBlue));
}

TEST_F (EventPDFDrawingProxyTest, aReasonWithoutATextIsAnEmptyRow)
{
    for (const auto layout : { EventExportLayoutDirector, EventExportLayoutEngineer })
    {
        settings->layout = layout;
        document =
            std::make_shared<PDFDocument> (folder.file ("cues.pdf").getFullPathName(), PaperSize::a4());
        const auto page = drawn (cue ("Hello?", {}, {}, -1));
        EXPECT_EQ (proxy (cue ("Hello?", {}, {}, -1)).reasonText, "");
        expectBaseline (page, "REASON:", x + 5, lowestRow(), bold, 8);
        EXPECT_EQ (page.fills.size(), 1u);
    }
}

TEST_F (EventPDFDrawingProxyTest, noReasonAndTheActorsHaveNoRow)
{
    EXPECT_EQ (drawn (cue ("Hello?", {}, {}, 0)).count ("REASON:"), 0);
    settings->layout = EventExportLayoutActor;
    document = std::make_shared<PDFDocument> (folder.file ("cues.pdf").getFullPathName(), PaperSize::a4());
    const auto page = drawn (cue ("Hello?", {}, "boom", 1));
    EXPECT_EQ (page.count ("REASON:") + page.count ("ENG."), 0);
}

TEST_F (EventPDFDrawingProxyTest, engineeringNotesAreForTheEngineerAlone)
{
    EXPECT_EQ (drawn (cue ("Hello?", {}, "boom", 0)).count ("ENG."), 0);
}

TEST_F (EventPDFDrawingProxyTest, engineeringNotesAloneHaveTheWholeRow)
{
    settings->layout = EventExportLayoutEngineer;
    const auto page = drawn (cue ("Hello?", {}, "boom", 0));
    const auto c = lowestRow();
    expectBaseline (page, "ENG.", x + 5, c, bold, 8);
    EXPECT_EQ (page.fills.size(), 1u);
    EXPECT_TRUE (page.hasFill ({ x + 63, c - 4, w - 5 - 178, 13 }, fieldBlue));
    expectCentred (page, "boom", x + 66, c - 2, 10);
    EXPECT_EQ (page.count ("REASON:"), 0);
}

TEST_F (EventPDFDrawingProxyTest, aReasonAndEngineeringNotesShareTheRow)
{
    settings->layout = EventExportLayoutEngineer;
    const auto page = drawn (cue ("Hello?", {}, "boom", 2));
    const auto c = lowestRow();
    expectBaseline (page, "REASON:", x + 5, c, bold, 8);
    expectBaseline (page, "ENG.", x + 181, c, bold, 8);
    EXPECT_EQ (page.fills.size(), 2u);
    EXPECT_TRUE (page.hasFill ({ x + 63, c - 4, 110, 13 }, fieldBlue));
    EXPECT_TRUE (page.hasFill ({ x + 238, c - 4, w - 5 - 353, 13 }, fieldBlue));
    expectCentred (page, "Noise", x + 66, c - 2, 10);
    expectCentred (page, "boom", x + 241, c - 2, 10);
}

/** The right edge of what begins at a point of the page with this letter. */
float endOf (const PDFPage& page, char letter, float left)
{
    float end = 0;

    for (const auto& word : page.words)
        if (word.text.front() == letter && word.x > left - 0.5f)
            end = std::max (end, word.right);

    return end;
}

TEST_F (EventPDFDrawingProxyTest, inASharedRowTheTextsEndWithTheirRectangles)
{
    settings->layout = EventExportLayoutEngineer;
    settings->options[EventExportADRCueDefaultReasonsKey] =
        juce::Array<juce::var> { juce::var ("None"),
                                 juce::var (juce::String::repeatedString ("iiiii ", 20)) };
    const auto page = drawn (cue ("Hello?", {}, std::string (200, 'l'), 1));
    EXPECT_LE (endOf (page, 'i', x + 66), x + 66 + 140.5f);
    EXPECT_GT (endOf (page, 'i', x + 66), x + 66 + 130);
    EXPECT_LE (endOf (page, 'l', x + 241), x + 241 + (w - 5 - 338) + 0.5f);
    EXPECT_GT (endOf (page, 'l', x + 241), x + 241 + (w - 5 - 338) - 10);
}

TEST_F (EventPDFDrawingProxyTest, aTextAloneInItsRowEndsWithItsRectangle)
{
    const std::string line (400, 'l');
    const auto engineers = cue ("Hello?", {}, line, 0), directors = cue ("Hello?", {}, {}, 1);
    settings->options[EventExportADRCueDefaultReasonsKey] =
        juce::Array<juce::var> { juce::var ("None"), juce::var (text (line)) };

    for (const auto& [layout, each] : { std::pair (EventExportLayoutEngineer, engineers),
                                        std::pair (EventExportLayoutDirector, directors) })
    {
        settings->layout = layout;
        document =
            std::make_shared<PDFDocument> (folder.file ("cues.pdf").getFullPathName(), PaperSize::a4());
        const auto page = drawn (each);
        EXPECT_LE (endOf (page, 'l', x + 66), x + 66 + (w - 115 - 10) + 0.5f);
        EXPECT_GT (endOf (page, 'l', x + 66), x + 66 + (w - 115 - 10) - 10);
    }
}

TEST_F (EventPDFDrawingProxyTest, aLongCueNumberIsWholeInSmallerLetters)
{
    for (const auto* number : { "SCENE12-ANNA-0107", "SCENE12-ANNA-0107-ALTERNATIVE" })
    {
        document =
            std::make_shared<PDFDocument> (folder.file ("cues.pdf").getFullPathName(), PaperSize::a4());
        auto numbered = cue ("Hello?");
        numbered->setCueNumber (number);
        const auto word = drawn (numbered).word (number);
        document->setFont (bold, 10);
        const auto shape = document->widthOfLine (number) / 10; // for each point of the font
        EXPECT_NEAR (word.x, divider + 5, 0.5);
        EXPECT_LE (word.right, divider + 5 + 105.5f);
        EXPECT_GT (word.right, divider + 5 + 105 - 0.25f * shape - 0.5f);
        EXPECT_LT (word.top - word.bottom, 14);
        EXPECT_NEAR ((word.top - word.bottom) * shape / (word.right - word.x), 1.15, 0.06)
            << "all of it: a shortened one would be narrower than its letters";
    }
}

// ---- takes ---------------------------------------------------------------------------------------------------------------

class TakeBoxes : public EventPDFDrawingProxyTest
{
protected:
    TakeBoxes() { settings->showTakeNumbers = true; }

    PDFPage withTake (int take)
    {
        auto chosen = cue ("Hello?");
        chosen->setSelectedTake (take);
        return drawn (chosen);
    }

    float bottom() const { return y - height; }
};

TEST_F (TakeBoxes, thereAreTwentyFourAlongTheLowerEdge)
{
    const auto page = withTake (-1);
    EXPECT_TRUE (page.hasLine (x, bottom() + box, x + 420, bottom() + box, 1, lineGrey));
    EXPECT_EQ (page.lines.size(), 2u + 1u + 24u);

    for (int i = 0; i < 24; ++i)
    {
        const auto left = x + static_cast<float> (i) * box;
        EXPECT_TRUE (page.hasLine (left + box, bottom(), left + box, bottom() + box, 1, lineGrey)) << i;
        const auto number = page.word (std::to_string (i + 1));
        EXPECT_NEAR ((number.x + number.right) / 2, left + box / 2, 0.5) << i;
        EXPECT_NEAR ((number.bottom + number.top) / 2, bottom() - 3 + box / 2, 0.5) << i;
    }

    EXPECT_EQ (page.count ("25"), 0);
}

TEST_F (TakeBoxes, theSelectedOneIsCrossedOut)
{
    const auto page = withTake (3);
    const auto left = x + 3 * box;
    EXPECT_EQ (page.lines.size(), 2u + 1u + 24u + 2u);
    EXPECT_TRUE (page.hasLine (left, bottom(), left + box, bottom() + box, 1, lineGrey));
    EXPECT_TRUE (page.hasLine (left, bottom() + box, left + box, bottom(), 1, lineGrey));
}

TEST_F (TakeBoxes, theCrossOfTheFirstKeepsOffTheRoundCorner)
{
    const auto page = withTake (0);
    const auto cross =
        std::find_if (page.lines.begin(), page.lines.end(),
                      [] (const PDFPage::Line& line) { return line.x1 < line.x2 && line.y1 < line.y2; });
    ASSERT_NE (cross, page.lines.end());
    EXPECT_NEAR (cross->x1, x + 1.5, 0.1);
    EXPECT_NEAR (cross->y1, bottom() + 1.5, 0.1);
    EXPECT_TRUE (page.hasLine (x, bottom() + box, x + box, bottom(), 1, lineGrey));
}

TEST_F (TakeBoxes, theLastIsTwentyFour)
{
    const auto page = withTake (23);
    EXPECT_TRUE (page.hasLine (x + 23 * box, bottom(), x + 420, bottom() + box, 1, lineGrey));
}

TEST_F (TakeBoxes, aTakeBeyondThemMarksNone)
{
    for (const auto take : { 24, 60 })
    {
        document =
            std::make_shared<PDFDocument> (folder.file ("cues.pdf").getFullPathName(), PaperSize::a4());
        EXPECT_EQ (withTake (take).lines.size(), 2u + 1u + 24u) << take;
    }
}

TEST_F (TakeBoxes, theOtherTakeIsNotShown)
{
    auto chosen = cue ("Hello?");
    chosen->setAltTake (2);
    EXPECT_EQ (drawn (chosen).lines.size(), 2u + 1u + 24u);
}

TEST_F (TakeBoxes, theRowsMoveUp)
{
    const auto page = drawn (cue ("Hello?", {}, {}, 1));
    expectBaseline (page, "REASON:", x + 5, lowestRow() + box, bold, 8);
}

} // namespace
