// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/CSVCells.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace ZEP::Overmarks
{

namespace
{

/** Whether any rule has a word on the character. */
constexpr bool needsAttention (char c) noexcept { return c == '\n' || c == '\r' || c == '"' || c == '*'; }

/** Whether one of eight characters may need attention; none does if not. */
bool mayNeedAttention (const char* eight) noexcept
{
    constexpr std::uint64_t ones = 0x0101010101010101U, highBits = ones << 7U;
    std::uint64_t bytes = 0;
    std::memcpy (&bytes, eight, sizeof bytes);

    // What is taken away from a byte below it borrows from the high bit, which is clear in ASCII. Quote and star are one bit apart.
    const auto controlCodes = (bytes - ones * ('\r' + 1)) & ~bytes;
    const auto differences = (bytes | ones * ('"' ^ '*')) ^ (ones * '*');
    return ((controlCodes | ((differences - ones) & ~differences)) & highBits) != 0;
}

/** Where the next character is that needs attention, or the end. */
std::size_t nextThatNeedsAttention (std::string_view text, std::size_t from) noexcept
{
    constexpr std::size_t some = 8;

    while (from + some <= text.size() && ! mayNeedAttention (text.data() + from))
        from += some;

    // The last ones, of which some may have been looked at before.
    if (text.size() >= some && from + some > text.size()
        && ! mayNeedAttention (text.data() + text.size() - some))
        return text.size();

    while (from < text.size() && ! needsAttention (text[from]))
        ++from;

    return from;
}

} // namespace

void CSVCells::quoted (std::string_view text, CSVTextRule rule)
{
    out += '"';

    if (rule.keepsAll())
        out += text;
    else
        append (text, rule);

    out += quoteAndDelimiter;
}

void CSVCells::plain (std::string_view text)
{
    out += text;
    out += std::string_view (quoteAndDelimiter).substr (1);
}

void CSVCells::number (int value)
{
    std::array<char, 12> digits;
    const auto end = std::to_chars (digits.data(), digits.data() + digits.size(), value).ptr;
    plain ({ digits.data(), static_cast<std::size_t> (end - digits.data()) });
}

void CSVCells::last (std::string_view text) { out += text; }

void CSVCells::append (std::string_view text, CSVTextRule rule)
{
    std::size_t done = 0;

    // Whatever needs no attention is copied in one piece with what comes before it.
    const auto replace = [&] (std::size_t position, std::size_t length, std::string_view replacement)
    {
        out += text.substr (done, position - done);
        out += replacement;
        done = position + length;
    };

    for (auto i = nextThatNeedsAttention (text, 0); i < text.size();
         i = nextThatNeedsAttention (text, std::max (i + 1, done)))
    {
        const char c = text[i];

        if ((c == '\n' && rule.breaks != CSVBreaks::kept)
            || (c == '\r' && rule.breaks == CSVBreaks::toBlanks))
            replace (i, 1, " ");
        else if (c == '"' && rule.quotes != CSVQuotes::kept)
            replace (i, 1, rule.quotes == CSVQuotes::doubled ? "\"\"" : "");
        else if (c == '*' && rule.withoutDoubleStars && text.substr (i, 2) == "**")
            replace (i, 2, "");
    }

    out += text.substr (done);
}

} // namespace ZEP::Overmarks
