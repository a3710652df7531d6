// SPDX-License-Identifier: GPL-3.0-only
#include "list/EventSortKeys.h"

#include "core/system/SystemUtility.h"
#include "core/timecode/TCToolbox.h"
#include "event/EventKeyValueEditor.h"
#include "list/NaturalKey.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ZEP::Overmarks
{

using KV = EventKeyValueEditor;
using ZEP::Core::SystemUtility;
using ZEP::Core::TCToolbox;

// ---- timecodes -----------------------------------------------------------------------------------------------------------

namespace
{

constexpr std::size_t bitsOfCharacter = 4;
constexpr std::size_t charactersInHalf = 64 / bitsOfCharacter;

/** In the order of ASCII, the end of the text lowest. */
constexpr std::uint64_t rankOf (char character)
{
    switch (character)
    {
        case '-': return 1;
        case ':': return 12;
        case ';': return 13;
        default: return static_cast<std::uint64_t> (character - '0') + 2;
    }
}

using TimecodeText = std::array<char, TCToolbox::longestTimecode>;

} // namespace

TimecodeKey::TimecodeKey (std::string_view timecode) noexcept
{
    const auto length = std::min (timecode.size(), 2 * charactersInHalf);

    for (std::size_t i = 0; i < length; ++i)
        characters[i / charactersInHalf] |= rankOf (timecode[i])
                                            << (64 - bitsOfCharacter * (i % charactersInHalf + 1));
}

TimecodeKey TimecodeKey::startOf (const Event& event)
{
    TimecodeText text;
    return TimecodeKey ({ text.data(), event.writeStartTC (text.data()) });
}

TimecodeKey TimecodeKey::endOf (const Event& event)
{
    TimecodeText text;
    return TimecodeKey ({ text.data(), event.writeEndTC (text.data()) });
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
    const juce::String& (*textOf) (const Event&);
};

TextKey keyOf (const juce::String& text) { return TextKey (text.toRawUTF8()); }

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
    { KV::KV_EngineeringNotes,
      [] (const Event& e) -> const juce::String& { return e.getEngineeringNotes().getText(); } },
    { KV::KV_Text, [] (const Event& e) -> const juce::String& { return e.getText().getText(); } },
    { KV::KV_Notes, [] (const Event& e) -> const juce::String& { return e.getNotes().getText(); } },
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

EventSortOrder::Key EventSortOrder::keyFor (const Event& event, MadeTexts& made) const
{
    Key key;

    switch (column)
    {
        case Column::start: return startKeyFor (event, EventTimes (event));
        case Column::end: return endKeyFor (event);
        case Column::number: key.number = numberOf (event); break;
        case Column::text: key.text = keyOf (textOf (event)); break;
        case Column::character: fillCharacterKey (key, event); break;

        case Column::cueNumber:
            key.text = TextKey (made.emplace_back (naturalKeyOf (event.getCueNumber())).c_str());
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

EventSortOrder::Key EventSortOrder::startKeyFor (const Event& event, const EventTimes& times)
{
    Key key;
    key.timecode = times.start;
    key.hasInPoint = times.hasInPoint;
    key.hasTime = times.startFrame != -1;

    if (! key.hasTime || ! key.hasInPoint)
        key.text = keyOf (event.getCueNumber());

    return key;
}

EventSortOrder::Key EventSortOrder::endKeyFor (const Event& event)
{
    Key key;
    key.timecode = TimecodeKey::endOf (event);
    key.hasInPoint = event.getInPointFrameIndex() != -1;
    key.hasTime = event.getEndFrameIndex() != -1;

    if (! key.hasTime || ! key.hasInPoint)
        key.text = keyOf (event.getCueNumber());

    return key;
}

void EventSortOrder::fillCharacterKey (Key& key, const Event& event) const
{
    const auto character =
        characters != nullptr ? characters->characterForID (event.getCharacterID()) : nullptr;
    key.hasCharacter = character != nullptr;

    if (key.hasCharacter)
        key.text = keyOf (character->name);
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
    const int difference = a.text.compare (b.text);

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
    MadeTexts made;
    const auto keyOfA = keyFor (a, made);
    return goesBefore (keyOfA, keyFor (b, made));
}

bool EventSortOrder::goesBeforeInWholeList (const Key& a, const Key& b) const
{
    return column == Column::start ? startsBeforeInWholeList (a, b) : goesBefore (a, b);
}

void EventSortOrder::sort (std::vector<std::shared_ptr<Event>>& events) const
{
    MadeTexts made;
    stableSortByKeys (
        events, [&] (const Event& event) { return keyFor (event, made); },
        [this] (const Key& a, const Key& b) { return goesBeforeInWholeList (a, b); });
}

void EventSortOrder::sort (std::vector<EventPlace>& listed, const ListedTimes& times) const
{
    const auto before = [this] (const Key& a, const Key& b) { return goesBeforeInWholeList (a, b); };

    if (column != Column::start)
    {
        MadeTexts made;
        stableSortByKeys (
            listed, [&] (const Event& event) { return keyFor (event, made); }, before);
        return;
    }

    std::vector<KeyedItem<Key>> keys;
    keys.reserve (listed.size());

    for (const auto place : listed)
        keys.push_back ({ startKeyFor (**place, times.of (place)), keys.size() });

    stableSortWithKeys (listed, keys, before);
}

// ---- by timecode ---------------------------------------------------------------------------------------------------------

namespace
{

struct ListKey
{
    bool hasInPoint;
    int start;
    TimecodeKey timecode;
    TextKey cueNumber;
};

ListKey listKeyFor (const Event& event, const EventTimes& times)
{
    return { times.hasInPoint, times.startFrame, times.start,
             times.hasInPoint ? TextKey() : keyOf (event.getCueNumber()) };
}

auto listOrder()
{
    return [byStartFrame = SystemUtility::getApplicationType() == 0] (const ListKey& a, const ListKey& b)
    {
        if (a.hasInPoint != b.hasInPoint)
            return b.hasInPoint;
        if (! a.hasInPoint)
            return a.cueNumber < b.cueNumber;

        return byStartFrame ? a.start < b.start : a.timecode < b.timecode;
    };
}

} // namespace

void sortByTimecode (std::vector<std::shared_ptr<Event>>& events)
{
    stableSortByKeys (
        events, [] (const Event& event) { return listKeyFor (event, EventTimes (event)); }, listOrder());
}

// Texts of dashes come first: "-" sorts below the digits.
ListedTimes::ListedTimes (std::vector<std::shared_ptr<Event>>& events)
    : times (stableSortByKeys (
        events, [] (const Event& event) { return EventTimes (event); },
        [] (const EventTimes& a, const EventTimes& b) { return a.start < b.start; })),
      first (events.data())
{
}

void ListedTimes::sort (std::vector<EventPlace>& listed) const
{
    std::vector<KeyedItem<ListKey>> keys;
    keys.reserve (listed.size());

    for (const auto place : listed)
        keys.push_back ({ listKeyFor (**place, of (place)), keys.size() });

    stableSortWithKeys (listed, keys, listOrder());
}

} // namespace ZEP::Overmarks
