// SPDX-License-Identifier: GPL-3.0-only
#include "list/EventArray.h"

#include "proto/overmarks.pb.h"
#include "support/CueLists.h"
#include "support/ListDiary.h"
#include "support/OvermarksTest.h"
#include "support/PrintEvents.h"
#include "support/RandomEvents.h"
#include "support/UndoHistory.h"

#include <gmock/gmock.h>
#include <string>

namespace ZEP::Overmarks::Testing
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class EventArrayPersistenceTest : public OvermarksTest
{
protected:
    static tessera1::ProtoOvermarkList stored (EventArray& list)
    {
        tessera1::ProtoOvermarkList message;
        list.fillProtoObject (&message);
        return message;
    }

    /** As a file does it: through bytes. */
    static std::shared_ptr<EventArray> loaded (const tessera1::ProtoOvermarkList& message)
    {
        tessera1::ProtoOvermarkList read;
        EXPECT_TRUE (read.ParseFromString (message.SerializeAsString()));
        auto list = std::make_shared<EventArray>();
        EXPECT_TRUE (list->initWithProtoObject (&read));
        return list;
    }
};

TEST_F (EventArrayPersistenceTest, theEventsAreStoredInListOrderWithTheSortColumn)
{
    const auto list = listOf ({ cue ("A2", 200), cue ("A1", 100) });
    list->sortKey = "CueNumber";
    list->sortDescending = true;
    const auto message = stored (*list);

    Names names;
    for (const auto& event : message.events())
        names.push_back (event.cuenumber());
    EXPECT_THAT (names, ElementsAre ("in", "out", "A1", "A2"));
    EXPECT_EQ (message.sortkey(), "CueNumber");
    EXPECT_TRUE (message.sortdescending());
}

TEST_F (EventArrayPersistenceTest, storingAppendsToWhatTheMessageHolds)
{
    const auto list = listWithFades();
    auto message = stored (*list);
    list->fillProtoObject (&message);
    EXPECT_EQ (message.events_size(), 4) << "each event goes through a new element";
}

TEST_F (EventArrayPersistenceTest, savingAndLoadingKeepsEveryStoredField)
{
    for (unsigned int seed = 1; seed <= 10; ++seed)
    {
        RandomEvents random (seed);
        random.castCharacters();
        EventArray::Events events;
        for (int i = 0; i < 30; ++i)
            events.push_back (random.oddlyTimed());
        for (const auto& each : events)
        {
            each->setStoredFlag (random.oneIn (2));
            setField (*each, "reason", random.between (0, 40)); // other codes would be repaired
            setField (*each, "selectedTake", random.between (-1, 5));
            setField (*each, "isForcedNarrative", random.oneIn (2));
        }
        const auto list = listOf (events);
        const auto back = loaded (stored (*list));

        ASSERT_EQ (back->events.size(), list->events.size());
        for (std::size_t i = 0; i < back->events.size(); ++i)
            EXPECT_EQ (storedFieldsOf (*back->events[i]), storedFieldsOf (*list->events[i]))
                << seed << " " << i;
        EXPECT_EQ (stored (*back).SerializeAsString(), stored (*list).SerializeAsString())
            << "and again the same bytes";
    }
}

TEST_F (EventArrayPersistenceTest, whatANewerVersionHasStoredComesBack)
{
    const std::string newer = "\xc0\x3e\x07";
    tessera1::ProtoOvermarkList message;
    ASSERT_TRUE (
        message.ParseFromString (stored (*listOf ({ cue ("A1", 100) })).SerializeAsString() + newer));
    const auto list = loaded (message);
    EXPECT_EQ (stored (*list).SerializeAsString(), message.SerializeAsString());

    auto plain = stored (*listWithFades());
    list->initWithProtoObject (&plain);
    EXPECT_EQ (stored (*list).SerializeAsString(), plain.SerializeAsString()) << "another list has none";
}

TEST_F (EventArrayPersistenceTest, aSortKeyThatIsNoTextDoesNotMakeTheListUnreadable)
{
    const auto list = listWithFades();
    list->sortKey = "Notes" + juce::String::charToString (0xd800);
    EXPECT_TRUE (loaded (stored (*list))->sortKey.startsWith ("Notes"));
}

TEST_F (EventArrayPersistenceTest, theSortColumnComesBack)
{
    const auto list = listWithFades();
    list->sortKey = "Notes";
    list->sortDescending = true;
    const auto back = loaded (stored (*list));
    EXPECT_EQ (back->sortKey, juce::String ("Notes"));
    EXPECT_TRUE (back->sortDescending);
}

TEST_F (EventArrayPersistenceTest, anEmptySortKeyLoadsAsStart)
{
    auto message = stored (*listWithFades());
    message.clear_sortkey();
    EXPECT_EQ (loaded (message)->sortKey, juce::String ("StartTCString"));
}

