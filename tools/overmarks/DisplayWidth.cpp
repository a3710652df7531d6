// SPDX-License-Identifier: GPL-3.0-only
#include "DisplayWidth.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace overmarks
{

namespace
{

struct CharacterRange
{
    juce::juce_wchar first;
    juce::juce_wchar last;
};

// Marks that stand on the character before them, Korean vowels and finals that join their syllable, and characters without
// a shape.
constexpr CharacterRange withoutWidth[] = {
    { 0x0300, 0x036f }, { 0x0483, 0x0489 }, { 0x0591, 0x05bd },   { 0x05bf, 0x05bf },   { 0x05c1, 0x05c2 },
    { 0x05c4, 0x05c5 }, { 0x05c7, 0x05c7 }, { 0x0610, 0x061a },   { 0x064b, 0x065f },   { 0x0670, 0x0670 },
    { 0x06d6, 0x06dc }, { 0x06df, 0x06e4 }, { 0x06e7, 0x06e8 },   { 0x06ea, 0x06ed },   { 0x0900, 0x0902 },
    { 0x093a, 0x093a }, { 0x093c, 0x093c }, { 0x0941, 0x0948 },   { 0x094d, 0x094d },   { 0x0951, 0x0957 },
    { 0x0962, 0x0963 }, { 0x0981, 0x0981 }, { 0x09bc, 0x09bc },   { 0x09c1, 0x09c4 },   { 0x09cd, 0x09cd },
    { 0x09e2, 0x09e3 }, { 0x0b82, 0x0b82 }, { 0x0bc0, 0x0bc0 },   { 0x0bcd, 0x0bcd },   { 0x0e31, 0x0e31 },
    { 0x0e34, 0x0e3a }, { 0x0e47, 0x0e4e }, { 0x0eb1, 0x0eb1 },   { 0x0eb4, 0x0ebc },   { 0x0ec8, 0x0ecd },
    { 0x1160, 0x11ff }, { 0x17b4, 0x17b5 }, { 0x17b7, 0x17bd },   { 0x17c6, 0x17c6 },   { 0x17c9, 0x17d3 },
    { 0x17dd, 0x17dd }, { 0x1ab0, 0x1aff }, { 0x1dc0, 0x1dff },   { 0x200b, 0x200f },   { 0x2028, 0x202e },
    { 0x2060, 0x206f }, { 0x20d0, 0x20ff }, { 0x302a, 0x302d },   { 0x3099, 0x309a },   { 0xfe00, 0xfe0f },
    { 0xfe20, 0xfe2f }, { 0xfeff, 0xfeff }, { 0x1f3fb, 0x1f3ff }, { 0xe0100, 0xe01ef },
};

// East Asian wide and full-width characters, and the emoji.
constexpr CharacterRange wide[] = {
    { 0x1100, 0x115f },   { 0x231a, 0x231b },   { 0x23e9, 0x23ec },   { 0x25fd, 0x25fe },
    { 0x2614, 0x2615 },   { 0x26a1, 0x26a1 },   { 0x2705, 0x2705 },   { 0x274c, 0x274c },
    { 0x2753, 0x2755 },   { 0x2795, 0x2797 },   { 0x2b50, 0x2b50 },   { 0x2e80, 0x303e },
    { 0x3041, 0x33ff },   { 0x3400, 0x4dbf },   { 0x4e00, 0x9fff },   { 0xa000, 0xa4cf },
    { 0xa960, 0xa97f },   { 0xac00, 0xd7a3 },   { 0xf900, 0xfaff },   { 0xfe30, 0xfe6f },
    { 0xff00, 0xff60 },   { 0xffe0, 0xffe6 },   { 0x1f004, 0x1f004 }, { 0x1f0cf, 0x1f0cf },
    { 0x1f18e, 0x1f18e }, { 0x1f191, 0x1f19a }, { 0x1f200, 0x1f320 }, { 0x1f32d, 0x1f3fa },
    { 0x1f400, 0x1f64f }, { 0x1f680, 0x1f6ff }, { 0x1f7e0, 0x1f7eb }, { 0x1f900, 0x1f9ff },
    { 0x1fa70, 0x1faff }, { 0x20000, 0x3fffd },
};

template <std::size_t size>
bool isIn (const CharacterRange (&ranges)[size], juce::juce_wchar character)
{
    const auto behind =
        std::upper_bound (std::begin (ranges), std::end (ranges), character,
                          [] (juce::juce_wchar c, const CharacterRange& range) { return c < range.first; });
    return behind != std::begin (ranges) && character <= std::prev (behind)->last;
}

} // namespace

int displayWidth (juce::juce_wchar character)
{
    if (character < withoutWidth[0].first)
        return 1;

    return isIn (withoutWidth, character) ? 0 : isIn (wide, character) ? 2 : 1;
}

int displayWidth (const juce::String& text)
{
    const std::string_view bytes = text.toRawUTF8();

    if (std::all_of (bytes.begin(), bytes.end(),
                     [] (char byte) { return static_cast<unsigned char> (byte) < 0x80; }))
        return static_cast<int> (bytes.size());

    int width = 0;

    for (auto p = text.getCharPointer(); ! p.isEmpty();)
        width += displayWidth (p.getAndAdvance());

    return width;
}

juce::String fitted (const juce::String& text, int width)
{
    const int wholeWidth = displayWidth (text);

    if (wholeWidth <= width)
        return text + juce::String::repeatedString (" ", width - wholeWidth);

    // One column is kept for the ellipsis; a wide character that doesn't fit any more leaves a blank.
    juce::String cut;
    int used = 0;

    for (auto p = text.getCharPointer(); ! p.isEmpty();)
    {
        const auto character = p.getAndAdvance();
        const int next = displayWidth (character);

        if (used + next > width - 1)
            break;

        cut += character;
        used += next;
    }

    return cut + juce::String::charToString (0x2026) + juce::String::repeatedString (" ", width - 1 - used);
}

} // namespace overmarks
