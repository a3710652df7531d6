// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstdint>
#include <limits>

namespace ZEP::Core
{

// Numbers of bytes, cells and the like, which stop at the largest number: an application that wants no limit sets that one, and
// beyond it they would begin at zero again.

/** The sum, or the largest number. */
[[nodiscard]] constexpr std::uint64_t cappedSum (std::uint64_t a, std::uint64_t b) noexcept
{
    constexpr auto largest = std::numeric_limits<std::uint64_t>::max();
    return a > largest - b ? largest : a + b;
}

/** The product, or the largest number. */
[[nodiscard]] constexpr std::uint64_t cappedProduct (std::uint64_t a, std::uint64_t b) noexcept
{
    constexpr auto largest = std::numeric_limits<std::uint64_t>::max();
    return b != 0 && a > largest / b ? largest : a * b;
}

} // namespace ZEP::Core
