// SPDX-License-Identifier: GPL-3.0-only
// Each limit of what importers take in: what fits exactly, what is one too much, what is said of it, and that an application can
// raise it.
#include "import/frame/ImportLimits.h"

#include "import/CSVParser.h"
#include "import/ImportSupport.h"
#include "import/frame/EventFileImporterFactory.h"
#include "import/frame/JSONReader.h"
#include "import/frame/TableBudget.h"
#include "import/frame/XMLGate.h"
#include "import/protools/SessionSupport.h"
#include "support/CollectedLog.h"
#include "support/OvermarksTest.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <limits>

using namespace ZEP::Overmarks;
using namespace ImportSupport;
using testing::ElementsAre;

namespace
{

/** Limits that end with the test, and what is said of them. */
class ImportLimitsTest : public Testing::OvermarksTest
{
protected:
    ~ImportLimitsTest() override { ImportLimits::limits() = {}; }

    std::size_t rowsOf (const std::string& path)
    {
        message.clear();
        const auto importer =
            EventFileImporterFactory::fileImporterWithFilepath (juce::String (path), message, {}, {});
        return importer->rows.size();
    }

    static bool passesJSON (const std::string& text)
    {
        return JSONReader::read (juce::String (text)).has_value();
    }
    static bool passesXML (const std::string& text) { return XMLGate::rootOf (text) != nullptr; }

    std::string lastLine() const { return log.lines().empty() ? std::string() : log.lines().back(); }

    ImportLimits& limits = ImportLimits::limits();
    Testing::CollectedLog log;
    SessionSupport::Chooser user { SessionSupport::allOf };
    TemporaryFolder folder;
    juce::String message;
};

std::string repeated (const std::string& piece, int times)
{
    std::string all;
    for (; times > 0; --times)
        all += piece;
    return all;
}

} // namespace

TEST_F (ImportLimitsTest, areGenerousUnlessTheyAreChanged)
{
    EXPECT_EQ (limits.bytesOfFile, 1073741824u);
    EXPECT_EQ (limits.spareCells, 1048576u);
    EXPECT_EQ (limits.nestingOfJSON, 64);
    EXPECT_EQ (limits.sparePartsOfJSON, 65536u);
    EXPECT_EQ (limits.nestingOfXML, 100);
    EXPECT_EQ (limits.sparePartsOfXML, 65536u);
    EXPECT_EQ (limits.namesOfXML, 2000u);
    EXPECT_EQ (limits.attributesOfXML, 64u);
    EXPECT_EQ (limits.fieldsOfDBase, 4096u);
    EXPECT_EQ (limits.charactersOfWordCues, 268435456);
}

// ---- files -----------------------------------------------------------------------------------------------------------------

struct Format
{
    const char* name;
    const char* sample;
    const char* message; ///< of a file that is too large; empty where the log alone is told
    const char* line = " can't be read: it is larger than "; ///< of the log
};

class ImportLimitsOfFile : public ImportLimitsTest, public testing::WithParamInterface<Format>
{
};

TEST_P (ImportLimitsOfFile, aFileMayHaveExactlySoManyBytes)
{
    const auto path = dataFile (GetParam().sample);
    const auto size = std::filesystem::file_size (path);
    const auto rows = rowsOf (path);
    const auto linesBefore = log.lines().size();
    EXPECT_GT (rows, 1u);

    limits.bytesOfFile = size;
    EXPECT_EQ (rowsOf (path), rows);
    EXPECT_EQ (message, "");
    EXPECT_EQ (log.lines().size(), 2 * linesBefore);

    limits.bytesOfFile = size - 1;
    EXPECT_EQ (rowsOf (path), 0u);
    EXPECT_EQ (message, juce::String (GetParam().message).replace ("LIMIT", juce::String (size - 1)));
    EXPECT_THAT (lastLine(), testing::HasSubstr (GetParam().line + std::to_string (size - 1) + " bytes"));
}

INSTANTIATE_TEST_SUITE_P (
    Formats, ImportLimitsOfFile,
    testing::Values (
        Format { "CSV", "csv/comma.csv",
                 "The CSV file you tried to import is larger than LIMIT bytes and isn't read" },
        Format { "SRT", "srt/harbour.srt", "The file can't be parsed properly" },
        Format { "textSTL", "textstl/harbour.stl", "" },
        Format { "dBase", "dbf/harbour.dbf", "", ": it is larger than " },
        Format { "TTAL", "ttal/three_lines.ttal", "The file could not be opened." },
        Format { "ADRStudio", "adrstudio/three_cues.xml",
                 "Only ADR Studio XML files are supported at the moment" },
        Format {
            "ProTools", "protools/harbour.txt",
            "The file doesn't contain valid Pro Tools session info data. If you're trying to import comma-separated "
            "values, please use the file extension '.csv'" }),
    [] (const auto& row) { return row.param.name; });

// ---- tables ----------------------------------------------------------------------------------------------------------------

