// SPDX-License-Identifier: GPL-3.0-only
// The orders of the list over many lists made by chance, beside the table of columns read slowly.
#include "list/EventArray.h"

#include "support/CueLists.h"
#include "support/OvermarksTest.h"
#include "support/PlainEvent.h"
#include "support/PrintEvents.h"
#include "support/RandomEdits.h"
#include "support/RandomEvents.h"
#include "support/SlowSortOrder.h"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>

namespace ZEP::Overmarks::Testing
{
namespace
{

class EventArrayOrderPropertyTest : public OvermarksTest
{
protected:
    static std::string under (unsigned int seed, const juce::String& key, bool down)
    {
        return "seed " + std::to_string (seed) + ", " + key.toStdString() + (down ? " down" : " up");
    }

    static void sortUnder (EventArray& list, const juce::String& key, bool down)
    {
        list.sortKey = key;
        list.sortDescending = down;
        list.sortContentAndUpdateFilteredEvents();
    }

    /** What the user should see of `events`, fades left out. */
    static EventArray::Events slowlySorted (EventArray::Events events, const juce::String& key, bool down,
                                            int applicationType)
    {
        std::stable_sort (events.begin(), events.end(), startTextBefore);
        std::stable_sort (events.begin(), events.end(),
                          [=] (const auto& a, const auto& b)
                          { return listedBefore (a, b, applicationType); });
        std::stable_sort (events.begin(), events.end(), SlowSortOrder (key, down));
        return events;
    }

    static EventArray::Events withoutFades (const EventArray& list)
    {
        auto events = list.events;
        std::erase (events, list.fadeInEvent);
        std::erase (events, list.fadeOutEvent);
        return events;
    }

    static EventArray::Events timedAndUntimed (RandomEvents& random, int number)
    {
        EventArray::Events events;
        for (int i = 0; i < number; ++i)
            events.push_back (random.oneIn (5) ? random.untimed() : random.timed());
        return events;
    }

    static void retime (const EventArray::Events& events, unsigned int seed)
    {
        static const std::vector<const char*> rates { "25", "29.97df", "24", "60" };
        const auto info =
            timeInfoAt (rates[seed % rates.size()], seed % 3 == 0 ? "00:00:00:00" : "09:59:50:00");
        for (const auto& each : events)
            each->setTimeInfo (info);
    }

    struct Order
    {
        unsigned int seed; ///< of the list
        juce::String key;
        bool down;
    };

    /** Calls test (random, list, its events, order) for each list made by chance, under all of its orders. */
    template <typename Test>
    static void underEachOrder (unsigned int lists, int numberOfEvents, Test test)
    {
        for (unsigned int seed = 1; seed <= lists; ++seed)
        {
            RandomEvents random (seed);
            random.castCharacters();
            const ApplicationType application (static_cast<int> (seed % 2));
            const auto events = timedAndUntimed (random, numberOfEvents);
            retime (events, seed);
            const auto list = listOf (events);
            list->setTimeInfoForAllEvents (events[0]->getTimeInfo());

            for (const auto& key : allSortKeys())
                for (const bool down : { false, true })
                {
                    SCOPED_TRACE (under (seed, key, down));
                    test (random, *list, events, Order { seed, key, down });

                    if (HasFatalFailure())
                        return;
                }
        }
    }

    static void swapTwo (RandomEvents& random, EventArray::Events& events)
    {
        const auto any = [&]() -> auto&
        {
            return events[static_cast<std::size_t> (random.below (static_cast<int> (events.size())))];
        };
        std::swap (any(), any());
    }

