// SPDX-License-Identifier: GPL-3.0-only
#include "import/SRTEventFileImporter.h"

#include "core/system/SystemUtility.h"
#include "import/ImportSupport.h"
#include "import/frame/EventRowReader.h"
#include "import/frame/TableBudget.h"
#include "support/CollectedLog.h"
#include "support/MakeEvents.h"
#include "support/OvermarksTest.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

using namespace ZEP::Overmarks;
using namespace ZEP::Core;
using namespace ImportSupport;

namespace
{

constexpr auto cantBeParsed = "The file can't be parsed properly";

class SRTImport : public testing::Test
{
protected:
    ~SRTImport() override { SystemUtility::configure ({}); }

    /** Imports a file that comes with the tests. */
    TextTable importFile (const std::string& name) { return importPath (dataFile ("srt/" + name)); }

    /** Imports a file with these bytes. */
    TextTable import (const std::string& bytes) { return importPath (folder.file ("list.srt", bytes)); }

    TextTable importPath (const std::string& path)
    {
        message.clear();
        importer = std::make_unique<SRTEventFileImporter> (path, message);
        return textsOf (importer->rows);
    }

    /** Reads the same file once more. */
    TextTable readAgain (int encoding)
    {
        message.clear();
        importer->parse (message, static_cast<TextEncoding> (encoding));
        return textsOf (importer->rows);
    }

    /** As the application that wants "**" for a line break. */
    static void beApplicationNought() { SystemUtility::configure ({ 0, {}, {}, {} }); }

    Testing::CollectedLog log;
    TemporaryFolder folder;
    juce::String message;
    std::unique_ptr<SRTEventFileImporter> importer;
};

const TextTable harbour { { "00:00:01,000", "00:00:03,480", "The harbour is closed.\nGo home, captain.",
                            "1" },
                          { "00:00:04,200", "00:00:05,960", "Who says so?", "2" },
                          { "00:00:06,040", "00:00:09,000", "The water does.", "3" } };

const TextTable german { { "00:01:00,500", "00:01:02,750", "Schönen Abend, Frau Weiß.", "1" },
                         { "00:01:03,000", "00:01:04,120", "Überhaupt nicht schön!\nÄh … doch?", "2" } };

const std::map<juce::String, int> fourColumns {
    { "Start TC", 0 }, { "End TC", 1 }, { "Text", 2 }, { "Cue Number", 3 }
};

} // namespace

TEST_F (SRTImport, isFormatThreeWithColumnsOfItsOwn)
{
    importFile ("harbour.srt");
    EXPECT_EQ (importer->type(), 3);
    EXPECT_FALSE (importer->userMappingEnabled());
    EXPECT_EQ (importer->languageCode(), "");
    EXPECT_EQ (importer->timeInfo, nullptr);
    EXPECT_EQ (importer->characterMap, nullptr);
    EXPECT_EQ (importer->columnMap, fourColumns);
}

TEST_F (SRTImport, everySubtitleIsARow)
{
    EXPECT_EQ (importFile ("harbour.srt"), harbour);
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->encoding, TextEncodingASCII);
    EXPECT_EQ (log.lines(), std::vector<std::string>());
}

TEST_F (SRTImport, cellsArePlainText)
{
    importFile ("harbour.srt");
    for (const auto& row : importer->rows)
        for (const auto& cell : row)
            EXPECT_TRUE (cell.isPlain());
}

TEST_F (SRTImport, windowsLineEndsGiveTheSameRows)
{
    EXPECT_EQ (importFile ("line_ends_crlf.srt"), harbour);
    EXPECT_EQ (message, "");
}

TEST_F (SRTImport, manyBlankLinesGiveTheSameRows) { EXPECT_EQ (importFile ("blank_lines.srt"), harbour); }

TEST_F (SRTImport, lineEndsOfOldMacsGiveOneLineThatIsNoSubtitle)
{
    EXPECT_EQ (importFile ("line_ends_cr.srt"), TextTable());
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->columnMap, fourColumns);
    EXPECT_EQ (log.lines().size(), 1u);
}

