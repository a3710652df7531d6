// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/text/RichTextString.h"

#include <vector>

namespace ZEP::Core
{

/** Writes a workbook of one sheet. The words of a failure; empty on success. */
[[nodiscard]] juce::String writeWorkbook (const juce::String& path,
                                          const std::vector<std::vector<RichTextString>>& rows);

} // namespace ZEP::Core
