// SPDX-License-Identifier: GPL-3.0-only
#include "manual/Completion.h"

#include <algorithm>

namespace overmarks
{

namespace
{

constexpr auto beginning = R"(#compdef overmarks
# What zsh offers behind overmarks, written by: overmarks completion zsh

)";

constexpr auto ending = R"(
if [[ $funcstack[1] == _overmarks ]]; then
    _overmarks "$@"
else
    compdef _overmarks overmarks
fi
)";

std::string functionOf (const CommandDescription& command)
{
    auto name = command.name.empty() ? std::string ("_overmarks") : "_overmarks " + command.name;
    std::replace (name.begin(), name.end(), ' ', '_');
    std::replace (name.begin(), name.end(), '-', '_');
    return name;
}

/** Signs that have a meaning in a specification get a stroke before them. */
std::string escaped (const std::string& text, const std::string& signs)
{
    std::string result;

    for (const char character : text)
    {
        if (character == '\\' || signs.find (character) != std::string::npos)
            result += '\\';

        result += character;
    }

    return result;
}

/** What is offered for a value: ":message:action". */
std::string valueOf (const ParameterDescription& parameter)
{
    const auto message = ":" + escaped (parameter.placeholder, ":") + ":";

    switch (parameter.kind)
    {
        case ValueKind::none: return {};
        case ValueKind::text: return message;
        case ValueKind::file: return message + "_files";
        case ValueKind::folder: return message + "_files -/";
        case ValueKind::wordList: return message + "_values -s , value " + withBlanks (parameter.choices);
        case ValueKind::words: break;
    }

    const bool isKey = std::all_of (parameter.choices.begin(), parameter.choices.end(),
                                    [] (const std::string& word) { return word.ends_with ('='); });
    const auto choices = withBlanks (parameter.choices);
    return message + (isKey ? "compadd -S '' -- " + choices : "(" + choices + ")");
}

std::string lineOf (const std::string& specification)
{
    return "        " + quotedForShell (specification) + " \\\n";
}

/** A line for each name; one excludes the others, unless the option may come again. */
std::string linesOf (const ParameterDescription& option)
{
    std::string lines;
    const auto exclusion = option.isRepeatable ? std::string ("*") : "(" + withBlanks (option.names) + ")";
    const auto explanation = "[" + escaped (option.explanation, "[]:") + "]";

    for (const auto& name : option.names)
    {
        const char* const joint = option.kind == ValueKind::none ? "" : name.starts_with ("--") ? "=" : "+";
        lines += lineOf (exclusion + name + joint + explanation + valueOf (option));
    }

    return lines;
}

std::string commandsOf (const CommandDescription& command)
{
    std::string text = "    local -a further=(\n";

    for (const auto& further : command.commands)
        text += "        "
                + quotedForShell (lastWord (further.name) + ":" + escaped (further.explanation, ":")) + "\n";

    return text + "    )\n";
}

std::string dispatchOf (const CommandDescription& command)
{
    std::string text = "    [[ $state == further ]] || return 1\n    case $words[1] in\n";

    for (const auto& further : command.commands)
        text += "        " + lastWord (further.name) + ") " + functionOf (further) + " ;;\n";

    return text + "    esac\n";
}

std::string functionTextOf (const CommandDescription& command)
{
    const bool hasCommands = ! command.commands.empty();
    auto text = functionOf (command) + "()\n{\n";

    if (hasCommands)
        text +=
            "    local curcontext=$curcontext state line\n    typeset -A opt_args\n" + commandsOf (command);

    text += hasCommands ? "    _arguments -C \\\n" : "    _arguments \\\n";

    for (const auto& option : command.options)
        text += linesOf (option);

    for (const auto& argument : command.arguments)
        text += lineOf ((argument.isRepeatable ? "*" : argument.isRequired ? "" : ":") + valueOf (argument));

    if (hasCommands)
        text += lineOf ("1:command:{_describe command further}") + lineOf ("*::argument:->further");

    text.erase (text.size() - 3, 2); // the last line goes on nowhere

    if (hasCommands)
        text.insert (text.size() - 1, " && return");

    return text + (hasCommands ? dispatchOf (command) : "") + "}\n";
}

} // namespace

std::string zshCompletion (const CommandDescription& program)
{
    std::string script = beginning;

    for (const auto* command : flattened (program))
        script += functionTextOf (*command) + "\n";

    script.pop_back();
    return script + ending;
}

} // namespace overmarks
