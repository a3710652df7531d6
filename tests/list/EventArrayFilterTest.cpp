// SPDX-License-Identifier: GPL-3.0-only
// What the filter lets through, what it lists beside a match, and what belongs to a cue.
#include "list/EventArray.h"

#include "preferences/PreferenceKeys.h"
#include "support/CueLists.h"
#include "support/ListDiary.h"
#include "support/OvermarksTest.h"
#include "support/PrintEvents.h"
#include "support/RandomEvents.h"
#include "support/SlowFilter.h"
#include "support/SlowSortOrder.h"

#include <gmock/gmock.h>
#include <map>

namespace ZEP::Overmarks::Testing
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Filter = std::map<juce::String, juce::String>;

class EventArrayFilterTest : public OvermarksTest
{
protected:
    /** The cue numbers that the filter lists; those listed only as neighbours in brackets. */
    static Names listed (EventArray& list, const Filter& filter)
    {
        list.filterParameters = filter;
        list.sortContentAndUpdateFilteredEvents();
        EXPECT_THAT (list.sortedFilteredEvents, ::testing::UnorderedElementsAreArray (list.filteredEvents));
        Names names;
        for (const auto& each : list.filteredEvents)
            names.push_back (each->isHiddenByFilter() ? "(" + each->getCueNumber().toStdString() + ")"
                                                      : each->getCueNumber().toStdString());
        return names;
    }

    /** Cues "1" to "9", ten seconds apart, with a text for those in `matching`. */
    static std::shared_ptr<EventArray> nineCues (const std::vector<int>& matching)
    {
        EventArray::Events events;
        for (int i = 1; i <= 9; ++i)
            events.push_back (cue (juce::String (i), i * 250));
        for (const int number : matching)
            setField (*events[static_cast<std::size_t> (number - 1)], "text",
                      ZEP::Core::RichTextString ("match"));
        return listOf (events);
    }

    static std::shared_ptr<Event> spoken (const juce::String& id, const juce::String& cueNumber, int inPoint)
    {
        auto made = cue (cueNumber, inPoint);
        setField (*made, "characterID", id);
        return made;
    }

    static Filter matchWithNeighbours (const juce::String& number)
    {
        return { { EventTextFilterKey, "match" }, { EventNumAdjacentCuesKey, number } };
    }

    juce::String anna = addCharacter ("ANNA", "B. Miller");
    juce::String ben = addCharacter ("BEN", "C. Adams");
};

TEST_F (EventArrayFilterTest, emptyFiltersLetEverythingButTheFadesThrough)
{
    const auto list =
        listOf ({ cue ("A1", 100), event (EventTypeStreamer, "s", 50, 150, 150),
                  event (EventTypeMarker, "m", 160, 160, 170), event (EventTypeFlutter, "f", 190, 200, 204),
                  event (eventTypeUnset, "?", 300, 300, 300), untimedCue ("A2") });
    EXPECT_THAT (listed (*list, {}), ElementsAre ("A2", "A1", "s", "m", "f", "?"));
}

TEST_F (EventArrayFilterTest, everyFadeIsLeftOutNotOnlyTheTwoOfTheProject)
{
    const auto list = listOf ({ event (EventTypeFadeIn, "in2", 10, 10, 10),
                                event (EventTypeFadeOut, "out2", 20, 20, 20), cue ("A1", 100) });
    EXPECT_THAT (listed (*list, {}), ElementsAre ("A1"));
}

TEST_F (EventArrayFilterTest, aMissingKeyCountsAsEmptyAndIsThereAfterwards)
{
    EventArray bare;
    bare.updateFilteredEvents();
    const Filter expected { { EventCharacterFilterKey, "" },
                            { EventActorFilterKey, "" },
                            { EventTextFilterKey, "" },
                            { EventCueNumberFilterKey, "" },
                            { EventNumAdjacentCuesKey, "" } };
    EXPECT_EQ (bare.filterParameters, expected);
}

TEST_F (EventArrayFilterTest, theCharacterIsFoundByItsExactName)
{
    const auto list = listOf (
        { spoken (anna, "1", 100), spoken (ben, "2", 200), cue ("3", 300), spoken ("gone", "4", 400) });
    EXPECT_THAT (listed (*list, { { EventCharacterFilterKey, "ANNA" } }), ElementsAre ("1"));
    for (const auto* other : { "anna", "ANN", "ANNA ", anna.toRawUTF8() })
        EXPECT_THAT (listed (*list, { { EventCharacterFilterKey, other } }), IsEmpty()) << other;
}

