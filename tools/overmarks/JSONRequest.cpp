// SPDX-License-Identifier: GPL-3.0-only
#include "JSONRequest.h"

#include <algorithm>
#include <cstddef>
#include <exception>

namespace overmarks
{

namespace
{

const std::string flagName = "--json";

const CLI::App* commandNamed (const std::string& name, const CLI::App& parent)
{
    const auto found =
        parent.get_subcommands ([&name] (const CLI::App* command) { return command->get_name() == name; });
    return found.empty() ? nullptr : found.front();
}

/** How many words behind this one are the values of an option, whatever they look like. */
std::size_t valuesBehind (const std::string& word, const CLI::App& command)
{
    const bool canBeOption = word.size() > 1 && word.front() == '-';
    const auto* const option = canBeOption ? command.get_option_no_throw (word) : nullptr;
    return option == nullptr ? 0 : static_cast<std::size_t> (std::max (0, option->get_items_expected_min()));
}

/** What stands behind "--json=". Who gets that wrong has asked for JSON all the same. */
bool meansYes (const std::string& value)
{
    try
    {
        return CLI::detail::to_flag_value (value) > 0;
    }
    catch (const std::exception&)
    {
        return true;
    }
}

} // namespace

bool asksForJSON (const CLI::App& program, const std::vector<std::string>& arguments)
{
    const auto* command = &program;
    bool asks = false;

    for (std::size_t i = 0; i < arguments.size() && arguments[i] != "--"; ++i)
    {
        const auto& word = arguments[i];

        if (const auto* const next = commandNamed (word, *command); next != nullptr)
            command = next;
        else if (word == flagName)
            asks = true;
        else if (word.starts_with (flagName + "="))
            asks = meansYes (word.substr (flagName.size() + 1));
        else
            i += valuesBehind (word, *command);
    }

    return asks;
}

} // namespace overmarks
