// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <string>
#include <vector>

namespace overmarks
{

/** The known word that a mistyped one is most like, or an empty text if none is near. Case doesn't matter. */
std::string nearestWord (const std::string& typed, const std::vector<std::string>& known);

/** ' Did you mean "..."?' for the nearest word, or nothing. */
std::string didYouMean (const std::string& typed, const std::vector<std::string>& known);

/** The words with commas between them. */
std::string joined (const std::vector<std::string>& words);

/** Throws WrongUsage for a value of an option that is none of the known ones, all of which are named. */
[[noreturn]] void refuseValue (const std::string& option, const std::string& value,
                               const std::vector<std::string>& known);

} // namespace overmarks
