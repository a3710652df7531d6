// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/WholeFile.h"

#include "support/ChildProcess.h"
#include "support/FullDisk.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <fcntl.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <functional>
#include <string>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{
using testing::ElementsAre;
using ZEP::Core::WholeFile;
using ZEP::Overmarks::Testing::becomeOrdinaryUser;
using ZEP::Overmarks::Testing::FullDisk;
using ZEP::Overmarks::Testing::inChildProcess;
using ZEP::Overmarks::Testing::TemporaryFolder;

namespace fs = std::filesystem;

/** The names that appear in a folder, also those that are gone again at once. */
class NewNames final
{
public:
    explicit NewNames (const fs::path& folder)
    {
        EXPECT_GE (::inotify_add_watch (watch, folder.c_str(), IN_CREATE), 0);
    }

    NewNames (const NewNames&) = delete;
    NewNames& operator= (const NewNames&) = delete;
    ~NewNames() { ::close (watch); }

    std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        alignas (inotify_event) char buffer[4096];
        const auto length = ::read (watch, buffer, sizeof (buffer));

        for (ssize_t place = 0; place < length;)
        {
            const auto* news = reinterpret_cast<const inotify_event*> (buffer + place);
            found.emplace_back (news->name);
            place += static_cast<ssize_t> (sizeof (inotify_event) + news->len);
        }

        return found;
    }

private:
    const int watch = ::inotify_init1 (IN_NONBLOCK | IN_CLOEXEC);
};

class WholeFileTest : public testing::Test
{
protected:
    std::string write (const std::string& name, std::string_view bytes) const
    {
        return WholeFile::write (folder.file (name), bytes).getErrorMessage().toStdString();
    }

    std::string cannotWrite (const std::string& name, const std::string& reason) const
    {
        return "Can't write " + (folder.path / name).string() + ": " + reason;
    }

    void permit (const std::string& name, unsigned int mode) const
    {
        fs::permissions (folder.path / name, static_cast<fs::perms> (mode));
    }

    struct stat statusOf (const std::string& name) const
    {
        struct stat status
        {
        };
        EXPECT_EQ (::lstat ((folder.path / name).c_str(), &status), 0);
        return status;
    }

    unsigned int modeOf (const std::string& name) const { return statusOf (name).st_mode & 07777; }

    TemporaryFolder folder;
};

TEST_F (WholeFileTest, writesAFileThatWasNotThere)
{
    EXPECT_EQ (write ("new", "content"), "");
    EXPECT_EQ (folder.bytes ("new"), "content");
    EXPECT_THAT (folder.names(), ElementsAre ("new"));
}

TEST_F (WholeFileTest, replacesAFileAndLeavesNothingElse)
{
    folder.write ("old", "a much longer content than the new one");
    EXPECT_EQ (write ("old", "new"), "");
    EXPECT_EQ (folder.bytes ("old"), "new");
    EXPECT_THAT (folder.names(), ElementsAre ("old"));
}

TEST_F (WholeFileTest, thePiecesFollowOneAnother)
{
    const std::string_view pieces[] = { "one ", "", "two ", std::string_view ("\0\xff", 2) };
    EXPECT_TRUE (WholeFile::write (folder.file ("file"), pieces));
    EXPECT_EQ (folder.bytes ("file"), std::string ("one two \0\xff", 10));
}

TEST_F (WholeFileTest, anEmptyFileIsAFile)
{
    folder.write ("file", "content");
    EXPECT_EQ (write ("file", ""), "");
    EXPECT_EQ (folder.bytes ("file"), "");
}

TEST_F (WholeFileTest, theOldFileStaysWhatItWasForWhoeverHasItOpen)
{
    folder.write ("file", "old");
    std::ifstream reader (folder.path / "file");
    EXPECT_EQ (write ("file", "new"), "");
    std::string read;
    reader >> read;
    EXPECT_EQ (read, "old");
}

// ---- permissions and owners ----------------------------------------------------------------------------------------

