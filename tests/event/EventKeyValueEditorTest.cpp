// SPDX-License-Identifier: GPL-3.0-only
#include "event/EventKeyValueEditor.h"

#include "event/EventAttribute.h"
#include "event/KeyValueEditorSupport.h"
#include "preferences/PreferenceKeys.h"
#include "support/PrintEvents.h"
#include "support/UndoHistory.h"

#include <array>
#include <limits>
#include <type_traits>

namespace ZEP::Overmarks::Testing
{
namespace
{

using Editor = EventKeyValueEditor;
using ZEP::Core::RichTextString;

constexpr int largest = std::numeric_limits<int>::max();
constexpr int smallest = std::numeric_limits<int>::min();

// ---- the keys ------------------------------------------------------------------------------------------------------

TEST_F (KeyValueEditor, everyKeyHasItsText)
{
    const std::vector<std::pair<juce::String, const char*>> keys {
        { Editor::KV_Enabled, "Enabled" },
        { Editor::KV_Done, "Done" },
        { Editor::KV_StreamerDuration, "StreamerDuration" },
        { Editor::KV_BeatsPerMinute, "BeatsPerMinute" },
        { Editor::KV_RecTrackIndex, "RecTrackIndex" },
        { Editor::KV_CueNumber, "CueNumber" },
        { Editor::KV_Text, "Text" },
        { Editor::KV_EngineeringNotes, "EngineeringNotes" },
        { Editor::KV_Notes, "Notes" },
        { Editor::KV_CharacterID, "CharacterID" },
        { Editor::KV_StartTCString, "StartTCString" },
        { Editor::KV_EndTCString, "EndTCString" },
        { Editor::KV_NumRecordedTakes, "NumRecordedTakes" },
        { Editor::KV_Type, "Type" },
        { Editor::KV_Actor, "Actor" },
        { Editor::KV_CharPrefix, "CharPrefix" },
        { Editor::KV_Reason, "Reason" },
        { Editor::KV_DurationTCString, "DurationTCString" },
        { Editor::KV_SelectedTake, "SelectedTake" },
        { Editor::KV_AltTake, "AltTake" },
        { Editor::KV_Takes, "Takes" },
        { Editor::KV_Timing, "Timing" },
        { Editor::KV_CharacterActor, "CharacterActor" },
        { Editor::KV_IsForcedNarrative, "IsForcedNarrative" },
        { Editor::KV_ForcedNarrativeRegion, "ForcedNarrativeRegion" },
    };
    for (const auto& [key, literal] : keys)
        EXPECT_EQ (key, juce::String (literal));
}

// ---- what is not settable or not there -----------------------------------------------------------------------------

TEST_F (KeyValueEditor, cellsThatCannotBeWrittenAreRefused)
{
    const auto before = fieldsOf (*cue);
    for (const auto& key : { Editor::KV_DurationTCString, Editor::KV_Actor, Editor::KV_CharPrefix,
                             Editor::KV_Takes, Editor::KV_Timing, Editor::KV_CharacterActor,
                             juce::String ("text"), juce::String(), juce::String ("KV_Text") })
    {
        EXPECT_FALSE (set (cue, key, juce::String ("00:00:01:00"))) << key;
        EXPECT_FALSE (Editor (cue).setValueForKey (Poco::Any(), key, false)) << key;
        EXPECT_FALSE (cue->areNotificationsSuppressed()) << key;
    }
    EXPECT_EQ (fieldsOf (*cue), before);
    EXPECT_EQ (undoSteps(), 0u);
    EXPECT_EQ (news.count(), 0);
}

TEST_F (KeyValueEditor, aKeyWithoutACellIsNobody)
{
    for (const auto& key : { Editor::KV_Takes, Editor::KV_Timing, Editor::KV_CharacterActor,
                             juce::String ("Nothing"), juce::String(), juce::String ("enabled") })
        EXPECT_TRUE (isNobody (Editor (cue).getValueForKey (key))) << key;
}

TEST_F (KeyValueEditor, readingAsAnotherTypeThrows)
{
    EXPECT_THROW (get<bool> (cue, Editor::KV_Text), Poco::BadCastException);
    EXPECT_THROW (get<juce::String> (cue, Editor::KV_Takes), Poco::BadCastException);
}

// ---- duration and tempo --------------------------------------------------------------------------------------------

TEST_F (KeyValueEditor, theDurationOfAMarkerIsRefused)
{
    const auto before = fieldsOf (*marker);

    EXPECT_FALSE (set (marker, Editor::KV_StreamerDuration, 3));

    EXPECT_EQ (fieldsOf (*marker), before);
    EXPECT_EQ (undoSteps(), 0u);
    EXPECT_EQ (news.count(), 0);
    EXPECT_FALSE (Editor (marker).setValueForKey (Poco::Any (3), Editor::KV_StreamerDuration, false));
    EXPECT_FALSE (marker->areNotificationsSuppressed());
}

TEST_F (KeyValueEditor, theDurationReadsByType)
{
    EXPECT_EQ (get<int> (cue, Editor::KV_StreamerDuration), 1);
    EXPECT_EQ (get<int> (streamer, Editor::KV_StreamerDuration), 2);
    EXPECT_EQ (get<int> (marker, Editor::KV_StreamerDuration), -1);
    EXPECT_EQ (get<int> (flutter, Editor::KV_StreamerDuration), 8);
    EXPECT_TRUE (isNobody (Editor (fade).getValueForKey (Editor::KV_StreamerDuration)));
    EXPECT_TRUE (
        isNobody (Editor (makeUntimedEvent (eventTypeUnset)).getValueForKey (Editor::KV_StreamerDuration)));
}

TEST_F (KeyValueEditor, theDurationIsWrittenToEverythingButMarkers)
{
    for (const auto& event : { cue, streamer, flutter, fade })
    {
        EXPECT_TRUE (set (event, Editor::KV_StreamerDuration, 12));
        EXPECT_EQ (event->getStreamerDuration(), 12);
    }
    EXPECT_EQ (timesOf (*flutter), "1000|1000..1012");
}

TEST_F (KeyValueEditor, theTempoIsForStreamersInBars)
{
    prefer (StreamerReferenceUnitPrefKey, 0);
    const auto inBars = makeEvent (EventTypeStreamer, 1000, -1, 1);

    EXPECT_EQ (text (inBars, Editor::KV_BeatsPerMinute), juce::String ("120"));
    EXPECT_TRUE (set (inBars, Editor::KV_BeatsPerMinute, juce::String ("60")));
    EXPECT_EQ (text (inBars, Editor::KV_BeatsPerMinute), juce::String ("60"));
    EXPECT_EQ (timesOf (*inBars), "900|1000..1000");
    EXPECT_EQ (undoNames(), std::vector<std::string> { "Changing Event BPM" });

    EXPECT_TRUE (set (inBars, Editor::KV_BeatsPerMinute, juce::String ("300")));
    EXPECT_EQ (inBars->getBeatsPerMinute(), 60.0f);
    EXPECT_EQ (undoSteps(), 1u);
}

TEST_F (KeyValueEditor, theTempoOfACueIsAcceptedAndChangesNothing)
{
    prefer (StreamerReferenceUnitPrefKey, 0);
    for (const auto& event : { cue, marker, flutter, fade })
    {
        const auto before = fieldsOf (*event);
        EXPECT_TRUE (set (event, Editor::KV_BeatsPerMinute, juce::String ("60")));
        EXPECT_FALSE (set (event, Editor::KV_BeatsPerMinute, juce::String()));
        EXPECT_EQ (fieldsOf (*event), before);
        EXPECT_EQ (text (event, Editor::KV_BeatsPerMinute), juce::String ("--"));
    }
    EXPECT_EQ (undoSteps(), 0u);
    EXPECT_EQ (news.count(), 0);
}

TEST_F (KeyValueEditor, theTempoFollowsThePreferenceAndNotTheStreamer)
{
    const auto before = fieldsOf (*streamer);
    EXPECT_TRUE (set (streamer, Editor::KV_BeatsPerMinute, juce::String ("60")));
    EXPECT_EQ (fieldsOf (*streamer), before);

    prefer (StreamerReferenceUnitPrefKey, 0);
    EXPECT_TRUE (set (streamer, Editor::KV_BeatsPerMinute, juce::String ("60")));
    EXPECT_EQ (streamer->getBeatsPerMinute(), 60.0f);
    EXPECT_EQ (timesOf (*streamer), "950|1000..1000");
}

TEST_F (KeyValueEditor, anEmptyTempoIsRefused)
{
    prefer (StreamerReferenceUnitPrefKey, 0);
    EXPECT_FALSE (set (makeEvent (EventTypeStreamer), Editor::KV_BeatsPerMinute, juce::String()));
}

// ---- text ----------------------------------------------------------------------------------------------------------

TEST_F (KeyValueEditor, onlyCuesAndMarkersTakeAText)
{
    const RichTextString words ("Hello");
    EXPECT_TRUE (set (cue, Editor::KV_Text, words));
    EXPECT_TRUE (set (marker, Editor::KV_Text, words));
    EXPECT_EQ (get<RichTextString> (marker, Editor::KV_Text), words);

    for (const auto& event : { streamer, flutter, fade })
    {
        EXPECT_FALSE (set (event, Editor::KV_Text, words));
        EXPECT_EQ (get<RichTextString> (event, Editor::KV_Text), RichTextString());
    }
    EXPECT_EQ (undoSteps(), 2u);
}

TEST_F (KeyValueEditor, aRefusedTextLeavesTheEventAsSilentAsItWas)
{
    EXPECT_FALSE (
        Editor (streamer).setValueForKey (Poco::Any (RichTextString ("x")), Editor::KV_Text, false));
    EXPECT_FALSE (streamer->areNotificationsSuppressed());

    streamer->setNotificationsSuppressed (true);
    EXPECT_FALSE (Editor (streamer).setValueForKey (Poco::Any (RichTextString ("x")), Editor::KV_Text, true));
    EXPECT_TRUE (streamer->areNotificationsSuppressed());
}

// ---- takes ---------------------------------------------------------------------------------------------------------

TEST_F (KeyValueEditor, fewerTakesClearTheChosenOnes)
{
    struct Row
    {
        int selected;
        int alternative;
        int selectedAfter;
        int alternativeAfter;
    };
    for (const auto& row : { Row { 2, 1, -1, 1 }, Row { 3, 0, -1, 0 }, Row { 1, 2, 1, -1 },
                             Row { 1, 3, 1, -1 }, Row { 3, 2, -1, -1 }, Row { -1, -1, -1, -1 } })
    {
        withoutUndo (*cue,
                     [&] (Event& event)
                     {
                         event.setNumRecordedTakes (4);
                         event.setSelectedTake (row.selected);
                         event.setAltTake (row.alternative);
                     });
        EXPECT_TRUE (set (cue, Editor::KV_NumRecordedTakes, juce::String ("2")));

        EXPECT_EQ (cue->getNumRecordedTakes(), 2);
        EXPECT_EQ (cue->getSelectedTake(), row.selectedAfter);
        EXPECT_EQ (cue->getAltTake(), row.alternativeAfter);
    }
}

TEST_F (KeyValueEditor, theNumberOfTakesAndWhatItClearsIsOneStep)
{
    withoutUndo (*cue,
                 [] (Event& event)
                 {
                     event.setNumRecordedTakes (4);
                     event.setSelectedTake (3);
                     event.setAltTake (2);
                 });
    const auto before = fieldsOf (*cue);
    news.reset();

    EXPECT_TRUE (set (cue, Editor::KV_NumRecordedTakes, juce::String ("2")));
    EXPECT_EQ (undoNames(), std::vector<std::string> { "Changing Number of recorded Takes" });
    EXPECT_EQ (news.attributes.count(), 3);

    undoManager().undo();
    EXPECT_EQ (fieldsOf (*cue), before);
    undoManager().redo();
    EXPECT_EQ (cue->getNumRecordedTakes(), 2);
    EXPECT_EQ (cue->getSelectedTake(), -1);
    EXPECT_EQ (cue->getAltTake(), -1);

    set (cue, Editor::KV_Done, true);
    EXPECT_EQ (undoNames(), (std::vector<std::string> { "Changing Event Done State",
                                                        "Changing Number of recorded Takes" }));
}

TEST_F (KeyValueEditor, aChosenTakeBeyondTheSameNumberOfTakesIsCleared)
{
    withoutUndo (*cue,
                 [] (Event& event)
                 {
                     event.setNumRecordedTakes (2);
                     event.setSelectedTake (5);
                 });

    EXPECT_TRUE (set (cue, Editor::KV_NumRecordedTakes, juce::String ("2")));

    EXPECT_EQ (cue->getSelectedTake(), -1);
    EXPECT_EQ (undoSteps(), 1u);
    undoManager().undo();
    EXPECT_EQ (cue->getSelectedTake(), 5);
}

TEST_F (KeyValueEditor, theSameNumberOfTakesIsNoStepAndRenamesNone)
{
    set (cue, Editor::KV_Done, true);
    EXPECT_TRUE (set (cue, Editor::KV_NumRecordedTakes, juce::String ("0")));

    EXPECT_EQ (undoNames(), std::vector<std::string> { "Changing Event Done State" });
}

TEST_F (KeyValueEditor, theNumberOfTakesIsReadFromText)
{
    EXPECT_EQ (text (cue, Editor::KV_NumRecordedTakes), juce::String ("0"));
    EXPECT_TRUE (set (cue, Editor::KV_NumRecordedTakes, juce::String ("12 takes")));
    EXPECT_EQ (text (cue, Editor::KV_NumRecordedTakes), juce::String ("12"));
    EXPECT_TRUE (set (cue, Editor::KV_NumRecordedTakes, juce::String ("many")));
    EXPECT_EQ (text (cue, Editor::KV_NumRecordedTakes), juce::String ("0"));

    EXPECT_FALSE (set (cue, Editor::KV_NumRecordedTakes, juce::String()));
    EXPECT_EQ (undoSteps(), 2u);
}

TEST_F (KeyValueEditor, theFirstItemOfTheTakeMenuIsNone)
{
    EXPECT_EQ (get<int> (cue, Editor::KV_SelectedTake), 1);
    EXPECT_EQ (get<int> (cue, Editor::KV_AltTake), 1);

    set (cue, Editor::KV_SelectedTake, 2);
    EXPECT_EQ (cue->getSelectedTake(), 0);
    set (cue, Editor::KV_SelectedTake, 1);
    EXPECT_EQ (cue->getSelectedTake(), -1);
    EXPECT_EQ (get<int> (cue, Editor::KV_SelectedTake), 1);
}

// ---- reason, track, region -----------------------------------------------------------------------------------------

TEST_F (KeyValueEditor, menusCountFromOne)
{
    EXPECT_EQ (get<int> (cue, Editor::KV_Reason), 1);
    EXPECT_EQ (get<int> (cue, Editor::KV_RecTrackIndex), 0);
    EXPECT_EQ (get<int> (cue, Editor::KV_ForcedNarrativeRegion), 1);
    EXPECT_EQ (get<int> (cue, Editor::KV_Type), 8);

    set (cue, Editor::KV_RecTrackIndex, 0);
    EXPECT_EQ (cue->getRecTrackIndex(), -1);
    set (cue, Editor::KV_Reason, 0);
    EXPECT_EQ (cue->getReason(), -1);
}

TEST_F (KeyValueEditor, aReasonIsCountedAsItsCode)
{
    set (cue, Editor::KV_Reason, 4);

    EXPECT_EQ (ZEP::Core::ADRCueReasonsManager::sharedManager()->reasonCount (4), 1);
}

TEST_F (KeyValueEditor, everyTypeHasItsFlagsAndNotes)
{
    for (const auto& event : { cue, marker, streamer, flutter, fade })
    {
        EXPECT_TRUE (set (event, Editor::KV_Enabled, false));
        EXPECT_FALSE (get<bool> (event, Editor::KV_Enabled));
        EXPECT_TRUE (set (event, Editor::KV_Notes, RichTextString ("Off")));
        EXPECT_EQ (get<RichTextString> (event, Editor::KV_Notes), RichTextString ("Off"));
        EXPECT_TRUE (set (event, Editor::KV_CueNumber, juce::String ("7")));
        EXPECT_EQ (text (event, Editor::KV_CueNumber), juce::String ("7"));
    }
}

// ---- timecodes -----------------------------------------------------------------------------------------------------

TEST_F (KeyValueEditor, theSeparatorsOfTheProjectWin)
{
    const auto dropFrame = makeEvent (EventTypeMarker, 0, 10, -1, -1.0f, timeInfoAt ("29.97df"));
    EXPECT_TRUE (set (dropFrame, Editor::KV_StartTCString, juce::String ("00:01:00:02")));
    EXPECT_EQ (dropFrame->getInPointFrameIndex(), 1800);
    EXPECT_EQ (text (dropFrame, Editor::KV_StartTCString), juce::String ("00:01:00;02"));
    EXPECT_TRUE (set (dropFrame, Editor::KV_EndTCString, juce::String ("00:02:00:02")));
    EXPECT_EQ (text (dropFrame, Editor::KV_EndTCString), juce::String ("00:02:00;02"));

    EXPECT_TRUE (set (marker, Editor::KV_StartTCString, juce::String ("00:00:44;00")));
    EXPECT_EQ (text (marker, Editor::KV_StartTCString), juce::String ("00:00:44:00"));
}

TEST_F (KeyValueEditor, aTypedTimecodeIsSetAsTheProjectSpellsIt)
{
    const auto dropFrame =
        makeEvent (EventTypeADRCue, 1000, 1500, 1, -1.0f, timeInfoAt ("29.97df", "00:00:00:00"));
    for (const auto* typed : { "01:00:00:10", "01:00:00;10" })
    {
        EXPECT_EQ (timecodeInProjectsSpelling (*dropFrame, typed), juce::String ("01:00:00;10"));
        EXPECT_EQ (timecodeInProjectsSpelling (*cue, typed), juce::String ("01:00:00:10"));
    }
    EXPECT_EQ (timecodeInProjectsSpelling (*dropFrame, "soon"), juce::String ("--:--:--;--"));
    EXPECT_EQ (timecodeInProjectsSpelling (*cue, "soon"), juce::String ("--:--:--:--"));
}

TEST_F (KeyValueEditor, aNewTypeInATableResetsTheContent)
{
    withoutUndo (*cue, [] (Event& event) { event.setText (RichTextString ("Hello")); });
    set (cue, Editor::KV_Type, static_cast<int> (EventTypeMarker));
    EXPECT_EQ (cue->getType(), EventTypeMarker);
    EXPECT_EQ (cue->getText().getText(), juce::String());
    EXPECT_EQ (cue->getStreamerDuration(), -1);
}

TEST_F (KeyValueEditor, whatIsNoTimecodeTakesTheTimeAway)
{
    const auto dropFrame = makeEvent (EventTypeMarker, 0, 10, -1, -1.0f, timeInfoAt ("29.97df"));
    EXPECT_TRUE (set (dropFrame, Editor::KV_StartTCString, juce::String ("soon")));
    EXPECT_EQ (timesOf (*dropFrame), "-1|-1..-1");
    EXPECT_EQ (text (dropFrame, Editor::KV_StartTCString), juce::String ("--:--:--;--"));

    EXPECT_TRUE (set (marker, Editor::KV_EndTCString, juce::String()));
    EXPECT_EQ (timesOf (*marker), "-1|-1..-1");
    EXPECT_EQ (text (marker, Editor::KV_EndTCString), juce::String ("--:--:--:--"));
}

TEST_F (KeyValueEditor, takingTheTimeAwayIsOneStepOfTheTable)
{
    const auto before = fieldsOf (*cue);

    EXPECT_TRUE (set (cue, Editor::KV_StartTCString, juce::String ("soon")));
    EXPECT_EQ (timesOf (*cue), "-1|-1..-1");
    EXPECT_EQ (undoNames(), std::vector<std::string> { "Changing Event Timecode" });

    undoManager().undo();
    EXPECT_EQ (fieldsOf (*cue), before);
    undoManager().redo();
    EXPECT_EQ (timesOf (*cue), "-1|-1..-1");
}

TEST_F (KeyValueEditor, theDurationRunsFromTheInPoint)
{
    EXPECT_EQ (text (cue, Editor::KV_DurationTCString), juce::String ("00:00:20:00"));
    EXPECT_EQ (text (flutter, Editor::KV_DurationTCString), juce::String ("00:00:00:08"));
    EXPECT_EQ (text (streamer, Editor::KV_DurationTCString), juce::String ("00:00:00:00"));
}

TEST_F (KeyValueEditor, theDurationHasColonsUnderDropFrame)
{
    const auto event = makeEvent (EventTypeMarker, 0, 1800, -1, -1.0f, timeInfoAt ("29.97df"));

    EXPECT_EQ (text (event, Editor::KV_DurationTCString), juce::String ("00:01:00:02"));
}

TEST_F (KeyValueEditor, aDurationWithoutATimeReferenceIsDashes)
{
    const auto undefined = timeInfoAt ("29.97df");
    undefined->tcDef.undefined = true;
    cue->setTimeInfo (undefined);
    EXPECT_EQ (text (cue, Editor::KV_DurationTCString), juce::String ("--:--:--:--"));

    cue->setTimeInfo (nullptr);
    EXPECT_EQ (text (cue, Editor::KV_DurationTCString), juce::String ("--:--:--:--"));
}

TEST_F (KeyValueEditor, theDurationOfAnUntimedEventIsNothing)
{
    EXPECT_EQ (text (makeUntimedEvent (EventTypeADRCue), Editor::KV_DurationTCString),
               juce::String ("00:00:00:00"));
}

// ---- numbers at their limits ---------------------------------------------------------------------------------------

TEST_F (KeyValueEditor, numbersAtTheirLimitsStopThere)
{
    for (const auto& key : { Editor::KV_RecTrackIndex, Editor::KV_SelectedTake, Editor::KV_AltTake,
                             Editor::KV_Reason, Editor::KV_ForcedNarrativeRegion })
    {
        EXPECT_TRUE (set (cue, key, largest)) << key;
        EXPECT_EQ (get<int> (cue, key), largest) << key;
        EXPECT_TRUE (set (cue, key, smallest)) << key;
        EXPECT_LE (get<int> (cue, key), smallest + 2) << key;
    }

    withoutUndo (*cue, [] (Event& event) { event.setSelectedTake (largest); });
    EXPECT_EQ (get<int> (cue, Editor::KV_SelectedTake), largest);
}

TEST_F (KeyValueEditor, aNumberOfTakesBeyondAnyNumberIsSurvived)
{
    EXPECT_TRUE (set (cue, Editor::KV_NumRecordedTakes, juce::String ("99999999999999999999")));
    EXPECT_FALSE (text (cue, Editor::KV_NumRecordedTakes).isEmpty());
}

TEST_F (KeyValueEditor, theLengthOfAnImpossibleFlutterIsSurvived)
{
    const auto event = makeEvent (EventTypeFlutter, smallest, largest, 1);

    EXPECT_EQ (get<int> (event, Editor::KV_StreamerDuration), largest);
}

} // namespace
} // namespace ZEP::Overmarks::Testing
