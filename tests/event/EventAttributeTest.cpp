// SPDX-License-Identifier: GPL-3.0-only
#include "event/EventAttribute.h"

#include "event/EventKeyValueEditor.h"
#include "support/MakeEvents.h"
#include "support/OvermarksTest.h"
#include "support/PrintEvents.h"

#include <set>

namespace ZEP::Overmarks::Testing
{
namespace
{

using Editor = EventKeyValueEditor;

struct Row
{
    juce::String key;
    const char* columnTitle;
    CellType cellType;
    bool isSettable;
};

std::vector<Row> expectedRows()
{
    return {
        { Editor::KV_Enabled, "Enabled", CellType::flag, true },
        { Editor::KV_Done, "Done", CellType::flag, true },
        { Editor::KV_StreamerDuration, "Streamer Duration", CellType::integer, true },
        { Editor::KV_BeatsPerMinute, "BPM", CellType::string, true },
        { Editor::KV_RecTrackIndex, "", CellType::integer, true },
        { Editor::KV_CueNumber, "Cue Number", CellType::string, true },
        { Editor::KV_Text, "Text", CellType::richText, true },
        { Editor::KV_EngineeringNotes, "Engineering Notes", CellType::richText, true },
        { Editor::KV_Notes, "Notes", CellType::richText, true },
        { Editor::KV_CharacterID, "Character", CellType::integer, true },
        { Editor::KV_StartTCString, "Start TC", CellType::string, true },
        { Editor::KV_EndTCString, "End TC", CellType::string, true },
        { Editor::KV_NumRecordedTakes, "Number of Takes", CellType::string, true },
        { Editor::KV_Type, "Event Type", CellType::integer, true },
        { Editor::KV_Actor, "Actor", CellType::string, false },
        { Editor::KV_CharPrefix, "Char Prefix", CellType::string, false },
        { Editor::KV_Reason, "Reason", CellType::integer, true },
        { Editor::KV_DurationTCString, "", CellType::string, false },
        { Editor::KV_SelectedTake, "", CellType::integer, true },
        { Editor::KV_AltTake, "", CellType::integer, true },
        { Editor::KV_Takes, "", CellType::none, false },
        { Editor::KV_Timing, "", CellType::none, false },
        { Editor::KV_CharacterActor, "", CellType::none, false },
        { Editor::KV_IsForcedNarrative, "Forced Narrative", CellType::flag, true },
        { Editor::KV_ForcedNarrativeRegion, "FN Region", CellType::integer, true },
    };
}

class EventAttributeTable : public OvermarksTest
{
};

TEST_F (EventAttributeTable, hasEveryKeyOnceAndInOrder)
{
    const auto rows = expectedRows();
    const auto& table = EventAttribute::all();

    ASSERT_EQ (table.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
    {
        EXPECT_EQ (table[i].key, rows[i].key);
        EXPECT_EQ (table[i].columnTitle, juce::String (rows[i].columnTitle)) << rows[i].key;
        EXPECT_EQ (table[i].cellType, rows[i].cellType) << rows[i].key;
        EXPECT_EQ (table[i].isSettable(), rows[i].isSettable) << rows[i].key;
    }
}

TEST_F (EventAttributeTable, isMadeOnce) { EXPECT_EQ (&EventAttribute::all(), &EventAttribute::all()); }

TEST_F (EventAttributeTable, explainsEveryAttribute)
{
    std::set<std::string> explanations;
    for (const auto& attribute : EventAttribute::all())
    {
        EXPECT_FALSE (attribute.explanation.isEmpty()) << attribute.key;
        explanations.insert (attribute.explanation.toStdString());
    }
    EXPECT_EQ (explanations.size(), EventAttribute::all().size());
}

TEST_F (EventAttributeTable, isFoundByKey)
{
    for (const auto& attribute : EventAttribute::all())
        EXPECT_EQ (EventAttribute::withKey (attribute.key), &attribute);

    for (const auto* key : { "", "text", "Text ", "Nothing" })
        EXPECT_EQ (EventAttribute::withKey (key), nullptr) << key;
}

TEST_F (EventAttributeTable, cellsHoldTheTypeThatTheTableTells)
{
    const auto event = makeEvent (EventTypeADRCue);
    for (const auto& attribute : EventAttribute::all())
    {
        ASSERT_EQ (attribute.get == nullptr, attribute.cellType == CellType::none) << attribute.key;
        const auto value = Editor (event).getValueForKey (attribute.key);
        switch (attribute.cellType)
        {
            case CellType::none: EXPECT_EQ (value.type(), typeid (nullptr)) << attribute.key; break;
            case CellType::flag: EXPECT_EQ (value.type(), typeid (bool)) << attribute.key; break;
            case CellType::integer: EXPECT_EQ (value.type(), typeid (int)) << attribute.key; break;
            case CellType::string: EXPECT_EQ (value.type(), typeid (juce::String)) << attribute.key; break;
            case CellType::richText:
                EXPECT_EQ (value.type(), typeid (ZEP::Core::RichTextString)) << attribute.key;
                break;
        }
    }
}

TEST_F (EventAttributeTable, aCellIsReadThroughTheTableAsThroughTheEditor)
{
    const auto event = makeEvent (EventTypeADRCue);
    event->setCueNumber ("12A");

    EXPECT_EQ (Poco::AnyCast<juce::String> (EventAttribute::withKey (Editor::KV_CueNumber)->get (*event)),
               juce::String ("12A"));
    EXPECT_TRUE (EventAttribute::withKey (Editor::KV_Done)->set (*event, Poco::Any (true)));
    EXPECT_TRUE (event->isDone());
}

} // namespace
} // namespace ZEP::Overmarks::Testing
