// SPDX-License-Identifier: GPL-3.0-only
// A file never fills the memory, and what can't be held is said.
#include "list/ProjectFile.h"

#include "list/ProjectFileSupport.h"

namespace ZEP::Overmarks::Testing
{
namespace
{

using Finding = RecordWeight::Finding;

std::string repeated (const std::string& piece, std::size_t times)
{
    std::string bytes;
    bytes.reserve (piece.size() * times);
    for (; times > 0; --times)
        bytes += piece;
    return bytes;
}

using ProjectFileSizeTest = ProjectFileTest;

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
        EXPECT_EQ (weightOf (record), Finding::tooHeavy) << name;
}

TEST_F (ProjectFileSizeTest, whatMergesIntoOneWeighsNothing)
{
    // The time reference a million times is one time reference.
    EXPECT_EQ (weightOf (repeated (std::string ("\x1a\x00", 2), 10'000'000)), Finding::fits);
    EXPECT_EQ (weightOf (repeated (std::string ("\x12\x00", 2), 10'000'000)), Finding::fits);
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
        EXPECT_EQ (weightOf (recordWithList (repeated (bytes, 2'000'000))), Finding::fits) << bytes.size();
    }
}

TEST_F (ProjectFileSizeTest, manyFormattedRunsFit)
{
    tessera1::ProtoRichTextAttribute run;
    ZEP::Core::RichTextString::applyStringAttributeToProtoObject (
        { { 0, 1 }, ZEP::Core::RichTextString::defaultFont(), juce::Colour (0xff000001) }, &run);
    const auto event = field (eventsOfList, repeated (field (1, run.SerializeAsString()), 1'000'000));
    EXPECT_EQ (weightOf (recordWithList (event)), Finding::fits);
}

TEST_F (ProjectFileSizeTest, everyRandomProjectFits)
{
    for (unsigned int seed = 1; seed <= 50; ++seed)
        EXPECT_EQ (weightOf (bytesOf (RandomProjects (seed).make()).substr (headerLength)), Finding::fits);
}

TEST_F (ProjectFileSizeTest, whatIsNoRecordIsToldApart)
{
    for (const std::string broken : { "\x0a\x7f", "\x08", "\x0f", "\x43", "\x44", "\x43\x4c",
                                      "\x3a\x02\x0a\x05", "\x80\x80\x80\x80\x80\x80\x80\x80\x80\x80\x80" })
        EXPECT_EQ (weightOf (broken), Finding::unintelligible) << broken;
    EXPECT_EQ (weightOf ({}), Finding::fits);
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

// ---- files that change meanwhile -----------------------------------------------------------------------------------

/** Says that it holds more than it does, as a file does that is cut while it is being read. */
class ShorterThanItSays final : public juce::MemoryInputStream
{
public:
    explicit ShorterThanItSays (const std::string& bytes, std::size_t missing)
        : juce::MemoryInputStream (bytes.data(), bytes.size() - missing, true),
          length (static_cast<juce::int64> (bytes.size()))
    {
    }

    juce::int64 getTotalLength() override { return length; }

private:
    juce::int64 length;
};

TEST_F (ProjectFileSizeTest, aFileThatEndsBeforeItsLengthIsSaid)
{
    const auto bytes = bytesOf (smallProject());

    for (const auto missing :
         { std::size_t { 1 }, bytes.size() - headerLength, bytes.size() - 1, bytes.size() })
    {
        ShorterThanItSays stream (bytes, missing);
        Project project;
        EXPECT_EQ (ProjectFile::load (stream, "reel.overmarks", project),
                   juce::String ("Can't read reel.overmarks: it became shorter while it was being read"))
            << missing;
        EXPECT_EQ (project.list, nullptr);
    }
}

TEST_F (ProjectFileSizeTest, aProjectIsReadFromAStream)
{
    ShorterThanItSays stream (bytesOf (smallProject ("mine")), 0);
    Project project;
    EXPECT_EQ (ProjectFile::load (stream, "reel.overmarks", project), juce::String());
    EXPECT_EQ (project.name, "mine");
}

} // namespace
} // namespace ZEP::Overmarks::Testing
