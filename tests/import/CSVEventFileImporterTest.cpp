// SPDX-License-Identifier: GPL-3.0-only
#include "import/CSVEventFileImporter.h"

#include "import/ImportSupport.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace ZEP::Overmarks;
using namespace ZEP::Core;
using namespace ImportSupport;

namespace
{

constexpr auto cantBeOpened = "Error parsing the CSV file";
constexpr auto nothingToImport = "The CSV file you tried to import doesn't contain any parsable content";

class CSVImport : public testing::Test
{
protected:
    /** Imports a file that comes with the tests. */
    CSVEventFileImporter& importFile (const std::string& name) { return importPath (dataFile (name)); }

    /** Imports a file with these bytes. */
    CSVEventFileImporter& import (const std::string& bytes)
    {
        return importPath (folder.file ("list.csv", bytes));
    }

    CSVEventFileImporter& importPath (const std::string& path)
    {
        message.clear();
        importer = std::make_unique<CSVEventFileImporter> (path, message);
        return *importer;
    }

    [[nodiscard]] std::string cell (std::size_t row, std::size_t column) const
    {
        return importer->rows.at (row).at (column).getText().toStdString();
    }

    TemporaryFolder folder;
    juce::String message;
    std::unique_ptr<CSVEventFileImporter> importer;
};

const TextTable germanList { { "TakeNr", "In", "Rolle", "Text", "Typ", "Anmerkung" },
                             { "1", "00:01:02:03", "MÜLLER", "Schönen Abend, Frau Weiß.", "On",
                               "Atmer davor" },
                             { "2", "00:01:04:11", "FRAU WEISS", "Überhaupt nicht schön!", "Off", "" },
                             { "3", "00:01:06:00", "MÜLLER", "Äh … doch?", "On", "lauter" } };

} // namespace

TEST_F (CSVImport, isFormatTwoAndLeavesTheColumnsToTheUser)
{
    importFile ("csv/comma.csv");
    EXPECT_EQ (importer->type(), 2);
    EXPECT_TRUE (importer->userMappingEnabled());
    EXPECT_EQ (importer->languageCode(), "");
    EXPECT_EQ (importer->timeInfo, nullptr);
    EXPECT_EQ (importer->characterMap, nullptr);
}

TEST_F (CSVImport, aCueListComesWithItsTitlesAndItsColumnsGuessed)
{
    importFile ("csv/comma.csv");
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->encoding, TextEncodingASCII);
    ASSERT_EQ (importer->rows.size(), 7u);
    EXPECT_EQ (cell (0, 1), "TC In");
    EXPECT_EQ (cell (3, 4), "Out, you say. With \"friends\".");

    const std::map<juce::String, int> columns { { "Cue Number", 0 }, { "Start TC", 1 }, { "End TC", 2 },
                                                { "Character", 3 },  { "Text", 4 },     { "Notes", 5 } };
    EXPECT_EQ (importer->columnMap.size(), 18u);
    for (const auto& [title, column] : importer->columnMap)
        EXPECT_EQ (column, columns.count (title) > 0 ? columns.at (title) : -1) << title;
}

TEST_F (CSVImport, semicolonsAndTabsWorkToo)
{
    importFile ("csv/semicolon.csv");
    EXPECT_EQ (message, "");
    ASSERT_EQ (importer->rows.size(), 5u);
    EXPECT_EQ (cell (3, 5), "Shall I call her; or you?");
    EXPECT_EQ (importer->columnMap["Actor"], 4);

    importFile ("csv/tab.tab");
    EXPECT_EQ (message, "");
    EXPECT_EQ (textsOf (importer->rows).back(),
               (std::vector<std::string> { "01:00:03:00", "01:00:03:20", "RADIO", "" }));
}

TEST_F (CSVImport, cellsArePlainText)
{
    importFile ("csv/german.csv");
    for (const auto& row : importer->rows)
        for (const auto& text : row)
            EXPECT_TRUE (text.isPlain());
}

TEST_F (CSVImport, quotedTitlesAndTextLoseTheirQuotes)
{
    importFile ("csv/quotes.csv");
    EXPECT_EQ (textsOf (importer->rows), (TextTable { { "[Start TC]", "\"Text\"", "Role" },
                                                      { "01:00:00:00", "She said \"no\".", "ANNA" },
                                                      { "01:00:02:00", "half quoted, text here", "PAUL" } }));
    EXPECT_EQ (importer->columnMap["Start TC"], 0);
    EXPECT_EQ (importer->columnMap["Text"], 1);
}

