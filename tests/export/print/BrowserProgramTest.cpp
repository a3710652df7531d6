// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/BrowserProgram.h"

#include "export/print/PrintError.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <stdlib.h>
#include <sys/stat.h>

using namespace ZEP::Overmarks;
using testing::Contains;
using testing::IsSupersetOf;
using testing::Not;
using ZEP::Overmarks::Testing::TemporaryFolder;

namespace
{

std::string failureFor (const std::string& wanted)
{
    try
    {
        return "found " + findBrowser (wanted).string();
    }
    catch (const PrintError& error)
    {
        return error.what();
    }
}

/** The search path, as it was before when this ends. */
class SearchPath final
{
public:
    explicit SearchPath (const char* path)
    {
        path != nullptr ? ::setenv ("PATH", path, 1) : ::unsetenv ("PATH");
    }

    SearchPath (const SearchPath&) = delete;
    SearchPath& operator= (const SearchPath&) = delete;
    ~SearchPath() { ::setenv ("PATH", before.c_str(), 1); }

private:
    const std::string before = ::getenv ("PATH");
};

TEST (BrowserProgram, onlyAFileThatMayBeStartedIsAProgram)
{
    const TemporaryFolder folder;
    const auto path = (folder.path / "browser").string();
    const auto none = [] (const std::string& wanted)
    { return "the browser " + wanted + " can't be started: there is no such program"; };
    EXPECT_EQ (failureFor (path), none (path));
    folder.write ("browser", "#!/bin/sh\n");
    ::chmod (path.c_str(), 0644);
    EXPECT_EQ (failureFor (path), none (path));
    ::chmod (path.c_str(), 0755);
    EXPECT_EQ (failureFor (path), "found " + path);
    EXPECT_EQ (failureFor (folder.path.string()), none (folder.path.string())) << "a folder";
}

TEST (BrowserProgram, aNameIsSoughtInEachFolderOfThePathInTurn)
{
    const TemporaryFolder folder;

    for (const std::string name : { "one", "two", "three" })
    {
        std::filesystem::create_directory (folder.path / name);

        if (name != "one")
        {
            folder.write (name + "/browser", "#!/bin/sh\n");
            ::chmod ((folder.path / name / "browser").c_str(), 0755);
        }
    }

    const auto in = [&folder] (const char* name) { return (folder.path / name).string(); };
    {
        const SearchPath path ((in ("one") + ":" + in ("two") + ":" + in ("three")).c_str());
        EXPECT_EQ (failureFor ("browser"), "found " + in ("two") + "/browser");
    }
    {
        const SearchPath path ((in ("one") + "::" + in ("three")).c_str());
        EXPECT_EQ (failureFor ("browser"), "found " + in ("three") + "/browser");
    }
    {
        const SearchPath path (in ("one").c_str());
        EXPECT_EQ (failureFor ("browser"), "the browser browser isn't installed");
    }
}

TEST (BrowserProgram, withoutAPathTheUsualFoldersAreSearched)
{
    const SearchPath none (nullptr);
    EXPECT_EQ (findBrowser ("env"), "/usr/bin/env");
    EXPECT_EQ (failureFor ("no-such-browser"), "the browser no-such-browser isn't installed");
}

TEST (BrowserProgram, isStartedWithoutAWindowWithoutAWayToTheNetworkAndWithoutTracesOfFormerRuns)
{
    const auto arguments = browserArguments ("/tmp/x/profile", true);
    EXPECT_THAT (arguments,
                 IsSupersetOf ({ "--headless", "--remote-debugging-pipe", "--user-data-dir=/tmp/x/profile",
                                 "--host-resolver-rules=MAP * ~NOTFOUND", "--proxy-server=http://127.0.0.1:9",
                                 "--proxy-bypass-list=<-loopback>", "--dns-prefetch-disable", "--no-pings",
                                 "--disable-background-networking", "--disable-component-update",
                                 "--disable-domain-reliability", "--disable-sync" }));
    EXPECT_THAT (arguments,
                 IsSupersetOf ({ "--disable-extensions", "--disable-default-apps", "--no-first-run",
                                 "--disable-breakpad", "--disable-crash-reporter" }));
    EXPECT_THAT (arguments, Contains ("--disable-dev-shm-usage")) << "or a long list fails in a container";
}

TEST (BrowserProgram, givesUpItsSandboxWhenItIsToldTo)
{
    EXPECT_THAT (browserArguments ("/tmp/x", true), Not (Contains ("--no-sandbox")));
    EXPECT_THAT (browserArguments ("/tmp/x", false), Contains ("--no-sandbox"));
    EXPECT_EQ (browserArguments ("/tmp/x", false).size(), browserArguments ("/tmp/x", true).size() + 1);
}

} // namespace
