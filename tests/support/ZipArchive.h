// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <zip.h>

#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** The files of an archive with their contents, in its order: what a workbook or a Word document is made of. */
using Parts = std::vector<std::pair<std::string, std::string>>;

namespace detail
{

template <typename Pointer>
Pointer orThrow (Pointer pointer, const char* what)
{
    if (pointer == nullptr)
        throw std::runtime_error (what);

    return pointer;
}

using Archive = std::unique_ptr<zip_t, void (*) (zip_t*)>;
using Source = std::unique_ptr<zip_source_t, void (*) (zip_source_t*)>;

/** The archive inside `source`, which stays the caller's. */
inline Archive archiveIn (zip_source_t* source, int flags)
{
    zip_source_keep (source);
    return { orThrow (zip_open_from_source (source, flags, nullptr), "no archive"), zip_discard };
}

inline Source sourceOf (const std::string& bytes)
{
    return { orThrow (zip_source_buffer_create (bytes.data(), bytes.size(), 0, nullptr), "no memory"),
             zip_source_free };
}

inline std::string bytesOf (zip_source_t* source)
{
    zip_stat_t status;

    if (zip_source_stat (source, &status) != 0 || zip_source_open (source) != 0)
        throw std::runtime_error ("the archive can't be read again");

    std::string bytes (status.size, '\0');
    zip_source_read (source, bytes.data(), bytes.size());
    zip_source_close (source);
    return bytes;
}

} // namespace detail

/** The bytes of an archive of these files.
    @param compression  ZIP_CM_DEFLATE or ZIP_CM_STORE */
inline std::string zipped (const Parts& parts, int compression = ZIP_CM_DEFLATE)
{
    const std::string nothing;
    const auto place = detail::sourceOf (nothing);
    auto archive = detail::archiveIn (place.get(), ZIP_TRUNCATE);

    for (const auto& [name, content] : parts)
    {
        auto* source = zip_source_buffer (archive.get(), content.data(), content.size(), 0);
        const auto index = zip_file_add (archive.get(), name.c_str(), source, ZIP_FL_ENC_UTF_8);
        constexpr zip_uint16_t noTime = 0;

        if (index < 0)
            throw std::runtime_error ("no such name in an archive: " + name);

        zip_set_file_compression (archive.get(), static_cast<zip_uint64_t> (index), compression, 0);
        zip_file_set_dostime (archive.get(), static_cast<zip_uint64_t> (index), noTime, 0x21,
                              0); // 1980-01-01
    }

    if (zip_close (archive.get()) != 0)
        throw std::runtime_error ("the archive can't be made");

    archive.release();
    return detail::bytesOf (place.get());
}

/** The files of an archive. A damaged one is a failure of the test. */
inline Parts unzipped (const std::string& bytes)
{
    const auto place = detail::sourceOf (bytes);
    const auto archive = detail::archiveIn (place.get(), ZIP_RDONLY | ZIP_CHECKCONS);
    Parts parts;

    for (zip_int64_t i = 0; i < zip_get_num_entries (archive.get(), 0); ++i)
    {
        const auto index = static_cast<zip_uint64_t> (i);
        auto* file = detail::orThrow (zip_fopen_index (archive.get(), index, 0), "a part can't be read");
        std::string content;
        std::array<char, 4096> piece;
        zip_int64_t length = 0;

        while ((length = zip_fread (file, piece.data(), piece.size())) > 0)
            content.append (piece.data(), static_cast<std::size_t> (length));

        EXPECT_EQ (length, 0) << "part " << i << " is damaged";
        EXPECT_EQ (zip_fclose (file), 0) << "part " << i << " is damaged";
        parts.emplace_back (zip_get_name (archive.get(), index, 0), content);
    }

    return parts;
}

/** The content of one file of an archive; a test fails if there is none. */
inline std::string partNamed (const Parts& parts, const std::string& name)
{
    for (const auto& [partName, content] : parts)
        if (partName == name)
            return content;

    ADD_FAILURE() << "there is no part " << name;
    return {};
}

} // namespace ZEP::Overmarks::Testing
