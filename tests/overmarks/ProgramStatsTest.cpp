// SPDX-License-Identifier: GPL-3.0-only
// The numbers of a list: lines, cues, done, words, seconds and shares of characters and actors.
#include "overmarks/StatsFixture.h"
#include "support/ReadPDF.h"

#include <gmock/gmock.h>

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace
{

using Json = nlohmann::ordered_json;
using ProgramStatsTest = StatsTest;

TEST_F (ProgramStatsTest, theWholeDocument)
{
    writeList ({ { "c1", "ANNA", "B. Miller", "A" } },
               { { "c1", "A1", hour + 50, hour + 100, "Hello there", true },
                 { "c1", "A1", hour + 200, hour + 225 } });
    const Json amount { { "lines", 2 },     { "cues", 1 },    { "done", 1 },    { "words", 2 },
                        { "seconds", 3.0 }, { "frames", 75 }, { "share", 1.0 }, { "disabled", 0 } };
    const auto with = [&amount] (Json names)
    {
        names.update (amount);
        return names;
    };
    auto anna = with ({ { "name", "ANNA" }, { "actor", "B. Miller" }, { "prefix", "A" } });
    anna["id"] = "c1";
    anna["reels"] = Json::array ({ with ({ { "name", "01" } }) });
    const Json expected {
        { "characters", Json::array ({ anna }) },
        { "actors",
          Json::array ({ with ({ { "name", "B. Miller" }, { "characters", Json::array ({ "ANNA" }) } }) }) },
        { "reels", Json::array ({ with ({ { "name", "01" },
                                          { "from", "01:00:02:00" },
                                          { "to", "01:00:09:00" },
                                          { "characters", 1 } }) }) },
        { "total", amount },
        { "files", Json::array() },
        { "messages", Json::array() },
        { "problems", Json::array() },
    };
    EXPECT_EQ (stats().dump (1), expected.dump (1));
}

TEST_F (ProgramStatsTest, theTablesAreForAPerson)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "stats", "x.csv", "--quiet" });
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.errors, "");
    EXPECT_EQ (
        result.output,
        "Character  Actor      Prefix  Lines  Cues  Done  Done %  Words     Time    Share\n"
        "ANNA       B. Miller              2     2     0     0 %      2  0:00:03   66.7 %\n"
        "TOM        C. Berg                1     1     0     0 %      2  0:00:02   33.3 %\n"
        "Total                             3     3     0     0 %      4  0:00:05  100.0 %\n"
        "\n"
        "Actor      Characters  Lines  Cues  Done  Done %  Words     Time   Share\n"
        "B. Miller  ANNA            2     2     0     0 %      2  0:00:03  66.7 %\n"
        "C. Berg    TOM             1     1     0     0 %      2  0:00:02  33.3 %\n"
        "\n"
        "Reel  From         To           Characters  Lines  Cues  Done  Done %  Words     Time    Share\n"
        "01    01:00:02:00  01:00:09:00           2      3     3     0     0 %      4  0:00:05  100.0 %\n");
}

TEST_F (ProgramStatsTest, theTablesFitATerminal)
{
    write ("x.csv", threeCues);
    ProgramSurroundings narrow;
    narrow.terminalWidth = 60;
    const auto shown = run ({ "stats", "x.csv" }, {}, narrow).output;

    for (const auto& line : juce::StringArray::fromLines (juce::String (shown)))
        EXPECT_LE (line.length(), 60) << line;

    const auto characters = shown.substr (0, shown.find ("Total"));
    EXPECT_THAT (characters, HasSubstr ("ANNA"));
    EXPECT_THAT (characters, Not (HasSubstr ("Share"))) << "goes first";
}

// ---- lines and cues ------------------------------------------------------------------------------------------------------

TEST_F (ProgramStatsTest, linesOfOneNumberAreOneCueOfTheCharacter)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1", 0, 1, {}, true }, { "c1", "1" }, { "c1", "2" } });
    const auto anna = stats()["characters"][0];
    EXPECT_EQ (anna["lines"], 3);
    EXPECT_EQ (anna["cues"], 2);
    EXPECT_EQ (anna["done"], 1);
}

