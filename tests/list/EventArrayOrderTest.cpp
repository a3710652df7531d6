// SPDX-License-Identifier: GPL-3.0-only
// The orders of the list: by timecode, and under every sort column upwards and downwards.
#include "list/EventArray.h"

#include "support/CueLists.h"
#include "support/OvermarksTest.h"
#include "support/PrintEvents.h"
#include "support/SlowSortOrder.h"

#include <clocale>
#include <functional>
#include <gmock/gmock.h>
#include <limits>

namespace ZEP::Overmarks::Testing
{
namespace
{

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using Keys = EventKeyValueEditor;

class EventArrayOrderTest : public OvermarksTest
{
protected:
    static Names sorted (const EventArray::Events& events, const juce::String& key, bool descending)
    {
        const auto list = listOf (events);
        list->sortKey = key;
        list->sortDescending = descending;
        list->sortContentAndUpdateFilteredEvents();
        return namesOf (list->sortedFilteredEvents);
    }

    template <typename Value>
    static std::shared_ptr<Event> with (std::shared_ptr<Event> changed, std::string_view field,
                                        const Value& value)
    {
        setField (*changed, field, value);
        return changed;
    }

    static std::shared_ptr<Event> spokenBy (const juce::String& id, const juce::String& cueNumber,
                                            int inPoint)
    {
        return with (cue (cueNumber, inPoint), "characterID", id);
    }
};

// ---- one row of the table of columns a case: three events by timecode, then the order they take ----------------------

/** A column, the values of the events "1", "2" and "3" (which stand in this timecode order), and what comes out. */
struct ValueRow
{
    const char* name;
    juce::String key;
    std::function<void (Event& first, Event& second, Event& third)> fill;
    Names up;
    Names down;
};

void PrintTo (const ValueRow& row, std::ostream* out) { *out << row.name; }

template <typename Value>
std::function<void (Event&, Event&, Event&)> values (const char* field, Value first, Value second,
                                                     Value third)
{
    return [=] (Event& a, Event& b, Event& c)
    {
        setField (a, field, first);
        setField (b, field, second);
        setField (c, field, third);
    };
}

ZEP::Core::RichTextString rich (const char* text)
{
    ZEP::Core::RichTextString made { juce::String (juce::CharPointer_UTF8 (text)) };
    made.setColour ({ 0, 1 }, juce::Colours::red);
    return made;
}

const std::vector<ValueRow> valueRows {
    { "Enabled", "Enabled", values ("enabled", true, false, true), { "2", "1", "3" }, { "1", "3", "2" } },
    { "Done", "Done", values ("done", true, false, true), { "2", "1", "3" }, { "1", "3", "2" } },
    { "StreamerDuration",
      "StreamerDuration",
      values ("streamerDuration", 3, -1, 267),
      { "2", "1", "3" },
      { "3", "1", "2" } },
    { "BeatsPerMinute",
      "BeatsPerMinute",
      values ("beatsPerMinute", 64.5f, -1.0f, 64.25f),
      { "2", "3", "1" },
      { "1", "3", "2" } },
    { "RecTrackIndex",
      "RecTrackIndex",
      values ("recTrackIndex", 10, 9, -1),
      { "3", "2", "1" },
      { "1", "2", "3" } },
    { "RecTrackIndexExtremes",
      "RecTrackIndex",
      values ("recTrackIndex", std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), 0),
      { "2", "3", "1" },
      { "1", "3", "2" } },
    { "EngineeringNotes",
      "EngineeringNotes",
      values ("engineeringNotes", rich ("b"), rich ("a"), rich ("B")),
      { "3", "2", "1" },
      { "1", "2", "3" } },
    { "Text",
      "Text",
      values ("text", rich ("A2"), rich ("A10"), rich ("É")),
      { "2", "1", "3" },
      { "3", "1", "2" } },
    { "Notes",
      "Notes",
      values ("notes", rich ("same"), rich ("same"), rich ("")),
      { "3", "1", "2" },
      { "1", "2", "3" } },
    { "Type",
      "Type",
      values ("type", EventTypeADRCue, EventTypeStreamer, EventTypeMarker),
      { "2", "3", "1" },
      { "1", "3", "2" } },
    { "Reason", "Reason", values ("reason", 9, 0, 33), { "2", "1", "3" }, { "3", "1", "2" } },
    { "NumRecordedTakes",
      "NumRecordedTakes",
      values ("numRecordedTakes", 2, 10, -1),
      { "3", "1", "2" },
      { "2", "1", "3" } },
    { "unknownKey", "Nonsense", values ("numRecordedTakes", 3, 2, 1), { "1", "2", "3" }, { "3", "2", "1" } },
    { "emptyKey", "", values ("numRecordedTakes", 3, 2, 1), { "1", "2", "3" }, { "3", "2", "1" } },
    { "keysKeepTheirCase",
      "enabled",
      values ("enabled", true, false, true),
      { "1", "2", "3" },
      { "3", "2", "1" } },
    { "SelectedTakeIsNoColumn",
      "SelectedTake",
      values ("selectedTake", 3, 2, 1),
      { "1", "2", "3" },
      { "3", "2", "1" } },
    { "AltTakeIsNoColumn", "AltTake", values ("altTake", 3, 2, 1), { "1", "2", "3" }, { "3", "2", "1" } },
    { "IsForcedNarrativeIsNoColumn",
      "IsForcedNarrative",
      values ("isForcedNarrative", true, false, true),
      { "1", "2", "3" },
      { "3", "2", "1" } },
    { "ForcedNarrativeRegionIsNoColumn",
      "ForcedNarrativeRegion",
      values ("forcedNarrativeRegion", ForcedNarrativeRegionRight, ForcedNarrativeRegionLeft,
              ForcedNarrativeRegionTop),
      { "1", "2", "3" },
      { "3", "2", "1" } },
    { "DurationTCStringIsNoColumn",
      "DurationTCString",
      values ("endFrameIndex", 900, 300, 350),
      { "1", "2", "3" },
      { "3", "2", "1" } },
    { "TakesIsNoColumn",
      "Takes",
      values ("numRecordedTakes", 3, 2, 1),
      { "1", "2", "3" },
      { "3", "2", "1" } },
    { "TimingIsNoColumn",
      "Timing",
      values ("numRecordedTakes", 3, 2, 1),
      { "1", "2", "3" },
      { "3", "2", "1" } },
    { "StartTCString",
      "StartTCString",
      values ("numRecordedTakes", 3, 2, 1),
      { "1", "2", "3" },
      { "3", "2", "1" } },
    { "EndTCString",
      "EndTCString",
      values ("endFrameIndex", 900, 300, 350),
      { "2", "3", "1" },
      { "1", "3", "2" } },
};

class SortColumn : public EventArrayOrderTest, public ::testing::WithParamInterface<ValueRow>
{
protected:
    static EventArray::Events filled()
    {
        EventArray::Events events { cue ("1", 100), cue ("2", 200), cue ("3", 300) };
        GetParam().fill (*events[0], *events[1], *events[2]);
        return events;
    }
};

TEST_P (SortColumn, upwards)
{
    EXPECT_THAT (sorted (filled(), GetParam().key, false), ElementsAreArray (GetParam().up));
}

TEST_P (SortColumn, downwards)
{
    EXPECT_THAT (sorted (filled(), GetParam().key, true), ElementsAreArray (GetParam().down));
}

TEST_P (SortColumn, twoEventsAtATimeAreJudgedByTheTable)
{
    const auto events = filled();
    const auto list = listOf (events);
    list->sortKey = GetParam().key;
    for (const bool down : { false, true })
    {
        list->sortDescending = down;
        for (const auto& a : events)
            for (const auto& b : events)
                EXPECT_EQ (list->sortEventsBySortKey (a, b), SlowSortOrder (list->sortKey, down) (a, b))
                    << lineOf (*a) << " / " << lineOf (*b) << " down " << down;
    }
}

INSTANTIATE_TEST_SUITE_P (Columns, SortColumn, ::testing::ValuesIn (valueRows),
                          [] (const auto& row) { return std::string (row.param.name); });

// ---- times ------------------------------------------------------------------------------------------------------------

TEST_F (EventArrayOrderTest, wholeListStandsByTimecodeWithUntimedEventsFirst)
{
    const auto list = listOf ({ cue ("300", 300), untimedCue ("Z"), cue ("100", 100), untimedCue ("A") });
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "Z", "A", "100", "300"))
        << "untimed events stay as they came";
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A", "Z", "100", "300"))
        << "listed, they stand by cue number";
}