TEST_F (EventArrayFilterTest, theActorIsFoundByTheExactName)
{
    const auto list = listOf (
        { spoken (anna, "1", 100), spoken (ben, "2", 200), cue ("3", 300), spoken ("gone", "4", 400) });
    EXPECT_THAT (listed (*list, { { EventActorFilterKey, "C. Adams" } }), ElementsAre ("2"));
    for (const auto* other : { "c. adams", "Adams", " C. Adams" })
        EXPECT_THAT (listed (*list, { { EventActorFilterKey, other } }), IsEmpty()) << other;
}

TEST_F (EventArrayFilterTest, aTextIsFoundByAnyPartInItsCase)
{
    const auto list = listOf ({ cue ("1", 100), cue ("2", 200), cue ("3", 300) });
    setField (*list->events[2], "text", ZEP::Core::RichTextString ("TOMORROW"));
    setField (*list->events[3], "text", ZEP::Core::RichTextString ("Tom is here"));
    setField (*list->events[4], "notes", ZEP::Core::RichTextString ("Tom"));
    EXPECT_THAT (listed (*list, { { EventTextFilterKey, "Tom" } }), ElementsAre ("2"));
    EXPECT_THAT (listed (*list, { { EventTextFilterKey, "TOM" } }), ElementsAre ("1"));
    EXPECT_THAT (listed (*list, { { EventTextFilterKey, "OMO" } }), ElementsAre ("1"));
    EXPECT_THAT (listed (*list, { { EventTextFilterKey, " " } }), ElementsAre ("2")) << "blanks count";
    EXPECT_THAT (listed (*list, { { EventTextFilterKey, "e " } }), IsEmpty());
}

TEST_F (EventArrayFilterTest, aCueNumberIsFoundByAnyPartInItsCase)
{
    const auto list = listOf ({ cue ("A12", 100), cue ("a1", 200), cue ("112", 300) });
    EXPECT_THAT (listed (*list, { { EventCueNumberFilterKey, "12" } }), ElementsAre ("A12", "112"));
    EXPECT_THAT (listed (*list, { { EventCueNumberFilterKey, "a" } }), ElementsAre ("a1"));
    EXPECT_THAT (listed (*list, { { EventCueNumberFilterKey, "12 " } }), IsEmpty());
}

TEST_F (EventArrayFilterTest, allFiltersHaveToHold)
{
    const auto list = listOf ({ spoken (anna, "1", 100), spoken (anna, "2", 200), spoken (ben, "21", 300) });
    EXPECT_THAT (listed (*list, { { EventCharacterFilterKey, "ANNA" }, { EventCueNumberFilterKey, "2" } }),
                 ElementsAre ("2"));
    EXPECT_THAT (listed (*list, { { EventCharacterFilterKey, "ANNA" }, { EventActorFilterKey, "C. Adams" } }),
                 IsEmpty());
}

TEST_F (EventArrayFilterTest, oneNeighbourOnEachSideOfTwoMatches)
{
    EXPECT_THAT (listed (*nineCues ({ 5, 7 }), matchWithNeighbours ("1")),
                 ElementsAre ("(4)", "5", "(6)", "7", "(8)"));
}

TEST_F (EventArrayFilterTest, withoutNeighboursOnlyTheMatchesAreListed)
{
    EXPECT_THAT (listed (*nineCues ({ 5, 7 }), matchWithNeighbours ("0")), ElementsAre ("5", "7"));
    EXPECT_THAT (listed (*nineCues ({ 5, 7 }), { { EventTextFilterKey, "match" } }), ElementsAre ("5", "7"));
}

TEST_F (EventArrayFilterTest, neighboursStopAtTheEndsOfTheList)
{
    EXPECT_THAT (listed (*nineCues ({ 1 }), matchWithNeighbours ("2")), ElementsAre ("1", "(2)", "(3)"));
    EXPECT_THAT (listed (*nineCues ({ 9 }), matchWithNeighbours ("2")), ElementsAre ("(7)", "(8)", "9"));
    EXPECT_EQ (listed (*nineCues ({ 5 }), matchWithNeighbours ("2147483647")).size(), 9u);
    EXPECT_THAT (listed (*nineCues ({}), matchWithNeighbours ("3")), IsEmpty()) << "no match, no neighbours";
}

