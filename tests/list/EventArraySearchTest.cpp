// SPDX-License-Identifier: GPL-3.0-only
// The search field over the list: what is found, how it is shown, and the groups of cues that are cut into several lines.
#include "list/EventArray.h"

#include "event/EventKeyValueEditor.h"
#include "preferences/PreferenceKeys.h"
#include "support/CueLists.h"
#include "support/ListDiary.h"
#include "support/OvermarksTest.h"
#include "support/RandomEvents.h"

#include <gmock/gmock.h>
#include <set>

namespace ZEP::Overmarks::Testing
{
namespace
{

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Result = std::shared_ptr<EventSearchResultProxy>;
using Results = std::vector<Result>;

class EventArraySearchTest : public OvermarksTest
{
protected:
    /** The cue numbers of the results in their order; those of groups with the number of their members. */
    static Names found (const EventArray& list, const juce::String& searchString)
    {
        Names names;
        for (const auto& result : list.itemsForSearchString (searchString))
            names.push_back (result->cueNumber.toStdString()
                             + (result->type == CueGroupResultType
                                    ? " group of " + std::to_string (result->events.size())
                                    : std::string()));
        return names;
    }

    static std::shared_ptr<Event> line (const juce::String& cueNumber, int inPoint, const juce::String& text,
                                        const juce::String& characterID = {})
    {
        auto made = cue (cueNumber, inPoint);
        setField (*made, "text", ZEP::Core::RichTextString (text));
        setField (*made, "characterID", characterID);
        return made;
    }

    /** The only group among the results for everything. */
    static Result groupIn (const EventArray& list)
    {
        Result group;
        for (const auto& result : list.itemsForSearchString ({}))
            if (result->type == CueGroupResultType)
            {
                EXPECT_EQ (group, nullptr) << "there is more than one group";
                group = result;
            }
        if (group == nullptr)
            throw std::runtime_error ("there is no group");
        return group;
    }

