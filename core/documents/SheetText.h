// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/documents/PartXML.h"
#include "core/documents/WorkbookStrings.h"
#include "core/documents/WrittenDates.h"

#include <functional>
#include <string>
#include <string_view>

namespace ZEP::Core
{

/** Takes some rows of a sheet: whole "row" elements of numbers, truth values and the numbers of texts. */
using TakeRows = std::function<void (std::string_view rows)>;

/** Hands out the rows of a sheet stretch by stretch, in the few words that Orcus reads right.

    Nearly all sheets have nothing but such words, and are handed out as they are. Of any other sheet the rows are written anew:
    texts within the sheet are added to the strings of the workbook, results take the place of formulas, errors become texts,
    cells and rows without a place get the next one, and comments and the like are gone. Orcus itself would leave such cells out.

    Throws UnreadableWorkbook for a sheet that isn't well-formed, or whose texts are more than SheetTable takes.
    @param xml      the sheet's part
    @param strings  of the workbook
    @param colours  of the workbook
    @param dates    of the workbook */
void handOutRows (std::string_view xml, WorkbookStrings& strings, const WorkbookColours& colours,
                  const WrittenDates& dates, const TakeRows& take);

/** The rows of a sheet that has nothing but words which Orcus reads right; without a place in memory for any other.
    @param xml  the sheet's part */
[[nodiscard]] std::string_view plainRows (std::string_view xml);

/** Index of a column, counted from 0, from the letters at the front of a cell's place such as "B12"; -1 for none. */
[[nodiscard]] int columnOfPlace (std::string_view place);

} // namespace ZEP::Core