TEST_F (EventArrayFilterTest, overlappingNeighbourhoodsListAnEventOnce)
{
    EXPECT_THAT (listed (*nineCues ({ 3, 6 }), matchWithNeighbours ("2")),
                 ElementsAre ("(1)", "(2)", "3", "(4)", "(5)", "6", "(7)", "(8)"));
    EXPECT_THAT (listed (*nineCues ({ 2, 5 }), matchWithNeighbours ("3")),
                 ElementsAre ("(1)", "2", "(3)", "(4)", "5", "(6)", "(7)", "(8)"));
}

TEST_F (EventArrayFilterTest, aNumberOfNeighboursIsReadAsFarAsItIsOne)
{
    EXPECT_THAT (listed (*nineCues ({ 5 }), matchWithNeighbours ("many")), ElementsAre ("5"));
    EXPECT_THAT (listed (*nineCues ({ 5 }), matchWithNeighbours (" 1 cue")), ElementsAre ("(4)", "5", "(6)"));
    for (const auto* negative : { "-1", "-3", "-2147483648" })
        EXPECT_THAT (listed (*nineCues ({ 5 }), matchWithNeighbours (negative)), ElementsAre ("5"))
            << negative;
}

TEST_F (EventArrayFilterTest, withoutAFilterNothingIsANeighbour)
{
    EXPECT_EQ (listed (*nineCues ({}), { { EventNumAdjacentCuesKey, "2" } }),
               (Names { "1", "2", "3", "4", "5", "6", "7", "8", "9" }));
}

TEST_F (EventArrayFilterTest, theMarkOfANeighbourGoesWithTheFilter)
{
    const auto list = nineCues ({ 5 });
    EXPECT_THAT (listed (*list, matchWithNeighbours ("1")), ElementsAre ("(4)", "5", "(6)"));
    list->fadeInEvent->setHiddenByFilter (true);
    EXPECT_EQ (listed (*list, {}).front(), "1");
    for (const auto& each : list->events)
        EXPECT_FALSE (each->isHiddenByFilter()) << lineOf (*each);
}

TEST_F (EventArrayFilterTest, whatIsNotListedHasNoMark)
{
    const auto list = nineCues ({ 5 });
    listed (*list, matchWithNeighbours ("1"));
    EXPECT_FALSE (list->events[2]->isHiddenByFilter());
    EXPECT_TRUE (list->events[5]->isHiddenByFilter());
}

TEST_F (EventArrayFilterTest, markersAndOthersCuesAreNeighboursButFadesAreNot)
{
    const auto list = listOf ({ event (EventTypeMarker, "m", 100, 100, 110),
                                event (EventTypeFadeIn, "fade", 150, 150, 150), spoken (anna, "A", 200),
                                event (EventTypeFadeOut, "fade2", 250, 250, 250), spoken (ben, "B", 300) });
    EXPECT_THAT (listed (*list, { { EventCharacterFilterKey, "ANNA" }, { EventNumAdjacentCuesKey, "1" } }),
                 ElementsAre ("(m)", "A", "(B)"));
}

TEST_F (EventArrayFilterTest, aStreamerInsideAMatchingCueStaysAndOneInAnothersCueGoes)
{
    const auto list = listOf ({ spoken (anna, "A", 100), event (EventTypeStreamer, "s1", 50, 110, 110),
                                spoken (ben, "B", 200), event (EventTypeStreamer, "s2", 150, 210, 210),
                                event (EventTypeFlutter, "f2", 215, 215, 219) });
    const Filter annas { { EventCharacterFilterKey, "ANNA" } };
    EXPECT_THAT (listed (*list, annas), ElementsAre ("A", "s1"));
    EXPECT_THAT (listed (*list, { { EventCharacterFilterKey, "BEN" } }), ElementsAre ("B", "s2", "f2"));
    EXPECT_THAT (listed (*list, { { EventCharacterFilterKey, "ANNA" }, { EventNumAdjacentCuesKey, "2" } }),
                 ElementsAre ("A", "s1", "(B)", "(s2)"))
        << "unless it is a neighbour";
}

TEST_F (EventArrayFilterTest, theRangeOfACueIsInclusive)
{
    const auto list = listOf ({ spoken (anna, "A", 100), event (EventTypeStreamer, "first", 50, 100, 100),
                                event (EventTypeStreamer, "last", 75, 125, 125),
                                event (EventTypeFlutter, "behind", 100, 126, 130) });
    EXPECT_THAT (listed (*list, { { EventCharacterFilterKey, "ANNA" } }), ElementsAre ("A", "first", "last"));
}

