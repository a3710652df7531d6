// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/text/RichTextString.h"

#include <juce_core/juce_core.h>

#include <functional>
#include <vector>

namespace ZEP::Core
{

/** Does some work of the reading. The words of what is thrown in it, but for std::bad_alloc, which goes on; empty for nothing. */
[[nodiscard]] juce::String wordsOfFailure (const std::function<void()>& work);

/** Reads the sheet that is in front. The words of a failure, which leaves `rows` as it was; empty on success. */
[[nodiscard]] juce::String readWorkbook (const juce::String& path,
                                         std::vector<std::vector<RichTextString>>& rows);

/** The same with the sheet of a name, whose upper and lower case are one. */
[[nodiscard]] juce::String readSheetOfWorkbook (const juce::String& path, const juce::String& sheet,
                                                std::vector<std::vector<RichTextString>>& rows);

/** Reads the names of the sheets, hidden ones and charts included.
    @param sheetInFront  index of the one that readWorkbook() reads */
[[nodiscard]] juce::String readSheetsOfWorkbook (const juce::String& path, std::vector<juce::String>& names,
                                                 int& sheetInFront);

} // namespace ZEP::Core
