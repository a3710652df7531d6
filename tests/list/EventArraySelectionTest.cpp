// SPDX-License-Identifier: GPL-3.0-only
// Setting, clearing and widening the selection, and what a new filter takes out of it.
#include "list/EventArray.h"

#include "event/EventKeyValueEditor.h"
#include "preferences/PreferenceKeys.h"
#include "support/CueLists.h"
#include "support/ListDiary.h"
#include "support/NotificationCounter.h"
#include "support/OvermarksTest.h"

#include <gmock/gmock.h>

namespace ZEP::Overmarks::Testing
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/** A list sorted by cue numbers that go against time: the table begins with A, which comes last in the film. */
class EventArraySelectionTest : public OvermarksTest
{
protected:
    EventArraySelectionTest()
    {
        list->sortKey = EventKeyValueEditor::KV_CueNumber;
        list->sortContentAndUpdateFilteredEvents();
    }

    std::shared_ptr<Event> named (const std::string& name) const
    {
        for (const auto& each : list->events)
            if (each->getCueNumber().toStdString() == name)
                return each;
        throw std::invalid_argument ("no such event: " + name);
    }

    EventArray::Events named (const Names& names) const
    {
        EventArray::Events events;
        for (const auto& name : names)
            events.push_back (named (name));
        return events;
    }

    void select (const Names& names)
    {
        list->setSelectedEvents (named (names), false);
        diary.read();
    }

    Names selected() const { return namesOf (list->selectedEvents); }

    std::shared_ptr<EventArray> list =
        listOf ({ cue ("A", 900), cue ("B", 800), cue ("C", 700), cue ("D", 600), cue ("E", 500) });
    ListDiary diary;
};

// ---- setting ------------------------------------------------------------------------------------------------------------

TEST_F (EventArraySelectionTest, theSelectionStandsByTimeAndInTheUsersOrder)
{
    list->setSelectedEvents (named (Names { "C", "A", "E" }), false);
    EXPECT_THAT (selected(), ElementsAre ("E", "C", "A"));
    EXPECT_THAT (namesOf (list->sortedSelectedEvents), ElementsAre ("A", "C", "E"));
    EXPECT_THAT (diary.read(), ElementsAre ("selection"));
}

TEST_F (EventArraySelectionTest, theNewsSaysWhetherToLocate)
{
    const NotificationCounter<EventArraySelectedEventsChangedNotification> news;
    for (const bool skip : { true, false })
    {
        list->setSelectedEvents (named (Names { skip ? "A" : "B" }), skip);
        const auto& userInfo = news.last().userInfo;
        EXPECT_EQ (userInfo.size(), 2u);
        EXPECT_EQ (Poco::AnyCast<EventArray*> (userInfo.at ("object")), list.get());
        EXPECT_EQ (Poco::AnyCast<bool> (userInfo.at ("skipLocateToEvent")), skip);
    }
}

TEST_F (EventArraySelectionTest, theSelectedEventsInTheirOrderAreNoChange)
{
    select ({ "E", "C" });
    for (const bool skip : { false, true })
        list->setSelectedEvents (named (Names { "E", "C" }), skip);
    EXPECT_THAT (diary.read(), IsEmpty());
}

TEST_F (EventArraySelectionTest, theSelectedEventsInAnotherOrderAreAChange)
{
    select ({ "E", "C" });
    list->setSelectedEvents (named (Names { "C", "E" }), false);
    EXPECT_THAT (selected(), ElementsAre ("E", "C"));
    EXPECT_THAT (diary.read(), ElementsAre ("selection"));
}

TEST_F (EventArraySelectionTest, theFirstOfTheSelectedEventsAloneIsAChange)
{
    select ({ "E", "C" });
    list->setSelectedEvents (named (Names { "E" }), false);
    EXPECT_THAT (selected(), ElementsAre ("E"));
    EXPECT_THAT (diary.read(), ElementsAre ("selection"));
}

TEST_F (EventArraySelectionTest, anEmptySelectionIsSetWhereSomethingWasSelected)
{
    select ({ "E", "C" });
    list->setSelectedEvents ({}, false);
    EXPECT_THAT (list->selectedEvents, IsEmpty());
    EXPECT_THAT (list->sortedSelectedEvents, IsEmpty());
    EXPECT_THAT (diary.read(), ElementsAre ("selection"));

    list->setSelectedEvents ({}, true);
    EXPECT_THAT (diary.read(), IsEmpty());
}

