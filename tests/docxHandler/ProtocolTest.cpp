// SPDX-License-Identifier: GPL-3.0-only
//
// The program itself, run as its callers run it.
#include "DocxContents.h"
#include "ImportSupport.h"
#include "RunDocxHandler.h"

#include <chrono>
#include <csignal>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>

namespace DocxHandler::Testing
{

namespace
{

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using Clock = std::chrono::steady_clock;

constexpr auto communication = "com=p.txt,c.txt";

const auto sheet = sheetJSON ({ fullCueJSON(), cueJSON() });

class Protocol : public ::testing::Test
{
protected:
    Outcome run (const std::vector<std::string>& words, const std::function<void()>& prepare = {})
    {
        return runDocxHandler (folder, words, prepare);
    }

    /* Until the document at hand is read and is being laid out, packed and written. */
    /** @param level  which the work has left behind, in percent */
    void waitUntilBusy (int level = 30) const
    {
        constexpr int mostMilliseconds = 60'000; // a busy machine, and the checks of a sanitizer

        for (int i = 0; i < mostMilliseconds; ++i)
        {
            const auto progress = folder.bytes ("p.txt");

            if (progress.find ('=') != std::string::npos
                && std::stoi (progress.substr (progress.find ('=') + 1)) > level)
                return;

            std::this_thread::sleep_for (std::chrono::milliseconds (1));
        }

        FAIL() << "It never began";
    }

    void writeLargeSheet() const { folder.write ("a.txt", sheetJSON (manyCues (4000)).dump()); }

    TemporaryFolder folder;
};

void limitFiles()
{
    constexpr rlim_t most = 4096;
    const rlimit limit { most, most };
    std::signal (SIGXFSZ, SIG_DFL); // whoever has started it
    ::setrlimit (RLIMIT_FSIZE, &limit);
}

} // namespace

TEST_F (Protocol, exportMakesEachDocument)
{
    folder.write ("a.txt", sheet.dump());
    folder.write ("b.txt", sheetJSON ({ cueJSON() }).dump());
    const auto outcome = run ({ "export", "json=a.txt,b.txt", "output=a.docx,b.docx", communication });
    EXPECT_EQ (outcome.status, 0);
    EXPECT_EQ (outcome.output + outcome.errors, "");
    EXPECT_THAT (folder.names(), ElementsAre ("a.docx", "a.txt", "b.docx", "b.txt", "p.txt"));
    EXPECT_EQ (folder.bytes ("p.txt"), "completionLevel=100\n");
    EXPECT_EQ (cuesOfWordDocument (folder.bytes ("a.docx")).size(), 2U);
    EXPECT_EQ (cuesOfWordDocument (folder.bytes ("b.docx")).size(), 1U);
}

TEST_F (Protocol, importWritesTheCuesOnOneLine)
{
    folder.write ("a.docx", documentOf (sheet));
    const auto outcome = run ({ "import", "input=a.docx", "json=a.json", communication });
    EXPECT_EQ (outcome.status, 0);
    EXPECT_EQ (folder.bytes ("p.txt"), "completionLevel=100\n");
    const auto json = folder.bytes ("a.json");
    EXPECT_EQ (json.find ('\n'), json.size() - 1);
    const auto cues = JSON::parse (json).at ("cueList");
    ASSERT_EQ (cues.size(), 2U);
    EXPECT_EQ (
        cues[0].dump(),
        R"({"startTC":"01:00:07:01","endTC":"01:00:11:07","charName":"ANNA","cueNumber":"R1-001","reason":"Aeroplane",)"
        R"("text":{"text":"No.\nNot )"
        "\xe2\x99\xaa"
        R"( again\t& <never>.","fontAttributeList":[{"range_start":0,"range_end":2,"font_type":1},{"range_start":4,"range_end":9,"font_type":6}],)"
        R"("colourAttributeList":[{"range_start":4,"range_end":9,"colour":{"red":192,"green":0,"blue":0}}]},)"
        R"("note":{"text":"Softer.","fontAttributeList":[{"range_start":0,"range_end":7,"font_type":1}],"colourAttributeList":[]},)"
        R"("engineeringNotes":{"text":"Use the lavalier.","fontAttributeList":[],"colourAttributeList":[]},"forcedNarrativeRegion":"Top"})");
}

TEST_F (Protocol, importOfADocumentWithoutCuesTellsSo)
{
    folder.write ("a letter.docx", documentAround (paragraphXML ("Dear director")));
    const auto outcome = run ({ "import", "input=a letter.docx", "json=a.json", communication });
    EXPECT_EQ (outcome.status, 1);
    EXPECT_EQ (outcome.errors, "docxHandler: a letter.docx holds no cues\n");
    EXPECT_EQ (folder.bytes ("p.txt"), "completionLevel=0\nError message = a letter.docx holds no cues\n");
    EXPECT_THAT (folder.names(), ElementsAre ("a letter.docx", "p.txt"));
}

