// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/NumberFormat.h"

#include <string>
#include <string_view>

namespace ZEP::Core
{

class WorkbookStyles;

/** Shows dates and times that a workbook doesn't count but writes: 2024-03-31T12:30:00.000.

    The format of the cell decides what is shown of them, as of those that are counted: a cell of the time of day says 12:30:00. Where
    the format is not one of dates or times, the date is shown without a time at midnight, and the time without the day from which
    workbooks count, 1899-12-30. */
class WrittenDates final
{
public:
    /** @param stylesOfWorkbook  which live longer */
    WrittenDates (const WorkbookStyles& stylesOfWorkbook, bool daysCountFrom1904);

    /** What a cell of this style shows; anything that is neither date nor time as it is written. */
    [[nodiscard]] std::string shown (std::string_view written, std::size_t style) const;

private:
    const WorkbookStyles& styles;
    const bool countsFrom1904;
    const NumberFormat date;
    const NumberFormat dateAndTime;
    const NumberFormat dateAndFraction;
};

} // namespace ZEP::Core
