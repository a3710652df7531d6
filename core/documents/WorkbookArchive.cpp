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
#include "core/system/CappedNumbers.h"
#include "core/system/FileInput.h"

#include <zip.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <unordered_map>

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

/** As a directory looks names up: only letters of ASCII have two cases. */
std::string inSmallLetters (std::string name)
{
    std::transform (name.begin(), name.end(), name.begin(),
                    [] (char c) { return c >= 'A' && c <= 'Z' ? static_cast<char> (c - 'A' + 'a') : c; });
    return name;
}

[[noreturn]] void fail (const char* words) { throw UnreadableWorkbook (words); }

[[noreturn]] void refuseCompoundFile (FileInput& file)
{
    file.setPosition (0);
    std::string bytes (mostBytesOfCompoundFile, '\0');
    bytes.resize (static_cast<std::size_t> (file.read (bytes.data(), static_cast<int> (bytes.size()))));

    if (file.getStatus().failed())
        fail (WorkbookWords::cantBeRead);

    const auto holds = [&bytes] (std::string_view name)
    { return bytes.find (inUTF16 (name)) != std::string::npos; };

    if (holds ("EncryptedPackage"))
        fail (WorkbookWords::isProtected);

    fail (holds ("Workbook") || holds ("Book") ? WorkbookWords::isOldWorkbook : WorkbookWords::isNoWorkbook);
}

/** Looks at the first bytes of a file. Returns only for an archive. */
void refuseOtherFiles (FileInput& file)
{
    std::array<char, startOfCompoundFile.size()> buffer {};
    const auto length = file.read (buffer.data(), static_cast<int> (buffer.size()));
    const std::string_view start (buffer.data(), static_cast<std::size_t> (length));

    if (file.getStatus().failed())
        fail (WorkbookWords::cantBeOpened);
    if (start.empty())
        fail (WorkbookWords::isEmpty);
    if (start == startOfCompoundFile)
        refuseCompoundFile (file);
    if (! start.starts_with (startOfArchive) && ! start.starts_with (startOfEmptyArchive))
        fail (WorkbookWords::isNoWorkbook);
}

} // namespace

/** The open archive. */
struct WorkbookArchive::Zip
{
    explicit Zip (const juce::String& path) : file (path)
    {
        refuseOtherFiles (file);
        auto* source = zip_source_function_create (answer, this, nullptr);

        if (source != nullptr)
            handle = zip_open_from_source (source, ZIP_RDONLY, nullptr);

        if (handle != nullptr)
            return;

        zip_source_free (source);
        failAsDamaged();
    }

    ~Zip() { zip_discard (handle); }

    Zip (const Zip&) = delete;
    Zip& operator= (const Zip&) = delete;

    zip_uint64_t size() const { return static_cast<zip_uint64_t> (zip_get_num_entries (handle, 0)); }

    /** The library would look through the whole directory for each name. Of parts with one name the first counts. */
    void learnNames()
    {
        for (zip_uint64_t i = 0; i < size(); ++i)
            if (const auto* const name = zip_get_name (handle, i, ZIP_FL_ENC_GUESS); name != nullptr)
                places.try_emplace (inSmallLetters (name), i);
    }

    std::optional<zip_uint64_t> indexOf (const std::string& part) const
    {
        const auto place = places.find (inSmallLetters (part));
        return place == places.end() ? std::nullopt : std::optional (place->second);
    }

    /** A missing part means damage. */
    zip_uint64_t placeOf (const std::string& part) const
    {
        const auto index = indexOf (part);

        if (! index.has_value())
            fail (WorkbookWords::isDamaged);

        return *index;
    }

    zip_stat_t entry (zip_uint64_t index) const
    {
        zip_stat_t stat;
        zip_stat_init (&stat);
        constexpr zip_uint64_t needed = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_ENCRYPTION_METHOD;

        if (zip_stat_index (handle, index, 0, &stat) != 0 || (stat.valid & needed) != needed)
            failAsDamaged();

        return stat;
    }

    /** What the archive makes no sense of is damaged, unless the disk gave nothing. */
    [[noreturn]] void failAsDamaged() const
    {
        fail (file.getStatus().failed() ? WorkbookWords::cantBeRead : WorkbookWords::isDamaged);
    }

    /** Of the archive itself. */
    std::uint64_t bytes() { return static_cast<std::uint64_t> (file.getTotalLength()); }