TEST_F (EventArrayOrderTest, anEventThatStartsBehindTheFrameBeforeTheOriginStandsByItsTimecodeText)
{
    const auto list = listOf ({ cue ("100", 100), event (EventTypeADRCue, "before", -30, -5, 20) });
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "100", "before"))
        << "23:59:59:20 is the later text";
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("100", "before"));
}

TEST_F (EventArrayOrderTest, hoursOfThreeDigitsStandAmongTheOthersByTheirText)
{
    constexpr int framesOfHour = 60 * 60 * 25;
    const auto info = timeInfoAt ("25", "00:00:00:00");
    EventArray::Events events { cue ("low", framesOfHour), cue ("hundred", 100 * framesOfHour),
                                cue ("ninety-nine", 99 * framesOfHour), cue ("ten", 10 * framesOfHour) };
    for (const auto& each : events)
        each->setTimeInfo (info);

    const auto list = listOf (events);
    std::vector<juce::String> times;
    for (auto i = list->events.begin() + 2; i != list->events.end(); ++i)
        times.push_back ((*i)->getStartTCString());

    EXPECT_TRUE (std::is_sorted (times.begin(), times.end())) << linesOf (list->events);
    EXPECT_EQ (sorted (events, Keys::KV_EndTCString, false), sorted (events, "anything else", false));
}

