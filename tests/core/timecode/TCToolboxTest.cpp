// SPDX-License-Identifier: GPL-3.0-only
#include "core/timecode/TCToolbox.h"

#include "support/TimecodeLiterals.h"

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

using namespace ZEP::Core;

namespace
{

constexpr auto lowest = std::numeric_limits<std::int32_t>::min();
constexpr auto highest = std::numeric_limits<std::int32_t>::max();

_TCDef rate (const char* name) { return TCToolbox::tcDefForRateName (name).value(); }

std::string printed (_TCTime time, bool dropFrame = false)
{
    return TCToolbox::stringFromTCTime (time, dropFrame).toStdString();
}

_TCTime time (std::int32_t hours, std::int32_t minutes, std::int32_t seconds, std::int32_t frames)
{
    return { .hours = hours, .minutes = minutes, .seconds = seconds, .frames = frames };
}

std::shared_ptr<TimeInfo> picture (const char* rateName, _TCTime origin)
{
    return std::make_shared<TimeInfo> (rate (rateName), origin);
}

/* The way a frame index goes through a cue sheet and comes back. */
int thereAndBack (int index, const std::shared_ptr<TimeInfo>& info)
{
    const auto label = TCToolbox::addFramesAndTCTimes (index, info->timeOrigin, info->tcDef);
    return TCToolbox::convertToAbsoluteFrames (TCToolbox::relativeTime (label, info), info->tcDef);
}

} // namespace

// ---- Reading

TEST (Timecode, readsItsFourFields)
{
    const auto read = TCToolbox::tcTimeFromString ("01:02:03:04");

    EXPECT_FALSE (read.invalid);
    EXPECT_EQ (read, time (1, 2, 3, 4));
    EXPECT_EQ (read.subFrames, 0U);
    EXPECT_EQ (read.subFramesPerFrame, 80);
}

TEST (Timecode, readsTheDropFrameForm)
{
    EXPECT_EQ (TCToolbox::tcTimeFromString ("10:59:59;29"), time (10, 59, 59, 29));
}

TEST (Timecode, passesOverWhiteSpaceAroundTheText)
{
    EXPECT_EQ (TCToolbox::tcTimeFromString ("  01:00:00:00   "), time (1, 0, 0, 0));
    EXPECT_EQ (TCToolbox::tcTimeFromString ("\t01:00:00:00\r\n"), time (1, 0, 0, 0));
}

TEST (Timecode, readsWhateverTwoDigitsOfHoursAndFramesSay)
{
    EXPECT_EQ (TCToolbox::tcTimeFromString ("99:59:59:99"), time (99, 59, 59, 99));
}

class NoTimecode : public testing::TestWithParam<const char*>
{
};

TEST_P (NoTimecode, isInvalid)
{
    const auto read = TCToolbox::tcTimeFromString (juce::String::fromUTF8 (GetParam()));

    EXPECT_TRUE (read.invalid);
    EXPECT_EQ (read.hours, 0);
    EXPECT_EQ (read.frames, 0);
}

INSTANTIATE_TEST_SUITE_P (Texts, NoTimecode,
                          testing::Values ("", " ", "--:--:--:--", "--:--:--;--", "01:02:03",
                                           "01:02:03:04:05", "1:02:03:04", "01:02:03:4", "001:02:03:04",
                                           "01:60:00:00", "01:00:60:00", "-1:00:00:00", "+1:00:00:00",
                                           "01: 2:03:04", "01:02:03: 4", "01;02:03:04", "01:02;03:04",
                                           "01.02.03.04", "01:02:03,04", "01:02:03.04", "0a:02:03:04",
                                           "01:02:03:04x", "01:02:03:04 01:02:03:04", "01020304",
                                           "01:02:03:0\xc2\xb2", "\xd9\xa0\xd9\xa1:02:03:04", "Start TC"));

// ---- Writing

TEST (Timecode, isPrintedWithTwoDigitsInEachPlace)
{
    EXPECT_EQ (printed ("01:02:03:04"_tc), "01:02:03:04");
    EXPECT_EQ (printed ("23:59:59:24"_tc), "23:59:59:24");
    EXPECT_EQ (printed ({}), "00:00:00:00");
}

TEST (Timecode, isPrintedWithASemicolonBeforeTheFramesUnderDropFrame)
{
    EXPECT_EQ (printed ("01:02:03:04"_tc, true), "01:02:03;04");
}

TEST (Timecode, ofTheNextDayIsPrintedUnfolded)
{
    EXPECT_EQ (printed (time (25, 0, 0, 0)), "25:00:00:00");
    EXPECT_EQ (printed (time (100, 0, 0, 0)), "100:00:00:00");
}

