// SPDX-License-Identifier: GPL-3.0-only
// Stepping through the list in the user's order: to the next event, and to the next cue number.
#include "list/EventArray.h"

#include "event/EventKeyValueEditor.h"
#include "preferences/PreferenceKeys.h"
#include "support/CueLists.h"
#include "support/ListDiary.h"
#include "support/OvermarksTest.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace ZEP::Overmarks::Testing
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Step = void (EventArray::*)();

/** Lines of a film in time; the texts tell their order in a table that is sorted by text. */
class EventArraySteppingTest : public OvermarksTest
{
protected:
    struct Line
    {
        const char* cueNumber;
        int inPoint;
        const char* text;
    };

    /** Makes the list, sorted by text. */
    void lines (const std::vector<Line>& theLines)
    {
        EventArray::Events events;
        for (const auto& line : theLines)
        {
            events.push_back (cue (line.cueNumber, line.inPoint));
            setField (*events.back(), "text", ZEP::Core::RichTextString (juce::String (line.text)));
        }
        list = listOf (events);
        list->sortKey = EventKeyValueEditor::KV_Text;
        list->sortContentAndUpdateFilteredEvents();
        diary.read();
    }

    void select (const std::vector<const char*>& texts)
    {
        EventArray::Events events;
        for (const auto* text : texts)
            for (const auto& each : list->events)
                if (each->getText().getText() == text)
                    events.push_back (each);
        list->setSelectedEvents (events, false);
        diary.read();
    }

    void filterByCue (const juce::String& number, const juce::String& neighbours)
    {
        list->setFilterParameters (
            { { EventCueNumberFilterKey, number }, { EventNumAdjacentCuesKey, neighbours } });
        diary.read();
    }

    /** The texts of the selection after a step. */
    Names after (Step step)
    {
        ((*list).*step)();
        Names texts;
        for (const auto& each : list->selectedEvents)
            texts.push_back (each->getText().getText().toStdString());
        return texts;
    }

    Names next() { return after (&EventArray::selectNextEvent); }
    Names previous() { return after (&EventArray::selectPreviousEvent); }
    Names nextCue() { return after (&EventArray::selectNextEventByCueNumber); }
    Names previousCue() { return after (&EventArray::selectPreviousEventByCueNumber); }

    static const std::vector<Step>& allSteps()
    {
        static const std::vector<Step> steps { &EventArray::selectNextEvent, &EventArray::selectPreviousEvent,
                                               &EventArray::selectNextEventByCueNumber,
                                               &EventArray::selectPreviousEventByCueNumber };
        return steps;
    }

    std::shared_ptr<EventArray> list;
    ListDiary diary;
};

const char* const one = "1";

// ---- events -------------------------------------------------------------------------------------------------------------

TEST_F (EventArraySteppingTest, nextAndPreviousFollowTheUsersOrder)
{
    lines ({ { one, 100, "c" }, { one, 200, "a" }, { one, 300, "b" } });
    select ({ "a" });
    EXPECT_THAT (next(), ElementsAre ("b"));
    EXPECT_THAT (next(), ElementsAre ("c"));
    EXPECT_THAT (previous(), ElementsAre ("b"));
    EXPECT_THAT (previous(), ElementsAre ("a"));
    EXPECT_THAT (diary.read(), ElementsAre ("selection", "selection", "selection", "selection"));
}

TEST_F (EventArraySteppingTest, theNewsOfAStepHoldsTheListAlone)
{
    lines ({ { "1", 100, "a" }, { "2", 200, "b" } });
    diary.userInfoSizes.clear();
    for (const auto step : allSteps())
        ((*list).*step)();
    EXPECT_THAT (diary.userInfoSizes, ElementsAre (1u, 1u, 1u, 1u));
}

TEST_F (EventArraySteppingTest, fromNoSelectionTheFirstOrTheLastEventIsSelected)
{
    lines ({ { one, 100, "c" }, { one, 200, "a" }, { one, 300, "b" } });
    EXPECT_THAT (next(), ElementsAre ("a"));
    list->clearSelectedEvents();
    EXPECT_THAT (previous(), ElementsAre ("c"));
}

