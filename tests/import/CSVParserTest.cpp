// SPDX-License-Identifier: GPL-3.0-only
#include "import/CSVParser.h"
#include "import/CSVEventFileImporter.h"

#include "import/ImportSupport.h"
#include "import/SlowCSVParser.h"

#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

using namespace ZEP::Overmarks;
using namespace ZEP::Core;
using ImportSupport::TemporaryFolder;
using Table = CSVParser::Table;
using Row = CSVParser::Row;

namespace
{

/** The table of a file with these bytes, which are said to be UTF-8. */
Table parsed (const std::string& bytes)
{
    const TemporaryFolder folder;
    CSVParser parser;
    auto encoding = TextEncodingUTF8;
    EXPECT_TRUE (parser.open (folder.file ("list.csv", bytes)));
    return parser.parse (encoding);
}

const std::string fiveLines = "a,b,c\n1,2,3\n4,5,6\n7,8,9\n0,1,2\n";

} // namespace

//==============================================================================
TEST (CSVParser, aCommaSeparatedListGivesARowForEachLine)
{
    EXPECT_EQ (parsed ("a,b\n1,2\n"), (Table { { "a", "b" }, { "1", "2" } }));
}

TEST (CSVParser, theStreamIsTheOpenFileUntilItIsParsed)
{
    const TemporaryFolder folder;
    CSVParser parser;
    auto encoding = TextEncodingUTF8;
    EXPECT_FALSE (parser.stream.is_open());
    ASSERT_TRUE (parser.open (folder.file ("list.csv", "a,b\n1,2\n")));
    EXPECT_TRUE (parser.stream.is_open());
    parser.stream.seekg (2);
    EXPECT_EQ (parser.stream.get(), 'b');
    EXPECT_EQ (parser.stream.tellg(), std::streampos (3));
    parser.parse (encoding);
    EXPECT_FALSE (parser.stream.is_open());
}

TEST (CSVParser, whatWasReadFromTheStreamBeforeIsParsedAllTheSame)
{
    const TemporaryFolder folder;
    const Table whole { { "a", "b" }, { "1", "2" } };
    auto encoding = TextEncodingUTF8;
    std::string line;

    for (int lines = 1; lines < 5; ++lines) // and beyond the end
    {
        CSVParser parser;
        ASSERT_TRUE (parser.open (folder.file ("list.csv", "a,b\n1,2\n")));
        for (int i = 0; i < lines; ++i)
            std::getline (parser.stream, line);
        EXPECT_EQ (parser.parse (encoding), whole) << lines;
        EXPECT_EQ (parser.fileSize, 8u);
    }
}

TEST (CSVParser, aNameThatIsNotUTF8ReachesTheSystemAsItIs)
{
    const TemporaryFolder folder;
    CSVParser parser;
    auto encoding = TextEncodingUTF8;
    ASSERT_TRUE (parser.open (folder.file ("Gr\xfc\xdf"
                                           "e.csv",
                                           "a,b\n1,2\n")));
    EXPECT_EQ (parser.parse (encoding), (Table { { "a", "b" }, { "1", "2" } }));
}

TEST (CSVParser, theLastLineNeedsNoLineEnd)
{
    EXPECT_EQ (parsed ("a,b\n1,2"), (Table { { "a", "b" }, { "1", "2" } }));
}

TEST (CSVParser, semicolonsAreTriedAfterCommas)
{
    EXPECT_EQ (parsed ("a;b\n1;2\n"), (Table { { "a", "b" }, { "1", "2" } }));
}

TEST (CSVParser, tabsAreTriedLast)
{
    EXPECT_EQ (parsed ("a\tb\n1\t2\n"), (Table { { "a", "b" }, { "1", "2" } }));
}

TEST (CSVParser, commasInTheTextDoNotMakeTheDelimiterIfTheTitlesHaveNone)
{
    EXPECT_EQ (parsed ("In;Text\n1;Well, yes\n"), (Table { { "In", "Text" }, { "1", "Well, yes" } }));
}

TEST (CSVParser, aDelimiterWhoseFirstLinesDisagreeGivesWayToTheNext)
{
    EXPECT_EQ (parsed ("In, first;Text\n1;Well, yes, no\n"),
               (Table { { "In, first", "Text" }, { "1", "Well, yes, no" } }));
}

