// SPDX-License-Identifier: GPL-3.0-only
// overmarks export: sheets for the stage, and several documents as one batch.
#include "overmarks/ProgramFixture.h"

#include "support/PrintedPDF.h"

#include <gmock/gmock.h>

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using testing::HasSubstr;
using testing::Not;
using ZEP::Overmarks::Testing::PrintedPDF;

namespace
{

class ProgramSheetsTest : public ProgramTest
{
protected:
    ProgramSheetsTest()
    {
        write ("x.csv", threeCues);
        EXPECT_TRUE (file ("out").createDirectory().wasOk());
    }

    /** A program that stands in for the browser. */
    std::string browser (const std::string& script) const
    {
        write ("browser", "#!/bin/sh\n" + script);
        chmod (path ("browser").c_str(), 0755);
        return path ("browser");
    }

    std::vector<std::string> filesOut() const
    {
        std::vector<std::string> names;

        for (const auto& name : filesInFolder())
            if (name.starts_with ("out/"))
                names.push_back (name.substr (4));

        return names;
    }
};

TEST_F (ProgramSheetsTest, severalFormatsAreWrittenAsOneBatch)
{
    const auto result =
        run ({ "export", "x.csv", "-o", "out", "--format", "pdf,html,csv,asc,arendis,ttal", "--json" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (filesOut(),
               (std::vector<std::string> { "x.asc", "x.csv", "x.html", "x.pdf", "x.ttal", "x.txt" }));
    EXPECT_EQ (result.json()["files"].size(), 6u);

    const PrintedPDF sheet (path ("out/x.pdf"));
    ASSERT_TRUE (sheet.isValid());
    EXPECT_THAT (sheet.text(), HasSubstr ("ANNA (B. Miller), TOM (C. Berg)"));
    EXPECT_THAT (sheet.text(), HasSubstr ("Director Layout"));
    const auto page = read ("out/x.html");
    EXPECT_TRUE (page.starts_with ("<!DOCTYPE html>"));
    EXPECT_TRUE (page.ends_with ("</body></html>"));
    EXPECT_THAT (page, HasSubstr ("<p style=\"margin:10px;\">Who's \"there\"?</p>"));
    EXPECT_THAT (page, HasSubstr (path ("x.csv")));
}

TEST_F (ProgramSheetsTest, paperLayoutAndTitlesReachTheSheet)
{
    EXPECT_EQ (run ({ "export", "x.csv", "-o", "out", "--format", "pdf", "--paper", "letter", "--layout",
                      "actor", "--title", "Film", "--reel", "R7" })
                   .status,
               0);
    const PrintedPDF sheet (path ("out/x.pdf"));
    ASSERT_TRUE (sheet.isValid());
    EXPECT_NEAR (sheet.width(), 612, 1);
    EXPECT_NEAR (sheet.height(), 792, 1);
    EXPECT_THAT (sheet.text(), HasSubstr ("Actor Layout"));
    EXPECT_THAT (sheet.text(), HasSubstr ("Film"));
    EXPECT_THAT (sheet.text(), HasSubstr ("R7"));
}

TEST_F (ProgramSheetsTest, eachCharacterHasASheetOrAllHaveOne)
{
    const auto result = run ({ "export", "x.csv", "-o", "out", "--format", "html", "--by-character" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (filesOut(), (std::vector<std::string> { "x_ANNA.html", "x_TOM.html" }));
    EXPECT_EQ (
        run ({ "export", "x.csv", "-o", "out", "--format", "html", "--by-character", "--combine" }).status,
        0);
    EXPECT_THAT (read ("out/x.html"), HasSubstr ("page-break-after: always;"));
}

TEST_F (ProgramSheetsTest, aMissingBrowserIsToldAndTheOtherDocumentsAreWritten)
{
    const auto result = run ({ "export", "x.csv", "-o", "out", "--format", "pdf,csv", "--browser", "none" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors,
                 HasSubstr (path ("out/x.pdf") + " was not written: the browser none isn't installed\n"));
    EXPECT_THAT (result.errors, Not (HasSubstr (".overmarks.")));
    EXPECT_EQ (filesOut(), std::vector<std::string> { "x.csv" });
}

TEST_F (ProgramSheetsTest, aBrowserThatDiesLeavesTheOldSheet)
{
    write ("out/x.pdf", "old");
    const auto result = run ({ "export", "x.csv", "-o", "out", "--format", "pdf", "--force", "--browser",
                               browser ("exit 1"), "--json" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.json()["problems"][0]["message"],
               path ("out/x.pdf") + " was not written: the browser has ended before the page was printed");
    EXPECT_EQ (result.json()["files"].size(), 0u);
    EXPECT_EQ (read ("out/x.pdf"), "old");
}

TEST_F (ProgramSheetsTest, aListWithoutEventsStillHasItsDocuments)
{
    EXPECT_EQ (
        run ({ "export", "x.csv", "-o", "out", "--format", "csv,html,xlsx", "--character", "NOBODY" }).status,
        0);
    EXPECT_EQ (filesOut(), (std::vector<std::string> { "x.csv", "x.html", "x.xlsx" }));
}

TEST_F (ProgramSheetsTest, oneBarCountsAllDocuments)
{
    ProgramSurroundings terminal;
    terminal.errorsOnTerminal = true;
    const auto shown =
        run ({ "export", "x.csv", "-o", "out", "--format", "csv,html,asc,ttal" }, {}, terminal).errors;
    EXPECT_THAT (shown, HasSubstr ("Writing [###############...............] 50%"));
    EXPECT_THAT (shown, HasSubstr ("Writing [##############################] 100%"));
}

TEST_F (ProgramSheetsTest, withoutAPlaceForTemporaryFilesTheOtherDocumentsAreWritten)
{
    ProgramSurroundings surroundings;
    surroundings.temporaryFolder = path ("nowhere");
    const auto result = run ({ "export", "x.csv", "-o", "out", "--format", "csv,pdf" }, {}, surroundings);
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors,
                 HasSubstr (path ("out/x.pdf") + " was not written: there is no place for temporary files"));
    EXPECT_EQ (filesOut(), std::vector<std::string> { "x.csv" });
    EXPECT_EQ (
        run ({ "export", "x.csv", "-o", "out", "--format", "csv", "--force" }, {}, surroundings).status, 0);
}

/** Stops the program while the browser, which waits for that, prints. */
class ProgramStopTest : public ProgramSheetsTest
{
protected:
    struct Stopped
    {
        int status = 0;
        std::string errors;
    };

    Stopped stop (const std::string& formats)
    {
        EXPECT_TRUE (file ("temporary").createDirectory().wasOk());
        const auto waiting = browser ("touch " + path ("started") + "; sleep 2; exit 1");
        const auto program = std::string (OVERMARKS_PROGRAM);
        std::vector<std::string> words { program,    "export", "x.csv",     "-o",   "out",
                                         "--format", formats,  "--browser", waiting };
        std::vector<char*> pointers;

        for (auto& word : words)
            pointers.push_back (word.data());

        pointers.push_back (nullptr);
        const auto before = std::getenv ("TMPDIR") != nullptr ? std::getenv ("TMPDIR") : "/tmp";
        const std::string kept = before;
        setenv ("TMPDIR", path ("temporary").c_str(), 1);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init (&actions);
        posix_spawn_file_actions_addchdir_np (&actions, folder.getFullPathName().toRawUTF8());
        posix_spawn_file_actions_addopen (&actions, STDERR_FILENO, path ("errors").c_str(),
                                          O_WRONLY | O_CREAT, 0600);
        pid_t process = -1;
        EXPECT_EQ (posix_spawn (&process, program.c_str(), &actions, nullptr, pointers.data(), environ), 0);
        posix_spawn_file_actions_destroy (&actions);
        setenv ("TMPDIR", kept.c_str(), 1);

        for (int i = 0; i < 1000 && ! file ("started").exists(); ++i)
            std::this_thread::sleep_for (std::chrono::milliseconds (10));

        kill (process, SIGINT);
        Stopped result;
        EXPECT_EQ (waitpid (process, &result.status, 0), process);
        result.errors = read ("errors");
        EXPECT_EQ (file ("temporary").getNumberOfChildFiles (juce::File::findFilesAndDirectories), 0);
        return result;
    }
};

TEST_F (ProgramStopTest, whatIsFinishedStays)
{
    const auto result = stop ("csv,pdf,html");
    EXPECT_TRUE (WIFEXITED (result.status));
    EXPECT_EQ (WEXITSTATUS (result.status), 1);
    EXPECT_EQ (filesOut(), std::vector<std::string> { "x.csv" })
        << "nothing half-written, and nothing hidden";
    EXPECT_THAT (result.errors, HasSubstr ("Stopped; what was finished is kept\n"));
    EXPECT_THAT (result.errors, HasSubstr (path ("out/x.html") + " was not written\n"));
}

TEST_F (ProgramStopTest, aStopInTheLastDocumentIsToldToo)
{
    const auto result = stop ("csv,pdf");
    EXPECT_EQ (WEXITSTATUS (result.status), 1);
    EXPECT_EQ (filesOut(), std::vector<std::string> { "x.csv" });
    EXPECT_THAT (result.errors, HasSubstr ("Stopped; what was finished is kept\n"));
    EXPECT_THAT (result.errors, HasSubstr (path ("out/x.pdf") + " was not written: the browser has ended"));
}

TEST_F (ProgramStopTest, withNothingFinishedNothingIsKept)
{
    const auto result = stop ("pdf");
    EXPECT_EQ (WEXITSTATUS (result.status), 1);
    EXPECT_THAT (filesOut(), testing::IsEmpty());
    EXPECT_THAT (result.errors, HasSubstr ("Stopped; nothing was written\n"));
}

} // namespace
