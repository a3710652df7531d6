// SPDX-License-Identifier: GPL-3.0-only
#include "list/TimecodeKey.h"

#include "core/timecode/TCToolbox.h"

#include <algorithm>
#include <array>

namespace ZEP::Overmarks
{

using ZEP::Core::FrameCounting;
using ZEP::Core::TCToolbox;

namespace
{

constexpr std::size_t bitsOfCharacter = 4;
constexpr std::size_t charactersInHalf = 64 / bitsOfCharacter;

/** In the order of ASCII, the end of the text lowest. */
constexpr std::uint64_t rankOf (char character)
{
    switch (character)
    {
        case '-': return 1;
        case ':': return 12;
        case ';': return 13;
        default: return static_cast<std::uint64_t> (character - '0') + 2;
    }
}

constexpr int numbersOfTwoDigits = 100;

/** Of the two digits of each number. */
constexpr auto ranksOfNumbers = []
{
    std::array<std::uint8_t, numbersOfTwoDigits> ranks {};

    for (int number = 0; number < numbersOfTwoDigits; ++number)
        ranks[static_cast<std::size_t> (number)] =
            static_cast<std::uint8_t> (rankOf (static_cast<char> ('0' + number / 10)) << bitsOfCharacter
                                       | rankOf (static_cast<char> ('0' + number % 10)));

    return ranks;
}();

std::uint64_t rankOf (std::int32_t number) { return ranksOfNumbers[static_cast<std::size_t> (number)]; }

bool hasTwoDigits (std::int32_t number) { return number >= 0 && number < numbersOfTwoDigits; }

} // namespace

TimecodeKey::TimecodeKey (std::string_view timecode) noexcept
{
    const auto length = std::min (timecode.size(), 2 * charactersInHalf);

    for (std::size_t i = 0; i < length; ++i)
        (i < charactersInHalf ? start : rest) |= rankOf (timecode[i])
                                                 << (64 - bitsOfCharacter * (i % charactersInHalf + 1));
}

TimecodeKey TimecodeKeys::keyAt (int frameIndex, const Event& event,
                                 std::size_t (Event::*writeText) (char*) const)
{
    const auto* const info = event.getTimeInfo().get();

    if (info != known && info != nullptr)
    {
        known = info;
        counting = FrameCounting (info->tcDef);
        origin = counting.framesOf (info->timeOrigin);
        separators =
            rankOf (':') << 52 | rankOf (':') << 40 | rankOf (info->tcDef.dropFrame ? ';' : ':') << 28;
    }

    if (info != nullptr && frameIndex != -1)
    {
        const auto time = counting.timeOf (origin + frameIndex);

        if (hasTwoDigits (time.hours) && hasTwoDigits (time.minutes) && hasTwoDigits (time.seconds)
            && hasTwoDigits (time.frames))
        {
            TimecodeKey key;
            key.start = rankOf (time.hours) << 56 | rankOf (time.minutes) << 44 | rankOf (time.seconds) << 32
                        | rankOf (time.frames) << 20 | separators;
            return key;
        }
    }

    std::array<char, TCToolbox::longestTimecode> text;
    return TimecodeKey ({ text.data(), (event.*writeText) (text.data()) });
}

TimecodeKey TimecodeKeys::startOf (const Event& event)
{
    return keyAt (event.getInPointFrameIndex(), event, &Event::writeStartTC);
}

TimecodeKey TimecodeKeys::endOf (const Event& event)
{
    return keyAt (event.getEndFrameIndex(), event, &Event::writeEndTC);
}

} // namespace ZEP::Overmarks
