// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace overmarks
{

/** Tells which values an option or an argument takes, for shells that complete them and for the manual; a few short ones also
    stand in the help in place of the option's type. Whoever reads the value still checks it, in words of its own.

    A value that ends with "=" is the beginning of one, such as the key of KEY=VALUE. */
CLI::Option* takesOneOf (CLI::Option* option, const std::vector<std::string>& values);

/** The same of an option that takes several of the values, joined by commas. @param name  what the help calls one of them */
CLI::Option* takesSomeOf (CLI::Option* option, const std::vector<std::string>& values,
                          const std::string& name);

/** What takesOneOf() or takesSomeOf() was told; else nothing. */
std::vector<std::string> valuesTaken (CLI::Option& option);

/** Whether the values may be joined by commas. */
bool takesSeveral (CLI::Option& option);

/** The same words, each as the beginning of KEY=VALUE. */
std::vector<std::string> withEqualsSign (std::vector<std::string> keys);

/** The names of a table of names and what they stand for, in its order. */
template <typename Table>
std::vector<std::string> namesOfTable (const Table& table)
{
    std::vector<std::string> names;

    for (const auto& [name, meaning] : table)
        names.push_back (name);

    return names;
}

} // namespace overmarks
