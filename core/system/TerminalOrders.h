// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstdint>

namespace ZEP::Core
{

/** Whether a character of a text from elsewhere must not reach a terminal: it gives the terminal an order (C0, DEL, C1), ends a line
    or a paragraph, or turns the direction of what follows. The marks that stand for a letter's direction alone (LRM, RLM, ALM) are
    part of the text. */
[[nodiscard]] constexpr bool isTerminalOrder (std::uint32_t code) noexcept
{
    const bool isControl = code < 0x20 || (code >= 0x7f && code < 0xa0);
    const bool breaksLine = code == 0x2028 || code == 0x2029;
    const bool turnsDirection = (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);
    return isControl || breaksLine || turnsDirection;
}

} // namespace ZEP::Core
