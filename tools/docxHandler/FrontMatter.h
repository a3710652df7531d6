// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Paper.h"
#include "Sheet.h"
#include "XMLText.h"

namespace DocxHandler
{

/** The table at the head of a sheet: like a form, with a small label in each cell above what is filled in. Cells without a value
    are left out, but for reel and picture version, which people write in by hand. */
void writeFrontMatter (XMLText& xml, const SheetFrontMatter& frontMatter, const Paper& paper);

} // namespace DocxHandler
