// SPDX-License-Identifier: GPL-3.0-only
#include "memory/MemoryBudget.h"

#include <malloc.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>

namespace
{

constexpr auto unlimited = std::numeric_limits<std::int64_t>::max();

thread_local std::int64_t bytesLeft = unlimited;

void spend (void* memory, int sign) noexcept
{
    if (bytesLeft != unlimited)
        bytesLeft -= sign * static_cast<std::int64_t> (::malloc_usable_size (memory));
}

constexpr std::align_val_t usual { __STDCPP_DEFAULT_NEW_ALIGNMENT__ };

/** Null where there is no memory. */
void* allocate (std::size_t size, std::align_val_t alignment = usual) noexcept
{
    if (bytesLeft != unlimited && size > static_cast<std::size_t> (bytesLeft < 0 ? 0 : bytesLeft))
        return nullptr;

    void* memory = nullptr;
    const auto wanted = size > 0 ? size : 1;
    const auto boundary = std::max (static_cast<std::size_t> (alignment), sizeof (void*)); // it takes no less

    if (::posix_memalign (&memory, boundary, wanted) != 0)
        return nullptr;

    spend (memory, 1);
    return memory;
}

void* allocateOrThrow (std::size_t size, std::align_val_t alignment = usual)
{
    if (auto* const memory = allocate (size, alignment))
        return memory;

    throw std::bad_alloc();
}

void release (void* memory) noexcept
{
    if (memory != nullptr)
        spend (memory, -1);

    std::free (memory);
}

} // namespace

void* operator new (std::size_t size) { return allocateOrThrow (size); }
void* operator new[] (std::size_t size) { return allocateOrThrow (size); }
void* operator new (std::size_t size, const std::nothrow_t&) noexcept { return allocate (size); }
void* operator new[] (std::size_t size, const std::nothrow_t&) noexcept { return allocate (size); }
void* operator new (std::size_t size, std::align_val_t alignment)
{
    return allocateOrThrow (size, alignment);
}
void* operator new[] (std::size_t size, std::align_val_t alignment)
{
    return allocateOrThrow (size, alignment);
}
void* operator new (std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept
{
    return allocate (size, alignment);
}
void* operator new[] (std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept
{
    return allocate (size, alignment);
}
void operator delete (void* memory) noexcept { release (memory); }
void operator delete[] (void* memory) noexcept { release (memory); }
void operator delete (void* memory, std::size_t) noexcept { release (memory); }
void operator delete[] (void* memory, std::size_t) noexcept { release (memory); }
void operator delete (void* memory, const std::nothrow_t&) noexcept { release (memory); }
void operator delete[] (void* memory, const std::nothrow_t&) noexcept { release (memory); }
void operator delete (void* memory, std::align_val_t) noexcept { release (memory); }
void operator delete[] (void* memory, std::align_val_t) noexcept { release (memory); }
void operator delete (void* memory, std::size_t, std::align_val_t) noexcept { release (memory); }
void operator delete[] (void* memory, std::size_t, std::align_val_t) noexcept { release (memory); }
void operator delete (void* memory, std::align_val_t, const std::nothrow_t&) noexcept { release (memory); }
void operator delete[] (void* memory, std::align_val_t, const std::nothrow_t&) noexcept { release (memory); }

namespace ZEP::Overmarks::Testing
{

MemoryBudget::MemoryBudget (std::size_t bytes) noexcept { bytesLeft = static_cast<std::int64_t> (bytes); }
MemoryBudget::~MemoryBudget() { bytesLeft = unlimited; }

} // namespace ZEP::Overmarks::Testing
