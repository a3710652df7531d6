// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/RecentTexts.h"

#include "core/text/TextDecoding.h"

#include <cstring>

namespace ZEP::Core
{
namespace
{

/** By the upper bits of products, to which all bits add. */
std::size_t placeOf (const std::array<std::uint64_t, 3>& letters)
{
    static_assert (RecentTexts::places == 512);
    return (letters[0] * 0x9E3779B97F4A7C15U + letters[1] * 0xC2B2AE3D27D4EB4FU
            + letters[2] * 0x165667B19E3779F9U)
           >> 55U;
}

} // namespace

juce::String RecentTexts::textOf (std::string_view strictUTF8)
{
    if (strictUTF8.empty() || strictUTF8.size() > mostBytes)
        return textFromStrictUTF8 (strictUTF8);

    Letters letters {};
    std::memcpy (letters.data(), strictUTF8.data(), strictUTF8.size());
    auto& place = known[placeOf (letters)];

    if (place.letters != letters)
        place = { letters, textFromStrictUTF8 (strictUTF8) };

    return place.text;
}

} // namespace ZEP::Core
