// SPDX-License-Identifier: GPL-3.0-only
#include "import/STLEventFileImporter.h"

#include "import/EBUSupport.h"
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

using LogLines = std::vector<std::string>;

/** No import of this format says a word, whatever it is given. */
class STLImport : public testing::Test
{
protected:
    ~STLImport() override { EXPECT_EQ (message, "from before"); }

    /** Imports a file that comes with the tests. */
    TextTable importFile (const std::string& name) { return importPath (dataFile (name)); }

    /** Imports a file with these bytes. */
    TextTable import (const std::string& bytes) { return importPath (folder.file ("list.stl", bytes)); }

    TextTable importPath (const std::string& path)
    {
        importer = std::make_unique<STLEventFileImporter> (path, message);
        return textsOf (importer->rows);
    }

    /** Reads the same file once more. */
    TextTable readAgain (int encoding)
    {
        importer->parse (message, static_cast<TextEncoding> (encoding));
        return textsOf (importer->rows);
    }

    /** What the log says, without the paths of the files. */
    [[nodiscard]] LogLines logged() const
    {
        LogLines lines;
        for (const auto& line : log.lines())
            lines.push_back (line.substr (line.find (": ", line.rfind ('/')) + 2));
        return lines;
    }

    Testing::CollectedLog log;
    TemporaryFolder folder;
    juce::String message { "from before" };
    std::unique_ptr<STLEventFileImporter> importer;
};

const TextTable harbour { { "01:00:01:00", "01:00:03:12", "The harbour is closed.\xc2\x8aGo home, captain." },
                          { "01:00:04:05", "01:00:05:24", "Who says so?" },
                          { "01:00:06:01", "01:00:09:00", "The water " },
                          { "01:00:06:01", "01:00:09:00", "does." },
                          { "01:00:10:00", "01:00:11:00", "" } };

const TextTable harbourInText { { "00:00:01:00", "00:00:03:12", "The harbour is closed.\nGo home, captain." },
                                { "00:00:04:05", "00:00:05:24", "Who says so, and why?" },
                                { "00:00:06:01", "00:00:09:00", "The water does." } };

const TextTable german { { "00:01:00:12", "00:01:02:18", "Schönen Abend, Frau Weiß." },
                         { "00:01:03:00", "00:01:04:03", "Überhaupt nicht schön!\nÄh … doch?" } };

const std::map<juce::String, int> threeColumns { { "Start TC", 0 }, { "End TC", 1 }, { "Text", 2 } };

TextTable firstRows (const TextTable& table, std::size_t count)
{
    return { table.begin(), table.begin() + static_cast<std::ptrdiff_t> (count) };
}

} // namespace

TEST_F (STLImport, isFormatFourWithColumnsOfItsOwn)
{
    for (const auto* name : { "stl/harbour.stl", "textstl/harbour.stl", "stl/empty.stl" })
    {
        importFile (name);
        EXPECT_EQ (importer->type(), 4) << name;
        EXPECT_FALSE (importer->userMappingEnabled()) << name;
        EXPECT_EQ (importer->languageCode(), "") << name;
        EXPECT_EQ (importer->timeInfo, nullptr) << name;
        EXPECT_EQ (importer->characterMap, nullptr) << name;
        EXPECT_EQ (importer->columnMap, threeColumns) << name;
    }
}

TEST_F (STLImport, cellsArePlainText)
{
    for (const auto* name : { "stl/harbour.stl", "textstl/harbour.stl" })
    {
        importFile (name);
        for (const auto& row : importer->rows)
            for (const auto& cell : row)
                EXPECT_TRUE (cell.isPlain()) << name;
    }
}

//==============================================================================
TEST_F (STLImport, everyBlockOfABinaryFileIsARow)
{
    EXPECT_EQ (importFile ("stl/harbour.stl"), harbour);
    EXPECT_EQ (importer->encoding, TextEncodingASCII);
    EXPECT_EQ (logged(), LogLines());
}

TEST_F (STLImport, noMoreBlocksAreReadThanTheHeadPromises)
{
    EXPECT_EQ (importFile ("stl/promises_less.stl"), firstRows (harbour, 3));
    EXPECT_EQ (logged(), LogLines());
}

TEST_F (STLImport, blocksThatAreNotThereAreNotMadeUp)
{
    EXPECT_EQ (importFile ("stl/promises_more.stl"), harbour);
    EXPECT_EQ (logged(), (LogLines { "the file says that it has 7 blocks but ends after 5" }));
}

