// SPDX-License-Identifier: GPL-3.0-only
#include "import/DBFFile.h"

#include "import/DBFSupport.h"
#include "import/ImportSupport.h"
#include "import/frame/TableBudget.h"
#include "support/ChildProcess.h"
#include "support/CollectedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using namespace ZEP::Overmarks;
using namespace DBFSupport;
using ImportSupport::dataFile;
using ImportSupport::TemporaryFolder;

namespace
{

using Pieces = std::vector<std::string>;
using Columns = std::map<juce::String, int>;

const std::vector<Field> cueFields {
    { "TAKE", 4 }, { "TC_IN", 11 }, { "TC_OUT", 11 }, { "SUB", 6 }, { "MARKER1", 12 }
};

class DBFFileTest : public testing::Test
{
protected:
    /** Opens a file with these bytes and reads it. */
    DBFFile::Table parse (const std::string& bytes)
    {
        dbf = std::make_unique<DBFFile> (folder.file ("list.dbf", bytes).c_str());
        return dbf->Parse (columns);
    }

    DBFFile::Table parse (const std::vector<Field>& fields, const std::vector<Record>& records)
    {
        return parse (table (fields, records));
    }

    /** The columns of a table with fields of these names. */
    Columns columnsOf (const std::vector<std::string>& names)
    {
        std::vector<Field> fields;
        for (const auto& name : names)
            fields.push_back ({ name, 1 });
        parse (fields, {});
        return columns;
    }

    /** What the log says, without the paths of the files. */
    [[nodiscard]] Pieces logged() const
    {
        Pieces lines;
        for (const auto& line : log.lines())
            lines.push_back (line.substr (line.find (".dbf: ") + 6));
        return lines;
    }

    ZEP::Overmarks::Testing::CollectedLog log;
    TemporaryFolder folder;
    Columns columns;
    std::unique_ptr<DBFFile> dbf;
};

} // namespace

TEST (DBFSplit, cutsAtTheSeparators)
{
    EXPECT_EQ (split ("01:02:03:04", ':'), (Pieces { "01", "02", "03", "04" }));
    EXPECT_EQ (split ("alone", ':'), (Pieces { "alone" }));
    EXPECT_EQ (split ("a::b", ':'), (Pieces { "a", "", "b" }));
    EXPECT_EQ (split (":a", ':'), (Pieces { "", "a" }));
}

TEST (DBFSplit, aSeparatorAtTheEndBeginsNoFurtherPiece)
{
    EXPECT_EQ (split ("a:", ':'), (Pieces { "a" }));
    EXPECT_EQ (split ("a::", ':'), (Pieces { "a", "" }));
    EXPECT_EQ (split (":", ':'), (Pieces { "" }));
    EXPECT_EQ (split ("", ':'), Pieces());
}

//==============================================================================
TEST_F (DBFFileTest, theTitlesAreTheNamesOfTheFieldsAndEventType)
{
    EXPECT_EQ (parse (cueFields, {}),
               (DBFFile::Table { { "TAKE", "TC_IN", "TC_OUT", "SUB", "MARKER1", "Event Type" } }));
    EXPECT_EQ (dbf->fieldDescriptors.size(), 5u);
    EXPECT_EQ (dbf->recordLength, 44);
    EXPECT_EQ (dbf->maxFieldLength, 12);
    EXPECT_EQ (dbf->tcInFieldIndex, 1);
    EXPECT_EQ (dbf->tcOutFieldIndex, 2);
    EXPECT_EQ (dbf->markerFieldIndices, (std::vector<int> { 4 }));
    EXPECT_EQ (dbf->header[0], 3);
}

TEST_F (DBFFileTest, openingReadsNoRecord)
{
    const DBFFile file (
        folder.file ("list.dbf", table (cueFields, { { " ", "1", "a", "b", "c", "d" } })).c_str());
    EXPECT_EQ (file.table.size(), 1u);
}

struct NameCase
{
    const char* test;
    std::string name;
    Columns columns; // beside "Event Type" and what the first field counts as
};

class DBFFieldName : public DBFFileTest, public testing::WithParamInterface<NameCase>
{
};

TEST_P (DBFFieldName, isRecognised)
{
    auto expected = GetParam().columns;
    expected.insert ({ "Event Type", 2 });
    expected.insert ({ "Cue Number", 0 });
    EXPECT_EQ (columnsOf ({ "FIRST", GetParam().name }), expected);
}