TEST_F (WholeFileTest, aNewFileHasThePermissionsOfTheProcess)
{
    const auto mask = ::umask (027);
    EXPECT_EQ (write ("file", "content"), "");
    ::umask (mask);
    EXPECT_EQ (modeOf ("file"), 0640u);
}

TEST_F (WholeFileTest, anExistingFileKeepsItsPermissions)
{
    for (const auto mode : { 0600u, 0644u, 0664u, 0777u })
    {
        folder.write ("file", "old");
        permit ("file", mode);
        EXPECT_EQ (write ("file", "new"), "");
        EXPECT_EQ (modeOf ("file"), mode);
    }
}

TEST_F (WholeFileTest, anExistingFileKeepsItsOwnerWhereThatIsAllowed)
{
    folder.write ("file", "old");
    const bool isAllowed = ::chown ((folder.path / "file").c_str(), 1234, 4321) == 0;
    const auto before = statusOf ("file");
    EXPECT_EQ (write ("file", "new"), "");
    EXPECT_EQ (statusOf ("file").st_uid, before.st_uid);
    EXPECT_EQ (statusOf ("file").st_gid, before.st_gid);
    EXPECT_EQ (before.st_uid == 1234u, isAllowed);
}

TEST_F (WholeFileTest, theRightsOfAGroupThatIsLostArePassedToNobody)
{
    if (::geteuid() != 0)
        return; // only an administrator can make such a file

    folder.write ("file", "old");
    permit ("file", 0666);
    permit ("", 0777);
    ASSERT_EQ (::chown ((folder.path / "file").c_str(), 0, 4321), 0);
    permit ("file", 0662);
    EXPECT_EQ (
        inChildProcess ([this] { return becomeOrdinaryUser() ? write ("file", "new") : "still root"; }), "");
    EXPECT_EQ (modeOf ("file"), 0622u);
}

TEST_F (WholeFileTest, aFileThatMayNotBeWrittenStaysAsItIs)
{
    folder.write ("file", "guarded");
    permit ("", 0777);
    permit ("file", 0444);
    const auto error =
        inChildProcess ([this] { return becomeOrdinaryUser() ? write ("file", "new") : "still root"; });
    EXPECT_EQ (error, cannotWrite ("file", "Permission denied"));
    EXPECT_EQ (folder.bytes ("file"), "guarded");
    EXPECT_THAT (folder.names(), ElementsAre ("file"));
}

TEST_F (WholeFileTest, aFolderThatMayNotBeWrittenKeepsItsFile)
{
    folder.write ("file", "old");
    permit ("file", 0666);
    permit ("", 0555);
    const auto error =
        inChildProcess ([this] { return becomeOrdinaryUser() ? write ("file", "new") : "still root"; });
    permit ("", 0755);
    EXPECT_EQ (error, cannotWrite ("file", "Permission denied"));
    EXPECT_EQ (folder.bytes ("file"), "old");
}

TEST_F (WholeFileTest, aFolderThatMayNotBeReadIsWrittenToAllTheSame)
{
    permit ("", 0333);
    const auto error =
        inChildProcess ([this] { return becomeOrdinaryUser() ? write ("file", "new") : "still root"; });
    permit ("", 0755);
    EXPECT_EQ (error, "");
    EXPECT_EQ (folder.bytes ("file"), "new");
}

// ---- links, folders, devices ---------------------------------------------------------------------------------------

TEST_F (WholeFileTest, aLinkStaysAndItsFileIsReplaced)
{
    fs::create_directory (folder.path / "server");
    folder.write ("server/file", "old");
    fs::create_symlink ("server/file", folder.path / "link");
    fs::create_symlink (folder.path / "link", folder.path / "link to link");
    EXPECT_EQ (write ("link to link", "new"), "");
    EXPECT_EQ (folder.bytes ("server/file"), "new");
    EXPECT_THAT (folder.names(), ElementsAre ("link", "link to link", "server"));
    EXPECT_TRUE (fs::is_symlink (folder.path / "link"));
    EXPECT_TRUE (fs::is_symlink (folder.path / "link to link"));
}

