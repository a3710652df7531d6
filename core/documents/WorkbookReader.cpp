// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/WorkbookReader.h"

namespace ZEP::Core
{

juce::String readWorkbook (const juce::String&, std::vector<std::vector<RichTextString>>&)
{
    return "Workbooks can't be read yet.";
}

} // namespace ZEP::Core
