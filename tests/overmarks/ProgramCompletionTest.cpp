// SPDX-License-Identifier: GPL-3.0-only
// What shells offer behind overmarks: asked of the shells themselves, and compared with what --help shows.
#include "overmarks/ProgramHelp.h"

#include <gmock/gmock.h>

#include <sstream>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using testing::UnorderedElementsAreArray;

namespace
{

using Words = std::vector<std::string>;

class ProgramCompletionTest : public ProgramHelpTest
{
protected:
    juce::String scriptFor (const std::string& shell) const
    {
        const auto name = "overmarks." + shell;
        const auto script = run ({ "completion", shell });
        EXPECT_EQ (script.status, 0) << script.errors;
        write (name, script.output);
        return file (name).getFullPathName();
    }

    static Words linesOf (const std::string& text)
    {
        Words lines;
        std::istringstream stream (text);

        for (std::string line; std::getline (stream, line);)
            lines.push_back (line);

        return lines;
    }

    /** What bash offers for the last of the words, taken apart as bash does it; what it leaves to its own completion of
        files is offered as "(default)" or "(dirnames)", a missing blank as "(nospace)". */
    Words offeredByBash (const Words& words) const
    {
        std::string lines;

        for (const auto& word : words)
            lines += word + "\n";

        write ("words", lines);
        const auto result =
            runTool ({ "bash", "--norc", "-c",
                       "source \"$1\"; compopt() { echo \"($2)\"; };"
                       "mapfile -t COMP_WORDS < \"$2\"; COMP_CWORD=$((${#COMP_WORDS[@]} - 1));"
                       "$(complete -p overmarks | sed 's/.*-F \\([^ ]*\\).*/\\1/');"
                       "for word in \"${COMPREPLY[@]}\"; do echo \"$word\"; done",
                       "bash", scriptFor ("bash"), file ("words").getFullPathName() });
        EXPECT_EQ (result.status, 0) << result.output;
        return linesOf (result.output);
    }

    /** What fish offers, without its explanations. */
    Words offeredByFish (const std::string& line) const
    {
        const auto result = runTool ({ "fish", "--no-config", "-c", "source $argv[1]; complete -C $argv[2]",
                                       scriptFor ("fish"), juce::String (line) });
        auto offered = linesOf (result.output);

        for (auto& word : offered)
            word = word.substr (0, word.find ('\t'));

        return offered;
    }
};

// ---- bash ----------------------------------------------------------------------------------------------------------------

TEST_F (ProgramCompletionTest, bashOffersTheCommands)
{
    EXPECT_THAT (offeredByBash ({ "overmarks", "" }),
                 IsSupersetOf ({ "rows", "import", "export", "midi", "completion" }));
    EXPECT_THAT (offeredByBash ({ "overmarks", "exp" }), ElementsAre ("export"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "--json", "exp" }), ElementsAre ("export"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "midi", "" }),
                 ElementsAre ("list", "bind", "unbind", "monitor"));
}

TEST_F (ProgramCompletionTest, bashOffersTheOptionsOfTheCommand)
{
    EXPECT_THAT (offeredByBash ({ "overmarks", "export", "--pa" }), ElementsAre ("--paper"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "export", "film.overmarks", "--pa" }),
                 ElementsAre ("--paper"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "list", "--pa" }), IsEmpty());
    EXPECT_THAT (offeredByBash ({ "overmarks", "midi", "bind", "--mes" }), ElementsAre ("--message"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "-" }),
                 ElementsAre ("-h", "--help", "--version", "--json", "--quiet", "--man"));
}

TEST_F (ProgramCompletionTest, bashOffersTheValuesOfOptions)
{
    EXPECT_THAT (offeredByBash ({ "overmarks", "export", "--paper", "" }), ElementsAre ("a4", "letter"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "export", "--paper", "l" }), ElementsAre ("letter"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "export", "--paper", "=", "l" }), ElementsAre ("letter"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "export", "--paper", "=" }), ElementsAre ("a4", "letter"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "list", "--fps", "29" }), ElementsAre ("29.97", "29.97df"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "list", "--encoding", "utf" }),
                 ElementsAre ("utf-8", "utf-16"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "list", "--sort", "StartTC" }), Contains ("StartTCString"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "list", "--format", "x" }), ElementsAre ("xml", "xlsx"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "convert", "--format", "over" }), ElementsAre ("overmarks"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "completion", "" }), ElementsAre ("bash", "zsh", "fish"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "export", "--title", "a" }), IsEmpty());
}

TEST_F (ProgramCompletionTest, bashGoesOnInAListOfFormats)
{
    EXPECT_THAT (offeredByBash ({ "overmarks", "export", "--format", "csv,p" }), ElementsAre ("csv,pdf"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "export", "--format", "csv,pdf,eu" }),
                 ElementsAre ("csv,pdf,euro-taker"));
}

