// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/Event.h"

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ZEP::Overmarks
{

/** A timecode text that compares as the text does, without being a string on the heap. */
class TimecodeKey final
{
public:
    TimecodeKey() = default;

    static TimecodeKey startOf (const Event& event);
    static TimecodeKey endOf (const Event& event);

    auto operator<=> (const TimecodeKey&) const = default;

    /** Never higher for a text that goes before another; for no text 0 or the highest number there is. */
    std::uint64_t rank() const { return characters.front(); }

private:
    explicit TimecodeKey (std::string_view timecode) noexcept;
    static TimecodeKey keyAt (int frameIndex, const Event& event,
                              std::size_t (Event::*writeText) (char*) const);

    // Four bits a character, the first one highest. Hours may have any number of digits; what is not used stays zero.
    std::array<std::uint64_t, 2> characters {};
};

} // namespace ZEP::Overmarks
