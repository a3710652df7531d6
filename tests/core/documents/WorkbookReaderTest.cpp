// SPDX-License-Identifier: GPL-3.0-only
// Cells, rows and sheets of workbooks, and how their texts look.
#include "core/documents/WorkbookReaderSupport.h"

using ZEP::Core::ExcelFileHandler;
using Runs = std::vector<std::string>;

TEST_F (WorkbookReading, sharedTextsStandInTheirCells)
{
    Book book;
    book.strings = { "<t>Start TC</t>", "<t>Text</t>", "<t>Who &amp; why?</t>" };
    book.sheetData = R"(<row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1" t="s"><v>1</v></c></row>)"
                     R"(<row r="2"><c r="A2" t="s"><v>2</v></c><c r="B2" t="s"><v>2</v></c></row>)";
    EXPECT_EQ (read (book), (Texts { { "Start TC", "Text" }, { "Who & why?", "Who & why?" } }));
}

TEST_F (WorkbookReading, inlineTextsStandInTheirCells)
{
    EXPECT_EQ (
        readRows (R"(<row r="1"><c r="A1" t="inlineStr"><is><t>Hello</t></is></c>)"
                  R"(<c r="B1" t="inlineStr"><is><r><t>two </t></r><r><t>runs</t></r></is></c></row>)"),
        (Texts { { "Hello", "two runs" } }));
}

TEST_F (WorkbookReading, cellsAndRowsStandInTheirTruePlaces)
{
    EXPECT_EQ (readRows (R"(<row r="2"><c r="C2"><v>1</v></c></row><row r="4"><c r="A4"><v>2</v></c></row>)"),
               (Texts { { "", "", "" }, { "", "", "1" }, {}, { "2" } }));
}

TEST_F (WorkbookReading, cellsAndRowsInAnyOrderStandInTheirTruePlaces)
{
    EXPECT_EQ (readRows (R"(<row r="2"><c r="B2"><v>4</v></c><c r="A2"><v>3</v></c></row>)"
                         R"(<row r="1"><c r="A1"><v>1</v></c></row>)"),
               (Texts { { "1", "" }, { "3", "4" } }));
}

TEST_F (WorkbookReading, cellsAndRowsWithoutAPlaceFollowTheLast)
{
    EXPECT_EQ (
        readRows (R"(<row><c><v>1</v></c><c><v>2</v></c></row>)"
                  R"(<row r="3"><c r="B3"><v>3</v></c><c><v>4</v></c></row><row><c><v>5</v></c></row>)"),
        (Texts { { "1", "2", "" }, {}, { "", "3", "4" }, { "5" } }));
}

TEST_F (WorkbookReading, cellsInPlacesThatNoSheetHasAreLeftOut)
{
    const std::string data =
        R"(<row r="1"><c r="A1"><v>1</v></c><c r="XFE1"><v>2</v></c><c r="ZZZ1"><v>3</v></c></row>)"
        R"(<row r="1048577"><c r="A1048577"><v>4</v></c></row><row r="2000000"><c r="A2000000"><v>5</v></c></row>)"
        R"(<row r="2"><c r="B2"><v>6</v></c></row>)";
    const Texts expected { { "1", "" }, { "", "6" } };
    EXPECT_EQ (readRows (data), expected);
    EXPECT_EQ (readRows (data + "<!-- written anew -->"), expected);
    EXPECT_EQ (
        readRows (R"(<row r="1"><c r="A1"><v>1</v></c><c r="ZZZZ1"><v>2</v></c><c r="17"><v>3</v></c></row>)"
                  R"(<row r="0"><c r="A0"><v>4</v></c></row><row r="-5"><c r="A-5"><v>5</v></c></row>)"
                  R"(<row r="99999999999"><c><v>6</v></c></row>)"),
        (Texts { { "1" } }));
}

TEST_F (WorkbookReading, whatHasNoPlaceFollowsTheLastThatIsInTheSheet)
{
    EXPECT_EQ (readRows (R"(<row r="1"><c r="A1"><v>1</v></c><c r="XFE1"><v>2</v></c><c><v>3</v></c></row>)"
                         R"(<row r="2000000"><c><v>4</v></c></row><row r=""><c r=""><v>5</v></c></row>)"
                         R"(<row r=" 4 "><c r=" B4 "><v>6</v></c></row>)"),
               (Texts { { "1", "3" }, { "5" }, {}, { "", "6" } }));
}

