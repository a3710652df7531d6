// SPDX-License-Identifier: GPL-3.0-only
// A file never fills the memory, and what can't be held is said.
#include "list/ProjectFile.h"

#include "list/ProjectFileSupport.h"
#include "list/RecordWeight.h"
#include "support/ChildProcess.h"

#include <fstream>
#include <sys/resource.h>

namespace ZEP::Overmarks::Testing
{
namespace
{

using Finding = RecordWeight::Finding;

std::string varint (std::size_t number)
{
    std::string bytes;
    for (; number > 127; number >>= 7)
        bytes += static_cast<char> (0x80U | (number & 0x7FU));
    return bytes + static_cast<char> (number);
}

/** A field with bytes in it: a text or a record. */
std::string field (int number, const std::string& content)
{
    return static_cast<char> (number << 3 | 2) + varint (content.size()) + content;
}

std::string repeated (const std::string& piece, std::size_t times)
{
    std::string bytes;
    bytes.reserve (piece.size() * times);
    for (; times > 0; --times)
        bytes += piece;
    return bytes;
}

constexpr int listOfProject = 7, eventsOfList = 1;

/** The record of a project with both fades and these bytes in its list. */
std::string recordWithList (const std::string& bytes)
{
    const std::string fades ("\x0a\x02\x50\x10\x0a\x02\x50\x20", 8);
    return field (listOfProject, fades + bytes);
}

class ProjectFileSizeTest : public ProjectFileTest
{
protected:
    /** What `work` says where the process gets no more than so much memory beside what it has. */
    static std::string withMemory (std::size_t bytes, const std::function<std::string()>& work)
    {
        return inChildProcess (
            [bytes, &work]
            {
                std::size_t pages = 0;
                std::ifstream ("/proc/self/statm") >> pages;
                const rlim_t most = pages * static_cast<std::size_t> (::getpagesize()) + bytes;
                const rlimit limit { most, most };
                return ::setrlimit (RLIMIT_AS, &limit) == 0 ? work() : "no limit";
            });
    }

