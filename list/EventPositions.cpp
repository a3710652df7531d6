// SPDX-License-Identifier: GPL-3.0-only
#include "list/EventPositions.h"

#include <algorithm>
#include <unordered_set>

namespace ZEP::Overmarks
{

void EventPositions::Extent::include (std::size_t place)
{
    least = std::min (least, place);
    greatest = std::max (greatest, place);
}

void EventPositions::forget()
{
    places.clear();
    notedList = nullptr;
    notedLength = 0;
}

void EventPositions::note (const List& list)
{
    places.clear();
    places.reserve (list.size());
    notedList = list.data();
    notedLength = list.size();

    for (std::size_t place = 0; place < list.size(); ++place)
        places.try_emplace (list[place].get(), place);
}

EventPositions::Extent EventPositions::extentOf (std::span<const std::shared_ptr<Event>> wanted,
                                                 const List& list)
{
    if (notedList != list.data() || notedLength != list.size())
        note (list);

    Extent extent { list.size(), 0 };
    std::unordered_set<const Event*> unnoted;

    for (const auto& event : wanted)
    {
        const auto noted = places.find (event.get());

        if (noted != places.end() && list[noted->second] == event)
            extent.include (noted->second);
        else
            unnoted.insert (event.get());
    }

    for (std::size_t place = 0; place < list.size() && ! unnoted.empty(); ++place)
        if (unnoted.erase (list[place].get()) > 0)
            extent.include (place);

    if (! unnoted.empty())
        extent.include (list.size());

    return extent;
}

} // namespace ZEP::Overmarks