TEST_F (WorkbookReading, aRowWhoseNumberCantBeReadFollowsTheLast)
{
    EXPECT_EQ (
        readRows (R"(<row r="1"><c r="A1"><v>1</v></c></row><row r="what"><c r="A1"><v>2</v></c></row>)"
                  R"(<row r="2.0"><c r="B2"><v>3</v></c></row><row r="-"><c><v>4</v></c></row>)"
                  R"(<row r="6"><c r="A6"><v>5</v></c></row>)"),
        (Texts { { "1", "" }, { "2" }, { "", "3" }, { "4" }, {}, { "5" } }));
}

TEST_F (WorkbookReading, aTableInACommentOrAnExtensionIsNone)
{
    const std::string other = R"(<sheetData><row r="1"><c r="A1"><v>7</v></c></row></sheetData>)";
    const std::string own = R"(<sheetData ><row r="1"><c r="A1"><v>1</v></c></row></sheetData >)";
    const auto readSheet = [this] (const std::string& content)
    {
        Book book;
        book.others = { { "xl/worksheets/sheet1.xml", Book::xml ("worksheet", content) } };
        return read (book);
    };

    for (const auto& hidden : { "<!--" + other + "-->", "<extLst><ext>" + other + "</ext></extLst>",
                                "<?note " + other + "?>", "<![CDATA[" + other + "]]>" })
    {
        EXPECT_EQ (readSheet (hidden + own), (Texts { { "1" } })) << hidden;
        EXPECT_EQ (readSheet (own + hidden), (Texts { { "1" } })) << hidden;
        EXPECT_EQ (readSheet (hidden + "<sheetData/>"), Texts()) << hidden;
        EXPECT_EQ (readSheet ("<sheetData/>" + hidden), Texts()) << hidden;
        EXPECT_EQ (readSheet ("<sheetData >" + hidden + "</sheetData >"), Texts()) << hidden;
    }

    EXPECT_EQ (readSheet ("<!-- one -->" + other + "<!-- two -->"), (Texts { { "7" } }));
}

TEST_F (WorkbookReading, aRowEndsWithItsLastCellAndTheFirstReachesOverAllColumns)
{
    EXPECT_EQ (
        readRows (
            R"(<row r="1"><c r="A1"><v>1</v></c></row><row r="2"><c r="A2"><v>2</v></c><c r="D2"><v>3</v></c></row>)"
            R"(<row r="3"><c r="A3"><v>4</v></c><c r="B3" s="0"/></row>)"),
        (Texts { { "1", "", "", "" }, { "2", "", "", "3" }, { "4", "" } }));
}

TEST_F (WorkbookReading, emptyRowsAreDroppedAtTheEndAndEmptyColumnsToo)
{
    EXPECT_EQ (
        readRows (
            R"(<row r="1"><c r="A1"><v>1</v></c><c r="XFD1" s="1"/></row><row r="2"><c r="B2"><v>2</v></c></row>)"
            R"(<row r="3"><c r="A3" s="1"/></row><row r="1000000"><c r="A1000000" s="1"/></row>)"),
        (Texts { { "1", "" }, { "", "2" } }));
}

TEST_F (WorkbookReading, aSheetOfEmptyCellsHasNoRows)
{
    EXPECT_EQ (readRows (""), Texts());
    EXPECT_EQ (readRows (R"(<row r="1"><c r="A1" s="1"/></row>)"), Texts());
    EXPECT_EQ (readRows (R"(<row r="1"><c r="A1" t="inlineStr"><is><t/></is></c></row>)"), Texts());
}

TEST_F (WorkbookReading, theLastCellOfASheetIsRead)
{
    readRows (R"(<row r="1048576"><c r="XFD1048576"><v>1</v></c></row>)");
    ASSERT_EQ (rows.size(), 1048576u);
    ASSERT_EQ (rows.back().size(), 16384u);
    EXPECT_EQ (rows.back().back().getText(), "1");
    EXPECT_EQ (rows.front().size(), 16384u);
    EXPECT_TRUE (rows[1].empty());
}

