// SPDX-License-Identifier: GPL-3.0-only
// Workbooks by the program: what is in them, and what is told of one that can't be written.
#include "overmarks/ProgramFixture.h"
#include "support/XMLTree.h"
#include "support/ZipArchive.h"

#include <gmock/gmock.h>

using namespace ZEP::Overmarks::Testing;
using nlohmann::ordered_json;
using testing::HasSubstr;
using testing::Not;

namespace
{

using Names = std::vector<std::string>;

class ProgramExcelExportTest : public ProgramTest
{
protected:
    /** What stands in a column of a workbook, such as "D". */
    Names column (const juce::String& name, const std::string& letter) const
    {
        const auto sheet = treeOf (partNamed (unzipped (read (name)), "xl/worksheets/sheet1.xml"));
        return valuesAt (*sheet, "//c[starts-with(@r, '" + letter + "')]/is/t");
    }

    /** A list in which one character's text is too long for a cell. */
    void writeListThatFitsIntoNoCell() const
    {
        write ("x.csv", std::string ("Start TC,Character,Text,Cue Number\n01:00:02:00,ANNA,Hello?,A1\n"
                                     "01:00:05:12,TOM,")
                            + std::string (40000, 'a') + ",T1\n01:00:08:00,ZOE,Me.,Z1\n");
    }

    static std::string cutShort()
    {
        const auto folder = juce::File::getSpecialLocation (juce::File::tempDirectory).getFullPathName();
        return "the temporary files in " + folder.toStdString()
               + " didn't take everything; is that disk full?";
    }

    std::string tooLong (const juce::String& name) const
    {
        return "Can't write " + path (name)
               + ": the cell H2 (row 2, column 8) holds 40000 characters, and a cell has room for 32767";
    }
};

TEST_F (ProgramExcelExportTest, aListBecomesAWorkbook)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "export", "x.csv", "-o", ".", "--format", "xlsx", "--json" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (result.json()["files"], Names { path ("x.xlsx") });
    EXPECT_EQ (result.json()["messages"], Names { "x.csv: read as ascii" });
    EXPECT_EQ (column ("x.xlsx", "D"), (Names { "Cue Number", "A1", "T1", "A2" }));
    EXPECT_EQ (column ("x.xlsx", "H"), (Names { "Text", "Hello?", "Who's \"there\"?", "Me." }));
    EXPECT_EQ (column ("x.xlsx", "A"), (Names { "Start TC", "01:00:02:00", "01:00:05:12", "01:00:08:00" }));
}

TEST_F (ProgramExcelExportTest, convertKnowsTheExtension)
{
    write ("x.csv", threeCues);
    EXPECT_EQ (run ({ "convert", "x.csv", "A list.XLSX" }).status, 0);
    EXPECT_EQ (column ("A list.XLSX", "D"), (Names { "Cue Number", "A1", "T1", "A2" }));
    EXPECT_EQ (run ({ "convert", "x.csv", "plain", "--format", "xlsx" }).status, 0);
    EXPECT_EQ (read ("plain"), read ("A list.XLSX"));
}

TEST_F (ProgramExcelExportTest, eachCharacterGetsAWorkbook)
{
    write ("x.csv", threeCues);
    const auto result =
        run ({ "export", "x.csv", "-o", ".", "--format", "xlsx", "--by-character", "--json" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (result.json()["files"], (Names { path ("x_ANNA.xlsx"), path ("x_TOM.xlsx") }));
    EXPECT_EQ (column ("x_ANNA.xlsx", "D"), (Names { "Cue Number", "A1", "A2" }));
    EXPECT_EQ (column ("x_TOM.xlsx", "D"), (Names { "Cue Number", "T1" }));
}

TEST_F (ProgramExcelExportTest, allCharactersMayShareAWorkbook)
{
    write ("x.csv", threeCues);
    EXPECT_EQ (run ({ "convert", "x.csv", "y.xlsx", "--by-character", "--combine" }).status, 0);
    EXPECT_EQ (filesInFolder(), (Names { "x.csv", "y.xlsx" }));
    EXPECT_EQ (column ("y.xlsx", "D"), (Names { "Cue Number", "A1", "A2", "T1" }));
}

TEST_F (ProgramExcelExportTest, aFilterThatLeavesNothingLeavesTheHeading)
{
    write ("x.csv", threeCues);
    EXPECT_EQ (run ({ "export", "x.csv", "-o", ".", "--format", "xlsx", "--character", "NOBODY" }).status, 0);
    EXPECT_EQ (column ("x.xlsx", "D"), Names { "Cue Number" });
}

TEST_F (ProgramExcelExportTest, aDryRunWritesNothing)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "convert", "x.csv", "y.xlsx", "--dry-run" });
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.errors, "x.csv: read as ascii\nWould write " + path ("y.xlsx") + "\n");
    EXPECT_EQ (filesInFolder(), Names { "x.csv" });
}

