// SPDX-License-Identifier: GPL-3.0-only
// Several documents of one run: all or none, what is asked before, and lists without events.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace
{

using Names = std::vector<std::string>;

class DocumentsTest : public ProgramTest
{
protected:
    DocumentsTest() { file ("out").createDirectory(); }

    /** A list that is larger as a document than the disk has room for in runOnFullDisk(). */
    void writeLongList() const
    {
        std::string list = "Start TC,Character,Text,Cue Number\n";

        for (int second = 10; second < 60; ++second)
            list += "00:00:" + std::to_string (second) + ":00,ANNA,A line that is neither long nor short,"
                    + std::to_string (second) + "\n";

        write ("many.csv", list);
    }

    ProgramResult runOnFullDisk (const std::vector<std::string>& arguments) const
    {
        ProgramSurroundings full;
        full.largestFile = 2048;
        return run (arguments, {}, full);
    }

    /** Cues of one number that are too many for a row, which the exporter asks about. */
    void writeOverflowingList() const
    {
        std::string list = "Start TC,Character,Cue Number\n";

        for (int second = 10; second < 17; ++second)
            list += "00:00:" + std::to_string (second) + ":00,ANNA,7\n";

        write ("x.csv", list);
    }

    ProgramResult answering (const std::string& answer, const std::vector<std::string>& arguments) const
    {
        ProgramSurroundings terminal;
        terminal.answer = answer;
        return run (arguments, {}, terminal);
    }
};

const std::vector<std::string> takerExport { "export",   "x.csv",    "-o",     "out",
                                             "--format", "ds-taker", "--name", "taker" };

// ---- all or none ---------------------------------------------------------------------------------------------------------

TEST_F (DocumentsTest, aDocumentThatFailsLeavesTheOthersUnwritten)
{
    writeLongList();

    for (const auto& [formats, failing] :
         std::vector<std::pair<std::string, std::string>> { { "asc,euro-taker", "many.asc" },
                                                            { "euro-taker,asc", "many.asc" },
                                                            { "euro-taker,arendis", "many.txt" },
                                                            { "euro-taker,ttal", "many.ttal" } })
    {
        write ("out/many.csv", "precious");
        const auto result =
            runOnFullDisk ({ "export", "many.csv", "-o", "out", "--format", formats, "--force", "--json" });
        EXPECT_EQ (result.status, 1) << formats;
        EXPECT_EQ (result.json()["error"], "Error writing file to " + path ("out/" + failing));
        EXPECT_EQ (filesInFolder(), (Names { "many.csv", "out", "out/many.csv" })) << formats;
        EXPECT_EQ (read ("out/many.csv"), "precious");
    }
}

TEST_F (DocumentsTest, aFailedTextOfFixedColumnsLeavesTheOldOne)
{
    writeLongList();
    write ("old.asc", "precious");
    write ("old.txt", "precious");
    const auto asc = runOnFullDisk ({ "convert", "many.csv", "old.asc", "--force" });
    const auto arendis =
        runOnFullDisk ({ "convert", "many.csv", "old.txt", "--format", "arendis", "--force" });
    EXPECT_THAT (asc.errors, EndsWith ("overmarks: Error writing file to " + path ("old.asc") + "\n"));
    EXPECT_THAT (arendis.errors, EndsWith ("overmarks: Error writing file to " + path ("old.txt") + "\n"));
    EXPECT_EQ (asc.status, 1);
    EXPECT_EQ (arendis.status, 1);
    EXPECT_EQ (read ("old.asc"), "precious");
    EXPECT_EQ (read ("old.txt"), "precious");
}

TEST_F (DocumentsTest, aDocumentThatCannotBePutInItsPlaceTakesTheOthersAwayAgain)
{
    write ("x.csv", threeCues);
    write ("out/x.csv", "precious");
    ASSERT_TRUE (juce::File ("/dev/full").createSymbolicLink (file ("out/x.asc"), true));
    const auto result =
        run ({ "export", "x.csv", "-o", "out", "--format", "csv,ttal,asc", "--force", "--json" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.json()["error"], "Can't write " + path ("out/x.asc") + ": No space left on device");
    EXPECT_EQ (read ("out/x.csv"), "precious");
    EXPECT_FALSE (file ("out/x.ttal").exists());
    EXPECT_TRUE (file ("out/x.asc").isSymbolicLink());
}

TEST_F (DocumentsTest, aFolderInTheWayIsFoundBeforeTheFirstDocument)
{
    write ("x.csv", threeCues);
    ASSERT_TRUE (file ("out/x.asc").createDirectory().wasOk());
    EXPECT_EQ (errorOf ({ "export", "x.csv", "-o", "out", "--format", "csv,asc", "--force" }, 1),
               path ("out/x.asc") + " is a folder");
    EXPECT_EQ (filesInFolder(), (Names { "out", "out/x.asc", "x.csv" }));
}

TEST_F (DocumentsTest, oldDocumentsAreReplacedWholeAndNothingElseIsLeft)
{
    write ("x.csv", threeCues);
    write ("out/x.csv", "older");
    EXPECT_EQ (run ({ "export", "x.csv", "-o", "out", "--format", "csv,asc", "--force" }).status, 0);
    EXPECT_THAT (read ("out/x.csv"), HasSubstr ("ANNA"));
    EXPECT_EQ (filesInFolder(), (Names { "out", "out/x.asc", "out/x.csv", "x.csv" }));
}

// ---- the list itself -----------------------------------------------------------------------------------------------------

TEST_F (DocumentsTest, theListItselfIsNeverReplaced)
{
    write ("x.csv", threeCues);
    ASSERT_TRUE (file ("x.csv").createSymbolicLink (file ("y.csv"), true));
    EXPECT_EQ (errorOf ({ "convert", "x.csv", "x.csv", "--force" }, 1), "x.csv is the list itself");
    EXPECT_EQ (errorOf ({ "convert", "x.csv", "y.csv", "--force" }, 1), "y.csv is the list itself");
    EXPECT_EQ (errorOf ({ "export", "x.csv", "-o", ".", "--format", "csv", "--force" }, 1),
               path ("x.csv") + ": the document would replace the list that it is made from");
    EXPECT_EQ (errorOf ({ "export", "x.csv", "-o", ".", "--name", "y", "--format", "csv", "--force" }, 1),
               path ("y.csv") + ": the document would replace the list that it is made from");
    EXPECT_EQ (read ("x.csv"), threeCues);
}

// ---- what is asked -------------------------------------------------------------------------------------------------------

TEST_F (DocumentsTest, whereNobodyCanBeAskedTheAnswerIsNo)
{
    writeOverflowingList();
    const auto result = run (takerExport);
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (
        result.errors,
        EndsWith (
            "There are some cues in your event list with more than four subcues: \n\n- 7\n\n"
            "DSTaker can only handle four Markers per cue number so these cues will not be represented correctly. \n\n"
            "Do you want to continue?\n[y/N] no (--yes agrees)\n"
            + path ("out/taker.csv") + " was not written\n"));
    EXPECT_FALSE (file ("out/taker.csv").exists());
}

TEST_F (DocumentsTest, aDeclinedDocumentIsAProblemAndTheOthersAreWritten)
{
    writeOverflowingList();
    auto arguments = takerExport;
    arguments.insert (arguments.end(), { "--json" });
    arguments[5] = "ds-taker,ttal";
    const auto result = run (arguments);
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.json()["problems"][0]["message"], path ("out/taker.csv") + " was not written");
    EXPECT_EQ (result.json()["files"], Names { path ("out/taker.ttal") });
    EXPECT_EQ (filesInFolder(), (Names { "out", "out/taker.ttal", "x.csv" }));
}

TEST_F (DocumentsTest, aQuestionIsAnsweredOnTheTerminal)
{
    writeOverflowingList();

    for (const auto* no : { "n\n", "\n", "yesterday\n" })
    {
        const auto declined = answering (no, takerExport);
        EXPECT_EQ (declined.status, 1) << no;
        EXPECT_THAT (declined.errors, HasSubstr ("Do you want to continue?\n[y/N] "));
        EXPECT_THAT (declined.errors, Not (HasSubstr ("no (--yes agrees)")));
        EXPECT_FALSE (file ("out/taker.csv").exists()) << no;
    }

    for (const auto* yes : { "y\n", "Y\n", "yes\n" })
    {
        EXPECT_EQ (answering (yes, takerExport).status, 0) << yes;
        EXPECT_TRUE (file ("out/taker.csv").deleteFile()) << yes;
    }
}

TEST_F (DocumentsTest, aCueNumberInAQuestionCannotSteerTheTerminal)
{
    nlohmann::ordered_json list { { "overmarks", 1 }, { "events", nlohmann::ordered_json::array() } };

    for (int frame = 0; frame < 7; ++frame)
        list["events"].push_back ({ { "type", 8 },
                                    { "cueNumber", "7\x1b[2J\x1b]0;owned\x07\nnext" },
                                    { "inPointFrameIndex", frame } });

    write ("x.json", list.dump());
    const auto result = run ({ "export", "x.json", "-o", "out", "--format", "ds-taker" });
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, Not (HasSubstr ("\x1b")));
    EXPECT_THAT (result.errors, Not (HasSubstr ("\x07")));
    EXPECT_THAT (result.errors, HasSubstr ("subcues: \n\n- 7 [2J ]0;owned \nnext\n\nDSTaker can"));
}

