// SPDX-License-Identifier: GPL-3.0-only
#include "Pace.h"

#include <cmath>
#include <cstdio>

namespace overmarks
{

namespace
{

constexpr long minute = 60, hour = 60 * minute;

std::string rateInWords (double rate)
{
    constexpr double small = 10, smallest = 0.01;
    char digits[32];

    if (rate < smallest)
        return "under 0.01";

    std::snprintf (digits, sizeof (digits), rate < small ? "%.2g" : "%.0f", rate);
    return digits;
}

/** As rough as anybody wants to know it. */
std::string timeInWords (double seconds)
{
    constexpr double longest = 99.0 * hour;

    if (seconds > longest)
        return "over 99 h";

    const auto whole = static_cast<long> (std::ceil (seconds));

    if (whole < minute)
        return std::to_string (whole) + " s";
    if (whole < hour)
        return std::to_string ((whole + minute - 1) / minute) + " min";

    return std::to_string (whole / hour) + " h " + std::to_string (whole % hour / minute) + " min";
}

} // namespace

std::string paceInWords (double done, double total, double seconds, const std::string& unit)
{
    if (done <= 0 || done >= total || seconds < 1)
        return {};

    const double rate = done / seconds;
    return rateInWords (rate) + " " + unit + "/s, " + timeInWords ((total - done) / rate) + " left";
}

} // namespace overmarks
