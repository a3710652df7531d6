// SPDX-License-Identifier: GPL-3.0-only
// The program as a user runs it: each command once for its work, and for what a tired or a hostile user does with it.
#include "overmarks/RunProgram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using nlohmann::ordered_json;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace
{

class ProgramTest : public testing::Test
{
protected:
    ProgramTest() { folder.createDirectory(); }
    ~ProgramTest() override { folder.deleteRecursively(); }

    ProgramResult run (const std::vector<std::string>& arguments, const std::string& standardInput = {}) const
    {
        return runProgram (folder, arguments, standardInput);
    }

    juce::File file (const juce::String& name) const { return folder.getChildFile (name); }
    std::string path (const juce::String& name) const { return file (name).getFullPathName().toStdString(); }

    void write (const juce::String& name, const std::string& text) const
    {
        juce::FileOutputStream stream (file (name));
        stream.setPosition (0);
        stream.truncate();
        stream.write (text.data(), text.size());
    }

    std::string read (const juce::String& name) const
    {
        juce::MemoryBlock block;
        file (name).loadFileAsData (block);
        return { block.begin(), block.end() };
    }

    const juce::File folder = juce::File::createTempFile ("program");

    static constexpr auto threeCues = "Start TC,End TC,Character,Actor,Text,Cue Number\n"
                                      "01:00:02:00,01:00:04:00,ANNA,B. Miller,Hello?,A1\n"
                                      "01:00:05:12,01:00:07:00,TOM,C. Berg,\"Who's \"\"there\"\"?\",T1\n"
                                      "01:00:08:00,01:00:09:00,ANNA,B. Miller,Me.,A2\n";
};

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

TEST_F (ProgramTest, projectFilesOfTheLibrarysOwnFormatAreRefusedInWords)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "import", "x.csv", "-o", "film.overmarks" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, HasSubstr ("project files (.overmarks) can't be written yet"));
    EXPECT_FALSE (file ("film.overmarks").exists());
}

// ---- set -------------------------------------------------------------------------------------------------------------------

TEST_F (ProgramTest, setEditsWhatTheFilterMeansAndSaysHowManySteps)
{
    write ("x.csv", threeCues);
    ASSERT_EQ (run ({ "import", "x.csv", "-o", "film.json" }).status, 0);
    const auto result = run ({ "set", "film.json", "-o", "film.json", "--where", "CharacterID=ANNA",
                               "Done=yes", "Notes=softer", "--json" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (result.json()["events"], 2);
    EXPECT_EQ (result.json()["steps"], 4);

    const auto list = run ({ "list", "film.json", "--json" }).json();

    for (const auto& event : list["events"])
    {
        EXPECT_EQ (event["done"], event["character"] == "ANNA");
        EXPECT_EQ (event["notes"]["text"], event["character"] == "ANNA" ? "softer" : "");
    }
}

TEST_F (ProgramTest, setTakesOneEventByItsIdentityAndMovesItInTime)
{
    write ("x.csv", threeCues);
    ASSERT_EQ (run ({ "import", "x.csv", "-o", "film.json" }).status, 0);
    const auto uuid = run ({ "list", "film.json", "--json" }).json()["events"][0]["uuid"].get<std::string>();
    ASSERT_EQ (run ({ "set", "film.json", "-o", "film.json", "--uuid", uuid, "StartTCString=01:00:30:00",
                      "Reason=AR4" })
                   .status,
               0);
    const auto moved = run ({ "list", "film.json", "--json" }).json()["events"][2];
    EXPECT_EQ (moved["uuid"], uuid);
    EXPECT_EQ (moved["startTC"], "01:00:30:00");
    EXPECT_EQ (moved["endTC"], "01:00:32:00");
    EXPECT_EQ (moved["reason"], 4);
}

TEST_F (ProgramTest, aTypingMistakeInATimecodeNeverClearsATime)
{
    write ("x.csv", threeCues);
    ASSERT_EQ (run ({ "import", "x.csv", "-o", "film.json" }).status, 0);
    const auto before = read ("film.json");
    const auto result = run ({ "set", "film.json", "-o", "film.json", "StartTCString=01:00:0x:00" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, HasSubstr ("There is no timecode \"01:00:0x:00\" at 25 frames per second"));
    EXPECT_EQ (read ("film.json"), before);
}

TEST_F (ProgramTest, setReplacesOnlyTheProjectThatItEdits)
{
    write ("x.csv", threeCues);
    write ("other.json", "precious");
    ASSERT_EQ (run ({ "import", "x.csv", "-o", "film.json" }).status, 0);
    EXPECT_EQ (run ({ "set", "film.json", "-o", "other.json", "Done=yes" }).status, 1);
    EXPECT_EQ (read ("other.json"), "precious");
}

TEST_F (ProgramTest, setOnNothingWritesNothing)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "set", "x.csv", "-o", "film.json", "--where", "CueNumber=Z9", "Done=yes" });
    EXPECT_EQ (result.status, 1);
    EXPECT_FALSE (file ("film.json").exists());
}

