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
    std::uint32_t (*numberOf) (const Event&);
};

struct TextColumn
{
    const juce::String& key;
    const juce::String& (*textOf) (const Event&);
};

constexpr std::uint32_t signBit = std::uint32_t { 1 } << 31;

std::uint32_t rankOf (int number) { return static_cast<std::uint32_t> (number) ^ signBit; }

/** Numbers are in the order of their bits but for the sign, and both zeros are one. A tempo from a damaged file may be no number at all; it
    goes to the front. */
std::uint32_t rankOf (float number)
{
    const auto orderable = std::isnan (number) ? -std::numeric_limits<float>::infinity() : number + 0.0f;
    const auto bits = std::bit_cast<std::uint32_t> (orderable);
    return (bits & signBit) != 0 ? ~bits : bits | signBit;
}

constexpr NumberColumn numberColumns[] = {
    { KV::KV_Enabled, [] (const Event& e) { return rankOf (e.isEnabled()); } },
    { KV::KV_Done, [] (const Event& e) { return rankOf (e.isDone()); } },
    { KV::KV_StreamerDuration, [] (const Event& e) { return rankOf (e.getStreamerDuration()); } },
    { KV::KV_BeatsPerMinute, [] (const Event& e) { return rankOf (e.getBeatsPerMinute()); } },
    { KV::KV_RecTrackIndex, [] (const Event& e) { return rankOf (e.getRecTrackIndex()); } },
    { KV::KV_Type, [] (const Event& e) { return rankOf (e.getType()); } },
    { KV::KV_Reason, [] (const Event& e) { return rankOf (e.getReason()); } },
    { KV::KV_NumRecordedTakes, [] (const Event& e) { return rankOf (e.getNumRecordedTakes()); } },
};

constexpr TextColumn textColumns[] = {
    { KV::KV_EngineeringNotes,
      [] (const Event& e) -> const juce::String& { return e.getEngineeringNotes().getText(); } },
    { KV::KV_Text, [] (const Event& e) -> const juce::String& { return e.getText().getText(); } },
    { KV::KV_Notes, [] (const Event& e) -> const juce::String& { return e.getNotes().getText(); } },
};

} // namespace

EventSortOrder::EventSortOrder (const juce::String& keyOfColumn, bool shouldDescend)
    : sortKey (keyOfColumn),
      descending (shouldDescend),
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
SortCell EventSortOrder::cellOf (const Event& event, TimesOf timesOf, Making& making) const
{
    SortCell cell;

    switch (column)
    {
        case Column::start: return startCellOf (event, timesOf());
        case Column::end: return endCellOf (event, making);
        case Column::number: cell.number = numberOf (event); return cell;
        case Column::text: cell.text = &textOf (event); return cell;
        case Column::cueNumber: cell.text = &event.getCueNumber(); break;
        case Column::characterData: cell.hasCharacter = event.getCharacterID().isNotEmpty(); break;
        case Column::plainStart: break;

        case Column::character:
            cell = characterCellOf (event);
            if (cell.hasCharacter)
                return cell;
            break;
    }

    cell.timecode = timesOf().start;
    return cell;
}

SortCell EventSortOrder::startCellOf (const Event& event, const EventTimes& times)
{
    SortCell cell;
    cell.timecode = times.start;
    cell.hasInPoint = times.hasInPoint();
    cell.hasTime = times.startFrame != -1;

    if (! cell.hasTime || ! cell.hasInPoint)
        cell.text = &event.getCueNumber();

    return cell;
}

SortCell EventSortOrder::endCellOf (const Event& event, Making& making)
{
    SortCell cell;
    cell.timecode = making.timecodes.endOf (event);
    cell.hasTime = event.getEndFrameIndex() != -1;

    if (! cell.hasTime)
        cell.text = &event.getCueNumber();

    return cell;
}

SortCell EventSortOrder::characterCellOf (const Event& event) const
{
    const auto character =
        characters != nullptr ? characters->characterForID (event.getCharacterID()) : nullptr;
    SortCell cell;
    cell.hasCharacter = character != nullptr;

    if (cell.hasCharacter)
        cell.text = &character->name; // the map holds it

    return cell;
}

EventSortOrder::Key EventSortOrder::keyOf (const SortCell& cell, Making& making) const
{
    Key key { cell, {} };

    if (cell.text == nullptr)
        return key;

    if (column != Column::cueNumber)
    {
        key.textKey = TextKey (cell.text->getCharPointer());
        return key;
    }

    auto natural = naturalKeyOf (*cell.text);
    key.textKey = TextKey (natural.c_str());

    if (! key.textKey.isWhole())
        key.textKey = TextKey (making.texts.emplace_back (std::move (natural)).c_str());

    return key;
}

// ---- comparing -----------------------------------------------------------------------------------------------------------

bool EventSortOrder::startsBefore (const Key& a, const Key& b) const
{
    if (! a.hasInPoint && ! b.hasInPoint)
        return inDirection (a.textKey, b.textKey);

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

    return ! a.hasInPoint && inDirection (a.textKey, b.textKey);
}

bool EventSortOrder::endsBefore (const Key& a, const Key& b) const
{
    if (a.hasTime != b.hasTime)
        return a.hasTime;

    return a.hasTime ? inDirection (a.timecode, b.timecode) : inDirection (a.textKey, b.textKey);
}

