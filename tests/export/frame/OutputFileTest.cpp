// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/OutputFile.h"

#include "export/ExportSupport.h"
#include "support/ChildProcess.h"
#include "support/FullDisk.h"
#include "support/Stranger.h"

#include <fcntl.h>
#include <sys/stat.h>

using namespace ExportSupport;
using ZEP::Overmarks::Testing::becomeOrdinaryUser;
using ZEP::Overmarks::Testing::FullDisk;
using ZEP::Overmarks::Testing::inChildProcess;
using ZEP::Overmarks::Testing::SharedByAll;

namespace
{

bool write (const juce::File& target, const std::string& bytes)
{
    OutputFile file (target);
    file.write (bytes.data(), bytes.size());
    return file.finish();
}

} // namespace

TEST (OutputFile, replacesWhatWasThere)
{
    const TemporaryFolder folder;
    folder.write ("list.csv", "an older and much longer list");
    EXPECT_TRUE (write (folder.file ("list.csv"), "new"));
    EXPECT_EQ (folder.bytes ("list.csv"), "new");
}

TEST (OutputFile, aStringEndsWithAZeroByte)
{
    const TemporaryFolder folder;
    {
        OutputFile file (folder.file ("list.csv"));
        file.writeString (text ("é"));
        EXPECT_TRUE (file.finish());
    }
    EXPECT_EQ (folder.bytes ("list.csv"), std::string ("\xc3\xa9\0", 3));
}

TEST (OutputFile, isGoneUnlessFinished)
{
    const TemporaryFolder folder;
    {
        OutputFile file (folder.file ("list.csv"));
        file.write ("half", 4);
    }
    EXPECT_TRUE (folder.names().empty());
}

TEST (OutputFile, anEmptyDocumentIsADocument)
{
    const TemporaryFolder folder;
    EXPECT_TRUE (write (folder.file ("list.csv"), ""));
    EXPECT_EQ (folder.names(), std::vector<std::string> { "list.csv" });
}

TEST (OutputFile, failsInAFolderThatIsMissing)
{
    const TemporaryFolder folder;
    EXPECT_FALSE (write (folder.file ("missing/list.csv"), "text"));
    EXPECT_TRUE (folder.names().empty());
}

TEST (OutputFile, failsBelowAFile)
{
    const TemporaryFolder folder;
    folder.write ("file", "content");
    EXPECT_FALSE (write (folder.file ("file/list.csv"), "text"));
    EXPECT_EQ (folder.bytes ("file"), "content");
}

TEST (OutputFile, leavesAFolderInItsPlaceAlone)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory (folder.path / "list.csv");
    EXPECT_FALSE (write (folder.file ("list.csv"), "text"));
    EXPECT_TRUE (std::filesystem::is_directory (folder.path / "list.csv"));
}

TEST (OutputFile, leavesALinkToAFolderAlone)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory (folder.path / "elsewhere");
    std::filesystem::create_symlink (folder.path / "elsewhere", folder.path / "list.csv");
    EXPECT_FALSE (write (folder.file ("list.csv"), "text"));
    EXPECT_EQ (folder.names(), (std::vector<std::string> { "elsewhere", "list.csv" }));
}

TEST (OutputFile, aDiskWithoutSpaceShowsAlsoForAShortText)
{
    const TemporaryFolder folder;
    std::filesystem::create_symlink ("/dev/full", folder.path / "list.csv");
    EXPECT_FALSE (write (folder.file ("list.csv"), "short"));
    EXPECT_FALSE (write (folder.file ("list.csv"), std::string (100000, 'x')));
    EXPECT_TRUE (std::filesystem::is_symlink (folder.path / "list.csv"));
    EXPECT_TRUE (std::filesystem::exists ("/dev/full"));
}