TEST_F (CSVImport, aCellOfThreeLinesYieldsItsRowTwice)
{
    importFile ("csv/multi_line_cells.csv");
    EXPECT_EQ (message, "");
    EXPECT_EQ (textsOf (importer->rows), (TextTable { { "Start TC", "Role", "Text" },
                                                      { "01:00:00:00", "ANNA", "Two lines, of text" },
                                                      { "01:00:04:00", "PAUL", "One, two, " },
                                                      { "01:00:04:00", "PAUL", "One, two, three." },
                                                      { "01:00:08:00", "ANNA", "Plain." } }));
}

//==============================================================================
TEST_F (CSVImport, theSameListComesOutOfEveryUnicodeForm)
{
    for (const auto* name : { "csv/utf8.csv", "csv/utf8_with_mark.csv", "csv/german.csv" })
    {
        importFile (name);
        EXPECT_EQ (message, "") << name;
        EXPECT_EQ (importer->encoding, TextEncodingUTF8) << name;
        EXPECT_EQ (textsOf (importer->rows), germanList) << name;
        EXPECT_EQ (importer->columnMap["Engineering Notes"], 5) << name;
    }
}

TEST_F (CSVImport, eightBitTextIsTakenForMacOSRoman)
{
    importFile ("csv/mac_roman.csv");
    EXPECT_EQ (importer->encoding, TextEncodingMacOSRoman);
    EXPECT_EQ (textsOf (importer->rows), germanList);
}

TEST_F (CSVImport, aListInTheWrongEncodingIsReadAnewInTheRightOne)
{
    importFile ("csv/wrong_encoding.csv");
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->encoding, TextEncodingMacOSRoman);
    EXPECT_NE (textsOf (importer->rows), germanList);
    EXPECT_EQ (cell (2, 1), "00:01:04:11");

    importer->parse (message, TextEncodingWindows1252);
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->encoding, TextEncodingWindows1252);
    EXPECT_EQ (textsOf (importer->rows), germanList);
    EXPECT_EQ (importer->columnMap["Character"], 2);
}

TEST_F (CSVImport, windowsTextReadAsUTF8LosesItsUmlautsAndNothingElse)
{
    importFile ("csv/windows_1252.csv").parse (message, TextEncodingUTF8);
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->rows.size(), 4u);
    EXPECT_EQ (cell (1, 2), "M\xef\xbf\xbdLLER");
}

TEST_F (CSVImport, utf16IsCutBetweenItsBytesAndStillReads)
{
    for (const auto* name : { "csv/utf16_little_endian.csv", "csv/utf16_big_endian.csv" })
    {
        importFile (name);
        EXPECT_EQ (message, "") << name;
        EXPECT_EQ (textsOf (importer->rows), TextTable (germanList.begin(), germanList.begin() + 3)) << name;
        EXPECT_EQ (importer->encoding, TextEncodingUTF16) << name;
        EXPECT_FALSE (importer->isDSTaker) << name;
        EXPECT_FALSE (importer->isEuroTaker) << name;
    }
}

TEST_F (CSVImport, foreignLettersOfUTF16ReadInBothByteOrders)
{
    const std::u16string list =
        u"Start TC,Character,Text\n01:00:00:00,\u0141ukasz,\u0141\u00F3d\u017A \u017Ale\n"
        u"01:00:02:00,\u0418\u0432\u0430\u043D,\u041F\u0440\u0438\u0432\u0435\u0442 \u041C\u0438\u0440\n";
    for (const bool bigEndian : { false, true })
    {
        std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
        for (const auto unit : list)
        {
            const auto high = static_cast<char> (unit >> 8);
            const auto low = static_cast<char> (unit & 0xFF);
            bytes += bigEndian ? std::string { high, low } : std::string { low, high };
        }

        importPath (folder.file ("list.csv", bytes));
        EXPECT_EQ (message, "");
        EXPECT_EQ (cell (1, 1), "\xC5\x81ukasz");
        EXPECT_EQ (cell (1, 2), "\xC5\x81\xC3\xB3"
                                "d\xC5\xBA \xC5\xBAle");
        EXPECT_EQ (cell (2, 1), "\xD0\x98\xD0\xB2\xD0\xB0\xD0\xBD");
        EXPECT_EQ (cell (2, 2), "\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82 \xD0\x9C\xD0\xB8\xD1\x80");
    }
}

