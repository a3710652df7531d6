// SPDX-License-Identifier: GPL-3.0-only
#include "list/EventArray.h"

#include "event/EventKeyValueEditor.h"
#include "preferences/PreferenceKeys.h"
#include "support/CueLists.h"
#include "support/ListDiary.h"
#include "support/OvermarksTest.h"
#include "support/PrintEvents.h"
#include "support/UndoHistory.h"

#include <gmock/gmock.h>
#include <limits>

namespace ZEP::Overmarks::Testing
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class EventArrayTest : public OvermarksTest
{
protected:
    std::shared_ptr<EventArray> list = listWithFades();
    ListDiary diary;
};

TEST_F (EventArrayTest, aNewProjectHasItsTwoFades)
{
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out"));
    EXPECT_EQ (list->fadeInEvent, list->events[0]);
    EXPECT_EQ (list->fadeOutEvent, list->events[1]);
    EXPECT_THAT (list->filteredEvents, IsEmpty());
    EXPECT_THAT (list->sortedFilteredEvents, IsEmpty());
    EXPECT_THAT (list->selectedEvents, IsEmpty());
    EXPECT_THAT (list->sortedSelectedEvents, IsEmpty());
    EXPECT_THAT (diary.read(), IsEmpty());
}

TEST_F (EventArrayTest, aNewProjectIsSortedByStartUpwards)
{
    EXPECT_EQ (list->sortKey, juce::String ("StartTCString"));
    EXPECT_FALSE (list->sortDescending);
}

TEST_F (EventArrayTest, theFadesOfANewProjectStayInTheGivenOrder)
{
    const auto late = event (EventTypeFadeIn, "in", 900, 900, 900);
    const auto early = event (EventTypeFadeOut, "out", 10, 10, 10);
    EXPECT_THAT (namesOf (EventArray (late, early).events), ElementsAre ("in", "out"));
}

TEST_F (EventArrayTest, aNewProjectHasFourEmptyFilters)
{
    const std::map<juce::String, juce::String> expected { { EventCharacterFilterKey, "" },
                                                          { EventCueNumberFilterKey, "" },
                                                          { EventTextFilterKey, "" },
                                                          { EventActorFilterKey, "" } };
    EXPECT_EQ (list->filterParameters, expected);
}

TEST_F (EventArrayTest, aBareListHasNothing)
{
    const EventArray bare;
    EXPECT_THAT (bare.events, IsEmpty());
    EXPECT_TRUE (bare.filterParameters.empty());
    EXPECT_EQ (bare.fadeInEvent, nullptr);
    EXPECT_EQ (bare.fadeOutEvent, nullptr);
    EXPECT_EQ (bare.sortKey, juce::String ("StartTCString"));
    EXPECT_FALSE (bare.sortDescending);
}

TEST_F (EventArrayTest, addingOneEventAppendsItAndTellsNobody)
{
    list->addEvent (cue ("late", 500), false);
    list->addEvent (cue ("early", 100), false);

    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "late", "early"));
    EXPECT_THAT (list->filteredEvents, IsEmpty());
    EXPECT_THAT (list->sortedFilteredEvents, IsEmpty());
    EXPECT_THAT (diary.read(), IsEmpty());
    EXPECT_EQ (undoSteps(), 0u);
}

TEST_F (EventArrayTest, aUserAddsOneEvent)
{
    const auto added = cue ("A1", 100);
    list->addEvent (added, true);

    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "A1"));
    EXPECT_THAT (list->filteredEvents, IsEmpty()) << "not listed until the owner sorts";
    EXPECT_THAT (diary.read(), IsEmpty());
    EXPECT_THAT (undoNames(), ElementsAre ("Add Event"));

    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1"));
}

TEST_F (EventArrayTest, undoAndRedoOfOneAddedEventLeaveTheSortToTheOwner)
{
    list->addEvent (cue ("late", 500), true);
    list->addEvent (cue ("early", 100), true);
    list->sortContentAndUpdateFilteredEvents();
    list->selectedEvents = { list->filteredEvents[0] };

    EXPECT_TRUE (undoManager().undo());
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "late"));
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("early", "late"))
        << "stale until the owner sorts";
    EXPECT_THAT (list->selectedEvents, IsEmpty());

    EXPECT_TRUE (undoManager().redo());
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "late", "early"));
    EXPECT_THAT (list->selectedEvents, IsEmpty());
    EXPECT_THAT (diary.read(), IsEmpty());
}

