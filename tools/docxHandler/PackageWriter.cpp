// SPDX-License-Identifier: GPL-3.0-only
#include "PackageWriter.h"

#include "DeflatedPart.h"
#include "Failure.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <numeric>
#include <zip.h>

namespace DocxHandler
{

namespace
{

[[noreturn]] void failPacking() { throw Failure ("The document can't be packed"); }

struct SourceRelease
{
    void operator() (zip_source_t* source) const noexcept { ::zip_source_free (source); }
};

struct ArchiveDiscard
{
    void operator() (zip_t* archive) const noexcept { ::zip_discard (archive); }
};

using Source = std::unique_ptr<zip_source_t, SourceRelease>;
using Archive = std::unique_ptr<zip_t, ArchiveDiscard>;

Archive archiveInto (const Source& bytes)
{
    Archive archive (::zip_open_from_source (bytes.get(), ZIP_TRUNCATE, nullptr));

    if (! archive)
        failPacking();

    ::zip_source_keep (bytes.get()); // the archive has taken over one hold on it, the other is the caller's
    return archive;
}

/* @param part  is read when the archive is closed */
void addTo (zip_t* archive, const std::string& name, DeflatedPart& part)
{
    constexpr zip_uint16_t firstDay = (0U << 9U) | (1U << 5U) | 1U; // 1 January 1980
    Source source (::zip_source_function (archive, &DeflatedPart::answer, &part));

    if (! source)
        failPacking();

    const auto index = ::zip_file_add (archive, name.c_str(), source.get(), ZIP_FL_ENC_UTF_8);

    if (index < 0)
        failPacking();

    static_cast<void> (source.release());

    if (::zip_file_set_dostime (archive, static_cast<zip_uint64_t> (index), 0, firstDay, 0) != 0)
        failPacking();
}

std::string contentOf (zip_source_t* bytes)
{
    zip_stat_t state;
    ::zip_stat_init (&state);

    if (::zip_source_stat (bytes, &state) != 0 || ::zip_source_open (bytes) != 0)
        failPacking();

    std::string result (state.size, '\0');
    const auto length = ::zip_source_read (bytes, result.data(), result.size());
    ::zip_source_close (bytes);

    if (length < 0 || static_cast<std::size_t> (length) != result.size())
        failPacking();

    return result;
}

} // namespace

PackageWriter::PackageWriter() = default;
PackageWriter::~PackageWriter() = default;

void PackageWriter::add (std::string_view name, std::string content)
{
    parts.push_back ({ std::string (name), std::move (content) });
}

std::string PackageWriter::finish (const std::function<void (double)>& progress)
{
    const Source bytes (::zip_source_buffer_create (nullptr, 0, 0, nullptr));

    if (! bytes)
        failPacking();

    std::deque<DeflatedPart> deflated; // kept until the archive is closed, each in its place
    auto archive = archiveInto (bytes);
    const auto total =
        std::accumulate (parts.begin(), parts.end(), std::size_t { 0 },
                         [] (std::size_t sum, const Part& part) { return sum + part.content.size(); });
    std::size_t done = 0;

    for (const auto& [name, content] : parts)
    {
        addTo (archive.get(), name, deflated.emplace_back (content));
        done += content.size();
        progress (static_cast<double> (done) / static_cast<double> (std::max<std::size_t> (total, 1)));
    }

    if (::zip_close (archive.get()) != 0)
        failPacking();

    static_cast<void> (archive.release());
    return contentOf (bytes.get());
}

} // namespace DocxHandler