TEST (Timecode, beforeZeroIsPrintedAsTheClockOfTheDayBefore)
{
    EXPECT_EQ (printed (TCToolbox::addFramesAndTCTimes (-1, {}, rate ("25"))), "23:59:59:24");
    EXPECT_EQ (printed (TCToolbox::addFramesAndTCTimes (-25, {}, rate ("25"))), "23:59:59:00");
    EXPECT_EQ (printed (TCToolbox::addFramesAndTCTimes (-1, {}, rate ("29.97df")), true), "23:59:59;29");
    EXPECT_EQ (printed (time (-24, 0, 0, 0)), "00:00:00:00");
    EXPECT_EQ (printed (time (-25, 0, 0, 0)), "23:00:00:00");
}

TEST (Timecode, withASignInAnyPlaceIsPrintedInFourPlaces)
{
    EXPECT_EQ (printed (time (0, -1, 0, 0)), "23:59:00:00");
    EXPECT_EQ (printed (time (0, 0, -1, 5)), "23:59:59:05");
    EXPECT_EQ (printed (time (1, 0, 0, -3)), "01:00:00:00");
}

TEST (Timecode, ofAnyNumbersFitsIntoFortyEightCharacters)
{
    for (const auto value : { lowest, -1, 0, 7, 99, 100, highest })
        for (const auto frames : { lowest, -1, 0, 99, highest })
        {
            std::array<char, 49> text {};
            text.fill ('#');
            const auto length =
                TCToolbox::writeTCTime (text.data(), time (value, value, value, frames), false);

            EXPECT_LT (length, 48U);
            EXPECT_EQ (text[length], 0);
            EXPECT_EQ (text[48], '#');
            EXPECT_EQ (std::string (text.data()), printed (time (value, value, value, frames)));
        }
}

TEST (Timecode, ofTheLargestNumbersIsPrintedWhole)
{
    EXPECT_EQ (printed (time (highest, highest, highest, highest)),
               "2147483647:2147483647:2147483647:2147483647");
}

// ---- Counting

TEST (FrameCount, ofATimecodeMultipliesByTheWholeFramesOfASecond)
{
    EXPECT_EQ (TCToolbox::convertToAbsoluteFrames ("01:00:00:00"_tc, rate ("25")), 90000);
    EXPECT_EQ (TCToolbox::convertToAbsoluteFrames ("01:00:00:00"_tc, rate ("23.976")), 86400);
    EXPECT_EQ (TCToolbox::convertToAbsoluteFrames ("01:00:00:00"_tc, rate ("29.97")), 108000);
    EXPECT_EQ (TCToolbox::convertToAbsoluteFrames ("00:00:01:05"_tc, rate ("24")), 29);
}

TEST (FrameCount, ofASecondOfNoFramesIsTakenAsTwentyFive)
{
    _TCDef def;
    def.framesPerSecond = 0;

    EXPECT_EQ (TCToolbox::convertToAbsoluteFrames ("00:00:02:00"_tc, def), 50);
    EXPECT_EQ (printed (TCToolbox::addFramesAndTCTimes (50, {}, def)), "00:00:02:00");
}

TEST (FrameCount, stopsAtTheEndsOfItsType)
{
    EXPECT_EQ (TCToolbox::convertToAbsoluteFrames (time (highest, 0, 0, 0), rate ("25")), highest);
    EXPECT_EQ (TCToolbox::convertToAbsoluteFrames (time (lowest, lowest, lowest, lowest), rate ("29.97df")),
               lowest);
}

TEST (FrameCount, adds)
{
    EXPECT_EQ (printed (TCToolbox::addFramesAndTCTimes (1, "00:59:59:24"_tc, rate ("25"))), "01:00:00:00");
    EXPECT_EQ (printed (TCToolbox::addFramesAndTCTimes (-1, "01:00:00:00"_tc, rate ("24"))), "00:59:59:23");
    EXPECT_EQ (printed (TCToolbox::addFramesAndTCTimes (0, "10:00:00:00"_tc, rate ("60"))), "10:00:00:00");
}

TEST (FrameCount, beforeZeroCarriesTheSignInTheHoursAlone)
{
    EXPECT_EQ (TCToolbox::addFramesAndTCTimes (-1, {}, rate ("25")), time (-1, 59, 59, 24));
    EXPECT_EQ (TCToolbox::addFramesAndTCTimes (-1, {}, rate ("29.97df")), time (-1, 59, 59, 29));
    EXPECT_EQ (TCToolbox::addFramesAndTCTimes (-90000, {}, rate ("25")), time (-1, 0, 0, 0));
    EXPECT_EQ (TCToolbox::addFramesAndTCTimes (-90001, {}, rate ("25")), time (-2, 59, 59, 24));
}

