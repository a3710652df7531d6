// SPDX-License-Identifier: GPL-3.0-only
// What libxlsxwriter alone makes of a table, to measure against.
#pragma once

#include "core/text/RichTextString.h"

#include <juce_core/juce_core.h>
#include <xlsxwriter.h>

#include <string>
#include <utility>
#include <vector>

namespace bench
{

/** A cell as the library wants it: one text, or the texts of its runs and whether they are bold. */
using PlainCell = std::vector<std::pair<std::string, bool>>;

/** How the library keeps the sheet while it is being written: row by row, or all of it, with each text once in the file. */
enum class WorkbookMemory
{
    oneRow,
    wholeSheet
};

PlainCell plainCell (const ZEP::Core::RichTextString& cell);

std::vector<std::vector<PlainCell>> plainRows (
    const std::vector<std::vector<ZEP::Core::RichTextString>>& rows);

void writeWithLibrary (const juce::String& path, std::vector<std::vector<PlainCell>>& rows,
                       WorkbookMemory memory);

} // namespace bench
