// SPDX-License-Identifier: GPL-3.0-only
#include "import/DBFEventFileImporter.h"

#include "import/DBFSupport.h"
#include "import/ImportSupport.h"
#include "import/frame/EventRowReader.h"
#include "support/CollectedLog.h"
#include "support/MakeEvents.h"
#include "support/OvermarksTest.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace ZEP::Overmarks;
using namespace ZEP::Core;
using namespace ImportSupport;

namespace
{

/** No import of this format says a word, whatever it is given. */
class DBFImport : public testing::Test
{
protected:
    ~DBFImport() override { EXPECT_EQ (message, "from before"); }

    /** Imports a file that comes with the tests. */
    TextTable importFile (const std::string& name) { return importPath (dataFile ("dbf/" + name)); }

    /** Imports a file with these bytes. */
    TextTable import (const std::string& bytes) { return importPath (folder.file ("list.dbf", bytes)); }

    /** Imports a table of one field with these cells. */
    TextTable importCells (const std::vector<std::string>& cells, int length = 20)
    {
        std::vector<DBFSupport::Record> records;
        for (const auto& cell : cells)
            records.push_back ({ " ", cell });
        return import (DBFSupport::table ({ { "SUB", length } }, records));
    }

    TextTable importPath (const std::string& path)
    {
        importer = std::make_unique<DBFEventFileImporter> (path, message);
        return textsOf (importer->rows);
    }

    /** Reads the same file once more. */
    TextTable readAgain (int encoding)
    {
        importer->parse (message, static_cast<TextEncoding> (encoding));
        return textsOf (importer->rows);
    }

    Testing::CollectedLog log;
    TemporaryFolder folder;
    juce::String message { "from before" };
    std::unique_ptr<DBFEventFileImporter> importer;
};

const std::vector<std::string> harbourTitles { "TAKE_NR",  "TC_IN",   "TC_OUT",    "ROLE",
                                               "SUBTITLE", "MARKER1", "Event Type" };

const TextTable harbour {
    harbourTitles,
    { "H1", "01:00:01:00", "01:00:03:12", "RADIO", "Theharbourisclosed.", "01:00:02:10", "ADR Cue" },
    { "H1", "01:00:02:10", "01:00:03:12", "", "", "", "ADR Cue" },
    { "H3", "01:00:04:05", "01:00:05:24", "ANNA", "Whosaysso?", "", "ADR Cue" },
    { "H4", "01:00:06:01", "01:00:09:00", "CAPTAIN", "Thewaterdoes.", "no:marker:1", "ADR Cue" }
};

const std::map<juce::String, int> harbourColumns {
    { "Start TC", 1 }, { "End TC", 2 }, { "Text", 4 }, { "Cue Number", 0 }, { "Event Type", 6 }
};

} // namespace

TEST_F (DBFImport, isFormatOneAndLeavesTheColumnsToTheUser)
{
    importFile ("harbour.dbf");
    EXPECT_EQ (importer->type(), 1);
    EXPECT_TRUE (importer->userMappingEnabled());
    EXPECT_EQ (importer->languageCode(), "");
    EXPECT_EQ (importer->timeInfo, nullptr);
    EXPECT_EQ (importer->characterMap, nullptr);
}

TEST_F (DBFImport, aTableComesWithItsTitlesAndItsColumnsGuessed)
{
    EXPECT_EQ (importFile ("harbour.dbf"), harbour);
    EXPECT_EQ (importer->columnMap, harbourColumns);
    EXPECT_EQ (log.lines(), std::vector<std::string>());
}

TEST_F (DBFImport, threeRecordsGiveFourRows) { EXPECT_EQ (importCells ({ "a", "b", "c" }).size(), 4u); }

TEST_F (DBFImport, cellsArePlainText)
{
    importFile ("harbour.dbf");
    for (const auto& row : importer->rows)
        for (const auto& cell : row)
            EXPECT_TRUE (cell.isPlain());
}

TEST_F (DBFImport, aFileWithoutItsLastByteIsTheSame)
{
    EXPECT_EQ (importFile ("no_end_of_file.dbf"), harbour);
    EXPECT_EQ (log.lines(), std::vector<std::string>());
}

//==============================================================================
TEST_F (DBFImport, everyBlankIsTakenOutOfACell)
{
    EXPECT_EQ (
        importCells ({ "two words", "   ", " ä  ö " }),
        (TextTable {
            { "SUB", "Event Type" }, { "twowords", "ADR Cue" }, { "", "ADR Cue" }, { "äö", "ADR Cue" } }));
}

TEST_F (DBFImport, theTypeAndItsTitleKeepTheirBlankWhereverTheyStand)
{
    EXPECT_EQ (importCells ({ "ADR Cue" }, 7).at (1), (std::vector<std::string> { "ADR Cue", "ADR Cue" }));
    EXPECT_EQ (importCells ({ "Event Type" }, 10).at (1),
               (std::vector<std::string> { "Event Type", "ADR Cue" }));
    EXPECT_EQ (importCells ({ "ADR Cue" }, 8).at (1).at (0), "ADRCue");
    EXPECT_EQ (importCells ({ std::string ("ADR Cue\0", 8) }, 8).at (1).at (0), "ADR Cue");
    EXPECT_EQ (importCells ({ std::string ("Event Type\0", 11) }, 11).at (1).at (0), "EventType");
}

