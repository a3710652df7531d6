// SPDX-License-Identifier: GPL-3.0-only
// The program with workbooks.
#include "overmarks/ProgramFixture.h"
#include "support/WorkbookParts.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

using nlohmann::ordered_json;
using testing::HasSubstr;
using testing::Not;

namespace
{

std::string dataFile (const std::string& name) { return OVERMARKS_TEST_DATA "/import/xlsx/" + name; }

/** A workbook with a sheet of these rows of texts. */
std::string workbookOf (const std::vector<std::vector<std::string>>& rows)
{
    ZEP::Overmarks::Testing::WorkbookParts book;

    for (const auto& row : rows)
    {
        book.sheetData += "<row>";

        for (const auto& cell : row)
            book.sheetData += "<c t=\"inlineStr\"><is><t>" + cell + "</t></is></c>";

        book.sheetData += "</row>";
    }

    return book.zipped();
}

const ordered_json castRows = ordered_json::parse (R"([["Name", "Actor"], ["ANNA", "C. Berg"]])");

} // namespace

TEST_F (ProgramTest, rowsTellsTheSheetsOfAWorkbook)
{
    const auto document = run ({ "rows", dataFile ("harbour.xlsx"), "--json" }).json();
    EXPECT_EQ (document["type"], 6);
    EXPECT_EQ (document["userMappingEnabled"], true);
    EXPECT_EQ (document["error"], "");
    EXPECT_EQ (document["rows"].size(), 4u);
    EXPECT_EQ (document["columnMap"]["Text"], 4);
    EXPECT_EQ (document["sheets"], ordered_json ({ "Cues", "Cast" }));
    EXPECT_EQ (document["sheet"], "Cues");

    const auto shown = run ({ "rows", dataFile ("harbour.xlsx") });
    EXPECT_EQ (shown.status, 0);
    EXPECT_THAT (shown.errors,
                 HasSubstr ("4 rows, the sheet \"Cues\" is read; the workbook also has Cast\n"));
    EXPECT_THAT (shown.output, HasSubstr ("Cue Number (1)"));
}

TEST_F (ProgramTest, rowsOfOtherFormatsHaveNoSheets)
{
    write ("list.csv", threeCues);
    const auto document = run ({ "rows", "list.csv", "--json" }).json();
    EXPECT_FALSE (document.contains ("sheets"));
    EXPECT_FALSE (document.contains ("sheet"));

    const auto named = run ({ "rows", "list.csv", "--sheet", "Cues" });
    EXPECT_EQ (named.status, 0);
    EXPECT_THAT (named.errors, HasSubstr ("list.csv: --sheet makes no difference to this list\n"));
}

TEST_F (ProgramTest, anotherSheetIsReadWhereverAListIs)
{
    const auto document = run ({ "rows", dataFile ("harbour.xlsx"), "--sheet", "cast", "--json" }).json();
    EXPECT_EQ (document["rows"], castRows);
    EXPECT_EQ (document["sheet"], "Cast");
    EXPECT_EQ (document["columnMap"]["Actor"], 1);
    EXPECT_EQ (document["columnMap"]["Text"], -1);

    const auto listed = run ({ "list", dataFile ("second_sheet.xlsx"), "--sheet", "Cues", "--json" }).json();
    EXPECT_EQ (listed["events"].size(), 3u);
}

TEST_F (ProgramTest, aSheetThatIsNotThereIsWrongUsageAndTheOthersAreTold)
{
    const auto result = run ({ "rows", dataFile ("harbour.xlsx"), "--sheet", "Cue" });
    EXPECT_EQ (result.status, 2);
    EXPECT_EQ (result.output, "");
    EXPECT_THAT (result.errors, HasSubstr ("--sheet: \"Cue\" is none of Cues, Cast. Did you mean \"Cues\"?"));
    EXPECT_EQ (errorOf ({ "rows", dataFile ("harbour.xlsx"), "--sheet", "Cue" }, 2),
               "--sheet: \"Cue\" is none of Cues, Cast. Did you mean \"Cues\"?");
}