TEST_F (SRTImport, aFileWithoutAFinalLineBreakLosesItsLastSubtitleAndTheLogSaysSo)
{
    EXPECT_EQ (importFile ("no_line_end.srt"), TextTable (harbour.begin(), harbour.begin() + 2));
    EXPECT_EQ (message, "");
    EXPECT_EQ (log.lines(), (std::vector<std::string> {
                                dataFile ("srt/no_line_end.srt")
                                + ": the last subtitle has no line break behind its text and is left out" }));
}

TEST_F (SRTImport, oneFinalLineBreakIsEnough)
{
    EXPECT_EQ (import ("1\na --> b\nHello\n"), (TextTable { { "a", "b", "Hello", "1" } }));
    EXPECT_EQ (import ("1\r\na --> b\r\nHello\r\n"), (TextTable { { "a", "b", "Hello", "1" } }));
    EXPECT_EQ (log.lines(), std::vector<std::string>());
}

TEST_F (SRTImport, aMissingNumberEndsTheReadingWithoutAMessageAndTheLogNamesTheLine)
{
    EXPECT_EQ (importFile ("missing_number.srt"), TextTable (harbour.begin(), harbour.begin() + 1));
    EXPECT_EQ (message, "");
    EXPECT_EQ (log.lines(),
               (std::vector<std::string> {
                   dataFile ("srt/missing_number.srt")
                   + ": line 7 has no \" --> \" between two times; nothing is read from there on" }));
}

TEST_F (SRTImport, timesPlacesAndNumbersComeAsTheyStand)
{
    EXPECT_EQ (importFile ("placed.srt"),
               (TextTable { { "01:00:00.500", "01:00:02.000  X1:100 X2:600 Y1:050 Y2:100",
                              "On the left of the picture", "1" },
                            { "01:00:03:00", "later",
                              "{\\an8}<I>Shouted</I> & <font color=\"red\">sung</font>", "12a" } }));
    EXPECT_EQ (message, "");
}

TEST_F (SRTImport, aNumberAloneGivesARowWithoutTimes)
{
    EXPECT_EQ (import ("1\n\n2\na --> b\n\n"), (TextTable { { "", "", "", "1" }, { "a", "b", "", "2" } }));
}

TEST_F (SRTImport, italicInCapitalsStaysInTheText)
{
    EXPECT_EQ (import ("1\na --> b\n<I>Go</I> <i>home</i>\n")[0][2], "<I>Go</I> home");
}

//==============================================================================
TEST_F (SRTImport, oneApplicationGetsStarsForLineBreaks)
{
    beApplicationNought();
    EXPECT_EQ (importFile ("harbour.srt")[0][2], "The harbour is closed.**Go home, captain.");
}

TEST_F (SRTImport, starsOfTheTextAreNotToldFromLineBreaks)
{
    beApplicationNought();
    EXPECT_EQ (import ("1\na --> b\nA star ** is\nborn\n")[0][2], "A star ** is**born");
    SystemUtility::configure ({});
    EXPECT_EQ (readAgain (TextEncodingUTF8)[0][2], "A star ** is\nborn");
}

TEST_F (SRTImport, theApplicationsStarsBecomeLineBreaksOfEventsWhenAsked)
{
    beApplicationNought();
    importFile ("harbour.srt");
    EventRowReader::Options options;
    options.starsToLineBreaks = true;
    const auto result =
        EventRowReader (Testing::timeInfoAt ("25", "00:00:00:00"), {}, options).read (*importer);
    EXPECT_EQ (result.events.at (0)->getText().getText(), "The harbour is closed.\nGo home, captain.");
}

//==============================================================================
TEST_F (SRTImport, umlautsComeOutOfUTF8AndMacOSRoman)
{
    EXPECT_EQ (importFile ("utf8.srt"), german);
    EXPECT_EQ (importer->encoding, TextEncodingUTF8);
    EXPECT_EQ (importFile ("utf8_with_mark.srt"), german);
    EXPECT_EQ (importer->encoding, TextEncodingUTF8);
    EXPECT_EQ (importFile ("mac_roman.srt"), german);
    EXPECT_EQ (importer->encoding, TextEncodingMacOSRoman);
}

TEST_F (SRTImport, aFileInTheWrongEncodingIsReadAnewInTheRightOne)
{
    EXPECT_NE (importFile ("wrong_encoding.srt"), german);
    EXPECT_EQ (importer->encoding, TextEncodingMacOSRoman);
    EXPECT_EQ (message, "");

    EXPECT_EQ (readAgain (TextEncodingWindows1252), german);
    EXPECT_EQ (importer->encoding, TextEncodingWindows1252);
    EXPECT_EQ (message, "");
}

