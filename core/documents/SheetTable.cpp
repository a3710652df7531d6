// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/SheetTable.h"

#include "core/documents/WorkbookArchive.h"
#include "core/system/CappedNumbers.h"
#include "core/text/StringUtil.h"

#include <algorithm>
#include <utility>

namespace ZEP::Core
{
namespace
{

// An empty cell takes some fifty bytes of memory, a text some two hundred.
constexpr std::uint64_t bytesPerCell = 4;

bool isInSheet (int row, int column)
{
    return row >= 0 && row < SheetTable::mostRows && column >= 0 && column < SheetTable::mostColumns;
}

} // namespace

std::uint64_t SheetTable::mostCells (std::uint64_t bytes)
{
    const auto& limits = WorkbookArchive::limits();
    return std::min (cappedSum (bytes / bytesPerCell, limits.spareCells), limits.cells);
}

// A run takes some thirty bytes of memory, and no fewer in a workbook that has it once.
std::uint64_t SheetTable::mostRuns (std::uint64_t bytes) { return mostCells (bytes); }

void SheetTable::setText (int row, int column, std::size_t string)
{
    begin ({ row, column, Kind::text, string, 0.0, 0 });
}

void SheetTable::setNumber (int row, int column, double value)
{
    begin ({ row, column, Kind::number, 0, value, 0 });
}

void SheetTable::setBoolean (int row, int column, bool value)
{
    begin ({ row, column, Kind::boolean, 0, value ? 1.0 : 0.0, 0 });
}

void SheetTable::setStyle (int row, int column, std::size_t style)
{
    if (pending.has_value() && pending->row == row && pending->column == column)
    {
        pending->style = style;
        return;
    }

    finishCell();

    if (isInSheet (row, column))
        reach (row, column);
}

void SheetTable::begin (const Cell& cell)
{
    finishCell();

    if (isInSheet (cell.row, cell.column))
        pending = cell;
}

void SheetTable::finishCell()
{
    if (pending.has_value() && ! hasTooMany)
        put (pending->row, pending->column, contentOf (*pending));

    pending.reset();
}

RichTextString SheetTable::textOf (const Cell& cell)
{
    const auto& look = workbook.styles.lookOf (cell.style);
    const auto& text = workbook.strings[cell.string];

    if (! text.isLarge)
        return text.inCell (look, workbook.fonts);

    const auto [place, isNew] = largeTexts.try_emplace ({ cell.string, &look });

    if (isNew)
        place->second = text.inCell (look, workbook.fonts);

    return place->second;
}

RichTextString SheetTable::contentOf (const Cell& cell)
{
    if (cell.kind == Kind::text)
        return textOf (cell);

    const auto& look = workbook.styles.lookOf (cell.style);
    const auto shown = cell.kind == Kind::number
                           ? workbook.styles.formatOf (cell.style).shown (cell.value, workbook.countsFrom1904)
                           : std::string (cell.value != 0.0 ? "TRUE" : "FALSE");

    return CellText { StringUtil::fromUTF8 (shown), {} }.inCell (look, workbook.fonts);
}

void SheetTable::put (int row, int column, RichTextString content)
{
    reach (row, column);

    if (content.getText().isEmpty() || ! takeRuns (content) || ! makeRoom (row, column))
        return;

    const auto place = static_cast<std::size_t> (column);
    auto& cells = rows[static_cast<std::size_t> (row)];
    width = std::max (width, place + 1);

    if (place == cells.size())
        cells.push_back (std::move (content));
    else
        cells[place] = std::move (content);
}

/** Whether the runs of a text still have room. */
bool SheetTable::takeRuns (const RichTextString& content)
{
    const auto runs = static_cast<std::uint64_t> (std::max (content.getNumAttributes() - 1, 0));

    if (runs > runsLeft)
    {
        hasTooMany = true;
        return false;
    }

    runsLeft -= runs;
    return true;
}

/** Notes that there is a cell, which may be empty. */
void SheetTable::reach (int row, int column)
{
    const auto place = static_cast<std::size_t> (row);

    if (place >= lengths.size())
        lengths.resize (place + 1);

    lengths[place] = std::max (lengths[place], column + 1);
}

/** Makes the row as long as it has to be for a cell, which may come as its last one. */
bool SheetTable::makeRoom (int row, int column)
{
    const auto newRows = std::max (static_cast<std::size_t> (row) + 1, rows.size()) - rows.size();
    const auto before = newRows > 0 ? 0 : rows[static_cast<std::size_t> (row)].size();
    const auto newCells = std::max (static_cast<std::size_t> (column) + 1, before) - before;
    ++cellsWithText;
    cellsInGaps +=
        newRows + newCells > 2 ? newRows + newCells - 2 : 0; // a row and a cell are what any text takes

    if (newRows + newCells > cellsLeft)
    {
        hasTooMany = true;
        return false;
    }

    cellsLeft -= newRows + newCells;

    if (newRows > 0)
    {
        constexpr std::size_t mostAhead = 64;
        rows.resize (rows.size() + newRows);
        rows.back().reserve (std::min (width, mostAhead)); // most rows are as long as the others
        room.keepAheadOf (rows.back().data());
    }

    if (newCells > 1)
        rows[static_cast<std::size_t> (row)].resize (before + newCells - 1);

    return true;
}

SheetTable::Rows SheetTable::take()
{
    finishCell();

    for (std::size_t i = 0; i < rows.size(); ++i)
    {
        const auto length = i == 0 ? width : std::min (static_cast<std::size_t> (lengths[i]), width);
        const auto missing = std::max (length, rows[i].size()) - rows[i].size();

        if (missing > cellsLeft)
        {
            hasTooMany = true;
            break;
        }

        cellsLeft -= missing;
        rows[i].resize (rows[i].size() + missing);
    }

    return std::move (rows);
}

} // namespace ZEP::Core