TEST (FrameCount, isNotWrappedAtMidnight)
{
    EXPECT_EQ (TCToolbox::addFramesAndTCTimes (1, "23:59:59:24"_tc, rate ("25")), time (24, 0, 0, 0));
}

TEST (FrameCount, givesEveryTimecodeNoSubframes)
{
    auto start = "01:00:00:00"_tc;
    start.subFrames = 40;

    EXPECT_EQ (TCToolbox::addFramesAndTCTimes (1, start, rate ("25")), "01:00:00:01"_tc);
}

TEST (FrameCount, fromSomethingThatIsNoTimecodeIsNone)
{
    const auto none = TCToolbox::tcTimeFromString ("--:--:--:--");

    EXPECT_TRUE (TCToolbox::addFramesAndTCTimes (10, none, rate ("25")).invalid);
    EXPECT_TRUE (TCToolbox::subtractTCTimes (none, "01:00:00:00"_tc, rate ("25"), nullptr).invalid);
    EXPECT_TRUE (TCToolbox::subtractTCTimes ("01:00:00:00"_tc, none, rate ("25"), nullptr).invalid);
}

// ---- Drop-frame

TEST (DropFrame, leavesOutTwoLabelsAtTheHeadOfAMinute)
{
    EXPECT_EQ (printed (TCToolbox::addFramesAndTCTimes (1, "00:00:59:29"_tc, rate ("29.97df")), true),
               "00:01:00;02");
    EXPECT_EQ (printed (TCToolbox::addFramesAndTCTimes (-1, "00:01:00:02"_tc, rate ("29.97df")), true),
               "00:00:59;29");
}

TEST (DropFrame, leavesOutFourLabelsAtFiftyNine)
{
    EXPECT_EQ (printed (TCToolbox::addFramesAndTCTimes (1, "00:00:59:59"_tc, rate ("59.94df")), true),
               "00:01:00;04");
}

TEST (DropFrame, leavesNothingOutInEveryTenthMinute)
{
    EXPECT_EQ (printed (TCToolbox::addFramesAndTCTimes (1, "00:09:59:29"_tc, rate ("29.97df")), true),
               "00:10:00;00");
    EXPECT_EQ (printed (TCToolbox::addFramesAndTCTimes (1, "00:59:59:59"_tc, rate ("59.94df")), true),
               "01:00:00;00");
}

TEST (DropFrame, hourIsAHundredAndEightFramesShort)
{
    EXPECT_EQ (TCToolbox::convertToAbsoluteFrames ("01:00:00:00"_tc, rate ("29.97df")), 107892);
    EXPECT_EQ (TCToolbox::convertToAbsoluteFrames ("01:00:00:00"_tc, rate ("59.94df")), 215784);
    EXPECT_EQ (TCToolbox::convertToAbsoluteFrames ("00:10:00:00"_tc, rate ("29.97df")), 17982);
    EXPECT_EQ (TCToolbox::convertToAbsoluteFrames ("00:01:00:02"_tc, rate ("29.97df")), 1800);
}

TEST (DropFrame, flagChangesTheTextAloneAtOtherRates)
{
    for (const auto* name : { "23.976", "24", "25", "48", "50" })
    {
        auto def = rate (name);
        const auto plain = TCToolbox::convertToAbsoluteFrames ("01:02:03:04"_tc, def);
        def.dropFrame = true;

        EXPECT_EQ (TCToolbox::convertToAbsoluteFrames ("01:02:03:04"_tc, def), plain) << name;
    }
}

TEST (DropFrame, countsALeftOutLabelAsThePlaceItWouldHaveHad)
{
    EXPECT_EQ (TCToolbox::convertToAbsoluteFrames ("00:01:00:00"_tc, rate ("29.97df")), 1798);
    EXPECT_EQ (TCToolbox::convertToAbsoluteFrames ("00:01:00:01"_tc, rate ("29.97df")), 1799);
}

TEST (DropFrame, dayNamesEveryFrameOnceAndInOrder)
{
    const auto def = rate ("29.97df");
    constexpr int framesOfDay = 24 * 107892;
    std::int64_t before = -1;

    for (int frame = 0; frame < framesOfDay; ++frame)
    {
        const auto label = TCToolbox::addFramesAndTCTimes (frame, {}, def);
        const auto number =
            ((label.hours * 100LL + label.minutes) * 100 + label.seconds) * 100 + label.frames;

        ASSERT_TRUE (TCToolbox::existsUnder (label, def)) << frame;
        ASSERT_GT (number, before) << frame;
        before = number;
    }

    EXPECT_EQ (printed (TCToolbox::addFramesAndTCTimes (framesOfDay - 1, {}, def), true), "23:59:59;29");
}

