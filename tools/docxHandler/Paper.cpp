// SPDX-License-Identifier: GPL-3.0-only
#include "Paper.h"

#include <bit>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <langinfo.h>

namespace DocxHandler
{

namespace
{

/* The C library hands out these two numbers in the place of a pointer. */
int millimetres (nl_item item)
{
    return static_cast<int> (std::bit_cast<std::intptr_t> (::nl_langinfo (item)));
}

} // namespace

Paper Paper::ofMillimetres (int width, int height) noexcept
{
    constexpr int smallest = 140;
    constexpr int largest = 600;

    if (width < smallest || width > largest || height < width || height > largest)
        return {};

    if (width == 216 && height == 279) // Letter is defined in inches
        return { 12240, 15840 };

    constexpr double unitsOfMillimetre = 1440.0 / 25.4;
    return { static_cast<int> (std::lround (width * unitsOfMillimetre)),
             static_cast<int> (std::lround (height * unitsOfMillimetre)) };
}

Paper Paper::ofLocale()
{
    std::setlocale (LC_PAPER, "");
    return ofMillimetres (millimetres (_NL_PAPER_WIDTH), millimetres (_NL_PAPER_HEIGHT));
}

} // namespace DocxHandler
