// SPDX-License-Identifier: GPL-3.0-only
#include "list/StableSort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <numeric>
#include <optional>
#include <random>
#include <string>
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
        stableSortOfRuns (items.begin(), items.end(), before);
        ASSERT_EQ (items, expected) << "round " << round;
    }
}

/** How often a sort compares so many of which three are out of order. */
std::size_t comparisonsOfNearlySorted (int number)
{
    std::vector<int> values (static_cast<std::size_t> (number));
    std::iota (values.begin(), values.end(), 0);
    for (const auto place : { values.size() / 5, values.size() / 2, values.size() - 2 })
        values[place] = static_cast<int> (values.size() / 3);

    auto items = numbered (values);
    std::size_t comparisons = 0;
    stableSortOfRuns (items.begin(), items.end(),
                      [&comparisons] (const Item& a, const Item& b)
                      {
                          ++comparisons;
                          return before (a, b);
                      });
    EXPECT_TRUE (std::is_sorted (items.begin(), items.end(), before));
    return comparisons;
}

TEST (StableSort, comparesWhatIsNearlyInOrderNoMoreThanAFewTimesPerItem)
{
    for (const int number : { 1000, 10000, 100000 })
        EXPECT_LE (comparisonsOfNearlySorted (number), 5u * static_cast<unsigned> (number)) << number;
}

/** A text of numbers, the first ones looked at as ranks. */
using Numbers = std::vector<std::uint64_t>;

std::optional<std::uint64_t> numberAt (const Numbers& numbers, std::size_t index)
{
    return index < numbers.size() && index < 3 ? std::optional (numbers[index]) : std::nullopt;
}

/** Of one length, since a rank that isn't there is none for all that are alike before it. */
std::vector<Numbers> numbersByChance (std::mt19937& random, std::size_t number, unsigned kinds)
{
    std::vector<Numbers> keys (number);
    for (auto& key : keys)
        for (int i = 0; i < 5; ++i)
            key.push_back ((std::uint64_t { random() % kinds } << 56 | random() % kinds) - 1);
    return keys;
}

void expectStableOrder (const std::vector<Numbers>& keys)
{
    std::vector<std::size_t> expected (keys.size());
    std::iota (expected.begin(), expected.end(), 0);
    std::stable_sort (expected.begin(), expected.end(),
                      [&keys] (std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
    auto items = expected;
    std::iota (items.begin(), items.end(), 0);
    rearrange (items, stableOrderOf (keys, numberAt, std::less<Numbers>()));
    ASSERT_EQ (items, expected);
}

TEST (StableSort, keysGoByTheirRanksAndThenByTheComparison)
{
    std::mt19937 random (3);

    for (const std::size_t number : { 0, 1, 2, 16, 17, 999, 1000, 1001, 5000 })
        for (const unsigned kinds : { 1u, 2u, 5u, 200u })
        {
            SCOPED_TRACE (number);
            auto keys = numbersByChance (random, number, kinds);
            expectStableOrder (keys);
            std::sort (keys.begin(), keys.end());
            expectStableOrder (keys);
            if (! keys.empty())
                std::swap (keys.front(), keys.back());
            expectStableOrder (keys);
        }
}

TEST (StableSort, ranksMayDifferInAnyOfTheirBits)
{
    std::mt19937_64 random (5);

    for (int bits = 1; bits <= 64; ++bits)
        for (int lowest = 0; lowest + bits <= 64; lowest += 9)
        {
            SCOPED_TRACE (std::to_string (bits) + " bits from " + std::to_string (lowest));
            std::vector<Numbers> keys;
            for (int i = 0; i < 1200; ++i)
                keys.push_back ({ random() >> (64 - bits) << lowest });
            expectStableOrder (keys);
        }
}

TEST (StableSort, keysInOrderStayWithoutARank)
{
    const std::vector<Numbers> keys { { 1 }, { 1 }, { 2 } };
    EXPECT_TRUE (stableOrderOf (keys, numberAt, std::less<Numbers>()).empty());
}

TEST (StableSort, keysOfWhichAFewAreOutOfPlaceGoWhereTheyBelong)
{
    std::mt19937 random (11);

    for (const std::size_t number : { 1, 2, 31, 32, 33, 64, 500, 2000 })
        for (const unsigned kinds : { 1u, 2u, 40u })
            for (const std::size_t edits : { 0u, 1u, 2u, 5u, 30u, 100u, 2000u })
            {
                SCOPED_TRACE (std::to_string (number) + " of " + std::to_string (kinds) + " kinds, "
                              + std::to_string (edits) + " edits");
                auto keys = numbersByChance (random, number, kinds);
                std::sort (keys.begin(), keys.end());
                for (const auto& key : numbersByChance (random, edits, kinds))
                    keys[random() % number] = key;
                expectStableOrder (keys);
            }
}

/** How often keys are compared of which a few have changed since they were in order. */
std::size_t comparisonsAfterEdits (std::size_t number)
{
    std::mt19937 random (13);
    auto keys = numbersByChance (random, number, 50);
    std::sort (keys.begin(), keys.end());
    for (const auto& key : numbersByChance (random, 4, 50))
        keys[random() % number] = key;

    std::size_t comparisons = 0;
    const auto order = stableOrderOf (
        keys,
        [] (const Numbers&, std::size_t) -> std::optional<std::uint64_t>
        {
            ADD_FAILURE() << "no rank is needed";
            return {};
        },
        [&comparisons] (const Numbers& a, const Numbers& b)
        {
            ++comparisons;
            return a < b;
        });
    EXPECT_EQ (order.size(), number);
    return comparisons;
}

TEST (StableSort, keysNearlyInOrderAreComparedTwiceAtMost)
{
    for (const std::size_t number : { 1000u, 10000u, 100000u })
        EXPECT_LE (comparisonsAfterEdits (number), 2 * number + 500) << number;
}

/** How often keys in no order are compared whose ranks tell them apart but for a few. */
std::size_t comparisonsOfRanked (std::size_t number)
{
    std::mt19937 random (9);
    std::vector<Numbers> keys;
    for (std::size_t i = 0; i < number; ++i)
        keys.push_back ({ random() % (number / 2), random() });

    std::size_t comparisons = 0;
    const auto order = stableOrderOf (
        keys,
        [] (const Numbers& key, std::size_t index)
        { return index == 0 ? std::optional (key[0]) : std::nullopt; },
        [&comparisons] (const Numbers& a, const Numbers& b)
        {
            ++comparisons;
            return a < b;
        });
    EXPECT_EQ (order.size(), number);
    return comparisons;
}

TEST (StableSort, ranksSpareTheComparisons)
{
    for (const std::size_t number : { 1000u, 10000u, 100000u })
        EXPECT_LE (comparisonsOfRanked (number), 4 * number) << number;
}

} // namespace
} // namespace ZEP::Overmarks::Testing
