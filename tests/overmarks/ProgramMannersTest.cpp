// SPDX-License-Identifier: GPL-3.0-only
// What all commands have in common: one document with --json whatever happens, advice, and what is shown of long work.
#include "overmarks/ProgramHelp.h"

#include "overmarks/Pace.h"

#include <gmock/gmock.h>

using overmarks::paceInWords;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace
{

class ProgramMannersTest : public ProgramHelpTest
{
protected:
    /** A call of the command with something in each place that can't be left empty: files that are missing. */
    static std::vector<std::string> callOf (const CommandHelp& help)
    {
        auto call = help.words;

        for (const auto& argument : help.arguments)
            if (argument == "LIST" || argument == "FILE" || argument == "OLD" || argument == "NEW")
                call.emplace_back (help.name() == "load" ? "missing.json" : "missing.csv");
            else if (argument != "SOURCE")
                call.emplace_back (argument == "ASSIGNMENT" ? "Done=yes"
                                   : argument == "SHELL"    ? "bash"
                                                            : "new.json");

        for (const auto& option : help.required)
        {
            call.push_back (option);
            call.emplace_back (option == "--output"    ? (help.name() == "export"     ? "."
                                                          : help.name() == "overview" ? "new.pdf"
                                                                                      : "new.json")
                               : option == "--format"  ? "csv"
                               : option == "--message" ? "NoteOn 1 60"
                                                       : "x");
        }

        return call;
    }

    static bool readsFile (const CommandHelp& help)
    {
        return std::any_of (help.arguments.begin(), help.arguments.end(),
                            [] (const std::string& argument)
                            { return argument == "LIST" || argument == "FILE" || argument == "OLD"; });
    }
};

// ---- JSON on failure -----------------------------------------------------------------------------------------------------

TEST_F (ProgramMannersTest, everyCommandTellsOfAnUnknownOptionInOneDocument)
{
    for (const auto& help : allHelp())
    {
        auto call = callOf (help);
        call.emplace_back ("--zzzzzzzzzzzz");
        EXPECT_THAT (errorOf (call, 2), HasSubstr ("There is no option \"--zzzzzzzzzzzz\".")) << help.name();
    }
}

TEST_F (ProgramMannersTest, everyCommandTellsOfAMissingFileInOneDocument)
{
    int number = 0;

    for (const auto& help : allHelp())
        if (readsFile (help))
        {
            ++number;
            EXPECT_THAT (errorOf (callOf (help), 1), HasSubstr ("There is no file ")) << help.name();
        }

    EXPECT_GE (number, 11);
    EXPECT_EQ (filesInFolder(), std::vector<std::string>());
}

TEST_F (ProgramMannersTest, everyCommandTellsWhatIsMissingInOneDocument)
{
    for (const auto& help : allHelp())
    {
        if (readsFile (help) || ! help.required.empty() || ! help.commands.empty())
        {
            EXPECT_THAT (errorOf (help.words, 2), HasSubstr ("--help")) << help.name();
        }
    }
}

TEST_F (ProgramMannersTest, everyCommandHasJSONAndQuiet)
{
    for (const auto& help : allHelp())
        for (const auto* option : { "--json", "--quiet", "--help" })
            EXPECT_THAT (help.options, testing::Contains (option)) << help.name();
}

TEST_F (ProgramMannersTest, problemsAreToldWithFileAndRow)
{
    write ("x.csv", "Start TC,Text\nsoon,Hello\n");
    const auto result = run ({ "list", "x.csv", "--quiet" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, StartsWith ("x.csv: row 2, Start TC: "));
    EXPECT_THAT (result.output, Not (HasSubstr ("row 2")));
}

// ---- advice --------------------------------------------------------------------------------------------------------------

TEST_F (ProgramMannersTest, helpOnAnUnknownCommandIsWrongUsage)
{
    const auto result = run ({ "bogus", "--help" });
    EXPECT_EQ (result.status, 2);
    EXPECT_EQ (result.output, "");
    EXPECT_EQ (result.errors, "overmarks: There is no command \"bogus\". See overmarks --help\n");
    EXPECT_EQ (errorOf ({ "lsit", "--help" }, 2),
               "There is no command \"lsit\". Did you mean \"list\"? See overmarks --help");
    EXPECT_EQ (errorOf ({ "midi", "unbnd", "--help" }, 2),
               "There is no command \"midi unbnd\". Did you mean \"unbind\"? See overmarks midi --help");
    EXPECT_EQ (errorOf ({ "bogus", "--version" }, 2), "There is no command \"bogus\". See overmarks --help");
    EXPECT_EQ (errorOf ({ "bogus", "--man" }, 2), "There is no command \"bogus\". See overmarks --help");
}

TEST_F (ProgramMannersTest, helpOnAKnownCommandMayHaveArguments)
{
    EXPECT_EQ (run ({ "list", "missing.csv", "--help" }).status, 0);
    EXPECT_EQ (run ({ "list", "--help", "missing.csv" }).status, 0);
    EXPECT_EQ (run ({ "--help" }).status, 0);
    EXPECT_EQ (run ({ "midi", "--help" }).status, 0);
    EXPECT_EQ (run ({ "--version" }).status, 0);
}

TEST_F (ProgramMannersTest, oneLetterIsTakenForTheOptionThatBeginsSo)
{
    EXPECT_EQ (errorOf ({ "list", "x.csv", "-q" }, 2),
               "There is no option \"-q\". Did you mean \"--quiet\"? See overmarks list --help");
    EXPECT_EQ (errorOf ({ "-q", "list", "x.csv" }, 2),
               "There is no option \"-q\". Did you mean \"--quiet\"? See overmarks list --help");
    EXPECT_EQ (errorOf ({ "list", "x.csv", "-f" }, 2),
               "There is no option \"-f\". See overmarks list --help");
}

// ---- dry runs ------------------------------------------------------------------------------------------------------------

TEST_F (ProgramMannersTest, aDryRunForeseesTheQuestionOfATakerTable)
{
    std::string list = "Start TC,Cue Number,Text\n";

    for (int second = 10; second < 17; ++second)
        list += "00:00:" + std::to_string (second) + ":00,7,line\n";

    write ("x.csv", list);
    const std::vector<std::string> call { "export", "x.csv",    "-o",       ".",      "--name",
                                          "taker",  "--format", "ds-taker", "--json", "--dry-run" };
    const auto result = run (call);
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.errors,
                 HasSubstr ("Would ask before writing " + path ("taker.csv") + ", and --yes agrees: "));
    EXPECT_THAT (result.json()["messages"].dump(), HasSubstr ("Would ask before writing "));
    EXPECT_EQ (filesInFolder(), std::vector<std::string> { "x.csv" });

    auto agreed = call;
    agreed.emplace_back ("--yes");
    EXPECT_THAT (run (agreed).errors, Not (HasSubstr ("Would ask")));

    auto byCharacter = call;
    byCharacter.emplace_back ("--by-character");
    const auto files = run (byCharacter);
    EXPECT_THAT (files.errors,
                 HasSubstr ("Would ask before writing " + files.json()["files"][0].get<std::string>()));
    EXPECT_EQ (filesInFolder(), std::vector<std::string> { "x.csv" });
}

TEST_F (ProgramMannersTest, aDryRunOfATableThatLosesNothingAsksNothing)
{
    write ("x.csv", threeCues);
    const auto result =
        run ({ "export", "x.csv", "-o", ".", "--name", "t", "--format", "ds-taker,csv", "--dry-run" });
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.errors, Not (HasSubstr ("Would ask")));
}

