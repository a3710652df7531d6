// SPDX-License-Identifier: GPL-3.0-only
// What is put in order by few comparisons, since most of it is in order already.
#pragma once

#include "list/ScratchMemory.h"

#include <algorithm>
#include <compare>
#include <cstddef>
#include <cstdint>

namespace ZEP::Overmarks
{

/** Where an item stands before a sort, and a number that it is compared by. */
struct RankedPlace
{
    std::uint64_t rank;
    std::size_t place;

    auto operator<=> (const RankedPlace&) const = default;
};

using RankedPlaces = ScratchVector<RankedPlace>;

/** Where an item stands before a sort. */
inline std::size_t formerPlace (const RankedPlace& item) { return item.place; }
/** The same of an item that is known by its place alone. */
inline std::size_t formerPlace (std::uint32_t place) { return place; }

/** Whether one of two places goes before the other: by their keys, and of equal ones the one that stands first.
    @param keyAt   gives the key of a place
    @param before  whether one key goes before another */
template <typename KeyAt, typename Before>
auto goingFirst (KeyAt keyAt, Before before)
{
    return [keyAt, before] (const auto& a, const auto& b)
    {
        const auto placeOfA = formerPlace (a), placeOfB = formerPlace (b);
        const auto &keyOfA = keyAt (placeOfA), &keyOfB = keyAt (placeOfB);
        return placeOfA < placeOfB ? ! before (keyOfB, keyOfA) : before (keyOfA, keyOfB);
    };
}

/** Puts items among others that are in order, with few comparisons of these.
    @param first   of those in order, which end at `kept`; behind them there is room up to `last`
    @param strays  as many as the room is for, in any order; they are ordered themselves */
template <typename Place, typename Stray, typename GoesFirst>
void putAmong (Place first, Place kept, Place last, Stray strays, Stray endOfStrays, GoesFirst goesFirst)
{
    std::sort (strays, endOfStrays, goesFirst);

    // From the end, where there is room for them.
    while (endOfStrays != strays)
    {
        const auto stray = *--endOfStrays;
        const auto place = std::upper_bound (first, kept, stray, goesFirst);
        last = std::move_backward (place, kept, last);
        *--last = stray;
        kept = place;
    }
}

/** So many of a number of places may be out of order for the others to count as nearly ordered. */
constexpr std::ptrdiff_t mostOutOfOrder (std::ptrdiff_t number) { return number / 32; }

/** Puts places in order of which nearly all are, in a time that grows with their number, and a little with that of those that are not.
    @param first  of those of all keys, as they stand. Of no use after a failure
    @param spare  room for two more than mostOutOfOrder() of them
    @param before  whether one key goes before another
    @returns false where too many are out of order, which mostly shows soon */
template <typename Keys, typename Before>
bool orderNearlyOrdered (RankedPlaces::iterator first, RankedPlaces::iterator last,
                         RankedPlaces::iterator spare, const Keys& keys, Before before)
{
    const auto goesFirst = goingFirst (
        [&keys](std::size_t place) -> const auto& { return keys[place]; }, before);
    const auto strays = spare, noMore = spare + mostOutOfOrder (last - first);
    auto endOfStrays = strays, kept = first;

    // Of two neighbours in the wrong order it doesn't show which one is out of its place: both are taken out, and the others are in order.
    for (auto each = first; each != last; ++each)
        if (kept == first || goesFirst (kept[-1], *each))
            *kept++ = *each;
        else if (endOfStrays < noMore)
        {
            *endOfStrays++ = *--kept;
            *endOfStrays++ = *each;
        }
        else
            return false;

    putAmong (first, kept, last, strays, endOfStrays, goesFirst);
    return true;
}

} // namespace ZEP::Overmarks
