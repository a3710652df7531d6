// SPDX-License-Identifier: GPL-3.0-only
// The sections of number formats that are no dates or times: digits in the places that the format has for them.
#include "core/documents/NumberFormat.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace ZEP::Core
{
namespace
{

/** A number whose digits go to the places that a format has for them, from the last place of the whole to the first. */
class DigitPlacer final
{
public:
    DigitPlacer (double value, std::size_t placesBeforePoint, int decimals, bool hasThousands)
        : places (placesBeforePoint),
          showsThousands (hasThousands)
    {
        const auto text = roundedNumber (value, decimals);
        const auto point = std::min (text.find ('.'), text.size());
        whole = text.substr (0, point);
        fraction = text.substr (std::min (point + 1, text.size()));

        if (whole == "0")
            whole.clear();
    }

    /** What stands in the next place before the point; in the first all digits for which there is no place. */
    std::string nextWhole (char sign)
    {
        const auto fromRight = places - 1 - placesTaken;
        const auto most = placesTaken++ == 0 ? std::max (whole.size(), fromRight + 1) : fromRight + 1;
        std::string text;

        for (auto place = most; place-- > fromRight;)
        {
            if (place < whole.size())
                text += whole[whole.size() - 1 - place];
            else if (sign != '#')
                text += sign == '?' ? ' ' : '0';
            else
                continue;

            if (showsThousands && place > 0 && place % 3 == 0)
                text += ',';
        }

        return text;
    }

    /** What no place was made for. */
    std::string unplaced() const { return places == 0 ? whole : std::string(); }

    std::string nextDecimal (char sign)
    {
        const auto place = decimalsTaken++;

        if (sign != '0' && fraction.find_first_not_of ('0', place) == std::string::npos)
            return sign == '?' ? " " : "";

        return place < fraction.size() ? fraction.substr (place, 1) : "0";
    }

private:
    std::string whole;
    std::string fraction;
    std::size_t places;
    std::size_t placesTaken = 0;
    std::size_t decimalsTaken = 0;
    bool showsThousands;
};

std::string powerOfTen (int power, int places)
{
    const auto digits = std::to_string (power);
    const auto missing = std::max (places - static_cast<int> (digits.size()), 0);
    return std::string (static_cast<std::size_t> (missing), '0') + digits;
}

/** A number divided by a power of ten that may be smaller than any number there is. */
double dividedByPowerOfTen (double value, int power)
{
    constexpr int smallest = -300;
    return power < smallest ? value * std::pow (10.0, -smallest) / std::pow (10.0, power - smallest)
                            : value / std::pow (10.0, power);
}

std::size_t digitsBeforePoint (const std::string& number)
{
    return std::min (number.find ('.'), number.size());
}

std::string trimmed (const std::string& text)
{
    const auto first = text.find_first_not_of (' ');
    return first == std::string::npos ? std::string()
                                      : text.substr (first, text.find_last_not_of (' ') - first + 1);
}

} // namespace

/** Where the digits of a section stand. */
struct NumberFormat::Layout
{
    explicit Layout (const Section& section)
    {
        for (const auto& [kind, text] : section.tokens)
        {
            if (kind == Kind::digit && ! hasPower && ! hasPoint)
            {
                hasThousands = hasThousands || commas > 0;
                commas = 0;
            }

            isGeneral = isGeneral || kind == Kind::general;
            hasPower = hasPower || kind == Kind::exponent;
            hasPoint = hasPoint || kind == Kind::point;
            percents += kind == Kind::percent ? 1 : 0;
            commas += kind == Kind::comma && whole > 0 ? 1 : 0;

            if (kind == Kind::digit)
                ++(hasPower ? power : hasPoint ? decimals : whole);
        }
    }

    int whole = 0;
    int decimals = 0;
    int power = 0;
    int percents = 0;
    int commas = 0; ///< behind the last digit: each divides by a thousand
    bool hasPoint = false;
    bool hasPower = false;
    bool hasThousands = false;
    bool isGeneral = false;
};

std::string NumberFormat::asNumber (const Section& section, double value)
{
    const Layout layout (section);
    value *= std::pow (100.0, layout.percents) / std::pow (1000.0, layout.commas);

    if (! std::isfinite (value))
        return generalNumber (value);

    int power = 0;

    if (layout.hasPower && value > 0.0)
    {
        const int step = std::max (layout.whole, 1);
        power = static_cast<int> (std::floor (std::log10 (value)));
        power -= ((power % step) + step) % step;
        value = dividedByPowerOfTen (value, power);

        // 999.96 with one decimal is a thousand, and so the next power.
        if (digitsBeforePoint (roundedNumber (value, layout.decimals)) > static_cast<std::size_t> (step))
        {
            value /= std::pow (10.0, step);
            power += step;
        }
    }

    DigitPlacer placer (value, static_cast<std::size_t> (layout.whole), layout.decimals, layout.hasThousands);
    std::string text;
    bool isBehindPoint = false;
    bool isBehindPower = false;

    for (const auto& [kind, sign] : section.tokens)
    {
        if (kind == Kind::point && ! std::exchange (isBehindPoint, true))
            text += placer.unplaced();

        if (kind == Kind::literal || kind == Kind::slash || kind == Kind::point || kind == Kind::percent)
            text += sign;
        else if (kind == Kind::general)
            text += generalNumber (value);
        else if (kind == Kind::digit && ! isBehindPower)
            text += isBehindPoint ? placer.nextDecimal (sign[0]) : placer.nextWhole (sign[0]);
        else if (kind == Kind::exponent)
        {
            isBehindPower = true;
            text += std::string ("E")
                    + (power < 0        ? "-"
                       : sign[1] == '+' ? "+"
                                        : "")
                    + powerOfTen (std::abs (power), layout.power);
        }
    }

    return trimmed (text);
}

} // namespace ZEP::Core
