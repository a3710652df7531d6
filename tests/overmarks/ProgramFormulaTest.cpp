// SPDX-License-Identifier: GPL-3.0-only
// Cells that a spreadsheet would work with instead of showing them: what `overmarks check` says of them, and what workbooks and delimited
// text hold.
#include "overmarks/ProgramCheckFixture.h"
#include "support/ZipArchive.h"

#include <gmock/gmock.h>

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using ZEP::Overmarks::Testing::partNamed;
using ZEP::Overmarks::Testing::unzipped;

namespace
{

const std::string before = "A spreadsheet that opens delimited text takes ",
                  after = " for a formula and runs it";

class ProgramFormulaTest : public ProgramCheckTest
{
protected:
    /** A cue for each text, numbered from 1. */
    void writeTexts (const Lines& texts) const
    {
        std::string events;

        for (std::size_t i = 0; i < texts.size(); ++i)
        {
            const int start = 100 * static_cast<int> (i);
            const auto words = "\"text\": " + nlohmann::ordered_json (texts[i]).dump();
            events += (i > 0 ? "," : "") + cue ("A" + std::to_string (i), start, start + 50, words);
        }

        writeProject (events);
    }

    /** Which of the texts are found. */
    Lines foundAmong (const Lines& texts) const
    {
        writeTexts (texts);
        Lines all;

        for (const auto& line : found ("spreadsheet-formula", { "x.json" }))
        {
            const auto end = line.find (": ");
            EXPECT_EQ (line.substr (end + 2), before + "the text" + after);
            all.push_back (texts.at (std::stoul (line.substr (1, end - 1))));
        }

        return all;
    }
};

TEST_F (ProgramFormulaTest, whatASpreadsheetRunsIsFound)
{
    const Lines formulas {
        "=1+1",
        "=HYPERLINK(\"http://x\",\"Click\")",
        "=cmd|'/C calc'!A0",
        "=WEBSERVICE(A1)",
        "= 1",
        "=A1",
        "=\"x\"",
        "=x", // no formula that works, but one that is tried
        "+1+1",
        "+SUM(A1:A3)",
        "+cmd|'/C calc'!A0",
        "+A1",
        "-2+3",
        "-1+cmd|'/C calc'!A0",
        "-SUM(1)",
        "-(1+2)*3",
        "--1-1",
        "- 3 - 2 - 1",
        "-3-2-1",
        "-A1",
        "-$B$12",
        "-'C:\\[x.xlsx]S'!A1",
        "-1/2",
        "-12:30",
        "-50%*2",
        "@SUM(1+1)",
        "@A1",
        "\t=1+1",
        "\r=1+1",
        "\n=1+1",
        "\r\n\t@SUM(1)",
        "-\n1+1",
        "＝1+1",            // the wide forms
        "＋ＳＵＭ（1）",    //
        "\xe2\x80\x8b=1+1", // written without the sign of no width
        "−5+3",
        "–2+3", // written as "-"
    };
    EXPECT_THAT (foundAmong (formulas), ElementsAreArray (formulas));
}

TEST_F (ProgramFormulaTest, ordinaryDialogueIsNoFormula)
{
    EXPECT_THAT (foundAmong ({ "- No!",
                               "-No",
                               "- Yes, I do.",
                               "-Oui.",
                               "-5",
                               "- 5",
                               "-5.5",
                               "-5%",
                               "+1",
                               "+49 30 1234",
                               "- 5, 4, 3, 2, 1...",
                               "-3-2-1!",
                               "-- What?",
                               "---",
                               "-",
                               "+",
                               "=",
                               "@",
                               "==",
                               "=== REEL 2 ===",
                               "=)",
                               "@anna",
                               "@anna where are you?",
                               "– Nein! – Doch!",
                               "— Да",
                               "- Anna (off)",
                               "- I said f(x) today",
                               "- (laughs)",
                               "-(laughs)",
                               "- a | b!",
                               "- 'Wait'! he said",
                               "- R2D2!",
                               "-R2D2 is here",
                               "- 12 monkeys",
                               "- 3 + 3 makes six",
                               "1+1",
                               "Say =1+1",
                               " =1+1", // a blank keeps it text
                               "'=1+1",
                               "\"=1+1\"",
                               "…",
                               "- 日本",
                               "-ABCD1",
                               "-A12345678",
                               "" }),
                 IsEmpty());
}

TEST_F (ProgramFormulaTest, everyColumnOfDelimitedTextIsLookedAt)
{
    write ("x.json",
           R"({"overmarks": 1, "characters": [{"id": "c1", "name": "=A1", "prefix": "=A2", "actor": "=A3"}],
                         "events": [)"
               + cue ("=A4", 0, 50, R"("text": "=A5", "notes": "=A6", "engineeringNotes": "=A7")") + "]}");
    EXPECT_THAT (
        found ("spreadsheet-formula", { "x.json" }),
        ElementsAre ("=A4: " + before
                     + "the text, the cue number, the character's name, the character's prefix, the actor's "
                       "name, the notes, the engineering notes"
                     + after));
}

TEST_F (ProgramFormulaTest, signsThatAreLeftOutHideNoFormula)
{
    const Lines formulas { "**=HYPERLINK(\"http://x\",\"y\")", "**+1+1" };
    EXPECT_THAT (foundAmong (formulas), ElementsAreArray (formulas));
}

TEST_F (ProgramFormulaTest, aReasonOfTheUsersIsACellToo)
{
    write ("x.json", R"({"overmarks": 1, "userReasons": ["=cmd|'/C calc'!A0"], "events": [)"
                         + cue ("A1", 0, 50, R"("text": "Me", "reason": 33)") + "]}");
    EXPECT_THAT (found ("spreadsheet-formula", { "x.json" }),
                 ElementsAre ("A1: " + before + "the reason" + after));
}

TEST_F (ProgramFormulaTest, quotesInAReasonMakeACellOfTheirOwn)
{
    write ("x.json", R"({"overmarks": 1, "userReasons": ["x\",\"=1+1"], "events": [)"
                         + cue ("A1", 0, 50, R"("text": "Me", "reason": 33)") + "]}");
    EXPECT_THAT (found ("spreadsheet-formula", { "x.json" }),
                 ElementsAre ("A1: " + before + "the reason" + after));
}

