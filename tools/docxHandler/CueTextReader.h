// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ImportedCue.h"
#include "WordContent.h"

#include <vector>

namespace DocxHandler
{

/** The cues of running text: each begins with a pair of timecodes, in one line or in two; after it come the character's name, the
    number and the text, each on a line of its own, and under the headings "Notes", "Eng. Notes", "Reason" and "FN Region" what
    these say. What can be missing is: a single line is the text, two are name and text. */
[[nodiscard]] std::vector<ImportedCue> readRunningText (const std::vector<RichText>& paragraphs);

/** The lines of a text, broken at line feeds and line separators. */
[[nodiscard]] std::vector<RichText> linesOf (const RichText& text);

} // namespace DocxHandler