TEST_F (EventArraySelectionTest, theListsOwnVectorsMayBeSelected)
{
    list->setSelectedEvents (list->sortedFilteredEvents, false);
    EXPECT_THAT (selected(), ElementsAre ("E", "D", "C", "B", "A"));

    list->setSelectedEvents (list->sortedSelectedEvents, false);
    EXPECT_THAT (selected(), ElementsAre ("E", "D", "C", "B", "A"));
    EXPECT_THAT (namesOf (list->sortedSelectedEvents), ElementsAre ("A", "B", "C", "D", "E"));

    list->setSelectedEvents (list->selectedEvents, false);
    EXPECT_THAT (selected(), ElementsAre ("E", "D", "C", "B", "A"));
    EXPECT_THAT (diary.read(), ElementsAre ("selection", "selection"));
}

TEST_F (EventArraySelectionTest, whatIsNotListedMayBeSelected)
{
    const auto stranger = cue ("X", 650);
    list->setSelectedEvents ({ stranger, named ("A"), list->fadeInEvent }, false);
    EXPECT_THAT (selected(), ElementsAre ("in", "X", "A"));
}

TEST_F (EventArraySelectionTest, theSelectionIsSortedByTheTextOfTheStart)
{
    auto early = cue ("early", -25); // reads 23:59:59:00
    const auto untimed = untimedCue ("untimed");
    list->setSelectedEvents ({ early, named ("A"), untimed }, false);
    EXPECT_THAT (selected(), ElementsAre ("untimed", "A", "early"));
}

TEST_F (EventArraySelectionTest, observersSeeTheNewSelection)
{
    struct Observer
    {
        void take (const Poco::AutoPtr<EventArraySelectedEventsChangedNotification>& news)
        {
            seen = namesOf (Poco::AnyCast<EventArray*> (news->userInfo.at ("object"))->sortedSelectedEvents);
        }
        Names seen;
    } observer;
    auto& center = Poco::NotificationCenter::defaultCenter();
    const Poco::NObserver<Observer, EventArraySelectedEventsChangedNotification> observation (
        observer, &Observer::take);
    center.addObserver (observation);
    list->setSelectedEvents (named (Names { "C", "B" }), false);
    center.removeObserver (observation);
    EXPECT_THAT (observer.seen, ElementsAre ("B", "C"));
}

// ---- clearing -----------------------------------------------------------------------------------------------------------

TEST_F (EventArraySelectionTest, clearingTellsAndLeavesTheUsersOrderStale)
{
    select ({ "E", "C" });
    const NotificationCounter<EventArraySelectedEventsChangedNotification> news;
    list->clearSelectedEvents();
    EXPECT_THAT (list->selectedEvents, IsEmpty());
    EXPECT_THAT (namesOf (list->sortedSelectedEvents), ElementsAre ("C", "E"));
    ASSERT_EQ (news.count(), 1);
    EXPECT_EQ (news.last().userInfo.size(), 1u) << "the list alone";
}

TEST_F (EventArraySelectionTest, clearingNothingTellsNobody)
{
    list->clearSelectedEvents();
    EXPECT_THAT (diary.read(), IsEmpty());
}

// ---- widening -----------------------------------------------------------------------------------------------------------

TEST_F (EventArraySelectionTest, downwardsTheEventBelowTheLowestInTheUsersOrderJoins)
{
    select ({ "A", "C" });
    list->expandSelectionByNextEvent();
    EXPECT_THAT (selected(), ElementsAre ("D", "C", "A"));
    EXPECT_THAT (diary.read(), ElementsAre ("selection"));
    EXPECT_EQ (diary.userInfoSizes.back(), 1u);
    EXPECT_THAT (namesOf (list->sortedSelectedEvents), ElementsAre ("A", "C")) << "stale, as ever";
}

TEST_F (EventArraySelectionTest, upwardsTheEventAboveTheHighestInTheUsersOrderJoins)
{
    select ({ "C", "E" });
    list->expandSelectionByPreviousEvent();
    EXPECT_THAT (selected(), ElementsAre ("E", "C", "B"));
    EXPECT_THAT (diary.read(), ElementsAre ("selection"));
    EXPECT_EQ (diary.userInfoSizes.back(), 1u);
}