TEST_F (ProgramFormulaTest, theSubcueOfDSTakersTableIsACell)
{
    writeProject (cue ("12 =SUM(A1)", 0, 50));
    EXPECT_THAT (found ("spreadsheet-formula", { "x.json" }),
                 ElementsAre ("12 =SUM(A1): " + before + "a cell of DS Taker's table" + after));
    ASSERT_EQ (run ({ "export", "x.json", "-o", ".", "--format", "ds-taker", "--name", "taker" }).status, 0);
    EXPECT_THAT (read ("taker.csv"), HasSubstr (R"x("12","=SUM(A1)",)x"));
}

TEST_F (ProgramFormulaTest, quotesInNotesOfSubcuesMakeACellOfDSTakersTable)
{
    const auto notes = R"("text": "Me", "notes": "x\",\"=1+1")";
    writeProject (cue ("7", 0, 50, notes));
    EXPECT_THAT (found ("spreadsheet-formula", { "x.json" }), IsEmpty());

    writeProject (cue ("7", 0, 50, notes) + ", " + cue ("7", 100, 150));
    EXPECT_THAT (found ("spreadsheet-formula", { "x.json" }),
                 ElementsAre ("7: " + before + "a cell of DS Taker's table" + after));
    ASSERT_EQ (run ({ "export", "x.json", "-o", ".", "--format", "ds-taker", "--name", "taker" }).status, 0);
    EXPECT_THAT (read ("taker.csv"), HasSubstr (R"("x","=1+1",)"));
}