TEST_F (WorkbookReading, truthValuesAndErrorsAreShownAsASpreadsheetDoes)
{
    EXPECT_EQ (
        readRows (
            R"(<row r="1"><c r="A1" t="b"><v>1</v></c><c r="B1" t="b"><v>0</v></c>)"
            R"(<c r="C1" t="e"><v>#N/A</v></c><c r="D1" t="e"><v>#DIV/0!</v></c><c r="E1" t="b"><v>true</v></c></row>)"),
        (Texts { { "TRUE", "FALSE", "#N/A", "#DIV/0!", "TRUE" } }));
}

TEST_F (WorkbookReading, ofAFormulaTheResultIsRead)
{
    EXPECT_EQ (
        readRows (
            R"(<row r="1"><c r="A1" t="str"><f>B1&amp;"x"</f><v>text</v></c><c r="B1"><f>1+1</f><v>2</v></c>)"
            R"(<c r="C1" t="b"><f>TRUE()</f><v>1</v></c><c r="D1" t="e"><f>1/0</f><v>#DIV/0!</v></c>)"
            R"(<c r="E1"><f t="shared" ref="E1:E2" si="0">A1</f><v>3</v></c>)"
            R"(<c r="F1"><f t="array" ref="F1:G1">A1</f><v>4</v></c><c r="G1"><f>NOW()</f></c><c r="H1"><v>9</v></c></row>)"),
        (Texts { { "text", "2", "TRUE", "#DIV/0!", "3", "4", "", "9" } }));
}

TEST_F (WorkbookReading, datesAsTextsStandAsTheyAreWritten)
{
    EXPECT_EQ (readRows (R"(<row r="1"><c r="A1" t="d"><v>2024-03-31T12:30:00</v></c></row>)"),
               (Texts { { "2024-03-31 12:30:00" } }));
}

TEST_F (WorkbookReading, whatIsNoNumberStandsAsItIsWritten)
{
    EXPECT_EQ (
        readRows (
            R"(<row r="1"><c r="A1"><v>abc</v></c><c r="B1"><v>NaN</v></c><c r="C1"><v>-1.5E+3</v></c>)"
            R"(<c r="D1"><v>1e999</v></c><c r="E1" t="what"><v>5</v></c><c r="F1"><v>.5</v></c></row>)"),
        (Texts { { "abc", "NaN", "-1500", "1e999", "5", "0.5" } }));
    EXPECT_EQ (
        readRows (R"(<row r="1"><c r="A1"><v>+-5</v></c><c r="B1"><v>++5</v></c><c r="C1"><v>.</v></c>)"
                  R"(<c r="D1"><v>+</v></c><c r="E1"><v>5 6</v></c></row>)"),
        (Texts { { "+-5", "++5", ".", "+", "5 6" } }));
}

TEST_F (WorkbookReading, numbersMayBeWrittenInAnyWayThatIsOne)
{
    EXPECT_EQ (
        readRows (
            R"(<row r="1"><c r="A1"><v>+5</v></c><c r="B1"><v>-.5</v></c><c r="C1"><v>5.</v></c><c r="D1"><v>-5.</v></c>)"
            R"(<c r="E1"><v>5.e2</v></c><c r="F1"><v>+.25</v></c><c r="G1"><v>-0123456789012.5</v></c></row>)"),
        (Texts { { "5", "-0.5", "5", "-5", "500", "0.25", "-123456789012.5" } }));
}

TEST_F (WorkbookReading, whiteSpaceAroundAValueIsNoPartOfIt)
{
    Book book;
    book.strings = { "<t>zero</t>", "<t>one</t>" };
    book.sheetData =
        R"(<row r="1"><c r="A1" t="s"><v> 1 </v></c><c r="B1"><v> 7 </v></c><c r="C1" t="b"><v>)"
        "\n\t1</v></c>"
        R"(<c r="D1" t="e"><v> #N/A</v></c><c r="E1"><v> </v></c><c r="F1" t="str"><v> text </v></c></row>)";
    EXPECT_EQ (read (book), (Texts { { "one", "7", "TRUE", "#N/A", "", " text " } }));
}