TEST_F (ProgramStatsTest, aCueOfTwoCharactersCountsForEach)
{
    writeList ({ { "c1", "ANNA", "B. Miller" }, { "c2", "EVE", "B. Miller" } },
               { { "c1", "1" }, { "c2", "1" } });
    const auto document = stats();
    EXPECT_EQ (each (document["characters"], "cues"), (Json { 1, 1 }));
    EXPECT_EQ (document["actors"][0]["cues"], 2);
    EXPECT_EQ (document["reels"][0]["cues"], 2);
    EXPECT_EQ (document["total"]["cues"], 2);
}

TEST_F (ProgramStatsTest, onlyADRCuesAreLines)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1", 0, 25, "x", true, true, streamer },
                                       { "c1", "2", 0, 25, "x", true, true, marker },
                                       { "c1", "3", 0, 25, "x", true, true, flutter },
                                       { "c1", "4", 0, 25, "x", true, true, 16 },
                                       { "c1", "5", 0, 25, "x", true, true, 32 } });
    const auto document = stats();
    EXPECT_EQ (document["total"]["lines"], 0);
    EXPECT_EQ (document["total"]["words"], 0);
    EXPECT_EQ (document["total"]["seconds"], 0.0);
    EXPECT_TRUE (document["reels"].empty());
}

TEST_F (ProgramStatsTest, aCharacterWithoutALineIsThereWithNothing)
{
    writeList ({ { "c1", "IDLE", "D. Lang" }, { "c2", "ANNA" } }, { { "c2", "1" } });
    const auto document = stats();
    EXPECT_EQ (each (document["characters"], "name"), (Json { "IDLE", "ANNA" }));
    EXPECT_EQ (each (document["characters"], "lines"), (Json { 0, 1 }));
    EXPECT_EQ (document["characters"][0]["share"], 0.0);
    EXPECT_EQ (each (document["actors"], "name"), (Json { "D. Lang", "" }));
}

TEST_F (ProgramStatsTest, linesThatNobodySpeaksStandAtTheEnd)
{
    writeList ({ { "c1", "ANNA" } }, { { "", "1" }, { "lost", "2", 0, 25, {}, true }, { "c1", "3" } });
    const auto document = stats();
    EXPECT_EQ (each (document["characters"], "id"), (Json { "c1", "" }));
    EXPECT_EQ (document["characters"][1]["name"], "");
    EXPECT_EQ (document["characters"][1]["lines"], 2);
    EXPECT_EQ (document["characters"][1]["done"], 1);
    EXPECT_EQ (document["reels"][0]["characters"], 1) << "nobody is no character";
    EXPECT_THAT (run ({ "stats", "x.json" }).output, HasSubstr ("\n<no char> "));
}

TEST_F (ProgramStatsTest, twoCharactersOfOneNameAreTwo)
{
    writeList ({ { "c1", "GUARD", "X" }, { "c2", "GUARD", "Y" } },
               { { "c1", "1" }, { "c2", "2" }, { "c2", "3" } });
    EXPECT_EQ (each (stats()["characters"], "lines"), (Json { 1, 2 }));
}

TEST_F (ProgramStatsTest, disabledLinesCountAndAreTold)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1", 0, 25, "one two", false, false }, { "c1", "2" } });
    const auto document = stats();
    EXPECT_EQ (document["total"]["lines"], 2);
    EXPECT_EQ (document["total"]["words"], 2);
    EXPECT_EQ (document["total"]["disabled"], 1);
    EXPECT_EQ (document["messages"], Json { "1 line is disabled; it is counted" });
    writeList ({ { "c1", "ANNA" } },
               { { "c1", "1", 0, 25, {}, false, false }, { "c1", "2", 0, 25, {}, false, false } });
    EXPECT_EQ (run ({ "stats", "x.json" }).errors, "2 lines are disabled; they are counted\n");
}

