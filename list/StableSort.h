// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/Event.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZEP::Overmarks
{

/** Where a list keeps one of its events. While a list is put in order its events are handled as these: a shared pointer that is copied
    or released reaches into the event, and a long list waits for the memory each time. Good until that list changes. */
using EventPlace = const std::shared_ptr<Event>*;

inline const Event& eventOf (const std::shared_ptr<Event>& event) { return *event; } ///< The event itself.
inline const Event& eventOf (EventPlace place) { return **place; }                   ///< The event itself.

/** Shows each event of a list to `visit`, in the list's order. Events lie all over the memory; each is asked for some steps before it
    is its turn, since a long list would wait for every single one otherwise.
    @param fetchMore  is shown each event halfway, and may ask for what it leads to */
template <typename Item, typename Visit, typename FetchMore>
void visitAhead (const std::vector<Item>& events, Visit visit, FetchMore fetchMore)
{
    constexpr std::size_t ahead = 16, halfway = 8;

    for (std::size_t i = 0; i < events.size(); ++i)
    {
        if (i + ahead < events.size())
            eventOf (events[i + ahead]).fetchTimes();
        if (i + halfway < events.size())
            fetchMore (eventOf (events[i + halfway]));

        visit (events[i]);
    }
}

/** The same for what looks at nothing beyond the event itself. */
template <typename Item, typename Visit>
void visitAhead (const std::vector<Item>& events, Visit visit)
{
    visitAhead (events, visit, [] (const Event&) {});
}

/** What std::stable_sort does, in a time that grows with the number of items alone where nearly all of them are in order: a list that
    had been sorted before one cue was changed. */
template <typename Item, typename Before>
void stableSortOfRuns (std::vector<Item>& items, Before before)
{
    constexpr std::size_t lengthOfRuns = 16; // on the average; of shorter ones there is nothing to gain
    std::vector<std::ptrdiff_t> ends;

    for (auto end = items.begin(); end != items.end();)
    {
        end = std::is_sorted_until (end, items.end(), before);
        ends.push_back (end - items.begin());

        if (ends.size() > items.size() / lengthOfRuns + 2)
        {
            std::stable_sort (items.begin(), items.end(), before);
            return;
        }
    }

    while (ends.size() > 1)
    {
        std::vector<std::ptrdiff_t> merged;
        std::ptrdiff_t begin = 0;

        for (std::size_t i = 0; i < ends.size(); i += 2)
        {
            const auto end = i + 1 < ends.size() ? ends[i + 1] : ends[i];
            std::inplace_merge (items.begin() + begin, items.begin() + ends[i], items.begin() + end, before);
            merged.push_back (end);
            begin = end;
        }

        ends.swap (merged);
    }
}

/** An item with what it is compared by. */
template <typename Key>
struct KeyedItem
{
    Key key;           ///< what it is compared by
    std::size_t place; ///< where the item stood
};

/** Puts the items into the order of their keys, equal ones staying as they stand, and the keys with them. */
template <typename Item, typename Key, typename Before>
void stableSortWithKeys (std::vector<Item>& items, std::vector<KeyedItem<Key>>& keys, Before before)
{
    const auto keyBefore = [&before] (const auto& a, const auto& b) { return before (a.key, b.key); };

    if (std::is_sorted (keys.begin(), keys.end(), keyBefore))
        return;

    stableSortOfRuns (keys, keyBefore);

    std::vector<Item> sorted;
    sorted.reserve (items.size());

    for (const auto& key : keys)
        sorted.push_back (std::move (items[key.place]));

    items.swap (sorted);
}

/** Orders the events by keys that are made once for each, equal ones staying as they stand.
    @param events  std::shared_ptr<Event> or EventPlace
    @param keyOf   makes the key of an event
    @param before  whether one key goes before another; a strict weak order
    @returns the keys in the order of the events */
template <typename Item, typename KeyOf, typename Before>
auto stableSortByKeys (std::vector<Item>& events, KeyOf keyOf, Before before)
{
    std::vector<KeyedItem<std::invoke_result_t<KeyOf, const Event&>>> keys;
    keys.reserve (events.size());
    visitAhead (events, [&] (const Item& item) { keys.push_back ({ keyOf (eventOf (item)), keys.size() }); });
    stableSortWithKeys (events, keys, before);
    return keys;
}

} // namespace ZEP::Overmarks
