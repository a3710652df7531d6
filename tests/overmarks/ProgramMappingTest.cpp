// SPDX-License-Identifier: GPL-3.0-only
// Columns of cue lists: which of them nobody reads, what their headers hint at, and assignments that are kept.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

using nlohmann::ordered_json;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

namespace
{

class ProgramMappingTest : public ProgramTest
{
protected:
    ProgramMappingTest() { write ("x.csv", studioList); }

    /** Runs and keeps the assignment under a name. */
    ProgramResult keep (const std::string& name, const std::vector<std::string>& maps) const
    {
        std::vector<std::string> arguments { "list",       "x.csv",          "--json", "--settings",
                                             "s.settings", "--save-mapping", name };

        for (const auto& map : maps)
            arguments.insert (arguments.end(), { "--map", map });

        return run (arguments);
    }

    ordered_json firstEvent (std::vector<std::string> arguments) const
    {
        arguments.insert (arguments.begin(), { "list", "x.csv", "--json" });
        const auto result = run (arguments);
        EXPECT_EQ (result.status, 0) << result.errors;
        return result.json()["events"][0];
    }

    std::string shownPreferences() const
    {
        return run ({ "preferences", "--settings", "s.settings" }).output;
    }

    static constexpr auto studioList = "In,Out,Speaker,Line,Loop #,Mood\n"
                                       "01:00:02:00,01:00:04:00,ANNA,Hello?,12,angry\n";
};

// ---- unused columns ------------------------------------------------------------------------------------------------------

TEST_F (ProgramMappingTest, columnsThatNobodyReadsAreNamedWithWhatTheyMayBe)
{
    const auto result = run ({ "list", "x.csv" });
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (
        result.errors,
        HasSubstr ("x.csv: column 3 \"Speaker\" is not used; --map \"Speaker=Character\" would take it as "
                   "Character\n"
                   "x.csv: column 4 \"Line\" is not used; --map \"Line=Text\" would take it as Text\n"
                   "x.csv: column 5 \"Loop #\" is not used; --map \"Loop #=Cue Number\" would take it as "
                   "Cue Number\n"
                   "x.csv: column 6 \"Mood\" is not used\n"));
}

TEST_F (ProgramMappingTest, aHintIsNeverFollowedByItself)
{
    const auto event = firstEvent ({});
    EXPECT_EQ (event["cueNumber"], "");
    EXPECT_EQ (event["text"]["text"], "");
    EXPECT_EQ (event["character"], "");
}

TEST_F (ProgramMappingTest, whatAHintSaysWorks)
{
    const auto event =
        firstEvent ({ "--map", "Loop #=Cue Number", "--map", "Line=Text", "--map", "Speaker=Character" });
    EXPECT_EQ (event["cueNumber"], "12");
    EXPECT_EQ (event["text"]["text"], "Hello?");
    EXPECT_EQ (event["character"], "ANNA");
}

TEST_F (ProgramMappingTest, whatIsAssignedAlreadyIsNotHintedAt)
{
    const auto errors = run ({ "list", "x.csv", "--map", "Mood=Cue Number" }).errors;
    EXPECT_THAT (errors, HasSubstr ("x.csv: column 5 \"Loop #\" is not used\n"));
    EXPECT_THAT (errors, Not (HasSubstr ("Mood\" is not used")));
}

TEST_F (ProgramMappingTest, headersOfTheTradeHintAtTheirTitles)
{
    const std::vector<std::pair<std::string, std::string>> hints {
        { "ADR #", "Cue Number" },       { "Loop No.", "Cue Number" },
        { "LOOP-NUMBER", "Cue Number" }, { "#", "Cue Number" },
        { "Nr", "Cue Number" },          { "TC", "Start TC" },
        { "Start Time", "Start TC" },    { "Time Out", "End TC" },
        { "Dialogue", "Text" },          { "Texte", "Text" },
        { "Char", "Character" },         { "Talent", "Actor" },
        { "Comments", "Notes" },         { "Tech Notes", "Engineering Notes" },
        { "Recorded", "Done" },          { "Takes", "Number of Takes" },
        { "ADR Reason", "Reason" },      { "K\u00dcRZEL", "Char Prefix" },
        { "D\u00e9but", "Start TC" },
    };

    for (const auto& [header, title] : hints)
    {
        write ("x.csv", "Event Type," + header + "\nADR Cue,x\n");
        EXPECT_THAT (run ({ "rows", "x.csv" }).errors, HasSubstr ("would take it as " + title + "\n"))
            << header;
    }
}

TEST_F (ProgramMappingTest, aHeaderThatCannotBeTypedIsHintedAtByItsNumber)
{
    write ("x.csv", "Start TC,\"Line\",\" Loop #\",Line\n01:00:00:00,a,b,c\n");
    const auto errors = run ({ "list", "x.csv" }).errors;
    EXPECT_THAT (errors, HasSubstr ("column 2 \"Line\" is not used; --map \"Line=Text\""));
    EXPECT_THAT (errors, HasSubstr ("column 3 \" Loop #\" is not used; --map \"#3=Cue Number\""));
    EXPECT_THAT (errors, HasSubstr ("column 4 \"Line\" is not used; --map \"#4=Text\""));
}

TEST_F (ProgramMappingTest, whatStandsBesideTheTitlesIsNamedAndWhatIsEmptyIsNot)
{
    write ("x.csv", "Start TC,,Text,,\n01:00:00:00,lost,Hello,,stray\n");
    const auto errors = run ({ "list", "x.csv" }).errors;
    EXPECT_THAT (errors, HasSubstr ("x.csv: column 2 is not used; it has no title\n"));
    EXPECT_THAT (errors, HasSubstr ("x.csv: column 5 is not used; it has no title\n"));
    EXPECT_THAT (errors, Not (HasSubstr ("column 4")));
}

TEST_F (ProgramMappingTest, endlessUnusedColumnsAreCountedInTheEnd)
{
    std::string titles = "Start TC", cells = "01:00:00:00";

    for (int i = 0; i < 43; ++i)
    {
        titles += ",T" + std::to_string (i);
        cells += ",x";
    }

    write ("x.csv", titles + "\n" + cells + "\n");
    const auto errors = run ({ "list", "x.csv" }).errors;
    EXPECT_THAT (errors, HasSubstr ("column 41 \"T39\" is not used\n"));
    EXPECT_THAT (errors, Not (HasSubstr ("column 42")));
    EXPECT_THAT (errors, HasSubstr ("x.csv: 3 further columns are not used\n"));
}

TEST_F (ProgramMappingTest, quietNamesNoColumn)
{
    EXPECT_EQ (run ({ "list", "x.csv", "--quiet" }).errors, "");
    EXPECT_EQ (run ({ "rows", "x.csv", "--quiet" }).errors, "");
}

TEST_F (ProgramMappingTest, rowsAndImportTellOfUnusedColumnsInJSON)
{
    const std::string line = "x.csv: column 6 \"Mood\" is not used";
    EXPECT_THAT (run ({ "rows", "x.csv", "--json", "--quiet" }).json()["messages"], Contains (line));
    const auto imported = run ({ "import", "x.csv", "-o", "film.json", "--json" }).json();
    EXPECT_THAT (imported["messages"], Contains (line));
    EXPECT_THAT (imported["messages"].dump(), Not (HasSubstr ("Wrote")));
}

TEST_F (ProgramMappingTest, aFormatWithFixedColumnsHasNoUnusedOnes)
{
    write ("x.srt", "1\n00:00:01,000 --> 00:00:02,000\nHello\n");
    EXPECT_EQ (run ({ "rows", "x.srt", "--json" }).json()["messages"], ordered_json::array());
}

// ---- mappings that are kept ----------------------------------------------------------------------------------------------

TEST_F (ProgramMappingTest, aMappingIsKeptAndUsedAgain)
{
    const auto kept = keep ("studio", { "Loop #=Cue Number", "line=text" });
    EXPECT_EQ (kept.status, 0);
    EXPECT_THAT (kept.errors, HasSubstr ("Kept the mapping \"studio\" in " + path ("s.settings")
                                         + ": Loop #=Cue Number, line=Text\n"));

    const auto event = firstEvent ({ "--mapping", "studio", "--settings", "s.settings" });
    EXPECT_EQ (event["cueNumber"], "12");
    EXPECT_EQ (event["text"]["text"], "Hello?");
}

TEST_F (ProgramMappingTest, theCommandLineHasTheLastWordOverAMapping)
{
    keep ("studio", { "Loop #=Cue Number", "Line=Text" });
    const auto event =
        firstEvent ({ "--mapping", "studio", "--settings", "s.settings", "--map", "Mood=Text" });
    EXPECT_EQ (event["cueNumber"], "12");
    EXPECT_EQ (event["text"]["text"], "angry");
}

TEST_F (ProgramMappingTest, aMappingGrowsUnderAnotherName)
{
    keep ("studio", { "Loop #=Cue Number" });
    EXPECT_EQ (run ({ "rows", "x.csv", "--settings", "s.settings", "--mapping", "studio", "--map",
                      "Line=Text", "--save-mapping", "more" })
                   .status,
               0);
    const auto mappings = run ({ "preferences", "--settings", "s.settings", "--json" }).json()["mappings"];
    EXPECT_EQ (mappings, ordered_json::parse (R"([
        { "name": "more", "columns": { "Cue Number": "Loop #", "Text": "Line" } },
        { "name": "studio", "columns": { "Cue Number": "Loop #" } } ])"));
}

TEST_F (ProgramMappingTest, preferencesListTheMappings)
{
    EXPECT_THAT (shownPreferences(), Not (HasSubstr ("Mapping")));
    keep ("studio", { "Loop #=Cue Number" });
    EXPECT_THAT (shownPreferences(), HasSubstr ("Mapping  Columns\nstudio   Loop #=Cue Number\n"));
    EXPECT_EQ (run ({ "preferences", "--json" }).json()["mappings"], ordered_json::array());
}

TEST_F (ProgramMappingTest, theOtherPreferencesStay)
{
    ASSERT_EQ (run ({ "preferences", "--set", "ADRCueDefaultDuration=1", "--settings", "s.settings" }).status,
               0);
    keep ("studio", { "Loop #=Cue Number" });
    EXPECT_THAT (read ("s.settings"), HasSubstr ("\"int:1\""));
    ASSERT_EQ (run ({ "preferences", "--set", "ADRCueDefaultDuration=2", "--settings", "s.settings" }).status,
               0);
    EXPECT_THAT (shownPreferences(), HasSubstr ("studio   Loop #=Cue Number\n"));
}

TEST_F (ProgramMappingTest, aKeptMappingIsReplacedAndThatIsSaid)
{
    keep ("studio", { "Loop #=Cue Number" });
    EXPECT_THAT (keep ("studio", { "Mood=Cue Number" }).errors,
                 HasSubstr ("; it replaces one of this name\n"));
    EXPECT_THAT (keep ("studio", { "Mood=Cue Number" }).errors, Not (HasSubstr ("studio")));
    EXPECT_THAT (shownPreferences(), HasSubstr ("studio   Mood=Cue Number\n"));
}

TEST_F (ProgramMappingTest, aMappingIsForgotten)
{
    keep ("studio", { "Loop #=Cue Number" });
    EXPECT_EQ (run ({ "preferences", "--forget-mapping", "studio", "--settings", "s.settings" }).status, 0);
    EXPECT_THAT (shownPreferences(), Not (HasSubstr ("studio")));
    EXPECT_EQ (errorOf ({ "preferences", "--forget-mapping", "studio", "--settings", "s.settings" }, 2),
               "There is no mapping \"studio\" in " + path ("s.settings") + "; --save-mapping keeps one");
    EXPECT_EQ (errorOf ({ "preferences", "--forget-mapping", "studio" }, 2),
               "--forget-mapping needs the preferences file that it writes: --settings FILE");
}

TEST_F (ProgramMappingTest, anUnknownMappingIsToldWithTheKnownOnes)
{
    keep ("studio", { "Loop #=Cue Number" });
    keep ("house", { "Loop #=Cue Number" });
    EXPECT_EQ (errorOf ({ "list", "x.csv", "--mapping", "studo", "--settings", "s.settings" }, 2),
               "There is no mapping \"studo\" in " + path ("s.settings")
                   + ", only house, studio. Did you mean \"studio\"?");
    EXPECT_EQ (errorOf ({ "list", "x.csv", "--mapping", "studio", "--settings", "other.settings" }, 2),
               "There is no mapping \"studio\" in " + path ("other.settings") + "; --save-mapping keeps one");
}

TEST_F (ProgramMappingTest, withoutAPreferencesFileThereIsNoPlaceForMappings)
{
    EXPECT_EQ (errorOf ({ "list", "x.csv", "--mapping", "studio" }, 2),
               "--mapping needs the preferences file that holds the mappings: --settings FILE");
    EXPECT_EQ (errorOf ({ "list", "x.csv", "--map", "Line=Text", "--save-mapping", "studio" }, 2),
               "--save-mapping needs the preferences file that holds the mappings: --settings FILE");
    EXPECT_EQ (filesInFolder(), std::vector<std::string> { "x.csv" });
}

TEST_F (ProgramMappingTest, whatCannotBeKeptIsRefused)
{
    EXPECT_EQ (errorOf ({ "list", "x.csv", "--save-mapping", "studio", "--settings", "s.settings" }, 2),
               "--save-mapping keeps what --map assigns; there is no --map");
    EXPECT_EQ (
        errorOf ({ "list", "x.csv", "--map", "Line=Text", "--save-mapping", " ", "--settings", "s.settings" },
                 2),
        "--save-mapping: a mapping has a name");
    EXPECT_EQ (keep ("studio", { "Nowhere=Text" }).status, 2);
    EXPECT_EQ (filesInFolder(), std::vector<std::string> { "x.csv" });
}

TEST_F (ProgramMappingTest, aDryRunKeepsNothing)
{
    const auto result = run ({ "import", "x.csv", "-o", "film.json", "--dry-run", "--map", "Line=Text",
                               "--save-mapping", "studio", "--settings", "s.settings" });
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.errors, HasSubstr ("Would keep the mapping \"studio\" in " + path ("s.settings")));
    EXPECT_EQ (filesInFolder(), std::vector<std::string> { "x.csv" });
}

