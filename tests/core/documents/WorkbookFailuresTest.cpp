// SPDX-License-Identifier: GPL-3.0-only
// Workbooks on a disk that doesn't take them, and in places of all names.
#include "core/documents/ExcelFileHandler.h"
#include "support/ChildProcess.h"
#include "support/FullDisk.h"
#include "support/TemporaryFolder.h"
#include "support/ZipArchive.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

using namespace ZEP::Core;
using namespace ZEP::Overmarks::Testing;

namespace
{

using Rows = std::vector<std::vector<RichTextString>>;
using Names = std::vector<std::string>;

Rows table (int rows)
{
    return Rows (static_cast<std::size_t> (rows),
                 { juce::String ("A line that is neither long nor short.") });
}

std::string errorOf (const juce::String& path, Rows rows = table (3))
{
    juce::String error;
    ExcelFileHandler().writeFileContent (path, rows, error);
    return error.toStdString();
}

/** A place for temporary files while it lasts. */
class TemporaryFilesIn final
{
public:
    explicit TemporaryFilesIn (const std::string& folder) { ::setenv ("TMPDIR", folder.c_str(), 1); }
    TemporaryFilesIn (const TemporaryFilesIn&) = delete;
    TemporaryFilesIn& operator= (const TemporaryFilesIn&) = delete;
    ~TemporaryFilesIn()
    {
        if (before.empty())
            ::unsetenv ("TMPDIR");
        else
            ::setenv ("TMPDIR", before.c_str(), 1);
    }

private:
    const std::string before = std::getenv ("TMPDIR") != nullptr ? std::getenv ("TMPDIR") : "";
};

class WorkbookFailuresTest : public testing::Test
{
protected:
    juce::String path (const std::string& name) const
    {
        return folder.directory() + "/" + juce::String::fromUTF8 (name.c_str());
    }

    std::string cantWrite (const std::string& name, const std::string& why) const
    {
        return "Can't write " + path (name).toStdString() + ": " + why;
    }

