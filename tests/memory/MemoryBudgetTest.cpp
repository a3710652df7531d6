// SPDX-License-Identifier: GPL-3.0-only
#include "memory/MemoryBudget.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <thread>
#include <vector>

using ZEP::Overmarks::Testing::MemoryBudget;

namespace
{

constexpr std::size_t megabyte = 1'000'000;

bool canBeHad (std::size_t bytes)
{
    try
    {
        return ! std::vector<char> (bytes).empty();
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
}

TEST (MemoryBudget, whatIsBeyondItIsRefused)
{
    const MemoryBudget budget (megabyte);
    EXPECT_TRUE (canBeHad (megabyte / 2));
    EXPECT_FALSE (canBeHad (2 * megabyte));
    EXPECT_EQ (std::unique_ptr<char[]> (new (std::nothrow) char[2 * megabyte]), nullptr);
}

TEST (MemoryBudget, whatIsAlignedCountsToo)
{
    struct alignas (128) Line
    {
        char bytes[128];
    };

    const MemoryBudget budget (megabyte);
    constexpr std::size_t half = megabyte / 2 / sizeof (Line);

    for (int i = 0; i < 10; ++i)
    {
        const auto held = std::make_unique<Line[]> (half);
        EXPECT_EQ (reinterpret_cast<std::uintptr_t> (held.get()) % sizeof (Line), 0U);
        EXPECT_FALSE (canBeHad (3 * megabyte / 4));
    }

    EXPECT_EQ (std::unique_ptr<Line[]> (new (std::nothrow) Line[4 * half]), nullptr);
    EXPECT_THROW (std::make_unique<Line[]> (4 * half), std::bad_alloc);
}

TEST (MemoryBudget, whatIsGivenBackCanBeHadAgain)
{
    const MemoryBudget budget (megabyte);

    for (int i = 0; i < 10; ++i)
        EXPECT_TRUE (canBeHad (megabyte / 2));
}

TEST (MemoryBudget, whatIsHeldCounts)
{
    const MemoryBudget budget (megabyte);
    const std::string held (megabyte / 2, 'a');
    EXPECT_FALSE (canBeHad (3 * megabyte / 4));
    EXPECT_TRUE (canBeHad (megabyte / 4));
}

TEST (MemoryBudget, endsWithItsScope)
{
    {
        const MemoryBudget budget (megabyte);
    }
    EXPECT_TRUE (canBeHad (2 * megabyte));
}

TEST (MemoryBudget, isThatOfItsThread)
{
    bool elsewhere = false;
    std::thread other; // made before, since it takes memory
    const MemoryBudget budget (megabyte);
    other = std::thread ([&elsewhere] { elsewhere = canBeHad (2 * megabyte); });
    other.join();
    EXPECT_TRUE (elsewhere);
}

} // namespace