TEST_F (DBFImport, blanksAreTakenOutOfTitlesToo)
{
    EXPECT_EQ (import (DBFSupport::table ({ { "MY SUB", 1 } }, {})),
               (TextTable { { "MYSUB", "Event Type" } }));
}

TEST_F (DBFImport, tabsAndLineBreaksStay)
{
    EXPECT_EQ (importCells ({ "a\tb\r\nc" }).at (1).at (0), "a\tb\r\nc");
}

//==============================================================================
TEST_F (DBFImport, pureASCIIShowsNoEncoding)
{
    importCells ({ "a", "b" });
    EXPECT_EQ (importer->encoding, TextEncodingUnknown);
}

TEST_F (DBFImport, theFirstCellThatShowsAnEncodingSettlesIt)
{
    EXPECT_EQ (
        importCells ({ "plain", "Sch\xf6n", "\xc3\xa4" }),
        (TextTable {
            { "SUB", "Event Type" }, { "plain", "ADR Cue" }, { "Schön", "ADR Cue" }, { "Ã¤", "ADR Cue" } }));
    EXPECT_EQ (importer->encoding, TextEncodingWindows1252);

    EXPECT_EQ (importCells ({ "plain", "Sch\xc3\xb6n" }).at (2).at (0), "Schön");
    EXPECT_EQ (importer->encoding, TextEncodingUTF8);
}

TEST_F (DBFImport, aTableInTheWrongEncodingIsReadAnewInTheRightOne)
{
    EXPECT_NE (importFile ("wrong_encoding.dbf").at (1).at (3), "SchönenAbend.");
    EXPECT_EQ (importer->encoding, TextEncodingWindows1252);

    const auto rows = readAgain (TextEncodingMacOSRoman);
    EXPECT_EQ (importer->encoding, TextEncodingMacOSRoman);
    EXPECT_EQ (rows.at (1).at (3), "SchönenAbend.");
    EXPECT_EQ (rows.at (2).at (3), "Überhauptnicht!");
}

TEST_F (DBFImport, bytesThatAreNoUTF8AreReplacedNotPassedOn)
{
    importCells ({ "x\xc0\x80y\xed\xa0\x80z\xf0\x9f" });
    const auto cell = readAgain (TextEncodingUTF8).at (1).at (0);
    EXPECT_TRUE (juce::CharPointer_UTF8::isValidString (cell.c_str(), static_cast<int> (cell.size())));
    EXPECT_EQ (cell.front(), 'x');
}

TEST_F (DBFImport, utf16CellsLoseTheirBlanksAndNothingElse)
{
    const auto bytes =
        DBFSupport::table ({ { "SUB", 10 } }, { { " ", std::string ("a\0 \0b\0 \0c\0", 10) } });
    import (bytes);
    EXPECT_EQ (importer->encoding, TextEncodingUTF16);
    EXPECT_EQ (importer->rows.at (1).at (0).getText(), "abc");
}

TEST_F (DBFImport, theTypeAndTheTitlesAreReadableInUTF16)
{
    const std::string text ("a\0b\0c\0", 6);
    const auto bytes = DBFSupport::table ({ { "SUB", 6 }, { "TC_IN", 11 } },
                                          { { " ", text, "01:00:00:00" }, { " ", text, "" } });
    const auto detected = import (bytes);
    ASSERT_EQ (importer->encoding, TextEncodingUTF16);
    const auto named = readAgain (TextEncodingUTF16);
    EXPECT_EQ (importer->encoding, TextEncodingUTF16);

    for (const auto& rows : { detected, named })
    {
        EXPECT_EQ (rows.at (0), (std::vector<std::string> { "SUB", "TC_IN", "Event Type" }));
        EXPECT_EQ (rows.at (1).at (0), "abc");
        EXPECT_EQ (rows.at (1).at (2), "ADR Cue");
        EXPECT_EQ (rows.at (2).at (2), "ADR Cue");
    }

    const auto result = EventRowReader (Testing::timeInfoAt ("25", "01:00:00:00"), {}).read (*importer);
    ASSERT_EQ (result.events.size(), 2u);
    EXPECT_EQ (result.events[1]->getType(), EventTypeADRCue);
}

TEST_F (DBFImport, aTitleMayShowTheEncoding)
{
    EXPECT_EQ (import (DBFSupport::table ({ { "SUB_\xc4", 2 } }, { { " ", "\xe4" } })),
               (TextTable { { "SUB_Ä", "Event Type" }, { "ä", "ADR Cue" } }));
    EXPECT_EQ (importer->encoding, TextEncodingWindows1252);
    EXPECT_EQ (readAgain (TextEncodingMacOSRoman).at (0).at (0), "SUB_ƒ");
}

