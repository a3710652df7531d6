// SPDX-License-Identifier: GPL-3.0-only
#include "list/StableSort.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>
#include <utility>
#include <vector>

namespace ZEP::Overmarks::Testing
{
namespace
{

using Item = std::pair<int, int>; // what it is sorted by, and where it stood

bool before (const Item& a, const Item& b) { return a.first < b.first; }

std::vector<Item> numbered (const std::vector<int>& values)
{
    std::vector<Item> items;
    for (const int value : values)
        items.emplace_back (value, static_cast<int> (items.size()));
    return items;
}

TEST (StableSort, doesWhatTheStandardOneDoes)
{
    std::mt19937 random (7);

    for (int round = 0; round < 2000; ++round)
    {
        std::vector<int> values (random() % 300);
        const auto kinds = 1 + random() % 40;
        for (auto& value : values)
            value = static_cast<int> (random() % kinds);

        // From no order at all up to one with a few things out of place.
        if (round % 3 != 0)
            std::sort (values.begin(), values.end());
        for (int i = 0; round % 3 == 1 && i < 5 && ! values.empty(); ++i)
            values[random() % values.size()] = static_cast<int> (random() % kinds);
        if (round % 3 == 2)
            std::rotate (values.begin(), values.begin() + static_cast<long> (values.size() / 3),
                         values.end());

        auto items = numbered (values);
        auto expected = items;
        std::stable_sort (expected.begin(), expected.end(), before);
        stableSortOfRuns (items, before);
        ASSERT_EQ (items, expected) << "round " << round;
    }
}

/** How often a sort compares a list of so many in which three have changed. */
std::size_t comparisonsAfterAnEdit (int number)
{
    std::vector<int> values (static_cast<std::size_t> (number));
    std::iota (values.begin(), values.end(), 0);
    for (const auto place : { values.size() / 5, values.size() / 2, values.size() - 2 })
        values[place] = static_cast<int> (values.size() / 3);

    auto items = numbered (values);
    std::size_t comparisons = 0;
    stableSortOfRuns (items,
                      [&comparisons] (const Item& a, const Item& b)
                      {
                          ++comparisons;
                          return before (a, b);
                      });
    EXPECT_TRUE (std::is_sorted (items.begin(), items.end(), before));
    return comparisons;
}

TEST (StableSort, afterAnEditItComparesNoMoreThanAFewTimesPerItem)
{
    for (const int number : { 1000, 10000, 100000 })
        EXPECT_LE (comparisonsAfterAnEdit (number), 5u * static_cast<unsigned> (number)) << number;
}

} // namespace
} // namespace ZEP::Overmarks::Testing
