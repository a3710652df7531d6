// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/PDFDocument.h"
#include "export/ExportSupport.h"
#include "export/print/EventPDFDrawingProxy.h"
#include "support/ReadPDF.h"

#include <memory>

namespace ExportSupport
{

using ZEP::Core::PaperSize;
using ZEP::Core::PDFDocument;
using ZEP::Overmarks::Testing::PDFPage;
using ZEP::Overmarks::Testing::ReadPDF;

const juce::Colour black { 0xff000000 };
const juce::Colour lineGrey { 118, 118, 118 };
const juce::Colour nameBlue { 23, 97, 181 };
const juce::Colour fieldBlue { 237, 245, 255 };

constexpr auto regular = PDFDocument::FontTypeRegular;
constexpr auto bold = PDFDocument::FontTypeBold;

/** Cues on an A4 page. The box has its top left corner at (30, 700) and is 535 wide: 420 for the texts, 115 for the details. */
class DrawnCueTest : public ExportTest
{
protected:
    DrawnCueTest()
    {
        settings->layout = EventExportLayoutDirector;
        settings->options[EventExportADRCueDefaultReasonsKey] =
            juce::Array<juce::var> { "None", "Clarity", "Noise" };
        settings->options[EventExportADRCueUserReasonsKey] = juce::Array<juce::var> { "Rewrite" };
        addCharacter ("c1", "ANNA");
    }

    static constexpr float x = 30, y = 700, w = 535, divider = 450, box = 17.5f;

    std::shared_ptr<Event> cue (const std::string& words, const std::string& notes = {},
                                const std::string& engineering = {}, int storedReason = 0) const
    {
        auto made = event ({ "A101", 90000, 90080, "c1", words, notes });
        made->setEngineeringNotes (text (engineering));
        made->setReason (storedReason);
        return made;
    }

    EventPDFDrawingProxy proxy (const std::shared_ptr<Event>& cueToDraw) const
    {
        return { cueToDraw, document, settings };
    }

    /** The height of a text in the document's fonts. */
    float heightOf (const std::string& words, float size, float width) const
    {
        float measured = 0;
        document->setFont (regular, size);
        document->layoutTextForWidth (text (words), width, measured);
        return measured;
    }

    /** Draws a cue and reads the page. */
    PDFPage drawn (const std::shared_ptr<Event>& cueToDraw)
    {
        auto drawing = proxy (cueToDraw);
        height = drawing.drawingHeight (w);
        document->setFillColor (black);
        drawing.draw (x, y, w);
        document->saveToPath();
        return ReadPDF (folder.file ("cues.pdf")).page();
    }

    float baselineOf (const PDFPage::Word& word, PDFDocument::FontType font, float size) const
    {
        document->setFont (font, size);
        return word.bottom + document->getCurrentFontDescent();
    }

    void expectBaseline (const PDFPage& page, const std::string& word, float left, float baseline,
                         PDFDocument::FontType font, float size) const
    {
        EXPECT_NEAR (page.word (word).x, left, 0.5) << word;
        EXPECT_NEAR (baselineOf (page.word (word), font, size), baseline, 0.5) << word;
    }

    /** A line of text in the middle of its rectangle. */
    static void expectCentred (const PDFPage& page, const std::string& word, float left, float bottom,
                               float high)
    {
        const auto found = page.word (word);
        EXPECT_NEAR (found.x, left, 0.3) << word;
        EXPECT_NEAR ((found.bottom + found.top) / 2, bottom + high / 2, 0.3) << word;
    }

    std::shared_ptr<PDFDocument> document =
        std::make_shared<PDFDocument> (folder.file ("cues.pdf").getFullPathName(), PaperSize::a4());
    float height = 0; ///< of the cue that was drawn
};

const std::string twoLines =
    "I told you: at the harbour, with Tom, until the lights went out and nobody could see "
    "the boats any more.";

} // namespace ExportSupport
