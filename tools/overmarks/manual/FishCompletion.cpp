// SPDX-License-Identifier: GPL-3.0-only
#include "manual/Completion.h"

namespace overmarks
{

namespace
{

constexpr auto beginning = R"(# What fish offers behind overmarks, written by: overmarks completion fish

)";

constexpr auto condition = R"(
# Whether the command that was typed so far is this one.
function __overmarks_at
    set -l words (commandline -opc)
    set -e words[1]
    set -l command
    for word in $words
        if contains -- (string join ' ' -- $command $word) $__overmarks_commands
            set -a command $word
        end
    end
    test "$command" = "$argv[1]"
end

complete -c overmarks -f
)";

/** The text as one word of fish, where the sign of the quotes is escaped inside them. */
std::string quotedForFish (const std::string& text)
{
    std::string result = "'";

    for (const char character : text)
    {
        if (character == '\'' || character == '\\')
            result += '\\';

        result += character;
    }

    return result + "'";
}

std::string lineFor (const CommandDescription& command)
{
    return "complete -c overmarks -n " + quotedForFish ("__overmarks_at " + quotedForFish (command.name));
}

std::string valueOf (const ParameterDescription& parameter)
{
    const auto choices = quotedForFish (withBlanks (parameter.choices));

    switch (parameter.kind)
    {
        case ValueKind::none: return {};
        case ValueKind::text: return " -x";
        case ValueKind::words: return " -x -a " + choices;
        case ValueKind::wordList:
            return " -x -a " + quotedForFish ("(__fish_append , " + withBlanks (parameter.choices) + ")");
        case ValueKind::file: return " -r -F";
        case ValueKind::folder: return " -x -a '(__fish_complete_directories)'";
    }

    return {};
}

std::string nameOf (const ParameterDescription& option)
{
    std::string text;

    for (const auto& name : option.names)
        text += name.starts_with ("--") ? " -l " + name.substr (2) : " -s " + name.substr (1);

    return text;
}

std::string argumentLine (const CommandDescription& command, const ParameterDescription& argument)
{
    switch (argument.kind)
    {
        case ValueKind::none:
        case ValueKind::text: return {};
        case ValueKind::words:
        case ValueKind::wordList:
            return lineFor (command) + " -a " + quotedForFish (withBlanks (argument.choices)) + "\n";
        case ValueKind::file: return lineFor (command) + " -F\n";
        case ValueKind::folder: return lineFor (command) + " -a '(__fish_complete_directories)'\n";
    }

    return {};
}

std::string linesOf (const CommandDescription& command)
{
    std::string lines;

    for (const auto& further : command.commands)
        lines += lineFor (command) + " -a " + quotedForFish (lastWord (further.name)) + " -d "
                 + quotedForFish (further.explanation) + "\n";

    for (const auto& option : command.options)
        lines += lineFor (command) + nameOf (option) + valueOf (option) + " -d "
                 + quotedForFish (option.explanation) + "\n";

    for (const auto& argument : command.arguments)
        lines += argumentLine (command, argument);

    return lines;
}

} // namespace

std::string fishCompletion (const CommandDescription& program)
{
    std::string script = beginning, lines;
    script += "set -g __overmarks_commands";

    for (const auto* command : flattened (program))
    {
        lines += "\n" + linesOf (*command);

        if (! command->name.empty())
            script += " " + quotedForFish (command->name);
    }

    return script + "\n" + condition + lines;
}

} // namespace overmarks
