// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/Event.h"

#include <cstddef>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

namespace ZEP::Overmarks
{

/** Where the events of a list stand, noted once, so that a step from one of them is no walk through the whole list.

    A note that isn't true any more is found out, and the list then walked through; so a list that somebody else has
    reordered costs time but no wrong step. What it can't find out is a second entry of an event that was written over
    another one before the first. For one list and one thread; the owner says when the list is a new one. */
class EventPositions final
{
public:
    using List = std::vector<std::shared_ptr<Event>>; ///< a vector of the array

    /** The first and the last place of some events; the length of the list stands for the place of an unlisted one. */
    struct Extent
    {
        std::size_t least;    ///< counted from 0
        std::size_t greatest; ///< counted from 0

        void include (std::size_t place); ///< Grows to take in this place.
    };

    void forget(); ///< For a new list: no place is known any more.

    /** @param wanted  at least one event. An event that the list holds several times stands at its first place. */
    Extent extentOf (std::span<const std::shared_ptr<Event>> wanted, const List& list);

private:
    void note (const List& list);

    std::unordered_map<const Event*, std::size_t> places;
    const std::shared_ptr<Event>* notedList = nullptr;
    std::size_t notedLength = 0;
};

} // namespace ZEP::Overmarks