    /** Oddly timed events without two alike: other cue numbers and times everywhere. */
    static EventArray::Events oddEvents (RandomEvents& random, int number)
    {
        EventArray::Events events;
        for (int i = 0; i < number; ++i)
        {
            events.push_back (random.oddlyTimed());
            auto& made = *events.back();
            setField (made, "cueNumber", "C" + juce::String (100 + i));
            const int place = 1000 + (i * 37) % 101 * 3;
            const auto keepUnset = [] (int present, int wanted) { return present == -1 ? -1 : wanted; };
            setTimes (made, keepUnset (made.getStartFrameIndex(), place - random.below (50) * 200),
                      keepUnset (made.getInPointFrameIndex(), place),
                      keepUnset (made.getEndFrameIndex(), place + 40));
        }
        return events;
    }
};

TEST_F (EventArrayOrderPropertyTest, anyTwoEventsAreJudgedByTheTable)
{
    for (unsigned int seed = 1; seed <= 12; ++seed)
    {
        RandomEvents random (seed);
        random.castCharacters();
        EventArray::Events events;
        for (int i = 0; i < 14; ++i)
            events.push_back (random.oddlyTimed());
        retime (events, seed);
        EventArray list;

        for (const auto& key : allSortKeys())
            for (const bool down : { false, true })
            {
                list.sortKey = key;
                list.sortDescending = down;
                const SlowSortOrder slow (key, down);
                for (const auto& a : events)
                    for (const auto& b : events)
                        ASSERT_EQ (list.sortEventsBySortKey (a, b), slow (a, b)) << under (
                            seed, key, down) << "\n" << lineOf (*a) << "\n" << lineOf (*b);
            }
    }
}

TEST_F (EventArrayOrderPropertyTest, wholeListsOfTimedAndUntimedEventsStandByTheTable)
{
    underEachOrder (40, 60,
                    [] (RandomEvents&, EventArray& list, const EventArray::Events& events, const Order& order)
                    {
                        list.events = { list.fadeInEvent, list.fadeOutEvent };
                        for (const auto& each : events)
                            list.addEvent (each, false);
                        sortUnder (list, order.key, order.down);
                        const auto expected =
                            slowlySorted (events, order.key, order.down, static_cast<int> (order.seed % 2));
                        ASSERT_EQ (list.sortedFilteredEvents, expected)
                            << linesOf (list.sortedFilteredEvents) << "\n"
                            << linesOf (expected);
                    });
}

TEST_F (EventArrayOrderPropertyTest, aListThatIsEditedOverAndOverStandsLikeAFreshOne)
{
    underEachOrder (
        8, 150,
        [] (RandomEvents& random, EventArray& list, const EventArray::Events& events, const Order& order)
        {
            sortUnder (list, order.key, order.down);

            for (int round = 0; round < 8; ++round)
            {
                // From one cue up to more than are looked for one by one.
                for (int edits = round < 6 ? 1 + round / 2 : 40; edits > 0; --edits)
                {
                    const auto event = random.oneOf (events);
                    auto record = PlainEvent::of (*event, event->getTimeInfo()->tcDef.framesPerSecond);
                    RandomEdits (random).edit (*event, record);
                }

                // One may leave, so that the others close up, and come back behind all.
                if (round % 4 == 3)
                {
                    const auto leaving = random.oneOf (events);
                    list.removeEvent (leaving, false);
                    list.sortContentAndUpdateFilteredEvents();
                    list.addEvent (leaving, false);
                }

                const auto fresh = listOf (withoutFades (list));
                sortUnder (*fresh, order.key, order.down);
                list.sortContentAndUpdateFilteredEvents();
                ASSERT_TRUE (list.sortedFilteredEvents == fresh->sortedFilteredEvents) << "round " << round;
            }
        });
}

TEST_F (EventArrayOrderPropertyTest, aListWhoseSurroundingsChangeStandsLikeAFreshOne)
{
    underEachOrder (
        8, 60,
        [] (RandomEvents& random, EventArray& list, const EventArray::Events& events, const Order& order)
        {
            sortUnder (list, order.key, order.down);
            const auto cast = Event::getADRCharacterMap();

            for (unsigned int round = 0; round < 12; ++round)
            {
                switch (round % 6)
                {
                    case 0: retime (events, order.seed + round + 1); break;
                    case 1:
                        random.oneOf (cast->characters())->name = "N" + juce::String (random.below (5));
                        break;
                    case 2: swapTwo (random, list.filteredEvents); break; // they are public
                    case 3: swapTwo (random, list.sortedFilteredEvents); break;
                    case 4: list.addEvent (random.oneOf (events), false); break; // it stands there twice
                    case 5: list.filterParameters[EventTextFilterKey] = round == 5 ? "Go" : ""; break;
                }

                list.sortContentAndUpdateFilteredEvents();
                const auto fresh = listOf ({});
                fresh->events = list.events;
                fresh->filterParameters = list.filterParameters;
                sortUnder (*fresh, order.key, order.down);
                ASSERT_TRUE (list.sortedFilteredEvents == fresh->sortedFilteredEvents) << "round " << round;
            }
        });
}

TEST_F (EventArrayOrderPropertyTest, theListedEventsStandByTimecode)
{
    for (unsigned int seed = 1; seed <= 40; ++seed)
        for (const int type : { 0, 1 })
        {
            RandomEvents random (seed);
            const ApplicationType application (type);
            const auto events = timedAndUntimed (random, 80);
            const auto list = listOf (events);
            auto expected = events;
            std::stable_sort (expected.begin(), expected.end(), startTextBefore);
            EXPECT_EQ (EventArray::Events (list->events.begin() + 2, list->events.end()), expected) << seed;
            std::stable_sort (expected.begin(), expected.end(),
                              [=] (const auto& a, const auto& b) { return listedBefore (a, b, type); });
            ASSERT_EQ (list->filteredEvents, expected) << seed << " application " << type;
        }
}

TEST_F (EventArrayOrderPropertyTest, oddlyTimedEventsStandTheSameHoweverTheyWereAdded)
{
    for (unsigned int seed = 1; seed <= 20; ++seed)
    {
        RandomEvents random (seed);
        random.castCharacters();
        auto events = oddEvents (random, 50);
        for (const auto& key : allSortKeys())
            for (const bool down : { false, true })
            {
                const auto list = listOf (events);
                sortUnder (*list, key, down);
                auto otherOrder = events;
                random.shuffle (otherOrder);
                const auto other = listOf (otherOrder);
                sortUnder (*other, key, down);
                ASSERT_EQ (list->sortedFilteredEvents, other->sortedFilteredEvents)
                    << under (seed, key, down);
            }
    }
}

TEST_F (EventArrayOrderPropertyTest, oddlyTimedEventsKeepTheirPlacesWhenOthersLeave)
{
    for (unsigned int seed = 1; seed <= 20; ++seed)
    {
        RandomEvents random (seed);
        random.castCharacters();
        const auto events = oddEvents (random, 30);
        for (const auto& key : allSortKeys())
            for (const bool down : { false, true })
            {
                const auto list = listOf (events);
                sortUnder (*list, key, down);
                auto left = list->sortedFilteredEvents;
                while (left.size() > 1)
                {
                    const auto leaving = random.oneOf (left);
                    std::erase (left, leaving);
                    list->removeEvent (leaving, false);
                    list->sortContentAndUpdateFilteredEvents();
                    ASSERT_EQ (list->sortedFilteredEvents, left)
                        << under (seed, key, down) << "\n"
                        << linesOf (list->sortedFilteredEvents) << "\n"
                        << linesOf (left);
                }
            }
    }
}

TEST_F (EventArrayOrderPropertyTest, oddlyTimedEventsWithoutAStartStandLastBothWays)
{
    for (unsigned int seed = 1; seed <= 40; ++seed)
        for (const bool down : { false, true })
        {
            RandomEvents random (seed);
            const auto list = listOf (oddEvents (random, 50));
            sortUnder (*list, "StartTCString", down);
            const auto hasStart = [] (const auto& each) { return each->getStartFrameIndex() != -1; };
            EXPECT_TRUE (std::is_partitioned (list->sortedFilteredEvents.begin(),
                                              list->sortedFilteredEvents.end(), hasStart))
                << under (seed, "StartTCString", down) << "\n"
                << linesOf (list->sortedFilteredEvents);
        }
}

TEST_F (EventArrayOrderPropertyTest, aTempoThatIsNoNumberLosesNoEvent)
{
    RandomEvents random (1);
    auto events = timedAndUntimed (random, 300);
    for (const auto& each : events)
        if (random.oneIn (3))
            setField (*each, "beatsPerMinute", std::numeric_limits<float>::quiet_NaN());
    const auto list = listOf (events);
    for (const bool down : { false, true })
    {
        sortUnder (*list, "BeatsPerMinute", down);
        EXPECT_THAT (list->sortedFilteredEvents, ::testing::UnorderedElementsAreArray (events));
        EXPECT_TRUE (std::is_partitioned (
            list->sortedFilteredEvents.begin(), list->sortedFilteredEvents.end(),
            [down] (const auto& each) { return std::isnan (each->getBeatsPerMinute()) != down; }))
            << "it is the lowest of all";
    }
}

} // namespace
} // namespace ZEP::Overmarks::Testing
