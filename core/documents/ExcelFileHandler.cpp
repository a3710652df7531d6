// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/ExcelFileHandler.h"

#include "core/documents/WorkbookReader.h"
#include "core/documents/WorkbookWriter.h"

namespace ZEP::Core
{

void ExcelFileHandler::readFileContent (const juce::String& path,
                                        std::vector<std::vector<RichTextString>>& rows, juce::String& error)
{
    error = readWorkbook (path, rows);
}

void ExcelFileHandler::writeFileContent (const juce::String& path,
                                         std::vector<std::vector<RichTextString>>& rows, juce::String& error)
{
    error = writeWorkbook (path, rows);
}

} // namespace ZEP::Core