TEST_F (SRTImport, anEncodingThatIsNamedLeavesTheMarkInTheNumber)
{
    importFile ("utf8_with_mark.srt");
    EXPECT_EQ (readAgain (TextEncodingUTF8)[0][3], "\xef\xbb\xbf"
                                                   "1");
}

TEST_F (SRTImport, theEncodingConcernsTheTextAlone)
{
    EXPECT_EQ (import ("n\xe4\nt\xe4 --> u\xe4\nx\xe4\n"),
               (TextTable { { "t\xef\xbf\xbd", "u\xef\xbf\xbd", "x‰", "n\xef\xbf\xbd" } }));
    EXPECT_EQ (readAgain (TextEncodingLatin1),
               (TextTable { { "t\xef\xbf\xbd", "u\xef\xbf\xbd", "xä", "n\xef\xbf\xbd" } }));
}

TEST_F (SRTImport, bytesThatAreNoUTF8AreReplacedNotPassedOn)
{
    import ("1\na --> b\nx\xc0\x80y\xed\xa0\x80z\xf0\x9f\n");
    for (const auto& row : readAgain (TextEncodingUTF8))
        for (const auto& cell : row)
            EXPECT_TRUE (juce::CharPointer_UTF8::isValidString (cell.c_str(), static_cast<int> (cell.size())))
                << cell;
    EXPECT_EQ (importer->rows[0][2].getText().substring (0, 1), "x");
    EXPECT_TRUE (importer->rows[0][2].getText().containsChar ('z'));
}

TEST_F (SRTImport, utf16GivesNoRows)
{
    EXPECT_EQ (importFile ("utf16_little_endian.srt"), TextTable());
    EXPECT_EQ (importer->encoding, TextEncodingUTF16);
    EXPECT_EQ (message, "");
    EXPECT_EQ (log.lines().size(), 1u);
}

TEST_F (SRTImport, zeroBytesDisappear)
{
    EXPECT_EQ (import (std::string ("1\0\na\0 --> b\nx\0y\n\0\n", 18)),
               (TextTable { { "a", "b", "xy\n", "1" } }));
    EXPECT_EQ (message, "");
}

TEST_F (SRTImport, aFileThatClaimsATerabyteIsNotReadIntoMemory)
{
    const auto path = folder.file ("list.srt", "1\n");
    std::filesystem::resize_file (path, std::uintmax_t { 1 } << 40);
    importer = std::make_unique<SRTEventFileImporter> (juce::String (path), message);
    EXPECT_EQ (message, cantBeParsed);
    EXPECT_TRUE (importer->rows.empty());
}

//==============================================================================
class UnparsableSRT : public SRTImport, public testing::WithParamInterface<std::string>
{
};

TEST_P (UnparsableSRT, addsItsWordsAndLeavesTheColumnsAlone)
{
    message = "Before. ";
    importer = std::make_unique<SRTEventFileImporter> (folder.file ("list.srt", GetParam()), message);
    EXPECT_EQ (message, juce::String ("Before. ") + cantBeParsed);
    EXPECT_TRUE (importer->rows.empty());
    EXPECT_TRUE (importer->columnMap.empty());
}

INSTANTIATE_TEST_SUITE_P (Bytes, UnparsableSRT, testing::Values ("", "\xef\xbb\xbf", "\xff\xfe", "\xfe\xff"));

TEST_F (SRTImport, emptyFilesThatComeWithTheTestsSayTheSame)
{
    for (const auto* name : { "empty.srt", "bom.srt" })
    {
        EXPECT_EQ (importFile (name), TextTable()) << name;
        EXPECT_EQ (message, cantBeParsed) << name;
    }
}

TEST_F (SRTImport, aMarkAloneIsContentWhenTheEncodingIsNamed)
{
    importFile ("bom.srt");
    EXPECT_EQ (readAgain (TextEncodingUTF8), TextTable());
    EXPECT_EQ (message, "");
}

TEST_F (SRTImport, whatCannotBeReadEmptiesTheTable)
{
    const auto path = folder.file ("list.srt", "1\na --> b\nHello\n");
    importPath (path);
    std::filesystem::remove (path);
    EXPECT_EQ (readAgain (TextEncodingUnknown), TextTable());
    EXPECT_EQ (message, cantBeParsed);
    EXPECT_EQ (importer->columnMap, fourColumns);
}

