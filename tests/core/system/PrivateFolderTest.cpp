// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/PrivateFolder.h"

#include "support/Environment.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <thread>

namespace
{
using ZEP::Core::PrivateFolder;
using ZEP::Overmarks::Testing::Environment;
using ZEP::Overmarks::Testing::TemporaryFolder;
namespace fs = std::filesystem;

class PrivateFolderTest : public testing::Test
{
protected:
    const TemporaryFolder temporary;
    const Environment place { "TMPDIR", temporary.path };
};

TEST_F (PrivateFolderTest, itLiesAmongTheTemporaryFilesAndOnlyItsUserMayLookIntoIt)
{
    const PrivateFolder folder ("work-");
    EXPECT_EQ (folder.path().parent_path(), temporary.path);
    EXPECT_TRUE (folder.path().filename().native().starts_with ("work-"));

    struct stat status
    {
    };
    ASSERT_EQ (::stat (folder.path().c_str(), &status), 0);
    EXPECT_EQ (status.st_mode & 07777u, 0700u);
}

TEST_F (PrivateFolderTest, twoWithTheSameStartHaveDifferentNames)
{
    const PrivateFolder first ("work-");
    const PrivateFolder second ("work-");
    EXPECT_NE (first.path(), second.path());
}

TEST_F (PrivateFolderTest, itIsGoneWithEverythingInItButNotWithWhatLinksLeadTo)
{
    temporary.write ("mine", "kept");
    {
        const PrivateFolder folder ("work-");
        fs::create_directories (folder.path() / "a" / "b");
        std::ofstream (folder.path() / "a" / "b" / "file") << "x";
        fs::create_symlink (temporary.path / "mine", folder.path() / "link");
    }
    EXPECT_EQ (temporary.names(), std::vector<std::string> { "mine" });
}

TEST_F (PrivateFolderTest, whatAProcessThatIsEndingStillMakesInItIsRemovedToo)
{
    std::jthread late;
    {
        const PrivateFolder folder ("work-");

        for (int i = 0; i < 200; ++i)
            std::ofstream (folder.path() / std::to_string (i)) << "x";

        late = std::jthread (
            [path = folder.path()]
            {
                for (int i = 0; i < 300; ++i)
                    std::ofstream (path / ("late" + std::to_string (i))) << "x";
            });
    }
    late.join();
    EXPECT_TRUE (temporary.names().empty());
}

TEST_F (PrivateFolderTest, withoutAPlaceTheFolderAndTheReasonAreSaid)
{
    const Environment nowhere ("TMPDIR", "/proc/none");

    try
    {
        const PrivateFolder folder ("work-");
        FAIL() << folder.path();
    }
    catch (const std::runtime_error& error)
    {
        EXPECT_STREQ (error.what(), "no place for temporary files in /proc/none: No such file or directory");
    }
}

} // namespace
