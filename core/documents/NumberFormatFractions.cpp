// SPDX-License-Identifier: GPL-3.0-only
// The sections of number formats that are fractions, "# ?/?": whole, numerator and denominator, without the blanks that stand for
// digits.
#include "core/documents/NumberFormat.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ZEP::Core
{
namespace
{

constexpr double mostWhole = 1e9; // beyond it a number has no fraction worth showing
constexpr int mostPlaces = 5;     // of a denominator

bool isDigit (char byte) { return byte >= '0' && byte <= '9'; }

std::string padded (double number, std::size_t digits)
{
    const auto text = roundedNumber (number, 0);
    return std::string (std::max (digits, text.size()) - text.size(), '0') + text;
}

/** The fraction nearest to a number from 0 whose denominator isn't larger than `most`, found by its continued fraction. */
std::pair<double, double> nearestFraction (double value, double most)
{
    std::pair<double, double> before { 0.0, 1.0 };
    std::pair<double, double> last { 1.0, 0.0 };

    for (double rest = value;;)
    {
        const auto whole = std::floor (rest);
        const std::pair next { before.first + whole * last.first, before.second + whole * last.second };

        if (next.second > most)
            break;

        before = std::exchange (last, next);

        if (rest - whole < 1e-12 || std::abs (value - last.first / last.second) < 1e-12)
            return last;

        rest = 1.0 / (rest - whole);
    }

    const auto times = std::floor ((most - before.second) / last.second);
    const std::pair other { before.first + times * last.first, before.second + times * last.second };
    const auto distance = [value] (const auto& fraction)
    { return std::abs (value - fraction.first / fraction.second); };
    return distance (other) < distance (last) ? other : last;
}

} // namespace

/** Where a section has its fraction. */
struct NumberFormat::Fraction
{
    explicit Fraction (const std::vector<Token>& tokens)
    {
        const auto isPlace = [&tokens] (std::size_t i) { return tokens[i].kind == Kind::digit; };
        const auto isOfDenominator = [&] (std::size_t i)
        {
            return isPlace (i)
                   || (tokens[i].kind == Kind::literal && tokens[i].text.size() == 1
                       && isDigit (tokens[i].text[0]));
        };

        for (slash = 1; slash + 1 < tokens.size(); ++slash)
            if (tokens[slash].kind == Kind::slash && isPlace (slash - 1) && isOfDenominator (slash + 1))
                break;

        if (slash + 1 >= tokens.size())
            return;

        isThere = true;

        for (start = slash; start > 0 && isPlace (start - 1); --start)
            zerosOfNumerator += tokens[start - 1].text == "0" ? 1 : 0;

        for (end = slash + 1; end < tokens.size() && isOfDenominator (end); ++end)
        {
            zerosOfDenominator += tokens[end].text == "0" ? 1 : 0;
            fixedDenominator =
                fixedDenominator * 10.0 + (isDigit (tokens[end].text[0]) ? tokens[end].text[0] - '0' : 0);
        }

        for (std::size_t i = 0; i < start; ++i)
        {
            hasWhole = hasWhole || isPlace (i);
            zerosOfWhole += isPlace (i) && tokens[i].text == "0" ? 1 : 0;
        }
    }

    /** The fraction of a number, above 1 where there is no place for the whole. */
    std::pair<double, double> of (double value) const
    {
        if (fixedDenominator > 0.0)
            return { std::floor (value * fixedDenominator + 0.5), fixedDenominator };

        const auto places = std::min (static_cast<int> (end - slash) - 1, mostPlaces);
        return nearestFraction (value, std::pow (10.0, places) - 1.0);
    }

    std::size_t start = 0; ///< the tokens from the numerator on
    std::size_t slash = 0;
    std::size_t end = 0;
    std::size_t zerosOfWhole = 0;
    std::size_t zerosOfNumerator = 0;
    std::size_t zerosOfDenominator = 0;
    double fixedDenominator = 0.0; ///< 0 for any
    bool hasWhole = false;
    bool isThere = false;
};

/** Nothing for a section without a fraction. */
std::string NumberFormat::asFraction (const Section& section, double value)
{
    const Fraction fraction (section.tokens);

    if (! fraction.isThere)
        return {};
    if (value >= mostWhole)
        return generalNumber (value);

    auto whole = fraction.hasWhole ? std::floor (value) : 0.0;
    auto [numerator, denominator] = fraction.of (value - whole);

    if (fraction.hasWhole && numerator == denominator)
    {
        ++whole;
        numerator = 0.0;
    }

    const bool showsFraction = ! fraction.hasWhole || numerator > 0.0;
    const bool showsWhole =
        fraction.hasWhole && (whole > 0.0 || fraction.zerosOfWhole > 0 || ! showsFraction);
    std::string before;
    std::string text = showsWhole ? padded (whole, fraction.zerosOfWhole) : std::string();
    std::string behind;

    if (showsFraction)
        text += (text.empty() ? "" : " ") + padded (numerator, fraction.zerosOfNumerator) + "/"
                + padded (denominator, fraction.fixedDenominator > 0.0 ? 0 : fraction.zerosOfDenominator);

    bool isBehindWhole = false;

    for (std::size_t i = 0; i < section.tokens.size(); ++i)
    {
        isBehindWhole = isBehindWhole || section.tokens[i].kind == Kind::digit;

        if (section.tokens[i].kind == Kind::literal
            && (i < fraction.start ? ! isBehindWhole : i >= fraction.end))
            (i < fraction.start ? before : behind) += section.tokens[i].text;
    }

    return before + text + behind;
}

} // namespace ZEP::Core
