// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/ExcelFileHandler.h"
#include "support/TemporaryFolder.h"
#include "support/XMLTree.h"
#include "support/ZipArchive.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

using namespace ZEP::Core;
using namespace ZEP::Overmarks::Testing;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

using Cells = std::vector<RichTextString>;
using Rows = std::vector<Cells>;
using Names = std::vector<std::string>;

juce::String utf8 (const std::string& text)
{
    return juce::String::fromUTF8 (text.data(), static_cast<int> (text.size()));
}

RichTextString::Attribute run (int start, int end, const juce::Font& font, juce::Colour colour)
{
    return { { start, end }, font, colour };
}

RichTextString rich (const std::string& text, const std::vector<RichTextString::Attribute>& runs)
{
    RichTextString made (utf8 (text));
    made.applyAttributes (runs);
    return made;
}

const juce::Colour black { 0xff000000 };
const juce::Font plain;
const juce::Font bold = juce::Font().boldened();

class WorkbookWriterTest : public testing::Test
{
protected:
    /** Writes the rows and reads the parts of the workbook. */
    Parts written (Rows rows)
    {
        juce::String error = "left over";
        ExcelFileHandler().writeFileContent (folder.directory() + "/list.xlsx", rows, error);
        EXPECT_EQ (error, "");
        EXPECT_EQ (folder.names(), Names { "list.xlsx" });
        return unzipped (folder.bytes ("list.xlsx"));
    }

    std::unique_ptr<pugi::xml_document> sheetOf (const Rows& rows)
    {
        return treeOf (partNamed (written (rows), "xl/worksheets/sheet1.xml"));
    }

    /** What a workbook holds whose second row is one cell. */
    struct OneCell
    {
        std::unique_ptr<pugi::xml_document> sheet;
        std::unique_ptr<pugi::xml_document> styles;

        [[nodiscard]] std::string text() const { return textAt (*sheet, "//c[@r='A2']/is/t"); }
        [[nodiscard]] std::string xml() const { return xmlAt (*sheet, "//c[@r='A2']/is"); }

        /** The font of the cell's format. */
        [[nodiscard]] std::string font() const
        {
            const auto format = sheet->select_node ("//c[@r='A2']").node().attribute ("s").as_int();
            const auto path = "//cellXfs/xf[" + std::to_string (format + 1) + "]";
            const auto number = styles->select_node (path.c_str()).node().attribute ("fontId").as_int();
            return xmlAt (*styles, "//fonts/font[" + std::to_string (number + 1) + "]");
        }
    };

    OneCell cell (const RichTextString& text)
    {
        const auto parts = written ({ { juce::String ("Text") }, { text } });
        return { treeOf (partNamed (parts, "xl/worksheets/sheet1.xml")),
                 treeOf (partNamed (parts, "xl/styles.xml")) };
    }

    TemporaryFolder folder;
};

constexpr auto usualFont =
    R"(<font><sz val="11"/><color theme="1"/><name val="Calibri"/><family val="2"/><scheme val="minor"/></font>)";
constexpr auto usualFace = R"(<rFont val="Calibri"/><family val="2"/><scheme val="minor"/>)";

// ---- the workbook ------------------------------------------------------------------------------------------------------

TEST_F (WorkbookWriterTest, everyPartIsXML)
{
    const auto parts = written ({ { juce::String ("a") }, { juce::String ("b") } });
    EXPECT_GE (parts.size(), 8u);

    for (const auto& [name, content] : parts)
        EXPECT_FALSE (treeOf (content)->document_element().empty()) << name;
}

TEST_F (WorkbookWriterTest, cellsStandInTheirPlaces)
{
    const auto sheet =
        sheetOf ({ { juce::String ("a"), juce::String ("b") }, {}, { {}, juce::String ("c") } });
    EXPECT_EQ (valuesAt (*sheet, "//c/@r"), (Names { "A1", "B1", "B3" }));
    EXPECT_EQ (valuesAt (*sheet, "//c/is/t"), (Names { "a", "b", "c" }));
}