INSTANTIATE_TEST_SUITE_P (
    Names, DBFFieldName,
    testing::Values (NameCase { "start", "TC_IN", { { "Start TC", 1 } } },
                     NameCase { "startInside", "MY_TC_IN_1", { { "Start TC", 1 } } },
                     NameCase { "end", "TC_OUT", { { "End TC", 1 } } },
                     NameCase { "text", "SUBTITLE", { { "Text", 1 } } },
                     NameCase { "cueNumber", "TAKENR", { { "Cue Number", 1 } } },
                     NameCase { "textAndCueNumber", "SUBTAKE", { { "Text", 1 }, { "Cue Number", 1 } } },
                     NameCase { "startAndEnd", "TC_INTC_OUT", { { "Start TC", 1 }, { "End TC", 1 } } },
                     NameCase { "marker", "MARKER", {} }, NameCase { "smallLetters", "tc_in", {} },
                     NameCase { "other", "ROLE", {} },
                     NameCase { "unterminated", "ABCDEFGHTC_INxyz", { { "Start TC", 1 } } },
                     NameCase { "empty", "", {} }),
    [] (const auto& rowOfTable) { return rowOfTable.param.test; });

TEST_F (DBFFileTest, ofTwoFieldsForOneColumnTheLaterIsTaken)
{
    const auto all = columnsOf ({ "TC_IN", "TC_IN2", "SUB1", "SUB2", "TAKE", "RETAKE" });
    EXPECT_EQ (all.at ("Start TC"), 1);
    EXPECT_EQ (all.at ("Text"), 3);
    EXPECT_EQ (all.at ("Cue Number"), 5);
    EXPECT_EQ (dbf->tcInFieldIndex, 1);
}

TEST_F (DBFFileTest, aNameThatFillsItsDescriptorEndsThere)
{
    const auto bytes = std::string (32, '\0') + std::string (32, 'X') + "\r";
    EXPECT_EQ (parse (bytes).at (0).at (0), std::string (32, 'X'));
    EXPECT_EQ (dbf->recordLength, 'X');
}

TEST_F (DBFFileTest, fieldsAreUpTo255BytesLong)
{
    EXPECT_EQ (parse ({ { "SUB", 255 } }, { { " ", std::string (255, 'x') } }).at (1),
               (Pieces { std::string (255, 'x'), "ADR Cue" }));
    EXPECT_EQ (dbf->maxFieldLength, 255);
}

//==============================================================================
TEST_F (DBFFileTest, everyRecordIsARowWithItsPadding)
{
    EXPECT_EQ (parse ({ { "TAKE", 3 }, { "SUB", 5 } },
                      { { " ", "1", "a b" }, { " ", "22", "" }, { "x", "3", "c" } }),
               (DBFFile::Table { { "TAKE", "SUB", "Event Type" },
                                 { "1  ", "a b  ", "ADR Cue" },
                                 { "22 ", "     ", "ADR Cue" },
                                 { "3  ", "c    ", "ADR Cue" } }));
    EXPECT_EQ (logged(), Pieces());
}

TEST_F (DBFFileTest, deletedRecordsGiveNoRowAndNoMarkers)
{
    const auto rows = parse (cueFields, { { "*", "1", "01:00:00:00", "01:00:01:00", "a", "01:00:00:12" },
                                          { " ", "2", "01:00:02:00", "01:00:03:00", "b", "" },
                                          { "*", "3", "01:00:04:00", "01:00:05:00", "c", "" } });
    ASSERT_EQ (rows.size(), 2u);
    EXPECT_EQ (rows[1][0], "2   ");
}

TEST_F (DBFFileTest, rowsAreHandedOutOneByOneAndNotKept)
{
    const auto bytes =
        table ({ { "TAKE", 2 }, { "TC_IN", 8 }, { "TC_OUT", 8 }, { "MARKER", 8 } },
               { { " ", "7", "1:0:0:0", "1:0:2:0", "1:0:1:0" }, { " ", "8", "in", "out", "no" } });
    DBFFile file (folder.file ("list.dbf", bytes).c_str());
    DBFFile::Table rows;
    EXPECT_TRUE (file.readRows ([&] (const auto& cells) { rows.emplace_back (cells.begin(), cells.end()); }));
    EXPECT_EQ (rows, (DBFFile::Table { { "7 ", "1:0:0:0 ", "1:0:2:0 ", "1:0:1:0 ", "ADR Cue" },
                                       { "7 ", "1:0:1:0 ", "1:0:2:0 ", "", "ADR Cue" },
                                       { "8 ", "in      ", "out     ", "no      ", "ADR Cue" } }));
    EXPECT_EQ (file.table.size(), 1u); // the titles
    EXPECT_TRUE (file.readRows ([] (const auto&) { ADD_FAILURE() << "all have been handed out"; }));
}

