// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/PageGlyphs.h"

#include <juce_core/juce_core.h>
#include <juce_graphics/juce_graphics.h>

#include <cairo.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>

namespace ZEP::Core
{

/** The pages of a PDF and what is drawn on them. Here y grows downwards from the top of the page.

    The bytes are gathered in memory until finish(). A failure, of memory for example, shows there; all that is drawn after it is
    passed over. One thread. */
class PageCanvas final
{
public:
    PageCanvas (float pageWidth, float pageHeight);

    PageCanvas (const PageCanvas&) = delete;
    PageCanvas& operator= (const PageCanvas&) = delete;
    ~PageCanvas();

    void setTitle (const std::string& title);
    void setCreator (const std::string& creator);
    void setCreationTime (juce::Time time);

    void addPage();

    /** Ends the document; a second call does nothing. @returns the reason of the first failure since the beginning, if there was one */
    juce::Result finish();

    /** The whole file, after finish(). */
    [[nodiscard]] const std::string& bytes() const noexcept { return output; }

    /** An empty rectangle lifts the limit. */
    void setClip (const juce::Rectangle<float>& rectangle);

    void drawLine (juce::Line<float> line, float width, bool hasRoundEnds, juce::Colour colour);
    void drawRect (const juce::Rectangle<float>& rectangle, float lineWidth, juce::Colour colour);
    void drawRoundedRect (const juce::Rectangle<float>& rectangle, float lineWidth, float radius,
                          juce::Colour colour);
    void fillRect (const juce::Rectangle<float>& rectangle, juce::Colour colour);

    void setImage (const juce::Image& image, const juce::String& identifier);
    void drawImage (const juce::String& identifier, const juce::Rectangle<float>& rectangle);

    /** Draws what looks the same wherever it is drawn. It is described in the file once, however often it comes.
        @param identifier  together with the size of the place: what it is
        @param place       where it stands; nothing of it reaches further beyond than half a thick line
        @param draw        draws it there, the first time */
    void drawRepeated (const juce::String& identifier, const juce::Rectangle<float>& place,
                       const std::function<void()>& draw);

    /** Whether something can be drawn still: nothing after finish() or a failure. */
    [[nodiscard]] bool canBeDrawnOn() const noexcept;

    /** Draws a line of text.
        @param start  the left end of its baseline */
    void drawText (PangoLayoutLine& line, juce::Point<float> start, juce::Colour colour);

    /** Whether a clip hides everything between two heights. */
    [[nodiscard]] bool isHidden (float top, float bottom) const;

private:
    struct Release
    {
        void operator() (cairo_t* released) const { cairo_destroy (released); }
        void operator() (cairo_surface_t* released) const { cairo_surface_destroy (released); }
    };

    using Surface = std::unique_ptr<cairo_surface_t, Release>;
    using Context = std::unique_ptr<cairo_t, Release>;
    class Elsewhere;

    static cairo_status_t append (void* canvas, const unsigned char* bytes, unsigned int length);
    static Surface surfaceOf (const juce::Image& image);
    Surface recorded (const juce::Rectangle<float>& place, const std::function<void()>& draw);

    /** How the lines look that are in the path and not drawn yet: neighbours of one look are one stroke. */
    struct Pen
    {
        bool operator== (const Pen&) const = default;

        float width = 0.0f;
        bool hasRoundEnds = false;
        juce::Colour colour;
    };

    /** To be called before anything is drawn but lines and texts, which see to each other themselves.
        @returns whether something can be drawn still */
    bool beginShape();
    void drawWhatIsGathered() noexcept;
    void strokeLines() noexcept;
    void showTexts() noexcept;
    void showAlone (PangoLayoutLine& line, juce::Point<float> start, juce::Colour colour);
    [[nodiscard]] bool isWithinLimits (juce::Point<float> point) const;
    void setColour (juce::Colour colour);
    void stroke (float width, juce::Colour colour);
    void setMetadata (int kind, const std::string& text);

    std::string output;
    Surface surface;
    Context context;
    std::map<juce::String, Surface> images;
    std::map<std::tuple<juce::String, float, float>, Surface>
        recordings; ///< of what comes again, with its size
    juce::Rectangle<float> clip;
    std::optional<Pen> pen;     ///< set while the path holds lines
    PageGlyphs texts;           ///< not shown yet; the path holds no lines then
    juce::Colour colourOfTexts; ///< of those, while there are any
    bool finished = false;
};

/** Whether no side of it is farther away than any paper reaches. */
[[nodiscard]] bool isOnPaper (const juce::Rectangle<float>& area);

} // namespace ZEP::Core
