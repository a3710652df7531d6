// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/timecode/FrameCounting.h"
#include "event/Event.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ZEP::Overmarks
{

/** A timecode text that compares as the text does, without being a string on the heap. TimecodeKeys makes it. */
class TimecodeKey final
{
public:
    TimecodeKey() = default;

    auto operator<=> (const TimecodeKey&) const = default;

    /** Never higher for a text that goes before another; for no text 0 or the highest number there is. */
    std::uint64_t rank() const { return start; }

private:
    friend class TimecodeKeys;

    explicit TimecodeKey (std::string_view timecode) noexcept;

    // Four bits a character, the first one highest. Hours may have any number of digits; what is not used stays zero.
    std::uint64_t start = 0;
    std::uint64_t rest = 0;
};

/** Makes keys of the events of a list. These have one time info, and what it says of all of them is summed up once. For one walk through
    the list: no time info may change meanwhile. */
class TimecodeKeys final
{
public:
    TimecodeKey startOf (const Event& event); ///< Of Event::getStartTCString().
    TimecodeKey endOf (const Event& event);   ///< Of Event::getEndTCString().

private:
    TimecodeKey keyAt (int frameIndex, const Event& event, std::size_t (Event::*writeText) (char*) const);

    const ZEP::Core::TimeInfo* known = nullptr;
    ZEP::Core::FrameCounting counting { {} };
    std::int64_t origin = 0;
    std::uint64_t separators = 0;
};

} // namespace ZEP::Overmarks
