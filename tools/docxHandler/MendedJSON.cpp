// SPDX-License-Identifier: GPL-3.0-only
#include "MendedJSON.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace DocxHandler
{

namespace
{

constexpr std::size_t escapeLength = 6; // \uD83D

/* The value of the escape "\uXXXX" that stands at a place; -1 if none does. */
int escapedAt (std::string_view json, std::size_t place)
{
    const auto escape = json.substr (std::min (place, json.size()), escapeLength);
    int value = 0;

    if (escape.size() < escapeLength || ! escape.starts_with ("\\u"))
        return -1;

    const auto* end = escape.data() + escape.size();
    const auto [stop, error] = std::from_chars (escape.data() + 2, end, value, 16);
    return error == std::errc() && stop == end ? value : -1;
}

bool isHighHalf (int value) { return value >= 0xd800 && value <= 0xdbff; }
bool isLowHalf (int value) { return value >= 0xdc00 && value <= 0xdfff; }

/* Copies the escape at `place` and moves behind it. */
void copyEscape (std::string_view json, std::size_t& place, std::string& mended)
{
    const auto value = escapedAt (json, place);
    const auto isPair = isHighHalf (value) && isLowHalf (escapedAt (json, place + escapeLength));
    const auto isHalf = ! isPair && (isHighHalf (value) || isLowHalf (value));
    const auto length = isPair ? 2 * escapeLength : isHalf ? escapeLength : 2;
    mended += isHalf ? "\\ufffd" : json.substr (place, length);
    place = std::min (place + length, json.size());
}

void copyText (std::string_view json, std::size_t& place, std::string& mended)
{
    mended += json[place++];

    while (place < json.size() && json[place] != '"')
    {
        if (json[place] == '\\')
            copyEscape (json, place, mended);
        else
            mended += json[place++];
    }

    if (place < json.size())
        mended += json[place++];
}

bool isOfNumber (char c) { return std::string_view ("+-.0123456789eE").find (c) != std::string_view::npos; }

void copyNumber (std::string_view json, std::size_t& place, std::string& mended)
{
    const auto start = place;

    while (place < json.size() && isOfNumber (json[place]))
        ++place;

    const std::string number (json.substr (start, place - start));
    mended += std::isinf (std::strtod (number.c_str(), nullptr)) ? "null" : number;
}

} // namespace

std::string mendedJSON (std::string_view json)
{
    std::string mended;
    mended.reserve (json.size());

    for (std::size_t place = 0; place < json.size();)
    {
        const auto c = json[place];

        if (c == '"')
            copyText (json, place, mended);
        else if (c == '-' || (c >= '0' && c <= '9'))
            copyNumber (json, place, mended);
        else
        {
            mended += c;
            ++place;
        }
    }

    return mended;
}

} // namespace DocxHandler
