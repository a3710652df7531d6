// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/EventRowReader.h"

#include "import/frame/EventRowSupport.h"
#include "preferences/PreferenceKeys.h"
#include "support/PrintEvents.h"

namespace ZEP::Overmarks::Testing
{
namespace
{

/** Rows of a picture at 25 frames from 01:00:00:00; preferred lengths are 3 seconds for cues and prerolls, 2 for
    streamers and markers, and a single frame for flutters. */
class EventRowReaderTimesTest : public EventRowsTest
{
protected:
    static NamedCells row (const std::string& type, const std::string& start, const std::string& end = {},
                           const std::string& duration = {})
    {
        return { { "Event Type", type },
                 { "Start TC", start },
                 { "End TC", end },
                 { "Streamer Duration", duration } };
    }

    std::string times (const NamedCells& cells) { return timesOf (*event (cells)); }
};

TEST_F (EventRowReaderTimesTest, aCueHasItsPrerollAndItsEndAsTold)
{
    EXPECT_EQ (times (row ("ADR Cue", "01:00:10:00", "01:00:12:00")), "175|250..300");
    EXPECT_EQ (times (row ("ADR Cue", "01:00:10:00", "01:00:12:00", "1")), "225|250..300");
    EXPECT_EQ (times (row ("ADR Cue", "01:00:10:00", "--:--:--:--")), "175|250..325");
}

TEST_F (EventRowReaderTimesTest, aStreamerEndsAtItsInPointUnlessToldOtherwise)
{
    EXPECT_EQ (times (row ("Streamer", "01:00:10:00", {}, "2")), "200|250..250");
    EXPECT_EQ (times (row ("Streamer", "01:00:10:00", "01:00:10:00", "2")), "200|250..250");
    EXPECT_EQ (times (row ("Streamer", "01:00:10:00", "01:00:11:00", "2")), "200|250..275");

    prefer (StreamerReferenceUnitPrefKey, 0);
    auto bars = row ("Streamer", "01:00:10:00", {}, "2");
    bars["BPM"] = "120";
    EXPECT_EQ (times (bars), "150|250..250");
}

TEST_F (EventRowReaderTimesTest, aMarkerLastsFromItsInPointToItsEnd)
{
    EXPECT_EQ (times (row ("Marker", "01:00:10:00", "01:00:11:00")), "250|250..275");
    EXPECT_EQ (times (row ("Marker", "01:00:10:00")), "250|250..300");
}

TEST_F (EventRowReaderTimesTest, aFlutterWithoutEndLastsItsDuration)
{
    EXPECT_EQ (times (row ("Flutter", "01:00:10:00", {}, "8")), "250|250..258");
    EXPECT_EQ (times (row ("Flutter", "01:00:10:00")), "250|250..251");
    EXPECT_EQ (times (row ("Flutter", "01:00:10:00", "01:00:10:12", "8")), "250|250..262");
}

TEST_F (EventRowReaderTimesTest, aFadeIsAPoint)
{
    EXPECT_EQ (times (row ("Fade In", "01:00:10:00")), "250|250..250");
    EXPECT_EQ (times (row ("Fade Out", "01:00:10:00", "01:00:10:00")), "250|250..250");
    EXPECT_EQ (times (row ("Fade Out", "01:00:10:00", "01:00:11:00")), "250|250..275");
    EXPECT_EQ (times (row ("Fade In", "01:00:00:00")), "0|0..0");
}

TEST_F (EventRowReaderTimesTest, everyTypeMayStandWithoutATime)
{
    for (const auto* type : { "ADR Cue", "Streamer", "Marker", "Flutter", "Fade In", "Fade Out" })
    {
        EXPECT_EQ (times (row (type, "--:--:--:--", "--:--:--:--", "1")), "-1|-1..-1") << type;
        EXPECT_EQ (times (row (type, "", "")), "-1|-1..-1") << type;
    }
}

TEST_F (EventRowReaderTimesTest, anEndThatEqualsTheStartIsKept)
{
    for (const auto* type : { "ADR Cue", "Marker", "Flutter" })
        EXPECT_EQ (event (row (type, "01:00:10:00", "01:00:10:00"))->getEndFrameIndex(), 250) << type;
}

TEST_F (EventRowReaderTimesTest, whatLiesBeforeThePictureStaysWhereItIs)
{
    EXPECT_EQ (times (row ("ADR Cue", "00:59:50:00", "00:59:52:00")), "-325|-250..-200");
    EXPECT_EQ (times (row ("Streamer", "00:59:50:00", {}, "2")), "-300|-250..-250");
    EXPECT_EQ (times (row ("Marker", "00:59:50:00")), "-250|-250..-200");
    EXPECT_EQ (times (row ("Fade In", "00:59:50:00")), "-250|-250..-250");
}

TEST_F (EventRowReaderTimesTest, aCueAtThePicturesStartHasItsStreamerBeforeIt)
{
    EXPECT_EQ (times (row ("ADR Cue", "01:00:00:00", "01:00:01:00", "2")), "-50|0..25");
    EXPECT_EQ (times (row ("Streamer", "01:00:00:00", {}, "2")), "-50|0..0");
}

TEST_F (EventRowReaderTimesTest, anEndBeforeTheStartGivesWayToTheDefaultLength)
{
    const Lines problem { "0 End TC: \"01:00:09:24\" is before the start of the event" };
    const std::vector<std::pair<std::string, std::string>> expected {
        { "ADR Cue", "175|250..325" }, { "Marker", "250|250..300" },  { "Streamer", "200|250..250" },
        { "Flutter", "250|250..251" }, { "Fade In", "250|250..250" },
    };

    for (const auto& [type, line] : expected)
    {
        const auto result = read ({ row (type, "01:00:10:00", "01:00:09:24") });
        EXPECT_EQ (problems (result), problem) << type;
        EXPECT_EQ (timesOf (*result.events.at (0)), line) << type;
    }
}

TEST_F (EventRowReaderTimesTest, aStartThatCannotBeReadTakesTheTimeAway)
{
    const auto result = read ({ row ("ADR Cue", "01:00:10:25", "01:00:12:00") });
    EXPECT_EQ (
        problems (result),
        Lines {
            "0 Start TC: \"01:00:10:25\" has a frame number that doesn't exist at 25 frames per second" });
    EXPECT_EQ (timesOf (*result.events.at (0)), "-1|-1..-1");
}

TEST_F (EventRowReaderTimesTest, anEndThatCannotBeReadGivesWayToTheDefaultLength)
{
    const auto result = read ({ row ("ADR Cue", "01:00:10:00", "01:00:12:99") });
    EXPECT_EQ (
        problems (result),
        Lines { "0 End TC: \"01:00:12:99\" has a frame number that doesn't exist at 25 frames per second" });
    EXPECT_EQ (timesOf (*result.events.at (0)), "175|250..325");
}

TEST_F (EventRowReaderTimesTest, anEndWithoutAStartCannotBePlaced)
{
    const auto result = read ({ row ("ADR Cue", "", "01:00:12:00") });
    EXPECT_EQ (problems (result),
               Lines { "0 End TC: \"01:00:12:00\" is not used, because the event has no start" });
    EXPECT_EQ (timesOf (*result.events.at (0)), "-1|-1..-1");
}

TEST_F (EventRowReaderTimesTest, theFrameBeforeThePictureIsNeverTakenForATime)
{
    const auto start = read ({ row ("Marker", "00:59:59:24", "01:00:01:00") });
    EXPECT_EQ (timesOf (*start.events.at (0)), "-1|-1..-1");
    EXPECT_EQ (
        problems (start),
        Lines {
            "0 Start TC: \"00:59:59:24\" is the frame before the picture starts, which a cue list can't hold" });

    const auto end = read ({ row ("Marker", "00:59:50:00", "00:59:59:24") });
    EXPECT_EQ (timesOf (*end.events.at (0)), "-250|-250..-200");
    EXPECT_EQ (
        problems (end),
        Lines {
            "0 End TC: \"00:59:59:24\" is the frame before the picture starts, which a cue list can't hold" });
}

TEST_F (EventRowReaderTimesTest, aFlutterThatWouldEndOnTheFrameBeforeThePictureIsReported)
{
    const auto result = read ({ row ("Flutter", "00:59:59:16", {}, "8") });
    EXPECT_EQ (
        problems (result),
        Lines { "0 Streamer Duration: \"8\" would end the flutter on the frame before the picture starts, "
                "which a cue list can't hold" });
    EXPECT_EQ (event (row ("Flutter", "00:59:59:16", {}, "4"))->getEndFrameIndex(), -5);
}

TEST_F (EventRowReaderTimesTest, subtitlesBecomeCuesAtTheirNearestFrames)
{
    timeInfo = timeInfoAt ("23.976", "00:00:00:00");
    EXPECT_EQ (times ({ { "Start TC", "01:00:00,000" }, { "End TC", "01:00:02,000" } }),
               "86242|86314..86362");
}

TEST_F (EventRowReaderTimesTest, dropFrameTimecodesKeepTheirFrames)
{
    timeInfo = timeInfoAt ("29.97df", "01:00:00:00");
    const auto cue = event (row ("Streamer", "01:01:00;02", {}, "1"));
    EXPECT_EQ (timesOf (*cue), "1770|1800..1800");
    EXPECT_EQ (cue->getStartTCString(), juce::String ("01:01:00;02"));
}

TEST_F (EventRowReaderTimesTest, withoutATimeReferenceEventsHaveNoTime)
{
    timeInfo = nullptr;
    for (const auto* type : { "ADR Cue", "Streamer", "Fade In" })
    {
        const auto result = read ({ row (type, "01:00:10:00", "") });
        EXPECT_EQ (
            problems (result),
            Lines {
                "0 Start TC: \"01:00:10:00\" can't be placed, because the project has no time reference" });
        EXPECT_EQ (timesOf (*result.events.at (0)), "-1|-1..-1") << type;
    }
}

} // namespace
} // namespace ZEP::Overmarks::Testing