TEST_F (WorkbookReading, numbersKeepFifteenDigitsOfWhichTenBehindThePoint)
{
    const std::vector<std::string> numbers { "0.1",      "123456789012345", "-0.0001220703",   "1E+300",
                                             "2.5E-300", "-7E+21",          "999999999999999", "0.3333333333",
                                             "1.25E-10" };
    std::string data;

    for (std::size_t i = 1; i <= numbers.size(); ++i)
        data += "<row r=\"" + std::to_string (i) + "\"><c r=\"A" + std::to_string (i) + "\"><v>"
                + numbers[i - 1] + "</v></c></row>";

    Texts expected;

    for (const auto& number : numbers)
        expected.push_back ({ number });

    EXPECT_EQ (readRows (data), expected);
}

TEST_F (WorkbookReading, textsThatLookLikeNumbersStayTexts)
{
    Book book;
    book.strings = { "<t>00123</t>", "<t>=1+1</t>", "<t xml:space=\"preserve\">  01:00:00:00 </t>" };
    book.sheetData =
        R"(<row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1" t="s"><v>1</v></c><c r="C1" t="s"><v>2</v></c></row>)";
    EXPECT_EQ (read (book), (Texts { { "00123", "=1+1", "  01:00:00:00 " } }));
}

TEST_F (WorkbookReading, numbersOfTextsAndStylesThatAreNotThereGiveEmptyAndPlainCells)
{
    Book book;
    book.strings = { "<t>here</t>" };
    book.sheetData =
        R"(<row r="1"><c r="A1" t="s"><v>99</v></c><c r="B1" t="s"><v>-1</v></c><c r="C1" t="s"><v/></c>)"
        R"(<c r="D1" s="77"><v>5</v></c><c r="E1" t="s"><v>999999999999</v></c><c r="F1" t="s" s="999999999999"><v>0</v></c></row>)";
    EXPECT_EQ (read (book), (Texts { { "", "", "", "5", "", "here" } }));
    EXPECT_EQ (runsOf (0, 5), Runs());
}

TEST_F (WorkbookReading, numbersOfTextsThatAreNotThereNeverMeanTheTextOfAnotherCell)
{
    Book book;
    book.strings = { "<t>here</t>" };
    book.sheetData =
        R"(<row r="1"><c r="A1" t="inlineStr"><is><t>own</t></is></c><c r="B1" t="s"><v>1</v></c>)"
        R"(<c r="C1" t="str"><v>result</v></c><c r="D1" t="s"><v>2</v></c><c r="E1" t="s"><v>3</v></c>)"
        R"(<c r="F1" t="s"><v>0</v></c></row>)";
    EXPECT_EQ (read (book), (Texts { { "own", "", "result", "", "", "here" } }));
}

TEST_F (WorkbookReading, phoneticHelpsAreLeftOut)
{
    Book book;
    book.strings = {
        R"(<t>日本</t><rPh sb="0" eb="2"><t>にほん</t></rPh><phoneticPr fontId="1"/>)",
        R"(<r><t>東</t></r><rPh sb="0" eb="1"><t>ひがし</t></rPh><r><rPr><b/></rPr><t>京</t></r>)", "", "<t/>"
    };
    book.sheetData =
        R"(<row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1" t="s"><v>1</v></c><c r="C1" t="s"><v>2</v></c>)"
        R"(<c r="D1" t="s"><v>3</v></c><c r="E1"><v>1</v></c></row>)";
    EXPECT_EQ (read (book), (Texts { { "日本", "東京", "", "", "1" } }));
    EXPECT_EQ (runsOf (0, 1), Runs { "1-2 bold" });
}

TEST_F (WorkbookReading, escapedCharactersAreDecoded)
{
    Book book;
    book.strings = { "<t>one_x000D_\ntwo_x0009_three</t>",
                     "<t>_x005F_x000D_ _x00e4_ _x_ _x12_ _xD83D__xDE00_ _xD83D_ _x0000_</t>" };
    book.sheetData = R"(<row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1" t="s"><v>1</v></c></row>)";
    EXPECT_EQ (read (book), (Texts { { "one\r\ntwo\tthree", "_x000D_ ä _x_ _x12_ 😀 _xD83D_ " } }));
}

