// SPDX-License-Identifier: GPL-3.0-only
// Session texts in every encoding, read a second time, and those with mistakes.
#include "import/PTSessionInfoFileImporter.h"
#include "import/protools/SessionImport.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

using namespace ZEP::Overmarks;
using namespace ZEP::Core;
using namespace SessionSupport;

namespace
{

const TextTable german { { "01:00:02:00", "01:00:04:00", "W0001", "Schönen Abend, Frau Weiß.", "FRAU WEISS",
                           "W", "B. Miller", "müde", "Clarity (AR4)" },
                         { "01:00:05:00", "01:00:06:00", "W0002", "Überhaupt nicht schön!", "FRAU WEISS", "W",
                           "B. Miller", "", "" } };

} // namespace

TEST_F (SessionImport, umlautsComeOutOfUTF8AndMacOSRoman)
{
    EXPECT_EQ (importFile ("utf8.txt"), german);
    EXPECT_EQ (importer->encoding, TextEncodingUTF8);
    EXPECT_EQ (importFile ("utf8_with_mark.txt"), german);
    EXPECT_EQ (importer->encoding, TextEncodingUTF8);
    EXPECT_EQ (importFile ("mac_roman.txt"), german);
    EXPECT_EQ (importer->encoding, TextEncodingMacOSRoman);
}

TEST_F (SessionImport, whatStandsBeforeTheHeadingHasNoSayInTheEncoding)
{
    import ("SESSION NAME:\tSch\xf6n\n" + heading + track ("ANNA", clip ("x", "01:00:00:00", "")));
    EXPECT_EQ (importer->encoding, TextEncodingASCII);
}

TEST_F (SessionImport, aFileInTheWrongEncodingIsReadAnewInTheRightOneWithoutASecondQuestion)
{
    EXPECT_NE (importFile ("wrong_encoding.txt"), german);
    EXPECT_EQ (importer->encoding, TextEncodingMacOSRoman);

    EXPECT_EQ (readAgain (TextEncodingWindows1252), german);
    EXPECT_EQ (importer->encoding, TextEncodingWindows1252);
    EXPECT_EQ (message, "");
    EXPECT_EQ (user.questions, 1);
}

TEST_F (SessionImport, readingAgainTakesTheTracksThatWereChosen)
{
    user.answer = [] (const Tracks& tracks) { return Tracks { tracks[1] }; };
    const auto rows = importFile ("harbour.txt");
    user.answer = allOf;
    EXPECT_EQ (readAgain (TextEncodingUTF8), rows);
    EXPECT_EQ (rows.size(), 3u);
    EXPECT_EQ (importer->columnMap, nineColumns);
}

TEST_F (SessionImport, readingAgainWithTheEncodingUnknownAsksAgain)
{
    user.answer = noneOf;
    importFile ("harbour.txt");
    user.answer = cueTracksOf;
    EXPECT_EQ (readAgain (TextEncodingUnknown), harbour);
    EXPECT_EQ (user.questions, 2);
}

TEST_F (SessionImport, readingAgainAfterAClosedWindowGivesNothing)
{
    user.answer = noneOf;
    importFile ("harbour.txt");
    EXPECT_EQ (readAgain (TextEncodingUTF8), TextTable());
    EXPECT_EQ (message, "");
}

TEST_F (SessionImport, aFailureOnReadingAgainEmptiesTheTableAndKeepsTheChoice)
{
    const auto path = folder.file ("session.txt", bytesOfFile (dataFile ("protools/utf8.txt")));
    importPath (path);
    std::filesystem::remove (path);
    EXPECT_EQ (readAgain (TextEncodingUTF8), TextTable());
    EXPECT_EQ (message, noSessionInfo);
    EXPECT_EQ (importer->selectedTracks.size(), 1u);

    EXPECT_EQ (readAgain (TextEncodingUnknown), TextTable());
    EXPECT_EQ (user.questions, 1);
    EXPECT_EQ (importer->selectedTracks.size(), 1u);
}