TEST_F (ProgramMappingTest, aComparisonKeepsTheMappingOfBothListsOnce)
{
    write ("new.csv", "In,Out,Speaker,Line,Loop #,Mood\n"
                      "01:00:02:00,01:00:04:00,ANNA,Hello!,12,angry\n");
    const std::vector<std::string> call { "diff",           "x.csv",  "new.csv",    "--map",
                                          "Line=Text",      "--json", "--settings", "s.settings",
                                          "--save-mapping", "studio", "--old-map",  "Mood=Text" };
    auto dryRun = call;
    dryRun.emplace_back ("--dry-run");

    for (const auto& [arguments, words] :
         { std::pair (dryRun, "Would keep the mapping"), std::pair (call, "Kept the mapping") })
    {
        const auto result = run (arguments);
        EXPECT_EQ (result.status, 1);
        EXPECT_EQ (result.json()["changes"].size(), 1u);
        EXPECT_THAT (result.errors, HasSubstr (words));
        EXPECT_EQ (result.errors.find (words), result.errors.rfind (words));
        EXPECT_THAT (result.errors, HasSubstr (": Line=Text\n"));
    }

    EXPECT_THAT (shownPreferences(), HasSubstr ("studio   Line=Text\n"));
}

TEST_F (ProgramMappingTest, aMappingServesBothListsOfAComparison)
{
    keep ("studio", { "Loop #=Cue Number", "Line=Text", "Speaker=Character" });
    write ("new.csv", "In,Out,Speaker,Line,Loop #,Mood\n"
                      "01:00:02:00,01:00:04:00,ANNA,Hello!,12,angry\n");
    const auto changes =
        run ({ "diff", "x.csv", "new.csv", "--json", "--mapping", "studio", "--settings", "s.settings" })
            .json()["changes"];
    ASSERT_EQ (changes.size(), 1u);
    EXPECT_EQ (changes[0]["kind"], "text");
}