TEST_F (ProgramStatsTest, theNumbersAreThoseOfTheOverviewSheet)
{
    std::vector<Line> lines;

    for (int i = 0; i < 37; ++i)
        lines.push_back ({ i % 3 == 0   ? "c1"
                           : i % 3 == 1 ? "c2"
                                        : "",
                           std::to_string (i / 2), i * 50, i * 50 + 30 });

    writeList ({ { "c1", "ANNA" }, { "c2", "TOM" } }, lines);
    ASSERT_EQ (run ({ "overview", "x.json", "-o", "sheet.pdf", "--paper", "a4" }).status, 0);
    const ZEP::Overmarks::Testing::ReadPDF pdf (file ("sheet.pdf"));
    const auto document = stats();
    const auto& page = pdf.page();
    const auto isInRowOf = [&page] (const Json& row, const std::string& name)
    {
        for (const auto* member : { "lines", "cues" })
        {
            const auto number = row[member].dump();
            bool found = false;

            for (const auto& word : page.words)
                found |= word.text == number && std::abs (word.bottom - page.word (name).bottom) < 1.0;

            EXPECT_TRUE (found) << number << " " << member << " of " << name;
        }
    };
    isInRowOf (document["characters"][0], "ANNA");
    isInRowOf (document["characters"][1], "TOM");
    EXPECT_EQ (document["characters"][2]["id"], "");
    isInRowOf (document["total"], "Total");
}

// ---- seconds -------------------------------------------------------------------------------------------------------------

struct Rate
{
    const char* name;
    int frames;
    double seconds;
};

class ProgramStatsRateTest : public StatsTest, public testing::WithParamInterface<Rate>
{
};

TEST_P (ProgramStatsRateTest, secondsAreThoseOfTheClock)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1", 100, 100 + GetParam().frames } });
    const auto document = stats ({ "--fps", GetParam().name });
    EXPECT_DOUBLE_EQ (document["total"]["seconds"].get<double>(), GetParam().seconds);
    EXPECT_EQ (document["total"]["frames"], GetParam().frames);
}

INSTANTIATE_TEST_SUITE_P (Rates, ProgramStatsRateTest,
                          testing::Values (Rate { "25", 250, 10.0 }, Rate { "24", 240, 10.0 },
                                           Rate { "23.976", 240, 10.01 }, Rate { "29.97", 300, 10.01 },
                                           Rate { "29.97df", 300, 10.01 }, Rate { "30", 300, 10.0 },
                                           Rate { "59.94", 600, 10.01 }, Rate { "60", 1, 1.0 / 60.0 }));

TEST_F (ProgramStatsTest, theStreamerBeforeALineIsNoPartOfIt)
{
    write ("x.csv", "Start TC,End TC,Character,Text\n00:00:10:00,00:00:12:00,ANNA,x\n");
    EXPECT_EQ (run ({ "stats", "x.csv", "--json" }).json()["total"]["seconds"], 2.0);
}

TEST_F (ProgramStatsTest, overlappingLinesCountEach)
{
    writeList ({ { "c1", "ANNA" }, { "c2", "TOM" } },
               { { "c1", "1", 0, 100 }, { "c1", "2", 50, 100 }, { "c2", "3", 0, 100 } });
    const auto document = stats();
    EXPECT_EQ (document["characters"][0]["seconds"], 6.0);
    EXPECT_EQ (document["total"]["seconds"], 10.0);
}

TEST_F (ProgramStatsTest, aLineThatEndsBeforeItBeginsHasNoLength)
{
    writeList ({ { "c1", "ANNA" } },
               { { "c1", "1", 100, 50 }, { "c1", "2", 100, -1 }, { "c1", "3", 100, 125 } });
    EXPECT_EQ (stats()["total"]["seconds"], 1.0);
}

