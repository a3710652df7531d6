// SPDX-License-Identifier: GPL-3.0-only
#include "event/EventAttribute.h"

#include "core/system/Saturated.h"
#include "core/system/UserDefaults.h"
#include "core/timecode/TCToolbox.h"
#include "core/undo/UndoRedoHelpers.h"
#include "event/EventKeyValueEditor.h"
#include "preferences/PreferenceKeys.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ZEP::Overmarks
{

using Poco::Any;
using Poco::AnyCast;
using ZEP::Core::RichTextString;
using ZEP::Core::saturated;
using ZEP::Core::TCToolbox;
using ZEP::Core::UndoRedoHelpers;
using ZEP::Core::UserDefaults;
using KV = EventKeyValueEditor;

namespace
{

// In the menus of takes and characters the item 1 means none and the first real entry is item 2.
constexpr int itemOfNone = 1;
constexpr int firstItem = 2;

int shifted (int value, int by) { return saturated<int> (std::int64_t { value } + by); }

juce::String string (const Any& value) { return AnyCast<juce::String> (value); }

// ---- cells that are no more than a field ---------------------------------------------------------------------------------

template <auto Getter>
Any read (Event& event)
{
    return (event.*Getter)();
}

/** Reads a number that the menus count from another one. */
template <auto Getter, int Shift>
Any readItem (Event& event)
{
    return shifted (static_cast<int> ((event.*Getter)()), Shift);
}

template <typename Value, auto Setter>
bool write (Event& event, const Any& value)
{
    (event.*Setter) (AnyCast<Value> (value));
    return true;
}

template <auto Setter, int Shift, typename Stored = int>
bool writeItem (Event& event, const Any& value)
{
    (event.*Setter) (static_cast<Stored> (shifted (AnyCast<int> (value), -Shift)));
    return true;
}

// ---- duration and tempo --------------------------------------------------------------------------------------------------

Any streamerDuration (Event& event)
{
    switch (event.getType())
    {
        case EventTypeStreamer:
        case EventTypeADRCue: return event.getStreamerDuration();
        case EventTypeMarker: return -1;
        case EventTypeFlutter:
            return saturated<int> (std::int64_t { event.getEndFrameIndex() } - event.getInPointFrameIndex());
        case EventTypeFadeIn:
        case EventTypeFadeOut: break;
    }

    return nullptr;
}

bool setStreamerDuration (Event& event, const Any& value)
{
    const bool hasDuration = event.getType() != EventTypeMarker;

    if (hasDuration)
        event.setStreamerDuration (AnyCast<int> (value), true);

    return hasDuration;
}

bool setTempo (Event& event, const Any& value)
{
    const auto tempo = string (value);

    if (tempo.isNotEmpty() && event.getType() == EventTypeStreamer
        && UserDefaults::getIntForKey (StreamerReferenceUnitPrefKey) == 0)
        event.setBeatsPerMinuteString (tempo);

    return tempo.isNotEmpty();
}

Any durationTimecode (Event& event)
{
    const auto& info = event.getTimeInfo();

    if (info == nullptr || info->tcDef.undefined)
        return juce::String ("--:--:--:--");

    const auto from = TCToolbox::tcTimeFromString (event.getStartTCString());
    const auto to = TCToolbox::tcTimeFromString (event.getEndTCString());

    if (from.invalid || to.invalid) // an event without times lasts no time
        return TCToolbox::stringFromTCTime ({}, false);

    return TCToolbox::stringFromTCTime (TCToolbox::subtractTCTimes (from, to, info->tcDef, nullptr), false);
}

// ---- timecodes -----------------------------------------------------------------------------------------------------------

bool setStart (Event& event, const Any& value)
{
    // Taking the time away is two steps of the event but one edit of a cell.
    const UndoRedoHelpers::CompoundStep oneStep ("Changing Event Timecode");
    event.setStartTCString (timecodeInProjectsSpelling (event, string (value)));
    return true;
}

bool setEnd (Event& event, const Any& value)
{
    event.setEndTCString (timecodeInProjectsSpelling (event, string (value)));
    return true;
}

// ---- text, takes, type ---------------------------------------------------------------------------------------------------

bool setText (Event& event, const Any& value)
{
    const bool hasText = event.getType() == EventTypeADRCue || event.getType() == EventTypeMarker;

    if (hasText)
        event.setText (AnyCast<RichTextString> (value));

    return hasText;
}

Any recordedTakes (Event& event) { return juce::String (event.getNumRecordedTakes()); }

/** A take that no longer exists is neither the chosen nor the alternative one. */
bool setRecordedTakes (Event& event, const Any& value)
{
    const auto number = string (value);

    if (number.isEmpty())
        return false;

    const UndoRedoHelpers::CompoundStep oneStep ("Changing Number of recorded Takes");
    const int takes = number.getIntValue();
    event.setNumRecordedTakes (takes);

    if (event.getSelectedTake() >= takes)
        event.setSelectedTake (-1);

    if (event.getAltTake() >= takes)
        event.setAltTake (-1);

    return true;
}

Any eventType (Event& event) { return static_cast<int> (event.getType()); }

bool setEventType (Event& event, const Any& value)
{
    event.setType (static_cast<EventType> (AnyCast<int> (value)), true);
    return true;
}

// ---- characters ----------------------------------------------------------------------------------------------------------

Any characterItem (Event& event)
{
    if (event.getType() != EventTypeADRCue)
        return -1;

    const auto character = event.character();

    if (character == nullptr)
        return itemOfNone;

    const auto map = Event::getADRCharacterMap();
    const auto& characters = map->characters();
    const auto found = std::find (characters.begin(), characters.end(), character);
    return found == characters.end() ? itemOfNone : static_cast<int> (found - characters.begin()) + firstItem;
}

bool setCharacterItem (Event& event, const Any& value)
{
    const int item = AnyCast<int> (value);

    if (item == itemOfNone)
    {
        event.setCharacterID ({});
        return true;
    }

    const auto map = Event::getADRCharacterMap();
    const auto position = static_cast<std::size_t> (std::int64_t { item } - firstItem);

    // The menu is built from the same map, so an item beyond it is a mistake of the caller: nothing is changed.
    if (map != nullptr && item >= firstItem && position < map->characters().size())
        event.setCharacterID (map->characterIDForCharacterWithName (map->characters()[position]->name));

    return true;
}

template <auto Member>
Any ofCharacter (Event& event)
{
    const auto character = event.getType() == EventTypeADRCue ? event.character() : nullptr;
    return character != nullptr ? (*character).*Member : juce::String();
}

// ---- the table -----------------------------------------------------------------------------------------------------------

using ZEP::Core::ADRCharacter;

std::vector<EventAttribute> makeTable()
{
    return {
        { KV::KV_Enabled, "Enabled", "takes part in playback", CellType::flag, read<&Event::isEnabled>,
          write<bool, &Event::setEnabled> },
        { KV::KV_Done, "Done", "has been recorded", CellType::flag, read<&Event::isDone>,
          write<bool, &Event::setDone> },
        { KV::KV_StreamerDuration, "Streamer Duration", "code of the streamer's length", CellType::integer,
          streamerDuration, setStreamerDuration },
        { KV::KV_BeatsPerMinute, "BPM", "tempo of a streamer in bars, 21 to 299", CellType::string,
          read<&Event::beatsPerMinuteString>, setTempo },
        { KV::KV_RecTrackIndex,
          {},
          "recording track, counted from 1; 0 for none",
          CellType::integer,
          readItem<&Event::getRecTrackIndex, 1>,
          writeItem<&Event::setRecTrackIndex, 1> },
        { KV::KV_CueNumber, "Cue Number", "the cue's number, free text", CellType::string,
          read<&Event::getCueNumber>, write<juce::String, &Event::setCueNumber> },
        { KV::KV_Text, "Text", "the line of a cue, the label of a marker", CellType::richText,
          read<&Event::getText>, setText },
        { KV::KV_EngineeringNotes, "Engineering Notes", "notes for the engineer", CellType::richText,
          read<&Event::getEngineeringNotes>, write<RichTextString, &Event::setEngineeringNotes> },
        { KV::KV_Notes, "Notes", "notes for the studio", CellType::richText, read<&Event::getNotes>,
          write<RichTextString, &Event::setNotes> },
        { KV::KV_CharacterID, "Character", "who speaks: item of the character menu, 1 for nobody",
          CellType::integer, characterItem, setCharacterItem },
        { KV::KV_StartTCString, "Start TC", "timecode of the in point", CellType::string,
          read<&Event::getStartTCString>, setStart },
        { KV::KV_EndTCString, "End TC", "timecode of the end", CellType::string, read<&Event::getEndTCString>,
          setEnd },
        { KV::KV_NumRecordedTakes, "Number of Takes", "how many takes were recorded", CellType::string,
          recordedTakes, setRecordedTakes },
        { KV::KV_Type, "Event Type", "1 streamer, 2 marker, 4 flutter, 8 ADR cue, 16 fade in, 32 fade out",
          CellType::integer, eventType, setEventType },
        { KV::KV_Actor, "Actor", "who plays the character", CellType::string,
          ofCharacter<&ADRCharacter::actor>, nullptr },
        { KV::KV_CharPrefix, "Char Prefix", "the character's prefix in cue numbers", CellType::string,
          ofCharacter<&ADRCharacter::prefix>, nullptr },
        { KV::KV_Reason, "Reason", "why the line is re-recorded: code of the reason", CellType::integer,
          readItem<&Event::getReason, 1>, writeItem<&Event::setReason, 1> },
        { KV::KV_DurationTCString,
          {},
          "time from the in point to the end",
          CellType::string,
          durationTimecode,
          nullptr },
        { KV::KV_SelectedTake,
          {},
          "the chosen take: item 1 for none, 2 for the first",
          CellType::integer,
          readItem<&Event::getSelectedTake, firstItem>,
          writeItem<&Event::setSelectedTake, firstItem> },
        { KV::KV_AltTake,
          {},
          "the alternative take: item 1 for none, 2 for the first",
          CellType::integer,
          readItem<&Event::getAltTake, firstItem>,
          writeItem<&Event::setAltTake, firstItem> },
        { KV::KV_Takes, {}, "column of takes in documents", CellType::none, nullptr, nullptr },
        { KV::KV_Timing, {}, "column of times in documents", CellType::none, nullptr, nullptr },
        { KV::KV_CharacterActor,
          {},
          "column of characters with their actors in documents",
          CellType::none,
          nullptr,
          nullptr },
        { KV::KV_IsForcedNarrative, "Forced Narrative", "shown on the picture in every language",
          CellType::flag, read<&Event::isForcedNarrative>, write<bool, &Event::setIsForcedNarrative> },
        { KV::KV_ForcedNarrativeRegion, "FN Region", "where it is shown: 1 bottom, 2 top, 3 left, 4 right",
          CellType::integer, readItem<&Event::getForcedNarrativeRegion, 1>,
          writeItem<&Event::setForcedNarrativeRegion, 1, ForcedNarrativeRegion> },
    };
}

} // namespace

const std::vector<EventAttribute>& EventAttribute::all()
{
    static const auto table = makeTable();
    return table;
}

const EventAttribute* EventAttribute::withKey (const juce::String& key)
{
    for (const auto& attribute : all())
        if (attribute.key == key)
            return &attribute;

    return nullptr;
}

juce::String timecodeInProjectsSpelling (const Event& event, const juce::String& typed)
{
    const auto& info = event.getTimeInfo();
    const bool dropFrame = info != nullptr && info->tcDef.dropFrame;
    const auto time = TCToolbox::tcTimeFromString (typed);

    if (time.invalid)
        return dropFrame ? "--:--:--;--" : "--:--:--:--";

    return TCToolbox::stringFromTCTime (time, dropFrame);
}

} // namespace ZEP::Overmarks