TEST_F (Protocol, importOfNothingTellsSo)
{
    EXPECT_EQ (run ({ "import", "input=gone.docx", "json=a.json", communication }).errors,
               "docxHandler: No such file: gone.docx\n");
    EXPECT_EQ (run ({ "import", "input=.", "json=a.json", communication }).errors,
               "docxHandler: Not a file: .\n");
}

TEST_F (Protocol, aMessageStaysOnOneLineWhateverTheFileIsCalled)
{
    folder.write ("a\nError message = b.docx", "x");
    run ({ "import", "input=a\nError message = b.docx", "json=a.json", communication });
    EXPECT_EQ (folder.bytes ("p.txt"),
               "completionLevel=0\nError message = a Error message = b.docx is no Word document\n");
}

TEST_F (Protocol, anErrorOfAnEarlierRunIsGone)
{
    folder.write ("p.txt", "completionLevel=100\nError message = old\n");
    folder.write ("a.docx", documentOf (sheet));
    EXPECT_EQ (run ({ "import", "input=a.docx", "json=a.json", communication }).status, 0);
    EXPECT_EQ (folder.bytes ("p.txt"), "completionLevel=100\n");
}

TEST_F (Protocol, nothingToDoIsDone)
{
    EXPECT_EQ (run ({ "export", "json=", "output=", communication }).status, 0);
    EXPECT_EQ (run ({ "export", "", "", communication }).status, 0);
    EXPECT_EQ (folder.bytes ("p.txt"), "completionLevel=100\n");
}

TEST_F (Protocol, wrongUsageIsStatusTwo)
{
    const auto outcome = run ({ "export", "json=a.txt", "output=" });
    EXPECT_EQ (outcome.status, 2);
    EXPECT_EQ (outcome.errors,
               "docxHandler: json= names 1 files, output= 0\ndocxHandler --help tells how it is called.\n");
    EXPECT_EQ (run ({}).status, 2);
}

TEST_F (Protocol, helpAndVersionGoToStandardOutput)
{
    EXPECT_THAT (run ({ "--help" }).output, HasSubstr ("docxHandler export json="));
    EXPECT_THAT (run ({ "--version" }).output, StartsWith ("docxHandler "));
    EXPECT_EQ (run ({ "--help" }).status, 0);
}

TEST_F (Protocol, aBrokenSheetLeavesTheOthersAndTheLevelBelowHundred)
{
    folder.write ("a.txt", "{");
    folder.write ("b.txt", sheet.dump());
    const auto outcome =
        run ({ "export", "json=a.txt,gone.txt,b.txt", "output=a.docx,c.docx,b.docx", communication });
    EXPECT_EQ (outcome.status, 1);
    EXPECT_EQ (outcome.errors,
               "docxHandler: The cue sheet is no JSON: a.txt\ndocxHandler: No such file: gone.txt\n");
    EXPECT_THAT (folder.names(), ElementsAre ("a.txt", "b.docx", "b.txt", "p.txt"));
    EXPECT_EQ (
        folder.bytes ("p.txt"),
        "completionLevel=99\nError message = The cue sheet is no JSON: a.txt\nError message = No such file: gone.txt\n");
}

TEST_F (Protocol, aFolderThatIsNotThereIsNamed)
{
    folder.write ("a.txt", sheet.dump());
    EXPECT_EQ (run ({ "export", "json=a.txt", "output=gone/a.docx" }).errors,
               "docxHandler: Can't be written (No such file or directory): gone/a.docx\n");
}

TEST_F (Protocol, aFullDiskLeavesTheOldDocumentAndNothingElse)
{
    folder.write ("a.txt", sheet.dump());
    folder.write ("a.docx", "old");
    const auto outcome = run ({ "export", "json=a.txt", "output=a.docx", communication }, limitFiles);
    EXPECT_EQ (outcome.status, 1);
    EXPECT_EQ (outcome.errors, "docxHandler: Can't be written (File too large): a.docx\n");
    EXPECT_EQ (folder.bytes ("a.docx"), "old");
    EXPECT_THAT (folder.names(), ElementsAre ("a.docx", "a.txt", "p.txt"));
}

TEST_F (Protocol, aProgressFileThatCannotBeWrittenStopsNothing)
{
    folder.write ("a.txt", sheet.dump());
    EXPECT_EQ (run ({ "export", "json=a.txt", "output=a.docx", "com=gone/p.txt,gone/c.txt" }).status, 0);
    EXPECT_EQ (cuesOfWordDocument (folder.bytes ("a.docx")).size(), 2U);
}