TEST_F (EventArraySteppingTest, theStepStartsFromTheEarliestSelectedEvent)
{
    lines ({ { one, 100, "c" }, { one, 200, "a" }, { one, 300, "b" }, { one, 400, "d" } });
    select ({ "a", "b", "c" });
    EXPECT_THAT (next(), ElementsAre ("d")) << "c is the earliest of the three";
    select ({ "a", "b" });
    EXPECT_THAT (next(), ElementsAre ("b")) << "behind the first of them, though it is selected too";
    select ({ "b", "d" });
    EXPECT_THAT (previous(), ElementsAre ("a"));
}

TEST_F (EventArraySteppingTest, atTheEndsTheSelectionStaysAndIsTold)
{
    lines ({ { one, 100, "b" }, { one, 200, "a" } });
    select ({ "b" });
    EXPECT_THAT (next(), ElementsAre ("b"));
    EXPECT_THAT (diary.read(), ElementsAre ("selection"));
    select ({ "a" });
    EXPECT_THAT (previous(), ElementsAre ("a"));
    EXPECT_THAT (diary.read(), ElementsAre ("selection"));
}

TEST_F (EventArraySteppingTest, aSelectionOfSeveralStaysWholeWhereThereIsNoNext)
{
    lines ({ { one, 100, "c" }, { one, 200, "a" } });
    select ({ "a", "c" });
    EXPECT_THAT (next(), ElementsAre ("c", "a"));
}

TEST_F (EventArraySteppingTest, neighboursAreSteppedOver)
{
    lines ({ { "x", 100, "a" },
             { "hit", 200, "b" },
             { "x", 300, "c" },
             { "x", 400, "d" },
             { "hit", 500, "e" },
             { "x", 600, "f" } });
    filterByCue ("hit", "1");
    ASSERT_EQ (list->sortedFilteredEvents.size(), 6u);
    EXPECT_THAT (next(), ElementsAre ("b")) << "the first that is no neighbour";
    EXPECT_THAT (next(), ElementsAre ("e"));
    EXPECT_THAT (next(), ElementsAre ("e"));
    EXPECT_THAT (previous(), ElementsAre ("b"));
    EXPECT_THAT (previous(), ElementsAre ("b"));
    list->clearSelectedEvents();
    EXPECT_THAT (previous(), ElementsAre ("e"));
}

TEST_F (EventArraySteppingTest, aSelectedNeighbourIsAStartToo)
{
    lines ({ { "x", 100, "a" }, { "hit", 200, "b" }, { "x", 300, "c" } });
    filterByCue ("hit", "1");
    select ({ "c" });
    EXPECT_THAT (previous(), ElementsAre ("b"));
    select ({ "c" });
    EXPECT_THAT (next(), ElementsAre ("c"));
}

TEST_F (EventArraySteppingTest, whereAllAreNeighboursNothingIsSelectedButTold)
{
    lines ({ { one, 100, "a" }, { one, 200, "b" } });
    for (const auto& each : list->sortedFilteredEvents)
        each->setHiddenByFilter (true);
    for (const auto step : allSteps())
    {
        EXPECT_THAT (after (step), IsEmpty());
        EXPECT_THAT (diary.read(), ElementsAre ("selection"));
    }
}

TEST_F (EventArraySteppingTest, fromAnUnlistedSelectionNextStaysAndPreviousIsTheLastEvent)
{
    lines ({ { "x", 100, "c" }, { "y", 200, "a" }, { "y", 300, "b" } });
    select ({ "c" });
    list->filterParameters[juce::String (EventCueNumberFilterKey)] = "y";
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (next(), ElementsAre ("c"));
    EXPECT_THAT (previous(), ElementsAre ("b"));
    EXPECT_THAT (diary.read(), ElementsAre ("selection", "selection"));
}

