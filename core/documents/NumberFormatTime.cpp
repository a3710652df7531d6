// SPDX-License-Identifier: GPL-3.0-only
// The sections of number formats that are dates or times.
#include "core/documents/NumberFormat.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace ZEP::Core
{
namespace
{

constexpr double lastDay = 2958466.0; // 9999-12-31
constexpr long long msOfDay = 86400000;
constexpr long long msOfHour = 3600000;
constexpr long long msOfMinute = 60000;
constexpr long long msOfSecond = 1000;

std::string paddedWithZeros (long long number, int digits)
{
    std::array<char, 32> text {};
    std::snprintf (text.data(), text.size(), "%0*lld", digits, number);
    return text.data();
}

} // namespace

/** What a section of time asks for. */
struct NumberFormat::TimeLayout
{
    explicit TimeLayout (const Section& section) : tokens (section.tokens)
    {
        char before = 0;

        for (std::size_t i = 0; i < tokens.size(); ++i)
        {
            if (tokens[i].kind != Kind::number && tokens[i].kind != Kind::elapsed)
                continue;

            for (std::size_t j = 0; before == 0 && j < i; ++j)
                writesMinus = writesMinus || tokens[j].text == "-" || tokens[j].text == "(";

            const auto part = tokens[i].text[0];
            const bool isMinute = part == 'm' && (before == 'h' || partBehind (i) == 's');
            isElapsed = isElapsed || tokens[i].kind == Kind::elapsed;
            hasTime = hasTime || isElapsed || isMinute || part == 'h' || part == 's' || part == 'A';
            hasDate = hasDate || part == 'y' || part == 'd' || (part == 'm' && ! isMinute && ! isElapsed);

            if (part == 's')
                readBehindSeconds (i + 1);

            before = part;
        }
    }

    bool hasDate = false;
    bool hasTime = false;
    bool isElapsed = false;
    bool hasFraction = false;
    bool writesMinus = false; ///< or a bracket, before all else
    std::string frames;       ///< ":00", as the format writes it

private:
    char partBehind (std::size_t place) const
    {
        while (++place < tokens.size())
            if (tokens[place].kind == Kind::number || tokens[place].kind == Kind::elapsed)
                return tokens[place].text[0];

        return 0;
    }

    void readBehindSeconds (std::size_t place)
    {
        std::string text;

        for (; place < tokens.size() && (tokens[place].kind != Kind::number || tokens[place].text == "f");
             ++place)
            text += tokens[place].text;

        const auto isDigit = [&text] (std::size_t i) { return text[i] >= '0' && text[i] <= '9'; };
        hasFraction = hasFraction || (text.size() > 1 && text[0] == '.' && text[1] == '0')
                      || text.find ('f') != std::string::npos;

        if (text.size() == 3 && (text[0] == ':' || text[0] == ';') && isDigit (1) && isDigit (2))
            frames = text;
    }

    const std::vector<Token>& tokens;
};

std::string NumberFormat::asTimeBelowZero (const Section& section, double value, bool showsMinus,
                                           bool countsFrom1904)
{
    const TimeLayout layout (section);

    if (layout.hasDate || -value >= lastDay)
        return generalNumber (value);
    if (showsMinus && ! layout.isElapsed && ! countsFrom1904)
        return asTime (section, value - std::floor (value), false, countsFrom1904);

    const auto text = asTime (section, -value, false, countsFrom1904);
    const bool isZero = text.find_first_of ("123456789") == std::string::npos;
    return (showsMinus || layout.writesMinus) && ! isZero ? "-" + text : text;
}

std::string NumberFormat::asTime (const Section& section, double value, bool showsMinus, bool countsFrom1904)
{
    if (value < 0.0)
        return asTimeBelowZero (section, value, showsMinus, countsFrom1904);
    if (value >= lastDay)
        return generalNumber (value);

    const TimeLayout layout (section);
    const auto seconds = value * static_cast<double> (msOfDay / msOfSecond);
    const auto ms = layout.hasFraction ? std::llround (seconds * msOfSecond)
                    : layout.hasTime   ? std::llround (seconds) * msOfSecond
                                       : static_cast<long long> (seconds) * msOfSecond;
    const auto day = ms / msOfDay;
    const auto rest = layout.isElapsed ? ms : ms % msOfDay;
    const bool showsDate = layout.hasDate && ! (layout.hasTime && day == 0);
    std::string text = showsDate ? isoDate (day, countsFrom1904) : std::string();

    if (! layout.hasTime)
        return text;

    text += (showsDate ? " " : "") + paddedWithZeros (rest / msOfHour, 2) + ":"
            + paddedWithZeros (rest / msOfMinute % 60, 2) + ":" + paddedWithZeros (rest / msOfSecond % 60, 2);
    return text + (layout.hasFraction ? "." + paddedWithZeros (rest % msOfSecond, 3) : layout.frames);
}

} // namespace ZEP::Core
