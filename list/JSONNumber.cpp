// SPDX-License-Identifier: GPL-3.0-only
#include "list/JSONNumber.h"

#include <charconv>
#include <cmath>
#include <iterator>

namespace ZEP::Overmarks
{

double shortestJSONNumber (float value)
{
    if (! std::isfinite (value))
        return -1.0;

    char digits[64];
    const auto written = std::to_chars (std::begin (digits), std::end (digits), value);
    double result = 0.0;
    std::from_chars (std::begin (digits), written.ptr, result);
    return result;
}

} // namespace ZEP::Overmarks