TEST_F (WorkbookReading, commentsAndLiteralSectionsCutNoText)
{
    Book book;
    book.strings = { "<t>a<!-- no -->b<![CDATA[<c>]]>d<?x y?>e</t>" };
    book.sheetData =
        R"(<row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1"><v>1<!-- -->2</v></c><!-- <c r="C1"/> --></row>)";
    EXPECT_EQ (read (book), (Texts { { "ab<c>de", "12" } }));
}

TEST_F (WorkbookReading, prefixesAreUpToTheProgramThatWrites)
{
    Book book;
    book.others = {
        { "xl/worksheets/sheet1.xml",
          R"(<x:worksheet xmlns:x="http://purl.oclc.org/ooxml/spreadsheetml/main"><x:sheetData><x:row r="1">)"
          R"(<x:c r="A1"><x:v>1</x:v></x:c><x:c r="B1" t="inlineStr"><x:is><x:t>b</x:t></x:is></x:c>)"
          R"(</x:row></x:sheetData></x:worksheet>)" }
    };
    EXPECT_EQ (read (book), (Texts { { "1", "b" } }));
}

TEST_F (WorkbookReading, aPartMayBeInUTF16)
{
    Book book;
    const std::string sheet =
        R"(<worksheet><sheetData><row r="1"><c r="A1" t="str"><v>hello</v></c></row></sheetData></worksheet>)";
    std::string bytes = "\xFF\xFE";

    for (const char c : sheet)
        bytes.append ({ c, '\0' });

    book.others = { { "xl/worksheets/sheet1.xml", bytes } };
    EXPECT_EQ (read (book), (Texts { { "hello" } }));
}

TEST_F (WorkbookReading, manyRowsComeInStretchesAndNoneIsLost)
{
    constexpr std::size_t count = 60000;
    std::string data;

    for (std::size_t i = 1; i <= count; ++i)
    {
        const auto row = std::to_string (i);
        data += "<row r=\"" + row + "\" spans=\"1:2\" x14ac:dyDescent=\"0.25\"><c r=\"A" + row + "\"><v>"
                + row + "</v></c><c r=\"B" + row + "\" s=\"0\" t=\"b\"><v>1</v></c></row>\n";
    }

    const auto front =
        std::string (R"(<worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" )")
        + R"(xmlns:x14ac="http://schemas.microsoft.com/office/spreadsheetml/2009/9/ac"><sheetData>)";

    // As it is, and with a cell of the kind that makes all rows be written anew.
    for (const std::string last : { "", R"(<row r="60001"><c r="A60001" t="str"><v>end</v></c></row>)" })
    {
        Book book;
        book.others = { { "xl/worksheets/sheet1.xml", front + data + last + "</sheetData></worksheet>" } };
        read (book);
        ASSERT_EQ (rows.size(), count + (last.empty() ? 0 : 1));

        for (std::size_t i = 0; i < count; ++i)
        {
            ASSERT_EQ (rows[i].size(), 2u) << i;
            ASSERT_EQ (rows[i][0].getText().getIntValue(), static_cast<int> (i + 1));
            ASSERT_EQ (rows[i][1].getText(), "TRUE") << i;
        }
    }
}

TEST_F (WorkbookReading, numbersAndTimesAreShownInTheirCellsFormat)
{
    Book book;
    book.styles =
        R"(<numFmts><numFmt numFmtId="164" formatCode="hh:mm:ss.000"/><numFmt numFmtId="165" formatCode="00&quot;:&quot;00&quot;:&quot;00&quot;:&quot;00"/></numFmts>)"
        R"(<fonts><font/></fonts><cellXfs><xf numFmtId="0" fontId="0"/><xf numFmtId="21" fontId="0"/><xf numFmtId="46" fontId="0"/>)"
        R"(<xf numFmtId="164" fontId="0"/><xf numFmtId="165" fontId="0"/><xf numFmtId="14" fontId="0"/><xf numFmtId="10" fontId="0"/></cellXfs>)";
    book.sheetData =
        R"(<row r="1"><c r="A1" s="1"><v>0.0416666666666667</v></c><c r="B1" s="2"><v>1.5</v></c><c r="C1" s="3"><v>4.2824074074074075E-2</v></c>)"
        R"(<c r="D1" s="4"><v>1020304</v></c><c r="E1" s="5"><v>45382</v></c><c r="F1" s="6"><v>0.125</v></c><c r="G1" s="0"><v>0.1</v></c></row>)";
    EXPECT_EQ (read (book), (Texts { { "01:00:00", "36:00:00", "01:01:40.000", "01:02:03:04", "2024-03-31",
                                       "12.50%", "0.1" } }));

    book.workbookPr = R"(date1904="1")";
    EXPECT_EQ (read (book)[0][4], "2028-04-01");
}

