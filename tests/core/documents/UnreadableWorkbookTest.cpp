// SPDX-License-Identifier: GPL-3.0-only
// Files that are no workbooks, damaged ones, and ones that are meant to do harm.
#include "core/documents/UnreadableWorkbook.h"
#include "core/documents/OrcusSheet.h"
#include "core/documents/SheetTable.h"
#include "core/documents/WorkbookArchive.h"
#include "core/documents/WorkbookReader.h"
#include "core/documents/WorkbookReaderSupport.h"

#include <new>
#include <random>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace ZEP::Core;
using ZEP::Overmarks::Testing::zipped;

namespace
{

constexpr auto cantBeOpened = "The file can't be opened.";
constexpr auto isEmpty = "The file is empty.";
constexpr auto isNoWorkbook = "The file is not an Excel workbook.";
constexpr auto isDamaged = "The workbook is damaged or incomplete.";
constexpr auto isTooLarge = "The workbook is too large to be a cue list.";
constexpr auto isTooDeep = "The workbook's parts are nested too deeply to be those of a cue list.";
constexpr auto isTooWide = "The sheet's cells lie so far apart that its table would be too large.";
constexpr auto isProtected =
    "The workbook is protected by a password. Open it in a spreadsheet program and save it without one.";
constexpr auto isOldWorkbook =
    "The file is a workbook of the old kind (.xls). Open it in a spreadsheet program and save it as .xlsx.";
constexpr auto isBinaryWorkbook =
    "The file is a binary workbook (.xlsb). Open it in a spreadsheet program and save it as .xlsx.";
constexpr auto isOpenDocument =
    "The file is an OpenDocument spreadsheet (.ods). Open it in a spreadsheet program and save it as .xlsx.";
constexpr auto isChart = "The sheet is a chart and has no cells.";
constexpr auto isChartInFront = "The sheet in front is a chart and has no cells.";
constexpr auto hasNoSheet = "The workbook has no sheet.";

constexpr auto oneCell = R"(<row r="1"><c r="A1"><v>1</v></c></row>)";

/** A file of the kind in which old and protected workbooks lie, with a stream of this name. */
std::string compoundFile (const std::string& stream)
{
    std::string bytes = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
    bytes.append (1000, '\0');

    for (const char letter : stream)
        bytes.append ({ letter, '\0' });

    return bytes.append (2000, '\0');
}

std::string repeated (const std::string& text, std::size_t count)
{
    std::string all;
    all.reserve (text.size() * count);

    for (std::size_t i = 0; i < count; ++i)
        all += text;

    return all;
}

class UnreadableWorkbooks : public WorkbookReading
{
protected:
    /** The failure of a workbook in which a part has this content. */
    std::string failureWith (const std::string& part, const std::string& content)
    {
        Book book;
        book.sheetData = oneCell;
        book.others = { { part, content } };
        return failureOf (book.zipped());
    }

    std::string failureWithout (const std::string& part)
    {
        Book book;
        book.sheetData = oneCell;
        book.leftOut = { part };
        return failureOf (book.zipped());
    }

    std::string failureOfPath (const std::string& name)
    {
        juce::String error;
        ExcelFileHandler().readFileContent (folder.directory() + "/" + juce::String (name), rows, error);
        return error.toStdString();
    }

    std::string failureWithLimits (const std::string& bytes, const WorkbookArchive::Limits& limits)
    {
        WorkbookArchive::limits() = limits;
        auto failure = failureOf (bytes);
        WorkbookArchive::limits() = {};
        return failure;
    }
};

} // namespace

TEST_F (UnreadableWorkbooks, areMissingFilesFoldersAndPipes)
{
    ASSERT_EQ (::mkfifo ((folder.path / "pipe.xlsx").c_str(), 0600), 0);
    ASSERT_TRUE (std::filesystem::create_directory (folder.path / "folder.xlsx"));
    EXPECT_EQ (failureOfPath ("missing.xlsx"), cantBeOpened);
    EXPECT_EQ (failureOfPath ("pipe.xlsx"), cantBeOpened);
    EXPECT_EQ (failureOfPath ("folder.xlsx"), cantBeOpened);
}