TEST_F (EventArrayOrderTest, dropFrameDashesStandBeforeTheTimes)
{
    const auto list = listOf ({ cue ("100", 100), untimedCue ("untimed") });
    list->setTimeInfoForAllEvents (timeInfoAt ("29.97df"));
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_EQ (list->events[0]->getStartTCString(), juce::String ("--:--:--;--"));
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "untimed", "100"));
}

TEST_F (EventArrayOrderTest, eventsWithoutAStartGoLastBothWays)
{
    const EventArray::Events events { untimedCue ("Z"), cue ("200", 200), untimedCue ("A"),
                                      cue ("100", 100) };
    EXPECT_THAT (sorted (events, Keys::KV_StartTCString, false), ElementsAre ("100", "200", "A", "Z"));
    EXPECT_THAT (sorted (events, Keys::KV_StartTCString, true), ElementsAre ("200", "100", "Z", "A"));
}

TEST_F (EventArrayOrderTest, anEventWithAnInPointButNoStartGoesLastToo)
{
    const EventArray::Events events { event (EventTypeADRCue, "odd", -1, 50, 75), cue ("100", 100),
                                      cue ("200", 200) };
    EXPECT_THAT (sorted (events, Keys::KV_StartTCString, false), ElementsAre ("100", "200", "odd"));
    EXPECT_THAT (sorted (events, Keys::KV_StartTCString, true), ElementsAre ("200", "100", "odd"));
}

TEST_F (EventArrayOrderTest, eventsWithInPointsButWithoutStartsStayAsTheListHasThem)
{
    const EventArray::Events events { event (EventTypeADRCue, "early", -1, 50, 75),
                                      event (EventTypeADRCue, "late", -1, 60, 85), cue ("100", 100) };
    EXPECT_THAT (sorted (events, Keys::KV_StartTCString, false), ElementsAre ("100", "early", "late"));
    EXPECT_THAT (sorted (events, Keys::KV_StartTCString, true), ElementsAre ("100", "early", "late"));
}

TEST_F (EventArrayOrderTest, twoEventsWithoutAnInPointCompareByCueNumber)
{
    const auto list =
        listOf ({ event (EventTypeADRCue, "B", 10, -1, 20), event (EventTypeADRCue, "A", 30, -1, 40) });
    const auto b = list->events[2], a = list->events[3];
    ASSERT_EQ (a->getCueNumber(), juce::String ("A"));
    EXPECT_TRUE (list->sortEventsBySortKey (a, b));
    EXPECT_FALSE (list->sortEventsBySortKey (b, a));
    list->sortDescending = true;
    EXPECT_FALSE (list->sortEventsBySortKey (a, b));
    EXPECT_TRUE (list->sortEventsBySortKey (b, a));
}

TEST_F (EventArrayOrderTest, anEventWithoutAStartGoesBeforeNone)
{
    const auto odd = event (EventTypeADRCue, "odd", -1, 50, 75);
    const auto otherOdd = event (EventTypeADRCue, "other", -1, 60, 75);
    const auto full = cue ("100", 100);
    const auto list = listOf ({ odd, otherOdd, full });
    for (const bool down : { false, true })
    {
        list->sortDescending = down;
        EXPECT_FALSE (list->sortEventsBySortKey (odd, full));
        EXPECT_TRUE (list->sortEventsBySortKey (full, odd));
        EXPECT_FALSE (list->sortEventsBySortKey (odd, otherOdd));
        EXPECT_FALSE (list->sortEventsBySortKey (otherOdd, odd));
    }
}