//==============================================================================
TEST_F (WorkbookReading, theSheetInFrontIsRead)
{
    Book book;
    book.sheets = { { "One", R"(<row r="1"><c r="A1"><v>1</v></c></row>)", "" },
                    { "Two", R"(<row r="1"><c r="A1"><v>2</v></c></row>)", R"(state="hidden")" },
                    { "Three", R"(<row r="1"><c r="A1"><v>3</v></c></row>)", "" } };
    EXPECT_EQ (read (book), (Texts { { "1" } }));

    book.workbookView = R"(activeTab="2")";
    EXPECT_EQ (read (book), (Texts { { "3" } }));

    book.workbookView = R"(activeTab="1")"; // hidden: the next one is in front
    EXPECT_EQ (read (book), (Texts { { "3" } }));

    book.workbookView = R"(activeTab="77")";
    EXPECT_EQ (read (book), (Texts { { "1" } }));
}

TEST_F (WorkbookReading, aHiddenSheetInFrontOfNothingElseIsRead)
{
    Book book;
    book.sheets = { { "One", R"(<row r="1"><c r="A1"><v>1</v></c></row>)", R"(state="veryHidden")" } };
    EXPECT_EQ (read (book), (Texts { { "1" } }));
}

TEST_F (WorkbookReading, sheetsHaveNamesAndCanBeReadByThem)
{
    Book book;
    book.sheets = { { "Reel 1", R"(<row r="1"><c r="A1"><v>1</v></c></row>)", "" },
                    { "Rücksicht &amp; Co", R"(<row r="1"><c r="A1"><v>2</v></c></row>)",
                      R"(state="hidden")" } };
    folder.write ("list.xlsx", book.zipped());

    ExcelFileHandler handler;
    std::vector<juce::String> names { "from before" };
    int sheetInFront = -1;
    juce::String error = "from before";
    handler.readSheetNames (path(), names, sheetInFront, error);
    EXPECT_EQ (error, "");
    EXPECT_EQ (names, (std::vector<juce::String> { "Reel 1", juce::CharPointer_UTF8 ("Rücksicht & Co") }));
    EXPECT_EQ (sheetInFront, 0);

    handler.readSheetContent (path(), juce::CharPointer_UTF8 ("rücksicht & co"), rows, error);
    EXPECT_EQ (error, "");
    EXPECT_EQ (texts(), (Texts { { "2" } }));

    handler.readSheetContent (path(), "Reel 2", rows, error);
    EXPECT_EQ (error, "The workbook has no sheet \"Reel 2\".");
    EXPECT_EQ (texts(), (Texts { { "2" } }));
}

TEST_F (WorkbookReading, partsAreFoundWhereTheRelationsSay)
{
    Book book;
    const auto sheet =
        Book::xml ("worksheet", R"(<sheetData><row r="1"><c r="A1" t="s"><v>0</v></c></row></sheetData>)");
    book.leftOut = { "xl/workbook.xml", "xl/_rels/workbook.xml.rels", "xl/worksheets/sheet1.xml",
                     "xl/sharedStrings.xml" };
    book.others = {
        { "_rels/.rels", Book::relations (Book::relation ("a", "officeDocument", "/deep/er/book.xml")) },
        { "deep/er/book.xml", Book::xml ("workbook", R"(<sheets><sheet name="S" r:id="x"/></sheets>)") },
        { "deep/er/_rels/book.xml.rels",
          Book::relations (Book::relation ("x", "worksheet", "../Sheets/./one.xml")
                           + Book::relation ("y", "sharedStrings", "/TEXTS.xml")) },
        { "deep/sheets/one.xml", sheet },
        { "texts.xml", Book::xml ("sst", "<si><t>found</t></si>") }
    };
    EXPECT_EQ (read (book), (Texts { { "found" } }));
}