// ---- Spans

TEST (Span, runsFromTheFirstTimeToTheSecond)
{
    bool backwards = true;
    const auto span =
        TCToolbox::subtractTCTimes ("01:00:00:00"_tc, "01:00:02:10"_tc, rate ("25"), &backwards);

    EXPECT_EQ (printed (span), "00:00:02:10");
    EXPECT_FALSE (backwards);
}

TEST (Span, borrowsTheFramesOfItsRate)
{
    EXPECT_EQ (
        printed (TCToolbox::subtractTCTimes ("00:00:00:20"_tc, "00:00:01:05"_tc, rate ("24"), nullptr)),
        "00:00:00:09");
}

TEST (Span, backwardsIsToldAndNegative)
{
    bool backwards = false;
    const auto span =
        TCToolbox::subtractTCTimes ("01:00:00:01"_tc, "01:00:00:00"_tc, rate ("25"), &backwards);

    EXPECT_TRUE (backwards);
    EXPECT_EQ (TCToolbox::convertToAbsoluteFrames (span, rate ("25")), -1);
}

TEST (Span, acrossALeftOutLabelCountsFrames)
{
    const auto def = rate ("29.97df");
    const auto span = TCToolbox::subtractTCTimes ("00:00:59:29"_tc, "00:01:00:02"_tc, def, nullptr);

    EXPECT_EQ (TCToolbox::convertToAbsoluteFrames (span, def), 1);
}

// ---- Frame index and back

class EveryRate : public testing::TestWithParam<std::string>
{
};

TEST_P (EveryRate, givesTheFrameIndexBack)
{
    std::mt19937 random (20);
    std::uniform_int_distribution<int> anyIndex (lowest, highest);
    std::uniform_int_distribution<int> nearIndex (-3000000, 3000000);

    for (const auto& origin :
         { time (0, 0, 0, 0), "01:00:00:00"_tc, "09:59:50:00"_tc, "00:59:59:23"_tc, "00:01:00:00"_tc,
           "23:59:59:10"_tc, time (-1, 59, 59, 4), time (-30, 3, 0, 0), time (1000000, 59, 59, 4) })
    {
        const auto info = picture (GetParam().c_str(), origin);

        for (const auto index : { lowest, lowest + 1, -1, 0, 1, highest - 1, highest })
            ASSERT_EQ (thereAndBack (index, info), index) << printed (origin);

        for (int i = 0; i < 20000; ++i)
        {
            const auto index = i % 2 == 0 ? anyIndex (random) : nearIndex (random);
            ASSERT_EQ (thereAndBack (index, info), index) << printed (origin);
            ASSERT_EQ (TCToolbox::frameIndexForTCTime (TCToolbox::tcTimeForFrameIndex (index, *info), info),
                       index);
        }
    }
}

TEST_P (EveryRate, labelsFramesWithExistingTimecodes)
{
    const auto info = picture (GetParam().c_str(), "01:00:00:00"_tc);

    for (int index = -200000; index < 200000; ++index)
        ASSERT_TRUE (TCToolbox::existsUnder (TCToolbox::tcTimeForFrameIndex (index, *info), info->tcDef))
            << index;
}

TEST_P (EveryRate, readsBackWhatItPrints)
{
    const auto info = picture (GetParam().c_str(), "01:00:00:00"_tc);
    const auto drop = info->tcDef.dropFrame;

    for (int index = 0; index < 200000; index += 7)
    {
        const auto label = TCToolbox::tcTimeForFrameIndex (index, *info);
        ASSERT_EQ (TCToolbox::tcTimeFromString (TCToolbox::stringFromTCTime (label, drop)), label) << index;
    }
}

TEST_P (EveryRate, isFoundAgainByItsName)
{
    EXPECT_EQ (TCToolbox::rateNameForTCDef (rate (GetParam().c_str())).toStdString(), GetParam());
}

INSTANTIATE_TEST_SUITE_P (Rates, EveryRate,
                          testing::Values ("23.976", "24", "25", "29.97", "29.97df", "30", "30df", "48", "50",
                                           "59.94", "59.94df", "60"));

TEST (FrameIndex, comesBackForEveryFrameOfADropFrameDay)
{
    const auto info = picture ("29.97df", "00:59:58:15"_tc);

    for (int index = -107892; index < 24 * 107892; ++index)
        ASSERT_EQ (thereAndBack (index, info), index);
}

