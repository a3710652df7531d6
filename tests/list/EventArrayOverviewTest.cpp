// SPDX-License-Identifier: GPL-3.0-only
// How much work a character has, as the overview sheet shows it, and the question for events of some types.
#include "list/EventArray.h"

#include "preferences/PreferenceKeys.h"
#include "support/CueLists.h"
#include "support/ListDiary.h"
#include "support/OvermarksTest.h"

#include <gmock/gmock.h>

namespace ZEP::Overmarks::Testing
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Work
{
    int lines = -7;
    int cues = -7;
    float done = -7.0f;

    bool operator== (const Work&) const = default;
};

void PrintTo (const Work& work, std::ostream* out)
{
    *out << work.lines << " lines, " << work.cues << " cues, " << work.done << " done";
}

class EventArrayOverviewTest : public OvermarksTest
{
protected:
    static std::shared_ptr<Event> spoken (const juce::String& id, const juce::String& cueNumber, bool isDone)
    {
        auto made = cue (cueNumber, 100);
        setField (*made, "characterID", id);
        setField (*made, "done", isDone);
        return made;
    }

    static Work workOf (const EventArray& list, const std::shared_ptr<ZEP::Core::ADRCharacter>& character)
    {
        Work work;
        list.adrOverviewDataForCharacter (character, work.lines, work.cues, work.done);
        return work;
    }

    static Work workOf (const EventArray& list, const juce::String& id)
    {
        return workOf (list, Event::getADRCharacterMap()->characterForID (id));
    }

    juce::String anna = addCharacter ("ANNA", "B. Miller");
    juce::String ben = addCharacter ("BEN", "C. Adams");
};

TEST_F (EventArrayOverviewTest, linesCuesAndTheDoneShareAreCounted)
{
    const auto list = listOf ({ spoken (anna, "1", false), spoken (anna, "1", true),
                                spoken (anna, "2", false), spoken (ben, "3", true) });
    EXPECT_EQ (workOf (*list, anna), (Work { 3, 2, 1.0f / 3.0f }));
    EXPECT_EQ (workOf (*list, ben), (Work { 1, 1, 1.0f }));
}

TEST_F (EventArrayOverviewTest, aCharacterWithoutCuesHasNoWork)
{
    EXPECT_EQ (workOf (*listOf ({ spoken (anna, "1", true) }), ben), (Work { 0, 0, 0.0f }));
    EXPECT_EQ (workOf (*listWithFades(), anna), (Work { 0, 0, 0.0f }));
    EXPECT_EQ (workOf (EventArray(), anna), (Work { 0, 0, 0.0f }));
}

TEST_F (EventArrayOverviewTest, onlyADRCuesCount)
{
    EventArray::Events events { spoken (anna, "1", true) };
    for (const auto type : { EventTypeStreamer, EventTypeMarker, EventTypeFlutter, EventTypeFadeIn,
                             EventTypeFadeOut, eventTypeUnset })
    {
        events.push_back (spoken (anna, "other", false));
        setField (*events.back(), "type", type);
    }
    EXPECT_EQ (workOf (*listOf (events), anna), (Work { 1, 1, 1.0f }));
}

TEST_F (EventArrayOverviewTest, noCharacterHasTheCuesThatNobodySpeaks)
{
    const auto list =
        listOf ({ spoken ({}, "1", true), spoken ("gone", "2", false), spoken (anna, "3", false) });
    EXPECT_EQ (workOf (*list, std::shared_ptr<ZEP::Core::ADRCharacter>()), (Work { 2, 2, 0.5f }));
}

TEST_F (EventArrayOverviewTest, anEmptyCueNumberIsOneCueNumber)
{
    const auto list =
        listOf ({ spoken (anna, "", false), spoken (anna, "", false), spoken (anna, "--", false) });
    EXPECT_EQ (workOf (*list, anna), (Work { 3, 2, 0.0f }));
}

TEST_F (EventArrayOverviewTest, cueNumbersThatDifferInCaseAreTwo)
{
    EXPECT_EQ (workOf (*listOf ({ spoken (anna, "a", false), spoken (anna, "A", false) }), anna).cues, 2);
}

TEST_F (EventArrayOverviewTest, anotherCharacterOfTheSameNameIsAnother)
{
    const auto list = listOf ({ spoken (anna, "1", true) });
    EXPECT_EQ (workOf (*list, addCharacter ("ANNA", "B. Miller")), (Work { 0, 0, 0.0f }));
    EXPECT_EQ (workOf (*list, std::make_shared<ZEP::Core::ADRCharacter> ("ANNA")), (Work { 0, 0, 0.0f }));
}

TEST_F (EventArrayOverviewTest, filterAndSelectionPlayNoPart)
{
    const auto list = listOf ({ spoken (anna, "1", true), spoken (ben, "2", true) });
    list->addEvent (spoken (anna, "3", false), false);
    list->selectedEvents = { list->events.back() };
    list->filterParameters[juce::String (EventCharacterFilterKey)] = "BEN";
    list->updateFilteredEvents();
    EXPECT_EQ (workOf (*list, anna), (Work { 2, 2, 0.5f }));
}

TEST_F (EventArrayOverviewTest, countingChangesNothingAndTellsNobody)
{
    const auto list = listOf ({ spoken (anna, "1", true) });
    const auto before = list->events;
    const ListDiary diary;
    workOf (*list, anna);
    EXPECT_EQ (list->events, before);
    EXPECT_THAT (diary.entries, IsEmpty());
}

} // namespace
} // namespace ZEP::Overmarks::Testing
