// SPDX-License-Identifier: GPL-3.0-only
#include "midiio/MIDIMessageText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace ZEP::MIDIIO
{

namespace
{

using Bytes = std::span<const std::uint8_t>;

constexpr std::uint8_t noteOff = 0x80, noteOn = 0x90, controlChange = 0xB0, programChange = 0xC0;
constexpr std::uint8_t systemExclusive = 0xF0, endOfExclusive = 0xF7;
constexpr std::uint8_t universalRealTime = 0x7F, machineControl = 0x06;
constexpr int channels = 16, values = 128;

/** The messages of a channel: their word, and how many bytes follow the status. */
struct ChannelMessage
{
    std::string_view word;
    std::uint8_t status;
    std::size_t dataBytes;
};

constexpr std::array<ChannelMessage, 4> channelMessages { { { "NoteOn", noteOn, 2 },
                                                            { "NoteOff", noteOff, 2 },
                                                            { "CC", controlChange, 2 },
                                                            { "PC", programChange, 1 } } };
constexpr std::string_view machineControlWord = "MMC";

bool isData (std::uint8_t byte) { return byte < values; }

std::string machineControlText (int command)
{
    static constexpr auto digits = "0123456789ABCDEF";
    return std::string (machineControlWord) + ' ' + digits[command >> 4] + digits[command & 0x0F];
}

std::string channelText (std::string_view word, int channel, int number)
{
    std::string text (word);
    text += ' ';
    text += std::to_string (channel);
    text += ' ';
    text += std::to_string (number);
    return text;
}

/** F0 7F device 06 command, perhaps more, F7. */
std::string textOfExclusive (Bytes message)
{
    constexpr std::size_t shortest = 6;

    if (message.size() < shortest || message.back() != endOfExclusive || message[1] != universalRealTime
        || message[3] != machineControl || ! std::all_of (message.begin() + 1, message.end() - 1, isData))
        return {};

    return machineControlText (message[4]);
}

std::string textOfChannelMessage (const ChannelMessage& kind, Bytes message)
{
    if (message.size() != kind.dataBytes + 1 || ! std::all_of (message.begin() + 1, message.end(), isData))
        return {};

    const int channel = (message[0] & 0x0F) + 1;

    if (kind.status == noteOn && message.back() == 0)
        return channelText ("NoteOff", channel, message[1]);

    return channelText (kind.word, channel, message[1]);
}

std::optional<int> number (std::string_view text, int base)
{
    int value = 0;
    const auto* const end = text.data() + text.size();
    const auto [read, error] = std::from_chars (text.data(), end, value, base);
    return error == std::errc() && read == end ? std::optional (value) : std::nullopt;
}

bool isChannelText (std::string_view text)
{
    const auto first = text.find (' ');
    const auto last = text.rfind (' ');

    if (first == last)
        return false;

    const auto word = text.substr (0, first);
    const auto channel = number (text.substr (first + 1, last - first - 1), 10);
    const auto value = number (text.substr (last + 1), 10);

    return std::any_of (channelMessages.begin(), channelMessages.end(),
                        [word] (const ChannelMessage& kind) { return kind.word == word; })
           && channel.value_or (0) >= 1 && *channel <= channels && value.value_or (-1) >= 0 && *value < values
           && text == channelText (word, *channel, *value);
}

} // namespace

std::string MIDIMessageText::textOf (Bytes message)
{
    if (message.empty())
        return {};
    if (message[0] == systemExclusive)
        return textOfExclusive (message);

    for (const auto& kind : channelMessages)
        if ((message[0] & 0xF0) == kind.status)
            return textOfChannelMessage (kind, message);

    return {};
}

bool MIDIMessageText::isMessageText (std::string_view text)
{
    const auto prefix = std::string (machineControlWord) + ' ';

    if (! text.starts_with (prefix))
        return isChannelText (text);

    const auto command = number (text.substr (prefix.size()), 16);
    return command.value_or (-1) >= 0 && *command < values && text == machineControlText (*command);
}

} // namespace ZEP::MIDIIO
