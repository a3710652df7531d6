// SPDX-License-Identifier: GPL-3.0-only
// A cue list comes from a stranger: no number in it may break the arithmetic. What comes out of impossible times is no
// more than sensible; that no sum overflows is what the sanitizers look for here.
#include "event/EventKeyValueEditor.h"
#include "preferences/PreferenceKeys.h"
#include "support/MakeEvents.h"
#include "support/OvermarksTest.h"
#include "support/PrintEvents.h"
#include "support/UndoHistory.h"

#include <cmath>
#include <limits>
#include <tuple>

namespace ZEP::Overmarks::Testing
{
namespace
{

constexpr int largest = std::numeric_limits<int>::max();
constexpr int smallest = std::numeric_limits<int>::min();

std::string sign (int number)
{
    return number < 0 ? "minus" + std::to_string (-static_cast<long long> (number)) : std::to_string (number);
}

// ---- indices -------------------------------------------------------------------------------------------------------

class HostileIndices : public OvermarksTest,
                       public ::testing::WithParamInterface<std::tuple<EventType, int, int, int>>
{
protected:
    const EventType type = std::get<0> (GetParam());
    const int inPoint = std::get<1> (GetParam());
    const int end = std::get<2> (GetParam());
    const int duration = std::get<3> (GetParam());
    std::shared_ptr<Event> event = makeEvent (type, inPoint, end, duration);
};

TEST_P (HostileIndices, areWrittenAsTexts)
{
    EXPECT_GE (event->getStartTCString().length(), 11);
    EXPECT_GE (event->getEndTCString().length(), 11);
    EXPECT_FALSE (event->description().isEmpty());
    EXPECT_TRUE (event->oneLineDescription().endsWith (event->getStartTCString()));
    EXPECT_GE (Poco::AnyCast<juce::String> (
                   EventKeyValueEditor (event).getValueForKey (EventKeyValueEditor::KV_DurationTCString))
                   .length(),
               11);
}

TEST_P (HostileIndices, areMovedToAnOrdinaryTime)
{
    event->setStartTCString ("00:00:40:00");

    EXPECT_EQ (event->getInPointFrameIndex(), 1000);
    EXPECT_EQ (event->getStartTCString(), juce::String ("00:00:40:00"));
}

TEST_P (HostileIndices, areGivenAnOrdinaryEnd)
{
    event->setEndTCString ("00:00:40:00");

    EXPECT_EQ (event->getEndFrameIndex(), std::max (1000, event->getInPointFrameIndex()));
}

TEST_P (HostileIndices, areUndoneExactly)
{
    const auto before = fieldsOf (*event);
    event->setStartTCString ("00:00:40:00");
    event->setEndTCString ("23:59:59:24");
    event->setStartTCString ("");
    while (undoManager().undo())
    {
    }
    auto after = fieldsOf (*event);
    after["streamerDuration"] = before.at ("streamerDuration");

    EXPECT_EQ (after, before);
}

TEST_P (HostileIndices, surviveEveryChangeOfTypeDurationAndTempo)
{
    for (const auto newType :
         { EventTypeStreamer, EventTypeMarker, EventTypeFlutter, EventTypeADRCue, EventTypeFadeIn })
    {
        event->setType (newType, true);
        event->setStreamerDuration (largest, true);
        event->setStreamerDuration (12, true);
        event->setBeatsPerMinuteString ("21");
        EXPECT_EQ (event->getStreamerDuration(), 12);
        EXPECT_EQ (event->getBeatsPerMinute(), 21.0f);
        EXPECT_EQ (event->getType(), newType);
    }
}

INSTANTIATE_TEST_SUITE_P (
    AllTypes, HostileIndices,
    ::testing::Combine (::testing::Values (EventTypeStreamer, EventTypeMarker, EventTypeFlutter,
                                           EventTypeADRCue, EventTypeFadeIn,
                                           static_cast<EventType> (largest)),
                        ::testing::Values (largest, smallest, -2), ::testing::Values (largest, smallest, -1),
                        ::testing::Values (-1, 5, largest, smallest)),
    [] (const auto& row)
    {
        return "type_" + std::to_string (std::get<0> (row.param)) + "_in_" + sign (std::get<1> (row.param))
               + "_end_" + sign (std::get<2> (row.param)) + "_duration_" + sign (std::get<3> (row.param));
    });

// ---- single values -------------------------------------------------------------------------------------------------

class HostileValues : public OvermarksTest
{
};

TEST_F (HostileValues, anyTempoGivesAStreamerOfSomeLength)
{
    prefer (StreamerReferenceUnitPrefKey, 0);
    const float infinity = std::numeric_limits<float>::infinity();
    const float notANumber = std::numeric_limits<float>::quiet_NaN();

    for (const float tempo :
         { 0.0f, -0.0f, 1e-38f, 1e-45f, -1e-30f, 1e38f, infinity, -infinity, notANumber, -120.0f })
        for (const int bars : { 1, 4 })
        {
            const auto event = makeEvent (EventTypeStreamer, 1000, -1, bars, tempo);

            EXPECT_EQ (event->getInPointFrameIndex(), 1000) << tempo;
            EXPECT_EQ (event->getEndFrameIndex(), 1000) << tempo;
            EXPECT_FALSE (event->beatsPerMinuteString().isEmpty()) << tempo;
            EXPECT_TRUE (event->description().startsWith ("Streamer, " + juce::String (bars) + " bars  "))
                << tempo;
        }
}

TEST_F (HostileValues, anImpossibleTempoIsNoStreamer)
{
    prefer (StreamerReferenceUnitPrefKey, 0);

    EXPECT_EQ (makeEvent (EventTypeStreamer, 1000, -1, 1, std::numeric_limits<float>::infinity())
                   ->getStreamerDurationInFrames(),
               0);
    EXPECT_EQ (makeEvent (EventTypeStreamer, 1000, -1, 1, std::numeric_limits<float>::quiet_NaN())
                   ->getStreamerDurationInFrames(),
               0);
}

TEST_F (HostileValues, anyPreferenceGivesAnEvent)
{
    for (const int value : { largest, smallest, -1, 0 })
    {
        for (const auto& key :
             { StreamerReferenceUnitPrefKey, StreamerDefaultTempoPrefKey, StreamerDefaultDurationPrefKey,
               FlutterDefaultDurationPrefKey, ADRCueDefaultDurationPrefKey,
               ADRCueDefaultPrimaryPrerollDurationPrefKey, MarkerDefaultDurationPrefKey })
            prefer (key, value);

        for (const auto type : { EventTypeStreamer, EventTypeMarker, EventTypeFlutter, EventTypeADRCue })
            for (const int inPoint : { 1000, largest })
                EXPECT_EQ (makeEvent (type, inPoint)->getInPointFrameIndex(), inPoint);
    }
}

TEST_F (HostileValues, aRateOfNoFramesIsSurvived)
{
    const auto info = std::make_shared<ZEP::Core::TimeInfo>();
    info->tcDef.framesPerSecond = 0;
    info->tcDef.undefined = false;
    const auto event = makeEvent (EventTypeADRCue, 1000, 1500, 1, -1.0f, info);

    event->setStartTCString (event->getStartTCString());

    EXPECT_EQ (event->getInPointFrameIndex(), 1000);
}

TEST_F (HostileValues, anOriginFarOutIsSurvived)
{
    auto info = timeInfoAt ("29.97df");
    for (const int hours : { largest, smallest, 99, -99 })
    {
        info->timeOrigin.hours = hours;
        const auto event = makeEvent (EventTypeADRCue, largest, largest, 1, -1.0f, info);

        EXPECT_FALSE (event->getStartTCString().isEmpty());
        event->setStartTCString ("23:59:59;29");
        EXPECT_FALSE (event->getStartTCString().isEmpty());
    }
}

} // namespace
} // namespace ZEP::Overmarks::Testing
