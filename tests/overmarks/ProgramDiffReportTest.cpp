// SPDX-License-Identifier: GPL-3.0-only
// overmarks diff: the table, its colours, and the files.
#include "overmarks/ProgramDiffFixture.h"

#include <gmock/gmock.h>

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class ProgramDiffReportTest : public ProgramDiffFixture
{
protected:
    ProgramDiffReportTest()
    {
        writeLists (
            "01:00:02:00,01:00:04:00,ANNA,Who's there?,A1\n01:00:06:00,01:00:07:00,TOM,Gone.,T1\n",
            "01:00:02:00,01:00:04:00,ANNA,Who is there?,A1\n01:00:08:00,01:00:09:00,ANNA,\"New, \"\"really\"\"\",A2\n");
    }
};

TEST_F (ProgramDiffReportTest, theTableHasOneRowForEachChangeInTheOrderOfTime)
{
    EXPECT_EQ (diff().output, "Kind     Cue  Start TC     Character  Change\n"
                              "text     A1   01:00:02:00  ANNA       [-Who's-]{+Who is+} there?\n"
                              "removed  T1   01:00:06:00  TOM        Gone.\n"
                              "added    A2   01:00:08:00  ANNA       New, \"really\"\n");
}

TEST_F (ProgramDiffReportTest, theSummaryStandsOnStandardError)
{
    EXPECT_THAT (diff().errors, HasSubstr ("1 added, 1 removed, 1 text; 0 unchanged\n"));
    EXPECT_EQ (diff ({ "--quiet" }).errors, "");
    EXPECT_EQ (diff ({ "--quiet" }).status, 1);
}

TEST_F (ProgramDiffReportTest, aColumnInWhichNothingStandsIsLeftOut)
{
    write ("old.csv", "Start TC,Text\n01:00:02:00,Hello there\n");
    write ("new.csv", "Start TC,Text\n01:00:02:00,Hello here\n");
    EXPECT_EQ (diff().output, "Kind  Start TC     Change\ntext  01:00:02:00  Hello [-there-]{+here+}\n");
}

TEST_F (ProgramDiffReportTest, coloursAreForTerminalsAlone)
{
    ProgramSurroundings terminal;
    terminal.terminalWidth = 120;
    const auto shown = run ({ "diff", "old.csv", "new.csv" }, {}, terminal).output;
    EXPECT_THAT (shown, HasSubstr ("\033[31m[-Who's-]\033[0m\033[32m{+Who is+}\033[0m there?"));
    EXPECT_THAT (diff().output, Not (HasSubstr ("\033")));
    terminal.terminalType = "dumb";
    EXPECT_THAT (run ({ "diff", "old.csv", "new.csv" }, {}, terminal).output, Not (HasSubstr ("\033")));
}

TEST_F (ProgramDiffReportTest, nothingInATextSteersTheTerminal)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Hello \033[2J,A1\n",
                "01:00:02:00,01:00:04:00,ANNA,Bye \033[2J,A1\n");
    EXPECT_THAT (diff().output, Not (HasSubstr ("\033")));
}

TEST_F (ProgramDiffReportTest, theSpreadsheetHasOneRowForEachChange)
{
    const auto result = diff ({ "--csv", "changes.csv" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, HasSubstr ("Wrote " + path ("changes.csv") + "\n"));
    EXPECT_EQ (
        read ("changes.csv"),
        "\xef\xbb\xbf\"Kind\",\"Old Cue Number\",\"New Cue Number\",\"Old Character\",\"New Character\",\"Old Start TC\",\"New Start TC\","
        "\"Old End TC\",\"New End TC\",\"Moved By\",\"Longer By\",\"Old Text\",\"New Text\",\"Other Changes\"\r\n"
        "\"text\",\"A1\",\"A1\",\"ANNA\",\"ANNA\",\"01:00:02:00\",\"01:00:02:00\",\"01:00:04:00\",\"01:00:04:00\",\"\",\"\",\"Who's "
        "there?\",\"Who is there?\",\"\"\r\n"
        "\"removed\",\"T1\",\"\",\"TOM\",\"\",\"01:00:06:00\",\"\",\"01:00:07:00\",\"\",\"\",\"\",\"Gone.\",\"\",\"\"\r\n"
        "\"added\",\"\",\"A2\",\"\",\"ANNA\",\"\",\"01:00:08:00\",\"\",\"01:00:09:00\",\"\",\"\",\"\",\"New, \"\"really\"\"\",\"\"\r\n");
}

TEST_F (ProgramDiffReportTest, theSpreadsheetTellsShiftsAndOtherChanges)
{
    writeProject (
        "old.json",
        { R"("cueNumber": "A1", "inPointFrameIndex": 75, "startFrameIndex": 0, "endFrameIndex": 99)" });
    writeProject (
        "new.json",
        { R"("cueNumber": "A1", "inPointFrameIndex": 76, "startFrameIndex": 1, "endFrameIndex": 98, "done": true)" });
    diff ({ "--csv", "changes.csv" }, "old.json", "new.json");
    EXPECT_THAT (read ("changes.csv"), HasSubstr ("\"+00:00:00:01\",\"-00:00:00:02\""));
    EXPECT_THAT (read ("changes.csv"), HasSubstr ("\"Done: no -> yes\"\r\n"));
}

TEST_F (ProgramDiffReportTest, thePageMarksWordsAndEscapesThem)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,<b>old</b> & same,A1\n",
                "01:00:02:00,01:00:04:00,ANNA,<b>new</b> & same,A1\n");
    EXPECT_EQ (diff ({ "--html", "changes.html" }).status, 1);
    const auto page = read ("changes.html");
    EXPECT_THAT (page, HasSubstr ("&lt;b&gt;<del>old</del><ins>new</ins>&lt;/b&gt; &amp; same</td>"));
    EXPECT_THAT (page, HasSubstr ("1 text; 0 unchanged"));
    EXPECT_THAT (page, HasSubstr ("old.csv"));
    EXPECT_THAT (page, Not (HasSubstr ("<b>")));
}

