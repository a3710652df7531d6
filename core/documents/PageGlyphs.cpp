// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/PageGlyphs.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace ZEP::Core
{

namespace
{

std::span<const PangoGlyphInfo> glyphsOf (const PangoGlyphItem& run)
{
    return { run.glyphs->glyphs, static_cast<std::size_t> (run.glyphs->num_glyphs) };
}

bool isShown (const PangoGlyphInfo& glyph) { return glyph.glyph != PANGO_GLYPH_EMPTY; }

/** Whether the glyphs of a run stand in the order of their letters, on the baseline, and in its font: not those that are read from the
    right, nor the boxes that stand for what no font has. */
bool isOrdinary (const PangoGlyphItem& run)
{
    if (run.item->analysis.level % 2 != 0 || run.start_x_offset != 0 || run.y_offset != 0
        || run.end_x_offset != 0)
        return false;

    const auto glyphs = glyphsOf (run);
    return std::none_of (glyphs.begin(), glyphs.end(),
                         [] (const PangoGlyphInfo& glyph)
                         { return (glyph.glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0; });
}

} // namespace

bool PageGlyphs::add (const PangoLayoutLine& line, juce::Point<float> start)
{
    const auto numGlyphs = glyphs.size(), numClusters = clusters.size(), length = text.size();
    bool isAdded = false, isSeen = false;

    // What is half added would spoil all that is drawn later.
    const juce::ScopeGuard undo { [&]
                                  {
                                      if (isAdded && isSeen)
                                          return;

                                      glyphs.resize (numGlyphs);
                                      clusters.resize (numClusters);
                                      text.resize (length);
                                  } };
    isAdded = addRuns (line, start.toDouble());
    isSeen = glyphs.size() > numGlyphs;
    return isAdded;
}

bool PageGlyphs::addRuns (const PangoLayoutLine& line, juce::Point<double> place)
{
    const auto* const wholeText = pango_layout_get_text (line.layout);

    for (const auto* node = line.runs; node != nullptr; node = node->next)
    {
        auto& run = *static_cast<PangoGlyphItem*> (node->data);

        if (! isOrdinary (run) || ! setFont (run.item->analysis.font))
            return false;

        addRun (run, wholeText, place);
    }

    return true;
}

/** @param place  where the run begins, and then where it ends */
void PageGlyphs::addRun (PangoGlyphItem& run, const char* wholeText, juce::Point<double>& place)
{
    const auto all = glyphsOf (run);
    PangoGlyphItemIter cluster;

    for (auto more = pango_glyph_item_iter_init_start (&cluster, &run, wholeText); more != 0;
         more = pango_glyph_item_iter_next_cluster (&cluster))
    {
        const auto first = static_cast<std::size_t> (cluster.start_glyph),
                   count = static_cast<std::size_t> (cluster.end_glyph - cluster.start_glyph);
        const auto its = all.subspan (first, count);
        const auto shown = std::count_if (its.begin(), its.end(), isShown);
        clusters.push_back ({ cluster.end_index - cluster.start_index, static_cast<int> (shown) });
    }

    for (const auto& glyph : all)
    {
        if (isShown (glyph))
            glyphs.push_back ({ glyph.glyph, place.x + pango_units_to_double (glyph.geometry.x_offset),
                                place.y + pango_units_to_double (glyph.geometry.y_offset) });

        place.x += pango_units_to_double (glyph.geometry.width);
    }

    text.append (wholeText + run.item->offset, static_cast<std::size_t> (run.item->length));
}

bool PageGlyphs::setFont (PangoFont* wanted)
{
    auto* const scaled =
        wanted != nullptr ? pango_cairo_font_get_scaled_font (PANGO_CAIRO_FONT (wanted)) : nullptr;

    if (scaled == nullptr || cairo_scaled_font_status (scaled) != CAIRO_STATUS_SUCCESS
        || (! glyphs.empty() && scaled != font.get()))
        return false;

    if (scaled != font.get())
        font.reset (cairo_scaled_font_reference (scaled));

    return true;
}

void PageGlyphs::show (cairo_t& context) noexcept
{
    if (! glyphs.empty())
    {
        cairo_set_scaled_font (&context, font.get());
        cairo_show_text_glyphs (&context, text.data(), static_cast<int> (text.size()), glyphs.data(),
                                static_cast<int> (glyphs.size()), clusters.data(),
                                static_cast<int> (clusters.size()),
                                static_cast<cairo_text_cluster_flags_t> (0));
    }

    glyphs.clear();
    clusters.clear();
    text.clear();
}

} // namespace ZEP::Core
