// SPDX-License-Identifier: GPL-3.0-only
#include "import/TextSTLLine.h"

#include <gtest/gtest.h>

using namespace ZEP::Overmarks;

namespace
{

/** "start|end|text"; "nothing" where the line is no subtitle. */
std::string read (const std::string& line)
{
    const auto subtitle = subtitleOfTextSTLLine (line);
    return subtitle ? subtitle->start + "|" + subtitle->end + "|" + subtitle->text : "nothing";
}

struct LineCase
{
    const char* name;
    std::string line;
    std::string subtitle;
};

class TextSTLLine : public testing::TestWithParam<LineCase>
{
};

} // namespace

TEST_P (TextSTLLine, isCut) { EXPECT_EQ (read (GetParam().line), GetParam().subtitle); }

INSTANTIATE_TEST_SUITE_P (
    Subtitles, TextSTLLine,
    testing::Values (
        LineCase { "plain", "00:00:01:00 , 00:00:02:12 , Hello", "00:00:01:00|00:00:02:12|Hello" },
        LineCase { "lineBreak", "00:00:01:00 , 00:00:02:12 , Hello|there",
                   "00:00:01:00|00:00:02:12|Hello\nthere" },
        LineCase { "noBlanksLosesTwoCharacters", "00:00:01:00,00:00:02:12,Hello",
                   "00:00:01:00|00:00:02:12|llo" },
        LineCase { "noBlanksLosesAShortText", "00:00:01:00,00:00:02:12,Hi", "00:00:01:00|00:00:02:12|" },
        LineCase { "nothingBehindTheSecondComma", "00:00:01:00,00:00:02:12,", "00:00:01:00|00:00:02:12|" },
        LineCase { "charactersAreCountedNotBytes", "00:00:01:00,00:00:02:12,Übel",
                   "00:00:01:00|00:00:02:12|el" },
        LineCase { "commasSurvive", "00:00:01:00 , 00:00:02:12 , No, no, no",
                   "00:00:01:00|00:00:02:12|No, no, no" },
        LineCase { "commasAloneSurvive", "00:00:01:00 , 00:00:02:12 , ,,", "00:00:01:00|00:00:02:12|,," },
        LineCase { "blanksOfTheTextStay", "00:00:01:00 , 00:00:02:12 ,  a  b ",
                   "00:00:01:00|00:00:02:12| a  b " },
        LineCase { "stylesAreDropped", "00:00:01:00 , 00:00:02:12 , ^IGo^I ^Bhome^B ^Unow^U",
                   "00:00:01:00|00:00:02:12|Go home now" },
        LineCase { "stylesAreSoughtInTurn", "00:00:01:00 , 00:00:02:12 , ^^IB ^^BI",
                   "00:00:01:00|00:00:02:12| ^I" },
        LineCase { "smallStylesStay", "00:00:01:00 , 00:00:02:12 , ^i^b^u^",
                   "00:00:01:00|00:00:02:12|^i^b^u^" },
        LineCase { "stylesInTimes", "^I00:00:01:00 , 00:00:02:12^I , a", "00:00:01:00|00:00:02:12|a" },
        LineCase { "tabs", "00:00:01:00\t,\t00:00:02:12\t,\tHello", "00:00:01:00|00:00:02:12|Hello" },
        LineCase { "indented", "  00:00:01:00 , 00:00:02:12 , a", "00:00:01:00|00:00:02:12|a" },
        LineCase { "blanksInsideStart", "0 0:00:0 1:00 , 00:00:02:12 , a", "00:00:01:00|00:00:02:12|a" },
        LineCase { "blanksInsideEnd", "00:00:01:00 , 00:00: 02:12 , abc", "00:00:01:00|00:00:02:12|abc" },
        LineCase { "sameTimes", "00:00:01:00 , 00:00:01:00 , a", "00:00:01:00|00:00:01:00|00:00:01:00 , a" },
        LineCase { "noTimes", "whenever... , hereafter.. , a", "whenever...|hereafter..|a" },
        LineCase { "elevenForeignCharacters", "äääääääääää , 00:00:02:12 , a", "äääääääääää|00:00:02:12|a" },
        LineCase { "startTooShort", "0:00:01:00 , 00:00:02:12 , a", "nothing" },
        LineCase { "startTooLong", "00:00:01:000 , 00:00:02:12 , a", "nothing" },
        LineCase { "endTooShort", "00:00:01:00 , 0:00:02:12 , a", "nothing" },
        LineCase { "endTooLong", "00:00:01:00 , 00:00:02:120 , a", "nothing" },
        LineCase { "milliseconds", "00:00:01,000 , 00:00:02,000 , a", "nothing" },
        LineCase { "twoTokens", "00:00:01:00 , 00:00:02:12", "nothing" },
        LineCase { "oneToken", "Hello", "nothing" },
        LineCase { "quotesDoNotHold", "\"00:00:01:00 , 00:00:02:12\" , a", "nothing" },
        LineCase { "lineBreakInTime", "00:00:01:0|0 , 00:00:02:12 , a", "nothing" },
        LineCase { "commasOnly", ",,,,", "nothing" }),
    [] (const auto& rowOfTable) { return rowOfTable.param.name; });

TEST (TextSTLRemark, directivesCommentsAndEmptyLinesAreNone)
{
    for (const auto* line : { "", "$", "$FontName = Sans", "//", "// 00:00:01:00 , 00:00:02:12 , a", "\\",
                              "\\00:00:01:00 , 00:00:02:12 , a" })
        EXPECT_TRUE (isTextSTLRemark (line)) << line;
}

TEST (TextSTLRemark, otherLinesAreToBeRead)
{
    for (const auto* line : { "/", "/ a", " $a", " //", " ", "00:00:01:00 , 00:00:02:12 , $5" })
        EXPECT_FALSE (isTextSTLRemark (line)) << line;
}