//==============================================================================
TEST_F (WorkbookReading, runsOfSharedAndInlineTextsKeepTheirLook)
{
    const std::string rich =
        R"(<r><t xml:space="preserve">a </t></r><r><rPr><b/></rPr><t>bc</t></r><r><rPr><i/><u/></rPr><t>d</t></r>)"
        R"(<r><rPr><strike/><u val="double"/></rPr><t>e</t></r><r><rPr><sz val="18"/><color rgb="FFFF0000"/></rPr><t>😀f</t></r>)"
        R"(<r><rPr><b val="0"/><u val="none"/><strike val="false"/><color rgb="FF000000"/></rPr><t>g</t></r>)";
    Book book;
    book.strings = { rich };
    book.sheetData =
        R"(<row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1" t="inlineStr"><is>)" + rich + "</is></c></row>";
    EXPECT_EQ (read (book), (Texts { { "a bcde😀fg", "a bcde😀fg" } }));

    const Runs runs { "2-4 bold", "4-5 italic underlined", "5-6 underlined struck", "6-8 18 ffff0000" };
    EXPECT_EQ (runsOf (0, 0), runs);
    EXPECT_EQ (runsOf (0, 1), runs);
}

TEST_F (WorkbookReading, largeTextsAreSharedByTheirCellsAndStillTakeEachCellsFont)
{
    std::string rich;
    std::string text;

    for (int i = 0; i < 10; ++i)
    {
        rich += "<r><t>a</t></r><r><rPr><i/></rPr><t>b</t></r>";
        text += "ab";
    }

    Book book;
    book.styles =
        R"(<fonts><font/><font><b/></font></fonts><cellXfs><xf fontId="0"/><xf fontId="1"/></cellXfs>)";
    book.strings = { rich, "<t>" + std::string (3000, 'x') + "</t>" };
    book.sheetData =
        R"(<row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1" s="1" t="s"><v>0</v></c><c r="C1" t="s"><v>0</v></c>)"
        R"(<c r="D1" t="s"><v>1</v></c><c r="E1" s="1" t="s"><v>1</v></c><c r="F1" s="1" t="s"><v>1</v></c></row>)";
    const std::string large (3000, 'x');
    EXPECT_EQ (read (book), (Texts { { text, text, text, large, large, large } }));
    EXPECT_EQ (runsOf (0, 0).size(), 10u);
    EXPECT_EQ (runsOf (0, 1).front(), "0-1 bold");
    EXPECT_EQ (runsOf (0, 1).size(), 20u);
    EXPECT_EQ (rows[0][2], rows[0][0]);
    EXPECT_EQ (runsOf (0, 3), Runs());
    EXPECT_EQ (runsOf (0, 5), Runs { "0-3000 bold" });

    for (const std::size_t first : { std::size_t { 0 }, std::size_t { 3 } })
        for (std::size_t i = first; i < first + 3; ++i)
            EXPECT_EQ (rows[0][i].getText().toRawUTF8(), rows[0][first].getText().toRawUTF8()) << i;
}

TEST_F (WorkbookReading, aCellsOwnFontIsTheLookOfItsText)
{
    Book book;
    book.styles =
        R"(<fonts><font><sz val="11"/><color theme="1"/><name val="Calibri"/></font>)"
        R"(<font><b/><sz val="11"/><color theme="1"/></font><font><i/><u/><strike/><sz val="20"/><color indexed="10"/></font></fonts>)"
        R"(<cellXfs><xf numFmtId="0" fontId="0"/><xf numFmtId="0" fontId="1"/><xf numFmtId="0" fontId="2"/></cellXfs>)";
    book.strings = { "<t>word</t>", "<r><t>own</t></r><r><rPr><sz val=\"11\"/><i/></rPr><t>run</t></r>" };
    book.sheetData =
        R"(<row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1" t="s" s="1"><v>0</v></c><c r="C1" s="2"><v>12</v></c>)"
        R"(<c r="D1" s="1" t="s"><v>1</v></c><c r="E1" s="1" t="b"><v>1</v></c></row>)";
    EXPECT_EQ (read (book), (Texts { { "word", "word", "12", "ownrun", "TRUE" } }));
    EXPECT_EQ (runsOf (0, 0), Runs());
    EXPECT_EQ (runsOf (0, 1), Runs { "0-4 bold" });
    EXPECT_EQ (runsOf (0, 2), Runs { "0-2 italic underlined struck 20 ffff0000" });
    EXPECT_EQ (runsOf (0, 3), (Runs { "0-3 bold", "3-6 italic" }));
    EXPECT_EQ (runsOf (0, 4), Runs { "0-4 bold" });
}

