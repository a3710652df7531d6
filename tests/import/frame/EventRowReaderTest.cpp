// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/EventRowReader.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "import/CSVEventFileImporter.h"
#include "import/SRTEventFileImporter.h"
#include "import/frame/EventFileImporter.h"
#include "import/frame/EventRowSupport.h"
#include "preferences/PreferenceKeys.h"
#include "support/NotificationCounter.h"
#include "support/PrintEvents.h"
#include "support/TemporaryFolder.h"
#include "support/UndoHistory.h"

#include <memory>
#include <set>

namespace ZEP::Overmarks::Testing
{
namespace
{

using Core::ADRCueReasonsManager;
using Core::RichTextString;

using EventRowReaderTest = EventRowsTest;

// ---- rows and columns -------------------------------------------------------------------------------------

TEST_F (EventRowReaderTest, aRowBecomesAnEvent)
{
    const auto cue = event ({ { "Start TC", "01:00:04:00" },
                              { "End TC", "01:00:06:00" },
                              { "Text", "Where were you?" },
                              { "Character", "Anna" },
                              { "Char Prefix", "A" },
                              { "Actor", "B. Miller" },
                              { "Cue Number", "A0001" },
                              { "Notes", "close" },
                              { "Engineering Notes", "boom" },
                              { "Done", "Yes" },
                              { "Event Type", "ADR Cue" },
                              { "Streamer Duration", "2" },
                              { "Enabled", "No" },
                              { "Number of Takes", "3" },
                              { "BPM", "-1" },
                              { "Reason", "Clarity (AR4)" },
                              { "Forced Narrative", "FN" },
                              { "FN Region", "Top" } });

    EXPECT_EQ (lineOf (*cue), "ADR Cue A0001 50|100..150 \"Where were you?\"");
    EXPECT_EQ (cue->character()->name, juce::String ("Anna"));
    EXPECT_EQ (cue->character()->prefix, juce::String ("A"));
    EXPECT_EQ (cue->character()->actor, juce::String ("B. Miller"));
    EXPECT_EQ (cue->getNotes().getText(), juce::String ("close"));
    EXPECT_EQ (cue->getEngineeringNotes().getText(), juce::String ("boom"));
    EXPECT_TRUE (cue->isDone());
    EXPECT_FALSE (cue->isEnabled());
    EXPECT_TRUE (cue->isForcedNarrative());
    EXPECT_EQ (cue->getForcedNarrativeRegion(), ForcedNarrativeRegionTop);
    EXPECT_EQ (cue->getStreamerDuration(), 2);
    EXPECT_EQ (cue->getNumRecordedTakes(), 3);
    EXPECT_EQ (cue->getReason(), 4);
    EXPECT_EQ (cue->getTimeInfo(), timeInfo);
}

TEST_F (EventRowReaderTest, aTableThatIsEmptiedMakesTheSameEvents)
{
    const TemporaryFolder folder;
    const auto importerOf = [&folder]
    {
        const auto file = folder.file ("list.csv");
        file.replaceWithText (
            "Start TC,Text,Character,Done\n01:00:01:00,One,Anna,yes\n,,,\n01:00:02:00,Two,Bernd,maybe\n");
        juce::String error;
        auto importer = std::make_unique<CSVEventFileImporter> (file.getFullPathName(), error);
        EXPECT_EQ (error, juce::String());
        return importer;
    };
    const auto kept = importerOf(), emptied = importerOf();
    const EventRowReader reader (timeInfo, cast, options);
    const auto wanted = reader.read (*kept);
    const auto result = reader.readAndEmpty (*emptied);
    ASSERT_EQ (wanted.events.size(), 2u);
    EXPECT_EQ (linesOf (result.events), linesOf (wanted.events));
    EXPECT_EQ (result.eventRows, wanted.eventRows);
    EXPECT_EQ (problems (result), problems (wanted));
    EXPECT_EQ (problems (result).size(), 1u);
    EXPECT_EQ (kept->rows.size(), emptied->rows.size()) << "numbers of rows still hold";
    EXPECT_EQ (kept->rows.front(), emptied->rows.front()) << "the titles stay";

    for (std::size_t i = 1; i < emptied->rows.size(); ++i)
        EXPECT_EQ (emptied->rows[i].capacity(), 0u);

    EXPECT_EQ (kept->rows[1].size(), 4u);
}

TEST_F (EventRowReaderTest, aTableWithoutTitlesIsEmptiedFromItsFirstRow)
{
    const TemporaryFolder folder;
    const auto file = folder.file ("list.srt");
    file.replaceWithText ("1\n00:00:01,000 --> 00:00:02,000\nOne\n\n2\n00:00:03,000 --> 00:00:04,000\nTwo\n");
    juce::String error;
    SRTEventFileImporter importer (file.getFullPathName(), error);
    ASSERT_EQ (error, juce::String());
    const auto result = EventRowReader (timeInfo, cast, options).readAndEmpty (importer);
    ASSERT_EQ (result.events.size(), 2u);
    EXPECT_EQ (result.events.front()->getText().getText(), juce::String ("One"));
    EXPECT_EQ (result.events.back()->getText().getText(), juce::String ("Two"));
    ASSERT_EQ (importer.rows.size(), 2u);

    for (const auto& row : importer.rows)
        EXPECT_EQ (row.capacity(), 0u);
}

TEST_F (EventRowReaderTest, everyColumnTitleIsRead)
{
    const std::map<juce::String, juce::String> oneCellEach { { "Start TC", "x" },
                                                             { "End TC", "x" },
                                                             { "Text", "x" },
                                                             { "Character", "x" },
                                                             { "Char Prefix", "x" },
                                                             { "Actor", "x" },
                                                             { "Cue Number", "x" },
                                                             { "Notes", "x" },
                                                             { "Engineering Notes", "x" },
                                                             { "Done", "yes" },
                                                             { "Event Type", "Marker" },
                                                             { "Streamer Duration", "1" },
                                                             { "Enabled", "no" },
                                                             { "Number of Takes", "1" },
                                                             { "BPM", "x" },
                                                             { "Reason", "AR1" },
                                                             { "Forced Narrative", "x" },
                                                             { "FN Region", "Top" } };

    for (const auto& title : EventFileImporter::columnTitles())
    {
        const auto cell = oneCellEach.find (title);
        const auto text = cell != oneCellEach.end() ? cell->second.toStdString() : "x";
        const auto result = read ({ NamedCells { { title.toStdString(), text } } });

        if (title == "- unused -")
            EXPECT_TRUE (result.events.empty());
        else
            EXPECT_EQ (result.events.size(), 1u) << title;
    }
}

TEST_F (EventRowReaderTest, missingColumnsLeaveANewEventsDefaults)
{
    const auto fresh = Event::create (EventTypeADRCue, timeInfo, -1, -1, -1.0f, -1);
    const auto cue = event ({ { "Notes", "n" } });
    auto expected = fieldsOf (*fresh), got = fieldsOf (*cue);
    expected["notes"] = "n";
    expected.erase ("uuid");
    got.erase ("uuid");
    EXPECT_EQ (got, expected);
}

TEST_F (EventRowReaderTest, blankRowsAreSkippedAndTheOthersKeepTheirPlace)
{
    const auto result = read ({ { { "Text", "a" }, { "Notes", "" } },
                                { { "Text", "" }, { "Notes", "" } },
                                { { "Text", " \t" }, { "Notes", "\xC2\xA0" } },
                                { { "Text", "b" }, { "Notes", "" } } });

    EXPECT_EQ (result.eventRows, (std::vector<int> { 0, 3 }));
    EXPECT_EQ (linesOf (result.events), "ADR Cue  -1|-1..-1 \"a\"\nADR Cue  -1|-1..-1 \"b\"\n");
    EXPECT_TRUE (result.problems.empty());
}

TEST_F (EventRowReaderTest, aRowThatSaysSomethingInUnassignedColumnsAloneIsBlank)
{
    CueTable table ({ { { "Text", "" }, { "Line", "17" } }, { { "Text", "a" }, { "Line", "18" } } });
    table.columns.erase ("Line");
    EXPECT_EQ (read (table).eventRows, std::vector<int> { 1 });
}

TEST_F (EventRowReaderTest, aRowMayEndBeforeItsLastColumn)
{
    CueTable table ({ NamedCells { { "A Notes", "n" }, { "Text", "t" } } });
    table.columns = { { "Notes", 0 },          { "Text", 1 }, { "Reason", 7 },
                      { "Actor", 2147483647 }, { "BPM", -1 }, { "Done", -5 } };
    table.rows.push_back ({});
    table.rows.push_back ({ RichTextString ("only notes") });
    const auto result = read (table);

    EXPECT_EQ (problems (result), Lines());
    EXPECT_EQ (result.eventRows, (std::vector<int> { 0, 2 }));
    EXPECT_EQ (result.events[1]->getNotes().getText(), juce::String ("only notes"));
    EXPECT_EQ (result.events[1]->getText().getText(), juce::String());
}

TEST_F (EventRowReaderTest, readingStartsAtTheFirstRowOfData)
{
    const CueTable table ({ { { "Text", "title" } }, { { "Text", "a" } } });
    EXPECT_EQ (read (table, 1).eventRows, std::vector<int> { 1 });
    EXPECT_EQ (read (table, 0).eventRows, (std::vector<int> { 0, 1 }));
    EXPECT_EQ (read (table, -3).eventRows, (std::vector<int> { 0, 1 }));
    EXPECT_TRUE (read (table, 2).events.empty());
    EXPECT_TRUE (read (table, 99).events.empty());
    EXPECT_TRUE (read (CueTable(), 1).events.empty());
}

TEST_F (EventRowReaderTest, problemsNameTheRowCountedFromTheTopOfTheTable)
{
    const CueTable table ({ { { "BPM", "Tempo" } }, { { "BPM", "120" } }, { { "BPM", "12" } } });
    EXPECT_EQ (problems (read (table, 1)),
               Lines { "2 BPM: \"12\" is not a tempo from 21 to 299 beats per minute" });
}

// ---- how it is done ---------------------------------------------------------------------------------------

TEST_F (EventRowReaderTest, readingMakesNoUndoStepsAndTellsNobody)
{
    const auto kept = makeEvent (EventTypeADRCue);
    kept->setDone (true);
    const EventNews news;
    const auto before = undoNames();
    const auto result = read ({ { { "Start TC", "01:00:01:00" },
                                  { "Text", "t" },
                                  { "Character", "c" },
                                  { "Done", "yes" },
                                  { "Reason", "AR1" },
                                  { "Number of Takes", "2" } },
                                { { "Event Type", "Fade In" }, { "Start TC", "01:00:01:00" } } });

    EXPECT_EQ (result.events.size(), 2u);
    EXPECT_EQ (undoNames(), before);
    EXPECT_EQ (news.count(), 0);
}

TEST_F (EventRowReaderTest, laterEditsOfTheEventsMakeUndoStepsAndAreTold)
{
    for (const auto* type : { "ADR Cue", "Fade In", "Streamer" })
    {
        const auto made = event ({ { "Event Type", type }, { "Start TC", "01:00:01:00" } });
        const EventNews news;
        const auto steps = undoSteps();
        made->setDone (true);
        EXPECT_EQ (undoSteps(), steps + 1) << type;
        EXPECT_EQ (news.count(), 1) << type;
    }
}

TEST_F (EventRowReaderTest, everyEventHasAnIdentityOfItsOwn)
{
    std::set<juce::String> identities;
    for (const auto& made : read (std::vector<NamedCells> (1000, { { "Text", "t" } })).events)
        identities.insert (made->getUuid());

    EXPECT_EQ (identities.size(), 1000u);
    for (const auto& identity : identities)
    {
        EXPECT_EQ (identity.length(), 36);
        EXPECT_EQ (identity[14], '4') << "a random UUID is of version 4";
        EXPECT_TRUE (juce::String ("89ab").containsChar (identity[19])) << identity;
    }
}

TEST_F (EventRowReaderTest, aReasonCountsAsUsed)
{
    read ({ { { "Reason", "Clarity (AR4)" } },
            { { "Reason", "AR4" } },
            { { "Reason", "None" } },
            { { "Reason", "??" } } });
    EXPECT_EQ (ADRCueReasonsManager::sharedManager()->reasonCount (5), 2);
    EXPECT_EQ (ADRCueReasonsManager::sharedManager()->reasonCount (1), 0);
}

// ---- single cells -----------------------------------------------------------------------------------------

TEST_F (EventRowReaderTest, anEmptyColumnDisablesNothing)
{
    const auto cue = event ({ { "Text", "t" },
                              { "Enabled", "" },
                              { "Done", "" },
                              { "Forced Narrative", " " },
                              { "FN Region", "" },
                              { "Event Type", "" },
                              { "Number of Takes", "" },
                              { "Reason", "" },
                              { "BPM", "" },
                              { "Streamer Duration", "" } });
    EXPECT_TRUE (cue->isEnabled());
    EXPECT_FALSE (cue->isDone());
    EXPECT_FALSE (cue->isForcedNarrative());
    EXPECT_EQ (cue->getType(), EventTypeADRCue);
    EXPECT_EQ (cue->getReason(), 0);
    EXPECT_EQ (cue->getNumRecordedTakes(), 0);
}

TEST_F (EventRowReaderTest, yesAndNoCells)
{
    EXPECT_TRUE (event ({ { "Done", " JA " } })->isDone());
    EXPECT_FALSE (event ({ { "Done", "nein" } })->isDone());
    EXPECT_FALSE (event ({ { "Enabled", "0" } })->isEnabled());
    EXPECT_TRUE (event ({ { "Enabled", "x" } })->isEnabled());
    EXPECT_TRUE (event ({ { "Forced Narrative", "fn" } })->isForcedNarrative());
    EXPECT_FALSE (event ({ { "Forced Narrative", "false" } })->isForcedNarrative());
}

TEST_F (EventRowReaderTest, regionsInTheSpellingsOfAllFormats)
{
    EXPECT_EQ (event ({ { "FN Region", "left" } })->getForcedNarrativeRegion(), ForcedNarrativeRegionLeft);
    EXPECT_EQ (event ({ { "FN Region", "Right" } })->getForcedNarrativeRegion(), ForcedNarrativeRegionRight);
    EXPECT_EQ (event ({ { "FN Region", "1" } })->getForcedNarrativeRegion(), ForcedNarrativeRegionTop);
}

TEST_F (EventRowReaderTest, textsAreTakenAsTheyStand)
{
    const auto cue =
        event ({ { "Text", "  two\nlines ** " }, { "Notes", " n ** " }, { "Cue Number", " 7 " } });
    EXPECT_EQ (cue->getText().getText(), juce::String ("  two\nlines ** "));
    EXPECT_EQ (cue->getNotes().getText(), juce::String (" n ** "));
    EXPECT_EQ (cue->getCueNumber(), juce::String (" 7 "));
}

TEST_F (EventRowReaderTest, typographicCharactersOfATextBecomePlain)
{
    EXPECT_EQ (event ({ { "Text", "Don\xE2\x80\x99t" } })->getText().getText(), juce::String ("Don't"));
    EXPECT_EQ (event ({ { "Cue Number", "A\xE2\x80\x93"
                                        "1" } })
                   ->getCueNumber(),
               juce::String ("A-1"));
}

TEST_F (EventRowReaderTest, theLooksOfATextAreKept)
{
    RichTextString text ("Hello you");
    text.setFont ({ 6, 9 }, juce::Font (12.0f, juce::Font::bold));
    CueTable table ({ NamedCells { { "Engineering Notes", "x" }, { "Notes", "x" }, { "Text", "x" } } });
    for (auto& cell : table.rows[0])
        cell = text;
    const auto result = read (table);

    ASSERT_EQ (result.events.size(), 1u);
    EXPECT_EQ (inWords (result.events[0]->getText()), inWords (text));
    EXPECT_EQ (inWords (result.events[0]->getNotes()), inWords (text));
    EXPECT_EQ (inWords (result.events[0]->getEngineeringNotes()), inWords (text));
}

TEST_F (EventRowReaderTest, twoStarsAreALineBreakOfTheTextWhenAsked)
{
    options.starsToLineBreaks = true;
    const auto cue =
        event ({ { "Text", "one**two**" }, { "Notes", "**loud**" }, { "Engineering Notes", "**" } });
    EXPECT_EQ (cue->getText().getText(), juce::String ("one\ntwo\n"));
    EXPECT_EQ (cue->getNotes().getText(), juce::String ("**loud**"));
    EXPECT_EQ (cue->getEngineeringNotes().getText(), juce::String ("**"));
}

TEST_F (EventRowReaderTest, lineBreaksForStarsKeepTheLooksOfTheText)
{
    RichTextString text ("one**two"), broken ("one\ntwo");
    text.setFont ({ 5, 8 }, juce::Font (12.0f, juce::Font::bold));
    broken.setFont ({ 4, 7 }, juce::Font (12.0f, juce::Font::bold));
    options.starsToLineBreaks = true;
    CueTable table ({ NamedCells { { "Text", "x" } } });
    table.rows[0][0] = text;
    EXPECT_EQ (inWords (read (table).events.at (0)->getText()), inWords (broken));
}

TEST_F (EventRowReaderTest, streamerDurationsByTheWordsOfADescription)
{
    EXPECT_EQ (event ({ { "Streamer Duration", "3.33 seconds" } })->getStreamerDuration(), 333);
    EXPECT_EQ (event ({ { "Streamer Duration", "2,67" } })->getStreamerDuration(), 267);
    EXPECT_EQ (
        event ({ { "Streamer Duration", "-1" }, { "Start TC", "01:00:09:00" } })->getStreamerDuration(), 3)
        << "the preferred preroll";
}

TEST_F (EventRowReaderTest, onlyAStreamerInBarsHasATempo)
{
    const NamedCells streamer { { "Event Type", "Streamer" },
                                { "Start TC", "01:00:10:00" },
                                { "BPM", "119.9" } };
    EXPECT_FLOAT_EQ (event (streamer)->getBeatsPerMinute(), -1.0f);
    EXPECT_FLOAT_EQ (event ({ { "Event Type", "ADR Cue" }, { "BPM", "120" } })->getBeatsPerMinute(), -1.0f);

    prefer (StreamerReferenceUnitPrefKey, 0);
    EXPECT_FLOAT_EQ (event (streamer)->getBeatsPerMinute(), 119.0f);
    EXPECT_FLOAT_EQ (event ({ { "Event Type", "ADR Cue" }, { "BPM", "120" } })->getBeatsPerMinute(), -1.0f);
    EXPECT_FLOAT_EQ (event ({ { "Event Type", "Streamer" }, { "BPM", "--" } })->getBeatsPerMinute(), 120.0f)
        << "the preferred tempo";
}

// ---- what is said of a cell that can't be understood ------------------------------------------------------

TEST_F (EventRowReaderTest, everyUnreadableCellIsReportedAndLeavesItsDefault)
{
    const NamedCells cells {
        { "Done", "maybe" },      { "Enabled", "perhaps" },     { "Forced Narrative", "2" },
        { "Event Type", "Beep" }, { "FN Region", "Middle" },    { "Number of Takes", "-2" },
        { "BPM", "20" },          { "Streamer Duration", "7" }, { "Reason", "Because" },
        { "Start TC", "1:2:3" },  { "End TC", "soon" }
    };
    const auto result = read ({ cells });

    EXPECT_EQ (
        problems (result),
        (Lines {
            "0 Event Type: \"Beep\" is not an event type (Streamer, Marker, Flutter, ADR Cue, Fade In, Fade Out)",
            "0 Start TC: \"1:2:3\" is not a timecode such as 01:02:03:04",
            "0 End TC: \"soon\" is not a timecode such as 01:02:03:04",
            "0 Streamer Duration: \"7\" is not a streamer duration (1, 2, 2.67, 3, 3.33 or 5 seconds)",
            "0 BPM: \"20\" is not a tempo from 21 to 299 beats per minute",
            "0 Done: \"maybe\" is neither yes nor no", "0 Enabled: \"perhaps\" is neither yes nor no",
            "0 Forced Narrative: \"2\" is neither yes nor no", "0 Reason: \"Because\" is not a cue reason",
            "0 Number of Takes: \"-2\" is not a number of takes",
            "0 FN Region: \"Middle\" is not a forced narrative region (Bottom, Top, Left, Right)" }));

    auto expected = fieldsOf (*Event::create (EventTypeADRCue, timeInfo, -1, -1, -1.0f, -1)),
         got = fieldsOf (*result.events.at (0));
    expected.erase ("uuid");
    got.erase ("uuid");
    EXPECT_EQ (got, expected);
}

TEST_F (EventRowReaderTest, takesAreWholeNumbers)
{
    EXPECT_EQ (event ({ { "Number of Takes", "12.0" } })->getNumRecordedTakes(), 12);
    EXPECT_EQ (complaints ({ { "Number of Takes", "2.5" } }),
               Lines { "Number of Takes: \"2.5\" is not a number of takes" });
    EXPECT_EQ (complaints ({ { "Number of Takes", "99999999999" } }),
               Lines { "Number of Takes: \"99999999999\" is not a number of takes" });
}

TEST_F (EventRowReaderTest, durationsOfOtherTypesAreAskedForInTheirUnit)
{
    EXPECT_EQ (complaints ({ { "Event Type", "Flutter" }, { "Streamer Duration", "3" } }),
               Lines { "Streamer Duration: \"3\" is not a flutter duration (1, 4, 8 or 12 frames)" });
    EXPECT_EQ (complaints ({ { "Event Type", "Marker" }, { "Streamer Duration", "long" } }),
               Lines { "Streamer Duration: \"long\" is not a streamer duration" });

    prefer (StreamerReferenceUnitPrefKey, 0);
    EXPECT_EQ (complaints ({ { "Event Type", "Streamer" }, { "Streamer Duration", "2.67" } }),
               Lines { "Streamer Duration: \"2.67\" is not a streamer duration (1, 2 or 4 bars)" });
}

TEST_F (EventRowReaderTest, aMessageShowsALongCellShortenedAndTame)
{
    const std::string cell = "\x1B[31m" + std::string (200, 'z');
    EXPECT_EQ (complaints ({ { "Reason", cell } }),
               Lines { "Reason: \"?[31m" + std::string (32, 'z') + "...\" is not a cue reason" });
}

// ---- importers --------------------------------------------------------------------------------------------

class TableImporter final : public EventFileImporter
{
public:
    TableImporter (int formatNumber, const CueTable& table)
        : EventFileImporter ("list", noMessage(), nullptr),
          number (formatNumber)
    {
        rows = table.rows;
        columnMap = table.columns;
    }