TEST_F (ProgramStatsTest, aLineWithoutATimeHasNoLengthAndIsTold)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1", -1, -1, "two words" }, { "c1", "2", 0, 25 } });
    const auto document = stats();
    EXPECT_EQ (document["total"]["lines"], 2);
    EXPECT_EQ (document["total"]["words"], 2);
    EXPECT_EQ (document["total"]["seconds"], 1.0);
    EXPECT_EQ (document["messages"], Json { "1 line has no time" });
}

TEST_F (ProgramStatsTest, timesThatNoFilmHasDoNoHarm)
{
    writeList ({ { "c1", "ANNA" } },
               { { "c1", "1", 0, 2147483647 }, { "c1", "2", -2147483647, 2147483647 } });
    EXPECT_EQ (stats()["total"]["frames"], 3LL * 2147483647);
    EXPECT_EQ (run ({ "stats", "x.json", "--html", "x.html" }).status, 0);
}

// ---- actors and shares ---------------------------------------------------------------------------------------------------

TEST_F (ProgramStatsTest, anActorHasTheLinesOfAllHisCharacters)
{
    writeList ({ { "c1", "ANNA", "B. Miller" }, { "c2", "TOM", "C. Berg" }, { "c3", "EVE", "B. Miller" } },
               { { "c1", "1", 0, 25, "a b" }, { "c2", "2" }, { "c3", "3", 0, 50, "c", true } });
    const auto actors = stats()["actors"];
    EXPECT_EQ (each (actors, "name"), (Json { "B. Miller", "C. Berg" }));
    EXPECT_EQ (actors[0]["characters"], (Json { "ANNA", "EVE" }));
    EXPECT_EQ (actors[0]["lines"], 2);
    EXPECT_EQ (actors[0]["done"], 1);
    EXPECT_EQ (actors[0]["words"], 3);
    EXPECT_EQ (actors[0]["seconds"], 3.0);
}

TEST_F (ProgramStatsTest, charactersWithoutAnActorAreOneRow)
{
    writeList ({ { "c1", "ANNA" }, { "c2", "TOM" } }, { { "c1", "1" }, { "c2", "2" }, { "", "3" } });
    const auto actors = stats()["actors"];
    EXPECT_EQ (each (actors, "name"), Json { "" });
    EXPECT_EQ (actors[0]["characters"], (Json { "ANNA", "TOM", "" }));
    EXPECT_EQ (actors[0]["lines"], 3);
    EXPECT_THAT (run ({ "stats", "x.json" }).output,
                 AllOf (HasSubstr ("\n<no actor> "), HasSubstr ("ANNA, TOM, <no char>")));
}

TEST_F (ProgramStatsTest, sharesAreOfTheLines)
{
    writeList ({ { "c1", "ANNA" }, { "c2", "TOM" } },
               { { "c1", "1", 0, 1000 }, { "c2", "2" }, { "c2", "3" }, { "c2", "4" } });
    const auto document = stats();
    EXPECT_EQ (each (document["characters"], "share"), (Json { 0.25, 0.75 }));
    EXPECT_EQ (document["total"]["share"], 1.0);
}

TEST_F (ProgramStatsTest, anEmptyListIsAllZeros)
{
    writeList ({}, {});
    const auto document = stats();
    EXPECT_TRUE (document["characters"].empty());
    EXPECT_TRUE (document["actors"].empty());
    EXPECT_TRUE (document["reels"].empty());
    EXPECT_EQ (document["total"]["lines"], 0);
    EXPECT_EQ (document["total"]["share"], 0.0);
    EXPECT_THAT (run ({ "stats", "x.json" }).output, HasSubstr ("Total"));
}

// ---- filter and order ----------------------------------------------------------------------------------------------------