TEST_F (ProgramFormulaTest, disabledEventsAndMarkersAreLookedAtSinceTheyAreExported)
{
    writeProject (
        cue ("A1", 0, 50, R"("text": "=A1", "enabled": false)")
        + R"(, {"type": 2, "startFrameIndex": 90, "inPointFrameIndex": 90, "endFrameIndex": 90, "text": "=A2"})");
    EXPECT_THAT (found ("spreadsheet-formula", { "x.json" }),
                 ElementsAre ("A1: " + before + "the text" + after, ": " + before + "the text" + after));
}

TEST_F (ProgramFormulaTest, itIsARuleLikeAllOthers)
{
    writeTexts ({ "=1+1", "- No!" });
    EXPECT_THAT (run ({ "check", "--help" }).output, HasSubstr ("  spreadsheet-formula "));
    EXPECT_EQ (run ({ "check", "x.json", "--skip", "spreadsheet-formula" }).status, 0);

    const auto table = run ({ "check", "x.json" });
    EXPECT_EQ (table.status, 1);
    EXPECT_THAT (table.output, HasSubstr ("spreadsheet-formula  " + before + "the text" + after));

    ASSERT_EQ (run ({ "check", "x.json", "--html", "report.html", "--csv", "report.csv" }).status, 1);
    EXPECT_THAT (read ("report.html"),
                 HasSubstr ("<h2 dir=\"auto\">Cells that a spreadsheet would run: 1</h2>"));
    EXPECT_THAT (read ("report.csv"),
                 HasSubstr (R"(,"spreadsheet-formula","Cells that a spreadsheet would run",)"));
}

TEST_F (ProgramFormulaTest, aHugeTextIsLookedAtToo)
{
    std::string huge = "-1";
    for (int i = 0; i < 200000; ++i)
        huge += "+1";

    EXPECT_THAT (foundAmong ({ huge, "-" + std::string (400000, '('), "=" + std::string (400000, '=') }),
                 ElementsAre (huge));
}

// ---- what documents hold ---------------------------------------------------------------------------------------------------

TEST_F (ProgramFormulaTest, aWorkbookHoldsTextAndNothingElse)
{
    const Lines texts { "=1+1",
                        "=cmd|'/C calc'!A0",
                        "+1+1",
                        "-2+3",
                        "-5",
                        "@SUM(1)",
                        "\t=1+1",
                        "\r=1+1",
                        "007",
                        "1e5",
                        "TRUE",
                        "http://x",
                        "=HYPERLINK(\"http://x\")" };
    writeTexts (texts);
    ASSERT_EQ (run ({ "export", "x.json", "-o", ".", "--format", "xlsx", "--name", "list" }).status, 0);
    const auto sheet = partNamed (unzipped (read ("list.xlsx")), "xl/worksheets/sheet1.xml");
    EXPECT_THAT (sheet, Not (HasSubstr ("<f")));
    EXPECT_THAT (sheet, Not (HasSubstr ("hyperlink")));

    const auto rows = run ({ "rows", "list.xlsx", "--json" }).json()["rows"];
    const auto titleRow = rows[0].get<Lines>();
    const auto column =
        static_cast<std::size_t> (std::find (titleRow.begin(), titleRow.end(), "Text") - titleRow.begin());
    Lines shown;

    for (std::size_t i = 1; i < rows.size(); ++i)
        shown.push_back (rows[i][column]);

    for (const auto* text :
         { "=1+1", "=cmd|'/C calc'!A0", "+1+1", "-2+3", "-5", "@SUM(1)", "007", "1e5", "TRUE" })
        EXPECT_THAT (shown, Contains (text));
}

TEST_F (ProgramFormulaTest, delimitedTextHoldsTheWordsAsTheyAre)
{
    writeTexts ({ "=1+1", "-2+3" });
    ASSERT_EQ (run ({ "export", "x.json", "-o", ".", "--format", "csv", "--name", "list" }).status, 0);
    EXPECT_THAT (read ("list.csv"), HasSubstr (R"(,"=1+1",)"));
    EXPECT_THAT (read ("list.csv"), HasSubstr (R"(,"-2+3",)"));
}

} // namespace
