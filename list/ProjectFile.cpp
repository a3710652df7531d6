// SPDX-License-Identifier: GPL-3.0-only
// The file of a project. Numbers have their lowest byte first.
//
//   offset  length  meaning
//        0       8  mark: 89 4F 56 4D 0D 0A 1A 0A. The first byte is no text, and the line ends tell when a program has copied
//                   the file as if it were text
//        8       4  version of this form; a reader refuses a higher one. Fields that a reader may pass over don't raise it
//       12       4  CRC-32 of the record
//       16       8  length of the record in bytes, at most 1 073 741 800, which makes a file of 1 GB, unless an application has
//                   raised ProjectFile::limits()
//       24          the record, a tessera1::ProtoProject; nothing follows it
#include "list/ProjectFile.h"

#include "core/system/FileInput.h"
#include "core/system/WholeFile.h"
#include "event/RecordWeight.h"
#include "list/ProjectRecord.h"
#include "list/RecordRepair.h"
#include "proto/overmarks.pb.h"

#include <Poco/Checksum.h>
#include <google/protobuf/arena.h>
#include <google/protobuf/stubs/logging.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <new>
#include <stdexcept>
#include <utility>

namespace ZEP::Overmarks
{

using tessera1::ProtoProject;

namespace
{

constexpr std::string_view mark { "\x89OVM\r\n\x1a\n", 8 };
constexpr std::size_t lengthOfMarkWithoutLineEnds = 4;
constexpr std::size_t versionOffset = 8, checksumOffset = 12, lengthOffset = 16, recordOffset = 24;

std::uint64_t longestRecord()
{
    constexpr std::uint64_t mostOfAnyRecord = std::numeric_limits<int>::max();
    const auto most = ProjectFile::limits().bytesOfFile;
    return std::min (most - std::min<std::uint64_t> (most, recordOffset), mostOfAnyRecord);
}

/** "1 GB", "3 MB", "5000 bytes". */
juce::String sizeInWords (std::uint64_t bytes)
{
    constexpr std::uint64_t gigabyte = std::uint64_t { 1 } << 30, megabyte = std::uint64_t { 1 } << 20;

    if (bytes % gigabyte == 0)
        return juce::String (bytes / gigabyte) + " GB";
    if (bytes % megabyte == 0)
        return juce::String (bytes / megabyte) + " MB";

    return juce::String (bytes) + " bytes";
}

juce::String mostInWords()
{
    constexpr std::uint64_t mostOfAnyFile = std::uint64_t { 1 } << 31;
    return sizeInWords (std::min (ProjectFile::limits().bytesOfFile, mostOfAnyFile));
}

/** What is wrong with a file, to be told behind its name. */
[[noreturn]] void fail (const juce::String& what) { throw std::invalid_argument (what.toStdString()); }

[[noreturn]] void failDamaged() { fail ("is damaged: its content is not what was saved"); }

[[noreturn]] void failUnintelligible() { fail ("is damaged: its records can't be understood"); }

std::uint32_t checksumOf (std::string_view record)
{
    Poco::Checksum checksum (Poco::Checksum::TYPE_CRC32);
    checksum.update (record.data(), static_cast<unsigned int> (record.size()));
    return checksum.checksum();
}

template <typename Number>
void putNumber (std::string& bytes, std::size_t offset, Number number)
{
    for (std::size_t i = 0; i < sizeof (Number); ++i)
        bytes[offset + i] = static_cast<char> (number >> (8 * i) & 0xFF);
}

template <typename Number>
Number numberAt (std::string_view bytes, std::size_t offset)
{
    Number number = 0;

    for (std::size_t i = sizeof (Number); i-- > 0;)
        number = static_cast<Number> (number << 8 | static_cast<unsigned char> (bytes[offset + i]));

    return number;
}

void checkMark (std::string_view bytes)
{
    if (bytes.empty())
        fail ("is empty");
    if (bytes.size() < mark.size() && mark.starts_with (bytes))
        fail ("is cut off");
    if (bytes.starts_with (mark))
        return;
    if (bytes.starts_with (mark.substr (0, lengthOfMarkWithoutLineEnds)))
        fail ("is damaged: it was copied as if it were text");

    fail ("is no Overmarks project");
}

void checkVersion (std::string_view header)
{
    const auto version = numberAt<std::uint32_t> (header, versionOffset);

    if (version > ProjectFile::formatVersion)
        fail ("was made by a newer version of Overmarks: it has form " + juce::String (version)
              + ", and this version reads up to form " + juce::String (ProjectFile::formatVersion));
    if (version == 0)
        failDamaged();
}

/** Looks at all that stands before the record. @param header  the first bytes of the file, as many as there are up to the record
    @param size  that of the whole file */
void checkHeader (std::string_view header, std::uint64_t size)
{
    checkMark (header);

    if (header.size() < recordOffset)
        fail ("is cut off");

    checkVersion (header);
    const auto length = numberAt<std::uint64_t> (header, lengthOffset);

    if (length > longestRecord())
        fail ("is damaged or too large: it claims to hold " + juce::String (length)
              + " bytes, and a project has at most " + mostInWords());
    if (size < recordOffset + length)
        fail ("is cut off: " + juce::String (size) + " of its " + juce::String (recordOffset + length)
              + " bytes are there");
    if (size > recordOffset + length)
        fail ("is damaged: something follows behind its end");
}

RecordWeight::Finding weightOf (std::string_view record)
{
    return RecordWeight::of (record, *ProtoProject::descriptor(), ProjectFile::limits().spareMemory);
}

/** A record takes many times its bytes in memory, so nothing is read in before it is clear that it is no more than usual. */
void checkWeight (std::string_view record)
{
    switch (weightOf (record))
    {
        case RecordWeight::Finding::fits: return;
        case RecordWeight::Finding::unintelligible: failUnintelligible();
        case RecordWeight::Finding::tooHeavy: break;
    }

    fail ("is damaged: it claims to hold more events than its " + juce::String (record.size())
          + " bytes have room for");
}

/** The record of checked bytes. Texts that are no UTF-8 are mended: no program of ours has written them, but the list may be
    somebody's only copy. */
void parseRecord (ProtoProject& record, std::string_view bytes)
{
    const google::protobuf::LogSilencer silence; // it would write to standard error

    if (record.ParseFromArray (bytes.data(), static_cast<int> (bytes.size())))
        return;

    if (! record.ParseFromString (RecordRepair::withValidText (*ProtoProject::descriptor(), bytes)))
        failUnintelligible();
}

Project readProject (std::string_view bytes)
{
    checkHeader (bytes.substr (0, recordOffset), bytes.size());
    const auto recordBytes = bytes.substr (recordOffset);

    if (checksumOf (recordBytes) != numberAt<std::uint32_t> (bytes, checksumOffset))
        failDamaged();

    checkWeight (recordBytes);
    google::protobuf::Arena arena;
    auto& record = *google::protobuf::Arena::CreateMessage<ProtoProject> (&arena);
    parseRecord (record, recordBytes);

    try
    {
        return ProjectRecord::read (record);
    }
    catch (const std::invalid_argument& error)
    {
        fail ("can't be loaded: " + juce::String (error.what()));
    }
}

/** Why a stream gives nothing, in the system's words; empty if it knows of no reason. */
using Failure = std::function<juce::String()>;

void throwIfFailed (const Failure& failure)
{
    if (const auto words = failure(); words.isNotEmpty())
        throw std::runtime_error (words.toStdString());
}

/** The bytes of a stream; of one that is no project not more than the first few. A project is short enough for one int. */
std::string bytesOf (juce::InputStream& stream, const Failure& failure)
{
    throwIfFailed (failure);
    const auto size = static_cast<std::uint64_t> (std::max (stream.getTotalLength(), juce::int64 { 0 }));
    std::string bytes (std::min<std::uint64_t> (size, recordOffset), '\0');
    const auto readTo = [&] (std::size_t start)
    {
        for (auto place = start; place < bytes.size();)
        {
            const auto read = stream.read (bytes.data() + place, static_cast<int> (bytes.size() - place));
            throwIfFailed (failure);

            if (read <= 0)
                throw std::runtime_error ("it became shorter while it was being read");

            place += static_cast<std::size_t> (read);
        }
    };
    readTo (0);
    checkHeader (bytes, size);
    bytes.resize (static_cast<std::size_t> (size));
    readTo (recordOffset);
    return bytes;
}

juce::String inWords (const juce::String& name, const std::invalid_argument& error)
{
    return "The project file " + name + " " + juce::String::fromUTF8 (error.what());
}

juce::String withoutMemory (const juce::String& name)
{
    return "The project file " + name + " can't be loaded: there is not enough memory";
}

juce::String loadFrom (juce::InputStream& stream, const juce::String& name, Project& project,
                       const Failure& failure)
{
    try
    {
        return ProjectFile::fromBytes (bytesOf (stream, failure), name, project);
    }
    catch (const std::invalid_argument& mistake)
    {
        return inWords (name, mistake);
    }
    catch (const std::runtime_error& failed)
    {
        return "Can't read " + name + ": " + juce::String::fromUTF8 (failed.what());
    }
    catch (const std::bad_alloc&)
    {
        return withoutMemory (name);
    }
}

/** The file around the record of a project. */
std::string fileOf (const ProtoProject& record, std::size_t length)
{
    std::string made (recordOffset + length, '\0');
    made.replace (0, mark.size(), mark);
    record.SerializeWithCachedSizesToArray (reinterpret_cast<google::protobuf::uint8*> (&made[recordOffset]));
    putNumber (made, versionOffset, std::uint32_t { ProjectFile::formatVersion });
    putNumber (made, checksumOffset, checksumOf (std::string_view (made).substr (recordOffset)));
    putNumber (made, lengthOffset, std::uint64_t { length });
    return made;
}

/** The file of a project. @throws std::length_error, with words for people, if load() would refuse it */
std::string fileOf (const Project& project)
{
    google::protobuf::Arena arena;
    auto& record = *google::protobuf::Arena::CreateMessage<ProtoProject> (&arena);
    ProjectRecord::fill (record, project);
    const auto length = record.ByteSizeLong();

    if (length > longestRecord())
        throw std::length_error ("it takes " + std::to_string (length)
                                 + " bytes, and a project file holds at most " + mostInWords().toStdString());

    auto made = fileOf (record, length);

    if (weightOf (std::string_view (made).substr (recordOffset)) != RecordWeight::Finding::fits)
        throw std::length_error ("it has too many events with nothing in them");

    return made;
}

} // namespace

ProjectFile::Limits& ProjectFile::limits()
{
    static Limits current;
    return current;
}

juce::String ProjectFile::toBytes (const Project& project, std::string& bytes)
{
    if (project.list == nullptr || project.timeInfo == nullptr || project.characters == nullptr)
        return "There is no project to save";

    try
    {
        bytes = fileOf (project);
        return {};
    }
    catch (const std::length_error& error)
    {
        return "The project is too large to be saved: " + juce::String (error.what());
    }
    catch (const std::bad_alloc&)
    {
        return "The project is too large to be saved: there is not enough memory";
    }
}

juce::String ProjectFile::fromBytes (std::string_view bytes, const juce::String& name, Project& project)
{
    try
    {
        project = readProject (bytes);
        return {};
    }
    catch (const std::invalid_argument& error)
    {
        return inWords (name, error);
    }
    catch (const std::bad_alloc&)
    {
        return withoutMemory (name);
    }
}

juce::String ProjectFile::save (const Project& project, const juce::File& file)
{
    std::string bytes;

    if (auto error = toBytes (project, bytes); error.isNotEmpty())
        return error;

    return ZEP::Core::WholeFile::write (file, bytes).getErrorMessage();
}

juce::String ProjectFile::load (const juce::File& file, Project& project)
{
    const auto path = file.getFullPathName();
    ZEP::Core::FileInput input (path);
    return loadFrom (input, path, project, [&input] { return input.getStatus().getErrorMessage(); });
}

juce::String ProjectFile::load (juce::InputStream& stream, const juce::String& name, Project& project)
{
    return loadFrom (stream, name, project, [] { return juce::String(); });
}

} // namespace ZEP::Overmarks
