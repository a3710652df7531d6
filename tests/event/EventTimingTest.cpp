// SPDX-License-Identifier: GPL-3.0-only
// How long a streamer is, and how start and end follow from the in point.
#include "preferences/PreferenceKeys.h"
#include "support/MakeEvents.h"
#include "support/NotificationCounter.h"
#include "support/OvermarksTest.h"
#include "support/PrintEvents.h"
#include "support/UndoHistory.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>
#include <tuple>
#include <type_traits>

namespace ZEP::Overmarks::Testing
{
namespace
{

constexpr int largest = std::numeric_limits<int>::max();
constexpr int smallest = std::numeric_limits<int>::min();

// ---- seconds -------------------------------------------------------------------------------------------------------

/** A duration code and the frames that it stands for at 24, 25, 30, 48, 50 and 60 frames a second. */
struct SecondsCode
{
    int code;
    std::array<int, 6> frames;
};

struct Rate
{
    const char* name;
    std::size_t column;
};

constexpr std::array rates { Rate { "23.976", 0 },  Rate { "24", 0 },      Rate { "25", 1 },
                             Rate { "29.97", 2 },   Rate { "29.97df", 2 }, Rate { "30", 2 },
                             Rate { "48", 3 },      Rate { "50", 4 },      Rate { "59.94", 5 },
                             Rate { "59.94df", 5 }, Rate { "60", 5 } };

constexpr std::array secondsCodes {
    SecondsCode { 1, { 24, 25, 30, 48, 50, 60 } },
    SecondsCode { 2, { 48, 50, 60, 96, 100, 120 } },
    SecondsCode { 3, { 72, 75, 90, 144, 150, 180 } },
    SecondsCode { 4, { 48, 50, 60, 96, 100, 120 } },
    SecondsCode { 5, { 120, 125, 150, 240, 250, 300 } },
    SecondsCode { 267, { 64, 66, 80, 128, 133, 160 } },
    SecondsCode { 333, { 79, 83, 99, 159, 166, 199 } },
    SecondsCode { 0, { 48, 50, 60, 96, 100, 120 } },
    SecondsCode { 6, { 48, 50, 60, 96, 100, 120 } },
    SecondsCode { 266, { 48, 50, 60, 96, 100, 120 } },
    SecondsCode { -2, { 48, 50, 60, 96, 100, 120 } },
    SecondsCode { largest, { 48, 50, 60, 96, 100, 120 } },
    SecondsCode { smallest, { 48, 50, 60, 96, 100, 120 } },
};

class StreamerInSeconds : public OvermarksTest,
                          public ::testing::WithParamInterface<std::tuple<SecondsCode, Rate>>
{
protected:
    const SecondsCode code = std::get<0> (GetParam());
    const Rate rate = std::get<1> (GetParam());
    const int frames = code.frames[rate.column];
};

TEST_P (StreamerInSeconds, ofAStreamerEndsAtTheInPoint)
{
    const auto event = makeEvent (EventTypeStreamer, 1000, -1, code.code, -1.0f, timeInfoAt (rate.name));

    EXPECT_EQ (event->getStreamerDurationInFrames(), frames);
    EXPECT_EQ (event->getStartFrameIndex(), 1000 - frames);
    EXPECT_EQ (event->getInPointFrameIndex(), 1000);
    EXPECT_EQ (event->getEndFrameIndex(), 1000);
}

TEST_P (StreamerInSeconds, ofAnADRCueLiesBeforeTheLine)
{
    const auto event = makeEvent (EventTypeADRCue, 1000, 1200, code.code, -1.0f, timeInfoAt (rate.name));

    EXPECT_EQ (event->getStreamerDurationInFrames(), frames);
    EXPECT_EQ (event->getStartFrameIndex(), 1000 - frames);
    EXPECT_EQ (event->getInPointFrameIndex(), 1000);
    EXPECT_EQ (event->getEndFrameIndex(), 1200);
}

TEST_P (StreamerInSeconds, ofAnADRCueIgnoresThatStreamersCountBars)
{
    prefer (StreamerReferenceUnitPrefKey, 0);
    const auto event = makeEvent (EventTypeADRCue, 1000, 1200, code.code, 64.0f, timeInfoAt (rate.name));

    EXPECT_EQ (event->getStreamerDurationInFrames(), frames);
    EXPECT_EQ (event->getBeatsPerMinute(), -1.0f);
}

TEST_P (StreamerInSeconds, playsNoPartInOtherTypes)
{
    for (const auto type :
         { EventTypeMarker, EventTypeFadeIn, EventTypeFadeOut, static_cast<EventType> (64) })
    {
        const auto event = makeEvent (type, 1000, 1200, code.code, -1.0f, timeInfoAt (rate.name));

        EXPECT_EQ (event->getStreamerDurationInFrames(), 0);
        EXPECT_EQ (event->getStreamerDuration(), code.code);
    }
}

TEST_P (StreamerInSeconds, ofAFlutterIsANumberOfFramesAtAnyRate)
{
    const auto event = makeEvent (EventTypeFlutter, 1000, 1010, code.code, -1.0f, timeInfoAt (rate.name));

    EXPECT_EQ (event->getStreamerDurationInFrames(), code.code);
    EXPECT_EQ (timesOf (*event), "1000|1000..1010");
}

INSTANTIATE_TEST_SUITE_P (
    AllCodesAndRates, StreamerInSeconds,
    ::testing::Combine (::testing::ValuesIn (secondsCodes), ::testing::ValuesIn (rates)),
    [] (const auto& row)
    {
        const auto code = std::get<0> (row.param).code;
        auto name = std::string ("code_") + std::to_string (code) + "_at_" + std::get<1> (row.param).name;
        std::replace_if (
            name.begin(), name.end(), [] (char c) { return c == '.' || c == '-'; }, '_');
        return name;
    });

// ---- bars ----------------------------------------------------------------------------------------------------------

/** A tempo and the frames of one, two and four bars. The places where single precision drops a frame are the rows at 32,
    64 and 128 beats a minute. */
struct Bars
{
    const char* rate;
    float tempo;
    int one;
    int two;
    int four;
};

constexpr std::array barsTable {
    Bars { "24", 120.0f, 48, 96, 192 },       Bars { "25", 120.0f, 50, 100, 200 },
    Bars { "30", 120.0f, 60, 120, 240 },      Bars { "48", 120.0f, 96, 192, 384 },
    Bars { "50", 120.0f, 100, 200, 400 },     Bars { "60", 120.0f, 120, 240, 480 },
    Bars { "24", 64.0f, 89, 179, 359 },       Bars { "23.976", 64.0f, 89, 179, 359 },
    Bars { "25", 64.0f, 93, 187, 374 },       Bars { "30", 64.0f, 112, 224, 449 },
    Bars { "29.97df", 64.0f, 112, 224, 449 }, Bars { "48", 64.0f, 179, 359, 719 },
    Bars { "50", 64.0f, 187, 374, 749 },      Bars { "60", 64.0f, 224, 449, 899 },
    Bars { "24", 128.0f, 44, 89, 179 },       Bars { "30", 32.0f, 224, 449, 899 },
    Bars { "24", 21.0f, 274, 548, 1097 },     Bars { "25", 21.0f, 285, 571, 1142 },
    Bars { "25", 140.0f, 42, 85, 171 },       Bars { "60", 140.0f, 102, 205, 411 },
    Bars { "24", 299.0f, 19, 38, 77 },        Bars { "60", 299.0f, 48, 96, 192 },
};

class StreamerInBars : public OvermarksTest, public ::testing::WithParamInterface<Bars>
{
protected:
    StreamerInBars() { prefer (StreamerReferenceUnitPrefKey, 0); }