TEST (FrameIndex, ofTheOriginIsZero)
{
    EXPECT_EQ (TCToolbox::frameIndexForTCTime ("01:00:00:00"_tc, picture ("25", "01:00:00:00"_tc)), 0);
    EXPECT_EQ (TCToolbox::frameIndexForTCTime ("00:59:59:24"_tc, picture ("25", "01:00:00:00"_tc)), -1);
    EXPECT_EQ (TCToolbox::frameIndexForTCTime ("01:00:10:00"_tc, picture ("24", "01:00:00:00"_tc)), 240);
}

TEST (FrameIndex, isTheCountOfTheRelativeTimeForAnyNumbers)
{
    std::mt19937 random (7);
    std::uniform_int_distribution<std::int32_t> any (lowest, highest);
    const auto anyTime = [&] { return time (any (random), any (random), any (random), any (random)); };

    for (int i = 0; i < 20000; ++i)
    {
        const auto info = picture (i % 2 == 0 ? "25" : "59.94df", anyTime());
        info->tcDef.framesPerSecond = static_cast<std::uint8_t> (i % 256);
        const auto label = anyTime();

        ASSERT_EQ (TCToolbox::frameIndexForTCTime (label, info),
                   TCToolbox::convertToAbsoluteFrames (TCToolbox::relativeTime (label, info), info->tcDef));
    }
}

TEST (FrameIndex, withoutATimeReferenceCountsFromZeroAtTwentyFive)
{
    EXPECT_EQ (TCToolbox::frameIndexForTCTime ("00:00:02:00"_tc, nullptr), 50);
    EXPECT_EQ (TCToolbox::relativeTime ("00:00:02:00"_tc, nullptr), "00:00:02:00"_tc);
}

TEST (FrameIndex, ofHostileNumbersStopsAtTheEnds)
{
    for (const auto frames : { std::numeric_limits<long>::min(), std::numeric_limits<long>::max() })
        for (const auto hours : { lowest, highest })
            for (const auto* name : { "25", "29.97df" })
            {
                const auto result =
                    TCToolbox::addFramesAndTCTimes (frames, time (hours, hours, hours, hours), rate (name));
                EXPECT_EQ (result.hours, frames < 0 ? lowest : highest);
            }
}

// ---- Existing labels

TEST (Label, existsWhenItsFramesFitIntoTheSecond)
{
    EXPECT_TRUE (TCToolbox::existsUnder ("01:00:00:24"_tc, rate ("25")));
    EXPECT_FALSE (TCToolbox::existsUnder ("01:00:00:25"_tc, rate ("25")));
    EXPECT_TRUE (TCToolbox::existsUnder ("01:00:00:29"_tc, rate ("29.97")));
}

TEST (Label, thatDropFrameLeavesOutDoesNotExist)
{
    EXPECT_FALSE (TCToolbox::existsUnder ("01:01:00:00"_tc, rate ("29.97df")));
    EXPECT_FALSE (TCToolbox::existsUnder ("01:01:00:01"_tc, rate ("29.97df")));
    EXPECT_TRUE (TCToolbox::existsUnder ("01:01:00:02"_tc, rate ("29.97df")));
    EXPECT_TRUE (TCToolbox::existsUnder ("01:10:00:00"_tc, rate ("29.97df")));
    EXPECT_TRUE (TCToolbox::existsUnder ("01:01:01:00"_tc, rate ("29.97df")));
    EXPECT_TRUE (TCToolbox::existsUnder ("01:01:00:00"_tc, rate ("29.97")));
    EXPECT_FALSE (TCToolbox::existsUnder ("01:01:00:03"_tc, rate ("59.94df")));
    EXPECT_TRUE (TCToolbox::existsUnder ("01:01:00:04"_tc, rate ("59.94df")));
}

TEST (Label, withAFieldOutOfRangeDoesNotExist)
{
    EXPECT_FALSE (TCToolbox::existsUnder (time (0, 60, 0, 0), rate ("25")));
    EXPECT_FALSE (TCToolbox::existsUnder (time (0, 0, 60, 0), rate ("25")));
    EXPECT_FALSE (TCToolbox::existsUnder (time (0, 0, 0, -1), rate ("25")));
    EXPECT_FALSE (TCToolbox::existsUnder (time (0, -1, 0, 0), rate ("25")));
    EXPECT_FALSE (TCToolbox::existsUnder (TCToolbox::tcTimeFromString ("--:--:--:--"), rate ("25")));
}