TEST_F (SessionImport, readingAgainTestsTheTimesOfTheFileAsItIsNow)
{
    const auto path = folder.file ("session.txt", bytesOfFile (dataFile ("protools/utf8.txt")));
    importPath (path);
    static_cast<void> (folder.file ("session.txt", bytesOfFile (dataFile ("protools/samples.txt"))));
    EXPECT_EQ (readAgain (TextEncodingUTF8), TextTable());
    EXPECT_EQ (message, noTimecode);

    static_cast<void> (folder.file ("session.txt", bytesOfFile (dataFile ("protools/harbour.txt"))));
    EXPECT_EQ (readAgain (TextEncodingUTF8), german);
}

TEST_F (SessionImport, tracksAreReadAsUTF8WhateverTheEncoding)
{
    auto rows =
        importTracks (track ("L\xc3\x85RS [\xc3\x85] {Bj\xc3\xb6rn}", clip ("x\xc3\xa4", "01:00:00:00", "")));
    for (const int encoding : { 2, 4, 6 })
    {
        rows = readAgain (encoding);
        EXPECT_EQ (rows[0][2], "Å0001");
        EXPECT_EQ (rows[0][4], "LÅRS");
        EXPECT_EQ (rows[0][5], "Å");
        EXPECT_EQ (rows[0][6], "Björn");
    }
    EXPECT_EQ (rows[0][3], "xÃ¤");

    rows = importTracks (track ("L\x81RS", clip ("x\x8a", "01:00:00:00", "")));
    EXPECT_EQ (importer->encoding, TextEncodingMacOSRoman);
    EXPECT_EQ (rows[0][3], "xä");
    EXPECT_EQ (rows[0][4], "L\xef\xbf\xbdRS");
}

TEST_F (SessionImport, timesAreReadByteByByte)
{
    const auto rows = importTracks (track ("Spare") + track ("ANNA", clip ("ä", "1ä", "2ä")));
    EXPECT_EQ (rows[0][0], "1Ã¤");
    EXPECT_EQ (rows[0][1], "2Ã¤");
    EXPECT_EQ (rows[0][3], "ä");
}

TEST_F (SessionImport, bytesThatAreNoUTF8AreReplacedNotPassedOn)
{
    importTracks (
        track ("A\xc0\x80", clip ("x\xc0\x80y\xed\xa0\x80z {\xf0\x9f} [\xff]", "01:00:00:00", "\xc0\x80")));
    for (int encoding = -1; encoding <= 8; ++encoding)
        for (const auto& row : readAgain (encoding))
            for (const auto& cell : row)
                EXPECT_TRUE (
                    juce::CharPointer_UTF8::isValidString (cell.c_str(), static_cast<int> (cell.size())))
                    << cell;
}

//==============================================================================
class NoSession : public SessionImport, public testing::WithParamInterface<std::string>
{
};

TEST_P (NoSession, addsItsWordsAndAsksNothing)
{
    message = "Before. ";
    importer = std::make_unique<PTSessionInfoFileImporter> (dataFile ("protools/" + GetParam()), message,
                                                            reasonNames);
    EXPECT_EQ (message, juce::String ("Before. ") + noSessionInfo);
    EXPECT_TRUE (importer->rows.empty());
    EXPECT_TRUE (importer->columnMap.empty());
    EXPECT_EQ (importer->encoding, TextEncodingUTF8);
    EXPECT_EQ (user.questions, 0);
}

INSTANTIATE_TEST_SUITE_P (Files, NoSession,
                          testing::Values ("empty.txt", "bom.txt", "table.txt", "utf16_little_endian.txt",
                                           "missing.txt"));

TEST_F (SessionImport, aPieceOfTheHeadingIsNone)
{
    for (const auto* bytes : { "T R A C K  L I S T I N", "T R A C K L I S T I N G\n", "track listing\n",
                               "t r a c k  l i s t i n g\n" })
    {
        EXPECT_EQ (import (bytes), TextTable());
        EXPECT_EQ (message, noSessionInfo) << bytes;
    }
}

