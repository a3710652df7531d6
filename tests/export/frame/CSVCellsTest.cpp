// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/CSVCells.h"

#include <gtest/gtest.h>
#include <limits>
#include <ostream>

using namespace ZEP::Overmarks;

namespace
{

struct Case
{
    const char* name;
    CSVTextRule rule;
    const char* text;
    const char* cell;
};

std::ostream& operator<< (std::ostream& out, const Case& testCase) { return out << testCase.name; }

constexpr auto kept = CSVQuotes::kept;
constexpr auto doubled = CSVQuotes::doubled;
constexpr auto removed = CSVQuotes::removed;
constexpr auto breaks = CSVBreaks::kept;
constexpr auto blanks = CSVBreaks::toBlanks;
constexpr auto lineFeeds = CSVBreaks::lineFeedsToBlanks;

const Case cases[] = {
    { "plain", {}, "abc", "\"abc\";" },
    { "empty", { doubled, blanks, true }, "", "\"\";" },
    { "quotesKept", { kept, breaks, false }, "a\"b", "\"a\"b\";" },
    { "quotesDoubled", { doubled, breaks, false }, "\"a\"\"", "\"\"\"a\"\"\"\"\";" },
    { "quotesRemoved", { removed, breaks, false }, "\"a\"\"b", "\"ab\";" },
    { "breaksKept", { doubled, breaks, false }, "a\r\nb", "\"a\r\nb\";" },
    { "eachBreakCharacterABlank", { doubled, blanks, false }, "a\r\nb\nc\r", "\"a  b c \";" },
    { "lineFeedsAlone", { kept, lineFeeds, false }, "a\r\nb", "\"a\r b\";" },
    { "starsKept", { doubled, blanks, false }, "a**b", "\"a**b\";" },
    { "starsRemoved", { doubled, blanks, true }, "**a** **b", "\"a b\";" },
    { "aSingleStarStays", { doubled, blanks, true }, "a*b*", "\"a*b*\";" },
    { "ofThreeStarsOneStays", { doubled, blanks, true }, "a***b", "\"a*b\";" },
    { "aPairMadeByTheRemovalStays", { doubled, blanks, true }, "*\"**\"*", "\"*\"\"\"\"*\";" },
    { "theDelimiterNeedsNothing", { doubled, blanks, true }, "a;b", "\"a;b\";" },
};

class QuotedCells : public ::testing::TestWithParam<Case>
{
};

TEST_P (QuotedCells, followTheirRule)
{
    std::string row;
    CSVCells (row, ";").quoted (GetParam().text, GetParam().rule);
    EXPECT_EQ (row, GetParam().cell);
}

INSTANTIATE_TEST_SUITE_P (CSVCells, QuotedCells, ::testing::ValuesIn (cases),
                          [] (const auto& tested) { return std::string (tested.param.name); });

} // namespace

TEST (CSVCells, followTheirRuleAtEachPlaceOfATextOfAnyLength)
{
    for (std::size_t length = 1; length < 27; ++length)
        for (std::size_t place = 0; place < length; ++place)
            for (const auto* shown :
                 { "\n ", "\r ", "\"\"\"", "**", "!!", "##", "\t\t", "\x0e\x0e", "\x8d\x8d", "\xff\xff" })
            {
                std::string text (length, 'x');
                std::string cell (length, 'x');
                text[place] = shown[0];
                cell.replace (place, 1, shown + 1);

                std::string row;
                CSVCells (row, ",").quoted (text, { doubled, blanks, true });
                ASSERT_EQ (row, "\"" + cell + "\",") << length << " " << place;
            }
}

TEST (CSVCells, doubleStarsGoAtEachPlaceOfATextOfAnyLength)
{
    for (std::size_t before = 0; before < 20; ++before)
        for (std::size_t after = 0; after < 20; ++after)
        {
            const std::string left (before, 'l'), right (after, 'r');
            std::string row;
            CSVCells (row, ",").quoted (left + "**" + right, { kept, breaks, true });
            ASSERT_EQ (row, "\"" + left + right + "\",");
        }
}

TEST (CSVCells, lineUpBehindEachOther)
{
    std::string row ("x");
    CSVCells cells (row, "\t");
    cells.plain ("a\"b");
    cells.number (-12);
    cells.quoted ("c");
    cells.last ("end");
    EXPECT_EQ (row, "xa\"b\t-12\t\"c\"\tend");
}

TEST (CSVCells, holdTheGreatestAndTheLeastNumber)
{
    std::string row;
    CSVCells cells (row, ",");
    cells.number (std::numeric_limits<int>::min());
    cells.number (std::numeric_limits<int>::max());
    EXPECT_EQ (row, "-2147483648,2147483647,");
}

TEST (CSVCells, mayHaveNoDelimiterAtAll)
{
    std::string row;
    CSVCells cells (row, "");
    cells.quoted ("a");
    cells.number (1);
    EXPECT_EQ (row, "\"a\"1");
}
