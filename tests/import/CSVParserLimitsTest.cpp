// SPDX-License-Identifier: GPL-3.0-only
#include "import/CSVParser.h"

#include "import/CSVEventFileImporter.h"
#include "import/ImportSupport.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace ZEP::Overmarks;
using namespace ZEP::Core;
using ImportSupport::TemporaryFolder;

namespace
{

constexpr auto tooLarge =
    "The CSV file you tried to import grows into a table that is too large. Perhaps a closing quotation mark is missing";

/** What damaged and hostile files ask for, with limits set for the test alone. */
class CSVParserLimits : public testing::Test
{
protected:
    ~CSVParserLimits() override { CSVParser::limits() = CSVParser::kDefaultLimits; }

    /** How many rows an importer makes of a file; its message is left in `message`. */
    std::size_t rowsImported (const std::string& bytes)
    {
        message.clear();
        const CSVEventFileImporter importer (juce::String (folder.file ("list.csv", bytes)), message);
        return importer.rows.size();
    }

    std::size_t rowsParsed (const std::string& bytes)
    {
        CSVParser parser;
        auto encoding = TextEncodingUTF8;
        return parser.open (folder.file ("list.csv", bytes)) ? parser.parse (encoding).size() : 0;
    }

    /** A list whose last cell is never closed. */
    static std::string openQuote (int lines)
    {
        std::string bytes = "Start TC,Text\n01:00:00:00,\"He is 6\n";
        for (int line = 0; line < lines; ++line)
            bytes += "feet tall and says so on every line\n";
        return bytes;
    }

    /** Five wide rows, and short ones below that are padded to the same width. */
    static std::string wideAndShort (std::size_t columns, int shortRows)
    {
        std::string bytes;
        for (int line = 0; line < 5; ++line)
            bytes += "x" + std::string (columns - 1, ',') + "\n";
        for (int line = 0; line < shortRows; ++line)
            bytes += "a,b\n";
        return bytes;
    }

    TemporaryFolder folder;
    juce::String message;
};

} // namespace

TEST_F (CSVParserLimits, aParsedTableMayTakeExactlyWhatTheLimitsAllow)
{
    const std::string bytes = "a,b\n1,22\n";
    const auto needed = 2 * CSVParser::kBytesOfRow + 4 * CSVParser::kBytesOfCell + 5;

    CSVParser::limits() = { 0, needed, 2 };
    EXPECT_EQ (rowsParsed (bytes), 2u);
    CSVParser::limits() = { 0, needed - 1, 2 };
    EXPECT_EQ (rowsParsed (bytes), 0u);
    CSVParser::limits() = { 1, needed - bytes.size(), 2 };
    EXPECT_EQ (rowsParsed (bytes), 2u);
}

TEST_F (CSVParserLimits, anImportedTableMayTakeExactlyWhatTheLimitsAllow)
{
    const std::string bytes = "a,b\n1,\n";
    const auto needed =
        2 * CSVParser::kBytesOfRow + 3 * CSVParser::kBytesOfRichCell + CSVParser::kBytesOfEmptyRichCell + 3;
    const auto limit = (needed + CSVParser::kRichTableFactor - 1) / CSVParser::kRichTableFactor;

    CSVParser::limits() = { 0, limit, 2 };
    EXPECT_EQ (rowsImported (bytes), 2u);
    EXPECT_EQ (message, "");

    CSVParser::limits() = { 0, limit - 1, 2 };
    EXPECT_EQ (rowsImported (bytes), 0u);
    EXPECT_EQ (message, tooLarge);
}

TEST_F (CSVParserLimits, whatADelimiterThatDoesNotFitHasMadeCountsNoMore)
{
    const std::string bytes = "a;b,c\n1;2,3,4\n"; // a row of commas, two of semicolons
    const auto needed = 2 * CSVParser::kBytesOfRow + 4 * CSVParser::kBytesOfRichCell + bytes.size() - 4;
    const auto limit = (needed + CSVParser::kRichTableFactor - 1) / CSVParser::kRichTableFactor;

    CSVParser::limits() = { 0, limit, 4 };
    EXPECT_EQ (rowsImported (bytes), 2u);
    EXPECT_EQ (message, "");

    CSVParser::limits() = { 0, limit - 1, 4 };
    EXPECT_EQ (rowsImported (bytes), 0u);
    EXPECT_EQ (message, tooLarge);
}