TEST_F (DBFFileTest, theEndOfFileByteIsNeedless)
{
    const std::vector<Record> records { { " ", "1", "s", "e", "a", "" }, { " ", "2", "s", "e", "b", "" } };
    const auto rows = parse (table (cueFields, records));
    EXPECT_EQ (rows.size(), 3u);
    EXPECT_EQ (parse (table (cueFields, records, "")), rows);
    EXPECT_EQ (logged(), Pieces());
}

TEST_F (DBFFileTest, aDeletedRecordAtTheEndCostsNoOther)
{
    const std::vector<Record> records { { " ", "1", "s", "e", "a", "" }, { "*", "2", "s", "e", "b", "" } };
    for (const auto* end : { "", "\x1a" })
        EXPECT_EQ (parse (table (cueFields, records, end)).size(), 2u);

    const auto cut = table (cueFields, records, "");
    EXPECT_EQ (parse (cut.substr (0, cut.size() - 10)).size(), 2u);
}

TEST_F (DBFFileTest, aRecordThatIsCutOffIsLeftOutWithItsMarkers)
{
    const std::vector<Record> records { { " ", "1", "s", "e", "a", "" },
                                        { " ", "2", "s", "e", "b", "01:00:00:00" } };
    const auto bytes = table (cueFields, records, "");
    for (std::size_t missing = 1; missing <= 44; ++missing)
        EXPECT_EQ (parse (bytes.substr (0, bytes.size() - missing)).size(), 2u) << missing;
    EXPECT_EQ (logged().back(), "it ends inside a record, which is left out");
}

TEST_F (DBFFileTest, aMarkerThatStandsAheadOfTheCutIsLeftOutWithItsRecord)
{
    const std::vector<Field> markerFirst {
        { "TC_IN", 11 }, { "TC_OUT", 11 }, { "MARKER1", 12 }, { "SUB", 6 }
    };
    const auto bytes = table (markerFirst, { { " ", "s", "e", "01:00:00:00", "text" } }, "");

    EXPECT_EQ (parse (bytes).size(), 3u);
    EXPECT_EQ (parse (bytes.substr (0, bytes.size() - 1)).size(), 1u);
}

//==============================================================================
TEST_F (DBFFileTest, aMarkerIsAFurtherRowBehindItsRecord)
{
    const auto rows = parse (cueFields, { { " ", "7", "01:00:00:00", "01:00:03:00", "a", "01:00:01:12" },
                                          { " ", "8", "01:00:04:00", "01:00:05:00", "b", "" } });
    ASSERT_EQ (rows.size(), 4u);
    EXPECT_EQ (rows[2], (Pieces { "7   ", "01:00:01:12 ", "01:00:03:00", "", "", "ADR Cue" }));
    EXPECT_EQ (rows[3][0], "8   ");
}

TEST_F (DBFFileTest, severalMarkersFollowInTheOrderOfTheirFields)
{
    auto fields = cueFields;
    fields.push_back ({ "MARKER2", 11 });
    const auto rows =
        parse (fields, { { " ", "7", "01:00:00:00", "01:00:03:00", "a", "01:00:02:00", "01:00:01:00" } });
    ASSERT_EQ (rows.size(), 4u);
    EXPECT_EQ (rows[2][1], "01:00:02:00 ");
    EXPECT_EQ (rows[3], (Pieces { "7   ", "01:00:01:00", "01:00:03:00", "", "", "", "ADR Cue" }));
}

TEST_F (DBFFileTest, onlyFourPiecesMakeAMarker)
{
    for (const auto* text : { "01:00:02", "1:0:2:0:0", "", "::", "01.00.02.00" })
        EXPECT_EQ (parse (cueFields, { { " ", "1", "s", "e", "a", text } }).size(), 2u) << text;
    for (const auto* text : { "a:b:c:d", "01:00:02:", ":::" })
        EXPECT_EQ (parse (cueFields, { { " ", "1", "s", "e", "a", text } }).size(), 3u) << text;
}