TEST_F (WorkbookWriterTest, theSheetHasAName)
{
    const auto book = treeOf (partNamed (written ({ { juce::String ("a") } }), "xl/workbook.xml"));
    EXPECT_EQ (valuesAt (*book, "//sheet/@name"), Names { "Cues" });
}

TEST_F (WorkbookWriterTest, theHeadingIsBoldAndStaysInView)
{
    const auto parts = written ({ { juce::String ("Text") }, { juce::String ("a") } });
    const auto sheet = treeOf (partNamed (parts, "xl/worksheets/sheet1.xml"));
    const auto styles = treeOf (partNamed (parts, "xl/styles.xml"));
    const auto fontOf = [&] (const char* cell)
    {
        const auto format = sheet->select_node (cell).node().attribute ("s").as_int() + 1;
        const auto xf =
            styles->select_node (("//cellXfs/xf[" + std::to_string (format) + "]").c_str()).node();
        EXPECT_EQ (std::string (xf.child ("alignment").attribute ("vertical").value()), "top");
        EXPECT_EQ (std::string (xf.child ("alignment").attribute ("wrapText").value()), "1");
        const auto font = xf.attribute ("fontId").as_int() + 1;
        return xmlAt (*styles, "//fonts/font[" + std::to_string (font) + "]");
    };
    EXPECT_EQ (fontOf ("//c[@r='A1']"), std::string (usualFont).replace (6, 0, "<b/>"));
    EXPECT_EQ (fontOf ("//c[@r='A2']"), usualFont);
    EXPECT_EQ (valuesAt (*sheet, "//pane/@ySplit"), Names { "1" });
    EXPECT_EQ (valuesAt (*sheet, "//pane/@topLeftCell"), Names { "A2" });
    EXPECT_EQ (valuesAt (*sheet, "//pane/@state"), Names { "frozen" });
}

TEST_F (WorkbookWriterTest, theTableCanBeFiltered)
{
    const Rows rows (4, Cells { juce::String ("a"), juce::String ("b") });
    EXPECT_EQ (valuesAt (*sheetOf (rows), "//autoFilter/@ref"), Names { "A1:B4" });
    EXPECT_EQ (valuesAt (*sheetOf ({ { juce::String ("a") } }), "//autoFilter/@ref"), Names { "A1" });
}

TEST_F (WorkbookWriterTest, thePaperHasTheHeadingOnEachPage)
{
    const auto parts = written ({ { juce::String ("a") } });
    const auto book = treeOf (partNamed (parts, "xl/workbook.xml"));
    const auto sheet = treeOf (partNamed (parts, "xl/worksheets/sheet1.xml"));
    EXPECT_EQ (textAt (*book, "//definedName[@name='_xlnm.Print_Titles']"), "Cues!$1:$1");
    EXPECT_EQ (valuesAt (*sheet, "//pageSetup/@orientation"), Names { "landscape" });
    EXPECT_EQ (valuesAt (*sheet, "//pageSetup/@fitToHeight"), Names { "0" });
}

TEST_F (WorkbookWriterTest, columnsAreAsWideAsTheirTextWithinBounds)
{
    const auto sheet =
        sheetOf ({ { juce::String ("A"), juce::String ("Engineering"), juce::String ("Text"), {} },
                   { juce::String ("b"), juce::String ("c"), juce::String ("twelve chars\nor\nless") },
                   { {}, {}, {}, juce::String::repeatedString ("long ", 100) } });
    const auto widths = valuesAt (*sheet, "//col/@width");
    ASSERT_EQ (widths.size(), 4u);
    EXPECT_EQ (std::stoi (widths[0]), 8);
    EXPECT_EQ (std::stoi (widths[1]), 15);
    EXPECT_EQ (std::stoi (widths[2]), 13);
    EXPECT_EQ (std::stoi (widths[3]), 60);
}

