// SPDX-License-Identifier: GPL-3.0-only
#include "list/NaturalKey.h"

#include <algorithm>

namespace ZEP::Overmarks
{

using juce::CharacterFunctions;

namespace
{

/* Ranks of what a text is made of, lowest first. The end of the text has none: a text goes before all that begin with it. */
enum Rank : unsigned char
{
    blanks = 1,
    sign = 2,       // of ASCII, its code behind this
    farSign = 0x82, // beyond ASCII, its code behind it
    digitsWithZero, // a run that begins with 0 goes by its digits, as behind a decimal point, and before any other
    digits,         // another run goes by its value: its length stands behind this
    letter,         // of ASCII, its code behind this
    farLetter = 0xff // beyond ASCII, its code behind it
};

constexpr char endOfDigits = 1; // lower than any digit
constexpr juce::juce_wchar endOfASCII = 0x80;

void append (std::string& key, unsigned byte) { key += static_cast<char> (byte); }

/** Most significant byte first, so that codes compare as numbers. */
void appendCode (std::string& key, juce::juce_wchar code)
{
    for (int shift = 16; shift >= 0; shift -= 8)
        append (key, (static_cast<std::uint32_t> (code) >> shift) & 0xff);
}

/** A length of any size: as many bytes as it takes, their number in front. */
void appendLength (std::string& key, std::size_t length)
{
    constexpr std::size_t largestShort = 0xf0;

    if (length <= largestShort)
    {
        append (key, static_cast<unsigned> (length));
        return;
    }

    append (key, 0xff);

    for (int shift = 56; shift >= 0; shift -= 8)
        append (key, static_cast<unsigned> (length >> shift) & 0xff);
}

bool isDigit (const char* place) { return *place >= '0' && *place <= '9'; }

/** @returns the place behind the run */
const char* appendDigits (std::string& key, const char* begin)
{
    auto end = begin;

    while (isDigit (end))
        ++end;

    const auto length = static_cast<std::size_t> (end - begin);
    append (key, *begin == '0' ? digitsWithZero : digits);

    if (*begin != '0')
        appendLength (key, length);

    key.append (begin, length);

    if (*begin == '0')
        key += endOfDigits;

    return end;
}

void appendCharacter (std::string& key, juce::juce_wchar character)
{
    const auto code = CharacterFunctions::toUpperCase (character);
    const bool isLetter = CharacterFunctions::isLetterOrDigit (code);

    if (code >= endOfASCII)
    {
        append (key, isLetter ? farLetter : farSign);
        appendCode (key, code);
    }
    else
    {
        append (key, static_cast<unsigned> (code) + (isLetter ? letter : sign));
    }
}

} // namespace

std::string naturalKeyOf (const juce::String& text)
{
    std::string key;
    auto place = text.getCharPointer().findEndOfWhitespace();

    while (! place.isEmpty())
    {
        if (place.isWhitespace())
        {
            append (key, blanks);
            place = place.findEndOfWhitespace();
        }
        else if (isDigit (place.getAddress()))
            place = juce::CharPointer_UTF8 (appendDigits (key, place.getAddress()));
        else
            appendCharacter (key, place.getAndAdvance());
    }

    return key;
}

} // namespace ZEP::Overmarks
