// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/PackedWorkbook.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace ZEP::Core
{

namespace
{

void require (bool succeeded)
{
    if (! succeeded)
        throw std::system_error (errno, std::generic_category());
}

} // namespace

PackedWorkbook::PackedWorkbook() : descriptor (::memfd_create ("workbook", MFD_CLOEXEC))
{
    require (descriptor >= 0);
}

PackedWorkbook::~PackedWorkbook()
{
    if (begin != nullptr)
        ::munmap (begin, length);

    ::close (descriptor);
}

std::string PackedWorkbook::path() const { return "/proc/self/fd/" + std::to_string (descriptor); }

std::string_view PackedWorkbook::bytes()
{
    struct stat status
    {
    };
    require (::fstat (descriptor, &status) == 0);

    if (status.st_size == 0)
        return {};

    auto* const mapped =
        ::mmap (nullptr, static_cast<std::size_t> (status.st_size), PROT_READ, MAP_PRIVATE, descriptor, 0);
    require (mapped != MAP_FAILED);
    begin = mapped;
    length = static_cast<std::size_t> (status.st_size);
    return { static_cast<const char*> (begin), length };
}

} // namespace ZEP::Core