TEST_F (ProgramCompletionTest, bashOffersWhatCheckDiffAndStatsTake)
{
    EXPECT_THAT (offeredByBash ({ "overmarks", "check", "film.json", "--rule", "too-" }),
                 ElementsAre ("too-short", "too-long", "too-fast"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "check", "--skip", "non-latin1,ds" }),
                 ElementsAre ("non-latin1,ds-taker-overflow"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "check", "--html", "" }), ElementsAre ("(default)"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "diff", "old.csv", "ne" }), ElementsAre ("(default)"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "diff", "old.csv", "new.csv", "" }), IsEmpty());
    EXPECT_THAT (offeredByBash ({ "overmarks", "diff", "--old-fps", "23" }), ElementsAre ("23.976"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "diff", "--apply", "-o", "" }), ElementsAre ("(default)"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "stats", "--reels", "" }),
                 ElementsAre ("hour", "cue", "none"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "export", "--engine", "" }), ElementsAre ("browser", "drawn"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "overview", "--paper", "" }), ElementsAre ("a4", "letter"));
}

TEST_F (ProgramCompletionTest, bashOffersKeysUpToTheirSign)
{
    EXPECT_THAT (offeredByBash ({ "overmarks", "set", "film.json", "Done" }),
                 ElementsAre ("(nospace)", "Done="));
    EXPECT_THAT (offeredByBash ({ "overmarks", "preferences", "--set", "ADRCueDefaultDur" }),
                 ElementsAre ("(nospace)", "ADRCueDefaultDuration="));
    EXPECT_THAT (offeredByBash ({ "overmarks", "set", "film.json", "Done", "=", "y" }), IsEmpty());
}

TEST_F (ProgramCompletionTest, bashCompletesFilesWhereTheyStand)
{
    EXPECT_THAT (offeredByBash ({ "overmarks", "list", "fil" }), ElementsAre ("(default)"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "list", "--settings", "" }), ElementsAre ("(default)"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "import", "one.csv", "" }), ElementsAre ("(default)"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "export", "-o", "" }), ElementsAre ("(dirnames)"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "search", "film.json", "wor" }), IsEmpty());
    EXPECT_THAT (offeredByBash ({ "overmarks", "list", "film.json", "" }), IsEmpty());
}

TEST_F (ProgramCompletionTest, bashTakesNoValueForTheCommandOrTheList)
{
    EXPECT_THAT (offeredByBash ({ "overmarks", "export", "--name", "list", "--pa" }),
                 ElementsAre ("--paper"));
    EXPECT_THAT (
        offeredByBash ({ "overmarks", "list", "--origin", "01", ":", "00", ":", "00", ":", "00", "" }),
        ElementsAre ("(default)"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "list", "--fps", "=", "25", "" }), ElementsAre ("(default)"));
    EXPECT_THAT (offeredByBash ({ "overmarks", "list", "--descending", "" }), ElementsAre ("(default)"));
}

TEST_F (ProgramCompletionTest, bashKnowsEveryCommandAndOptionOfTheHelp)
{
    const auto all = allHelp();
    ASSERT_GT (all.size(), 15u);

    for (const auto& help : all)
    {
        Words line { "overmarks" };
        line.insert (line.end(), help.words.begin(), help.words.end());
        line.emplace_back ("-");
        EXPECT_THAT (offeredByBash (line), UnorderedElementsAreArray (help.options)) << help.name();

        if (! help.commands.empty())
        {
            line.back().clear();
            EXPECT_EQ (offeredByBash (line), help.commands) << help.name();
        }
    }
}

// ---- zsh -----------------------------------------------------------------------------------------------------------------

TEST_F (ProgramCompletionTest, zshReadsItsScript)
{
    const auto script = scriptFor ("zsh");
    const auto result = runTool ({ "zsh", "-f", "-n", script });
    EXPECT_EQ (result.status, 0) << result.output;
    EXPECT_EQ (result.output, "");
}

/** A zsh that is typed at through a terminal of its own, up to the Tab. */
TEST_F (ProgramCompletionTest, zshOffersCommandsOptionsAndValues)
{
    const auto script = scriptFor ("zsh");
    write ("ask.zsh", R"(
zmodload zsh/zpty
zpty -b asked zsh -f -i
zpty -w asked 'PS1=; stty cols 200; autoload -Uz compinit; compinit -u -D; source "$SCRIPT"; print RE""ADY'
await()
{
    local all= part i
    for ((i = 0; i < 100; ++i)); do
        while zpty -r -t asked part; do all+=$part; done
        [[ $all == *$1* ]] && break
        sleep 0.1
    done
    print -r -- $all
}
await READY > /dev/null
sleep 0.3
zpty -w -n asked "$LINE"$'\t'
await "$EXPECTED"
zpty -d asked
)");
    const std::vector<std::pair<juce::String, juce::String>> lines {
        { "overmarks exp", "overmarks export" },
        { "overmarks export --paper le", "--paper letter" },
        { "overmarks midi unb", "midi unbind" },
        { "overmarks set film.json Don", "Done=" },
        { "overmarks export --format csv,eur", "csv,euro-taker" },
        { "overmarks list --descen", "--descending" },
    };

    for (const auto& [line, expected] : lines)
        EXPECT_THAT (
            runTool ({ "env", "SCRIPT=" + script, "LINE=" + line, "EXPECTED=" + expected, "TERM=dumb",
                       "HOME=" + folder.getFullPathName(), "zsh", "-f", file ("ask.zsh").getFullPathName() })
                .output,
            HasSubstr (expected.toStdString()));
}