TEST_F (WorkbookReading, theWorkbooksPlainTextIsPlainWhateverItsSizeAndColour)
{
    Book book;
    book.styles =
        R"(<fonts><font><sz val="9"/><color rgb="FF333333"/></font><font><b/><sz val="9"/><color rgb="FF333333"/></font>)"
        R"(<font><sz val="11"/></font></fonts><cellXfs><xf fontId="0"/><xf fontId="1"/><xf fontId="2"/></cellXfs>)";
    book.sheetData =
        R"(<row r="1"><c r="A1"><v>1</v></c><c r="B1" s="1"><v>2</v></c><c r="C1" s="2"><v>3</v></c></row>)";
    read (book);
    EXPECT_EQ (runsOf (0, 0), Runs());
    EXPECT_EQ (runsOf (0, 1), Runs { "0-1 bold" });
    EXPECT_EQ (runsOf (0, 2), Runs { "0-1 11" });
}

TEST_F (WorkbookReading, coloursComeFromTheThemeWithItsTints)
{
    Book book;
    book.theme =
        R"(<a:dk1><a:sysClr val="windowText" lastClr="000000"/></a:dk1><a:lt1><a:srgbClr val="FFFFFF"/></a:lt1>)"
        R"(<a:accent1><a:srgbClr val="336699"/></a:accent1>)";
    book.strings = {
        R"(<r><rPr><color theme="4"/></rPr><t>a</t></r><r><rPr><color theme="4" tint="0.5"/></rPr><t>b</t></r>)"
        R"(<r><rPr><color theme="4" tint="-0.5"/></rPr><t>c</t></r><r><rPr><color theme="1"/></rPr><t>d</t></r>)"
        R"(<r><rPr><color theme="99"/></rPr><t>e</t></r><r><rPr><color indexed="64"/></rPr><t>f</t></r>)"
        R"(<r><rPr><color auto="1"/></rPr><t>g</t></r><r><rPr><color rgb="0000FF00"/></rPr><t>h</t></r>)"
        R"(<r><rPr><color rgb="nothing"/></rPr><t>i</t></r><r><rPr><color theme="0"/></rPr><t>j</t></r>)"
    };
    book.sheetData = R"(<row r="1"><c r="A1" t="s"><v>0</v></c></row>)";
    read (book);
    EXPECT_EQ (runsOf (0, 0),
               (Runs { "0-1 ff336699", "1-2 ff8cb2d9", "2-3 ff19334c", "7-8 ff00ff00", "9-10 ffffffff" }));
}

TEST_F (WorkbookReading, runsWithinLooksAndLooksWithinRunsAreNoneAtAll)
{
    Book book;
    book.strings = { "<r><rPr><r/><b/><rPr><i/></rPr><t>no</t></rPr><t>a</t></r><t>b</t>",
                     "<rPr><t/><r><rPh/></r></rPr><rPh><rPr/></rPh><t>c</t>" };
    book.sheetData = R"(<row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1" t="s"><v>1</v></c></row>)";
    read (book);
    EXPECT_TRUE (texts()[0][0].ends_with ("ab"));
    EXPECT_EQ (texts()[0][1], "c");
}

TEST_F (WorkbookReading, aThemeThatCantBeReadIsDoneWithout)
{
    Book book;
    book.others = { { "xl/theme/theme1.xml", "<a:theme" } };
    book.strings = { R"(<r><rPr><color theme="4"/></rPr><t>a</t></r>)" };
    book.sheetData = R"(<row r="1"><c r="A1" t="s"><v>0</v></c></row>)";
    read (book);
    EXPECT_EQ (runsOf (0, 0), Runs { "0-1 ff4f81bd" });
}
