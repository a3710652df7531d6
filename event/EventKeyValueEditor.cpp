// SPDX-License-Identifier: GPL-3.0-only
#include "event/EventKeyValueEditor.h"

#include "event/EventAttribute.h"

#include <cstddef>
#include <utility>

namespace ZEP::Overmarks
{

const juce::String EventKeyValueEditor::KV_Enabled { "Enabled" };
const juce::String EventKeyValueEditor::KV_Done { "Done" };
const juce::String EventKeyValueEditor::KV_StreamerDuration { "StreamerDuration" };
const juce::String EventKeyValueEditor::KV_BeatsPerMinute { "BeatsPerMinute" };
const juce::String EventKeyValueEditor::KV_RecTrackIndex { "RecTrackIndex" };
const juce::String EventKeyValueEditor::KV_CueNumber { "CueNumber" };
const juce::String EventKeyValueEditor::KV_Text { "Text" };
const juce::String EventKeyValueEditor::KV_EngineeringNotes { "EngineeringNotes" };
const juce::String EventKeyValueEditor::KV_Notes { "Notes" };
const juce::String EventKeyValueEditor::KV_CharacterID { "CharacterID" };
const juce::String EventKeyValueEditor::KV_StartTCString { "StartTCString" };
const juce::String EventKeyValueEditor::KV_EndTCString { "EndTCString" };
const juce::String EventKeyValueEditor::KV_NumRecordedTakes { "NumRecordedTakes" };
const juce::String EventKeyValueEditor::KV_Type { "Type" };
const juce::String EventKeyValueEditor::KV_Actor { "Actor" };
const juce::String EventKeyValueEditor::KV_CharPrefix { "CharPrefix" };
const juce::String EventKeyValueEditor::KV_Reason { "Reason" };
const juce::String EventKeyValueEditor::KV_DurationTCString { "DurationTCString" };
const juce::String EventKeyValueEditor::KV_SelectedTake { "SelectedTake" };
const juce::String EventKeyValueEditor::KV_AltTake { "AltTake" };
const juce::String EventKeyValueEditor::KV_Takes { "Takes" };
const juce::String EventKeyValueEditor::KV_Timing { "Timing" };
const juce::String EventKeyValueEditor::KV_CharacterActor { "CharacterActor" };
const juce::String EventKeyValueEditor::KV_IsForcedNarrative { "IsForcedNarrative" };
const juce::String EventKeyValueEditor::KV_ForcedNarrativeRegion { "ForcedNarrativeRegion" };

EventKeyValueEditor::EventKeyValueEditor (std::shared_ptr<Event> eventToEdit)
    : event (std::move (eventToEdit))
{
}

bool EventKeyValueEditor::setValueForKey (Poco::Any value, const juce::String& key, bool sendNotification)
{
    const auto* attribute = EventAttribute::withKey (key);

    if (attribute == nullptr || ! attribute->isSettable())
        return false;

    const bool wasSuppressed = event->areNotificationsSuppressed();
    event->setNotificationsSuppressed (! sendNotification);
    // A value of the wrong type throws from here, past the line that would restore the flag: callers hand in the right type.
    const bool wasActedOn = attribute->set (*event, value);
    event->setNotificationsSuppressed (wasSuppressed);
    return wasActedOn;
}

Poco::Any EventKeyValueEditor::getValueForKey (const juce::String& key)
{
    const auto* attribute = EventAttribute::withKey (key);
    return attribute != nullptr && attribute->get != nullptr ? attribute->get (*event) : Poco::Any (nullptr);
}

} // namespace ZEP::Overmarks
