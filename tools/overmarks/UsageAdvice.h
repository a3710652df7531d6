// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace overmarks
{

/** What is wrong with a command line, what was probably meant, and where help is, as one line for a person.
    @param arguments  of the program, without its own name */
std::string usageAdvice (const CLI::App& program, const CLI::ParseError& error,
                         const std::vector<std::string>& arguments);

/** The same for a word where a command should stand, on a command line that asks for help and would get some of another
    kind; empty where there is no such word. */
std::string adviceOnUnknownCommand (const CLI::App& program, const std::vector<std::string>& arguments);

} // namespace overmarks
