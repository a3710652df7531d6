// SPDX-License-Identifier: GPL-3.0-only
#include "list/ScratchMemory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <new>
#include <numeric>
#include <utility>

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

TEST (ScratchMemory, tellsThatThereIsNoMore)
{
    constexpr auto tooMuch = std::numeric_limits<std::size_t>::max() / 4;
    EXPECT_THROW (scratchMemory()->deallocate (scratchMemory()->allocate (tooMuch), tooMuch), std::bad_alloc);
}

} // namespace
} // namespace ZEP::Overmarks::Testing
