// SPDX-License-Identifier: GPL-3.0-only
// How `overmarks check` tells what it has found: the table, JSON, the page and the table for spreadsheets.
#include "overmarks/ProgramCheckFixture.h"

#include <gmock/gmock.h>

#include <chrono>

using nlohmann::ordered_json;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace
{

constexpr auto goodRows = "01:00:02:00,01:00:04:00,ANNA,Hello,A1\n"
                          "01:00:05:00,01:00:06:00,TOM,Hello,T1\n";

constexpr auto badRows = "01:00:02:00,01:00:04:00,ANNA,,A1\n"
                         "01:00:05:00,01:00:06:00,,Hello,\n"
                         "01:00:07:00,01:00:08:00,TOM,Hello,T1\n";

// ---- standard output ------------------------------------------------------------------------------------------------------

TEST_F (ProgramCheckTest, aListWithNothingWrongSaysSoAndEndsWithZero)
{
    writeRows (goodRows);
    const auto result = run ({ "check", "x.csv" });
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.output, "");
    EXPECT_THAT (result.errors, HasSubstr ("Nothing was found in 2 events\n"));
}

TEST_F (ProgramCheckTest, findingsAreATableInTheOrderOfTheListAndEndWithOne)
{
    writeRows (badRows);
    const auto result = run ({ "check", "x.csv" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.output, "Cue  Start TC     Character  Rule                Finding\n"
                              "A1   01:00:02:00  ANNA       empty-text          It has no text\n"
                              "     01:00:05:00             no-character        It has no character\n"
                              "     01:00:05:00             cue-number-missing  It has no cue number\n");
    EXPECT_THAT (result.errors, HasSubstr ("3 findings in 3 events\n"));
}

TEST_F (ProgramCheckTest, findingsStandInTheOrderThatTheListIsSortedIn)
{
    EXPECT_THAT (rulesIn (badRows, { "--descending" }),
                 ElementsAre (" no-character", " cue-number-missing", "A1 empty-text"));
}

TEST_F (ProgramCheckTest, jsonHasAllMembersOfAFinding)
{
    writeProject (R"({"uuid": "u-1", "type": 8, "cueNumber": "A1", "characterID": "c1", "startFrameIndex": 0,
        "inPointFrameIndex": 50, "endFrameIndex": 100})");
    const auto result = check ({ "x.json" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.json().dump(),
               ordered_json::parse (R"({"findings": [{"rule": "empty-text", "uuid": "u-1", "cueNumber": "A1",
                   "startTC": "01:00:02:00", "message": "It has no text"}], "checked": 1, "problems": []})")
                   .dump());
}

TEST_F (ProgramCheckTest, cellsThatNoRuleIsAboutAreProblemsOfTheFile)
{
    write ("x.csv", "Start TC,End TC,Character,Text,Cue Number,Done\n"
                    "01:00:02:00,later,ANNA,Hello,A1,perhaps\n");
    const auto result = check ({ "x.csv" });
    EXPECT_EQ (result.status, 1);
    const auto document = result.json();
    ASSERT_EQ (document["findings"].size(), 1u) << result.output;
    EXPECT_EQ (document["findings"][0]["rule"], "tc-invalid");
    ASSERT_EQ (document["problems"].size(), 1u) << "what is a finding isn't told twice";
    EXPECT_EQ (document["problems"][0]["message"], "\"perhaps\" is neither yes nor no");
    EXPECT_EQ (result.errors, "x.csv: row 2, Done: \"perhaps\" is neither yes nor no\n");
}