TEST_F (ImportLimitsTest, aTableMayHaveExactlyTheSpareCells)
{
    // A row of four cells counts as eight.
    limits.spareCells = 8;
    TableBudget budget (0);
    EXPECT_TRUE (budget.takeRow (4));
    EXPECT_FALSE (budget.takeRow (0));

    limits.spareCells = 7;
    EXPECT_FALSE (TableBudget (0).takeRow (4));
    limits.spareCells = std::uint64_t { 1 } << 40;
    EXPECT_TRUE (TableBudget (0).takeRow (std::size_t { 1 } << 39));
}

TEST_F (ImportLimitsTest, aTableThatIsTooLargeIsToldByItsImporter)
{
    const auto subtitles = folder.file ("tiny.srt", "1\na --> b\nx\n\n2\nc --> d\ny\n\n");
    limits.spareCells = 0; // the file's own bytes give six cells, and a row counts as eight
    EXPECT_EQ (rowsOf (subtitles), 0u);
    EXPECT_EQ (message, "The file can't be parsed properly");
    EXPECT_EQ (lastLine(), subtitles + ": it grows into a table that is too large (more than 6 cells)");

    limits.spareCells = 16;
    EXPECT_EQ (rowsOf (subtitles), 2u);
    EXPECT_EQ (message, "");
}

TEST_F (ImportLimitsTest, aListOfEmptyCuesThatIsTooLargeIsToldByItsImporter)
{
    const auto cues =
        folder.file ("x.xml", "<plist><dict><array>" + repeated ("<dict/>", 40) + "</array></dict></plist>");
    EXPECT_EQ (rowsOf (cues), 40u);
    EXPECT_EQ (message, "");

    limits.spareCells = 0;
    rowsOf (cues);
    EXPECT_EQ (message, "Only ADR Studio XML files are supported at the moment");
    EXPECT_EQ (lastLine(), cues + ": it grows into a table that is too large (more than 80 cells)");
}

TEST_F (ImportLimitsTest, aSessionOfTooManyClipsIsToldToTheLog)
{
    const auto path = dataFile ("protools/harbour.txt");
    EXPECT_GT (rowsOf (path), 1u);
    const auto linesBefore = log.lines().size();

    ImportLimits::limits().spareCells = 0;
    const auto session = folder.file ("tiny.txt", "T R A C K  L I S T I N G\nTRACK NAME:\tA\n\n\n");
    EXPECT_EQ (rowsOf (session), 0u);
    EXPECT_THAT (message.toStdString(), testing::StartsWith ("The file doesn't contain valid Pro Tools"));
    EXPECT_EQ (log.lines().size(), linesBefore + 1);
    EXPECT_EQ (lastLine(), session + ": it grows into a table that is too large (more than 10 cells)");
}

TEST_F (ImportLimitsTest, theLargestLimitsAreNoSmallOnes)
{
    constexpr auto largest = std::numeric_limits<std::uint64_t>::max();
    limits.bytesOfFile = limits.spareCells = limits.sparePartsOfJSON = limits.sparePartsOfXML = largest;
    EXPECT_EQ (rowsOf (folder.file ("tiny.srt", "1\na --> b\nx\n\n2\nc --> d\ny\n\n")), 2u);
    EXPECT_TRUE (passesJSON ("[{},{},{},{},{},{},{},{}]"));
    EXPECT_TRUE (passesXML ("<a><b/>x<c/>y</a>"));
    EXPECT_TRUE (log.lines().empty()) << lastLine();
}

TEST_F (ImportLimitsTest, theLargestLimitsOfDelimitedTextAreNoSmallOnes)
{
    constexpr auto largest = std::numeric_limits<std::uint64_t>::max();
    const auto table = folder.file ("tiny.csv", "a,b\n1,22\n");
    std::vector<std::size_t> rows;

    for (const auto& most : { CSVParser::Limits { 2, largest, largest },
                              { largest, 0, largest },
                              { largest, largest, largest } })
    {
        CSVParser::limits() = most;
        rows.push_back (rowsOf (table));
    }

    CSVParser::limits() = CSVParser::kDefaultLimits;
    EXPECT_THAT (rows, ElementsAre (2u, 2u, 2u));
}

TEST_F (ImportLimitsTest, aRecordOfDBaseMayHaveExactlySoManyFields)
{
    const auto path = dataFile ("dbf/harbour.dbf");
    const auto rows = rowsOf (path);
    juce::String ignored;
    const auto importer =
        EventFileImporterFactory::fileImporterWithFilepath (juce::String (path), ignored, {}, {});
    const auto fields = importer->rows.front().size() - 1;

    limits.fieldsOfDBase = fields;
    EXPECT_EQ (rowsOf (path), rows);
    limits.fieldsOfDBase = fields - 1;
    EXPECT_LE (rowsOf (path), 1u);
    EXPECT_EQ (lastLine(),
               path + ": it has more than " + std::to_string (fields - 1)
                   + " fields, and no record is read; it may be no dBase table of the older kind");
}

