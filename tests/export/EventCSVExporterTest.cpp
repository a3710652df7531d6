// SPDX-License-Identifier: GPL-3.0-only
#include "export/EventCSVExporter.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "export/ExportSupport.h"

#include <type_traits>

using namespace ExportSupport;

namespace
{

using Names = std::vector<std::string>;

const std::string mark ("\xef\xbb\xbf");
const std::string zero (1, '\0');

const std::string header =
    "Start TC,End TC,Text,Character,Char Prefix,Actor,Cue Number,Done,Notes,Engineering Notes,Event Type,"
    "Duration,Enabled,Number of Takes,Reason,BPM,Forced Narrative,FN Region\n";

std::string replaced (std::string in, char from, char to)
{
    std::replace (in.begin(), in.end(), from, to);
    return in;
}

class CSVExportTest : public ExportTest
{
protected:
    CSVExportTest() { exporter.delegate = &progress; }

    /** What a file by timecode of these options holds. */
    std::string exported (int delimiter, int csvTemplate)
    {
        settings->options[EventExportCSVDelimiterKey] = delimiter;
        settings->options[EventExportCSVTemplateKey] = csvTemplate;
        EXPECT_EQ (exporter.exportEventsByTimecode(), "");
        return folder.bytes ("Reel 2.csv");
    }

    void giveTwoCues()
    {
        addCharacter ("a", "Ann", "AN", "Mary");
        settings->events = events (
            { { "AN1", oneHour, oneHour + 50, "a", "First, line" }, { "2", oneHour + 250, oneHour + 300 } });
        settings->events[0]->setIsForcedNarrative (true);
        settings->events[0]->setNumRecordedTakes (2);
    }

    /** The rows of giveTwoCues(), without a line break behind the last one. */
    const std::string twoRows =
        "\"01:00:00:00\",\"01:00:02:00\",\"First, line\",\"Ann\",\"AN\",\"Mary\",\"AN1\",\"No\",\"\",\"\",ADR Cue,3,Yes,2,"
        "\"None\",-1,FN,Bottom\n"
        "\"01:00:10:00\",\"01:00:12:00\",\"\",\"\",\"\",\"\",\"2\",\"No\",\"\",\"\",ADR Cue,3,Yes,0,\"None\",-1,,Bottom";

    std::string firstRow() const { return twoRows.substr (0, twoRows.find ('\n')); }
    std::string secondRow() const { return twoRows.substr (twoRows.find ('\n') + 1); }

    /** A cue with a speech of a thousand letters. */
    std::shared_ptr<Event> makeLongCue (int number)
    {
        return events ({ { std::to_string (number).c_str(), 0, 25, "a", std::string (1000, 'x').c_str() } })
            .front();
    }

    static std::string longCueRow (int number)
    {
        return "\"00:00:00:00\",\"00:00:01:00\",\"" + std::string (1000, 'x')
               + "\",\"Ann\",\"AN\",\"Mary\",\"" + std::to_string (number)
               + "\",\"No\",\"\",\"\",ADR Cue,3,Yes,0,\"None\",-1,,Bottom";
    }

    void giveCharacters()
    {
        addCharacter ("1", "Cora");
        addCharacter ("2", "Ann");
        settings->eventsByCharacter["1"] = events ({ { "C1", 0, 25, "1" } });
        settings->eventsByCharacter["2"] = events ({ { "A1", 0, 25, "2" } });
        settings->eventsByCharacter["none"] = events ({ { "N1" }, { "N2" } });
    }

    /** The cue numbers of a file of the own table, in the order of its rows. */
    std::string cueNumbers (const std::string& name)
    {
        std::string numbers;
        const auto lines = juce::StringArray::fromLines (text (folder.bytes (name).substr (3)));

        for (int i = 1; i < lines.size(); ++i)
            numbers += juce::StringArray::fromTokens (lines[i], ",", "\"")[6].unquoted().toStdString() + " ";

        return numbers;
    }

    EventCSVExporter exporter { settings };
};

} // namespace

// ---- the own table -----------------------------------------------------------------------------------------------------

TEST_F (CSVExportTest, isATableWithMarkHeaderRowsAndAZeroByte)
{
    giveTwoCues();
    EXPECT_EQ (exported (1, 0), mark + header + twoRows + zero);
}