TEST_F (EventArrayPersistenceTest, aListWithoutEventsCannotBeLoaded)
{
    tessera1::ProtoOvermarkList nothing;
    EventArray list;
    EXPECT_THROW (list.initWithProtoObject (&nothing), std::out_of_range);
    EXPECT_THAT (list.events, IsEmpty());
}

TEST_F (EventArrayPersistenceTest, aListWithoutAFadeCannotBeLoadedAndKeepsWhatItRead)
{
    for (const int missing : { 0, 1 })
    {
        auto message = stored (*listOf ({ cue ("A1", 100) }));
        message.mutable_events()->DeleteSubrange (missing, 1);
        EventArray list;
        EXPECT_THROW (list.initWithProtoObject (&message), std::out_of_range);
        EXPECT_THAT (namesOf (list.events), ElementsAre (missing == 0 ? "out" : "in", "A1"));
    }
}

TEST_F (EventArrayPersistenceTest, theFirstFadeOfEachKindIsTheProjects)
{
    auto list = listOf ({ cue ("A1", 100), event (EventTypeFadeIn, "in2", 300, 300, 300),
                          event (EventTypeFadeOut, "out2", 400, 400, 400) });
    const auto back = loaded (stored (*list));
    EXPECT_EQ (back->fadeInEvent, back->events[0]);
    EXPECT_EQ (back->fadeOutEvent, back->events[1]);
    EXPECT_EQ (back->fadeInEvent->getCueNumber(), juce::String ("in"));
    EXPECT_EQ (back->fadeOutEvent->getCueNumber(), juce::String ("out"));
}

TEST_F (EventArrayPersistenceTest, anEventOfAnUnsetTypeBeforeTheFadesIsTakenForThem)
{
    // Its type is -1, in which the bits of both fades are set.
    auto message = stored (*listOf ({ event (eventTypeUnset, "unset", 50, 50, 50) }));
    message.mutable_events()->SwapElements (0, 2);
    const auto back = loaded (message);
    ASSERT_THAT (namesOf (back->events), ElementsAre ("unset", "out", "in"));
    EXPECT_EQ (back->fadeInEvent, back->events[0]);
    EXPECT_EQ (back->fadeOutEvent, back->events[0]);

    message.mutable_events()->SwapElements (0, 2);
    const auto usual = loaded (message);
    EXPECT_EQ (usual->fadeInEvent, usual->events[0]) << "behind them it is none";
    EXPECT_EQ (usual->fadeOutEvent, usual->events[1]);
}

TEST_F (EventArrayPersistenceTest, theDerivedListsAreEmptyUntilTheLoaderSorts)
{
    const auto back = loaded (stored (*listOf ({ cue ("A1", 100) })));
    EXPECT_THAT (back->filteredEvents, IsEmpty());
    EXPECT_THAT (back->sortedFilteredEvents, IsEmpty());
    EXPECT_THAT (back->selectedEvents, IsEmpty());
    EXPECT_THAT (back->sortedSelectedEvents, IsEmpty());

    back->setTimeInfoForAllEvents (timeInfoAt ("25"));
    back->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (back->filteredEvents), ElementsAre ("A1"));
    EXPECT_THAT (namesOf (back->sortedFilteredEvents), ElementsAre ("A1"));
}

TEST_F (EventArrayPersistenceTest, loadingNeitherSortsNorSelectsNorFiltersNorTells)
{
    auto message = stored (*listOf ({ cue ("A1", 100), cue ("A2", 200) }));
    message.mutable_events()->SwapElements (0, 3);

    auto list = listOf ({ cue ("old", 50) });
    list->selectedEvents = list->filteredEvents;
    list->filterParameters["EventTextFilter"] = "kept";
    const ListDiary diary;
    EXPECT_TRUE (list->initWithProtoObject (&message));

    EXPECT_THAT (namesOf (list->events), ElementsAre ("A2", "out", "A1", "in")) << "the stored order";
    EXPECT_THAT (namesOf (list->selectedEvents), ElementsAre ("old"));
    EXPECT_EQ (list->filterParameters["EventTextFilter"], juce::String ("kept"));
    EXPECT_THAT (diary.entries, IsEmpty());
    EXPECT_EQ (undoSteps(), 0u);
}

TEST_F (EventArrayPersistenceTest, theFilterIsNoPartOfTheFile)
{
    const auto list = listOf ({ cue ("A1", 100) });
    list->filterParameters["EventTextFilter"] = "something";
    EXPECT_TRUE (loaded (stored (*list))->filterParameters.empty());
}

TEST_F (EventArrayPersistenceTest, theMessageIsCopiedNotKept)
{
    auto message = stored (*listOf ({ cue ("A1", 100) }));
    EventArray list;
    list.initWithProtoObject (&message);
    EXPECT_EQ (message.events_size(), 3) << "and left as it was";
    message.Clear();
    EXPECT_THAT (namesOf (list.events), ElementsAre ("in", "out", "A1"));
}

} // namespace
} // namespace ZEP::Overmarks::Testing
