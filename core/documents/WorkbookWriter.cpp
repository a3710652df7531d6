// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/WorkbookWriter.h"

namespace ZEP::Core
{

juce::String writeWorkbook (const juce::String&, const std::vector<std::vector<RichTextString>>&)
{
    return "Workbooks can't be written yet.";
}

} // namespace ZEP::Core
