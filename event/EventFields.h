// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/Event.h"

namespace ZEP::Overmarks
{

/** The table of what an event keeps when it is stored: every stored form of an event walks it, so that a new attribute is
    one row here. What an event forgets stands in no row: its time info and time reference, the filter's mark, the flags of
    undo and notification, the applications' flags and colour.

    The rows write fields directly, past undo and notification. The names are those of the stored records. */
struct EventFields
{
    /** Calls visitor (name, field) for each stored field of `event`, a const or a mutable Event. */
    template <typename EventOrConst, typename Visitor>
    static void visit (EventOrConst& event, Visitor&& visitor)
    {
        visitor ("uuid", event.uuid);
        visitor ("type", event.type);
        visitor ("cueNumber", event.cueNumber);
        visitor ("characterID", event.characterID);
        visitor ("startFrameIndex", event.startFrameIndex);
        visitor ("inPointFrameIndex", event.inPointFrameIndex);
        visitor ("endFrameIndex", event.endFrameIndex);
        visitor ("streamerDuration", event.streamerDuration);
        visitor ("beatsPerMinute", event.beatsPerMinute);
        visitor ("text", event.text);
        visitor ("notes", event.notes);
        visitor ("engineeringNotes", event.engineeringNotes);
        visitor ("enabled", event.enabled);
        visitor ("done", event.done);
        visitor ("storedFlag", event.storedFlag);
        visitor ("isForcedNarrative", event.forcedNarrative);
        visitor ("forcedNarrativeRegion", event.forcedNarrativeRegion);
        visitor ("recTrackIndex", event.recTrackIndex);
        visitor ("numRecordedTakes", event.numRecordedTakes);
        visitor ("selectedTake", event.selectedTake);
        visitor ("altTake", event.altTake);
        visitor ("reason", event.reason);
    }
};

} // namespace ZEP::Overmarks
