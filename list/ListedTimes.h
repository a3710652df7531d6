// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/Event.h"
#include "list/EventPlace.h"
#include "list/FilterTexts.h"
#include "list/ScratchMemory.h"
#include "list/StableSort.h"
#include "list/TimecodeKey.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** What lists order and filter an event by. */
struct EventTimes
{
    EventTimes (const Event& event, TimecodeKeys& keys, bool matchesFilter = true)
        : start (keys.startOf (event)),
          startFrame (event.getStartFrameIndex()),
          inPoint (event.getInPointFrameIndex()),
          endFrame (event.getEndFrameIndex()),
          type (event.getType()),
          isHidden (event.isHiddenByFilter()),
          isLetThrough (matchesFilter)
    {
    }

    bool hasInPoint() const { return inPoint != -1; }
    bool isTimed() const { return hasInPoint() && startFrame != -1; }

    TimecodeKey start;
    int startFrame;
    int inPoint;
    int endFrame;
    EventType type;
    bool isHidden;
    bool isLetThrough; ///< by the texts of the filter
};

/** The times of all events of a list, and whether its filter looks for their texts, one beside the other, so that its orders and its filter
    needn't look for them in the events again. Good until the list changes. */
class ListedTimes final
{
public:
    explicit ListedTimes (const std::vector<std::shared_ptr<Event>>& events, const FilterTexts& texts = {});

    /** Orders the events, those of the constructor, by the texts of their start timecodes. */
    void sort (std::vector<std::shared_ptr<Event>>& events);

    /** @param place  in that list */
    const EventTimes& of (EventPlace place) const { return times[static_cast<std::size_t> (place - first)]; }

    /** Orders events of that list as EventArray::sortFilteredEventsByTimecode() does. */
    void sort (EventPlaces& listed) const;

    /** That order for rearrange(). */
    RankedPlaces orderOf (const EventPlaces& listed) const;

private:
    ScratchVector<EventTimes> times;
    EventPlace first;
};

/** Orders events by the texts of their start timecodes. */
void sortByStart (std::vector<std::shared_ptr<Event>>& events);

/** Orders events by timecode, those without a time first. */
void sortByTimecode (std::vector<std::shared_ptr<Event>>& events);

} // namespace ZEP::Overmarks
