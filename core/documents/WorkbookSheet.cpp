// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/WorkbookSheet.h"

#include "core/documents/WorkbookText.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <optional>
#include <string_view>
#include <utility>

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

/** Empty for a text without a look of its own. */
std::vector<WorkbookRun> runsOf (const RichTextString& cell, bool isHeading)
{
    return cell.isPlain() ? std::vector<WorkbookRun>() : workbookRunsOf (cell, isHeading);
}

std::string_view textOf (const RichTextString& cell) { return cell.getText().toRawUTF8(); }

/** The file that the rows wait in. Where a workbook can't be finished, the library has closed it if it came as far as to read it. */
class RowsFile final
{
public:
    explicit RowsFile (std::FILE* openFile) noexcept
        : file (openFile),
          number (::fileno (openFile)),
          before (status())
    {
    }

    /** Its number may belong to a later file by now, which has changed since. */
    void closeIfOpen() const noexcept
    {
        const int error = errno; // the caller's
        const auto now = status();
        const auto timeOf = [] (const struct stat& some)
        { return std::pair (some.st_ctim.tv_sec, some.st_ctim.tv_nsec); };

        if (before && now && now->st_dev == before->st_dev && now->st_ino == before->st_ino
            && now->st_size == before->st_size && timeOf (*now) == timeOf (*before))
            std::fclose (file);

        errno = error;
    }

private:
    [[nodiscard]] std::optional<struct stat> status() const noexcept
    {
        struct stat found
        {
        };
        return ::fstat (number, &found) == 0 ? std::optional (found) : std::nullopt;
    }

    std::FILE* file;
    int number;
    std::optional<struct stat> before;
};

} // namespace

WorkbookFailure WorkbookFailure::temporaryFilesCut (const std::string& folder)
{
    return WorkbookFailure ("the temporary files in " + folder
                            + " didn't take everything; is that disk full?");
}

WorkbookSheet::WorkbookSheet (const std::string& path, const std::string& temporaryFolder)
    : folder (temporaryFolder)
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
}

/** Of a workbook that isn't given to the library to be finished, it leaves the file of the rows open, which keeps their room on the disk. */
void WorkbookSheet::Free::operator() (lxw_workbook* freed) const
{
    if (auto* const only = STAILQ_FIRST (freed->worksheets);
        only != nullptr && only->optimize_tmpfile != nullptr)
        std::fclose (only->optimize_tmpfile);

    lxw_workbook_free (freed);
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

/** @returns how many times as large as usual its letters are */
double WorkbookSheet::addCell (lxw_col_t column, const RichTextString& cell)
{
    const auto runs = runsOf (cell, isHeading());
    auto* const whole = runs.size() == 1 ? formatFor (runs.front().look) : nullptr;
    auto* const usual = isHeading() ? heading : body;

    if (runs.empty() || whole != nullptr)
        writePlain (column, textOf (cell), whole != nullptr ? whole : usual);
    else
        writeXML (column, workbookXMLOf (runs), usual);

    return scaleOf (runs);
}

bool WorkbookSheet::addRow (const std::vector<RichTextString>& cells)
{
    measure (cells);
    double height = LXW_DEF_ROW_HEIGHT;
    bool isKnown = true;

    for (std::size_t i = 0; i < cells.size(); ++i)
        if (const auto text = textOf (cells[i]); ! text.empty())
        {
            const auto scale = addCell (static_cast<lxw_col_t> (i), cells[i]);
            height = std::max (height, heightOf (i, text, scale));
            isKnown = isKnown && isHeightKnown (i, text, scale);
        }

    if (isKnown)
        setHeight (rows, height);

    if (isHeading()) // its looks are bold
        formats.clear();

    ++rows;
    return isKnown;
}

void WorkbookSheet::arrangeHeight (const std::vector<RichTextString>& cells)
{
    measure (cells);
    areWidthsFinal = true;
    double height = LXW_DEF_ROW_HEIGHT;

    for (std::size_t i = 0; i < cells.size(); ++i)
        height = std::max (height, heightOf (i, textOf (cells[i]), scaleOf (runsOf (cells[i], false))));

    setHeight (rows - 1, height);
}

/** In digits, with letters that are so many times as large as usual. */
std::size_t WorkbookSheet::roomIn (std::size_t column, double scale) const
{
    return static_cast<std::size_t> (static_cast<double> (widths[column]) / scale);
}

/** A text of usual letters has made its column wide enough for all its lines, or as wide as columns get. One of larger letters may
    yet get more room, unless it has enough. */
bool WorkbookSheet::isHeightKnown (std::size_t column, std::string_view text, double scale) const
{
    return scale <= 1.0 || areWidthsFinal || widths[column] >= widest
           || WorkbookText::width (text) <= roomIn (column, scale);
}

/** The height that shows the whole cell, in points. */
double WorkbookSheet::heightOf (std::size_t column, std::string_view text, double scale) const
{
    return static_cast<double> (WorkbookText::lines (text, roomIn (column, scale))) * LXW_DEF_ROW_HEIGHT
           * scale;
}

/** Some programs cut what is wrapped unless the row is said to be higher. */
void WorkbookSheet::setHeight (lxw_row_t row, double height)
{
    if (height > LXW_DEF_ROW_HEIGHT)
        check (worksheet_set_row (sheet, row, std::min (height, highestRow), nullptr));
}

void WorkbookSheet::measure (const std::vector<RichTextString>& cells)
{
    const auto beside = margin + (isHeading() ? filterButton : 0);
    widths.resize (std::max (widths.size(), cells.size()), narrowest);

    for (std::size_t i = 0; i < cells.size(); ++i)
        if (widths[i] < widest)
            if (const auto text = textOf (cells[i]);
                text.size() + beside > widths[i]) // in bytes, see lines()
                widths[i] = std::clamp (WorkbookText::width (text) + beside, widths[i], widest);
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
    arrangeColumns();
    arrangeTable();
    const auto bytes = bytesOfRows();
    const RowsFile rowsFile (sheet->optimize_tmpfile);
    errno = 0;
    const auto error = workbook_close (book.release());

    if (error != LXW_NO_ERROR)
        rowsFile.closeIfOpen();

    if (error == LXW_ERROR_CREATING_TMPFILE)
        throw noTemporaryFile (folder);
    if (error != LXW_NO_ERROR && errno != 0)
        throw WorkbookFailure (std::strerror (errno));

    check (error);
    return bytes;
}

} // namespace ZEP::Core