TEST_F (STLImport, aBlockThatIsCutOffIsNoRow)
{
    EXPECT_EQ (importFile ("stl/truncated.stl"), firstRows (harbour, 2));
    EXPECT_EQ (logged(), (LogLines { "the file says that it has 5 blocks but ends after 2" }));
}

TEST_F (STLImport, timesAreCopiedFrameByFrame)
{
    EXPECT_EQ (
        import (EBUSupport::head ("00001") + EBUSupport::block ({ 1, 2, 3, 4 }, { 10, 0, 0, 29 }, "a")),
        (TextTable { { "01:02:03:04", "10:00:00:29", "a" } }));
    EXPECT_EQ (import (EBUSupport::head ("00001")
                       + EBUSupport::block ({ 99, 60, 99, 25 }, { 255, 0, 128, 100 }, "")),
               (TextTable { { "99:60:99:25", "255:00:128:100", "" } }));
}

TEST_F (STLImport, anUnusedTextFieldGivesAnEmptyCellAndTheRowStays)
{
    EXPECT_EQ (import (EBUSupport::head ("00001") + EBUSupport::block ({}, {}, "")),
               (TextTable { { "00:00:00:00", "00:00:00:00", "" } }));
}

TEST_F (STLImport, aTextFieldThatIsUsedToItsEndComesWhole)
{
    EXPECT_EQ (importFile ("stl/huge_field.stl"),
               (TextTable { { "01:00:00:00", "01:00:01:00", std::string (112, 'x') } }));
}

TEST_F (STLImport, aHeadThatIsCutOffGivesNoRows)
{
    const auto bytes = EBUSupport::head ("00001");
    for (const std::size_t length : { 6u, 12u, 243u, 1023u })
    {
        EXPECT_EQ (import (bytes.substr (0, length)), TextTable()) << length;
        EXPECT_EQ (importer->columnMap, threeColumns);
        EXPECT_EQ (logged().back(), "the file ends before its subtitles begin");
    }
    EXPECT_EQ (import (bytes), TextTable());
    EXPECT_EQ (logged().back(), "the file says that it has 1 block but ends after 0");
}

TEST_F (STLImport, aHeadThatPromisesNothingGivesNoRows)
{
    for (const auto* promised : { "00000", "     ", "-0001", "abcde" })
    {
        EXPECT_EQ (import (EBUSupport::head (promised) + EBUSupport::block ({}, {}, "a")), TextTable())
            << promised;
        EXPECT_EQ (logged().back(), "the file says that it has no subtitles");
    }
}

TEST_F (STLImport, aTextFileWithSTLInItsFourthPlaceIsTakenForBinary)
{
    const std::string list = "// STL list\n00:00:01:00 , 00:00:02:12 , Hello\n";
    EXPECT_EQ (import (list), TextTable());
    EXPECT_EQ (import (" " + list), (TextTable { { "00:00:01:00", "00:00:02:12", "Hello" } }));
}

TEST_F (STLImport, aBinaryFileIsReadInTheEncodingThatIsNamed)
{
    const TextTable windows { { "01:01:00:12", "01:01:02:18", "Schönen Abend, Frau Weiß." },
                              { "01:01:03:00", "01:01:04:03", "Überhaupt nicht schön!" } };
    EXPECT_EQ (importFile ("stl/wrong_encoding.stl"), windows);
    for (int encoding : { 1, 5, 6 })
    {
        EXPECT_EQ (readAgain (encoding), windows) << encoding;
        EXPECT_EQ (importer->encoding, encoding);
    }
    EXPECT_EQ (readAgain (2)[1][2], "\xef\xbf\xbd"
                                    "berhaupt nicht sch\xef\xbf\xbdn!");
    EXPECT_EQ (logged(), LogLines());
}

TEST_F (STLImport, aBinaryFileHasNoTextInMacOSRoman)
{
    importFile ("stl/harbour.stl");
    for (const auto& row : readAgain (TextEncodingMacOSRoman))
        EXPECT_EQ (row[2], "");
    EXPECT_EQ (importer->rows.size(), harbour.size());
    EXPECT_EQ (importer->rows[1][0].getText(), "01:00:04:05");
    EXPECT_EQ (importer->encoding, TextEncodingMacOSRoman);
    EXPECT_EQ (logged(),
               (LogLines { "texts of this format can't be read in this encoding and are left out" }));
}