    void parse (juce::String&, Core::TextEncoding) override {}
    bool userMappingEnabled() const override { return false; }
    int type() override { return number; }

private:
    static juce::String& noMessage()
    {
        static juce::String message;
        return message;
    }

    int number;
};

TEST_F (EventRowReaderTest, theTitleRowIsSkippedWhereTheFormatKeepsIt)
{
    const CueTable table ({ { { "Text", "Text" } }, { { "Text", "a" } } });
    const std::vector<int> firstRowOfType { 0, 1, 1, 0, 0, 0, 1, 0, 0, 0 };

    for (int type = 0; type < 10; ++type)
    {
        TableImporter importer (type, table);
        const auto first = firstRowOfType[static_cast<std::size_t> (type)];
        EXPECT_EQ (EventRowReader::firstDataRow (importer), first) << type;
        EXPECT_EQ (EventRowReader (timeInfo, cast).read (importer).events.size(), first == 1 ? 1u : 2u)
            << type;
    }
}

TEST_F (EventRowReaderTest, newCharactersKeepTheIdentifiersOfTheFile)
{
    TableImporter importer (
        7,
        CueTable ({ { { "Character", "Anna" } }, { { "Character", "Ben" } }, { { "Character", "Cleo" } } }));
    importer.characterMap = std::make_shared<Core::ADRCharacterMap>();
    importer.characterMap->addCharacter (std::make_shared<Core::ADRCharacter> ("Anna"), true, "id-of-anna");
    importer.characterMap->addCharacter (std::make_shared<Core::ADRCharacter> ("Ben"), true, "taken");
    const auto benHere = addCharacter ("Ben");
    cast->addCharacter (std::make_shared<Core::ADRCharacter> ("Cleo's sister"), true, "taken");
    const auto events = EventRowReader (timeInfo, cast).read (importer).events;

    EXPECT_EQ (events.at (0)->getCharacterID(), juce::String ("id-of-anna"));
    EXPECT_EQ (events.at (1)->getCharacterID(), benHere);
    EXPECT_EQ (events.at (2)->character()->name, juce::String ("Cleo"));
}

TEST_F (EventRowReaderTest, anIdentifierOfTheFileThatIsTakenGivesWay)
{
    TableImporter importer (7, CueTable ({ NamedCells { { "Character", "Ben" } } }));
    importer.characterMap = std::make_shared<Core::ADRCharacterMap>();
    importer.characterMap->addCharacter (std::make_shared<Core::ADRCharacter> ("Ben"), true, "taken");
    cast->addCharacter (std::make_shared<Core::ADRCharacter> ("Cleo"), true, "taken");
    const auto events = EventRowReader (timeInfo, cast).read (importer).events;

    EXPECT_NE (events.at (0)->getCharacterID(), juce::String ("taken"));
    EXPECT_EQ (events.at (0)->character()->name, juce::String ("Ben"));
    EXPECT_EQ (cast->characterForID ("taken")->name, juce::String ("Cleo"));
}

} // namespace
} // namespace ZEP::Overmarks::Testing
