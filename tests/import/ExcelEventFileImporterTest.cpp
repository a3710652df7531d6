// SPDX-License-Identifier: GPL-3.0-only
#include "import/ExcelEventFileImporter.h"

#include "import/CSVEventFileImporter.h"
#include "import/ImportSupport.h"
#include "import/frame/EventFileImporterFactory.h"
#include "import/frame/EventRowReader.h"
#include "support/MakeEvents.h"
#include "support/OvermarksTest.h"
#include "support/WorkbookParts.h"

#include <gtest/gtest.h>

using namespace ZEP::Overmarks;
using namespace ZEP::Core;
using namespace ImportSupport;

namespace
{

constexpr auto onlyEmptyCells =
    "Error parsing the Excel file. The file you have selected contains only empty cells in the "
    "active sheet.";

class ExcelImport : public Testing::OvermarksTest
{
protected:
    TextTable importFile (const std::string& name) { return importPath (dataFile ("xlsx/" + name)); }

    TextTable importPath (const std::string& path)
    {
        importer = std::make_unique<ExcelEventFileImporter> (path, message);
        return textsOf (importer->rows);
    }

    /** Imports a workbook whose sheet has these titles. */
    void importTitles (const std::vector<std::string>& titles)
    {
        Testing::WorkbookParts book;
        book.sheetData = "<row r=\"1\">";

        for (const auto& title : titles)
            book.sheetData += "<c t=\"inlineStr\"><is><t xml:space=\"preserve\">" + title + "</t></is></c>";

        book.sheetData += "</row>";
        importPath (folder.file ("list.xlsx", book.zipped()));
    }

    int columnOf (const juce::String& title) const
    {
        return importer->columnMap.contains (title) ? importer->columnMap.at (title) : -2;
    }

    TemporaryFolder folder;
    juce::String message;
    std::unique_ptr<ExcelEventFileImporter> importer;
};

const std::vector<std::string> harbourTitles { "CUE NO", "CUE START", "CUE END",   "CHAR NAME",
                                               "LINE",   "NOTE",      "ACTOR NAME" };

const TextTable harbour {
    harbourTitles,
    { "H1", "01:00:01:00", "01:00:03:12", "RADIO", "The harbour is closed.", "", "B. Miller" },
    { "H2", "01:00:04:05", "01:00:05:24", "ANNA", "Who says so?", "off camera", "C. Berg" },
    { "H3", "01:00:06.000", "01:00:09.600", "CAPTAIN", "The water does.", "", "D. Lind" },
};

} // namespace

TEST_F (ExcelImport, isFormatSixAndLeavesTheColumnsToTheUser)
{
    message = "from before";
    EXPECT_EQ (importFile ("harbour.xlsx"), harbour);
    EXPECT_EQ (importer->type(), 6);
    EXPECT_TRUE (importer->userMappingEnabled());
    EXPECT_EQ (importer->languageCode(), "");
    EXPECT_EQ (importer->encoding, TextEncodingUTF8);
    EXPECT_EQ (importer->timeInfo, nullptr);
    EXPECT_EQ (importer->characterMap, nullptr);
    EXPECT_EQ (message, "from before");
}

TEST_F (ExcelImport, theFactoryKnowsTheExtension)
{
    const auto made =
        EventFileImporterFactory::fileImporterWithFilepath (dataFile ("xlsx/harbour.xlsx"), message, {}, {});
    ASSERT_NE (made, nullptr);
    EXPECT_EQ (made->type(), 6);
    EXPECT_EQ (message, "");
}

TEST_F (ExcelImport, theColumnsOfATemplateAreGuessed)
{
    importFile ("harbour.xlsx");
    EXPECT_EQ (importer->columnMap.size(), 18u);
    EXPECT_EQ (columnOf ("Cue Number"), 0);
    EXPECT_EQ (columnOf ("Start TC"), 1);
    EXPECT_EQ (columnOf ("End TC"), 2);
    EXPECT_EQ (columnOf ("Character"), 3);
    EXPECT_EQ (columnOf ("Text"), 4);
    EXPECT_EQ (columnOf ("Notes"), 5);
    EXPECT_EQ (columnOf ("Actor"), 6);
    EXPECT_EQ (columnOf ("Reason"), -1);
}

