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
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <thread>

namespace DocxHandler::Testing
{

namespace
{

using ::testing::ElementsAre;
using ZEP::Overmarks::Testing::becomeOrdinaryUser;
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

std::string messageOfReading (const fs::path& file, std::uintmax_t largest = 1000)
{
    try
    {
        static_cast<void> (readFile (file, largest));
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
    SharedByAll shared;
    std::ofstream (shared.path ("c.txt")) << "cancel\n";
    EXPECT_EQ (inChildProcess ([&] { return wordsAfter (shared.path ("c.txt")); }), "") << "it has ended";
    shared.giveToStranger ("c.txt");
    EXPECT_EQ (inChildProcess ([&] { return wordsAfter (shared.path ("c.txt")); }), "still at work");
}

TEST (StrangersFiles, aWordOnADiskThatGivesAllFilesOneOwnerStopsTheTool)
{
    const TemporaryFolder folder;
    folder.write ("c.txt", "cancel\n");
    EXPECT_EQ (inChildProcess (
                   [&]
                   {
                       const PretendedUser somebodyElse;
                       return wordsAfter (folder.path / "c.txt");
                   }),
               "");
}

TEST (StrangersFiles, aLinkOfAnotherUserToAWordStopsNothing)
{
    SharedByAll shared;
    shared.own.write ("diary", "cancel\n");
    fs::create_symlink (shared.own.path / "diary", shared.path ("c.txt"));
    EXPECT_EQ (inChildProcess ([&] { return wordsAfter (shared.path ("c.txt")); }), "")
        << "the user's own link";
    shared.giveToStranger ("c.txt");
    EXPECT_EQ (inChildProcess ([&] { return wordsAfter (shared.path ("c.txt")); }), "still at work");
}

TEST (StrangersFiles, aFileIsWrittenWhereALinkInALinkedFolderLeads)
{
    const TemporaryFolder folder;

    for (const auto* name : { "data/out", "data/archive", "home/archive" })
        fs::create_directories (folder.path / name);

    fs::create_symlink (folder.path / "data/out", folder.path / "home/out");
    fs::create_symlink ("../archive/a.docx", folder.path / "data/out/a.docx");
    EXPECT_EQ (messageOfPlacing (folder.path / "home/out/a.docx"), "");
    EXPECT_EQ (folder.bytes ("data/archive/a.docx"), "new");
    EXPECT_FALSE (fs::exists (folder.path / "home/archive/a.docx"));
}

// ---- reading ---------------------------------------------------------------------------------------------------------------

TEST (StrangersFiles, whatIsNoFileIsNotReadAndNotWaitedFor)
{
    constexpr unsigned int mostSeconds = 20;
    const TemporaryFolder folder;
    ASSERT_EQ (::mkfifo ((folder.path / "a.docx").c_str(), 0600), 0);
    fs::create_symlink ("/dev/zero", folder.path / "b.docx");
    ::alarm (mostSeconds);
    EXPECT_EQ (messageOfReading (folder.path / "a.docx"), "Not a file: " + (folder.path / "a.docx").string());
    EXPECT_EQ (messageOfReading (folder.path / "b.docx"), "Not a file: " + (folder.path / "b.docx").string());
    EXPECT_EQ (messageOfReading (folder.path), "Not a file: " + folder.path.string());
    ::alarm (0);
}

TEST (StrangersFiles, aFileThatMayNotBeLookedAtIsNotMissing)
{
    const TemporaryFolder folder;
    fs::create_directory (folder.path / "closed");
    folder.write ("closed/a.docx", "x");
    fs::permissions (folder.path, static_cast<fs::perms> (0755));
    fs::permissions (folder.path / "closed", static_cast<fs::perms> (0));
    const auto path = folder.path / "closed/a.docx";
    EXPECT_EQ (inChildProcess ([&] { return becomeOrdinaryUser() ? messageOfReading (path) : "still root"; }),
               "Can't be read: " + path.string());
    fs::permissions (folder.path / "closed", static_cast<fs::perms> (0755));
}

TEST (StrangersFiles, aFileOfTheLargestSizeIsReadAndALargerOneIsNot)
{
    const TemporaryFolder folder;
    folder.write ("a.docx", "12345678");
    EXPECT_EQ (readFile (folder.path / "a.docx", 8), "12345678");
    EXPECT_EQ (messageOfReading (folder.path / "a.docx", 7),
               "Too large: " + (folder.path / "a.docx").string());
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
    EXPECT_EQ (withoutOrders ("one\xe2\x80\xa8two\xe2\x80\xa9three\xe2\x80\xa7"), "one two three\xe2\x80\xa7")
        << "lines and paragraphs";
}

} // namespace DocxHandler::Testing
