// SPDX-License-Identifier: GPL-3.0-only
#include "import/SubRipBlocks.h"

#include <gtest/gtest.h>

#include <vector>

using namespace ZEP::Overmarks;
using Outcome = SubRipBlockReader::Outcome;

namespace
{

/** What comes of each line, and the blocks as "number|start|end|text". */
struct Walk
{
    explicit Walk (const std::vector<std::string>& lines)
    {
        for (const auto& line : lines)
        {
            outcomes.push_back (reader.take (line));

            if (outcomes.back() == Outcome::blockIsComplete)
            {
                const auto& block = reader.block();
                blocks.push_back (std::string (block.cueNumber) + "|" + std::string (block.start) + "|"
                                  + std::string (block.end) + "|" + block.text);
            }
        }
    }

    SubRipBlockReader reader;
    std::vector<Outcome> outcomes;
    std::vector<std::string> blocks;
};

using Blocks = std::vector<std::string>;

} // namespace

TEST (SubRipBlocks, anEmptyLineCompletesASubtitle)
{
    const Walk walk ({ "7", "a --> b", "Hello", "" });
    EXPECT_EQ (walk.outcomes,
               (std::vector { Outcome::goesOn, Outcome::goesOn, Outcome::goesOn, Outcome::blockIsComplete }));
    EXPECT_EQ (walk.blocks, (Blocks { "7|a|b|Hello" }));
    EXPECT_FALSE (walk.reader.isInsideBlock());
}

TEST (SubRipBlocks, textLinesAreJoinedWithLineBreaks)
{
    EXPECT_EQ (Walk ({ "1", "a --> b", "one", "two", "three", "" }).blocks,
               (Blocks { "1|a|b|one\ntwo\nthree" }));
}

TEST (SubRipBlocks, emptyLinesBetweenSubtitlesAreHarmless)
{
    EXPECT_EQ (Walk ({ "", "", "1", "a --> b", "x", "", "", "", "2", "c --> d", "y", "", "" }).blocks,
               (Blocks { "1|a|b|x", "2|c|d|y" }));
}

TEST (SubRipBlocks, nothingOfASubtitleStaysForTheNext)
{
    EXPECT_EQ (Walk ({ "1", "a --> b", "x", "", "2", "c --> d", "", "3", "" }).blocks,
               (Blocks { "1|a|b|x", "2|c|d|", "3|||" }));
}

TEST (SubRipBlocks, anEmptyLineBehindTheNumberGivesASubtitleWithoutTimes)
{
    EXPECT_EQ (Walk ({ "1", "" }).blocks, (Blocks { "1|||" }));
}

TEST (SubRipBlocks, aSecondLineWithoutAnArrowIsNoSubtitle)
{
    for (const auto* line : { "Hello", "00:00:01,000 -> 00:00:02,000", "00:00:01,000-->00:00:02,000",
                              "00:00:01,000 -->", "--> b", " ", "\t" })
        EXPECT_EQ (Walk ({ "1", line }).outcomes.back(), Outcome::arrowIsMissing) << line;
}

TEST (SubRipBlocks, theFirstArrowSeparatesTheTimes)
{
    EXPECT_EQ (Walk ({ "1", "a --> b --> c", "" }).blocks, (Blocks { "1|a|b --> c|" }));
    EXPECT_EQ (Walk ({ "1", " --> ", "" }).blocks, (Blocks { "1|||" }));
    EXPECT_EQ (Walk ({ "1", "a -->  b ", "" }).blocks, (Blocks { "1|a| b |" }));
}

TEST (SubRipBlocks, anArrowInTheTextIsText)
{
    EXPECT_EQ (Walk ({ "1", "a --> b", "c --> d", "" }).blocks, (Blocks { "1|a|b|c --> d" }));
}

TEST (SubRipBlocks, aSubtitleThatIsCutOffNeverComesOut)
{
    const Walk walk ({ "1", "a --> b", "x", "", "2", "c --> d", "y" });
    EXPECT_EQ (walk.blocks, (Blocks { "1|a|b|x" }));
    EXPECT_TRUE (walk.reader.isInsideBlock());
}

TEST (SubRipBlocks, aBlankOrACarriageReturnIsNoEmptyLine)
{
    EXPECT_EQ (Walk ({ "1", "a --> b", "x", " ", "\r", "" }).blocks, (Blocks { "1|a|b|x\n \n\r" }));
}

//==============================================================================
struct StyleCase
{
    const char* name;
    std::string text;
    std::string plain;
};

class SubRipStyle : public testing::TestWithParam<StyleCase>
{
};

TEST_P (SubRipStyle, isTakenOutOfTheText)
{
    EXPECT_EQ (plainSubRipText (GetParam().text, false), GetParam().plain);
}

INSTANTIATE_TEST_SUITE_P (
    Marks, SubRipStyle,
    testing::Values (
        StyleCase { "italic", "<i>Go</i> home", "Go home" },
        StyleCase { "bold", "Go <b>home</b>", "Go home" }, StyleCase { "nested", "<b><i>Go</i></b>", "Go" },
        StyleCase { "unpaired", "</i>Go<b>", "Go" }, StyleCase { "overLines", "<i>Go\nhome</i>", "Go\nhome" },
        StyleCase { "capitalsStay", "<I>Go</I> <B>home</B>", "<I>Go</I> <B>home</B>" },
        StyleCase { "othersStay", "<u>a</u><font color=\"red\">{\\an8}&amp;",
                    "<u>a</u><font color=\"red\">{\\an8}&amp;" },
        StyleCase { "blanksInsideStay", "< i>a<i >", "< i>a<i >" },
        StyleCase { "italicIsSoughtOnce", "<<i>i>", "<i>" },
        StyleCase { "boldIsSoughtAfterItalic", "<</i>b>", "" }, StyleCase { "starsStay", "a**b", "a**b" }),
    [] (const auto& rowOfTable) { return rowOfTable.param.name; });

TEST (SubRipText, lineBreaksBecomeStarsWhenAsked)
{
    EXPECT_EQ (plainSubRipText ("<i>one\ntwo</i>\nthree", true), "one**two**three");
    EXPECT_EQ (plainSubRipText ("one**two\nthree", true), "one**two**three");
    EXPECT_EQ (plainSubRipText ("<\ni>", true), "<**i>");
}