TEST_F (ProgramTest, aSheetIsReadAlsoWhereTheOneInFrontIsEmpty)
{
    ZEP::Overmarks::Testing::WorkbookParts book;
    book.sheets = { { "Notes", "", "" }, { "Cues", "<row><c><v>1</v></c></row>", "" } };
    write ("list.xlsx", book.zipped());

    const auto front = run ({ "rows", "list.xlsx", "--json" });
    EXPECT_EQ (front.status, 1);
    EXPECT_EQ (
        front.json()["error"],
        "Error parsing the Excel file. The file you have selected contains only empty cells in the active sheet.");

    const auto named = run ({ "rows", "list.xlsx", "--sheet", "Cues", "--json" });
    EXPECT_EQ (named.status, 0);
    EXPECT_EQ (named.json()["error"], "");
    EXPECT_EQ (named.json()["rows"], ordered_json::parse (R"([["1"]])"));
}

TEST_F (ProgramTest, cellsOfAWorkbookShowTheirRuns)
{
    const auto document = run ({ "rows", dataFile ("harbour.xlsx"), "--json", "--rich" }).json();
    const auto& cell = document["rows"][2][4];
    EXPECT_EQ (cell["text"], "Who says so?");
    ASSERT_EQ (cell["runs"].size(), 1u);
    EXPECT_EQ (cell["runs"][0]["start"], 4);
    EXPECT_EQ (cell["runs"][0]["end"], 8);
    EXPECT_EQ (cell["runs"][0]["italic"], true);
}

TEST_F (ProgramTest, cuesOfAWorkbookBecomeAProjectAndOtherLists)
{
    const auto imported =
        run ({ "import", dataFile ("harbour.xlsx"), "-o", "p.json", "--origin", "01:00:00:00" });
    EXPECT_EQ (imported.status, 0) << imported.errors;
    EXPECT_THAT (imported.errors,
                 HasSubstr ("harbour.xlsx: the sheet \"Cues\" is read; the workbook also has Cast\n"));

    const auto events = run ({ "list", "p.json", "--json" }).json()["events"];
    ASSERT_EQ (events.size(), 3u);
    EXPECT_EQ (events[1]["text"]["text"], "Who says so?");
    EXPECT_EQ (events[1]["text"]["runs"].size(), 1u);
    EXPECT_EQ (events[1]["notes"]["text"], "off camera");
    EXPECT_EQ (events[1]["actor"], "C. Berg");
    EXPECT_EQ (events[2]["startTC"], "01:00:06:00");
    EXPECT_EQ (events[2]["endTC"], "01:00:09:15");

    EXPECT_EQ (run ({ "convert", dataFile ("harbour.xlsx"), "out.csv" }).status, 0);
    EXPECT_THAT (read ("out.csv"), HasSubstr ("\"01:00:04:05\",\"01:00:05:24\",\"Who says so?\",\"ANNA\""));
}

TEST_F (ProgramTest, aListThatIsKeptInTimeCellsKeepsItsTimes)
{
    ZEP::Overmarks::Testing::WorkbookParts book;
    book.styles = R"(<fonts><font/></fonts><cellXfs><xf/><xf numFmtId="21"/></cellXfs>)";
    book.sheetData =
        R"(<row><c t="inlineStr"><is><t>CUE START</t></is></c><c t="inlineStr"><is><t>CUE END</t></is></c>)"
        R"(<c t="inlineStr"><is><t>LINE</t></is></c></row>)"
        R"(<row><c s="1"><v>0.0416898148148148</v></c><c s="1"><v>0.0417245370370370</v></c>)"
        R"(<c t="inlineStr"><is><t>Hello</t></is></c></row>)";
    write ("list.xlsx", book.zipped());
    const auto result = run ({ "convert", "list.xlsx", "out.csv", "--origin", "01:00:00:00" });
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.errors, Not (HasSubstr ("is not a timecode")));
    EXPECT_THAT (read ("out.csv"), HasSubstr ("\"01:00:02:00\",\"01:00:05:00\",\"Hello\""));
}

