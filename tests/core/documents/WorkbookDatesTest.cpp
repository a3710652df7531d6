// SPDX-License-Identifier: GPL-3.0-only
// Dates and times that a workbook writes and doesn't count, as those in strict XML do.
#include "core/documents/WorkbookReaderSupport.h"

namespace
{

class WorkbookDates : public WorkbookReading
{
protected:
    /** What a cell of this format shows. */
    std::string shown (const std::string& written, const std::string& format)
    {
        Book book;
        book.workbookPr = workbookPr;
        book.styles = "<numFmts><numFmt numFmtId=\"164\" formatCode=\"" + format
                      + R"("/></numFmts><cellXfs><xf numFmtId="0"/><xf numFmtId="164"/></cellXfs>)";
        book.sheetData =
            R"(<row r="1"><c r="A1" s="1" t="d"><v>)" + written + R"(</v></c><c r="B1"><v>1</v></c></row>)";
        return read (book).at (0).at (0);
    }

    std::string workbookPr;
};

} // namespace

TEST_F (WorkbookDates, areShownInTheirCellsFormat)
{
    EXPECT_EQ (shown ("1899-12-30T01:02:03.000", "hh:mm:ss"), "01:02:03");
    EXPECT_EQ (shown ("T01:02:03", "hh:mm:ss"), "01:02:03");
    EXPECT_EQ (shown ("01:02:03.25", "hh:mm:ss.00"), "01:02:03.250");
    EXPECT_EQ (shown ("1899-12-31T12:00:00", "hh:mm:ss"), "12:00:00");
    EXPECT_EQ (shown ("1900-01-01T12:00:00", "[h]:mm:ss"), "36:00:00");
    EXPECT_EQ (shown ("2024-03-31T00:00:00.000", "dd/mm/yyyy"), "2024-03-31");
    EXPECT_EQ (shown ("2024-03-31T18:30:00.000", "dd/mm/yyyy"), "2024-03-31");
    EXPECT_EQ (shown ("2024-03-31T18:30:00.000", "hh:mm"), "18:30:00");
    EXPECT_EQ (shown ("2024-03-31T18:30", "dd/mm/yyyy hh:mm"), "2024-03-31 18:30:00");
}

TEST_F (WorkbookDates, areShownInFullWithoutAFormatOfTheirOwn)
{
    EXPECT_EQ (shown ("2024-03-31", "General"), "2024-03-31");
    EXPECT_EQ (shown (" 2024-03-31T00:00:00.000 ", "0.00"), "2024-03-31");
    EXPECT_EQ (shown ("2024-03-31T12:30:00", "@"), "2024-03-31 12:30:00");
    EXPECT_EQ (shown ("2024-03-31 12:30:00.5", "General"), "2024-03-31 12:30:00.500");
    EXPECT_EQ (shown ("1899-12-30T01:02:03.000", "General"), "01:02:03");
    EXPECT_EQ (shown ("T00:00:00", "General"), "00:00:00");
}

TEST_F (WorkbookDates, keepTheClockOfWhateverZoneTheyNameBehindThem)
{
    EXPECT_EQ (shown ("2024-03-31T12:30:00.000Z", "General"), "2024-03-31 12:30:00");
    EXPECT_EQ (shown ("2024-03-31T12:30:00Z", "hh:mm:ss"), "12:30:00");
    EXPECT_EQ (shown ("2024-03-31T23:30:00+01:00", "General"), "2024-03-31 23:30:00");
    EXPECT_EQ (shown ("2024-03-31T00:30:00.5-05:00", "General"), "2024-03-31 00:30:00.500");
    EXPECT_EQ (shown ("01:02:03.25+14:00", "hh:mm:ss.00"), "01:02:03.250");
    EXPECT_EQ (shown ("12:30Z", "hh:mm"), "12:30:00");
    EXPECT_EQ (shown ("2024-03-31T12:30+05:30", "yyyy-mm-dd hh:mm"), "2024-03-31 12:30:00");
}

