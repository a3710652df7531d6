// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <zip.h>

namespace DocxHandler
{

/** A part of a package, packed as the ZIP file will hold it. The library of ZIP files, which would take twice the time for that,
    only has to copy it. */
class DeflatedPart final
{
public:
    /** Throws std::bad_alloc. */
    explicit DeflatedPart (std::string_view content);

    /** Gives the library what it asks for. @param part  this object */
    static zip_int64_t answer (void* part, void* data, zip_uint64_t length,
                               zip_source_cmd_t question) noexcept;

private:
    [[nodiscard]] zip_int64_t read (void* data, zip_uint64_t length) noexcept;
    [[nodiscard]] zip_int64_t describe (void* data) const noexcept;

    std::string packed;
    std::size_t place = 0; ///< of what is read next
    std::uint64_t sizeOfContent;
    std::uint32_t checksum;
};

} // namespace DocxHandler
