// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstddef>
#include <cstdint>

namespace ZEP::Overmarks
{

/** How many cells the table of a file may have.

    A cell takes some three hundred bytes of memory, and a hostile file can ask for many cells with few bytes: empty
    subtitles, fields of no length, markers that repeat a row of ten thousand columns. A cue list needs far more than
    four bytes for a cell, and its table never comes near the limit. */
class TableBudget final
{
public:
    static constexpr std::uint64_t kFileBytesPerCell = 4;
    static constexpr std::uint64_t kSpareCells = 1 << 20; ///< for small files, whatever they look like

    explicit TableBudget (std::uint64_t fileBytes) noexcept
        : cellsLeft (fileBytes / kFileBytesPerCell + kSpareCells)
    {
    }

    /** Takes the cells of one more row. False, and nothing is taken, when they are more than are left. */
    [[nodiscard]] bool takeRow (std::size_t cells) noexcept
    {
        if (cells > cellsLeft)
            return false;

        cellsLeft -= cells;
        return true;
    }

private:
    std::uint64_t cellsLeft;
};

} // namespace ZEP::Overmarks
