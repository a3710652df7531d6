// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/FileInput.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

using ZEP::Core::FileInput;
using ZEP::Overmarks::Testing::TemporaryFolder;

namespace
{

class FileInputTest : public testing::Test
{
protected:
    juce::String path (const std::string& name) const { return folder.file (name).getFullPathName(); }

    /** The reason for which a file isn't read whole. */
    static std::string failureOf (const juce::String& path, std::uint64_t most = 1000)
    {
        std::string bytes = "as it was";
        const auto result = FileInput::readWhole (path, bytes, most);
        EXPECT_TRUE (result.wasOk() || bytes == "as it was");
        return result.getErrorMessage().toStdString();
    }

    const TemporaryFolder folder;
};

TEST_F (FileInputTest, readsAFilePieceByPiece)
{
    folder.write ("list", "0123456789");
    FileInput input (path ("list"));
    std::string piece (4, '\0');
    EXPECT_EQ (input.getTotalLength(), 10);
    EXPECT_EQ (input.read (piece.data(), 4), 4);
    EXPECT_EQ (piece, "0123");
    EXPECT_EQ (input.getPosition(), 4);
    EXPECT_TRUE (input.setPosition (8));
    EXPECT_EQ (input.read (piece.data(), 4), 2);
    EXPECT_EQ (piece.substr (0, 2), "89");
    EXPECT_TRUE (input.isExhausted());
    EXPECT_EQ (input.read (piece.data(), 4), 0);
    EXPECT_TRUE (input.getStatus().wasOk());
}

TEST_F (FileInputTest, knowsNoPlaceBeforeTheStart)
{
    folder.write ("list", "0123");
    FileInput input (path ("list"));
    EXPECT_FALSE (input.setPosition (-1));
    EXPECT_EQ (input.getPosition(), 0);
    EXPECT_FALSE (FileInput (path ("missing")).setPosition (0));
}

TEST_F (FileInputTest, readsAWholeFileOfAnySize)
{
    for (const std::size_t size : { 0u, 1u, 16384u, 100000u })
    {
        const std::string content (size, 'x');
        folder.write ("list", content);
        std::string bytes = "older";
        EXPECT_TRUE (FileInput::readWhole (path ("list"), bytes, size).wasOk()) << size;
        EXPECT_EQ (bytes, content) << size;
    }
}

TEST_F (FileInputTest, aFileMayHaveExactlySoManyBytes)
{
    folder.write ("list", "0123456789");
    EXPECT_EQ (failureOf (path ("list"), 10), "");
    EXPECT_EQ (failureOf (path ("list"), 9), "it is larger than 9 bytes");
}

TEST_F (FileInputTest, aFileOfTheSystemThatTellsNoSizeIsReadUpToItsEnd)
{
    std::string bytes;
    ASSERT_EQ (std::filesystem::file_size ("/proc/self/status"), 0u);
    EXPECT_TRUE (FileInput::readWhole ("/proc/self/status", bytes, 100000).wasOk());
    EXPECT_EQ (bytes.substr (0, 5), "Name:");
    EXPECT_EQ (failureOf ("/proc/self/status", 10), "it is larger than 10 bytes");
}

TEST_F (FileInputTest, aMissingFileIsSaid)
{
    EXPECT_EQ (failureOf (path ("missing")), "No such file or directory");
    EXPECT_EQ (failureOf (juce::String()), "No such file or directory");
    folder.write ("file", "");
    EXPECT_EQ (failureOf (path ("file/list")), "Not a directory");
}

TEST_F (FileInputTest, whatIsNoFileIsRefusedWithoutWaiting)
{
    ASSERT_EQ (::mkfifo ((folder.path / "pipe").c_str(), 0600), 0);

    for (const auto& name : { path ("pipe"), folder.directory(), juce::String ("/dev/zero"),
                              juce::String ("/dev/null"), juce::String ("/dev/full") })
        EXPECT_EQ (failureOf (name), "it is no file") << name;
}

TEST_F (FileInputTest, aLinkInARingIsSaid)
{
    std::filesystem::create_symlink (folder.path / "b", folder.path / "a");
    std::filesystem::create_symlink (folder.path / "a", folder.path / "b");
    EXPECT_EQ (failureOf (path ("a")), "Too many levels of symbolic links");
}

TEST_F (FileInputTest, aNameThatIsTooLongIsSaid)
{
    EXPECT_EQ (failureOf (path (std::string (256, 'x'))), "File name too long");
    EXPECT_EQ (failureOf (path (std::string (4000, 'x'))), "File name too long");
}

} // namespace