TEST_F (ProgramMappingTest, aColumnThatALaterListLacksIsSaidAndTheOthersAreUsed)
{
    keep ("studio", { "Loop #=Cue Number", "Line=Text", "#6=Notes" });
    write ("x.csv", "In,Line\n01:00:02:00,Hello\n");
    const auto result =
        run ({ "list", "x.csv", "--json", "--mapping", "studio", "--settings", "s.settings" });
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.json()["events"][0]["text"]["text"], "Hello");
    EXPECT_THAT (result.errors,
                 HasSubstr ("x.csv: --mapping: there is no column \"Loop #\" in it for Cue Number\n"));
    EXPECT_THAT (result.errors, HasSubstr ("x.csv: --mapping: there is no column \"#6\" in it for Notes\n"));
}

TEST_F (ProgramMappingTest, aMappingMakesNoDifferenceWhereColumnsAreFixed)
{
    keep ("studio", { "Line=Text" });
    write ("x.srt", "1\n00:00:01,000 --> 00:00:02,000\nHello\n");
    const auto result = run ({ "list", "x.srt", "--mapping", "studio", "--settings", "s.settings" });
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.errors, HasSubstr ("x.srt: --mapping makes no difference to this list\n"));
}

TEST_F (ProgramMappingTest, aMappingMakesNoDifferenceToAProject)
{
    keep ("studio", { "Line=Text" });
    ASSERT_EQ (run ({ "import", "x.csv", "-o", "film.json" }).status, 0);
    EXPECT_THAT (run ({ "list", "film.json", "--mapping", "studio", "--settings", "s.settings" }).errors,
                 HasSubstr ("film.json: --mapping makes no difference to this list\n"));
}

