// SPDX-License-Identifier: GPL-3.0-only
// Each limit of workbooks: what fits exactly, what is one too much, what is said of it, and that an application can raise it.
#include "core/documents/WorkbookArchive.h"

#include "core/documents/SheetTable.h"
#include "core/documents/WorkbookReaderSupport.h"

#include <limits>

using namespace ZEP::Core;

namespace
{

constexpr auto tooLarge = "The workbook is too large to be a cue list.";

/** Limits that end with the test. */
class WorkbookReadingLimits : public WorkbookReading
{
protected:
    ~WorkbookReadingLimits() override { WorkbookArchive::limits() = {}; }

    static Book bookOfRows (int number)
    {
        Book book;

        for (int row = 1; row <= number; ++row)
            book.sheetData += "<row r=\"" + std::to_string (row) + "\"><c r=\"A" + std::to_string (row)
                              + "\"><v>1</v></c></row>";

        return book;
    }

    /** The failure of a workbook with one limit set; of the archive's own ones above all. */
    std::string failureWith (std::uint64_t WorkbookArchive::Limits::*limit, std::uint64_t most,
                             const Book& book)
    {
        limits.*limit = most;
        const auto failure = failureOf (book.zipped());
        limits = {};
        return failure;
    }

    static std::string repeated (const std::string& text, int times)
    {
        std::string all;

        for (; times > 0; --times)
            all += text;

        return all;
    }

    /** The smallest value of a limit with which a workbook is read. */
    std::uint64_t smallest (std::uint64_t WorkbookArchive::Limits::*limit, const std::string& bytes)
    {
        std::uint64_t refused = 0, read = std::uint64_t { 1 } << 30;

        while (read - refused > 1)
        {
            const auto middle = refused + (read - refused) / 2;
            limits.*limit = middle;
            (failureOf (bytes).empty() ? read : refused) = middle;
        }

        return read;
    }

    WorkbookArchive::Limits& limits = WorkbookArchive::limits();
};

} // namespace

TEST_F (WorkbookReadingLimits, areGenerousUnlessTheyAreChanged)
{
    EXPECT_EQ (limits.parts, 10000u);
    EXPECT_EQ (limits.bytesOfPart, 536870912u);
    EXPECT_EQ (limits.bytes, 1073741824u);
    EXPECT_EQ (limits.ratio, 200u);
    EXPECT_EQ (limits.smallBytes, 33554432u);
    EXPECT_EQ (limits.cells, 16777216u);
    EXPECT_EQ (limits.spareCells, 2097152u);
    EXPECT_EQ (limits.nesting, 64);
}

TEST_F (WorkbookReadingLimits, oneLessThanAWorkbookNeedsRefusesIt)
{
    const auto bytes = bookOfRows (3).zipped();

    for (const auto limit : { &WorkbookArchive::Limits::parts, &WorkbookArchive::Limits::bytesOfPart,
                              &WorkbookArchive::Limits::bytes })
    {
        const auto needed = smallest (limit, bytes);
        EXPECT_GT (needed, 2u);
        limits.*limit = needed;
        EXPECT_EQ (failureOf (bytes), "");
        limits.*limit = needed - 1;
        EXPECT_EQ (failureOf (bytes), tooLarge);
        limits = {};
    }
}

TEST_F (WorkbookReadingLimits, aLargeArchiveMayBecomeExactlySoManyTimesItsSize)
{
    Book book = bookOfRows (3);
    book.others = { { "xl/media/image1.png", std::string (100000, ' ') } };
    const auto bytes = book.zipped();
    limits.smallBytes = 1000;
    const auto needed = smallest (&WorkbookArchive::Limits::ratio, bytes);
    EXPECT_GT (needed, 2u);
    limits.ratio = needed - 1;
    EXPECT_EQ (failureOf (bytes), tooLarge);

    limits.smallBytes = std::uint64_t { 1 } << 20;
    EXPECT_EQ (failureOf (bytes), "");
}

TEST_F (WorkbookReadingLimits, aTableMayHaveExactlySoManyCells)
{
    const auto bytes = bookOfRows (100).zipped();
    const auto needed = smallest (&WorkbookArchive::Limits::cells, bytes);
    EXPECT_GE (needed, 100u);
    limits.cells = needed - 1;
    EXPECT_EQ (failureOf (bytes), tooLarge);
    limits.cells = needed;
    EXPECT_EQ (failureOf (bytes), "");
    EXPECT_EQ (rows.size(), 100u);
}

TEST_F (WorkbookReadingLimits, aWorkbookMayListExactlySoManySheetsAsItsArchiveMayHaveParts)
{
    Book book = bookOfRows (1);
    book.others = { { "xl/workbook.xml",
                      Book::xml ("workbook", "<sheets>" + repeated (R"(<sheet name="1" r:id="rId1"/>)", 40)
                                                 + "</sheets>") } };
    EXPECT_EQ (failureWith (&WorkbookArchive::Limits::parts, 40, book), "");
    EXPECT_EQ (failureWith (&WorkbookArchive::Limits::parts, 39, book), tooLarge);
}