TEST_F (DBFFileTest, aSeparatorAtTheEndOfAMarkerIsNoFifthPiece)
{
    auto fields = cueFields;
    fields.back().length = 12;
    EXPECT_EQ (parse (fields, { { " ", "1", "s", "e", "a", "01:00:02:00:" } }).size(), 3u);
}

TEST_F (DBFFileTest, withoutStartOrEndThereAreNoMarkers)
{
    EXPECT_EQ (
        parse ({ { "TAKE", 1 }, { "TC_IN", 1 }, { "MARKER", 11 } }, { { " ", "1", "s", "01:00:00:00" } })
            .size(),
        2u);
    EXPECT_EQ (
        parse ({ { "TAKE", 1 }, { "TC_OUT", 1 }, { "MARKER", 11 } }, { { " ", "1", "e", "01:00:00:00" } })
            .size(),
        2u);
}

TEST_F (DBFFileTest, oneFieldForStartAndEndTakesTheMarker)
{
    const auto rows = parse ({ { "TAKE", 1 }, { "TC_INTC_OUT", 11 }, { "MARKER", 11 } },
                             { { " ", "1", "01:00:00:00", "01:00:02:00" } });
    EXPECT_EQ (rows.at (2), (Pieces { "1", "01:00:02:00", "", "ADR Cue" }));
}

TEST_F (DBFFileTest, withoutATakeFieldTheFirstFieldIsTheCueNumberOfMarkersToo)
{
    const auto rows = parse ({ { "TC_IN", 11 }, { "TC_OUT", 11 }, { "MARKER", 11 } },
                             { { " ", "01:00:00:00", "01:00:03:00", "01:00:02:00" } });
    EXPECT_EQ (rows.at (2), (Pieces { "01:00:00:00", "01:00:03:00", "", "ADR Cue" }));
    EXPECT_EQ (columns.at ("Cue Number"), 0);
}

//==============================================================================
TEST_F (DBFFileTest, fieldsOfNoLengthAreEmptyCells)
{
    EXPECT_EQ (parse ({ { "TAKE", 0 }, { "SUB", 2 }, { "ROLE", 0 } }, { { " ", "", "ab", "" } }),
               (DBFFile::Table { { "TAKE", "SUB", "ROLE", "Event Type" }, { "", "ab", "", "ADR Cue" } }));
}

TEST_F (DBFFileTest, aTableWithoutFieldsHasTheTitleOfTheTypeAlone)
{
    EXPECT_EQ (parse (head ({})), (DBFFile::Table { { "Event Type" } }));
    EXPECT_EQ (columns, (Columns { { "Event Type", 0 } }));
}

TEST_F (DBFFileTest, descriptorsWithoutAnEndLeaveTheTitles)
{
    const auto bytes = head (cueFields);
    EXPECT_EQ (parse (bytes.substr (0, bytes.size() - 1)).at (0).size(), 6u);
    EXPECT_EQ (parse (bytes.substr (0, bytes.size() - 2)).at (0).size(), 5u);
    EXPECT_EQ (dbf->table.size(), 1u);
    EXPECT_EQ (logged().back(),
               "it ends before the list of its fields does; it may be no dBase table of the older kind");
}

TEST_F (DBFFileTest, whatHasNoHeaderHasNoTable)
{
    for (const std::size_t length : { 0u, 1u, 31u })
    {
        EXPECT_EQ (parse (head (cueFields).substr (0, length)), DBFFile::Table()) << length;
        EXPECT_TRUE (columns.empty());
    }

    DBFFile missing ("/nowhere/list.dbf");
    EXPECT_EQ (missing.Parse (columns), DBFFile::Table());
    DBFFile aFolder (folder.path.c_str());
    EXPECT_EQ (aFolder.Parse (columns), DBFFile::Table());
}

TEST_F (DBFFileTest, aHeaderAloneLeavesTheTitleOfTheType)
{
    EXPECT_EQ (parse (head (cueFields).substr (0, 32)), (DBFFile::Table { { "Event Type" } }));
}

