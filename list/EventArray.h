// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/system/IProtobufSerializable.h"
#include "core/timecode/TimeInfo.h"
#include "event/Event.h"
#include "list/EventPlace.h"
#include "list/EventPositions.h"

#include <Poco/Any.h>
#include <juce_core/juce_core.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ZEP::Overmarks
{

class FormerOrder;
class ListedTimes;
struct FilterTexts;

/** The type of a search result that stands for all lines of one cue number; none of the kinds of events has it. */
inline constexpr int CueGroupResultType = 64;

/** One row of a search result: an event, or all ADR cues of one cue number together.

    A snapshot: texts and times are copies that don't follow a later edit, the events are the list's own. */
struct EventSearchResultProxy final
{
    juce::String text;      ///< of the event; of a group the first member's, with "..." behind it
    juce::String startTC;   ///< of the event, or of the group's first member
    juce::String endTC;     ///< likewise
    juce::String cueNumber; ///< of the event, or the group's
    juce::String character; ///< name; empty for none, "<multiple>" for a group of several names
    juce::String actor;     ///< likewise
    int type = -1;          ///< the event's EventType; CueGroupResultType for a group
    std::vector<std::shared_ptr<Event>> events; ///< the one event, or the group's members in the user's order
};

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
    using Events = std::vector<std::shared_ptr<Event>>; ///< none of them null

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

    /** Appends one event; the caller sorts when all are in. Null is no event and adds nothing, here and below. */
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

    /** Replaces the filter, takes what it hides out of the selection, and tells, even if nothing has changed.
        @param parameters  texts by the Event...FilterKey constants and EventNumAdjacentCuesKey; a missing one is empty */
    void setFilterParameters (const std::map<juce::String, juce::String>& parameters);

    /** The filter itself. Appends to `filteredEvents`, so it is called through sortContentAndUpdateFilteredEvents(). */
    void updateFilteredEvents();

    /** Those of `events`, in their order, whose type is in the mask of EventType bits. */
    Events eventsWithTypeMask (int mask) const;

    /** Searches what the filter lists: a part of cue number or text in any case, or "#" and a whole cue number.
        @returns the matching events and, before its first member, a row for each cue number that several matching ADR
                 cues have; by in point */
    std::vector<std::shared_ptr<EventSearchResultProxy>> itemsForSearchString (
        const juce::String& searchString) const;

    /** How much work a character has, counted over the whole list. A null character has the cues that nobody speaks.
        @param numberOfLines  set to the number of the character's ADR cues
        @param numberOfCues   set to the number of different cue numbers among them
        @param doneRatio      set to the share of them that is done, from 0 to 1; 0 if there are none */
    void adrOverviewDataForCharacter (std::shared_ptr<ZEP::Core::ADRCharacter> character, int& numberOfLines,
                                      int& numberOfCues, float& doneRatio) const;

    // ---- selection ---------------------------------------------------------------------------------------------------

    // All steps go through `sortedFilteredEvents`, the order that the user sees, and all but the expansions pass over the
    // neighbours of a match. Each tells of the selection, also where it couldn't go on, and leaves `sortedSelectedEvents`
    // as it stands. In a list without any event but its fades, or with nothing listed, a step does and tells nothing.

    /** Replaces both vectors of the selection. Does and tells nothing if these are the selected events in their order.
        @param skipLocateToEvent  for the observers: the picture is to stay where it is */
    void setSelectedEvents (const Events& eventsToSelect, bool skipLocateToEvent);

    /** Tells nobody if nothing was selected. */
    void clearSelectedEvents();

    /** From the earliest selected event, not the last, to the one below it; from no selection to the first event. */
    void selectNextEvent();

    /** From the earliest selected event to the one above it; from no selection to the last event. */
    void selectPreviousEvent();

    /** From the earliest selected event down to all events of the next cue number, adjacent or not. Looks through the list
        as far as its end; with nothing more to be found, nothing is selected. Without a cue number to start from it is
        selectNextEvent(). */
    void selectNextEventByCueNumber();

    /** The same upwards. */
    void selectPreviousEventByCueNumber();

    /** Adds the event below the lowest selected one. Does and tells nothing without a selection or at the end. */
    void expandSelectionByNextEvent();

    /** Adds the event above the highest selected one. At the top it adds the first event again, so that the selection holds
        it twice. Does and tells nothing without a selection. */
    void expandSelectionByPreviousEvent();

    // ---- the whole list ----------------------------------------------------------------------------------------------

    /** A list of copies, each with a new identity. Its fade fields point at the fades of this list, not at its own copies.
        @throws std::out_of_range if a fade is missing */
    std::shared_ptr<EventArray> deepCopy();

    /** Plain assignment to every event: no undo, no notification, the frame indices stay. */
    void setTimeInfoForAllEvents (std::shared_ptr<ZEP::Core::TimeInfo> timeInfo);

    std::map<juce::String, juce::String> filterParameters; ///< by the filters' keys; empty: everything
    Events filteredEvents;                                 ///< what the filter lets through, by timecode
    Events sortedFilteredEvents;                           ///< the same, in the order of the sort column
    Events selectedEvents;                                 ///< the selection, by timecode
    Events sortedSelectedEvents;         ///< the selection, in the order of the sort column; may be stale
    Events events;                       ///< everything, by timecode
    std::shared_ptr<Event> fadeInEvent;  ///< in `events` too; null before loading
    std::shared_ptr<Event> fadeOutEvent; ///< likewise
    juce::String sortKey;                ///< one of EventKeyValueEditor's keys; any other sorts by start
    bool sortDescending = false;         ///< true: last first

private:
    template <typename NotificationClass>
    void post (std::map<std::string, Poco::Any> userInfo = {});

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
    FilterTexts filterTexts();
    EventPlaces filtered (const ListedTimes& times);
    void dropUnlistedFromSelection();

    bool hasNothingToStepThrough() const;
    std::size_t positionOfFirstSelected();
    template <typename Place>
    void selectFirstShown (Place from, Place end);
    template <typename Place>
    void selectNextCueNumber (Place from, Place end, const juce::String& presentCueNumber);
    void expandSelectionBy (std::shared_ptr<Event> event);
    void sortSelectionByTimecode();

    EventPositions positions;                 ///< of sortedFilteredEvents
    std::shared_ptr<FormerOrder> formerOrder; ///< of these too; null if the times alone have shown it
    std::string newerFields;                  ///< what a newer version has stored with this list, kept for it
};

} // namespace ZEP::Overmarks
