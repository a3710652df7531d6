// SPDX-License-Identifier: GPL-3.0-only
// The selection, and the steps through the list in the user's order.
#include "list/EventArray.h"

#include "list/EventArrayNews.h"
#include "list/EventSortKeys.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <utility>

namespace ZEP::Overmarks
{

// ---- setting and clearing ------------------------------------------------------------------------------------------------

void EventArray::setSelectedEvents (const Events& eventsToSelect, bool skipLocateToEvent)
{
    // What is given may be one of this list's own vectors. A row of a table that no longer stands for an event is null.
    Events selected = eventsToSelect;
    std::erase (selected, nullptr);
    if (selected == selectedEvents)
        return;

    selectedEvents = selected;
    sortedSelectedEvents = std::move (selected);
    sortSelectionByTimecode();
    EventSortOrder (sortKey, sortDescending).sort (sortedSelectedEvents);
    post<EventArraySelectedEventsChangedNotification> ({ { "skipLocateToEvent", skipLocateToEvent } });
}

void EventArray::clearSelectedEvents()
{
    if (selectedEvents.empty())
        return;

    selectedEvents.clear();
    post<EventArraySelectedEventsChangedNotification>();
}

void EventArray::sortSelectionByTimecode() { sortByStart (selectedEvents); }

void EventArray::dropUnlistedFromSelection()
{
    std::unordered_map<const Event*, bool> isListed;

    for (const auto& event : selectedEvents)
        isListed[event.get()] = false;

    if (isListed.empty())
        return;

    for (const auto& event : filteredEvents)
        if (const auto selected = isListed.find (event.get()); selected != isListed.end())
            selected->second = true;

    std::erase_if (selectedEvents, [&] (const auto& event) { return ! isListed[event.get()]; });
}

// ---- steps ---------------------------------------------------------------------------------------------------------------

bool EventArray::hasNothingToStepThrough() const
{
    constexpr std::size_t numberOfFades = 2;
    return events.size() <= numberOfFades || sortedFilteredEvents.empty();
}

std::size_t EventArray::positionOfFirstSelected()
{
    return positions.extentOf ({ selectedEvents.data(), 1 }, sortedFilteredEvents).least;
}

template <typename Place>
void EventArray::selectFirstShown (Place from, Place end)
{
    const auto found =
        std::find_if (from, end, [] (const auto& event) { return ! event->isHiddenByFilter(); });

    if (found != end)
        selectedEvents = { *found };

    post<EventArraySelectedEventsChangedNotification>();
}

void EventArray::selectNextEvent()
{
    if (hasNothingToStepThrough())
        return;

    const auto behind = selectedEvents.empty() ? 0 : positionOfFirstSelected() + 1;
    selectFirstShown (sortedFilteredEvents.begin()
                          + static_cast<std::ptrdiff_t> (std::min (behind, sortedFilteredEvents.size())),
                      sortedFilteredEvents.end());
}

void EventArray::selectPreviousEvent()
{
    if (hasNothingToStepThrough())
        return;

    const auto position = selectedEvents.empty() ? sortedFilteredEvents.size() : positionOfFirstSelected();
    selectFirstShown (
        std::make_reverse_iterator (sortedFilteredEvents.begin() + static_cast<std::ptrdiff_t> (position)),
        sortedFilteredEvents.rend());
}

// ---- steps by cue number -------------------------------------------------------------------------------------------------

template <typename Place>
void EventArray::selectNextCueNumber (Place from, Place end, const juce::String& presentCueNumber)
{
    selectedEvents.clear();
    juce::String newCueNumber;

    for (auto place = from; place != end; ++place)
    {
        const auto& event = *place;

        if (event->isHiddenByFilter())
            continue;

        // While only events without a cue number have come, the walk still looks for the new one, and takes them along.
        if (newCueNumber.isEmpty() && event->getCueNumber() != presentCueNumber)
        {
            newCueNumber = event->getCueNumber();
            selectedEvents.push_back (event);
        }
        else if (newCueNumber.isNotEmpty() && event->getCueNumber() == newCueNumber)
            selectedEvents.push_back (event);
    }

    sortSelectionByTimecode();
    post<EventArraySelectedEventsChangedNotification>();
}

void EventArray::selectNextEventByCueNumber()
{
    if (hasNothingToStepThrough())
        return;

    const auto cueNumber = selectedEvents.empty() ? juce::String() : selectedEvents.front()->getCueNumber();

    if (cueNumber.isEmpty())
    {
        selectNextEvent();
        return;
    }

    const auto position = static_cast<std::ptrdiff_t> (positionOfFirstSelected());
    selectNextCueNumber (sortedFilteredEvents.begin() + position, sortedFilteredEvents.end(), cueNumber);
}

void EventArray::selectPreviousEventByCueNumber()
{
    if (hasNothingToStepThrough())
        return;

    const auto cueNumber = selectedEvents.empty() ? juce::String() : selectedEvents.front()->getCueNumber();

    if (cueNumber.isEmpty())
    {
        selectPreviousEvent();
        return;
    }

    // The present event itself needn't be looked at: it is no event of another cue number.
    const auto position = static_cast<std::ptrdiff_t> (positionOfFirstSelected());
    selectNextCueNumber (std::make_reverse_iterator (sortedFilteredEvents.begin() + position),
                         sortedFilteredEvents.rend(), cueNumber);
}

// ---- widening ------------------------------------------------------------------------------------------------------------

void EventArray::expandSelectionBy (std::shared_ptr<Event> event)
{
    selectedEvents.push_back (std::move (event));
    sortSelectionByTimecode();
    post<EventArraySelectedEventsChangedNotification>();
}

void EventArray::expandSelectionByNextEvent()
{
    if (selectedEvents.empty())
        return;

    const auto below = positions.extentOf (selectedEvents, sortedFilteredEvents).greatest + 1;

    if (below < sortedFilteredEvents.size())
        expandSelectionBy (sortedFilteredEvents[below]);
}

void EventArray::expandSelectionByPreviousEvent()
{
    if (selectedEvents.empty() || sortedFilteredEvents.empty())
        return;

    // There is no stop at the top: there the first event joins the selection once more.
    const auto first = positions.extentOf (selectedEvents, sortedFilteredEvents).least;
    expandSelectionBy (sortedFilteredEvents[std::max (first, std::size_t { 1 }) - 1]);
}

} // namespace ZEP::Overmarks
