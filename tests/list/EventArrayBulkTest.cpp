// SPDX-License-Identifier: GPL-3.0-only
// Adding and removing many events at once: what the list, the undo history and the observers see of it.
#include "list/EventArray.h"

#include "preferences/PreferenceKeys.h"
#include "support/CueLists.h"
#include "support/ListDiary.h"
#include "support/OvermarksTest.h"
#include "support/PrintEvents.h"
#include "support/UndoHistory.h"

#include <gmock/gmock.h>

namespace ZEP::Overmarks::Testing
{
namespace
{

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class EventArrayBulkTest : public OvermarksTest
{
protected:
    /** A list with A1, A2 and A3, of which A1 and A3 are selected. */
    EventArrayBulkTest()
    {
        select ({ list->events[2], list->events[4] });
        diary.read();
    }

    void select (const EventArray::Events& events)
    {
        list->selectedEvents = events;
        list->sortedSelectedEvents = events;
    }

    std::shared_ptr<Event> named (const std::string& name) const
    {
        for (const auto& each : list->events)
            if (each->getCueNumber().toStdString() == name)
                return each;
        return nullptr;
    }

    std::shared_ptr<EventArray> list = listOf ({ cue ("A1", 100), cue ("A2", 200), cue ("A3", 300) });
    ListDiary diary;
};

TEST_F (EventArrayBulkTest, addedEventsAreSortedListedAndTold)
{
    list->addEvents ({ cue ("B2", 350), cue ("B1", 150) }, false);

    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "A1", "B1", "A2", "A3", "B2"));
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "B1", "A2", "A3", "B2"));
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("A1", "B1", "A2", "A3", "B2"));
    EXPECT_THAT (namesOf (list->selectedEvents), ElementsAre ("A1", "A3"));
    EXPECT_THAT (namesOf (list->sortedSelectedEvents), ElementsAre ("A1", "A3"));
    EXPECT_THAT (diary.read(), ElementsAre ("number"));
    EXPECT_EQ (undoSteps(), 0u);
}

TEST_F (EventArrayBulkTest, addedEventsAreOneStepWhoseUndoTakesThemOut)
{
    list->addEvents ({ cue ("B2", 350), cue ("B1", 150) }, true);
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "B1", "A2", "A3", "B2"));
    EXPECT_THAT (diary.read(), ElementsAre ("number"));
    EXPECT_THAT (undoNames(), ElementsAre ("Add Event"));

    for (int round = 0; round < 3; ++round)
    {
        EXPECT_TRUE (undoManager().undo());
        EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "A1", "A2", "A3"));
        EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A2", "A3"));
        EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("A1", "A2", "A3"));
        EXPECT_THAT (diary.read(), ElementsAre ("number"));

        EXPECT_TRUE (undoManager().redo());
        EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("A1", "B1", "A2", "A3", "B2"));
        EXPECT_THAT (diary.read(), ElementsAre ("number"));
    }
}

TEST_F (EventArrayBulkTest, undoOfAddedEventsTakesOnlyThemOutOfTheSelectionAndTellsOnlyOfTheNumber)
{
    const auto added = cue ("B1", 150);
    list->addEvents ({ added }, true);
    select ({ named ("A1"), added, named ("A3") });
    diary.read();

    EXPECT_TRUE (undoManager().undo());
    EXPECT_THAT (namesOf (list->selectedEvents), ElementsAre ("A1", "A3"));
    EXPECT_THAT (namesOf (list->sortedSelectedEvents), ElementsAre ("A1", "B1", "A3")) << "stale, as ever";
    EXPECT_THAT (diary.read(), ElementsAre ("number"));
}

TEST_F (EventArrayBulkTest, addingNothingIsNoStepAndNoNews)
{
    list->addEvent (cue ("unsorted", 1), false);
    list->addEvents ({}, true);
    list->addEvents ({}, false);
    EXPECT_EQ (undoSteps(), 0u);
    EXPECT_THAT (diary.read(), IsEmpty());
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "A1", "A2", "A3", "unsorted"));
}