    juce::String anna = addCharacter ("ANNA", "B. Miller");
    juce::String ben = addCharacter ("BEN", "C. Adams");
};

// ---- what is found ------------------------------------------------------------------------------------------------------

TEST_F (EventArraySearchTest, aPartOfATextIsFoundInAnyCase)
{
    const auto list =
        listOf ({ line ("1", 100, "TOMORROW"), line ("2", 200, "at home"), line ("3", 300, "a tom") });
    EXPECT_THAT (found (*list, "Tom"), ElementsAre ("1", "3"));
    EXPECT_THAT (found (*list, "t h"), ElementsAre ("2"));
    EXPECT_THAT (found (*list, "tom "), IsEmpty()) << "blanks count";
}

TEST_F (EventArraySearchTest, lettersBeyondASCIIAreFoundAsTheyStand)
{
    const auto list = listOf ({ line ("1", 100, juce::CharPointer_UTF8 ("Zoë läuft")),
                                line ("2", 200, juce::CharPointer_UTF8 ("日本語")) });
    EXPECT_THAT (found (*list, juce::CharPointer_UTF8 ("zoë")), ElementsAre ("1"));
    EXPECT_THAT (found (*list, juce::CharPointer_UTF8 ("本")), ElementsAre ("2"));
    EXPECT_THAT (found (*list, "zoe"), IsEmpty());
}

TEST_F (EventArraySearchTest, aNumberIsFoundInCueNumbersAndTexts)
{
    const auto list = listOf (
        { line ("12", 100, ""), line ("112", 200, ""), line ("3", 300, "Room 12b"), line ("1", 400, "1 2") });
    EXPECT_THAT (found (*list, "12"), ElementsAre ("12", "112", "3"));
}

TEST_F (EventArraySearchTest, aHashFindsTheWholeCueNumberAlone)
{
    const auto list = listOf ({ line ("12", 100, ""), line ("112", 200, "12"), line ("12a", 300, "#12"),
                                line ("12A", 400, ""), line (" 12", 500, "") });
    EXPECT_THAT (found (*list, "#12"), ElementsAre ("12"));
    EXPECT_THAT (found (*list, "#12a"), ElementsAre ("12a")) << "case matters";
    EXPECT_THAT (found (*list, "#12 "), IsEmpty());
    EXPECT_THAT (found (*list, " #12"), IsEmpty()) << "a blank before it makes it a text";
}

TEST_F (EventArraySearchTest, aHashAloneFindsNothing)
{
    EXPECT_THAT (found (*listOf ({ line ("", 100, "#"), line ("#", 200, "") }), "#"), IsEmpty());
}

TEST_F (EventArraySearchTest, aCueNumberThatBeginsWithAHashIsFoundByTwo)
{
    EXPECT_THAT (found (*listOf ({ line ("#7", 100, ""), line ("7", 200, "") }), "##7"), ElementsAre ("#7"));
}

TEST_F (EventArraySearchTest, anEmptySearchFindsEveryListedEvent)
{
    const auto list = listOf ({ line ("1", 100, "a"), event (EventTypeMarker, "m", 200, 200, 210),
                                event (EventTypeStreamer, "", 250, 300, 300), untimedCue ("") });
    EXPECT_THAT (found (*list, {}), ElementsAre ("", "1", "m", "")) << "the fades aren't listed";
}

TEST_F (EventArraySearchTest, notesNamesAndTimesArentSearched)
{
    auto silent = line ("1", 100, "", anna);
    setField (*silent, "notes", ZEP::Core::RichTextString ("Tom"));
    setField (*silent, "engineeringNotes", ZEP::Core::RichTextString ("Tom"));
    const auto list = listOf ({ silent });
    for (const auto* text : { "Tom", "ANNA", "Miller", "00:00" })
        EXPECT_THAT (found (*list, text), IsEmpty()) << text;
}

TEST_F (EventArraySearchTest, onlyWhatTheFilterListsIsSearchedNeighboursIncluded)
{
    const auto list = listOf ({ line ("1", 100, "tea"), line ("2", 200, "tea", anna), line ("3", 300, "tea"),
                                line ("4", 400, "tea") });
    list->setFilterParameters ({ { EventCharacterFilterKey, "ANNA" } });
    EXPECT_THAT (found (*list, "tea"), ElementsAre ("2"));
    list->setFilterParameters ({ { EventCharacterFilterKey, "ANNA" }, { EventNumAdjacentCuesKey, "1" } });
    EXPECT_THAT (found (*list, "tea"), ElementsAre ("1", "2", "3"));
}

TEST_F (EventArraySearchTest, aSearchChangesNothingAndTellsNobody)
{
    const auto list = listOf ({ line ("1", 100, "a"), line ("1", 200, "a") });
    const auto before = list->sortedFilteredEvents;
    const ListDiary diary;
    list->itemsForSearchString ("a");
    EXPECT_EQ (list->sortedFilteredEvents, before);
    EXPECT_THAT (diary.entries, IsEmpty());
}

// ---- how it is shown ----------------------------------------------------------------------------------------------------

TEST_F (EventArraySearchTest, aResultShowsTheEvent)
{
    const auto event = line ("A12", 100, "Go!", anna);
    const auto results = listOf ({ event })->itemsForSearchString ("go");
    ASSERT_EQ (results.size(), 1u);
    const auto& result = *results[0];
    EXPECT_EQ (result.text, "Go!");
    EXPECT_EQ (result.startTC, "00:00:04:00");
    EXPECT_EQ (result.endTC, "00:00:05:00");
    EXPECT_EQ (result.cueNumber, "A12");
    EXPECT_EQ (result.character, "ANNA");
    EXPECT_EQ (result.actor, "B. Miller");
    EXPECT_EQ (result.type, EventTypeADRCue);
    EXPECT_THAT (result.events, ElementsAre (event));
}

TEST_F (EventArraySearchTest, aResultWithoutACharacterShowsNone)
{
    for (const auto& id : { juce::String(), juce::String ("gone") })
    {
        const auto results = listOf ({ line ("1", 100, "", id) })->itemsForSearchString ("1");
        EXPECT_EQ (results.at (0)->character, "") << id;
        EXPECT_EQ (results.at (0)->actor, "") << id;
    }
}

TEST_F (EventArraySearchTest, withoutACastTheSearchStillWorks)
{
    const auto list = listOf ({ line ("1", 100, "", anna), line ("1", 200, "", ben) });
    Event::setADRCharacterMap (nullptr);
    EXPECT_THAT (found (*list, "1"), ElementsAre ("1 group of 2", "1", "1"));
    EXPECT_EQ (groupIn (*list)->character, "");
}

TEST_F (EventArraySearchTest, anUntimedResultShowsDashes)
{
    const auto results = listOf ({ untimedCue ("1") })->itemsForSearchString ("1");
    EXPECT_EQ (results.at (0)->startTC, "--:--:--:--");
    EXPECT_EQ (results.at (0)->endTC, "--:--:--:--");
}

TEST_F (EventArraySearchTest, theTypeOfAResultIsThatOfTheEvent)
{
    for (const auto type :
         { EventTypeStreamer, EventTypeMarker, EventTypeFlutter, EventTypeADRCue, eventTypeUnset })
        EXPECT_EQ (listOf ({ event (type, "1", 50, 100, 100) })->itemsForSearchString ("1").at (0)->type,
                   static_cast<int> (type));
}

TEST_F (EventArraySearchTest, aResultKeepsItsTextsButSharesItsEvent)
{
    const auto event = line ("1", 100, "before", anna);
    const auto list = listOf ({ event });
    const auto result = list->itemsForSearchString ("1").at (0);
    setField (*event, "text", ZEP::Core::RichTextString ("after"));
    setField (*event, "cueNumber", juce::String ("2"));
    Event::getADRCharacterMap()->characterForID (anna)->name = "CLARA";
    EXPECT_EQ (result->text, "before");
    EXPECT_EQ (result->cueNumber, "1");
    EXPECT_EQ (result->character, "ANNA");
    EXPECT_EQ (result->events[0]->getText().getText(), "after");
}

// ---- groups -------------------------------------------------------------------------------------------------------------

TEST_F (EventArraySearchTest, aCueOfThreeLinesHasFourRows)
{
    const auto list =
        listOf ({ line ("1", 100, "a"), line ("2", 150, "b"), line ("1", 200, "c"), line ("1", 300, "d") });
    EXPECT_THAT (found (*list, "1"), ElementsAre ("1 group of 3", "1", "1", "1"));
    EXPECT_THAT (found (*list, {}), ElementsAre ("1 group of 3", "1", "2", "1", "1"));
}

TEST_F (EventArraySearchTest, aGroupHoldsOnlyTheLinesThatWereFound)
{
    const auto list = listOf (
        { line ("1", 100, "tea"), line ("1", 200, "milk"), line ("1", 300, "tea"), line ("2", 400, "milk") });
    EXPECT_THAT (found (*list, "tea"), ElementsAre ("1 group of 2", "1", "1"));
    EXPECT_THAT (found (*list, "milk"), ElementsAre ("1", "2"));
}

TEST_F (EventArraySearchTest, aGroupShowsItsFirstLineInTheUsersOrder)
{
    const auto list =
        listOf ({ line ("1", 100, "Zebra"), line ("1", 200, "Apple"), line ("1", 300, "Milk") });
    list->sortKey = EventKeyValueEditor::KV_Text;
    list->sortContentAndUpdateFilteredEvents();
    const auto group = groupIn (*list);
    EXPECT_EQ (group->text, "Apple...");
    EXPECT_EQ (group->startTC, "00:00:08:00");
    EXPECT_EQ (group->endTC, "00:00:09:00");
    EXPECT_EQ (group->cueNumber, "1");
    EXPECT_EQ (group->type, 64);
    EXPECT_EQ (group->events, list->sortedFilteredEvents);
}

TEST_F (EventArraySearchTest, aGroupStandsWhereItsFirstLineInTheUsersOrderStands)
{
    const auto list =
        listOf ({ line ("1", 100, "Zebra"), line ("2", 150, "Boat"), line ("1", 200, "Apple") });
    list->sortKey = EventKeyValueEditor::KV_Text;
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (found (*list, {}), ElementsAre ("1", "2", "1 group of 2", "1"));
}

TEST_F (EventArraySearchTest, dashesAndEmptyCueNumbersFormNoGroup)
{
    const auto list = listOf ({ line ("--", 100, ""), line ("--", 200, ""), line ("", 300, ""),
                                line ("", 400, ""), line ("-", 500, ""), line ("-", 600, "") });
    EXPECT_THAT (found (*list, {}), ElementsAre ("--", "--", "", "", "- group of 2", "-", "-"));
}

TEST_F (EventArraySearchTest, onlyADRCuesFormGroups)
{
    const auto list =
        listOf ({ event (EventTypeMarker, "1", 100, 100, 110), event (EventTypeMarker, "1", 200, 200, 210),
                  event (EventTypeStreamer, "1", 250, 300, 300), line ("1", 400, "") });
    EXPECT_THAT (found (*list, {}), ElementsAre ("1", "1", "1", "1"));
}

TEST_F (EventArraySearchTest, cueNumbersThatDifferInCaseAreDifferentGroups)
{
    const auto list =
        listOf ({ line ("a1", 100, ""), line ("A1", 200, ""), line ("a1", 300, ""), line ("A1", 400, "") });
    EXPECT_THAT (found (*list, "a1"), ElementsAre ("a1 group of 2", "a1", "A1 group of 2", "A1", "a1", "A1"));
}

TEST_F (EventArraySearchTest, severalNamesAndActorsInAGroupShowAsMultiple)
{
    const auto group = groupIn (
        *listOf ({ line ("1", 100, "", anna), line ("1", 200, "", ben), line ("1", 300, "", anna) }));
    EXPECT_EQ (group->character, "<multiple>");
    EXPECT_EQ (group->actor, "<multiple>");
}

TEST_F (EventArraySearchTest, linesWithoutACharacterChangeNothingInAGroup)
{
    const auto group = groupIn (*listOf ({ line ("1", 100, ""), line ("1", 200, "", anna),
                                           line ("1", 300, "", "gone"), line ("1", 400, "", anna) }));
    EXPECT_EQ (group->character, "ANNA");
    EXPECT_EQ (group->actor, "B. Miller");
    EXPECT_EQ (groupIn (*listOf ({ line ("1", 100, ""), line ("1", 200, "") }))->character, "");
}

TEST_F (EventArraySearchTest, namesAndActorsOfAGroupAreJoinedIndependently)
{
    const auto sameActor = addCharacter ("CLARA", "B. Miller");
    const auto group = groupIn (*listOf ({ line ("1", 100, "", anna), line ("1", 200, "", sameActor) }));
    EXPECT_EQ (group->character, "<multiple>");
    EXPECT_EQ (group->actor, "B. Miller");

    const auto nameless = addCharacter ("", "C. Adams");
    const auto other = groupIn (*listOf ({ line ("1", 100, "", nameless), line ("1", 200, "", anna) }));
    EXPECT_EQ (other->character, "ANNA");
    EXPECT_EQ (other->actor, "<multiple>");
}

TEST_F (EventArraySearchTest, aGroupKeepsTheActorThatTheOthersLack)
{
    const auto actorless = addCharacter ("CLARA", "");
    const auto group = groupIn (*listOf ({ line ("1", 100, "", actorless), line ("1", 200, "", anna) }));
    EXPECT_EQ (group->character, "<multiple>");
    EXPECT_EQ (group->actor, "B. Miller");

    const auto other = groupIn (*listOf ({ line ("1", 100, "", anna), line ("1", 200, "", actorless) }));
    EXPECT_EQ (other->actor, "B. Miller");
}

TEST_F (EventArraySearchTest, anEventThatIsListedTwiceIsAGroupOfItsOwn)
{
    const auto twice = line ("1", 100, "a");
    EXPECT_THAT (found (*listOf ({ twice, twice }), "1"), ElementsAre ("1 group of 2", "1", "1"));
}

// ---- order --------------------------------------------------------------------------------------------------------------

TEST_F (EventArraySearchTest, resultsStandByInPointWhateverTheUsersOrder)
{
    const auto list = listOf ({ line ("3", 300, ""), line ("1", 500, ""), line ("2", 100, ""),
                                event (EventTypeMarker, "4", 400, 400, 410), untimedCue ("5") });
    list->sortKey = EventKeyValueEditor::KV_CueNumber;
    list->sortDescending = true;
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("5", "4", "3", "2", "1"));
    EXPECT_THAT (found (*list, {}), ElementsAre ("5", "2", "3", "4", "1"));
}

TEST_F (EventArraySearchTest, aGroupStandsBeforeEveryRowOfItsInPoint)
{
    const auto list = listOf ({ event (EventTypeMarker, "m", 100, 100, 110), line ("2", 100, "a"),
                                line ("1", 100, "b"), line ("1", 200, "c"), line ("2", 300, "d") });
    const auto results = list->itemsForSearchString ({});
    ASSERT_EQ (results.size(), 7u);
    EXPECT_EQ (results[0]->type, CueGroupResultType);
    EXPECT_EQ (results[1]->type, CueGroupResultType);
    for (std::size_t i = 2; i < results.size(); ++i)
        EXPECT_NE (results[i]->type, CueGroupResultType);
}

TEST_F (EventArraySearchTest, resultsAreThoseOfTheRuleSaidSlowly)
{
    for (unsigned int seed = 1; seed <= 60; ++seed)
    {
        RandomEvents random (seed);
        random.castCharacters();
        EventArray::Events events;
        for (int i = random.below (60); i > 0; --i)
            events.push_back (random.oneIn (5) ? random.untimed() : random.timed());
        const auto list = listOf (events);
        list->sortKey = random.oneOf<juce::String> ({ "Text", "CueNumber", "StartTCString" });
        list->sortContentAndUpdateFilteredEvents();
        const auto query = random.oneOf<juce::String> ({ "", "a", "go", "1", "#A10", "#", "A2" });

        std::multiset<std::pair<int, std::vector<std::shared_ptr<Event>>>> expected;
        std::map<juce::String, EventArray::Events> groups;
        for (const auto& each : list->sortedFilteredEvents)
        {
            const auto number = each->getCueNumber();
            if (query.startsWith ("#")
                    ? query.length() < 2 || "#" + number != query
                    : ! number.toLowerCase().contains (query.toLowerCase())
                          && ! each->getText().getText().toLowerCase().contains (query.toLowerCase()))
                continue;
            expected.insert ({ each->getType(), { each } });
            if (each->getType() == EventTypeADRCue && number != "" && number != "--")
                groups[number].push_back (each);
        }
        for (const auto& [number, members] : groups)
            if (members.size() > 1)
                expected.insert ({ 64, members });

        std::multiset<std::pair<int, std::vector<std::shared_ptr<Event>>>> actual;
        std::pair<int, int> last { -1, 0 };
        for (const auto& result : list->itemsForSearchString (query))
        {
            actual.insert ({ result->type, result->events });
            const std::pair place { result->events[0]->getInPointFrameIndex(),
                                    result->events.size() > 1 ? 0 : 1 };
            EXPECT_LE (last, place) << seed;
            last = place;
        }
        EXPECT_EQ (actual, expected) << seed << " \"" << query << "\"";
    }
}

} // namespace
} // namespace ZEP::Overmarks::Testing
