// SPDX-License-Identifier: GPL-3.0-only
#include "list/EventSortKeys.h"

#include "core/system/SystemUtility.h"
#include "core/timecode/TCToolbox.h"
#include "event/EventKeyValueEditor.h"
#include "list/NaturalKey.h"
#include "list/StableSort.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>
#include <limits>
#include <numeric>
#include <utility>

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

bool hasTwoDigits (std::int32_t number) { return number >= 0 && number <= 99; }

/** Of its two digits. */
std::uint64_t rankOf (std::int32_t number)
{
    const auto value = static_cast<std::uint64_t> (number);
    return (value / 10 + rankOf ('0')) << bitsOfCharacter | (value % 10 + rankOf ('0'));
}

} // namespace

TimecodeKey::TimecodeKey (std::string_view timecode) noexcept
{
    const auto length = std::min (timecode.size(), 2 * charactersInHalf);

    for (std::size_t i = 0; i < length; ++i)
        characters[i / charactersInHalf] |= rankOf (timecode[i])
                                            << (64 - bitsOfCharacter * (i % charactersInHalf + 1));
}

TimecodeKey TimecodeKey::keyAt (int frameIndex, const Event& event,
                                std::size_t (Event::*writeText) (char*) const)
{
    const auto& info = event.getTimeInfo();

    if (info != nullptr && frameIndex != -1)
    {
        const auto time = TCToolbox::tcTimeForFrameIndex (frameIndex, *info);

        if (hasTwoDigits (time.hours) && hasTwoDigits (time.minutes) && hasTwoDigits (time.seconds)
            && hasTwoDigits (time.frames))
        {
            TimecodeKey key;
            key.characters.front() =
                rankOf (time.hours) << 56 | rankOf (':') << 52 | rankOf (time.minutes) << 44
                | rankOf (':') << 40 | rankOf (time.seconds) << 32
                | rankOf (info->tcDef.dropFrame ? ';' : ':') << 28 | rankOf (time.frames) << 20;
            return key;
        }
    }

    std::array<char, TCToolbox::longestTimecode> text;
    return TimecodeKey ({ text.data(), (event.*writeText) (text.data()) });
}

TimecodeKey TimecodeKey::startOf (const Event& event)
{
    return keyAt (event.getInPointFrameIndex(), event, &Event::writeStartTC);
}

