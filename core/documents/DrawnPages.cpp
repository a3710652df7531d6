// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/DrawnPages.h"

#include <limits>

namespace ZEP::Core
{

namespace
{

/** Where a line begins in the rectangle, from the left. @param isRightToLeft  of a paragraph that is read so */
float leftOf (float width, const juce::Rectangle<float>& rectangle, juce::Justification justification,
              bool isRightToLeft)
{
    const bool isCentred = justification.testFlags (juce::Justification::horizontallyCentred);

    if (justification.testFlags (juce::Justification::right) || (isRightToLeft && ! isCentred))
        return rectangle.getRight() - width;
    if (isCentred)
        return rectangle.getX() + (rectangle.getWidth() - width) / 2.0f;

    return rectangle.getX();
}

/** The upper end of lines of this height, y growing upwards. */
float topOf (float height, const juce::Rectangle<float>& rectangle, juce::Justification justification)
{
    const auto bottom = rectangle.getY(), top = bottom + rectangle.getHeight();

    if (justification.testFlags (juce::Justification::bottom))
        return bottom + height;
    if (justification.testFlags (juce::Justification::verticallyCentred))
        return bottom + (rectangle.getHeight() + height) / 2.0f;

    return top;
}

} // namespace

DrawnPages::DrawnPages (PaperSize paper) : size (paper), canvas (size.width, size.height) {}

// ---- the document ----------------------------------------------------------------------------------------------------------

juce::Result DrawnPages::finish() { return canvas.finish(); }

const std::string& DrawnPages::bytes() const { return canvas.bytes(); }

void DrawnPages::setTitle (const juce::String& title) { canvas.setTitle (showableText (title, true)); }
void DrawnPages::setCreator (const juce::String& creator)
{
    canvas.setCreator (showableText (creator, true));
}

void DrawnPages::setCreationTime (juce::Time time) { canvas.setCreationTime (time); }

void DrawnPages::addPage() { canvas.addPage(); }

// ---- state -----------------------------------------------------------------------------------------------------------------

void DrawnPages::setFont (bool isBold, float fontSize) { texts.setFont (isBold, fontSize); }

float DrawnPages::descent() const { return texts.descent(); }

void DrawnPages::setFillColour (juce::Colour colour) { fillColour = colour; }

void DrawnPages::setStrokeColour (juce::Colour colour) { strokeColour = colour; }

void DrawnPages::setClip (const juce::Rectangle<float>& rectangle)
{
    canvas.setClip (rectangle.withY (size.height - rectangle.getY() - rectangle.getHeight()));
}

// ---- shapes ----------------------------------------------------------------------------------------------------------------

void DrawnPages::drawLine (float x1, float y1, float x2, float y2, float width, bool hasRoundEnds)
{
    canvas.drawLine ({ x1, size.height - y1, x2, size.height - y2 }, width, hasRoundEnds, strokeColour);
}

void DrawnPages::drawRect (float x, float y, float w, float h, float lineWidth)
{
    canvas.drawRect ({ x, size.height - y - h, w, h }, lineWidth, strokeColour);
}

void DrawnPages::fillRect (float x, float y, float w, float h)
{
    canvas.fillRect ({ x, size.height - y - h, w, h }, fillColour);
}

void DrawnPages::drawRoundedRect (float x, float y, float w, float h, float lineWidth, float radius)
{
    canvas.drawRoundedRect ({ x, size.height - y - h, w, h }, lineWidth, radius, strokeColour);
}

void DrawnPages::drawRepeated (const juce::String& identifier, const juce::Rectangle<float>& place,
                               const std::function<void()>& draw)
{
    const auto& [bold, fontSize] = texts.font();
    const auto looks =
        fillColour.toString() + strokeColour.toString() + (bold ? "b" : "r") + juce::String (fontSize) + " ";
    canvas.drawRepeated (looks + identifier, place.withY (size.height - place.getY() - place.getHeight()),
                         draw);
}

// ---- text ------------------------------------------------------------------------------------------------------------------

void DrawnPages::drawText (const juce::String& text, float x, float y)
{
    if (! canvas.canBeDrawnOn())
        return; // shaping is most of the work

    const auto shape = texts.oneLine (text, std::numeric_limits<float>::infinity());

    for (const auto& line : shape->lines)
        canvas.drawText (*line.shape, { x, size.height - y }, fillColour);
}

void DrawnPages::drawLines (const juce::String& text, const juce::Rectangle<float>& rectangle,
                            juce::Justification justification, bool isOneLine)
{
    if (! canvas.canBeDrawnOn() || ! isOnPaper (rectangle))
        return;

    const auto shape =
        isOneLine ? texts.oneLine (text, rectangle.getWidth()) : texts.paragraph (text, rectangle.getWidth());
    auto top = size.height - topOf (shape->height, rectangle, justification);

    for (const auto& line : shape->lines)
    {
        const auto bottom = top + line.ascent + line.descent;

        if (! canvas.isHidden (top, bottom))
            canvas.drawText (
                *line.shape,
                { leftOf (line.width, rectangle, justification, ! isOneLine && line.isRightToLeft),
                  top + line.ascent },
                fillColour);

        top = bottom;
    }
}

std::vector<juce::String> DrawnPages::layoutTextForWidth (const juce::String& text, float width,
                                                          float& height)
{
    const auto shape = texts.paragraph (text, width);
    std::vector<juce::String> lines;
    height = shape->height;

    for (std::size_t i = 0; i < shape->lines.size(); ++i)
        lines.push_back (shape->lineText (i));

    return lines;
}

std::vector<float> DrawnPages::lineHeightsForWidth (const juce::String& text, float width)
{
    std::vector<float> heights;

    for (const auto& line : texts.paragraph (text, width)->lines)
        heights.push_back (line.ascent + line.descent);

    return heights;
}

float DrawnPages::widthOfLine (const juce::String& text)
{
    return texts.oneLine (text, std::numeric_limits<float>::infinity())->width;
}

// ---- images ----------------------------------------------------------------------------------------------------------------

void DrawnPages::setImage (const juce::Image& image, const juce::String& identifier)
{
    canvas.setImage (image, identifier);
}

void DrawnPages::drawImage (const juce::String& identifier, float x, float y, float w, float h)
{
    canvas.drawImage (identifier, { x, size.height - y - h, w, h });
}

} // namespace ZEP::Core
