// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "manual/CommandTree.h"

#include <string>

namespace overmarks
{

/** The manual page in section 1, as man and groff read it. What many commands share is explained once. */
std::string manPage (const CommandDescription& program, const std::string& version);

} // namespace overmarks
