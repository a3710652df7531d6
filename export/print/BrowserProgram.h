// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <filesystem>
#include <string>
#include <vector>

namespace ZEP::Overmarks
{

/** The browser to print with: the one that is asked for, by path or by name, else the first usual one that is installed.
    @param wanted  empty for the usual ones
    Throws PrintError with what to install. */
[[nodiscard]] OVERMARKS_API std::filesystem::path findBrowser (const std::string& wanted);

/** How it is started: without a window, a network or anything that it could remember.
    @param profile      folder of its own
    @param withSandbox  whether the system lets it shut its pages in; an administrator's browser can't */
[[nodiscard]] OVERMARKS_API std::vector<std::string> browserArguments (const std::filesystem::path& profile,
                                                                       bool withSandbox);

} // namespace ZEP::Overmarks
