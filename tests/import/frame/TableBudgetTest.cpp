// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/TableBudget.h"

#include <gtest/gtest.h>

using ZEP::Overmarks::TableBudget;

TEST (TableBudget, aSmallFileMayHaveAMillionCells)
{
    TableBudget budget (0);
    EXPECT_TRUE (budget.takeRow (TableBudget::kSpareCells));
    EXPECT_FALSE (budget.takeRow (1));
}

TEST (TableBudget, aLargeFileMayHaveACellForEveryFourBytesMore)
{
    TableBudget budget (400);
    EXPECT_TRUE (budget.takeRow (TableBudget::kSpareCells));
    EXPECT_TRUE (budget.takeRow (60));
    EXPECT_FALSE (budget.takeRow (41));
    EXPECT_TRUE (budget.takeRow (40));
    EXPECT_FALSE (budget.takeRow (1));
}

TEST (TableBudget, aRowThatIsRefusedCostsNothing)
{
    TableBudget budget (0);
    EXPECT_FALSE (budget.takeRow (TableBudget::kSpareCells + 1));
    EXPECT_TRUE (budget.takeRow (TableBudget::kSpareCells));
    EXPECT_TRUE (budget.takeRow (0));
}