TEST_F (WorkbookWriterTest, rowsAreHighEnoughForTheirText)
{
    const auto sheet = sheetOf ({ { juce::String ("Text") },
                                  { juce::String ("one line") },
                                  { juce::String ("one\ntwo\nthree") },
                                  { juce::String::repeatedString ("12345", 13) },
                                  { rich ("big", { run (0, 3, plain.withHeight (22.0f), black) }) },
                                  { juce::String::repeatedString ("long ", 3000) } });
    const auto heights = [&sheet] (const char* attribute)
    {
        Names values;

        for (const auto& row : sheet->select_nodes ("//row"))
            values.emplace_back (row.node().attribute (attribute).value());

        return values;
    };
    EXPECT_EQ (heights ("ht"), (Names { "", "", "45", "30", "30", "409" }));
    EXPECT_EQ (heights ("customHeight"), (Names { "", "", "1", "1", "1", "1" }));
}

TEST_F (WorkbookWriterTest, aTableWithoutRowsIsAnEmptySheet)
{
    EXPECT_THAT (valuesAt (*sheetOf ({}), "//c/@r"), IsEmpty());
    EXPECT_THAT (valuesAt (*sheetOf ({ {}, {} }), "//c/@r"), IsEmpty());
    EXPECT_THAT (valuesAt (*sheetOf ({ { juce::String() } }), "//c/@r"), IsEmpty());
}

TEST_F (WorkbookWriterTest, equalTablesAreEqualFiles)
{
    const Rows rows { { juce::String ("a") }, { rich ("bold", { run (1, 2, bold, black) }) } };
    written (rows);
    const auto first = folder.bytes ("list.xlsx");
    juce::Thread::sleep (1100); // a date of creation would count seconds
    written (rows);
    EXPECT_EQ (folder.bytes ("list.xlsx"), first);
}

// ---- text stays text ---------------------------------------------------------------------------------------------------

class TextStaysText : public WorkbookWriterTest, public testing::WithParamInterface<const char*>
{
};

