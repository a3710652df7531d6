// SPDX-License-Identifier: GPL-3.0-only
#include "manual/ManPage.h"

#include <algorithm>
#include <sstream>
#include <utility>
#include <vector>

namespace overmarks
{

namespace
{

constexpr auto closing = R"(.SH EXIT STATUS
.TP
.B 0
The work is done.
.TP
.B 1
The work failed, or problems were found.
.TP
.B 2
The command line can't be followed: an unknown command, option or value.
.SH ENVIRONMENT
.TP
.B NO_COLOR
Set to anything, it turns off the colours that are used on a terminal.
.TP
.B TMPDIR
The folder for temporary files.
.SH NOTES
Standard output carries data only; messages, problems and progress go to standard error.
No existing file is replaced without \fB\-\-force\fR, except the project that is being edited.
)";

/** Text for the formatter, to which strokes and the first sign of a line have a meaning. */
std::string escaped (const std::string& text)
{
    std::string result;

    for (const char character : text)
    {
        if (character == '\\')
            result += "\\e";
        else if (character == '-')
            result += "\\-";
        else if ((character == '.' || character == '\'') && (result.empty() || result.back() == '\n'))
            result += std::string ("\\&") + character;
        else
            result += character;
    }

    return result;
}

std::string bold (const std::string& text) { return "\\fB" + escaped (text) + "\\fR"; }
std::string italic (const std::string& text) { return "\\fI" + escaped (text) + "\\fR"; }

/** "-o, --output FOLDER" */
std::string headOf (const ParameterDescription& option)
{
    std::string head;

    for (const auto& name : option.names)
        head += (head.empty() ? "" : ", ") + bold (name);

    return option.placeholder.empty() ? head : head + " " + italic (option.placeholder);
}

std::string sentence (const std::string& text)
{
    return text.empty() || std::string (".?!").find (text.back()) != std::string::npos ? text : text + ".";
}

/** Not where the placeholder or the help's end lists the values, nor keys, which a command of their own lists. */
bool isWorthListing (const ParameterDescription& parameter, const std::string& footer)
{
    return parameter.choices.size() > 1 && ! parameter.choices.front().ends_with ('=')
           && parameter.placeholder.find ('|') == std::string::npos
           && footer.find ("\n  " + parameter.choices.front() + " ") == std::string::npos;
}

std::string explanationOf (const ParameterDescription& parameter, const std::string& footer)
{
    auto text = escaped (sentence (parameter.explanation));

    if (isWorthListing (parameter, footer))
    {
        std::string choices;

        for (const auto& choice : parameter.choices)
            choices += (choices.empty() ? "" : ", ") + choice;

        text += "\nOne of: " + escaped (choices) + ".";
    }

    return text + (parameter.isRequired ? "\nRequired.\n" : "\n");
}

std::string entry (const ParameterDescription& option, const std::string& footer = {})
{
    return ".TP\n" + headOf (option) + "\n" + explanationOf (option, footer);
}

std::string entryOfArgument (const ParameterDescription& argument)
{
    return ".TP\n" + italic (argument.placeholder) + "\n" + explanationOf (argument, {});
}

bool isSame (const ParameterDescription& a, const ParameterDescription& b)
{
    return a.names == b.names && a.explanation == b.explanation && a.placeholder == b.placeholder
           && a.choices == b.choices && a.isRequired == b.isRequired;
}

/** The options that many commands have alike. */
std::vector<ParameterDescription> commonOptions (const std::vector<const CommandDescription*>& commands)
{
    constexpr int many = 4;
    std::vector<std::pair<ParameterDescription, int>> counted;

    for (const auto* command : commands)
        for (const auto& option : command->options)
        {
            const auto known =
                std::find_if (counted.begin(), counted.end(),
                              [&option] (const auto& other) { return isSame (other.first, option); });

            if (known != counted.end())
                ++known->second;
            else
                counted.emplace_back (option, 1);
        }

    std::vector<ParameterDescription> common;

    for (const auto& [option, number] : counted)
        if (number >= many)
            common.push_back (option);

    return common;
}

bool isAmong (const std::vector<ParameterDescription>& options, const ParameterDescription& option)
{
    return std::any_of (options.begin(), options.end(),
                        [&option] (const auto& other) { return isSame (other, option); });
}

std::string synopsisOf (const CommandDescription& command)
{
    auto text = bold ("overmarks" + (command.name.empty() ? "" : " " + command.name));

    if (! command.commands.empty())
        text += " " + italic ("COMMAND");

    text += " [" + italic ("OPTIONS") + "]";

    for (const auto& argument : command.arguments)
    {
        const auto name = italic (argument.placeholder) + (argument.isRepeatable ? "..." : "");
        text += argument.isRequired ? " " + name : " [" + name + "]";
    }

    return text + "\n";
}

/** A line of a table in the help, whose columns stand two blanks apart at least: the first cell heads what is said of it. */
std::string tableLine (const std::string& line, std::size_t endOfFirstCell)
{
    return ".TP\n" + bold (line.substr (0, endOfFirstCell)) + "\n"
           + escaped (line.substr (line.find_first_not_of (' ', endOfFirstCell))) + "\n";
}

/** The lines that the help ends with, examples as they are typed. */
std::string footerOf (const CommandDescription& command)
{
    std::istringstream lines (command.footer);
    std::string text;

    for (std::string line; std::getline (lines, line);)
    {
        const auto first = line.find_first_not_of (' ');

        if (first == std::string::npos)
            continue;

        const auto words = line.substr (first);

        if (const auto gap = words.find ("  "); first > 0 && gap != std::string::npos)
            text += tableLine (words, gap);
        else
            text += (first > 0 ? ".IP\n" : ".PP\n") + escaped (words) + "\n";
    }

    return text;
}

std::string sectionOf (const CommandDescription& command, const std::vector<ParameterDescription>& common)
{
    auto text = ".SS \"" + escaped (command.name) + "\"\n" + synopsisOf (command) + ".PP\n"
                + escaped (sentence (command.explanation)) + "\n";
    std::string shared;

    for (const auto& argument : command.arguments)
        text += entryOfArgument (argument);

    for (const auto& option : command.options)
        if (! isAmong (common, option))
            text += entry (option, command.footer);
        else
            for (const auto& name : option.names)
                shared += (shared.empty() ? "" : ", ") + bold (name);

    if (! shared.empty())
        text += ".PP\nAlso, see COMMON OPTIONS: " + shared + ".\n";

    return text + footerOf (command);
}

} // namespace

std::string manPage (const CommandDescription& program, const std::string& version)
{
    const auto all = flattened (program);
    const auto common = commonOptions (all);
    auto page = ".\\\" Written by: overmarks --man\n.TH OVERMARKS 1 \"\" \"overmarks " + escaped (version)
                + "\" \"User Commands\"\n.SH NAME\novermarks \\- " + escaped (program.explanation)
                + "\n.SH SYNOPSIS\n" + synopsisOf (program) + ".SH OPTIONS\n";

    for (const auto& option : program.options)
        page += entry (option);

    page += footerOf (program) + ".SH COMMANDS\n";

    for (const auto* command : all)
        if (! command->name.empty())
            page += sectionOf (*command, common);

    page += ".SH COMMON OPTIONS\n";

    for (const auto& option : common)
        page += entry (option);

    return page + closing;
}

} // namespace overmarks
