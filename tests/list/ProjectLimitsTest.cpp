// SPDX-License-Identifier: GPL-3.0-only
// Each limit of projects: what fits exactly, what is one too much, what is said of it, and that an application can raise it.
#include "list/ProjectFileSupport.h"
#include "list/ProjectJSON.h"

#include <limits>

namespace ZEP::Overmarks::Testing
{
namespace
{

/** Limits that end with the test. */
class ProjectLimits : public ProjectFileTest
{
protected:
    ~ProjectLimits() override
    {
        ProjectFile::limits() = {};
        ProjectJSON::limits() = {};
    }

    static std::string messageOfText (const std::string& text)
    {
        Project project;
        return ProjectJSON::fromText (text, project).toStdString();
    }
};

TEST_F (ProjectLimits, areGenerousUnlessTheyAreChanged)
{
    EXPECT_EQ (ProjectFile::limits().bytesOfFile, 1073741824u);
    EXPECT_EQ (ProjectFile::limits().spareMemory, 134217728u);
    EXPECT_EQ (ProjectJSON::limits().bytes, 1073741824u);
    EXPECT_EQ (ProjectJSON::limits().nesting, 16u);
    EXPECT_EQ (ProjectJSON::limits().members, 64u);
    EXPECT_EQ (ProjectJSON::limits().spareMemory, 134217728u);
}

TEST_F (ProjectLimits, aFileMayHaveExactlySoManyBytes)
{
    const auto project = smallProject();
    const auto bytes = bytesOf (project);
    Project back;

    ProjectFile::limits().bytesOfFile = bytes.size();
    EXPECT_EQ (save (project), "");
    EXPECT_EQ (load (back), "");
    EXPECT_EQ (back.list->events.size(), project.list->events.size());

    ProjectFile::limits().bytesOfFile = bytes.size() - 1;
    const auto record = std::to_string (bytes.size() - headerLength);
    const auto most = std::to_string (bytes.size() - 1) + " bytes";
    EXPECT_EQ (messageOf (bytes), "The project file x is damaged or too large: it claims to hold " + record
                                      + " bytes, and a project has at most " + most);
    EXPECT_EQ (save (project), "The project is too large to be saved: it takes " + record
                                   + " bytes, and a project file holds at most " + most);
    EXPECT_EQ (folder.bytes ("reel.overmarks"), bytes) << "the old file stays";
}

TEST_F (ProjectLimits, theirWordsTellARoundSizeInItsUnit)
{
    const auto project = smallProject();
    const auto bytes = bytesOf (project);
    const auto claims = [] (std::uint64_t length)
    { return fileAround ("").substr (0, 16) + littleEndian (length, 8); };

    for (const auto& [most, words] :
         { std::pair (std::uint64_t { 3 } << 20, "3 MB"), std::pair (std::uint64_t { 2 } << 30, "2 GB") })
    {
        ProjectFile::limits().bytesOfFile = most;
        EXPECT_EQ (messageOf (claims (most)), "The project file x is damaged or too large: it claims to hold "
                                                  + std::to_string (most)
                                                  + " bytes, and a project has at most " + words);
    }
}

TEST_F (ProjectLimits, aLimitAboveWhatARecordCanHoldIsThatOfARecord)
{
    ProjectFile::limits().bytesOfFile = std::uint64_t { 1 } << 40;
    const auto header = fileAround ("").substr (0, 16);
    EXPECT_EQ (
        messageOf (header + littleEndian (std::uint64_t { 1 } << 31, 8)),
        "The project file x is damaged or too large: it claims to hold 2147483648 bytes, and a project has "
        "at most 2 GB");
    EXPECT_EQ (messageOf (header + littleEndian ((std::uint64_t { 1 } << 31) - 1, 8)),
               "The project file x is cut off: 24 of its 2147483671 bytes are there");
}

TEST_F (ProjectLimits, entriesWithNothingInThemMayTakeTheSpareMemory)
{
    std::string events;
    for (int i = 0; i < 1000; ++i)
        events += std::string ("\x0a\x00", 2);
    const auto record = recordWithList (events);

    EXPECT_EQ (weightOf (record), RecordWeight::Finding::fits);
    ProjectFile::limits().spareMemory = 100'000;
    EXPECT_EQ (weightOf (record), RecordWeight::Finding::tooHeavy);
    EXPECT_EQ (messageOf (fileAround (record)),
               "The project file x is damaged: it claims to hold more events than its "
                   + std::to_string (record.size()) + " bytes have room for");
    ProjectFile::limits().spareMemory = std::uint64_t { 1 } << 40;
    EXPECT_EQ (loaded (fileAround (record)).list->events.size(), 1002u);
}

/** Elements with nothing in them, such as "{},{},{}". */
std::string crowdOf (int number, const std::string& element)
{
    std::string text;

    for (int i = 0; i < number; ++i)
        text += (i > 0 ? "," : "") + element;

    return text;
}

struct CrowdedText
{
    const char* name;
    std::string text;
    std::uint64_t weightOfElements;
};

std::vector<CrowdedText> crowdedTexts()
{
    const std::string start = R"({"overmarks":1,"timeInfo":{},)";
    const auto elements = crowdOf (1000, "{}");
    return { { "events", start + R"("events":[)" + elements + "]}", 1'100'000 },
             { "events before the time reference",
               R"({"overmarks":1,"events":[)" + elements + R"(],"timeInfo":{}})", 1'100'000 + 64'000 },
             { "runs", start + R"("events":[{"text":{"text":"Go","runs":[)" + elements + "]}}]}",
               300'000 + 64'000 },
             { "characters", start + R"("characters":[)" + elements + "]}", 700'000 + 64'000 },
             { "lists of what nobody knows", start + R"("x":[)" + crowdOf (10'000, "[]") + "]}", 640'000 } };
}

TEST_F (ProjectLimits, entriesOfATextWithNothingInThemMayTakeTheSpareMemory)
{
    for (const auto& [name, text, weight] : crowdedTexts())
    {
        const auto isOurs = name != std::string ("lists of what nobody knows");
        ProjectJSON::limits().spareMemory = weight - 20 * text.size() + 3000; // for the rest of the project
        EXPECT_EQ (messageOfText (text), isOurs ? "" : "There is no member \"x\"") << name;
        ProjectJSON::limits().spareMemory = weight - 20 * text.size() - 1;
        EXPECT_EQ (messageOfText (text), "The text is damaged: it claims to hold more events than its "
                                             + std::to_string (text.size()) + " bytes have room for")
            << name;
    }
}

TEST_F (ProjectLimits, noLimitIsNoLimit)
{
    ProjectJSON::limits().spareMemory = std::numeric_limits<std::uint64_t>::max();
    ProjectFile::limits().spareMemory = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ (messageOfText (ProjectJSON::toText (smallProject())), "");
    EXPECT_EQ (messageOf (bytesOf (smallProject())), "");
}

TEST_F (ProjectLimits, aTextMayHaveExactlySoManyBytes)
{
    const auto text = ProjectJSON::toText (smallProject());
    ProjectJSON::limits().bytes = text.size();
    EXPECT_EQ (messageOfText (text), "");
    ProjectJSON::limits().bytes = text.size() - 1;
    EXPECT_EQ (messageOfText (text), "The text is too large for a project: it has more than "
                                         + std::to_string (text.size() - 1) + " bytes");
}

TEST_F (ProjectLimits, objectsAndListsMayLieExactlySoDeepInEachOther)
{
    const std::string text =
        R"({"overmarks": 1, "events": [{"text": {"text": "Go", "runs": [{"bold": true}]}}]})";
    ProjectJSON::limits().nesting = 6;
    EXPECT_EQ (messageOfText (text), "");
    ProjectJSON::limits().nesting = 5;
    EXPECT_EQ (messageOfText (text),
               "The text is nested too deeply for a project: it has more than 5 objects and lists "
               "within each other");
    ProjectJSON::limits().nesting = 1000;
    EXPECT_EQ (messageOfText (std::string (500, '[') + std::string (500, ']')),
               "The text: an Overmarks project in JSON begins with the member \"overmarks\"");
}

TEST_F (ProjectLimits, anObjectMayHaveExactlySoManyMembers)
{
    const std::string text = R"({"overmarks": 1, "name": "reel", "sortDescending": false})";
    ProjectJSON::limits().members = 3;
    EXPECT_EQ (messageOfText (text), "");
    ProjectJSON::limits().members = 2;
    EXPECT_EQ (messageOfText (text),
               "An object in the text has more members than any of a project: more than 2");
}

} // namespace
} // namespace ZEP::Overmarks::Testing
