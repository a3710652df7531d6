// SPDX-License-Identifier: GPL-3.0-only
// What somebody else has put into a folder of everybody's under the name that a file is going to have.
#include "core/system/SharedFolder.h"

#include "core/system/UserDefaults.h"
#include "core/system/WholeFile.h"
#include "support/Stranger.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <fstream>
#include <iterator>

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

} // namespace