TEST_F (Protocol, aProgressFileThatKeepsWhatItHeldIsAnError)
{
    folder.write ("a.docx", documentOf (sheet));
    folder.write ("a.txt", sheet.dump());
    std::filesystem::create_directory (folder.path / "p.txt");
    const auto imported = run ({ "import", "input=a.docx", "json=a.json", communication });
    EXPECT_EQ (imported.status, 1);
    EXPECT_EQ (imported.errors, "docxHandler: Is a folder: p.txt\n");
    EXPECT_EQ (JSON::parse (folder.bytes ("a.json")).at ("cueList").size(), 2U);

    const auto exported = run ({ "export", "json=a.txt", "output=b.docx", communication });
    EXPECT_EQ (exported.status, 1);
    EXPECT_EQ (exported.errors, "docxHandler: Is a folder: p.txt\n");
    EXPECT_EQ (cuesOfWordDocument (folder.bytes ("b.docx")).size(), 2U);
}

TEST_F (Protocol, aPipeOrDeviceIsNeverReplaced)
{
    folder.write ("a.docx", documentOf (sheet));
    folder.write ("a.txt", sheet.dump());
    const auto pipe = folder.path / "pipe.txt";
    ASSERT_EQ (::mkfifo (pipe.c_str(), 0600), 0);
    std::filesystem::create_symlink ("pipe.txt", folder.path / "link.txt");

    for (const std::string name : { "pipe.txt", "link.txt" })
    {
        EXPECT_EQ (run ({ "export", "json=a.txt", "output=" + name }).errors,
                   "docxHandler: Not a file: " + name + "\n");
        EXPECT_EQ (run ({ "import", "input=a.docx", "json=" + name }).errors,
                   "docxHandler: Not a file: " + name + "\n");
        EXPECT_EQ (run ({ "import", "input=a.docx", "json=a.json", "com=" + name + ",c.txt" }).errors,
                   "docxHandler: Not a file: " + name + "\n");
        EXPECT_TRUE (std::filesystem::is_fifo (pipe));
    }
}

TEST_F (Protocol, aPipeInThePlaceOfTheCancelFileStopsNothing)
{
    constexpr unsigned int mostSeconds = 20;
    folder.write ("a.txt", sheet.dump());
    folder.write ("a.docx", documentOf (sheet));
    ASSERT_EQ (::mkfifo ((folder.path / "c.txt").c_str(), 0600), 0);

    for (const auto& words :
         { std::vector<std::string> { "export", "json=a.txt", "output=b.docx", communication },
           std::vector<std::string> { "import", "input=a.docx", "json=a.json", communication } })
        EXPECT_EQ (run (words, [] { ::alarm (mostSeconds); }).status, 0);
}

TEST_F (Protocol, aLinkKeepsLeadingToTheDocument)
{
    folder.write ("a.txt", sheet.dump());
    folder.write ("real.docx", "old");
    std::filesystem::create_symlink ("real.docx", folder.path / "a.docx");
    EXPECT_EQ (run ({ "export", "json=a.txt", "output=a.docx" }).status, 0);
    EXPECT_TRUE (std::filesystem::is_symlink (folder.path / "a.docx"));
    EXPECT_EQ (cuesOfWordDocument (folder.bytes ("real.docx")).size(), 2U);
}

TEST_F (Protocol, cancelStopsItInTheMidstOfADocument)
{
    writeLargeSheet();
    folder.write ("a.docx", "old");
    const auto child = startDocxHandler (folder, { "export", "json=a.txt", "output=a.docx", communication });
    waitUntilBusy();
    const auto before = Clock::now();
    folder.write ("c.txt", std::string ("cancel\n\0", 8));
    const auto outcome = waitForProgram (folder, child);
    const auto taken = Clock::now() - before;

    EXPECT_EQ (outcome.status, 3);
    EXPECT_LT (taken, std::chrono::seconds (30)); // it looks every 50 ms; the rest is for a busy machine
    EXPECT_EQ (folder.bytes ("a.docx"), "old");
    EXPECT_THAT (folder.names(), ElementsAre ("a.docx", "a.txt", "c.txt", "p.txt"));
    EXPECT_NE (folder.bytes ("p.txt"), "completionLevel=100\n");
}

TEST_F (Protocol, documentsThatAreFinishedStayWhenItIsCancelled)
{
    writeLargeSheet();
    folder.write ("first.txt", sheet.dump());
    const auto child = startDocxHandler (
        folder, { "export", "json=first.txt,a.txt", "output=first.docx,a.docx", communication });
    waitUntilBusy();
    folder.write ("c.txt", "cancel\n");
    EXPECT_EQ (waitForProgram (folder, child).status, 3);
    EXPECT_THAT (folder.names(), ElementsAre ("a.txt", "c.txt", "first.docx", "first.txt", "p.txt"));
    EXPECT_EQ (cuesOfWordDocument (folder.bytes ("first.docx")).size(), 2U);
}

