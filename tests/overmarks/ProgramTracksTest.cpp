// SPDX-License-Identifier: GPL-3.0-only
// The program with session texts of Pro Tools, and which of their tracks it reads.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

using nlohmann::ordered_json;
using testing::HasSubstr;
using testing::Not;

namespace
{

const std::string harbour = OVERMARKS_TEST_DATA "/import/protools/harbour.txt";

class ProgramTracks : public ProgramTest
{
protected:
    /** The texts of the rows that are read with these options. */
    std::vector<std::string> textsOf (const std::vector<std::string>& options) const
    {
        std::vector<std::string> arguments { "rows", harbour, "--json" };
        arguments.insert (arguments.end(), options.begin(), options.end());
        std::vector<std::string> texts;
        const auto document = run (arguments).json();
        for (const auto& row : document["rows"])
            texts.push_back (row[3]);
        return texts;
    }

    /** A session of one cue track. */
    static std::string session (const std::string& track, const std::string& text)
    {
        return "T R A C K  L I S T I N G\nTRACK NAME:\t" + track + "\nCHANNEL\n1\t1\t" + text
               + "\t01:00:00:00\t01:00:01:00\n\n\n";
    }
};

using Texts = std::vector<std::string>;

const Texts annasLines { "The harbour is closed.", "Go home, captain.", "Captain?" };
const Texts captainsLines { "Who says so?", "I have seen worse.", "Hm." };

} // namespace

TEST_F (ProgramTracks, rowsShowsTheCueTracksAndTheirColumns)
{
    const auto document = run ({ "rows", harbour, "--json" }).json();
    EXPECT_EQ (document["type"], 0);
    EXPECT_EQ (document["userMappingEnabled"], false);
    EXPECT_EQ (document["error"], "");
    EXPECT_EQ (document["columnMap"].size(), 9u);
    EXPECT_EQ (document["rows"].size(), 6u);
    EXPECT_EQ (document["rows"][0],
               ordered_json ({ "01:00:02:00", "01:00:04:00", "A0001", "The harbour is closed.", "ANNA", "A",
                               "B. Miller", "tired", "Clarity (AR4)" }));
}

TEST_F (ProgramTracks, cueTracksAreTheDefault)
{
    EXPECT_EQ (textsOf ({ "--tracks", "cue" }), textsOf ({}));
    EXPECT_EQ (textsOf ({}).size(), 6u);
}

TEST_F (ProgramTracks, allTracksAreReadWhenAsked)
{
    const auto texts = textsOf ({ "--tracks", "all" });
    EXPECT_EQ (texts.size(), 7u);
    EXPECT_EQ (texts[0], "Harbour theme.L");
}

TEST_F (ProgramTracks, namesAreThoseOfTracksOrOfCharactersWhateverTheirCase)
{
    EXPECT_EQ (textsOf ({ "--tracks", "ANNA [A] {B. Miller} (close mic)" }), annasLines);
    EXPECT_EQ (textsOf ({ "--tracks", "anna" }), annasLines);
    EXPECT_EQ (textsOf ({ "--tracks", "Captain" }), captainsLines);
    EXPECT_EQ (textsOf ({ "--tracks", "Music" }), Texts { "Harbour theme.L" });
    EXPECT_EQ (textsOf ({ "--tracks", "Spare" }), Texts());
    EXPECT_EQ (textsOf ({ "--tracks", "CAPTAIN, Music" }).size(), 4u);
    EXPECT_EQ (textsOf ({ "--tracks", "CAPTAIN", "--tracks", "Music" }).size(), 4u);
}

TEST_F (ProgramTracks, whichTracksWereReadIsSaid)
{
    EXPECT_THAT (run ({ "rows", harbour }).errors,
                 HasSubstr (harbour + ": 2 of 4 tracks are read, without \"Music (stereo)\", \"Spare\"\n"));
    EXPECT_THAT (run ({ "list", harbour, "--tracks", "all" }).errors,
                 HasSubstr (harbour + ": 4 of 4 tracks are read\n"));
    EXPECT_THAT (run ({ "list", harbour, "--quiet" }).errors, Not (HasSubstr ("tracks")));
}

