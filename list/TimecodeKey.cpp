// SPDX-License-Identifier: GPL-3.0-only
#include "list/TimecodeKey.h"

#include "core/timecode/TCToolbox.h"

#include <algorithm>

namespace ZEP::Overmarks
{

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

bool hasTwoDigits (std::int32_t number) { return number >= 0 && number <= 99; }

/** Of its two digits. */
std::uint64_t rankOf (std::int32_t number)
{
    const auto value = static_cast<std::uint64_t> (number);
    return (value / 10 + rankOf ('0')) << bitsOfCharacter | (value % 10 + rankOf ('0'));
}

} // namespace

TimecodeKey::TimecodeKey (std::string_view timecode) noexcept
{
    const auto length = std::min (timecode.size(), 2 * charactersInHalf);

    for (std::size_t i = 0; i < length; ++i)
        characters[i / charactersInHalf] |= rankOf (timecode[i])
                                            << (64 - bitsOfCharacter * (i % charactersInHalf + 1));
}

TimecodeKey TimecodeKey::keyAt (int frameIndex, const Event& event,
                                std::size_t (Event::*writeText) (char*) const)
{
    const auto& info = event.getTimeInfo();

    if (info != nullptr && frameIndex != -1)
    {
        const auto time = TCToolbox::tcTimeForFrameIndex (frameIndex, *info);

        if (hasTwoDigits (time.hours) && hasTwoDigits (time.minutes) && hasTwoDigits (time.seconds)
            && hasTwoDigits (time.frames))
        {
            TimecodeKey key;
            key.characters.front() =
                rankOf (time.hours) << 56 | rankOf (':') << 52 | rankOf (time.minutes) << 44
                | rankOf (':') << 40 | rankOf (time.seconds) << 32
                | rankOf (info->tcDef.dropFrame ? ';' : ':') << 28 | rankOf (time.frames) << 20;
            return key;
        }
    }

    std::array<char, TCToolbox::longestTimecode> text;
    return TimecodeKey ({ text.data(), (event.*writeText) (text.data()) });
}

TimecodeKey TimecodeKey::startOf (const Event& event)
{
    return keyAt (event.getInPointFrameIndex(), event, &Event::writeStartTC);
}

TimecodeKey TimecodeKey::endOf (const Event& event)
{
    return keyAt (event.getEndFrameIndex(), event, &Event::writeEndTC);
}

} // namespace ZEP::Overmarks
