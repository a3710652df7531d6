// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <string>
#include <vector>

namespace ZEP::Core
{

class WorkbookArchive;

/** A sheet as the workbook lists it. */
struct SheetEntry
{
    std::string name;      ///< UTF-8
    std::string part;      ///< path in the archive; empty where the workbook has lost it
    bool isHidden = false; ///< hidden from whoever opens the workbook
    bool isTable = true;   ///< not a chart or a dialogue
};

/** What a workbook tells of itself, and where its parts lie. */
struct WorkbookParts
{
    std::vector<SheetEntry> sheets; ///< in their order
    std::size_t sheetInFront = 0;   ///< what a person sees on opening; an index into `sheets`
    bool countsFrom1904 = false;    ///< days, rather than from 1900
    std::string styles;             ///< paths in the archive; empty where there is no such part
    std::string sharedStrings;      ///< path; empty where there is none
    std::string theme;              ///< path; empty where there is none
};

/** Follows the relations of the archive's parts to each other. A workbook without a sheet is a UnreadableWorkbook, as is an archive
    that is none. */
[[nodiscard]] WorkbookParts readWorkbookParts (const WorkbookArchive& archive);

/** The path in the archive of what a part relates to.
    @param from    path of the part, such as "xl/workbook.xml"
    @param target  as it is written there: "worksheets/sheet1.xml", "../media/a.png", "/xl/styles.xml" */
[[nodiscard]] std::string pathOfTarget (const std::string& from, const std::string& target);

} // namespace ZEP::Core
