// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/TimeCellReader.h"

#include "core/timecode/TCToolbox.h"
#include "import/frame/CellReading.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace ZEP::Overmarks
{

using Core::TCToolbox;

namespace
{

/** What an event's index says when it has no time, and so can't be a time. */
constexpr int noTime = -1;

/** Timecode has two digits for the hours. */
constexpr int lastHour = 99;

/** "--:--:--:--" and every other way of drawing a line where no time is. */
bool saysNoTime (std::string_view cell)
{
    return cell.empty()
           || (cell.find ('-') != std::string_view::npos
               && cell.find_first_not_of ("-:;., ") == std::string_view::npos);
}

/** Some subtitle files place a line by coordinates behind its end time. */
bool areSubtitleCoordinates (std::string_view text)
{
    return text.empty() || (text.front() == ' ' && text.find_first_not_of (' ') == text.find_first_of ("Xx"));
}

/** Milliseconds of "hh:mm:ss,mmm" or "hh:mm:ss.mmm". */
std::optional<double> subtitleTime (std::string_view cell)
{
    constexpr std::string_view form = "00:00:00,000";

    if (cell.size() < form.size() || ! areSubtitleCoordinates (cell.substr (form.size())))
        return std::nullopt;

    for (std::size_t place = 0; place < form.size(); ++place)
    {
        const auto byte = cell[place];
        const bool fits = form[place] == '0' ? byte >= '0' && byte <= '9'
                                             : byte == form[place] || (form[place] == ',' && byte == '.');
        if (! fits)
            return std::nullopt;
    }

    const auto number = [cell] (std::size_t place, std::size_t digits)
    {
        int value = 0;
        for (const auto digit : cell.substr (place, digits))
            value = value * 10 + (digit - '0');
        return value;
    };
    const auto minutes = number (3, 2);
    const auto seconds = number (6, 2);

    if (minutes > 59 || seconds > 59)
        return std::nullopt;

    return ((number (0, 2) * 60 + minutes) * 60 + seconds) * 1000.0 + number (9, 3);
}

/** Whether a cell is "hh:mm:ss". */
bool isOfWholeSeconds (std::string_view cell)
{
    constexpr std::string_view form = "00:00:00";
    return cell.size() == form.size()
           && std::equal (cell.begin(), cell.end(), form.begin(),
                          [] (char byte, char place)
                          { return place == '0' ? byte >= '0' && byte <= '9' : byte == place; });
}

/** Timecode counts in a second; 25 where a project doesn't say, as the arithmetic has it. */
int wholeFramesPerSecond (const Core::_TCDef& def)
{
    return def.framesPerSecond != 0 ? def.framesPerSecond : 25;
}

/** The exact rate in frames a second as a fraction; that of the whole frames where a project doesn't say. */
std::pair<double, double> exactRate (const Core::_TCDef& def)
{
    if (def.frameRateNumerator != 0 && def.frameRateDenominator != 0)
        return { def.frameRateNumerator, def.frameRateDenominator };

    return { wholeFramesPerSecond (def), 1.0 };
}

juce::String rateInWords (const Core::_TCDef& def)
{
    const auto name = TCToolbox::rateNameForTCDef (def);
    return name.isNotEmpty() ? name.upToFirstOccurrenceOf ("df", false, true)
                             : juce::String (wholeFramesPerSecond (def));
}

} // namespace

TimeCellReader::TimeCellReader (std::shared_ptr<Core::TimeInfo> projectTime, bool takesWholeSeconds)
    : timeInfo (std::move (projectTime)),
      wholeSeconds (takesWholeSeconds)
{
}

TimeCell TimeCellReader::read (const juce::String& text) const
{
    const auto cell = trimmedCell (text);

    if (saysNoTime (cell))
        return {};
    if (timeInfo == nullptr)
        return { {},
                 quotedCell (text) + " can't be placed, because the project has no time reference",
                 EventRowProblemKind::noTimecode };

    const auto milliseconds = subtitleTime (cell);
    auto time = milliseconds ? TimeCell { nearestFrame (*milliseconds), {} } : readTimecode (text);

    if (time.frameIndex == noTime)
        return { {},
                 quotedCell (text) + " is the frame before the picture starts, which a cue list can't hold",
                 EventRowProblemKind::beforePicture };
    if (time.frameIndex && TCToolbox::tcTimeForFrameIndex (*time.frameIndex, *timeInfo).hours > lastHour)
        return { {},
                 quotedCell (text) + " is nearest to a frame behind the last timecode there is",
                 EventRowProblemKind::noTimecode };

    return time;
}

juce::String TimeCellReader::timecode (int frameIndex) const
{
    return TCToolbox::stringFromTCTime (TCToolbox::tcTimeForFrameIndex (frameIndex, *timeInfo),
                                        timeInfo->tcDef.dropFrame);
}

TimeCell TimeCellReader::readTimecode (const juce::String& text) const
{
    const auto label = trimmedText (text);
    const auto time = TCToolbox::tcTimeFromString (
        wholeSeconds && isOfWholeSeconds (trimmedCell (text)) ? label + ":00" : label);

    if (time.invalid)
        return { {},
                 quotedCell (text) + " is not a timecode such as 01:02:03:04",
                 EventRowProblemKind::noTimecode };
    if (! TCToolbox::existsUnder (time, timeInfo->tcDef))
        return withoutFrame (text, time.frames);

    return { TCToolbox::frameIndexForTCTime (time, timeInfo), {} };
}

int TimeCellReader::nearestFrame (double milliseconds) const
{
    const auto& origin = timeInfo->timeOrigin;
    const auto [numerator, denominator] = exactRate (timeInfo->tcDef);
    const auto secondsOfOrigin = (origin.hours * 60.0 + origin.minutes) * 60.0 + origin.seconds;
    const auto frames =
        (milliseconds - secondsOfOrigin * 1000.0) * numerator / (1000.0 * denominator) - origin.frames;

    // No picture has a frame before 00:00:00:00, though a clock that is ahead of the drop-frame count would
    // ask for it.
    const auto earliest = TCToolbox::frameIndexForTCTime ({}, timeInfo);
    constexpr double latest = std::numeric_limits<int>::max();
    return std::max (earliest, static_cast<int> (std::clamp (std::floor (frames + 0.5), -latest, latest)));
}

TimeCell TimeCellReader::withoutFrame (const juce::String& text, int frames) const
{
    const auto& def = timeInfo->tcDef;

    if (frames >= wholeFramesPerSecond (def))
        return { {},
                 quotedCell (text) + " has a frame number that doesn't exist at " + rateInWords (def)
                     + " frames per second",
                 EventRowProblemKind::noTimecode };

    return { {},
             quotedCell (text) + " is a timecode that drop-frame counting leaves out",
             EventRowProblemKind::droppedTimecode };
}

} // namespace ZEP::Overmarks