TEST_F (CSVImport, allKindsOfLineEndsGiveTheSameTable)
{
    const auto expected = textsOf (importFile ("csv/comma.csv").rows);
    for (const auto* name : { "csv/line_ends_cr.csv", "csv/line_ends_crlf.csv", "csv/line_ends_mixed.csv" })
        EXPECT_EQ (textsOf (importFile (name).rows), expected) << name;
}

//==============================================================================
struct NoContentCase
{
    const char* name;
    std::string bytes;
};

class UnparsableCSV : public CSVImport, public testing::WithParamInterface<NoContentCase>
{
};

TEST_P (UnparsableCSV, addsItsWordsEmptiesTheTableAndLeavesTheColumns)
{
    message = "Before. ";
    importer = std::make_unique<CSVEventFileImporter> (folder.file ("list.csv", GetParam().bytes), message);

    EXPECT_EQ (message, juce::String ("Before. ") + nothingToImport);
    EXPECT_TRUE (importer->rows.empty());
    EXPECT_TRUE (importer->columnMap.empty());
}

INSTANTIATE_TEST_SUITE_P (Files, UnparsableCSV,
                          testing::Values (NoContentCase { "empty", "" },
                                           NoContentCase { "markOnly", "\xef\xbb\xbf" },
                                           NoContentCase { "oneColumn", "Text\nHello\n" },
                                           NoContentCase { "oneWord", "Text" },
                                           NoContentCase { "noFittingDelimiter", "a\tb\n1\t2\t3\n" },
                                           NoContentCase { "earlyShortRow", "a,b,c\n1,2,3\nx,y\n" },
                                           NoContentCase { "lineEndsOnly", "\n\n\n" },
                                           NoContentCase { "zeros", std::string (1000, '\0') }),
                          [] (const auto& rowOfTable) { return rowOfTable.param.name; });

TEST_F (CSVImport, damagedFilesThatComeWithTheTestsSayThatNothingIsInThem)
{
    for (const auto* name : { "csv/empty.csv", "csv/bom.csv", "csv/one_column.csv" })
    {
        importFile (name);
        EXPECT_EQ (message, nothingToImport) << name;
        EXPECT_TRUE (importer->rows.empty()) << name;
    }
}

TEST_F (CSVImport, aFileThatCannotBeOpenedAddsItsWordsAndKeepsWhatWasRead)
{
    const auto path = folder.file ("list.csv", "Start TC,Text\n1,2\n");
    importPath (path);
    std::filesystem::remove (path);

    message = "Before. ";
    importer->parse (message, TextEncodingUTF8);
    EXPECT_EQ (message, juce::String ("Before. ") + cantBeOpened);
    EXPECT_EQ (importer->rows.size(), 2u);
    EXPECT_EQ (importer->columnMap["Text"], 1);
    EXPECT_EQ (importer->encoding, TextEncodingASCII);
}

TEST_F (CSVImport, foldersAndPipesAreNoFiles)
{
    const auto pipe = (folder.path / "pipe.csv").string();
    std::filesystem::create_directory (folder.path / "folder.csv");
    ASSERT_EQ (::mkfifo (pipe.c_str(), 0600), 0);

    for (const auto& path :
         { pipe, (folder.path / "folder.csv").string(), (folder.path / "missing.csv").string() })
    {
        importPath (path);
        EXPECT_EQ (message, cantBeOpened) << path;
        EXPECT_TRUE (importer->rows.empty());
        EXPECT_TRUE (importer->columnMap.empty());
    }
}

TEST_F (CSVImport, aFileThatBecameUnparsableEmptiesTheTableAndKeepsTheColumns)
{
    const auto path = folder.file ("list.csv", "Start TC,Text\n1,2\n");
    importPath (path);
    std::ofstream (path) << "Text\n";

    importer->parse (message, TextEncodingUnknown);
    EXPECT_EQ (message, nothingToImport);
    EXPECT_TRUE (importer->rows.empty());
    EXPECT_EQ (importer->columnMap["Text"], 1);
}

//==============================================================================
TEST_F (CSVImport, titlesWithoutDataAreNoFailure)
{
    importFile ("csv/titles_only.csv");
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->rows.size(), 1u);
    EXPECT_EQ (importer->columnMap["End TC"], 1);
}

