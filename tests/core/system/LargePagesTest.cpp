// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/LargePages.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <numeric>
#include <vector>

using namespace ZEP::Core;

TEST (LargePages, leaveTheContentsAsTheyAre)
{
    for (const std::size_t bytes :
         { std::size_t { 0 }, std::size_t { 1 }, std::size_t { 5000 }, std::size_t { 9 } << 20 })
    {
        std::vector<unsigned char> memory (bytes + 1);
        std::iota (memory.begin(), memory.end(), static_cast<unsigned char> (1));
        const auto before = memory;
        preferLargePages (memory.data() + 1, bytes);
        EXPECT_TRUE (memory == before) << bytes;
    }
}
