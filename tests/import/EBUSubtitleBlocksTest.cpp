// SPDX-License-Identifier: GPL-3.0-only
#include "import/EBUSubtitleBlocks.h"

#include "import/EBUSupport.h"

#include <gtest/gtest.h>

using namespace ZEP::Overmarks;
using namespace ZEP::Overmarks::EBUSubtitles;

namespace
{

int promisedBy (const std::string& fiveBytes)
{
    const auto bytes = EBUSupport::head (fiveBytes);
    GSI head;
    std::copy (bytes.begin(), bytes.end(), head.begin());
    return totalNumberOfBlocks (head);
}

TTI blockOf (const std::string& bytes)
{
    TTI block;
    std::copy (bytes.begin(), bytes.end(), block.begin());
    return block;
}

} // namespace

TEST (EBUSubtitleBlocks, theFourthToSixthByteTellTheFormat)
{
    EXPECT_TRUE (isDiskFormatCode ("850STL25.01 "));
    EXPECT_TRUE (isDiskFormatCode ("437STL"));
    EXPECT_TRUE (isDiskFormatCode (std::string_view ("\0\0\0STL\0\0", 8)));
    for (const auto* bytes :
         { "", "850ST", "850stl25.01", "STL25.01", "$FontName = A", " 850STL25.01", "850TTL25.01" })
        EXPECT_FALSE (isDiskFormatCode (bytes)) << bytes;
}

struct PromiseCase
{
    const char* name;
    std::string fiveBytes;
    int blocks;
};

class PromisedBlocks : public testing::TestWithParam<PromiseCase>
{
};

TEST_P (PromisedBlocks, areReadFromTheHead)
{
    EXPECT_EQ (promisedBy (GetParam().fiveBytes), GetParam().blocks);
}

INSTANTIATE_TEST_SUITE_P (
    Numbers, PromisedBlocks,
    testing::Values (PromiseCase { "zeros", "00000", 0 }, PromiseCase { "three", "00003", 3 },
                     PromiseCase { "most", "99999", 99999 }, PromiseCase { "blanksBefore", "   42", 42 },
                     PromiseCase { "blanksBehind", "42   ", 42 }, PromiseCase { "lettersBehind", "7x999", 7 },
                     PromiseCase { "zeroByteBehind",
                                   std::string ("12\0"
                                                "99",
                                                5),
                                   12 },
                     PromiseCase { "letters", "abcde", 0 }, PromiseCase { "blanks", "     ", 0 },
                     PromiseCase { "negative", "-0003", 0 },
                     PromiseCase { "highBytes", "\xff\xfe\xb2\xb9\x80", 0 }),
    [] (const auto& rowOfTable) { return rowOfTable.param.name; });

TEST (EBUSubtitleBlocks, theNextFieldOfTheHeadIsNoPartOfThePromise)
{
    auto bytes = EBUSupport::head ("00001");
    bytes.replace (243, 5, "77777");
    GSI head;
    std::copy (bytes.begin(), bytes.end(), head.begin());
    EXPECT_EQ (totalNumberOfBlocks (head), 1);
}

TEST (EBUSubtitleBlocks, timesAreFourBytesEach)
{
    const auto block = blockOf (EBUSupport::block ({ 1, 2, 3, 4 }, { 23, 59, 58, 24 }, ""));
    const auto in = timeCodeIn (block);
    EXPECT_EQ (in.hours, 1);
    EXPECT_EQ (in.minutes, 2);
    EXPECT_EQ (in.seconds, 3);
    EXPECT_EQ (in.frames, 4);
    EXPECT_EQ (in.subFrames, 0u);
    EXPECT_EQ (in.subFramesPerFrame, 80);
    EXPECT_FALSE (in.invalid);

    const auto out = timeCodeOut (block);
    EXPECT_EQ (out.hours, 23);
    EXPECT_EQ (out.minutes, 59);
    EXPECT_EQ (out.seconds, 58);
    EXPECT_EQ (out.frames, 24);
}

TEST (EBUSubtitleBlocks, bytesAbove127AreNoNegativeTimes)
{
    const auto time = timeCodeIn (blockOf (EBUSupport::block ({ 128, 200, 254, 255 }, {}, "")));
    EXPECT_EQ (time.hours, 128);
    EXPECT_EQ (time.minutes, 200);
    EXPECT_EQ (time.seconds, 254);
    EXPECT_EQ (time.frames, 255);
}

TEST (EBUSubtitleBlocks, theTextFieldIsTheLast112Bytes)
{
    const auto block = blockOf (EBUSupport::block ({}, {}, std::string (112, 'x')));
    EXPECT_EQ (textField (block), std::string (112, 'x'));
}