// ---- JSON ------------------------------------------------------------------------------------------------------------------

TEST_F (ImportLimitsTest, objectsAndListsMayLieExactlySoDeepInEachOther)
{
    limits.nestingOfJSON = 2;
    EXPECT_TRUE (passesJSON ("[[1]]"));
    EXPECT_TRUE (log.lines().empty());
    EXPECT_FALSE (passesJSON ("[[[1]]]"));
    EXPECT_THAT (
        log.lines(),
        ElementsAre ("A JSON text has more than 2 objects and lists within each other; it is not read"));

    limits.nestingOfJSON = 1000;
    EXPECT_TRUE (passesJSON (repeated ("[", 1000) + repeated ("]", 1000)));
    EXPECT_FALSE (passesJSON (repeated ("[", 1001) + repeated ("]", 1001)));
}

TEST_F (ImportLimitsTest, aJSONTextMayHaveExactlySoManyObjectsAndLists)
{
    limits.sparePartsOfJSON = 2; // and none for a text of less than sixteen bytes
    EXPECT_TRUE (passesJSON ("[{}]"));
    EXPECT_TRUE (log.lines().empty());
    EXPECT_FALSE (passesJSON ("[{},{}]"));
    EXPECT_THAT (log.lines(), ElementsAre ("A JSON text has more than 2 objects and lists; it is not read"));

    limits.sparePartsOfJSON = 200000;
    EXPECT_TRUE (passesJSON ("[" + repeated ("[],", 150000) + "[]]"));
}

TEST_F (ImportLimitsTest, aListThatIsNestedTooDeeplyIsToldByItsImporter)
{
    const auto path = dataFile ("ttal/three_lines.ttal");
    limits.nestingOfJSON = 2;
    EXPECT_EQ (rowsOf (path), 0u);
    EXPECT_EQ (message, "The file content could not be parsed properly.");
    EXPECT_EQ (lastLine(), "A JSON text has more than 2 objects and lists within each other; it is not read");
}

// ---- XML -------------------------------------------------------------------------------------------------------------------

TEST_F (ImportLimitsTest, elementsMayLieExactlySoDeepInEachOther)
{
    limits.nestingOfXML = 2;
    EXPECT_TRUE (passesXML ("<a><b/></a>"));
    EXPECT_TRUE (log.lines().empty());
    EXPECT_FALSE (passesXML ("<a><b><c/></b></a>"));
    EXPECT_THAT (log.lines(),
                 ElementsAre ("An XML document has more than 2 elements within each other; it is not read"));

    limits.nestingOfXML = 500;
    EXPECT_TRUE (passesXML (repeated ("<a>", 500) + repeated ("</a>", 500)));
    EXPECT_FALSE (passesXML (repeated ("<a>", 501) + repeated ("</a>", 501)));
}

TEST_F (ImportLimitsTest, aDocumentMayHaveExactlySoManyParts)
{
    limits.sparePartsOfXML = 2; // and one for each eight bytes
    EXPECT_TRUE (passesXML ("<a><b/>x</a>"));
    EXPECT_TRUE (log.lines().empty());
    EXPECT_FALSE (passesXML ("<a><b/>x<c/>y</a>"));
    EXPECT_EQ (lastLine(), "An XML document has more than 4 elements, attributes and texts; it is not read");

    limits.sparePartsOfXML = 200000;
    EXPECT_TRUE (passesXML ("<a>" + repeated ("<b/>", 150000) + "</a>"));
}

TEST_F (ImportLimitsTest, aDocumentMayHaveExactlySoManyNames)
{
    limits.namesOfXML = 2;
    EXPECT_TRUE (passesXML ("<a><b/><a/></a>"));
    EXPECT_TRUE (log.lines().empty());
    EXPECT_FALSE (passesXML ("<a><b/><c/></a>"));
    EXPECT_THAT (log.lines(),
                 ElementsAre ("An XML document has more than 2 different names; it is not read"));
}

TEST_F (ImportLimitsTest, anElementMayHaveExactlySoManyAttributes)
{
    limits.attributesOfXML = 2;
    EXPECT_TRUE (passesXML ("<a b='' c=''/>"));
    EXPECT_TRUE (log.lines().empty());
    EXPECT_FALSE (passesXML ("<a b='' c='' d=''/>"));
    EXPECT_THAT (log.lines(),
                 ElementsAre ("An XML document has more than 2 attributes in one element; it is not read"));
}

TEST_F (ImportLimitsTest, aDocumentOfTooManyNamesIsToldByItsImporter)
{
    limits.namesOfXML = 1;
    EXPECT_EQ (rowsOf (dataFile ("adrstudio/three_cues.xml")), 0u);
    EXPECT_EQ (message, "Only ADR Studio XML files are supported at the moment");
    EXPECT_EQ (lastLine(), "An XML document has more than 1 different names; it is not read");
}
