// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstdint>

namespace ZEP::Core
{

/** How a picture's timecode counts.

    Frames are counted by `framesPerSecond`, the whole frames of one timecode second; the fraction says how
    long such a second lasts in real time. 23.976 counts 24 frames, 29.97 counts 30. Passed by value.
*/
struct _TCDef
{
    bool dropFrame = false; ///< skips labels at 30 and 60 frames; elsewhere changes the text alone
    std::uint32_t frameRateNumerator = 25;  ///< exact rate in frames a second, upper part of the fraction
    std::uint32_t frameRateDenominator = 1; ///< exact rate in frames a second, lower part of the fraction
    std::uint8_t framesPerSecond = 25; ///< whole frames of one timecode second; the arithmetic reads 0 as 25
    bool undefined = true;             ///< nobody has set the rate of this project yet

    bool operator== (const _TCDef&) const = default; ///< Equal in every field, unused ones too.
};

} // namespace ZEP::Core
