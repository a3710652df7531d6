// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/TableBudget.h"

#include <gtest/gtest.h>

using ZEP::Overmarks::ImportLimits;
using ZEP::Overmarks::TableBudget;

namespace
{

constexpr auto spare = ImportLimits().spareCells;
constexpr auto ofRow = TableBudget::kCellsOfRow;

} // namespace

TEST (TableBudget, aSmallFileMayHaveAMillionCells)
{
    TableBudget budget (0);
    EXPECT_TRUE (budget.takeRow (spare - ofRow));
    EXPECT_FALSE (budget.takeRow (0));
}

TEST (TableBudget, aLargeFileMayHaveACellForEveryFourBytesMore)
{
    TableBudget budget (400);
    EXPECT_TRUE (budget.takeRow (spare - ofRow));
    EXPECT_TRUE (budget.takeRow (60 - ofRow));
    EXPECT_FALSE (budget.takeRow (41 - ofRow));
    EXPECT_TRUE (budget.takeRow (40 - ofRow));
    EXPECT_FALSE (budget.takeRow (0));
}

TEST (TableBudget, aFormatOfLongerCellsHasFewerOfThem)
{
    TableBudget budget (800, 8);
    EXPECT_FALSE (budget.takeRow (spare + 101 - ofRow));
    EXPECT_TRUE (budget.takeRow (spare + 100 - ofRow));
    EXPECT_FALSE (budget.takeRow (0));
}

TEST (TableBudget, rowsWithoutCellsAreNotForNothing)
{
    TableBudget budget (0);
    std::uint64_t rows = 0;
    while (budget.takeRow (0))
        ++rows;
    EXPECT_EQ (rows, spare / ofRow);
}

TEST (TableBudget, aRowThatIsRefusedCostsNothing)
{
    TableBudget budget (0);
    EXPECT_FALSE (budget.takeRow (spare));
    EXPECT_TRUE (budget.takeRow (spare - ofRow));
}