TEST_F (Protocol, aCancelThatCameBeforeTheStartCounts)
{
    writeLargeSheet();
    folder.write ("c.txt", "cancel\n");
    EXPECT_EQ (run ({ "export", "json=a.txt", "output=a.docx", communication }).status, 3);
    EXPECT_THAT (folder.names(), ::testing::Not (::testing::Contains ("a.docx")));
}

TEST_F (Protocol, anImportPassesOverTheCancelOfAnEarlierExport)
{
    folder.write ("c.txt", "cancel\n");
    folder.write ("a.docx", documentOf (sheetJSON (manyCues (1000))));
    EXPECT_EQ (run ({ "import", "input=a.docx", "json=a.json", communication }).status, 0);
}

TEST_F (Protocol, aCancelBehindTheOneOfAnEarlierExportCounts)
{
    const std::string earlier = "cancel\n" + std::string (5000, '-');
    folder.write ("c.txt", earlier);
    folder.write ("a.docx", documentOf (sheetJSON (manyCues (6000))));
    const auto child = startDocxHandler (folder, { "import", "input=a.docx", "json=a.json", communication });
    waitUntilBusy (-1);
    folder.write ("c.txt", earlier + "cancel\n");
    EXPECT_EQ (waitForProgram (folder, child).status, 3);
    EXPECT_THAT (folder.names(), ElementsAre ("a.docx", "c.txt", "p.txt"));
}

TEST_F (Protocol, otherWordsInTheCancelFileStopNothing)
{
    folder.write ("a.txt", sheetJSON (manyCues (1000)).dump());
    folder.write ("c.txt", "continue\n");
    EXPECT_EQ (run ({ "export", "json=a.txt", "output=a.docx", communication }).status, 0);
}

TEST_F (Protocol, aSignalLeavesNothingHalfWritten)
{
    for (const auto signal : { SIGTERM, SIGINT, SIGHUP })
    {
        writeLargeSheet();
        const auto child =
            startDocxHandler (folder, { "export", "json=a.txt", "output=a.docx", communication });
        waitUntilBusy();
        ::kill (child, signal);
        EXPECT_EQ (waitForProgram (folder, child).status, 128 + signal);
        EXPECT_THAT (folder.names(), ElementsAre ("a.txt", "p.txt")) << signal;
        std::filesystem::remove (folder.path / "p.txt");
    }
}

TEST_F (Protocol, killedItLeavesTheOldDocument)
{
    writeLargeSheet();
    folder.write ("a.docx", "old");
    const auto child = startDocxHandler (folder, { "export", "json=a.txt", "output=a.docx", communication });
    waitUntilBusy();
    ::kill (child, SIGKILL);
    EXPECT_EQ (waitForProgram (folder, child).status, 128 + SIGKILL);
    EXPECT_EQ (folder.bytes ("a.docx"), "old");
}

TEST_F (Protocol, theProgressRisesAndIsNeverSeenInHalves)
{
    writeLargeSheet();
    const auto child = startDocxHandler (folder, { "export", "json=a.txt", "output=a.docx", communication });
    std::set<int> levels;

    for (int status = 0; ::waitpid (child, &status, WNOHANG) == 0;)
    {
        const auto progress = folder.bytes ("p.txt");

        if (progress.empty())
            continue; // not there yet

        EXPECT_THAT (progress, ::testing::MatchesRegex ("completionLevel=[0-9]+\n"));
        const auto level = std::stoi (progress.substr (progress.find ('=') + 1));
        EXPECT_TRUE (levels.empty() || level >= *levels.rbegin());
        levels.insert (level);
    }

    EXPECT_GT (levels.size(), 5U);
    EXPECT_EQ (folder.bytes ("p.txt"), "completionLevel=100\n");
}

TEST_F (Protocol, hugeSheetsAreRefusedByTheirSize)
{
    folder.write ("a.txt", "");
    std::filesystem::resize_file (folder.path / "a.txt",
                                  std::uintmax_t { 1 } << 30U); // of nothing, on the disk
    EXPECT_EQ (run ({ "export", "json=a.txt", "output=a.docx" }).errors, "docxHandler: Too large: a.txt\n");
}

TEST_F (Protocol, theTimeIsTheOneThatTheEnvironmentFixes)
{
    folder.write ("a.txt", sheet.dump());
    run ({ "export", "json=a.txt", "output=a.docx" }, [] { ::setenv ("SOURCE_DATE_EPOCH", "86400", 1); });
    EXPECT_THAT (partsOf (folder.bytes ("a.docx")).at ("docProps/core.xml"),
                 HasSubstr (">1970-01-02T00:00:00Z<"));
}

} // namespace DocxHandler::Testing