TEST (CSVParser, aShortRowBehindTheFirstFiveIsPaddedToOneCellMore)
{
    const auto table = parsed (fiveLines + "x,y\n");
    ASSERT_EQ (table.size(), 6u);
    EXPECT_EQ (table.back(), (Row { "x", "y", "", "" }));
}

TEST (CSVParser, aLongRowBehindTheFirstFiveStaysLong)
{
    EXPECT_EQ (parsed (fiveLines + "1,2,3,4,5\n").back(), (Row { "1", "2", "3", "4", "5" }));
}

TEST (CSVParser, aShortRowAmongTheFirstFiveEmptiesTheTableAndNothingElseIsTried)
{
    EXPECT_EQ (parsed ("a,b,c\n1,2,3\n4,5,6\nx,y\n7,8,9\n"), Table());
    EXPECT_EQ (parsed ("a;,b;,c;\n1,2,3\n4,5,6\nx,y\n7,8,9\n"), Table());
}

TEST (CSVParser, howManyLinesMustAgreeCanBeSet)
{
    const TemporaryFolder folder;
    CSVParser parser;
    parser.minConsistentLines = 2;
    ASSERT_TRUE (parser.open (folder.file ("list.csv", "a,b,c\n1,2,3\nx,y\n")));
    auto encoding = TextEncodingUTF8;
    EXPECT_EQ (parser.parse (encoding).back(), (Row { "x", "y", "", "" }));
}

TEST (CSVParser, aQuotedCellSpansTwoLinesWithoutALineBreak)
{
    EXPECT_EQ (parsed ("a,b\n1,\"two\nlines, both\"\n3,4\n"),
               (Table { { "a", "b" }, { "1", "twolines, both" }, { "3", "4" } }));
}

TEST (CSVParser, aQuotedCellOverThreeLinesYieldsItsRowTwice)
{
    EXPECT_EQ (parsed ("a,b\n1,\"x\ny\nz\"\n3,4\n"),
               (Table { { "a", "b" }, { "1", "xy" }, { "1", "xyz" }, { "3", "4" } }));
}

TEST (CSVParser, whatStandsBehindAQuoteClosedOnALaterLineIsLost)
{
    EXPECT_EQ (parsed ("a,b,c\n1,\"x\ny\",lost\n1,2,3\n2,3,4\n"), Table());
    EXPECT_EQ (parsed ("a,b\n1,\"x\ny\",lost\n3,4\n"), (Table { { "a", "b" }, { "1", "xy" }, { "3", "4" } }));
}

TEST (CSVParser, upToFourLineEndsInARowCountOnce)
{
    EXPECT_EQ (parsed ("a,b\n\n\n\n1,2\n"), (Table { { "a", "b" }, { "1", "2" } }));
    EXPECT_EQ (parsed ("a,b\r\n\r\n1,2\r\n"), (Table { { "a", "b" }, { "1", "2" } }));
}

TEST (CSVParser, fourEmptyLinesEndTheTable)
{
    EXPECT_EQ (parsed ("a,b\n1,2\n\n\n\n\n3,4\n"), (Table { { "a", "b" }, { "1", "2" } }));
}

TEST (CSVParser, twoEmptyWindowsLinesEndTheTable)
{
    EXPECT_EQ (parsed ("a,b\r\n1,2\r\n\r\n\r\n3,4\r\n"), (Table { { "a", "b" }, { "1", "2" } }));
}

TEST (CSVParser, allKindsOfLineEndsMayBeMixed)
{
    EXPECT_EQ (parsed ("a,b\r\n1,2\r3,4\n5,6"),
               (Table { { "a", "b" }, { "1", "2" }, { "3", "4" }, { "5", "6" } }));
}

TEST (CSVParser, aLineOfDelimitersOnlyIsDropped)
{
    EXPECT_EQ (parsed ("a,b,c,d\n,,,\n1,2,3,4\n"),
               (Table { { "a", "b", "c", "d" }, { "1", "2", "3", "4" } }));
}

TEST (CSVParser, aDroppedLineStillCountsAmongTheLinesThatMustAgree)
{
    EXPECT_EQ (parsed ("a,b\n,\n,\n,\n,\nx,y,z\n").back(), (Row { "x", "y", "z" }));
}

