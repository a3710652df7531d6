// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/EventKeyValueEditor.h"
#include "list/EventArray.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** The rule of each sort column for two events, written out slowly: the texts of the cells compared as they stand.

    | column                    | compared                 | and if that doesn't decide                                   |
    |---------------------------|--------------------------|--------------------------------------------------------------|
    | start                     | timecode text            | two untimed events: cue number; no start: last both ways      |
    | end                       | timecode text            | no end: last both ways; neither has one: cue number           |
    | enabled, done             | off before on            |                                                              |
    | cue number                | natural order            | start upwards, both ways                                     |
    | character                 | name                     | with a character first; neither has one: start               |
    | actor, prefix             | nothing                  | without a character last; neither has one: start             |
    | numbers and texts         | the value                |                                                              |
    | everything else           | start timecode text      |                                                              | */
class SlowSortOrder final
{
public:
    SlowSortOrder (const juce::String& sortKey, bool descending) : key (sortKey), down (descending) {}

    bool operator() (const std::shared_ptr<Event>& a, const std::shared_ptr<Event>& b) const
    {
        using Keys = EventKeyValueEditor;
        if (key == Keys::KV_StartTCString)
            return startsBefore (*a, *b);
        if (key == Keys::KV_EndTCString)
            return endsBefore (*a, *b);
        if (key == Keys::KV_CueNumber)
            return cueNumberBefore (*a, *b);
        if (key == Keys::KV_CharacterID || key == Keys::KV_CharacterActor)
            return speaksBefore (*a, *b);
        if (key == Keys::KV_Actor || key == Keys::KV_CharPrefix)
            return castBefore (*a, *b);
        return valueBefore (*a, *b);
    }

private:
    template <typename Value>
    bool byDirection (const Value& a, const Value& b) const
    {
        return down ? a > b : a < b;
    }

    bool startsBefore (const Event& a, const Event& b) const
    {
        if (a.getInPointFrameIndex() == -1 && b.getInPointFrameIndex() == -1)
            return byDirection (a.getCueNumber(), b.getCueNumber());
        if (a.getStartFrameIndex() == -1)
            return false;
        if (b.getStartFrameIndex() == -1)
            return true;
        return byDirection (a.getStartTCString(), b.getStartTCString());
    }

    bool endsBefore (const Event& a, const Event& b) const
    {
        if (a.getEndFrameIndex() == -1)
            return b.getEndFrameIndex() == -1 && byDirection (a.getCueNumber(), b.getCueNumber());
        if (b.getEndFrameIndex() == -1)
            return true;
        return byDirection (a.getEndTCString(), b.getEndTCString());
    }

    bool cueNumberBefore (const Event& a, const Event& b) const
    {
        const int natural = a.getCueNumber().compareNatural (b.getCueNumber(), false);
        if (natural == 0)
            return a.getStartTCString() < b.getStartTCString();
        return down ? natural > 0 : natural < 0;
    }

    bool speaksBefore (const Event& a, const Event& b) const
    {
        const auto first = Event::getADRCharacterMap()->characterForID (a.getCharacterID());
        const auto second = Event::getADRCharacterMap()->characterForID (b.getCharacterID());
        if (first != nullptr && second != nullptr)
            return byDirection (first->name, second->name);
        if (first != nullptr)
            return ! down;
        if (second != nullptr)
            return down;
        return byDirection (a.getStartTCString(), b.getStartTCString());
    }

    bool castBefore (const Event& a, const Event& b) const
    {
        if (a.getCharacterID().isEmpty() && b.getCharacterID().isEmpty())
            return byDirection (a.getStartTCString(), b.getStartTCString());
        if (a.getCharacterID().isNotEmpty() && b.getCharacterID().isNotEmpty())
            return false;
        return a.getCharacterID().isEmpty() ? down : ! down;
    }

