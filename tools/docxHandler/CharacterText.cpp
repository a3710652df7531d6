// SPDX-License-Identifier: GPL-3.0-only
#include "CharacterText.h"

#include "core/system/TerminalOrders.h"

#include <algorithm>
#include <array>

namespace DocxHandler
{

namespace
{

constexpr char32_t replacement = 0xfffd;

unsigned char byteAt (std::string_view text, std::size_t place) noexcept
{
    return place < text.size() ? static_cast<unsigned char> (text[place]) : 0;
}

/* How many bytes a sequence has by its first byte; 0 for a byte that begins none. */
std::size_t sequenceLength (unsigned char first) noexcept
{
    if (first < 0x80)
        return 1;

    if (first >= 0xc2 && first < 0xe0)
        return 2;

    if (first >= 0xe0 && first < 0xf0)
        return 3;

    return first >= 0xf0 && first < 0xf5 ? 4 : 0;
}

bool isTooLongOrNoCharacter (char32_t value, std::size_t length) noexcept
{
    return (length == 3 && (value < 0x800 || (value >= 0xd800 && value < 0xe000)))
           || (length == 4 && (value < 0x10000 || value > 0x10ffff));
}

bool isRightToLeft (char32_t c) noexcept
{
    return (c >= 0x590 && c < 0x900) || (c >= 0xfb1d && c < 0xfe00) || (c >= 0xfe70 && c < 0xff00)
           || (c >= 0x10800 && c < 0x11000) || (c >= 0x1e800 && c < 0x1f000);
}

bool isLeftToRight (char32_t c) noexcept
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= 0xc0 && c < 0x590)
           || (c >= 0x900 && c < 0x2000) || (c >= 0x2e80 && c < 0xfb00);
}

struct Range
{
    char32_t first;
    char32_t last;
};

/* What stands between words, beyond ASCII. */
constexpr std::array signs {
    Range { 0x80, 0xa9 },     Range { 0xab, 0xb4 },     Range { 0xb6, 0xb9 },     Range { 0xbb, 0xbf },
    Range { 0xd7, 0xd7 },     Range { 0xf7, 0xf7 },     Range { 0x61c, 0x61c }, // the direction of writing
    Range { 0x2000, 0x206f }, // blanks, dashes, quotes, bullets, directions
    Range { 0x2190, 0x2bff }, // arrows, minus signs, lines, shapes
    Range { 0x2e3a, 0x2e3b }, Range { 0x3000, 0x3000 }, Range { 0x301c, 0x301c }, Range { 0x3030, 0x3030 },
    Range { 0xfe0e, 0xfe0f }, // how the arrow before it looks
    Range { 0xfe58, 0xfe58 }, Range { 0xfe63, 0xfe63 }, Range { 0xfeff, 0xfeff }, Range { 0xff0d, 0xff0d },
    Range { 0xff5e, 0xff5e }
};

bool isSign (char32_t c) noexcept
{
    return std::any_of (signs.begin(), signs.end(),
                        [c] (const Range& range) { return c >= range.first && c <= range.last; });
}

} // namespace

char32_t nextCharacter (std::string_view text, std::size_t& place) noexcept
{
    const auto first = byteAt (text, place);
    const auto length = sequenceLength (first);

    if (length == 1)
        return ++place, first;

    if (length == 0 || place + length > text.size())
        return ++place, replacement;

    auto value = static_cast<char32_t> (first & (0x7fU >> length));

    for (std::size_t i = 1; i < length; ++i)
    {
        const auto byte = byteAt (text, place + i);

        if ((byte & 0xc0U) != 0x80)
            return ++place, replacement;

        value = (value << 6U) | (byte & 0x3fU);
    }

    if (isTooLongOrNoCharacter (value, length))
        return ++place, replacement;

    place += length;
    return value;
}

void appendCharacter (std::string& text, char32_t c)
{
    const auto add = [&text] (char32_t byte)
    { text += static_cast<char> (static_cast<unsigned char> (byte)); };

    if (c < 0x80)
        return add (c);

    if (c < 0x800)
    {
        add (0xc0U | (c >> 6U));
        return add (0x80U | (c & 0x3fU));
    }

    if (c < 0x10000)
        add (0xe0U | (c >> 12U));
    else
    {
        add (0xf0U | (c >> 18U));
        add (0x80U | ((c >> 12U) & 0x3fU));
    }

    add (0x80U | ((c >> 6U) & 0x3fU));
    add (0x80U | (c & 0x3fU));
}

std::size_t countCharacters (std::string_view text) noexcept
{
    std::size_t count = 0;

    for (std::size_t place = 0; place < text.size(); ++count)
        static_cast<void> (nextCharacter (text, place));

    return count;
}

bool isAllowedInXML (char32_t c) noexcept
{
    return c >= 0x20 ? c != 0xfffe && c != 0xffff && ! (c >= 0xd800 && c < 0xe000)
                     : c == '\t' || c == '\n' || c == '\r';
}

std::string cleaned (std::string_view text)
{
    std::string result;
    result.reserve (text.size());

    for (std::size_t place = 0; place < text.size();)
        if (const auto c = nextCharacter (text, place); isAllowedInXML (c))
            appendCharacter (result, c);

    return result;
}

std::string_view trimmed (std::string_view text) noexcept
{
    constexpr std::string_view blanks = " \t\n\r";
    constexpr std::string_view noBreakSpace = "\xc2\xa0";

    for (auto before = text.size() + 1; text.size() < before;)
    {
        before = text.size();

        while (! text.empty() && blanks.find (text.front()) != std::string_view::npos)
            text.remove_prefix (1);

        while (! text.empty() && blanks.find (text.back()) != std::string_view::npos)
            text.remove_suffix (1);

        if (text.starts_with (noBreakSpace))
            text.remove_prefix (noBreakSpace.size());

        if (text.ends_with (noBreakSpace))
            text.remove_suffix (noBreakSpace.size());
    }

    return text;
}

std::string onOneLine (std::string_view text)
{
    std::string result (text);

    for (auto& c : result)
        if (static_cast<unsigned char> (c) < 0x20 || c == 0x7f)
            c = ' ';

    return result;
}

std::string withoutOrders (std::string_view text)
{
    std::string result;

    for (std::size_t place = 0; place < text.size();)
    {
        const auto c = nextCharacter (text, place);
        appendCharacter (result, ZEP::Core::isTerminalOrder (c) ? U' ' : c);
    }

    return result;
}

std::string skeleton (std::string_view text)
{
    std::string result;

    for (const auto c : text)
    {
        if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9'))
            result += c;
        else if (c >= 'A' && c <= 'Z')
            result += static_cast<char> (c - 'A' + 'a');
    }

    return result;
}

std::string wordsAlone (std::string_view text)
{
    std::string result;

    for (std::size_t place = 0; place < text.size();)
    {
        const auto start = place;
        const auto c = nextCharacter (text, place);

        if (c < 0x80)
            result += skeleton (text.substr (start, 1));
        else if (! isSign (c))
            result += text.substr (start, place - start);
    }

    return result;
}

bool readsRightToLeft (std::string_view text) noexcept
{
    for (std::size_t place = 0; place < text.size();)
    {
        const auto c = nextCharacter (text, place);

        if (isRightToLeft (c))
            return true;

        if (isLeftToRight (c))
            return false;
    }

    return false;
}

bool holdsRightToLeft (std::string_view text) noexcept
{
    for (std::size_t place = 0; place < text.size();)
        if (isRightToLeft (nextCharacter (text, place)))
            return true;

    return false;
}

} // namespace DocxHandler