TEST_F (CSVExportTest, aSemicolonFileHasAHeaderWithCommas)
{
    addCharacter ("a", "Ann");
    settings->events = events ({ { "7", 0, 25, "a", "one, two" } });
    EXPECT_EQ (exported (2, 0),
               mark + header
                   + "\"00:00:00:00\";\"00:00:01:00\";\"one, two\";\"Ann\";\"\";\"\";\"7\";\"No\";\"\";\"\";"
                     "ADR Cue;3;Yes;0;\"None\";-1;;Bottom"
                   + zero);
}

TEST_F (CSVExportTest, aTabFileHasTabsInTheHeaderToo)
{
    settings->events = events ({ { "7" } });
    EXPECT_EQ (exported (3, 0),
               mark + replaced (header, ',', '\t')
                   + "\"00:00:00:00\"\t\"00:00:01:00\"\t\"\"\t\"\"\t\"\"\t\"\"\t\"7\"\t\"No\"\t\"\"\t\"\"\t"
                     "ADR Cue\t3\tYes\t0\t\"None\"\t-1\t\tBottom"
                   + zero);
}

TEST_F (CSVExportTest, anUnknownDelimiterIsNone)
{
    settings->events = events ({ { "7" } });
    EXPECT_EQ (exported (9, 0),
               mark + header
                   + "\"00:00:00:00\"\"00:00:01:00\"\"\"\"\"\"\"\"\"\"7\"\"No\"\"\"\"\"ADR Cue3Yes0\"None\"-1"
                     "Bottom"
                   + zero);
}

TEST_F (CSVExportTest, anEmptyListIsTheHeaderWithItsLineBreak)
{
    EXPECT_EQ (exported (1, 0), mark + header + zero);
}

TEST_F (CSVExportTest, aLongListHasAllItsRowsInTheirOrder)
{
    giveTwoCues();
    for (const auto number : { 95, 96, 97, 500, 501 }) // some hundred rows are more than is written at a time
    {
        const auto cues = settings->events;
        std::string expected = header;
        settings->events.clear();

        for (int i = 0; i < number; ++i)
        {
            auto cue = cues[static_cast<std::size_t> (i % 2)];
            settings->events.push_back (i % 7 == 0 ? makeLongCue (i) : cue);
            expected += (i > 0 ? "\n" : "")
                        + (i % 7 == 0   ? longCueRow (i)
                           : i % 2 == 0 ? firstRow()
                                        : secondRow());
        }

        EXPECT_EQ (exported (1, 0), mark + expected + zero) << number;
        settings->events = cues;
    }
}

TEST_F (CSVExportTest, aRowThatIsWrittenAloneHasNoLineBreakBehindItEither)
{
    const std::string speech (70000, 'x'); // more than is written at a time
    settings->events = events ({ { "1", 0, 25, "", speech.c_str() } });
    const auto file = exported (1, 0);
    EXPECT_EQ (file.substr (0, mark.size() + header.size()), mark + header);
    EXPECT_EQ (file.substr (file.size() - 8), ",Bottom" + zero);
    EXPECT_EQ (std::count (file.begin(), file.end(), '\n'), 1);
}

TEST_F (CSVExportTest, anEventThatIsListedTwiceHasTwoRows)
{
    giveTwoCues();
    settings->events = { settings->events[1], settings->events[1] };
    const auto row = twoRows.substr (twoRows.find ('\n') + 1);
    EXPECT_EQ (exported (1, 0), mark + header + row + "\n" + row + zero);
}

TEST_F (CSVExportTest, textOfAnyLanguageIsUTF8)
{
    settings->events = events ({ { "7", 0, 25, "", "Größe 少女 🎬" } });
    EXPECT_NE (exported (1, 0).find ("\"Größe 少女 🎬\""), std::string::npos);
}

TEST_F (CSVExportTest, reportsNothingByTimecode)
{
    giveTwoCues();
    exported (1, 0);
    EXPECT_TRUE (progress.reports.empty());
}

TEST_F (CSVExportTest, anExporterWritesOneFileAfterTheOther)
{
    giveTwoCues();
    exported (1, 0);
    EXPECT_EQ (exported (1, 0), mark + header + twoRows + zero);
}