TEST_F (WorkbookDates, countFromWhereTheWorkbookSaysWhateverItsExtensionsAreCalled)
{
    Book book;
    book.styles = R"(<cellXfs><xf numFmtId="0"/><xf numFmtId="14"/></cellXfs>)";
    book.sheetData = R"(<row r="1"><c r="A1" s="1"><v>1</v></c></row>)";
    const std::string sheets = R"(<sheets><sheet name="Cues" r:id="rId1"/></sheets>)";
    const std::string extension =
        R"(<extLst><ext uri="u"><x15:workbookPr xmlns:x15="x15" chartTrackingRefBase="1"/></ext></extLst>)";

    const auto firstDay = [&] (const std::string& properties, const std::string& behind)
    {
        book.others = { { "xl/workbook.xml", Book::xml ("workbook", properties + sheets + behind) } };
        return read (book).at (0).at (0);
    };

    EXPECT_EQ (firstDay (R"(<workbookPr date1904="1"/>)", extension), "1904-01-02");
    EXPECT_EQ (firstDay (R"(<workbookPr date1904="1"/>)", ""), "1904-01-02");
    EXPECT_EQ (
        firstDay ("<workbookPr/>", R"(<extLst><ext><a:workbookPr xmlns:a="a" date1904="1"/></ext></extLst>)"),
        "1900-01-01");
}

TEST_F (WorkbookDates, areTheSameDayWhereverTheWorkbookCountsFrom)
{
    for (const auto* from : { "", R"(date1904="1")" })
    {
        workbookPr = from;
        EXPECT_EQ (shown ("2024-03-31T12:30:00", "yyyy-mm-dd hh:mm"), "2024-03-31 12:30:00") << from;
        EXPECT_EQ (shown ("1904-02-29", "yyyy-mm-dd"), "1904-02-29") << from;
        EXPECT_EQ (shown ("1899-12-30T01:02:03", "hh:mm:ss"), "01:02:03") << from;
    }

    workbookPr.clear();
    EXPECT_EQ (shown ("1900-02-28", "yyyy-mm-dd"), "1900-02-28");
    EXPECT_EQ (shown ("1900-03-01", "yyyy-mm-dd"), "1900-03-01");
    EXPECT_EQ (shown ("9999-12-31", "yyyy-mm-dd"), "9999-12-31");
}

TEST_F (WorkbookDates, thatAreNoneStandAsTheyAreWritten)
{
    for (const std::string written : { "2024-02-30",
                                       "2024-3-31",
                                       "2024-03-31T",
                                       "2024-03-31T25:00:00",
                                       "2024-03-31T12:60",
                                       "T",
                                       "TBD",
                                       "12:30:00.",
                                       "12:30:00x",
                                       "1800-01-01",
                                       "-024-03-31",
                                       "12",
                                       "1:2:3",
                                       "12:30:00ZZ",
                                       "12:30:00+15:00",
                                       "12:30:00+01:60",
                                       "12:30:00 01:00",
                                       "12:30:00+1:00",
                                       "+01:00",
                                       "T+01:00",
                                       "TZ",
                                       "Z",
                                       "2024-02-30T12:30:00Z" })
        EXPECT_EQ (shown (written, "hh:mm:ss"), written);

    EXPECT_EQ (shown ("", "hh:mm:ss"), "");
}

//==============================================================================
TEST_F (WorkbookReading, coloursComeFromThePaletteOfTheWorkbook)
{
    const std::string fonts =
        R"(<fonts><font/><font><color indexed="10"/></font><font><color indexed="9"/></font></fonts>)"
        R"(<cellXfs><xf/><xf fontId="1"/><xf fontId="2"/></cellXfs>)";
    std::string palette;

    for (int i = 0; i < 70; ++i)
        palette += i == 9 ? "<rgbColor rgb=\"what\"/>" : "<rgbColor rgb=\"00336699\"/>";

    Book book;
    book.sheetData = R"(<row r="1"><c r="A1" s="1"><v>1</v></c><c r="B1" s="2"><v>2</v></c></row>)";
    book.styles = fonts;
    read (book);
    EXPECT_EQ (runsOf (0, 0), (std::vector<std::string> { "0-1 ffff0000" }));

    book.styles = fonts + "<colors><indexedColors>" + palette + "</indexedColors></colors>";
    read (book);
    EXPECT_EQ (runsOf (0, 0), (std::vector<std::string> { "0-1 ff336699" }));
    EXPECT_EQ (runsOf (0, 1), (std::vector<std::string> { "0-1 ffffffff" }));

    book.styles = fonts + "<colors><mruColors>" + palette + "</mruColors><indexedColors/></colors>";
    read (book);
    EXPECT_EQ (runsOf (0, 0), (std::vector<std::string> { "0-1 ffff0000" }));
}
