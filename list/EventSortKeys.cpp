// SPDX-License-Identifier: GPL-3.0-only
#include "list/EventSortKeys.h"

#include "event/EventKeyValueEditor.h"
#include "list/NaturalKey.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <utility>

namespace ZEP::Overmarks
{

using KV = EventKeyValueEditor;

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

/** Numbers are in the order of their bits but for the sign, and both zeros are one. */
std::uint64_t rankOf (double number)
{
    constexpr auto sign = std::uint64_t { 1 } << 63;
    const auto bits = std::bit_cast<std::uint64_t> (number + 0.0);
    return (bits & sign) != 0 ? ~bits : bits | sign;
}

TextKey keyOf (const juce::String& text) { return TextKey (text.getCharPointer()); }

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

/** @param timesOf  gives the times of the event; not asked where the column needs none */
template <typename TimesOf>
EventSortOrder::Key EventSortOrder::keyFor (const Event& event, TimesOf timesOf, Making& making) const
{
    Key key;

    switch (column)
    {
        case Column::start: return startKeyFor (event, timesOf());
        case Column::end: return endKeyFor (event, making);
        case Column::number: key.number = numberOf (event); break;
        case Column::text: key.text = keyOf (textOf (event)); break;

        case Column::character:
            fillCharacter (key, event);
            if (! key.hasCharacter)
                key.timecode = timesOf().start;
            break;

        case Column::cueNumber:
            key.text = cueNumberKeyFor (event, making);
            key.timecode = timesOf().start;
            break;

        case Column::characterData:
            key.hasCharacter = event.getCharacterID().isNotEmpty();
            key.timecode = timesOf().start;
            break;

        case Column::plainStart: key.timecode = timesOf().start; break;
    }

    return key;
}

EventSortOrder::Key EventSortOrder::startKeyFor (const Event& event, const EventTimes& times)
{
    Key key;
    key.timecode = times.start;
    key.hasInPoint = times.hasInPoint();
    key.hasTime = times.startFrame != -1;

    if (! key.hasTime || ! key.hasInPoint)
        key.text = keyOf (event.getCueNumber());

    return key;
}

EventSortOrder::Key EventSortOrder::endKeyFor (const Event& event, Making& making)
{
    Key key;
    key.timecode = making.timecodes.endOf (event);
    key.hasTime = event.getEndFrameIndex() != -1;

    if (! key.hasTime)
        key.text = keyOf (event.getCueNumber());

    return key;
}

TextKey EventSortOrder::cueNumberKeyFor (const Event& event, Making& making)
{
    auto natural = naturalKeyOf (event.getCueNumber());
    const TextKey key (natural.c_str());
    return key.isWhole() ? key : TextKey (making.texts.emplace_back (std::move (natural)).c_str());
}

void EventSortOrder::fillCharacter (Key& key, const Event& event) const
{
    const auto character =
        characters != nullptr ? characters->characterForID (event.getCharacterID()) : nullptr;
    key.hasCharacter = character != nullptr;

    if (key.hasCharacter)
        key.text = keyOf (character->name);
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
    Making making;
    const auto key = [&] (const Event& event)
    {
        return keyFor (
            event, [&] { return EventTimes (event, making.timecodes); }, making);
    };
    return goesBefore (key (a), key (b));
}

bool EventSortOrder::goesBeforeInWholeList (const Key& a, const Key& b) const
{
    return column == Column::start ? startsBeforeInWholeList (a, b) : goesBefore (a, b);
}

/** Of any column but those of texts. */
std::uint64_t EventSortOrder::firstRankInWholeList (const Key& key) const
{
    constexpr auto last = std::numeric_limits<std::uint64_t>::max();
    constexpr auto half = std::uint64_t { 1 } << 63;
    const auto ranked = [this] (std::uint64_t rank) { return descending ? ~rank : rank; };

    if (column == Column::number)
        return ranked (rankOf (key.number));
    if (column == Column::plainStart)
        return ranked (key.timecode.rank());
    if (column == Column::character || column == Column::characterData)
        return ranked (key.hasCharacter ? 0 : half + key.timecode.rank() / 2);

    return key.hasTime ? ranked (key.timecode.rank()) : last;
}

std::optional<std::uint64_t> EventSortOrder::rankInWholeList (const Key& key, std::size_t rank) const
{
    const bool isText = column == Column::text || column == Column::cueNumber;

    if (! isText && rank == 0)
        return firstRankInWholeList (key);
    if (! isText && (column != Column::character || ! key.hasCharacter))
        return std::nullopt;

    const auto word = key.text.word (isText ? rank : rank - 1);
    return word && descending ? ~*word : word;
}

// ---- sorting -------------------------------------------------------------------------------------------------------------

/** What a key of the column is made from, if it is a text that the event holds itself. */
const juce::String* EventSortOrder::stringOf (const Event& event) const
{
    switch (column)
    {
        case Column::text: return &textOf (event);
        case Column::cueNumber: return &event.getCueNumber();

        case Column::character:
        case Column::characterData: return &event.getCharacterID();

        default: return nullptr;
    }
}

template <typename Items, typename TimesOf>
ScratchVector<EventSortOrder::Key> EventSortOrder::keysFor (const Items& events, TimesOf timesOf,
                                                            Making& making) const
{
    const auto ask = [&] (const Event& event)
    {
        if (const auto* string = stringOf (event))
            fetch (string);
        else if (! needsTimesAlone())
            event.fetch();
    };
    const auto askMore = [&] (const Event& event)
    {
        if (const auto* string = stringOf (event))
            fetch (string->getCharPointer().getAddress());
    };
    ScratchVector<Key> keys;
    keys.reserve (events.size());
    const auto addKey = [&] (const auto& item)
    {
        keys.push_back (keyFor (
            eventOf (item), [&]() -> decltype (auto) { return timesOf (item); }, making));
    };
    visitAhead (events, addKey, ask, askMore);
    return keys;
}

RankedPlaces EventSortOrder::orderOf (const ScratchVector<Key>& keys, const FormerOrder& former) const
{
    return stableOrderOf (
        keys, [this] (const Key& key, std::size_t rank) { return rankInWholeList (key, rank); },
        [this] (const Key& a, const Key& b) { return goesBeforeInWholeList (a, b); }, former);
}

void EventSortOrder::sort (std::vector<std::shared_ptr<Event>>& events) const
{
    Making making;
    const auto timesOf = [&making] (const std::shared_ptr<Event>& event)
    { return EventTimes (*event, making.timecodes); };
    rearrange (events, orderOf (keysFor (events, timesOf, making), {}));
}

bool EventSortOrder::isHeldByTimes (const EventPlaces& listed, const ListedTimes& times) const
{
    Making making;
    const auto key = [&] (EventPlace place)
    {
        return keyFor (
            **place, [&]() -> const EventTimes& { return times.of (place); }, making);
    };
    const auto before = [&] (EventPlace a, EventPlace b)
    {
        const auto &timesOfA = times.of (a), &timesOfB = times.of (b);
        const bool isByTimecode = timesOfA.isTimed() && timesOfB.isTimed(); // as nearly all are

        return isByTimecode ? inDirection (timesOfA.start, timesOfB.start)
                            : goesBeforeInWholeList (key (a), key (b));
    };
    return needsTimesAlone() && std::is_sorted (listed.begin(), listed.end(), before);
}

void EventSortOrder::sort (EventPlaces& listed, const ListedTimes& times, FormerOrder& former) const
{
    Making making;
    const auto timesOf = [&] (EventPlace place) -> const EventTimes& { return times.of (place); };
    const auto order = orderOf (keysFor (listed, timesOf, making), former);
    rearrange (listed, order);
    former.resize (order.size());
    std::transform (order.begin(), order.end(), former.begin(),
                    [] (const RankedPlace& each) { return static_cast<std::uint32_t> (each.place); });
}

} // namespace ZEP::Overmarks