    TemporaryFolder folder;
};

TEST_F (WorkbookFailuresTest, aMissingFolderIsTold)
{
    EXPECT_EQ (errorOf (path ("missing/list.xlsx")),
               cantWrite ("missing/list.xlsx", "No such file or directory"));
    EXPECT_EQ (folder.names(), Names {});
}

TEST_F (WorkbookFailuresTest, aFolderInItsPlaceIsToldAndKept)
{
    std::filesystem::create_directory (folder.path / "list.xlsx");
    EXPECT_EQ (errorOf (path ("list.xlsx")), cantWrite ("list.xlsx", "Is a directory"));
    EXPECT_EQ (folder.names(), Names { "list.xlsx" });
}

TEST_F (WorkbookFailuresTest, aFolderThatNobodyMayWriteToIsTold)
{
    std::filesystem::create_directory (folder.path / "closed");
    ::chmod ((folder.path / "closed").c_str(), 0555);
    ::chmod (folder.path.c_str(), 0755);
    EXPECT_EQ (
        inChildProcess ([this] { return becomeOrdinaryUser() ? errorOf (path ("closed/list.xlsx")) : "no"; }),
        cantWrite ("closed/list.xlsx", "Permission denied"));
    EXPECT_TRUE (std::filesystem::is_empty (folder.path / "closed"));
}

TEST_F (WorkbookFailuresTest, aFileThatNobodyMayWriteToIsKept)
{
    folder.write ("list.xlsx", "older");
    ::chmod ((folder.path / "list.xlsx").c_str(), 0444);
    ::chmod (folder.path.c_str(), 0777);
    EXPECT_EQ (inChildProcess ([this] { return becomeOrdinaryUser() ? errorOf (path ("list.xlsx")) : "no"; }),
               cantWrite ("list.xlsx", "Permission denied"));
    EXPECT_EQ (folder.bytes ("list.xlsx"), "older");
}

TEST_F (WorkbookFailuresTest, aFullDiskLeavesTheOldFile)
{
    folder.write ("list.xlsx", "older");
    const auto error = inChildProcess (
        [this]
        {
            const FullDisk full (1000);
            return errorOf (path ("list.xlsx"));
        });
    EXPECT_EQ (error, cantWrite ("list.xlsx", "File too large"));
    EXPECT_EQ (folder.bytes ("list.xlsx"), "older");
    EXPECT_EQ (folder.names(), Names { "list.xlsx" });
}

TEST_F (WorkbookFailuresTest, temporaryFilesThatAreCutShortAreNoticed)
{
    // The rows need many times the room of the workbook, which is full of the same words.
    const auto error = inChildProcess (
        [this]
        {
            const TemporaryFilesIn here (folder.path.string());
            const FullDisk full (100000);
            return errorOf (path ("list.xlsx"), table (5000));
        });
    EXPECT_EQ (error, cantWrite ("list.xlsx", "the temporary files in " + folder.path.string()
                                                  + " didn't take everything; is that disk full?"));
    EXPECT_EQ (folder.names(), Names {});
}

TEST_F (WorkbookFailuresTest, aLimitOfTheUserIsNotTheEndOfTheProcess)
{
    const auto error = inChildProcess (
        [this]
        {
            const FullDisk full (1000, SIG_DFL);
            return errorOf (path ("list.xlsx")) + ", and on it goes";
        });
    EXPECT_EQ (error, cantWrite ("list.xlsx", "File too large, and on it goes"));
}

TEST_F (WorkbookFailuresTest, aFullDeviceIsTold)
{
    std::filesystem::create_symlink ("/dev/full", folder.path / "list.xlsx");
    EXPECT_EQ (errorOf (path ("list.xlsx")), cantWrite ("list.xlsx", "No space left on device"));
    EXPECT_EQ (folder.names(), Names { "list.xlsx" });
}

TEST_F (WorkbookFailuresTest, anOlderFileIsReplacedAndKeepsItsPermissions)
{
    folder.write ("list.xlsx", std::string (100000, 'x'));
    ::chmod ((folder.path / "list.xlsx").c_str(), 0640);
    EXPECT_EQ (errorOf (path ("list.xlsx")), "");
    EXPECT_EQ (unzipped (folder.bytes ("list.xlsx")).front().first, "[Content_Types].xml");
    EXPECT_EQ (std::filesystem::status (folder.path / "list.xlsx").permissions(),
               static_cast<std::filesystem::perms> (0640));
    EXPECT_EQ (folder.names(), Names { "list.xlsx" });
}

TEST_F (WorkbookFailuresTest, aLinkStaysALink)
{
    folder.write ("real.xlsx", "older");
    std::filesystem::create_symlink ("real.xlsx", folder.path / "list.xlsx");
    EXPECT_EQ (errorOf (path ("list.xlsx")), "");
    EXPECT_TRUE (std::filesystem::is_symlink (folder.path / "list.xlsx"));
    EXPECT_FALSE (unzipped (folder.bytes ("real.xlsx")).empty());
}

class WorkbookNames : public WorkbookFailuresTest, public testing::WithParamInterface<const char*>
{
};

TEST_P (WorkbookNames, areTakenAsTheyAre)
{
    EXPECT_EQ (errorOf (path (GetParam())), "");
    EXPECT_EQ (folder.names(), Names { GetParam() });
}

INSTANTIATE_TEST_SUITE_P (, WorkbookNames,
                          testing::Values ("with blanks .xlsx", "Größe 少女 🎬.xlsx", "\"quoted\" 'too'.xlsx",
                                           "$HOME `id` $(id).xlsx", "new\nline.xlsx", "back\\slash.xlsx",
                                           "~tilde.xlsx", "%d%s%n.xlsx", "no extension", "-"));

TEST_F (WorkbookFailuresTest, theNameOfAFolderMayBeOdd)
{
    std::filesystem::create_directory (folder.path / "~ \"a\" $b");
    EXPECT_EQ (errorOf (path ("~ \"a\" $b/list.xlsx")), "");
}

} // namespace
