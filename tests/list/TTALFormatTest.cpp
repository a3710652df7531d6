// SPDX-License-Identifier: GPL-3.0-only
#include "list/TTALFormat.h"

#include <gtest/gtest.h>

#include <string>

using namespace ZEP::Overmarks;
using namespace ZEP::Core;

namespace
{

struct Rate
{
    const char* name;
    int whenRead;
    int alsoWrittenFor;
};

void PrintTo (const Rate& rate, std::ostream* out) { *out << rate.name; }

class TTALRates : public testing::TestWithParam<Rate>
{
};

} // namespace

TEST_P (TTALRates, areReadAndWrittenByName)
{
    const auto& rate = GetParam();
    EXPECT_EQ (TTAL::rateNamed (rate.name), static_cast<FrameRateCode> (rate.whenRead));
    EXPECT_EQ (TTAL::rateName (static_cast<FrameRateCode> (rate.whenRead)), rate.name);
    EXPECT_EQ (TTAL::rateName (static_cast<FrameRateCode> (rate.alsoWrittenFor)), rate.name);
}

INSTANTIATE_TEST_SUITE_P (AllRates, TTALRates,
                          testing::Values (Rate { "FPS_2397", 0, 0 }, Rate { "FPS_2400", 1, 1 },
                                           Rate { "FPS_2500", 2, 2 }, Rate { "FPS_2997", 4, 3 },
                                           Rate { "FPS_3000", 5, 5 }, Rate { "FPS_5000", 8, 8 },
                                           Rate { "FPS_5994", 10, 9 }, Rate { "FPS_6000", 11, 11 }),
                          [] (const auto& tested) { return std::string (tested.param.name); });

TEST (TTALFormat, ratesThatItDoesNotHaveAreUnsupported)
{
    for (const int code : { 6, 7, 12, 13, 99, -1 })
        EXPECT_EQ (TTAL::rateName (static_cast<FrameRateCode> (code)), "unsupported") << code;
}

TEST (TTALFormat, otherWordsAreNoRate)
{
    for (const auto* name : { "unsupported", "", "25", "fps_2500", "FPS_2500 ", "FPS_4800" })
        EXPECT_FALSE (TTAL::rateNamed (name).has_value()) << name;
}