TEST_F (CSVExportTest, theFieldsTellOfTheLastFile)
{
    giveTwoCues();
    exported (2, 0);
    auto withSemicolons = replaced (twoRows, ',', ';');
    withSemicolons[withSemicolons.find ("First;") + 5] = ',';
    EXPECT_EQ (exporter.delimiter, 2);
    EXPECT_EQ (exporter.columnKeys.size(), 18u);
    EXPECT_EQ (exporter.csvString.toStdString(), header + withSemicolons);
    EXPECT_EQ (exporter.textEncoding, 2);
}

TEST_F (CSVExportTest, theHeaderNamesItsKeysInOrder)
{
    EXPECT_EQ (exporter.csvHeaderString().toStdString(), header);
    const std::vector<juce::String> keys { "StartTCString",
                                           "EndTCString",
                                           "Text",
                                           "CharacterID",
                                           "CharPrefix",
                                           "Actor",
                                           "CueNumber",
                                           "Done",
                                           "Notes",
                                           "EngineeringNotes",
                                           "Type",
                                           "StreamerDuration",
                                           "Enabled",
                                           "NumRecordedTakes",
                                           "Reason",
                                           "BeatsPerMinute",
                                           "IsForcedNarrative",
                                           "ForcedNarrativeRegion" };
    EXPECT_EQ (exporter.columnKeys, keys);
    std::ignore = exporter.csvHeaderString();
    EXPECT_EQ (exporter.columnKeys, keys);
}

TEST_F (CSVExportTest, rowsAreTheCellsOfTheirColumns)
{
    giveTwoCues();
    exported (1, 0);
    juce::String row;

    for (const auto& key : exporter.columnKeys)
        row += exporter.csvCellValue (settings->events[0], key, -1);

    EXPECT_EQ (row.toStdString(), twoRows.substr (0, twoRows.find ('\n')));
}

TEST_F (CSVExportTest, aTrackColumnInAnotherTableIsTheFirstTrackThroughout)
{
    giveTwoCues();
    exporter.columnKeys = { "DSTakerTrack" };
    EXPECT_TRUE (exporter.createCSVLinesForTemplateDublane (settings->events));
    EXPECT_EQ (exporter.csvString, "1\n1");
    EXPECT_EQ (exporter.csvCellValue (settings->events[1], "DSTakerTrack", -1), "1");
}

// ---- EuroTaker and unknown templates -------------------------------------------------------------------------------------

TEST_F (CSVExportTest, EuroTakerIsAHeaderAlone)
{
    giveTwoCues();
    EXPECT_EQ (exported (1, 2),
               mark + "TakeNr;In;Out;Typ;Spur;Band;Marker1;Marker2;Rolle;Band (Rolle);Text\n" + zero);
    EXPECT_EQ (exporter.delimiter, 2);
    EXPECT_EQ (exporter.columnKeys,
               (std::vector<juce::String> { "CueNumber", "StartTCString", "EndTCString", "", "EuroTakerSpur",
                                            "EuroTakerBand", "EuroTakerMarker1", "EuroTakerMarker2",
                                            "CharacterID", "EuroTakerBand", "Text" }));
}

TEST_F (CSVExportTest, EuroTakerMakesNoRows)
{
    giveTwoCues();
    EXPECT_TRUE (exporter.createCSVLinesForTemplateEuroTaker (settings->events));
    EXPECT_EQ (exporter.csvString, "");
}

TEST_F (CSVExportTest, aTemplateThatIsNoneHasNeitherHeaderNorRows)
{
    giveTwoCues();

    for (const int csvTemplate : { -1, 3, 1000 })
        EXPECT_EQ (exported (1, csvTemplate), mark + zero) << csvTemplate;

    EXPECT_EQ (exporter.delimiter, 2);
    EXPECT_TRUE (exporter.columnKeys.empty());
}

// ---- options ---------------------------------------------------------------------------------------------------------------

TEST_F (CSVExportTest, everyOptionHasToBeThere)
{
    for (const auto& key : { EventExportCSVDelimiterKey, EventExportCSVTemplateKey })
    {
        auto options = settings->options;
        settings->options.erase (key);
        EXPECT_THROW (exporter.exportEventsByTimecode(), std::out_of_range);
        settings->options = options;
    }

    settings->options.erase (EventExportCombineIntoSingleFileKey);
    EXPECT_THROW (exporter.exportEventsByCharacter(), std::out_of_range);
    EXPECT_TRUE (folder.names().empty());
}

