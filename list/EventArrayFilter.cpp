// SPDX-License-Identifier: GPL-3.0-only
// Which events of the list the filter lets through.
#include "list/EventArray.h"

#include "list/EventArrayNews.h"
#include "list/FilterTexts.h"
#include "list/ListedTimes.h"
#include "preferences/PreferenceKeys.h"

#include <cstdint>
#include <deque>
#include <unordered_set>

namespace ZEP::Overmarks
{

namespace
{

/** One walk through a list in the order of time, which picks what matches, its neighbours, and the streamers and flutters
    that belong to a matching cue. */
class FilterWalk final
{
public:
    FilterWalk (int numberOfNeighbours, const ListedTimes& timesOfList, EventPlaces& result)
        : numAdjacent (numberOfNeighbours),
          times (timesOfList),
          listed (result)
    {
    }

    void walkThrough (const std::vector<std::shared_ptr<Event>>& events)
    {
        for (const auto& event : events)
            visit (&event);
    }

private:
    void visit (EventPlace place)
    {
        const auto& event = times.of (place);

        // One that the list holds twice may have been hidden at its first place.
        if (event.isHidden || numAdjacent >= 1)
            (*place)->setHiddenByFilter (false);

        if (event.type == EventTypeFadeIn || event.type == EventTypeFadeOut)
            return;

        if (belongsToMatchingCue (event))
        {
            listed.push_back (place);
            waiting.clear();
        }
        else if (event.isLetThrough)
            take (place);
        else
            keepAsNeighbour (place);
    }

    bool belongsToMatchingCue (const EventTimes& event) const
    {
        const bool isStreamerOrFlutter = event.type == EventTypeStreamer || event.type == EventTypeFlutter;
        return isStreamerOrFlutter && event.inPoint >= cueStart && event.inPoint <= cueEnd;
    }

    void take (EventPlace place)
    {
        for (const auto neighbour : waiting)
            listAsNeighbour (neighbour);

        waiting.clear();
        listed.push_back (place);
        remaining = numAdjacent;

        if (const auto& event = times.of (place); event.type == EventTypeADRCue)
        {
            cueStart = event.inPoint;
            cueEnd = event.endFrame;
        }
    }

    void keepAsNeighbour (EventPlace place)
    {
        if (remaining >= 1)
        {
            listAsNeighbour (place);
            --remaining;
        }

        if (numAdjacent < 1)
            return;

        waiting.push_back (place);

        if (static_cast<std::int64_t> (waiting.size()) > numAdjacent)
            waiting.pop_front();
    }

    void listAsNeighbour (EventPlace place)
    {
        (*place)->setHiddenByFilter (true);

        if (alreadyAdded.insert (place->get()).second)
            listed.push_back (place);
    }

    const std::int64_t numAdjacent;
    const ListedTimes& times;
    EventPlaces& listed;
    std::deque<EventPlace> waiting;
    std::unordered_set<const Event*> alreadyAdded;
    std::int64_t remaining = 0;
    // Before the first matching cue the range is one frame wide, at the index of an event without a time.
    std::int64_t cueStart = -1;
    std::int64_t cueEnd = -1;
};

} // namespace

void EventArray::setFilterParameters (const std::map<juce::String, juce::String>& parameters)
{
    filterParameters = parameters;
    sortContentAndUpdateFilteredEvents();
    dropUnlistedFromSelection();
    post<EventArrayFilteredEventsChangedNotification>();
    post<EventArraySelectedEventsChangedNotification>();
}

juce::String EventArray::filterValue (const std::string& key) { return filterParameters[juce::String (key)]; }

void EventArray::updateFilteredEvents()
{
    for (const auto place : filtered (ListedTimes (events, filterTexts())))
        filteredEvents.push_back (*place);

    sortFilteredEventsByTimecode();
}

FilterTexts EventArray::filterTexts()
{
    return { filterValue (EventCharacterFilterKey), TextPart (filterValue (EventTextFilterKey)),
             TextPart (filterValue (EventCueNumberFilterKey)), filterValue (EventActorFilterKey) };
}

EventPlaces EventArray::filtered (const ListedTimes& times)
{
    const int numAdjacent = filterValue (EventNumAdjacentCuesKey).getIntValue();
    EventPlaces listed;
    listed.reserve (events.size());
    FilterWalk (numAdjacent, times, listed).walkThrough (events);
    return listed;
}

} // namespace ZEP::Overmarks