TEST_F (WholeFileTest, whatALinkPromisesIsMade)
{
    fs::create_symlink ("promised", folder.path / "link");
    EXPECT_EQ (write ("link", "new"), "");
    EXPECT_EQ (folder.bytes ("promised"), "new");
    EXPECT_TRUE (fs::is_symlink (folder.path / "link"));
}

TEST_F (WholeFileTest, aLinkToItselfIsNoPlace)
{
    fs::create_symlink ("link", folder.path / "link");
    EXPECT_EQ (write ("link", "new"), cannotWrite ("link", "Too many levels of symbolic links"));
}

TEST_F (WholeFileTest, anotherNameOfTheFileKeepsTheOldContent)
{
    folder.write ("file", "old");
    fs::create_hard_link (folder.path / "file", folder.path / "other name");
    EXPECT_EQ (write ("file", "new"), "");
    EXPECT_EQ (folder.bytes ("file"), "new");
    EXPECT_EQ (folder.bytes ("other name"), "old");
}

TEST_F (WholeFileTest, aFolderIsLeftAlone)
{
    fs::create_directory (folder.path / "folder");
    EXPECT_EQ (write ("folder", "new"), cannotWrite ("folder", "Is a directory"));
    EXPECT_THAT (folder.names(), ElementsAre ("folder"));
}

TEST_F (WholeFileTest, aMissingFolderIsSaid)
{
    EXPECT_EQ (write ("missing/file", "new"), cannotWrite ("missing/file", "No such file or directory"));
    EXPECT_TRUE (folder.names().empty());
}

TEST_F (WholeFileTest, theLongestNameIsPossible)
{
    const std::string name (255, 'n');
    EXPECT_EQ (write (name, "new"), "");
    EXPECT_EQ (folder.bytes (name), "new");
    EXPECT_EQ (write (name + "n", "new"), cannotWrite (name + "n", "File name too long"));
    EXPECT_THAT (folder.names(), ElementsAre (name));
}

TEST_F (WholeFileTest, theHiddenNameCutsNoCharacter)
{
    std::string name;
    for (int i = 0; i < 70; ++i)
        name += "\xe3\x81\x82"; // 210 bytes; the 200th lies within a character

    const NewNames made (folder.path);
    EXPECT_EQ (write (name, "new"), "");

    const auto seen = made.names();
    ASSERT_EQ (seen.size(), 1u);
    EXPECT_EQ (seen[0].substr (0, seen[0].size() - 8), "." + name.substr (0, 198) + ".");
    EXPECT_THAT (folder.names(), ElementsAre (name));
}

TEST_F (WholeFileTest, theHiddenNameOfAShortOneIsWhole)
{
    const NewNames made (folder.path);
    EXPECT_EQ (write ("reel.overmarks", "new"), "");

    const auto seen = made.names();
    ASSERT_EQ (seen.size(), 1u);
    EXPECT_EQ (seen[0].substr (0, 16), ".reel.overmarks.");
    EXPECT_EQ (seen[0].substr (16).find_first_not_of ("0123456789abcdef"), std::string::npos);
    EXPECT_EQ (seen[0].size(), 24u);
}

TEST_F (WholeFileTest, aDeviceIsWrittenInto)
{
    EXPECT_TRUE (WholeFile::isDeviceOrPipe (juce::File ("/dev/null")));
    EXPECT_EQ (WholeFile::write (juce::File ("/dev/null"), "text").getErrorMessage(), juce::String());
    EXPECT_TRUE (fs::is_character_file ("/dev/null"));
}

TEST_F (WholeFileTest, aDeviceWithoutSpaceIsAFailure)
{
    fs::create_symlink ("/dev/full", folder.path / "link");
    EXPECT_EQ (write ("link", "text"), cannotWrite ("link", "No space left on device"));
    EXPECT_TRUE (fs::is_character_file ("/dev/full"));
}

// ---- pipes -----------------------------------------------------------------------------------------------------------------

