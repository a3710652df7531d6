// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"
#include "core/text/RichTextString.h"

#include <juce_core/juce_core.h>

#include <cstddef>
#include <functional>
#include <vector>

namespace ZEP::Core
{

/** Reads and writes workbooks (.xlsx) as tables of rich text: what a studio fills in by hand, and what it gets back.

    A table is a vector of rows from the top, a row a vector of cells from the left. Nothing is thrown but what the
    machine lacks memory for; a failure leaves its words in `error`, and an empty `error` means success.

    An object holds nothing between two calls. Different objects may be used on different threads.
*/
class ZEP_CORE_API ExcelFileHandler final
{
public:
    ExcelFileHandler() = default;

    /** Reads the sheet that was in front when the workbook was saved. `rows` is replaced on success and left as it
        was on failure.

        Numbers, dates and times are texts, as NumberFormat shows them; a formula is its result.
        @param path   full path of the workbook
        @param rows   a row for every row of the sheet down to the last one that holds something. The first one has a cell
                      for every column in which there is a text, if need be an empty one; any other ends with its own last cell
        @param error  empty on success
    */
    void readFileContent (const juce::String& path, std::vector<std::vector<RichTextString>>& rows,
                          juce::String& error);

    /** The same with another sheet.
        @param sheet  its name; upper and lower case are one */
    void readSheetContent (const juce::String& path, const juce::String& sheet,
                           std::vector<std::vector<RichTextString>>& rows, juce::String& error);

    /** Reads the names of the sheets, in their order, hidden ones and charts included.
        @param names         replaced on success
        @param sheetInFront  index of the one that readFileContent() reads
        @param error         empty on success
    */
    void readSheetNames (const juce::String& path, std::vector<juce::String>& names, int& sheetInFront,
                         juce::String& error);

    /** Writes a workbook of one sheet, its first row standing out as the heading. An existing file is replaced; after a failure
        there is the old file or none.
        @param path   full path of the workbook
        @param rows   the cells with their attributes; every cell is text, whatever it looks like
        @param error  empty on success
    */
    void writeFileContent (const juce::String& path, std::vector<std::vector<RichTextString>>& rows,
                           juce::String& error);

    /** Makes one row of a table, counted from 0. What it gives back holds until the next call. */
    using RowMaker = std::function<const std::vector<RichTextString>&(std::size_t row)>;

    /** The same for a table of which there is a single row at a time: a season's list takes ten times its texts as a whole table.
        @param rowAt  called for each row from the first to the last. Large letters take as many lines as the rows below make their
                      column wide: then those rows are asked for ahead, once in a table, and after them that of the large letters again; all have to be the same
                      in their turn */
    void writeRows (const juce::String& path, std::size_t numberOfRows, const RowMaker& rowAt,
                    juce::String& error);
};

} // namespace ZEP::Core