    zip_t* handle = nullptr;

private:
    /** Gives the library what it asks for. @returns -1 on failure */
    zip_int64_t answer (void* data, zip_uint64_t length, zip_source_cmd_t command)
    {
        // No enumeration of ours: most of the commands belong to writing.
        if (command == ZIP_SOURCE_SUPPORTS)
            return zip_source_make_command_bitmap (ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE,
                                                   ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE,
                                                   ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL, ZIP_SOURCE_SUPPORTS, -1);
        if (command == ZIP_SOURCE_OPEN)
            return file.setPosition (0) ? 0 : -1;
        if (command == ZIP_SOURCE_READ)
            return read (data, length);
        if (command == ZIP_SOURCE_TELL)
            return file.getPosition();
        if (command == ZIP_SOURCE_SEEK)
            return seek (data, length);
        if (command == ZIP_SOURCE_STAT)
            return tellSize (data);
        if (command == ZIP_SOURCE_ERROR)
            return tellError (data, length);

        return 0;
    }

    zip_int64_t read (void* data, zip_uint64_t length)
    {
        constexpr zip_uint64_t mostAtOnce = zip_uint64_t { 1 } << 30;
        const auto got = file.read (data, static_cast<int> (std::min (length, mostAtOnce)));
        return file.getStatus().failed() ? -1 : got;
    }

    zip_int64_t seek (void* data, zip_uint64_t length)
    {
        const auto place = zip_source_seek_compute_offset (static_cast<zip_uint64_t> (file.getPosition()),
                                                           static_cast<zip_uint64_t> (file.getTotalLength()),
                                                           data, length, nullptr);
        return place >= 0 && file.setPosition (place) ? 0 : -1;
    }

    zip_int64_t tellSize (void* data)
    {
        auto& stat = *static_cast<zip_stat_t*> (data);
        zip_stat_init (&stat);
        stat.valid = ZIP_STAT_SIZE;
        stat.size = static_cast<zip_uint64_t> (file.getTotalLength());
        return static_cast<zip_int64_t> (sizeof (stat));
    }

    static zip_int64_t tellError (void* data, zip_uint64_t length)
    {
        constexpr int codes[] = { ZIP_ER_READ, EIO };

        if (length < sizeof (codes))
            return -1;

        std::memcpy (data, codes, sizeof (codes));
        return static_cast<zip_int64_t> (sizeof (codes));
    }

    static zip_int64_t answer (void* zip, void* data, zip_uint64_t length, zip_source_cmd_t command)
    {
        return static_cast<Zip*> (zip)->answer (data, length, command);
    }

    FileInput file;
    std::unordered_map<std::string, zip_uint64_t> places; ///< of the parts, by their names in small letters
};

WorkbookArchive::WorkbookArchive (const juce::String& path) : zip (std::make_unique<Zip> (path))
{
    if (zip->size() > limits().parts)
        fail (WorkbookWords::isTooLarge);

    judgeContent();
    zip->learnNames();
}

WorkbookArchive::~WorkbookArchive() = default;

void WorkbookArchive::judgeContent() const
{
    const auto& most = limits();
    std::uint64_t packed = 0;
    std::uint64_t inflated = 0;

    for (zip_uint64_t i = 0; i < zip->size(); ++i)
    {
        const auto entry = zip->entry (i);

        if (entry.encryption_method != ZIP_EM_NONE)
            fail (WorkbookWords::isProtected);
        if (entry.size > most.bytesOfPart)
            fail (WorkbookWords::isTooLarge);

        inflated = cappedSum (inflated, entry.size);
        packed = cappedSum (packed, entry.comp_size);

        if (inflated > most.bytes)
            fail (WorkbookWords::isTooLarge);
    }

    packed = std::min (packed, zip->bytes()); // a directory says of its parts what it likes

    if (inflated > most.smallBytes && inflated / std::max<std::uint64_t> (most.ratio, 1) > packed)
        fail (WorkbookWords::isTooLarge);
}

bool WorkbookArchive::has (const std::string& part) const { return zip->indexOf (part).has_value(); }

std::uint64_t WorkbookArchive::sizeOf (const std::string& part) const
{
    return zip->entry (zip->placeOf (part)).size;
}

void WorkbookArchive::read (const std::string& part, const std::function<void (std::string_view)>& take) const
{
    const auto index = zip->placeOf (part);
    auto left = zip->entry (index).size;
    const std::unique_ptr<zip_file_t, int (*) (zip_file_t*)> file (zip_fopen_index (zip->handle, index, 0),
                                                                   zip_fclose);

    if (file == nullptr)
        zip->failAsDamaged();

    std::string piece (bytesOfPiece, '\0');

    for (;;)
    {
        const auto length = zip_fread (file.get(), piece.data(), piece.size());

        if (length < 0 || static_cast<zip_uint64_t> (length) > left)
            zip->failAsDamaged();
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

void WorkbookArchive::walkThrough (const std::string& part, PartXML& walk) const
{
    read (part, [&walk] (std::string_view piece) { walk.take (piece); });
    walk.finish();
}

} // namespace ZEP::Core
