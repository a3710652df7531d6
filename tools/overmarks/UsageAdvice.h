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

} // namespace overmarks