TEST_F (ProgramTracks, aSessionWithoutCueTracksSaysHowToReadTheOthers)
{
    write ("x.txt", session ("Dialogue", "Hello"));
    const auto result = run ({ "import", "x.txt", "-o", "p.json" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (
        result.errors,
        HasSubstr ("x.txt: 0 of 1 tracks are read, without \"Dialogue\"; --tracks all reads them all\n"));
    EXPECT_THAT (result.errors, HasSubstr ("x.txt: no cues were found in it\n"));

    EXPECT_EQ (run ({ "import", "x.txt", "-o", "q.json", "--tracks", "all" }).status, 0);
}

TEST_F (ProgramTracks, aNameThatNoTrackHasIsWrongUsage)
{
    const auto* const tracks = " There are \"ANNA [A] {B. Miller} (close mic)\", \"CAPTAIN {C. Berg} [C]\", "
                               "\"Music (stereo)\", \"Spare\"";
    for (const auto* command : { "rows", "list" })
    {
        EXPECT_EQ (errorOf ({ command, harbour, "--tracks", "ANNA,Captian" }, 2),
                   std::string ("--tracks: there is no track \"Captian\". Did you mean \"CAPTAIN\"?")
                       + tracks);
        EXPECT_EQ (errorOf ({ command, harbour, "--tracks", "Xyzzy" }, 2),
                   std::string ("--tracks: there is no track \"Xyzzy\".") + tracks);
    }

    EXPECT_EQ (run ({ "import", harbour, "-o", "p.json", "--tracks", "Xyzzy" }).status, 2);
    EXPECT_FALSE (file ("p.json").exists());
    EXPECT_EQ (run ({ "rows", harbour, "--tracks", "" }).status, 2);
}

TEST_F (ProgramTracks, aNameNeedsToBeInOneOfSeveralFiles)
{
    write ("1.txt", session ("ANNA {B}", "Hello"));
    write ("2.txt", session ("TOM {C}", "Hello yourself"));
    const auto result = run ({ "import", "1.txt", "2.txt", "-o", "p.json", "--tracks", "ANNA,TOM" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_THAT (result.errors, HasSubstr ("1.txt: there is no track \"TOM\" in it\n"));
    EXPECT_THAT (result.errors, HasSubstr ("2.txt: there is no track \"ANNA\" in it\n"));
    EXPECT_EQ (run ({ "list", "p.json", "--json" }).json()["events"].size(), 2u);

    EXPECT_EQ (run ({ "import", "1.txt", "2.txt", "-o", "q.json", "--tracks", "EVE" }).status, 2);
    EXPECT_FALSE (file ("q.json").exists());
}

//==============================================================================
TEST_F (ProgramTracks, importMakesCuesOfClips)
{
    const auto imported = run (
        { "import", harbour, "-o", "p.json", "--reasons", "Director's wish", "--origin", "01:00:00:00" });
    EXPECT_EQ (imported.status, 1); // for the reason that nobody knows
    EXPECT_THAT (imported.errors, HasSubstr ("XY7"));

    const auto events = run ({ "list", "p.json", "--json" }).json()["events"];
    ASSERT_EQ (events.size(), 6u);
    EXPECT_EQ (events[3]["startTC"], "01:00:09:00");
    EXPECT_EQ (events[3]["cueNumber"], "C0002");
    EXPECT_EQ (events[3]["character"], "CAPTAIN");
    EXPECT_EQ (events[3]["actor"], "C. Berg");
    EXPECT_EQ (events[3]["notes"]["text"], "smile");
    EXPECT_EQ (events[3]["reason"], 33);
    EXPECT_EQ (events[4]["cueNumber"], "A0002");
    EXPECT_EQ (events[4]["reason"], 0);
}

TEST_F (ProgramTracks, userReasonsHaveTheirNamesInTheRows)
{
    const auto rows =
        run ({ "rows", harbour, "--json", "--reasons", "Director's wish,Legal" }).json()["rows"];
    EXPECT_EQ (rows[3][8], "Director's wish (UR1)");
    EXPECT_EQ (run ({ "rows", harbour, "--json" }).json()["rows"][3][8], "UR1");
}

TEST_F (ProgramTracks, convertWritesTheCues)
{
    EXPECT_EQ (run ({ "convert", harbour, "out.csv", "--tracks", "ANNA" }).status, 0);
    const auto written = read ("out.csv");
    EXPECT_THAT (written, HasSubstr ("Go home, captain."));
    EXPECT_THAT (written, Not (HasSubstr ("Who says so?")));
}

TEST_F (ProgramTracks, anEncodingThatIsNamedIsReadWithTheSameTracks)
{
    const std::string list = OVERMARKS_TEST_DATA "/import/protools/wrong_encoding.txt";
    const auto document = run ({ "rows", list, "--json", "--encoding", "windows-1252" }).json();
    EXPECT_EQ (document["encoding"], 5);
    EXPECT_EQ (document["rows"][0][3], "Schönen Abend, Frau Weiß.");
}

TEST_F (ProgramTracks, aSessionFromStandardInputIsRead)
{
    const auto result = run ({ "rows", "-", "--format", "txt", "--json" }, session ("ANNA {B}", "Hello"));
    EXPECT_EQ (result.json()["rows"][0][3], "Hello");
}

TEST_F (ProgramTracks, aTableInATextFileIsToldToBeNamedCSV)
{
    write ("x.txt", "Start TC,Text\n01:00:00:00,Hello\n");
    EXPECT_EQ (
        errorOf ({ "list", "x.txt" }, 1),
        "x.txt: The file doesn't contain valid Pro Tools session info data. If you're trying to import "
        "comma-separated values, please use the file extension '.csv'");
    const auto rows = run ({ "rows", "x.txt" });
    EXPECT_EQ (rows.status, 1);
    EXPECT_THAT (rows.errors, HasSubstr ("please use the file extension '.csv'"));
}

TEST_F (ProgramTracks, aSessionThatIsNotInTimecodeIsRefused)
{
    const std::string list = OVERMARKS_TEST_DATA "/import/protools/feet_and_frames.txt";
    EXPECT_EQ (
        errorOf ({ "list", list }, 1),
        list
            + ": The file's time format is not set to timecode.This is required for Orvelle to parse the "
              "content properly.Please make sure to select 'Timecode' as time format in the Pro Tools "
              "Export Session Info dialog");
}

TEST_F (ProgramTracks, tracksThatAreLostAreSaid)
{
    const std::string list = OVERMARKS_TEST_DATA "/import/protools/one_empty_line.txt";
    const auto result = run ({ "import", list, "-o", "p.json" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (
        result.errors,
        HasSubstr ("tracks without two empty lines behind them are left out (1, the first is \"ANNA"));
    EXPECT_THAT (result.errors,
                 HasSubstr ("one_empty_line.txt: a track without two empty lines behind it is left out\n"));
}

TEST_F (ProgramTracks, namesMayHoldUmlautsAndCommas)
{
    write ("s.txt", session ("MILLER, JÖRG [J] {B}", "Moin."));
    for (const auto* name : { "miller\\, jörg", " Miller\\, Jörg ", "MILLER\\, JÖRG [J] {B}" })
        EXPECT_EQ (run ({ "rows", "s.txt", "--json", "--tracks", name }).json()["rows"].size(), 1u) << name;
}

TEST_F (ProgramTracks, anEmptyNameIsNone)
{
    write ("s.txt", session ("ANNA [A] {B}", "Moin."));
    for (const auto* names : { "", ",", "ANNA, ", ",ANNA", "ANNA, all", "cue,ANNA" })
        EXPECT_THAT (run ({ "rows", "s.txt", "--tracks", names }).errors,
                     HasSubstr ("--tracks: it is either all or cue, or the names of tracks"))
            << names;
    EXPECT_EQ (run ({ "rows", "s.txt", "--tracks", " all", "--json" }).json()["rows"].size(), 1u);
}

TEST_F (ProgramTracks, thousandsOfTracksAreReadAtOnce)
{
    std::string text = "T R A C K  L I S T I N G\n";
    for (int i = 0; i < 20000; ++i)
        text += "TRACK NAME:\tT" + std::to_string (i) + "\n\n\n";
    write ("s.txt", text);
    EXPECT_THAT (run ({ "rows", "s.txt", "--tracks", "T7,T8" }).errors,
                 HasSubstr ("2 of 20000 tracks are read, without \"T0\", \"T1\", \"T2\", \"T3\", \"T4\", "
                            "\"T5\", \"T6\", \"T9\", 19990 more\n"));
}

TEST_F (ProgramTracks, aLongNameIsShownByItsBeginning)
{
    write ("s.txt", session (std::string (1000, 'x'), "Moin."));
    EXPECT_THAT (run ({ "rows", "s.txt" }).errors,
                 HasSubstr ("0 of 1 tracks are read, without \"" + std::string (60, 'x') + "...\""));
}

TEST_F (ProgramTracks, anEmptyPlaceAmongTheReasonsHasNoName)
{
    write ("s.txt", session ("ANNA [A] {B}", "Moin. [UR2]"));
    for (const auto* reasons : { ",Legal", " , Legal ", ",Legal,,,,,,,,," })
    {
        const auto rows = run ({ "rows", "s.txt", "--json", "--reasons", reasons }).json()["rows"];
        EXPECT_EQ (rows[0][8], "Legal (UR2)") << reasons;
    }
    EXPECT_EQ (run ({ "rows", "s.txt", "--reasons", ",", "--json" }).json()["rows"][0][8], "UR2");
}
