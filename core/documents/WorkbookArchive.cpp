// SPDX-License-Identifier: GPL-3.0-only
// What the first bytes of a file tell:
//
//   offset  length  meaning
//   0       4       50 4B 03 04: a ZIP archive; 50 4B 05 06: one without parts
//   0       8       D0 CF 11 E0 A1 B1 1A E1: a compound file. Its directory names its streams in UTF-16, little-endian:
//                   "EncryptedPackage" of a protected workbook, "Workbook" or "Book" of one of the old kind
#include "core/documents/WorkbookArchive.h"

#include "core/documents/PartXML.h"
#include "core/documents/UnreadableWorkbook.h"

#include <zip.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace ZEP::Core
{
namespace
{

using namespace std::string_view_literals;

constexpr auto startOfArchive = "PK\x03\x04"sv;
constexpr auto startOfEmptyArchive = "PK\x05\x06"sv;
constexpr auto startOfCompoundFile = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv;

/** The directory of a compound file may lie anywhere; that of a workbook of this size is found. */
constexpr std::size_t mostBytesOfCompoundFile = std::size_t { 64 } << 20;

constexpr std::size_t bytesOfPiece = std::size_t { 1 } << 16;

std::string inUTF16 (std::string_view name)
{
    std::string bytes;

    for (const char letter : name)
        bytes.append ({ letter, '\0' });

    return bytes;
}

[[noreturn]] void fail (const char* words) { throw UnreadableWorkbook (words); }

[[noreturn]] void refuseCompoundFile (std::ifstream& stream)
{
    std::string bytes (mostBytesOfCompoundFile, '\0');
    stream.read (bytes.data(), static_cast<std::streamsize> (bytes.size()));
    bytes.resize (static_cast<std::size_t> (stream.gcount()));
    const auto holds = [&bytes] (std::string_view name)
    { return bytes.find (inUTF16 (name)) != std::string::npos; };

    if (holds ("EncryptedPackage"))
        fail (WorkbookWords::isProtected);

    fail (holds ("Workbook") || holds ("Book") ? WorkbookWords::isOldWorkbook : WorkbookWords::isNoWorkbook);
}

/** Looks at the first bytes of a file. Returns only for an archive. */
void refuseOtherFiles (const std::string& path)
{
    std::error_code error;

    if (! std::filesystem::is_regular_file (path, error)) // to open a pipe may mean to wait for ever
        fail (WorkbookWords::cantBeOpened);

    std::ifstream stream (path, std::ios::binary);

    if (! stream.is_open())
        fail (WorkbookWords::cantBeOpened);

    std::array<char, startOfCompoundFile.size()> buffer {};
    stream.read (buffer.data(), buffer.size());
    const std::string_view start (buffer.data(), static_cast<std::size_t> (stream.gcount()));
    stream.clear();

    if (start.empty())
        fail (WorkbookWords::isEmpty);
    if (start == startOfCompoundFile)
        refuseCompoundFile (stream);
    if (! start.starts_with (startOfArchive) && ! start.starts_with (startOfEmptyArchive))
        fail (WorkbookWords::isNoWorkbook);
}

} // namespace

/** The open archive. */
struct WorkbookArchive::Zip
{
    explicit Zip (const std::string& path) : handle (zip_open (path.c_str(), ZIP_RDONLY, nullptr))
    {
        if (handle == nullptr)
            fail (WorkbookWords::isDamaged);
    }

    ~Zip() { zip_discard (handle); }

    Zip (const Zip&) = delete;
    Zip& operator= (const Zip&) = delete;

    zip_uint64_t size() const { return static_cast<zip_uint64_t> (zip_get_num_entries (handle, 0)); }

    zip_int64_t indexOf (const std::string& part) const
    {
        return zip_name_locate (handle, part.c_str(), ZIP_FL_NOCASE | ZIP_FL_ENC_GUESS);
    }

    zip_stat_t entry (zip_uint64_t index) const
    {
        zip_stat_t stat;
        zip_stat_init (&stat);
        constexpr zip_uint64_t needed = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_ENCRYPTION_METHOD;

        if (zip_stat_index (handle, index, 0, &stat) != 0 || (stat.valid & needed) != needed)
            fail (WorkbookWords::isDamaged);

        return stat;
    }

    zip_t* handle;
};

WorkbookArchive::WorkbookArchive (const juce::String& path, const Limits& limitsToKeep)
    : limits (limitsToKeep)
{
    const auto file = path.toStdString();
    refuseOtherFiles (file);
    zip = std::make_unique<Zip> (file);

    if (zip->size() > limits.parts)
        fail (WorkbookWords::isTooLarge);

    judgeContent();
}

WorkbookArchive::~WorkbookArchive() = default;

void WorkbookArchive::judgeContent() const
{
    std::uint64_t packed = 0;
    std::uint64_t inflated = 0;

    for (zip_uint64_t i = 0; i < zip->size(); ++i)
    {
        const auto entry = zip->entry (i);

        if (entry.encryption_method != ZIP_EM_NONE)
            fail (WorkbookWords::isProtected);
        if (entry.size > limits.bytesOfPart)
            fail (WorkbookWords::isTooLarge);

        inflated += entry.size;
        packed += std::min<std::uint64_t> (entry.comp_size, limits.bytes);

        if (inflated > limits.bytes)
            fail (WorkbookWords::isTooLarge);
    }

    if (inflated > limits.smallBytes && inflated / limits.ratio > packed)
        fail (WorkbookWords::isTooLarge);
}

bool WorkbookArchive::has (const std::string& part) const { return zip->indexOf (part) >= 0; }

void WorkbookArchive::read (const std::string& part, const std::function<void (std::string_view)>& take) const
{
    const auto index = zip->indexOf (part);

    if (index < 0)
        fail (WorkbookWords::isDamaged);

    auto left = zip->entry (static_cast<zip_uint64_t> (index)).size;
    const std::unique_ptr<zip_file_t, int (*) (zip_file_t*)> file (
        zip_fopen_index (zip->handle, static_cast<zip_uint64_t> (index), 0), zip_fclose);

    if (file == nullptr)
        fail (WorkbookWords::isDamaged);

    std::string piece (bytesOfPiece, '\0');

    for (;;)
    {
        const auto length = zip_fread (file.get(), piece.data(), piece.size());

        if (length < 0 || static_cast<zip_uint64_t> (length) > left)
            fail (WorkbookWords::isDamaged);
        if (length == 0)
            break;

        left -= static_cast<zip_uint64_t> (length);
        take (std::string_view (piece.data(), static_cast<std::size_t> (length)));
    }

    if (left > 0)
        fail (WorkbookWords::isDamaged);
}

std::string WorkbookArchive::bytesOf (const std::string& part) const
{
    std::string bytes;
    read (part, [&bytes] (std::string_view piece) { bytes += piece; });
    return bytes;
}

std::uint64_t WorkbookArchive::walkThrough (const std::string& part, PartXML& walk) const
{
    std::uint64_t bytes = 0;
    read (part,
          [&] (std::string_view piece)
          {
              bytes += piece.size();
              walk.take (piece);
          });
    walk.finish();
    return bytes;
}

} // namespace ZEP::Core
