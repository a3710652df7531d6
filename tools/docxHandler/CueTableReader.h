// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ImportedCue.h"
#include "WordContent.h"

#include <vector>

namespace DocxHandler
{

/** The cues of tables with a row for each, as other programs and people make them: a row of known titles tells what stands
    where. Empty if no table has such a row.

    A table without titles goes on under those above it if it has as many columns, and times where the list has them: a list may be
    split at a page. A row of nothing but text goes on with the cue above it. */
[[nodiscard]] std::vector<ImportedCue> readTitledTables (const std::vector<const Table*>& tables);

/** The cues of a table without titles whose rows hold two timecodes each: the longest column is the text, a short one with
    digits the number, another one the character. Empty if no row does. */
[[nodiscard]] std::vector<ImportedCue> readTimecodeTable (const Table& table);

} // namespace DocxHandler
