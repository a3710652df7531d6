// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/PageText.h"

#include "core/system/Logger.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace ZEP::Core
{

namespace
{

// The families of the sheets that are printed from a web page, so that both kinds look alike.
constexpr auto family = "Arial, sans-serif";

constexpr float smallestFont = 1.0f, largestFont = 1000.0f;

// A page holds some 6 000 characters. Whoever sends more than thirty pages in one cue is no actor's friend, and shaping takes
// about two hundred bytes of memory a character.
constexpr std::size_t longestParagraph = 200'000, longestLine = 4'000;

// What that much text takes in the letters of an actor's sheet. A text of nothing but line breaks would go on for a thousand pages.
constexpr float tallestParagraph = 60'000.0f;

// Room for the texts of a few hundred pages, or for the longest cue and its notes, which are wanted for each page that they cover.
constexpr std::size_t mostRememberedBytes = 512 * 1024, mostRememberedTexts = 16 * 1024;

// A shape has a cost of its own, however short the text.
constexpr std::size_t bytesOf (const std::string& text) { return text.size() + 32; }

float points (int units) { return static_cast<float> (units) / PANGO_SCALE; }

int unitsOf (float width)
{
    constexpr auto widest = 1.0e6f; // the library counts in 32 bits
    return width > 0.0f && width < widest
               ? std::max (1, static_cast<int> (width * static_cast<float> (PANGO_SCALE)))
               : -1;
}

bool isPrintableASCII (std::string_view text)
{
    return std::all_of (text.begin(), text.end(), [] (char c) { return c >= ' ' && c <= '~'; });
}

bool isLineBreak (gunichar c)
{
    return c == '\n' || c == '\r' || c == 0x0b || c == 0x0c || c == 0x85 || c == 0x2028 || c == 0x2029;
}

/** Code points that are no characters and never will be; the page's writer takes none of them. */
bool isNoCharacter (gunichar c) { return (c >= 0xfdd0 && c <= 0xfdef) || (c & 0xfffeU) == 0xfffeU; }

void append (std::string& text, gunichar character)
{
    char buffer[6];
    text.append (buffer, static_cast<std::size_t> (g_unichar_to_utf8 (character, buffer)));
}

/** The character behind one of valid text: as g_utf8_next_char, whose C-style cast would take the const away. */
const char* behind (const char* character)
{
    return character + g_utf8_skip[static_cast<unsigned char> (*character)];
}

/** Valid text with one kind of line break and without control characters. */
std::string withoutControls (const std::string& valid, char lineBreak)
{
    std::string shown;
    shown.reserve (valid.size());
    gunichar before = 0;

    for (const char* place = valid.c_str(); *place != 0; place = behind (place))
    {
        const auto c = g_utf8_get_char (place);

        if (isLineBreak (c))
        {
            if (! (c == '\n' && before == '\r'))
                shown += lineBreak;
        }
        else if (c == '\t' || ! (g_unichar_iscntrl (c) || isNoCharacter (c)))
            append (shown, c);

        before = c;
    }

    return shown;
}

void cutAt (std::string& text, std::size_t longest)
{
    if (text.size() <= longest)
        return;

    const auto* const end = g_utf8_find_prev_char (text.c_str(), text.c_str() + longest + 1);
    text.resize (static_cast<std::size_t> (end - text.c_str()));
    text += "\xe2\x80\xa6";
}

/** The text as it can be shown, however long. */
std::string cleaned (const juce::String& text, bool isOneLine)
{
    std::string shown (text.toRawUTF8());

    if (isPrintableASCII (shown))
        return shown;

    if (g_utf8_validate (shown.data(), static_cast<gssize> (shown.size()), nullptr) == 0)
    {
        const std::unique_ptr<char, decltype (&g_free)> valid (
            g_utf8_make_valid (shown.data(), static_cast<gssize> (shown.size())), &g_free);
        shown = valid.get();
    }

    return withoutControls (shown, isOneLine ? ' ' : '\n');
}

/** Leaves that many lines of a text. Shaping more takes a time that grows with their square. @returns whether there were more */
bool keepLines (std::string& text, std::size_t most)
{
    std::size_t end = 0;

    for (std::size_t i = 0; i < most; ++i)
    {
        end = text.find ('\n', end);

        if (end == std::string::npos)
            return false;

        ++end;
    }

    text.resize (end);
    return true;
}

PangoFontDescription* descriptionOf (bool isBold, float size)
{
    auto* const description = pango_font_description_from_string (family);
    pango_font_description_set_weight (description, isBold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_absolute_size (description, static_cast<double> (size) * PANGO_SCALE);
    return description;
}

/** On paper letters stand where they belong, not on a grid of dots. */
void setUpForPaper (PangoContext& context)
{
    auto* const options = cairo_font_options_create();
    cairo_font_options_set_hint_style (options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics (options, CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options (&context, options);
    cairo_font_options_destroy (options);
    pango_context_set_round_glyph_positions (&context, FALSE);
}

} // namespace

std::string showableText (const juce::String& text, bool isOneLine)
{
    auto shown = cleaned (text, isOneLine);
    cutAt (shown, isOneLine ? longestLine : longestParagraph);
    return shown;
}

juce::String ShapedText::lineText (std::size_t index) const
{
    const auto* const line = lines[index].shape;
    const auto* const text = pango_layout_get_text (layout.get()) + line->start_index;
    return juce::String::fromUTF8 (text, line->length).trimEnd();
}

// ---- fonts -----------------------------------------------------------------------------------------------------------------

PageText::PageText()
    : fontMap (pango_cairo_font_map_new_for_font_type (CAIRO_FONT_TYPE_FT)),
      context (pango_font_map_create_context (fontMap.get()))
{
    setUpForPaper (*context);
    setFont (current.first, current.second);
}

PageText::~PageText() = default;

void PageText::setFont (bool isBold, float size)
{
    current = { isBold, std::isfinite (size) ? std::clamp (size, smallestFont, largestFont) : smallestFont };

    if (const auto found = fonts.lower_bound (current); found == fonts.end() || found->first != current)
        fonts.emplace_hint (found, current, fontFor (current));
}

PageText::Font PageText::fontFor (const FontKey& key) const
{
    const auto [isBold, size] = key;
    Font font { { descriptionOf (isBold, size), &pango_font_description_free }, 0.9f * size, 0.2f * size };
    const std::unique_ptr<PangoFont, GObjectRelease> loaded (
        pango_font_map_load_font (fontMap.get(), context.get(), font.description.get()));

    if (loaded == nullptr) // not a single font on this machine
        return font;

    const std::unique_ptr<PangoFontMetrics, decltype (&pango_font_metrics_unref)> metrics (
        pango_font_get_metrics (loaded.get(), pango_language_from_string ("en")), &pango_font_metrics_unref);
    font.ascent = points (pango_font_metrics_get_ascent (metrics.get()));
    font.descent = points (pango_font_metrics_get_descent (metrics.get()));
    return font;
}

// ---- shapes ----------------------------------------------------------------------------------------------------------------

PageText::Shape PageText::oneLine (const juce::String& text, float widest)
{
    auto shown = showableText (text, true);
    auto whole = remembered ({ current, true, -1, shown });

    if (whole->width <= widest || unitsOf (widest) < 0)
        return whole;

    return remembered ({ current, true, unitsOf (widest), std::move (shown) });
}

PageText::Shape PageText::paragraph (const juce::String& text, float width)
{
    auto shown = cleaned (text, false);
    const auto bytes = shown.size();
    cutAt (shown, longestParagraph);
    Key key { current, false, unitsOf (width), std::move (shown) };

    if (bytes > longestParagraph && recent.find (key) == recent.end())
        Logger::error ("A text of " + juce::String (bytes) + " bytes is too long for a page; "
                       + juce::String (longestParagraph) + " are shown");

    return remembered (std::move (key));
}

PageText::Shape PageText::remembered (Key key)
{
    if (const auto found = recent.find (key); found != recent.end())
        return found->second;

    const auto bytes = bytesOf (key.text);
    auto shape = shapedToFit (key);
    makeRoom (bytes);
    inOrder.push_back (&recent.emplace (std::move (key), shape).first->first);
    rememberedBytes += bytes;
    return shape;
}

void PageText::makeRoom (std::size_t bytes)
{
    while (! inOrder.empty()
           && (rememberedBytes + bytes > mostRememberedBytes || recent.size() >= mostRememberedTexts))
    {
        rememberedBytes -= bytesOf (inOrder.front()->text);
        recent.erase (recent.find (*inOrder.front()));
        inOrder.pop_front();
    }
}

/** A text that is too tall for any paper ends in "…" on the last line that isn't. */
PageText::Shape PageText::shapedToFit (Key key) const
{
    const auto& font = fonts.at (key.font);
    auto& text = key.text;
    auto count = static_cast<std::size_t> (std::count (text.begin(), text.end(), '\n')) + 1;
    const auto isShorter =
        keepLines (text, static_cast<std::size_t> (tallestParagraph / (font.ascent + font.descent)));
    auto whole = shaped (key);

    if (! isShorter && whole->height <= tallestParagraph)
        return whole;

    auto height = 0.0f;
    const auto behind = std::find_if (whole->lines.begin(), whole->lines.end(),
                                      [&height] (const ShapedText::Line& line)
                                      { return (height += line.ascent + line.descent) > tallestParagraph; });
    count = std::max (count, whole->lines.size());
    Logger::error ("A text of " + juce::String (count) + " lines is too tall for paper; "
                   + juce::String (behind - whole->lines.begin()) + " are shown");

    if (behind != whole->lines.end())
        text.resize (static_cast<std::size_t> (behind->shape->start_index));

    text.resize (text.find_last_not_of (" \n") + 1);
    text += "\xe2\x80\xa6";
    return shaped (key);
}

PageText::Shape PageText::shaped (const Key& key) const
{
    const auto& [font, isOneLine, width, text] = key;
    auto made = std::make_shared<ShapedText>();
    made->layout.reset (pango_layout_new (context.get()));
    auto* const layout = made->layout.get();
    pango_layout_set_font_description (layout, fonts.at (font).description.get());
    pango_layout_set_wrap (layout, PANGO_WRAP_WORD_CHAR);
    pango_layout_set_width (layout, width);

    if (isOneLine && width >= 0)
    {
        pango_layout_set_ellipsize (layout, PANGO_ELLIPSIZE_END);
        pango_layout_set_height (layout, -1); // one line for the paragraph
    }

    pango_layout_set_text (layout, text.data(), static_cast<int> (text.size()));

    if (! text.empty())
        setLines (*made, isOneLine);

    return made;
}

void PageText::setLines (ShapedText& text, bool isOneLine) const
{
    const auto& font = fonts.at (current);
    const auto count = static_cast<std::size_t> (pango_layout_get_line_count (text.layout.get()));
    text.lines.reserve (count);

    // Asked for one after the other: each request by number walks from the first line.
    for (auto* node = pango_layout_get_lines_readonly (text.layout.get()); node != nullptr; node = node->next)
    {
        auto* const shape = static_cast<PangoLayoutLine*> (node->data);
        PangoRectangle ink {}, logical {};
        pango_layout_line_get_extents (shape, &ink, &logical);
        ShapedText::Line line { shape, points (logical.width), font.ascent, font.descent,
                                shape->resolved_dir == PANGO_DIRECTION_RTL };

        // Other scripts reach further, but seldom as far as their fonts claim: lines make room for the letters alone.
        if (! isOneLine && points (logical.height) > font.ascent + font.descent + 0.01f)
        {
            line.ascent = std::max (line.ascent, points (-ink.y));
            line.descent = std::max (line.descent, points (ink.y + ink.height));
        }

        text.width = std::max (text.width, line.width);
        text.height += line.ascent + line.descent;
        text.lines.push_back (line);
    }
}

} // namespace ZEP::Core
