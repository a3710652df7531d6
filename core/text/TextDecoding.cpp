// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/TextDecoding.h"

#include "core/text/MacOSRomanEncoding.h"

#include <Poco/Windows1252Encoding.h>
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string>

namespace ZEP::Core
{

namespace
{

constexpr char32_t replacementCharacter = 0xFFFD;

constexpr std::uint8_t byteAt (std::string_view bytes, std::size_t place)
{
    return static_cast<std::uint8_t> (bytes[place]);
}

/* How many of the next bytes are ASCII without a zero, counted by eights. */
std::size_t asciiBlockLength (std::string_view bytes, std::size_t place)
{
    constexpr std::uint64_t low = 0x0101010101010101U;
    constexpr std::uint64_t high = 0x8080808080808080U;
    const auto start = place;

    for (; place + 8 <= bytes.size(); place += 8)
    {
        std::uint64_t block = 0;
        std::memcpy (&block, bytes.data() + place, sizeof (block));

        // A byte above 127 has its top bit set; taking 1 from a zero byte sets it.
        if (((block | (block - low)) & high) != 0)
            break;
    }

    return place - start;
}

/* UTF-8 by its first byte: how many bytes follow, and the range of the second byte, which keeps overlong
   forms, surrogates and what lies above U+10FFFF out. The further bytes are 80 to BF. */
struct LeadByte
{
    std::uint8_t following;
    std::uint8_t secondFrom;
    std::uint8_t secondTo;
};

constexpr LeadByte leadByte (std::uint8_t byte)
{
    if (byte >= 0xC2 && byte <= 0xDF)
        return { 1, 0x80, 0xBF };
    if (byte >= 0xE0 && byte <= 0xEF)
        return { 2, static_cast<std::uint8_t> (byte == 0xE0 ? 0xA0 : 0x80),
                 static_cast<std::uint8_t> (byte == 0xED ? 0x9F : 0xBF) };
    if (byte >= 0xF0 && byte <= 0xF4)
        return { 3, static_cast<std::uint8_t> (byte == 0xF0 ? 0x90 : 0x80),
                 static_cast<std::uint8_t> (byte == 0xF4 ? 0x8F : 0xBF) };

    return { 0, 0, 0 };
}

constexpr auto leadBytes = []
{
    std::array<LeadByte, 256> all {};

    for (std::size_t byte = 0; byte < all.size(); ++byte)
        all[byte] = leadByte (static_cast<std::uint8_t> (byte));

    return all;
}();

struct Sequence
{
    std::size_t length;
    bool valid;
};

/* The sequence at `place`, whose byte is above 127. Of a bad one, as many bytes as could still have begun
   a good one. */
Sequence sequenceAt (std::string_view bytes, std::size_t place)
{
    const auto lead = leadBytes[byteAt (bytes, place)];

    if (lead.following == 0)
        return { 1, false };

    for (std::size_t i = 1; i <= lead.following; ++i)
    {
        const auto byte = place + i < bytes.size() ? byteAt (bytes, place + i) : std::uint8_t { 0 };

        if (byte < (i == 1 ? lead.secondFrom : 0x80) || byte > (i == 1 ? lead.secondTo : 0xBF))
            return { i, false };
    }

    return { std::size_t { 1 } + lead.following, true };
}

void appendCharacter (std::string& text, char32_t character)
{
    const auto bits = [character] (int shift, unsigned mark)
    { return static_cast<char> (mark | ((character >> shift) & 0x3FU)); };

    if (character < 0x80)
    {
        text += static_cast<char> (character);
    }
    else if (character < 0x800)
    {
        text += { static_cast<char> (0xC0U | (character >> 6)), bits (0, 0x80) };
    }
    else if (character < 0x10000)
    {
        text += { static_cast<char> (0xE0U | (character >> 12)), bits (6, 0x80), bits (0, 0x80) };
    }
    else
    {
        text += { static_cast<char> (0xF0U | (character >> 18)), bits (12, 0x80), bits (6, 0x80),
                  bits (0, 0x80) };
    }
}

using HighHalf = std::array<char32_t, 128>;

HighHalf highHalfOf (const Poco::TextEncoding& encoding)
{
    HighHalf characters {};

    for (std::size_t i = 0; i < characters.size(); ++i)
    {
        const auto character = encoding.characterMap()[128 + i];
        characters[i] = character >= 0 ? static_cast<char32_t> (character) : replacementCharacter;
    }

    return characters;
}

const HighHalf& highHalfOf (TextEncoding encoding)
{
    static const auto macOSRoman = highHalfOf (macOSRomanEncoding());
    static const auto windows1252 = highHalfOf (Poco::Windows1252Encoding());
    static const auto latin1 = []
    {
        HighHalf characters {};

        for (std::size_t i = 0; i < characters.size(); ++i)
            characters[i] = static_cast<char32_t> (128 + i);

        return characters;
    }();

    if (encoding == TextEncodingMacOSRoman)
        return macOSRoman;

    return encoding == TextEncodingLatin1 ? latin1 : windows1252;
}

constexpr bool isLeadSurrogate (char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }

constexpr bool isTrailSurrogate (char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/* The other half holds no zero; of this one all, or three quarters in a text long enough to tell. */
constexpr bool isHalfOfZeros (std::size_t length, std::size_t zeros, std::size_t zerosOfOtherHalf)
{
    const auto units = length / 2;
    return units > 0 && length % 2 == 0 && zerosOfOtherHalf == 0
           && (zeros == units || (units >= 16 && zeros * 4 >= units * 3));
}

} // namespace

ByteSurvey::ByteSurvey (std::string_view bytes) noexcept : length (bytes.size())
{
    std::size_t place = 0;

    while (place < length && isUTF8)
    {
        place += asciiBlockLength (bytes, place);

        for (const auto end = std::min (length, place + 8); place < end && isUTF8;)
        {
            const auto byte = byteAt (bytes, place);

            if (byte >= 0x80)
            {
                const auto sequence = sequenceAt (bytes, place);
                hasByteAbove127 = true;
                isUTF8 = sequence.valid;
                place += sequence.length;
                continue;
            }

            if (byte == 0)
                ++(place % 2 == 0 ? zerosAtEvenPlaces : zerosAtOddPlaces);

            ++place;
        }
    }

    // What isn't UTF-8 any more has only its zeros left to tell.
    for (; place < length; ++place)
    {
        const std::size_t zero = bytes[place] == 0 ? 1 : 0;
        zerosAtEvenPlaces += place % 2 == 0 ? zero : 0;
        zerosAtOddPlaces += place % 2 == 0 ? 0 : zero;
    }
}

bool ByteSurvey::looksLikeLittleEndianUTF16() const noexcept
{
    return isHalfOfZeros (length, zerosAtOddPlaces, zerosAtEvenPlaces);
}

bool ByteSurvey::looksLikeBigEndianUTF16() const noexcept
{
    return isHalfOfZeros (length, zerosAtEvenPlaces, zerosAtOddPlaces);
}

bool isPlainASCII (std::string_view bytes) noexcept
{
    if (bytes.size() < 8)
        return std::all_of (bytes.begin(), bytes.end(),
                            [] (char byte) { return static_cast<signed char> (byte) > 0; });

    // The last eight may overlap those before.
    return asciiBlockLength (bytes, 0) + 8 > bytes.size() && asciiBlockLength (bytes, bytes.size() - 8) == 8;
}

juce::String textFromStrictUTF8 (std::string_view bytes)
{
    if (bytes.empty())
        return {};

    return { juce::CharPointer_UTF8 (bytes.data()), juce::CharPointer_UTF8 (bytes.data() + bytes.size()) };
}

juce::String decodedUTF8 (std::string_view bytes)
{
    std::string text;
    text.reserve (bytes.size());

    for (std::size_t place = 0; place < bytes.size();)
    {
        const auto byte = byteAt (bytes, place);
        const auto sequence = byte < 0x80 ? Sequence { 1, true } : sequenceAt (bytes, place);

        if (! sequence.valid)
            appendCharacter (text, replacementCharacter);
        else if (byte != 0)
            text += bytes.substr (place, sequence.length);

        place += sequence.length;
    }

    return textFromStrictUTF8 (text);
}

juce::String decodedUTF16 (std::string_view bytes, bool bigEndian)
{
    const auto unitAt = [bytes, bigEndian] (std::size_t place) -> char32_t
    {
        const unsigned first = byteAt (bytes, place);
        const unsigned second = byteAt (bytes, place + 1);
        return bigEndian ? first << 8U | second : second << 8U | first;
    };

    std::string text;
    text.reserve (bytes.size());
    std::size_t place = 0;

    for (; place + 2 <= bytes.size(); place += 2)
    {
        auto character = unitAt (place);

        if (isLeadSurrogate (character) && place + 4 <= bytes.size() && isTrailSurrogate (unitAt (place + 2)))
        {
            place += 2;
            character = 0x10000 + ((character - 0xD800) << 10U) + (unitAt (place) - 0xDC00);
        }
        else if (isLeadSurrogate (character) || isTrailSurrogate (character))
        {
            character = replacementCharacter;
        }

        if (character != 0)
            appendCharacter (text, character);
    }

    if (place < bytes.size() && bytes.back() != 0)
        appendCharacter (text, replacementCharacter);

    return textFromStrictUTF8 (text);
}

juce::String decodedSingleByteText (std::string_view bytes, TextEncoding encoding)
{
    const auto& highHalf = highHalfOf (encoding);
    std::string text;
    text.reserve (bytes.size());

    for (const auto c : bytes)
    {
        const auto byte = static_cast<std::uint8_t> (c);

        if (byte >= 0x80)
            appendCharacter (text, highHalf[byte - 0x80U]);
        else if (byte != 0)
            text += c;
    }

    return textFromStrictUTF8 (text);
}

} // namespace ZEP::Core
