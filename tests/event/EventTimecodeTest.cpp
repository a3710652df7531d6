// SPDX-License-Identifier: GPL-3.0-only
// Moving an event by timecode, by duration, by tempo and by type.
#include "preferences/PreferenceKeys.h"
#include "support/MakeEvents.h"
#include "support/NotificationCounter.h"
#include "support/OvermarksTest.h"
#include "support/PrintEvents.h"
#include "support/UndoHistory.h"

#include <array>

namespace ZEP::Overmarks::Testing
{
namespace
{

class EventTimecode : public OvermarksTest
{
protected:
    EventNews news;
};

// ---- texts ---------------------------------------------------------------------------------------------------------

TEST_F (EventTimecode, startIsTheInPointAndNotWhereTheStreamerBegins)
{
    const auto event = makeEvent (EventTypeADRCue, 1000, 1100);

    EXPECT_EQ (event->getStartTCString(), juce::String ("00:00:40:00"));
    EXPECT_EQ (event->getEndTCString(), juce::String ("00:00:44:00"));
}

TEST_F (EventTimecode, countsFromTheTimeOrigin)
{
    const auto event = makeEvent (EventTypeADRCue, 1000, 1100, -1, -1.0f, timeInfoAt ("25", "10:00:00:00"));

    EXPECT_EQ (event->getStartTCString(), juce::String ("10:00:40:00"));
    EXPECT_EQ (event->getEndTCString(), juce::String ("10:00:44:00"));
}

TEST_F (EventTimecode, skipsTheLabelsOfDropFrame)
{
    const auto event = makeEvent (EventTypeMarker, 1799, 1800, -1, -1.0f, timeInfoAt ("29.97df"));
    EXPECT_EQ (event->getStartTCString(), juce::String ("00:00:59;29"));
    EXPECT_EQ (event->getEndTCString(), juce::String ("00:01:00;02"));

    event->setStartTCString ("00:10:00;00");
    EXPECT_EQ (event->getInPointFrameIndex(), 17982);
    EXPECT_EQ (event->getStartTCString(), juce::String ("00:10:00;00"));
}

TEST_F (EventTimecode, eventsWithoutATimeShowDashes)
{
    const auto event = makeUntimedEvent (EventTypeADRCue);
    EXPECT_EQ (event->getStartTCString(), juce::String ("--:--:--:--"));
    EXPECT_EQ (event->getEndTCString(), juce::String ("--:--:--:--"));

    const auto dropFrame = makeUntimedEvent (EventTypeADRCue, timeInfoAt ("29.97df"));
    EXPECT_EQ (dropFrame->getStartTCString(), juce::String ("--:--:--;--"));
    EXPECT_EQ (dropFrame->getEndTCString(), juce::String ("--:--:--;--"));
}

TEST_F (EventTimecode, anUnsetIndexBesideASetOneIsOneFrameBeforeTheOrigin)
{
    const auto fade = makeEvent (EventTypeFadeIn, 100, -1, -1, -1.0f, timeInfoAt ("25", "01:00:00:00"));
    EXPECT_EQ (fade->getEndTCString(), juce::String ("00:59:59:24"));

    const auto atMidnight = makeEvent (EventTypeFadeIn, -1, 100);
    EXPECT_EQ (atMidnight->getStartTCString(), juce::String ("23:59:59:24"));
}

TEST_F (EventTimecode, isWrittenWithoutAStringAsWell)
{
    std::array<char, ZEP::Core::TCToolbox::longestTimecode> buffer {};
    const auto event =
        makeEvent (EventTypeADRCue, 1799, 1800, -1, -1.0f, timeInfoAt ("29.97df", "01:00:00;00"));

    EXPECT_EQ (event->writeStartTC (buffer.data()), 11u);
    EXPECT_EQ (juce::String (buffer.data()), event->getStartTCString());
    EXPECT_EQ (event->writeEndTC (buffer.data()), 11u);
    EXPECT_EQ (juce::String (buffer.data()), event->getEndTCString());

    EXPECT_EQ (makeUntimedEvent (EventTypeADRCue)->writeStartTC (buffer.data()), 11u);
    EXPECT_EQ (juce::String (buffer.data()), juce::String ("--:--:--:--"));
}

TEST_F (EventTimecode, textAndIndexAgreeBothWaysAtEveryRate)
{
    for (const auto& rate : ZEP::Core::TCToolbox::rateNames())
        for (const int index : { 0, 1, 24, 1798, 1799, 1800, 17981, 17982, 107892, 2000000 })
        {
            const auto event = makeEvent (EventTypeMarker, index, -1, -1, -1.0f,
                                          timeInfoAt (rate.toStdString(), "01:00:00:00"));
            event->setStartTCString (event->getStartTCString());
            EXPECT_EQ (event->getInPointFrameIndex(), index) << rate;
        }
}

// ---- the start -----------------------------------------------------------------------------------------------------

/** An event with its times as start|in..end, a timecode for its start, and what comes of it. */
struct StartMove
{
    const char* name;
    EventType type;
    int inPoint;
    int end;
    int duration;
    const char* before;
    const char* timecode;
    const char* after;
};

constexpr std::array startMoves {
    StartMove { "cueWithinItsEnd", EventTypeADRCue, 100, 500, 1, "75|100..500", "00:00:08:00",
                "175|200..500" },
    StartMove { "cueOneFrameBeforeItsEnd", EventTypeADRCue, 100, 500, 1, "75|100..500", "00:00:19:24",
                "474|499..500" },
    StartMove { "cueToItsEnd", EventTypeADRCue, 100, 500, 1, "75|100..500", "00:00:20:00", "475|500..900" },
    StartMove { "cuePastItsEnd", EventTypeADRCue, 100, 500, 1, "75|100..500", "00:00:40:00",
                "975|1000..1400" },
    StartMove { "cueEarlier", EventTypeADRCue, 100, 500, 1, "75|100..500", "00:00:02:00", "25|50..500" },
    StartMove { "cueWithPrerollBeforeThePicture", EventTypeADRCue, 100, 500, 1, "75|100..500", "00:00:00:10",
                "0|10..500" },
    StartMove { "cueWhosePrerollJustFits", EventTypeADRCue, 100, 500, 1, "75|100..500", "00:00:01:00",
                "0|25..500" },
    StartMove { "flutter", EventTypeFlutter, 100, 108, 8, "100|100..108", "00:00:08:00", "200|200..208" },
    StartMove { "flutterWithAnEndOfItsOwn", EventTypeFlutter, 100, 150, 8, "100|100..150", "00:00:08:00",
                "200|200..208" },
    StartMove { "streamer", EventTypeStreamer, 100, -1, 2, "50|100..100", "00:00:08:00", "150|200..200" },
    StartMove { "streamerBeforeThePicture", EventTypeStreamer, 100, -1, 2, "50|100..100", "00:00:01:00",
                "-25|25..25" },
    StartMove { "fadeIn", EventTypeFadeIn, 100, -1, 2, "-1|100..-1", "00:00:08:00", "200|200..200" },
    StartMove { "fadeOut", EventTypeFadeOut, 100, 120, 2, "-1|100..120", "00:00:08:00", "200|200..200" },
    StartMove { "markerWithinItsEnd", EventTypeMarker, 100, 500, -1, "100|100..500", "00:00:08:00",
                "200|200..500" },
    StartMove { "markerPastItsEnd", EventTypeMarker, 100, 150, -1, "100|100..150", "00:00:08:00",
                "200|200..250" },
    StartMove { "unknownType", static_cast<EventType> (64), 100, 500, -1, "-1|100..500", "00:00:08:00",
                "200|200..500" },
    StartMove { "unknownTypePastItsEnd", static_cast<EventType> (64), 100, 150, -1, "-1|100..150",
                "00:00:08:00", "200|200..351" },
    StartMove { "cueWithoutATime", EventTypeADRCue, -1, -1, 1, "-1|-1..-1", "00:00:08:00", "175|200..200" },
    StartMove { "markerWithoutATime", EventTypeMarker, -1, -1, -1, "-1|-1..-1", "00:00:08:00",
                "200|200..200" },
    StartMove { "flutterWithoutATime", EventTypeFlutter, -1, -1, 4, "-1|-1..-1", "00:00:08:00",
                "200|200..204" },
    StartMove { "streamerWithoutATime", EventTypeStreamer, -1, -1, 1, "-1|-1..-1", "00:00:08:00",
                "175|200..200" },
};

class EventStart : public EventTimecode, public ::testing::WithParamInterface<StartMove>
{
protected:
    const StartMove move = GetParam();
    std::shared_ptr<Event> event = makeEvent (move.type, move.inPoint, move.end, move.duration);
};

TEST_P (EventStart, movesTheEventByItsType)
{
    ASSERT_EQ (timesOf (*event), move.before);

    event->setStartTCString (move.timecode);

    EXPECT_EQ (timesOf (*event), move.after);
    EXPECT_EQ (undoNames(), std::vector<std::string> { "Changing Event Timecode" });
    EXPECT_EQ (news.timings.count(), 1);
    EXPECT_EQ (news.attributes.count(), 0);
    undoManager().undo();
    EXPECT_EQ (timesOf (*event), move.before);
    EXPECT_EQ (news.timings.count(), 2);
}

TEST_P (EventStart, movesTheSameWayUnderBypass)
{
    event->setUndoBypass (true);
    event->setStartTCString (move.timecode);

    EXPECT_EQ (timesOf (*event), move.after);
    EXPECT_EQ (undoSteps(), 0u);
    EXPECT_EQ (news.timings.count(), 1);
}

INSTANTIATE_TEST_SUITE_P (AllTypes, EventStart, ::testing::ValuesIn (startMoves),
                          [] (const auto& row) { return std::string (row.param.name); });

TEST_F (EventTimecode, aStartBeforeTheOriginIsANegativeIndex)
{
    const auto info = timeInfoAt ("25", "01:00:00:00");
    const auto cue = makeEvent (EventTypeADRCue, 100, 500, 1, -1.0f, info);
    cue->setStartTCString ("00:59:59:00");
    EXPECT_EQ (timesOf (*cue), "0|-25..500");

    const auto streamer = makeEvent (EventTypeStreamer, 100, -1, 1, -1.0f, info);
    streamer->setStartTCString ("00:59:59:00");
    EXPECT_EQ (timesOf (*streamer), "-50|-25..-25");

    const auto marker = makeEvent (EventTypeMarker, 100, 500, 1, -1.0f, info);
    marker->setStartTCString ("00:59:59:00");
    EXPECT_EQ (timesOf (*marker), "-25|-25..500");
}

TEST_F (EventTimecode, aMovedCueHasItsFloorAtZeroAndAFilledOneHasNone)
{
    const auto cue = makeEvent (EventTypeADRCue, 1000);

    cue->setStartTCString ("00:00:00:10");
    EXPECT_EQ (timesOf (*cue), "0|10..1075");

    cue->fillMissingVariableStartEndFrameIndex();
    EXPECT_EQ (timesOf (*cue), "-65|10..1075");
}

TEST_F (EventTimecode, theDropFrameSeparatorDoesNotMatterWhenRead)
{
    const auto event = makeEvent (EventTypeMarker, 0, 10, -1, -1.0f, timeInfoAt ("29.97df"));

    event->setStartTCString ("00:01:00:02");
    EXPECT_EQ (event->getInPointFrameIndex(), 1800);
    event->setEndTCString ("00:02:00;02");
    EXPECT_EQ (event->getEndFrameIndex(), 3598);
}

TEST_F (EventTimecode, anInvalidStartTakesTheTimeAwayInTwoSteps)
{
    const auto event = makeEvent (EventTypeADRCue, 100, 500, 1);

    event->setStartTCString ("--:--:--:--");

    EXPECT_EQ (timesOf (*event), "-1|-1..-1");
    EXPECT_EQ (undoNames(), (std::vector<std::string> { "Changing Event Timecode", "Set Event Timecode" }));
    EXPECT_EQ (news.timings.count(), 2);
    EXPECT_EQ (news.attributes.count(), 0);

    undoManager().undo();
    EXPECT_EQ (timesOf (*event), "-1|-1..-1");
    EXPECT_EQ (news.timings.count(), 3);
    undoManager().undo();
    EXPECT_EQ (timesOf (*event), "75|100..500");
    EXPECT_EQ (news.timings.count(), 4);

    undoManager().redo();
    EXPECT_EQ (timesOf (*event), "-1|-1..-1");
    undoManager().redo();
    EXPECT_EQ (timesOf (*event), "-1|-1..-1");
    EXPECT_EQ (news.timings.count(), 6);
}

TEST_F (EventTimecode, anInvalidStartUnderBypassTellsOnce)
{
    const auto event = makeEvent (EventTypeADRCue, 100, 500, 1);
    event->setUndoBypass (true);

    event->setStartTCString ("no timecode");

    EXPECT_EQ (timesOf (*event), "-1|-1..-1");
    EXPECT_EQ (undoSteps(), 0u);
    EXPECT_EQ (news.timings.count(), 1);
}

TEST_F (EventTimecode, anInvalidStartIsSilentWhileSuppressed)
{
    const auto event = makeEvent (EventTypeADRCue, 100, 500, 1);
    event->setNotificationsSuppressed (true);

    event->setStartTCString ("no timecode");
    event->setUndoBypass (true);
    event->setStartTCString ("no timecode");

    EXPECT_EQ (undoSteps(), 2u);
    EXPECT_EQ (news.count(), 0);
}

TEST_F (EventTimecode, whatIsNoTimecodeTakesTheTimeAway)
{
    for (const auto* text : { "", " ", "--:--:--;--", "1:00:00:00", "00:60:00:00", "00:00:00", "-00:00:01:00",
                              "00:00:00:00x", "hello" })
    {
        const auto start = makeEvent (EventTypeMarker);
        start->setStartTCString (text);
        EXPECT_EQ (timesOf (*start), "-1|-1..-1") << text;

        const auto end = makeEvent (EventTypeMarker);
        end->setEndTCString (text);
        EXPECT_EQ (timesOf (*end), "-1|-1..-1") << text;
    }
}

// ---- the end -------------------------------------------------------------------------------------------------------

TEST_F (EventTimecode, anEndBeforeTheInPointStopsAtIt)
{
    for (const auto type :
         { EventTypeADRCue, EventTypeMarker, EventTypeFlutter, EventTypeStreamer, EventTypeFadeIn })
    {
        const auto event = makeEvent (type, 100, 500, 1);
        event->setEndTCString ("00:00:03:24");
        EXPECT_EQ (event->getEndFrameIndex(), 100) << event->typeString();
        event->setEndTCString ("00:00:04:01");
        EXPECT_EQ (event->getEndFrameIndex(), 101) << event->typeString();
    }
}

TEST_F (EventTimecode, anEndMovesNothingElse)
{
    const auto event = makeEvent (EventTypeADRCue, 100, 500, 1);

    event->setEndTCString ("00:00:40:00");

    EXPECT_EQ (timesOf (*event), "75|100..1000");
    EXPECT_EQ (undoNames(), std::vector<std::string> { "Set Event Timecode" });
}

TEST_F (EventTimecode, anEndCanBeGivenBeforeTheStart)
{
    const auto event = makeUntimedEvent (EventTypeADRCue);

    event->setEndTCString ("00:00:40:00");

    EXPECT_EQ (timesOf (*event), "-1|-1..1000");
}

TEST_F (EventTimecode, undoOfAnInvalidEndBringsAllThreeIndicesBackInOneStep)
{
    const auto event = makeEvent (EventTypeADRCue, 100, 500, 1);

    event->setEndTCString ("--:--:--:--");
    EXPECT_EQ (timesOf (*event), "-1|-1..-1");
    EXPECT_EQ (undoNames(), std::vector<std::string> { "Set Event Timecode" });
    EXPECT_EQ (news.timings.count(), 1);

    undoManager().undo();
    EXPECT_EQ (timesOf (*event), "75|100..500");
    EXPECT_EQ (news.timings.count(), 2);
}

// ---- the duration --------------------------------------------------------------------------------------------------

TEST_F (EventTimecode, aDurationWithoutTimingUnderUndoChangesNothing)
{
    const auto event = makeEvent (EventTypeADRCue);
    const auto before = fieldsOf (*event);

    event->setStreamerDuration (4, false);

    EXPECT_EQ (fieldsOf (*event), before);
    EXPECT_EQ (undoSteps(), 0u);
    EXPECT_EQ (news.count(), 0);
}

TEST_F (EventTimecode, aDurationWithoutTimingUnderBypassChangesTheDurationAlone)
{
    const auto event = makeEvent (EventTypeADRCue);
    auto expected = fieldsOf (*event);
    event->setUndoBypass (true);

    event->setStreamerDuration (5, false);

    expected["streamerDuration"] = "5";
    expected["undoBypass"] = "true";
    EXPECT_EQ (fieldsOf (*event), expected);
    EXPECT_EQ (news.timings.count(), 1);
    EXPECT_EQ (news.attributes.count(), 0);
}

struct DurationChange
{
    const char* name;
    EventType type;
    int end;
    int from;
    int to;
    const char* before;
    const char* after;
};

constexpr std::array durationChanges {
    DurationChange { "cue", EventTypeADRCue, 1500, 1, 3, "975|1000..1500", "925|1000..1500" },
    DurationChange { "streamer", EventTypeStreamer, -1, 1, 333, "975|1000..1000", "917|1000..1000" },
    DurationChange { "flutterOfOneFrame", EventTypeFlutter, 1008, 8, 1, "1000|1000..1008",
                     "1000|1000..1001" },
    DurationChange { "flutterOfFourFrames", EventTypeFlutter, 1008, 8, 4, "1000|1000..1008",
                     "1000|1000..1004" },
    DurationChange { "flutterOfEightFrames", EventTypeFlutter, 1001, 1, 8, "1000|1000..1001",
                     "1000|1000..1008" },
    DurationChange { "flutterOfTwelveFrames", EventTypeFlutter, 1001, 1, 12, "1000|1000..1001",
                     "1000|1000..1012" },
    DurationChange { "flutterOfAnyOtherNumber", EventTypeFlutter, 1008, 8, 7, "1000|1000..1008",
                     "1000|1000..1008" },
    DurationChange { "marker", EventTypeMarker, 1500, 1, 8, "1000|1000..1500", "1000|1000..1500" },
    DurationChange { "fade", EventTypeFadeIn, 1500, 1, 8, "-1|1000..1500", "-1|1000..1500" },
};

class EventDuration : public EventTimecode, public ::testing::WithParamInterface<DurationChange>
{
};

TEST_P (EventDuration, movesWhatHangsOnIt)
{
    const auto& row = GetParam();
    const auto event = makeEvent (row.type, 1000, row.end, row.from);
    ASSERT_EQ (timesOf (*event), row.before);

    event->setStreamerDuration (row.to, true);
    EXPECT_EQ (timesOf (*event), row.after);
    EXPECT_EQ (event->getStreamerDuration(), row.to);

    undoManager().undo();
    EXPECT_EQ (timesOf (*event), row.before);
    EXPECT_EQ (event->getStreamerDuration(), row.from);
    EXPECT_EQ (news.timings.count(), 2);
    EXPECT_EQ (news.attributes.count(), 0);
}

TEST_P (EventDuration, movesTheSameUnderBypass)
{
    const auto& row = GetParam();
    const auto event = makeEvent (row.type, 1000, row.end, row.from);
    event->setUndoBypass (true);

    event->setStreamerDuration (row.to, true);

    EXPECT_EQ (timesOf (*event), row.after);
    EXPECT_EQ (event->getStreamerDuration(), row.to);
    EXPECT_EQ (news.timings.count(), 1);
}

INSTANTIATE_TEST_SUITE_P (AllTypes, EventDuration, ::testing::ValuesIn (durationChanges),
                          [] (const auto& row) { return std::string (row.param.name); });

TEST_F (EventTimecode, aNewDurationTakesTheFloorOfACueAway)
{
    const auto cue = makeEvent (EventTypeADRCue, 100, 500, 1);
    cue->setStartTCString ("00:00:00:10");
    ASSERT_EQ (timesOf (*cue), "0|10..500");

    cue->setStreamerDuration (2, true);
    EXPECT_EQ (timesOf (*cue), "-40|10..500");

    undoManager().undo();
    EXPECT_EQ (timesOf (*cue), "0|10..500");
}

TEST_F (EventTimecode, theDurationOfAnUntimedCueCanBeChosenBeforehand)
{
    const auto cue = makeUntimedEvent (EventTypeADRCue);

    cue->setStreamerDuration (5, true);

    EXPECT_EQ (cue->getStreamerDuration(), 5);
    EXPECT_EQ (timesOf (*cue), "-1|-1..-1");
}

TEST_F (EventTimecode, undoOfADurationBringsBackNeitherAnInPointNorATempo)
{
    const auto early = makeEvent (EventTypeStreamer, 1000, -1, 2, -1.0f, timeInfoAt ("25", "01:00:00:00"));
    withoutUndo (*early, [] (Event& event) { event.setStartTCString ("00:59:59:00"); });
    ASSERT_EQ (timesOf (*early), "-75|-25..-25");
    early->setStreamerDuration (1, true);
    EXPECT_EQ (timesOf (*early), "-25|0..0");
    undoManager().undo();
    EXPECT_EQ (timesOf (*early), "-75|0..-25");

    const auto cue = makeEvent (EventTypeADRCue, 1000, 1500, 1);
    withoutUndo (*cue, [] (Event& event) { event.setBeatsPerMinuteString ("60"); });
    cue->setStreamerDuration (2, true);
    undoManager().undo();
    EXPECT_EQ (cue->getBeatsPerMinute(), -1.0f);
}

TEST_F (EventTimecode, withoutATimeReferenceATimecodeMovesNothing)
{
    const auto event = makeEvent (EventTypeADRCue, 1000, 1500, 1);
    event->setTimeInfo (nullptr);
    const auto before = timesOf (*event);

    event->setStartTCString ("00:00:10:00");
    event->setEndTCString ("00:00:10:00");
    EXPECT_EQ (timesOf (*event), before);
    EXPECT_FALSE (undoManager().canUndo());
}

// ---- the type ------------------------------------------------------------------------------------------------------

TEST_F (EventTimecode, aNewTypeKeepsTheInPointAndDerivesTheRest)
{
    struct Row
    {
        EventType type;
        const char* times;
        int duration;
    };
    for (const auto& row :
         { Row { EventTypeStreamer, "950|1000..1000", 2 }, Row { EventTypeMarker, "1000|1000..1050", -1 },
           Row { EventTypeFlutter, "1000|1000..1001", 1 }, Row { EventTypeFadeIn, "975|1000..-1", -1 },
           Row { EventTypeFadeOut, "975|1000..-1", -1 } })
    {
        const auto event = makeEvent (EventTypeADRCue, 1000, 1500, 1);
        event->setType (row.type, true);

        EXPECT_EQ (event->getType(), row.type);
        EXPECT_EQ (timesOf (*event), row.times);
        EXPECT_EQ (event->getStreamerDuration(), row.duration);
    }
}

TEST_F (EventTimecode, aNewTypeThatKeepsTheContentMovesNothing)
{
    const auto event = makeEvent (EventTypeADRCue, 1000, 1500, 1);

    event->setType (EventTypeStreamer, false);

    EXPECT_EQ (timesOf (*event), "975|1000..1500");
    EXPECT_EQ (event->getStreamerDuration(), 1);
}

TEST_F (EventTimecode, undoOfANewTypeDoesNotBringTheTempoBack)
{
    prefer (StreamerReferenceUnitPrefKey, 0);
    const auto event = makeEvent (EventTypeStreamer, 1000, -1, 1, 60.0f);

    event->setType (EventTypeADRCue, true);
    undoManager().undo();

    EXPECT_EQ (event->getType(), EventTypeStreamer);
    EXPECT_EQ (timesOf (*event), "900|1000..1000");
    EXPECT_EQ (event->getBeatsPerMinute(), -1.0f);
}

TEST_F (EventTimecode, theSameTypeIsNoReset)
{
    const auto event = makeEvent (EventTypeADRCue, 1000, 1500, 1);
    event->setType (EventTypeADRCue, true);

    EXPECT_EQ (timesOf (*event), "975|1000..1500");
    EXPECT_EQ (undoSteps(), 0u);
}

TEST_F (EventTimecode, anUntimedEventCanChangeItsType)
{
    const auto event = makeUntimedEvent (EventTypeADRCue);
    event->setType (EventTypeMarker, true);

    EXPECT_EQ (event->getType(), EventTypeMarker);
    EXPECT_EQ (timesOf (*event), "-1|-1..-1");
}

} // namespace
} // namespace ZEP::Overmarks::Testing
