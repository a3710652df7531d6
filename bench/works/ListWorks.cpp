// SPDX-License-Identifier: GPL-3.0-only
// What a table does between two key strokes: sort, filter, take an edit in.
#include "SeasonLists.h"
#include "Works.h"

#include "event/EventKeyValueEditor.h"
#include "preferences/PreferenceKeys.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <vector>

namespace bench
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;
using KV = EventKeyValueEditor;

namespace
{

long long numberShown (const Project& project)
{
    return static_cast<long long> (project.list->sortedFilteredEvents.size());
}

/** A list that has just been read, in no order. */
WorkDone sortBy (const WorkOrder& order, const juce::String& key)
{
    const auto project = projectOfTable (order.list ("shuffled.csv"));
    project.list->sortKey = key;
    const auto seconds = secondsOf ([&] { project.list->sortContentAndUpdateFilteredEvents(); });
    const auto& shown = project.list->sortedFilteredEvents;

    if (! std::is_sorted (shown.begin(), shown.end(),
                          [&project] (const auto& a, const auto& b)
                          { return project.list->sortEventsBySortKey (a, b); }))
        giveUp ("the list isn't in order");

    return { seconds, numberShown (project) };
}

WorkDone sortByTime (const WorkOrder& order) { return sortBy (order, KV::KV_StartTCString); }
WorkDone sortByCueNumber (const WorkOrder& order) { return sortBy (order, KV::KV_CueNumber); }

/** Frames that are known, and nothing but to put them in order. */
WorkDone sortPreparedKeys (const WorkOrder& order)
{
    const auto project = projectOfTable (order.list ("shuffled.csv"));
    std::vector<std::pair<long long, const Event*>> keys;

    for (const auto& event : project.list->events)
        if (event != project.list->fadeInEvent && event != project.list->fadeOutEvent)
            keys.emplace_back (event->getInPointFrameIndex(), event.get());

    const auto seconds = secondsOf (
        [&]
        {
            std::stable_sort (keys.begin(), keys.end(),
                              [] (const auto& a, const auto& b) { return a.first < b.first; });
        });
    return { seconds, static_cast<long long> (keys.size()) };
}

Project shownList (const WorkOrder& order)
{
    auto project = projectOfTable (order.list ("list.csv"));
    project.list->sortContentAndUpdateFilteredEvents();
    return project;
}

WorkDone filterByText (const WorkOrder& order)
{
    const auto project = shownList (order);
    const auto seconds = secondsOf (
        [&] {
            project.list->setFilterParameters ({ { EventTextFilterKey, filteredWords } });
        });
    return { seconds, numberShown (project) };
}

/** All texts in one piece, and where each begins. */
WorkDone onePassOverTexts (const WorkOrder& order)
{
    std::string texts;
    std::vector<std::size_t> starts;

    for (const auto& row : seasonRows (order.rows))
    {
        starts.push_back (texts.size());
        texts += row[2] + '\n';
    }

    std::vector<std::size_t> found;
    const auto seconds = secondsOf (
        [&]
        {
            const char* const end = texts.data() + texts.size();

            for (const char* place = texts.data(); place < end;)
            {
                const auto* const match =
                    static_cast<const char*> (::memmem (place, static_cast<std::size_t> (end - place),
                                                        filteredWords, std::strlen (filteredWords)));

                if (match == nullptr)
                    break;

                const auto next = std::upper_bound (starts.begin(), starts.end(),
                                                    static_cast<std::size_t> (match - texts.data()));
                found.push_back (static_cast<std::size_t> (next - starts.begin()) - 1);
                place = next == starts.end() ? end : texts.data() + *next;
            }
        });
    return { seconds, static_cast<long long> (found.size()) };
}

/** A user who changes a cue and goes on to another one; the middle one of several such edits counts. @param key  of the column that
    the list is sorted by. @param change  gets the cue, another one and the number of the edit */
template <typename Change>
WorkDone edit (const WorkOrder& order, const juce::String& key, Change change)
{
    constexpr std::size_t edits = 9;
    const auto project = projectOfTable (order.list ("list.csv"));
    project.list->sortKey = key;
    project.list->sortContentAndUpdateFilteredEvents();
    const auto& shown = project.list->sortedFilteredEvents;
    std::vector<double> times;

    for (std::size_t i = 0; i < edits; ++i)
    {
        const auto event = shown[shown.size() * i / edits],
                   other = shown[shown.size() * (i + 1) / (edits + 1)];
        times.push_back (secondsOf (
            [&]
            {
                change (event, *other, static_cast<int> (i));
                project.list->sortContentAndUpdateFilteredEvents();
            }));
    }

    std::sort (times.begin(), times.end());
    return { times[edits / 2], numberShown (project) };
}

void typeText (const std::shared_ptr<Event>& event, const Event&, int number)
{
    EventKeyValueEditor (event).setValueForKey (RichTextString ("never said " + juce::String (number)),
                                                KV::KV_Text, true);
}

void moveToStartOf (const std::shared_ptr<Event>& event, const Event& other, int)
{
    EventKeyValueEditor (event).setValueForKey (other.getStartTCString(), KV::KV_StartTCString, true);
}

WorkDone editInOrderOfTime (const WorkOrder& order) { return edit (order, KV::KV_StartTCString, typeText); }
WorkDone editInOrderOfText (const WorkOrder& order) { return edit (order, KV::KV_Text, typeText); }
WorkDone moveInTime (const WorkOrder& order) { return edit (order, KV::KV_StartTCString, moveToStartOf); }

constexpr Work works[] = { { "sort-time", sortByTime },           { "sort-time.floor", sortPreparedKeys },
                           { "sort-cue", sortByCueNumber },       { "filter", filterByText },
                           { "filter.floor", onePassOverTexts },  { "edit", editInOrderOfTime },
                           { "edit.by-text", editInOrderOfText }, { "edit.moving", moveInTime } };

} // namespace

std::span<const Work> worksOfLists() { return works; }

} // namespace bench