// ---- nothing to write ----------------------------------------------------------------------------------------------------

TEST_F (DocumentsTest, aListWithoutEventsIsNoTTALDocument)
{
    write ("e.csv", "Start TC,Text\n");
    constexpr auto nothing = "Nothing to write: without an event there is no document for ttal\n";

    for (const auto& options :
         std::vector<Names> { {}, { "--dry-run" }, { "--by-character" }, { "--by-character", "--combine" } })
    {
        write ("out/e.ttal", "older");
        Names arguments { "export", "e.csv", "-o", "out", "--format", "ttal", "--force" };
        arguments.insert (arguments.end(), options.begin(), options.end());
        const auto result = run (arguments);
        EXPECT_EQ (result.status, 0) << result.errors;
        EXPECT_THAT (result.errors, EndsWith (nothing));
        EXPECT_THAT (result.errors, Not (HasSubstr ("rite " + path ("out"))));
        EXPECT_EQ (read ("out/e.ttal"), "older");
        EXPECT_EQ (filesInFolder(), (Names { "e.csv", "out", "out/e.ttal" }));
    }
}

TEST_F (DocumentsTest, aConversionOfNoEventsIntoTTALSaysSo)
{
    write ("e.csv", "Start TC,Text\n");
    const auto result = run ({ "convert", "e.csv", "e.ttal", "--json", "--quiet" });
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.json()["files"], nlohmann::ordered_json::array());
    EXPECT_THAT (result.json()["messages"].dump(),
                 HasSubstr ("Nothing to write: without an event there is no document for ttal"));
    EXPECT_EQ (filesInFolder(), (Names { "e.csv", "out" }));
}