TEST_F (EventArraySteppingTest, anEventThatIsListedTwiceStandsAtItsFirstPlace)
{
    lines ({ { one, 100, "a" }, { one, 200, "b" }, { one, 300, "c" } });
    list->addEvents ({ list->events[3] }, false);
    EXPECT_EQ (list->sortedFilteredEvents.size(), 4u);
    EXPECT_THAT (next(), ElementsAre ("a"));
    EXPECT_THAT (next(), ElementsAre ("b"));
    EXPECT_THAT (next(), ElementsAre ("b")) << "its second entry";
    EXPECT_THAT (next(), ElementsAre ("b")) << "and from the first again";
}

TEST_F (EventArraySteppingTest, theFirstPlaceIsThatOfTheNewOrder)
{
    lines ({ { one, 100, "a" }, { one, 200, "b" } });
    list->addEvents ({ list->events[3] }, false);
    EXPECT_THAT (next(), ElementsAre ("a"));
    EXPECT_THAT (next(), ElementsAre ("b"));
    list->sortDescending = true;
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (next(), ElementsAre ("b")) << "its second entry; a comes only behind that";
}

TEST_F (EventArraySteppingTest, aProjectWithOnlyItsFadesHasNoSteps)
{
    list = listWithFades();
    list->sortContentAndUpdateFilteredEvents();
    list->selectedEvents = { list->fadeInEvent };
    for (const auto step : allSteps())
        EXPECT_THAT (after (step), ElementsAre (""));
    EXPECT_THAT (diary.read(), IsEmpty());
}

TEST_F (EventArraySteppingTest, whereNothingIsListedThereAreNoSteps)
{
    lines ({ { one, 100, "a" }, { one, 200, "b" } });
    select ({ "b" });
    list->filterParameters[juce::String (EventTextFilterKey)] = "nothing";
    list->sortContentAndUpdateFilteredEvents();
    for (const auto step : allSteps())
        EXPECT_THAT (after (step), ElementsAre ("b"));
    EXPECT_THAT (diary.read(), IsEmpty());
}

TEST_F (EventArraySteppingTest, aListWithoutFadesNeedsThreeEvents)
{
    list = std::make_shared<EventArray>();
    list->addEvents ({ cue ("1", 100), cue ("2", 200) }, false);
    diary.read();
    for (const auto step : allSteps())
        EXPECT_THAT (after (step), IsEmpty());
    EXPECT_THAT (diary.read(), IsEmpty());
    list->addEvents ({ cue ("3", 300) }, false);
    EXPECT_EQ (next().size(), 1u);
}

TEST_F (EventArraySteppingTest, theStepsFollowANewOrderAndANewFilter)
{
    lines ({ { "1", 100, "c" }, { "2", 200, "a" }, { "3", 300, "b" } });
    EXPECT_THAT (next(), ElementsAre ("a"));
    EXPECT_THAT (next(), ElementsAre ("b"));
    list->sortKey = EventKeyValueEditor::KV_CueNumber;
    list->sortDescending = true;
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (next(), ElementsAre ("a"));
    list->sortDescending = false;
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (next(), ElementsAre ("b"));
    list->addEvents ({ cue ("0", 500) }, false);
    EXPECT_THAT (previous(), ElementsAre ("a"));
    list->removeEvents ({ list->sortedFilteredEvents[1] }, false);
    EXPECT_THAT (next(), ElementsAre (""));
    EXPECT_THAT (next(), ElementsAre ("a"));
}

TEST_F (EventArraySteppingTest, theStepsFollowAListThatTheApplicationHasReordered)
{
    lines ({ { "1", 100, "a" }, { "2", 200, "b" }, { "3", 300, "c" }, { "4", 400, "d" } });
    EXPECT_THAT (next(), ElementsAre ("a"));
    EXPECT_THAT (next(), ElementsAre ("b"));
    std::reverse (list->sortedFilteredEvents.begin(), list->sortedFilteredEvents.end());
    EXPECT_THAT (next(), ElementsAre ("a"));
    list->sortedFilteredEvents.pop_back();
    EXPECT_THAT (next(), ElementsAre ("a")) << "it is no longer listed";
    EXPECT_THAT (previous(), ElementsAre ("b"));
    list->sortedFilteredEvents[0] = list->events.back();
    list->sortedFilteredEvents[2] = cue ("new", 1);
    EXPECT_THAT (next(), ElementsAre ("b")) << "it has been written over";
}

