// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ImportedCue.h"
#include "WordContent.h"

#include <vector>

namespace DocxHandler
{

/** The cues of a table with a row for each, as other programs and people make them: a row of known titles tells what stands
    where. Empty if the table has no such row. */
[[nodiscard]] std::vector<ImportedCue> readTitledTable (const Table& table);

/** The cues of a table without titles whose rows hold two timecodes each: the longest column is the text, a short one with
    digits the number, another one the character. Empty if no row does. */
[[nodiscard]] std::vector<ImportedCue> readTimecodeTable (const Table& table);

} // namespace DocxHandler
