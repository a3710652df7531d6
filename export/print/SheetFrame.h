// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <string>

namespace ZEP::Overmarks
{

struct PrintLayout;

/** What a browser reads before a cue sheet's own page, so that no text of the page can change it: the document's title, the paper,
    its margins, and that nothing but the footer stands in them. */
[[nodiscard]] OVERMARKS_API std::string frameOfSheet (const PrintLayout& layout);

} // namespace ZEP::Overmarks
