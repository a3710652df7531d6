// SPDX-License-Identifier: GPL-3.0-only
#include "event/KeyValueEditorSupport.h"
#include "support/PrintEvents.h"
#include "support/UndoHistory.h"

#include <map>
#include <string>
#include <vector>

namespace ZEP::Overmarks::Testing
{
namespace
{

using Editor = EventKeyValueEditor;
using ZEP::Core::RichTextString;

// ---- a cell is written, read, undone and redone --------------------------------------------------------------------

/** A cell of a cue: what is set, what is then read, and what the event holds. */
struct Cell
{
    const char* key;
    Poco::Any value;
    const char* field;
    const char* stored;
    const char* undoName;
    bool isTiming = false;
};

void PrintTo (const Cell& cell, std::ostream* out) { *out << cell.key; }

std::string inWords (const Poco::Any& value)
{
    if (value.type() == typeid (bool))
        return Testing::inWords (Poco::AnyCast<bool> (value));
    if (value.type() == typeid (int))
        return Testing::inWords (Poco::AnyCast<int> (value));
    if (value.type() == typeid (juce::String))
        return Testing::inWords (Poco::AnyCast<juce::String> (value));
    if (value.type() == typeid (RichTextString))
        return Testing::inWords (Poco::AnyCast<RichTextString> (value));
    return "?";
}

std::vector<Cell> cells()
{
    const auto string = [] (const char* text) { return Poco::Any (juce::String (text)); };
    const auto rich = [] (const char* text)
    {
        RichTextString result { juce::String (text) };
        result.setColour ({ 0, 1 }, juce::Colours::red);
        return Poco::Any (result);
    };
    return {
        { "Enabled", Poco::Any (false), "enabled", "false", "Changing Event Done State" },
        { "Done", Poco::Any (true), "done", "true", "Changing Event Done State" },
        { "StreamerDuration", Poco::Any (267), "streamerDuration", "267", "Changing Streamer Duration",
          true },
        { "RecTrackIndex", Poco::Any (4), "recTrackIndex", "3", "Changing Rec Track Index" },
        { "CueNumber", string ("12A"), "cueNumber", "12A", "Changing Cue Number" },
        { "Text", rich ("Hello"), "text", "Hello [0-1 <Regular> 14 ffff0000]", "Changing Text" },
        { "EngineeringNotes", rich ("Dry"), "engineeringNotes", "Dry [0-1 <Regular> 14 ffff0000]",
          "Changing Engineering Notes" },
        { "Notes", rich ("Off"), "notes", "Off [0-1 <Regular> 14 ffff0000]", "Changing Notes" },
        { "CharacterID", Poco::Any (3), "characterID", "ADAM", "Changing Character" },
        { "StartTCString", string ("00:00:44:00"), "inPointFrameIndex", "1100", "Changing Event Timecode",
          true },
        { "EndTCString", string ("00:00:44:00"), "endFrameIndex", "1100", "Set Event Timecode", true },
        { "NumRecordedTakes", string ("6"), "numRecordedTakes", "6", "Changing Number of recorded Takes" },
        { "Type", Poco::Any (static_cast<int> (EventTypeMarker)), "type", "2", "Changing Event Type" },
        { "Reason", Poco::Any (4), "reason", "3", "Changing Reason" },
        { "SelectedTake", Poco::Any (4), "selectedTake", "2", "Changing Selected Take" },
        { "AltTake", Poco::Any (3), "altTake", "1", "Changing Selected Take" },
        { "IsForcedNarrative", Poco::Any (true), "isForcedNarrative", "true", "Changing Forced Narrative" },
        { "ForcedNarrativeRegion", Poco::Any (3), "forcedNarrativeRegion", "2",
          "Changing Forced Narrative Region" },
    };
}

class KeyValueCell : public KeyValueEditor, public ::testing::WithParamInterface<Cell>
{
protected:
    KeyValueCell()
    {
        for (const auto* name : { "EVE", "ADAM" })
            Event::getADRCharacterMap()->addCharacter (std::make_shared<ZEP::Core::ADRCharacter> (name), true,
                                                       name);
        before = fieldsOf (*cue);
    }

    bool edit (bool sendNotification)
    {
        return Editor (cue).setValueForKey (cell.value, cell.key, sendNotification);
    }