TEST_F (EventArrayFilterTest, theRangeStaysUntilTheNextMatchingCue)
{
    auto longCue = spoken (anna, "A", 100);
    setTimes (*longCue, 75, 100, 500);
    const auto list =
        listOf ({ longCue, spoken (ben, "B", 200), event (EventTypeStreamer, "inA", 250, 300, 300),
                  spoken (anna, "A2", 400), event (EventTypeStreamer, "only A", 400, 450, 450) });
    EXPECT_THAT (listed (*list, { { EventCharacterFilterKey, "ANNA" } }), ElementsAre ("A", "inA", "A2"))
        << "A2 ends at 425 and has replaced the range of A";
}

TEST_F (EventArrayFilterTest, aMarkerInsideAMatchingCueIsAskedLikeEveryEvent)
{
    const auto list = listOf (
        { spoken (anna, "A", 100), event (EventTypeMarker, "m", 110, 110, 120), spoken (ben, "B", 115) });
    EXPECT_THAT (listed (*list, { { EventCharacterFilterKey, "ANNA" } }), ElementsAre ("A"));
}

TEST_F (EventArrayFilterTest, onlyAnADRCueOpensARange)
{
    const auto list = listOf (
        { event (EventTypeMarker, "match", 100, 100, 200), event (EventTypeStreamer, "s", 100, 150, 150) });
    EXPECT_THAT (listed (*list, { { EventCueNumberFilterKey, "match" } }), ElementsAre ("match"));
}

TEST_F (EventArrayFilterTest, aStreamerWithoutAnInPointPassesBeforeTheFirstMatchingCue)
{
    const auto list =
        listOf ({ event (EventTypeStreamer, "s", -1, -1, -1), event (EventTypeFlutter, "f", -1, -1, -1),
                  event (EventTypeMarker, "m", -1, -1, -1), spoken (anna, "A", 100) });
    EXPECT_THAT (listed (*list, { { EventTextFilterKey, "nothing" } }), ElementsAre ("f", "s"));
    EXPECT_THAT (listed (*list, { { EventCharacterFilterKey, "ANNA" } }), ElementsAre ("f", "s", "A"));
}

TEST_F (EventArrayFilterTest, anEventThatBelongsToACueEndsTheWaitOfLeadingNeighbours)
{
    auto longCue = spoken (anna, "A", 100);
    setTimes (*longCue, 75, 100, 500);
    const auto list = listOf ({ longCue, spoken (ben, "B1", 200), spoken (ben, "B2", 220),
                                spoken (ben, "B3", 240), event (EventTypeStreamer, "s", 250, 300, 300),
                                spoken (ben, "B4", 350), spoken (anna, "A2", 400) });
    EXPECT_THAT (listed (*list, { { EventCharacterFilterKey, "ANNA" }, { EventNumAdjacentCuesKey, "2" } }),
                 ElementsAre ("A", "(B1)", "(B2)", "s", "(B4)", "A2"))
        << "B3 is the second before A2, but the streamer lies between";
    EXPECT_THAT (listed (*list, { { EventCueNumberFilterKey, "A2" }, { EventNumAdjacentCuesKey, "2" } }),
                 ElementsAre ("(s)", "(B4)", "A2"))
        << "the streamer is a neighbour like others where its cue doesn't match";
}

TEST_F (EventArrayFilterTest, anEventThatIsInTheListTwiceIsANeighbourOnce)
{
    const auto twice = cue ("twice", 225);
    const auto list = nineCues ({ 1, 2 });
    list->addEvents ({ twice, twice }, false);
    EXPECT_THAT (listed (*list, matchWithNeighbours ("3")),
                 ElementsAre ("(twice)", "1", "2", "(3)", "(4)", "(5)"));
}

TEST_F (EventArrayFilterTest, updatingAppendsAndLeavesTheUsersOrderAlone)
{
    const auto list = listOf ({ cue ("A1", 100) });
    list->updateFilteredEvents();
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A1", "A1"));
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("A1"));
}

TEST_F (EventArrayFilterTest, filteringTellsNobody)
{
    const ListDiary diary;
    listed (*nineCues ({ 5 }), matchWithNeighbours ("1"));
    EXPECT_THAT (diary.entries, IsEmpty());
}

// ---- what changes while the list is filtered ---------------------------------------------------------------------------