TEST_F (UnreadableWorkbooks, areFilesWithoutAnyBytes) { EXPECT_EQ (failureOf (""), isEmpty); }

TEST_F (UnreadableWorkbooks, areFilesOfOtherKinds)
{
    for (const std::string bytes :
         { "P", "PK", "Start TC;Text\n01:00:00:00;Hello\n", "<?xml version=\"1.0\"?><x/>" })
        EXPECT_EQ (failureOf (bytes), isNoWorkbook) << bytes;

    EXPECT_EQ (failureOf (compoundFile ("WordDocument")), isNoWorkbook);
    EXPECT_EQ (failureOf (zipped ({ { "readme.txt", "hello" } })), isNoWorkbook);
    EXPECT_EQ (failureOf (zipped ({ { "xl/workbook.xml", "<document/>" } })), isNoWorkbook);
    EXPECT_EQ (failureOf (std::string ("PK\x05\x06") + std::string (18, '\0')), isNoWorkbook);
}

TEST_F (UnreadableWorkbooks, areProtectedOnes)
{
    EXPECT_EQ (failureOf (compoundFile ("EncryptedPackage")), isProtected);
}

TEST_F (UnreadableWorkbooks, areThoseOfTheOldKind)
{
    EXPECT_EQ (failureOf (compoundFile ("Workbook")), isOldWorkbook);
    EXPECT_EQ (failureOf (compoundFile ("Book")), isOldWorkbook);
}

TEST_F (UnreadableWorkbooks, areThoseOfOtherPrograms)
{
    EXPECT_EQ (failureOf (zipped ({ { "mimetype", "application/vnd.oasis.opendocument.spreadsheet" },
                                    { "content.xml", "<office:document-content/>" } })),
               isOpenDocument);
    EXPECT_EQ (failureOf (zipped ({ { "mimetype", "application/vnd.oasis.opendocument.text" } })),
               isNoWorkbook);
    EXPECT_EQ (failureOf (zipped ({ { "_rels/.rels", Book::relations (Book::relation ("a", "officeDocument",
                                                                                      "xl/workbook.bin")) },
                                    { "xl/workbook.bin", "\x83\x01" } })),
               isBinaryWorkbook);
}

TEST_F (UnreadableWorkbooks, areThoseThatBreakOff)
{
    Book book;
    book.sheetData = oneCell;
    const auto whole = book.zipped();

    for (const auto length :
         { whole.size() - 1, whole.size() - 30, whole.size() / 2, std::size_t { 50 }, std::size_t { 4 } })
        EXPECT_EQ (failureOf (whole.substr (0, length)), isDamaged) << length;
}

TEST_F (UnreadableWorkbooks, areThoseWhosePartsDoNotUnpack)
{
    Book book;
    book.sheetData = repeated (oneCell, 50);
    auto bytes = book.zipped();
    const auto place = bytes.find ("sheet1.xml");
    ASSERT_NE (place, std::string::npos);

    for (std::size_t i = place + 20; i < place + 40; ++i)
        bytes[i] = static_cast<char> (~bytes[i]);

    EXPECT_EQ (failureOf (bytes), isDamaged);
}

TEST_F (UnreadableWorkbooks, areThoseWithoutWhatAWorkbookNeeds)
{
    EXPECT_EQ (failureWithout ("xl/workbook.xml"), isNoWorkbook);
    EXPECT_EQ (failureWithout ("xl/_rels/workbook.xml.rels"), isDamaged);
    EXPECT_EQ (failureWithout ("xl/worksheets/sheet1.xml"), isDamaged);
    EXPECT_EQ (failureWith ("xl/workbook.xml", "<workbook><sheets/></workbook>"), hasNoSheet);
}