TEST_F (CSVExportTest, byTimecodeNobodyAsksForACombinedFile)
{
    settings->options.erase (EventExportCombineIntoSingleFileKey);
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
}

// ---- encodings -------------------------------------------------------------------------------------------------------------

class CSVEncodings : public CSVExportTest, public ::testing::WithParamInterface<std::pair<int, std::string>>
{
};

TEST_P (CSVEncodings, haveTheirBytes)
{
    exporter.textEncoding = static_cast<ZEP::Core::TextEncoding> (GetParam().first);
    exporter.csvString = text ("é€\n\t少\"");
    EXPECT_EQ (exporter.writeCSVStringToFile (folder.file ("list.csv")), "");
    EXPECT_EQ (folder.bytes ("list.csv"), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P (CSVExport, CSVEncodings,
                          ::testing::Values (std::pair (2, mark + "é€\n\t少\"" + zero),
                                             std::pair (4, "\x8e\xdb\n\t?\""),
                                             std::pair (5, "\xe9\x80\n\t?\""),
                                             std::pair (6, "\xe9?\n\t?\"")));

class CSVEncodingsThatAreNone : public CSVExportTest, public ::testing::WithParamInterface<int>
{
};

TEST_P (CSVEncodingsThatAreNone, areAFailureAndLeaveTheOlderFile)
{
    folder.write ("list.csv", "older");
    exporter.textEncoding = static_cast<ZEP::Core::TextEncoding> (GetParam());
    exporter.csvString = "text";
    EXPECT_EQ (exporter.writeCSVStringToFile (folder.file ("list.csv")),
               "Error writing file to " + folder.directory() + "/list.csv");
    EXPECT_EQ (folder.names(), std::vector<std::string> { "list.csv" });
    EXPECT_EQ (folder.bytes ("list.csv"), "older");
}

INSTANTIATE_TEST_SUITE_P (CSVExport, CSVEncodingsThatAreNone, ::testing::Values (0, 1, 3, 7, -1));

// ---- failures --------------------------------------------------------------------------------------------------------------

TEST_F (CSVExportTest, anOlderFileIsReplaced)
{
    folder.write ("Reel 2.csv", std::string (10000, 'x'));
    EXPECT_EQ (exported (1, 0), mark + header + zero);
}

TEST_F (CSVExportTest, aMissingFolderIsTold)
{
    settings->outputDirectory = folder.directory() + "/missing";
    EXPECT_EQ (exporter.exportEventsByTimecode(),
               "Error writing file to " + folder.directory() + "/missing/Reel 2.csv");
    EXPECT_TRUE (folder.names().empty());
}

TEST_F (CSVExportTest, aFolderThatIsAFileIsTold)
{
    folder.write ("file", "kept");
    settings->outputDirectory = folder.directory() + "/file";
    EXPECT_EQ (exporter.exportEventsByTimecode(),
               "Error writing file to " + folder.directory() + "/file/Reel 2.csv");
    EXPECT_EQ (folder.bytes ("file"), "kept");
}

TEST_F (CSVExportTest, aFolderThatTakesNoFilesIsTold)
{
    settings->outputDirectory = "/proc";
    EXPECT_EQ (exporter.exportEventsByTimecode(), "Error writing file to /proc/Reel 2.csv");
}

TEST_F (CSVExportTest, aFolderInTheFilesPlaceIsToldAndKept)
{
    std::filesystem::create_directory (folder.path / "Reel 2.csv");
    EXPECT_EQ (exporter.exportEventsByTimecode(),
               "Error writing file to " + folder.directory() + "/Reel 2.csv");
    EXPECT_TRUE (std::filesystem::is_directory (folder.path / "Reel 2.csv"));
}

TEST_F (CSVExportTest, aFullDiskIsToldAlsoForAFewBytes)
{
    std::filesystem::create_symlink ("/dev/full", folder.path / "Reel 2.csv");
    EXPECT_EQ (exporter.exportEventsByTimecode(),
               "Error writing file to " + folder.directory() + "/Reel 2.csv");
    EXPECT_TRUE (std::filesystem::exists ("/dev/full"));
}

TEST_F (CSVExportTest, anExportNameThatIsTooLongIsTold)
{
    settings->fileName = juce::String::repeatedString ("a", 300);
    EXPECT_EQ (exporter.exportEventsByTimecode(),
               "Error writing file to " + folder.directory() + "/" + settings->fileName + ".csv");
}

// ---- by character ----------------------------------------------------------------------------------------------------------

TEST_F (CSVExportTest, eachCharacterGetsAFile)
{
    giveCharacters();
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (folder.names(), (Names { "Reel 2_<no char>.csv", "Reel 2_Ann.csv", "Reel 2_Cora.csv" }));
    EXPECT_EQ (cueNumbers ("Reel 2_<no char>.csv"), "N1 N2 ");
    EXPECT_EQ (cueNumbers ("Reel 2_Ann.csv"), "A1 ");
    EXPECT_EQ (cueNumbers ("Reel 2_Cora.csv"), "C1 ");
    EXPECT_EQ (progress.reports, (std::vector<std::pair<int, int>> { { 1, 3 }, { 2, 3 }, { 3, 3 } }));
    EXPECT_EQ (progress.senders.front(), &exporter);
}

TEST_F (CSVExportTest, allCharactersMayShareAFileInTheOrderOfTheirNames)
{
    giveCharacters();
    settings->options[EventExportCombineIntoSingleFileKey] = true;
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (folder.names(), (Names { "Reel 2.csv" }));
    EXPECT_EQ (cueNumbers ("Reel 2.csv"), "N1 N2 A1 C1 ");
    EXPECT_TRUE (progress.reports.empty());
}

TEST_F (CSVExportTest, withoutCharactersNoFileIsWritten)
{
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_TRUE (folder.names().empty());
    EXPECT_TRUE (progress.reports.empty());
}

TEST_F (CSVExportTest, withoutCharactersTheSharedFileIsAHeader)
{
    settings->options[EventExportCombineIntoSingleFileKey] = true;
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (folder.bytes ("Reel 2.csv"), mark + header + zero);
}

TEST_F (CSVExportTest, theFirstFileThatFailsIsReportedAndEndsTheWalk)
{
    giveCharacters();
    std::filesystem::create_directory (folder.path / "Reel 2_Ann.csv");
    EXPECT_EQ (exporter.exportEventsByCharacter(),
               "Error writing file to " + folder.directory() + "/Reel 2_Ann.csv");
    EXPECT_EQ (progress.reports, (std::vector<std::pair<int, int>> { { 1, 3 }, { 2, 3 } }));
    EXPECT_EQ (folder.names(), (Names { "Reel 2_<no char>.csv", "Reel 2_Ann.csv" }));
}

TEST_F (CSVExportTest, aSharedFileThatFailsIsTold)
{
    giveCharacters();
    settings->options[EventExportCombineIntoSingleFileKey] = true;
    settings->outputDirectory = folder.directory() + "/missing";
    EXPECT_EQ (exporter.exportEventsByCharacter(),
               "Error writing file to " + folder.directory() + "/missing/Reel 2.csv");
}

TEST_F (CSVExportTest, hostileNamesStayInTheFolderAndLoseNothing)
{
    const std::pair<const char*, std::string> names[] = { { "1", "../../evil" },
                                                          { "2", "A/B" },
                                                          { "3", "A_B" },
                                                          { "4", std::string (5000, 'z') },
                                                          { "5", "new\nline" } };

    for (const auto& [id, name] : names)
    {
        addCharacter (id, name);
        settings->eventsByCharacter[id] = events ({ { id, 0, 25, id } });
    }

    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (folder.names(),
               (Names { "Reel 2_.._.._evil.csv", "Reel 2_A_B (2).csv", "Reel 2_A_B.csv",
                        "Reel 2_new\nline.csv", "Reel 2_" + std::string (244, 'z') + ".csv" }));
    EXPECT_EQ (cueNumbers ("Reel 2_A_B.csv"), "2 ");
    EXPECT_EQ (cueNumbers ("Reel 2_A_B (2).csv"), "3 ");
}

TEST_F (CSVExportTest, theSettingsAreLeftAsTheyWere)
{
    giveCharacters();
    giveTwoCues();
    const auto before = settings->eventsByCharacter;
    const auto eventsBefore = settings->events;
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (settings->eventsByCharacter, before);
    EXPECT_EQ (settings->events, eventsBefore);
}