TEST (OutputFile, leavesNothingHalfWrittenOnAFullDisk)
{
    for (const std::size_t size : { 1001u, 16384u, 100000u })
    {
        const TemporaryFolder folder;
        {
            const FullDisk disk (1000);
            EXPECT_FALSE (write (folder.file ("list.csv"), std::string (size, 'x'))) << size;
        }
        EXPECT_TRUE (folder.names().empty()) << size;
    }
}

TEST (OutputFile, aTextThatJustFitsIsNoFailure)
{
    const TemporaryFolder folder;
    const FullDisk disk (1000);
    EXPECT_TRUE (write (folder.file ("list.csv"), std::string (1000, 'x')));
}

TEST (OutputFile, doesNotWriteThroughALink)
{
    const TemporaryFolder folder;
    folder.write ("other", "kept");
    std::filesystem::create_symlink (folder.path / "other", folder.path / "list.csv");
    EXPECT_TRUE (write (folder.file ("list.csv"), "text"));
    EXPECT_EQ (folder.bytes ("other"), "kept");
    EXPECT_FALSE (std::filesystem::is_symlink (folder.path / "list.csv"));
}

TEST (OutputFile, doesNotCreateWhatALinkOnlyPromises)
{
    const TemporaryFolder folder;
    std::filesystem::create_symlink (folder.path / "nowhere", folder.path / "list.csv");
    EXPECT_TRUE (write (folder.file ("list.csv"), "text"));
    EXPECT_EQ (folder.names(), std::vector<std::string> { "list.csv" });
    EXPECT_EQ (folder.bytes ("list.csv"), "text");
}

TEST (OutputFile, doesNotWaitForTheReaderOfAPipe)
{
    const TemporaryFolder folder;
    ASSERT_EQ (::mkfifo ((folder.path / "list.csv").c_str(), 0600), 0);
    EXPECT_FALSE (write (folder.file ("list.csv"), "text"));
    EXPECT_TRUE (std::filesystem::is_fifo (folder.path / "list.csv"));
}

TEST (OutputFile, neitherFollowsNorReplacesAStrangersLink)
{
    SharedByAll shared;
    shared.own.write ("mine", "kept");
    std::filesystem::create_symlink (shared.own.path / "mine", shared.path ("list.csv"));
    shared.giveToStranger ("list.csv");

    EXPECT_FALSE (write (shared.file ("list.csv"), "text"));
    EXPECT_TRUE (std::filesystem::is_symlink (shared.path ("list.csv")));
    EXPECT_EQ (shared.own.bytes ("mine"), "kept");
}

