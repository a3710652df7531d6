// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "event/Event.h"

#include <Poco/Any.h>
#include <juce_core/juce_core.h>

#include <memory>

namespace ZEP::Overmarks
{

/** An event as a table row: each column is a key, each cell a value of the type that EventAttribute tells for it.

    Takes, characters, tracks and reasons are handed out in the numbering of the applications' menus, where item 1 means
    none, and not as they are stored. Every accepted value is one undo step. A value of another type than the table says
    throws Poco::BadCastException.

    Made on the stack for one use; the caller's thread. */
class OVERMARKS_API EventKeyValueEditor final
{
public:
    explicit EventKeyValueEditor (std::shared_ptr<Event> eventToEdit);

    /** Sets one attribute through the event's setters.
        @param sendNotification  false silences the notifications of this one call; the undo step is made all the same
        @returns whether the key was acted on */
    bool setValueForKey (Poco::Any value, const juce::String& key, bool sendNotification);

    /** The value of one attribute; an Any that holds nullptr for a key that no cell shows. */
    Poco::Any getValueForKey (const juce::String& key);

    static const juce::String KV_Enabled;
    static const juce::String KV_Done;
    static const juce::String KV_StreamerDuration;
    static const juce::String KV_BeatsPerMinute;
    static const juce::String KV_RecTrackIndex;
    static const juce::String KV_CueNumber;
    static const juce::String KV_Text;
    static const juce::String KV_EngineeringNotes;
    static const juce::String KV_Notes;
    static const juce::String KV_CharacterID;
    static const juce::String KV_StartTCString;
    static const juce::String KV_EndTCString;
    static const juce::String KV_NumRecordedTakes;
    static const juce::String KV_Type;
    static const juce::String KV_Actor;
    static const juce::String KV_CharPrefix;
    static const juce::String KV_Reason;
    static const juce::String KV_DurationTCString;
    static const juce::String KV_SelectedTake;
    static const juce::String KV_AltTake;
    static const juce::String KV_Takes;          ///< a column that exporters compose; no cell
    static const juce::String KV_Timing;         ///< a column that exporters compose; no cell
    static const juce::String KV_CharacterActor; ///< a column that exporters compose; no cell
    static const juce::String KV_IsForcedNarrative;
    static const juce::String KV_ForcedNarrativeRegion;

private:
    std::shared_ptr<Event> event;
};

} // namespace ZEP::Overmarks