TEST_F (EventArrayBulkTest, nullIsNoEvent)
{
    list->addEvent (nullptr, true);
    list->addEvent (nullptr, false);
    list->addEvents ({ nullptr, nullptr }, true);
    EXPECT_EQ (undoSteps(), 0u);

    list->addEvents ({ nullptr, cue ("B1", 150), nullptr }, true);
    EXPECT_EQ (undoSteps(), 1u);
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "A1", "B1", "A2", "A3"));
}

TEST_F (EventArrayBulkTest, nullIsRemovedAndPutBackByNobody)
{
    const auto before = list->events;
    list->removeEvents ({ nullptr }, true);
    EXPECT_EQ (list->events, before);
    EXPECT_TRUE (undoManager().undo());
    EXPECT_EQ (list->events, before);

    list->removeEvents ({ named ("A1"), nullptr }, true);
    EXPECT_TRUE (undoManager().undo());
    EXPECT_EQ (list->events, before);
}

TEST_F (EventArrayBulkTest, redoAddsWhatWasGivenEvenIfTheCallersListHasChanged)
{
    EventArray::Events given { cue ("B1", 150) };
    list->addEvents (given, true);
    given = { cue ("C1", 160), cue ("C2", 170) };
    EXPECT_TRUE (undoManager().undo());
    EXPECT_TRUE (undoManager().redo());
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "B1", "A2", "A3"));
}

TEST_F (EventArrayBulkTest, theListsOwnVectorsMayBeAddedToIt)
{
    list->addEvents (list->filteredEvents, false);
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A1", "A2", "A2", "A3", "A3"));

    list->addEvents (list->events, false);
    EXPECT_EQ (list->events.size(), 16u);
}

TEST_F (EventArrayBulkTest, removedEventsLeaveEveryListAndTheSelectionIsEmptied)
{
    list->removeEvents ({ named ("A2") }, false);

    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "A1", "A3"));
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A3"));
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("A1", "A3"));
    EXPECT_THAT (list->selectedEvents, IsEmpty());
    EXPECT_THAT (namesOf (list->sortedSelectedEvents), ElementsAre ("A1", "A3")) << "stale, as ever";
    EXPECT_THAT (diary.read(), ElementsAre ("number", "selection"));
    EXPECT_EQ (undoSteps(), 0u);
}

TEST_F (EventArrayBulkTest, removedEventsAreOneStepAndComeBackUnselected)
{
    list->removeEvents ({ named ("A1"), named ("A2") }, true);
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A3"));
    EXPECT_THAT (list->selectedEvents, IsEmpty());
    EXPECT_THAT (diary.read(), ElementsAre ("number", "selection"));
    EXPECT_THAT (undoNames(), ElementsAre ("Remove Event"));

    for (int round = 0; round < 3; ++round)
    {
        select (list->filteredEvents);
        EXPECT_TRUE (undoManager().undo());
        EXPECT_THAT (namesOf (list->events).size(), 5u);
        EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A2", "A3"));
        EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("A1", "A2", "A3"));
        EXPECT_THAT (list->selectedEvents, IsEmpty());
        EXPECT_THAT (namesOf (list->sortedSelectedEvents), ElementsAre ("A3"));
        EXPECT_THAT (diary.read(), ElementsAre ("number", "selection"));

        select (list->filteredEvents);
        EXPECT_TRUE (undoManager().redo());
        EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A3"));
        EXPECT_THAT (list->selectedEvents, IsEmpty());
        EXPECT_THAT (diary.read(), ElementsAre ("number", "selection"));
        select (list->filteredEvents);
    }
}

TEST_F (EventArrayBulkTest, theSelectionItselfCanBeRemoved)
{
    list->removeEvents (list->selectedEvents, false);
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A2"));
    EXPECT_THAT (list->selectedEvents, IsEmpty());
}

TEST_F (EventArrayBulkTest, theSelectionItselfCanBeRemovedByTheUser)
{
    list->removeEvents (list->selectedEvents, true);
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A2"));
    EXPECT_TRUE (undoManager().undo());
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A2", "A3"));
    EXPECT_TRUE (undoManager().redo());
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A2"));
}