TEST_F (CSVParserLimits, theLastByteOfTheLimitsIsAllowedToo)
{
    // The parsed table and its texts of an "x" each; the limit is filled to the byte by the length of the first cell.
    const auto needed = [] (std::size_t letters)
    { return CSVParser::kBytesOfRow + 2 * CSVParser::kBytesOfRichCell + letters + 1; };
    std::size_t letters = 1;
    while (needed (letters) % CSVParser::kRichTableFactor != 0)
        ++letters;

    CSVParser::limits() = { 0, needed (letters) / CSVParser::kRichTableFactor, 2 };
    EXPECT_EQ (rowsImported (std::string (letters, 'x') + ",x\n"), 1u);
    EXPECT_EQ (rowsImported (std::string (letters + 1, 'x') + ",x\n"), 0u);
    EXPECT_EQ (message, tooLarge);
}

TEST_F (CSVParserLimits, theRowsOfATakeMayTakeExactlyWhatTheLimitsAllow)
{
    const std::string titles = "Take,In,Out,Marker,Dialog\n";
    const std::string oneLine = "1,a,z,M1 b,one (-)  two\n";
    const std::string twoLines = "1,a,z,M1 b/M2 c,one (-)  two (+)  three\n1,d,z,-,four (|)  five\n";

    for (const auto& [take, lines] : { std::pair (oneLine, 1u), std::pair (twoLines, 2u) })
    {
        CSVParser::limits() = CSVParser::kDefaultLimits;
        const auto rows = rowsImported (titles + take);
        const auto pieces = rows - 1; // the lines of the take are gone
        ASSERT_GT (pieces, lines);

        const auto cells = 5 * (1 + lines + pieces);
        const auto letters = titles.size() + take.size() - 5 * (1 + lines); // without commas and line ends
        const auto needed =
            (1 + lines + pieces) * CSVParser::kBytesOfRow + cells * CSVParser::kBytesOfRichCell + letters;
        const auto limit = (needed + CSVParser::kRichTableFactor - 1) / CSVParser::kRichTableFactor;

        CSVParser::limits() = { 0, limit, 5 };
        EXPECT_EQ (rowsImported (titles + take), rows) << take;
        EXPECT_EQ (message, "") << take;

        CSVParser::limits() = { 0, limit - 1, 5 };
        EXPECT_EQ (rowsImported (titles + take), 0u) << take;
        EXPECT_EQ (message, tooLarge) << take;
    }
}

TEST_F (CSVParserLimits, countlessCellsOfALetterEachAreNoCueList)
{
    CSVParser::limits() = { 8, 1 << 20, 16384 };
    const auto list = [] (int lines)
    {
        std::string bytes;
        for (int line = 0; line < lines; ++line)
            bytes += "a,b,c,d,e,f,g,h,i,j,k,l,m,n,o,p,q,r,s,t,u,v,w,x,y,z\n";
        return bytes;
    };

    EXPECT_EQ (rowsImported (list (500)), 500u);
    EXPECT_EQ (rowsImported (list (1000)), 0u);
    EXPECT_EQ (message, tooLarge);
}

TEST_F (CSVParserLimits, aFileThatClaimsATerabyteIsNotReadIntoMemory)
{
    const std::string path = folder.file ("list.csv", "Start TC,Text\n");
    std::filesystem::resize_file (path, std::uintmax_t { 1 } << 40);
    const CSVEventFileImporter importer (juce::String (path), message);
    EXPECT_TRUE (importer.rows.empty());
    EXPECT_EQ (message, "The CSV file you tried to import is larger than 1073741824 bytes and isn't read");
}

TEST_F (CSVParserLimits, aLineMayHaveExactlyTheCellsThatAreAllowed)
{
    CSVParser::limits().cellsPerRow = 3;
    EXPECT_EQ (rowsImported ("a,b,c\n1,2,3\n"), 2u);
    EXPECT_EQ (message, "");

    for (const auto* bytes :
         { "a,b,c,d\n1,2,3,4\n", "\"a\",b,c,d\n1,2,3,4\n", "a,\"b\nc\",d,e,f\n", "a,b\n1,2\n1,2,3,4\n" })
    {
        EXPECT_EQ (rowsImported (bytes), 0u) << bytes;
        EXPECT_EQ (message, tooLarge) << bytes;
    }
}

TEST_F (CSVParserLimits, anOpenQuoteInAShortListIsStillATable)
{
    EXPECT_EQ (rowsImported (openQuote (500)), 501u);
    EXPECT_EQ (message, "");
}

