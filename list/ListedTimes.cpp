// SPDX-License-Identifier: GPL-3.0-only
#include "list/ListedTimes.h"

#include "core/system/SystemUtility.h"
#include "list/TextKey.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <numeric>
#include <optional>

namespace ZEP::Overmarks
{

using ZEP::Core::SystemUtility;

namespace
{

/** For keys of a single rank. */
std::optional<std::uint64_t> onlyRank (std::size_t rank, std::uint64_t number)
{
    return rank == 0 ? std::optional (number) : std::nullopt;
}

// Texts of dashes come first: "-" sorts below the digits.
RankedPlaces orderByStart (const ScratchVector<EventTimes>& times)
{
    return stableOrderOf (
        times, [] (const EventTimes& each, std::size_t rank) { return onlyRank (rank, each.start.rank()); },
        [] (const EventTimes& a, const EventTimes& b) { return a.start < b.start; });
}

ScratchVector<EventTimes> timesOf (const std::vector<std::shared_ptr<Event>>& events,
                                   const FilterTexts& texts)
{
    ScratchVector<EventTimes> times;
    times.reserve (events.size());
    TimecodeKeys keys;
    constexpr std::size_t together =
        8; // three lines of memory of each, and two of the text that a filter looks at
    visitAhead<together> (
        events, [&] (const auto& event) { times.emplace_back (*event, keys, texts.letsThrough (*event)); },
        [] (const Event& event) { event.fetch(); }, [&] (const Event& event) { texts.fetchTexts (event); });
    return times;
}

} // namespace

void sortByStart (std::vector<std::shared_ptr<Event>>& events)
{
    rearrange (events, orderByStart (timesOf (events, {})));
}

ListedTimes::ListedTimes (const std::vector<std::shared_ptr<Event>>& events, const FilterTexts& texts)
    : times (timesOf (events, texts)),
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

RankedPlaces ListedTimes::orderOf (const EventPlaces& listed) const
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
                 each.hasInPoint() ? TextKey() : TextKey ((*place)->getCueNumber().getCharPointer()) };
    };

    if (std::is_sorted (listed.begin(), listed.end(),
                        [&] (EventPlace a, EventPlace b) { return before (keyFor (a), keyFor (b)); }))
        return {}; // as mostly: then no key needs a place in the memory

    ScratchVector<Key> keys;
    keys.reserve (listed.size());
    std::transform (listed.begin(), listed.end(), std::back_inserter (keys), keyFor);
    return stableOrderOf (keys, rankOf, before);
}

void ListedTimes::sort (EventPlaces& listed) const { rearrange (listed, orderOf (listed)); }

void sortByTimecode (std::vector<std::shared_ptr<Event>>& events)
{
    EventPlaces listed;
    listed.resize (events.size());
    std::iota (listed.begin(), listed.end(), events.data());
    rearrange (events, ListedTimes (events).orderOf (listed));
}

} // namespace ZEP::Overmarks