//==============================================================================
TEST_F (DBFImport, whatCannotBeReadIsAnEmptyTableAndNeverWaitedFor)
{
    const auto pipe = (folder.path / "pipe.dbf").string();
    ASSERT_EQ (::mkfifo (pipe.c_str(), 0600), 0);
    for (const auto& path :
         { pipe, folder.path.string(), (folder.path / "missing.dbf").string(), dataFile ("dbf/empty.dbf") })
    {
        EXPECT_EQ (importPath (path), TextTable()) << path;
        EXPECT_TRUE (importer->columnMap.empty()) << path;
        EXPECT_EQ (importer->encoding, TextEncodingUTF8) << path;
    }
}

TEST_F (DBFImport, aFileThatHasGoneEmptiesTheTable)
{
    const auto path = folder.file ("list.dbf", DBFSupport::table ({ { "SUB", 1 } }, { { " ", "a" } }));
    importPath (path);
    std::filesystem::remove (path);
    EXPECT_EQ (readAgain (TextEncodingUTF8), TextTable());
}

TEST_F (DBFImport, descriptorsWithoutAnEndLeaveTheTitles)
{
    EXPECT_EQ (importFile ("no_end_of_fields.dbf"), (TextTable { harbourTitles }));
}

TEST_F (DBFImport, aHeaderAloneLeavesTheTitleOfTheType)
{
    EXPECT_EQ (importFile ("header_only.dbf"), (TextTable { { "Event Type" } }));
}

TEST_F (DBFImport, fieldsWithoutRecordsLeaveTheTitles)
{
    EXPECT_EQ (importFile ("fields_only.dbf"), (TextTable { harbourTitles }));
    EXPECT_EQ (importer->columnMap, harbourColumns);
}

TEST_F (DBFImport, fieldsOfNoLengthAreEmpty)
{
    EXPECT_EQ (importFile ("zero_length_fields.dbf"), (TextTable { { "TAKE", "TC_IN", "SUB", "Event Type" },
                                                                   { "A1", "", "", "ADR Cue" },
                                                                   { "A2", "", "", "ADR Cue" } }));
}

TEST_F (DBFImport, theLongestFieldComesWhole)
{
    EXPECT_EQ (importFile ("huge_field.dbf").at (1).at (0), std::string (255, 'x'));
}

TEST_F (DBFImport, aTableThatIsCutOffKeepsTheRecordsBefore)
{
    EXPECT_EQ (importFile ("truncated.dbf"), TextTable (harbour.begin(), harbour.begin() + 3));
}

TEST_F (DBFImport, otherKindsOfTablesKeepTheirFieldNamesAndEnd)
{
    EXPECT_EQ (importFile ("foxpro.dbf").at (0), harbourTitles);
    EXPECT_FALSE (importFile ("dbase7.dbf").empty());
    EXPECT_FALSE (importFile ("bom.dbf").empty());
    EXPECT_FALSE (log.lines().empty());
}

TEST_F (DBFImport, garbageIsReadInEveryEncodingWithoutHarm)
{
    for (const auto* name : { "garbage.dbf", "dbase7.dbf", "bom.dbf" })
    {
        importFile (name);
        for (int encoding = -1; encoding <= 8; ++encoding)
        {
            const auto rows = readAgain (encoding);
            for (const auto& row : rows)
                EXPECT_EQ (row.size(), rows.front().size()) << name;
        }
    }
}

TEST_F (DBFImport, noPrefixOfAFileGivesMoreThanTheWhole)
{
    const auto bytes = bytesOfFile (dataFile ("dbf/harbour.dbf"));
    for (std::size_t length = 0; length <= bytes.size(); ++length)
    {
        const auto rows = import (bytes.substr (0, length));
        ASSERT_LE (rows.size(), harbour.size()) << length;
        for (std::size_t row = 1; row < rows.size(); ++row)
            EXPECT_EQ (rows[row], harbour[row]) << length;
    }
}

//==============================================================================
TEST_F (DBFImport, rowsBehindTheTitlesBecomeCues)
{
    importFile ("harbour.dbf");
    const auto result = EventRowReader (Testing::timeInfoAt ("25", "01:00:00:00"), {}).read (*importer);
    EXPECT_TRUE (result.problems.empty());
    ASSERT_EQ (result.events.size(), 4u);
    EXPECT_EQ (result.events[1]->getType(), EventTypeADRCue);
    EXPECT_EQ (result.events[1]->getStartTCString(), "01:00:02:10");
    EXPECT_EQ (result.events[1]->getEndTCString(), "01:00:03:12");
    EXPECT_EQ (result.events[1]->getCueNumber(), "H1");
    EXPECT_EQ (result.events[2]->getText().getText(), "Whosaysso?");
}

TEST_F (DBFImport, cellsOfOneTextShareIt)
{
    importCells ({ "CHARACTER 1", "CHARACTER 2", "CHARACTER 1" });
    const auto text = [this] (std::size_t row) { return importer->rows[row][0].getText().toRawUTF8(); };
    EXPECT_STREQ (text (3), "CHARACTER1");
    EXPECT_EQ (text (1), text (3));
}