TEST_F (EventArrayBulkTest, everythingCanBeRemovedThroughTheListsOwnVectors)
{
    list->removeEvents (list->sortedFilteredEvents, true);
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out"));
    EXPECT_TRUE (undoManager().undo());
    list->removeEvents (list->events, true);
    EXPECT_THAT (list->events, IsEmpty());
    EXPECT_TRUE (undoManager().undo());
    EXPECT_EQ (list->events.size(), 5u);
}

TEST_F (EventArrayBulkTest, removingNothingGoesThroughTheWholeOperation)
{
    list->addEvent (cue ("B1", 150), false);
    list->removeEvents ({}, false);
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "B1", "A2", "A3"));
    EXPECT_THAT (list->selectedEvents, IsEmpty());
    EXPECT_THAT (diary.read(), ElementsAre ("number", "selection"));
    EXPECT_EQ (undoSteps(), 0u);

    list->removeEvents ({}, true);
    EXPECT_THAT (undoNames(), ElementsAre ("Remove Event"));
    EXPECT_THAT (diary.read(), ElementsAre ("number", "selection"));
}

TEST_F (EventArrayBulkTest, whatARemovalOpensBehindItselfNeitherSwallowsNorRenamesTheNextEdit)
{
    const auto kept = named ("A3");
    list->removeEvents ({ named ("A1"), named ("A2") }, true);
    kept->setCueNumber ("A3b");
    EXPECT_THAT (undoNames(), ElementsAre ("Changing Cue Number", "Remove Event"));

    EXPECT_TRUE (undoManager().undo());
    EXPECT_EQ (kept->getCueNumber(), juce::String ("A3"));
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A3")) << "the removal is still done";
    EXPECT_TRUE (undoManager().undo());
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A2", "A3"));
}

TEST_F (EventArrayBulkTest, aCommandThatRemovesAndEditsIsOneStep)
{
    const auto kept = named ("A3");
    {
        const ZEP::Core::UndoRedoHelpers::CompoundStep step ("Merge Cues");
        list->removeEvents ({ named ("A1"), named ("A2") }, true);
        kept->setCueNumber ("A1-3");
        list->addEvents ({ cue ("B1", 400) }, true);
    }
    EXPECT_THAT (undoNames(), ElementsAre ("Merge Cues"));
    EXPECT_TRUE (undoManager().undo());
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A2", "A3"));
    EXPECT_TRUE (undoManager().redo());
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1-3", "B1"));
}

TEST_F (EventArrayBulkTest, aRemovalThatIsUndoneLeavesRoomForAnotherEdit)
{
    list->removeEvents ({ named ("A1") }, true);
    EXPECT_TRUE (undoManager().undo());
    list->addEvents ({ cue ("B1", 150) }, true);
    EXPECT_THAT (undoNames(), ElementsAre ("Add Event"));
    EXPECT_FALSE (undoManager().canRedo());
    EXPECT_TRUE (undoManager().undo());
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A2", "A3"));
}

TEST_F (EventArrayBulkTest, anEditInsideUndoIsRefusedAndChangesNothing)
{
    list->addEvents ({ cue ("B1", 150) }, true);
    struct Meddler
    {
        std::shared_ptr<EventArray> list;
        void take (const Poco::AutoPtr<EventArrayNumberChangedNotification>&)
        {
            if (undoManager().isPerformingUndoRedo())
                list->removeEvents (list->events, true);
        }
    };
    Meddler meddler { list };
    const Poco::NObserver observer (meddler, &Meddler::take);
    Poco::NotificationCenter::defaultCenter().addObserver (observer);
    EXPECT_TRUE (undoManager().undo());
    Poco::NotificationCenter::defaultCenter().removeObserver (observer);
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A2", "A3"));
    EXPECT_THAT (undoNames(), IsEmpty());
}

