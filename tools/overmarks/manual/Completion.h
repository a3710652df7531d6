// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "manual/CommandTree.h"

#include <string>
#include <vector>

namespace overmarks
{

// Scripts that tell a shell what may follow on a command line: commands, options, and the values of options.

std::string bashCompletion (const CommandDescription& program);
std::string zshCompletion (const CommandDescription& program);
std::string fishCompletion (const CommandDescription& program);

/** The text as one word of any of the shells. */
std::string quotedForShell (const std::string& text);

/** The words with blanks between them. */
std::string withBlanks (const std::vector<std::string>& words);

} // namespace overmarks