TEST_F (ProgramTest, setSuggestsTheKeyThatWasMeant)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "set", "x.csv", "-o", "film.json", "CueNumbr=1" });
    EXPECT_EQ (result.status, 2);
    EXPECT_THAT (
        result.errors,
        HasSubstr (
            "There is no attribute \"CueNumbr\"; `overmarks keys` lists them. Did you mean \"CueNumber\"?"));
}

// ---- convert and export ----------------------------------------------------------------------------------------------------

TEST_F (ProgramTest, convertWritesTheTableAndReadsItBackWhole)
{
    write (
        "x.csv",
        "Start TC,End TC,Text,Event Type,Streamer Duration,Reason\n00:00:10:00,00:00:12:00,Hello,ADR Cue,5,Clarity (AR4)\n");
    ASSERT_EQ (run ({ "convert", "x.csv", "out.csv" }).status, 0);
    const auto events = run ({ "list", "out.csv", "--json" }).json()["events"];
    ASSERT_EQ (events.size(), 1u);
    EXPECT_EQ (events[0]["streamerDuration"], 5);
    EXPECT_EQ (events[0]["startFrameIndex"], 125);
    EXPECT_EQ (events[0]["reason"], 4);
}

TEST_F (ProgramTest, convertNeverReplacesItsSource)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "convert", "x.csv", "x.csv", "--force" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (read ("x.csv"), threeCues);
}

TEST_F (ProgramTest, exportNeverReplacesItsSourceThroughALink)
{
    write ("x.csv", threeCues);
    ASSERT_TRUE (file ("x.csv").createSymbolicLink (file ("y.csv"), true));
    EXPECT_EQ (run ({ "export", "x.csv", "-o", ".", "--name", "y", "--format", "csv", "--force" }).status, 1);
    EXPECT_EQ (read ("x.csv"), threeCues);
}

TEST_F (ProgramTest, exportByCharacterWritesAFileForEachCharacter)
{
    write ("x.csv", threeCues);
    ASSERT_TRUE (file ("out").createDirectory().wasOk());
    const auto result =
        run ({ "export", "x.csv", "-o", "out", "--format", "csv", "--by-character", "--json" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (result.json()["files"],
               (std::vector<std::string> { path ("out/x_ANNA.csv"), path ("out/x_TOM.csv") }));
    EXPECT_TRUE (file ("out/x_ANNA.csv").existsAsFile());
    EXPECT_TRUE (file ("out/x_TOM.csv").existsAsFile());
}

TEST_F (ProgramTest, aMissingOutputFolderIsToldInTheExportersWords)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "export", "x.csv", "-o", "nowhere", "--format", "csv", "--json" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.json()["error"], "Error writing file to " + path ("nowhere/x.csv"));
    EXPECT_EQ (read ("x.csv"), threeCues);
}

TEST_F (ProgramTest, aFullDiskIsToldInTheExportersWords)
{
    write ("x.csv", threeCues);
    ASSERT_TRUE (juce::File ("/dev/full").createSymbolicLink (file ("full.csv"), true));
    const auto result =
        run ({ "export", "x.csv", "-o", ".", "--name", "full", "--format", "csv", "--force" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, HasSubstr ("Error writing file to " + path ("full.csv")));
    EXPECT_EQ (read ("x.csv"), threeCues);
}

TEST_F (ProgramTest, aFullDiskLosesNoProject)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "import", "x.csv", "-o", "/dev/full" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, HasSubstr ("Can't write /dev/full: No space left on device"));
}

TEST_F (ProgramTest, withoutAnybodyToAskALossyTakerListIsNotWritten)
{
    std::string list = "Start TC,Cue Number,Text\n";

    for (int second = 10; second < 17; ++second)
        list += "00:00:" + std::to_string (second) + ":00,7,line\n";

    write ("x.csv", list);
    const auto refused = run ({ "export", "x.csv", "-o", ".", "--name", "taker", "--format", "ds-taker" });
    EXPECT_EQ (refused.status, 1);
    EXPECT_FALSE (file ("taker.csv").exists());
    EXPECT_EQ (
        run ({ "export", "x.csv", "-o", ".", "--name", "taker", "--format", "ds-taker", "--yes" }).status, 0);
    EXPECT_TRUE (file ("taker.csv").exists());
}

// ---- catalogues ------------------------------------------------------------------------------------------------------------

