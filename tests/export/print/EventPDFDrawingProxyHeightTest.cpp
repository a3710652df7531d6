// SPDX-License-Identifier: GPL-3.0-only
// Reasons, and how high a drawn cue is.
#include "export/print/DrawnCueSupport.h"

#include <array>

using namespace ExportSupport;

namespace
{

class EventPDFDrawingProxyHeight : public DrawnCueTest
{
protected:
    float heightOfCue (const std::shared_ptr<Event>& cueToMeasure) const
    {
        return proxy (cueToMeasure).drawingHeight (w);
    }

    /** A text that is higher than the lowest box by itself. */
    const std::string longText = twoLines + twoLines + twoLines + twoLines + twoLines + twoLines;
    float text11() const { return heightOf (longText, 11, 410); }
};

// ---- the fields ----------------------------------------------------------------------------------------------------------

TEST_F (EventPDFDrawingProxyHeight, theMeasuresOfANewOne)
{
    const auto event = cue ("Hello?");
    const auto made = proxy (event);
    EXPECT_EQ (made.event, event);
    EXPECT_EQ (made.document, document);
    EXPECT_EQ (made.settings, settings);
    EXPECT_EQ (made.textHeight, 0.0f);
    EXPECT_EQ (made.notesHeight, 0.0f);
    EXPECT_EQ (made.rightSectionWidth, 115.0f);
    EXPECT_EQ (made.cueNumberHeight, 26.0f);
    EXPECT_EQ (made.rowHeight, 13.0f);
    EXPECT_EQ (made.rowSpacing, 3.0f);
    EXPECT_EQ (made.padding, 5.0f);
    EXPECT_EQ (made.minimumHeight, 84.0f);
    EXPECT_EQ (made.numTakeBoxes, 24);
}

TEST_F (EventPDFDrawingProxyHeight, theReasonComesFromTheTwoListsOneBehindTheOther)
{
    const char* expected[] = { "", "None", "Clarity", "Noise", "Rewrite", "", "" };

    for (int code = 0; code < 7; ++code)
        EXPECT_EQ (proxy (cue ("x", {}, {}, code - 1)).reasonText, expected[code]) << code;
}

TEST_F (EventPDFDrawingProxyHeight, bothListsOfReasonsMustBeThere)
{
    for (const auto& key : { EventExportADRCueDefaultReasonsKey, EventExportADRCueUserReasonsKey })
    {
        const auto kept = settings->options[key];
        settings->options.erase (key);
        EXPECT_THROW (proxy (cue ("x")), std::out_of_range) << key;
        settings->options[key] = kept;
    }
}

TEST_F (EventPDFDrawingProxyHeight, whatIsNoListHasNoReasons)
{
    settings->options[EventExportADRCueDefaultReasonsKey] = "Clarity";
    EXPECT_EQ (proxy (cue ("x", {}, {}, 0)).reasonText, "Rewrite");
    EXPECT_EQ (proxy (cue ("x", {}, {}, 1)).reasonText, "");
}

// ---- heights -------------------------------------------------------------------------------------------------------------

TEST_F (EventPDFDrawingProxyHeight, oneLineAndNothingElseStillHasTheLeast)
{
    settings->layout = EventExportLayoutActor;
    EXPECT_EQ (heightOfCue (cue ("Hello?")), 84.0f);
    EXPECT_EQ (heightOfCue (cue ({})), 84.0f);
}

TEST_F (EventPDFDrawingProxyHeight, aTextAloneLosesTheSpacingOfARow)
{
    settings->layout = EventExportLayoutActor;
    EXPECT_NEAR (heightOfCue (cue (longText)), heightOf (longText, 14, 410) + 10 - 3 + 5, 0.01);
}

TEST_F (EventPDFDrawingProxyHeight, notesAreOneRow)
{
    settings->layout = EventExportLayoutActor;
    EXPECT_NEAR (heightOfCue (cue (longText, twoLines)),
                 heightOf (longText, 14, 410) + 10 + heightOf (twoLines, 8, 347) + 5 + 5, 0.01);
}

TEST_F (EventPDFDrawingProxyHeight, theDirectorsNotesAndReasonAreTwoRowsWithOneSpace)
{
    EXPECT_NEAR (heightOfCue (cue (longText, twoLines, {}, 1)),
                 text11() + 10 + heightOf (twoLines, 8, 347) + 5 + 13 + 3 + 5, 0.01);
}

TEST_F (EventPDFDrawingProxyHeight, aReasonAloneIsOneRow)
{
    for (const auto layout : { EventExportLayoutDirector, EventExportLayoutEngineer })
    {
        settings->layout = layout;
        EXPECT_NEAR (heightOfCue (cue (longText, {}, {}, 1)), text11() + 10 + 13 + 5, 0.01);
    }
}

TEST_F (EventPDFDrawingProxyHeight, noneTakesTheRoomOfARow)
{
    EXPECT_NEAR (heightOfCue (cue (longText, {}, {}, 0)), text11() + 10 + 13 + 5, 0.01);
}

TEST_F (EventPDFDrawingProxyHeight, anEmptyReasonCountsAsNoRow)
{
    EXPECT_NEAR (heightOfCue (cue (longText, {}, {}, -1)), text11() + 10 - 3 + 5, 0.01);
}

TEST_F (EventPDFDrawingProxyHeight, engineeringNotesCountForTheEngineer)
{
    EXPECT_NEAR (heightOfCue (cue (longText, {}, "boom", -1)), text11() + 10 - 3 + 5, 0.01);
    settings->layout = EventExportLayoutEngineer;
    EXPECT_NEAR (heightOfCue (cue (longText, {}, "boom", -1)), text11() + 10 + 13 + 5, 0.01);
    EXPECT_NEAR (heightOfCue (cue (longText, {}, "boom", 1)), text11() + 10 + 13 + 5, 0.01)
        << "one row for both";
}

TEST_F (EventPDFDrawingProxyHeight, aReasonDoesNotCountForTheActor)
{
    settings->layout = EventExportLayoutActor;
    EXPECT_NEAR (heightOfCue (cue (longText, {}, "boom", 1)), heightOf (longText, 14, 410) + 10 - 3 + 5,
                 0.01);
}

TEST_F (EventPDFDrawingProxyHeight, boxesForTakesAddOneBox)
{
    const auto without = heightOfCue (cue (longText));
    settings->showTakeNumbers = true;
    EXPECT_NEAR (heightOfCue (cue (longText)), without + box, 0.01);
}

TEST_F (EventPDFDrawingProxyHeight, fewerBoxesAreLargerAndNoneNeedsNoRoom)
{
    settings->showTakeNumbers = true;

    for (const auto& [boxes, size] : { std::pair (24, 17.5f), std::pair (12, 35.0f), std::pair (1, 420.0f),
                                       std::pair (0, 0.0f), std::pair (-1, 0.0f) })
    {
        auto made = proxy (cue (longText));
        made.numTakeBoxes = boxes;
        EXPECT_NEAR (made.drawingHeight (w), text11() + 10 + 13 + 5 + size, 0.01) << boxes;
    }
}

TEST_F (EventPDFDrawingProxyHeight, textsAreMeasuredOnce)
{
    const auto event = cue (longText, twoLines);
    auto made = proxy (event);
    const auto before = made.drawingHeight (w);
    EXPECT_NEAR (made.textHeight, text11(), 0.01);
    EXPECT_NEAR (made.notesHeight, heightOf (twoLines, 8, 347), 0.01);
    event->setText (text ("short"));
    event->setNotes (text ("short"));
    EXPECT_EQ (made.drawingHeight (w), before);
    EXPECT_EQ (made.drawingHeight (200), before);
}

TEST_F (EventPDFDrawingProxyHeight, aTextWithoutHeightIsMeasuredEachTime)
{
    const auto event = cue ({});
    auto made = proxy (event);
    EXPECT_EQ (made.drawingHeight (w), 84.0f);
    EXPECT_EQ (made.textHeight, 0.0f);
    event->setText (text (longText));
    EXPECT_GT (made.drawingHeight (w), 84.0f);
}

TEST_F (EventPDFDrawingProxyHeight, noWidthIsTooSmallToMeasureAndDraw)
{
    settings->showTakeNumbers = true;

    for (const auto width : { 300.0f, 130.0f, 115.0f, 0.0f, -50.0f })
    {
        auto narrow = proxy (cue (longText, twoLines, {}, 1));
        const auto expected = heightOf (longText, 11, width - 125) + 10 + heightOf (twoLines, 8, width - 188)
                              + 5 + 13 + (width - 115) / 24 + 3 + 5;
        EXPECT_NEAR (narrow.drawingHeight (width), std::max (84.0f, expected), 0.01) << width;
        narrow.draw (x, y, width);
    }

    document->saveToPath();
    EXPECT_EQ (ReadPDF (folder.file ("cues.pdf")).page().count ("A101"), 3)
        << "of the two narrowest it is left of the paper";
}

TEST_F (EventPDFDrawingProxyHeight, noLineIsLostWhateverTheWidth)
{
    constexpr float far = 300; // from the left edge of the paper
    constexpr std::array widths { 300.0f, 130.0f, 100.0f, 60.0f, 15.0f };
    std::vector<float> heights;
    settings->showTakeNumbers = true;

    for (const auto width : widths)
    {
        auto narrow = proxy (cue ("Hello?"));
        heights.push_back (narrow.drawingHeight (width));
        narrow.draw (far, y, width);
        document->addPage();
    }

    document->saveToPath();
    const ReadPDF pdf (folder.file ("cues.pdf"));

    for (std::size_t number = 0; number < widths.size(); ++number)
    {
        const auto& page = pdf.page (number);
        const auto width = widths[number], edge = far + width - 115, size = (width - 115) / 24;
        const auto lower = y - heights[number], upper = lower + size;
        EXPECT_TRUE (page.hasOutline ({ far, lower, width, heights[number] }, 1, lineGrey)) << width;
        EXPECT_TRUE (page.hasLine (edge, y - 26, far + width, y - 26, 1, lineGrey)) << width;
        EXPECT_TRUE (page.hasLine (edge, y, edge, lower, 1, lineGrey)) << width;
        EXPECT_TRUE (page.hasLine (far, upper, edge, upper, 1, lineGrey)) << width;

        for (int i = 1; i <= 24; ++i)
        {
            const auto place = far + static_cast<float> (i) * size;
            EXPECT_TRUE (page.hasLine (place, lower, place, upper, 1, lineGrey)) << width << " " << i;
        }
    }
}

TEST_F (EventPDFDrawingProxyHeight, whatCuesHaveInCommonIsDescribedOnce)
{
    settings->showTakeNumbers = true;
    const auto formsOf = [this] (const std::vector<std::string>& cues, const std::vector<int>& takes)
    {
        document =
            std::make_shared<PDFDocument> (folder.file ("cues.pdf").getFullPathName(), PaperSize::a4());
        const juce::Image image (juce::Image::ARGB, 14, 14, true);
        document->setImage (image, EventPDFDrawingProxy::kCharacterIconIdentifier, false);
        auto top = 800.0f;

        for (std::size_t i = 0; i < cues.size(); ++i)
        {
            auto next = proxy (cue (cues[i]));
            next.numTakeBoxes = takes[i % takes.size()];
            next.draw (x, top, w);
            top -= next.drawingHeight (w) + 10.1f;
        }

        document->saveToPath();
        return ReadPDF (folder.file ("cues.pdf")).numberOfForms();
    };
    EXPECT_EQ (formsOf ({ "Hello?", "Who is there?", "Nobody.", "At three", "Now" }, { 24 }), 2)
        << "the frame with its icons, and the boxes";
    EXPECT_EQ (formsOf ({ longText, "Now", longText, longText }, { 24 }), 3)
        << "a higher frame, wherever it stands";
    EXPECT_EQ (formsOf ({ "Hello?", "Now", "At three" }, { 24, 12 }), 3) << "other boxes";
}

} // namespace
