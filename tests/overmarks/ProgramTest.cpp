// SPDX-License-Identifier: GPL-3.0-only
// The program as a user runs it: each command once for its work, and for what a tired or a hostile user does with it.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

using nlohmann::ordered_json;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace
{

// ---- rows ----------------------------------------------------------------------------------------------------------------

TEST_F (ProgramTest, rowsShowsWhatTheImporterSees)
{
    write ("x.csv", "Start TC;Line\n01:00:00:00;Hello\n");
    const auto result = run ({ "rows", "x.csv", "--json" });

    EXPECT_EQ (result.status, 0);
    const auto document = result.json();
    EXPECT_EQ (document["file"], "x.csv");
    EXPECT_EQ (document["type"], 2);
    EXPECT_EQ (document["userMappingEnabled"], true);
    EXPECT_EQ (document["error"], "");
    EXPECT_EQ (document["encoding"], 1);
    EXPECT_EQ (document["languageCode"], "");
    EXPECT_EQ (document["columnMap"]["Start TC"], 0);
    EXPECT_EQ (document["columnMap"]["Text"], -1);
    EXPECT_EQ (document["rows"], ordered_json::parse (R"([["Start TC","Line"],["01:00:00:00","Hello"]])"));
    EXPECT_EQ (document["characters"], ordered_json::array());
}

TEST_F (ProgramTest, rowsWithRichShowsCellsAsObjects)
{
    write ("x.csv", "Start TC,Text\n01:00:00:00,Hello\n");
    const auto result = run ({ "rows", "x.csv", "--json", "--rich" });
    EXPECT_EQ (result.json()["rows"][1][1], ordered_json::parse (R"({"text":"Hello","runs":[]})"));
}

TEST_F (ProgramTest, rowsOfALongTableAreOneWholeDocument)
{
    std::string table = "Start TC,Text,Notes\n";
    auto rows = ordered_json::parse (R"([["Start TC", "Text", "Notes"]])");

    for (int i = 0; i < 5000; ++i)
    {
        const auto number = std::to_string (i);
        table += "01:00:00:00,\"Line \"\"" + number + "\"\" C:\\x Größe 😀\",";
        table += i % 7 == 0 ? "\n" : number + "\n";
        rows.push_back ({ "01:00:00:00", "Line \"" + number + "\" C:\\x Größe 😀", i % 7 == 0 ? "" : number });
    }

    write ("x.csv", table);
    const auto result = run ({ "rows", "x.csv", "--json" });
    const auto document = result.json();
    EXPECT_EQ (document["rows"], rows);
    EXPECT_EQ (result.output, document.dump (1) + "\n");
    const auto rich = run ({ "rows", "x.csv", "--json", "--rich" });
    EXPECT_EQ (rich.json()["rows"][5000][1]["text"], rows[5000][1]);
    EXPECT_EQ (rich.output, rich.json().dump (1) + "\n");
}

TEST_F (ProgramTest, rowsTakesAnEncodingAndAColumnFromTheUser)
{
    write ("x.csv", "Line,Start TC\nCaf\xe9,01:00:00:00\n");
    const auto result = run ({ "rows", "x.csv", "--json", "--encoding", "windows-1252", "--map", "#1=Text" });
    EXPECT_EQ (result.json()["rows"][1][0], "Café");
    EXPECT_EQ (result.json()["encoding"], 5);
    EXPECT_EQ (result.json()["columnMap"]["Text"], 0);
}

TEST_F (ProgramTest, rowsOfAFileWithoutATableTellsTheImportersWords)
{
    write ("x.csv", "");
    const auto result = run ({ "rows", "x.csv", "--json" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.json()["error"],
               "The CSV file you tried to import doesn't contain any parsable content");
}

TEST_F (ProgramTest, anExtensionThatNoImporterTakesIsAnError)
{
    write ("x.doc", "?");
    const auto result = run ({ "rows", "x.doc", "--json" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.json()["error"], "x.doc: no cue list format has the extension \".doc\"");
    EXPECT_EQ (result.json().size(), 1u);
}

// ---- list, dump, load ------------------------------------------------------------------------------------------------------

TEST_F (ProgramTest, listShowsTheEventsInTheOrderOfTimeWithTheirNames)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "list", "x.csv", "--json", "--origin", "01:00:00:00" });
    const auto events = result.json()["events"];
    ASSERT_EQ (events.size(), 3u);
    EXPECT_EQ (events[1]["startTC"], "01:00:05:12");
    EXPECT_EQ (events[1]["endTC"], "01:00:07:00");
    EXPECT_EQ (events[1]["inPointFrameIndex"], 137);
    EXPECT_EQ (events[1]["character"], "TOM");
    EXPECT_EQ (events[1]["actor"], "C. Berg");
    EXPECT_EQ (events[1]["text"]["text"], "Who's \"there\"?");
    EXPECT_EQ (events[1]["isHiddenByFilter"], false);
}

