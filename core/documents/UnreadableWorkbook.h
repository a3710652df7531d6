// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <stdexcept>

namespace ZEP::Core
{

/** Thrown within the reading of workbooks: a whole sentence for the person who chose the file. */
class UnreadableWorkbook final : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

namespace WorkbookWords
{

inline constexpr auto cantBeOpened = "The file can't be opened.";
inline constexpr auto cantBeRead = "The file can't be read to its end.";
inline constexpr auto isEmpty = "The file is empty.";
inline constexpr auto isNoWorkbook = "The file is not an Excel workbook.";
inline constexpr auto isDamaged = "The workbook is damaged or incomplete.";
inline constexpr auto isTooLarge = "The workbook is too large to be a cue list.";
inline constexpr auto isTooDeep = "The workbook's parts are nested too deeply to be those of a cue list.";
inline constexpr auto isTooWide = "The sheet's cells lie so far apart that its table would be too large.";
inline constexpr auto isProtected =
    "The workbook is protected by a password. Open it in a spreadsheet program and save it without one.";
inline constexpr auto isOldWorkbook =
    "The file is a workbook of the old kind (.xls). Open it in a spreadsheet program and save it as .xlsx.";
inline constexpr auto isBinaryWorkbook =
    "The file is a binary workbook (.xlsb). Open it in a spreadsheet program and save it as .xlsx.";
inline constexpr auto isOpenDocument =
    "The file is an OpenDocument spreadsheet (.ods). Open it in a spreadsheet program and save it as .xlsx.";
inline constexpr auto isChart = "The sheet is a chart and has no cells.";
inline constexpr auto isChartInFront = "The sheet in front is a chart and has no cells.";
inline constexpr auto hasNoSheet = "The workbook has no sheet.";

} // namespace WorkbookWords

} // namespace ZEP::Core