TEST_F (EventArrayOrderTest, eventsWithoutAnEndGoLastBothWaysByCueNumber)
{
    const EventArray::Events events { event (EventTypeADRCue, "B", 5, 30, -1), cue ("200", 200),
                                      event (EventTypeADRCue, "C", 6, 31, -1), untimedCue ("A"),
                                      cue ("100", 100) };
    EXPECT_THAT (sorted (events, Keys::KV_EndTCString, false), ElementsAre ("100", "200", "A", "B", "C"));
    EXPECT_THAT (sorted (events, Keys::KV_EndTCString, true), ElementsAre ("200", "100", "C", "B", "A"));
}

TEST_F (EventArrayOrderTest, eventsOfOneStartStayAsTheyCame)
{
    const EventArray::Events events { cue ("C", 100), cue ("A", 100), cue ("B", 100) };
    EXPECT_THAT (sorted (events, Keys::KV_StartTCString, false), ElementsAre ("C", "A", "B"));
    EXPECT_THAT (sorted (events, Keys::KV_StartTCString, true), ElementsAre ("C", "A", "B"));
}

// ---- timecode order of the listed events, by application ---------------------------------------------------------------

TEST_F (EventArrayOrderTest, oneApplicationRanksAStreamerByItsBeginning)
{
    const ApplicationType type (0);
    const auto list = listOf (
        { event (EventTypeADRCue, "cue", 90, 90, 120), event (EventTypeStreamer, "streamer", 25, 100, 100) });
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "cue", "streamer"));
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("streamer", "cue"));
}

TEST_F (EventArrayOrderTest, theOtherApplicationRanksItByItsInPoint)
{
    for (const int number : { 1, 2, -1 })
    {
        const ApplicationType type (number);
        const auto list = listOf ({ event (EventTypeStreamer, "streamer", 25, 100, 100),
                                    event (EventTypeADRCue, "cue", 90, 90, 120) });
        EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("cue", "streamer")) << number;
    }
}

TEST_F (EventArrayOrderTest, oneApplicationComparesStartsAsSignedNumbers)
{
    const ApplicationType type (0);
    const auto list = listOf (
        { event (EventTypeStreamer, "later", 5, 10, 10), event (EventTypeStreamer, "before", -50, 10, 10),
          event (EventTypeStreamer, "extreme", std::numeric_limits<int>::min(), 10, 10) });
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("extreme", "before", "later"));
}

TEST_F (EventArrayOrderTest, untimedEventsAreListedFirstByCueNumberInBothApplications)
{
    for (const int number : { 0, 1 })
    {
        const ApplicationType type (number);
        const auto list = listOf ({ cue ("1", 100), untimedCue ("B"),
                                    event (EventTypeADRCue, "A10", 60, -1, 90), untimedCue ("A2") });
        EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("A10", "A2", "B", "1")) << number;
    }
}

TEST_F (EventArrayOrderTest, sortingTheListedEventsTouchesNothingElse)
{
    const auto list = listOf ({ cue ("1", 100), cue ("2", 200) });
    setTimes (*list->events[2], 475, 500, 525);
    list->sortFilteredEventsByTimecode();
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("2", "1"));
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("1", "2"));
    EXPECT_THAT (namesOf (list->events), ElementsAre ("in", "out", "1", "2"));
}

TEST_F (EventArrayOrderTest, sortingTheListedEventsByTimecodeTakesThemInAnyOrder)
{
    const auto list = listOf ({ cue ("1", 100), cue ("2", 200) });
    list->sortFilteredEventsByTimecode();
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("1", "2"));

    std::swap (list->filteredEvents[0], list->filteredEvents[1]);
    list->sortFilteredEventsByTimecode();
    EXPECT_THAT (namesOf (list->filteredEvents), ElementsAre ("1", "2"));
}

// ---- cue numbers -------------------------------------------------------------------------------------------------------