/** A pipe with a name, and what is more than it takes at a time. Whoever hangs is killed. */
class PipeTest : public WholeFileTest
{
protected:
    PipeTest() { EXPECT_EQ (::mkfifo ((folder.path / "pipe").c_str(), 0600), 0); }

    std::string writeInChild (const std::function<void()>& before) const
    {
        constexpr unsigned int mostSeconds = 20;
        return inChildProcess (
            [&]
            {
                ::alarm (mostSeconds);
                unblockSignalOfPipes();
                before();
                return write ("pipe", bytes);
            });
    }

    /** The framework blocks it on the main thread, but not on everybody's. */
    static void unblockSignalOfPipes()
    {
        sigset_t signals;
        sigemptyset (&signals);
        sigaddset (&signals, SIGPIPE);
        pthread_sigmask (SIG_UNBLOCK, &signals, nullptr);
    }

    int openForReading() const
    {
        return ::open ((folder.path / "pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    }

    const std::string bytes = std::string (300'000, 'x') + "end";
};

TEST_F (PipeTest, thatNobodyReadsIsAFailure)
{
    EXPECT_EQ (writeInChild ([] {}), cannotWrite ("pipe", "No such device or address"));
    EXPECT_TRUE (fs::is_fifo (folder.path / "pipe"));
}

TEST_F (PipeTest, whoseReaderLeavesIsAFailureAndNotTheEnd)
{
    EXPECT_EQ (writeInChild (
                   [this]
                   {
                       const int reader = openForReading();
                       std::thread (
                           [reader]
                           {
                               std::this_thread::sleep_for (std::chrono::milliseconds (100));
                               ::close (reader);
                           })
                           .detach();
                   }),
               cannotWrite ("pipe", "Broken pipe"));
}

TEST_F (PipeTest, whoseReaderTakesItsTimeGetsEverything)
{
    const int reader = openForReading();
    std::string error, got;
    std::thread writer ([&] { error = write ("pipe", bytes); });
    std::this_thread::sleep_for (std::chrono::milliseconds (100));
    std::string piece (1000, '\0');

    while (got.size() < bytes.size())
    {
        const auto length = ::read (reader, piece.data(), piece.size());
        got.append (piece, 0, static_cast<std::size_t> (std::max<ssize_t> (length, 0)));

        if (length == 0)
            break;
    }

    writer.join();
    ::close (reader);
    EXPECT_EQ (error, "");
    EXPECT_TRUE (got == bytes);
}

TEST_F (WholeFileTest, filesAndFoldersAreNoDevices)
{
    folder.write ("file", "content");
    EXPECT_FALSE (WholeFile::isDeviceOrPipe (folder.file ("file")));
    EXPECT_FALSE (WholeFile::isDeviceOrPipe (folder.file ("")));
    EXPECT_FALSE (WholeFile::isDeviceOrPipe (folder.file ("missing")));
}

// ---- no room -------------------------------------------------------------------------------------------------------

TEST_F (WholeFileTest, withoutRoomTheOldFileStays)
{
    folder.write ("file", "old");
    for (const std::size_t size : { 1001u, 100000u })
    {
        const FullDisk disk (1000);
        EXPECT_EQ (write ("file", std::string (size, 'x')), cannotWrite ("file", "File too large"));
    }
    EXPECT_EQ (folder.bytes ("file"), "old");
    EXPECT_THAT (folder.names(), ElementsAre ("file"));
}

TEST_F (WholeFileTest, aSizeLimitDoesNotEndTheProcess)
{
    const auto error = inChildProcess (
        [this]
        {
            const FullDisk disk (1000, SIG_DFL);
            return write ("file", std::string (1001, 'x')) + write ("file", std::string (1001, 'x'));
        });
    const auto once = cannotWrite ("file", "File too large");
    EXPECT_EQ (error, once + once);
    EXPECT_TRUE (folder.names().empty());
}

TEST_F (WholeFileTest, whatJustFitsIsWritten)
{
    const FullDisk disk (1000);
    EXPECT_EQ (write ("file", std::string (1000, 'x')), "");
}
} // namespace
