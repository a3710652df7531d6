// SPDX-License-Identifier: GPL-3.0-only
#include "export/EventExcelExporter.h"

#include "core/documents/ExcelFileHandler.h"
#include "export/ExportSupport.h"
#include "export/GoldenFiles.h"
#include "support/XMLTree.h"
#include "support/ZipArchive.h"

#include <gmock/gmock.h>

#include <ostream>

using namespace ExportSupport;
using namespace ZEP::Overmarks::Testing;
using testing::IsEmpty;
using ZEP::Core::RichTextString;

namespace
{

using Names = std::vector<std::string>;
using Reports = std::vector<std::pair<int, int>>;

Names textsOf (const EventExcelExporter::Row& row)
{
    Names texts;

    for (const auto& cell : row)
        texts.push_back (cell.getText().toStdString());

    return texts;
}

const Names titles {
    "Start TC", "End TC", "Duration", "Cue Number",        "Character", "Char Prefix",     "Actor",
    "Text",     "Reason", "Notes",    "Engineering Notes", "Done",      "Number of Takes", "Forced Narrative",
    "FN Region"
};

const std::vector<juce::String> keys { "StartTCString",
                                       "EndTCString",
                                       "DurationTCString",
                                       "CueNumber",
                                       "CharacterID",
                                       "CharPrefix",
                                       "Actor",
                                       "Text",
                                       "Reason",
                                       "Notes",
                                       "EngineeringNotes",
                                       "Done",
                                       "NumRecordedTakes",
                                       "IsForcedNarrative",
                                       "ForcedNarrativeRegion" };

constexpr int longestCell = 32767;

class ExcelExportTest : public ExportTest
{
protected:
    ExcelExportTest()
    {
        settings->exportType = EventExportTypeExcel;
        exporter.delegate = &progress;
    }

    /** The cell of the first event under a title. */
    RichTextString cell (const std::string& title)
    {
        const auto table = exporter.buildFileContent (settings->events);
        const auto column = std::find (titles.begin(), titles.end(), title) - titles.begin();
        return table.at (1).at (static_cast<std::size_t> (column));
    }

    std::string textOf (const std::string& title) { return cell (title).getText().toStdString(); }

    /** All cue numbers of a workbook, the title first. */
    Names cueNumbers (const std::string& name)
    {
        const auto sheet = treeOf (partNamed (unzipped (folder.bytes (name)), "xl/worksheets/sheet1.xml"));
        return valuesAt (*sheet, "//c[starts-with(@r, 'D')]/is/t");
    }

    void giveCharacters()
    {
        addCharacter ("1", "Cora");
        addCharacter ("2", "Ann");
        settings->eventsByCharacter["1"] = events ({ { "C1", 0, 25, "1" } });
        settings->eventsByCharacter["2"] = events ({ { "A1", 0, 25, "2" } });
        settings->eventsByCharacter["none"] = events ({ { "N1" }, { "N2" } });
    }

    void shareAFile() { settings->options[EventExportCombineIntoSingleFileKey] = true; }

    juce::String cantWrite (const std::string& name, const std::string& why) const
    {
        return "Can't write " + folder.directory() + "/" + text (name + ": " + why);
    }