TEST_F (ProgramExcelExportTest, anOlderFileIsReplacedOnlyOnDemand)
{
    write ("x.csv", threeCues);
    write ("y.xlsx", "older");
    EXPECT_THAT (errorOf ({ "convert", "x.csv", "y.xlsx" }, 1), HasSubstr ("--force"));
    EXPECT_EQ (read ("y.xlsx"), "older");
    EXPECT_EQ (run ({ "convert", "x.csv", "y.xlsx", "--force" }).status, 0);
    EXPECT_EQ (column ("y.xlsx", "D").size(), 4u);
}

TEST_F (ProgramExcelExportTest, equalListsAreEqualFiles)
{
    write ("x.csv", threeCues);
    EXPECT_EQ (run ({ "convert", "x.csv", "y.xlsx" }).status, 0);
    EXPECT_EQ (run ({ "convert", "x.csv", "z.xlsx" }).status, 0);
    EXPECT_EQ (read ("y.xlsx"), read ("z.xlsx"));
}

TEST_F (ProgramExcelExportTest, aWorkbookIsReadAgainAsItWasWritten)
{
    const ordered_json run {
        { "start", 2 }, { "end", 4 }, { "italic", true }, { "height", 20 }, { "colour", "ff0000ff" }
    };
    const ordered_json text { { "text", "=1 + 1\n_x000D_ " }, { "runs", { run } } };
    const ordered_json event { { "type", 8 },
                               { "cueNumber", "007" },
                               { "characterID", "a" },
                               { "inPointFrameIndex", 50 },
                               { "endFrameIndex", 75 },
                               { "text", text },
                               { "notes", text },
                               { "engineeringNotes", "'a" },
                               { "done", true },
                               { "numRecordedTakes", 3 },
                               { "reason", 4 },
                               { "isForcedNarrative", true },
                               { "forcedNarrativeRegion", 3 } };
    const ordered_json character {
        { "id", "a" }, { "name", "ANNA" }, { "prefix", "AN" }, { "actor", "B. Miller" }
    };
    write (
        "x.json",
        ordered_json { { "overmarks", 1 }, { "characters", { character } }, { "events", { event } } }.dump());
    ASSERT_EQ (ProgramTest::run ({ "convert", "x.json", "y.xlsx" }).status, 0);
    ASSERT_EQ (ProgramTest::run ({ "convert", "y.xlsx", "z.xlsx" }).status, 0);
    EXPECT_EQ (read ("y.xlsx"), read ("z.xlsx"));
    const auto back = ProgramTest::run ({ "list", "z.xlsx", "--json" }).json()["events"];
    ASSERT_EQ (back.size(), 1u);

    for (const auto& key : { "cueNumber", "inPointFrameIndex", "endFrameIndex", "done", "numRecordedTakes",
                             "reason", "isForcedNarrative", "forcedNarrativeRegion" })
        EXPECT_EQ (back[0][key], event[key]) << key;

    EXPECT_EQ (back[0]["text"]["text"], text["text"]);
    EXPECT_EQ (back[0]["notes"]["runs"][0]["height"], 20.0);
    EXPECT_EQ (back[0]["notes"]["runs"][0]["colour"], "ff0000ff");
    EXPECT_EQ (back[0]["engineeringNotes"]["text"], "'a");
    EXPECT_EQ (back[0]["actor"], "B. Miller");
}

// ---- what can't be written ------------------------------------------------------------------------------------------------

TEST_F (ProgramExcelExportTest, aTextThatFitsIntoNoCellIsTold)
{
    write ("x.csv", "Start TC,Text\n01:00:05:12," + std::string (40000, 'a') + "\n");
    EXPECT_EQ (errorOf ({ "convert", "x.csv", "y.xlsx" }, 1), tooLong ("y.xlsx"));
    EXPECT_EQ (filesInFolder(), Names { "x.csv" });
}

TEST_F (ProgramExcelExportTest, theWorkbookOfOneCharacterThatIsMissingIsToldAndNoneIsThere)
{
    writeListThatFitsIntoNoCell();
    EXPECT_EQ (errorOf ({ "convert", "x.csv", "y.xlsx", "--by-character" }, 1), tooLong ("y_TOM.xlsx"));
    EXPECT_EQ (filesInFolder(), Names { "x.csv" });
    EXPECT_EQ (
        errorOf ({ "export", "x.csv", "-o", ".", "--format", "csv,xlsx", "--by-character", "--name", "y" },
                 1),
        tooLong ("y_TOM.xlsx"));
    EXPECT_EQ (filesInFolder(), Names { "x.csv" });
}