// ---- cue numbers --------------------------------------------------------------------------------------------------------

TEST_F (EventArraySteppingTest, byCueNumberTheNextOneInTheUsersOrderIsTaken)
{
    lines ({ { "1", 100, "a" }, { "2", 200, "d" }, { "3", 300, "b" }, { "1", 400, "c" } });
    select ({ "a" });
    EXPECT_THAT (nextCue(), ElementsAre ("b")) << "cue 2 is next in time";
    EXPECT_THAT (nextCue(), ElementsAre ("c"));
    EXPECT_THAT (nextCue(), ElementsAre ("d"));
    EXPECT_THAT (previousCue(), ElementsAre ("a", "c"));
    EXPECT_THAT (diary.read(), ElementsAre ("selection", "selection", "selection", "selection"));
}

TEST_F (EventArraySteppingTest, allLaterEventsOfTheNewCueNumberJoinInTheOrderOfTime)
{
    lines ({ { "1", 500, "a" },
             { "2", 400, "b" },
             { "3", 300, "c" },
             { "2", 200, "d" },
             { "1", 100, "e" },
             { "2", 50, "f" } });
    select ({ "a" });
    EXPECT_THAT (nextCue(), ElementsAre ("f", "d", "b"));
}

TEST_F (EventArraySteppingTest, upwardsAllEarlierEventsOfTheNewCueNumberJoin)
{
    lines ({ { "2", 500, "a" }, { "1", 400, "b" }, { "2", 300, "c" }, { "3", 200, "d" }, { "2", 100, "e" } });
    select ({ "d" });
    EXPECT_THAT (previousCue(), ElementsAre ("c", "a")) << "e stands below";
}

TEST_F (EventArraySteppingTest, linesOfTheSameCueNumberAreSteppedOver)
{
    lines ({ { "1", 100, "a" }, { "1", 200, "b" }, { "2", 300, "c" }, { "2", 400, "d" }, { "3", 500, "e" } });
    select ({ "a" });
    EXPECT_THAT (nextCue(), ElementsAre ("c", "d"));
    EXPECT_THAT (nextCue(), ElementsAre ("e"));
    EXPECT_THAT (previousCue(), ElementsAre ("c", "d"));
    EXPECT_THAT (previousCue(), ElementsAre ("a", "b"));
}

TEST_F (EventArraySteppingTest, whereNoOtherCueNumberFollowsNothingIsSelectedAndTold)
{
    lines ({ { "1", 100, "a" }, { "2", 200, "b" }, { "2", 300, "c" } });
    select ({ "b" });
    EXPECT_THAT (nextCue(), IsEmpty());
    EXPECT_THAT (diary.read(), ElementsAre ("selection"));
    select ({ "a" });
    EXPECT_THAT (previousCue(), IsEmpty());
    EXPECT_THAT (diary.read(), ElementsAre ("selection"));
}

TEST_F (EventArraySteppingTest, withoutASelectionItIsAStepToTheNextEvent)
{
    lines ({ { "1", 100, "b" }, { "1", 200, "a" } });
    EXPECT_THAT (nextCue(), ElementsAre ("a"));
    list->clearSelectedEvents();
    diary.read();
    EXPECT_THAT (previousCue(), ElementsAre ("b"));
    EXPECT_THAT (diary.read(), ElementsAre ("selection")) << "once";
}

TEST_F (EventArraySteppingTest, withoutACueNumberItIsAStepToTheNextEvent)
{
    lines ({ { "1", 100, "a" }, { "", 200, "b" }, { "1", 300, "c" }, { "1", 400, "d" } });
    select ({ "b" });
    EXPECT_THAT (nextCue(), ElementsAre ("c")) << "d has the same cue number but doesn't join";
    select ({ "b" });
    EXPECT_THAT (previousCue(), ElementsAre ("a"));
}

TEST_F (EventArraySteppingTest, theCueNumberOfTheEarliestSelectedEventCounts)
{
    lines ({ { "1", 300, "a" }, { "2", 200, "b" }, { "3", 100, "c" }, { "4", 400, "d" } });
    select ({ "a", "c" });
    EXPECT_THAT (nextCue(), ElementsAre ("d"));
}

