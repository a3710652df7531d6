// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/cast/ADRCharacterMap.h"
#include "event/Event.h"
#include "list/EventPlace.h"
#include "list/FormerOrder.h"
#include "list/ListedTimes.h"
#include "list/StableSort.h"
#include "list/TextKey.h"
#include "list/TimecodeKey.h"

#include <juce_core/juce_core.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ZEP::Overmarks
{

/** The order of a cue table under one sort column and direction.

    Keys are made once for each event of a list that is sorted anew; comparing two keys gives the order that comparing the texts of the cells
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

    /** Whether events of a list stand in this order, as far as that is seen from their times alone: false of an order by anything else.
        @param times  those of that list */
    bool isHeldByTimes (const EventPlaces& listed, const ListedTimes& times) const;

    /** Events of a list that isHeldByTimes() has found in another order, in this one.
        @param former  the order that was found the last time; becomes the one that is found now
        @param before  the events as they were listed then */
    EventPlaces sorted (const EventPlaces& listed, const ListedTimes& times, FormerOrder& former,
                        const std::vector<std::shared_ptr<Event>>& before) const;

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
    struct Key : SortCell
    {
        TextKey textKey; ///< of the text of the cell
    };

    /** What one walk through events needs to make their keys. */
    struct Making
    {
        TimecodeKeys timecodes;
        std::deque<std::string> texts; ///< that only the sort has made; they stay where they are
    };

    template <typename TimesOf>
    SortCell cellOf (const Event& event, TimesOf timesOf, Making& making) const;
    static SortCell startCellOf (const Event& event, const EventTimes& times);
    static SortCell endCellOf (const Event& event, Making& making);
    SortCell characterCellOf (const Event& event) const;
    Key keyOf (const SortCell& cell, Making& making) const;

    bool needsTimesAlone() const { return column == Column::start || column == Column::plainStart; }
    const juce::String* stringOf (const Event& event) const;
    template <typename Items, typename Visit>
    void visitEach (const Items& events, Visit visit, bool readsTexts) const;
    RankedPlaces orderOf (const ScratchVector<Key>& keys) const;
    template <typename CellAt>
    bool follow (FormerOrder& former, const std::vector<std::shared_ptr<Event>>& before,
                 const EventPlaces& listed, CellAt cellAt, Making& making) const;
    template <typename CellAt>
    void findAnew (FormerOrder& former, const EventPlaces& listed, CellAt cellAt, Making& making) const;

    bool goesBeforeInWholeList (const Key& a, const Key& b) const;
    std::optional<std::uint64_t> rankInWholeList (const Key& key, std::size_t rank) const;
    std::uint64_t firstRankInWholeList (const Key& key) const;

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

    juce::String sortKey;
    bool descending;
    Column column = Column::start;
    std::uint32_t (*numberOf) (const Event&) = nullptr;
    const juce::String& (*textOf) (const Event&) = nullptr;
    std::shared_ptr<ZEP::Core::ADRCharacterMap> characters;
};

} // namespace ZEP::Overmarks
