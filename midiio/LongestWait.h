// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <algorithm>
#include <chrono>

namespace ZEP::MIDIIO
{

/** A time to wait that a clock can be set to: whoever waits "for ever" waits a year. */
inline std::chrono::milliseconds withinAYear (std::chrono::milliseconds time)
{
    constexpr std::chrono::milliseconds year = std::chrono::hours (365 * 24);
    return std::clamp (time, -year, year);
}

} // namespace ZEP::MIDIIO