    EventExcelExporter exporter { settings };
};

RichTextString marked (const std::string& words, int start, int end)
{
    RichTextString made (text (words));
    made.applyAttributes ({ { { start, end }, juce::Font().boldened(), juce::Colours::red } });
    return made;
}

// ---- the table -----------------------------------------------------------------------------------------------------------

TEST_F (ExcelExportTest, anEmptyListIsTheHeadingAlone)
{
    const auto table = exporter.buildFileContent ({});
    ASSERT_EQ (table.size(), 1u);
    EXPECT_EQ (textsOf (table[0]), titles);
}

TEST_F (ExcelExportTest, theHeadingNamesItsKeysAgainEachTime)
{
    EXPECT_TRUE (exporter.columnKeys.empty());
    EXPECT_EQ (textsOf (exporter.firstLineValues()), titles);
    EXPECT_EQ (exporter.columnKeys, keys);
    exporter.columnKeys = { "Text" };
    EXPECT_EQ (textsOf (exporter.firstLineValues()), titles);
    EXPECT_EQ (exporter.columnKeys, keys);
}

TEST_F (ExcelExportTest, aRowHasTheCellsOfItsColumns)
{
    addCharacter ("a", "Ann", "AN", "Mary");
    auto cues = events (
        { { "AN1", oneHour, oneHour + 55, "a", "Hello?", "softly" }, { "2", oneHour, oneHour + 25 } });
    cues[0]->setEngineeringNotes (text ("boom"));
    cues[0]->setDone (true);
    cues[0]->setNumRecordedTakes (12);
    cues[0]->setIsForcedNarrative (true);
    cues[0]->setForcedNarrativeRegion (ForcedNarrativeRegionTop);
    const auto table = exporter.buildFileContent (cues);
    ASSERT_EQ (table.size(), 3u);
    EXPECT_EQ (textsOf (table[1]),
               (Names { "01:00:00:00", "01:00:02:05", "00:00:02:05", "AN1", "Ann", "AN", "Mary", "Hello?",
                        "None", "softly", "boom", "Yes", "12", "Yes", "Top" }));
    EXPECT_EQ (textsOf (table[2]), (Names { "01:00:00:00", "01:00:01:00", "00:00:01:00", "2", "", "", "", "",
                                            "None", "", "", "No", "0", "No", "Bottom" }));
}

TEST_F (ExcelExportTest, rowsKeepTheOrderOfTheEventsAlsoTwiceTheSame)
{
    const auto cues = events ({ { "9", 50 }, { "1", 0 } });
    const auto table = exporter.buildFileContent ({ cues[0], cues[1], cues[0] });
    ASSERT_EQ (table.size(), 4u);
    EXPECT_EQ (textsOf (table[1])[3], "9");
    EXPECT_EQ (textsOf (table[2])[3], "1");
    EXPECT_EQ (textsOf (table[3]), textsOf (table[1]));
}

TEST_F (ExcelExportTest, quotesOfACharacterAreDoubled)
{
    addCharacter ("a", "Ann \"Red\"", "\"", "\"Mary\" O'Hara");
    settings->events = events ({ { "\"1\"", 0, 25, "a", "say \"hi\"", "\"so\"" } });
    EXPECT_EQ (textOf ("Character"), "Ann \"\"Red\"\"");
    EXPECT_EQ (textOf ("Char Prefix"), "\"\"");
    EXPECT_EQ (textOf ("Actor"), "\"\"Mary\"\" O'Hara");
    EXPECT_EQ (textOf ("Cue Number"), "\"1\"");
    EXPECT_EQ (textOf ("Text"), "say \"hi\"");
    EXPECT_EQ (textOf ("Notes"), "\"so\"");
}

TEST_F (ExcelExportTest, aCharacterThatTheCastDoesNotKnowIsEmpty)
{
    settings->events = events ({ { "1", 0, 25, "nobody" } });
    EXPECT_EQ (textOf ("Character"), "");
    EXPECT_EQ (textOf ("Char Prefix"), "");
    EXPECT_EQ (textOf ("Actor"), "");
    Event::setADRCharacterMap (nullptr);
    EXPECT_EQ (textOf ("Character"), "");
}

TEST_F (ExcelExportTest, everyTypeOfEventTellsOfItsCharacter)
{
    addCharacter ("a", "Ann");
    settings->events = { event ({ "1", 0, 25, "a" }, EventTypeMarker) };
    EXPECT_EQ (textOf ("Character"), "Ann");
}

TEST_F (ExcelExportTest, theTextIsCleaned)
{
    tessera1::ProtoOvermark proto;
    proto.set_text ("“so**”\nit’s…");
    settings->events = { stored (proto) };
    EXPECT_EQ (textOf ("Text"), "\"so**\"\nit's...");
}

TEST_F (ExcelExportTest, theTextKeepsItsLooks)
{
    settings->events = events ({ { "1" } });
    settings->events[0]->setText (marked ("so red", 3, 6));
    EXPECT_EQ (cell ("Text"), marked ("so red", 3, 6));
    EXPECT_FALSE (cell ("Text").isPlain());
}

TEST_F (ExcelExportTest, notesAreNotCleaned)
{
    tessera1::ProtoOvermark proto;
    proto.set_notes ("“so…” \x01\r\nred");
    proto.set_engineeringnotes ("– 1 –");
    settings->events = { stored (proto) };
    EXPECT_EQ (textOf ("Notes"), "“so…” \x01\r\nred");
    EXPECT_EQ (textOf ("Engineering Notes"), "– 1 –");
}

TEST_F (ExcelExportTest, notesKeepTheirLooks)
{
    settings->events = events ({ { "1" } });
    settings->events[0]->setNotes (marked ("so red", 3, 6));
    settings->events[0]->setEngineeringNotes (marked ("all red", 0, 7));
    EXPECT_EQ (cell ("Notes"), marked ("so red", 3, 6));
    EXPECT_EQ (cell ("Engineering Notes"), marked ("all red", 0, 7));
}

TEST_F (ExcelExportTest, theDurationIsATimecode)
{
    settings->events = events ({ { "1", 10, 47 } });
    EXPECT_EQ (textOf ("Duration"), "00:00:01:12");
}

TEST_F (ExcelExportTest, anEventWithoutTimesHasDashes)
{
    settings->events = { event ({ "1", -1, -1 }) };
    EXPECT_EQ (textOf ("Start TC"), "--:--:--:--");
    EXPECT_EQ (textOf ("End TC"), "--:--:--:--");
    EXPECT_EQ (textOf ("Duration"), "00:00:00:00");
}

TEST_F (ExcelExportTest, aReasonHasItsNameAlsoNone)
{
    settings->events = events ({ { "1" } });
    EXPECT_EQ (textOf ("Reason"), "None");
    settings->events[0]->setReason (4);
    EXPECT_EQ (textOf ("Reason"), "Clarity (AR4)");
    settings->events[0]->setReason (1000);
    EXPECT_EQ (textOf ("Reason"), "None");
}

struct Region
{
    int region;
    const char* name;
};

void PrintTo (const Region& region, std::ostream* stream) { *stream << region.region; }

class ExcelRegions : public ExcelExportTest, public testing::WithParamInterface<Region>
{
};

TEST_P (ExcelRegions, areNamedWhetherForcedNarrativeOrNot)
{
    settings->events = events ({ { "1" } });
    settings->events[0]->setForcedNarrativeRegion (static_cast<ForcedNarrativeRegion> (GetParam().region));
    EXPECT_EQ (textOf ("FN Region"), GetParam().name);
    EXPECT_EQ (textOf ("Forced Narrative"), "No");
    settings->events[0]->setIsForcedNarrative (true);
    EXPECT_EQ (textOf ("FN Region"), GetParam().name);
    EXPECT_EQ (textOf ("Forced Narrative"), "Yes");
}

INSTANTIATE_TEST_SUITE_P (, ExcelRegions,
                          testing::Values (Region { 0, "Bottom" }, Region { 1, "Top" }, Region { 2, "Left" },
                                           Region { 3, "Right" }, Region { 4, "Right" },
                                           Region { -1, "Right" }));

TEST_F (ExcelExportTest, aCellIsHadByItsKey)
{
    addCharacter ("a", "Ann");
    const auto cue = event ({ "7", 0, 25, "a", "Hello?" });
    const auto table = exporter.buildFileContent ({ cue });

    for (std::size_t i = 0; i < keys.size(); ++i)
        EXPECT_EQ (exporter.richTextStringForEventAndColumnKey (cue, keys[i]), table[1][i]) << keys[i];
}

TEST_F (ExcelExportTest, twoKeysHaveACellButNoColumn)
{
    const auto marker = event ({ "7" }, EventTypeMarker);
    EXPECT_EQ (exporter.richTextStringForEventAndColumnKey (marker, "Type").getText(), marker->typeString());
    EXPECT_EQ (exporter.richTextStringForEventAndColumnKey (marker, "Enabled").getText(), "Yes");
    marker->setEnabled (false);
    EXPECT_EQ (exporter.richTextStringForEventAndColumnKey (marker, "Enabled").getText(), "No");
}

TEST_F (ExcelExportTest, anyOtherKeyIsEmpty)
{
    const auto cue = event ({ "7", 0, 25, "", "Hello?" });

    for (const auto* key :
         { "", "text", "StreamerDuration", "BeatsPerMinute", "SelectedTake", "Takes", "nonsense" })
        EXPECT_EQ (exporter.richTextStringForEventAndColumnKey (cue, key), RichTextString()) << key;
}

// ---- by timecode -----------------------------------------------------------------------------------------------------------

TEST_F (ExcelExportTest, isAWorkbookOfTheEventsInTheirOrder)
{
    settings->events = events ({ { "00123", 50 }, { "=1+1", 0 }, { "http://example.org", 75 } });
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (folder.names(), Names { "Reel 2.xlsx" });
    EXPECT_EQ (cueNumbers ("Reel 2.xlsx"), (Names { "Cue Number", "00123", "=1+1", "http://example.org" }));
    EXPECT_EQ (progress.reports, (Reports { { 1, 1 } }));
    EXPECT_EQ (progress.senders.front(), &exporter);
}

TEST_F (ExcelExportTest, noRowHasAnythingOfTheRowsBefore)
{
    addCharacter ("1", "Cora");
    addCharacter ("2", "Ann-Christine");
    settings->events =
        events ({ { "1", 0, 25, "1" }, { "22", 25, 50, "2" }, { "" }, { "4", 75, 99, "1" }, { "22b" } });
    settings->events[0]->setNotes (marked ("so red", 3, 6));
    settings->events[1]->setNotes (RichTextString (text ("plain")));
    settings->events[3]->setText (marked ("all red", 0, 7));
    settings->events[4]->setText (RichTextString (text ("plain")));
    settings->events[4]->setEngineeringNotes (marked ("red too", 0, 3));
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");

    auto rows = exporter.buildFileContent (settings->events);
    juce::String error;
    ZEP::Core::ExcelFileHandler().writeFileContent (folder.directory() + "/rows.xlsx", rows, error);
    EXPECT_EQ (error, "");
    EXPECT_EQ (unzipped (folder.bytes ("Reel 2.xlsx")), unzipped (folder.bytes ("rows.xlsx")));
}

TEST_F (ExcelExportTest, anEmptyListIsAWorkbookWithItsHeading)
{
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (cueNumbers ("Reel 2.xlsx"), Names { "Cue Number" });
    EXPECT_EQ (progress.reports, (Reports { { 1, 1 } }));
}

TEST_F (ExcelExportTest, nobodyHasToListen)
{
    giveCharacters();
    exporter.delegate = nullptr;
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
}

TEST_F (ExcelExportTest, aFailureByTimecodeIsToldAndReportedAsDone)
{
    settings->outputDirectory = folder.directory() + "/missing";
    EXPECT_EQ (exporter.exportEventsByTimecode(),
               cantWrite ("missing/Reel 2.xlsx", "No such file or directory"));
    EXPECT_EQ (progress.reports, (Reports { { 1, 1 } }));
}

TEST_F (ExcelExportTest, aFolderInTheFilesPlaceIsToldAndKept)
{
    std::filesystem::create_directory (folder.path / "Reel 2.xlsx");
    EXPECT_EQ (exporter.exportEventsByTimecode(), cantWrite ("Reel 2.xlsx", "Is a directory"));
    EXPECT_EQ (folder.names(), Names { "Reel 2.xlsx" });
}

TEST_F (ExcelExportTest, aTextThatNoCellHoldsIsTold)
{
    settings->events = events ({ { "1", 0, 25, "", std::string (longestCell + 1, 'a') } });
    EXPECT_EQ (
        exporter.exportEventsByTimecode(),
        cantWrite ("Reel 2.xlsx",
                   "the cell H2 (row 2, column 8) holds 32768 characters, and a cell has room for 32767"));
    EXPECT_THAT (folder.names(), IsEmpty());
}

TEST_F (ExcelExportTest, anExporterWritesOneFileAfterTheOther)
{
    settings->events = events ({ { "1" } });
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    settings->events = events ({ { "2" } });
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (cueNumbers ("Reel 2.xlsx"), (Names { "Cue Number", "2" }));
}

TEST_F (ExcelExportTest, byTimecodeNoOptionIsNeeded)
{
    settings->options.clear();
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
}

TEST_F (ExcelExportTest, byCharacterTheOptionOfOneFileHasToBeThere)
{
    settings->options.erase (EventExportCombineIntoSingleFileKey);
    EXPECT_THROW (exporter.exportEventsByCharacter(), std::out_of_range);
    EXPECT_THAT (folder.names(), IsEmpty());
}

TEST_F (ExcelExportTest, itCannotBeCancelled)
{
    settings->events = events ({ { "1" } });
    exporter.cancel();
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (cueNumbers ("Reel 2.xlsx"), (Names { "Cue Number", "1" }));
}

// ---- by character ----------------------------------------------------------------------------------------------------------

TEST_F (ExcelExportTest, eachCharacterGetsAWorkbook)
{
    giveCharacters();
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (folder.names(), (Names { "Reel 2_<no char>.xlsx", "Reel 2_Ann.xlsx", "Reel 2_Cora.xlsx" }));
    EXPECT_EQ (cueNumbers ("Reel 2_<no char>.xlsx"), (Names { "Cue Number", "N1", "N2" }));
    EXPECT_EQ (cueNumbers ("Reel 2_Ann.xlsx"), (Names { "Cue Number", "A1" }));
    EXPECT_EQ (cueNumbers ("Reel 2_Cora.xlsx"), (Names { "Cue Number", "C1" }));
    EXPECT_EQ (progress.reports, (Reports { { 1, 3 }, { 2, 3 }, { 3, 3 } }));
    EXPECT_EQ (progress.senders.front(), &exporter);
}

TEST_F (ExcelExportTest, allCharactersMayShareAWorkbookInTheOrderOfTheirNames)
{
    giveCharacters();
    shareAFile();
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (folder.names(), Names { "Reel 2.xlsx" });
    EXPECT_EQ (cueNumbers ("Reel 2.xlsx"), (Names { "Cue Number", "N1", "N2", "A1", "C1" }));
    EXPECT_THAT (progress.reports, IsEmpty());
}

TEST_F (ExcelExportTest, withoutCharactersNoFileIsWritten)
{
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_THAT (folder.names(), IsEmpty());
    EXPECT_THAT (progress.reports, IsEmpty());
}

TEST_F (ExcelExportTest, withoutCharactersTheSharedWorkbookIsAHeading)
{
    shareAFile();
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (cueNumbers ("Reel 2.xlsx"), Names { "Cue Number" });
}

TEST_F (ExcelExportTest, aFileThatFailsGoesUnnoticedAndTheWalkGoesOn)
{
    giveCharacters();
    std::filesystem::create_directory (folder.path / "Reel 2_Ann.xlsx");
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (progress.reports, (Reports { { 1, 3 }, { 2, 3 }, { 3, 3 } }));
    EXPECT_TRUE (std::filesystem::is_directory (folder.path / "Reel 2_Ann.xlsx"));
    EXPECT_EQ (cueNumbers ("Reel 2_Cora.xlsx"), (Names { "Cue Number", "C1" }));
}

TEST_F (ExcelExportTest, filesThatAllFailGoUnnoticedToo)
{
    giveCharacters();
    settings->outputDirectory = folder.directory() + "/missing";
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (progress.reports.size(), 3u);
    EXPECT_THAT (folder.names(), IsEmpty());
}

TEST_F (ExcelExportTest, aSharedFileThatFailsIsTold)
{
    giveCharacters();
    shareAFile();
    settings->outputDirectory = folder.directory() + "/missing";
    EXPECT_EQ (exporter.exportEventsByCharacter(),
               cantWrite ("missing/Reel 2.xlsx", "No such file or directory"));
    EXPECT_THAT (progress.reports, IsEmpty());
}

TEST_F (ExcelExportTest, aSlashInANameIsAnUnderscoreInTheFileName)
{
    addCharacter ("1", "Guard/Voice");
    addCharacter ("2", "../../evil");
    settings->eventsByCharacter["1"] = events ({ { "1" } });
    settings->eventsByCharacter["2"] = events ({ { "2" } });
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (folder.names(), (Names { "Reel 2_.._.._evil.xlsx", "Reel 2_Guard_Voice.xlsx" }));
}

TEST_F (ExcelExportTest, theSettingsAreLeftAsTheyWere)
{
    giveCharacters();
    settings->events = events ({ { "1" } });
    const auto before = settings->eventsByCharacter;
    const auto eventsBefore = settings->events;
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (settings->eventsByCharacter, before);
    EXPECT_EQ (settings->events, eventsBefore);
}

// ---- the whole document --------------------------------------------------------------------------------------------------

TEST_F (ExcelExportTest, aListIsAsItsGoldenFile)
{
    addCharacter ("a", "Ann \"Red\"", "AN", "Mary");
    settings->events =
        events ({ { "00123", oneHour, oneHour + 55, "a", "Hello?\nIs anybody <there> & awake?", "=softly" },
                  { "AN2", oneHour + 100, oneHour + 150, "", " blanks ", "_x000D_ \r\n" } });
    settings->events.push_back (event ({ "M", oneHour + 200, oneHour + 200 }, EventTypeMarker));
    settings->events[0]->setReason (4);
    settings->events[0]->setDone (true);
    settings->events[0]->setNumRecordedTakes (3);
    settings->events[1]->setText (marked ("all red", 0, 7));
    settings->events[2]->setText (marked ("partly red", 7, 10));
    settings->events[2]->setIsForcedNarrative (true);
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    expectGoldenParts ("xlsx/cues.txt", folder.bytes ("Reel 2.xlsx"));
}

} // namespace