TEST_F (ProgramMappingTest, damagedMappingsAreToldAndHinderNothingElse)
{
    for (const auto* damaged :
         { "{", "[]", "{&quot;a&quot;: 1}", "{&quot;a&quot;: {&quot;Texd&quot;: &quot;x&quot;}}",
           "{&quot;a&quot;: {&quot;Text&quot;: 3}}" })
    {
        write ("s.settings",
               R"(<?xml version="1.0" encoding="UTF-8"?><PROPERTIES><VALUE name="ColumnMappings" val="text:)"
                   + std::string (damaged) + R"("/></PROPERTIES>)");
        const auto message =
            "The mappings of columns in " + path ("s.settings") + " are damaged; nothing was read or written";
        EXPECT_EQ (errorOf ({ "list", "x.csv", "--mapping", "a", "--settings", "s.settings" }, 1), message);
        EXPECT_EQ (keep ("b", { "Line=Text" }).status, 1);
        EXPECT_THAT (read ("s.settings"), HasSubstr (damaged));
        const auto shown = run ({ "preferences", "--settings", "s.settings" });
        EXPECT_EQ (shown.errors, message + "\n");
        EXPECT_THAT (shown.output, HasSubstr ("ADRCueTextBannerColor"));
        EXPECT_EQ (run ({ "list", "x.csv", "--settings", "s.settings" }).status, 0);
    }
}

TEST_F (ProgramMappingTest, namesAndHeadersOfAnyLettersAreKept)
{
    write ("x.csv", "In,S\u00e4tze \"\"=<&>\n01:00:02:00,Gr\u00fc\u00dfe\n");
    ASSERT_EQ (keep ("B\u00fcro \"1\" <&>", { "#2=Text" }).status, 0);
    const auto event = firstEvent ({ "--mapping", "B\u00fcro \"1\" <&>", "--settings", "s.settings" });
    EXPECT_EQ (event["text"]["text"], "Gr\u00fc\u00dfe");
}

} // namespace