TEST_F (ExcelImport, everyHeaderOfATemplateIsKnown)
{
    const std::vector<std::pair<std::string, juce::String>> headers {
        { "CUE START", "Start TC" },
        { "CUE END", "End TC" },
        { "LINE", "Text" },
        { "CHAR NAME", "Character" },
        { "Char Prefix", "Char Prefix" },
        { "CHAR ID", "Char Prefix" },
        { "Actor", "Actor" },
        { "ACTOR NAME", "Actor" },
        { "CUE NO", "Cue Number" },
        { "NOTE", "Notes" },
        { "Reason", "Reason" },
        { "REASON", "Reason" },
        // and those of delimited text
        { "TC In", "Start TC" },
        { "Out", "End TC" },
        { "Dialog", "Text" },
        { "Sprecher", "Character" },
        { "Take", "Cue Number" },
        { "Anmerkung", "Engineering Notes" },
        { "cue start", "Start TC" },
        { "[\"Line\"]", "Text" },
    };

    for (const auto& [header, title] : headers)
    {
        importTitles ({ "other", header });
        EXPECT_EQ (columnOf (title), 1) << header;
    }
}

TEST_F (ExcelImport, aHeaderOfATemplateMeansNothingInDelimitedText)
{
    importTitles ({ "CHAR NAME", "LINE" });
    EXPECT_EQ (columnOf ("Character"), 0);

    const CSVEventFileImporter csv (folder.file ("list.csv", "CHAR NAME,LINE\nANNA,Hello\n"), message);
    EXPECT_EQ (csv.columnMap.at ("Character"), -1);
    EXPECT_EQ (csv.columnMap.at ("Text"), -1);
}

TEST_F (ExcelImport, blanksAroundAHeaderAreNotPassedOverAndTheColumnFurtherRightIsTaken)
{
    importTitles ({ " LINE", "Text", "LINE", "Line " });
    EXPECT_EQ (columnOf ("Text"), 2);
}

TEST_F (ExcelImport, titlesOfRecordingToolsAreNothingSpecialHere)
{
    importTitles ({ "Take", "In", "Out", "Marker" });
    EXPECT_EQ (importer->rows.size(), 1u);
    EXPECT_EQ (columnOf ("Cue Number"), 0);
    EXPECT_EQ (columnOf ("Start TC"), 1);
}

TEST_F (ExcelImport, theSheetInFrontIsReadAlsoWhenItIsNotTheFirst)
{
    EXPECT_EQ (importFile ("second_sheet.xlsx"), harbour);
    EXPECT_EQ (message, "");
}

TEST_F (ExcelImport, anotherSheetCanBeRead)
{
    importFile ("harbour.xlsx");
    importer->parseSheet ("cast", message);
    EXPECT_EQ (message, "");
    EXPECT_EQ (textsOf (importer->rows), (TextTable { { "Name", "Actor" }, { "ANNA", "C. Berg" } }));
    EXPECT_EQ (columnOf ("Actor"), 1);
    EXPECT_EQ (columnOf ("Start TC"), -1);

    importer->parseSheet ("Crew", message);
    EXPECT_EQ (message, "Error parsing the Excel file. The workbook has no sheet \"Crew\".");
    EXPECT_EQ (importer->rows.size(), 2u);
}

TEST_F (ExcelImport, cellsKeepTheAttributesOfTheirText)
{
    importFile ("harbour.xlsx");
    const auto runs = importer->rows[2][4].formattedRuns();
    ASSERT_EQ (runs.size(), 1u);
    EXPECT_EQ (runs[0].range, juce::Range<int> (4, 8));
    EXPECT_TRUE (runs[0].font.isItalic());
    EXPECT_TRUE (importer->rows[1][4].isPlain());
}

TEST_F (ExcelImport, rowsBecomeCues)
{
    importFile ("harbour.xlsx");
    const auto result =
        EventRowReader (Testing::timeInfoAt ("25", "01:00:00:00"), std::make_shared<ADRCharacterMap>())
            .read (*importer);
    EXPECT_TRUE (result.problems.empty());
    ASSERT_EQ (result.events.size(), 3u);
    EXPECT_EQ (result.events[1]->getText().getText(), "Who says so?");
    EXPECT_FALSE (result.events[1]->getText().isPlain());
    EXPECT_EQ (result.events[2]->getStartTCString(), "01:00:06:00");
    EXPECT_EQ (result.events[2]->getEndTCString(), "01:00:09:15");
}

TEST_F (ExcelImport, timeCellsOfWholeSecondsBecomeTimesAndThoseOfDelimitedTextDoNot)
{
    Testing::WorkbookParts book;
    book.styles = R"(<fonts><font/></fonts><cellXfs><xf/><xf numFmtId="21"/></cellXfs>)";
    book.sheetData = R"(<row><c t="inlineStr"><is><t>Start TC</t></is></c></row>)"
                     R"(<row><c s="1"><v>0.0416898148148148</v></c></row>)";
    importPath (folder.file ("list.xlsx", book.zipped()));
    const auto timeInfo = Testing::timeInfoAt ("25", "01:00:00:00");
    auto result = EventRowReader (timeInfo, nullptr).read (*importer);
    EXPECT_TRUE (result.problems.empty());
    ASSERT_EQ (result.events.size(), 1u);
    EXPECT_EQ (result.events[0]->getStartTCString(), "01:00:02:00");

    CSVEventFileImporter csv (folder.file ("list.csv", "Start TC,Text\n01:00:02,Hello\n"), message);
    result = EventRowReader (timeInfo, nullptr).read (csv);
    ASSERT_EQ (result.problems.size(), 1u);
    EXPECT_EQ (result.problems[0].message, "\"01:00:02\" is not a timecode such as 01:02:03:04");
}

