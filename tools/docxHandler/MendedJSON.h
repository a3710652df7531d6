// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <string>
#include <string_view>

namespace DocxHandler
{

/** The same JSON with what one slip in one cue would otherwise lose the whole sheet for made good: an escaped half of a character
    becomes U+FFFD, a number that is too large for any becomes null. */
[[nodiscard]] std::string mendedJSON (std::string_view json);

} // namespace DocxHandler