TEST_F (ProgramTest, listInAPipeIsPlainText)
{
    write ("x.csv", std::string (threeCues)
                        + "01:00:10:00,01:00:11:00,ANNA,B. Miller,\x1b]0;owned\x07 red \x1b[31m,A3\n");
    const auto result = run ({ "list", "x.csv" });
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.output, HasSubstr ("Who's \"there\"?"));
    EXPECT_THAT (result.output, Not (HasSubstr ("\x1b")));
    EXPECT_THAT (result.output, Not (HasSubstr ("\x07")));
}

TEST_F (ProgramTest, listSortsAndFilters)
{
    write ("x.csv", threeCues);
    const auto result =
        run ({ "list", "x.csv", "--json", "--character", "ANNA", "--sort", "cuenumber", "--descending" });
    const auto events = result.json()["events"];
    ASSERT_EQ (events.size(), 2u);
    EXPECT_EQ (events[0]["cueNumber"], "A2");
    EXPECT_EQ (events[1]["cueNumber"], "A1");
}

TEST_F (ProgramTest, standardInputIsAListOfTheNamedFormat)
{
    const auto result = run ({ "list", "-", "--format", "csv", "--json" }, threeCues);
    EXPECT_EQ (result.json()["events"].size(), 3u);
    EXPECT_EQ (run ({ "list", "-" }, threeCues).status, 2);
}

TEST_F (ProgramTest, dumpThenLoadThenDumpGivesTheSameText)
{
    write ("x.csv", threeCues);
    const auto first =
        run ({ "dump", "x.csv", "--origin", "01:00:00:00", "--fps", "24", "--reasons", "Whim" });
    ASSERT_EQ (first.status, 0);
    write ("first.json", first.output);
    const auto loaded = run ({ "load", "first.json", "-o", "second.json" });
    EXPECT_EQ (loaded.status, 0) << loaded.errors;
    EXPECT_EQ (read ("second.json"), first.output);
    EXPECT_EQ (run ({ "dump", "second.json" }).output, first.output);
}

