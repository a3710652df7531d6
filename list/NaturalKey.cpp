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
    sign = 2,       // and the code of ASCII on top
    farSign = 0x82, // beyond ASCII, its code behind it
    digitsWithZero, // a run that begins with 0 goes by its digits, as behind a decimal point, and before any other
    digits,         // another run goes by its value: its length is on top
    manyDigits = 0xb0, // a longer one: its length stands behind this
    letter,            // and its place in the alphabet on top
    farLetter = 0xff   // beyond ASCII, its code behind it
};

constexpr char endOfDigits = 1; // lower than any digit
constexpr juce::juce_wchar endOfASCII = 0x80;

void append (std::string& key, unsigned byte) { key += static_cast<char> (byte); }

/** In UTF-8, whose bytes compare as the codes do. */
void appendCode (std::string& key, juce::juce_wchar code)
{
    key += juce::String::charToString (code).toRawUTF8();
}

/** How many digits a number has; the more, the larger it is. */
void appendLength (std::string& key, std::size_t length)
{
    if (length < manyDigits - digits)
    {
        append (key, digits + static_cast<unsigned> (length));
        return;
    }

    append (key, manyDigits);

    for (int shift = 60; shift >= 0; shift -= 4)
        append (key, (static_cast<unsigned> (length >> shift) & 0xf) + 1);
}

bool isDigit (const char* place) { return *place >= '0' && *place <= '9'; }

/** Two in a byte, an odd one first: runs of one length go by their value, and fewer bytes are sooner compared. */
void appendPairs (std::string& key, const char* begin, const char* end)
{
    const auto valueOf = [] (char digit) { return static_cast<unsigned> (digit - '0'); };

    if ((end - begin) % 2 != 0)
        append (key, valueOf (*begin++) + 1);

    for (; begin != end; begin += 2)
        append (key, 10 * valueOf (begin[0]) + valueOf (begin[1]) + 1);
}

/** @returns the place behind the run */
const char* appendDigits (std::string& key, const char* begin)
{
    auto end = begin;

    while (isDigit (end))
        ++end;

    const auto length = static_cast<std::size_t> (end - begin);

    if (*begin == '0')
    {
        append (key, digitsWithZero);
        key.append (begin, length);
        key += endOfDigits;
    }
    else
    {
        appendLength (key, length);
        appendPairs (key, begin, end);
    }

    return end;
}

void appendASCII (std::string& key, unsigned character)
{
    const bool isSmall = character >= 'a' && character <= 'z', isLarge = character >= 'A' && character <= 'Z';
    append (key, isSmall ? character - 'a' + letter : isLarge ? character - 'A' + letter : character + sign);
}

void appendCharacter (std::string& key, juce::juce_wchar character)
{
    if (character < endOfASCII)
    {
        appendASCII (key, static_cast<unsigned> (character));
        return;
    }

    const auto code = CharacterFunctions::toUpperCase (character);

    if (code < endOfASCII)
    {
        appendASCII (key, static_cast<unsigned> (code));
        return;
    }

    append (key, CharacterFunctions::isLetterOrDigit (code) ? farLetter : farSign);
    appendCode (key, code);
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
