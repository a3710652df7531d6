// SPDX-License-Identifier: GPL-3.0-only
// What is said of a project file when the memory is full.
#include "list/ProjectFileSupport.h"
#include "list/ProjectJSON.h"
#include "memory/MemoryBudget.h"

#include <functional>

namespace ZEP::Overmarks::Testing
{
namespace
{

class ProjectFileMemoryTest : public ProjectFileTest
{
protected:
    /** What `work` says where it gets no more than so much memory beside what there is. */
    static std::string withMemory (std::size_t bytes, const std::function<std::string()>& work)
    {
        const MemoryBudget budget (bytes);
        return work();
    }
};

TEST_F (ProjectFileMemoryTest, aFileOfMoreThanAGigabyteIsNotRead)
{
    auto bytes = bytesOf (smallProject());
    const std::uint64_t record = ProjectFile::limits().bytesOfFile - headerLength + 1;
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

TEST_F (ProjectFileMemoryTest, aFileThatTheMemoryDoesNotHoldIsSaid)
{
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

TEST_F (ProjectFileMemoryTest, aRecordThatTheMemoryDoesNotHoldLeavesTheProjectAlone)
{
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

TEST_F (ProjectFileMemoryTest, aTextThatTheMemoryDoesNotHoldLeavesTheProjectAlone)
{
    const auto text = R"({"overmarks": 1, "name": ")" + std::string (100'000'000, 'n') + R"("})";
    EXPECT_EQ (withMemory (30'000'000,
                           [&text]
                           {
                               auto project = smallProject ("mine");
                               const auto list = project.list;
                               const auto words = ProjectJSON::fromText (text, project);
                               return words.toStdString()
                                      + (project.list == list && project.name == "mine" ? "" : " changed");
                           }),
               "The text can't be loaded: there is not enough memory");
}

TEST_F (ProjectFileMemoryTest, savingWithoutMemoryIsSaid)
{
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

} // namespace
} // namespace ZEP::Overmarks::Testing