TEST_F (EventArraySelectionTest, atTheEndNothingJoinsAndNobodyIsTold)
{
    select ({ "D", "E" });
    list->expandSelectionByNextEvent();
    EXPECT_THAT (selected(), ElementsAre ("E", "D"));
    EXPECT_THAT (diary.read(), IsEmpty());
}

TEST_F (EventArraySelectionTest, atTheTopTheFirstEventJoinsAgainAndAgain)
{
    select ({ "A" });
    list->expandSelectionByPreviousEvent();
    EXPECT_THAT (selected(), ElementsAre ("A", "A"));
    list->expandSelectionByPreviousEvent();
    EXPECT_THAT (selected(), ElementsAre ("A", "A", "A"));
    EXPECT_THAT (diary.read(), ElementsAre ("selection", "selection"));
}

TEST_F (EventArraySelectionTest, theSelectionGrowsOverTheWholeListInBothDirections)
{
    select ({ "C" });
    for (int i = 0; i < 2; ++i)
    {
        list->expandSelectionByNextEvent();
        list->expandSelectionByPreviousEvent();
    }
    EXPECT_THAT (selected(), ElementsAre ("E", "D", "C", "B", "A"));
}

TEST_F (EventArraySelectionTest, withoutASelectionNothingIsWidenedAndNobodyIsTold)
{
    list->expandSelectionByNextEvent();
    list->expandSelectionByPreviousEvent();
    EXPECT_THAT (list->selectedEvents, IsEmpty());
    EXPECT_THAT (diary.read(), IsEmpty());
}

TEST_F (EventArraySelectionTest, neighboursJoinAWidenedSelection)
{
    list->setFilterParameters ({ { EventCueNumberFilterKey, "C" }, { EventNumAdjacentCuesKey, "1" } });
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("B", "C", "D"));
    select ({ "C" });
    list->expandSelectionByNextEvent();
    list->expandSelectionByPreviousEvent();
    EXPECT_THAT (selected(), ElementsAre ("D", "C", "B"));
}

TEST_F (EventArraySelectionTest, aSelectedEventThatIsNotListedStandsBehindTheList)
{
    select ({ "B", "A" });
    list->setSelectedEvents ({ named ("B"), cue ("X", 100) }, false);
    diary.read();
    list->expandSelectionByNextEvent();
    EXPECT_THAT (selected(), ElementsAre ("X", "B")) << "it stands at the end, and nothing is below it";
    EXPECT_THAT (diary.read(), IsEmpty());
    list->expandSelectionByPreviousEvent();
    EXPECT_THAT (selected(), ElementsAre ("X", "B", "A"));
}

TEST_F (EventArraySelectionTest, fromAnUnlistedSelectionTheLastEventJoinsUpwards)
{
    list->setSelectedEvents ({ cue ("X", 100) }, false);
    list->expandSelectionByPreviousEvent();
    EXPECT_THAT (selected(), ElementsAre ("X", "E"));
}

TEST_F (EventArraySelectionTest, whereNothingIsListedNothingJoins)
{
    list->setSelectedEvents (named (Names { "A" }), false);
    list->filterParameters[juce::String (EventTextFilterKey)] = "nothing";
    list->sortContentAndUpdateFilteredEvents();
    diary.read();
    list->expandSelectionByNextEvent();
    list->expandSelectionByPreviousEvent();
    EXPECT_THAT (selected(), ElementsAre ("A"));
    EXPECT_THAT (diary.read(), IsEmpty());
}

// ---- a new filter -------------------------------------------------------------------------------------------------------

TEST_F (EventArraySelectionTest, aFilterReplacesTheWholeFilterAndBringsTheListUpToDate)
{
    list->addEvent (cue ("A2", 100), false);
    list->setFilterParameters ({ { EventTextFilterKey, "nothing" }, { "another key", "stays" } });
    EXPECT_THAT (list->sortedFilteredEvents, IsEmpty());
    EXPECT_EQ (list->filterParameters.at ("another key"), "stays");

    list->setFilterParameters ({ { EventCueNumberFilterKey, "A" } });
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A2", "A"));
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("A", "A2"));
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "A2", "E", "D", "C", "B", "A"));
    const std::map<juce::String, juce::String> expected { { EventCharacterFilterKey, "" },
                                                          { EventActorFilterKey, "" },
                                                          { EventTextFilterKey, "" },
                                                          { EventCueNumberFilterKey, "A" },
                                                          { EventNumAdjacentCuesKey, "" } };
    EXPECT_EQ (list->filterParameters, expected);
}

