// SPDX-License-Identifier: GPL-3.0-only
#include "statistics/TimeAxis.h"

#include "core/timecode/TCToolbox.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace overmarks
{

using ZEP::Core::_TCTime;
using ZEP::Core::TCToolbox;

namespace
{

constexpr juce::int64 longestSilenceInSeconds = 600;
constexpr int columnsOfALabel = 100;
constexpr int distanceOfTicks = 120;
constexpr juce::int64 secondsOfADay = 86400;

int framesPerSecond (const ZEP::Core::TimeInfo& info)
{
    return info.tcDef.framesPerSecond > 0 ? info.tcDef.framesPerSecond : 25;
}

/** The lines as far as they are nearer to each other than this. */
std::vector<TimeAxis::Segment> joined (const TimeAxis::Stretches& lines, juce::int64 longestSilence)
{
    std::vector<TimeAxis::Segment> result;

    for (const auto& [from, to] : lines)
        if (result.empty() || from - result.back().to > longestSilence)
            result.push_back ({ from, to, 0, 0 });
        else
            result.back().to = std::max (result.back().to, to);

    return result;
}

juce::int64 secondsOf (const _TCTime& time)
{
    return (juce::int64 { time.hours } * 60 + time.minutes) * 60 + time.seconds;
}

juce::int64 floorDivision (juce::int64 number, juce::int64 divisor)
{
    return number >= 0 ? number / divisor : -((divisor - 1 - number) / divisor);
}

_TCTime timeOfSecond (juce::int64 second)
{
    _TCTime time;
    time.hours = static_cast<int> (floorDivision (second, 3600));
    const auto rest = second - juce::int64 { time.hours } * 3600;
    time.minutes = static_cast<int> (rest / 60);
    time.seconds = static_cast<int> (rest % 60);
    return time;
}

} // namespace

TimeAxis::TimeAxis (Stretches lines, std::shared_ptr<ZEP::Core::TimeInfo> timeInfo, int left, int width)
    : info (std::move (timeInfo))
{
    findSegments (lines);
    place (left, width);
    findTicks();
}

void TimeAxis::findSegments (Stretches& lines)
{
    std::sort (lines.begin(), lines.end());
    auto silence = longestSilenceInSeconds * framesPerSecond (*info);

    do
    {
        segments = joined (lines, silence);
        silence *= 2;
    } while (segments.size() > mostSegments);
}

void TimeAxis::place (int left, int width)
{
    auto columns = static_cast<double> (width - gap * (static_cast<int> (segments.size()) - 1));
    double frames = 0;

    for (const auto& segment : segments)
        frames += static_cast<double> (segment.to - segment.from);

    // The shortest first: each that is too narrow leaves less room to the others.
    std::vector<const Segment*> byLength;

    for (const auto& segment : segments)
        byLength.push_back (&segment);

    std::sort (byLength.begin(), byLength.end(),
               [] (const Segment* a, const Segment* b) { return a->to - a->from < b->to - b->from; });

    for (const auto* segment : byLength)
    {
        const auto length = static_cast<double> (segment->to - segment->from);

        if (length * columns / frames >= narrowestSegment)
            break;

        columns -= narrowestSegment;
        frames -= length;
    }

    scale = frames > 0.0 ? columns / frames : 1.0;

    for (auto& segment : segments)
    {
        const auto length = static_cast<double> (segment.to - segment.from) * scale;
        segment.left = left;
        segment.right = left + std::max (narrowestSegment, static_cast<int> (length));
        left = segment.right + gap;
    }
}

int TimeAxis::columnOf (juce::int64 frame) const
{
    const auto behind =
        std::upper_bound (segments.begin(), segments.end(), frame,
                          [] (juce::int64 f, const Segment& segment) { return f < segment.from; });

    if (behind == segments.begin())
        return segments.empty() ? 0 : segments.front().left;

    const auto& segment = *std::prev (behind);
    const auto part =
        static_cast<double> (frame - segment.from) / static_cast<double> (segment.to - segment.from);
    return segment.left
           + static_cast<int> (std::min (1.0, part) * static_cast<double> (segment.right - segment.left));
}

juce::int64 TimeAxis::stepInSeconds() const
{
    const auto columnsOfASecond = scale * framesPerSecond (*info);
    const auto isWideEnough = [columnsOfASecond] (juce::int64 seconds)
    { return static_cast<double> (seconds) * columnsOfASecond >= distanceOfTicks; };

    for (const juce::int64 seconds :
         { 1, 2, 5, 10, 15, 20, 30, 60, 120, 300, 600, 900, 1200, 1800, 3600, 7200, 14400, 21600, 43200 })
        if (isWideEnough (seconds))
            return seconds;

    auto days = secondsOfADay;

    while (! isWideEnough (days))
        days *= 2;

    return days;
}

void TimeAxis::findTicks()
{
    const auto step = stepInSeconds();

    // Where segments begin comes first; they are far enough from each other for a label each.
    for (const auto& segment : segments)
        addTick (segment.left, TCToolbox::tcTimeForFrameIndex (static_cast<int> (segment.from), *info));

    for (const auto& segment : segments)
        addRoundTimes (segment, step);

    std::sort (ticks.begin(), ticks.end(), [] (const Tick& a, const Tick& b) { return a.column < b.column; });
}

void TimeAxis::addRoundTimes (const Segment& segment, juce::int64 step)
{
    const auto start = TCToolbox::tcTimeForFrameIndex (static_cast<int> (segment.from), *info);
    const auto most = (segment.right - segment.left) / distanceOfTicks + 3;
    auto second = floorDivision (secondsOf (start), step) * step;

    for (int i = 0; i < most; ++i, second += step)
    {
        const auto time = timeOfSecond (second);
        const auto frame = TCToolbox::frameIndexForTCTime (time, info);

        if (frame > segment.from && frame <= segment.to)
            addTick (columnOf (frame), time);
    }
}

void TimeAxis::addTick (int column, const _TCTime& time)
{
    const auto hasRoom = std::none_of (ticks.begin(), ticks.end(),
                                       [column] (const Tick& other) {
                                           return other.label.isNotEmpty()
                                                  && std::abs (other.column - column) < columnsOfALabel;
                                       });
    const auto text = TCToolbox::stringFromTCTime (time, info->tcDef.dropFrame).dropLastCharacters (3);
    ticks.push_back ({ column, hasRoom ? text : juce::String() });
}

} // namespace overmarks