TEST_F (CSVImport, unknownTitlesAreNoFailure)
{
    importFile ("csv/unknown_titles.csv");
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->rows.size(), 2u);
    EXPECT_EQ (importer->columnMap.size(), 18u);
    for (const auto& [title, column] : importer->columnMap)
        EXPECT_EQ (column, -1) << title;
}

TEST_F (CSVImport, headersInAnyCaseAndInBracketsOrQuotesAreStarts)
{
    for (const auto* header : { "TC IN", "tc in", "[TC In]", "\"TC In\"", "\"\"\"TC In\"\"\"" })
        EXPECT_EQ (import ("Text," + std::string (header) + "\n1,2\n").columnMap["Start TC"], 1) << header;
}

TEST_F (CSVImport, aTakerFileIsKnownByTheTitlesOfTheDelimiterThatFits)
{
    EXPECT_TRUE (import ("Take;In;Out;Marker;a,b\n1;01:00:00:00;01:00:01:00;;5,6,7\n").isDSTaker);
    EXPECT_FALSE (import ("Take,In,Out;Marker\n1;2,3,4,5,6\n1;2\n").isDSTaker);
}

TEST_F (CSVImport, aCellThatShowsHowTheTextIsEncodedDecidesForThoseBehindIt)
{
    using namespace std::string_literals;
    const auto& list = import ("Start,Text\n1,H\0i\0\n22,abcd\n"s);

    EXPECT_EQ (list.encoding, TextEncodingUTF16);
    EXPECT_EQ (textsOf (list.rows), (TextTable { { "Start", "Text" }, { "1", "Hi" }, { "㈲", "扡摣" } }));
}

TEST_F (CSVImport, aHeaderWithALeadingBlankIsUnknown)
{
    import ("Text, In\n1,2\n");
    EXPECT_EQ (importer->columnMap["Start TC"], -1);
    EXPECT_EQ (importer->columnMap["Text"], 0);
}

TEST_F (CSVImport, ofTwoStartsTheOneFurtherRightIsTaken)
{
    EXPECT_EQ (import ("Start,Text,In TC\n1,2,3\n").columnMap["Start TC"], 2);
}

TEST_F (CSVImport, guessingWithoutRowsLeavesTheColumnsAlone)
{
    import ("Start,Text\n1,2\n");
    importer->rows.clear();
    importer->guessMapping();
    EXPECT_EQ (importer->columnMap["Start TC"], 0);
}

TEST_F (CSVImport, guessingAnewForgetsWhatTheUserAssigned)
{
    import ("Start,Text\n1,2\n");
    importer->columnMap = { { "Start TC", 1 }, { "Odd", 3 } };
    importer->guessMapping();
    EXPECT_EQ (importer->columnMap["Start TC"], 0);
    EXPECT_EQ (importer->columnMap.count ("Odd"), 0u);
}

//==============================================================================
TEST_F (CSVImport, theTitlesTellWhichRecordingToolWroteAFile)
{
    const auto flags = [this] (const std::string& titles)
    {
        import (titles + "\n" + titles + "\n");
        return std::string (importer->isDSTaker ? "DS" : "") + (importer->isEuroTaker ? "Euro" : "");
    };

    EXPECT_EQ (flags ("Take,In,Out,Marker"), "DS");
    EXPECT_EQ (flags ("Marker,x,Out,In,Take,y"), "DS");
    EXPECT_EQ (flags ("TakeNr,In,Out"), "Euro");
    EXPECT_EQ (flags ("Out,Text,TakeNr,In"), "Euro");
    EXPECT_EQ (flags ("Take,In,Out"), "");
    EXPECT_EQ (flags ("take,In,Out,Marker"), "");
    EXPECT_EQ (flags ("Take,In,Out,Marker "), "");
    EXPECT_EQ (flags ("Take,In,Out,Marker,TakeNr"), "DS");
    EXPECT_EQ (flags ("TakeNr,In,Out,Take,Marker"), "Euro");
    EXPECT_EQ (flags ("TakeNr,Take,Marker,In,Out"), "DS");
}

