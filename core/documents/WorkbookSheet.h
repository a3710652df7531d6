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

    Every cell is text and stays text when somebody edits it. The rows go to temporary files and are not kept in memory. Columns
    become as wide as their longest lines, within bounds, and rows as high as the wrapped lines take. The rule that is easily
    missed: a row's height may depend on widths that only rows below it will give, and then those have to be measured first. */
class WorkbookSheet final
{
public:
    /** @param path             where the workbook is written
        @param temporaryFolder  of the files that hold the rows meanwhile
        @throws WorkbookFailure */
    WorkbookSheet (const std::string& path, const std::string& temporaryFolder);

    /** Writes the next row; the first one is the heading. Throws WorkbookFailure.
        @returns whether it has its height; if not, measure() all rows below it, and then arrangeHeight() */
    [[nodiscard]] bool addRow (const std::vector<RichTextString>& cells);

    /** Makes the columns as wide as a row had best have them. */
    void measure (const std::vector<RichTextString>& cells);

    /** Gives the row that was added last its height, now that all rows below it have been measured. */
    void arrangeHeight (const std::vector<RichTextString>& cells);

    /** Writes the workbook. Nothing is added after it. Throws WorkbookFailure.
        @returns the bytes of XML that the rows take if all went well; only isWholeWorkbook() knows whether it did */
    [[nodiscard]] std::size_t finish();

private:
    struct Free
    {
        void operator() (lxw_workbook* freed) const;
    };

    [[nodiscard]] bool isHeading() const noexcept { return rows == 0; }
    double addCell (lxw_col_t column, const RichTextString& cell);
    [[nodiscard]] std::size_t roomIn (std::size_t column, double scale) const;
    [[nodiscard]] bool isHeightKnown (std::size_t column, std::string_view text, double scale) const;
    [[nodiscard]] double heightOf (std::size_t column, std::string_view text, double scale) const;
    void setHeight (lxw_row_t row, double height);
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
    std::vector<std::size_t> widths;             ///< of the columns, in digits, as the rows so far ask for
    bool areWidthsFinal = false;
    lxw_row_t rows = 0;
};

} // namespace ZEP::Core
