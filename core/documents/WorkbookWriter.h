// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/text/RichTextString.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace ZEP::Core
{

/** Makes one row of a table, counted from 0. It holds until the next call. */
using WorkbookRowMaker = std::function<const std::vector<RichTextString>&(std::size_t row)>;

/** Writes a workbook of one sheet. The words of a failure; empty on success.
    @param rowAt  called twice for each row, from the first to the last: what rows are in the way of is known before one is written */
[[nodiscard]] juce::String writeWorkbook (const juce::String& path, std::size_t numberOfRows,
                                          const WorkbookRowMaker& rowAt);

} // namespace ZEP::Core