TEST_F (STLImport, aMarkInFrontOfABinaryFileHidesWhatItIs)
{
    EXPECT_EQ (importFile ("stl/bom.stl"), TextTable());
}

//==============================================================================
TEST_F (STLImport, everySubtitleOfATextIsARow)
{
    EXPECT_EQ (importFile ("textstl/harbour.stl"), harbourInText);
    EXPECT_EQ (importer->encoding, TextEncodingASCII);
    EXPECT_EQ (logged(), LogLines());
}

TEST_F (STLImport, windowsLineEndsAndTabsGiveTheSameRows)
{
    EXPECT_EQ (importFile ("textstl/line_ends_crlf.stl"), harbourInText);
    EXPECT_EQ (importFile ("textstl/tabs.stl"), harbourInText);
    EXPECT_EQ (logged(), LogLines());
}

TEST_F (STLImport, withoutBlanksAroundTheCommasTwoCharactersAreLost)
{
    EXPECT_EQ (importFile ("textstl/no_blanks.stl"), (TextTable { { "00:00:01:00", "00:00:02:12", "llo" },
                                                                  { "00:00:03:00", "00:00:04:00", "" },
                                                                  { "00:00:05:00", "00:00:06:00", "" } }));
}

TEST_F (STLImport, linesOfAnotherFormAreSkippedAndCounted)
{
    EXPECT_EQ (importFile ("textstl/odd_lines.stl"),
               (TextTable { { "00:00:01:00", "00:00:02:00", "indented" },
                            { "00:00:01:00", "00:00:02:00", "scattered" },
                            { "00:00:03:00", "00:00:03:00", "00:00:03:00 , no length" },
                            { "whenever...", "hereafter..", "no times" },
                            { "00:00:04:00", "00:00:05:00", "one, two, three" } }));
    EXPECT_EQ (logged(), (LogLines { "4 lines are no subtitles and were skipped, the first is line 1" }));
}

TEST_F (STLImport, blankLinesAreNotCountedAsSkipped)
{
    EXPECT_EQ (import (" \n\t\r\n\r\n00:00:01:00 , 00:00:02:00 , a"),
               (TextTable { { "00:00:01:00", "00:00:02:00", "a" } }));
    EXPECT_EQ (logged(), LogLines());
}

TEST_F (STLImport, umlautsOfATextComeOutOfEveryEncodingThatIsDetected)
{
    const std::map<std::string, TextEncoding> files {
        { "utf8", TextEncodingUTF8 },
        { "utf8_with_mark", TextEncodingUTF8 },
        { "mac_roman", TextEncodingMacOSRoman },
        { "utf16_little_endian", TextEncodingUTF16 },
        { "utf16_big_endian", TextEncodingUTF16 },
    };
    for (const auto& [name, encoding] : files)
    {
        EXPECT_EQ (importFile ("textstl/" + name + ".stl"), german) << name;
        EXPECT_EQ (importer->encoding, encoding) << name;
        EXPECT_EQ (readAgain (encoding), german) << name;
    }
}

TEST_F (STLImport, aTextInTheWrongEncodingIsReadAnewInTheRightOne)
{
    EXPECT_NE (importFile ("textstl/wrong_encoding.stl"), german);
    EXPECT_EQ (importer->encoding, TextEncodingMacOSRoman);
    EXPECT_EQ (readAgain (TextEncodingWindows1252), german);
    EXPECT_EQ (importer->encoding, TextEncodingWindows1252);
}

TEST_F (STLImport, bytesThatAreNoUTF8AreReplacedNotPassedOn)
{
    import ("00:00:01:00 , 00:00:02:00 , x\xc0\x80y\xed\xa0\x80\xf0\x9f\n");
    const auto rows = readAgain (TextEncodingUTF8);
    for (const auto& cell : rows.at (0))
        EXPECT_TRUE (juce::CharPointer_UTF8::isValidString (cell.c_str(), static_cast<int> (cell.size())));
    EXPECT_TRUE (importer->rows[0][2].getText().startsWith ("x"));
}

TEST_F (STLImport, aTextThatIsCutOffKeepsTheSubtitlesBefore)
{
    EXPECT_EQ (importFile ("textstl/truncated.stl"), firstRows (harbourInText, 1));
}

