// SPDX-License-Identifier: GPL-3.0-only
// What the program says to a command line that it cannot follow, and what it lists of itself.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

using nlohmann::ordered_json;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace
{

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
    for (const auto* command : { "rows", "import", "dump", "load", "list", "search", "set", "convert",
                                 "export", "check", "formats", "keys", "reasons", "preferences" })
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
    for (const auto* argument : { "\xff.csv", "\xc0\x80",
                                  "abc\xc0\x80"
                                  "def",
                                  "\xed\xa0\x80", "\xe2\x82", "\xf5\x80\x80\x80" })
    {
        const auto refused = run ({ "list", "film.json", "--text", argument });
        EXPECT_EQ (refused.status, 2);
        EXPECT_THAT (refused.errors, ::testing::HasSubstr ("An argument is not valid UTF-8"));
    }
}

TEST_F (ProgramTest, mistypedWordsAreToldWithWhatWasMeant)
{
    write ("x.csv", threeCues);
    EXPECT_EQ (errorOf ({ "lst", "x.csv" }, 2),
               "There is no command \"lst\". Did you mean \"list\"? See overmarks --help");
    EXPECT_EQ (errorOf ({ "list", "x.csv", "--fpz", "25" }, 2),
               "There is no option \"--fpz\". Did you mean \"--fps\"? See overmarks list --help");
    EXPECT_EQ (errorOf ({ "list", "x.csv", "--fpz=25" }, 2),
               "There is no option \"--fpz\". Did you mean \"--fps\"? See overmarks list --help");
    EXPECT_EQ (errorOf ({ "export", "x.csv", "--formt", "csv", "-o", "." }, 2),
               "There is no option \"--formt\". Did you mean \"--format\"? See overmarks export --help");
    EXPECT_EQ (errorOf ({ "list", "x.csv", "y.csv" }, 2),
               "list has no use for \"y.csv\". See overmarks list --help");
    EXPECT_EQ (errorOf ({ "help" }, 2),
               "There is no command \"help\". Did you mean \"--help\"? See overmarks --help");
    EXPECT_THAT (errorOf ({ "list", "x.csv", "--adjacent", "q" }, 2),
                 HasSubstr ("--adjacent: Value q not in range"));
    EXPECT_EQ (errorOf ({ "list" }, 2), "LIST is required. See overmarks list --help");
}

TEST_F (ProgramTest, jsonAndQuietMayStandBeforeTheCommand)
{
    write ("x.csv", threeCues);
    EXPECT_EQ (run ({ "--json", "list", "x.csv" }).json()["events"].size(), 3u);
    EXPECT_EQ (run ({ "--quiet", "list", "x.csv" }).errors, "");
}

TEST_F (ProgramTest, otherOptionsGoBehindTheCommand)
{
    write ("x.csv", threeCues);
    EXPECT_EQ (errorOf ({ "--fps", "25", "list", "x.csv" }, 2),
               "The option --fps goes behind the command: overmarks list --fps. See overmarks list --help");
    EXPECT_EQ (errorOf ({ "--verson" }, 2),
               "There is no option \"--verson\". Did you mean \"--version\"? See overmarks --help");
    EXPECT_EQ (run ({}).errors, "overmarks: A command is missing. See overmarks --help\n");
}

TEST_F (ProgramTest, everyCommandTellsItsFailureAsOneDocument)
{
    const std::vector<std::vector<std::string>> runs {
        { "rows", "missing.csv" },
        { "import", "missing.csv", "-o", "y.json" },
        { "dump", "missing.csv" },
        { "load", "missing.json", "-o", "y.json" },
        { "list", "missing.csv" },
        { "set", "missing.json", "-o", "y.json", "Done=yes" },
        { "convert", "missing.csv", "y.json" },
        { "export", "missing.csv", "-o", ".", "--format", "csv" },
    };

    for (const auto& arguments : runs)
        EXPECT_THAT (errorOf (arguments, 1), HasSubstr ("There is no file ")) << arguments.front();

    EXPECT_EQ (errorOf ({ "formats", "--bogus" }, 2),
               "There is no option \"--bogus\". See overmarks formats --help");
    EXPECT_EQ (errorOf ({ "keys", "x" }, 2), "keys has no use for \"x\". See overmarks keys --help");
    EXPECT_EQ (errorOf ({ "reasons", "--reasons", "1,2,3,4,5,6,7,8,9" }, 2),
               "--reasons: there are at most eight user reasons");
    EXPECT_EQ (errorOf ({ "preferences", "--set", "x" }, 2), "--set: \"x\" is not of the form KEY=VALUE");
}

TEST_F (ProgramTest, aNumberOfAPreferenceIsANumberToItsEnd)
{
    for (const auto* wrong :
         { "ADRCueDefaultDuration=5-3", "ADRCueDefaultDuration=", "ADRCueDefaultDuration=1.0",
           "ADRCueDefaultDuration=99999999999", "StreamerWidth=1.2.3", "StreamerWidth=nan",
           "StreamerWidth=1e99", "StreamerWidth= 1" })
        EXPECT_EQ (run ({ "preferences", "--settings", "studio.settings", "--set", wrong }).status, 2)
            << wrong;

    EXPECT_EQ (
        errorOf ({ "preferences", "--settings", "studio.settings", "--set", "StreamerWidth=1.2.3" }, 2),
        "StreamerWidth: \"1.2.3\" is not a number");
    EXPECT_EQ (filesInFolder(), std::vector<std::string>());
}

