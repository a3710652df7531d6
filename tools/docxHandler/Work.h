// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Arguments.h"

#include <string>
#include <vector>

namespace DocxHandler
{

/** Does what the command line asks for and tells the progress file of it. @returns what went wrong, a line each; empty if
    nothing did. One document of several that can't be made doesn't keep the others from being made. */
[[nodiscard]] std::vector<std::string> exportDocuments (const Arguments& arguments);
[[nodiscard]] std::vector<std::string> importDocument (const Arguments& arguments);

} // namespace DocxHandler
