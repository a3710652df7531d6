// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <pango/pangocairo.h>

#include <memory>
#include <string>
#include <vector>

namespace ZEP::Core
{

/** Gathers the glyphs of texts that are drawn one after the other in one font, to show them together: each call that draws something
    costs as much as many glyphs. */
class PageGlyphs final
{
public:
    /** Adds a line, unless there is nothing to see of it. Its layout may be destroyed afterwards.
        @param start  the left end of its baseline, y growing downwards
        @returns false where it can't be shown together with what is there already, or not at all in this way; nothing has been added then */
    [[nodiscard]] bool add (const PangoLayoutLine& line, juce::Point<float> start);

    /** Whether there is nothing to show. */
    [[nodiscard]] bool empty() const noexcept { return glyphs.empty(); }

    /** Shows what has been added, and forgets it. */
    void show (cairo_t& context) noexcept;

private:
    struct Release
    {
        void operator() (cairo_scaled_font_t* released) const { cairo_scaled_font_destroy (released); }
    };

    bool addRuns (const PangoLayoutLine& line, juce::Point<double> place);
    void addRun (PangoGlyphItem& run, const char* wholeText, juce::Point<double>& place);
    bool setFont (PangoFont* wanted);

    std::unique_ptr<cairo_scaled_font_t, Release> font;
    std::string text;
    std::vector<cairo_glyph_t> glyphs;
    std::vector<cairo_text_cluster_t> clusters; ///< which glyphs stand for which bytes of the text
};

} // namespace ZEP::Core