TEST_F (SessionImport, theHeadingMayStandAnywhere)
{
    const auto rows =
        import ("x T R A C K  L I S T I N G y\n" + track ("ANNA", clip ("x", "01:00:00:00", "")));
    EXPECT_EQ (rows.size(), 1u);
    EXPECT_EQ (import ("T R A C K  L I S T I N G"), TextTable());
    EXPECT_EQ (message, "");
}

TEST_F (SessionImport, foldersAndPipesAreNoFiles)
{
    const auto pipe = (folder.path / "pipe.txt").string();
    ASSERT_EQ (::mkfifo (pipe.c_str(), 0600), 0);
    for (const auto& path : { pipe, folder.path.string() })
    {
        EXPECT_EQ (importPath (path), TextTable()) << path;
        EXPECT_EQ (message, noSessionInfo) << path;
    }
}

class NoTimecode : public SessionImport, public testing::WithParamInterface<std::string>
{
};

TEST_P (NoTimecode, addsItsWordsAndAsksNothing)
{
    message = "Before. ";
    importer = std::make_unique<PTSessionInfoFileImporter> (dataFile ("protools/" + GetParam()), message,
                                                            reasonNames);
    EXPECT_EQ (message, juce::String ("Before. ") + noTimecode);
    EXPECT_TRUE (importer->rows.empty());
    EXPECT_TRUE (importer->columnMap.empty());
    EXPECT_EQ (user.questions, 0);
}

INSTANTIATE_TEST_SUITE_P (Files, NoTimecode,
                          testing::Values ("feet_and_frames.txt", "samples.txt", "minutes_and_seconds.txt"));

//==============================================================================
TEST_F (SessionImport, windowsLineEndsLoseAllTracksAndTheLogSaysWhy)
{
    auto bytes = heading + track ("ANNA", clip ("x", "01:00:00:00", "01:00:01:00")) + track ("TOM");
    for (auto end = bytes.find ('\n'); end != bytes.npos; end = bytes.find ('\n', end + 2))
        bytes.insert (end, 1, '\r');

    EXPECT_EQ (import (bytes), TextTable());
    EXPECT_EQ (message, "");
    EXPECT_EQ (user.questions, 1);
    EXPECT_TRUE (user.offered.empty());
    EXPECT_EQ (log.lines().size(), 1u);
}

TEST_F (SessionImport, windowsLineEndsMakeClipsOfMarkersAndTheLogSaysWhatIsWrong)
{
    EXPECT_EQ (importFile ("line_ends_crlf.txt"), TextTable());
    EXPECT_EQ (message, noTimecode);
    EXPECT_EQ (user.questions, 0);
    EXPECT_EQ (
        log.lines(),
        (std::vector<std::string> {
            dataFile ("protools/line_ends_crlf.txt")
            + ": tracks without two empty lines behind them are left out (4, the first is \"ANNA [A] {B. "
              "Miller} (close mic)\"); the file has Windows line ends, between which no line is empty" }));
}

TEST_F (SessionImport, lineEndsOfOldMacsAreNoLineEnds)
{
    EXPECT_EQ (importFile ("line_ends_cr.txt"), TextTable());
    EXPECT_EQ (message, "");
    EXPECT_TRUE (user.offered.empty());
    ASSERT_EQ (log.lines().size(), 1u);
    EXPECT_EQ (log.lines()[0].find ("Windows"), std::string::npos) << log.lines()[0];
}

TEST_F (SessionImport, oneEmptyLineLosesATrackAndTheLogSaysSo)
{
    EXPECT_EQ (importFile ("one_empty_line.txt").size(), 3u);
    EXPECT_EQ (namesOf (user.offered), (std::vector<std::string> { "CAPTAIN {C. Berg} [C]" }));
    EXPECT_EQ (message, "");
    EXPECT_EQ (log.lines(),
               (std::vector<std::string> {
                   dataFile ("protools/one_empty_line.txt")
                   + ": tracks without two empty lines behind them are left out (1, the first is "
                     "\"ANNA [A] {B. Miller}\")" }));

    readAgain (TextEncodingUTF8);
    EXPECT_EQ (log.lines().size(), 1u);
}

