// SPDX-License-Identifier: GPL-3.0-only
// Which sheet is read, and where its parts lie.
#include "core/documents/WorkbookReaderSupport.h"

using ZEP::Core::ExcelFileHandler;

namespace
{

class WorkbookPartsReading : public WorkbookReading
{
protected:
    /** A workbook of three sheets, "1" to "3"; each has its number in A1, unless it is a chart. */
    static Book threeSheets (const std::vector<std::string>& kinds, const std::vector<std::string>& states)
    {
        Book book;
        std::string targets;

        for (std::size_t i = 0; i < kinds.size(); ++i)
        {
            const auto number = std::to_string (i + 1);
            book.sheets.push_back (
                { number, "<row r=\"1\"><c r=\"A1\"><v>" + number + "</v></c></row>", states[i] });
            targets += Book::relation ("rId" + number, kinds[i], "worksheets/sheet" + number + ".xml");
        }

        book.others = { { "xl/_rels/workbook.xml.rels", Book::relations (targets) } };
        return book;
    }

    /** A workbook of one sheet that lies in this part, and whose relation has this target. */
    static Book sheetIn (const std::string& part, const std::string& target)
    {
        Book book;
        book.leftOut = { "xl/worksheets/sheet1.xml" };
        book.others = {
            { "xl/_rels/workbook.xml.rels", Book::relations (Book::relation ("rId1", "worksheet", target)) },
            { part,
              Book::xml ("worksheet", R"(<sheetData><row r="1"><c r="A1"><v>1</v></c></row></sheetData>)") }
        };
        return book;
    }
};

constexpr auto hidden = R"(state="hidden")";
constexpr auto isChartInFront = "The sheet in front is a chart and has no cells.";
constexpr auto isDamaged = "The workbook is damaged or incomplete.";

} // namespace

TEST_F (WorkbookPartsReading, theNextSheetOfCellsStandsInForAHiddenOneInFront)
{
    auto book = threeSheets ({ "worksheet", "chartsheet", "worksheet" }, { hidden, "", "" });
    EXPECT_EQ (read (book), (Texts { { "3" } }));

    book = threeSheets ({ "worksheet", "chartsheet", "worksheet" }, { "", "", hidden });
    book.workbookView = R"(activeTab="2")";
    EXPECT_EQ (read (book), (Texts { { "1" } }));

    book = threeSheets ({ "worksheet", "worksheet", "chartsheet" }, { "", hidden, "" });
    book.workbookView = R"(activeTab="1")";
    EXPECT_EQ (read (book), (Texts { { "1" } }));
}

TEST_F (WorkbookPartsReading, aChartInFrontIsNotStoodInFor)
{
    EXPECT_EQ (failureOf (threeSheets ({ "chartsheet", "worksheet", "worksheet" }, { "", "", "" }).zipped()),
               isChartInFront);
    EXPECT_EQ (
        failureOf (threeSheets ({ "worksheet", "chartsheet", "worksheet" }, { hidden, "", hidden }).zipped()),
        isChartInFront);
}

TEST_F (WorkbookPartsReading, ofRelationsWithOneIdTheLastThatLeadsToASheetCounts)
{
    auto book = threeSheets ({ "worksheet", "worksheet", "worksheet" }, { "", "", "" });
    book.others = { { "xl/_rels/workbook.xml.rels",
                      Book::relations (Book::relation ("rId1", "chartsheet", "worksheets/sheet1.xml")
                                       + Book::relation ("rId1", "worksheet", "worksheets/sheet2.xml")
                                       + Book::relation ("rId1", "styles", "styles.xml")) } };
    EXPECT_EQ (read (book), (Texts { { "2" } }));
}

TEST_F (WorkbookPartsReading, aSheetWhoseRelationIsLostIsNoChart)
{
    Book book;
    book.sheetData = R"(<row r="1"><c r="A1"><v>1</v></c></row>)";

    for (const std::string relation : { "r:id=\"rId9\"", "r:id=\"rId2\"", "r:id=\"\"", "" })
    {
        book.others = { { "xl/workbook.xml", Book::xml ("workbook", "<sheets><sheet name=\"Cues\" " + relation
                                                                        + "/></sheets>") },
                        { "xl/_rels/workbook.xml.rels",
                          Book::relations (Book::relation ("rId1", "worksheet", "worksheets/sheet1.xml")
                                           + Book::relation ("rId2", "styles", "styles.xml")
                                           + R"(<Relationship Type="a/theme" Target="theme.xml"/>)") } };
        EXPECT_EQ (failureOf (book.zipped()), isDamaged) << relation;

        juce::String error;
        ExcelFileHandler().readSheetContent (path(), "Cues", rows, error);
        EXPECT_EQ (error, isDamaged) << relation;
    }
}

TEST_F (WorkbookPartsReading, aSheetInFrontThatItsExtensionsNameIsNotMeant)
{
    auto book = threeSheets ({ "worksheet", "worksheet", "worksheet" }, { "", "", "" });
    book.others.push_back (
        { "xl/workbook.xml",
          Book::xml ("workbook", R"(<extLst><ext><a:workbookView xmlns:a="a" activeTab="2"/></ext></extLst>)"
                                 R"(<bookViews><workbookView activeTab="1"/></bookViews><sheets>)"
                                 R"(<sheet name="1" r:id="rId1"/><sheet name="2" r:id="rId2"/>)"
                                 R"(<sheet name="3" r:id="rId3"/></sheets>)") });
    EXPECT_EQ (read (book), (Texts { { "2" } }));
}

TEST_F (WorkbookPartsReading, partsAreFoundUnderThePlainNamesOfTheirAddresses)
{
    EXPECT_EQ (read (sheetIn ("xl/my sheet.xml", "my%20sheet.xml")), (Texts { { "1" } }));
    EXPECT_EQ (read (sheetIn ("xl/\xC3\xA4.xml", "%c3%A4.xml")), (Texts { { "1" } }));
    EXPECT_EQ (read (sheetIn ("xl/my%20sheet.xml", "my%20sheet.xml")), (Texts { { "1" } }));
    EXPECT_EQ (read (sheetIn ("xl/100%.xml", "100%.xml")), (Texts { { "1" } }));
    EXPECT_EQ (read (sheetIn ("xl/100%2g%.xml", "100%252g%.xml")), (Texts { { "1" } }));
}

TEST_F (WorkbookPartsReading, theWorkbookItselfMayHaveAPlainNameToo)
{
    auto book = sheetIn ("xl/worksheets/one.xml", "worksheets/one.xml");
    book.leftOut.insert (book.leftOut.end(), { "xl/workbook.xml" });
    book.others.push_back (
        { "_rels/.rels", Book::relations (Book::relation ("a", "officeDocument", "xl/the%20book.xml")) });
    book.others.push_back (
        { "xl/the book.xml", Book::xml ("workbook", R"(<sheets><sheet name="S" r:id="rId1"/></sheets>)") });
    book.others.push_back ({ "xl/_rels/the book.xml.rels",
                             Book::relations (Book::relation ("rId1", "worksheet", "worksheets/one.xml")) });
    EXPECT_EQ (read (book), (Texts { { "1" } }));
}