TEST_F (ProgramStatsTest, theFilterChoosesAndSharesStayThoseOfTheList)
{
    writeList ({ { "c1", "ANNA", "B. Miller" }, { "c2", "TOM", "C. Berg" } },
               { { "c1", "A1", 0, 25, "Hello" }, { "c1", "A2" }, { "c2", "T1" }, { "c2", "T2" } });
    const auto document = stats ({ "--character", "ANNA" });
    EXPECT_EQ (each (document["characters"], "name"), Json { "ANNA" });
    EXPECT_EQ (each (document["actors"], "name"), Json { "B. Miller" });
    EXPECT_EQ (document["total"]["lines"], 2);
    EXPECT_EQ (document["total"]["share"], 0.5);
    EXPECT_EQ (stats ({ "--actor", "C. Berg" })["total"]["lines"], 2);
    EXPECT_EQ (stats ({ "--text", "Hello" })["total"]["lines"], 1);
    EXPECT_EQ (stats ({ "--cue", "1" })["total"]["lines"], 2);
}

TEST_F (ProgramStatsTest, neighboursOfAMatchAreNotCounted)
{
    writeList ({ { "c1", "ANNA" }, { "c2", "TOM" } },
               { { "c2", "T1", 0, 25 }, { "c1", "A1", 50, 75 }, { "c2", "T2", 100, 125 } });
    const auto document = stats ({ "--character", "ANNA", "--adjacent", "1" });
    EXPECT_EQ (document["total"]["lines"], 1);
    EXPECT_EQ (each (document["characters"], "name"), Json { "ANNA" });
}

TEST_F (ProgramStatsTest, charactersStandInTheOrderOfTheCastOrOfTheirLines)
{
    writeList ({ { "c1", "IDLE" }, { "c2", "ANNA" }, { "c3", "TOM" } },
               { { "c3", "1", 0, 25 }, { "c2", "2", 50, 75 } });
    EXPECT_EQ (each (stats()["characters"], "name"), (Json { "IDLE", "ANNA", "TOM" }));
    EXPECT_EQ (each (stats ({ "--sort", "StartTCString" })["characters"], "name"),
               (Json { "TOM", "ANNA", "IDLE" }));
    EXPECT_EQ (each (stats ({ "--sort", "CueNumber", "--descending" })["characters"], "name"),
               (Json { "ANNA", "TOM", "IDLE" }));
    EXPECT_EQ (each (stats ({ "--descending" })["characters"], "name"), (Json { "ANNA", "TOM", "IDLE" }));
}

// ---- reels ---------------------------------------------------------------------------------------------------------------

TEST_F (ProgramStatsTest, theHourOfTheStartIsTheReel)
{
    writeList ({ { "c1", "ANNA" }, { "c2", "TOM" } }, { { "c1", "1", 2 * hour - 1, 2 * hour + 100 },
                                                        { "c1", "2", 2 * hour, 2 * hour + 25 },
                                                        { "c2", "3", 2 * hour + 50, 2 * hour + 75 } });
    const auto document = stats();
    EXPECT_EQ (each (document["reels"], "name"), (Json { "01", "02" }));
    EXPECT_EQ (each (document["reels"], "lines"), (Json { 1, 2 }));
    EXPECT_EQ (each (document["reels"], "characters"), (Json { 1, 2 }));
    EXPECT_EQ (each (document["reels"], "from"), (Json { "01:59:59:24", "02:00:00:00" }));
    EXPECT_EQ (each (document["reels"], "to"), (Json { "02:00:04:00", "02:00:03:00" }));
    EXPECT_EQ (each (document["characters"][0]["reels"], "name"), (Json { "01", "02" }));
    EXPECT_EQ (each (document["characters"][0]["reels"], "lines"), (Json { 1, 1 }));
    EXPECT_EQ (each (document["characters"][1]["reels"], "name"), Json { "02" });
}

TEST_F (ProgramStatsTest, theHourCountsFromTheOriginAndWithDropFrame)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1", 107891, 107900 }, { "c1", "2", 107892, 107900 } });
    EXPECT_EQ (each (stats ({ "--fps", "29.97df" })["reels"], "name"), (Json { "00", "01" }));
    EXPECT_EQ (each (stats ({ "--fps", "29.97df", "--origin", "10:00:00;00" })["reels"], "name"),
               (Json { "10", "11" }));
    EXPECT_EQ (each (stats ({ "--fps", "29.97" })["reels"], "name"), (Json { "00" }));
}

