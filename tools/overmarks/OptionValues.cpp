// SPDX-License-Identifier: GPL-3.0-only
#include "OptionValues.h"

#include <sstream>

namespace overmarks
{

namespace
{

constexpr auto nameOfValues = "values";
constexpr auto nameOfJoinedValues = "values joined by commas";

std::string joinedBy (char separator, const std::vector<std::string>& words)
{
    std::string text;

    for (const auto& word : words)
        text += (text.empty() ? std::string() : std::string (1, separator)) + word;

    return text;
}

/** A check that is off refuses nothing and shows nowhere: it carries the words to those who ask. */
CLI::Option* carry (CLI::Option* option, const std::string& name, const std::vector<std::string>& values)
{
    CLI::Validator carrier ([] (std::string&) { return std::string(); }, joinedBy ('\n', values), name);
    carrier.active (false);
    return option->check (carrier);
}

std::vector<std::string> carried (CLI::Option& option, const std::string& name)
{
    std::vector<std::string> values;

    try
    {
        auto carrier = *option.get_validator (name);
        carrier.active (true);
        std::istringstream words (carrier.get_description());

        for (std::string word; std::getline (words, word);)
            values.push_back (word);
    }
    catch (const CLI::OptionNotFound&) // its values are anything
    {
    }

    return values;
}

} // namespace

CLI::Option* takesOneOf (CLI::Option* option, const std::vector<std::string>& values)
{
    constexpr std::size_t roomInHelp = 32;
    const auto shown = joinedBy ('|', values);

    if (! option->get_positional() && shown.size() <= roomInHelp)
        option->type_name (shown);

    return carry (option, nameOfValues, values);
}

CLI::Option* takesSomeOf (CLI::Option* option, const std::vector<std::string>& values,
                          const std::string& name)
{
    return carry (option->type_name (name + ",..."), nameOfJoinedValues, values);
}

std::vector<std::string> valuesTaken (CLI::Option& option)
{
    return carried (option, takesSeveral (option) ? nameOfJoinedValues : nameOfValues);
}

bool takesSeveral (CLI::Option& option) { return ! carried (option, nameOfJoinedValues).empty(); }

std::vector<std::string> withEqualsSign (std::vector<std::string> keys)
{
    for (auto& key : keys)
        key += "=";

    return keys;
}

} // namespace overmarks