TEST_F (ProgramTest, columnsOfAWorkbookAreMapped)
{
    write ("list.xlsx", workbookOf ({ { "When", "", "What" }, { "01:00:01:00", "ANNA", "Hello" } }));
    EXPECT_THAT (
        run ({ "list", "list.xlsx" }).errors,
        HasSubstr (
            "list.xlsx: no column has a title that is known; --map \"HEADER=TITLE\" tells what a column holds"));

    const auto events = run ({ "list", "list.xlsx", "--map", "when=Start TC", "--map", "#2=Character",
                               "--map", "What=Text", "--json" })
                            .json()["events"];
    ASSERT_EQ (events.size(), 1u);
    EXPECT_EQ (events[0]["startTC"], "01:00:01:00");
    EXPECT_EQ (events[0]["character"], "ANNA");
    EXPECT_EQ (events[0]["text"]["text"], "Hello");
}

TEST_F (ProgramTest, whatIsNoWorkbookIsTold)
{
    for (const auto& [name, words] : std::map<std::string, std::string> {
             { "empty.xlsx", "Error parsing the Excel file. The file is empty." },
             { "garbage.xlsx", "Error parsing the Excel file. The file is not an Excel workbook." },
             { "truncated.xlsx", "Error parsing the Excel file. The workbook is damaged or incomplete." } })
    {
        for (const std::string command : { "import", "convert" })
        {
            const auto target = command == "import" ? std::vector<std::string> { "-o", "p.json" }
                                                    : std::vector<std::string> { "out.csv" };
            std::vector<std::string> arguments { command, dataFile (name) };
            arguments.insert (arguments.end(), target.begin(), target.end());
            const auto result = run (arguments);
            EXPECT_EQ (result.status, 1) << name;
            EXPECT_THAT (result.errors, HasSubstr (name + ": " + words)) << command;
        }

        EXPECT_TRUE (filesInFolder().empty()) << name;
        const auto rows = run ({ "rows", dataFile (name), "--json", "--sheet", "Cues" });
        EXPECT_EQ (rows.status, 1);
        EXPECT_EQ (rows.json()["error"], words);
    }
}

TEST_F (ProgramTest, aWorkbookOfTitlesAloneIsAnEmptyList)
{
    const auto result = run ({ "import", dataFile ("title_row_only.xlsx"), "-o", "p.json" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_THAT (result.errors, Not (HasSubstr ("no cues were found")));
}

TEST_F (ProgramTest, anEncodingMakesNoDifferenceToAWorkbook)
{
    const auto result = run ({ "rows", dataFile ("harbour.xlsx"), "--encoding", "latin-1" });
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.errors, HasSubstr ("--encoding makes no difference to this list"));
    EXPECT_THAT (result.errors, HasSubstr ("4 rows"));
}

TEST_F (ProgramTest, aWorkbookComesFromStandardInputToo)
{
    std::ifstream stream (dataFile ("harbour.xlsx"), std::ios::binary);
    const std::string bytes { std::istreambuf_iterator<char> (stream), {} };
    const auto result = run ({ "rows", "-", "--format", "xlsx", "--sheet", "Cast", "--json" }, bytes);
    EXPECT_EQ (result.json()["rows"], castRows);
}

TEST_F (ProgramTest, workbooksAreAmongTheFormatsThatAreRead)
{
    const auto formats = run ({ "formats", "--json" }).json()["formats"];

    for (const auto& format : formats)
        if (format["extensions"] == ".xlsx" && format.value ("reads", false))
        {
            EXPECT_EQ (format["columnMapping"], true);
            return;
        }

    ADD_FAILURE() << "there is no format with the extension .xlsx";
}
