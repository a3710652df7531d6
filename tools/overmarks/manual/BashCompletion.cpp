// SPDX-License-Identifier: GPL-3.0-only
#include "manual/Completion.h"

#include <map>
#include <utility>

namespace overmarks
{

namespace
{

constexpr auto beginning = R"(# What bash offers behind overmarks, written by: overmarks completion bash

# What there is to know of the command $1, and of the value of its option $2, or of its argument with that number.
_overmarks_describe()
{
    kind= choices= commands= options=
    case $1 in
)";

constexpr auto ending = R"(    esac
}

_overmarks_offer()
{
    local found before=
    case $kind in
        words) ;;
        list) before=${1%"${1##*,}"} ;;
        file) compopt -o default; return ;;
        folder) compopt -o dirnames; return ;;
        *) return ;;
    esac
    while IFS= read -r found; do
        COMPREPLY+=("$before$found")
    done < <(compgen -W "$choices" -- "${1#"$before"}")
    # Behind the sign of KEY=VALUE follows the value.
    if [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *= ]]; then
        compopt -o nospace
    fi
}

_overmarks()
{
    local IFS=$' \t\n'
    local current=${COMP_WORDS[COMP_CWORD]} command= option= joins= word i
    local kind choices commands options
    local -i place=1
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; ++i)); do
        word=${COMP_WORDS[i]}
        if [[ $word == = && -n $option ]]; then # --option=value
            continue
        elif [[ $word == [=:] || $word == :: ]]; then # bash has taken a word apart
            joins=yes
        elif [[ -n $joins ]]; then
            joins=
        elif [[ -n $option ]]; then # its value
            option=
        elif [[ $word == -?* ]]; then
            _overmarks_describe "$command" "$word"
            [[ -z $kind ]] || option=$word
        else
            _overmarks_describe "$command"
            if [[ " $commands " == *" $word "* ]]; then
                command="${command:+$command }$word"
            else
                place+=1
            fi
        fi
    done
    if [[ -n $option ]]; then
        [[ $current != = ]] || current=
        _overmarks_describe "$command" "$option"
    elif [[ -n $joins || $current == [=:] || $current == :: ]]; then
        return
    elif [[ $current == -* ]]; then
        _overmarks_describe "$command"
        kind=words choices=$options
    else
        _overmarks_describe "$command" "$place"
        [[ -z $commands ]] || kind=words choices=$commands
    fi
    _overmarks_offer "$current"
}

complete -F _overmarks overmarks
)";

const char* nameOf (ValueKind kind)
{
    switch (kind)
    {
        case ValueKind::text: return "text";
        case ValueKind::words: return "words";
        case ValueKind::wordList: return "list";
        case ValueKind::file: return "file";
        case ValueKind::folder: return "folder";
        case ValueKind::none: break;
    }

    return "";
}

std::string assignmentOf (const ParameterDescription& parameter)
{
    const auto kind = std::string ("kind=") + nameOf (parameter.kind);
    return parameter.choices.empty() ? kind
                                     : kind + " choices=" + quotedForShell (withBlanks (parameter.choices));
}

std::string caseOf (const std::string& patterns, const std::string& assignment)
{
    return "                " + patterns + ") " + assignment + " ;;\n";
}

/** Options of the same kind share a line. */
std::string casesOfOptions (const CommandDescription& command)
{
    std::vector<std::pair<std::string, std::string>> lines; // assignment, patterns

    for (const auto& option : command.options)
    {
        if (option.kind == ValueKind::none)
            continue;

        const auto assignment = assignmentOf (option);
        auto line = lines.begin();

        while (line != lines.end() && line->first != assignment)
            ++line;

        if (line == lines.end())
            line = lines.insert (lines.end(), { assignment, {} });

        for (const auto& name : option.names)
            line->second += (line->second.empty() ? "" : "|") + name;
    }

    std::string cases;

    for (const auto& [assignment, patterns] : lines)
        cases += caseOf (patterns, assignment);

    return cases;
}

std::string casesOfArguments (const CommandDescription& command)
{
    std::string cases;
    int place = 1;

    for (const auto& argument : command.arguments)
    {
        cases += caseOf (argument.isRepeatable ? "[1-9]*" : std::to_string (place), assignmentOf (argument));
        ++place;
    }

    return cases;
}

std::string caseOfCommand (const CommandDescription& command)
{
    auto text = "        " + quotedForShell (command.name) + ")\n";

    if (! command.commands.empty())
        text += "            commands=" + quotedForShell (withBlanks (commandWords (command))) + "\n";

    text += "            options=" + quotedForShell (withBlanks (optionNames (command))) + "\n";

    if (const auto cases = casesOfOptions (command) + casesOfArguments (command); ! cases.empty())
        text += "            case ${2-} in\n" + cases + "            esac\n";

    return text + "            ;;\n";
}

} // namespace

std::string quotedForShell (const std::string& text)
{
    std::string quoted = "'";

    for (const char character : text)
        quoted += character == '\'' ? std::string ("'\\''") : std::string (1, character);

    return quoted + "'";
}

std::string withBlanks (const std::vector<std::string>& words)
{
    std::string text;

    for (const auto& word : words)
        text += (text.empty() ? "" : " ") + word;

    return text;
}

std::string bashCompletion (const CommandDescription& program)
{
    std::string script = beginning;

    for (const auto* command : flattened (program))
        script += caseOfCommand (*command);

    return script + ending;
}

} // namespace overmarks