TEST_F (EventArraySteppingTest, eventsWithoutACueNumberJoinUntilANewOneIsFound)
{
    lines ({ { "1", 100, "a" },
             { "", 200, "b" },
             { "1", 300, "c" },
             { "", 400, "d" },
             { "2", 500, "e" },
             { "", 600, "f" },
             { "2", 700, "g" },
             { "3", 800, "h" } });
    select ({ "a" });
    EXPECT_THAT (nextCue(), ElementsAre ("b", "d", "e", "g"));
}

TEST_F (EventArraySteppingTest, eventsWithoutACueNumberJoinUpwardsToo)
{
    lines ({ { "2", 100, "a" },
             { "3", 200, "b" },
             { "", 300, "c" },
             { "2", 400, "d" },
             { "", 500, "e" },
             { "1", 600, "f" } });
    select ({ "f" });
    EXPECT_THAT (previousCue(), ElementsAre ("a", "d", "e"));
}

TEST_F (EventArraySteppingTest, whereOnlyEventsWithoutACueNumberFollowTheyAreSelected)
{
    lines ({ { "1", 100, "a" }, { "", 200, "b" }, { "", 300, "c" } });
    select ({ "a" });
    EXPECT_THAT (nextCue(), ElementsAre ("b", "c"));
}

TEST_F (EventArraySteppingTest, neighboursPlayNoPartInAStepByCueNumber)
{
    lines ({ { "hit1", 100, "a" },
             { "x", 200, "b" },
             { "hit2", 300, "c" },
             { "x", 400, "d" },
             { "hit2", 500, "e" },
             { "hit1", 600, "f" } });
    filterByCue ("hit", "2");
    ASSERT_EQ (list->sortedFilteredEvents.size(), 6u);
    select ({ "a" });
    EXPECT_THAT (nextCue(), ElementsAre ("c", "e"));
    EXPECT_THAT (previousCue(), ElementsAre ("a"));
    select ({ "b" });
    EXPECT_THAT (nextCue(), ElementsAre ("c", "e")) << "a selected neighbour is a start too";
}

TEST_F (EventArraySteppingTest, cueNumbersAreComparedAsTheyStand)
{
    lines ({ { "a1", 100, "a" }, { "A1", 200, "b" }, { "a1 ", 300, "c" }, { "A1", 400, "d" } });
    select ({ "a" });
    EXPECT_THAT (nextCue(), ElementsAre ("b", "d"));
}

TEST_F (EventArraySteppingTest, fromAnUnlistedSelectionOnlyUpwardsACueNumberIsFound)
{
    lines ({ { "x", 100, "c" }, { "y1", 200, "a" }, { "y2", 300, "b" }, { "y2", 400, "d" } });
    select ({ "c" });
    list->filterParameters[juce::String (EventCueNumberFilterKey)] = "y";
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (previousCue(), ElementsAre ("b", "d"));
    select ({ "c" });
    EXPECT_THAT (nextCue(), IsEmpty());
}

TEST_F (EventArraySteppingTest, aCueNumberThatWasEditedSinceTheLastSortCounts)
{
    lines ({ { "1", 100, "a" }, { "2", 200, "b" }, { "3", 300, "c" }, { "4", 400, "d" } });
    select ({ "a" });
    EXPECT_THAT (nextCue(), ElementsAre ("b"));
    setField (*list->sortedFilteredEvents[3], "cueNumber", juce::String ("3"));
    EXPECT_THAT (nextCue(), ElementsAre ("c", "d"));
}

TEST_F (EventArraySteppingTest, noStepTouchesTheSelectionInTheUsersOrder)
{
    lines ({ { "1", 100, "a" }, { "2", 200, "b" }, { "3", 300, "c" } });
    select ({ "b" });
    const auto stale = list->sortedSelectedEvents;
    for (const auto step : allSteps())
    {
        ((*list).*step)();
        EXPECT_EQ (list->sortedSelectedEvents, stale);
    }
}

} // namespace
} // namespace ZEP::Overmarks::Testing
