// SPDX-License-Identifier: GPL-3.0-only
#include "midiio/SpannerMessage.h"

namespace ZEP::MIDIIO
{

namespace
{

constexpr std::string_view header = "\xF0\x7D\x53\x50";
constexpr std::size_t identityPlace = 4, groupPlace = 9, commandPlace = 10, positionPlace = 11,
                      colourPlace = 12, behindColour = 15;

std::uint8_t byteAt (std::string_view bytes, std::size_t place)
{
    return static_cast<std::uint8_t> (bytes[place]);
}

/** A byte of seven bits as a part of one. */
float partAt (std::string_view bytes, std::size_t place)
{
    constexpr double whole = 127.0;
    return static_cast<float> (byteAt (bytes, place) / whole);
}

std::uint32_t identityIn (std::string_view bytes)
{
    constexpr std::uint32_t digit = 128;
    std::uint32_t identity = 0;

    for (auto place = identityPlace; place < groupPlace; ++place)
        identity = identity * digit + byteAt (bytes, place);

    return identity;
}

SpannerMessage::Command commandOf (std::uint8_t code)
{
    constexpr std::uint8_t creates = 0, updates = 2;

    if (code == creates)
        return SpannerMessage::Command::create;

    return code == updates ? SpannerMessage::Command::update : SpannerMessage::Command::removeAll;
}

/** How many bytes a command reads, from the first one of the message. */
std::size_t lengthReadBy (SpannerMessage::Command command)
{
    switch (command)
    {
        case SpannerMessage::Command::create: return behindColour;
        case SpannerMessage::Command::update: return colourPlace;
        case SpannerMessage::Command::removeAll: break;
    }

    return positionPlace;
}

} // namespace

bool SpannerMessage::hasHeader (std::string_view bytes) { return bytes.starts_with (header); }

std::optional<SpannerMessage> SpannerMessage::fromBytes (std::string_view bytes)
{
    if (bytes.size() < positionPlace)
        return {};

    SpannerMessage message;
    message.command = commandOf (byteAt (bytes, commandPlace));

    if (bytes.size() < lengthReadBy (message.command))
        return {};

    message.lineID = identityIn (bytes);
    message.group = byteAt (bytes, groupPlace);

    if (message.command != Command::removeAll)
        message.position = partAt (bytes, positionPlace);

    if (message.command == Command::create)
    {
        message.red = partAt (bytes, colourPlace);
        message.green = partAt (bytes, colourPlace + 1);
        message.blue = partAt (bytes, colourPlace + 2);
    }

    return message;
}

} // namespace ZEP::MIDIIO
