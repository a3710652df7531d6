// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/SystemUtility.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace
{
using ZEP::Core::SystemUtility;

class System : public testing::Test
{
protected:
    void SetUp() override
    {
        remember ("XDG_DATA_HOME", dataHome);
        remember ("HOME", home);
        SystemUtility::configure ({});
    }

    void TearDown() override
    {
        restore ("XDG_DATA_HOME", dataHome);
        restore ("HOME", home);
        SystemUtility::configure ({});
    }

private:
    static void remember (const char* name, std::optional<std::string>& value)
    {
        if (const char* now = std::getenv (name))
            value = now;
    }

    static void restore (const char* name, const std::optional<std::string>& value)
    {
        if (value.has_value())
            setenv (name, value->c_str(), 1);
        else
            unsetenv (name);
    }

    std::optional<std::string> dataHome;
    std::optional<std::string> home;
};
} // namespace

TEST_F (System, isTheSecondApplicationByDefault) { EXPECT_EQ (SystemUtility::getApplicationType(), 1); }

TEST_F (System, takesItsVersionFromTheLibraryByDefault)
{
    const auto version = SystemUtility::executableVersion();

    EXPECT_TRUE (version.containsOnly ("0123456789.")) << version;
    EXPECT_EQ (juce::StringArray::fromTokens (version, ".", {}).size(), 3) << version;
}

TEST_F (System, findsItsResourcesBesideTheFolderItWasLoadedFrom)
{
    const auto program = juce::File::getSpecialLocation (juce::File::currentExecutableFile);
    const auto root = program.getParentDirectory().getParentDirectory();

    EXPECT_EQ (SystemUtility::bundleResourcePath(),
               root.getChildFile ("share/overmarks/resources").getFullPathName());
}

TEST_F (System, keepsWhatBelongsToTheUserInTheUsersDataFolder)
{
    setenv ("XDG_DATA_HOME", "/somewhere/data", 1);
    EXPECT_EQ (SystemUtility::applicationSupportDirectoryPath(), "/somewhere/data/overmarks");

    setenv ("HOME", "/home/anna", 1);
    unsetenv ("XDG_DATA_HOME");
    EXPECT_EQ (SystemUtility::applicationSupportDirectoryPath(), "/home/anna/.local/share/overmarks");
}

TEST_F (System, passesOverADataFolderThatIsNoFullPathOrNoText)
{
    setenv ("HOME", "/home/anna", 1);
    for (const auto* folder : { "", "data", "../data", "/bad\xff" })
    {
        setenv ("XDG_DATA_HOME", folder, 1);
        EXPECT_EQ (SystemUtility::applicationSupportDirectoryPath(), "/home/anna/.local/share/overmarks");
    }
}

TEST_F (System, isWhatTheApplicationSaysItIs)
{
    SystemUtility::configure ({ 0, "3.1 beta", "/opt/studio/resources/", "/home/anna/studio//" });

    EXPECT_EQ (SystemUtility::getApplicationType(), 0);
    EXPECT_EQ (SystemUtility::executableVersion(), "3.1 beta");
    EXPECT_EQ (SystemUtility::bundleResourcePath(), "/opt/studio/resources");
    EXPECT_EQ (SystemUtility::applicationSupportDirectoryPath(), "/home/anna/studio");
}

TEST_F (System, whatTheApplicationLeavesEmptyKeepsItsDefault)
{
    const auto resources = SystemUtility::bundleResourcePath();
    const auto version = SystemUtility::executableVersion();
    SystemUtility::configure ({ 7, {}, {}, "/" });

    EXPECT_EQ (SystemUtility::getApplicationType(), 7);
    EXPECT_EQ (SystemUtility::bundleResourcePath(), resources);
    EXPECT_EQ (SystemUtility::executableVersion(), version);
    EXPECT_EQ (SystemUtility::applicationSupportDirectoryPath(), "/");
}
