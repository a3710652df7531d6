// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/system/IProtobufSerializable.h"
#include "core/timecode/TimeInfo.h"
#include "event/Event.h"

#include <juce_core/juce_core.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ZEP::Overmarks
{

/** The cue list of a project: what is to be recorded, in which order, which of it the filter lets through.

    The same events stand in five vectors, so that everyone finds the order that he needs: all of them by timecode; those
    that the filter lets through by timecode, and in the order of the user's sort column; the selection in both orders.
    Every project has one Fade In and one Fade Out, which are in `events` and never in the filtered vectors.

    The rule that is easily missed: the array does not listen to its events. Whoever has changed an event, or has added or
    removed a single one, calls sortContentAndUpdateFilteredEvents(); nothing else brings the derived vectors up to date.

    The fields are public and read directly; only the sort column is also written directly. The array is held by a
    std::shared_ptr. It has no lock: one thread at a time, and observers run inside the operation that posts. */
class OVERMARKS_API EventArray final : public ZEP::Core::IProtobufSerializable,
                                       public std::enable_shared_from_this<EventArray>
{
public:
    using Events = std::vector<std::shared_ptr<Event>>;

    /** An array with nothing in it, not even the fades: what deepCopy() and loading start from. */
    EventArray();

    /** The list of a new project, with the project's Fade In and Fade Out. Nothing is sorted or told yet. */
    EventArray (std::shared_ptr<Event> fadeIn, std::shared_ptr<Event> fadeOut);

    /** Replaces the events and the sort column by stored ones; the events have no time info yet, nothing is sorted or told.
        Fields that only a newer version knows are kept, and stored again.
        @param proto  a tessera1::ProtoOvermarkList*
        @throws std::out_of_range if a fade is missing; `events` then keeps what was read */
    bool initWithProtoObject (void* proto) override;

    /** Stores the events in their order and the sort column. @param proto  a tessera1::ProtoOvermarkList* */
    void fillProtoObject (void* proto) override;

    ~EventArray() override;

    // ---- adding and removing -----------------------------------------------------------------------------------------

    /** Appends one event; the caller sorts when all are in. */
    void addEvent (std::shared_ptr<Event> event, bool withUndo);

    /** Adds the events, sorts and tells. An event that is in the list already is added a second time. */
    void addEvents (const Events& eventsToAdd, bool withUndo);

    /** Removes one event from the list and the selection; the caller sorts. */
    void removeEvent (std::shared_ptr<Event> event, bool withUndo);

    /** Removes the events, empties the selection, sorts and tells. Undo brings the events back but not the selection. */
    void removeEvents (const Events& eventsToRemove, bool withUndo);

    // ---- order -------------------------------------------------------------------------------------------------------

    /** Brings all derived vectors up to date. Tells nobody. */
    void sortContentAndUpdateFilteredEvents();

    /** Orders `filteredEvents` by timecode, events without a time first. */
    void sortFilteredEventsByTimecode();

    /** Whether `a` goes before `b` under the present sort column. */
    bool sortEventsBySortKey (std::shared_ptr<Event> a, std::shared_ptr<Event> b);

    // ---- filter and queries ------------------------------------------------------------------------------------------

    /** The filter itself. Appends to `filteredEvents`, so it is called through sortContentAndUpdateFilteredEvents(). */
    void updateFilteredEvents();

    /** Those of `events`, in their order, whose type is in the mask of EventType bits. */
    Events eventsWithTypeMask (int mask) const;

    // ---- the whole list ----------------------------------------------------------------------------------------------

    /** A list of copies, each with a new identity. Its fade fields point at the fades of this list, not at its own copies.
        @throws std::out_of_range if a fade is missing */
    std::shared_ptr<EventArray> deepCopy();

    /** Plain assignment to every event: no undo, no notification, the frame indices stay. */
    void setTimeInfoForAllEvents (std::shared_ptr<ZEP::Core::TimeInfo> timeInfo);

    std::map<juce::String, juce::String> filterParameters;
    Events filteredEvents;       ///< what the filter lets through, by timecode
    Events sortedFilteredEvents; ///< the same, in the order of the sort column
    Events selectedEvents;       ///< the selection, by timecode
    Events sortedSelectedEvents; ///< the selection, in the order of the sort column; may be stale
    Events events;               ///< everything, by timecode
    std::shared_ptr<Event> fadeInEvent;
    std::shared_ptr<Event> fadeOutEvent;
    juce::String sortKey; ///< one of EventKeyValueEditor's keys; any other sorts by start
    bool sortDescending = false;

private:
    template <typename NotificationClass>
    void post();

    void appendAll (const Events& eventsToAdd);
    void eraseAll (const Events& eventsToRemove);
    template <typename Perform, typename Undo>
    void performStep (const char* undoName, const Events& changed, Perform perform, Undo undo);
    void performSingle (const std::shared_ptr<Event>& event, const char* undoName, bool adding);

    // Each of these brings the list up to date and tells of it.
    void putIn (const Events& eventsToAdd);
    void takeOut (const Events& eventsToRemove);
    void putBackUnselected (const Events& eventsToAdd);
    void takeOutWithSelection (const Events& eventsToRemove);

    void adoptFades (const EventArray& source);
    juce::String filterValue (const std::string& key);

    std::string newerFields; ///< what a newer version has stored with this list, kept for it
};

} // namespace ZEP::Overmarks
