// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "list/ProjectFile.h"

#include "event/RecordWeight.h"
#include "list/ProjectRecord.h"
#include "proto/overmarks.pb.h"
#include "support/CompareProjects.h"
#include "support/CueLists.h"
#include "support/OvermarksTest.h"
#include "support/RandomProjects.h"
#include "support/TemporaryFolder.h"

#include <Poco/Checksum.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace ZEP::Overmarks::Testing
{

constexpr std::size_t headerLength = 24;

/** A number with its lowest byte first. */
inline std::string littleEndian (std::uint64_t number, int length)
{
    std::string bytes;
    for (; length > 0; --length, number >>= 8)
        bytes += static_cast<char> (number & 0xFF);
    return bytes;
}

/** A file with a sound header around any record. */
inline std::string fileAround (const std::string& record, std::uint32_t version = 1)
{
    Poco::Checksum checksum (Poco::Checksum::TYPE_CRC32);
    checksum.update (record);
    return "\x89OVM\r\n\x1a\n" + littleEndian (version, 4) + littleEndian (checksum.checksum(), 4)
           + littleEndian (record.size(), 8) + record;
}

inline std::string varint (std::size_t number)
{
    std::string bytes;
    for (; number > 127; number >>= 7)
        bytes += static_cast<char> (0x80U | (number & 0x7FU));
    return bytes + static_cast<char> (number);
}

/** A field with bytes in it: a text or a record. */
inline std::string field (int number, const std::string& content)
{
    return static_cast<char> (number << 3 | 2) + varint (content.size()) + content;
}

/** What a project's record weighs beside the memory that projects may take in any case. */
inline RecordWeight::Finding weightOf (std::string_view record)
{
    return RecordWeight::of (record, *tessera1::ProtoProject::descriptor(),
                             ProjectFile::limits().spareMemory);
}

constexpr int listOfProject = 7, eventsOfList = 1;

/** The record of a project with both fades and these bytes in its list. */
inline std::string recordWithList (const std::string& bytes)
{
    const std::string fades ("\x0a\x02\x50\x10\x0a\x02\x50\x20", 8);
    return field (listOfProject, fades + bytes);
}

/** The record in a file's bytes. */
inline tessera1::ProtoProject recordIn (const std::string& bytes)
{
    tessera1::ProtoProject record;
    EXPECT_TRUE (record.ParseFromString (bytes.substr (headerLength)));
    return record;
}

/** A file of tests/data/records. */
inline std::string stored (const std::string& name)
{
    const auto path = std::filesystem::path (OVERMARKS_TEST_DATA) / "records" / name;
    EXPECT_TRUE (std::filesystem::exists (path)) << path;
    std::ifstream stream (path, std::ios::binary);
    return { std::istreambuf_iterator<char> (stream), {} };
}

inline std::string bytesOf (const Project& project)
{
    std::string bytes;
    EXPECT_EQ (ProjectFile::toBytes (project, bytes), juce::String());
    return bytes;
}

/** What loading these bytes says, as of a file called "x". */
inline std::string messageOf (const std::string& bytes)
{
    Project project;
    return ProjectFile::fromBytes (bytes, "x", project).toStdString();
}

/** What comes back from the bytes of a project, which have to be sound. */
inline Project loaded (const std::string& bytes)
{
    Project project;
    EXPECT_EQ (ProjectFile::fromBytes (bytes, "x", project), juce::String());
    return project;
}

/** A small project of two cues with something in every corner. */
inline Project smallProject (const juce::String& name = "Reel 1")
{
    auto project = Project::createEmpty (timeInfoAt ("25", "01:00:00:00"));
    project.name = name;
    project.userReasons = { "Dentist", "" };
    project.documents.studioName = "Harbour Sound";
    const auto id =
        project.characters->addCharacter (std::make_shared<ZEP::Core::ADRCharacter> ("ANNA"), true, "c1");
    for (const auto& number : { "A1", "A2" })
    {
        auto line = cue (number, 100);
        setField (*line, "characterID", id);
        setField (*line, "text", ZEP::Core::RichTextString ("Listen to the water."));
        setField (*line, "reason", 3);
        project.list->events.push_back (line);
    }
    return project;
}

/** Makes of a random project what loading makes of it: only known reasons, and a sort column. */
inline void repair (const Project& project)
{
    if (project.list->sortKey.isEmpty())
        project.list->sortKey = "StartTCString";

    for (const auto& event : project.list->events)
        if (event->getReason() < 0 || event->getReason() > 40)
            setField (*event, "reason", 0);
}

class ProjectFileTest : public OvermarksTest
{
protected:
    TemporaryFolder folder;
    juce::File file = folder.file ("reel.overmarks");

    std::string save (const Project& project) const
    {
        return ProjectFile::save (project, file).toStdString();
    }

    std::string load (Project& project) const { return ProjectFile::load (file, project).toStdString(); }

    /** What loading a file with this content says. */
    std::string messageOfFile (const std::string& bytes) const
    {
        folder.write ("reel.overmarks", bytes);
        Project project;
        return load (project);
    }

    /** The words for this file. */
    std::string thisFile (const std::string& words) const
    {
        return "The project file " + file.getFullPathName().toStdString() + " " + words;
    }
};

} // namespace ZEP::Overmarks::Testing