    static bool memoryCanBeLimited()
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        return false;
#else
        return true;
#endif
    }
};

// ---- more entries than bytes ---------------------------------------------------------------------------------------

TEST_F (ProjectFileSizeTest, millionsOfEventsWithNothingInThemAreRefused)
{
    const auto record = recordWithList (repeated (std::string ("\x0a\x00", 2), 10'000'000));
    EXPECT_EQ (messageOfFile (fileAround (record)),
               thisFile ("is damaged: it claims to hold more events than its "
                         + std::to_string (record.size()) + " bytes have room for"));
}

struct Crowd
{
    const char* name;
    std::string record;
};

std::vector<Crowd> crowds()
{
    const std::string nothing ("\x0a\x00", 2); // of field 1
    const std::string event = field (eventsOfList, repeated (nothing, 10'000'000));
    return { { "runs of text", recordWithList (event) },
             { "characters", repeated (std::string ("\x22\x00", 2), 3'000'000) },
             { "reasons", repeated (std::string ("\x2a\x00", 2), 10'000'000) },
             { "fields of a newer version", repeated (std::string ("\x42\x00", 2), 10'000'000) },
             { "numbers of a newer version", repeated (std::string ("\x40\x00", 2), 10'000'000) },
             { "fields in a group of a newer version",
               "\x43" + repeated (std::string ("\x40\x00", 2), 10'000'000) + "\x44" },
             { "lists with an event each",
               repeated (field (listOfProject, std::string ("\x0a\x00", 2)), 5'000'000) },
             { "known fields of another type", repeated (std::string ("\x10\x00", 2), 10'000'000) } };
}

TEST_F (ProjectFileSizeTest, noKindOfEntryCanCrowdTheMemory)
{
    for (const auto& [name, record] : crowds())
        EXPECT_EQ (RecordWeight::of (record), Finding::tooHeavy) << name;
}

TEST_F (ProjectFileSizeTest, whatMergesIntoOneWeighsNothing)
{
    // The time reference a million times is one time reference.
    EXPECT_EQ (RecordWeight::of (repeated (std::string ("\x1a\x00", 2), 10'000'000)), Finding::fits);
    EXPECT_EQ (RecordWeight::of (repeated (std::string ("\x12\x00", 2), 10'000'000)), Finding::fits);
}

TEST_F (ProjectFileSizeTest, aHundredThousandEmptyEventsAreNoReasonToRefuseAFile)
{
    const auto project =
        loaded (fileAround (recordWithList (repeated (std::string ("\x0a\x00", 2), 100'000))));
    EXPECT_EQ (project.list->events.size(), 100'002u);
}

TEST_F (ProjectFileSizeTest, millionsOfTheLightestEventsOfThisProgramFit)
{
    auto lightest = makeUntimedEvent (EventTypeMarker);
    tessera1::ProtoOvermark untimed;
    lightest->fillProtoObject (&untimed);

    lightest = makeEvent (EventTypeStreamer, 0, 0, 0, 0.0f);
    for (const auto* name : { "startFrameIndex", "recTrackIndex", "selectedTake", "altTake" })
        setField (*lightest, name, 1);
    setField (*lightest, "beatsPerMinute", 64.0f);
    setField (*lightest, "enabled", false);
    tessera1::ProtoOvermark timed;
    lightest->fillProtoObject (&timed);

    for (const auto& event : { untimed, timed })
    {
        const auto bytes = field (eventsOfList, event.SerializeAsString());
        EXPECT_GE (bytes.size(), 55u);
        EXPECT_EQ (RecordWeight::of (recordWithList (repeated (bytes, 2'000'000))), Finding::fits)
            << bytes.size();
    }
}

TEST_F (ProjectFileSizeTest, manyFormattedRunsFit)
{
    tessera1::ProtoRichTextAttribute run;
    ZEP::Core::RichTextString::applyStringAttributeToProtoObject (
        { { 0, 1 }, ZEP::Core::RichTextString::defaultFont(), juce::Colour (0xff000001) }, &run);
    const auto event = field (eventsOfList, repeated (field (1, run.SerializeAsString()), 1'000'000));
    EXPECT_EQ (RecordWeight::of (recordWithList (event)), Finding::fits);
}

TEST_F (ProjectFileSizeTest, everyRandomProjectFits)
{
    for (unsigned int seed = 1; seed <= 50; ++seed)
        EXPECT_EQ (RecordWeight::of (bytesOf (RandomProjects (seed).make()).substr (headerLength)),
                   Finding::fits);
}

TEST_F (ProjectFileSizeTest, whatIsNoRecordIsToldApart)
{
    for (const std::string broken : { "\x0a\x7f", "\x08", "\x0f", "\x43", "\x44", "\x43\x4c",
                                      "\x3a\x02\x0a\x05", "\x80\x80\x80\x80\x80\x80\x80\x80\x80\x80\x80" })
        EXPECT_EQ (RecordWeight::of (broken), Finding::unintelligible) << broken;
    EXPECT_EQ (RecordWeight::of ({}), Finding::fits);
}

TEST_F (ProjectFileSizeTest, aProjectThatCouldNotBeLoadedIsNotSaved)
{
    auto project = smallProject();
    const auto empty = std::make_shared<Event>();
    EventFields::visit (*empty,
                        [] (const char*, auto& field)
                        {
                            if constexpr (! std::is_same_v<std::decay_t<decltype (field)>, EventType>)
                                field = std::decay_t<decltype (field)> {};
                        });
    setField (*empty, "type", static_cast<EventType> (0));
    project.list->events.resize (200'000, empty);
    std::string bytes = "as it was";

    EXPECT_EQ (
        ProjectFile::toBytes (project, bytes),
        juce::String ("The project is too large to be saved: it has too many events with nothing in them"));
    EXPECT_EQ (bytes, "as it was");
}

// ---- more bytes than there may be ----------------------------------------------------------------------------------

TEST_F (ProjectFileSizeTest, aProjectOfMoreThanAGigabyteIsNotSaved)
{
    auto project = smallProject();
    project.userReasons.assign (9, juce::String::repeatedString ("x", 120'000'000));
    std::string bytes = "as it was";
    const auto words = ProjectFile::toBytes (project, bytes).toStdString();
    EXPECT_TRUE (words.starts_with ("The project is too large to be saved: it takes 10800")) << words;
    EXPECT_TRUE (words.ends_with (" bytes, and a project file holds at most 1 GB")) << words;
    EXPECT_EQ (bytes, "as it was");

    folder.write ("reel.overmarks", "old");
    EXPECT_EQ (save (project), words);
    EXPECT_EQ (folder.bytes ("reel.overmarks"), "old");
}

TEST_F (ProjectFileSizeTest, aFileOfMoreThanAGigabyteIsNotRead)
{
    if (! memoryCanBeLimited())
        GTEST_SKIP() << "the sanitizer takes memory of its own";

    auto bytes = bytesOf (smallProject());
    const std::uint64_t record = ProjectFile::mostBytes - headerLength + 1;
    bytes.replace (16, 8, littleEndian (record, 8));
    folder.write ("reel.overmarks", bytes);
    std::filesystem::resize_file (folder.path / "reel.overmarks", headerLength + record);

    EXPECT_EQ (withMemory (50'000'000,
                           [this]
                           {
                               Project project;
                               return load (project);
                           }),
               thisFile ("is damaged or too large: it claims to hold 1073741801 bytes, and a project has at "
                         "most 1 GB"));
}

// ---- less memory than is needed ------------------------------------------------------------------------------------

TEST_F (ProjectFileSizeTest, aFileThatTheMemoryDoesNotHoldIsSaid)
{
    if (! memoryCanBeLimited())
        GTEST_SKIP() << "the sanitizer takes memory of its own";

    auto bytes = bytesOf (smallProject());
    constexpr std::uint64_t record = 500'000'000;
    bytes.replace (16, 8, littleEndian (record, 8));
    folder.write ("reel.overmarks", bytes);
    std::filesystem::resize_file (folder.path / "reel.overmarks", headerLength + record);

    EXPECT_EQ (withMemory (100'000'000,
                           [this]
                           {
                               auto project = smallProject ("mine");
                               const auto list = project.list;
                               auto words = load (project);
                               return words
                                      + (project.list == list && project.name == "mine" ? "" : " changed");
                           }),
               thisFile ("can't be loaded: there is not enough memory"));
}

TEST_F (ProjectFileSizeTest, aRecordThatTheMemoryDoesNotHoldLeavesTheProjectAlone)
{
    if (! memoryCanBeLimited())
        GTEST_SKIP() << "the sanitizer takes memory of its own";

    const auto bytes = fileAround (field (2, std::string (100'000'000, 'n')) + recordWithList ({}));
    EXPECT_EQ (withMemory (30'000'000,
                           [&bytes]
                           {
                               auto project = smallProject ("mine");
                               const auto list = project.list;
                               const auto words = ProjectFile::fromBytes (bytes, "x", project);
                               return words.toStdString()
                                      + (project.list == list && project.name == "mine" ? "" : " changed");
                           }),
               "The project file x can't be loaded: there is not enough memory");
}

TEST_F (ProjectFileSizeTest, savingWithoutMemoryIsSaid)
{
    if (! memoryCanBeLimited())
        GTEST_SKIP() << "the sanitizer takes memory of its own";

    auto project = smallProject();
    project.userReasons.assign (8, juce::String::repeatedString ("x", 20'000'000));
    EXPECT_EQ (withMemory (60'000'000,
                           [&project]
                           {
                               std::string bytes = "as it was";
                               const auto words = ProjectFile::toBytes (project, bytes).toStdString();
                               return words + (bytes == "as it was" ? "" : " changed");
                           }),
               "The project is too large to be saved: there is not enough memory");
}

// ---- files that change meanwhile -----------------------------------------------------------------------------------

TEST_F (ProjectFileSizeTest, aFileThatEndsBeforeItsLengthIsSaid)
{
    // The system's own files say that they have 4096 bytes, and have fewer.
    const juce::File shorter ("/sys/devices/system/cpu/online");
    if (shorter.getSize() < 24)
        GTEST_SKIP() << "no such file on this system";

    Project project;
    EXPECT_EQ (
        ProjectFile::load (shorter, project),
        juce::String ("Can't read /sys/devices/system/cpu/online: it became shorter while it was being "
                      "read"));
    EXPECT_EQ (project.list, nullptr);
}

} // namespace
} // namespace ZEP::Overmarks::Testing
