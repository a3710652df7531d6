// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/NumberFormat.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace ZEP::Core
{
namespace
{

constexpr int digitsKept = 15;      // no spreadsheet keeps more of a number
constexpr int mostDecimals = 10;    // of a number without a format
constexpr double firstLarge = 1e15; // from here on, and below the next, a power of ten is written
constexpr double lastSmall = 1e-9;
constexpr int mostDecimalsWanted = 30;

/** The digits of a number above zero: 0.d1d2d3... times ten to the power of `power`. */
struct Decimal
{
    std::string digits;
    int power = 0;
};

Decimal decimalOf (double value)
{
    std::array<char, 40> text {};
    std::snprintf (text.data(), text.size(), "%.*e", digitsKept - 1, value);
    const std::string written (text.data());
    const auto exponent = written.find ('e');

    Decimal decimal;
    decimal.digits = written.substr (0, 1) + written.substr (2, exponent - 2);
    decimal.power = std::stoi (written.substr (exponent + 1)) + 1;
    return decimal;
}

/** Leaves `count` digits, the last one rounded; none where that is below zero. */
void roundTo (Decimal& decimal, int count)
{
    auto& digits = decimal.digits;

    if (count >= static_cast<int> (digits.size()))
        return;

    const bool goesUp = count >= 0 && digits[static_cast<std::size_t> (count)] >= '5';
    digits.resize (static_cast<std::size_t> (std::max (count, 0)));

    if (! goesUp)
        return;

    auto place = digits.size();

    while (place > 0 && digits[place - 1] == '9')
        digits[--place] = '0';

    if (place > 0)
    {
        ++digits[place - 1];
        return;
    }

    digits.insert (digits.begin(), '1');
    ++decimal.power;
}

/** The digits with a point; at least one before it and `decimals` behind it. */
std::string written (const Decimal& decimal, int decimals)
{
    auto digits = decimal.digits;
    auto point = decimal.power;

    if (point <= 0)
    {
        digits.insert (0, static_cast<std::size_t> (1 - point), '0');
        point = 1;
    }

    digits.resize (static_cast<std::size_t> (point + decimals), '0');
    return decimals > 0 ? digits.substr (0, static_cast<std::size_t> (point)) + "."
                              + digits.substr (static_cast<std::size_t> (point))
                        : digits;
}

std::string withoutTrailingZeros (std::string text)
{
    if (text.find ('.') == std::string::npos)
        return text;

    text.erase (text.find_last_not_of ('0') + 1);

    if (text.ends_with ('.'))
        text.pop_back();

    return text;
}

std::string withPowerOfTen (double value)
{
    const auto decimal = decimalOf (value);
    const auto mantissa =
        withoutTrailingZeros (decimal.digits.substr (0, 1) + "." + decimal.digits.substr (1));
    const auto power = decimal.power - 1;
    const auto digits = std::to_string (std::abs (power));
    return mantissa + (power < 0 ? "E-" : "E+") + (digits.size() < 2 ? "0" : "") + digits;
}

} // namespace

std::string roundedNumber (double value, int decimals)
{
    if (! std::isfinite (value))
        return "#NUM!";

    const auto wanted = std::min (std::max (decimals, 0), mostDecimalsWanted);
    auto decimal = value == 0.0 ? Decimal { "0", 1 } : decimalOf (std::abs (value));
    roundTo (decimal, decimal.power + wanted);

    if (decimal.digits.empty())
        decimal = { "0", 1 };

    const auto text = written (decimal, wanted);
    return value < 0.0 && text.find_first_not_of ("0.") != std::string::npos ? "-" + text : text;
}

std::string generalNumber (double value)
{
    if (! std::isfinite (value))
        return "#NUM!";

    const auto size = std::abs (value);

    if (size != 0.0 && (size >= firstLarge || size < lastSmall))
        return (value < 0.0 ? "-" : "") + withPowerOfTen (size);

    return withoutTrailingZeros (roundedNumber (value, mostDecimals));
}

std::string isoDate (long long day, bool countsFrom1904)
{
    using namespace std::chrono;

    // The calendar of 1900 has a leap day too many, its number 60, and a day 0 before the first.
    if (! countsFrom1904 && day == 0)
        return "1900-01-00";
    if (! countsFrom1904 && day == 60)
        return "1900-02-29";

    const sys_days first = countsFrom1904 ? sys_days (1904y / January / 1)
                           : day < 60     ? sys_days (1899y / December / 31)
                                          : sys_days (1899y / December / 30);
    const year_month_day date (first + days (day));
    std::array<char, 40> text {};
    std::snprintf (text.data(), text.size(), "%04d-%02u-%02u", static_cast<int> (date.year()),
                   static_cast<unsigned> (date.month()), static_cast<unsigned> (date.day()));
    return text.data();
}

} // namespace ZEP::Core
