// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/PageGlyphs.h"

#include <cstddef>
#include <span>

namespace ZEP::Core
{

namespace
{

double points (int units) { return static_cast<double> (units) / PANGO_SCALE; }

std::span<const PangoGlyphInfo> glyphsOf (const PangoGlyphItem& run)
{
    return { run.glyphs->glyphs, static_cast<std::size_t> (run.glyphs->num_glyphs) };
}

/** What is read from the right runs against its glyphs, and what no font has is drawn as a box. */
bool isOrdinary (const PangoGlyphItem& run)
{
    if (run.item->analysis.level % 2 != 0 || run.start_x_offset != 0 || run.y_offset != 0
        || run.end_x_offset != 0)
        return false;

    for (const auto& glyph : glyphsOf (run))
        if ((glyph.glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0)
            return false;

    return true;
}

} // namespace

bool PageGlyphs::add (const PangoLayoutLine& line, juce::Point<float> start)
{
    const auto* const wholeText = pango_layout_get_text (line.layout);
    const auto numGlyphs = glyphs.size(), numClusters = clusters.size(), length = text.size();
    auto left = static_cast<double> (start.getX());
    const auto baseline = static_cast<double> (start.getY());

    for (const auto* node = line.runs; node != nullptr; node = node->next)
    {
        auto& run = *static_cast<PangoGlyphItem*> (node->data);

        if (! addRun (run, wholeText, left, baseline))
        {
            glyphs.resize (numGlyphs);
            clusters.resize (numClusters);
            text.resize (length);
            return false;
        }

        left += points (pango_glyph_string_get_width (run.glyphs));
    }

    return true;
}

bool PageGlyphs::addRun (PangoGlyphItem& run, const char* wholeText, double left, double baseline)
{
    if (! isOrdinary (run) || ! setFont (run.item->analysis.font))
        return false;

    const auto isShown = [] (const PangoGlyphInfo& glyph) { return glyph.glyph != PANGO_GLYPH_EMPTY; };
    const auto all = glyphsOf (run);
    PangoGlyphItemIter cluster;

    for (auto more = pango_glyph_item_iter_init_start (&cluster, &run, wholeText); more != 0;
         more = pango_glyph_item_iter_next_cluster (&cluster))
    {
        int count = 0;

        for (auto i = cluster.start_glyph; i < cluster.end_glyph; ++i)
            count += isShown (all[static_cast<std::size_t> (i)]) ? 1 : 0;

        clusters.push_back ({ cluster.end_index - cluster.start_index, count });
    }

    for (const auto& glyph : all)
    {
        if (isShown (glyph))
            glyphs.push_back ({ glyph.glyph, left + points (glyph.geometry.x_offset),
                                baseline + points (glyph.geometry.y_offset) });

        left += points (glyph.geometry.width);
    }

    text.append (wholeText + run.item->offset, static_cast<std::size_t> (run.item->length));
    return true;
}

bool PageGlyphs::setFont (PangoFont* wanted)
{
    auto* const scaled =
        wanted != nullptr ? pango_cairo_font_get_scaled_font (PANGO_CAIRO_FONT (wanted)) : nullptr;

    if (scaled == nullptr || (! glyphs.empty() && scaled != font.get()))
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
