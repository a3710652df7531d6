// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <memory_resource>
#include <vector>

namespace ZEP::Overmarks
{

/** Memory for what is needed while a list is put in order, and then no more. Much of it comes from the system, all pages at once: after a
    large file has been read, the heap is so full of small gaps that looking for a large one takes as long as the sort. Up to 8 MiB of what
    was given back last are kept for the next edit. From any thread. */
std::pmr::memory_resource* scratchMemory() noexcept;

/** Items that live as long as a sort. */
template <typename Item>
class ScratchVector final : public std::pmr::vector<Item>
{
public:
    ScratchVector() : std::pmr::vector<Item> (scratchMemory()) {}

    /** The items, in scratch memory too, where a vector would take the heap's. */
    ScratchVector (const ScratchVector& other) : std::pmr::vector<Item> (other, scratchMemory()) {}

    ScratchVector (ScratchVector&&) noexcept = default;        ///< The other one is empty then.
    ScratchVector& operator= (const ScratchVector&) = default; ///< Copies the items.
    ScratchVector& operator= (ScratchVector&&) = default;      ///< The other one is empty then.
    ~ScratchVector() = default;
};

} // namespace ZEP::Overmarks
