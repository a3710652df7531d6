// SPDX-License-Identifier: GPL-3.0-only
#include "manual/CommandTree.h"

#include "OptionValues.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace overmarks
{

namespace
{

constexpr std::array<std::string_view, 6> wordsForFiles { "FILE", "LIST", "OUT", "OLD", "NEW", "PROJECT" };
constexpr std::string_view wordForFolders = "FOLDER";

/** What the help writes for the value, without the limits that stand behind it there. */
std::string placeholderOf (const CLI::Option& option)
{
    if (option.get_positional())
        return option.get_name (true);

    const auto type = option.get_type_name();
    return type.substr (0, type.find (':'));
}

ValueKind kindOf (CLI::Option& option, const ParameterDescription& described)
{
    if (option.get_items_expected_max() == 0)
        return ValueKind::none;
    if (! described.choices.empty())
        return takesSeveral (option) ? ValueKind::wordList : ValueKind::words;
    if (described.placeholder == wordForFolders)
        return ValueKind::folder;

    const bool isFile =
        std::find (wordsForFiles.begin(), wordsForFiles.end(), described.placeholder) != wordsForFiles.end();
    return isFile ? ValueKind::file : ValueKind::text;
}

ParameterDescription describeParameter (CLI::Option& option)
{
    ParameterDescription described { {},
                                     option.get_description(),
                                     placeholderOf (option),
                                     ValueKind::none,
                                     valuesTaken (option),
                                     option.get_items_expected_max() > 1,
                                     option.get_required() };
    described.kind = kindOf (option, described);

    if (option.get_positional())
        described.names.push_back (option.get_name (true));

    for (const auto& name : option.get_snames())
        described.names.push_back ("-" + name);
    for (const auto& name : option.get_lnames())
        described.names.push_back ("--" + name);

    return described;
}

CommandDescription describeBelow (CLI::App& command, const std::string& name)
{
    CommandDescription described { name, command.get_description(), command.get_footer(), {}, {}, {} };

    for (auto* option : command.get_options())
    {
        auto& list = option->get_positional() ? described.arguments : described.options;
        list.push_back (describeParameter (*option));
    }

    for (auto* further : command.get_subcommands ([] (CLI::App*) { return true; }))
        described.commands.push_back (
            describeBelow (*further, (name.empty() ? "" : name + " ") + further->get_name()));

    return described;
}

} // namespace

CommandDescription describe (CLI::App& program) { return describeBelow (program, {}); }

std::vector<const CommandDescription*> flattened (const CommandDescription& command)
{
    std::vector<const CommandDescription*> all { &command };

    for (const auto& further : command.commands)
    {
        const auto below = flattened (further);
        all.insert (all.end(), below.begin(), below.end());
    }

    return all;
}

std::vector<std::string> optionNames (const CommandDescription& command)
{
    std::vector<std::string> names;

    for (const auto& option : command.options)
        names.insert (names.end(), option.names.begin(), option.names.end());

    return names;
}

std::vector<std::string> commandWords (const CommandDescription& command)
{
    std::vector<std::string> words;

    for (const auto& further : command.commands)
        words.push_back (lastWord (further.name));

    return words;
}

std::string lastWord (const std::string& name) { return name.substr (name.rfind (' ') + 1); }

} // namespace overmarks
