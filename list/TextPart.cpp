// SPDX-License-Identifier: GPL-3.0-only
#include "list/TextPart.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace ZEP::Overmarks
{

namespace
{

/** How seldom a byte stands in dialogue, roughly: no higher for one that is found in most lines. */
std::size_t rarity (char byte)
{
    constexpr std::string_view commonestFirst { " etaoinsrhldcumpgfyvbwkjxqz" };
    constexpr unsigned char firstOfSeveral =
        0xc0; // every letter of a script begins with one of a few such bytes
    const bool isCommon = static_cast<unsigned char> (byte) >= firstOfSeveral;
    return isCommon ? 0 : std::min (commonestFirst.find (byte), commonestFirst.size());
}

} // namespace

TextPart::TextPart (const juce::String& partToFind) : part (partToFind), length (part.getNumBytesAsUTF8())
{
    const std::string_view bytes (part.toRawUTF8(), length);
    const auto rarest = std::max_element (bytes.begin(), bytes.end(),
                                          [] (char a, char b) { return rarity (a) < rarity (b); });
    placeOfRarest = rarest - bytes.begin();
}

bool TextPart::isIn (const juce::String& text) const noexcept
{
    if (isEmpty())
        return true;

    constexpr int most = 32; // in a text that is made for it each place could be a long one to look at
    const char* const wanted = part.getCharPointer();
    const char* const begin = text.getCharPointer();
    const char* place = begin;

    for (int looked = 0; looked < most; ++looked, ++place)
    {
        place = std::strchr (place, wanted[placeOfRarest]);

        if (place == nullptr)
            return false;
        if (place - begin >= placeOfRarest && std::strncmp (place - placeOfRarest, wanted, length) == 0)
            return true;
    }

    return std::strstr (begin, wanted) != nullptr;
}

} // namespace ZEP::Overmarks
