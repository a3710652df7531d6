// SPDX-License-Identifier: GPL-3.0-only
#include "import/EBUSubtitleBlocks.h"

#include <cstdint>

namespace ZEP::Overmarks::EBUSubtitles
{
namespace
{

/** Where a field stands in its block. */
struct Field
{
    std::size_t offset;
    std::size_t length;
};

constexpr Field kDFC { 3, 3 };
constexpr Field kTNB { 238, 5 };
constexpr Field kTCI { 5, 4 };
constexpr Field kTCO { 9, 4 };
constexpr Field kTF { 16, 112 };

constexpr std::string_view kNameOfFormat = "STL";

static_assert (kTF.offset + kTF.length == kLengthOfTTI);
static_assert (kTNB.offset + kTNB.length <= kLengthOfGSI);

template <std::size_t length>
std::string_view bytesOf (const std::array<char, length>& block, Field field)
{
    return { block.data() + field.offset, field.length };
}

bool isSpace (char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); }

/** The number that a text begins with, white space in front of it passed over; 0 if there is none. */
int leadingNumber (std::string_view text)
{
    while (! text.empty() && isSpace (text.front()))
        text.remove_prefix (1);

    int number = 0;
    for (const auto byte : text)
    {
        if (byte < '0' || byte > '9')
            break;
        number = number * 10 + (byte - '0');
    }
    return number;
}

Core::_TCTime timeCodeOf (std::string_view fourBytes)
{
    const auto number = [fourBytes] (std::size_t index)
    { return std::int32_t { static_cast<std::uint8_t> (fourBytes[index]) }; };

    Core::_TCTime time;
    time.hours = number (0);
    time.minutes = number (1);
    time.seconds = number (2);
    time.frames = number (3);
    time.subFrames = 0;
    time.subFramesPerFrame = 80;
    time.invalid = false;
    return time;
}

} // namespace

bool isDiskFormatCode (std::string_view firstBytes)
{
    return firstBytes.size() >= kDFC.offset + kDFC.length
           && firstBytes.substr (kDFC.offset, kDFC.length) == kNameOfFormat;
}

int totalNumberOfBlocks (const GSI& head) { return leadingNumber (bytesOf (head, kTNB)); }

Core::_TCTime timeCodeIn (const TTI& block) { return timeCodeOf (bytesOf (block, kTCI)); }

Core::_TCTime timeCodeOut (const TTI& block) { return timeCodeOf (bytesOf (block, kTCO)); }

std::string_view textField (const TTI& block) { return bytesOf (block, kTF); }

} // namespace ZEP::Overmarks::EBUSubtitles
