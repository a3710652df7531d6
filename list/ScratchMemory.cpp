// SPDX-License-Identifier: GPL-3.0-only
#include "list/ScratchMemory.h"

#include "core/system/LargePages.h"
#include "core/system/ProcessLifetime.h"

#include <sys/mman.h>

#include <cstddef>
#include <new>
#include <utility>

namespace ZEP::Overmarks
{

namespace
{

/** As long as whole large pages. */
std::size_t mappedFor (std::size_t bytes)
{
    constexpr std::size_t largePage = 2 * 1024 * 1024;
    return (bytes + largePage - 1) / largePage * largePage;
}

/** The pages of a thread that were given back last, for the next sort of the same list, unless they are very many. */
class KeptPages final
{
public:
    KeptPages() = default;
    KeptPages (const KeptPages&) = delete;
    KeptPages& operator= (const KeptPages&) = delete;
    ~KeptPages() { keep (nullptr, 0); }

    void* taken (std::size_t mapped)
    {
        if (mapped != size)
            return nullptr;

        size = 0;
        return std::exchange (pages, nullptr);
    }

    /** A list of a million is sorted with pages that go back at once. */
    void keep (void* given, std::size_t mapped)
    {
        constexpr std::size_t most = std::size_t { 8 } << 20;

        if (mapped <= most)
        {
            std::swap (pages, given);
            std::swap (size, mapped);
        }

        if (given != nullptr)
            ::munmap (given, mapped);
    }

private:
    void* pages = nullptr;
    std::size_t size = 0;
};

thread_local KeptPages kept;

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
};

} // namespace

std::pmr::memory_resource* scratchMemory() noexcept
{
    static const Core::ProcessLifetime<PagesOfTheSystem> pages;
    return &pages.get();
}

} // namespace ZEP::Overmarks
