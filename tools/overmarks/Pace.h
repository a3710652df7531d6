// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <string>

namespace overmarks
{

/** How fast a piece of work goes and how long it will still take, such as "2.5 files/s, 12 s left". Empty at the end, before the
    first is done, and during the first second, which tells little.
    @param unit  what is counted, in the plural */
std::string paceInWords (double done, double total, double seconds, const std::string& unit);

} // namespace overmarks
