// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "statistics/Statistics.h"

#include <string>
#include <vector>

namespace overmarks
{

/** The picture of characters against time, as SVG that stands in a page of HTML: a row for each character that has a line with a
    time, open lines above the row's own line, done ones below it, so that black-and-white paper and all eyes tell them apart.

    A line is drawn at least so wide that it is seen, and what falls on the same place is drawn once: the picture of 20 000 lines is
    about as large as its rows are many. A list of many characters becomes several panels, two of which fit a sheet of paper. */
class WorkPicture final
{
public:
    static constexpr std::size_t mostRows = 300;
    static constexpr std::size_t rowsOfAPanel = 14;

    explicit WorkPicture (const Statistics& statistics);

    /** The panels, in the order of the rows; none if no line has a time. */
    const std::vector<std::string>& getPanels() const noexcept { return panels; }

    /** Characters with lines that found no row, since there are so many. */
    std::size_t getRowsLeftOut() const noexcept { return rowsLeftOut; }

    /** A bar as long as a table's cell, its done part full and its open part hatched. */
    [[nodiscard]] static std::string bar (const Amount& amount);

    /** The bar of the whole list, and its legend. */
    [[nodiscard]] static std::string legend (const Amount& total);

private:
    std::vector<std::string> panels;
    std::size_t rowsLeftOut = 0;
};

} // namespace overmarks
