// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/system/Saturated.h"
#include "core/timecode/TCDef.h"
#include "core/timecode/TCTime.h"

#include <cstdint>

namespace ZEP::Core
{

/** Frames of a second, a minute and ten minutes under one definition, for those who turn many frames into times. With drop-frame the
    first minute of each ten is a whole one and the other nine lack their first labels. Without it the same sums hold with nothing
    dropped. */
struct FrameCounting
{
    explicit constexpr FrameCounting (const _TCDef& def) noexcept
        : perSecond (def.framesPerSecond == 0 ? 25 : def.framesPerSecond),
          dropped (def.dropFrame && (perSecond == 30 || perSecond == 60) ? perSecond / 15 : 0),
          perMinute (perSecond * 60),
          perTenMinutes (perMinute * 10 - dropped * 9)
    {
    }

    /** At most 2^31 * 3600 * 255 frames: far from the end of 64 bits. */
    [[nodiscard]] constexpr std::int64_t framesOf (const _TCTime& time) const noexcept
    {
        const auto minutes = std::int64_t { time.hours } * 60 + time.minutes;
        const auto leftOut = dropped * (minutes - floorDivide (minutes, 10));

        return minutes * perMinute + time.seconds * perSecond + time.frames - leftOut;
    }

    /** The time of a frame; hours that don't fit into a timecode are the highest or lowest that do. */
    [[nodiscard]] constexpr _TCTime timeOf (std::int64_t frames) const noexcept
    {
        const auto tens = floorDivide (frames, perTenMinutes);
        const auto within = frames - tens * perTenMinutes;
        const auto minute = within < perMinute ? 0 : 1 + (within - perMinute) / (perMinute - dropped);
        const auto label = within + dropped * minute - minute * perMinute;

        _TCTime time;
        time.hours = saturated<std::int32_t> (floorDivide (tens, 6));
        time.minutes = static_cast<std::int32_t> (floorRemainder (tens, 6) * 10 + minute);
        time.seconds = static_cast<std::int32_t> (label / perSecond);
        time.frames = static_cast<std::int32_t> (label % perSecond);
        return time;
    }

    static constexpr std::int64_t floorDivide (std::int64_t value, std::int64_t divisor) noexcept ///< Down.
    {
        return value / divisor - (value % divisor < 0 ? 1 : 0);
    }

    /** Never negative. */
    static constexpr std::int64_t floorRemainder (std::int64_t value, std::int64_t divisor) noexcept
    {
        return value - floorDivide (value, divisor) * divisor;
    }

    std::int64_t perSecond;     ///< whole frames of one timecode second
    std::int64_t dropped;       ///< labels left out at the head of a minute
    std::int64_t perMinute;     ///< of the first minute of ten
    std::int64_t perTenMinutes; ///< of all ten
};

} // namespace ZEP::Core