TEST_F (ProgramTest, loadNamesAMemberThatItDoesNotKnow)
{
    write ("x.json", R"({"overmarks":1,"events":[{"cueNumbr":"1"}]})");
    const auto result = run ({ "load", "x.json", "-o", "y.json", "--json" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.json()["error"], "x.json: There is no member \"events[0].cueNumbr\"");
    EXPECT_FALSE (file ("y.json").exists());
}

// ---- import ----------------------------------------------------------------------------------------------------------------

TEST_F (ProgramTest, importMergesListsInTheOrderOfTime)
{
    write ("b.csv", "Start TC,Text\n00:00:05:00,second\n");
    write ("a.csv", "Start TC,Text\n00:00:09:00,third\n00:00:01:00,first\n");
    const auto result = run ({ "import", "b.csv", "a.csv", "-o", "film.json", "--json" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (result.json()["events"], 3);

    std::vector<std::string> texts;

    const auto project = ordered_json::parse (read ("film.json"));

    for (const auto& event : project["events"])
        if (event["type"] == 8)
            texts.push_back (event["text"]["text"]);

    EXPECT_EQ (texts, (std::vector<std::string> { "first", "second", "third" }));
}

TEST_F (ProgramTest, importListsProblemsWithFileAndRowAndStillWritesTheRest)
{
    write ("x.csv", "Start TC,Text,Done\n00:00:01:30,wrong frame,yes\n00:00:02:00,fine,perhaps\n");
    const auto result = run ({ "import", "x.csv", "-o", "film.json", "--json" });
    EXPECT_EQ (result.status, 1);
    const auto problems = result.json()["problems"];
    ASSERT_EQ (problems.size(), 2u) << result.output;
    EXPECT_EQ (problems[0]["file"], "x.csv");
    EXPECT_EQ (problems[0]["row"], 2);
    EXPECT_EQ (problems[0]["column"], "Start TC");
    EXPECT_EQ (problems[1]["row"], 3);
    EXPECT_EQ (problems[1]["column"], "Done");
    EXPECT_THAT (result.errors, HasSubstr ("x.csv: row 2, Start TC: "));
    EXPECT_EQ (ordered_json::parse (read ("film.json"))["events"].size(), 4u);
}

TEST_F (ProgramTest, aTableOfWhichNothingIsKnownIsRefusedUntilTheColumnsAreTold)
{
    write ("x.csv", "alpha,beta\n00:00:01:00,first\n");
    const auto refused = run ({ "import", "x.csv", "-o", "film.json" });
    EXPECT_EQ (refused.status, 1);
    EXPECT_THAT (
        refused.errors,
        HasSubstr (
            "x.csv: no column has a title that is known; --map \"HEADER=TITLE\" tells what a column holds"));
    EXPECT_FALSE (file ("film.json").exists());
    EXPECT_EQ (run ({ "import", "x.csv", "-o", "film.json", "--map", "alpha=Start TC", "--map", "beta=Text" })
                   .status,
               0);
}

TEST_F (ProgramTest, aFadeOfTheFileBecomesTheListsOwnAndASecondOneIsAProblem)
{
    write ("x.csv", "Start TC,Event Type\n00:00:01:00,Fade In\n00:00:02:00,Fade In\n00:00:03:00,ADR Cue\n");
    const auto result = run ({ "import", "x.csv", "-o", "film.json", "--json" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.json()["problems"][0]["message"], "a list has only one Fade In; this one is left out");

    std::vector<int> fades;

    const auto project = ordered_json::parse (read ("film.json"));

    for (const auto& event : project["events"])
        if (event["type"] == 16)
            fades.push_back (event["inPointFrameIndex"]);

    EXPECT_EQ (fades, std::vector<int> { 25 });
}

TEST_F (ProgramTest, anExistingFileIsNotReplacedWithoutForce)
{
    write ("x.csv", threeCues);
    write ("film.json", "precious");
    const auto refused = run ({ "import", "x.csv", "-o", "film.json" });
    EXPECT_EQ (refused.status, 1);
    EXPECT_THAT (refused.errors, HasSubstr ("film.json exists already; --force replaces it"));
    EXPECT_EQ (read ("film.json"), "precious");
    EXPECT_EQ (run ({ "import", "x.csv", "-o", "film.json", "--force" }).status, 0);
    EXPECT_THAT (read ("film.json"), StartsWith ("{"));
}

TEST_F (ProgramTest, aDryRunWritesNothing)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "import", "x.csv", "-o", "film.json", "--dry-run" });
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.errors, HasSubstr ("Would write " + path ("film.json") + ": 3 events"));
    EXPECT_FALSE (file ("film.json").exists());
}

TEST_F (ProgramTest, numbersOfAProjectThatNobodyKnowsAreListedAndComeBackAsTheyStand)
{
    write ("x.json",
           R"({"overmarks":1,"events":[{"cueNumber":"1","type":8,"forcedNarrativeRegion":9},
                                                  {"cueNumber":"2","type":77,"inPointFrameIndex":50}]})");
    const auto result = run ({ "list", "x.json" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_THAT (result.output, HasSubstr ("77"));

    const auto project = run ({ "dump", "x.json" }).json();
    std::map<std::string, ordered_json> events;

    for (const auto& event : project["events"])
        events[event["cueNumber"]] = event;

    EXPECT_EQ (events["1"]["forcedNarrativeRegion"], 9);
    EXPECT_EQ (events["2"]["type"], 77);
}

TEST_F (ProgramTest, aReasonThatNoTableHasIsRefusedWithItsPlace)
{
    write ("x.json", R"({"overmarks":1,"events":[{"cueNumber":"1","type":8,"reason":4711}]})");

    for (const auto& call : std::vector<std::vector<std::string>> { { "load", "x.json", "-o", "y.overmarks" },
                                                                    { "list", "x.json" } })
        EXPECT_EQ (errorOf (call, 1), "x.json: events[0].reason: a whole number from -1 to 40 is expected");

    EXPECT_EQ (filesInFolder(), std::vector<std::string> { "x.json" });
    write ("x.json", R"({"overmarks":1,"events":[{"cueNumber":"1","type":8,"reason":-1}]})");
    EXPECT_EQ (run ({ "load", "x.json", "-o", "y.overmarks" }).status, 0);
}

} // namespace