TEST_F (ProgramCheckTest, aFadeWithATimeThatCanNotBeReadIsAProblemOfTheFile)
{
    write ("x.csv", "Start TC,Event Type\nsoon,Fade In\n");
    const auto result = check ({ "x.csv" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.json()["findings"], IsEmpty());
    EXPECT_EQ (result.json()["problems"].size(), 1u);
}

TEST_F (ProgramCheckTest, aListThatIsNotThereIsOneDocumentToo)
{
    EXPECT_THAT (errorOf ({ "check", "missing.csv" }, 1), HasSubstr ("There is no file "));
}

TEST_F (ProgramCheckTest, aListFromStandardInputIsChecked)
{
    const auto result =
        run ({ "check", "-", "--format", "csv", "--rule", "empty-text", "--json" }, table (badRows));
    EXPECT_EQ (result.json()["findings"].size(), 1u);
    EXPECT_EQ (result.status, 1);
}

// ---- rules and limits -----------------------------------------------------------------------------------------------------

TEST_F (ProgramCheckTest, rulesAreChosenAndLeftOutOneByOneOrInLists)
{
    EXPECT_THAT (rulesIn (badRows, { "--rule", "empty-text,NO-character" }),
                 ElementsAre ("A1 empty-text", " no-character"));
    EXPECT_THAT (rulesIn (badRows, { "--rule", "empty-text", "--rule", "no-character" }),
                 ElementsAre ("A1 empty-text", " no-character"));
    EXPECT_THAT (rulesIn (badRows, { "--skip", "empty-text, cue-number-missing" }),
                 ElementsAre (" no-character"));
    EXPECT_THAT (rulesIn (badRows, { "--rule", "empty-text,no-character", "--skip", "empty-text" }),
                 ElementsAre (" no-character"));
}

TEST_F (ProgramCheckTest, anUnknownRuleIsWrongUsageWithASuggestion)
{
    writeRows (goodRows);
    const auto result = errorOf ({ "check", "x.csv", "--rule", "empty-txt" }, 2);
    EXPECT_THAT (result, StartsWith ("--rule: \"empty-txt\" is none of tc-invalid, drop-frame-illegal, "));
    EXPECT_THAT (result, HasSubstr ("Did you mean \"empty-text\"?"));
    EXPECT_THAT (errorOf ({ "check", "x.csv", "--skip", "tc-invalid,overlap" }, 2),
                 StartsWith ("--skip: \"overlap\" is none of "));
    EXPECT_EQ (errorOf ({ "check", "x.csv", "--rule", "," }, 2), "--rule names no rule");
    EXPECT_EQ (errorOf ({ "check", "x.csv", "--rule", "too-fast", "--skip", "too-fast" }, 2),
               "--skip leaves no rule to check");
}

TEST_F (ProgramCheckTest, limitsHaveToMakeSense)
{
    writeRows (goodRows);
    EXPECT_EQ (errorOf ({ "check", "x.csv", "--max-cps", "0" }, 2), "--max-cps: it has to be more than 0");
    EXPECT_EQ (errorOf ({ "check", "x.csv", "--max-cps", "nan" }, 2), "--max-cps: it has to be more than 0");
    EXPECT_EQ (errorOf ({ "check", "x.csv", "--min-seconds=-1" }, 2),
               "--min-seconds: it can't be less than 0");
    EXPECT_EQ (errorOf ({ "check", "x.csv", "--min-seconds", "2", "--max-seconds", "2" }, 2),
               "--max-seconds: it has to be more than --min-seconds");
    EXPECT_EQ (errorOf ({ "check", "x.csv", "--max-lines", "0" }, 2), "--max-lines: it has to be 1 at least");
    EXPECT_THAT (errorOf ({ "check", "x.csv", "--max-cps", "many" }, 2), HasSubstr ("--max-cps"));
}

TEST_F (ProgramCheckTest, aLimitOfARuleThatIsNotLookedForIsSaidToMakeNoDifference)
{
    writeRows (goodRows);
    EXPECT_THAT (run ({ "check", "x.csv", "--max-cps", "12", "--skip", "too-fast" }).errors,
                 HasSubstr ("--max-cps makes no difference: too-fast is not looked for\n"));
    EXPECT_THAT (run ({ "check", "x.csv", "--max-cps", "12" }).errors, Not (HasSubstr ("no difference")));
}

TEST_F (ProgramCheckTest, helpShowsEveryRuleAndEveryLimit)
{
    const auto help = run ({ "check", "--help" }).output;

    for (const auto* rule :
         { "tc-invalid", "end-before-start", "zero-length", "no-character", "unknown-character", "empty-text",
           "cue-number-missing", "cue-number-duplicate", "overlap-same-character", "too-fast", "too-short",
           "too-long", "line-count", "drop-frame-illegal", "before-origin", "takes-inconsistent",
           "non-latin1", "ds-taker-overflow", "spreadsheet-formula" })
        EXPECT_THAT (help, HasSubstr (std::string ("  ") + rule + " ")) << rule;

    EXPECT_THAT (help,
                 AllOf (HasSubstr ("(20)"), HasSubstr ("(0.2)"), HasSubstr ("(30)"), HasSubstr ("(5)")));
    EXPECT_THAT (help, HasSubstr ("Example:\n  overmarks check"));
}

// ---- what is looked at ----------------------------------------------------------------------------------------------------

TEST_F (ProgramCheckTest, onlyWhatTheFilterLetsThroughIsReported)
{
    EXPECT_THAT (rulesIn (badRows, { "--character", "TOM" }), IsEmpty());
    EXPECT_THAT (rulesIn (badRows, { "--character", "ANNA" }), ElementsAre ("A1 empty-text"));
}

TEST_F (ProgramCheckTest, aCueIsComparedAlsoWithThoseThatTheFilterHides)
{
    const auto* const rows = "01:00:02:00,01:00:04:00,ANNA,first,A1\n"
                             "01:00:03:00,01:00:05:00,ANNA,second,A2\n"
                             "01:00:06:00,01:00:07:00,TOM,third,A2\n";
    EXPECT_THAT (rulesIn (rows, { "--text", "first" }), ElementsAre ("A1 overlap-same-character"));
    EXPECT_THAT (rulesIn (rows, { "--character", "TOM" }), ElementsAre ("A2 cue-number-duplicate"));
    EXPECT_THAT (rulesIn (rows, { "--text", "second" }),
                 ElementsAre ("A2 overlap-same-character", "A2 cue-number-duplicate"));
}

TEST_F (ProgramCheckTest, disabledEventsAreLeftOutUnlessTheyAreAskedFor)
{
    const auto* const rows = "01:00:02:00,01:00:04:00,ANNA,Hello,A1,,yes\n"
                             "01:00:03:00,01:00:05:00,ANNA,,A1b,,no\n"
                             "soon,01:00:05:00,ANNA,Hello,A1c,,no\n";
    EXPECT_THAT (rulesIn (rows), IsEmpty());
    EXPECT_THAT (rulesIn (rows, { "--disabled" }),
                 ElementsAre ("A1b overlap-same-character", "A1b empty-text", "A1c tc-invalid"));
    EXPECT_THAT (
        run ({ "check", "x.csv" }).errors,
        HasSubstr ("Nothing was found in 1 event\n2 disabled events left out; --disabled takes them in\n"));
}

TEST_F (ProgramCheckTest, whatDocumentsWouldLoseIsToldOfDisabledEventsToo)
{
    EXPECT_THAT (rulesIn ("01:00:02:00,01:00:04:00,ANNA,Łódź,A1,,no\n"), ElementsAre ("A1 non-latin1"));
}

TEST_F (ProgramCheckTest, tensOfThousandsOfOverlappingCuesAreChecked)
{
    std::string rows (titles);
    char row[80];

    // All of one character, each overlapping with the next, and few cue numbers that come back all the time.
    for (int i = 0; i < 30000; ++i)
    {
        const int second = i / 2;
        std::snprintf (row, sizeof (row), "%02d:%02d:%02d:%02d,,ANNA,Hello,A%d,,\n", second / 3600,
                       second / 60 % 60, second % 60, i % 2 * 12, i % 3);
        rows += row;
    }

    write ("x.csv", rows);
    EXPECT_GT (check ({ "x.csv" }).output.size(), 6000000u);
}

// ---- the table for spreadsheets -------------------------------------------------------------------------------------------

TEST_F (ProgramCheckTest, aTableForSpreadsheetsHasARowForEachFinding)
{
    writeProject (
        R"({"uuid": "u-1", "type": 8, "cueNumber": "A\"1", "characterID": "c9", "startFrameIndex": 0,
        "text": "One,\ntwo", "inPointFrameIndex": 50, "endFrameIndex": 100})");
    const auto result = run ({ "check", "x.json", "--csv", "out.csv" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (read ("out.csv"),
               "\xef\xbb\xbf\"Cue Number\",\"Start TC\",\"End TC\",\"Character\",\"Text\",\"Rule\",\"Rule in "
               "Words\",\"Finding\",\"UUID\"\r\n"
               "\"A\"\"1\",\"01:00:02:00\",\"01:00:04:00\",\"\",\"One,\ntwo\",\"unknown-character\","
               "\"Character is not in the cast\","
               "\"Its character has the identifier \"\"c9\"\", which nobody in the cast has\",\"u-1\"\r\n");
    EXPECT_THAT (result.errors, HasSubstr ("Wrote " + path ("out.csv") + "\n"));
}

TEST_F (ProgramCheckTest, aTableWithoutFindingsIsItsHeadings)
{
    writeRows (goodRows);
    EXPECT_EQ (run ({ "check", "x.csv", "--csv", "out.csv" }).status, 0);
    EXPECT_THAT (read ("out.csv"),
                 AllOf (StartsWith ("\xef\xbb\xbf\"Cue Number\","), HasSubstr ("\"UUID\"\r\n")));
    EXPECT_EQ (read ("out.csv").find ("ANNA"), std::string::npos);
}

// ---- the page -------------------------------------------------------------------------------------------------------------

TEST_F (ProgramCheckTest, thePageTellsWhatWasCheckedAndWhatWasFound)
{
    writeRows (badRows);
    ASSERT_EQ (run ({ "check", "x.csv", "--html", "out.html", "--fps", "24", "--origin", "01:00:00:00",
                      "--skip", "non-latin1" })
                   .status,
               1);
    const auto page = read ("out.html");
    EXPECT_THAT (page,
                 AllOf (StartsWith ("<!DOCTYPE html>\n"), HasSubstr ("<title>Check of x.csv</title>"),
                        HasSubstr ("3 events at 24 frames per second, picture from 01:00:00:00. Checked on "),
                        HasSubstr ("Limits: at most 20 characters a second, from 0.2 to 30 seconds, at "
                                   "most 5 lines of text."),
                        HasSubstr (">3 findings in 3 events</h2>")));
    EXPECT_THAT (page,
                 AllOf (HasSubstr (">Without a character</td><td dir=\"auto\" data-title=\"Findings\" "
                                   "class=\"number\">1</td>"),
                        HasSubstr (">Ends before it begins</td><td dir=\"auto\" data-title=\"Findings\" "
                                   "class=\"number\">none</td>"),
                        HasSubstr (">Without a character: 1</h2>"), HasSubstr (">It has no character</td>")));
    EXPECT_THAT (page, Not (HasSubstr ("Letters that some documents"))) << "it was not looked for";
}

TEST_F (ProgramCheckTest, aPageWithoutFindingsSaysSo)
{
    writeRows (goodRows);
    ASSERT_EQ (run ({ "check", "x.csv", "--html", "out.html" }).status, 0);
    const auto page = read ("out.html");
    EXPECT_THAT (page, AllOf (HasSubstr (">Nothing was found</h2>"), HasSubstr ("2 events at 25 frames"),
                              HasSubstr ("What was looked for"), Not (HasSubstr (">Finding<"))));
}

TEST_F (ProgramCheckTest, thePageSaysThatItIsAboutAPartOfTheList)
{
    writeRows (std::string (badRows) + "01:00:09:00,01:00:10:00,ANNA,Hello,A2,,no\n");
    ASSERT_EQ (run ({ "check", "x.csv", "--html", "out.html", "--character", "ANNA", "--text", "l",
                      "--adjacent", "1" })
                   .status,
               0);
    EXPECT_THAT (
        read ("out.html"),
        AllOf (HasSubstr ("Only a part of the list: character ANNA, text l, 1 neighbour on each side."),
               HasSubstr ("1 disabled event left out.")));
}

TEST_F (ProgramCheckTest, whatCouldNotBeReadIsOnThePageToo)
{
    write ("x.csv", "Start TC,End TC,Character,Text,Cue Number,Done\n"
                    "01:00:02:00,01:00:04:00,ANNA,Hello,A1,perhaps\n");
    ASSERT_EQ (run ({ "check", "x.csv", "--html", "out.html" }).status, 1);
    EXPECT_THAT (read ("out.html"), AllOf (HasSubstr ("What could not be read from the file: 1"),
                                           HasSubstr ("&quot;perhaps&quot; is neither yes nor no")));
}

TEST_F (ProgramCheckTest, aLineOfDialogueIsNeverAPartOfThePage)
{
    write ("x.csv",
           titles
               + std::string ("01:00:02:00,01:00:02:01,<b>ANNA</b>,<script>alert('1')</script>&amp;\x1b[2J"
                              "\"\" onload=\"\",<i>,,\n"));
    ASSERT_EQ (run ({ "check", "x.csv", "--html", "out.html" }).status, 1);
    const auto page = read ("out.html");
    EXPECT_THAT (page, AllOf (Not (HasSubstr ("<script")), Not (HasSubstr ("<b>")), Not (HasSubstr ("<i>")),
                              Not (HasSubstr ("\x1b")), Not (HasSubstr ("&amp;lt;"))));
    EXPECT_THAT (page, HasSubstr ("&lt;script&gt;alert(&#39;1&#39;)&lt;/script&gt;&amp;amp;[2J"));
    EXPECT_THAT (page, HasSubstr ("&lt;b&gt;ANNA&lt;/b&gt;"));
}

TEST_F (ProgramCheckTest, thePageNeedsNothingElse)
{
    writeRows (badRows);
    ASSERT_EQ (run ({ "check", "x.csv", "--html", "out.html" }).status, 1);
    const auto page = read ("out.html");
    EXPECT_THAT (page, AllOf (Not (HasSubstr ("http:")), Not (HasSubstr ("https:")), Not (HasSubstr ("src=")),
                              Not (HasSubstr ("href=")), Not (HasSubstr ("url("))));
    EXPECT_THAT (page, AllOf (HasSubstr ("default-src 'none'"), HasSubstr ("@media print"),
                              HasSubstr ("name=\"viewport\"")));
}

TEST_F (ProgramCheckTest, theNameOfTheListIsEscapedInTheTitle)
{
    write ("a<b>&.csv", table (goodRows));
    ASSERT_EQ (run ({ "check", "a<b>&.csv", "--html", "out.html" }).status, 0);
    EXPECT_THAT (read ("out.html"), HasSubstr ("<title>Check of a&lt;b&gt;&amp;.csv</title>"));
}

// ---- files ----------------------------------------------------------------------------------------------------------------

TEST_F (ProgramCheckTest, noFileIsReplacedUnlessItIsForced)
{
    writeRows (badRows);
    write ("out.html", "mine");
    EXPECT_EQ (errorOf ({ "check", "x.csv", "--html", "out.html", "--csv", "out.csv" }, 1),
               path ("out.html") + " exists already; --force replaces it");
    EXPECT_EQ (read ("out.html"), "mine");
    EXPECT_FALSE (file ("out.csv").exists());
    EXPECT_EQ (run ({ "check", "x.csv", "--html", "out.html", "--force" }).status, 1);
    EXPECT_THAT (read ("out.html"), StartsWith ("<!DOCTYPE html>"));
}

TEST_F (ProgramCheckTest, theListItselfIsNeverReplaced)
{
    writeRows (badRows);
    EXPECT_EQ (errorOf ({ "check", "x.csv", "--csv", "./x.csv", "--force" }, 1),
               "./x.csv is the list itself");
    EXPECT_EQ (read ("x.csv"), table (badRows));
}

TEST_F (ProgramCheckTest, reportsAreFilesAndDifferentOnes)
{
    writeRows (badRows);
    EXPECT_EQ (errorOf ({ "check", "x.csv", "--html", "-" }, 2),
               "--html names a file; standard output is for the table and for --json");
    EXPECT_EQ (errorOf ({ "check", "x.csv", "--html", "out", "--csv", "./out" }, 2),
               "--html and --csv name the same file");
    EXPECT_THAT (errorOf ({ "check", "x.csv", "--html", "" }, 2), HasSubstr ("there is no name of a file"));
    EXPECT_EQ (errorOf ({ "check", "x.csv", "--html", "nowhere/out.html" }, 1),
               "There is no folder " + path ("nowhere"));
}

TEST_F (ProgramCheckTest, aDryRunChecksAndWritesNothing)
{
    writeRows (badRows);
    const auto result =
        run ({ "check", "x.csv", "--html", "out.html", "--csv", "out.csv", "--dry-run", "--json" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (filesInFolder(), std::vector<std::string> { "x.csv" });
    const auto document = result.json();
    EXPECT_EQ (document["findings"].size(), 3u);
    EXPECT_EQ (document["files"], ordered_json::array ({ path ("out.html"), path ("out.csv") }));
    EXPECT_EQ (document["dryRun"], true);
    EXPECT_THAT (result.errors, HasSubstr ("Would write " + path ("out.html") + "\n"));
}

TEST_F (ProgramCheckTest, aFullDiskLeavesNoHalfOfAReport)
{
    std::string rows;

    for (int i = 0; i < 3000; ++i)
        rows += "01:00:02:00,01:00:04:00,,,\n";

    writeRows (rows);
    ProgramSurroundings surroundings;
    surroundings.largestFile = 65536;
    const auto result = run ({ "check", "x.csv", "--quiet", "--html", "out.html" }, {}, surroundings);
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, HasSubstr ("out.html"));
    EXPECT_EQ (filesInFolder(), std::vector<std::string> { "x.csv" });
}

TEST_F (ProgramCheckTest, theListNeverSteersTheTerminal)
{
    writeRows ("01:00:02:00,01:00:04:00,ANNA,Hello,A\x1b[2J1\n01:00:05:00,01:00:06:00,TOM,,A\x1b[2J1\n");
    const auto result = run ({ "check", "x.csv" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.output, Not (HasSubstr ("\x1b")));
    EXPECT_THAT (result.errors, Not (HasSubstr ("\x1b")));
}

} // namespace