    const Cell cell = GetParam();
    std::map<std::string, std::string> before;
};

TEST_P (KeyValueCell, isReadAsItWasWritten)
{
    EXPECT_TRUE (edit (true));

    EXPECT_EQ (fieldsOf (*cue)[cell.field], cell.stored);
    const auto read = Editor (cue).getValueForKey (cell.key);
    EXPECT_EQ (read.type(), cell.value.type());
    EXPECT_EQ (inWords (read), inWords (cell.value));
}

TEST_P (KeyValueCell, isOneStep)
{
    edit (true);
    EXPECT_EQ (undoNames(), std::vector<std::string> { cell.undoName });
    const auto after = fieldsOf (*cue);

    undoManager().undo();
    EXPECT_EQ (fieldsOf (*cue), before);
    undoManager().redo();
    EXPECT_EQ (fieldsOf (*cue), after);
}

TEST_P (KeyValueCell, tellsOnce)
{
    edit (true);

    EXPECT_EQ (news.timings.count(), cell.isTiming ? 1 : 0);
    EXPECT_EQ (news.attributes.count(), cell.isTiming ? 0 : 1);
}

TEST_P (KeyValueCell, canBeWrittenInSilenceWhileItsUndoTells)
{
    EXPECT_TRUE (edit (false));

    EXPECT_EQ (news.count(), 0);
    EXPECT_FALSE (cue->areNotificationsSuppressed());
    EXPECT_FALSE (cue->isUndoBypassed());
    EXPECT_EQ (undoSteps(), 1u);
    undoManager().undo();
    EXPECT_EQ (news.count(), 1);
    undoManager().redo();
    EXPECT_EQ (news.count(), 2);
}

TEST_P (KeyValueCell, tellsWhenAskedThoughTheEventIsSilenced)
{
    cue->setNotificationsSuppressed (true);

    edit (true);

    EXPECT_EQ (news.count(), 1);
    EXPECT_TRUE (cue->areNotificationsSuppressed());
}

TEST_P (KeyValueCell, isNoStepUnderBypass)
{
    cue->setUndoBypass (true);

    EXPECT_TRUE (edit (true));

    EXPECT_EQ (fieldsOf (*cue)[cell.field], cell.stored);
    EXPECT_EQ (undoSteps(), 0u);
    EXPECT_EQ (news.count(), 1);
    EXPECT_TRUE (cue->isUndoBypassed());
}

TEST_P (KeyValueCell, throwsAtAValueOfAnotherType)
{
    struct Foreign
    {
    };
    for (const auto& wrong : { Poco::Any (Foreign()), Poco::Any (nullptr), Poco::Any(), Poco::Any (1.5),
                               Poco::Any (std::string ("1")) })
    {
        try
        {
            Editor (cue).setValueForKey (wrong, cell.key, true);
            FAIL() << "accepted";
        }
        catch (const Poco::BadCastException& exception)
        {
            EXPECT_EQ (exception.message().rfind ("RefAnyCast: Failed to convert between Any types ", 0), 0u)
                << exception.message();
        }
    }
    EXPECT_EQ (fieldsOf (*cue), before);
    EXPECT_EQ (undoSteps(), 0u);
}

TEST_P (KeyValueCell, takesNoneOfTheOtherCellTypes)
{
    for (const auto& wrong : { Poco::Any (true), Poco::Any (1), Poco::Any (juce::String ("1")),
                               Poco::Any (RichTextString ("1")) })
    {
        if (wrong.type() == cell.value.type())
            continue;
        EXPECT_THROW (Editor (cue).setValueForKey (wrong, cell.key, true), Poco::BadCastException);
    }
    EXPECT_EQ (fieldsOf (*cue), before);
}

TEST_P (KeyValueCell, leavesTheEventAsSilencedAsTheCallWasWhenItThrows)
{
    EXPECT_THROW (Editor (cue).setValueForKey (Poco::Any (1.5), cell.key, false), Poco::BadCastException);

    EXPECT_TRUE (cue->areNotificationsSuppressed());
}

INSTANTIATE_TEST_SUITE_P (OfACue, KeyValueCell, ::testing::ValuesIn (cells()),
                          [] (const auto& row) { return std::string (row.param.key); });

} // namespace
} // namespace ZEP::Overmarks::Testing
