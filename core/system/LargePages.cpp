// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/LargePages.h"

#include <sys/mman.h>

#include <memory>

namespace ZEP::Core
{

void preferLargePages (void* memory, std::size_t bytes) noexcept
{
#ifdef MADV_HUGEPAGE
    constexpr std::size_t largePage = 2 * 1024 * 1024;

    if (std::align (largePage, largePage, memory, bytes) != nullptr)
        ::madvise (memory, bytes / largePage * largePage, MADV_HUGEPAGE);
#else
    static_cast<void> (memory);
    static_cast<void> (bytes);
#endif
}

} // namespace ZEP::Core
