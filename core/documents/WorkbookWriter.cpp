// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/WorkbookWriter.h"

#include "core/documents/PackedWorkbook.h"
#include "core/documents/SheetTable.h"
#include "core/documents/WorkbookCheck.h"
#include "core/documents/WorkbookSheet.h"
#include "core/documents/WorkbookText.h"
#include "core/system/WholeFile.h"
#include "core/system/WritingWithoutSignals.h"

#include <array>
#include <string>
#include <string_view>
#include <system_error>

namespace ZEP::Core
{

namespace
{

using Row = std::vector<RichTextString>;

// What a workbook has room for.
constexpr auto mostRows = static_cast<std::size_t> (SheetTable::mostRows);
constexpr auto mostColumns = static_cast<std::size_t> (SheetTable::mostColumns);
constexpr std::size_t mostInACell = 32767;

/** Nothing in a path stands for something else. */
juce::File fileAt (const juce::String& path)
{
    return juce::File::isAbsolutePath (path) && ! path.startsWithChar ('~')
               ? juce::File (path)
               : juce::File::getCurrentWorkingDirectory().getChildFile ("./" + path);
}

/** "H12 (row 12, column 8)" */
std::string placeOf (std::size_t row, std::size_t column)
{
    std::array<char, LXW_MAX_CELL_NAME_LENGTH> name {};
    lxw_rowcol_to_cell (name.data(), static_cast<lxw_row_t> (row), static_cast<lxw_col_t> (column));
    return std::string (name.data()) + " (row " + std::to_string (row + 1) + ", column "
           + std::to_string (column + 1) + ")";
}

void refuseLongCell (const RichTextString& cell, std::size_t row, std::size_t column)
{
    const std::string_view text (cell.getText().toRawUTF8());

    if (text.size() <= mostInACell) // in bytes, which are at least as many
        return;

    if (const auto length = WorkbookText::length (text); length > mostInACell)
        throw WorkbookFailure ("the cell " + placeOf (row, column) + " holds " + std::to_string (length)
                               + " characters, and a cell has room for " + std::to_string (mostInACell));
}

/** Nothing is cut: what has no place in a workbook is told, and nothing is written. */
void refuseWhatDoesNotFit (const Row& cells, std::size_t row)
{
    if (cells.size() > mostColumns)
        throw WorkbookFailure ("row " + std::to_string (row + 1) + " has " + std::to_string (cells.size())
                               + " columns, and a sheet has room for " + std::to_string (mostColumns));

    for (std::size_t column = 0; column < cells.size(); ++column)
        refuseLongCell (cells[column], row, column);
}

/** Packs the rows. The library reports a disk that is full only where it can't go on. */
std::string_view pack (PackedWorkbook& packed, std::size_t numberOfRows,
                       const ExcelFileHandler::RowMaker& rowAt)
{
    const auto checked = [&rowAt] (std::size_t row) -> const Row&
    {
        const auto& cells = rowAt (row);
        refuseWhatDoesNotFit (cells, row);
        return cells;
    };

    if (numberOfRows > mostRows)
        throw WorkbookFailure ("there are " + std::to_string (numberOfRows)
                               + " rows, and a sheet has room for " + std::to_string (mostRows));

    const WritingWithoutSignals scope;
    const auto folder =
        juce::File::getSpecialLocation (juce::File::tempDirectory).getFullPathName().toStdString();
    WorkbookSheet sheet (packed.path(), folder);

    for (std::size_t row = 0; row < numberOfRows; ++row)
        if (! sheet.addRow (checked (row)))
        {
            for (auto below = row + 1; below < numberOfRows; ++below)
                sheet.measure (checked (below));

            sheet.arrangeHeight (checked (row));
        }

    const auto bytesOfRows = sheet.finish();
    const auto bytes = packed.bytes();

    if (! isWholeWorkbook (bytes, bytesOfRows))
        throw WorkbookFailure::temporaryFilesCut (folder);

    return bytes;
}

} // namespace

juce::String writeWorkbook (const juce::String& path, std::size_t numberOfRows,
                            const ExcelFileHandler::RowMaker& rowAt)
{
    const auto file = fileAt (path);
    const auto failed = [&file] (const std::string& words)
    { return "Can't write " + file.getFullPathName() + ": " + juce::String::fromUTF8 (words.c_str()); };

    try
    {
        PackedWorkbook packed;
        return WholeFile::write (file, pack (packed, numberOfRows, rowAt), WholeFile::Until::theSystemHasIt)
            .getErrorMessage();
    }
    catch (const WorkbookFailure& failure)
    {
        return failed (failure.what());
    }
    catch (const std::system_error& failure)
    {
        return failed (failure.code().message());
    }
}

} // namespace ZEP::Core