TEST_F (CSVParserLimits, anOpenQuoteOverAThousandPagesIsRefusedWithWords)
{
    EXPECT_EQ (rowsImported (openQuote (6000)), 0u);
    EXPECT_EQ (message, tooLarge);
}

TEST_F (CSVParserLimits, wideTitlesDoNotBlowUpShortRows)
{
    EXPECT_EQ (rowsImported (wideAndShort (100, 1000)), 1005u);
    EXPECT_EQ (message, "");
    EXPECT_EQ (rowsImported (wideAndShort (10000, 2000)), 0u);
    EXPECT_EQ (message, tooLarge);
}

TEST_F (CSVParserLimits, millionsOfDelimitersAreNoRow)
{
    EXPECT_EQ (rowsImported (std::string (4000000, ',')), 0u);
    EXPECT_EQ (message, tooLarge);
}

TEST_F (CSVParserLimits, millionsOfQuotesOrLineEndsAreOnlyUnparsable)
{
    for (const auto& bytes :
         { std::string (4000001, '"'), std::string (4000000, '\n'), "\"" + std::string (4000000, '\n'),
           ",\"" + std::string (4000000, '\n'), std::string (4000000, 'x') })
    {
        EXPECT_EQ (rowsImported (bytes), 0u);
        EXPECT_EQ (message, "The CSV file you tried to import doesn't contain any parsable content");
    }
}

TEST_F (CSVParserLimits, emptyRowsBelowWideTitlesCostNoTime)
{
    auto bytes = wideAndShort (16000, 0);
    for (int line = 0; line < 200000; ++line)
        bytes += ",\"\n\"\n";
    EXPECT_EQ (rowsImported (bytes), 5u);
}

TEST_F (CSVParserLimits, aRefusedListLeavesColumnsAloneAndTheNextReadStartsAfresh)
{
    CSVEventFileImporter importer (juce::String (folder.file ("list.csv", "Start TC,Text\n1,2\n")), message);
    ASSERT_EQ (message, "");

    CSVParser::limits() = { 0, 10, 100 };
    importer.parse (message, TextEncodingUTF8);
    EXPECT_EQ (message, tooLarge);
    EXPECT_TRUE (importer.rows.empty());
    EXPECT_EQ (importer.columnMap["Text"], 1);

    CSVParser::limits() = CSVParser::kDefaultLimits;
    message.clear();
    importer.parse (message, TextEncodingUTF8);
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer.rows.size(), 2u);
}

TEST_F (CSVParserLimits, aTakeOfCountlessMarkersIsRefused)
{
    const auto list = [] (std::size_t markers)
    { return "Take,In,Out,Marker\n1,01:00:00:00,01:00:01:00," + std::string (markers, '/') + "\n"; };

    EXPECT_EQ (rowsImported (list (1000)), 1003u);
    EXPECT_EQ (message, "");
    EXPECT_EQ (rowsImported (list (3000000)), 0u);
    EXPECT_EQ (message, tooLarge);
}

TEST_F (CSVParserLimits, aWideTakeOfManyLinesIsRefused)
{
    CSVParser::limits() = { 8, 20000, 16384 };
    std::string bytes = "Take,In,Out,Marker\n";
    for (int line = 0; line < 5; ++line)
        bytes += "0,1,2,\n";
    bytes += "1,01:00:00:00,01:00:01:00,M1 01:00:00:10" + std::string (200, ',') + "\n";
    for (int line = 0; line < 100; ++line)
        bytes += "1,01:00:00:00," + std::to_string (line) + ",\n";

    EXPECT_EQ (rowsImported (bytes), 0u);
    EXPECT_EQ (message, tooLarge);
}

TEST_F (CSVParserLimits, aTakeOfCountlessMarkerColumnsIsRefused)
{
    const auto list = [] (int markers)
    {
        std::string titles = "TakeNr,In,Out";
        std::string take = "1,2,3";
        for (int marker = 0; marker < markers; ++marker)
        {
            titles += ",Marker";
            take += ",4";
        }
        return titles + "\n" + take + "\n" + take + "\n";
    };

    EXPECT_EQ (rowsImported (list (100)), 203u);
    EXPECT_EQ (message, "");
    EXPECT_EQ (rowsImported (list (10000)), 0u);
    EXPECT_EQ (message, tooLarge);
}
