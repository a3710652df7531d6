// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/WorkbookStrings.h"
#include "core/documents/WorkbookStyles.h"
#include "core/system/LargePages.h"

#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace ZEP::Core
{

/** Makes a table of the cells of a sheet, in whatever order they come.

    Rows and columns stand in their places. A row ends with the last of its cells that the sheet has, be it empty; but never behind
    the last column in which any row has a text, since programs format whole rows of empty cells. The first row, in which readers
    look for the titles, reaches over all columns, so that one without a title can be named by its number. Rows without a text
    are left out at the end.

    A few bytes can ask for a table of seventeen thousand million cells, or put a text of a thousand looks into a million of them,
    so there is an end to both: isTooLarge(). */
class SheetTable final
{
public:
    using Rows = std::vector<std::vector<RichTextString>>; ///< rows of cells, both counted from 0

    static constexpr int mostRows = 1048576;  ///< of a sheet: its last row is one less
    static constexpr int mostColumns = 16384; ///< of a sheet: its last column is one less

    /** What a cell needs to know of its workbook, which lives longer. */
    struct Workbook
    {
        const WorkbookStrings& strings; ///< the texts that cells name by number
        const WorkbookStyles& styles;   ///< the formats that cells name by number
        WorkbookFonts fonts;            ///< for making the looks of texts
        bool countsFrom1904;            ///< days begin in 1904, else in 1900
    };

    /** How many cells the table of a sheet may have, empty ones in gaps included.
        @param bytes  of the sheet's part */
    [[nodiscard]] static std::uint64_t mostCells (std::uint64_t bytes);

    /** How many runs beyond the first of each cell there may be.
        @param bytes  of the sheet's part and that of the shared texts */
    [[nodiscard]] static std::uint64_t mostRuns (std::uint64_t bytes);

    SheetTable (const Workbook& workbookOfSheet, std::uint64_t mostCells,
                std::uint64_t mostRunsOfTexts = mostRuns (0))
        : workbook (workbookOfSheet),
          cellsLeft (mostCells),
          runsLeft (mostRunsOfTexts)
    {
    } ///< `mostCells` and `mostRunsOfTexts` come from the functions of these names.

    // Rows and columns count from 0; what lies outside a sheet is ignored.

    /** @param string  number of the text */
    void setText (int row, int column, std::size_t string);
    void setNumber (int row, int column, double value); ///< Becomes a text as its style wants it.
    void setBoolean (int row, int column, bool value);  ///< Becomes the text that spreadsheets show.

    /** Sets the style of the cell that came last, or else makes an empty cell. */
    void setStyle (int row, int column, std::size_t style);

    /** Whether cells were left out since there were too many, or too many runs in them. */
    [[nodiscard]] bool isTooLarge() const noexcept { return hasTooMany; }

    /** Whether most of the cells are gaps between those that have a text. */
    [[nodiscard]] bool isMostlyGaps() const noexcept { return cellsInGaps > cellsWithText; }

    /** The table; the last thing to be asked. */
    [[nodiscard]] Rows take();

private:
    enum class Kind
    {
        text,
        number,
        boolean
    };

    struct Cell
    {
        int row;
        int column;
        Kind kind;
        std::size_t string;
        double value;
        std::size_t style;
    };

    void begin (const Cell& cell);
    void finishCell();
    [[nodiscard]] RichTextString contentOf (const Cell& cell);
    [[nodiscard]] RichTextString textOf (const Cell& cell);
    [[nodiscard]] bool takeRuns (const RichTextString& content);
    void put (int row, int column, RichTextString content);
    void reach (int row, int column);
    [[nodiscard]] bool makeRoom (int row, int column);

    const Workbook workbook;
    std::uint64_t cellsLeft;
    std::uint64_t runsLeft;
    std::uint64_t cellsWithText = 0;
    std::uint64_t cellsInGaps = 0;
    bool hasTooMany = false;
    std::optional<Cell> pending; ///< its style comes last
    /** Large texts by their number and the look of their cell: they are made once, and copies share what they can. */
    std::map<std::pair<std::size_t, const CellLook*>, RichTextString> largeTexts;

    HeapRoom room;
    Rows rows;
    std::vector<int> lengths; ///< of the rows, with the empty cells at their ends
    std::size_t width = 0;    ///< up to the last column with a text
};

} // namespace ZEP::Core