TEST_F (EventArrayTest, removingOneEventLeavesTheDerivedListsStale)
{
    list = listOf ({ cue ("A1", 100), cue ("A2", 200) });
    const auto first = list->filteredEvents[0];
    list->selectedEvents = list->filteredEvents;
    list->sortedSelectedEvents = list->filteredEvents;
    diary.read();

    list->removeEvent (first, false);

    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "A2"));
    EXPECT_THAT (namesOf (list->selectedEvents), ElementsAre ("A2"));
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A2"));
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("A1", "A2"));
    EXPECT_THAT (namesOf (list->sortedSelectedEvents), ElementsAre ("A1", "A2"));
    EXPECT_THAT (diary.read(), IsEmpty());
    EXPECT_EQ (undoSteps(), 0u);
}

TEST_F (EventArrayTest, aUserRemovesOneEvent)
{
    list = listOf ({ cue ("A1", 100), cue ("A2", 200) });
    const auto first = list->filteredEvents[0];
    list->selectedEvents = list->filteredEvents;

    list->removeEvent (first, true);
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "A2"));
    EXPECT_THAT (namesOf (list->selectedEvents), ElementsAre ("A2"));
    EXPECT_THAT (undoNames(), ElementsAre ("Remove Event"));

    EXPECT_TRUE (undoManager().undo());
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "A2", "A1")) << "appended, not sorted";
    EXPECT_THAT (namesOf (list->selectedEvents), ElementsAre ("A2")) << "not selected again";

    EXPECT_TRUE (undoManager().redo());
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "A2"));
    EXPECT_THAT (diary.read(), IsEmpty());
}

TEST_F (EventArrayTest, removingAnEventThatIsNotThereRemovesNothing)
{
    list = listOf ({ cue ("A1", 100) });
    list->removeEvent (cue ("A1", 100), false);
    list->removeEvents ({ cue ("A1", 100) }, false);
    list->removeEvent (nullptr, false);
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "A1"));
}

TEST_F (EventArrayTest, anEventAddedTwiceIsKeptTwice)
{
    const auto twice = cue ("A1", 100);
    list->addEvent (twice, false);
    list->addEvents ({ twice, twice }, false);
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "A1", "A1", "A1"));
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A1", "A1"));
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("A1", "A1", "A1"));
}

TEST_F (EventArrayTest, removingRemovesEveryEntryOfAnEvent)
{
    const auto twice = cue ("A1", 100);
    list->addEvents ({ twice, cue ("A2", 200), twice }, false);
    list->selectedEvents = { twice, twice };
    list->removeEvent (twice, false);
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "A2"));
    EXPECT_THAT (list->selectedEvents, IsEmpty());
}

TEST_F (EventArrayTest, anEventAlreadyInTheListIsAddedAgainByTheUserToo)
{
    const auto twice = cue ("A1", 100);
    list->addEvents ({ twice }, true);
    list->addEvents ({ twice }, true);
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A1"));

    EXPECT_TRUE (undoManager().undo());
    EXPECT_THAT (list->filteredEvents, IsEmpty()) << "undo removes every entry of the event";
}

TEST_F (EventArrayTest, anAddedEventIsFilteredAndSortedOnlyByTheOwner)
{
    list->addEvent (cue ("A1", 100), false);
    EXPECT_THAT (list->filteredEvents, IsEmpty());
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1"));
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1")) << "once, however often one sorts";
    EXPECT_THAT (diary.read(), IsEmpty());
}

TEST_F (EventArrayTest, sortingLeavesBothSelectionsAlone)
{
    list = listOf ({ cue ("A1", 100), cue ("A2", 200) });
    const EventArray::Events reversed { list->events[3], list->events[2] };
    list->selectedEvents = reversed;
    list->sortedSelectedEvents = { list->events[2] };
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_EQ (list->selectedEvents, reversed);
    EXPECT_THAT (namesOf (list->sortedSelectedEvents), ElementsAre ("A1"));
}

