// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "list/NearlyOrdered.h"
#include "list/ScratchMemory.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZEP::Overmarks
{

/** What std::stable_sort does, in a time that grows with the number of items alone where nearly all of them are in order: those whose
    keys are the same, of which a long list may have many. */
template <typename Place, typename Before>
void stableSortOfRuns (Place first, Place last, Before before)
{
    constexpr std::ptrdiff_t lengthOfRuns = 16; // on the average; of shorter ones there is nothing to gain
    std::vector<Place> ends;

    for (auto end = first; end != last;)
    {
        end = std::is_sorted_until (end, last, before);
        ends.push_back (end);

        if (std::ssize (ends) > (last - first) / lengthOfRuns + 2)
        {
            std::stable_sort (first, last, before);
            return;
        }
    }

    while (ends.size() > 1)
    {
        std::vector<Place> merged;
        auto begin = first;

        for (std::size_t i = 0; i < ends.size(); i += 2)
        {
            const auto end = i + 1 < ends.size() ? ends[i + 1] : ends[i];
            std::inplace_merge (begin, ends[i], end, before);
            merged.push_back (end);
            begin = end;
        }

        ends.swap (merged);
    }
}

/** Orders by the ranks, equal ones by their places, where they stand in the order of these. Many are taken a digit of eleven bits after the
    other, without the bits in which none differs: in a time that grows with their number alone.
    @param spare  room for as many; several sorts may share it */
inline void sortByRank (RankedPlaces::iterator first, RankedPlaces::iterator last,
                        RankedPlaces::iterator spare)
{
    constexpr std::ptrdiff_t many = 1000;

    if (last - first < many)
    {
        std::sort (first, last);
        return;
    }

    std::uint64_t unlike = 0; // the bits in which they differ

    for (auto item = first; item != last; ++item)
        unlike |= item->rank ^ first->rank;

    auto from = first, to = spare;

    while (unlike != 0)
    {
        constexpr std::size_t values = 2048;
        const auto lowest = std::countr_zero (unlike);
        const auto digitOf = [lowest] (const RankedPlace& item)
        { return item.rank >> lowest & (values - 1); };
        std::array<std::ptrdiff_t, values> next {};

        for (auto item = from; item != from + (last - first); ++item)
            ++next[digitOf (*item)];

        std::exclusive_scan (next.begin(), next.end(), next.begin(), std::ptrdiff_t { 0 });

        for (auto item = from; item != from + (last - first); ++item)
            to[next[digitOf (*item)]++] = *item;

        std::swap (from, to);
        unlike &= ~((values - 1) << lowest);
    }

    if (from != first)
        std::copy_n (from, last - first, first);
}

/** Puts places into the order of their keys; see stableOrderOf(). @param spare  room for as many places as are to be ordered */
template <typename Keys, typename RankOf, typename Before>
class PlaceSorter final
{
public:
    PlaceSorter (const Keys& keysToOrder, RankOf ranking, Before goesBefore, RankedPlaces::iterator spareRoom)
        : keys (keysToOrder),
          rankOf (ranking),
          before (goesBefore),
          spare (spareRoom)
    {
    }

    /** Orders places that stand in their own order and whose keys have the same ranks up to this one. */
    void sort (RankedPlaces::iterator first, RankedPlaces::iterator last, std::size_t rank)
    {
        constexpr std::ptrdiff_t few = 16;

        if (last - first <= few)
            insertEach (first, last);
        else if (! rankOf (keys[first->place], rank))
            stableSortOfRuns (first, last, comparison());
        else
        {
            for (auto each = first; each != last; ++each)
                each->rank = rankOf (keys[each->place], rank).value_or (0);

            sortByRank (first, last, spare);
            sortThoseOfOneRank (first, last, rank + 1);
        }
    }

private:
    auto comparison() const
    {
        return [this] (const RankedPlace& a, const RankedPlace& b)
        { return before (keys[a.place], keys[b.place]); };
    }

    /** Without asking for memory, which takes longer than ordering a few. */
    void insertEach (RankedPlaces::iterator first, RankedPlaces::iterator last) const
    {
        for (auto each = first; each != last; ++each)
            std::rotate (std::upper_bound (first, each, *each, comparison()), each, each + 1);
    }

    void sortThoseOfOneRank (RankedPlaces::iterator first, RankedPlaces::iterator last, std::size_t rank)
    {
        while (first != last)
        {
            const auto end =
                std::find_if (first, last, [first] (const auto& each) { return each.rank != first->rank; });
            if (end - first > 1)
                sort (first, end, rank);
            first = end;
        }
    }

    const Keys& keys;
    RankOf rankOf;
    Before before;
    RankedPlaces::iterator spare;
};

/** In which order the keys go, equal ones as they stand; nothing if they stand in it already.
    @param rankOf  gives a std::optional number of a key, never higher for one that goes before another: the first one, counted from 0,
                   or of keys that are alike in these a further one, or none, which all of them have or none has
    @param before  whether one key goes before another, a strict weak order; decides where the ranks don't */
template <typename Keys, typename RankOf, typename Before>
RankedPlaces stableOrderOf (const Keys& keys, RankOf rankOf, Before before)
{
    if (std::is_sorted (keys.begin(), keys.end(), before))
        return {};

    const auto number = std::ssize (keys);
    RankedPlaces places; // and behind them a little spare room, for which the heap would have to look
    places.resize (keys.size() + static_cast<std::size_t> (mostOutOfOrder (number)) + 2);
    const auto end = places.begin() + number;
    const auto putAsTheyStand = [&]
    {
        for (std::size_t i = 0; i < keys.size(); ++i)
            places[i].place = i;
    };
    putAsTheyStand();

    if (! orderNearlyOrdered (places.begin(), end, end, keys, before))
    {
        RankedPlaces spare;
        spare.resize (keys.size());
        putAsTheyStand();
        PlaceSorter<Keys, RankOf, Before> (keys, rankOf, before, spare.begin()).sort (places.begin(), end, 0);
    }

    places.resize (keys.size());
    return places;
}

/** Puts the items, in any vector, where stableOrderOf() wants them. */
template <typename Items>
void rearrange (Items& items, const RankedPlaces& order)
{
    if (order.empty())
        return;

    ScratchVector<typename Items::value_type> sorted;
    sorted.reserve (items.size());

    for (const auto& each : order)
        sorted.push_back (std::move (items[each.place]));

    if constexpr (std::is_same_v<Items, decltype (sorted)>)
        items.swap (sorted);
    else
        std::move (sorted.begin(), sorted.end(), items.begin());
}

} // namespace ZEP::Overmarks
