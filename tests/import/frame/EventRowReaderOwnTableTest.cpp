// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/EventRowReader.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "import/frame/ColumnGuess.h"
#include "import/frame/EventRowSupport.h"
#include "preferences/PreferenceKeys.h"
#include "support/RandomEvents.h"

#include <cmath>

namespace ZEP::Overmarks::Testing
{
namespace
{

using Core::ADRCueReasonsManager;
using Core::RichTextString;
using Row = std::vector<RichTextString>;

Row row (std::initializer_list<juce::String> texts) { return { texts.begin(), texts.end() }; }

const Row heading = row ({ "Start TC", "End TC", "Text", "Character", "Char Prefix", "Actor", "Cue Number",
                           "Done", "Notes", "Engineering Notes", "Event Type", "Duration", "Enabled",
                           "Number of Takes", "Reason", "BPM", "Forced Narrative", "FN Region" });

/** The cells of an event in the library's own table. */
Row cellsOf (const Event& event)
{
    const auto yesOrNo = [] (bool flag) { return flag ? "Yes" : "No"; };
    const juce::StringArray regions { "Bottom", "Top", "Left", "Right" };
    const auto character = event.character();
    const auto role = character != nullptr ? *character : Core::ADRCharacter ({});

    return row ({ event.getStartTCString(), event.getEndTCString(), event.getText().getText(), role.name,
                  role.prefix, role.actor, event.getCueNumber(), yesOrNo (event.isDone()),
                  event.getNotes().getText(), event.getEngineeringNotes().getText(), event.typeString(),
                  juce::String (event.getStreamerDuration()), yesOrNo (event.isEnabled()),
                  juce::String (event.getNumRecordedTakes()),
                  ADRCueReasonsManager::sharedManager()->getReasonFromInteger (event.getReason() + 1),
                  juce::String (static_cast<int> (std::trunc (event.getBeatsPerMinute()))),
                  event.isForcedNarrative() ? "FN" : "", regions[event.getForcedNarrativeRegion()] });
}

juce::StringArray textsOf (const Row& cells)
{
    juce::StringArray texts;
    for (const auto& cell : cells)
        texts.add (cell.getText());
    return texts;
}

class EventRowReaderOwnTableTest : public EventRowsTest
{
protected:
    std::shared_ptr<Event> randomEvent()
    {
        const auto type =
            chance.oneOf<EventType> ({ EventTypeADRCue, EventTypeADRCue, EventTypeStreamer, EventTypeMarker,
                                       EventTypeFlutter, EventTypeFadeIn, EventTypeFadeOut });
        auto made = Event::create (type, timeInfo, -1, -1, tempo(), duration (type));

        withoutUndo (*made, [&] (Event& event) { fill (event); });
        return made;
    }

    void fill (Event& event)
    {
        const juce::String long_ = juce::String::repeatedString ("and so on ", 30);
        const std::vector<juce::String> texts {
            "",         "Go!", "say \"hi\", then; go",
            " blanks ", long_, juce::String (juce::CharPointer_UTF8 ("\xC3\x89lan \xF0\x9F\x98\x80"))
        };
        event.setText (chance.oneOf (texts));
        event.setNotes (chance.oneOf (texts));
        event.setEngineeringNotes (chance.oneOf (texts));
        event.setCueNumber (chance.oneOf<juce::String> ({ "", "A0001", "12", " 7b " }));
        event.setDone (chance.oneIn (2));
        event.setEnabled (chance.oneIn (2));
        event.setNumRecordedTakes (chance.below (40));
        event.setReason (chance.between (0, ADRCueReasonsManager::lastCode - 1));
        event.setIsForcedNarrative (chance.oneIn (2));
        event.setForcedNarrativeRegion (static_cast<ForcedNarrativeRegion> (chance.below (4)));
        if (! chance.oneIn (3))
            event.setCharacterID (chance.oneOf (cast->characterIDs()));
        if (! chance.oneIn (5))
            place (event);
    }

    void place (Event& event)
    {
        // Not the frame before the picture: it stands for no time.
        const auto frame = [this] (int from) { return std::max (from, chance.between (-500, 90000)); };
        const auto start = chance.oneIn (20) ? 0 : frame (-400);
        event.setStartTCString (timecode (start == -1 ? 0 : start));
        if (chance.oneIn (2))
            event.setEndTCString (timecode (
                std::max (event.getEndFrameIndex(), event.getInPointFrameIndex() + chance.below (200))));
        if (event.getEndFrameIndex() == -1)
            event.setEndTCString (timecode (0));
    }

    juce::String timecode (int index) const
    {
        return Core::TCToolbox::stringFromTCTime (Core::TCToolbox::tcTimeForFrameIndex (index, *timeInfo),
                                                  timeInfo->tcDef.dropFrame);
    }

    float tempo() { return chance.oneIn (2) ? -1.0f : static_cast<float> (chance.between (42, 598)) / 2.0f; }

