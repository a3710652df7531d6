// SPDX-License-Identifier: GPL-3.0-only
#include "core/timecode/TCToolbox.h"

#include "core/system/Saturated.h"
#include "core/timecode/FrameCounting.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

namespace ZEP::Core
{

namespace
{

/* The rates of the trade. A drop-frame rate stands behind its plain twin, whose fraction it shares. */
struct NamedRate
{
    std::string_view name;
    _TCDef definition;
};

constexpr _TCDef rate (std::uint32_t numerator, std::uint32_t denominator, std::uint8_t frames,
                       bool drop = false)
{
    return { .dropFrame = drop,
             .frameRateNumerator = numerator,
             .frameRateDenominator = denominator,
             .framesPerSecond = frames,
             .undefined = false };
}

constexpr std::array<NamedRate, 12> namedRates { {
    { "23.976", rate (24000, 1001, 24) },
    { "24", rate (24, 1, 24) },
    { "25", rate (25, 1, 25) },
    { "29.97", rate (30000, 1001, 30) },
    { "29.97df", rate (30000, 1001, 30, true) },
    { "30", rate (30, 1, 30) },
    { "30df", rate (30, 1, 30, true) },
    { "48", rate (48, 1, 48) },
    { "50", rate (50, 1, 50) },
    { "59.94", rate (60000, 1001, 60) },
    { "59.94df", rate (60000, 1001, 60, true) },
    { "60", rate (60, 1, 60) },
} };

struct CodedRate
{
    float fps;
    FrameRateCode code;
    FrameRateCode dropFrameCode;
};

constexpr std::array<CodedRate, 9> codedRates { {
    { 23.976F, FrameRate23976, FrameRate23976 },
    { 24.0F, FrameRate24, FrameRate24 },
    { 25.0F, FrameRate25, FrameRate25 },
    { 29.97F, FrameRate2997, FrameRate2997Drop },
    { 30.0F, FrameRate30, FrameRate30Drop },
    { 48.0F, FrameRate48, FrameRate48 },
    { 50.0F, FrameRate50, FrameRate50 },
    { 59.94F, FrameRate5994, FrameRate5994Drop },
    { 60.0F, FrameRate60, FrameRate60 },
} };

constexpr bool isWhiteSpace (char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr bool isDigit (char c) { return c >= '0' && c <= '9'; }

std::string_view withoutSurroundingSpace (const juce::String& text)
{
    std::string_view view (text.toRawUTF8());

    while (! view.empty() && isWhiteSpace (view.front()))
        view.remove_prefix (1);

    while (! view.empty() && isWhiteSpace (view.back()))
        view.remove_suffix (1);

    return view;
}

/* Whether the text has the form of "00:00:00:00" or "00:00:00;00". */
bool hasTimecodeForm (std::string_view text)
{
    constexpr std::string_view form = "00:00:00:00";

    if (text.size() != form.size())
        return false;

    for (std::size_t i = 0; i < form.size(); ++i)
    {
        if (form[i] == '0' ? ! isDigit (text[i]) : text[i] != form[i] && ! (i == 8 && text[i] == ';'))
            return false;
    }

    return true;
}

char* writeTwoDigits (char* destination, std::int32_t value)
{
    if (value > 99)
        return std::to_chars (destination, destination + 10, value).ptr;

    *destination++ = static_cast<char> ('0' + value / 10);
    *destination++ = static_cast<char> ('0' + value % 10);
    return destination;
}

/* A time with a negative value as the clock of the day before would show it. */
_TCTime foldedIntoDay (_TCTime time)
{
    const auto seconds = (std::int64_t { time.hours } * 60 + time.minutes) * 60 + time.seconds;
    const auto ofDay = static_cast<std::int32_t> (FrameCounting::floorRemainder (seconds, 24 * 60 * 60));

    time.hours = ofDay / 3600;
    time.minutes = ofDay / 60 % 60;
    time.seconds = ofDay % 60;
    time.frames = std::max (time.frames, 0); // how many frames to borrow from, only a definition knows
    return time;
}

} // namespace

_TCTime TCToolbox::tcTimeFromString (juce::String text)
{
    const auto label = withoutSurroundingSpace (text);
    _TCTime time;

    if (hasTimecodeForm (label))
    {
        const auto field = [label] (std::size_t place)
        { return (label[place] - '0') * 10 + (label[place + 1] - '0'); };

        if (field (3) < 60 && field (6) < 60)
        {
            time.hours = field (0);
            time.minutes = field (3);
            time.seconds = field (6);
            time.frames = field (9);
            return time;
        }
    }

    time.invalid = true;
    return time;
}

juce::String TCToolbox::stringFromTCTime (_TCTime time, bool dropFrame)
{
    std::array<char, 48> text {};
    const auto length = writeTCTime (text.data(), time, dropFrame);
    return { juce::CharPointer_UTF8 (text.data()), juce::CharPointer_UTF8 (text.data() + length) };
}

std::size_t TCToolbox::writeTCTime (char* destination, _TCTime time, bool dropFrame)
{
    if (time.hours < 0 || time.minutes < 0 || time.seconds < 0 || time.frames < 0)
        time = foldedIntoDay (time);

    auto* end = writeTwoDigits (destination, time.hours);
    *end++ = ':';
    end = writeTwoDigits (end, time.minutes);
    *end++ = ':';
    end = writeTwoDigits (end, time.seconds);
    *end++ = dropFrame ? ';' : ':';
    end = writeTwoDigits (end, time.frames);
    *end = 0;
    return static_cast<std::size_t> (end - destination);
}

_TCTime TCToolbox::addFramesAndTCTimes (long frames, _TCTime time, _TCDef def)
{
    // No sum of this size fits into the fields of a timecode, whatever the rate.
    constexpr std::int64_t farOff = std::int64_t { 1 } << 61;

    const FrameCounting counting (def);
    const auto offset = std::clamp<std::int64_t> (frames, -farOff, farOff);
    auto result = counting.timeOf (counting.framesOf (time) + offset);
    result.invalid = time.invalid;
    return result;
}

_TCTime TCToolbox::subtractTCTimes (_TCTime from, _TCTime to, _TCDef def, bool* flag)
{
    const FrameCounting counting (def);
    const auto span = counting.framesOf (to) - counting.framesOf (from);

    if (flag != nullptr)
        *flag = span < 0;

    auto result = counting.timeOf (span);
    result.invalid = from.invalid || to.invalid;
    return result;
}

int TCToolbox::convertToAbsoluteFrames (_TCTime time, _TCDef def)
{
    return saturated<int> (FrameCounting (def).framesOf (time));
}

_TCTime TCToolbox::relativeTime (_TCTime time, std::shared_ptr<TimeInfo> info)
{
    return info != nullptr ? subtractTCTimes (info->timeOrigin, time, info->tcDef, nullptr) : time;
}

int TCToolbox::frameIndexForTCTime (_TCTime time, const std::shared_ptr<TimeInfo>& info)
{
    if (info == nullptr)
        return convertToAbsoluteFrames (time, _TCDef {});

    const FrameCounting counting (info->tcDef);
    return saturated<int> (counting.framesOf (time) - counting.framesOf (info->timeOrigin));
}

_TCTime TCToolbox::tcTimeForFrameIndex (int index, const TimeInfo& info)
{
    return addFramesAndTCTimes (index, info.timeOrigin, info.tcDef);
}

bool TCToolbox::existsUnder (_TCTime time, const _TCDef& def)
{
    const auto within = [] (std::int64_t value, std::int64_t end) { return value >= 0 && value < end; };
    const FrameCounting counting (def);

    if (time.invalid || ! within (time.minutes, 60) || ! within (time.seconds, 60)
        || ! within (time.frames, counting.perSecond))
        return false;

    const auto leftOut = time.minutes % 10 != 0 && time.seconds == 0 && time.frames < counting.dropped;
    return ! leftOut;
}

FrameRateCode TCToolbox::timecodeFramerateFromFPS (float fps, bool dropFrame)
{
    for (const auto& coded : codedRates)
        if (std::abs (fps - coded.fps) < 0.01F)
            return dropFrame ? coded.dropFrameCode : coded.code;

    return FrameRateUnsupported;
}

std::optional<_TCDef> TCToolbox::tcDefForRateName (const juce::String& name)
{
    const auto wanted = name.trim().toLowerCase();

    for (const auto& named : namedRates)
        if (named.name == wanted.toRawUTF8())
            return named.definition;

    return std::nullopt;
}

juce::String TCToolbox::rateNameForTCDef (const _TCDef& def)
{
    if (def.undefined || def.frameRateDenominator == 0)
        return {};

    const auto isSame = [&def] (const _TCDef& other)
    {
        return def.framesPerSecond == other.framesPerSecond
               && std::uint64_t { def.frameRateNumerator } * other.frameRateDenominator
                      == std::uint64_t { other.frameRateNumerator } * def.frameRateDenominator;
    };
    juce::String name;

    for (const auto& named : namedRates)
        if (isSame (named.definition) && (def.dropFrame || ! named.definition.dropFrame))
            name = juce::String (named.name.data(), named.name.size());

    return name;
}

const std::vector<juce::String>& TCToolbox::rateNames()
{
    static const auto names = []
    {
        std::vector<juce::String> list;

        for (const auto& named : namedRates)
            list.emplace_back (named.name.data(), named.name.size());

        return list;
    }();

    return names;
}

} // namespace ZEP::Core
