// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ImportedCue.h"
#include "WordContent.h"

#include <string_view>
#include <vector>

namespace DocxHandler
{

/** The cues of a Word document: those of our blocks; where there are none, those of its tables; where there are none either,
    those of its text. Throws a Failure whose words go on after the file's name: "holds no cues". */
[[nodiscard]] std::vector<ImportedCue> cuesOfWordDocument (std::string_view bytes);

/** The same for what a document holds; empty if it holds none. */
[[nodiscard]] std::vector<ImportedCue> cuesOfContent (const WordContent& content);

} // namespace DocxHandler
