// SPDX-License-Identifier: GPL-3.0-only
// What the program shows of a list: the filter, the table in a pipe and on a terminal, the search.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

using nlohmann::ordered_json;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace
{

class ProgramListTest : public ProgramTest
{
protected:
    static constexpr auto scene = "Start TC,End TC,Character,Actor,Text,Cue Number,Notes\n"
                                  "01:00:01:00,01:00:02:00,TOM,C. Berg,Where is she?,T1,\n"
                                  "01:00:03:00,01:00:04:00,ANNA,B. Miller,\"I said, tomorrow.\",A1,softer\n"
                                  "01:00:05:00,01:00:06:00,TOM,C. Berg,Tomorrow?,T2,\n"
                                  "01:00:07:00,01:00:08:00,EVE,B. Miller,\"Listen, both of you.\",E1,\n"
                                  "01:00:09:00,01:00:10:00,ANNA,B. Miller,No!,A1,\n";

    /** The cue numbers of the events that list shows; those of neighbours in brackets. */
    std::vector<std::string> listed (std::vector<std::string> options)
    {
        options.insert (options.begin(), { "list", "x.csv", "--json", "--quiet" });
        std::vector<std::string> numbers;

        const auto document = run (options).json();

        for (const auto& event : document["events"])
        {
            const auto number = event["cueNumber"].get<std::string>();
            numbers.push_back (event["isHiddenByFilter"].get<bool>() ? "(" + number + ")" : number);
        }

        return numbers;
    }

    static std::vector<std::string> lines (const std::string& text)
    {
        std::vector<std::string> result;

        for (const auto& line :
             juce::StringArray::fromLines (juce::String (juce::CharPointer_UTF8 (text.c_str()))))
            if (line.isNotEmpty())
                result.push_back (line.toStdString());

        return result;
    }

    /** The lines of the table of x.csv on a terminal. */
    std::vector<std::string> onTerminal (int width, const std::vector<std::string>& options = {},
                                         const std::string& terminalType = "xterm")
    {
        std::vector<std::string> arguments { "list", "x.csv", "--quiet" };
        arguments.insert (arguments.end(), options.begin(), options.end());
        ProgramSurroundings surroundings;
        surroundings.terminalWidth = width;
        surroundings.terminalType = terminalType;
        return lines (run (arguments, {}, surroundings).output);
    }

    std::vector<std::string> found (const std::string& query, const std::vector<std::string>& options = {})
    {
        std::vector<std::string> arguments { "search", "x.csv", query, "--json", "--quiet" };
        arguments.insert (arguments.end(), options.begin(), options.end());
        const auto result = run (arguments);
        EXPECT_EQ (result.status, 0);
        std::vector<std::string> rows;

        const auto document = result.json();

        for (const auto& row : document["results"])
            rows.push_back (
                row["cueNumber"].get<std::string>()
                + (row["type"] == 64 ? " " + std::to_string (row["events"].size()) + " lines" : ""));

        return rows;
    }
};

// ---- the filter -----------------------------------------------------------------------------------------------------------

TEST_F (ProgramListTest, eachFilterOptionNarrowsTheList)
{
    write ("x.csv", scene);
    EXPECT_THAT (listed ({}), ElementsAre ("T1", "A1", "T2", "E1", "A1"));
    EXPECT_THAT (listed ({ "--character", "TOM" }), ElementsAre ("T1", "T2"));
    EXPECT_THAT (listed ({ "--actor", "B. Miller" }), ElementsAre ("A1", "E1", "A1"));
    EXPECT_THAT (listed ({ "--text", "omorrow" }), ElementsAre ("A1", "T2"));
    EXPECT_THAT (listed ({ "--cue", "1" }), ElementsAre ("T1", "A1", "E1", "A1"));
    EXPECT_THAT (listed ({ "--actor", "B. Miller", "--cue", "E" }), ElementsAre ("E1"));
    EXPECT_THAT (listed ({ "--character", "tom" }), IsEmpty()) << "names are compared as they stand";
}

TEST_F (ProgramListTest, neighboursAreListedInTheSortedOrderToo)
{
    write ("x.csv", scene);
    EXPECT_THAT (listed ({ "--character", "EVE", "--adjacent", "1" }), ElementsAre ("(T2)", "E1", "(A1)"));
    EXPECT_THAT (listed ({ "--character", "EVE", "--adjacent", "1", "--sort", "CueNumber" }),
                 ElementsAre ("(A1)", "E1", "(T2)"))
        << "they are neighbours in time";
}

TEST_F (ProgramListTest, aListIsSortedByAnyColumnInBothDirections)
{
    write ("x.csv", scene);
    EXPECT_THAT (listed ({ "--sort", "Text" }), ElementsAre ("A1", "E1", "A1", "T2", "T1"));
    EXPECT_THAT (listed ({ "--sort", "text", "--descending" }), ElementsAre ("T1", "T2", "A1", "E1", "A1"));
    EXPECT_THAT (listed ({ "--descending" }), ElementsAre ("A1", "E1", "T2", "A1", "T1"));
}

TEST_F (ProgramListTest, aFilterThatCanMatchNothingIsSaidWithWhatWasMeant)
{
    write ("x.csv", scene);
    const auto result = run ({ "list", "x.csv", "--character", "ANA", "--actor", "Nobody At All" });
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.errors, HasSubstr ("--character: the list has no \"ANA\". Did you mean \"ANNA\"?\n"));
    EXPECT_THAT (result.errors, HasSubstr ("--actor: the list has no \"Nobody At All\".\n"));
    EXPECT_THAT (result.errors, HasSubstr ("0 events\n"));
}

