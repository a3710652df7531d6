// SPDX-License-Identifier: GPL-3.0-only
#include "list/EventArray.h"

#include "core/undo/UndoRedoHelpers.h"
#include "core/undo/UndoableAction.h"
#include "event/EventKeyValueEditor.h"
#include "list/EventArrayNews.h"
#include "list/EventSortKeys.h"
#include "list/FilterTexts.h"
#include "list/FormerOrder.h"
#include "preferences/PreferenceKeys.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <unordered_set>
#include <utility>

namespace ZEP::Overmarks
{

using ZEP::Core::TimeInfo;
using ZEP::Core::UndoableAction;
using ZEP::Core::UndoRedoHelpers;

EventArray::EventArray() : sortKey (EventKeyValueEditor::KV_StartTCString) {}

EventArray::EventArray (std::shared_ptr<Event> fadeIn, std::shared_ptr<Event> fadeOut) : EventArray()
{
    events = { fadeIn, fadeOut };
    fadeInEvent = std::move (fadeIn);
    fadeOutEvent = std::move (fadeOut);

    for (const auto& key :
         { EventCharacterFilterKey, EventCueNumberFilterKey, EventTextFilterKey, EventActorFilterKey })
        filterParameters[juce::String (key)] = {};
}

EventArray::~EventArray() = default;

// ---- adding and removing -------------------------------------------------------------------------------------------------

void EventArray::appendAll (const Events& eventsToAdd)
{
    events.insert (events.end(), eventsToAdd.begin(), eventsToAdd.end());
}

void EventArray::eraseAll (const Events& eventsToRemove)
{
    const std::unordered_set<std::shared_ptr<Event>> leaving (eventsToRemove.begin(), eventsToRemove.end());
    const auto isLeaving = [&leaving] (const std::shared_ptr<Event>& event)
    { return leaving.contains (event); };
    std::erase_if (events, isLeaving);
    std::erase_if (selectedEvents, isLeaving);
}

void EventArray::performSingle (const std::shared_ptr<Event>& event, const char* undoName, bool adding)
{
    // Keeps the event alive, but not this list: the undo history must not outlive the list.
    auto step = std::make_unique<UndoableAction<Event>>();
    const auto put = [this] (const UndoableAction<Event>& action) { addEvent (action.target, false); };
    const auto take = [this] (const UndoableAction<Event>& action) { removeEvent (action.target, false); };
    step->target = event;

    if (adding)
    {
        step->performFunction = put;
        step->undoFunction = take;
    }
    else
    {
        step->performFunction = take;
        step->undoFunction = put;
    }

    auto* undoManager = UndoRedoHelpers::sharedUndoManager();
    undoManager->perform (step.release(), undoName);
    undoManager->commandStatusChanged();
}

template <typename Perform, typename Undo>
void EventArray::performStep (const char* undoName, const Events& changed, Perform perform, Undo undo)
{
    using Step = UndoableAction<EventArray>;
    auto step = std::make_unique<Step>();
    step->target = shared_from_this();
    step->performFunction = [this, changed, perform] (Step& action)
    {
        action.state.save<Events> (changed);
        (this->*perform) (changed);
    };
    step->undoFunction = [this, undo] (const Step& action)
    { (this->*undo) (action.state.restore<Events>()); };

    auto* undoManager = UndoRedoHelpers::sharedUndoManager();
    undoManager->perform (step.release(), undoName);
    undoManager->commandStatusChanged();
}

void EventArray::addEvent (std::shared_ptr<Event> event, bool withUndo)
{
    if (event == nullptr)
        return;

    if (withUndo)
        performSingle (event, "Add Event", true);
    else
        events.push_back (std::move (event));
}

void EventArray::removeEvent (std::shared_ptr<Event> event, bool withUndo)
{
    if (withUndo)
        performSingle (event, "Remove Event", false);
    else
        eraseAll ({ event });
}

void EventArray::putIn (const Events& eventsToAdd)
{
    appendAll (eventsToAdd);
    sortContentAndUpdateFilteredEvents();
    post<EventArrayNumberChangedNotification>();
}

void EventArray::takeOut (const Events& eventsToRemove)
{
    eraseAll (eventsToRemove);
    sortContentAndUpdateFilteredEvents();
    post<EventArrayNumberChangedNotification>();
}

void EventArray::putBackUnselected (const Events& eventsToAdd)
{
    selectedEvents.clear();
    putIn (eventsToAdd);
    post<EventArraySelectedEventsChangedNotification>();
}

void EventArray::takeOutWithSelection (const Events& eventsToRemove)
{
    selectedEvents.clear();
    takeOut (eventsToRemove);
    post<EventArraySelectedEventsChangedNotification>();
}

void EventArray::addEvents (const Events& eventsToAdd, bool withUndo)
{
    // A copy: what is added may be one of this list's own vectors.
    Events added = eventsToAdd;
    std::erase (added, nullptr);
    if (added.empty())
        return;

    if (withUndo)
        performStep ("Add Event", added, &EventArray::putIn, &EventArray::takeOut);
    else
        putIn (added);
}

void EventArray::removeEvents (const Events& eventsToRemove, bool withUndo)
{
    // A copy: what is removed may be the selection itself, which this empties.
    Events removed = eventsToRemove;
    std::erase (removed, nullptr);

    if (! withUndo)
    {
        takeOutWithSelection (removed);
        return;
    }

    performStep ("Remove Event", removed, &EventArray::takeOutWithSelection, &EventArray::putBackUnselected);
    UndoRedoHelpers::sharedUndoManager()->beginNewTransaction ("Remove Events");
}

// ---- order ---------------------------------------------------------------------------------------------------------------

namespace
{

/** Asks the memory for the count of those who hold an event; it stands in front of the event if both were made in one piece. */
void fetchCount (const std::shared_ptr<Event>& event)
{
    constexpr std::uintptr_t sizeOfCount = 16;

    if (event != nullptr)
        fetch (reinterpret_cast<const void*> (reinterpret_cast<std::uintptr_t> (event.get()) - sizeOfCount));
}

void makeRoom (std::size_t number, EventArray::Events& target)
{
    if (target.capacity() < number)
        target.reserve (std::max (number, 2 * target.capacity()));
}

/** After an edit mostly one event stands elsewhere, has come or has gone, and the others up to there stand one place farther. They are moved:
    one that is copied instead is written to. @param first  the first that isn't as wanted. @param end  behind the last one */
void shift (EventArray::Events& target, const EventPlaces& wanted, std::size_t first, std::size_t end)
{
    const auto at = [&target] (std::size_t i) { return target.begin() + static_cast<std::ptrdiff_t> (i); };
    const auto last = std::min (end, target.size());

    if (last < first + 2)
        return;
    if (first < wanted.size() && target[first + 1] == *wanted[first])
        std::rotate (at (first), at (first + 1), at (last));
    else if (first + 1 < wanted.size() && target[first] == *wanted[first + 1])
        std::rotate (at (first), at (last - 1), at (last));
}

/** Makes vectors hold these events, touching only where they hold others. Each event that is taken or let go is written to. */
template <typename... Target>
void store (const EventPlaces& places, Target&... targets)
{
    const auto number = places.size();
    (makeRoom (number, targets), ...); // without memory for all of them, none is touched
    (targets.resize (std::max (targets.size(), number)), ...);

    const auto isToChange = [&] (const EventArray::Events& target, std::size_t i)
    { return i < target.size() && (i >= number || target[i] != *places[i]); };
    const auto isAnyToChange = [&] (std::size_t i) { return (isToChange (targets, i) || ...); };
    std::size_t first = 0, end = std::max ({ targets.size()... });

    for (; first < end && ! isAnyToChange (first); ++first)
        if (first + askedTogether < number)
            fetch (places[first + askedTogether]);

    while (first < end && ! isAnyToChange (end - 1))
        --end;

    (shift (targets, places, first, end), ...);

    const auto askFor = [&] (const EventArray::Events& target, std::size_t i)
    {
        if (! isToChange (target, i))
            return;

        fetchCount (target[i]);
        if (i < number)
            fetchCount (*places[i]);
    };
    const auto putInto = [&] (EventArray::Events& target, std::size_t i)
    {
        if (! isToChange (target, i))
            return;

        if (i < number)
            target[i] = *places[i];
        else
            target[i].reset();
    };

    for (auto begin = first; begin < end; begin += askedTogether)
    {
        const auto next = begin + askedTogether;

        // The list, the events, their counts: each leads to the next.
        for (auto i = next + askedTogether; i < std::min (next + 2 * askedTogether, number); ++i)
            fetch (places[i]);
        for (auto i = next; i < std::min (next + askedTogether, end); ++i)
            (askFor (targets, i), ...);
        for (auto i = begin; i < std::min (next, end); ++i)
            (putInto (targets, i), ...);
    }

    (targets.resize (number), ...);
}

} // namespace

void EventArray::sortContentAndUpdateFilteredEvents()
{
    ListedTimes times (events, filterTexts());
    times.sort (events);
    auto listed = filtered (times);
    times.sort (listed);

    if (const EventSortOrder order (sortKey, sortDescending); order.isHeldByTimes (listed, times))
    {
        formerOrder.reset();
        store (listed, filteredEvents, sortedFilteredEvents);
    }
    else
    {
        if (formerOrder == nullptr || formerOrder.use_count() > 1) // a copy of this list has it too
            formerOrder = std::make_shared<FormerOrder>();

        const auto shown = order.sorted (listed, times, *formerOrder, filteredEvents);
        makeRoom (shown.size(), sortedFilteredEvents); // both lists or neither
        store (listed, filteredEvents);
        store (shown, sortedFilteredEvents);
    }

    positions.forget();
}

void EventArray::sortFilteredEventsByTimecode() { sortByTimecode (filteredEvents); }

bool EventArray::sortEventsBySortKey (std::shared_ptr<Event> a, std::shared_ptr<Event> b)
{
    return EventSortOrder (sortKey, sortDescending).goesBefore (*a, *b);
}

// ---- the whole list ------------------------------------------------------------------------------------------------------

void EventArray::adoptFades (const EventArray& source)
{
    fadeInEvent = source.eventsWithTypeMask (EventTypeFadeIn).at (0);
    fadeOutEvent = source.eventsWithTypeMask (EventTypeFadeOut).at (0);
}

std::shared_ptr<EventArray> EventArray::deepCopy()
{
    auto copy = std::make_shared<EventArray>();
    copy->events.reserve (events.size());

    for (const auto& event : events)
        copy->events.push_back (std::make_shared<Event> (*event));

    copy->adoptFades (*this);
    copy->filterParameters = filterParameters;
    copy->sortContentAndUpdateFilteredEvents();
    copy->sortKey = sortKey;
    copy->sortDescending = sortDescending;
    return copy;
}

void EventArray::setTimeInfoForAllEvents (std::shared_ptr<TimeInfo> timeInfo)
{
    for (const auto& event : events)
        event->setTimeInfo (timeInfo);
}

} // namespace ZEP::Overmarks