TEST_F (ProgramExcelExportTest, aFullDiskLeavesTheOldWorkbooks)
{
    write ("x.csv", threeCues);

    for (const auto* name : { "y.xlsx", "y_ANNA.xlsx", "y_TOM.xlsx" })
        write (name, "precious");

    ProgramSurroundings full;
    full.largestFile = 2000;

    for (const Names& options :
         { Names {}, Names { "--by-character" }, Names { "--by-character", "--combine" } })
    {
        Names arguments { "convert", "x.csv", "y.xlsx", "--force", "--json" };
        arguments.insert (arguments.end(), options.begin(), options.end());
        const auto result = run (arguments, {}, full);
        EXPECT_EQ (result.status, 1);
        const auto named = options.size() == 1 ? "y_ANNA.xlsx" : "y.xlsx";
        EXPECT_EQ (result.json()["error"], "Can't write " + path (named) + ": " + cutShort());
    }

    for (const auto* name : { "y.xlsx", "y_ANNA.xlsx", "y_TOM.xlsx" })
        EXPECT_EQ (read (name), "precious");

    EXPECT_EQ (filesInFolder(), (Names { "x.csv", "y.xlsx", "y_ANNA.xlsx", "y_TOM.xlsx" }));
}

TEST_F (ProgramExcelExportTest, temporaryFilesThatAreCutShortAreTold)
{
    std::string list = "Start TC,Text\n";

    for (int i = 0; i < 3000; ++i)
        list += "00:00:10:00,A line that is neither long nor short\n";

    write ("x.csv", list);
    ProgramSurroundings full;
    full.largestFile = 200000; // the packed workbook is smaller, the rows before they are packed are not
    const auto result = run ({ "convert", "x.csv", "y.xlsx", "--json" }, {}, full);
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.json()["error"], "Can't write " + path ("y.xlsx") + ": " + cutShort());
    EXPECT_EQ (filesInFolder(), Names { "x.csv" });
}

TEST_F (ProgramExcelExportTest, aFullDeviceIsTold)
{
    write ("x.csv", threeCues);
    EXPECT_EQ (errorOf ({ "convert", "x.csv", "/dev/full", "--format", "xlsx" }, 1),
               "Can't write /dev/full: No space left on device");
}

// ---- what is lost ----------------------------------------------------------------------------------------------------------

TEST_F (ProgramExcelExportTest, formatsTellsWhatAWorkbookCarriesAndLoses)
{
    const auto formats = run ({ "formats", "--json" }).json()["formats"];
    const auto found =
        std::find_if (formats.begin(), formats.end(),
                      [] (const auto& format) { return format.value ("format", "") == "xlsx"; });
    ASSERT_NE (found, formats.end());
    EXPECT_EQ (
        (*found)["carries"],
        "times, characters, character prefixes, actors, cue numbers, text, line breaks, bold and italic, "
        "other looks of text, notes, engineering notes, done, numbers of takes, reasons, forced narratives");
    EXPECT_EQ (
        (*found)["loses"],
        "timed fades, event types, disabled, chosen takes, record tracks, stored flags, streamer durations, tempo, "
        "characters without events, quotation marks of names, which are doubled, typographic signs of text, "
        "reasons without a name");
}

TEST_F (ProgramExcelExportTest, aListThatAWorkbookCarriesWholeHasNoMessage)
{
    ordered_json run {
        { "start", 0 }, { "end", 1 }, { "bold", true }, { "underlined", true }, { "colour", "ffff0000" }
    };
    ordered_json text { { "text", "a\n** “b”" }, { "runs", { run } } };
    ordered_json event { { "type", 8 },          { "cueNumber", "A1" },
                         { "characterID", "a" }, { "inPointFrameIndex", 50 },
                         { "text", "a\n**b" },   { "notes", text },
                         { "done", true },       { "numRecordedTakes", 3 },
                         { "reason", 4 },        { "isForcedNarrative", true } };
    const ordered_json character {
        { "id", "a" }, { "name", "ANNA" }, { "prefix", "AN" }, { "actor", "B. Miller" }
    };
    write (
        "x.json",
        ordered_json { { "overmarks", 1 }, { "characters", { character } }, { "events", { event } } }.dump());
    EXPECT_EQ (ProgramTest::run ({ "convert", "x.json", "y.xlsx" }).errors,
               "Wrote " + path ("y.xlsx") + "\n");
}

TEST_F (ProgramExcelExportTest, quotationMarksOfNamesAreDoubledAndThatIsSaid)
{
    write ("x.csv", "Start TC,Character,Actor,Text\n00:00:10:00,\"ANNA \"\"RED\"\"\",B. Miller,Hello?\n"
                    "00:00:12:00,TOM,\"C. \"\"Cat\"\" Berg\",Who?\n00:00:14:00,ZOE,D. Dorn,Me.\n");
    const auto result = run ({ "convert", "x.csv", "y.xlsx" });
    EXPECT_THAT (
        result.errors,
        HasSubstr (
            "xlsx has no place for everything in this list; it leaves out: quotation marks of names, which "
            "are doubled (2 characters)\n"));
    EXPECT_EQ (column ("y.xlsx", "E"), (Names { "Character", "ANNA \"\"RED\"\"", "TOM", "ZOE" }));
    EXPECT_THAT (run ({ "convert", "x.csv", "y.csv" }).errors, Not (HasSubstr ("quotation marks")));
}

} // namespace