TEST_F (UnreadableWorkbooks, areNotThoseWithoutWhatAWorkbookCanDoWithout)
{
    for (const auto* part : { "[Content_Types].xml", "_rels/.rels", "xl/styles.xml", "xl/sharedStrings.xml",
                              "xl/theme/theme1.xml" })
    {
        EXPECT_EQ (failureWithout (part), "") << part;
        EXPECT_EQ (texts(), (Texts { { "1" } })) << part;
    }
}

TEST_F (UnreadableWorkbooks, areThoseWhoseXMLIsNotWellFormed)
{
    for (const auto* part : { "_rels/.rels", "xl/workbook.xml", "xl/_rels/workbook.xml.rels", "xl/styles.xml",
                              "xl/sharedStrings.xml", "xl/worksheets/sheet1.xml" })
        for (const std::string content :
             { "", "text", "<a><b></a></b>", "<a", "<a>&#0;</a>", "<a b='1' b='2'/>", "<a>\xC0\x80</a>",
               "<a/><b/>", "<a>&unknown;</a>" })
            EXPECT_EQ (failureWith (part, content), isDamaged) << part << ": " << content;
}

TEST_F (UnreadableWorkbooks, areThoseWhoseRowsBreakOff)
{
    const std::string start = R"(<worksheet><sheetData><row r="1"><c r="A1"><v>1</v></c></row>)";

    for (const std::string rest :
         { "", "<row", "<row r=\"2\">", "</sheetData>", "</row></sheetData></worksheet>",
           "<row r=\"2\"><c r=\"A2\"><v>1</v></row></sheetData></worksheet>", "</sheetData></worksheet",
           "</sheetData></worksheet><more/>" })
        EXPECT_EQ (failureWith ("xl/worksheets/sheet1.xml", start + rest), isDamaged) << rest;
}

TEST_F (UnreadableWorkbooks, areThoseWithADocumentType)
{
    std::string bomb = "<!DOCTYPE x [<!ENTITY a0 \"ha\">";

    for (int i = 1; i < 30; ++i)
        bomb += "<!ENTITY a" + std::to_string (i) + " \"&a" + std::to_string (i - 1) + ";&a"
                + std::to_string (i - 1) + ";\">";

    bomb += "]>";
    const std::string outside = "<!DOCTYPE x SYSTEM \"file:///etc/passwd\">";

    for (const auto& type : { bomb, outside, std::string ("<!DOCTYPE x>") })
    {
        EXPECT_EQ (failureWith ("xl/sharedStrings.xml", type + "<sst><si><t>&a29;</t></si></sst>"),
                   isDamaged);
        EXPECT_EQ (failureWith ("xl/worksheets/sheet1.xml",
                                type + "<worksheet><sheetData>" + oneCell + "</sheetData></worksheet>"),
                   isDamaged);
    }
}

TEST_F (UnreadableWorkbooks, areThoseWhoseElementsNestTooDeep)
{
    constexpr std::size_t depth = 200000;
    const auto deep = repeated ("<a>", depth) + repeated ("</a>", depth);
    EXPECT_EQ (failureWith ("xl/sharedStrings.xml", "<sst><si>" + deep + "</si></sst>"), isTooDeep);
    EXPECT_EQ (failureWith ("xl/worksheets/sheet1.xml", "<worksheet>" + deep + "<sheetData/></worksheet>"),
               isTooDeep);
}

TEST_F (UnreadableWorkbooks, areCharts)
{
    Book book;
    book.sheetData = oneCell;
    book.others = { { "xl/_rels/workbook.xml.rels",
                      Book::relations (Book::relation ("rId1", "chartsheet", "worksheets/sheet1.xml")) } };
    EXPECT_EQ (failureOf (book.zipped()), isChartInFront);

    juce::String error;
    ExcelFileHandler().readSheetContent (path(), "Cues", rows, error);
    EXPECT_EQ (error, isChart);
}

