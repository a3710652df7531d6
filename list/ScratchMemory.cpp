// SPDX-License-Identifier: GPL-3.0-only
#include "list/ScratchMemory.h"

#include "core/system/LargePages.h"
#include "core/system/ProcessLifetime.h"

#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <mutex>
#include <new>
#include <utility>

namespace ZEP::Overmarks
{

namespace
{

constexpr std::size_t largePage = 2 * 1024 * 1024;

/** As long as whole large pages. */
std::size_t mappedFor (std::size_t bytes) { return (bytes + largePage - 1) / largePage * largePage; }

/** The pages that were given back last, for the next edit of the same list, unless they are very many. They are one thread's as well as
    another's: to have some of its own a thread would have to ask the crowded heap for a note of it. */
class KeptPages final
{
public:
    void* taken (std::size_t size)
    {
        const std::scoped_lock lock (mutex);
        const auto found = std::find_if (blocks.begin(), blocks.end(),
                                         [size] (const Block& block) { return block.size == size; });
        return found != blocks.end() ? std::exchange (*found, {}).pages : nullptr;
    }

    /** A list of a million is sorted with pages that go back at once. */
    void keep (void* pages, std::size_t size)
    {
        const std::scoped_lock lock (mutex);
        Block moved { pages, size };
        std::size_t sum = 0;

        if (size <= most)
            for (auto& block : blocks)
            {
                if (moved.pages != nullptr) // no gap has been filled yet
                    std::swap (block, moved);

                if (sum + block.size > most)
                    giveBack (std::exchange (block, {}));

                sum += block.size;
            }

        giveBack (moved);
    }

private:
    struct Block
    {
        void* pages = nullptr;
        std::size_t size = 0;
    };

    static void giveBack (const Block& block)
    {
        if (block.pages != nullptr)
            ::munmap (block.pages, block.size);
    }

    static constexpr std::size_t most = 4 * largePage;

    std::mutex mutex;
    std::array<Block, most / largePage> blocks; ///< the last one given is the first one here
};

void* newPages (std::size_t mapped)
{
    auto* const pages = ::mmap (nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);

    if (pages == MAP_FAILED)
        throw std::bad_alloc();

    Core::useLargePages (pages, mapped);
#ifdef MADV_POPULATE_WRITE
    ::madvise (pages, mapped, MADV_POPULATE_WRITE);
#endif

    return pages;
}

class PagesOfTheSystem final : public std::pmr::memory_resource
{
    static constexpr std::size_t much = 512 * 1024; // less than that is found in the heap more quickly

    void* do_allocate (std::size_t bytes, std::size_t alignment) override
    {
        if (bytes < much)
            return std::pmr::new_delete_resource()->allocate (bytes, alignment);

        auto* const pages = kept.taken (mappedFor (bytes));
        return pages != nullptr ? pages : newPages (mappedFor (bytes));
    }

    void do_deallocate (void* memory, std::size_t bytes, std::size_t alignment) override
    {
        if (bytes < much)
            std::pmr::new_delete_resource()->deallocate (memory, bytes, alignment);
        else
            kept.keep (memory, mappedFor (bytes));
    }

    bool do_is_equal (const std::pmr::memory_resource& other) const noexcept override
    {
        return this == &other;
    }

    KeptPages kept;
};

} // namespace

std::pmr::memory_resource* scratchMemory() noexcept
{
    static const Core::ProcessLifetime<PagesOfTheSystem> pages;
    return &pages.get();
}

} // namespace ZEP::Overmarks
