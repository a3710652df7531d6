// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/timecode/TimeInfo.h"

#include <juce_core/juce_core.h>

#include <memory>
#include <utility>
#include <vector>

namespace overmarks
{

/** The axis of time below a picture of a whole list. Long stretches in which nobody speaks, such as the unused part of a reel's
    hour, are left out, so that the axis consists of segments of one scale (or a larger one, where a segment would be too narrow to be
    seen) with gaps between them.

    Frames count from the time origin, columns from the left of the picture. */
class TimeAxis final
{
public:
    using Stretches = std::vector<std::pair<juce::int64, juce::int64>>; ///< from and to, never empty

    struct Segment
    {
        juce::int64 from = 0;
        juce::int64 to = 0;
        int left = 0;
        int right = 0;
    };

    struct Tick
    {
        int column = 0;
        juce::String label; ///< empty where there is no room
    };

    static constexpr int mostSegments = 9;
    static constexpr int gap = 24; ///< columns between two segments
    static constexpr int narrowestSegment = 100;

    /** @param width  columns; at least enough for the most segments */
    TimeAxis (Stretches lines, std::shared_ptr<ZEP::Core::TimeInfo> timeInfo, int left, int width);

    const std::vector<Segment>& getSegments() const noexcept { return segments; }
    const std::vector<Tick>& getTicks() const noexcept { return ticks; }

    /** @param frame  of a line that the axis was made for */
    [[nodiscard]] int columnOf (juce::int64 frame) const;

private:
    void findSegments (Stretches& lines);
    void place (int left, int width);
    void findTicks();
    void addRoundTimes (const Segment& segment, juce::int64 step);
    void addTick (int column, const ZEP::Core::_TCTime& time);
    juce::int64 stepInSeconds() const;

    std::shared_ptr<ZEP::Core::TimeInfo> info;
    std::vector<Segment> segments;
    std::vector<Tick> ticks;
    double scale = 1.0; ///< columns a frame
};

} // namespace overmarks