//==============================================================================
TEST_F (UnreadableWorkbooks, areArchivesOfTooManyParts)
{
    ZEP::Overmarks::Testing::Parts parts;

    for (int i = 0; i < 10001; ++i)
        parts.emplace_back ("xl/p" + std::to_string (i), "");

    EXPECT_EQ (failureOf (zipped (parts)), isTooLarge);
}

TEST_F (UnreadableWorkbooks, areBombsWhereverTheyLie)
{
    // Forty megabytes of nothing, a thousandth of that when packed.
    const std::string nothing (std::size_t { 40 } << 20, ' ');
    Book book;
    book.sheetData = oneCell;
    book.others = { { "xl/media/image1.png", nothing } };
    EXPECT_EQ (failureOf (book.zipped()), isTooLarge);

    book.others = { { "xl/worksheets/sheet1.xml", "<worksheet><sheetData/>" + nothing + "</worksheet>" } };
    EXPECT_EQ (failureOf (book.zipped()), isTooLarge);
}

TEST_F (UnreadableWorkbooks, areKnownByWhatTheirDirectorySays)
{
    Book book;
    book.sheetData = oneCell;
    const auto bytes = book.zipped();
    WorkbookArchive::Limits limits;
    EXPECT_EQ (failureWithLimits (bytes, limits), "");

    limits.parts = 3;
    EXPECT_EQ (failureWithLimits (bytes, limits), isTooLarge);

    limits = {};
    limits.bytesOfPart = 100;
    EXPECT_EQ (failureWithLimits (bytes, limits), isTooLarge);

    limits = {};
    limits.bytes = 1000;
    EXPECT_EQ (failureWithLimits (bytes, limits), isTooLarge);

    limits = {};
    limits.smallBytes = 100;
    limits.ratio = 1;
    EXPECT_EQ (failureWithLimits (bytes, limits), isTooLarge);
}

TEST_F (UnreadableWorkbooks, areThoseWhoseDirectoryLies)
{
    Book book;
    book.sheetData = repeated (oneCell, 1000);
    auto bytes = book.zipped();
    const auto header = bytes.rfind (std::string ("PK\x01\x02"), bytes.rfind ("xl/worksheets/sheet1.xml"));
    ASSERT_NE (header, std::string::npos);

    for (const int size : { 10, 0x7fffffff })
    {
        for (std::size_t i = 0; i < 4; ++i) // what the part says that it becomes
            bytes[header + 24 + i] = static_cast<char> (size >> (8 * i) & 0xFF);

        EXPECT_EQ (failureOf (bytes), size == 10 ? isDamaged : isTooLarge);
    }
}

TEST_F (UnreadableWorkbooks, areBombsHoweverManyBytesTheySayThatTheyWerePackedInto)
{
    Book book;
    book.sheetData = oneCell;
    book.others = { { "xl/media/image1.png", std::string (std::size_t { 40 } << 20, ' ') },
                    { "xl/media/image2.png", "x" } };
    auto bytes = book.zipped();
    const auto header = bytes.rfind (std::string ("PK\x01\x02"), bytes.rfind ("xl/media/image2.png"));
    ASSERT_NE (header, std::string::npos);
    constexpr std::size_t packedSize = 20;
    bytes.replace (header + packedSize, 4, std::string ("\x80\x96\x98\0", 4)); // ten million
    EXPECT_EQ (failureOf (bytes), isTooLarge);
}

TEST_F (UnreadableWorkbooks, areThoseWithAPasswordOnTheirParts)
{
    Book book;
    book.sheetData = oneCell;
    auto bytes = book.zipped();
    const auto header = bytes.find ("PK\x01\x02");
    ASSERT_NE (header, std::string::npos);
    bytes[header + 8] |= 1;
    EXPECT_EQ (failureOf (bytes), isProtected);
}