TEST_F (ExcelImport, aTitleRowAloneIsNoFailure)
{
    EXPECT_EQ (importFile ("title_row_only.xlsx"), TextTable { harbourTitles });
    EXPECT_EQ (message, "");
    EXPECT_EQ (columnOf ("Text"), 4);
}

TEST_F (ExcelImport, aFirstRowOfEmptyCellsIsNoFailureAndMapsNothing)
{
    Testing::WorkbookParts book;
    book.sheetData =
        R"(<row r="2"><c r="A2" t="inlineStr"><is><t>Text</t></is></c><c r="B2"><v>1</v></c></row>)";
    EXPECT_EQ (importPath (folder.file ("list.xlsx", book.zipped())),
               (TextTable { { "", "" }, { "Text", "1" } }));
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->columnMap.size(), 18u);

    for (const auto& [title, column] : importer->columnMap)
        EXPECT_EQ (column, -1) << title;
}

TEST_F (ExcelImport, aSheetOfEmptyCellsIsAFailure)
{
    EXPECT_EQ (importFile ("only_empty_cells.xlsx"), TextTable());
    EXPECT_EQ (message, onlyEmptyCells);
    EXPECT_TRUE (importer->columnMap.empty());
}

TEST_F (ExcelImport, aFailureReplacesTheMessage)
{
    for (const auto& [name, words] : std::vector<std::pair<std::string, std::string>> {
             { "empty.xlsx", "Error parsing the Excel file. The file is empty." },
             { "truncated.xlsx", "Error parsing the Excel file. The workbook is damaged or incomplete." },
             { "garbage.xlsx", "Error parsing the Excel file. The file is not an Excel workbook." },
             { "missing.xlsx", "Error parsing the Excel file. The file can't be opened." },
             { "only_empty_cells.xlsx", onlyEmptyCells } })
    {
        message = "from before";
        EXPECT_EQ (importFile (name), TextTable()) << name;
        EXPECT_EQ (message, juce::String (words)) << name;
        EXPECT_TRUE (importer->columnMap.empty()) << name;
        EXPECT_EQ (importer->encoding, TextEncodingUTF8) << name;
    }
}

TEST_F (ExcelImport, aFailureLeavesTheTableAndTheColumnsAsTheyWere)
{
    const auto path = folder.file ("list.xlsx", bytesOfFile (dataFile ("xlsx/harbour.xlsx")));
    importPath (path);
    const auto columns = importer->columnMap;

    for (const auto* name : { "garbage.xlsx", "only_empty_cells.xlsx" })
    {
        static_cast<void> (folder.file ("list.xlsx", bytesOfFile (dataFile (std::string ("xlsx/") + name))));
        message.clear();
        importer->parse (message, TextEncodingUnknown);
        EXPECT_TRUE (message.isNotEmpty()) << name;
        EXPECT_EQ (textsOf (importer->rows), harbour) << name;
        EXPECT_EQ (importer->columnMap, columns) << name;
    }
}

TEST_F (ExcelImport, parsingAgainReplacesTheTableWhateverTheEncoding)
{
    importFile ("harbour.xlsx");

    for (int encoding = 0; encoding <= 6; ++encoding)
    {
        importer->parse (message, static_cast<TextEncoding> (encoding));
        EXPECT_EQ (textsOf (importer->rows), harbour) << encoding;
        EXPECT_EQ (importer->encoding, TextEncodingUTF8) << encoding;
    }

    EXPECT_EQ (message, "");
}

TEST_F (ExcelImport, withoutRowsThereIsNothingToGuess)
{
    importFile ("empty.xlsx");
    importer->columnMap["Text"] = 5;
    importer->guessMapping();
    EXPECT_EQ (importer->columnMap, (std::map<juce::String, int> { { "Text", 5 } }));
}

TEST_F (ExcelImport, readsWhateverTheXMLIsWrittenIn)
{
    EXPECT_EQ (importFile ("bom.xlsx"), harbour);
    EXPECT_EQ (importFile ("wrong_encoding.xlsx")[1][4], "Schönen Abend, Frau Weiß.");
    EXPECT_EQ (importFile ("huge_field.xlsx")[1][4].size(), 32765u);
    EXPECT_EQ (message, "");
}
