// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "overmarks/ProgramFixture.h"

#include <sstream>
#include <string>
#include <vector>

/** A command as its --help shows it. */
struct CommandHelp
{
    std::vector<std::string> words; ///< "midi", "bind"; empty for the program
    std::string text;
    std::vector<std::string> options;   ///< every name: "-o", "--output"
    std::vector<std::string> required;  ///< the longest name of each option that can't be left out
    std::vector<std::string> arguments; ///< "LIST"
    std::vector<std::string> commands;

    /** Its words behind each other. */
    std::string name() const
    {
        std::string whole;

        for (const auto& word : words)
            whole += (whole.empty() ? "" : " ") + word;

        return whole;
    }
};

/** Reads what --help says, so that what is made from the same table as the help is measured by what people see. */
class ProgramHelpTest : public ProgramTest
{
protected:
    /** The program's help, and that of all commands. */
    std::vector<CommandHelp> allHelp() const
    {
        std::vector<CommandHelp> all;
        collect ({}, all);
        return all;
    }

private:
    void collect (const std::vector<std::string>& words, std::vector<CommandHelp>& all) const
    {
        auto arguments = words;
        arguments.emplace_back ("--help");
        const auto help = run (arguments);
        EXPECT_EQ (help.status, 0) << help.errors;
        all.push_back (parsed (words, help.output));

        for (const auto& command : std::vector<std::string> (all.back().commands))
        {
            auto further = words;
            further.push_back (command);
            collect (further, all);
        }
    }

    static CommandHelp parsed (const std::vector<std::string>& words, const std::string& text)
    {
        CommandHelp help { words, text, {}, {}, {}, {} };
        std::istringstream lines (text);
        std::string section;

        for (std::string line; std::getline (lines, line);)
        {
            if (! line.empty() && line.back() == ':' && line.front() != ' ')
                section = line;
            else if (line.rfind ("  ", 0) == 0 && line.size() > 2 && line[2] != ' ')
                take (line.substr (2), section, help);
            else if (line.empty())
                section.clear();
        }

        return help;
    }

    static void take (const std::string& line, const std::string& section, CommandHelp& help)
    {
        const auto word = line.substr (0, line.find (' '));

        // Options may stand in groups of their own.
        if (word.front() == '-')
            takeOption (line, word, help);
        else if (section == "Positionals:")
            help.arguments.push_back (word);
        else if (section == "Subcommands:")
            help.commands.push_back (word);
    }

    static void takeOption (const std::string& line, const std::string& word, CommandHelp& help)
    {
        std::istringstream names (word);

        for (std::string name; std::getline (names, name, ',');)
            help.options.push_back (name);

        if (line.find (" REQUIRED") != std::string::npos)
            help.required.push_back (help.options.back());
    }
};

/** What a program of this machine has written. */
struct ToolResult
{
    std::string output; ///< with its errors
    int status = -1;
};

/** Runs a program of this machine, given by its name. No shell is involved. @returns a status of -1 where there is none */
inline ToolResult runTool (const juce::StringArray& command)
{
    juce::ChildProcess tool;

    if (! tool.start (command))
        return {};

    const auto output = tool.readAllProcessOutput().toStdString();
    tool.waitForProcessToFinish (-1);
    return { output, static_cast<int> (tool.getExitCode()) };
}
