// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/cast/ADRCharacterMap.h"
#include "event/Event.h"
#include "list/EventPlace.h"
#include "list/TextKey.h"

#include <juce_core/juce_core.h>

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
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

    auto operator<=> (const TimecodeKey&) const = default;

    /** Never higher for a text that goes before another; for no text 0 or the highest number there is. */
    std::uint64_t rank() const { return characters.front(); }

private:
    explicit TimecodeKey (std::string_view timecode) noexcept;
    static TimecodeKey keyAt (int frameIndex, const Event& event,
                              std::size_t (Event::*writeText) (char*) const);

    // Four bits a character, the first one highest. Hours may have any number of digits; what is not used stays zero.
    std::array<std::uint64_t, 2> characters {};
};

/** What lists order and filter an event by without looking at its texts. */
struct EventTimes
{
    explicit EventTimes (const Event& event)
        : start (TimecodeKey::startOf (event)),
          startFrame (event.getStartFrameIndex()),
          inPoint (event.getInPointFrameIndex()),
          endFrame (event.getEndFrameIndex()),
          type (event.getType()),
          isHidden (event.isHiddenByFilter())
    {
    }

    bool hasInPoint() const { return inPoint != -1; }

    TimecodeKey start;
    int startFrame;
    int inPoint;
    int endFrame;
    EventType type;
    bool isHidden;
};

struct RankedPlace;

/** The times of all events of a list, one beside the other, so that its orders and its filter needn't look for them in the events
    again. Good until the list changes. */
class ListedTimes final
{
public:
    explicit ListedTimes (const std::vector<std::shared_ptr<Event>>& events);

    /** Orders the events, those of the constructor, by the texts of their start timecodes. */
    void sort (std::vector<std::shared_ptr<Event>>& events);

    /** @param place  in that list */
    const EventTimes& of (EventPlace place) const { return times[static_cast<std::size_t> (place - first)]; }

    /** Orders events of that list as EventArray::sortFilteredEventsByTimecode() does. */
    void sort (std::vector<EventPlace>& listed) const;

    /** That order for rearrange(). */
    std::vector<RankedPlace> orderOf (const std::vector<EventPlace>& listed) const;

private:
    std::vector<EventTimes> times;
    EventPlace first;
};

/** Orders events by the texts of their start timecodes. */
void sortByStart (std::vector<std::shared_ptr<Event>>& events);

/** Orders events by timecode, those without a time first. */
void sortByTimecode (std::vector<std::shared_ptr<Event>>& events);

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

    /** Orders events of a list. @param times  those of that list */
    void sort (std::vector<EventPlace>& listed, const ListedTimes& times) const;

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
        TextKey text; ///< text of the cell, cue number, or name of the character
        double number = 0.0;
        bool hasInPoint = false;
        bool hasTime = false; ///< the time of the column is set
        bool hasCharacter = false;
    };

    /** Texts that only a sort has made. They stay where they are. */
    using MadeTexts = std::deque<std::string>;

    Key keyFor (const Event& event, const EventTimes& times, MadeTexts& made) const;
    static Key startKeyFor (const Event& event, const EventTimes& times);
    static Key endKeyFor (const Event& event);
    static TextKey cueNumberKeyFor (const Event& event, MadeTexts& made);
    void fillCharacterKey (Key& key, const Event& event, const EventTimes& times) const;

    bool needsTimesAlone() const { return column == Column::start || column == Column::plainStart; }
    const juce::String* stringOf (const Event& event) const;
    template <typename Item, typename TimesOf>
    void sortByKeys (std::vector<Item>& events, TimesOf timesOf) const;

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

    bool descending;
    Column column = Column::start;
    double (*numberOf) (const Event&) = nullptr;
    const juce::String& (*textOf) (const Event&) = nullptr;
    std::shared_ptr<ZEP::Core::ADRCharacterMap> characters;
};

} // namespace ZEP::Overmarks
