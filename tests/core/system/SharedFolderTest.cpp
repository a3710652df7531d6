// SPDX-License-Identifier: GPL-3.0-only
// What somebody else has put into a folder of everybody's under the name that a file is going to have.
#include "core/system/SharedFolder.h"

#include "core/system/UserDefaults.h"
#include "core/system/WholeFile.h"
#include "support/Stranger.h"

#include <gmock/gmock.h>

#include <fcntl.h>

#include <atomic>
#include <fstream>
#include <iterator>
#include <thread>

namespace
{
using ZEP::Core::UserDefaults;
using ZEP::Core::WholeFile;
using ZEP::Overmarks::Testing::SharedByAll;
namespace SharedFolder = ZEP::Core::SharedFolder;
namespace fs = std::filesystem;

class SharedFolderTest : public testing::Test
{
protected:
    /** A stranger's link with this name to a file of the user's own. */
    void putLink (const std::string& name)
    {
        shared.own.write ("mine", "kept");
        fs::create_symlink (shared.own.path / "mine", shared.path (name));
        shared.giveToStranger (name);
    }

    std::string write (const std::string& name) const
    {
        return WholeFile::write (shared.file (name), "new").getErrorMessage().toStdString();
    }

    std::string cannotWrite (const std::string& name) const
    {
        return "Can't write " + shared.path (name).string() + ": Permission denied";
    }

