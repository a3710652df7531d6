// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/PDFDocument.h"

#include "core/documents/DocumentPages.h"
#include "core/documents/DocumentsLibrary.h"
#include "core/system/Logger.h"
#include "core/system/SystemUtility.h"
#include "core/system/WholeFile.h"

#include <string_view>

namespace ZEP::Core
{

PDFDocument::PDFDocument (const juce::String& path) : PDFDocument (path, PaperSize::ofLocale()) {}

PDFDocument::PDFDocument (const juce::String& path, PaperSize paper)
    : file (path),
      size (paper),
      result (juce::Result::fail ("Not saved")),
      pages (DocumentsLibrary::loaded().pages (size))
{
    setTitle (file.getFileNameWithoutExtension());
    setCreator ("Overmarks " + SystemUtility::executableVersion());
    setCreationTime (juce::Time::getCurrentTime());
}

PDFDocument::~PDFDocument() = default;

// ---- the file --------------------------------------------------------------------------------------------------------------

void PDFDocument::saveToPath()
{
    const auto drawn = pages->finish();
    result =
        drawn.wasOk()
            ? WholeFile::write (file, std::string_view (pages->bytes()))
            : juce::Result::fail ("Can't write " + file.getFullPathName() + ": " + drawn.getErrorMessage());

    if (result.failed())
        Logger::debug (result.getErrorMessage());
}

void PDFDocument::setTitle (const juce::String& title) { pages->setTitle (title); }

void PDFDocument::setCreator (const juce::String& creator) { pages->setCreator (creator); }

void PDFDocument::setCreationTime (juce::Time time) { pages->setCreationTime (time); }

void PDFDocument::addPage() { pages->addPage(); }

// ---- state -----------------------------------------------------------------------------------------------------------------

void PDFDocument::setFont (FontType type, float fontSize) { pages->setFont (type == FontTypeBold, fontSize); }

float PDFDocument::getCurrentFontDescent() const { return pages->descent(); }

void PDFDocument::setFillColor (const juce::Colour& colour) { pages->setFillColour (colour); }

void PDFDocument::setStrokeColor (const juce::Colour& colour) { pages->setStrokeColour (colour); }

void PDFDocument::setClip (const juce::Rectangle<float>& rectangle) { pages->setClip (rectangle); }

// ---- shapes ----------------------------------------------------------------------------------------------------------------

void PDFDocument::drawLine (float x1, float y1, float x2, float y2, float width, LineCap cap)
{
    pages->drawLine (x1, y1, x2, y2, width, cap == LineCapRound);
}

void PDFDocument::drawRect (float x, float y, float w, float h, float lineWidth)
{
    pages->drawRect (x, y, w, h, lineWidth);
}

void PDFDocument::fillRect (float x, float y, float w, float h) { pages->fillRect (x, y, w, h); }

void PDFDocument::drawRoundedRect (float x, float y, float w, float h, float lineWidth, float radius)
{
    pages->drawRoundedRect (x, y, w, h, lineWidth, radius);
}

void PDFDocument::drawRepeated (const juce::String& identifier, const juce::Rectangle<float>& place,
                                const std::function<void()>& draw)
{
    pages->drawRepeated (identifier, place, draw);
}

// ---- text ------------------------------------------------------------------------------------------------------------------

void PDFDocument::drawText (const juce::String& text, float x, float y) { pages->drawText (text, x, y); }

void PDFDocument::drawText (const juce::String& text, const juce::Rectangle<float>& rectangle,
                            juce::Justification justification)
{
    pages->drawLines (text, rectangle, justification, true);
}

void PDFDocument::drawMultilineText (const juce::String& text, const juce::Rectangle<float>& rectangle,
                                     juce::Justification justification)
{
    pages->drawLines (text, rectangle, justification, false);
}

std::vector<juce::String> PDFDocument::layoutTextForWidth (const juce::String& text, float width,
                                                           float& height)
{
    return pages->layoutTextForWidth (text, width, height);
}

std::vector<float> PDFDocument::lineHeightsForWidth (const juce::String& text, float width)
{
    return pages->lineHeightsForWidth (text, width);
}

float PDFDocument::widthOfLine (const juce::String& text) { return pages->widthOfLine (text); }

// ---- images ----------------------------------------------------------------------------------------------------------------

void PDFDocument::setImage (const juce::Image& image, const juce::String& identifier, bool)
{
    pages->setImage (image, identifier);
}

void PDFDocument::drawImage (const juce::String& identifier, float x, float y, float w, float h)
{
    pages->drawImage (identifier, x, y, w, h);
}

} // namespace ZEP::Core