TEST_F (UnreadableWorkbooks, areSheetsWhoseCellsLieFarApart)
{
    std::string data;

    for (int row = 1; row <= 2000; ++row)
        data += "<row r=\"" + std::to_string (row) + "\"><c r=\"XFD" + std::to_string (row)
                + "\"><v>1</v></c></row>";

    Book book;
    book.sheetData = data;
    EXPECT_EQ (failureOf (book.zipped()), isTooWide);
}

TEST_F (UnreadableWorkbooks, takeNoMoreMemoryThanTheyAreWorth)
{
    std::string data;

    for (int row = 1; row <= 100000; ++row)
        data += "<row r=\"" + std::to_string (row) + "\"><c r=\"XFD" + std::to_string (row)
                + "\" s=\"1\"/></row>";

    Book book;
    book.sheetData = data;
    EXPECT_EQ (failureOf (book.zipped()), "");
    EXPECT_EQ (texts(), Texts());

    rusage usage {};
    ASSERT_EQ (::getrusage (RUSAGE_SELF, &usage), 0);
    EXPECT_LT (usage.ru_maxrss, 2000000); // kilobytes, of all tests so far
}

TEST_F (UnreadableWorkbooks, areThoseInWhichManyCellsShareATextOfManyLooks)
{
    constexpr int cells = 20000;
    Book book;
    book.strings = { repeated ("<r><rPr><b/></rPr><t>x</t></r><r><t>y</t></r>", 500) };

    for (int row = 1; row <= cells; ++row)
        book.sheetData += "<row r=\"" + std::to_string (row) + "\"><c r=\"A" + std::to_string (row)
                          + "\" t=\"s\"><v>0</v></c></row>";

    EXPECT_EQ (failureOf (book.zipped()), isTooLarge);

    book.strings = { repeated ("<r><rPr><b/></rPr><t>x</t></r><r><t>y</t></r>", 50) };
    EXPECT_EQ (failureOf (book.zipped()), "");
    EXPECT_EQ (rows.size(), static_cast<std::size_t> (cells));
}

TEST_F (UnreadableWorkbooks, areSheetsOfTooManyCellsWhoseWordsSayWhetherTheyAreGaps)
{
    const WorkbookColours colours;
    const WorkbookStyles styles (colours);
    const WorkbookStrings strings (colours);
    const SheetTable::Workbook workbook { strings, styles, WorkbookFonts ({}), false };

    SheetTable full (workbook, 1000);
    SheetTable sparse (workbook, 1000);

    for (int i = 0; i < 600; ++i)
        full.setNumber (i, 0, 1.0);

    sparse.setNumber (0, 0, 1.0);
    sparse.setNumber (0, 2000, 1.0);
    EXPECT_TRUE ((static_cast<void> (full.take()), full.isTooLarge()));
    EXPECT_FALSE (full.isMostlyGaps());
    EXPECT_TRUE ((static_cast<void> (sparse.take()), sparse.isTooLarge()));
    EXPECT_TRUE (sparse.isMostlyGaps());
}

TEST_F (UnreadableWorkbooks, whateverALibraryThrowsHasWordsUnlessTheMemoryIsTooSmall)
{
    EXPECT_EQ (wordsOfFailure ([] {}), "");
    EXPECT_EQ (wordsOfFailure ([] { throw UnreadableWorkbook ("why"); }), "why");
    EXPECT_EQ (wordsOfFailure ([] { throw std::out_of_range ("substr"); }), isDamaged);
    EXPECT_THROW (static_cast<void> (wordsOfFailure ([] { throw std::bad_alloc(); })), std::bad_alloc);
}