TEST_F (ProgramDiffReportTest, thePageOfEqualListsSaysSo)
{
    EXPECT_EQ (diff ({ "--html", "changes.html" }, "old.csv", "old.csv").status, 0);
    EXPECT_THAT (read ("changes.html"), HasSubstr ("no differences; 2 unchanged"));
    EXPECT_THAT (read ("changes.html"), Not (HasSubstr ("<table")));
}

TEST_F (ProgramDiffReportTest, noFileIsReplacedUnlessForced)
{
    write ("changes.html", "mine");
    EXPECT_EQ (errorOf ({ "diff", "old.csv", "new.csv", "--html", "changes.html" }, 1),
               path ("changes.html") + " exists already; --force replaces it");
    EXPECT_EQ (read ("changes.html"), "mine");
    EXPECT_EQ (diff ({ "--html", "changes.html", "--force" }).status, 1);
    EXPECT_THAT (read ("changes.html"), StartsWith ("<!DOCTYPE html>"));
}

TEST_F (ProgramDiffReportTest, theListsThemselvesAreNeverReplaced)
{
    const auto before = read ("new.csv");
    EXPECT_EQ (diff ({ "--csv", "new.csv", "--force" }).status, 1);
    EXPECT_EQ (read ("new.csv"), before);
}

TEST_F (ProgramDiffReportTest, aDryRunWritesNothing)
{
    const auto result = diff ({ "--csv", "changes.csv", "--html", "changes.html", "--dry-run" });
    EXPECT_THAT (result.errors, HasSubstr ("Would write " + path ("changes.csv") + "\n"));
    EXPECT_THAT (filesInFolder(), ElementsAre ("new.csv", "old.csv"));
}

TEST_F (ProgramDiffReportTest, theDocumentNamesTheFiles)
{
    const auto written = diff ({ "--csv", "changes.csv", "--html", "changes.html", "--json" }).json();
    EXPECT_EQ (written["files"], (std::vector<std::string> { path ("changes.html"), path ("changes.csv") }));
    EXPECT_FALSE (written.contains ("dryRun"));
    EXPECT_FALSE (written["changes"].empty());

    const auto tried = diff ({ "--csv", "more.csv", "--dry-run", "--json" }).json();
    EXPECT_EQ (tried["files"], std::vector<std::string> { path ("more.csv") });
    EXPECT_EQ (tried["dryRun"], true);
    EXPECT_FALSE (file ("more.csv").exists());

    const auto equal = diff ({ "--csv", "more.csv", "--json" }, "old.csv", "old.csv").json();
    EXPECT_EQ (equal["files"], std::vector<std::string> { path ("more.csv") });
    EXPECT_TRUE (equal["changes"].empty());
}

TEST_F (ProgramDiffReportTest, aDocumentWithoutFilesHasTheChangesAlone)
{
    EXPECT_EQ (diff ({ "--json" }).json().size(), 1u);
    EXPECT_EQ (diff ({ "--json" }, "old.csv", "old.csv").json().size(), 1u);
}

TEST_F (ProgramDiffReportTest, applyingNamesTheFilesToo)
{
    const auto told =
        diff ({ "--apply", "-o", "merged.json", "--html", "changes.html", "--dry-run", "--json" }).json();
    EXPECT_EQ (told["files"], std::vector<std::string> { path ("changes.html") });
    EXPECT_EQ (told["dryRun"], true);
    EXPECT_EQ (told["project"], "merged.json");
}

} // namespace
