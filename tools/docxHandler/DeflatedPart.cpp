// SPDX-License-Identifier: GPL-3.0-only
#include "DeflatedPart.h"

#include <algorithm>
#include <cstring>
#include <libdeflate.h>
#include <memory>
#include <new>

namespace DocxHandler
{

namespace
{

constexpr int level = 6; // more takes longer than it makes a document smaller

struct Free
{
    void operator() (libdeflate_compressor* compressor) const { ::libdeflate_free_compressor (compressor); }
};

std::string deflated (std::string_view content)
{
    const std::unique_ptr<libdeflate_compressor, Free> compressor (::libdeflate_alloc_compressor (level));

    if (compressor == nullptr)
        throw std::bad_alloc();

    // Room for the worst case, so that it can't fail; memory that nothing is written to takes none.
    const auto room = ::libdeflate_deflate_compress_bound (compressor.get(), content.size());
    const std::unique_ptr<char[]> bytes (new char[room]);
    const auto length =
        ::libdeflate_deflate_compress (compressor.get(), content.data(), content.size(), bytes.get(), room);

    return { bytes.get(), length };
}

} // namespace

DeflatedPart::DeflatedPart (std::string_view content)
    : packed (deflated (content)),
      sizeOfContent (content.size()),
      checksum (::libdeflate_crc32 (0, content.data(), content.size()))
{
}

zip_int64_t DeflatedPart::answer (void* part, void* data, zip_uint64_t length,
                                  zip_source_cmd_t question) noexcept
{
    auto& self = *static_cast<DeflatedPart*> (part);

    switch (question)
    {
        case ZIP_SOURCE_OPEN: self.place = 0; return 0;
        case ZIP_SOURCE_READ: return self.read (data, length);
        case ZIP_SOURCE_STAT: return self.describe (data);
        case ZIP_SOURCE_CLOSE:
        case ZIP_SOURCE_FREE:
        case ZIP_SOURCE_ERROR: return 0; // nothing can fail, and the object isn't the library's
        case ZIP_SOURCE_SUPPORTS:
            return ::zip_source_make_command_bitmap (ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE,
                                                     ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, -1);
        default: return -1;
    }
}

zip_int64_t DeflatedPart::read (void* data, zip_uint64_t length) noexcept
{
    const auto number = std::min<std::size_t> (length, packed.size() - place);
    std::memcpy (data, packed.data() + place, number);
    place += number;
    return static_cast<zip_int64_t> (number);
}

zip_int64_t DeflatedPart::describe (void* data) const noexcept
{
    auto& state = *static_cast<zip_stat_t*> (data);
    ::zip_stat_init (&state);
    state.size = sizeOfContent;
    state.comp_size = packed.size();
    state.comp_method = ZIP_CM_DEFLATE;
    state.crc = checksum;
    state.valid = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_CRC;
    return sizeof (state);
}

} // namespace DocxHandler
