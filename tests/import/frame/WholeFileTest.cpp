// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/WholeFile.h"

#include "import/ImportSupport.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace ZEP::Overmarks;
using namespace ImportSupport;

TEST (WholeFile, givesTheBytesAsTheyStand)
{
    const TemporaryFolder folder;
    const std::string bytes ("\xff\0\r\n\xc3", 5);
    EXPECT_EQ (contentOfFile (folder.file ("list.x", bytes)), bytes);
    EXPECT_EQ (contentOfFile (folder.file ("empty.x", {})), std::string());
}

TEST (WholeFile, whatIsMissingOrNoFileGivesNothing)
{
    const TemporaryFolder folder;
    const auto pipe = (folder.path / "pipe").string();
    ASSERT_EQ (::mkfifo (pipe.c_str(), 0600), 0);

    EXPECT_FALSE (contentOfFile ({}).has_value());
    EXPECT_FALSE (contentOfFile ((folder.path / "missing").string()).has_value());
    EXPECT_FALSE (contentOfFile (folder.path.string()).has_value());
    EXPECT_FALSE (contentOfFile (pipe).has_value());
    EXPECT_FALSE (contentOfFile ("/dev/zero").has_value());
}
