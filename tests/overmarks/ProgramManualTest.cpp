// SPDX-License-Identifier: GPL-3.0-only
// The manual page that the program writes of itself.
#include "overmarks/ProgramHelp.h"

#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::Not;

namespace
{

class ProgramManualTest : public ProgramHelpTest
{
protected:
    std::string page() const
    {
        const auto result = run ({ "--man" });
        EXPECT_EQ (result.status, 0);
        EXPECT_EQ (result.errors, "");
        return result.output;
    }

    /** As it is read, without the formatter's marks. */
    static std::string plain (const std::string& page)
    {
        auto text = juce::String (juce::CharPointer_UTF8 (page.c_str()));
        text = text.replace ("\\fB", "").replace ("\\fI", "").replace ("\\fR", "").replace ("\\-", "-");
        return text.replace ("\\&", "").toStdString();
    }

    /** From a heading up to the next. */
    static std::string sectionOf (const std::string& text, const std::string& heading)
    {
        const auto begin = text.find (heading);

        if (begin == std::string::npos)
            return {};

        return text.substr (begin, text.find ("\n.S", begin + 1) - begin);
    }

    static bool names (const std::string& text, const std::string& option)
    {
        for (auto place = text.find (option); place != std::string::npos;
             place = text.find (option, place + 1))
            if (const auto behind = place + option.size();
                behind == text.size() || std::string (" ,.\n").find (text[behind]) != std::string::npos)
                return true;

        return false;
    }
};

TEST_F (ProgramManualTest, thePageHasEveryCommandArgumentAndOptionOfTheHelp)
{
    const auto text = plain (page());
    const auto common = sectionOf (text, ".SH COMMON OPTIONS");

    for (const auto& help : allHelp())
    {
        const auto heading =
            help.words.empty() ? std::string (".SH OPTIONS") : ".SS \"" + help.name() + "\"\n";
        const auto section = sectionOf (text, heading);
        ASSERT_NE (section, "") << help.name();

        for (const auto& option : help.options)
            EXPECT_TRUE (names (section, option)) << help.name() << " " << option;

        for (const auto& argument : help.arguments)
            EXPECT_THAT (section, HasSubstr ("\n" + argument + "\n")) << help.name();
    }

    for (const auto* option : { "--fps RATE", "--settings FILE", "--json", "--origin TC" })
        EXPECT_THAT (common, HasSubstr ("\n" + std::string (option) + "\n"));
}

TEST_F (ProgramManualTest, everyOptionIsExplainedSomewhere)
{
    const auto text = plain (page());

    for (const auto& help : allHelp())
        for (const auto& option : help.options)
            EXPECT_TRUE (text.find ("\n.TP\n" + option) != std::string::npos
                         || text.find (", " + option + " ") != std::string::npos
                         || text.find (", " + option + "\n") != std::string::npos)
                << option;
}

TEST_F (ProgramManualTest, thePageTellsValuesExamplesAndExitStatus)
{
    const auto text = plain (page());
    EXPECT_THAT (text, HasSubstr ("--paper a4|letter\n"));
    EXPECT_THAT (text, HasSubstr ("One of: ascii, utf-8, utf-16, mac-roman, windows-1252, latin-1."));
    EXPECT_THAT (text, HasSubstr ("overmarks list film.overmarks --sort CueNumber"));
    EXPECT_THAT (text, HasSubstr (".SH EXIT STATUS"));
    EXPECT_THAT (text, HasSubstr (".TH OVERMARKS 1"));
}

TEST_F (ProgramManualTest, theFormatterHasNothingToComplainOf)
{
    write ("overmarks.1", page());
    const auto result = runTool ({ "groff", "-man", "-ww", "-z", path ("overmarks.1") });
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.output, "");
}

TEST_F (ProgramManualTest, theFormatterComplainsOfAPageThatIsDamaged)
{
    write ("overmarks.1", page() + ".XYZ nothing\n");
    EXPECT_THAT (runTool ({ "groff", "-man", "-ww", "-z", path ("overmarks.1") }).output,
                 HasSubstr ("warning"));
}

TEST_F (ProgramManualTest, manShowsThePage)
{
    write ("overmarks.1", page());
    const auto shown = runTool ({ "env", "MANROFFSEQ=", "MANWIDTH=100", "LC_ALL=C.UTF-8", "man", "--warnings",
                                  "-P", "cat", "-l", path ("overmarks.1") });
    EXPECT_EQ (shown.status, 0);
    EXPECT_THAT (shown.output, HasSubstr ("OVERMARKS(1)"));
    EXPECT_THAT (shown.output, HasSubstr ("EXIT STATUS"));
    EXPECT_THAT (shown.output, Not (HasSubstr ("warning")));
}

TEST_F (ProgramManualTest, theRulesOfCheckAreAListOfTheirOwn)
{
    const auto section = sectionOf (page(), ".SS \"check\"\n");
    EXPECT_THAT (section, HasSubstr ("\n.TP\n\\fBtoo\\-fast\\fR\n"));
    EXPECT_THAT (section, HasSubstr ("\n.IP\novermarks check "));
    EXPECT_EQ (section.find ("too\\-fast\\fR\n"), section.rfind ("too\\-fast\\fR\n"));
    EXPECT_THAT (section, Not (HasSubstr ("One of:")));
}

TEST_F (ProgramManualTest, thePageCanBeHadAsJSON)
{
    EXPECT_EQ (run ({ "--man", "--json" }).json()["man"], page());
}

TEST_F (ProgramManualTest, theBuildHasWrittenThePageAndTheCompletions)
{
    const auto generated =
        juce::File (OVERMARKS_PROGRAM).getParentDirectory().getParentDirectory().getChildFile ("generated");
    const auto made = [&generated] (const char* name)
    { return generated.getChildFile (name).loadFileAsString(); };
    const auto said = [this] (const std::vector<std::string>& arguments)
    { return juce::String (juce::CharPointer_UTF8 (run (arguments).output.c_str())); };
    EXPECT_EQ (made ("overmarks.1"), said ({ "--man" }));
    EXPECT_EQ (made ("completion/overmarks"), said ({ "completion", "bash" }));
    EXPECT_EQ (made ("completion/_overmarks"), said ({ "completion", "zsh" }));
    EXPECT_EQ (made ("completion/overmarks.fish"), said ({ "completion", "fish" }));
}

} // namespace