TEST_F (ProgramTest, severalPreferencesAreStoredTogetherOrNotAtAll)
{
    EXPECT_EQ (run ({ "preferences", "--settings", "studio.settings", "--set", "ADRCueDefaultDuration=1",
                      "--set", "StreamerWidth=wide" })
                   .status,
               2);
    EXPECT_EQ (filesInFolder(), std::vector<std::string>());
    EXPECT_EQ (run ({ "preferences", "--settings", "studio.settings", "--set", "ADRCueDefaultDuration=1",
                      "--set", "StreamerWidth=0.5" })
                   .status,
               0);
    EXPECT_EQ (filesInFolder(), std::vector<std::string> { "studio.settings" });
    EXPECT_THAT (read ("studio.settings"), HasSubstr ("\"int:1\""));
    EXPECT_THAT (read ("studio.settings"), HasSubstr ("\"float:0.5\""));
}

TEST_F (ProgramTest, aResourceFolderHasToBeThere)
{
    EXPECT_EQ (errorOf ({ "reasons", "--resources", "nowhere" }, 1),
               "--resources: there is no folder " + path ("nowhere"));
}

TEST_F (ProgramTest, theBuiltProgramFindsItsResourcesWhereTheInstalledOneDoes)
{
    const auto tree = juce::File (OVERMARKS_PROGRAM).getParentDirectory().getParentDirectory();
    EXPECT_TRUE (tree.getChildFile ("share/overmarks/resources").isDirectory());
}

// ---- JSON on failure -----------------------------------------------------------------------------------------------------

TEST_F (ProgramTest, aFlagWithAValueAsksForJSONTooWhenTheCommandFails)
{
    for (const auto* flag : { "--json", "--json=true", "--json=1", "--json=yes", "--json=maybe" })
        for (const auto& call : std::vector<std::vector<std::string>> {
                 { "list", "missing.csv", flag }, { flag, "list", "missing.csv" }, { "lst", flag } })
        {
            const auto result = run (call);
            const auto document = ordered_json::parse (result.output, nullptr, false);
            EXPECT_TRUE (document.is_object() && document.contains ("error")) << flag << result.output;
            EXPECT_EQ (result.errors, "") << flag;
        }
}

TEST_F (ProgramTest, whatOnlyLooksLikeTheFlagAsksForNoJSON)
{
    write ("x.csv", threeCues);

    for (const auto& call :
         std::vector<std::vector<std::string>> { { "list", "missing.csv", "--json=false" },
                                                 { "list", "missing.csv", "--json=0" },
                                                 { "list", "--text", "--json", "missing.csv" },
                                                 { "list", "missing.csv", "--jsonx" },
                                                 { "list", "--", "--json" } })
    {
        const auto result = run (call);
        EXPECT_EQ (result.output, "") << call.back();
        EXPECT_THAT (result.errors, StartsWith ("overmarks: ")) << call.back();
    }

    EXPECT_EQ (run ({ "list", "--text", "--json", "x.csv", "--json" }).json()["events"].size(), 0u);
}

// ---- values that can't be ------------------------------------------------------------------------------------------------

TEST_F (ProgramTest, aFormatOfStandardInputThatNobodyReadsIsWrongUsage)
{
    EXPECT_THAT (errorOf ({ "list", "-", "--format", "cvs" }, 2),
                 testing::AllOf (StartsWith ("--format: \"cvs\" is none of csv, "),
                                 testing::EndsWith (". Did you mean \"csv\"?")));
    EXPECT_THAT (errorOf ({ "export", "-", "--input-format", "cvs", "--format", "csv", "-o", "." }, 2),
                 StartsWith ("--input-format: \"cvs\" is none of "));
    write ("x.csv", threeCues);
    EXPECT_EQ (run ({ "list", "x.csv", "--format", "cvs" }).status, 2) << "also where it is not needed";
    EXPECT_EQ (run ({ "list", "-", "--format", ".CSV" }, threeCues).status, 0);
}

TEST_F (ProgramTest, aListThatAnOptionHasSwallowedIsToldOf)
{
    write ("x.csv", threeCues);
    EXPECT_EQ (errorOf ({ "export", "-o", ".", "--format", "csv", "x.csv" }, 2),
               "LIST is missing: --format takes everything up to the next option, \"x.csv\" too. Put LIST "
               "before it. See overmarks export --help");
    EXPECT_THAT (errorOf ({ "export", "-o", ".", "--format", "csv,pdf", "missing.overmarks" }, 2),
                 HasSubstr (" \"missing.overmarks\" too."));
    EXPECT_EQ (errorOf ({ "export", "-o", ".", "--format", "csv", "pdf" }, 2),
               "LIST is required. See overmarks export --help");
    EXPECT_EQ (run ({ "export", "x.csv", "-o", ".", "--name", "y", "--format", "csv", "html" }).status, 0);
}

TEST_F (ProgramTest, theProgramsOwnHelpEndsWithAnExample)
{
    EXPECT_THAT (run ({ "--help" }).output,
                 testing::EndsWith ("\nExample:\n  overmarks convert reel-2.csv reel-2.pdf --origin "
                                    "02:00:00:00\n"));
}

} // namespace
