// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/cast/ADRCharacterMap.h"
#include "event/Event.h"

#include <juce_core/juce_core.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <numeric>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZEP::Overmarks
{

/** A timecode text that compares as the text does, without being a string on the heap. */
class TimecodeKey final
{
public:
    TimecodeKey() = default;

    static TimecodeKey startOf (const Event& event);
    static TimecodeKey endOf (const Event& event);

    bool operator<(const TimecodeKey& other) const noexcept;
    bool operator== (const TimecodeKey&) const = default;

private:
    // Room for hours of any number of digits; what is not used stays zero.
    std::array<char, 24> characters {};
};

/** Orders the events by keys that are made once for each, equal ones staying as they stand.
    @param keyOf   makes the key of an event
    @param before  whether one key goes before another; a strict weak order */
template <typename KeyOf, typename Before>
void stableSortByKeys (std::vector<std::shared_ptr<Event>>& events, KeyOf keyOf, Before before)
{
    using Key = std::invoke_result_t<KeyOf, const Event&>;
    std::vector<Key> keys;
    keys.reserve (events.size());

    for (const auto& event : events)
        keys.push_back (keyOf (*event));

    if (std::is_sorted (keys.begin(), keys.end(), before))
        return;

    std::vector<std::size_t> order (events.size());
    std::iota (order.begin(), order.end(), std::size_t { 0 });
    std::stable_sort (order.begin(), order.end(), [&] (auto a, auto b) { return before (keys[a], keys[b]); });

    std::vector<std::shared_ptr<Event>> sorted;
    sorted.reserve (events.size());

    for (const auto index : order)
        sorted.push_back (std::move (events[index]));

    events.swap (sorted);
}

/** The order of a cue table under one sort column and direction.

    Keys are made once for each event of a sort; comparing two keys gives the order that comparing the texts of the cells
    would give. Two orders come out of the same keys: goesBefore() is the rule of the column for two events, as a table
    asks it; sort() needs an order that holds together over a whole list, so there an event with only one of its two times
    has a fixed place instead of one that depends on its neighbour.

    For one use on one thread; the events must not change while it lives. */
class EventSortOrder final
{
public:
    EventSortOrder (const juce::String& sortKey, bool descending);

    /** Whether `a` goes before `b`. */
    bool goesBefore (const Event& a, const Event& b) const;

    /** Orders the events, equal ones staying as they stand. */
    void sort (std::vector<std::shared_ptr<Event>>& events) const;

private:
    enum class Column
    {
        start,
        end,
        number,
        text,
        cueNumber,
        character,
        characterData,
        plainStart ///< any other key: by start timecode alone
    };

    /** What one event is compared by; which members count depends on the column. */
    struct Key
    {
        TimecodeKey timecode;
        juce::String
            text; ///< text of the cell, cue number of an event without a time, or name of the character
        double number = 0.0;
        bool hasInPoint = false;
        bool hasTime = false; ///< the time of the column is set
        bool hasCharacter = false;
    };

    Key keyFor (const Event& event) const;
    void fillTimeKey (Key& key, const Event& event) const;
    void fillCharacterKey (Key& key, const Event& event) const;

    bool goesBefore (const Key& a, const Key& b) const;
    bool startsBefore (const Key& a, const Key& b) const;
    bool startsBeforeInWholeList (const Key& a, const Key& b) const;
    bool endsBefore (const Key& a, const Key& b) const;
    bool cueNumberBefore (const Key& a, const Key& b) const;
    bool speaksBefore (const Key& a, const Key& b) const;
    bool castBefore (const Key& a, const Key& b) const;

    template <typename Value>
    bool inDirection (const Value& a, const Value& b) const
    {
        return descending ? b < a : a < b;
    }

    bool descending;
    Column column = Column::start;
    double (*numberOf) (const Event&) = nullptr;
    juce::String (*textOf) (const Event&) = nullptr;
    std::shared_ptr<ZEP::Core::ADRCharacterMap> characters;
};

} // namespace ZEP::Overmarks