TEST_F (SessionImport, ofALostTrackWithALongNameTheLogQuotesTheBeginning)
{
    const std::string longName = std::string (std::size_t { 20 } << 20U, 'x') + "\xc3\xa4";
    const auto quoted = [this] (const std::string& name)
    {
        importTracks (track (name, clip ("x", "01:00:00:00", "01:00:01:00"), "\n"));
        const auto line = log.lines().empty() ? std::string() : log.lines().back();
        return line.substr (line.find ("the first is "));
    };
    EXPECT_EQ (quoted (std::string (79, 'x') + "\xc3\xa4"),
               "the first is \"" + std::string (79, 'x') + "\xc3\xa4\")");
    EXPECT_EQ (quoted (std::string (79, 'x') + "\xc3\xa4y"),
               "the first is \"" + std::string (79, 'x') + "\xc3\xa4...\")");
    EXPECT_EQ (quoted (longName), "the first is \"" + std::string (80, 'x') + "...\")");
}

TEST_F (SessionImport, aFileThatEndsAfterAClipLosesTheLastTrack)
{
    EXPECT_EQ (importFile ("ends_after_last_clip.txt").size(), 3u);
    EXPECT_EQ (namesOf (user.offered), (std::vector<std::string> { "ANNA [A] {B. Miller}" }));
    EXPECT_EQ (log.lines().size(), 1u);
}

TEST_F (SessionImport, theFinalLineBreakBeginsNoFurtherLine)
{
    const auto line = clip ("x", "01:00:00:00", "01:00:01:00");
    EXPECT_EQ (importTracks (track ("ANNA", line, "\n")).size(), 0u);
    EXPECT_EQ (importTracks (track ("ANNA", line, "\n\n")).size(), 1u);
    EXPECT_EQ (importTracks (track ("ANNA", line, "\n ")).size(), 0u);
}

TEST_F (SessionImport, aCutFileKeepsTheTracksBefore)
{
    EXPECT_EQ (importFile ("truncated.txt").size(), 3u);
    EXPECT_EQ (namesOf (user.offered), (std::vector<std::string> { "ANNA [A] {B. Miller} (close mic)" }));
}

TEST_F (SessionImport, aHeadingAboveTheNameOfItsTrackServesThatTrackAlone)
{
    EXPECT_EQ (importFile ("headings_swapped.txt").size(), 2u);
    ASSERT_EQ (user.offered.size(), 2u);
    EXPECT_EQ (user.offered[0]->regions.size(), 2u);
    EXPECT_EQ (user.offered[1]->regions.size(), 0u);
}

TEST_F (SessionImport, aTextOfAHundredKilobytesComesThroughWhole)
{
    const auto rows = importFile ("huge_field.txt");
    ASSERT_EQ (rows.size(), 1u);
    EXPECT_EQ (rows[0][3].size(), 89999u);
    EXPECT_EQ (rows[0][7], std::string (40000, 'x'));
    EXPECT_EQ (rows[0][8], "Clarity (AR4)");
}

TEST_F (SessionImport, garbageIsReadInEveryEncodingWithoutHarm)
{
    importFile ("garbage.txt");
    for (int encoding = -1; encoding <= 8; ++encoding)
        EXPECT_EQ (readAgain (encoding), TextTable()) << encoding;
}

TEST_F (SessionImport, clipsByTheMillionAreNoSession)
{
    std::string clips;
    for (int i = 0; i < 200000; ++i)
        clips += "\t\t\t01:00:00:00\t\n";
    EXPECT_EQ (importTracks (track ("ANNA", clips)), TextTable());
    EXPECT_EQ (message, noSessionInfo);
    EXPECT_EQ (user.questions, 0);
}

TEST_F (SessionImport, zeroBytesDisappear)
{
    const auto rows =
        importTracks (track (std::string ("AN\0NA [A]", 9),
                             clip (std::string ("x\0y", 3), "01:00:00:00", std::string ("1\0", 2))));
    EXPECT_EQ (rows, (TextTable { { "01:00:00:00", "1", "A0001", "xy", "ANNA", "A", "", "", "" } }));
}
