// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ImportedCue.h"
#include "WordContent.h"

#include <vector>

namespace DocxHandler
{

/** Whether a table is a cue's block by its styles. Two blocks become one table when somebody deletes the gap between them. */
[[nodiscard]] bool holdsCueBlocks (const Table& table);

/** Whether a table has the shape of a cue's block: a text and beside it a cell with number, character and two timecodes. That is
    what is left of one where a program knows no styles. */
[[nodiscard]] bool looksLikeCueBlocks (const Table& table);

/** The cues of a table of blocks.

    What a cell holds is told first by where it stands: the cell beside the details is the text and what stands behind a label is
    what the label says, so that text pasted with a foreign style stays where somebody has put it. After that the style tells. */
[[nodiscard]] std::vector<ImportedCue> readCueBlocks (const Table& table);

} // namespace DocxHandler
