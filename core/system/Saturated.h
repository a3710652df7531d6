// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace ZEP::Core
{

/** The number, or the highest or lowest that fits: what damaged files hold never becomes a number of the other sign. */
template <typename Integer>
[[nodiscard]] constexpr Integer saturated (std::int64_t value) noexcept
{
    static_assert (sizeof (Integer) < sizeof (value));
    return static_cast<Integer> (std::clamp<std::int64_t> (value, std::numeric_limits<Integer>::min(),
                                                           std::numeric_limits<Integer>::max()));
}

} // namespace ZEP::Core
