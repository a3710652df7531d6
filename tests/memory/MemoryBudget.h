// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstddef>

namespace ZEP::Overmarks::Testing
{

/** While it lasts, its thread gets no more than so much memory beside what it has: whatever would take more of it by `new`
    throws std::bad_alloc. One at a time.

    It replaces the allocation functions of its program, which is therefore one of its own, and works with every preset, since no
    limit of the system is involved. */
class MemoryBudget final
{
public:
    explicit MemoryBudget (std::size_t bytes) noexcept;
    MemoryBudget (const MemoryBudget&) = delete;
    MemoryBudget& operator= (const MemoryBudget&) = delete;
    ~MemoryBudget();
};

} // namespace ZEP::Overmarks::Testing
