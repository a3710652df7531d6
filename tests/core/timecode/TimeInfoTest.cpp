// SPDX-License-Identifier: GPL-3.0-only
#include "core/timecode/TimeInfo.h"

#include "support/TimecodeLiterals.h"

#include <gtest/gtest.h>

using namespace ZEP::Core;

TEST (TimeReference, isUndefinedUntilSomebodySetsARate)
{
    const TimeInfo info;

    EXPECT_TRUE (info.tcDef.undefined);
    EXPECT_EQ (info.tcDef.framesPerSecond, 25);
    EXPECT_EQ (info.tcDef.frameRateNumerator, 25U);
    EXPECT_EQ (info.tcDef.frameRateDenominator, 1U);
    EXPECT_FALSE (info.tcDef.dropFrame);
    EXPECT_EQ (info.timeOrigin, _TCTime {});
}

TEST (TimeReference, startsActionAtItsOriginUnlessToldOtherwise)
{
    TimeInfo info (TCToolbox::tcDefForRateName ("24").value(), "01:00:00:00"_tc);
    EXPECT_EQ (info.getFirstFrameOfAction(), "01:00:00:00"_tc);

    info.timeOrigin = "02:00:00:00"_tc;
    EXPECT_EQ (info.getFirstFrameOfAction(), "02:00:00:00"_tc);

    info.setFirstFrameOfAction ("02:00:08:00"_tc);
    EXPECT_EQ (info.getFirstFrameOfAction(), "02:00:08:00"_tc);
    EXPECT_EQ (info.timeOrigin, "02:00:00:00"_tc);
}

TEST (TimeReference, timecodeBuiltByHandStandsOnZeroOfEightySubframes)
{
    const _TCTime time;

    EXPECT_EQ (time.subFrames, 0U);
    EXPECT_EQ (time.subFramesPerFrame, 80);
    EXPECT_FALSE (time.invalid);
}

TEST (TimecodeLiteral, thatIsNoTimecodeThrows)
{
    EXPECT_THROW (static_cast<void> ("01:00:00"_tc), std::invalid_argument);
}