bool EventSortOrder::cueNumberBefore (const Key& a, const Key& b) const
{
    const int difference = a.textKey.compare (b.textKey);

    // Equal numbers stay in the order of time, whichever way the column goes.
    return difference == 0 ? a.timecode < b.timecode : inDirection (difference, 0);
}

bool EventSortOrder::speaksBefore (const Key& a, const Key& b) const
{
    if (a.hasCharacter != b.hasCharacter)
        return a.hasCharacter != descending;

    return a.hasCharacter ? inDirection (a.textKey, b.textKey) : inDirection (a.timecode, b.timecode);
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
        case Column::text: return inDirection (a.textKey, b.textKey);
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
        const auto timesOf = [&] { return EventTimes (event, making.timecodes); };
        return keyOf (cellOf (event, timesOf, making), making);
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
        return ranked (key.number);
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

    const auto word = key.textKey.word (isText ? rank : rank - 1);
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

/** Shows each of the events to `visit`; see visitAhead(). */
template <typename Items, typename Visit>
void EventSortOrder::visitEach (const Items& events, Visit visit, bool readsTexts) const
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
        if (const auto* string = readsTexts ? stringOf (event) : nullptr)
            fetch (string->getCharPointer().getAddress());
    };
    visitAhead (events, visit, ask, askMore);
}

RankedPlaces EventSortOrder::orderOf (const ScratchVector<Key>& keys) const
{
    return stableOrderOf (
        keys, [this] (const Key& key, std::size_t rank) { return rankInWholeList (key, rank); },
        [this] (const Key& a, const Key& b) { return goesBeforeInWholeList (a, b); });
}

void EventSortOrder::sort (std::vector<std::shared_ptr<Event>>& events) const
{
    Making making;
    ScratchVector<Key> keys;
    keys.reserve (events.size());
    visitEach (
        events,
        [&] (const std::shared_ptr<Event>& event)
        {
            const auto timesOf = [&] { return EventTimes (*event, making.timecodes); };
            keys.push_back (keyOf (cellOf (*event, timesOf, making), making));
        },
        true);
    rearrange (events, orderOf (keys));
}

bool EventSortOrder::isHeldByTimes (const EventPlaces& listed, const ListedTimes& times) const
{
    Making making;
    const auto key = [&] (EventPlace place)
    {
        const auto timesOf = [&]() -> const EventTimes& { return times.of (place); };
        return keyOf (cellOf (**place, timesOf, making), making);
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

/** @param cellAt  gives what the event at a place of a list says */
template <typename CellAt>
bool EventSortOrder::follow (FormerOrder& former, const std::vector<std::shared_ptr<Event>>& before,
                             const EventPlaces& listed, CellAt cellAt, Making& making) const
{
    if (! former.isOf (sortKey, descending) || ! former.follow (before, listed))
        return false;

    std::size_t number = 0;
    visitEach (
        listed, [&] (EventPlace place) { former.update (number++, cellAt (place)); },
        column == Column::character); // whose identifier leads to the name

    if (former.hasTooManyStrays())
        return false;

    const auto strays = former.takeStraysOut();
    std::vector<Key> keysOfStrays;
    for (const auto place : strays)
        keysOfStrays.push_back (keyOf (cellAt (listed[place]), making));

    // Of two events that are compared at least one is a stray.
    Making makingForOther;
    const auto keyAt = [&] (std::size_t place)
    {
        const auto stray = std::lower_bound (strays.begin(), strays.end(), place);
        if (stray != strays.end() && *stray == place)
            return keysOfStrays[static_cast<std::size_t> (stray - strays.begin())];

        makingForOther.texts.clear();
        return keyOf (cellAt (listed[place]), makingForOther);
    };
    former.putStrays (
        goingFirst (keyAt, [this] (const Key& a, const Key& b) { return goesBeforeInWholeList (a, b); }));
    return true;
}

template <typename CellAt>
void EventSortOrder::findAnew (FormerOrder& former, const EventPlaces& listed, CellAt cellAt,
                               Making& making) const
{
    ScratchVector<Key> keys;
    keys.reserve (listed.size());
    former.begin (sortKey, descending, listed.size());
    visitEach (
        listed,
        [&] (EventPlace place)
        {
            const auto cell = cellAt (place);
            former.add (cell);
            keys.push_back (keyOf (cell, making));
        },
        true);
    former.end (orderOf (keys));
}

EventPlaces EventSortOrder::sorted (const EventPlaces& listed, const ListedTimes& times, FormerOrder& former,
                                    const std::vector<std::shared_ptr<Event>>& before) const
{
    Making making;
    const auto cellAt = [&] (EventPlace place)
    {
        const auto timesOf = [&]() -> const EventTimes& { return times.of (place); };
        return cellOf (**place, timesOf, making);
    };
    auto order = std::exchange (former, {}); // of no use after a failure

    if (! follow (order, before, listed, cellAt, making))
        findAnew (order, listed, cellAt, making);

    EventPlaces shown;
    shown.reserve (listed.size());
    for (const auto place : order.places())
        shown.push_back (listed[place]);

    former = std::move (order);
    return shown;
}

} // namespace ZEP::Overmarks