TEST_F (DBFFileTest, theCountsOfTheHeaderPlayNoPart)
{
    const std::vector<Record> records { { " ", "1", "s", "e", "a", "" } };
    auto bytes = table (cueFields, records);
    const auto rows = parse (bytes);
    bytes.replace (4, 4, "\xff\xff\xff\xff");
    EXPECT_EQ (parse (bytes), rows);
    EXPECT_EQ (logged(), Pieces());
}

TEST_F (DBFFileTest, recordsThatBeginElsewhereAreToldToTheLog)
{
    const DBFFile foxpro (dataFile ("dbf/foxpro.dbf").c_str());
    EXPECT_EQ (logged(), (Pieces { "its records should begin at byte 488 but are read from byte 225 on; if "
                                   "fields are shifted, save it as delimited text" }));
}

TEST_F (DBFFileTest, aZeroBehindTheFieldsShiftsThemAndIsToldToTheLog)
{
    const std::vector<Field> fields { { "SUB", 3 } };
    auto bytes = head (fields);
    bytes[8] = static_cast<char> (bytes.size() + 1);
    EXPECT_EQ (parse (bytes + std::string (1, '\0') + " abc def\x1a"),
               (DBFFile::Table { { "SUB", "Event Type" }, { " ab", "ADR Cue" }, { " de", "ADR Cue" } }));
    EXPECT_EQ (logged(), (Pieces { "its records should begin at byte 66 but are read from byte 65 on; if "
                                   "fields are shifted, save it as delimited text",
                                   "it ends inside a record, which is left out" }));
}

TEST_F (DBFFileTest, whatIsNoFileIsToldToTheLog)
{
    for (const auto& path : { (folder.path / "missing.dbf").string(), folder.path.string() })
    {
        DBFFile file (path.c_str());
        EXPECT_EQ (file.Parse (columns), DBFFile::Table()) << path;
        EXPECT_THAT (log.lines().back(), testing::EndsWith (path + ": there is no such file"));
    }
    EXPECT_EQ (log.lines().size(), 2u);
}

TEST_F (DBFFileTest, aFileThatNobodyMayReadIsToldToTheLog)
{
    const auto closed = folder.file ("closed.dbf", head (cueFields));
    std::filesystem::permissions (closed, std::filesystem::perms::none);
    std::filesystem::permissions (folder.path, static_cast<std::filesystem::perms> (0755));
    const auto said = ZEP::Overmarks::Testing::inChildProcess (
        [&]
        {
            if (! ZEP::Overmarks::Testing::becomeOrdinaryUser())
                return std::string ("the administrator's rights are kept");

            DBFFile file (closed.c_str());
            const auto rows = file.Parse (columns).size();
            return std::to_string (rows) + " rows; " + testing::PrintToString (logged());
        });
    EXPECT_EQ (said, "0 rows; { \"it can't be opened\" }");
}

TEST_F (DBFFileTest, aFileOfMoreThanAGigabyteIsNotRead)
{
    const auto path = folder.file ("large.dbf", table (cueFields, { { " ", "1", "s", "e", "a", "" } }));
    std::filesystem::resize_file (path, (std::uintmax_t { 1 } << 30U) + 1);
    DBFFile file (path.c_str());
    EXPECT_EQ (file.Parse (columns), DBFFile::Table());
    EXPECT_EQ (logged(), (Pieces { "it is larger than 1073741824 bytes and is not read" }));
}

TEST_F (DBFFileTest, isAnOpenFileThatCanBeSoughtAndClosed)
{
    parse (cueFields, {});
    EXPECT_TRUE (dbf->is_open());
    dbf->clear();
    dbf->seekg (0);
    EXPECT_EQ (dbf->get(), 3);
    EXPECT_EQ (dbf->tellg(), std::streampos (1));
    dbf->close();
    EXPECT_TRUE (dbf->good());
    EXPECT_FALSE (dbf->is_open());
}

TEST_F (DBFFileTest, withoutAFileItIsNotOpen)
{
    DBFFile missing ((folder.path / "missing.dbf").c_str());
    EXPECT_FALSE (missing.is_open());
    EXPECT_TRUE (missing.fail());
    EXPECT_FALSE (DBFFile (folder.path.c_str()).is_open());
}

