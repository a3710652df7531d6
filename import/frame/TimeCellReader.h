// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/timecode/TimeInfo.h"
#include "import/frame/EventRowProblem.h"

#include <juce_core/juce_core.h>

#include <memory>
#include <optional>

namespace ZEP::Overmarks
{

/** What a time cell says: no time at all, a frame of the picture, or something that nobody should guess. */
struct TimeCell
{
    std::optional<int> frameIndex; ///< frames from the time origin; never -1, which in an event means no time
    juce::String problem;          ///< why a cell that isn't empty gives no frame; else empty
    EventRowProblemKind kind = EventRowProblemKind::other; ///< of the problem
};

/** Turns the time cells of a foreign cue list into frames of the project's picture.

        01:02:03:04  01:02:03;04     a label of the picture's timecode: that frame
        01:02:03,456 01:02:03.456    a subtitle's time: real time, the nearest frame of it
        01:02:03                     the first frame of the second, where times of whole seconds are taken
        --:--:--:--  (empty)         no time

    Real time and timecode are not the same: at 23.976 a timecode hour lasts 3.6 seconds longer than an hour.
    Subtitle times count from the time origin's label read as the time of a clock.

    A label that the project's frame rate doesn't have is refused rather than moved, since a cue that is a
    frame off costs the actor's time. Holds the time reference and reads it at each cell. One thread at a
    time. */
class TimeCellReader final
{
public:
    /** @param projectTime         may be null; every time is a problem then
        @param takesWholeSeconds  whether a time without frames is one */
    explicit TimeCellReader (std::shared_ptr<Core::TimeInfo> projectTime, bool takesWholeSeconds = false);

    [[nodiscard]] TimeCell read (const juce::String& text) const;

    /** The timecode of a frame index, as the project writes it. The time reference must not be null. */
    [[nodiscard]] juce::String timecode (int frameIndex) const;

private:
    [[nodiscard]] TimeCell readTimecode (const juce::String& text) const;
    [[nodiscard]] int nearestFrame (double milliseconds) const;
    [[nodiscard]] TimeCell withoutFrame (const juce::String& text, int frames) const;

    std::shared_ptr<Core::TimeInfo> timeInfo;
    bool wholeSeconds;
};

} // namespace ZEP::Overmarks
