// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/LargePages.h"

#include <gtest/gtest.h>

#include <malloc.h>
#include <sys/mman.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

using namespace ZEP::Core;

TEST (LargePages, leaveWhatStandsInTheMemory)
{
    constexpr std::size_t size = std::size_t { 9 } << 20;
    const std::string text = "between small pages";
    std::vector<char> bytes (size, 'x');
    std::copy (text.begin(), text.end(), bytes.begin() + 4090);

    useLargePages (bytes.data() + 1, size - 7);

    EXPECT_EQ (std::string (bytes.data() + 4090, text.size()), text);
    EXPECT_EQ (std::count (bytes.begin(), bytes.end(), 'x'),
               static_cast<std::ptrdiff_t> (size - text.size()));
}

/** What the kernel notes of the pages at an address, "rd wr mr … hg". */
std::string flagsOf (const void* address)
{
    const auto place = reinterpret_cast<std::uintptr_t> (address);
    std::ifstream maps ("/proc/self/smaps");
    bool isThere = false;

    for (std::string line; std::getline (maps, line);)
        if (std::uintptr_t begin = 0, end = 0; std::sscanf (line.c_str(), "%lx-%lx ", &begin, &end) == 2)
            isThere = begin <= place && place < end;
        else if (isThere && line.starts_with ("VmFlags:"))
            return line + " ";

    return {};
}

TEST (LargePages, areAskedForWhereTheSystemHasAny)
{
    constexpr std::size_t size = std::size_t { 9 } << 20;
    auto* const bytes = ::mmap (nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE (bytes, MAP_FAILED);
    const auto* const middle = static_cast<const char*> (bytes) + size / 2;
    EXPECT_EQ (flagsOf (middle).find (" hg "), std::string::npos);

    useLargePages (bytes, size);

    const bool hasAny = std::filesystem::exists ("/sys/kernel/mm/transparent_hugepage/enabled");
    EXPECT_EQ (flagsOf (middle).find (" hg ") != std::string::npos, hasAny) << flagsOf (middle);
    ::munmap (bytes, size);
}

TEST (LargePages, areAskedForNoMemoryAndForLittleInVain)
{
    char byte = 'x';
    errno = 0;
    useLargePages (nullptr, std::size_t { 64 } << 20);
    useLargePages (&byte, 1);
    useLargePages (&byte, 0);
    EXPECT_EQ (errno, 0) << "the system was asked for what can't be";
}

/** A table of so many rows, each of what it is to hold itself. */
std::vector<std::unique_ptr<std::string>> tableOf (std::size_t rows, HeapRoom& room)
{
    std::vector<std::unique_ptr<std::string>> table;

    for (std::size_t i = 0; i < rows; ++i)
    {
        table.push_back (std::make_unique<std::string> (600, static_cast<char> ('a' + i % 26)));
        room.keepAheadOf (table.back()->data());
    }

    return table;
}

TEST (HeapRoom, growsUnderATableThatStaysAsItIs)
{
    HeapRoom room;
    const auto table = tableOf (100000, room); // 60 MB, so it grows some times

    for (std::size_t i = 0; i < table.size(); ++i)
        ASSERT_EQ (*table[i], std::string (600, static_cast<char> ('a' + i % 26))) << i;
}

TEST (HeapRoom, isKeptByNobody)
{
    const auto before = ::mallinfo2();

    {
        HeapRoom room;
        tableOf (50000, room);
    }

    const auto after = ::mallinfo2();
    constexpr std::size_t little = std::size_t { 1 } << 20;
    EXPECT_LT (after.uordblks + after.hblkhd, before.uordblks + before.hblkhd + little);
}