TEST_F (CSVImport, takesWithoutAMarkerColumnStayAPlainTable)
{
    import ("Take,In,Out\n2,01:00:02:00,01:00:03:00\n1,01:00:00:00,01:00:01:00\n");
    EXPECT_EQ (textsOf (importer->rows), (TextTable { { "Take", "In", "Out" },
                                                      { "2", "01:00:02:00", "01:00:03:00" },
                                                      { "1", "01:00:00:00", "01:00:01:00" } }));
    EXPECT_EQ (importer->columnMap["Cue Number"], 0);
}

TEST_F (CSVImport, aTakerFileSavedAnewAsUTF16IsNotUnfoldedThoughItIsKnown)
{
    const std::string list =
        "Take,In,Out,Dialog,Marker\n1,01:00:00:00,01:00:02:00,one(-)two,M1 01:00:01:00\n";
    const auto path = folder.file ("list.csv", list);
    importPath (path);
    ASSERT_TRUE (importer->isDSTaker);
    ASSERT_EQ (importer->rows.size(), 3u);

    {
        std::ofstream file (path, std::ios::binary);
        for (const auto letter : list)
            file << letter << '\0';
    }
    importer->parse (message, TextEncodingUTF16);
    EXPECT_TRUE (importer->isDSTaker);
    EXPECT_EQ (cell (0, 0), "Take");
    EXPECT_EQ (cell (0, 4), "Marker");
    EXPECT_EQ (importer->rows.size(), 2u);
}

TEST_F (CSVImport, aTableThatEndsAtEmptyLinesComesWithoutAMessage)
{
    for (const std::string empty : { "\n\n\n\n", "\r\n\r\n" })
    {
        import ("Start,Text\n1,a\n" + empty + "2,b\n");
        EXPECT_EQ (importer->rows.size(), 2u);
        EXPECT_EQ (message, "");
    }
}

TEST_F (CSVImport, aTakerFileStaysKnownWhenItsTitlesChange)
{
    const auto path = folder.file ("list.csv", "Take,In,Out,Marker\n1,2,3,\n");
    importPath (path);
    ASSERT_TRUE (importer->isDSTaker);

    std::ofstream (path) << "Start,Text\n2,b\n1,a\n";
    importer->parse (message, TextEncodingUnknown);
    EXPECT_TRUE (importer->isDSTaker);
    EXPECT_EQ (textsOf (importer->rows), (TextTable { { "Start", "Text" }, { "2", "b" }, { "1", "a" } }));
}

//==============================================================================
TEST_F (CSVImport, zeroBytesDisappearFromTheText)
{
    importFile ("csv/nul_bytes.csv");
    importer->parse (message = {}, TextEncodingUTF8);
    EXPECT_EQ (message, "");
    EXPECT_EQ (cell (1, 1), "Hello");
    EXPECT_EQ (cell (2, 1), "");
}

TEST_F (CSVImport, aListThatEndsInsideAQuoteKeepsTheRowsBefore)
{
    importFile ("csv/truncated.csv");
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->rows.size(), 3u);
    EXPECT_EQ (importer->columnMap["Text"], 4);
}

TEST_F (CSVImport, garbageNeitherCrashesNorHangsInAnyEncoding)
{
    for (const auto* name : { "csv/garbage.csv", "taker/garbage.csv" })
    {
        importFile (name);
        for (int encoding = 0; encoding <= 7; ++encoding)
        {
            message.clear();
            importer->parse (message, static_cast<TextEncoding> (encoding));
            EXPECT_EQ (importer->rows.empty(), message.isNotEmpty()) << name << encoding;
        }
    }
}

TEST_F (CSVImport, aCellOfAMegabyteComesThroughWhole)
{
    const std::string speech (1 << 20, 'x');
    import ("Start TC,Text\n01:00:00:00,\"" + speech + "\"\n01:00:01:00,short\n");
    EXPECT_EQ (message, "");
    ASSERT_EQ (importer->rows.size(), 3u);
    EXPECT_EQ (cell (1, 1), speech);
    EXPECT_EQ (cell (2, 1), "short");
}

TEST_F (CSVImport, noPrefixOfAFileDoesAnyHarm)
{
    for (const auto* name :
         { "csv/comma.csv", "csv/german.csv", "taker/ds_taker.csv", "taker/euro_taker.csv" })
    {
        const auto bytes = bytesOfFile (dataFile (name));
        for (std::size_t length = 0; length <= bytes.size(); ++length)
        {
            import (bytes.substr (0, length));
            EXPECT_EQ (importer->rows.empty(), message.isNotEmpty()) << name << length;
        }
    }
}
