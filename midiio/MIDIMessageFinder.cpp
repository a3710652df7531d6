// SPDX-License-Identifier: GPL-3.0-only
#include "midiio/MIDIMessageFinder.h"

#include <utility>

namespace ZEP::MIDIIO
{

namespace
{

constexpr std::uint8_t firstStatus = 0x80, exclusive = 0xF0, endOfExclusive = 0xF7, firstRealTime = 0xF8;

/** How many bytes follow the status of a message that is not exclusive. */
std::size_t dataBytesOf (std::uint8_t status)
{
    constexpr std::uint8_t programChange = 0xC0, channelPressure = 0xD0;
    constexpr std::uint8_t quarterFrame = 0xF1, songPosition = 0xF2, songSelect = 0xF3;

    if (status < exclusive)
    {
        const int kind = status & 0xF0;
        return kind == programChange || kind == channelPressure ? 1 : 2;
    }

    if (status == songPosition)
        return 2;

    return status == quarterFrame || status == songSelect ? 1 : 0;
}

} // namespace

std::span<const std::uint8_t> MIDIMessageFinder::next()
{
    while (! bytes.empty())
    {
        const auto byte = bytes.front();
        bytes = bytes.subspan (1);

        if (byte >= firstRealTime)
            continue;
        if (byte >= firstStatus ? takeStatus (byte) : takeData (byte))
            return { message.data(), std::exchange (length, 0) };
    }

    return {};
}

void MIDIMessageFinder::begin (std::uint8_t status)
{
    message[0] = status;
    length = 1;
    isTooLong = false;
}

bool MIDIMessageFinder::takeStatus (std::uint8_t status)
{
    if (status == endOfExclusive)
        return finishExclusive();

    begin (status);
    runningStatus = status < exclusive ? status : 0;
    return isComplete();
}

bool MIDIMessageFinder::finishExclusive()
{
    const bool isWhole = length > 0 && message[0] == exclusive && ! isTooLong && length < longestExclusive;
    runningStatus = 0;

    if (isWhole)
        message[length++] = endOfExclusive;
    else
        length = 0;

    return isWhole;
}

bool MIDIMessageFinder::takeData (std::uint8_t data)
{
    if (length == 0)
    {
        if (runningStatus == 0)
            return false;

        begin (runningStatus);
    }

    if (length == longestExclusive)
        isTooLong = true;
    else
        message[length++] = data;

    return isComplete();
}

bool MIDIMessageFinder::isComplete() const
{
    return message[0] != exclusive && length == 1 + dataBytesOf (message[0]);
}

} // namespace ZEP::MIDIIO
