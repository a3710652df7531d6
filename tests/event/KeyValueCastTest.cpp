// SPDX-License-Identifier: GPL-3.0-only
#include "event/KeyValueEditorSupport.h"
#include "support/PrintEvents.h"
#include "support/UndoHistory.h"

#include <limits>

namespace ZEP::Overmarks::Testing
{
namespace
{

using Editor = EventKeyValueEditor;

constexpr int largest = std::numeric_limits<int>::max();
constexpr int smallest = std::numeric_limits<int>::min();

// ---- the cast ------------------------------------------------------------------------------------------------------

class KeyValueCast : public KeyValueEditor
{
protected:
    KeyValueCast()
    {
        eve = addCharacter ("Eve", "Mary", "E");
        adam = addCharacter ("Adam", "John", "A");
    }

    juce::String eve;
    juce::String adam;
};

TEST_F (KeyValueCast, menuHasNoneFirstAndThenTheCastInItsOrder)
{
    EXPECT_EQ (get<int> (cue, Editor::KV_CharacterID), 1);

    EXPECT_TRUE (set (cue, Editor::KV_CharacterID, 2));
    EXPECT_EQ (cue->getCharacterID(), eve);
    EXPECT_EQ (get<int> (cue, Editor::KV_CharacterID), 2);
    EXPECT_TRUE (set (cue, Editor::KV_CharacterID, 3));
    EXPECT_EQ (cue->getCharacterID(), adam);
    EXPECT_EQ (get<int> (cue, Editor::KV_CharacterID), 3);

    EXPECT_TRUE (set (cue, Editor::KV_CharacterID, 1));
    EXPECT_EQ (cue->getCharacterID(), juce::String());
    EXPECT_EQ (get<int> (cue, Editor::KV_CharacterID), 1);
    EXPECT_EQ (undoSteps(), 3u);
}

TEST_F (KeyValueCast, onlyACueHasAnItem)
{
    for (const auto& event : { marker, streamer, flutter, fade })
    {
        event->setCharacterID (eve);
        EXPECT_EQ (get<int> (event, Editor::KV_CharacterID), -1);
    }
}

TEST_F (KeyValueCast, anyTypeCanBeGivenACharacter)
{
    EXPECT_TRUE (set (marker, Editor::KV_CharacterID, 2));
    EXPECT_EQ (marker->getCharacterID(), eve);
}

TEST_F (KeyValueCast, anUnknownCharacterIsNone)
{
    cue->setCharacterID ("somebody else");

    EXPECT_EQ (get<int> (cue, Editor::KV_CharacterID), 1);
    EXPECT_EQ (text (cue, Editor::KV_Actor), juce::String());
    EXPECT_EQ (text (cue, Editor::KV_CharPrefix), juce::String());
}

TEST_F (KeyValueCast, actorAndPrefixAreThoseOfACuesCharacter)
{
    EXPECT_EQ (text (cue, Editor::KV_Actor), juce::String());
    EXPECT_EQ (text (cue, Editor::KV_CharPrefix), juce::String());

    cue->setCharacterID (adam);
    EXPECT_EQ (text (cue, Editor::KV_Actor), juce::String ("John"));
    EXPECT_EQ (text (cue, Editor::KV_CharPrefix), juce::String ("A"));

    for (const auto& event : { marker, streamer, flutter, fade })
    {
        event->setCharacterID (adam);
        EXPECT_EQ (text (event, Editor::KV_Actor), juce::String());
        EXPECT_EQ (text (event, Editor::KV_CharPrefix), juce::String());
    }
}

TEST_F (KeyValueCast, ofTwoWithTheSameNameTheFirstIsSet)
{
    addCharacter ("Eve", "Jane");

    EXPECT_TRUE (set (cue, Editor::KV_CharacterID, 4));

    EXPECT_EQ (cue->getCharacterID(), eve);
}

TEST_F (KeyValueCast, itemsBeyondTheMenuChangeNothing)
{
    cue->setCharacterID (eve);

    for (const int item : { 0, -1, 4, 1000, largest, smallest })
    {
        EXPECT_TRUE (set (cue, Editor::KV_CharacterID, item)) << item;
        EXPECT_EQ (cue->getCharacterID(), eve) << item;
    }
    EXPECT_EQ (undoSteps(), 1u);
}

TEST_F (KeyValueCast, aMissingCastIsSurvived)
{
    cue->setCharacterID (eve);
    Event::setADRCharacterMap (nullptr);

    EXPECT_EQ (get<int> (cue, Editor::KV_CharacterID), 1);
    EXPECT_EQ (text (cue, Editor::KV_Actor), juce::String());
    EXPECT_TRUE (set (cue, Editor::KV_CharacterID, 2));
    EXPECT_EQ (cue->getCharacterID(), eve);
    EXPECT_TRUE (set (cue, Editor::KV_CharacterID, 1));
    EXPECT_EQ (cue->getCharacterID(), juce::String());
}

} // namespace
} // namespace ZEP::Overmarks::Testing
