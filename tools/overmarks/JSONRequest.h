// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace overmarks
{

/** Whether a command line asks for JSON, so that even one that can't be parsed is answered with it: "--json", or with a value
    such as "--json=true". The word as the value of another option, or behind "--", asks for nothing.
    @param arguments  of the program, without its own name */
bool asksForJSON (const CLI::App& program, const std::vector<std::string>& arguments);

} // namespace overmarks
