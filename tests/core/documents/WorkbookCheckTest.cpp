// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/WorkbookCheck.h"
#include "support/ZipArchive.h"

#include <gtest/gtest.h>

#include <string>

using ZEP::Core::isWholeWorkbook;
using namespace ZEP::Overmarks::Testing;

namespace
{

const std::string rows = R"(<row r="1"><c r="A1"><is><t>a</t></is></c></row>)";

std::string sheet (const std::string& sheetRows)
{
    return "<worksheet><cols/><sheetData>" + sheetRows + "</sheetData><autoFilter/></worksheet>";
}

bool isWhole (const std::string& sheetXML, const std::string& styles = "<styleSheet/>",
              std::size_t bytesOfRows = rows.size())
{
    return isWholeWorkbook (
        zipped ({ { "xl/worksheets/sheet1.xml", sheetXML }, { "xl/styles.xml", styles } }), bytesOfRows);
}

TEST (WorkbookCheck, aWholeWorkbookIsWhole)
{
    EXPECT_TRUE (isWhole (sheet (rows)));
    EXPECT_TRUE (isWhole ("<worksheet><sheetData/></worksheet>", "<styleSheet/>", 0));
}

TEST (WorkbookCheck, rowsThatAreCutShortAreNoticed)
{
    EXPECT_FALSE (isWhole (sheet (rows), "<styleSheet/>", rows.size() + 1));
    EXPECT_FALSE (isWhole (sheet (rows), "<styleSheet/>", rows.size() - 1));
    EXPECT_FALSE (isWhole (sheet ("")));

    // Also where what is left is well-formed.
    EXPECT_FALSE (isWhole (sheet (rows), "<styleSheet/>", 2 * rows.size()));
    EXPECT_FALSE (isWhole ("<worksheet><sheetData/></worksheet>"));
}

TEST (WorkbookCheck, aSheetIsCutShortAnywhere)
{
    const auto whole = sheet (rows);

    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_FALSE (isWhole (whole.substr (0, length))) << length;
}

TEST (WorkbookCheck, aHoleInTheRowsIsNoticed)
{
    const auto whole = sheet (rows);
    const auto begin = whole.find (rows);

    for (auto place = begin; place < begin + rows.size(); ++place)
        EXPECT_FALSE (isWhole (std::string (whole).erase (place, 7))) << place;
}

TEST (WorkbookCheck, everyPartHasToBeWellFormed)
{
    EXPECT_FALSE (isWhole (sheet (rows), ""));
    EXPECT_FALSE (isWhole (sheet (rows), "<styleSheet>"));
    EXPECT_FALSE (isWhole (sheet (rows), "<styleSheet></styleShee>"));
}

TEST (WorkbookCheck, rowsOfManyPiecesAreCounted)
{
    std::string many;

    while (many.size() < 300000)
        many += rows;

    EXPECT_TRUE (isWhole (sheet (many), "<styleSheet/>", many.size()));
    EXPECT_FALSE (isWhole (sheet (many), "<styleSheet/>", many.size() - rows.size()));
}

TEST (WorkbookCheck, whatIsNoWorkbookIsNotWhole)
{
    EXPECT_FALSE (isWholeWorkbook ("", 0));
    EXPECT_FALSE (isWholeWorkbook ("no archive", 0));
    EXPECT_FALSE (isWholeWorkbook (zipped ({ { "xl/styles.xml", "<a/>" } }), 0));

    const auto whole = zipped ({ { "xl/worksheets/sheet1.xml", sheet (rows) } });
    EXPECT_TRUE (isWholeWorkbook (whole, rows.size()));
    EXPECT_FALSE (isWholeWorkbook (whole.substr (0, whole.size() / 2), rows.size()));
}

TEST (WorkbookCheck, bytesThatWereChangedAreNoticed)
{
    auto stored = zipped ({ { "xl/worksheets/sheet1.xml", sheet (rows) } }, ZIP_CM_STORE);
    stored[stored.find ("<t>a") + 3] = 'b';
    EXPECT_FALSE (isWholeWorkbook (stored, rows.size()));
}

} // namespace
