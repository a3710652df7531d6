// SPDX-License-Identifier: GPL-3.0-only
#include "list/EventSortKeys.h"

#include "core/timecode/TCToolbox.h"
#include "event/EventKeyValueEditor.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace ZEP::Overmarks
{

using KV = EventKeyValueEditor;
using ZEP::Core::TCToolbox;

// ---- timecodes -----------------------------------------------------------------------------------------------------------

TimecodeKey TimecodeKey::startOf (const Event& event)
{
    std::array<char, TCToolbox::longestTimecode> text;
    TimecodeKey key;
    std::memcpy (key.characters.data(), text.data(),
                 std::min (event.writeStartTC (text.data()), key.characters.size()));
    return key;
}

TimecodeKey TimecodeKey::endOf (const Event& event)
{
    std::array<char, TCToolbox::longestTimecode> text;
    TimecodeKey key;
    std::memcpy (key.characters.data(), text.data(),
                 std::min (event.writeEndTC (text.data()), key.characters.size()));
    return key;
}

bool TimecodeKey::operator<(const TimecodeKey& other) const noexcept
{
    return std::memcmp (characters.data(), other.characters.data(), characters.size()) < 0;
}

// ---- the columns ---------------------------------------------------------------------------------------------------------

namespace
{

struct NumberColumn
{
    const juce::String& key;
    double (*numberOf) (const Event&);
};

struct TextColumn
{
    const juce::String& key;
    juce::String (*textOf) (const Event&);
};

/** A tempo from a damaged file may be no number at all; it goes to the front. */
double orderable (float value)
{
    return std::isnan (value) ? -std::numeric_limits<double>::infinity() : static_cast<double> (value);
}

constexpr NumberColumn numberColumns[] = {
    { KV::KV_Enabled, [] (const Event& e) { return e.isEnabled() ? 1.0 : 0.0; } },
    { KV::KV_Done, [] (const Event& e) { return e.isDone() ? 1.0 : 0.0; } },
    { KV::KV_StreamerDuration, [] (const Event& e) { return double (e.getStreamerDuration()); } },
    { KV::KV_BeatsPerMinute, [] (const Event& e) { return orderable (e.getBeatsPerMinute()); } },
    { KV::KV_RecTrackIndex, [] (const Event& e) { return double (e.getRecTrackIndex()); } },
    { KV::KV_Type, [] (const Event& e) { return double (e.getType()); } },
    { KV::KV_Reason, [] (const Event& e) { return double (e.getReason()); } },
    { KV::KV_NumRecordedTakes, [] (const Event& e) { return double (e.getNumRecordedTakes()); } },
};

constexpr TextColumn textColumns[] = {
    { KV::KV_EngineeringNotes, [] (const Event& e) { return e.getEngineeringNotes().getText(); } },
    { KV::KV_Text, [] (const Event& e) { return e.getText().getText(); } },
    { KV::KV_Notes, [] (const Event& e) { return e.getNotes().getText(); } },
};

} // namespace

EventSortOrder::EventSortOrder (const juce::String& sortKey, bool shouldDescend)
    : descending (shouldDescend),
      characters (Event::getADRCharacterMap())
{
    for (const auto& number : numberColumns)
        if (number.key == sortKey)
            column = Column::number, numberOf = number.numberOf;

    for (const auto& text : textColumns)
        if (text.key == sortKey)
            column = Column::text, textOf = text.textOf;

    if (sortKey == KV::KV_EndTCString)
        column = Column::end;
    else if (sortKey == KV::KV_CueNumber)
        column = Column::cueNumber;
    else if (sortKey == KV::KV_CharacterID || sortKey == KV::KV_CharacterActor)
        column = Column::character;
    else if (sortKey == KV::KV_Actor || sortKey == KV::KV_CharPrefix)
        column = Column::characterData;
    else if (column == Column::start && sortKey != KV::KV_StartTCString)
        column = Column::plainStart;
}

// ---- keys ----------------------------------------------------------------------------------------------------------------

EventSortOrder::Key EventSortOrder::keyFor (const Event& event) const
{
    Key key;

    switch (column)
    {
        case Column::start:
        case Column::end: fillTimeKey (key, event); break;
        case Column::number: key.number = numberOf (event); break;
        case Column::text: key.text = textOf (event); break;
        case Column::character: fillCharacterKey (key, event); break;

        case Column::cueNumber:
            key.text = event.getCueNumber();
            key.timecode = TimecodeKey::startOf (event);
            break;

        case Column::characterData:
            key.hasCharacter = event.getCharacterID().isNotEmpty();
            key.timecode = TimecodeKey::startOf (event);
            break;

        case Column::plainStart: key.timecode = TimecodeKey::startOf (event); break;
    }

    return key;
}

void EventSortOrder::fillTimeKey (Key& key, const Event& event) const
{
    const bool byStart = column == Column::start;
    key.hasInPoint = event.getInPointFrameIndex() != -1;
    key.hasTime = (byStart ? event.getStartFrameIndex() : event.getEndFrameIndex()) != -1;
    key.timecode = byStart ? TimecodeKey::startOf (event) : TimecodeKey::endOf (event);

    if (! key.hasTime || ! key.hasInPoint)
        key.text = event.getCueNumber();
}

void EventSortOrder::fillCharacterKey (Key& key, const Event& event) const
{
    const auto character =
        characters != nullptr ? characters->characterForID (event.getCharacterID()) : nullptr;
    key.hasCharacter = character != nullptr;

    if (key.hasCharacter)
        key.text = character->name;
    else
        key.timecode = TimecodeKey::startOf (event);
}

// ---- comparing -----------------------------------------------------------------------------------------------------------

bool EventSortOrder::startsBefore (const Key& a, const Key& b) const
{
    if (! a.hasInPoint && ! b.hasInPoint)
        return inDirection (a.text, b.text);

    // Events without a start go last in both directions.
    if (! a.hasTime || ! b.hasTime)
        return a.hasTime;

    return inDirection (a.timecode, b.timecode);
}

bool EventSortOrder::startsBeforeInWholeList (const Key& a, const Key& b) const
{
    if (a.hasTime != b.hasTime)
        return a.hasTime;

    if (a.hasTime && ! (a.timecode == b.timecode))
        return inDirection (a.timecode, b.timecode);

    if (a.hasInPoint != b.hasInPoint)
        return b.hasInPoint;

    return ! a.hasInPoint && inDirection (a.text, b.text);
}

bool EventSortOrder::endsBefore (const Key& a, const Key& b) const
{
    if (a.hasTime != b.hasTime)
        return a.hasTime;

    return a.hasTime ? inDirection (a.timecode, b.timecode) : inDirection (a.text, b.text);
}

bool EventSortOrder::cueNumberBefore (const Key& a, const Key& b) const
{
    const int difference = a.text.compareNatural (b.text, false);

    // Equal numbers stay in the order of time, whichever way the column goes.
    return difference == 0 ? a.timecode < b.timecode : inDirection (difference, 0);
}

bool EventSortOrder::speaksBefore (const Key& a, const Key& b) const
{
    if (a.hasCharacter != b.hasCharacter)
        return a.hasCharacter != descending;

    return a.hasCharacter ? inDirection (a.text, b.text) : inDirection (a.timecode, b.timecode);
}

bool EventSortOrder::castBefore (const Key& a, const Key& b) const
{
    if (a.hasCharacter != b.hasCharacter)
        return a.hasCharacter != descending;

    // Events with a character count as equal, whoever plays it, and so stay in the order of time.
    return ! a.hasCharacter && inDirection (a.timecode, b.timecode);
}

bool EventSortOrder::goesBefore (const Key& a, const Key& b) const
{
    switch (column)
    {
        case Column::start: return startsBefore (a, b);
        case Column::end: return endsBefore (a, b);
        case Column::number: return inDirection (a.number, b.number);
        case Column::text: return inDirection (a.text, b.text);
        case Column::cueNumber: return cueNumberBefore (a, b);
        case Column::character: return speaksBefore (a, b);
        case Column::characterData: return castBefore (a, b);
        case Column::plainStart: return inDirection (a.timecode, b.timecode);
    }

    return false;
}

bool EventSortOrder::goesBefore (const Event& a, const Event& b) const
{
    return goesBefore (keyFor (a), keyFor (b));
}

void EventSortOrder::sort (std::vector<std::shared_ptr<Event>>& events) const
{
    stableSortByKeys (
        events, [this] (const Event& event) { return keyFor (event); },
        [this] (const Key& a, const Key& b)
        { return column == Column::start ? startsBeforeInWholeList (a, b) : goesBefore (a, b); });
}

} // namespace ZEP::Overmarks
