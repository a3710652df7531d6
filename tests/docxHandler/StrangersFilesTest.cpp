// SPDX-License-Identifier: GPL-3.0-only
// The tool's files have names that everybody knows, in a folder that may be everybody's.
#include "CharacterText.h"
#include "Failure.h"
#include "FileBytes.h"
#include "ImportSupport.h"
#include "RunDocxHandler.h"
#include "StopWatch.h"
#include "support/ChildProcess.h"
#include "support/Stranger.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <chrono>
#include <fstream>
#include <thread>

namespace DocxHandler::Testing
{

namespace
{

using ::testing::ElementsAre;
using ZEP::Overmarks::Testing::inChildProcess;
using ZEP::Overmarks::Testing::PretendedUser;
using ZEP::Overmarks::Testing::SharedByAll;
namespace fs = std::filesystem;

std::string messageOfPlacing (const fs::path& file)
{
    try
    {
        placeFile (file, "new");
        return {};
    }
    catch (const Failure& failure)
    {
        return failure.what();
    }
}

unsigned int permissionsOf (const fs::path& path)
{
    struct stat status
    {
    };
    EXPECT_EQ (::stat (path.c_str(), &status), 0);
    return status.st_mode & 07777;
}

/* What a tool that may be stopped by this file says, if it is not. */
std::string wordsAfter (const fs::path& cancelFile)
{
    constexpr auto longerThanALook = std::chrono::milliseconds (400);
    StopWatch watch;
    watch.watch (cancelFile, StopWatch::EarlierWord::counts);
    std::this_thread::sleep_for (longerThanALook);
    return "still at work";
}

} // namespace

TEST (StrangersFiles, aStrangersLinkIsNotFollowed)
{
    SharedByAll shared;
    shared.own.write ("mine", "kept");
    fs::create_symlink (shared.own.path / "mine", shared.path ("P2CcomWordExporter.txt"));
    shared.giveToStranger ("P2CcomWordExporter.txt");
    EXPECT_EQ (messageOfPlacing (shared.path ("P2CcomWordExporter.txt")),
               "Can't be written (Permission denied): " + shared.path ("P2CcomWordExporter.txt").string());
    EXPECT_EQ (shared.own.bytes ("mine"), "kept");
}

TEST (StrangersFiles, aLinkOfTheUsersOwnIsFollowed)
{
    SharedByAll shared;
    shared.own.write ("mine", "old");
    fs::create_symlink (shared.own.path / "mine", shared.path ("a.docx"));
    EXPECT_EQ (messageOfPlacing (shared.path ("a.docx")), "");
    EXPECT_EQ (shared.own.bytes ("mine"), "new");
    fs::remove (shared.path ("a.docx"));
}

TEST (StrangersFiles, linksInACircleAreNoPlace)
{
    const TemporaryFolder folder;
    fs::create_symlink ("b", folder.path / "a");
    fs::create_symlink ("a", folder.path / "b");
    EXPECT_EQ (messageOfPlacing (folder.path / "a"),
               "Can't be written (Too many levels of symbolic links): " + (folder.path / "a").string());
}

TEST (StrangersFiles, anotherNameOfAFileKeepsWhatItSays)
{
    const TemporaryFolder folder;
    folder.write ("mine", "kept");
    fs::create_hard_link (folder.path / "mine", folder.path / "a.txt");
    EXPECT_EQ (messageOfPlacing (folder.path / "a.txt"), "");
    EXPECT_EQ (folder.bytes ("a.txt"), "new");
    EXPECT_EQ (folder.bytes ("mine"), "kept");
}

TEST (StrangersFiles, aWordOfAnotherUserStopsNothing)
{
    const TemporaryFolder folder;
    folder.write ("c.txt", "cancel\n");
    EXPECT_EQ (inChildProcess ([&] { return wordsAfter (folder.path / "c.txt"); }), "") << "it has ended";
    fs::permissions (folder.path, static_cast<fs::perms> (01777));
    EXPECT_EQ (inChildProcess (
                   [&]
                   {
                       const PretendedUser somebodyElse;
                       return wordsAfter (folder.path / "c.txt");
                   }),
               "still at work");
}

TEST (StrangersFiles, whatIsHandedOnNobodyElseReads)
{
    const TemporaryFolder folder;
    folder.write ("a.docx", documentOf (sheetJSON ({ fullCueJSON() })));
    folder.write ("p.txt", "an older run's");
    fs::permissions (folder.path / "p.txt", static_cast<fs::perms> (0644));
    EXPECT_EQ (runDocxHandler (folder, { "import", "input=a.docx", "json=a.json", "com=p.txt,c.txt" }).status,
               0);
    EXPECT_EQ (permissionsOf (folder.path / "a.json"), 0600u);
    EXPECT_EQ (permissionsOf (folder.path / "p.txt"), 0600u);
}

// ---- what it says ----------------------------------------------------------------------------------------------------------

TEST (StrangersFiles, aNameOnStandardErrorCommandsNoTerminal)
{
    const TemporaryFolder folder;
    const std::string name = "a\x1b]0;owned\x07\n\x7f\xc2\x9b\xe2\x80\xae\xff.docx";
    EXPECT_EQ (runDocxHandler (folder, { "import", "input=" + name, "json=a.json" }).errors,
               "docxHandler: No such file: a ]0;owned     \xef\xbf\xbd.docx\n");
    EXPECT_EQ (runDocxHandler (folder, { "\x1b[2J" }).errors,
               "docxHandler: Neither export nor import:  [2J\ndocxHandler --help tells how it is called.\n");
}

TEST (StrangersFiles, whatSteersATerminalIsBlankAndTheRestStays)
{
    EXPECT_EQ (withoutOrders ("J\xc3\xa4ger \xe6\x97\xa5 \xf0\x9f\x8e\xac\t\r"),
               "J\xc3\xa4ger \xe6\x97\xa5 \xf0\x9f\x8e\xac  ");
    EXPECT_EQ (withoutOrders ("\xe2\x81\xa6x\xe2\x81\xa9\xc2\x80\xc2\x9f\xc2\xa0"), " x   \xc2\xa0");
}

} // namespace DocxHandler::Testing