    bool valueBefore (const Event& a, const Event& b) const
    {
        using Keys = EventKeyValueEditor;
        if (key == Keys::KV_Enabled)
            return down ? a.isEnabled() && ! b.isEnabled() : ! a.isEnabled() && b.isEnabled();
        if (key == Keys::KV_Done)
            return down ? a.isDone() && ! b.isDone() : ! a.isDone() && b.isDone();
        if (key == Keys::KV_StreamerDuration)
            return byDirection (a.getStreamerDuration(), b.getStreamerDuration());
        if (key == Keys::KV_BeatsPerMinute)
            return byDirection (a.getBeatsPerMinute(), b.getBeatsPerMinute());
        if (key == Keys::KV_RecTrackIndex)
            return byDirection (a.getRecTrackIndex(), b.getRecTrackIndex());
        if (key == Keys::KV_Type)
            return byDirection (static_cast<int> (a.getType()), static_cast<int> (b.getType()));
        if (key == Keys::KV_Reason)
            return byDirection (a.getReason(), b.getReason());
        if (key == Keys::KV_NumRecordedTakes)
            return byDirection (a.getNumRecordedTakes(), b.getNumRecordedTakes());
        return textBefore (a, b);
    }

    bool textBefore (const Event& a, const Event& b) const
    {
        using Keys = EventKeyValueEditor;
        if (key == Keys::KV_EngineeringNotes)
            return byDirection (a.getEngineeringNotes().getText(), b.getEngineeringNotes().getText());
        if (key == Keys::KV_Text)
            return byDirection (a.getText().getText(), b.getText().getText());
        if (key == Keys::KV_Notes)
            return byDirection (a.getNotes().getText(), b.getNotes().getText());
        return byDirection (a.getStartTCString(), b.getStartTCString());
    }

    juce::String key;
    bool down;
};

/** The timecode order of the listed events, slowly. */
inline bool listedBefore (const std::shared_ptr<Event>& a, const std::shared_ptr<Event>& b,
                          int applicationType)
{
    const bool aHasInPoint = a->getInPointFrameIndex() != -1;
    const bool bHasInPoint = b->getInPointFrameIndex() != -1;
    if (! aHasInPoint && ! bHasInPoint)
        return a->getCueNumber() < b->getCueNumber();
    if (! aHasInPoint || ! bHasInPoint)
        return bHasInPoint;
    if (applicationType == 0)
        return a->getStartFrameIndex() < b->getStartFrameIndex();
    return a->getStartTCString() < b->getStartTCString();
}

/** The order of the whole list, slowly. */
inline bool startTextBefore (const std::shared_ptr<Event>& a, const std::shared_ptr<Event>& b)
{
    return a->getStartTCString() < b->getStartTCString();
}

/** All keys of the attribute table, and texts that are none. */
inline std::vector<juce::String> allSortKeys()
{
    using Keys = EventKeyValueEditor;
    return { Keys::KV_Enabled,
             Keys::KV_Done,
             Keys::KV_StreamerDuration,
             Keys::KV_BeatsPerMinute,
             Keys::KV_RecTrackIndex,
             Keys::KV_CueNumber,
             Keys::KV_Text,
             Keys::KV_EngineeringNotes,
             Keys::KV_Notes,
             Keys::KV_CharacterID,
             Keys::KV_StartTCString,
             Keys::KV_EndTCString,
             Keys::KV_NumRecordedTakes,
             Keys::KV_Type,
             Keys::KV_Actor,
             Keys::KV_CharPrefix,
             Keys::KV_Reason,
             Keys::KV_DurationTCString,
             Keys::KV_SelectedTake,
             Keys::KV_AltTake,
             Keys::KV_Takes,
             Keys::KV_Timing,
             Keys::KV_CharacterActor,
             Keys::KV_IsForcedNarrative,
             Keys::KV_ForcedNarrativeRegion,
             "",
             "Nonsense",
             "starttcstring" };
}

} // namespace ZEP::Overmarks::Testing
