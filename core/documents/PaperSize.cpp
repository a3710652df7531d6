// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/PaperSize.h"

#include "core/system/UserLocale.h"

#include <langinfo.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace ZEP::Core
{

namespace
{

/** The number that the system hands out as if it were a text. */
int millimetres (nl_item item, const UserLocale& locale)
{
    return static_cast<int> (reinterpret_cast<std::intptr_t> (nl_langinfo_l (item, locale.get()))
                             & std::numeric_limits<int>::max());
}

bool isSheet (int lengthInMillimetres)
{
    constexpr int smallest = 50, largest = 2000;
    return lengthInMillimetres >= smallest && lengthInMillimetres <= largest;
}

float points (int lengthInMillimetres)
{
    return std::round (static_cast<float> (lengthInMillimetres) * 72.0f / 25.4f);
}

} // namespace

PaperSize PaperSize::ofMillimetres (int width, int height)
{
    constexpr int letterWidth = 216, letterHeight = 279;

    if (width == letterWidth && height == letterHeight)
        return letter(); // whole millimetres tell it less well than its name

    return isSheet (width) && isSheet (height) ? PaperSize { points (width), points (height) } : a4();
}

PaperSize PaperSize::ofLocale()
{
    // The user's own, whether or not the program has asked for it.
    const UserLocale locale (LC_PAPER_MASK);

    if (! locale.exists())
        return a4();

    return ofMillimetres (millimetres (_NL_PAPER_WIDTH, locale), millimetres (_NL_PAPER_HEIGHT, locale));
}

} // namespace ZEP::Core