TEST_F (DBFFileTest, whoeverSeeksTheStreamReadsFromThere)
{
    const auto bytes =
        table (cueFields, { { " ", "1", "a", "b", "c", "d" }, { " ", "2", "a", "b", "c", "d" } });
    DBFFile file (folder.file ("list.dbf", bytes).c_str());
    file.seekg (1 + file.recordLength, std::ios::cur);
    const auto rows = file.Parse (columns);
    ASSERT_EQ (rows.size(), 2u);
    EXPECT_EQ (rows[1][0].substr (0, 1), "2");
}

TEST_F (DBFFileTest, parsingAgainReturnsTheSameTable)
{
    const auto rows = parse (cueFields, { { " ", "1", "s", "e", "a", "" } });
    EXPECT_EQ (dbf->Parse (columns), rows);
}

//==============================================================================
TEST_F (DBFFileTest, fieldsHaveALimit)
{
    const auto withFields = [this] (std::size_t count) {
        return parse (head (std::vector<Field> (count, Field { "X", 0 })) + "  ");
    };

    const auto rows = withFields (ImportLimits().fieldsOfDBase);
    EXPECT_EQ (rows.size(), 3u);
    EXPECT_EQ (rows.at (0).size(), ImportLimits().fieldsOfDBase + 1);

    EXPECT_EQ (withFields (ImportLimits().fieldsOfDBase + 1),
               DBFFile::Table (rows.begin(), rows.begin() + 1));
    EXPECT_EQ (logged().back(), "it has more than 4096 fields, and no record is read; it may be no dBase "
                                "table of the older kind");
}

TEST_F (DBFFileTest, fieldsWithoutEndLeaveTheFirstTitles)
{
    const auto rows = parse (std::string (32 << 20, '\0'));
    EXPECT_EQ (rows.size(), 1u);
    EXPECT_EQ (rows.at (0).size(), ImportLimits().fieldsOfDBase + 1);
    EXPECT_EQ (rows.at (0).back(), "Event Type");
    EXPECT_EQ (columns, (Columns { { "Event Type", static_cast<int> (ImportLimits().fieldsOfDBase) } }));
    EXPECT_EQ (logged().size(), 1u);
}

TEST_F (DBFFileTest, fieldsOfNoLengthByTheThousandDoNotFillTheMemory)
{
    const std::vector<Field> fields (4000, Field { "X", 0 });
    const auto rows = parse (head (fields) + std::string (1 << 20, ' '));
    EXPECT_LE (rows.size() * rows.at (0).size(),
               ImportLimits().spareCells + (4000u * 32u + (2u << 20U)) / DBFFile::fileBytesPerCell);
    EXPECT_EQ (logged().back().substr (0, 38), "it grows into a table that is too larg");
}

TEST_F (DBFFileTest, fieldsOfOneByteDoNotTakeAHundredTimesTheirFile)
{
    const std::vector<Field> fields (100, Field { "X", 1 });
    constexpr std::size_t bytes = 4 << 20;
    const auto rows = parse (head (fields) + std::string (bytes, ' '));
    EXPECT_GT (rows.size() * 101, ImportLimits().spareCells);
    EXPECT_LE (rows.size() * 101, ImportLimits().spareCells + bytes / DBFFile::fileBytesPerCell + 1000);
}

TEST_F (DBFFileTest, aLargeTableOfAStudioIsReadWhole)
{
    std::vector<Field> fields { { "TAKE", 8 }, { "TC_IN", 11 }, { "TC_OUT", 11 }, { "SUB", 120 } };
    fields.resize (24, Field { "DONE", 1 });
    Record record (25, "T");
    record[0] = " ";
    EXPECT_EQ (parse (fields, std::vector<Record> (40000, record)).size(), 40001u);
    EXPECT_EQ (logged(), Pieces());
}

TEST_F (DBFFileTest, markersByTheThousandDoNotFillTheMemory)
{
    std::vector<Field> fields { { "TAKE", 1 }, { "TC_IN", 1 }, { "TC_OUT", 1 } };
    fields.resize (4000, Field { "MARKER", 7 });
    Record record (4001, "a:b:c:d");
    record[0] = " ";
    const auto rows = parse (fields, { record });
    const auto bytesOfTable = table (fields, { record }).size();
    EXPECT_GT (rows.size(), 2u);
    EXPECT_LT (rows.size(), 300u);
    EXPECT_EQ (logged().back(), "it grows into a table that is too large (more than "
                                    + std::to_string (bytesOfTable / 8 + (1u << 20))
                                    + " cells); nothing is read from row " + std::to_string (rows.size() + 1)
                                    + " on");
}
