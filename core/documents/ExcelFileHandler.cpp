// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/ExcelFileHandler.h"

#include "core/documents/DocumentsLibrary.h"

namespace ZEP::Core
{

namespace
{

/** The words of a failure of the work, or why it can't begin. */
template <typename Work>
juce::String wordsOf (const Work& work, const juce::String& beforeFailure = {})
{
    const auto library = DocumentsLibrary::loaded();
    const auto* const operations = library.operations();
    return operations != nullptr ? work (*operations) : beforeFailure + library.failure();
}

} // namespace

void ExcelFileHandler::readFileContent (const juce::String& path,
                                        std::vector<std::vector<RichTextString>>& rows, juce::String& error)
{
    error = wordsOf ([&] (const auto& documents) { return documents.readSheetInFront (path, rows); });
}

void ExcelFileHandler::readSheetContent (const juce::String& path, const juce::String& sheet,
                                         std::vector<std::vector<RichTextString>>& rows, juce::String& error)
{
    error = wordsOf ([&] (const auto& documents) { return documents.readSheet (path, sheet, rows); });
}

void ExcelFileHandler::readSheetNames (const juce::String& path, std::vector<juce::String>& names,
                                       int& sheetInFront, juce::String& error)
{
    error =
        wordsOf ([&] (const auto& documents) { return documents.readSheets (path, names, sheetInFront); });
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
    error = wordsOf ([&] (const auto& documents) { return documents.write (path, numberOfRows, rowAt); },
                     "Can't write " + path + ": ");
}

} // namespace ZEP::Core
