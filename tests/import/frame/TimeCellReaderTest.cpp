// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/TimeCellReader.h"

#include "core/timecode/TCToolbox.h"
#include "support/MakeEvents.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace ZEP::Overmarks::Testing
{
namespace
{

TimeCell readAt (const std::string& rate, const std::string& origin, const std::string& cell)
{
    return TimeCellReader (timeInfoAt (rate, origin))
        .read (juce::String (juce::CharPointer_UTF8 (cell.c_str())));
}

struct Frame
{
    std::string rate, origin, cell;
    int index;
};

void expectFrames (const std::vector<Frame>& frames)
{
    for (const auto& [rate, origin, cell, index] : frames)
    {
        const auto time = readAt (rate, origin, cell);
        EXPECT_EQ (time.frameIndex, index) << cell << " at " << rate << " from " << origin;
        EXPECT_EQ (time.problem, juce::String()) << cell;
    }
}

void expectProblem (const std::string& rate, const std::string& cell, const std::string& problem)
{
    const auto time = readAt (rate, "01:00:00:00", cell);
    EXPECT_EQ (time.frameIndex, std::nullopt) << cell;
    EXPECT_EQ (time.problem.toStdString(), problem) << cell;
}

TEST (TimeCellReader, timecodesCountFromThePicturesFirstFrame)
{
    expectFrames ({ { "25", "01:00:00:00", "01:00:00:00", 0 },
                    { "25", "01:00:00:00", "01:00:02:03", 53 },
                    { "25", "01:00:00:00", "01:00:02;03", 53 },
                    { "25", "01:00:00:00", "  01:00:02:03\t", 53 },
                    { "25", "01:00:00:00",
                      "\xC2\xA0"
                      "01:00:02:03\xC2\xA0",
                      53 },
                    { "25", "01:00:00:00", "00:59:58:00", -50 },
                    { "25", "10:00:00:10", "10:00:01:00", 15 },
                    { "29.97df", "00:00:00:00", "00:01:00;02", 1800 },
                    { "29.97df", "00:00:00:00", "00:10:00;00", 17982 } });
}

TEST (TimeCellReader, dashesAndEmptyCellsAreNoTime)
{
    for (const auto* cell : { "", "  ", "--:--:--:--", "--:--:--;--", " --:--:--:-- ", "-", "--:--:--,---" })
    {
        const auto time = readAt ("25", "01:00:00:00", cell);
        EXPECT_EQ (time.frameIndex, std::nullopt) << cell;
        EXPECT_EQ (time.problem, juce::String()) << cell;
    }
}

TEST (TimeCellReader, subtitleTimesAreRoundedToTheNearestFrame)
{
    expectFrames ({ { "25", "00:00:00:00", "00:00:01,000", 25 },
                    { "25", "00:00:00:00", "00:00:01.000", 25 },
                    { "25", "00:00:00:00", "00:00:01,019", 25 },
                    { "25", "00:00:00:00", "00:00:01,020", 26 },
                    { "25", "00:00:00:00", "00:00:01,021", 26 },
                    { "25", "00:00:00:00", "00:00:01,999", 50 },
                    { "25", "00:00:10:00", "00:00:09,500", -12 },
                    { "24", "01:00:00:00", "01:00:00,500", 12 },
                    { "50", "00:00:00:00", "10:00:00,010", 1800001 },
                    { "25", "01:00:00:12", "01:00:01,000", 13 } });
}

TEST (TimeCellReader, subtitleTimesAreRealTime)
{
    // An hour of a clock has 86 313.7 frames at 23.976, and 107 892.1 at 29.97.
    expectFrames ({ { "23.976", "00:00:00:00", "01:00:00,000", 86314 },
                    { "23.976", "01:00:00:00", "02:00:00,000", 86314 },
                    { "23.976", "01:00:00:00", "01:00:00,000", 0 },
                    { "29.97", "00:00:00:00", "01:00:00,000", 107892 },
                    { "29.97df", "00:00:00:00", "01:00:00,000", 107892 },
                    { "24", "00:00:00:00", "01:00:00,000", 86400 } });
}

TEST (TimeCellReader, subtitleTimesOnWholeRatesReadLikeTimecodes)
{
    for (const auto* rate : { "24", "25", "30", "48", "50", "60" })
        for (const auto* second : { "00:00:07", "01:02:03", "23:59:59" })
            EXPECT_EQ (readAt (rate, "00:00:30:00", second + std::string (",000")).frameIndex,
                       readAt (rate, "00:00:30:00", second + std::string (":00")).frameIndex)
                << second << " at " << rate;
}

TEST (TimeCellReader, aProblemHasAKind)
{
    const auto kindOf = [] (const std::string& rate, const std::string& cell)
    { return readAt (rate, "01:00:00:00", cell).kind; };

    EXPECT_EQ (kindOf ("25", "soon"), EventRowProblemKind::noTimecode);
    EXPECT_EQ (kindOf ("25", "01:00:00:25"), EventRowProblemKind::noTimecode);
    EXPECT_EQ (kindOf ("25", "99:59:59,980"), EventRowProblemKind::noTimecode);
    EXPECT_EQ (kindOf ("29.97df", "01:01:00;00"), EventRowProblemKind::droppedTimecode);
    EXPECT_EQ (kindOf ("29.97df", "01:01:00;30"), EventRowProblemKind::noTimecode);
    EXPECT_EQ (kindOf ("25", "00:59:59:24"), EventRowProblemKind::beforePicture);
    EXPECT_EQ (TimeCellReader (nullptr).read ("01:00:00:00").kind, EventRowProblemKind::noTimecode);
}

TEST (TimeCellReader, coordinatesBehindASubtitleTimeArePassedOver)
{
    expectFrames ({ { "25", "00:00:00:00", "00:00:02,000  X1:40 X2:600 Y1:20 Y2:50", 50 } });
    expectProblem ("25", "00:00:02,000 and more",
                   "\"00:00:02,000 and more\" is not a timecode such as 01:02:03:04");
}

TEST (TimeCellReader, aClockAheadOfTheDropFrameCountStaysWithinTheDay)
{
    const auto info = timeInfoAt ("29.97df", "10:00:00:00");
    const TimeCellReader reader (info);
    const auto time = reader.read ("00:00:00,000");

    ASSERT_TRUE (time.frameIndex.has_value());
    EXPECT_EQ (reader.timecode (*time.frameIndex), juce::String ("00:00:00;00"));
}

TEST (TimeCellReader, aSubtitleTimeThatRoundsPastTheLastTimecodeIsRefused)
{
    expectFrames ({ { "25", "99:00:00:00", "99:59:59,979", 89999 } });
    expectProblem ("25", "99:59:59,980",
                   "\"99:59:59,980\" is nearest to a frame behind the last timecode there is");
}

TEST (TimeCellReader, aFrameNumberThatTheRateDoesNotHaveIsRefused)
{
    expectProblem ("25", "01:00:00:27",
                   "\"01:00:00:27\" has a frame number that doesn't exist at 25 frames per second");
    expectProblem ("25", "01:00:00:25",
                   "\"01:00:00:25\" has a frame number that doesn't exist at 25 frames per second");
    expectProblem ("23.976", "01:00:00:24",
                   "\"01:00:00:24\" has a frame number that doesn't exist at 23.976 frames per second");
    expectProblem ("29.97df", "01:00:00;30",
                   "\"01:00:00;30\" has a frame number that doesn't exist at 29.97 frames per second");
}

TEST (TimeCellReader, aLabelThatDropFrameLeavesOutIsRefused)
{
    expectProblem ("29.97df", "01:01:00;00",
                   "\"01:01:00;00\" is a timecode that drop-frame counting leaves out");
    expectProblem ("59.94df", "01:01:00:03",
                   "\"01:01:00:03\" is a timecode that drop-frame counting leaves out");
    EXPECT_EQ (readAt ("29.97", "01:00:00:00", "01:01:00;00").frameIndex, 1800);
}

TEST (TimeCellReader, textThatIsNoTimecodeIsRefused)
{
    for (const std::string cell :
         { "abc", "1:00:00:00", "01:00:00", "01:60:00:00", "01:00:60:00", "01:00:60,000", "01:00:00,00",
           "01:00:00,0000", "+1:00:00:00", ":::", "90000", "01 00 00 00" })
        expectProblem ("25", cell, "\"" + cell + "\" is not a timecode such as 01:02:03:04");
}

TEST (TimeCellReader, aSubtitleTimeHasDigitsInEveryPlace)
{
    for (const std::size_t place : { 0u, 1u, 3u, 4u, 6u, 7u, 9u, 10u, 11u })
        for (const char byte : { 'a', '/', ':' })
        {
            std::string cell = "01:02:03,040";
            cell[place] = byte;
            expectProblem ("25", cell, "\"" + cell + "\" is not a timecode such as 01:02:03:04");
        }
}

TEST (TimeCellReader, aTimeOfWholeSecondsIsTheFirstFrameOfItsSecondWhereItIsTaken)
{
    const TimeCellReader reader (timeInfoAt ("25", "01:00:00:00"), true);
    EXPECT_EQ (reader.read (" 01:00:02 ").frameIndex, 50);
    EXPECT_EQ (reader.read ("01:00:02:03").frameIndex, 53);
    EXPECT_EQ (reader.read ("01:00:02.500").frameIndex, 63);

    for (const juce::String cell : { "1:00:02", "-01:00:02", "01:60:00", "01:00:60", "01:00:0x", "01.00.02",
                                     "2024-03-31 18:00:00", "01:00" })
        EXPECT_EQ (reader.read (cell).problem, "\"" + cell + "\" is not a timecode such as 01:02:03:04");

    EXPECT_EQ (TimeCellReader (timeInfoAt ("29.97df", "01:00:00:00"), true).read ("01:01:00").problem,
               "\"01:01:00\" is a timecode that drop-frame counting leaves out");
}

TEST (TimeCellReader, theFrameBeforeThePictureCannotBeHeld)
{
    expectProblem ("25", "00:59:59:24",
                   "\"00:59:59:24\" is the frame before the picture starts, which a cue list can't hold");
    expectProblem ("25", "00:59:59,960",
                   "\"00:59:59,960\" is the frame before the picture starts, which a cue list can't hold");
}

TEST (TimeCellReader, withoutATimeReferenceNoTimeCanBePlaced)
{
    const TimeCellReader reader (nullptr);
    EXPECT_EQ (reader.read ("01:00:00:00").problem,
               juce::String ("\"01:00:00:00\" can't be placed, because the project has no time reference"));
    EXPECT_EQ (reader.read ("--:--:--:--").problem, juce::String());
}

TEST (TimeCellReader, aDamagedTimeReferenceGivesNoOverflow)
{
    Core::_TCDef def;
    def.framesPerSecond = 0;
    def.frameRateNumerator = 0;
    def.frameRateDenominator = 0;
    auto info = std::make_shared<Core::TimeInfo> (def);
    EXPECT_EQ (TimeCellReader (info).read ("00:00:02,000").frameIndex, 50);
    EXPECT_EQ (
        TimeCellReader (info).read ("00:00:02:25").problem,
        juce::String ("\"00:00:02:25\" has a frame number that doesn't exist at 25 frames per second"));

    info->tcDef.frameRateNumerator = std::numeric_limits<std::uint32_t>::max();
    info->tcDef.frameRateDenominator = 1;
    info->timeOrigin.hours = std::numeric_limits<std::int32_t>::min();
    EXPECT_EQ (TimeCellReader (info).read ("00:00:02,000").frameIndex, std::numeric_limits<int>::max());
}

} // namespace
} // namespace ZEP::Overmarks::Testing