TEST_F (ProgramTest, theCataloguesListWhatThereIs)
{
    EXPECT_EQ (run ({ "keys", "--json" }).json()["keys"].size(), 25u);
    EXPECT_EQ (run ({ "reasons", "--json", "--reasons", "Whim" }).json()["reasons"].back()["name"], "Whim");
    EXPECT_EQ (run ({ "formats", "--json" }).json()["formats"][0]["extensions"], ".csv .tab");
    EXPECT_THAT (run ({ "preferences" }).output, HasSubstr ("ADRCueTextBannerColor"));
}

TEST_F (ProgramTest, aPreferenceIsStoredAndFollowed)
{
    ASSERT_EQ (
        run ({ "preferences", "--set", "ADRCueDefaultDuration=1", "--settings", "studio.settings" }).status,
        0);
    write ("x.csv", "Start TC,Text\n00:00:10:00,Hello\n");
    const auto shown =
        run ({ "list", "x.csv", "--json", "--settings", "studio.settings" }).json()["events"][0];
    EXPECT_EQ (shown["endTC"], "00:00:11:00");
    EXPECT_EQ (
        run ({ "preferences", "--set", "ADRCueDefaultDuratio=1", "--settings", "studio.settings" }).status,
        2);
    EXPECT_EQ (
        run ({ "preferences", "--set", "ADRCueDefaultDuration=x", "--settings", "studio.settings" }).status,
        2);
}

// ---- usage -----------------------------------------------------------------------------------------------------------------

TEST_F (ProgramTest, wrongUsageEndsWithTwoAndASuggestion)
{
    const auto command = run ({ "lst" });
    EXPECT_EQ (command.status, 2);
    EXPECT_EQ (command.errors,
               "overmarks: There is no command \"lst\". Did you mean \"list\"? See overmarks --help\n");

    write ("x.csv", threeCues);
    const auto option = run ({ "list", "x.csv", "--fpz", "25" });
    EXPECT_EQ (option.status, 2);
    EXPECT_THAT (option.errors, HasSubstr ("Did you mean \"--fps\"?"));
    EXPECT_EQ (run ({}).status, 2);
    EXPECT_EQ (run ({ "list" }).status, 2);
}

TEST_F (ProgramTest, wrongTimesOfTheProjectAreWrongUsage)
{
    write ("x.csv", threeCues);
    EXPECT_EQ (run ({ "list", "x.csv", "--fps", "23" }).status, 2);
    EXPECT_EQ (run ({ "list", "x.csv", "--origin", "soon" }).status, 2);
    EXPECT_EQ (run ({ "list", "x.csv", "--fps", "25", "--origin", "01:00:00:25" }).status, 2);
    EXPECT_EQ (run ({ "list", "x.csv", "--fps", "29.97df", "--origin", "01:01:00:00" }).status, 2);
    EXPECT_EQ (run ({ "list", "x.csv", "--encoding", "klingon" }).status, 2);
    EXPECT_EQ (run ({ "list", "x.csv", "--map", "Nowhere=Text" }).status, 2);
    EXPECT_EQ (run ({ "list", "x.csv", "--map", "#9=Text" }).status, 2);
    EXPECT_EQ (run ({ "list", "x.csv", "--map", "#1=Texd" }).status, 2);
    EXPECT_EQ (run ({ "list", "x.csv", "--application", "other" }).status, 2);
}

TEST_F (ProgramTest, helpOfEveryCommandShowsAnExample)
{
    for (const auto* command : { "rows", "import", "dump", "load", "list", "set", "convert", "export",
                                 "formats", "keys", "reasons", "preferences" })
    {
        const auto result = run ({ command, "--help" });
        EXPECT_EQ (result.status, 0) << command;
        EXPECT_THAT (result.output, HasSubstr ("Example:\n  overmarks " + std::string (command))) << command;
    }

    EXPECT_THAT (run ({ "--version" }).output, StartsWith ("overmarks "));
}

TEST_F (ProgramTest, quietSilencesNotesButNoProblems)
{
    write ("x.csv", threeCues);
    EXPECT_EQ (run ({ "list", "x.csv", "--quiet" }).errors, "");
    EXPECT_THAT (run ({ "list", "missing.csv", "--quiet" }).errors, HasSubstr ("There is no file"));
}

TEST_F (ProgramTest, aFolderAndAPathThatIsNoTextAreRefused)
{
    ASSERT_TRUE (file ("folder.csv").createDirectory().wasOk());
    EXPECT_EQ (run ({ "list", "folder.csv" }).status, 1);
    EXPECT_EQ (run ({ "list", "\xff.csv" }).status, 2);
}

} // namespace