    static int framesOf (int bars)
    {
        return makeEvent (EventTypeStreamer, 5000, -1, bars, GetParam().tempo, timeInfoAt (GetParam().rate))
            ->getStreamerDurationInFrames();
    }
};

TEST_P (StreamerInBars, hasFourBeatsInABar)
{
    EXPECT_EQ (framesOf (1), GetParam().one);
    EXPECT_EQ (framesOf (2), GetParam().two);
    EXPECT_EQ (framesOf (4), GetParam().four);
}

TEST_P (StreamerInBars, countsAnyOtherNumberAsOneBar)
{
    for (const int bars : { 0, 3, 5, 8, 267, -7, largest, smallest })
        EXPECT_EQ (framesOf (bars), GetParam().one) << bars;
}

TEST_P (StreamerInBars, endsAtTheInPoint)
{
    const auto event =
        makeEvent (EventTypeStreamer, 5000, 9999, 2, GetParam().tempo, timeInfoAt (GetParam().rate));

    EXPECT_EQ (event->getStartFrameIndex(), 5000 - GetParam().two);
    EXPECT_EQ (event->getEndFrameIndex(), 5000);
    EXPECT_EQ (event->getBeatsPerMinute(), GetParam().tempo);
}

INSTANTIATE_TEST_SUITE_P (AllTempi, StreamerInBars, ::testing::ValuesIn (barsTable),
                          [] (const auto& row)
                          {
                              auto name = std::to_string (static_cast<int> (row.param.tempo)) + "_bpm_at_"
                                          + row.param.rate;
                              std::replace (name.begin(), name.end(), '.', '_');
                              return name;
                          });

// ---- what is unset follows the preferences -------------------------------------------------------------------------

class EventTiming : public OvermarksTest
{
};

TEST_F (EventTiming, aStreamerOfTwoSecondsAtFrame100StartsAtFrame50)
{
    const auto event = makeEvent (EventTypeStreamer, 100, -1, 2);

    EXPECT_EQ (timesOf (*event), "50|100..100");
}

TEST_F (EventTiming, twoBarsAt120BPMLast100FramesAndThreeBars50)
{
    prefer (StreamerReferenceUnitPrefKey, 0);

    EXPECT_EQ (makeEvent (EventTypeStreamer, 500, -1, 2, 120.0f)->getStreamerDurationInFrames(), 100);
    EXPECT_EQ (makeEvent (EventTypeStreamer, 500, -1, 3, 120.0f)->getStreamerDurationInFrames(), 50);
}

TEST_F (EventTiming, oneBarAt64BPMAnd24FramesIs89Frames)
{
    prefer (StreamerReferenceUnitPrefKey, 0);
    const auto event = makeEvent (EventTypeStreamer, 500, -1, 1, 64.0f, timeInfoAt ("24"));

    EXPECT_EQ (timesOf (*event), "411|500..500");
}

TEST_F (EventTiming, codesFourAndZeroAreTwoSeconds)
{
    EXPECT_EQ (makeEvent (EventTypeStreamer, 500, -1, 4)->getStreamerDurationInFrames(), 50);
    EXPECT_EQ (makeEvent (EventTypeADRCue, 500, -1, 0)->getStreamerDurationInFrames(), 50);
}

TEST_F (EventTiming, anUnsetDurationIsFilledFromThePreferencesOfItsType)
{
    struct Row
    {
        EventType type;
        int preferred;
        int frames;
    };
    prefer (StreamerDefaultDurationPrefKey, 5);
    prefer (ADRCueDefaultPrimaryPrerollDurationPrefKey, 1);
    prefer (FlutterDefaultDurationPrefKey, 8);

    for (const auto& row :
         { Row { EventTypeStreamer, 5, 125 }, Row { EventTypeADRCue, 1, 25 }, Row { EventTypeFlutter, 8, 8 },
           Row { EventTypeMarker, -1, 0 }, Row { EventTypeFadeIn, -1, 0 }, Row { EventTypeFadeOut, -1, 0 } })
    {
        Event event;
        event.setTimeInfo (timeInfoAt ("25"));
        event.fillMissingVariableTimeReference();
        withoutUndo (event, [&] (Event& fresh) { fresh.setType (row.type, false); });

        EXPECT_EQ (event.getStreamerDurationInFrames(), row.frames) << event.typeString();
        EXPECT_EQ (event.getStreamerDuration(), row.preferred) << event.typeString();
    }
}

TEST_F (EventTiming, anUnknownTimeReferenceCountsBars)
{
    Event event;
    event.setTimeInfo (timeInfoAt ("25"));
    withoutUndo (event,
                 [] (Event& fresh)
                 {
                     fresh.setType (EventTypeStreamer, false);
                     fresh.setStreamerDuration (1, false);
                     fresh.setBeatsPerMinuteString ("60");
                 });

    EXPECT_EQ (event.getTimeReference(), -1);
    EXPECT_EQ (event.getStreamerDurationInFrames(), 100);
}

TEST_F (EventTiming, theTimeReferenceIsFilledOnlyWhenUnset)
{
    prefer (StreamerReferenceUnitPrefKey, 0);
    Event event;
    event.fillMissingVariableTimeReference();
    EXPECT_EQ (event.getTimeReference(), 0);

    prefer (StreamerReferenceUnitPrefKey, 1);
    event.fillMissingVariableTimeReference();
    EXPECT_EQ (event.getTimeReference(), 0);
}

TEST_F (EventTiming, theDefaultTempoIsCutToAWholeNumber)
{
    prefer (StreamerReferenceUnitPrefKey, 0);
    EXPECT_EQ (makeEvent (EventTypeStreamer)->getBeatsPerMinute(), 120.0f);

    ASSERT_TRUE (
        ZEP::Core::UserDefaults::setValueForKey (StreamerDefaultTempoPrefKey, Poco::Any (89.9f)).wasOk());
    EXPECT_EQ (makeEvent (EventTypeStreamer)->getBeatsPerMinute(), 89.0f);
}

TEST_F (EventTiming, aGivenTempoStays)
{
    prefer (StreamerReferenceUnitPrefKey, 0);

    EXPECT_EQ (makeEvent (EventTypeStreamer, 100, -1, 1, 71.5f)->getBeatsPerMinute(), 71.5f);
    EXPECT_EQ (makeEvent (EventTypeStreamer, 100, -1, 1, 0.0f)->getBeatsPerMinute(), 0.0f);
}

TEST_F (EventTiming, onlyAStreamerInBarsKeepsATempo)
{
    EXPECT_EQ (makeEvent (EventTypeStreamer, 100, -1, 2, 90.0f)->getBeatsPerMinute(), -1.0f);

    prefer (StreamerReferenceUnitPrefKey, 0);
    for (const auto type :
         { EventTypeMarker, EventTypeFlutter, EventTypeADRCue, EventTypeFadeIn, EventTypeFadeOut })
        EXPECT_EQ (makeEvent (type, 100, -1, 2, 90.0f)->getBeatsPerMinute(), -1.0f);
}

TEST_F (EventTiming, fillingTheTempoOfAStreamerInSecondsTakesAnExistingOneAway)
{
    const auto event = makeEvent (EventTypeStreamer, 100, -1, 2);
    withoutUndo (*event, [] (Event& streamer) { streamer.setBeatsPerMinuteString ("90"); });
    ASSERT_EQ (event->getBeatsPerMinute(), 90.0f);

    event->fillMissingVariableBPM();

    EXPECT_EQ (event->getBeatsPerMinute(), -1.0f);
}

// ---- start and end follow from the in point ------------------------------------------------------------------------

TEST_F (EventTiming, aCueTakesItsLengthFromItsOwnCodes)
{
    struct Row
    {
        int preferred;
        const char* times;
    };
    for (const auto& row :
         { Row { 1, "925|1000..1025" }, Row { 2, "925|1000..1075" }, Row { 3, "925|1000..1125" },
           Row { 4, "925|1000..1250" }, Row { 5, "925|1000..1750" }, Row { 0, "925|1000..1000" },
           Row { 6, "925|1000..1000" }, Row { -1, "925|1000..1000" }, Row { 267, "925|1000..1000" } })
    {
        prefer (ADRCueDefaultDurationPrefKey, row.preferred);
        EXPECT_EQ (timesOf (*makeEvent (EventTypeADRCue, 1000)), row.times) << row.preferred;
    }
}

TEST_F (EventTiming, aGivenEndStays)
{
    EXPECT_EQ (timesOf (*makeEvent (EventTypeADRCue, 1000, 1010)), "925|1000..1010");
    EXPECT_EQ (timesOf (*makeEvent (EventTypeADRCue, 1000, 900)), "925|1000..900");
    EXPECT_EQ (timesOf (*makeEvent (EventTypeMarker, 1000, 1010)), "1000|1000..1010");
    EXPECT_EQ (timesOf (*makeEvent (EventTypeFlutter, 1000, 1010)), "1000|1000..1010");
}

TEST_F (EventTiming, aStreamerAlwaysEndsAtItsInPoint)
{
    EXPECT_EQ (timesOf (*makeEvent (EventTypeStreamer, 1000, 1010)), "950|1000..1000");
}

TEST_F (EventTiming, aMarkerLastsAWholeNumberOfSeconds)
{
    EXPECT_EQ (timesOf (*makeEvent (EventTypeMarker, 1000)), "1000|1000..1050");

    prefer (MarkerDefaultDurationPrefKey, 7);
    EXPECT_EQ (timesOf (*makeEvent (EventTypeMarker, 1000, -1, -1, -1.0f, timeInfoAt ("24"))),
               "1000|1000..1168");
}

TEST_F (EventTiming, aFlutterLastsItsFrames)
{
    prefer (FlutterDefaultDurationPrefKey, 8);
    const auto event = makeEvent (EventTypeFlutter, 1000);

    EXPECT_EQ (timesOf (*event), "1000|1000..1008");
    EXPECT_EQ (event->getStreamerDuration(), 8);
}

TEST_F (EventTiming, anUnsetEndOfAFlutterFollowsThePreferenceAndNotItsDuration)
{
    prefer (FlutterDefaultDurationPrefKey, 8);
    const auto event = makeEvent (EventTypeFlutter, 1000, -1, 12);

    EXPECT_EQ (timesOf (*event), "1000|1000..1008");
    EXPECT_EQ (event->getStreamerDuration(), 12);
}

TEST_F (EventTiming, aFadeKeepsWhatItWasGiven)
{
    EXPECT_EQ (timesOf (*makeEvent (EventTypeFadeIn, 1000)), "-1|1000..-1");
    EXPECT_EQ (timesOf (*makeEvent (EventTypeFadeOut, 1000, 1020)), "-1|1000..1020");
    EXPECT_EQ (timesOf (*makeEvent (static_cast<EventType> (64), 1000)), "-1|1000..-1");
}

TEST_F (EventTiming, anEventWithoutATimeGetsNone)
{
    for (const auto type : { EventTypeStreamer, EventTypeMarker, EventTypeFlutter, EventTypeADRCue,
                             EventTypeFadeIn, EventTypeFadeOut, eventTypeUnset })
    {
        const auto event = makeUntimedEvent (type);

        EXPECT_EQ (timesOf (*event), "-1|-1..-1");
        EXPECT_EQ (event->getStreamerDuration(), -1);
    }
}

TEST_F (EventTiming, aStreamerBeforeThePictureIsShiftedToItsFirstFrame)
{
    EXPECT_EQ (timesOf (*makeEvent (EventTypeStreamer, -10)), "-50|0..0");
    EXPECT_EQ (timesOf (*makeEvent (EventTypeStreamer, -1, 500)), "-50|0..0");
}

TEST_F (EventTiming, aStreamerThatBeginsBeforeThePictureStays)
{
    EXPECT_EQ (timesOf (*makeEvent (EventTypeStreamer, 0)), "-50|0..0");
    EXPECT_EQ (timesOf (*makeEvent (EventTypeStreamer, 20)), "-30|20..20");
}

TEST_F (EventTiming, aCueMayBeginBeforeThePictureWithoutAFloor)
{
    EXPECT_EQ (timesOf (*makeEvent (EventTypeADRCue, 10)), "-65|10..85");
    EXPECT_EQ (timesOf (*makeEvent (EventTypeADRCue, -10)), "-85|-10..65");
}

TEST_F (EventTiming, fillingAgainChangesNothing)
{
    for (const auto type :
         { EventTypeStreamer, EventTypeMarker, EventTypeFlutter, EventTypeADRCue, EventTypeFadeIn })
    {
        const auto event = makeEvent (type, 1000);
        const auto before = fieldsOf (*event);
        event->fillMissingVariablesAndSendChangedNotification (false);
        EXPECT_EQ (fieldsOf (*event), before);
    }
}

TEST_F (EventTiming, fillingTellsOnlyWhenAskedAndThenEvenWhileSuppressed)
{
    const auto event = makeEvent (EventTypeADRCue);
    const EventNews news;

    event->fillMissingVariablesAndSendChangedNotification (false);
    EXPECT_EQ (news.count(), 0);

    event->setNotificationsSuppressed (true);
    event->fillMissingVariablesAndSendChangedNotification (true);
    EXPECT_EQ (news.timings.count(), 1);
    EXPECT_EQ (news.attributes.count(), 0);
    EXPECT_EQ (eventsOf (news.timings.last()), std::vector<Event*> { event.get() });
}

} // namespace
} // namespace ZEP::Overmarks::Testing
