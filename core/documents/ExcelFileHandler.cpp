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

void ExcelFileHandler::readSheetContent (const juce::String& path, const juce::String& sheet,
                                         std::vector<std::vector<RichTextString>>& rows, juce::String& error)
{
    error = readSheetOfWorkbook (path, sheet, rows);
}

void ExcelFileHandler::readSheetNames (const juce::String& path, std::vector<juce::String>& names,
                                       int& sheetInFront, juce::String& error)
{
    error = readSheetsOfWorkbook (path, names, sheetInFront);
}

void ExcelFileHandler::writeFileContent (const juce::String& path,
                                         std::vector<std::vector<RichTextString>>& rows, juce::String& error)
{
    writeRows (
        path, rows.size(), [&rows](std::size_t row) -> const auto& { return rows[row]; }, error);
}

void ExcelFileHandler::writeRows (const juce::String& path, std::size_t numberOfRows, const RowMaker& rowAt,
                                  juce::String& error)
{
    error = writeWorkbook (path, numberOfRows, rowAt);
}

} // namespace ZEP::Core
