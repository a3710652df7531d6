// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/system/CappedNumbers.h"
#include "import/frame/ImportLimits.h"

#include <juce_core/juce_core.h>

#include <cstddef>
#include <cstdint>

namespace ZEP::Overmarks
{

/** How many cells the table of a file may have.

    A cell takes some three hundred bytes of memory and the cue that a row becomes more than a thousand, and a hostile file
    can ask for many of them with few bytes: empty subtitles, fields of no length, markers that repeat a row of a
    thousand columns. A cue list needs far more than four bytes for a cell, and its table never comes near the limit. */
class TableBudget final
{
public:
    static constexpr std::uint64_t kFileBytesPerCell = 4;
    static constexpr std::uint64_t kCellsOfRow = 4; ///< a row counts as so many cells more than it has

    /** What a small file may have, whatever it looks like, say ImportLimits.
        @param bytesPerCell  of a file that isn't small; more than zero */
    explicit TableBudget (std::uint64_t fileBytes, std::uint64_t bytesPerCell = kFileBytesPerCell)
        : mostCells (Core::cappedSum (fileBytes / bytesPerCell, ImportLimits::limits().spareCells)),
          cellsLeft (mostCells)
    {
    }

    /** Takes one more row of so many cells. False, and nothing is taken, when that is more than is left. */
    [[nodiscard]] bool takeRow (std::size_t cells) noexcept
    {
        if (cells + kCellsOfRow > cellsLeft)
            return false;

        cellsLeft -= cells + kCellsOfRow;
        return true;
    }

    /** What the log is told of a file whose table takes no further row. */
    [[nodiscard]] juce::String wordsOfRefusal() const
    {
        return "it grows into a table that is too large (more than " + juce::String (mostCells) + " cells)";
    }

private:
    std::uint64_t mostCells;
    std::uint64_t cellsLeft;
};

} // namespace ZEP::Overmarks