TEST_F (ProgramCompletionTest, zshHasEveryCommandAndOptionOfTheHelp)
{
    const auto script = run ({ "completion", "zsh" }).output;
    EXPECT_EQ (script.rfind ("#compdef overmarks\n", 0), 0u);

    for (const auto& help : allHelp())
    {
        auto name = "\n_overmarks" + (help.words.empty() ? "" : " " + help.name());
        std::replace (name.begin(), name.end(), ' ', '_');
        const auto begin = script.find (name + "()\n");
        ASSERT_NE (begin, std::string::npos) << name;
        const auto function = script.substr (begin, script.find ("\n}\n", begin) - begin);

        for (const auto& option : help.options)
            EXPECT_TRUE (function.find (")" + option + "[") != std::string::npos
                         || function.find (")" + option + "=[") != std::string::npos
                         || function.find (")" + option + "+[") != std::string::npos
                         || function.find ("'*" + option + "=[") != std::string::npos)
                << help.name() << " " << option;

        for (const auto& command : help.commands)
            EXPECT_THAT (function, HasSubstr ("'" + command + ":")) << help.name();
    }
}

// ---- fish ----------------------------------------------------------------------------------------------------------------

TEST_F (ProgramCompletionTest, fishOffersCommandsOptionsAndValues)
{
    write ("film.json", "");
    EXPECT_THAT (offeredByFish ("overmarks exp"), ElementsAre ("export"));
    EXPECT_THAT (offeredByFish ("overmarks midi "), ElementsAre ("bind", "list", "monitor", "unbind"));
    EXPECT_THAT (offeredByFish ("overmarks export --pap"), ElementsAre ("--paper"));
    EXPECT_THAT (offeredByFish ("overmarks list --pap"), IsEmpty());
    EXPECT_THAT (offeredByFish ("overmarks export --paper "), ElementsAre ("a4", "letter"));
    EXPECT_THAT (offeredByFish ("overmarks export --name list --paper l"), ElementsAre ("letter"));
    EXPECT_THAT (offeredByFish ("overmarks export --format csv,eur"), Contains ("csv,euro-taker"));
    EXPECT_THAT (offeredByFish ("overmarks completion "), ElementsAre ("bash", "fish", "zsh"));
    EXPECT_THAT (offeredByFish ("overmarks list " + path ("fil")), ElementsAre (path ("film.json")));
    EXPECT_THAT (offeredByFish ("overmarks formats " + path ("fil")), IsEmpty());
}

TEST_F (ProgramCompletionTest, fishHasEveryCommandAndOptionOfTheHelp)
{
    const auto script = run ({ "completion", "fish" }).output;

    for (const auto& help : allHelp())
    {
        const auto condition = "-n '__overmarks_at \\'" + help.name() + "\\''";

        for (const auto& option : help.options)
        {
            const bool isLong = option.rfind ("--", 0) == 0;
            const auto name = isLong ? " -l " + option.substr (2) + " " : " -s " + option.substr (1) + " ";
            bool isFound = false;

            for (const auto& line : linesOf (script))
                isFound =
                    isFound
                    || (line.find (condition) != std::string::npos && line.find (name) != std::string::npos);

            EXPECT_TRUE (isFound) << help.name() << " " << option;
        }

        for (const auto& command : help.commands)
            EXPECT_THAT (script, HasSubstr (condition + " -a '" + command + "'"));
    }
}

// ---- the command itself --------------------------------------------------------------------------------------------------

TEST_F (ProgramCompletionTest, anUnknownShellIsRefusedWithTheKnownOnes)
{
    EXPECT_EQ (errorOf ({ "completion", "fisch" }, 2),
               "SHELL: \"fisch\" is none of bash, zsh, fish. Did you mean \"fish\"?");
    EXPECT_EQ (errorOf ({ "completion" }, 2), "SHELL is required. See overmarks completion --help");
}

TEST_F (ProgramCompletionTest, aScriptCanBeHadAsJSON)
{
    const auto document = run ({ "completion", "fish", "--json" }).json();
    EXPECT_EQ (document["shell"], "fish");
    EXPECT_EQ (document["script"], run ({ "completion", "fish" }).output);
}

TEST_F (ProgramCompletionTest, fewValuesStandInTheHelp)
{
    const auto help = run ({ "export", "--help" }).output;
    EXPECT_THAT (help, HasSubstr ("--paper a4|letter "));
    EXPECT_THAT (help, HasSubstr ("--layout director|actor|engineer"));
    EXPECT_THAT (help, HasSubstr ("--fps RATE "));
    EXPECT_THAT (help, Not (HasSubstr ("values")));
}

} // namespace
