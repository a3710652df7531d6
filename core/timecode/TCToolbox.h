// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"
#include "core/timecode/TCDef.h"
#include "core/timecode/TCTime.h"
#include "core/timecode/TimeInfo.h"

#include <cstddef>
#include <juce_core/juce_core.h>
#include <memory>
#include <optional>
#include <vector>

namespace ZEP::Core
{

/** The frame rates that exchange formats tell apart. */
enum FrameRateCode : int
{
    FrameRate23976 = 0,
    FrameRate24 = 1,
    FrameRate25 = 2,
    FrameRate2997 = 3,
    FrameRate2997Drop = 4,
    FrameRate30 = 5,
    FrameRate30Drop = 6,
    FrameRate48 = 7,
    FrameRate50 = 8,
    FrameRate5994 = 9,
    FrameRate5994Drop = 10,
    FrameRate60 = 11,
    FrameRateUnsupported = 12
};

/** Timecode arithmetic.

    Times are not wrapped at midnight: a time before 00:00:00:00 has negative hours and one of the next day
    more than 23, so that a frame index turned into a timecode and back is always the same index. Only the
    text form folds a negative time into 24 hours. Where a definition is drop-frame at 30 or 60 frames, the
    first 2 or 4 labels of each minute are left out but in every tenth minute; at all other rates the flag
    changes the text alone.

    Any field values are safe: results outside the range of their type stop at its end. Whole frames only:
    subframes are ignored and come back as 0 of 80. A result made from an `invalid` time is `invalid`. All
    operations may be called from any thread.
*/
class ZEP_CORE_API TCToolbox final
{
public:
    TCToolbox() = delete;

    /** Reads "hh:mm:ss:ff" or "hh:mm:ss;ff", with white space around it passed over. Any other text gives
        `invalid`, minutes and seconds above 59 included; frames are not compared with a rate. See
        existsUnder(). */
    [[nodiscard]] static _TCTime tcTimeFromString (juce::String text);

    /** Two digits in each of the four places, "01:02:03:04", with ";" before the frames for drop-frame. */
    [[nodiscard]] static juce::String stringFromTCTime (_TCTime time, bool dropFrame);

    /** Characters that writeTCTime() may write, the closing zero included. */
    static constexpr std::size_t longestTimecode = 48;

    /** Writes the text of stringFromTCTime() and a closing zero to `destination`, which must hold
        longestTimecode characters. Returns the length without the zero. Allocates nothing. */
    static std::size_t writeTCTime (char* destination, _TCTime time, bool dropFrame);

    /** The timecode `frames` frames after `time`, or before it when negative. */
    [[nodiscard]] static _TCTime addFramesAndTCTimes (long frames, _TCTime time, _TCDef def);

    /** The span from `from` to `to` as a timecode. `flag`, unless null, becomes true when `to` is the
        earlier one. */
    [[nodiscard]] static _TCTime subtractTCTimes (_TCTime from, _TCTime to, _TCDef def, bool* flag);

    /** Frames from 00:00:00:00 to `time`. A label that drop-frame leaves out counts as if the row of
        labels went on before it. */
    [[nodiscard]] static int convertToAbsoluteFrames (_TCTime time, _TCDef def);

    /** `time` counted from the picture's first frame. Without `info` the time comes back as it is. */
    [[nodiscard]] static _TCTime relativeTime (_TCTime time, std::shared_ptr<TimeInfo> info);

    /** Frame index of `time`: frames from the picture's first frame. Without `info`, frames from zero at
        25. */
    [[nodiscard]] static int frameIndexForTCTime (_TCTime time, const std::shared_ptr<TimeInfo>& info);

    /** The timecode of a frame index; the way back of frameIndexForTCTime(). */
    [[nodiscard]] static _TCTime tcTimeForFrameIndex (int index, const TimeInfo& info);

    /** Whether `time` labels a frame under `def`: not invalid, minutes, seconds and frames in their ranges,
        and no label that drop-frame leaves out. Any number of hours will do, since a time before zero has
        its sign there. */
    [[nodiscard]] static bool existsUnder (_TCTime time, const _TCDef& def);

    /** The code of a rate in frames a second, with a hundredth as tolerance. */
    [[nodiscard]] static FrameRateCode timecodeFramerateFromFPS (float fps, bool dropFrame);

    /** The definition of a rate by its name, such as "25" or "29.97df"; case and blanks around it don't
        matter. */
    [[nodiscard]] static std::optional<_TCDef> tcDefForRateName (const juce::String& name);

    /** The name of a definition's rate; drop-frame has a name of its own at 29.97, 30 and 59.94. Empty
        when undefined or unknown. */
    [[nodiscard]] static juce::String rateNameForTCDef (const _TCDef& def);

    /** All names that tcDefForRateName() knows, slowest rate first. */
    [[nodiscard]] static const std::vector<juce::String>& rateNames();
};

} // namespace ZEP::Core