TEST_F (EventArrayTest, aChangedEventMovesOnlyWhenTheOwnerSorts)
{
    list = listOf ({ cue ("A1", 100), cue ("A2", 200) });
    list->events[2]->setStartTCString ("00:01:00:00");
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A2"));
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "A2", "A1"));
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A2", "A1"));
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("A2", "A1"));
}

TEST_F (EventArrayTest, theFadesAreNeverListed)
{
    list = std::make_shared<EventArray> (event (EventTypeFadeIn, "in", 50, 50, 50),
                                         event (EventTypeFadeOut, "out", 150, 150, 150));
    list->addEvents ({ cue ("A1", 100), cue ("A2", 200) }, false);
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "A1", "out", "A2"));
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A2"));
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("A1", "A2"));
}

TEST_F (EventArrayTest, aMaskFindsTheTypesInListOrder)
{
    list =
        listOf ({ event (EventTypeMarker, "m", 300, 300, 400), cue ("A1", 200),
                  event (EventTypeStreamer, "s", 50, 100, 100), event (EventTypeFlutter, "f", 10, 10, 14) });

    EXPECT_THAT (namesOf (list->eventsWithTypeMask (EventTypeStreamer)), ElementsAre ("s"));
    EXPECT_THAT (namesOf (list->eventsWithTypeMask (EventTypeMarker)), ElementsAre ("m"));
    EXPECT_THAT (namesOf (list->eventsWithTypeMask (EventTypeFlutter)), ElementsAre ("f"));
    EXPECT_THAT (namesOf (list->eventsWithTypeMask (EventTypeADRCue)), ElementsAre ("A1"));
    EXPECT_THAT (namesOf (list->eventsWithTypeMask (EventTypeFadeIn)), ElementsAre ("in"));
    EXPECT_THAT (namesOf (list->eventsWithTypeMask (EventTypeFadeOut)), ElementsAre ("out"));
    EXPECT_THAT (namesOf (list->eventsWithTypeMask (63)), ElementsAre ("in", "out", "f", "s", "A1", "m"));
    EXPECT_THAT (namesOf (list->eventsWithTypeMask (EventTypeStreamer | EventTypeMarker)),
                 ElementsAre ("s", "m"));
    EXPECT_THAT (list->eventsWithTypeMask (0), IsEmpty());
    EXPECT_THAT (list->eventsWithTypeMask (64), IsEmpty());
}

TEST_F (EventArrayTest, aMaskLooksBehindTheFilter)
{
    list = listOf ({ cue ("A1", 100) });
    list->filterParameters[EventCueNumberFilterKey] = "none of them";
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (list->filteredEvents, IsEmpty());
    EXPECT_THAT (namesOf (list->eventsWithTypeMask (EventTypeADRCue)), ElementsAre ("A1"));
}

TEST_F (EventArrayTest, anEventWithoutATypeIsInEveryMaskOfOneType)
{
    list = listOf ({ event (eventTypeUnset, "?", 100, 100, 100) });
    EXPECT_THAT (namesOf (list->eventsWithTypeMask (EventTypeStreamer)), ElementsAre ("?"));
    EXPECT_THAT (list->eventsWithTypeMask (std::numeric_limits<int>::min()), IsEmpty())
        << "the common bits have to make 1 or more";
}

TEST_F (EventArrayTest, aCopyHasEventsOfItsOwn)
{
    list = listOf ({ cue ("A1", 100), cue ("A2", 200) });
    list->filterParameters[EventCueNumberFilterKey] = "2";
    list->sortContentAndUpdateFilteredEvents();
    list->selectedEvents = list->filteredEvents;
    diary.read();

    const auto copy = list->deepCopy();

    EXPECT_EQ (namesOf (copy->events), namesOf (list->events));
    for (std::size_t i = 0; i < copy->events.size(); ++i)
    {
        EXPECT_NE (copy->events[i], list->events[i]);
        EXPECT_NE (copy->events[i]->getUuid(), list->events[i]->getUuid());
    }
    EXPECT_EQ (copy->filterParameters, list->filterParameters);
    EXPECT_THAT (copy->filteredEvents, ElementsAre (copy->events[3])) << "its own, under the same filter";
    EXPECT_THAT (copy->sortedFilteredEvents, ElementsAre (copy->events[3]));
    EXPECT_THAT (copy->selectedEvents, IsEmpty());
    EXPECT_THAT (copy->sortedSelectedEvents, IsEmpty());
    EXPECT_THAT (diary.read(), IsEmpty());
    EXPECT_EQ (undoSteps(), 0u);
}

