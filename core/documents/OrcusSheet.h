// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <string_view>

namespace ZEP::Core
{

class SheetTable;

/** Has the cells of sheets read by the Orcus library.

    Orcus is given workbooks of our own making, of one sheet each that holds some rows and nothing else: it would inflate whatever
    an archive holds, read all sheets, and keep everything in memory twice. */
class OrcusSheet final
{
public:
    explicit OrcusSheet (SheetTable& tableToFill) : table (tableToFill) {} ///< The table outlives this.

    /** Reads "row" elements whose cells are numbers ("n"), truth values ("b") and the numbers of texts ("s"), each with its place.
        Throws UnreadableWorkbook where Orcus can't. */
    void read (std::string_view rows) const;

private:
    SheetTable& table;
};

} // namespace ZEP::Core