TEST_F (WorkbookReadingLimits, aWorkbookMayRelateToExactlySoManyPartsAsItsArchiveMayHave)
{
    Book book = bookOfRows (1);
    book.others = { { "xl/_rels/workbook.xml.rels",
                      Book::relations (
                          Book::relation ("rId1", "worksheet", "worksheets/sheet1.xml")
                          + repeated ("<Relationship/>", 39)
                          + repeated (R"(<Relationship TargetMode="External" Target="https://a"/>)", 40)) } };
    EXPECT_EQ (failureWith (&WorkbookArchive::Limits::parts, 40, book), "");
    EXPECT_EQ (failureWith (&WorkbookArchive::Limits::parts, 39, book), tooLarge);
}

TEST_F (WorkbookReadingLimits, cellsMayShareExactlySoManyTextsAsATableHasCells)
{
    Book book = bookOfRows (1);
    book.others = { { "xl/sharedStrings.xml", Book::xml ("sst", repeated ("<si/>", 200)) } };
    EXPECT_EQ (failureWith (&WorkbookArchive::Limits::cells, 200, book), "");
    EXPECT_EQ (failureWith (&WorkbookArchive::Limits::cells, 199, book), tooLarge);
}

TEST_F (WorkbookReadingLimits, textsOfASheetMayBeExactlySoManyAsATableHasCellsWhereverTheyStand)
{
    Book book;
    book.sheetData = R"(<row r="1">)" + repeated (R"(<c r="A1" t="str"><v>x</v></c>)", 200) + "</row>";
    EXPECT_EQ (failureWith (&WorkbookArchive::Limits::cells, 200, book), "");
    EXPECT_EQ (failureWith (&WorkbookArchive::Limits::cells, 199, book), tooLarge);
}

TEST_F (WorkbookReadingLimits, textsThatNoCellShowsMayHaveExactlySoManyRuns)
{
    Book book = bookOfRows (1);
    book.strings = { repeated ("<r><rPr><b/></rPr><t>x</t></r><r><t>y</t></r>", 50),
                     repeated ("<r><rPr><b/></rPr><t>x</t></r><r><t>y</t></r>", 50) };
    EXPECT_EQ (failureWith (&WorkbookArchive::Limits::cells, 198, book), "");
    EXPECT_EQ (failureWith (&WorkbookArchive::Limits::cells, 197, book), tooLarge);
}

TEST_F (WorkbookReadingLimits, textsOutsideASheetMayHaveExactlySoManyRuns)
{
    Book book;
    book.sheetData = R"(<row r="1"><c r="A1"><v>1</v></c><c r="ZZZZ1" t="inlineStr"><is>)"
                     + repeated ("<r><rPr><b/></rPr><t>x</t></r><r><t>y</t></r>", 100) + "</is></c></row>";
    EXPECT_EQ (failureWith (&WorkbookArchive::Limits::cells, 199, book), "");
    EXPECT_EQ (failureWith (&WorkbookArchive::Limits::cells, 198, book), tooLarge);
}

TEST_F (WorkbookReadingLimits, piecesOfATextThatLookAlikeAreOneRunAndEmptyOnesAreNone)
{
    Book book = bookOfRows (1);
    book.strings = { repeated ("<r><rPr><b/></rPr><t/></r><r><t>y</t></r><t/>", 100) };
    EXPECT_EQ (failureWith (&WorkbookArchive::Limits::cells, 10, book), "");
}

TEST_F (WorkbookReadingLimits, aRatioOfZeroIsTheSameAsOne)
{
    Book book = bookOfRows (100);
    limits.smallBytes = 100;
    EXPECT_EQ (failureWith (&WorkbookArchive::Limits::ratio, 0, book), tooLarge);
    EXPECT_EQ (failureWith (&WorkbookArchive::Limits::ratio, 0, book), "") << "it is small";
}

TEST_F (WorkbookReadingLimits, theLargestLimitsAreNoSmallOnes)
{
    constexpr auto largest = std::numeric_limits<std::uint64_t>::max();
    limits.spareCells = largest;
    EXPECT_EQ (SheetTable::mostCells (400), limits.cells);
    limits = {
        largest, largest, largest, largest, largest, largest, largest, std::numeric_limits<int>::max()
    };
    EXPECT_EQ (SheetTable::mostCells (400), largest);
    EXPECT_EQ (failureOf (bookOfRows (3).zipped()), "");
    EXPECT_EQ (rows.size(), 3u);
}

TEST_F (WorkbookReadingLimits, cellsOfATableGrowWithItsSheet)
{
    limits.spareCells = 10;
    EXPECT_EQ (SheetTable::mostCells (0), 10u);
    EXPECT_EQ (SheetTable::mostCells (400), 110u);
    EXPECT_EQ (SheetTable::mostRuns (400), 110u);
    limits.cells = 50;
    EXPECT_EQ (SheetTable::mostCells (400), 50u);
    limits = {};
    limits.cells = std::uint64_t { 1 } << 40;
    EXPECT_EQ (SheetTable::mostCells (std::uint64_t { 1 } << 30), (1u << 28) + 2097152u);
}

TEST_F (WorkbookReadingLimits, elementsMayLieExactlySoDeepInEachOther)
{
    const auto bytes = bookOfRows (1).zipped(); // worksheet, sheetData, row, c, v
    limits.nesting = 5;
    EXPECT_EQ (failureOf (bytes), "");
    limits.nesting = 1;
    EXPECT_EQ (failureOf (bytes), "The workbook's parts are nested too deeply to be those of a cue list.");

    Book deep = bookOfRows (1);
    std::string inner;
    for (int i = 0; i < 100; ++i)
        inner = "<x>" + inner + "</x>";
    deep.others = { { "xl/sharedStrings.xml", "<sst><si>" + inner + "</si></sst>" } };
    limits = {};
    EXPECT_EQ (failureOf (deep.zipped()),
               "The workbook's parts are nested too deeply to be those of a cue list.");
    limits.nesting = 200;
    EXPECT_EQ (failureOf (deep.zipped()), "");
}
