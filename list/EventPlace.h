// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/Event.h"

#include <cstddef>
#include <memory>
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
    @param fetch      is shown the events, but the first ones, some steps before, and asks the memory for what will be looked at in them,
                      but looks at nothing
    @param fetchMore  is shown them halfway, and may ask for what they lead to */
template <typename Item, typename Visit, typename Fetch, typename FetchMore>
void visitAhead (const std::vector<Item>& events, Visit visit, Fetch fetch, FetchMore fetchMore)
{
    constexpr std::size_t ahead = 48, halfway = 24;

    for (std::size_t i = 0; i < events.size(); ++i)
    {
        if (i + ahead < events.size())
            fetch (eventOf (events[i + ahead]));
        if (i + halfway < events.size())
            fetchMore (eventOf (events[i + halfway]));

        visit (events[i]);
    }
}

/** The same for what looks at nothing but the times of an event. */
template <typename Item, typename Visit>
void visitAhead (const std::vector<Item>& events, Visit visit)
{
    visitAhead (
        events, visit, [] (const Event& event) { event.fetchTimes(); }, [] (const Event&) {});
}

} // namespace ZEP::Overmarks