TEST_F (ProgramStatsTest, aCueOfTwoReelsCountsInBothAndOnceInTheTotal)
{
    writeList ({ { "c1", "ANNA" } },
               { { "c1", "1", hour, hour + 25 }, { "c1", "1", 2 * hour, 2 * hour + 25 } });
    const auto document = stats();
    EXPECT_EQ (each (document["reels"], "cues"), (Json { 1, 1 }));
    EXPECT_EQ (document["total"]["cues"], 1);
}

TEST_F (ProgramStatsTest, linesWithoutATimeAreTheLastReel)
{
    writeList (
        { { "c1", "ANNA" } },
        { { "c1", "1", -1, -1 }, { "c1", "2", hour, hour + 25 }, { "c1", "3", 2 * hour, 2 * hour + 25 } });
    const auto document = stats();
    EXPECT_EQ (each (document["reels"], "name"), (Json { "01", "02", "" }));
    EXPECT_EQ (document["reels"][2]["from"], "");
    EXPECT_EQ (document["reels"][2]["to"], "");
    EXPECT_EQ (each (document["characters"][0]["reels"], "name"), (Json { "01", "02", "" }));
    EXPECT_THAT (run ({ "stats", "x.json" }).output, HasSubstr ("\n<no time> "));
}

TEST_F (ProgramStatsTest, whatTellsAReelIsRefusedWithTheKnownWays)
{
    EXPECT_EQ (errorOf ({ "stats", "x.json", "--reels", "hours" }, 2),
               "--reels: \"hours\" is none of hour, cue, none. Did you mean \"hour\"?");
}

TEST_F (ProgramStatsTest, theBeginningOfTheCueNumberCanBeTheReel)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "R2-014", 0, 25 },
                                       { "c1", "R1_3", 30, 40 },
                                       { "c1", "R2 15", 50, 60 },
                                       { "c1", "A1", 70, 80 },
                                       { "c1", "-7", 90, 95 },
                                       { "c1", "1M/2", 96, 97 } });
    const auto document = stats ({ "--reels", "cue" });
    EXPECT_EQ (each (document["reels"], "name"), (Json { "R2", "R1", "1M", "" }));
    EXPECT_EQ (each (document["reels"], "lines"), (Json { 2, 1, 1, 2 }));
    EXPECT_THAT (run ({ "stats", "x.json", "--reels", "cue" }).output, HasSubstr ("\n<no reel> "));
}

TEST_F (ProgramStatsTest, reelsCanBeLeftOut)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1", hour, hour + 25 } });
    const auto document = stats ({ "--reels", "none" });
    EXPECT_TRUE (document["reels"].empty());
    EXPECT_TRUE (document["characters"][0]["reels"].empty());
    EXPECT_EQ (document["total"]["lines"], 1);
    EXPECT_THAT (run ({ "stats", "x.json", "--reels", "none" }).output, Not (HasSubstr ("Reel")));
    EXPECT_EQ (run ({ "stats", "x.json", "--reels", "moon" }).status, 2);
}

// ---- what is wrong -------------------------------------------------------------------------------------------------------

TEST_F (ProgramStatsTest, aRowThatCannotBeReadIsAProblemAndTheRestIsCounted)
{
    write ("x.csv", "Start TC,Character,Text\nnonsense,ANNA,x\n00:00:02:00,ANNA,y\n");
    const auto result = run ({ "stats", "x.csv", "--json" });
    EXPECT_EQ (result.status, 1);
    EXPECT_GE (result.json()["total"]["lines"], 1);
    EXPECT_FALSE (result.json()["problems"].empty());
}

TEST_F (ProgramStatsTest, aListThatIsNotThereIsAFailure)
{
    EXPECT_THAT (errorOf ({ "stats", "nowhere.csv" }, 1), HasSubstr ("nowhere.csv"));
    EXPECT_EQ (run ({ "stats" }).status, 2);
}

} // namespace