TEST_F (ProgramListTest, neighboursOfNothingAreSaidToMakeNoDifference)
{
    write ("x.csv", scene);
    const std::string note = "--adjacent makes no difference without a filter\n";
    EXPECT_THAT (run ({ "list", "x.csv", "--adjacent", "1" }).errors, HasSubstr (note));
    EXPECT_THAT (run ({ "list", "x.csv", "--adjacent", "1", "--cue", "A" }).errors, Not (HasSubstr (note)));
}

TEST_F (ProgramListTest, anExportTakesWhatTheFilterListsInTheShownOrder)
{
    write ("x.csv", scene);
    ASSERT_EQ (run ({ "export", "x.csv", "-o", ".", "--format", "csv", "--name", "out", "--actor",
                      "B. Miller", "--sort", "Text" })
                   .status,
               0);
    const auto written = lines (read ("out.csv"));
    ASSERT_EQ (written.size(), 4u);
    EXPECT_THAT (written[1], HasSubstr ("I said, tomorrow."));
    EXPECT_THAT (written[2], HasSubstr ("Listen, both of you."));
    EXPECT_THAT (written[3], HasSubstr ("No!"));
}

// ---- the table ------------------------------------------------------------------------------------------------------------

TEST_F (ProgramListTest, inAPipeTheTableIsAlignedWholeAndPlain)
{
    write ("x.csv", "Start TC,End TC,Character,Text,Cue Number\n"
                    "01:00:01:00,01:00:02:00,TOM,Hello,1\n"
                    "01:00:03:00,01:00:04:00,ANNA,I said so.,A12\n");
    EXPECT_EQ (
        run ({ "list", "x.csv", "--character", "ANNA", "--adjacent", "1" }).output,
        "Cue  Start TC     End TC       Type     Character  Actor  Text        Notes  Reason  Takes  Done\n"
        "1    01:00:01:00  01:00:02:00  ADR Cue  TOM               Hello              None    0      no\n"
        "A12  01:00:03:00  01:00:04:00  ADR Cue  ANNA              I said so.         None    0      no\n");
}

TEST_F (ProgramListTest, wideCharactersTakeTwoColumnsAndMarksNone)
{
    write ("x.csv", "Start TC,Character,Text\n"
                    "01:00:01:00,ann,plain\n"
                    "01:00:02:00,日本,日本語\n"
                    "01:00:03:00,Zoe\xcc\x88,e\xcc\x81t\n"
                    "01:00:04:00,😀,שָׁלוֹם\n"
                    "01:00:05:00,\xe1\x84\x92\xe1\x85\xa1\xe1\x86\xab,か\xe3\x82\x99\n");
    const auto table = lines (run ({ "list", "x.csv" }).output);
    ASSERT_EQ (table.size(), 6u);
    const auto hasCells = [] (const char* name, const char* text)
    { return HasSubstr (std::string ("ADR Cue  ") + name + "         " + text + " None"); };
    EXPECT_THAT (table[1], hasCells ("ann      ", "plain         "));
    EXPECT_THAT (table[2], hasCells ("日本     ", "日本語        "));
    EXPECT_THAT (table[3], hasCells ("Zoe\xcc\x88      ", "e\xcc\x81t            "));
    EXPECT_THAT (table[4], hasCells ("😀       ", "שָׁלוֹם          "));
    EXPECT_THAT (table[5],
                 hasCells ("\xe1\x84\x92\xe1\x85\xa1\xe1\x86\xab       ", "か\xe3\x82\x99            "));
}