TEST_F (EventArrayBulkTest, everyOperationIsAStepOfItsOwn)
{
    list->addEvents ({ cue ("B1", 150), cue ("B2", 250) }, true);
    list->addEvent (cue ("C1", 160), true);
    list->removeEvent (named ("A1"), true);
    list->removeEvents ({ named ("A2") }, true);
    list->removeEvents ({ named ("A3") }, true);
    EXPECT_THAT (undoNames(),
                 ElementsAre ("Remove Event", "Remove Event", "Remove Event", "Add Event", "Add Event"));

    while (undoManager().undo())
    {
    }
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A2", "A3"));

    while (undoManager().redo())
    {
    }
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("B1", "C1", "B2"));
}

TEST_F (EventArrayBulkTest, theNewsNamesTheListAndComesWhenTheListsAreUpToDate)
{
    list->addEvents ({ cue ("B1", 150) }, true);
    list->removeEvents ({ named ("A1"), named ("A2") }, true);
    EXPECT_TRUE (undoManager().undo());
    EXPECT_THAT (diary.entries, ElementsAre ("number", "number", "selection", "number", "selection"));
    EXPECT_THAT (diary.senders, Each (list.get()));
    EXPECT_THAT (diary.userInfoSizes, Each (1u)) << "the list and nothing else";
    EXPECT_THAT (diary.eventCounts, ElementsAre (6u, 4u, 4u, 6u, 6u));
}

TEST_F (EventArrayBulkTest, theHistoryKeepsTheListAliveForItsBulkSteps)
{
    const std::weak_ptr<EventArray> watched = list;
    list->addEvents ({ cue ("B1", 150) }, true);
    list.reset();
    ASSERT_FALSE (watched.expired());
    EXPECT_TRUE (undoManager().undo());
    EXPECT_EQ (watched.lock()->events.size(), 5u);
    undoManager().clearUndoHistory();
    EXPECT_TRUE (watched.expired());
}

TEST_F (EventArrayBulkTest, aListOutsideASharedPointerCannotTakePartInTheHistory)
{
    EventArray local (makeUntimedEvent (EventTypeFadeIn), makeUntimedEvent (EventTypeFadeOut));
    EXPECT_THROW (local.addEvents ({ cue ("B1", 150) }, true), std::bad_weak_ptr);
    EXPECT_THROW (local.removeEvents ({}, true), std::bad_weak_ptr);
    EXPECT_EQ (undoSteps(), 0u);
    EXPECT_EQ (local.events.size(), 2u);

    local.addEvents ({ cue ("B1", 150) }, false);
    EXPECT_EQ (local.filteredEvents.size(), 1u);
}

TEST_F (EventArrayBulkTest, theFilterHoldsForAddedAndRestoredEvents)
{
    list->filterParameters[EventCueNumberFilterKey] = "A";
    list->addEvents ({ cue ("B1", 150), cue ("A15", 160) }, true);
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A15", "A2", "A3"));
    list->removeEvents ({ named ("B1"), named ("A2") }, true);
    EXPECT_TRUE (undoManager().undo());
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A15", "A2", "A3"));
    EXPECT_EQ (list->events.size(), 7u);
}

TEST_F (EventArrayBulkTest, halfOfALongListIsRemovedAndComesBack)
{
    EventArray::Events many;
    for (int i = 0; i < 20000; ++i)
        many.push_back (cue (juce::String (i), 1000 + (i * 7919) % 20000 * 10));
    list->addEvents (many, true);
    const auto all = list->events;

    EventArray::Events half;
    for (std::size_t i = 0; i < many.size(); i += 2)
        half.push_back (many[i]);
    list->removeEvents (half, true);
    EXPECT_EQ (list->events.size(), 10005u);
    EXPECT_EQ (list->filteredEvents.size(), 10003u);

    EXPECT_TRUE (undoManager().undo());
    EXPECT_TRUE (std::equal (all.begin() + 2, all.end(), list->events.begin() + 2, list->events.end()))
        << "every event has another time, so the order is the old one";

    EXPECT_TRUE (undoManager().undo());
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A2", "A3"));
}

} // namespace
} // namespace ZEP::Overmarks::Testing
