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

/* Goes through a text from left to right; what isn't mended is copied in long pieces. */
class Mending final
{
public:
    explicit Mending (std::string_view textToMend) : json (textToMend) { mended.reserve (json.size()); }

    std::string whole()
    {
        while (place < json.size())
        {
            const auto c = json[place];

            if (c == '"')
                passText();
            else if (c == '-' || (c >= '0' && c <= '9'))
                passNumber();
            else
                ++place;
        }

        copyUpTo (json.size());
        return std::move (mended);
    }

private:
    void passText()
    {
        ++place;

        while (place < json.size() && json[place] != '"')
        {
            if (json[place] == '\\')
                passEscape();
            else
                ++place;
        }

        place = std::min (place + 1, json.size());
    }

    void passEscape()
    {
        const auto value = escapedAt (json, place);
        const auto isPair = isHighHalf (value) && isLowHalf (escapedAt (json, place + escapeLength));
        const auto isHalf = ! isPair && (isHighHalf (value) || isLowHalf (value));

        if (isHalf)
            replace (place + escapeLength, "\\ufffd");
        else
            place = std::min (place + (isPair ? 2 * escapeLength : 2), json.size());
    }

    void passNumber()
    {
        constexpr std::size_t longestThatFits = 300; // without an exponent
        const auto end = std::min (json.find_first_not_of ("+-.0123456789eE", place), json.size());
        const auto number = json.substr (place, end - place);

        if ((number.size() > longestThatFits || number.find_first_of ("eE") != std::string_view::npos)
            && std::isinf (std::strtod (std::string (number).c_str(), nullptr)))
            replace (end, "null");
        else
            place = end;
    }

    void copyUpTo (std::size_t end)
    {
        mended += json.substr (copied, end - copied);
        copied = end;
    }

    /* What stands from here up to `end`. */
    void replace (std::size_t end, std::string_view replacement)
    {
        copyUpTo (place);
        mended += replacement;
        place = copied = end;
    }

    std::string_view json;
    std::size_t place = 0;
    std::size_t copied = 0; ///< what lies before is in `mended`
    std::string mended;
};

} // namespace

std::string mendedJSON (std::string_view json) { return Mending (json).whole(); }

} // namespace DocxHandler
