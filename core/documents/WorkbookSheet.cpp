// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/WorkbookSheet.h"

#include "core/documents/WorkbookText.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string_view>

namespace ZEP::Core
{

namespace
{

constexpr auto nameOfSheet = "Cues";

/** The number format "Text": what is typed into such a cell later stays what it is, too. */
constexpr std::uint8_t textFormat = 49;

/** Equal lists make equal files, so that a new one can be compared with the last: the date is that of an archive without one,
    1980-01-01. When the workbook was written its file tells. */
constexpr time_t creationDate = 315532800;

/** Cells of further looks carry theirs in their text. A spreadsheet takes 512 fonts. */
constexpr std::size_t mostFormats = 250;

// Widths of columns in digits.
constexpr std::size_t narrowest = 8;
constexpr std::size_t widest = 60;
constexpr std::size_t margin = 1;
constexpr std::size_t filterButton = 3;

constexpr double usualHundredthPoints = 1100.0;
constexpr double highestRow = 409.0;

/** The library counts escapes and markup as text and takes no more of it. */
constexpr std::size_t longestForLibrary = 32767;

template <typename Pointer>
Pointer orOutOfMemory (Pointer pointer)
{
    if (pointer == nullptr)
        throw std::bad_alloc();

    return pointer;
}

void check (lxw_error error)
{
    if (error == LXW_ERROR_MEMORY_MALLOC_FAILED)
        throw std::bad_alloc();
    if (error != LXW_NO_ERROR)
        throw WorkbookFailure (lxw_strerror (error));
}

WorkbookFailure noTemporaryFile (const std::string& folder)
{
    return WorkbookFailure ("no temporary file can be made in " + folder);
}

void setLook (lxw_format* format, const WorkbookLook& look)
{
    constexpr double inAPoint = 100.0;

    if (look.bold)
        format_set_bold (format);
    if (look.italic)
        format_set_italic (format);
    if (look.underlined)
        format_set_underline (format, LXW_UNDERLINE_SINGLE);
    if (look.struckThrough)
        format_set_font_strikeout (format);
    if (look.hundredthPoints > 0)
        format_set_font_size (format, look.hundredthPoints / inAPoint);
    if (look.colour != 0)
        format_set_font_color (format, look.colour);
    if (! look.typeface.empty())
        format_set_font_name (format, look.typeface.c_str());
}

/** The largest letters of a text, as a multiple of the usual ones. */
double scaleOf (const std::vector<WorkbookRun>& runs)
{
    double scale = 1.0;

    for (const auto& run : runs)
        scale = std::max (scale, run.look.hundredthPoints / usualHundredthPoints);

    return scale;
}

} // namespace

WorkbookFailure WorkbookFailure::temporaryFilesCut (const std::string& folder)
{
    return WorkbookFailure ("the temporary files in " + folder
                            + " didn't take everything; is that disk full?");
}

WorkbookSheet::WorkbookSheet (const std::string& path, const std::string& temporaryFolder,
                              const std::vector<std::size_t>& columnWidths)
    : folder (temporaryFolder),
      widths (columnWidths)
{
    lxw_workbook_options options {};
    options.constant_memory = LXW_TRUE;
    options.tmpdir = folder.data();
    book.reset (orOutOfMemory (workbook_new_opt (path.c_str(), &options)));

    lxw_doc_properties properties {};
    properties.created = creationDate;
    check (workbook_set_properties (book.get(), &properties));

    sheet = workbook_add_worksheet (book.get(), nameOfSheet);

    if (sheet == nullptr)
        throw noTemporaryFile (folder);

    body = newFormat (false);
    heading = newFormat (true);
    arrangeColumns();
}

lxw_format* WorkbookSheet::newFormat (bool bold)
{
    auto* const format = orOutOfMemory (workbook_add_format (book.get()));
    format_set_text_wrap (format);
    format_set_align (format, LXW_ALIGN_VERTICAL_TOP);
    format_set_num_format_index (format, textFormat);

    if (bold)
        format_set_bold (format);

    return format;
}

lxw_format* WorkbookSheet::formatFor (const WorkbookLook& look)
{
    if (look == WorkbookLook())
        return body;

    if (const auto found = formats.find (look); found != formats.end())
        return found->second;

    if (formats.size() >= mostFormats)
        return nullptr;

    auto* const format = newFormat (isHeading());
    setLook (format, look);
    return formats[look] = format;
}

void WorkbookSheet::writePlain (lxw_col_t column, std::string_view text, lxw_format* format)
{
    if (WorkbookText::needsEscapes (text) || text.size() > longestForLibrary)
        writeXML (column, workbookXMLOf (text), format);
    else
        check (worksheet_write_string (sheet, rows, column, text.data(), format));
}

/** For a rich text the library makes a temporary file, and one of many runs is too long for it though it would fit into the
    cell. So the cell is begun as a plain one and gets its finished XML here. */
void WorkbookSheet::writeXML (lxw_col_t column, const std::string& xml, lxw_format* format)
{
    check (worksheet_write_string (sheet, rows, column, "-", format));
    auto* const cell = sheet->array != nullptr ? sheet->array[column] : nullptr;

    if (cell == nullptr || cell->type != INLINE_STRING_CELL)
        throw WorkbookFailure ("this version of libxlsxwriter can't be used");

    auto* const copy = orOutOfMemory (::strdup (xml.c_str()));
    std::free (cell->u.string);
    cell->u.string = copy;
    cell->type = INLINE_RICH_STRING_CELL;
}

/** @returns the height that shows the whole cell, in points */
double WorkbookSheet::addCell (lxw_col_t column, const RichTextString& cell)
{
    const std::string_view text (cell.getText().toRawUTF8());
    const auto runs = cell.isPlain() ? std::vector<WorkbookRun>() : workbookRunsOf (cell, isHeading());
    const auto scale = scaleOf (runs);
    const auto room = static_cast<std::size_t> (static_cast<double> (widths[column]) / scale);
    auto* const whole = runs.size() == 1 ? formatFor (runs.front().look) : nullptr;
    auto* const usual = isHeading() ? heading : body;

    if (runs.empty() || whole != nullptr)
        writePlain (column, text, whole != nullptr ? whole : usual);
    else
        writeXML (column, workbookXMLOf (runs), usual);

    return static_cast<double> (WorkbookText::lines (text, room)) * LXW_DEF_ROW_HEIGHT * scale;
}

void WorkbookSheet::addRow (const std::vector<RichTextString>& cells)
{
    double height = LXW_DEF_ROW_HEIGHT;

    for (std::size_t i = 0; i < cells.size(); ++i)
        if (cells[i].getText().isNotEmpty())
            height = std::max (height, addCell (static_cast<lxw_col_t> (i), cells[i]));

    // Some programs cut what is wrapped unless the row is said to be higher.
    if (height > LXW_DEF_ROW_HEIGHT)
        check (worksheet_set_row (sheet, rows, std::min (height, highestRow), nullptr));

    if (isHeading()) // its looks are bold
        formats.clear();

    ++rows;
}

void WorkbookSheet::widen (std::vector<std::size_t>& widths, const std::vector<RichTextString>& row,
                           bool isHeading)
{
    const auto button = isHeading ? filterButton : 0;
    widths.resize (std::max (widths.size(), row.size()), narrowest);

    for (std::size_t i = 0; i < row.size(); ++i)
        if (widths[i] < widest)
            widths[i] = std::clamp (WorkbookText::width (row[i].getText().toRawUTF8()) + margin + button,
                                    widths[i], widest);
}

void WorkbookSheet::arrangeColumns()
{
    for (std::size_t i = 0; i < widths.size(); ++i)
    {
        const auto column = static_cast<lxw_col_t> (i);
        check (worksheet_set_column (sheet, column, column, static_cast<double> (widths[i]), body));
    }
}

void WorkbookSheet::arrangeTable()
{
    if (rows == 0 || widths.empty())
        return;

    worksheet_freeze_panes (sheet, 1, 0);
    check (worksheet_autofilter (sheet, 0, 0, rows - 1, static_cast<lxw_col_t> (widths.size() - 1)));
    check (worksheet_ignore_errors (sheet, LXW_IGNORE_NUMBER_STORED_AS_TEXT, "A1:XFD1048576"));

    // On paper: across the page, with the heading on each.
    worksheet_set_landscape (sheet);
    worksheet_fit_to_pages (sheet, 1, 0);
    check (worksheet_repeat_rows (sheet, 0, 0));
}

/** The library writes rows to a temporary file, which it joins with the other parts in the end. */
std::size_t WorkbookSheet::bytesOfRows()
{
    lxw_worksheet_write_single_row (sheet); // the last one still waits

    if (std::fflush (sheet->optimize_tmpfile) != 0 || std::ferror (sheet->optimize_tmpfile) != 0)
        throw WorkbookFailure::temporaryFilesCut (folder);

    return static_cast<std::size_t> (std::ftell (sheet->optimize_tmpfile));
}

std::size_t WorkbookSheet::finish()
{
    arrangeTable();
    const auto bytes = bytesOfRows();
    errno = 0;
    const auto error = workbook_close (book.release());

    if (error == LXW_ERROR_CREATING_TMPFILE)
        throw noTemporaryFile (folder);
    if (error != LXW_NO_ERROR && errno != 0)
        throw WorkbookFailure (std::strerror (errno));

    check (error);
    return bytes;
}

} // namespace ZEP::Core
