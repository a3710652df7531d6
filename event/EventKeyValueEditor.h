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
    explicit EventKeyValueEditor (std::shared_ptr<Event> eventToEdit); ///< Not null; shared.

    /** Sets one attribute through the event's setters.
        @param sendNotification  false silences the notifications of this one call; the undo step is made all the same
        @returns whether the key was acted on */
    bool setValueForKey (Poco::Any value, const juce::String& key, bool sendNotification);

    /** The value of one attribute; an Any that holds nullptr for a key that no cell shows. */
    Poco::Any getValueForKey (const juce::String& key);

    static const juce::String KV_Enabled;           ///< flag: takes part in playback
    static const juce::String KV_Done;              ///< flag: recorded
    static const juce::String KV_StreamerDuration;  ///< integer: see Event::setStreamerDuration(); -1: marker
    static const juce::String KV_BeatsPerMinute;    ///< string: tempo, "--" for none
    static const juce::String KV_RecTrackIndex;     ///< integer: recording track from 1; 0 for none
    static const juce::String KV_CueNumber;         ///< string: free text
    static const juce::String KV_Text;              ///< rich text: line of a cue, label of a marker
    static const juce::String KV_EngineeringNotes;  ///< rich text: for the engineer
    static const juce::String KV_Notes;             ///< rich text: for the studio
    static const juce::String KV_CharacterID;       ///< integer: item of the character menu, 1 for nobody
    static const juce::String KV_StartTCString;     ///< string: timecode of the in point
    static const juce::String KV_EndTCString;       ///< string: timecode of the end
    static const juce::String KV_NumRecordedTakes;  ///< string: how many, in digits
    static const juce::String KV_Type;              ///< integer: EventType
    static const juce::String KV_Actor;             ///< string: who plays the character; read only
    static const juce::String KV_CharPrefix;        ///< string: the character's, in cue numbers; read only
    static const juce::String KV_Reason;            ///< integer: code of the reason
    static const juce::String KV_DurationTCString;  ///< string: from the in point to the end; read only
    static const juce::String KV_SelectedTake;      ///< integer: item 1 for none, 2 for the first take
    static const juce::String KV_AltTake;           ///< integer: item 1 for none, 2 for the first take
    static const juce::String KV_Takes;             ///< a column that exporters compose; no cell
    static const juce::String KV_Timing;            ///< a column that exporters compose; no cell
    static const juce::String KV_CharacterActor;    ///< a column that exporters compose; no cell
    static const juce::String KV_IsForcedNarrative; ///< flag: shown in every language
    static const juce::String KV_ForcedNarrativeRegion; ///< integer: 1 bottom, 2 top, 3 left, 4 right

private:
    std::shared_ptr<Event> event;
};

} // namespace ZEP::Overmarks