TEST_F (EventArrayFilterTest, eachFilterSeesTheTextsAsTheyAreNow)
{
    const auto list = nineCues ({ 2, 5 });
    const auto show = [&list] (const char* part)
    {
        list->setFilterParameters ({ { EventTextFilterKey, juce::String::fromUTF8 (part) } });
        return namesOf (list->sortedFilteredEvents);
    };
    const auto say = [&list] (std::size_t place, const char* text)
    { list->events[place]->setText (ZEP::Core::RichTextString (juce::String::fromUTF8 (text))); };

    EXPECT_THAT (show ("match"), ElementsAre ("2", "5"));
    const auto two = list->sortedFilteredEvents[0], five = list->sortedFilteredEvents[1];
    two->setText (ZEP::Core::RichTextString ("no more"));
    EXPECT_THAT (show ("match"), ElementsAre ("5"));
    five->setText (ZEP::Core::RichTextString (juce::String::fromUTF8 ("schöner match")));
    EXPECT_THAT (show ("schö"), ElementsAre ("5"));
    EXPECT_THAT (show ("scho"), IsEmpty());
    EXPECT_THAT (show ("schöner match, no more"), IsEmpty());
    EXPECT_THAT (show ("no more"), ElementsAre ("2"));

    say (8, "no more");
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("2", list->events[8]->getCueNumber()));
    list->removeEvent (two, false);
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_EQ (list->sortedFilteredEvents.size(), 1U);
    list->addEvents ({ two }, false);
    EXPECT_EQ (list->sortedFilteredEvents.size(), 2U);
    EXPECT_EQ (show ("").size(), 9U);
}

TEST_F (EventArrayFilterTest, theListHoldsAnEventInEachVectorOnceHoweverItWasShown)
{
    const auto list = nineCues ({ 2, 5 });
    std::vector<std::shared_ptr<Event>> kept (list->events);
    for (const char* key : { "StartTCString", "CueNumber", "Text" })
    {
        list->sortKey = key;
        list->setFilterParameters ({ { EventTextFilterKey, "match" } });
        for (const auto& each : kept)
            EXPECT_EQ (each.use_count(), each->getText().getText() == "match"                      ? 4
                                         : each == list->fadeInEvent || each == list->fadeOutEvent ? 3
                                                                                                   : 2)
                << key;
        list->setFilterParameters ({});
        for (const auto& each : kept)
            EXPECT_EQ (each.use_count(), each == list->fadeInEvent || each == list->fadeOutEvent ? 3 : 4)
                << key;
    }
}

// ---- beside the rule said slowly --------------------------------------------------------------------------------------

FilterQuestion questionBy (RandomEvents& random)
{
    FilterQuestion question;
    if (random.oneIn (2))
        question.character = random.oneOf<juce::String> ({ "ANNA", "BEN", "nobody" });
    if (random.oneIn (5))
        question.actor = random.oneOf<juce::String> ({ "B. Miller", "C. Adams" });
    if (random.oneIn (3))
        question.text = random.oneOf<juce::String> ({ "o", "A", "Go!" });
    if (random.oneIn (3))
        question.cueNumber = random.oneOf<juce::String> ({ "1", "A", "-" });
    question.neighbours = random.between (-1, 4);
    return question;
}

TEST_F (EventArrayFilterTest, longListsAreFilteredByTheRule)
{
    for (unsigned int seed = 1; seed <= 300; ++seed)
    {
        RandomEvents random (seed);
        random.castCharacters();
        EventArray::Events events;
        for (int i = 0; i < 60; ++i)
            events.push_back (random.oneIn (6)   ? random.untimed()
                              : random.oneIn (4) ? random.oddlyTimed()
                                                 : random.timed());
        const auto list = listOf (events);
        const auto question = questionBy (random);
        listed (*list, { { EventCharacterFilterKey, question.character },
                         { EventActorFilterKey, question.actor },
                         { EventTextFilterKey, question.text },
                         { EventCueNumberFilterKey, question.cueNumber },
                         { EventNumAdjacentCuesKey, juce::String (question.neighbours) } });

        const SlowFilter slow (list->events, question);
        auto expected = slow.listed();
        std::stable_sort (expected.begin(), expected.end(),
                          [] (const auto& a, const auto& b) { return listedBefore (a, b, 1); });
        ASSERT_EQ (list->filteredEvents, expected) << seed << "\n"
                                                   << linesOf (list->filteredEvents) << "\n"
                                                   << linesOf (expected);

        const auto dimmed = slow.dimmed();
        for (const auto& each : list->events)
            ASSERT_EQ (each->isHiddenByFilter(), dimmed.contains (each.get()))
                << seed << " " << lineOf (*each);
    }
}

} // namespace
} // namespace ZEP::Overmarks::Testing