TEST_F (DocumentsTest, otherDocumentsOfAListWithoutEventsAreWritten)
{
    write ("e.csv", "Start TC,Text\n");
    const auto result = run ({ "export", "e.csv", "-o", "out", "--format", "ttal,csv,asc,arendis" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (filesInFolder(), (Names { "e.csv", "out", "out/e.asc", "out/e.csv", "out/e.txt" }));
}

TEST_F (DocumentsTest, byCharacterOnlyTextsOfFixedColumnsAreWrittenWithoutEvents)
{
    write ("e.csv", "Start TC,Text\n");
    const auto result =
        run ({ "export", "e.csv", "-o", "out", "--format", "csv,ttal,asc", "--by-character" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_THAT (result.errors,
                 HasSubstr ("Nothing to write: without an event there is no document for csv\n"));
    EXPECT_EQ (filesInFolder(), (Names { "e.csv", "out", "out/e.asc" }));
}

// ---- options -------------------------------------------------------------------------------------------------------------

TEST_F (DocumentsTest, aDelimiterMakesNoDifferenceToTakerLists)
{
    write ("x.csv", threeCues);

    for (const auto* format : { "ds-taker", "euro-taker" })
        EXPECT_THAT (run ({ "export", "x.csv", "-o", "out", "--name", format, "--format", format,
                            "--delimiter", "tab" })
                         .errors,
                     HasSubstr ("--delimiter makes no difference to " + std::string (format) + "\n"));

    EXPECT_THAT (read ("out/ds-taker.csv"), HasSubstr ("\"A1\",\"\","));
    EXPECT_THAT (read ("out/euro-taker.csv"), HasSubstr ("TakeNr;In;Out"));
    EXPECT_THAT (
        run ({ "export", "x.csv", "-o", "out", "--format", "csv,ds-taker", "--delimiter", "tab" }).errors,
        Not (HasSubstr ("--delimiter")));
}

} // namespace