TEST_P (TextStaysText, asItIs)
{
    const auto made = cell (utf8 (GetParam()));
    EXPECT_EQ (made.text(), GetParam());
    EXPECT_EQ (valuesAt (*made.sheet, "//c[@r='A2']/@t"), Names { "inlineStr" });
    EXPECT_THAT (valuesAt (*made.sheet, "//f | //v | //hyperlink"), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P (WorkbookWriter, TextStaysText,
                          testing::Values ("=1+1", "+1", "-1", "@SUM(A1)", "{=A1}", "00123", "1e5", "12.50",
                                           "TRUE", "#N/A", "01:00:00:00", "2026-01-01", "1/2",
                                           "http://example.org/a?b=c", "mailto:a@example.org",
                                           "internal:Sheet1!A1", "'apostrophe", "\"", "<b>&amp;</b>",
                                           " leading", "trailing ", "  ", "\n", "\nline\n", "a\n\nb",
                                           "tab\tand  two blanks", "Größe 少女 🎬", "e\xcc\x81", "\xc2\xa0",
                                           "]]>", "<!-- -->", "\x7f"));

TEST_F (WorkbookWriterTest, whatIsTypedIntoACellLaterIsTextToo)
{
    const auto parts = written ({ { juce::String ("Cue") }, { juce::String ("007") } });
    const auto styles = treeOf (partNamed (parts, "xl/styles.xml"));
    constexpr auto textFormat = "49";
    EXPECT_EQ (valuesAt (*styles, "//cellXfs/xf[position() > 1]/@numFmtId"),
               (Names { textFormat, textFormat }));

    // Also below the table, and no cell is marked as a mistake.
    const auto sheet = treeOf (partNamed (parts, "xl/worksheets/sheet1.xml"));
    EXPECT_EQ (valuesAt (*sheet, "//col/@style"), valuesAt (*sheet, "//c[@r='A2']/@s"));
    EXPECT_EQ (valuesAt (*sheet, "//ignoredError/@numberStoredAsText"), Names { "1" });
}

TEST_F (WorkbookWriterTest, whatXMLCannotHoldIsEscaped)
{
    EXPECT_EQ (cell (utf8 ("a\r\nb")).text(), "a_x000D_\nb");
    EXPECT_EQ (cell (utf8 ("\x01")).text(), "_x0001_");
    EXPECT_EQ (cell (utf8 ("_x000D_")).text(), "_x005F_x000D_");
    EXPECT_EQ (cell (utf8 ("\xef\xbf\xbf")).text(), "_xFFFF_");
    EXPECT_EQ (cell (juce::String::charToString (0xd83d)).text(), "_xD83D_");
}

// ---- looks ---------------------------------------------------------------------------------------------------------------

TEST_F (WorkbookWriterTest, runsKeepTheirLooks)
{
    const auto made = cell (rich (
        "plain bold red", { run (6, 10, bold, black), run (11, 14, plain, juce::Colour (0xffff0010)) }));
    EXPECT_EQ (made.xml(),
               R"(<is><r><t xml:space="preserve">plain </t></r><r><rPr><b/><sz val="11"/><color theme="1"/>)"
                   + std::string (usualFace)
                   + R"(</rPr><t xml:space="preserve">bold</t></r><r><t xml:space="preserve"> </t></r>)"
                     R"(<r><rPr><sz val="11"/><color rgb="FFFF0010"/>)"
                   + usualFace + R"(</rPr><t xml:space="preserve">red</t></r></is>)");
    EXPECT_EQ (made.font(), usualFont);
}

TEST_F (WorkbookWriterTest, aRunHasEverythingThatAFontMayHave)
{
    auto font =
        juce::Font ("Courier New", 20.25f, juce::Font::bold | juce::Font::italic | juce::Font::underlined);
    font = RichTextString::withStrikethrough (font, true);
    EXPECT_EQ (
        cell (rich ("ab", { run (1, 2, font, juce::Colour (0x80123456)) })).xml(),
        R"(<is><r><t xml:space="preserve">a</t></r><r><rPr><b/><i/><strike/><u/><sz val="20.25"/>)"
        R"(<color rgb="FF123456"/><rFont val="Courier New"/></rPr><t xml:space="preserve">b</t></r></is>)");
}

TEST_F (WorkbookWriterTest, aTextOfOneLookGetsACellFormat)
{
    const auto made =
        cell (rich (" =1+1", { run (0, 5, plain.withHeight (24.0f).italicised(), juce::Colours::blue) }));
    EXPECT_EQ (made.text(), " =1+1");
    EXPECT_EQ (made.xml(), R"(<is><t xml:space="preserve"> =1+1</t></is>)");
    EXPECT_EQ (
        made.font(),
        R"(<font><i/><sz val="24"/><color rgb="FF0000FF"/><name val="Calibri"/><family val="2"/><scheme val="minor"/></font>)");
}

TEST_F (WorkbookWriterTest, neighboursOfOneLookAreOneRun)
{
    const auto made = cell (rich ("abcd", { run (0, 2, bold, black), run (2, 4, bold, black) }));
    EXPECT_EQ (made.xml(), "<is><t>abcd</t></is>");
    EXPECT_EQ (made.font(), std::string (usualFont).replace (6, 0, "<b/>"));
}

TEST_F (WorkbookWriterTest, whatASpreadsheetCannotShowIsNoLook)
{
    const auto made =
        cell (rich ("ab", { run (0, 1, plain.withExtraKerningFactor (0.5f), black),
                            run (1, 2, plain.withHorizontalScale (2.0f), juce::Colour (0x01000000)) }));
    EXPECT_EQ (made.xml(), "<is><t>ab</t></is>");
    EXPECT_EQ (made.font(), usualFont);
}

TEST_F (WorkbookWriterTest, whatIsNoCharacterIsNoPartOfATypefacesName)
{
    const auto typeface = [] (const std::string& name)
    { return juce::Font (utf8 (name), 15.0f, juce::Font::plain); };
    const auto odd = typeface ("A\x01r\x1f"
                               "ia\x7fl\xc2\x85\n \xef\xbf\xbe\xef\xbf\xbf"
                               "\xc3\x84");
    EXPECT_THAT (cell (rich ("ab", { run (0, 2, odd, black) })).font(),
                 HasSubstr ("<name val=\"Arial Ä\"/>"));
    EXPECT_THAT (cell (rich ("ab", { run (0, 1, odd, black) })).xml(),
                 HasSubstr ("<rFont val=\"Arial Ä\"/>"));
    EXPECT_THAT (cell (rich ("ab", { run (0, 2, typeface ("\x01\x02"), black) })).font(),
                 HasSubstr ("<name val=\"Calibri\"/>"));
}

TEST_F (WorkbookWriterTest, aTypefacesNameOfManyMegabytesIsNone)
{
    const juce::Font endless (juce::String (std::string (std::size_t { 20 } << 20U, 'x')), 15.0f,
                              juce::Font::plain);
    EXPECT_THAT (cell (rich ("ab", { run (0, 2, endless, black) })).font(),
                 HasSubstr ("<name val=\"Calibri\"/>"));
}

TEST_F (WorkbookWriterTest, sizesStayWithinThoseOfASpreadsheet)
{
    EXPECT_EQ (
        textAt (*cell (rich ("ab", { run (0, 1, plain.withHeight (5000.0f), black) })).sheet, "//sz/@val"),
        "");
    EXPECT_EQ (
        valuesAt (*cell (rich ("ab", { run (0, 1, plain.withHeight (5000.0f), black) })).sheet, "//sz/@val"),
        Names { "409" });
    EXPECT_EQ (
        valuesAt (*cell (rich ("ab", { run (0, 1, plain.withHeight (0.2f), black) })).sheet, "//sz/@val"),
        Names { "1" });
    EXPECT_EQ (
        valuesAt (*cell (rich ("ab", { run (0, 1, plain.withHeight (10.5f), black) })).sheet, "//sz/@val"),
        Names { "10.5" });
}

TEST_F (WorkbookWriterTest, runsOfManyBytesAndHalfPairsStayWhole)
{
    const auto made = cell (rich ("🎬少é_x000D_", { run (0, 1, bold, black), run (2, 7, bold, black) }));
    EXPECT_EQ (valuesAt (*made.sheet, "//c[@r='A2']//t"), (Names { "🎬", "少", "é_x005F_x00", "0D_" }));
}

TEST_F (WorkbookWriterTest, theHeadingIsBoldAlsoWhereItIsRich)
{
    const auto parts = written ({ { rich ("ab", { run (1, 2, plain.italicised(), black) }),
                                    rich ("c", { run (0, 1, plain.italicised(), black) }) },
                                  { {}, rich ("c", { run (0, 1, plain.italicised(), black) }) } });
    const auto sheet = treeOf (partNamed (parts, "xl/worksheets/sheet1.xml"));
    EXPECT_EQ (sheet->select_nodes ("//c[@r='A1']//rPr/b").size(), 2u);
    EXPECT_NE (valuesAt (*sheet, "//c[@r='B1']/@s"), valuesAt (*sheet, "//c[@r='B2']/@s"));
}

TEST_F (WorkbookWriterTest, thousandsOfColoursAreNoBurden)
{
    Rows rows { { juce::String ("Text") } };
    constexpr int numberOfColours = 3000;

    for (int i = 0; i < numberOfColours; ++i)
        rows.push_back ({ rich (
            "a", { run (0, 1, plain, juce::Colour (0xff100000u + static_cast<juce::uint32> (i))) }) });

    const auto parts = written (rows);
    const auto sheet = treeOf (partNamed (parts, "xl/worksheets/sheet1.xml"));
    const auto styles = treeOf (partNamed (parts, "xl/styles.xml"));

    // A spreadsheet takes 512 fonts; whatever is beyond has its own in the cell.
    EXPECT_LE (styles->select_nodes ("//fonts/font").size(), 300u);
    EXPECT_EQ (sheet->select_nodes ("//c").size(), 3001u);
    EXPECT_EQ (xmlAt (*sheet, "//c[@r='A3001']/is"), R"(<is><r><rPr><sz val="11"/><color rgb="FF100BB7"/>)"
                                                         + std::string (usualFace)
                                                         + R"(</rPr><t xml:space="preserve">a</t></r></is>)");
}

// ---- limits --------------------------------------------------------------------------------------------------------------

constexpr int mostInACell = 32767;

TEST_F (WorkbookWriterTest, aCellHolds32767Characters)
{
    const auto most = juce::String::repeatedString ("a", mostInACell);
    EXPECT_EQ (cell (most).text(), most.toStdString());

    const auto pairs = utf8 ("a") + juce::String::repeatedString (utf8 ("🎬"), mostInACell / 2);
    EXPECT_EQ (cell (pairs).text(), pairs.toStdString());
}

TEST_F (WorkbookWriterTest, escapesAndMarkupDoNotCount)
{
    const auto breaks = juce::String::repeatedString ("\r", mostInACell);
    EXPECT_EQ (cell (breaks).text(), juce::String::repeatedString ("_x000D_", mostInACell).toStdString());

    const auto ampersands = juce::String::repeatedString ("&", mostInACell).toStdString();
    const auto made = cell (rich (ampersands, { run (0, 1, bold, black) }));
    EXPECT_EQ (valuesAt (*made.sheet, "//c[@r='A2']//t"), (Names { "&", ampersands.substr (1) }));
}

TEST_F (WorkbookWriterTest, aCellMayHaveThousandsOfRuns)
{
    std::vector<RichTextString::Attribute> runs;

    for (int i = 0; i < mostInACell; i += 2)
        runs.push_back (run (i, i + 1, bold, black));

    const auto made = cell (rich (std::string (mostInACell, 'a'), runs));
    EXPECT_EQ (made.sheet->select_nodes ("//c[@r='A2']//r").size(), static_cast<std::size_t> (mostInACell));
}

class WorkbookLimits : public WorkbookWriterTest
{
protected:
    std::string errorOf (Rows rows)
    {
        folder.write ("list.xlsx", "older");
        juce::String error;
        ExcelFileHandler().writeFileContent (folder.directory() + "/list.xlsx", rows, error);
        EXPECT_EQ (folder.bytes ("list.xlsx"), "older");
        EXPECT_EQ (folder.names(), Names { "list.xlsx" });
        const auto beginning = "Can't write " + folder.directory() + "/list.xlsx: ";
        EXPECT_TRUE (error.startsWith (beginning)) << error;
        return error.substring (beginning.length()).toStdString();
    }
};

TEST_F (WorkbookLimits, aLongerTextIsToldWithItsPlace)
{
    Rows rows (12, Cells (8));
    rows[11][7] = juce::String::repeatedString ("a", mostInACell + 1);
    EXPECT_EQ (errorOf (rows),
               "the cell H12 (row 12, column 8) holds 32768 characters, and a cell has room for 32767");
    rows[11][7] = juce::String::repeatedString (utf8 ("🎬"), mostInACell / 2 + 1);
    EXPECT_EQ (errorOf (rows),
               "the cell H12 (row 12, column 8) holds 32768 characters, and a cell has room for 32767");
}

TEST_F (WorkbookLimits, tooManyRowsAreTold)
{
    EXPECT_EQ (errorOf (Rows (1048577)), "there are 1048577 rows, and a sheet has room for 1048576");
}

TEST_F (WorkbookLimits, tooManyColumnsAreTold)
{
    EXPECT_EQ (errorOf ({ {}, {}, Cells (16385) }),
               "row 3 has 16385 columns, and a sheet has room for 16384");
}

TEST_F (WorkbookWriterTest, theLastColumnIsWritten)
{
    Rows rows { Cells (16384) };
    rows[0].back() = juce::String ("last");
    EXPECT_EQ (textAt (*sheetOf (rows), "//c[@r='XFD1']/is/t"), "last");
}

} // namespace
