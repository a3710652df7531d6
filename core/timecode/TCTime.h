// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstdint>

namespace ZEP::Core
{

/** One timecode: a label of a frame, or a span written as one.

    The fields alone don't say which frame is meant; that takes the _TCDef they count under. A time before
    00:00:00:00 carries the sign in its hours alone: one frame before zero at 25 frames is -1 hours, 59
    minutes, 59 seconds, 24 frames. Passed by value; test `invalid` right after parsing, the other fields mean
    nothing then.
*/
struct _TCTime
{
    std::int32_t hours = 0;      ///< negative for a time before zero
    std::int32_t minutes = 0;    ///< 0 to 59
    std::int32_t seconds = 0;    ///< 0 to 59
    std::int32_t frames = 0;     ///< frames within the second
    std::uint32_t subFrames = 0; ///< subframes within the frame; the arithmetic counts whole frames only
    std::uint8_t subFramesPerFrame = 80; ///< base of subFrames
    bool invalid = false;                ///< the parsed text was no timecode

    bool operator== (const _TCTime&) const = default; ///< Equal fields; the count of frames isn't looked at.
};

} // namespace ZEP::Core
