// SPDX-License-Identifier: GPL-3.0-only
#include "PackageWriter.h"

#include "Failure.h"

#include <zip.h>

namespace DocxHandler
{

namespace
{

[[noreturn]] void failPacking() { throw Failure ("The document can't be packed"); }

} // namespace

void PackageWriter::SourceRelease::operator() (zip_source* source) const noexcept
{
    ::zip_source_free (source);
}

void PackageWriter::ArchiveDiscard::operator() (zip* opened) const noexcept { ::zip_discard (opened); }

PackageWriter::PackageWriter()
{
    bytes.reset (::zip_source_buffer_create (nullptr, 0, 0, nullptr));

    if (! bytes)
        failPacking();

    archive.reset (::zip_open_from_source (bytes.get(), ZIP_TRUNCATE, nullptr));

    if (! archive)
        failPacking();

    ::zip_source_keep (bytes.get()); // the archive has taken over one hold on it, the other is ours
}

PackageWriter::~PackageWriter() = default;

void PackageWriter::add (std::string_view name, std::string content)
{
    constexpr zip_uint16_t firstDay = (0U << 9U) | (1U << 5U) | 1U; // 1 January 1980
    contents.push_back (std::move (content));
    const auto& kept = contents.back();
    auto* source = ::zip_source_buffer (archive.get(), kept.data(), kept.size(), 0);

    if (source == nullptr)
        failPacking();

    const auto index = ::zip_file_add (archive.get(), std::string (name).c_str(), source, ZIP_FL_ENC_UTF_8);

    if (index < 0)
    {
        ::zip_source_free (source);
        failPacking();
    }

    if (::zip_file_set_dostime (archive.get(), static_cast<zip_uint64_t> (index), 0, firstDay, 0) != 0
        || ::zip_set_file_compression (archive.get(), static_cast<zip_uint64_t> (index), ZIP_CM_DEFLATE, 6)
               != 0)
        failPacking();
}

std::string PackageWriter::finish (const std::function<void (double)>& progress)
{
    const auto tell = [] (zip_t*, double share, void* listener)
    { (*static_cast<const std::function<void (double)>*> (listener)) (share); };
    auto listener = progress;
    constexpr double step = 0.05;
    ::zip_register_progress_callback_with_state (archive.get(), step, tell, nullptr, &listener);

    if (::zip_close (archive.get()) != 0)
        failPacking();

    static_cast<void> (archive.release());
    zip_stat_t state;
    ::zip_stat_init (&state);

    if (::zip_source_stat (bytes.get(), &state) != 0 || ::zip_source_open (bytes.get()) != 0)
        failPacking();

    std::string result (state.size, '\0');
    const auto length = ::zip_source_read (bytes.get(), result.data(), result.size());
    ::zip_source_close (bytes.get());

    if (length < 0 || static_cast<std::size_t> (length) != result.size())
        failPacking();

    return result;
}

} // namespace DocxHandler