TimecodeKey TimecodeKey::endOf (const Event& event)
{
    return keyAt (event.getEndFrameIndex(), event, &Event::writeEndTC);
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

EventSortOrder::Key EventSortOrder::keyFor (const Event& event, const EventTimes& times,
                                            MadeTexts& made) const
{
    Key key;

    switch (column)
    {
        case Column::start: return startKeyFor (event, times);
        case Column::end: return endKeyFor (event);
        case Column::number: key.number = numberOf (event); break;
        case Column::text: key.text = keyOf (textOf (event)); break;
        case Column::character: fillCharacterKey (key, event, times); break;

        case Column::cueNumber:
            key.text = cueNumberKeyFor (event, made);
            key.timecode = times.start;
            break;

        case Column::characterData:
            key.hasCharacter = event.getCharacterID().isNotEmpty();
            key.timecode = times.start;
            break;

        case Column::plainStart: key.timecode = times.start; break;
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

TextKey EventSortOrder::cueNumberKeyFor (const Event& event, MadeTexts& made)
{
    auto natural = naturalKeyOf (event.getCueNumber());
    const TextKey key (natural.c_str());
    return key.isWhole() ? key : TextKey (made.emplace_back (std::move (natural)).c_str());
}

void EventSortOrder::fillCharacterKey (Key& key, const Event& event, const EventTimes& times) const
{
    const auto character =
        characters != nullptr ? characters->characterForID (event.getCharacterID()) : nullptr;
    key.hasCharacter = character != nullptr;

    if (key.hasCharacter)
        key.text = keyOf (character->name);
    else
        key.timecode = times.start;
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
    const auto keyOfA = keyFor (a, EventTimes (a), made);
    return goesBefore (keyOfA, keyFor (b, EventTimes (b), made));
}

bool EventSortOrder::goesBeforeInWholeList (const Key& a, const Key& b) const
{
    return column == Column::start ? startsBeforeInWholeList (a, b) : goesBefore (a, b);
}

std::uint64_t EventSortOrder::firstRankInWholeList (const Key& key) const
{
    constexpr auto last = std::numeric_limits<std::uint64_t>::max();
    constexpr auto half = std::uint64_t { 1 } << 63;
    const auto ranked = [this] (std::uint64_t rank) { return descending ? ~rank : rank; };

    switch (column)
    {
        case Column::start:
        case Column::end: return key.hasTime ? ranked (key.timecode.rank()) : last;

        case Column::number: return ranked (rankOf (key.number));

        case Column::character:
        case Column::characterData: return ranked (key.hasCharacter ? 0 : half + key.timecode.rank() / 2);

        case Column::plainStart: return ranked (key.timecode.rank());

        case Column::text:
        case Column::cueNumber: break;
    }

    return 0;
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

template <typename Item, typename TimesOf>
void EventSortOrder::sortByKeys (std::vector<Item>& events, TimesOf timesOf) const
{
    const auto fetch = [&] (const Event& event)
    {
        if (const auto* string = stringOf (event))
            __builtin_prefetch (string);
        else if (! needsTimesAlone())
            event.fetchTimes();
    };
    const auto fetchMore = [&] (const Event& event)
    {
        if (const auto* string = stringOf (event))
            __builtin_prefetch (string->getCharPointer().getAddress());
    };
    MadeTexts made;
    std::vector<Key> keys;
    keys.reserve (events.size());
    visitAhead (
        events, [&] (const Item& item) { keys.push_back (keyFor (eventOf (item), timesOf (item), made)); },
        fetch, fetchMore);
    rearrange (events,
               stableOrderOf (
                   keys, [this] (const Key& key, std::size_t rank) { return rankInWholeList (key, rank); },
                   [this] (const Key& a, const Key& b) { return goesBeforeInWholeList (a, b); }));
}

void EventSortOrder::sort (std::vector<std::shared_ptr<Event>>& events) const
{
    sortByKeys (events, [] (const std::shared_ptr<Event>& event) { return EventTimes (*event); });
}

void EventSortOrder::sort (std::vector<EventPlace>& listed, const ListedTimes& times) const
{
    if (needsTimesAlone())
    {
        MadeTexts made;
        const auto key = [&] (EventPlace place) { return keyFor (**place, times.of (place), made); };
        if (std::is_sorted (listed.begin(), listed.end(),
                            [&] (EventPlace a, EventPlace b)
                            { return goesBeforeInWholeList (key (a), key (b)); }))
            return; // as it stands after most edits: then no key needs a place in the memory
    }

    sortByKeys (listed, [&] (EventPlace place) -> const EventTimes& { return times.of (place); });
}

// ---- by timecode ---------------------------------------------------------------------------------------------------------

namespace
{

/** For keys of a single rank. */
std::optional<std::uint64_t> onlyRank (std::size_t rank, std::uint64_t number)
{
    return rank == 0 ? std::optional (number) : std::nullopt;
}

// Texts of dashes come first: "-" sorts below the digits.
std::vector<RankedPlace> orderByStart (const std::vector<EventTimes>& times)
{
    return stableOrderOf (
        times, [] (const EventTimes& each, std::size_t rank) { return onlyRank (rank, each.start.rank()); },
        [] (const EventTimes& a, const EventTimes& b) { return a.start < b.start; });
}

std::vector<EventTimes> timesOf (const std::vector<std::shared_ptr<Event>>& events)
{
    std::vector<EventTimes> times;
    times.reserve (events.size());
    visitAhead (events, [&times] (const auto& event) { times.emplace_back (*event); });
    return times;
}

} // namespace

void sortByStart (std::vector<std::shared_ptr<Event>>& events)
{
    rearrange (events, orderByStart (timesOf (events)));
}

ListedTimes::ListedTimes (const std::vector<std::shared_ptr<Event>>& events)
    : times (timesOf (events)),
      first (events.data())
{
}

void ListedTimes::sort (std::vector<std::shared_ptr<Event>>& events)
{
    const auto order = orderByStart (times);
    rearrange (events, order);
    rearrange (times, order);
    first = events.data();
}

std::vector<RankedPlace> ListedTimes::orderOf (const std::vector<EventPlace>& listed) const
{
    struct Key
    {
        bool hasInPoint;
        int start;
        TimecodeKey timecode;
        TextKey cueNumber;
    };

    const bool byStartFrame = SystemUtility::getApplicationType() == 0;
    const auto rankOf = [byStartFrame] (const Key& key, std::size_t rank)
    {
        constexpr std::int64_t lowest = std::numeric_limits<int>::min();
        const auto time =
            byStartFrame ? static_cast<std::uint64_t> (key.start - lowest + 1) : key.timecode.rank();
        return onlyRank (rank, key.hasInPoint ? time : 0);
    };
    const auto before = [byStartFrame] (const Key& a, const Key& b)
    {
        if (a.hasInPoint != b.hasInPoint)
            return b.hasInPoint;
        if (! a.hasInPoint)
            return a.cueNumber < b.cueNumber;

        return byStartFrame ? a.start < b.start : a.timecode < b.timecode;
    };
    const auto keyFor = [this] (EventPlace place) -> Key
    {
        const auto& each = of (place);
        return { each.hasInPoint(), each.startFrame, each.start,
                 each.hasInPoint() ? TextKey() : keyOf ((*place)->getCueNumber()) };
    };

    if (std::is_sorted (listed.begin(), listed.end(),
                        [&] (EventPlace a, EventPlace b) { return before (keyFor (a), keyFor (b)); }))
        return {}; // as mostly: then no key needs a place in the memory

    std::vector<Key> keys;
    keys.reserve (listed.size());
    std::transform (listed.begin(), listed.end(), std::back_inserter (keys), keyFor);
    return stableOrderOf (keys, rankOf, before);
}

void ListedTimes::sort (std::vector<EventPlace>& listed) const { rearrange (listed, orderOf (listed)); }

void sortByTimecode (std::vector<std::shared_ptr<Event>>& events)
{
    std::vector<EventPlace> listed (events.size());
    std::iota (listed.begin(), listed.end(), events.data());
    rearrange (events, ListedTimes (events).orderOf (listed));
}

} // namespace ZEP::Overmarks