TEST_F (ProgramListTest, aLongTextInAPipeIsWholeAndDoesNotFillTheOtherLines)
{
    const std::string longText (3000, 'x');
    write ("x.csv", "Start TC,Text,Notes\n01:00:01:00,short,a\n01:00:02:00," + longText + ",b\n");
    const auto table = lines (run ({ "list", "x.csv" }).output);
    ASSERT_EQ (table.size(), 3u);
    EXPECT_LT (table[1].size(), 250u);
    EXPECT_THAT (table[2], HasSubstr (longText + "  b"));
}

TEST_F (ProgramListTest, onATerminalEveryLineFits)
{
    write ("x.csv", std::string (scene)
                        + "01:00:11:00,01:00:12:00,A LADY WITH A VERY LONG NAME,An actor with another,"
                        + std::string (300, 'x') + ",A123456789,and notes that are long as well\n");

    for (const int width : { 200, 120, 100, 80, 60 })
        for (const auto& line : onTerminal (width))
            EXPECT_LE (juce::String (juce::CharPointer_UTF8 (line.c_str())).length(), width) << line;
}

TEST_F (ProgramListTest, aNarrowTerminalLeavesOutWholeColumnsButNeverCutsATimecode)
{
    write ("x.csv", scene);
    const auto table = onTerminal (60);
    EXPECT_THAT (table[0], AllOf (HasSubstr ("Cue"), HasSubstr ("Start TC"), HasSubstr ("Character"),
                                  HasSubstr ("Text"), Not (HasSubstr ("Takes")), Not (HasSubstr ("Notes"))));
    EXPECT_THAT (table[2], AllOf (HasSubstr ("A1"), HasSubstr ("01:00:03:00"), HasSubstr ("ANNA"),
                                  HasSubstr ("I said, tomorrow.")));
}

TEST_F (ProgramListTest, onATerminalColumnsWithoutAnythingInThemAreLeftOut)
{
    write ("x.csv", threeCues);
    EXPECT_THAT (onTerminal (200)[0],
                 AllOf (HasSubstr ("Actor"), HasSubstr ("Takes"), Not (HasSubstr ("Notes"))));
}

TEST_F (ProgramListTest, onATerminalNeighboursAreDimmed)
{
    write ("x.csv", scene);
    const auto table = onTerminal (120, { "--character", "EVE", "--adjacent", "1" });
    ASSERT_EQ (table.size(), 4u);
    EXPECT_THAT (table[0], Not (HasSubstr ("\033")));
    EXPECT_EQ (table[1].rfind ("\033[2mT2 ", 0), 0u);
    EXPECT_EQ (table[1].substr (table[1].size() - 4), "\033[0m");
    EXPECT_THAT (table[2], Not (HasSubstr ("\033")));
    EXPECT_THAT (table[3], HasSubstr ("\033[2m"));
}

TEST_F (ProgramListTest, aTerminalThatTakesNoColoursGetsNone)
{
    write ("x.csv", scene);
    EXPECT_THAT (onTerminal (120, { "--character", "EVE", "--adjacent", "1" }, "dumb"),
                 Each (Not (HasSubstr ("\033"))));
}

TEST_F (ProgramListTest, theListItselfNeverSteersTheTerminal)
{
    write ("x.csv", "Start TC,Text\n01:00:01:00,\x1b[2J\x1b]0;owned\x07 \xc2\x9b red \xe2\x80\xae end\n");
    const auto table = onTerminal (120);
    EXPECT_THAT (table[1], AllOf (Not (HasSubstr ("\x1b")), Not (HasSubstr ("\x07")),
                                  Not (HasSubstr ("\xc2\x9b")), Not (HasSubstr ("\xe2\x80\xae"))));
    EXPECT_THAT (table[1], HasSubstr ("end"));
}

TEST_F (ProgramListTest, anEmptyListIsItsTitles)
{
    write ("x.csv", scene);
    EXPECT_THAT (lines (run ({ "list", "x.csv", "--text", "nothing" }).output), SizeIs (1));
    EXPECT_THAT (onTerminal (80, { "--text", "nothing" }), SizeIs (1));
}