    int duration (EventType type)
    {
        if (type == EventTypeFlutter)
            return chance.oneOf<int> ({ -1, 1, 4, 8, 12 });
        if (type == EventTypeStreamer && inBars)
            return chance.oneOf<int> ({ -1, 1, 2, 4 });
        return chance.oneOf<int> ({ -1, 1, 2, 3, 4, 5, 267, 333 });
    }

    void expectTablesReadBack (const std::string& rate)
    {
        timeInfo = timeInfoAt (rate, "01:00:00:00");
        std::vector<std::shared_ptr<Event>> events;
        std::vector<Row> rows { heading };
        for (int i = 0; i < 500; ++i)
        {
            events.push_back (randomEvent());
            rows.push_back (cellsOf (*events.back()));
        }

        auto columns = guessColumns (heading, columnSynonyms());
        EXPECT_TRUE (EventRowReader::adoptOwnTableColumns (rows, columns));
        const auto writers = cast;
        cast = std::make_shared<Core::ADRCharacterMap>();
        const auto result = EventRowReader (timeInfo, cast).read (rows, columns, 1);
        Event::setADRCharacterMap (cast);
        EXPECT_EQ (problems (result), Lines());
        ASSERT_EQ (result.events.size(), events.size());

        for (std::size_t i = 0; i < events.size(); ++i)
        {
            EXPECT_EQ (textsOf (cellsOf (*result.events[i])).joinIntoString ("|"),
                       textsOf (rows[i + 1]).joinIntoString ("|"));
            EXPECT_EQ (result.events[i]->getInPointFrameIndex(), events[i]->getInPointFrameIndex());
            EXPECT_EQ (result.events[i]->getEndFrameIndex(), events[i]->getEndFrameIndex());
            EXPECT_EQ (result.events[i]->getType(), events[i]->getType());
            EXPECT_EQ (result.events[i]->getReason(), events[i]->getReason());
        }

        cast = writers;
        Event::setADRCharacterMap (cast);
    }

    void SetUp() override
    {
        ADRCueReasonsManager::sharedManager()->setUserReasonNames (
            { "one", "two", "three", "four", "five", "six", "seven", "Clarity (loud)" });
        addCharacter ("ANNA", "B. Miller", "A");
        addCharacter ("BEN", "", "B");
        addCharacter ("Cleo, \"the\" cat", "B. Miller", "");
    }

    RandomEvents chance { 20261121 };
    bool inBars = false;
};

TEST_F (EventRowReaderOwnTableTest, eventsWithStreamersInSecondsReadBackWhole)
{
    for (const auto* rate : { "25", "24", "29.97df", "59.94df" })
        expectTablesReadBack (rate);
}

TEST_F (EventRowReaderOwnTableTest, eventsWithStreamersInBarsReadBackWhole)
{
    inBars = true;
    prefer (StreamerReferenceUnitPrefKey, 0);
    for (const auto* rate : { "25", "23.976", "30df" })
        expectTablesReadBack (rate);
}

TEST_F (EventRowReaderOwnTableTest, theDurationColumnIsAdoptedFromTheOwnHeading)
{
    auto columns = guessColumns (heading, columnSynonyms());
    EXPECT_EQ (columns["Streamer Duration"], -1);
    EXPECT_TRUE (EventRowReader::adoptOwnTableColumns ({ heading }, columns));
    EXPECT_EQ (columns["Streamer Duration"], 11);

    for (const auto& [title, column] : columns)
        EXPECT_NE (column, -1) << title;
}

TEST_F (EventRowReaderOwnTableTest, aMapThatDoesNotNameTheColumnGetsIt)
{
    std::map<juce::String, int> columns;
    EXPECT_TRUE (EventRowReader::adoptOwnTableColumns ({ heading }, columns));
    EXPECT_EQ (columns, (std::map<juce::String, int> { { "Streamer Duration", 11 } }));
}

TEST_F (EventRowReaderOwnTableTest, whatTheUserAssignedStays)
{
    std::map<juce::String, int> columns { { "Streamer Duration", 3 } };
    EXPECT_FALSE (EventRowReader::adoptOwnTableColumns ({ heading }, columns));
    EXPECT_EQ (columns["Streamer Duration"], 3);
}

TEST_F (EventRowReaderOwnTableTest, anyOtherHeadingIsLeftAlone)
{
    auto renamed = heading, longer = heading, shorter = heading, swapped = heading;
    renamed[11] = RichTextString ("duration");
    longer.emplace_back ("");
    shorter.pop_back();
    std::swap (swapped[0], swapped[1]);

    for (const auto& other : { renamed, longer, shorter, swapped, Row() })
    {
        std::map<juce::String, int> columns;
        EXPECT_FALSE (EventRowReader::adoptOwnTableColumns ({ other }, columns));
        EXPECT_TRUE (columns.empty());
    }

    std::map<juce::String, int> columns;
    EXPECT_FALSE (EventRowReader::adoptOwnTableColumns ({}, columns));
    EXPECT_TRUE (columns.empty());
}

} // namespace
} // namespace ZEP::Overmarks::Testing