TEST_F (SRTImport, foldersAndPipesAreNoFiles)
{
    const auto pipe = (folder.path / "pipe.srt").string();
    ASSERT_EQ (::mkfifo (pipe.c_str(), 0600), 0);
    for (const auto& path : { pipe, folder.path.string(), (folder.path / "missing.srt").string() })
    {
        EXPECT_EQ (importPath (path), TextTable()) << path;
        EXPECT_EQ (message, cantBeParsed) << path;
    }
}

TEST_F (SRTImport, lineBreaksAloneAreAnEmptyListWithoutAMessage)
{
    EXPECT_EQ (import ("\n\n\r\n"), TextTable());
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->columnMap, fourColumns);
}

TEST_F (SRTImport, readingAgainReplacesTheRows)
{
    importFile ("harbour.srt");
    EXPECT_EQ (readAgain (TextEncodingUTF8), harbour);
    EXPECT_EQ (importer->encoding, TextEncodingUTF8);
}

TEST_F (SRTImport, aFileCutOffKeepsTheSubtitlesBefore)
{
    EXPECT_EQ (importFile ("truncated.srt"), TextTable (harbour.begin(), harbour.begin() + 1));
    EXPECT_EQ (message, "");
}

TEST_F (SRTImport, garbageIsReadInEveryEncodingWithoutHarm)
{
    importFile ("garbage.srt");
    for (int encoding = -1; encoding <= 8; ++encoding)
        EXPECT_EQ (readAgain (encoding), TextTable()) << encoding;
}

TEST_F (SRTImport, aTextOfAMegabyteComesThroughWhole)
{
    const std::string speech (1 << 20, 'x');
    EXPECT_EQ (import ("1\na --> b\n" + speech + "\n\n2\nc --> d\nshort\n"),
               (TextTable { { "a", "b", speech, "1" }, { "c", "d", "short", "2" } }));
}

TEST_F (SRTImport, emptySubtitlesByTheMillionAreNoCueList)
{
    std::string bytes;
    for (std::uint64_t i = 0; i < ImportLimits().spareCells; ++i)
        bytes += "1\n\n";
    EXPECT_EQ (import (bytes), TextTable());
    EXPECT_EQ (message, cantBeParsed);
}

TEST_F (SRTImport, noPrefixOfAFileGivesMoreThanTheWholeSubtitlesInIt)
{
    const auto bytes = bytesOfFile (dataFile ("srt/utf8_with_mark.srt"));
    for (std::size_t length = 0; length <= bytes.size(); ++length)
    {
        const auto rows = import (bytes.substr (0, length));
        ASSERT_LE (rows.size(), german.size()) << length;
        if (rows.size() == 2)
        {
            EXPECT_EQ (rows[0], german[0]) << length;
        }
    }
}

//==============================================================================
TEST_F (SRTImport, millisecondsBecomeTheNearestFrames)
{
    importFile ("harbour.srt");
    const auto result = EventRowReader (Testing::timeInfoAt ("25", "00:00:00:00"), {}).read (*importer);

    ASSERT_EQ (result.events.size(), 3u);
    EXPECT_TRUE (result.problems.empty());
    EXPECT_EQ (result.events[0]->getStartTCString(), "00:00:01:00");
    EXPECT_EQ (result.events[0]->getEndTCString(), "00:00:03:12");
    EXPECT_EQ (result.events[1]->getStartTCString(), "00:00:04:05");
    EXPECT_EQ (result.events[2]->getStartTCString(), "00:00:06:01");
    EXPECT_EQ (result.events[2]->getCueNumber(), "3");
    EXPECT_EQ (result.events[2]->getText().getText(), "The water does.");
}

TEST_F (SRTImport, aPlaceOnTheScreenDoesNotSpoilTheEnd)
{
    importFile ("placed.srt");
    const auto result = EventRowReader (Testing::timeInfoAt ("25", "01:00:00:00"), {}).read (*importer);
    EXPECT_EQ (result.events.at (0)->getStartTCString(), "01:00:00:13");
    EXPECT_EQ (result.events.at (0)->getEndTCString(), "01:00:02:00");
}
