// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/LargePages.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

namespace ZEP::Core
{

namespace
{

constexpr std::size_t step = std::size_t { 16 } << 20;
constexpr std::size_t margin = std::size_t { 1 } << 20;

/** @returns where untouched room is left behind in the heap, if that is where it came from */
std::uintptr_t takeAndGiveBack (std::size_t bytes) noexcept
{
    void* const block = std::malloc (bytes);
    useLargePages (block, bytes);
    const auto place = reinterpret_cast<std::uintptr_t> (block);
    std::free (block);
    return place;
}

} // namespace

void useLargePages ([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t bytes) noexcept
{
#ifdef MADV_HUGEPAGE
    constexpr std::size_t largePage = std::size_t { 2 } << 20;
    static const auto page = static_cast<std::size_t> (::sysconf (_SC_PAGESIZE));
    const auto place = reinterpret_cast<std::uintptr_t> (memory);
    const auto start = (place + page - 1) / page * page;
    const auto end = (place + bytes) / page * page;

    if (memory != nullptr && bytes >= largePage)
        ::madvise (reinterpret_cast<void*> (start), end - start, MADV_HUGEPAGE);
#endif
}

void HeapRoom::grow() noexcept
{
    // The heap asks the system for a block of its own, until it has seen a larger one come and go.
    [[maybe_unused]] static const auto larger = takeAndGiveBack (step + margin);
    end = takeAndGiveBack (step) + step;
    nearEnd = end - margin;
}

} // namespace ZEP::Core
