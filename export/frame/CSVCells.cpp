// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/CSVCells.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace ZEP::Overmarks
{

namespace
{

/** What any rule has a word on. */
constexpr auto needsAttention = []
{
    std::array<bool, 256> table {};

    for (const char c : { '\n', '\r', '"', '*' })
        table[static_cast<unsigned char> (c)] = true;

    return table;
}();

} // namespace

void CSVCells::quoted (std::string_view text, CSVTextRule rule)
{
    out += '"';
    append (text, rule);
    out += '"';
    out += delimiter;
}

void CSVCells::plain (std::string_view text)
{
    out += text;
    out += delimiter;
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

    for (std::size_t i = 0; i < text.size(); i = std::max (i + 1, done))
    {
        const char c = text[i];

        if (! needsAttention[static_cast<unsigned char> (c)])
            continue;

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