TEST (CSVParser, aSingleRowIsATable)
{
    EXPECT_EQ (parsed ("Start TC,Text\n"), (Table { { "Start TC", "Text" } }));
    EXPECT_EQ (parsed ("Start TC;Text"), (Table { { "Start TC", "Text" } }));
    EXPECT_EQ (parsed ("Start TC\tText"), (Table { { "Start TC", "Text" } }));
}

TEST (CSVParser, aListOfOneColumnIsNoTable) { EXPECT_EQ (parsed ("Text\nHello\n"), Table()); }

TEST (CSVParser, rowsOfWhichNoTwoAgreeAreNoTable) { EXPECT_EQ (parsed ("a\tb\n1\t2\t3\n"), Table()); }

TEST (CSVParser, anEmptyFileIsAnEmptyTable) { EXPECT_EQ (parsed (""), Table()); }

TEST (CSVParser, aFileOfLineEndsOnlyIsAnEmptyTable) { EXPECT_EQ (parsed ("\r\n\r\n\n\r"), Table()); }

TEST (CSVParser, aQuoteThatNeverClosesHandsItsStateToTheNextDelimiter)
{
    EXPECT_EQ (parsed ("\"a;b\n1;2\n"), Table());
    EXPECT_EQ (parsed ("a,b\n1,\"2\n"), (Table { { "a", "b" } }));
    EXPECT_EQ (parsed ("a,b\n1,2\n3,\"4\n"), (Table { { "a", "b" }, { "1", "2" } }));
}

TEST (CSVParser, bytesThatAreNoTextPassUnchanged)
{
    const std::string odd ("\0\xff\xc0\x80", 4);
    EXPECT_EQ (parsed ("a,b\n1," + odd + "\n"), (Table { { "a", "b" }, { "1", odd } }));
}

//==============================================================================
struct RowCase
{
    const char* name;
    std::string line;
    Row cells;
    bool outsideAfterwards;
};

class CSVRow : public testing::TestWithParam<RowCase>
{
};

TEST_P (CSVRow, isSplitAtItsDelimiters)
{
    CSVParser parser;
    auto line = GetParam().line;
    EXPECT_EQ (parser.parseRow (line, ','), GetParam().cells);
    EXPECT_EQ (parser.outsideQuotes, GetParam().outsideAfterwards);
    EXPECT_EQ (line, GetParam().line);
}

INSTANTIATE_TEST_SUITE_P (
    Lines, CSVRow,
    testing::Values (RowCase { "plain", "a,b", { "a", "b" }, true }, RowCase { "empty", "", { "" }, true },
                     RowCase { "delimiterAtTheEnd", "a,", { "a", "" }, true },
                     RowCase { "onlyDelimiters", ",,", { "", "", "" }, true },
                     RowCase { "doubledQuote", "\"a\"\"b\",c", { "a\"b", "c" }, true },
                     RowCase { "emptyQuotes", "\"\",c", { "", "c" }, true },
                     RowCase { "textAroundQuotes", "a\"b,c\"d,e", { "ab,cd", "e" }, true },
                     RowCase { "twoQuotedStretches", "\"a\"x\"b\"", { "axb" }, true },
                     RowCase { "delimiterInQuotes", "\"a,b\"", { "a,b" }, true },
                     RowCase { "openQuote", "a,\"b,c", { "a", "b,c" }, false },
                     RowCase { "openQuoteAtTheEnd", "a,\"", { "a", "" }, false },
                     RowCase { "doubledQuoteAtTheEnd", "\"a\"\"", { "a\"" }, false },
                     RowCase { "lineFeedEnds", "a,b\nc", { "a", "b" }, true },
                     RowCase { "windowsLineEndEnds", "a,b\r\nc", { "a", "b" }, true },
                     RowCase { "carriageReturnEnds", "a\rb", { "a" }, true },
                     RowCase { "lineEndInQuotesIsText", "\"a\nb\r\",c", { "a\nb\r", "c" }, true }),
    [] (const auto& rowOfTable) { return rowOfTable.param.name; });

TEST (CSVParser, aRowGoesOnInsideTheQuotesOfTheLineBefore)
{
    CSVParser parser;
    std::string first = "a,\"b";
    std::string second = "c,d\",e";
    EXPECT_EQ (parser.parseRow (first, ','), (Row { "a", "b" }));
    EXPECT_EQ (parser.parseRow (second, ','), (Row { "c,d", "e" }));
    EXPECT_TRUE (parser.outsideQuotes);
}