// ---- progress and colours ------------------------------------------------------------------------------------------------

TEST (Pace, isToldAfterTheFirstSecond)
{
    EXPECT_EQ (paceInWords (1, 4, 0.9, "files"), "");
    EXPECT_EQ (paceInWords (0, 4, 9, "files"), "");
    EXPECT_EQ (paceInWords (4, 4, 9, "files"), "");
    EXPECT_EQ (paceInWords (1, 4, 1, "files"), "1 files/s, 3 s left");
}

TEST (Pace, isAsRoughAsAnybodyWantsToKnowIt)
{
    EXPECT_EQ (paceInWords (250, 1000, 2, "files"), "125 files/s, 6 s left");
    EXPECT_EQ (paceInWords (3, 7, 2, "files"), "1.5 files/s, 3 s left");
    EXPECT_EQ (paceInWords (1, 3, 45, "files"), "0.022 files/s, 2 min left");
    EXPECT_EQ (paceInWords (1, 71, 60, "files"), "0.017 files/s, 1 h 10 min left");
    EXPECT_EQ (paceInWords (1, 1000000, 1000, "files"), "under 0.01 files/s, over 99 h left");
}

TEST_F (ProgramMannersTest, theBarTellsThePaceOfLongWork)
{
    write ("x.csv", threeCues);
    write ("slow", "#!/bin/sh\nsleep 1.2\nexit 1\n");
    file ("slow").setExecutePermission (true);
    ProgramSurroundings terminal;
    terminal.errorsOnTerminal = true;
    const auto shown = run ({ "export", "x.csv", "-o", ".", "--format", "pdf,html", "--name", "sheet",
                              "--browser", path ("slow") },
                            {}, terminal)
                           .errors;
    EXPECT_THAT (shown, HasSubstr ("Writing [###############...............] 50%  0."));
    EXPECT_THAT (shown, HasSubstr (" documents/s, "));
    EXPECT_THAT (shown, HasSubstr (" s left\r\033[K"));
}

TEST_F (ProgramMannersTest, aTerminalThatTakesNothingBackGetsNoBar)
{
    write ("x.csv", threeCues);
    ProgramSurroundings terminal;
    terminal.errorsOnTerminal = true;
    terminal.terminalType = "dumb";
    EXPECT_THAT (run ({ "convert", "x.csv", "new.csv" }, {}, terminal).errors, Not (HasSubstr ("\033")));
}

TEST_F (ProgramMannersTest, nothingInAPipeHasColours)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "list", "x.csv", "--text", "Hello", "--adjacent", "1" });
    EXPECT_THAT (result.output + result.errors, Not (HasSubstr ("\033")));
}

} // namespace
