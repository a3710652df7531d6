// SPDX-License-Identifier: GPL-3.0-only
#include "LibraryWorkbook.h"

namespace bench
{

namespace
{

struct LibraryFormats
{
    lxw_format* cell;
    lxw_format* bold;
};

void writeCell (lxw_worksheet* sheet, lxw_row_t row, lxw_col_t column, PlainCell& cell,
                const LibraryFormats& formats)
{
    if (cell.size() == 1)
        worksheet_write_string (sheet, row, column, cell[0].first.c_str(), formats.cell);

    if (cell.size() < 2)
        return;

    std::vector<lxw_rich_string_tuple> runs;

    for (auto& [text, bold] : cell)
        runs.push_back ({ bold ? formats.bold : nullptr, text.data() });

    std::vector<lxw_rich_string_tuple*> pointers;

    for (auto& run : runs)
        pointers.push_back (&run);

    pointers.push_back (nullptr);
    worksheet_write_rich_string (sheet, row, column, pointers.data(), formats.cell);
}

} // namespace

PlainCell plainCell (const ZEP::Core::RichTextString& cell)
{
    PlainCell runs;

    for (int i = 0; i < cell.getNumAttributes(); ++i)
    {
        const auto& run = cell.getAttribute (i);
        runs.emplace_back (cell.getText().substring (run.range.getStart(), run.range.getEnd()).toStdString(),
                           run.font.isBold());
    }

    return runs;
}

std::vector<std::vector<PlainCell>> plainRows (
    const std::vector<std::vector<ZEP::Core::RichTextString>>& rows)
{
    std::vector<std::vector<PlainCell>> plain;

    for (const auto& row : rows)
    {
        plain.emplace_back();

        for (const auto& cell : row)
            plain.back().push_back (plainCell (cell));
    }

    return plain;
}

void writeWithLibrary (const juce::String& path, std::vector<std::vector<PlainCell>>& rows,
                       WorkbookMemory memory)
{
    lxw_workbook_options options {};
    options.constant_memory = memory == WorkbookMemory::oneRow ? LXW_TRUE : LXW_FALSE;
    auto* const book = workbook_new_opt (path.toRawUTF8(), &options);
    auto* const sheet = workbook_add_worksheet (book, "Cues");
    const LibraryFormats formats { workbook_add_format (book), workbook_add_format (book) };
    format_set_text_wrap (formats.cell);
    format_set_bold (formats.bold);

    for (std::size_t row = 0; row < rows.size(); ++row)
        for (std::size_t column = 0; column < rows[row].size(); ++column)
            writeCell (sheet, static_cast<lxw_row_t> (row), static_cast<lxw_col_t> (column),
                       rows[row][column], formats);

    workbook_close (book);
}

} // namespace bench
