// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace overmarks
{

/** What stands behind an option, or in an argument's place. */
enum class ValueKind
{
    none, ///< a flag
    text,
    words,    ///< one of the choices
    wordList, ///< some of the choices, joined by commas
    file,
    folder
};

/** An option, or an argument without a name. */
struct ParameterDescription
{
    std::vector<std::string> names; ///< "-o", "--output"; of an argument the one that the help uses: "LIST"
    std::string explanation;
    std::string placeholder; ///< what the help writes for the value; empty for a flag
    ValueKind kind;
    std::vector<std::string> choices;
    bool isRepeatable;
    bool isRequired;
};

/** A command as the program itself understands it. */
struct CommandDescription
{
    std::string name; ///< all its words: "midi bind"; empty for the program
    std::string explanation;
    std::string footer; ///< with the examples
    std::vector<ParameterDescription> options;
    std::vector<ParameterDescription> arguments;
    std::vector<CommandDescription> commands;
};

/** The program with all its commands, read from what parses the command line: nothing that is written of them elsewhere
    has to be kept in step. */
CommandDescription describe (CLI::App& program);

/** The command and all below it, each before its own. */
std::vector<const CommandDescription*> flattened (const CommandDescription& command);

/** All names of a command's options. */
std::vector<std::string> optionNames (const CommandDescription& command);

/** The last words of the commands below. */
std::vector<std::string> commandWords (const CommandDescription& command);

/** "midi bind" is "bind" below "midi". */
std::string lastWord (const std::string& name);

} // namespace overmarks