//==============================================================================
TEST (CSVParser, replacingAllGoesOnBehindEachReplacement)
{
    std::string text = "a\n\n\nb";
    stringReplaceAll (text, "\n\n", "\n");
    EXPECT_EQ (text, "a\n\nb");

    text = "aXbXc";
    stringReplaceAll (text, "X", "XX");
    EXPECT_EQ (text, "aXXbXXc");

    stringReplaceAll (text, "nowhere", "x");
    stringReplaceAll (text, "", "x");
    EXPECT_EQ (text, "aXXbXXc");

    stringReplaceAll (text, "XX", "");
    EXPECT_EQ (text, "abc");
}

TEST (CSVParser, aTextMayBeReplacedByItselfOrInItself)
{
    std::string text = "ab";
    stringReplaceAll (text, "b", text);
    EXPECT_EQ (text, "aab");

    stringReplaceAll (text, text, "a longer text than there was before");
    EXPECT_EQ (text, "a longer text than there was before");
}

//==============================================================================
TEST (CSVParser, anUnknownEncodingIsFoundAndToldAndTheMarkIsCutOff)
{
    const TemporaryFolder folder;
    CSVParser parser;
    ASSERT_TRUE (parser.open (folder.file ("list.csv", "\xef\xbb\xbf"
                                                       "a,b\n1,2\n")));
    auto encoding = TextEncodingUnknown;
    EXPECT_EQ (parser.parse (encoding), (Table { { "a", "b" }, { "1", "2" } }));
    EXPECT_EQ (encoding, TextEncodingUTF8);
    EXPECT_EQ (parser.encoding, TextEncodingUTF8);
    EXPECT_EQ (parser.fileSize, 11u);
}

TEST (CSVParser, aGivenEncodingIsTakenAsGivenAndTheMarkStays)
{
    const TemporaryFolder folder;
    CSVParser parser;
    ASSERT_TRUE (parser.open (folder.file ("list.csv", "\xef\xbb\xbf"
                                                       "a,b\n1,2\n")));
    auto encoding = TextEncodingLatin1;
    EXPECT_EQ (parser.parse (encoding).front().front(), "\xef\xbb\xbf"
                                                        "a");
    EXPECT_EQ (encoding, TextEncodingLatin1);
    EXPECT_EQ (parser.encoding, TextEncodingLatin1);
}

TEST (CSVParser, opensOrdinaryFilesOnly)
{
    const TemporaryFolder folder;
    const auto subfolder = folder.path / "folder.csv";
    const auto pipe = (folder.path / "pipe.csv").string();
    std::filesystem::create_directory (subfolder);
    ASSERT_EQ (::mkfifo (pipe.c_str(), 0600), 0);

    CSVParser parser;
    parser.parsedRows = { { "left", "over" } };
    EXPECT_FALSE (parser.open ((folder.path / "missing.csv").string()));
    EXPECT_TRUE (parser.parsedRows.empty());
    EXPECT_FALSE (parser.open (subfolder.string()));
    EXPECT_FALSE (parser.open (pipe));
    EXPECT_FALSE (parser.open ("/dev/zero"));
    EXPECT_FALSE (parser.open (""));
    EXPECT_EQ (parser.filePath, "");
}

TEST (CSVParser, parsingWithoutAnOpenFileIsAnEmptyTable)
{
    CSVParser parser;
    auto encoding = TextEncodingUnknown;
    EXPECT_TRUE (parser.parse (encoding).empty());
    EXPECT_EQ (encoding, TextEncodingUnknown);
}

//==============================================================================
/** Texts that look like the beginning of a list more often than chance would have it. */
class RandomList final
{
public:
    explicit RandomList (unsigned seed) : random (seed) {}

    std::string next() { return chance (3) ? noise() : nearlyAList(); }

private:
    bool chance (unsigned oneIn) { return random() % oneIn == 0; }

    char anyByte()
    {
        static const std::string alphabet = "ab,;\t\"\r\n ";
        return alphabet[random() % alphabet.size()];
    }

    std::string noise()
    {
        std::string text;
        for (auto bytes = random() % 40; bytes > 0; --bytes)
            text += anyByte();
        return text;
    }