//==============================================================================
TEST_F (UnreadableWorkbooks, macrosAreNoReasonNotToReadTheCells)
{
    Book book;
    book.sheetData = oneCell;
    book.others = {
        { "xl/vbaProject.bin", compoundFile ("VBA") },
        { "[Content_Types].xml",
          R"(<Types><Override PartName="/xl/workbook.xml" ContentType="application/vnd.ms-excel.sheet.macroEnabled.main+xml"/></Types>)" }
    };
    EXPECT_EQ (read (book), (Texts { { "1" } }));
}

TEST_F (UnreadableWorkbooks, whatLiesOutsideTheArchiveIsNeverRead)
{
    folder.write ("secret.xml",
                  Book::xml ("worksheet", std::string ("<sheetData>") + oneCell + "</sheetData>"));
    Book book;
    book.others = {
        { "xl/_rels/workbook.xml.rels",
          Book::relations (
              R"(<Relationship Id="rId1" Type="x/worksheet" Target="../../../../secret.xml"/>)") }
    };
    EXPECT_EQ (failureOf (book.zipped()), isDamaged);

    book.others = {
        { "xl/_rels/workbook.xml.rels",
          Book::relations (
              R"(<Relationship Id="rId1" Type="x/worksheet" TargetMode="External" Target="file:///etc/passwd"/>)") }
    };
    EXPECT_EQ (failureOf (book.zipped()), isDamaged);
}

TEST_F (UnreadableWorkbooks, orcusRefusesRowsThatAreNone)
{
    const WorkbookColours colours;
    const WorkbookStyles styles (colours);
    const WorkbookStrings strings (colours);
    SheetTable table ({ strings, styles, WorkbookFonts ({}), false }, 1000);
    EXPECT_THROW (OrcusSheet (table).read ("<row"), UnreadableWorkbook);
    EXPECT_THROW (OrcusSheet (table).read ("</sheetData>"), UnreadableWorkbook);
    EXPECT_THROW (OrcusSheet (table).read ("<row r=\"1\"><c></row>"), UnreadableWorkbook);
}

TEST_F (UnreadableWorkbooks, ofAnyDamageGiveSoundTextOrWords)
{
    Book book;
    book.strings = { "<t>plain</t>",
                     R"(<r><rPr><b/><sz val="14"/><color rgb="FFFF0000"/></rPr><t>bo_x000D_ld</t></r>)" };
    book.styles =
        R"(<numFmts><numFmt numFmtId="164" formatCode="[h]:mm:ss.00"/></numFmts><fonts><font><sz val="11"/></font><font><u/></font></fonts>)"
        R"(<cellXfs><xf fontId="0"/><xf fontId="1" numFmtId="164"/><xf numFmtId="14"/></cellXfs>)";
    book.sheetData =
        R"(<row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1" t="s" s="1"><v>1</v></c></row>)"
        R"(<row r="2"><c r="A2" s="1"><v>0.5</v></c><c r="B2" s="2"><v>45000</v></c><c r="C2" t="b"><v>1</v></c></row>)";
    auto parts = book.parts();

    for (unsigned seed = 1; seed <= 1500; ++seed)
    {
        SCOPED_TRACE (seed);
        std::mt19937 random (seed);
        auto damaged = parts;
        auto& content = damaged[random() % damaged.size()].second;
        const std::vector<std::string> pieces { "<",  ">",    "\"", "&", "</c>", "<c>", "9999999999",
                                                "-1", "\xFF", "",   " ", "<!--", "]]>" };

        for (auto faults = 1 + random() % 4; faults > 0 && ! content.empty(); --faults)
        {
            const auto place = random() % content.size();
            content.replace (place, random() % 8, pieces[random() % pieces.size()]);
        }

        failureOf (zipped (damaged, ZIP_CM_STORE));

        for (const auto& row : rows)
            for (const auto& cell : row)
                ASSERT_TRUE (juce::CharPointer_UTF8::isValidString (
                    cell.getText().toRawUTF8(), static_cast<int> (cell.getText().getNumBytesAsUTF8())));
    }
}
