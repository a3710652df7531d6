// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/text/RichTextString.h"

#include <vector>

namespace ZEP::Core
{

/** Reads one sheet of a workbook. The words of a failure; empty on success. */
[[nodiscard]] juce::String readWorkbook (const juce::String& path,
                                         std::vector<std::vector<RichTextString>>& rows);

} // namespace ZEP::Core