TEST_F (EventArrayOrderTest, cueNumbersStandInNaturalOrderAndTextsDoNot)
{
    EventArray::Events events;
    for (const auto* number : { "A10", "A2", "10", "9", "b1", "A1" })
        events.push_back (with (cue (number, 100 + static_cast<int> (events.size())), "text",
                                ZEP::Core::RichTextString (juce::String (number))));

    EXPECT_THAT (sorted (events, Keys::KV_CueNumber, false),
                 ElementsAre ("9", "10", "A1", "A2", "A10", "b1"));
    EXPECT_THAT (sorted (events, Keys::KV_CueNumber, true), ElementsAre ("b1", "A10", "A2", "A1", "10", "9"));
    EXPECT_THAT (sorted (events, Keys::KV_Text, false), ElementsAre ("10", "9", "A1", "A10", "A2", "b1"));
}

TEST_F (EventArrayOrderTest, equalCueNumbersStandByTimecodeUpwardsBothWays)
{
    const EventArray::Events events { cue ("a1", 300), cue ("A1", 100), cue ("A1", 200), cue ("B", 50) };
    EXPECT_THAT (sorted (events, Keys::KV_CueNumber, false), ElementsAre ("A1", "A1", "a1", "B"));
    EXPECT_THAT (sorted (events, Keys::KV_CueNumber, true), ElementsAre ("B", "A1", "A1", "a1"));
}

TEST_F (EventArrayOrderTest, equalCueNumbersStandByInPointWhereTheListStandsByStreamer)
{
    const ApplicationType type (0);
    const EventArray::Events events { event (EventTypeStreamer, "a1", 25, 100, 100),
                                      event (EventTypeStreamer, "A1", 60, 90, 90) };
    for (const bool down : { false, true })
        EXPECT_THAT (sorted (events, Keys::KV_CueNumber, down), ElementsAre ("A1", "a1")) << down;
}

// ---- characters --------------------------------------------------------------------------------------------------------

TEST_F (EventArrayOrderTest, cuesThatSayWhatTheySaidAreNotComparedAgain)
{
    const auto list =
        listOf ({ with (cue ("1", 0), "text", rich ("b")), with (cue ("2", 100), "text", rich ("d")),
                  with (cue ("3", 200), "text", rich ("c")) });
    list->sortKey = Keys::KV_Text;
    list->sortContentAndUpdateFilteredEvents();
    ASSERT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("1", "3", "2"));

    // What no edit does: another letter behind the text's back, so that a comparison would show.
    list->filteredEvents[2]->getText().getText().getCharPointer().write ('z');
    setField (*list->filteredEvents[0], "text", rich ("e"));
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("3", "2", "1"));

    list->sortDescending = true; // now all are
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("3", "1", "2"));
}

TEST_F (EventArrayOrderTest, aCopyOfAListIsSortedByItself)
{
    const auto list =
        listOf ({ with (cue ("1", 0), "text", rich ("b")), with (cue ("2", 100), "text", rich ("a")) });
    list->sortKey = Keys::KV_Text;
    list->sortContentAndUpdateFilteredEvents();

    EventArray copy (*list);
    copy.addEvent (with (cue ("3", 50), "text", rich ("c")), false);
    copy.sortContentAndUpdateFilteredEvents();
    setField (*list->filteredEvents[1], "text", rich ("d"));
    list->sortContentAndUpdateFilteredEvents();
    copy.sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("1", "2"));
    EXPECT_THAT (namesOf (copy.sortedFilteredEvents), ElementsAre ("1", "3", "2"));
}

TEST_F (EventArrayOrderTest, cueNumbersAreComparedAgainUnderAnotherLocale)
{
    const std::string present = std::setlocale (LC_CTYPE, nullptr);
    const juce::ScopeGuard restore { [&present] { std::setlocale (LC_CTYPE, present.c_str()); } };
    std::setlocale (LC_CTYPE, "C");
    const auto list =
        listOf ({ cue (juce::CharPointer_UTF8 ("é1"), 0), cue (juce::CharPointer_UTF8 ("É1"), 100) });
    list->sortKey = Keys::KV_CueNumber;
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("É1", "é1"));

    ASSERT_NE (std::setlocale (LC_CTYPE, "C.UTF-8"), nullptr);
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("é1", "É1"))
        << "they are the same, and go by time";
}

