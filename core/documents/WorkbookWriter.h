// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/ExcelFileHandler.h"

#include <cstddef>

namespace ZEP::Core
{

/** Writes a workbook of one sheet. The words of a failure; empty on success.
    @param rowAt  see ExcelFileHandler::writeRows() */
[[nodiscard]] juce::String writeWorkbook (const juce::String& path, std::size_t numberOfRows,
                                          const ExcelFileHandler::RowMaker& rowAt);

} // namespace ZEP::Core
