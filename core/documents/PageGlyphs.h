// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <pango/pangocairo.h>

#include <memory>
#include <string>
#include <vector>

namespace ZEP::Core
{

/** Gathers the glyphs of neighbouring texts in one font, which are shown together: each step of a page costs much more than a glyph. */
class PageGlyphs final
{
public:
    /** Adds a line. The text that it belongs to need not live on.
        @param start  the left end of its baseline, on the page from the top
        @returns false where it can't be shown together with what is there already, or not at all in this way; nothing has been added then */
    [[nodiscard]] bool add (const PangoLayoutLine& line, juce::Point<float> start);

    [[nodiscard]] bool empty() const noexcept { return glyphs.empty(); }

    /** Shows what has been added, and forgets it. */
    void show (cairo_t& context) noexcept;

private:
    struct Release
    {
        void operator() (cairo_scaled_font_t* released) const { cairo_scaled_font_destroy (released); }
    };

    bool addRun (PangoGlyphItem& run, const char* wholeText, double left, double baseline);
    bool setFont (PangoFont* wanted);

    std::unique_ptr<cairo_scaled_font_t, Release> font;
    std::string text;
    std::vector<cairo_glyph_t> glyphs;
    std::vector<cairo_text_cluster_t> clusters; ///< which glyphs stand for which bytes of the text
};

} // namespace ZEP::Core