// ---- the search -----------------------------------------------------------------------------------------------------------

TEST_F (ProgramListTest, searchFindsCueNumbersAndTextsInAnyCase)
{
    write ("x.csv", scene);
    EXPECT_THAT (found ("TOMORROW"), ElementsAre ("A1", "T2"));
    EXPECT_THAT (found ("t2"), ElementsAre ("T2"));
    EXPECT_THAT (found ("nothing"), IsEmpty());
}

TEST_F (ProgramListTest, searchShowsACueOfSeveralLinesBeforeItsLines)
{
    write ("x.csv", scene);
    EXPECT_THAT (found ("#A1"), ElementsAre ("A1 2 lines", "A1", "A1"));
    EXPECT_THAT (found (""), ElementsAre ("T1", "A1 2 lines", "A1", "T2", "E1", "A1"));
}

TEST_F (ProgramListTest, searchSeesWhatTheFilterLeaves)
{
    write ("x.csv", scene);
    EXPECT_THAT (found ("tomorrow", { "--character", "TOM" }), ElementsAre ("T2"));
    EXPECT_THAT (found ("", { "--cue", "A", "--text", "No" }), ElementsAre ("A1"));
}

TEST_F (ProgramListTest, aSearchResultHasAllItsMembers)
{
    write ("x.csv", scene);
    const auto results =
        run ({ "search", "x.csv", "#A1", "--json", "--sort", "Text", "--descending" }).json();
    ASSERT_EQ (results["results"].size(), 3u);
    const auto line = results["results"][0];
    ASSERT_EQ (line["events"].size(), 1u);
    const auto expected =
        ordered_json::parse (R"({"type": 8, "text": "I said, tomorrow.", "startTC": "01:00:03:00",
        "endTC": "01:00:04:00", "cueNumber": "A1", "character": "ANNA", "actor": "B. Miller"})");
    auto withoutIdentity = line;
    withoutIdentity.erase ("events");
    EXPECT_EQ (withoutIdentity.dump(), expected.dump());

    const auto group = results["results"][1];
    EXPECT_EQ (group["type"], 64) << "the first of the group by text is the later one";
    EXPECT_EQ (group["text"], "No!...");
}

TEST_F (ProgramListTest, aSearchInAPipeIsATable)
{
    write ("x.csv", scene);
    const auto result = run ({ "search", "x.csv", "#A1" });
    EXPECT_EQ (result.output,
               "Cue  Start TC     End TC       Type     Character  Actor      Text\n"
               "A1   01:00:03:00  01:00:04:00  2 lines  ANNA       B. Miller  I said, tomorrow....\n"
               "A1   01:00:03:00  01:00:04:00  ADR Cue  ANNA       B. Miller  I said, tomorrow.\n"
               "A1   01:00:09:00  01:00:10:00  ADR Cue  ANNA       B. Miller  No!\n");
    EXPECT_THAT (result.errors, HasSubstr ("3 results\n"));
    EXPECT_EQ (result.status, 0);
}

TEST_F (ProgramListTest, aSearchWithoutAQueryIsWrongUsage)
{
    write ("x.csv", scene);
    EXPECT_EQ (run ({ "search", "x.csv" }).status, 2);
}

TEST_F (ProgramListTest, aQueryMayBeginWithADash)
{
    write ("x.csv", "Start TC,Text\n01:00:01:00,-- what?\n");
    EXPECT_EQ (run ({ "search", "x.csv", "--json", "--", "-- w" }).json()["results"].size(), 1u);
}

// ---- set ------------------------------------------------------------------------------------------------------------------

TEST_F (ProgramListTest, setTakesTheEventsThatAllConditionsMean)
{
    write ("x.csv", scene);
    ASSERT_EQ (run ({ "set", "x.csv", "-o", "p.json", "--where", "CharacterID=ANNA", "--where",
                      "Text~TOMORROW", "Done=yes" })
                   .status,
               0);
    std::vector<std::string> done;
    const auto document = run ({ "list", "p.json", "--json" }).json();

    for (const auto& event : document["events"])
        if (event["done"].get<bool>())
            done.push_back (event["text"]["text"]);

    EXPECT_THAT (done, ElementsAre ("I said, tomorrow."));
}

} // namespace
