// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/WorkbookLook.h"
#include "core/text/RichTextString.h"

#include <xlsxwriter.h>

#include <cstddef>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ZEP::Core
{

/** Why a workbook can't be written, in words that stand behind its name. */
class WorkbookFailure final : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;

    /** A disk was full while rows or parts waited in their temporary files. */
    [[nodiscard]] static WorkbookFailure temporaryFilesCut (const std::string& folder);
};

/** The one sheet of a new workbook while it is filled, row by row from the top.

    Every cell is text and stays text when somebody edits it. The rows go to temporary files and are not kept in memory. */
class WorkbookSheet final
{
public:
    /** @param path             where the workbook is written
        @param temporaryFolder  of the files that hold the rows meanwhile
        @param columnWidths     of the columns, in digits
        @throws WorkbookFailure */
    WorkbookSheet (const std::string& path, const std::string& temporaryFolder,
                   const std::vector<std::size_t>& columnWidths);

    /** Makes the columns of a table as wide as a further row had best have them: as its longest lines, within bounds. */
    static void widen (std::vector<std::size_t>& widths, const std::vector<RichTextString>& row,
                       bool isHeading);

    /** Writes the next row; the first one is the heading. Throws WorkbookFailure. */
    void addRow (const std::vector<RichTextString>& cells);

    /** Writes the workbook. Nothing is added after it. Throws WorkbookFailure.
        @returns the bytes of XML that the rows take if all went well; only isWholeWorkbook() knows whether it did */
    [[nodiscard]] std::size_t finish();

private:
    struct Free
    {
        void operator() (lxw_workbook* freed) const { lxw_workbook_free (freed); }
    };

    [[nodiscard]] bool isHeading() const noexcept { return rows == 0; }
    double addCell (lxw_col_t column, const RichTextString& cell);
    void writePlain (lxw_col_t column, std::string_view text, lxw_format* format);
    void writeXML (lxw_col_t column, const std::string& xml, lxw_format* format);
    lxw_format* formatFor (const WorkbookLook& look);
    lxw_format* newFormat (bool bold);
    void arrangeColumns();
    void arrangeTable();
    std::size_t bytesOfRows();

    std::string folder; ///< of temporary files
    std::unique_ptr<lxw_workbook, Free> book;
    lxw_worksheet* sheet = nullptr;
    lxw_format* heading = nullptr;
    lxw_format* body = nullptr;
    std::map<WorkbookLook, lxw_format*> formats; ///< of cells that have one look as a whole
    std::vector<std::size_t> widths;
    lxw_row_t rows = 0;
};

} // namespace ZEP::Core