TEST_F (EventArrayOrderTest, charactersStandByNameWithSilentEventsBehind)
{
    const auto anna = addCharacter ("ANNA", "Z"), ben = addCharacter ("BEN", "A");
    for (const auto& key : { Keys::KV_CharacterID, Keys::KV_CharacterActor })
    {
        const EventArray::Events events {
            cue ("silent1", 50),           spokenBy (ben, "ben", 100),    spokenBy ("gone", "unknown", 150),
            spokenBy (anna, "anna2", 200), spokenBy (anna, "anna3", 300), cue ("silent2", 400)
        };
        EXPECT_THAT (sorted (events, key, false),
                     ElementsAre ("anna2", "anna3", "ben", "silent1", "unknown", "silent2"))
            << "by the name, also in the column of actors";
        EXPECT_THAT (sorted (events, key, true),
                     ElementsAre ("silent2", "unknown", "silent1", "ben", "anna2", "anna3"));
    }
}

TEST_F (EventArrayOrderTest, theMapOfTheMomentCounts)
{
    const auto anna = addCharacter ("ANNA"), ben = addCharacter ("BEN");
    const auto list = listOf ({ spokenBy (anna, "anna", 100), spokenBy (ben, "ben", 200) });
    list->sortKey = Keys::KV_CharacterID;
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("anna", "ben"));

    Event::getADRCharacterMap()->characterForID (anna)->name = "ZOE";
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("ben", "anna"));

    Event::setADRCharacterMap (std::make_shared<ZEP::Core::ADRCharacterMap>());
    list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (list->sortedFilteredEvents), ElementsAre ("anna", "ben"));
}

TEST_F (EventArrayOrderTest, actorAndPrefixOnlyPartTheSpokenFromTheSilent)
{
    const auto anna = addCharacter ("ANNA", "Z", "Z"), ben = addCharacter ("BEN", "A", "A");
    for (const auto& key : { Keys::KV_Actor, Keys::KV_CharPrefix })
    {
        const EventArray::Events events { cue ("silent1", 50), spokenBy (anna, "anna", 100),
                                          spokenBy (ben, "ben", 200), spokenBy (anna, "anna3", 300),
                                          cue ("silent2", 400) };
        EXPECT_THAT (sorted (events, key, false), ElementsAre ("anna", "ben", "anna3", "silent1", "silent2"));
        EXPECT_THAT (sorted (events, key, true), ElementsAre ("silent2", "silent1", "anna", "ben", "anna3"));
    }
}

TEST_F (EventArrayOrderTest, longTextsThatBeginAlikeGoByTheirEnds)
{
    EventArray::Events events;
    for (int i = 0; i < 40; ++i)
    {
        const auto end = i * 7 % 40;
        events.push_back (cue (juce::String (end).paddedLeft ('0', 2), i * 100));
        setField (*events.back(), "text",
                  ZEP::Core::RichTextString (juce::String::repeatedString ("a", 32 + end % 9)
                                             + juce::String (end).paddedLeft ('0', 2)));
    }

    auto expected = events;
    std::stable_sort (expected.begin(), expected.end(),
                      [] (const auto& a, const auto& b)
                      { return a->getText().getText().compare (b->getText().getText()) < 0; });
    EXPECT_EQ (sorted (events, Keys::KV_Text, false), namesOf (expected));
    std::reverse (expected.begin(), expected.end());
    EXPECT_EQ (sorted (events, Keys::KV_Text, true), namesOf (expected));
}

TEST_F (EventArrayOrderTest, anIdentifierThatTheMapDoesNotKnowDoesNotEndTheProgram)
{
    const auto anna = addCharacter ("ANNA", "Z", "Z");
    for (const auto& key : { Keys::KV_Actor, Keys::KV_CharPrefix })
        EXPECT_THAT (
            sorted ({ cue ("silent", 50), spokenBy ("gone", "unknown", 100), spokenBy (anna, "anna", 200) },
                    key, false),
            ElementsAre ("unknown", "anna", "silent"));
}

TEST_F (EventArrayOrderTest, aVeryLongListStandsInItsOrder)
{
    constexpr int number = 70000; // more than the heap is asked for at once
    EventArray::Events events;
    Names expected;

    for (int i = 0; i < number; ++i)
    {
        events.push_back (cue (juce::String (i * 7919 % number), i));
        expected.push_back (std::to_string (i));
    }

    EXPECT_TRUE (sorted (events, Keys::KV_CueNumber, false) == expected);
    std::reverse (expected.begin(), expected.end());
    EXPECT_TRUE (sorted (events, Keys::KV_CueNumber, true) == expected);
}

} // namespace
} // namespace ZEP::Overmarks::Testing