TEST_F (EventArraySelectionTest, aFilterTellsOfItselfAndThenOfTheSelectionEvenWithoutAChange)
{
    for (int i = 0; i < 2; ++i)
    {
        list->setFilterParameters ({});
        EXPECT_THAT (diary.read(), ElementsAre ("filtered", "selection"));
    }
    EXPECT_THAT (diary.userInfoSizes, ::testing::Each (1u));
    EXPECT_THAT (diary.senders, ::testing::Each (list.get()));
}

TEST_F (EventArraySelectionTest, theListsAndTheSelectionAreReadyWhenTheFilterTells)
{
    struct Watcher
    {
        void look (const Poco::AutoPtr<EventArrayFilteredEventsChangedNotification>&)
        {
            shown = namesOf (list.sortedFilteredEvents);
            selected = namesOf (list.selectedEvents);
        }

        EventArray& list;
        std::vector<std::string> shown = {};
        std::vector<std::string> selected = {};
    };

    select ({ "A", "B" });
    Watcher watcher { *list };
    const Poco::NObserver<Watcher, EventArrayFilteredEventsChangedNotification> observer (watcher,
                                                                                          &Watcher::look);
    Poco::NotificationCenter::defaultCenter().addObserver (observer);
    list->setFilterParameters ({ { EventCueNumberFilterKey, "B" } });
    Poco::NotificationCenter::defaultCenter().removeObserver (observer);

    EXPECT_THAT (watcher.shown, ElementsAre ("B"));
    EXPECT_THAT (watcher.selected, ElementsAre ("B"));
}

TEST_F (EventArraySelectionTest, nullIsNotSelected)
{
    list->setSelectedEvents ({ nullptr }, false);
    EXPECT_THAT (list->selectedEvents, ::testing::IsEmpty());
    list->setSelectedEvents ({ nullptr, list->sortedFilteredEvents.front() }, false);
    EXPECT_THAT (list->selectedEvents, ElementsAre (list->sortedFilteredEvents.front()));
}

TEST_F (EventArraySelectionTest, theListsOwnFilterMayBeSetAgain)
{
    list->filterParameters[juce::String (EventCueNumberFilterKey)] = "C";
    list->setFilterParameters (list->filterParameters);
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("C"));
    EXPECT_THAT (diary.read(), ElementsAre ("filtered", "selection"));
}

TEST_F (EventArraySelectionTest, whatAFilterHidesLeavesTheSelectionForGood)
{
    select ({ "A", "B", "D" });
    list->setFilterParameters ({ { EventCueNumberFilterKey, "B" } });
    EXPECT_THAT (selected(), ElementsAre ("B"));
    EXPECT_THAT (namesOf (list->sortedSelectedEvents), ElementsAre ("A", "B", "D")) << "stale, as ever";

    list->setFilterParameters ({});
    EXPECT_THAT (selected(), ElementsAre ("B"));
}

TEST_F (EventArraySelectionTest, neighboursStaySelectedUnderAFilter)
{
    select ({ "A", "B", "D" });
    list->setFilterParameters ({ { EventCueNumberFilterKey, "C" }, { EventNumAdjacentCuesKey, "1" } });
    EXPECT_THAT (selected(), ElementsAre ("D", "B"));
}

TEST_F (EventArraySelectionTest, theOrderAndTheRepeatsOfTheSelectionOutliveAFilter)
{
    list->selectedEvents = named (Names { "A", "E", "A", "C" });
    list->setFilterParameters ({});
    EXPECT_THAT (selected(), ElementsAre ("A", "E", "A", "C"));
}

TEST_F (EventArraySelectionTest, strangersAndFadesLeaveTheSelectionUnderAnyFilter)
{
    list->setSelectedEvents ({ list->fadeInEvent, cue ("X", 100), named ("A") }, false);
    list->setFilterParameters ({});
    EXPECT_THAT (selected(), ElementsAre ("A"));
}

} // namespace
} // namespace ZEP::Overmarks::Testing
