// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"
#include "core/documents/PaperSize.h"

#include <juce_core/juce_core.h>
#include <juce_graphics/juce_graphics.h>

#include <functional>
#include <memory>
#include <vector>

namespace ZEP::Core
{

class DocumentPages;

/** A document that is drawn page by page and saved as PDF, its text to be selected and searched.

    All measures are points. The origin is the bottom left corner of the page and y grows upwards: a rectangle (x, y, w, h) has
    its bottom left corner at (x, y). Colours and the font stay in force until they are set anew, over pages too.

    Text is set in the sans-serif of the machine (Arial or what stands in for it); letters that it lacks come from other fonts. Control
    characters are left out. What is drawn outside the page, isn't finite or has no size isn't drawn; but a text in a rectangle
    without a width is, all of it.

    The rule that is easily missed: saving ends the document. What is drawn later is lost.

    What draws is loaded with the first document (libZEP_Documents). Where that fails, saveResult() says so in the end; until then nothing
    is drawn and every text takes the room of an empty one.

    One thread at a time; different documents may be drawn on different threads. */
class ZEP_CORE_API PDFDocument final
{
public:
    /** The weight of letters. */
    enum FontType : int
    {
        FontTypeRegular = 0, ///< as thick as running text
        FontTypeBold = 1     ///< as thick as a heading
    };
    /** How the ends of a line look. */
    enum LineCap : int
    {
        LineCapPlain = 0, ///< ends at its points
        LineCapRound = 1  ///< goes on by half its width, in a half circle
    };

    /** A document with one empty page of the locale's size.
        @param path  full path of the file to be saved */
    explicit PDFDocument (const juce::String& path);
    PDFDocument (const juce::String& path, PaperSize paper); ///< The same on this paper.

    PDFDocument (const PDFDocument&) = delete;
    PDFDocument& operator= (const PDFDocument&) = delete;
    ~PDFDocument();

    // ---- the file ----------------------------------------------------------------------------------------------------

    /** Writes the file: beside its place first and then moved there, so that a failure leaves the old one. saveResult() tells of a
        failure. A second call writes the same document again. */
    void saveToPath();

    /** How the last saveToPath() went; on failure "Can't write PATH: " and the reason. A failure too while nothing has been saved. */
    [[nodiscard]] const juce::Result& saveResult() const noexcept { return result; }

    /** What a viewer shows as the document's title. Without it, the file's name. */
    void setTitle (const juce::String& title);

    /** The program that made the document. Without it, SystemUtility's version of Overmarks. */
    void setCreator (const juce::String& creator);

    /** When it was made. Without it, now. */
    void setCreationTime (juce::Time time);

    // ---- pages -------------------------------------------------------------------------------------------------------

    /** Ends the current page and starts an empty one, which becomes the target of drawing. */
    void addPage();

    [[nodiscard]] float getWidth() const noexcept { return size.width; }   ///< of the page, in points
    [[nodiscard]] float getHeight() const noexcept { return size.height; } ///< of the page, in points

    // ---- state -------------------------------------------------------------------------------------------------------

    /** @param fontSize  points; sizes that no letter has become the nearest one that it can have, from 1 to 1000 */
    void setFont (FontType type, float fontSize);

    /** How far letters of the current font reach below the baseline: points, positive. */
    [[nodiscard]] float getCurrentFontDescent() const;

    /** The colour of text and of filled shapes. */
    void setFillColor (const juce::Colour& colour);

    /** The colour of lines. */
    void setStrokeColor (const juce::Colour& colour);

    /** Draws nothing outside this rectangle until the next call, or the next page. An empty one lifts the limit. */
    void setClip (const juce::Rectangle<float>& rectangle);

    // ---- shapes ------------------------------------------------------------------------------------------------------

    /** @param width  of the stroke; 0 is the thinnest line that prints */
    void drawLine (float x1, float y1, float x2, float y2, float width, LineCap cap);
    void drawRect (float x, float y, float w, float h, float lineWidth); ///< Only the outline, on the edge.
    void fillRect (float x, float y, float w, float h); ///< The area alone, in the fill colour.

    /** @param radius  of the corners, at most half of the shorter side */
    void drawRoundedRect (float x, float y, float w, float h, float lineWidth, float radius);

    /** Draws what looks the same wherever it is drawn, such as the boxes of the takes. It is described in the file once, however often it
        comes, which makes for a smaller file that is there sooner.
        @param identifier  what it is, together with the size of the place, the colours and the font
        @param place       where it stands; lines on its edge may reach two points beyond it, and nothing that reaches farther is seen
        @param draw        draws it there, with the colours and the font as they stand, and sets none: it is called the first time alone */
    void drawRepeated (const juce::String& identifier, const juce::Rectangle<float>& place,
                       const std::function<void()>& draw);

    // ---- text --------------------------------------------------------------------------------------------------------

    /** One line; its baseline starts at the point. Line breaks become blanks here and in the next operation. */
    void drawText (const juce::String& text, float x, float y);

    /** One line inside the rectangle. Its height counts from the top of a letter to its lower end, as the font tells, so text stands level
        however its letters reach. A text that is too wide ends in "…" at the right edge. */
    void drawText (const juce::String& text, const juce::Rectangle<float>& rectangle,
                   juce::Justification justification);

    /** The text broken for the rectangle's width, as layoutTextForWidth() breaks it. The lines keep their distance whatever
        the rectangle's height, and the block is placed in it as justified. Left is where reading begins: a paragraph in Arabic or Hebrew
        stands at the right edge then. */
    void drawMultilineText (const juce::String& text, const juce::Rectangle<float>& rectangle,
                            juce::Justification justification);

    /** Breaks a text between words, and inside of one where it alone is too wide. Line breaks of the text count as such.
        @param width   points; without a positive one only the text's own breaks count
        @param height  set to the height of all lines together; 0 for an empty text
        @returns the lines from the top, without the blanks at their ends */
    std::vector<juce::String> layoutTextForWidth (const juce::String& text, float width, float& height);

    /** The heights of the same lines, from the top. */
    [[nodiscard]] std::vector<float> lineHeightsForWidth (const juce::String& text, float width);

    /** How wide a text is in one line of the current font: points. */
    [[nodiscard]] float widthOfLine (const juce::String& text);

    // ---- images ------------------------------------------------------------------------------------------------------

    /** Registers an image; one that has the identifier already gives way. The flag is for documents that keep images in another
        form, and makes no difference here. */
    void setImage (const juce::Image& image, const juce::String& identifier, bool flag);

    /** Draws a registered image stretched to the rectangle. An unknown identifier and an image without pixels draw nothing. */
    void drawImage (const juce::String& identifier, float x, float y, float w, float h);

private:
    const juce::File file;
    const PaperSize size;
    juce::Result result;
    const std::unique_ptr<DocumentPages> pages;
};

} // namespace ZEP::Core