    SharedByAll shared;
};

TEST_F (SharedFolderTest, aStrangersLinkIsNotFollowed)
{
    putLink ("sheet.pdf");
    EXPECT_TRUE (SharedFolder::holdsAStrangers (shared.path ("sheet.pdf")));
    EXPECT_EQ (write ("sheet.pdf"), cannotWrite ("sheet.pdf"));
    EXPECT_EQ (shared.own.bytes ("mine"), "kept");
    EXPECT_TRUE (fs::is_symlink (shared.path ("sheet.pdf")));
}

TEST_F (SharedFolderTest, norIsOneThatLeadsNowhere)
{
    fs::create_symlink (shared.own.path / "nowhere", shared.path ("sheet.pdf"));
    shared.giveToStranger ("sheet.pdf");
    EXPECT_EQ (write ("sheet.pdf"), cannotWrite ("sheet.pdf"));
    EXPECT_FALSE (shared.own.file ("nowhere").exists());
}

TEST_F (SharedFolderTest, norOneBehindALinkOfTheUsersOwn)
{
    putLink ("theirs");
    fs::create_symlink (shared.path ("theirs"), shared.own.path / "sheet.pdf");
    const auto file = shared.own.file ("sheet.pdf");
    EXPECT_EQ (WholeFile::write (file, "new").getErrorMessage(),
               "Can't write " + file.getFullPathName() + ": Permission denied");
    EXPECT_EQ (shared.own.bytes ("mine"), "kept");
}

TEST_F (SharedFolderTest, norOneToADevice)
{
    fs::create_symlink ("/dev/null", shared.path ("sheet.pdf"));
    shared.giveToStranger ("sheet.pdf");
    EXPECT_EQ (write ("sheet.pdf"), cannotWrite ("sheet.pdf"));
}

TEST_F (SharedFolderTest, aStrangersPipeGetsNothing)
{
    ASSERT_EQ (::mkfifo (shared.path ("sheet.pdf").c_str(), 0666), 0);
    const int reader = ::open (shared.path ("sheet.pdf").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    shared.giveToStranger ("sheet.pdf");
    EXPECT_EQ (write ("sheet.pdf"), cannotWrite ("sheet.pdf"));
    char byte = 0;
    EXPECT_EQ (::read (reader, &byte, 1), 0);
    ::close (reader);
}

TEST_F (SharedFolderTest, whatIsTheUsersOwnIsFollowed)
{
    shared.own.write ("mine", "old");
    fs::create_symlink (shared.own.path / "mine", shared.path ("sheet.pdf"));
    EXPECT_FALSE (SharedFolder::holdsAStrangers (shared.path ("sheet.pdf")));
    EXPECT_EQ (write ("sheet.pdf"), "");
    EXPECT_EQ (shared.own.bytes ("mine"), "new");
    EXPECT_TRUE (fs::is_symlink (shared.path ("sheet.pdf")));
    fs::remove (shared.path ("sheet.pdf"));
}

TEST_F (SharedFolderTest, inAFolderOfOnesOwnWhoseLinkItIsMakesNoDifference)
{
    const ZEP::Overmarks::Testing::TemporaryFolder folder;
    folder.write ("real", "old");
    fs::create_symlink ("real", folder.path / "sheet.pdf");
    const ZEP::Overmarks::Testing::PretendedUser somebodyElse;
    EXPECT_FALSE (SharedFolder::holdsAStrangers (folder.path / "sheet.pdf"));
    EXPECT_EQ (SharedFolder::placeBehindLinks (folder.path / "sheet.pdf"), folder.path / "real");
}

TEST_F (SharedFolderTest, aLinkOfTheFoldersOwnerIsFollowed)
{
    const ZEP::Overmarks::Testing::TemporaryFolder folder;
    fs::permissions (folder.path, static_cast<fs::perms> (01777));
    fs::create_symlink ("real", folder.path / "sheet.pdf");
    const ZEP::Overmarks::Testing::PretendedUser somebodyElse;
    EXPECT_EQ (SharedFolder::placeBehindLinks (folder.path / "sheet.pdf"), folder.path / "real")
        << "who could do what he likes there in any case";
}

TEST_F (SharedFolderTest, whatIsNotThereIsNobodys)
{
    EXPECT_FALSE (SharedFolder::holdsAStrangers (shared.path ("missing")));
    EXPECT_FALSE (SharedFolder::holdsAStrangers (shared.own.path / "missing" / "file"));
    EXPECT_EQ (SharedFolder::placeBehindLinks ("missing"), "missing");
}

TEST_F (SharedFolderTest, aPathWithoutAFolderIsOneOfTheWorkingFolder)
{
    const auto before = fs::current_path();
    putLink ("sheet.pdf");
    fs::current_path (shared.path ("sheet.pdf").parent_path());
    EXPECT_TRUE (SharedFolder::holdsAStrangers (shared.path ("sheet.pdf").filename()));
    fs::current_path (before);
}

TEST_F (SharedFolderTest, settingsAreNotReadThroughAStrangersLink)
{
    putLink ("settings");
    const auto result = UserDefaults::setSettingsFile (shared.file ("settings"));
    EXPECT_EQ (result.getErrorMessage().toStdString(), "The settings file \""
                                                           + shared.path ("settings").string()
                                                           + "\" can't be read: Permission denied");
    EXPECT_EQ (shared.own.bytes ("mine"), "kept");
}

TEST_F (SharedFolderTest, whatIsTakenAwayAndPutThereAgainAllTheTimeIsNeverFollowed)
{
    shared.own.write ("mine", "kept");
    const auto target = shared.own.path / "mine", link = shared.path ("sheet.pdf");
    std::atomic<bool> hasBegun { false }, isOver { false };
    std::thread stranger (
        [&]
        {
            shared.makeThreadAStrangers();

            for (hasBegun = true; ! isOver;)
            {
                ASSERT_EQ (::symlink (target.c_str(), link.c_str()), 0);
                ASSERT_EQ (::unlink (link.c_str()), 0);
            }
        });

    while (! hasBegun)
        std::this_thread::yield();

    int refused = 0, followed = 0;

    for (int round = 0; round < 50'000; ++round)
        try
        {
            followed += SharedFolder::placeBehindLinks (link) == link ? 0 : 1;
        }
        catch (const std::system_error&)
        {
            ++refused;
        }

    isOver = true;
    stranger.join();
    EXPECT_EQ (followed, 0);
    EXPECT_GT (refused, 0) << "else nobody has met the link";
}

// ---- links that lead out of a folder which is a link itself ----------------------------------------------------------------

/** The folder of the user's documents is a link to one on another disk, where a document is a link into the archive beside it. */
class LinkedFolders : public testing::Test
{
protected:
    LinkedFolders()
    {
        for (const auto* name : { "data/out", "data/archive", "home/archive" })
            fs::create_directories (folder.path / name);

        fs::create_symlink (folder.path / "data/out", folder.path / "home/out");
        folder.write ("home/archive/film", "another film");
    }

    void linkTo (const std::string& target) const
    {
        fs::create_symlink (target, folder.path / "data/out/film");
    }

    const ZEP::Overmarks::Testing::TemporaryFolder folder;
    const fs::path film = folder.path / "home/out/film";
};

TEST_F (LinkedFolders, aLinkLeadsToTheNeighbourOfTheRealFolder)
{
    linkTo ("../archive/film");
    EXPECT_EQ (SharedFolder::placeBehindLinks (film), fs::canonical (folder.path) / "data/archive/film");
}

TEST_F (LinkedFolders, aLinkWithinTheFolderLeadsToTheRealOne)
{
    linkTo ("real");
    EXPECT_EQ (SharedFolder::placeBehindLinks (film), fs::canonical (folder.path) / "data/out/real");
}

TEST_F (LinkedFolders, whatIsNoLinkKeepsItsPath) { EXPECT_EQ (SharedFolder::placeBehindLinks (film), film); }

TEST_F (LinkedFolders, aLinkThatClimbsOutOfAFolderThatIsMissingLeadsNowhere)
{
    linkTo ("../missing/../archive/film");
    EXPECT_THROW (static_cast<void> (SharedFolder::placeBehindLinks (film)), std::system_error);
}

TEST_F (LinkedFolders, aLinkIntoAFolderThatIsMissingKeepsItsPath)
{
    linkTo ("/missing/film"); // nothing to climb
    EXPECT_EQ (SharedFolder::placeBehindLinks (film), "/missing/film");
}

TEST_F (LinkedFolders, settingsAreSavedWhereTheLinkLeads)
{
    linkTo ("../archive/film");
    ASSERT_TRUE (UserDefaults::setSettingsFile (juce::File (juce::String (film.string()))));
    ASSERT_TRUE (UserDefaults::setValueForKey ("Studio", juce::String ("A")));
    ASSERT_TRUE (UserDefaults::setSettingsFile ({}));
    ASSERT_TRUE (UserDefaults::removeAllStoredValues());
    EXPECT_EQ (folder.bytes ("home/archive/film"), "another film");
    EXPECT_NE (folder.bytes ("data/archive/film"), "");
    EXPECT_TRUE (fs::is_symlink (film));
}

} // namespace