TEST_F (EventArrayTest, theFadeFieldsOfACopyAreThoseOfTheSource)
{
    list = listOf ({ cue ("A1", 100) });
    const auto copy = list->deepCopy();
    EXPECT_EQ (copy->fadeInEvent, list->fadeInEvent);
    EXPECT_EQ (copy->fadeOutEvent, list->fadeOutEvent);
    EXPECT_NE (copy->eventsWithTypeMask (EventTypeFadeIn).at (0), list->fadeInEvent);
    EXPECT_NE (copy->eventsWithTypeMask (EventTypeFadeOut).at (0), list->fadeOutEvent);
}

TEST_F (EventArrayTest, theFadeFieldsOfACopyComeFromTheEventsOfTheSource)
{
    const auto other = event (EventTypeFadeIn, "other", 10, 10, 10);
    list->events = { other, list->fadeOutEvent };
    EXPECT_EQ (list->deepCopy()->fadeInEvent, other);
}

TEST_F (EventArrayTest, aCopyTakesTheSortColumnButIsNotSortedByItYet)
{
    list = listOf ({ cue ("B", 100), cue ("A", 200) });
    list->sortKey = EventKeyValueEditor::KV_CueNumber;
    list->sortDescending = true;
    list->sortContentAndUpdateFilteredEvents();

    const auto copy = list->deepCopy();
    EXPECT_EQ (copy->sortKey, juce::String ("CueNumber"));
    EXPECT_TRUE (copy->sortDescending);
    EXPECT_THAT (namesOf (copy->sortedFilteredEvents), ElementsAre ("B", "A"));

    list->sortDescending = false;
    list->sortContentAndUpdateFilteredEvents();
    const auto other = list->deepCopy();
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("A", "B"));
    EXPECT_THAT (namesOf (other->sortedFilteredEvents), ElementsAre ("B", "A"));
    other->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (other->sortedFilteredEvents), ElementsAre ("A", "B"));
}

TEST_F (EventArrayTest, aCopyOfAListWithoutAFadeFails)
{
    list->removeEvent (list->fadeInEvent, false);
    EXPECT_THROW (list->deepCopy(), std::out_of_range);

    list = listWithFades();
    list->removeEvent (list->fadeOutEvent, false);
    EXPECT_THROW (list->deepCopy(), std::out_of_range);
}

TEST_F (EventArrayTest, aListOutsideASharedPointerCanBeCopied)
{
    const auto fadeIn = makeUntimedEvent (EventTypeFadeIn);
    EventArray local (fadeIn, makeUntimedEvent (EventTypeFadeOut));
    EXPECT_EQ (local.deepCopy()->fadeInEvent, fadeIn);
}

TEST_F (EventArrayTest, aNewTimeReferenceReachesEveryEventAndMovesNone)
{
    list = listOf ({ cue ("A1", 100), untimedCue ("A2") });
    const auto before = linesOf (list->events);
    const auto info = timeInfoAt ("24", "10:00:00:00");

    list->setTimeInfoForAllEvents (info);

    for (const auto& each : list->events)
        EXPECT_EQ (each->getTimeInfo(), info);
    EXPECT_EQ (linesOf (list->events), before);
    EXPECT_EQ (list->events[3]->getStartTCString(), juce::String ("10:00:04:04"));
    EXPECT_THAT (diary.read(), IsEmpty());
    EXPECT_EQ (undoSteps(), 0u);
}

TEST_F (EventArrayTest, eventsOutliveTheirList)
{
    const auto kept = cue ("A1", 100);
    list->addEvents ({ kept }, false);
    list.reset();
    EXPECT_EQ (kept.use_count(), 1);
    EXPECT_EQ (kept->getCueNumber(), juce::String ("A1"));
}

} // namespace
} // namespace ZEP::Overmarks::Testing
