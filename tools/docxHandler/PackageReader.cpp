// SPDX-License-Identifier: GPL-3.0-only
#include "PackageReader.h"

#include "Failure.h"
#include "core/system/CappedNumbers.h"

#include <algorithm>
#include <array>
#include <zip.h>

namespace DocxHandler
{

namespace
{

constexpr zip_int64_t mostParts = 10000;

/* What all parts together may say that they become, also those that are never read: as much as those of a workbook. */
constexpr std::uint64_t mostBytesOfPart = std::uint64_t { 512 } << 20U;
constexpr std::uint64_t mostBytes = std::uint64_t { 1 } << 30U;
constexpr std::uint64_t mostRatio = 200; // unpacked to packed, of a package that isn't small
constexpr std::uint64_t smallBytes = std::uint64_t { 32 } << 20U;

struct FileClose
{
    void operator() (zip_file_t* file) const noexcept { ::zip_fclose (file); }
};

/* The first bytes tell what a file is, whatever it is called. */
void refuseOtherFiles (std::string_view bytes)
{
    constexpr std::string_view compoundFile ("\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1", 8);

    if (bytes.empty())
        throw Failure ("is empty");

    // A document with a password lies in such a file, and so does every document of the old kind.
    if (bytes.starts_with (compoundFile))
        throw Failure ("is encrypted or a document of the old .doc kind");

    if (! bytes.starts_with ("PK"))
        throw Failure ("is no Word document");
}

} // namespace

void PackageReader::ArchiveDiscard::operator() (zip* opened) const noexcept { ::zip_discard (opened); }

PackageReader::PackageReader (std::string_view bytes)
{
    refuseOtherFiles (bytes);
    auto* source = ::zip_source_buffer_create (bytes.data(), bytes.size(), 0, nullptr);

    if (source == nullptr)
        throw Failure ("can't be unpacked");

    archive.reset (::zip_open_from_source (source, ZIP_RDONLY, nullptr));

    if (! archive)
    {
        ::zip_source_free (source);
        throw Failure ("is damaged or cut short");
    }

    if (::zip_get_num_entries (archive.get(), 0) > mostParts)
        throw Failure ("has too many parts for a Word document");

    judgeContent (bytes.size());
}

zip_stat_t PackageReader::stateOf (std::uint64_t index) const
{
    constexpr zip_uint64_t needed = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_ENCRYPTION_METHOD;
    zip_stat_t state;
    ::zip_stat_init (&state);

    if (::zip_stat_index (archive.get(), index, 0, &state) != 0 || (state.valid & needed) != needed)
        throw Failure ("is damaged or cut short");

    return state;
}

void PackageReader::judgeContent (std::uint64_t bytesOfPackage) const
{
    const auto parts = static_cast<std::uint64_t> (::zip_get_num_entries (archive.get(), 0));
    std::uint64_t packed = 0;
    std::uint64_t unpacked = 0;

    for (std::uint64_t index = 0; index < parts; ++index)
    {
        const auto state = stateOf (index);
        unpacked = ZEP::Core::cappedSum (unpacked, state.size);
        packed = ZEP::Core::cappedSum (packed, state.comp_size);

        if (state.size > mostBytesOfPart || unpacked > mostBytes)
            throw Failure ("is too large when unpacked");
    }

    packed = std::min (packed, bytesOfPackage); // the directory says of the parts what it likes

    if (unpacked > smallBytes && unpacked / mostRatio > packed)
        throw Failure ("is too large when unpacked");
}

bool PackageReader::has (const std::string& part) const
{
    return ::zip_name_locate (archive.get(), part.c_str(), 0) >= 0;
}

std::string PackageReader::read (const std::string& part, std::size_t largest) const
{
    const auto index = ::zip_name_locate (archive.get(), part.c_str(), 0);

    if (index < 0)
        return {};

    const auto state = stateOf (static_cast<std::uint64_t> (index));

    if (state.encryption_method != ZIP_EM_NONE)
        throw Failure ("is encrypted");

    if (state.size > largest)
        throw Failure ("is too large when unpacked");

    const std::unique_ptr<zip_file_t, FileClose> file (
        ::zip_fopen_index (archive.get(), static_cast<zip_uint64_t> (index), 0));

    if (! file)
        throw Failure ("is damaged or cut short");

    std::string bytes;
    std::array<char, 65536> buffer {};

    for (;;)
    {
        const auto length = ::zip_fread (file.get(), buffer.data(), buffer.size());

        if (length < 0)
            throw Failure ("is damaged or cut short");

        if (length == 0)
            return bytes;

        bytes.append (buffer.data(), static_cast<std::size_t> (length));

        if (bytes.size() > largest)
            throw Failure ("is too large when unpacked");
    }
}

} // namespace DocxHandler