TEST (OutputFile, doesNotWriteIntoAStrangersPipe)
{
    SharedByAll shared;
    ASSERT_EQ (::mkfifo (shared.path ("list.csv").c_str(), 0666), 0);
    const int reader = ::open (shared.path ("list.csv").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    shared.giveToStranger ("list.csv");
    EXPECT_FALSE (write (shared.file ("list.csv"), "text"));
    char byte = 0;
    EXPECT_EQ (::read (reader, &byte, 1), 0);
    ::close (reader);
}

TEST (OutputFile, doesNotFollowTheUsersOwnLinkToAStrangersLinkBehindIt)
{
    const TemporaryFolder folder;
    SharedByAll shared;
    std::filesystem::create_symlink ("/dev/null", shared.path ("list.csv"));
    std::filesystem::create_symlink (shared.path ("list.csv"), folder.path / "list.csv");
    EXPECT_TRUE (write (folder.file ("list.csv"), "text")) << "a device may be written to";
    shared.giveToStranger ("list.csv");
    EXPECT_FALSE (write (folder.file ("list.csv"), "text"));
}

TEST (OutputFile, whereAFileIsWrittenOverNoStrangersLinkLeadsToIt)
{
    const TemporaryFolder folder;
    folder.write ("mine", "kept");
    std::filesystem::permissions (folder.path / "mine", static_cast<std::filesystem::perms> (0666));
    SharedByAll shared;
    std::filesystem::create_symlink (folder.path / "mine", shared.path ("list.csv"));
    std::filesystem::create_symlink (shared.path ("list.csv"), folder.path / "list.csv");
    shared.giveToStranger ("list.csv");
    std::filesystem::permissions (folder.path, static_cast<std::filesystem::perms> (0555));
    const auto outcome = inChildProcess (
        [&] { return becomeOrdinaryUser() && ! write (folder.file ("list.csv"), "text") ? "refused" : ""; });
    std::filesystem::permissions (folder.path, static_cast<std::filesystem::perms> (0755));
    EXPECT_EQ (outcome, "refused");
    EXPECT_EQ (folder.bytes ("mine"), "kept");
}

TEST (OutputFile, whereNothingIsToStayAStrangersFileStaysAllTheSame)
{
    SharedByAll shared;
    std::ofstream (shared.path ("list.csv")) << "theirs";
    shared.giveToStranger ("list.csv");
    {
        const OutputFile file (shared.file ("list.csv"), OutputFile::OnFailure::nothingStaysThere);
    }
    EXPECT_TRUE (std::filesystem::exists (shared.path ("list.csv")));
}

TEST (OutputFile, inAFolderThatMayNotBeChangedTheOlderFileIsWrittenOver)
{
    const TemporaryFolder folder;
    folder.write ("list.csv", "much longer than the new one");
    std::filesystem::permissions (folder.path / "list.csv", static_cast<std::filesystem::perms> (0666));
    std::filesystem::permissions (folder.path, static_cast<std::filesystem::perms> (0555));
    const auto outcome = inChildProcess (
        [&] { return becomeOrdinaryUser() && write (folder.file ("list.csv"), "new") ? "written" : ""; });
    std::filesystem::permissions (folder.path, static_cast<std::filesystem::perms> (0755));
    EXPECT_EQ (outcome, "written");
    EXPECT_EQ (folder.bytes ("list.csv"), "new");
}

TEST (OutputFile, inAFolderThatMayNotBeChangedNothingHalfWrittenStays)
{
    for (const std::size_t size : { 1001u, 100000u })
    {
        const TemporaryFolder folder;
        folder.write ("list.csv", "old");
        std::filesystem::permissions (folder.path / "list.csv", static_cast<std::filesystem::perms> (0666));
        std::filesystem::permissions (folder.path, static_cast<std::filesystem::perms> (0555));
        const auto outcome = inChildProcess (
            [&]
            {
                const bool isOrdinary = becomeOrdinaryUser();
                const FullDisk disk (1000);
                return isOrdinary && ! write (folder.file ("list.csv"), std::string (size, 'x')) ? "refused"
                                                                                                 : "";
            });
        std::filesystem::permissions (folder.path, static_cast<std::filesystem::perms> (0755));
        EXPECT_EQ (outcome, "refused");
        EXPECT_EQ (folder.names(), std::vector<std::string> { "list.csv" });
        EXPECT_EQ (folder.bytes ("list.csv"), "") << size;
    }
}

TEST (OutputFile, piecesOfAnySizeKeepTheirOrder)
{
    const TemporaryFolder folder;
    std::string expected;
    {
        OutputFile file (folder.file ("list.csv"));

        for (const std::size_t size : { 3u, 16383u, 16384u, 1u, 50000u, 0u, 16385u, 7u })
        {
            const std::string piece (size, static_cast<char> ('a' + expected.size() % 26));
            expected += piece;
            file.write (piece.data(), piece.size());
        }

        EXPECT_TRUE (file.finish());
    }
    EXPECT_EQ (folder.bytes ("list.csv"), expected);
}

TEST (OutputFile, aNewOneMayBeReadByAllAndWrittenByItsOwnerAlone)
{
    const TemporaryFolder folder;
    const auto before = ::umask (0);
    EXPECT_TRUE (write (folder.file ("list.csv"), "text"));
    ::umask (before);
    EXPECT_EQ (static_cast<unsigned> (std::filesystem::status (folder.path / "list.csv").permissions()),
               0644u);
}
