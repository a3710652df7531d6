// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <cstddef>
#include <cstdint>

namespace ZEP::Core
{

/** Asks the system to back memory that nobody has touched yet with large pages. Each small page would be a stop of its own when it is first
    touched. A system that can't do this does without. */
ZEP_CORE_API void useLargePages (void* memory, std::size_t bytes) noexcept;

/** Room in the heap for a large table, while it is made of small blocks.

    The stops for the pages of a long list take a third of the time in which it is read. So the heap is made to grow ahead of the table, by
    larger steps than its own, and the new room is backed with large pages. A short table goes without. Where a virtual machine has given its free
    memory back to its host, large pages can be dearer than small ones; see docs/performance.md.

    No block is held, and nothing is promised: blocks that come from elsewhere, another kind of heap or a full memory cost time alone. But the
    heap of the whole process learns from it, as from any large block that comes and goes: from then on it serves blocks of up to 17 MiB
    itself, and keeps as much as 34 MiB of free room at its end. One object belongs to one thread. */
class ZEP_CORE_API HeapRoom final
{
public:
    /** To be told of every row of the table.
        @param newest  a block of the heap that was taken for it */
    void keepAheadOf (const void* newest) noexcept
    {
        constexpr int many = 2000;
        const auto place = reinterpret_cast<std::uintptr_t> (newest);

        if ((place >= nearEnd && place < end) || ++rows == many)
            grow();
    }

private:
    void grow() noexcept;

    int rows = 0;
    std::uintptr_t nearEnd = 0; ///< of the new room
    std::uintptr_t end = 0;     ///< see nearEnd
};

} // namespace ZEP::Core
