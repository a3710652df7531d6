// SPDX-License-Identifier: GPL-3.0-only
#include "list/ScratchMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <limits>
#include <new>
#include <numeric>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace ZEP::Overmarks::Testing
{
namespace
{

TEST (ScratchMemory, holdsFewAndMany)
{
    for (const std::size_t number : { 0, 1, 1000, 65535, 65536, 65537, 262144, 1000000 })
    {
        ScratchVector<std::size_t> numbers;
        numbers.resize (number);
        EXPECT_EQ (std::accumulate (numbers.begin(), numbers.end(), std::size_t { 0 }), 0U) << number;
        std::iota (numbers.begin(), numbers.end(), std::size_t { 0 });
        numbers.resize (number / 2);
        numbers.push_back (7);

        const auto moved = std::move (numbers);
        ASSERT_EQ (moved.size(), number / 2 + 1);
        EXPECT_EQ (moved.back(), 7U);
        EXPECT_EQ (moved.front(), number < 2 ? 7U : 0U);
    }
}

TEST (ScratchMemory, keepsTheLastFewThatWereGivenBack)
{
    constexpr std::size_t some = 3 << 20, many = 9 << 20;
    auto* const memory = scratchMemory();
    auto* const first = memory->allocate (some);
    auto* const second = memory->allocate (some);
    memory->deallocate (first, some);
    memory->deallocate (memory->allocate (many), many); // too many to be kept
    EXPECT_EQ (memory->allocate (some), first);
    memory->deallocate (first, some);
    memory->deallocate (second, some);
    EXPECT_EQ (memory->allocate (some), second);
    EXPECT_EQ (memory->allocate (some), first);
    memory->deallocate (second, some);
    memory->deallocate (first, some);
}

TEST (ScratchMemory, keepsThoseOfOneSizeBesideThoseOfAnother)
{
    constexpr std::size_t few = 1 << 20, some = 3 << 20;
    auto* const memory = scratchMemory();
    auto* const small = memory->allocate (few);
    auto* const large = memory->allocate (some);
    memory->deallocate (large, some);
    memory->deallocate (small, few);
    EXPECT_EQ (memory->allocate (some), large);
    EXPECT_EQ (memory->allocate (few), small);
    memory->deallocate (small, few);
    memory->deallocate (large, some);
}

/** Whether the address belongs to this process. */
bool isMapped (const void* address)
{
    std::ifstream maps ("/proc/self/maps");

    for (std::string line; std::getline (maps, line);)
    {
        std::uintptr_t begin = 0, end = 0;
        char dash = 0;
        std::istringstream (line) >> std::hex >> begin >> dash >> end;

        if (const auto wanted = reinterpret_cast<std::uintptr_t> (address); begin <= wanted && wanted < end)
            return true;
    }

    return false;
}

TEST (ScratchMemory, keepsNoMoreThanEightMebibytes)
{
    constexpr std::size_t some = 4 << 20;
    auto* const memory = scratchMemory();
    auto* const first = memory->allocate (some);
    auto* const second = memory->allocate (some);
    auto* const third = memory->allocate (some);
    memory->deallocate (first, some);
    memory->deallocate (second, some);
    EXPECT_TRUE (isMapped (first));
    memory->deallocate (third, some);
    EXPECT_FALSE (isMapped (first));
    EXPECT_TRUE (isMapped (second));
    EXPECT_TRUE (isMapped (third));
}

TEST (ScratchMemory, givesAThreadWhatAnotherOneHasGivenBack)
{
    constexpr std::size_t some = 3 << 20;
    auto* const bytes = static_cast<char*> (scratchMemory()->allocate (some));
    std::thread ([bytes] { scratchMemory()->deallocate (bytes, some); }).join();

    auto* const others = static_cast<char*> (scratchMemory()->allocate (some));
    EXPECT_EQ (others, bytes);
    std::fill_n (others, some, 'x');
    EXPECT_EQ (std::count (others, others + some, 'x'), static_cast<std::ptrdiff_t> (some));
    scratchMemory()->deallocate (others, some);
}

TEST (ScratchMemory, keepsTheOthersWhereOneIsTakenAndGivenBack)
{
    constexpr std::size_t some = 2 << 20;
    auto* const memory = scratchMemory();
    std::vector<void*> blocks (4);
    std::generate (blocks.begin(), blocks.end(), [memory] { return memory->allocate (some); });

    for (auto* const block : blocks)
        memory->deallocate (block, some);

    for (int i = 0; i < 3; ++i)
        memory->deallocate (memory->allocate (some), some);

    EXPECT_TRUE (std::all_of (blocks.begin(), blocks.end(), isMapped));
}

TEST (ScratchMemory, isGoodForSeveralThreads)
{
    const auto work = [] (std::size_t first)
    {
        for (std::size_t number = 100000; number < 600000; number += 25000) // of two sizes of pages and more
        {
            ScratchVector<std::size_t> numbers;
            numbers.resize (number);
            std::iota (numbers.begin(), numbers.end(), first);
            const auto asCounted = [next = first] (std::size_t each) mutable { return each == next++; };
            EXPECT_TRUE (std::all_of (numbers.begin(), numbers.end(), asCounted)) << number;
        }
    };
    std::thread one (work, 0U), another (work, 1U << 30U);
    one.join();
    another.join();
}

TEST (ScratchMemory, tellsThatThereIsNoMore)
{
    constexpr auto tooMuch = std::numeric_limits<std::size_t>::max() / 4;
    EXPECT_THROW (scratchMemory()->deallocate (scratchMemory()->allocate (tooMuch), tooMuch), std::bad_alloc);
}

TEST (ScratchVector, andItsCopyChangePlaces)
{
    ScratchVector<int> first;
    first.push_back (1);
    auto second = first;
    EXPECT_EQ (second.get_allocator(), first.get_allocator());
    second.push_back (2);
    first.swap (second);
    EXPECT_EQ (first.size(), 2U);
    EXPECT_EQ (second.size(), 1U);
}

} // namespace
} // namespace ZEP::Overmarks::Testing