TEST_F (STLImport, aTextOfAMegabyteComesThroughWhole)
{
    const std::string speech (1 << 20, 'x');
    EXPECT_EQ (
        import ("00:00:01:00 , 00:00:02:00 , " + speech + "\n00:00:03:00 , 00:00:04:00 , short"),
        (TextTable { { "00:00:01:00", "00:00:02:00", speech }, { "00:00:03:00", "00:00:04:00", "short" } }));
}

//==============================================================================
TEST_F (STLImport, nothingUsableIsAnEmptyTable)
{
    for (const auto* name : { "stl/empty.stl", "textstl/empty.stl", "textstl/bom.stl" })
    {
        EXPECT_EQ (importFile (name), TextTable()) << name;
        EXPECT_EQ (importer->encoding, *name == 't' && name[8] == 'b' ? 2 : 0) << name;
    }
    EXPECT_EQ (logged(), (LogLines { "is empty", "is empty" }));
}

TEST_F (STLImport, aTextWithoutSubtitlesIsAnEmptyTable)
{
    EXPECT_EQ (import ("The harbour is closed.\n\nGo home.\n"), TextTable());
    EXPECT_EQ (import ("$FontName = Sans\n// a remark\n"), TextTable());
    EXPECT_EQ (import ("Go home.\n"), TextTable());
    EXPECT_EQ (logged(), (LogLines { "2 lines are no subtitles and were skipped, the first is line 1",
                                     "1 line is no subtitle and was skipped, the first is line 1" }));
}

TEST_F (STLImport, whatIsNoFileIsAnEmptyTableAndNeverWaitedFor)
{
    const auto pipe = (folder.path / "pipe.stl").string();
    ASSERT_EQ (::mkfifo (pipe.c_str(), 0600), 0);
    for (const auto& path : { pipe, folder.path.string(), (folder.path / "missing.stl").string() })
    {
        const auto linesBefore = log.lines().size();
        EXPECT_EQ (importPath (path), TextTable()) << path;
        ASSERT_EQ (log.lines().size(), linesBefore + 1) << path;
        EXPECT_TRUE (logged().back().starts_with ("can't be read: ")) << logged().back();
        importer->parseEBUN19STLFile (TextEncodingUnknown);
        EXPECT_TRUE (importer->rows.empty()) << path;
        EXPECT_EQ (importer->columnMap, threeColumns) << path;
    }
}

TEST_F (STLImport, readingAgainReplacesTheRows)
{
    importFile ("stl/harbour.stl");
    EXPECT_EQ (readAgain (TextEncodingASCII), harbour);
    importFile ("textstl/harbour.stl");
    EXPECT_EQ (readAgain (TextEncodingASCII), harbourInText);
}

TEST_F (STLImport, aPathFromTheCurrentFolderIsFound)
{
    const auto relative = std::filesystem::relative (dataFile ("stl/harbour.stl")).string();
    EXPECT_EQ (importPath (relative), harbour);
}

TEST_F (STLImport, garbageIsReadInEveryEncodingWithoutHarm)
{
    for (const auto* name : { "stl/garbage.stl", "textstl/garbage.stl" })
    {
        importFile (name);
        for (int encoding = -1; encoding <= 8; ++encoding)
            for (const auto& row : readAgain (encoding))
                EXPECT_EQ (row.size(), 3u) << name;
    }
    importFile ("stl/garbage.stl");
    EXPECT_EQ (importer->rows.size(), (3600u - 1024u) / 128u);
}

TEST_F (STLImport, noPrefixOfAFileDoesAnyHarm)
{
    for (const auto* name : { "stl/harbour.stl", "textstl/utf16_little_endian.stl", "textstl/harbour.stl" })
    {
        const auto bytes = bytesOfFile (dataFile (name));
        const auto whole = importFile (name).size();
        for (std::size_t length = 0; length <= bytes.size(); ++length)
            EXPECT_LE (import (bytes.substr (0, length)).size(), whole) << name << length;
    }
}

//==============================================================================
TEST_F (STLImport, rowsBecomeCuesAtTheirTimecodes)
{
    importFile ("stl/harbour.stl");
    const auto result = EventRowReader (Testing::timeInfoAt ("25", "01:00:00:00"), {}).read (*importer);
    ASSERT_EQ (result.events.size(), 5u);
    EXPECT_TRUE (result.problems.empty());
    EXPECT_EQ (result.events[1]->getStartTCString(), "01:00:04:05");
    EXPECT_EQ (result.events[1]->getEndTCString(), "01:00:05:24");
    EXPECT_EQ (result.events[1]->getText().getText(), "Who says so?");
}
