// SPDX-License-Identifier: GPL-3.0-only
#include "core/timecode/TCToolbox.h"

#include <cmath>
#include <gtest/gtest.h>
#include <ostream>
#include <string>

using namespace ZEP::Core;

namespace
{

_TCDef rate (const char* name) { return TCToolbox::tcDefForRateName (name).value(); }

struct RateCode
{
    float fps;
    bool dropFrame;
    int code;
};

void PrintTo (const RateCode& rateCode, std::ostream* out)
{
    *out << rateCode.fps << (rateCode.dropFrame ? " drop" : "");
}

} // namespace

class RateCodes : public testing::TestWithParam<RateCode>
{
};

TEST_P (RateCodes, areThoseOfTheExchangeFormats)
{
    EXPECT_EQ (int { TCToolbox::timecodeFramerateFromFPS (GetParam().fps, GetParam().dropFrame) },
               GetParam().code);
}

INSTANTIATE_TEST_SUITE_P (
    Rates, RateCodes,
    testing::Values (RateCode { 24000.0F / 1001.0F, false, 0 }, RateCode { 23.98F, false, 0 },
                     RateCode { 23.976F, true, 0 }, RateCode { 24.0F, false, 1 },
                     RateCode { 25.0F, false, 2 }, RateCode { 25.0F, true, 2 },
                     RateCode { 30000.0F / 1001.0F, false, 3 }, RateCode { 30000.0F / 1001.0F, true, 4 },
                     RateCode { 30.0F, false, 5 }, RateCode { 30.0F, true, 6 }, RateCode { 48.0F, false, 7 },
                     RateCode { 50.0F, false, 8 }, RateCode { 60000.0F / 1001.0F, false, 9 },
                     RateCode { 60000.0F / 1001.0F, true, 10 }, RateCode { 60.0F, false, 11 },
                     RateCode { 60.0F, true, 11 }, RateCode { 12.5F, false, 12 },
                     RateCode { 0.0F, false, 12 }, RateCode { 120.0F, false, 12 },
                     RateCode { -25.0F, false, 12 }, RateCode { NAN, false, 12 },
                     RateCode { INFINITY, false, 12 }));

TEST (RateName, tellsTheFractionAndTheWholeFrames)
{
    const auto def = rate ("23.976");

    EXPECT_EQ (def.frameRateNumerator, 24000U);
    EXPECT_EQ (def.frameRateDenominator, 1001U);
    EXPECT_EQ (def.framesPerSecond, 24);
    EXPECT_FALSE (def.dropFrame);
    EXPECT_FALSE (def.undefined);
    EXPECT_TRUE (rate ("29.97df").dropFrame);
    EXPECT_EQ (rate ("59.94").framesPerSecond, 60);
}

TEST (RateName, isReadWithoutCaseAndSurroundingBlanks)
{
    EXPECT_EQ (TCToolbox::tcDefForRateName (" 29.97DF "), rate ("29.97df"));
}

TEST (RateName, unknownGivesNothing)
{
    for (const auto* name : { "", "df", "29", "29.97 df", "25df", "twenty-five", "1e9" })
        EXPECT_EQ (TCToolbox::tcDefForRateName (name), std::nullopt) << name;
}

TEST (RateName, listHoldsEveryRateFromTheSlowestOn)
{
    std::string all;

    for (const auto& name : TCToolbox::rateNames())
        all += name.toStdString() + " ";

    EXPECT_EQ (all, "23.976 24 25 29.97 29.97df 30 30df 48 50 59.94 59.94df 60 ");
}

TEST (RateName, ofAnUndefinedOrUnknownDefinitionIsEmpty)
{
    auto def = rate ("25");
    def.undefined = true;
    EXPECT_TRUE (TCToolbox::rateNameForTCDef (def).isEmpty());

    EXPECT_TRUE (TCToolbox::rateNameForTCDef ({ false, 0, 0, 25, false }).isEmpty());
    EXPECT_TRUE (TCToolbox::rateNameForTCDef ({ false, 12, 1, 12, false }).isEmpty());
    EXPECT_TRUE (TCToolbox::rateNameForTCDef ({ false, 25, 1, 50, false }).isEmpty());
}

TEST (RateName, ignoresADropFrameFlagThatChangesTheTextAlone)
{
    auto def = rate ("25");
    def.dropFrame = true;

    EXPECT_EQ (TCToolbox::rateNameForTCDef (def), "25");
}

TEST (RateName, isFoundForAFractionInOtherTerms)
{
    EXPECT_EQ (TCToolbox::rateNameForTCDef ({ false, 25000, 1000, 25, false }), "25");
}