    std::string nearlyAList()
    {
        const char delimiter = ",;\t"[random() % 3];
        const auto columns = 2 + random() % 2;
        std::string text;
        for (auto lines = random() % 12; lines > 0; --lines)
        {
            for (unsigned column = 0; column < columns; ++column)
                text += (column > 0 ? std::string (1, delimiter) : std::string())
                        + (chance (6) ? noiseByte() : "x");
            text += chance (8) ? "\r\n" : "\n";
        }
        return text;
    }

    std::string noiseByte() { return std::string (1, anyByte()); }

    std::mt19937 random;
};

/** Shows `check` random lists, each with its file and what the slow parser makes of it. @returns how many of them were tables */
template <typename Check>
int tablesAmongRandomLists (unsigned seed, int number, Check check)
{
    const TemporaryFolder folder;
    RandomList lists (seed);
    int tables = 0;

    for (int i = 0; i < number && ! testing::Test::HasFatalFailure(); ++i)
    {
        const auto bytes = lists.next();
        SCOPED_TRACE (testing::PrintToString (bytes));
        SlowCSVParser slow;
        slow.parse (bytes);
        tables += slow.parsedRows.size() > 1 ? 1 : 0;
        check (folder.file ("list.csv", bytes), slow);
    }

    return tables;
}

TEST (CSVParser, agreesWithTheSlowParserOnEightThousandRandomLists)
{
    const auto agrees = [] (const std::string& path, const SlowCSVParser& slow)
    {
        CSVParser fast;
        auto encoding = TextEncodingUTF8;
        ASSERT_TRUE (fast.open (path));
        ASSERT_EQ (fast.parse (encoding), slow.parsedRows);
        ASSERT_EQ (fast.outsideQuotes, slow.outsideQuotes);
    };

    EXPECT_GT (tablesAmongRandomLists (20240229, 8000, agrees),
               2000); // else they are too random to say anything
}

/** Leaves the rows to the parser, which goes on with them. */
class RowCopies final : public CSVParser::RowTaker
{
public:
    void take (CSVParser::Row&& row) override { table.push_back (row); }
    void startAgain() override { table.clear(); }

    CSVParser::Table table;
};

TEST (CSVParser, givesATakerTheRowsOfTheTableAlsoWhenItLeavesThemThere)
{
    const auto agrees = [] (const std::string& path, const SlowCSVParser& slow)
    {
        CSVParser fast;
        RowCopies copies;
        auto encoding = TextEncodingUTF8;
        ASSERT_TRUE (fast.open (path));
        fast.parse (encoding, copies);
        ASSERT_EQ (copies.table, slow.parsedRows);
        ASSERT_TRUE (fast.parsedRows.empty());
    };

    EXPECT_GT (tablesAmongRandomLists (20261122, 2000, agrees), 500);
}

TEST (CSVParser, andItsImporterHaveTheSameRows)
{
    const auto agrees = [] (const std::string& path, const SlowCSVParser& slow)
    {
        juce::String error;
        const CSVEventFileImporter importer (path, error);
        ASSERT_EQ (error.isEmpty(), ! slow.parsedRows.empty());
        ASSERT_EQ (importer.rows.size(), slow.parsedRows.size());

        for (std::size_t row = 0; row < slow.parsedRows.size(); ++row)
        {
            ASSERT_EQ (importer.rows[row].size(), slow.parsedRows[row].size());

            for (std::size_t cell = 0; cell < slow.parsedRows[row].size(); ++cell)
                ASSERT_EQ (importer.rows[row][cell].getText().toStdString(), slow.parsedRows[row][cell]);
        }
    };

    EXPECT_GT (tablesAmongRandomLists (7122, 2000, agrees), 500);
}

TEST (CSVParser, agreesWithTheSlowParserOnAnyLineOfBytes)
{
    RandomList lists (7);
    for (int i = 0; i < 20000; ++i)
    {
        auto line = lists.next();
        SlowCSVParser slow;
        CSVParser fast;
        slow.outsideQuotes = fast.outsideQuotes = i % 2 == 0;
        ASSERT_EQ (fast.parseRow (line, ';'), slow.parseRow (line, ';')) << testing::PrintToString (line);
        ASSERT_EQ (fast.outsideQuotes, slow.outsideQuotes) << testing::PrintToString (line);
    }
}
