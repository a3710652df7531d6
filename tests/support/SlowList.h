// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "support/CueLists.h"
#include "support/SlowFilter.h"
#include "support/SlowSortOrder.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** What an EventArray holds after each operation, said slowly: every vector made anew, every place looked for from the
    front. It shares the events with the list that it stands beside, only reads them, and knows no event twice. */
class SlowList final
{
public:
    using Events = EventArray::Events;

    Events events, listed, shown, selected, shownSelected;
    std::set<const Event*> dimmed;
    FilterQuestion filter;
    juce::String sortKey = "StartTCString";
    bool down = false;
    int applicationType = 1;
    std::vector<std::string> told;

    void refresh()
    {
        std::stable_sort (events.begin(), events.end(), startTextBefore);
        const SlowFilter answer (events, filter);
        listed = answer.listed();
        dimmed = answer.dimmed();
        std::stable_sort (listed.begin(), listed.end(),
                          [this] (const auto& a, const auto& b)
                          { return listedBefore (a, b, applicationType); });
        shown = listed;
        std::stable_sort (shown.begin(), shown.end(), SlowSortOrder (sortKey, down));
    }

    // ---- adding and removing -------------------------------------------------------------------------------------

    void append (const Events& added) { events.insert (events.end(), added.begin(), added.end()); }

    void erase (const Events& removed)
    {
        for (const auto& each : removed)
        {
            std::erase (events, each);
            std::erase (selected, each);
        }
    }

    void add (const Events& added)
    {
        append (added);
        refresh();
        told.emplace_back ("number");
    }

    void undoAdd (const Events& added)
    {
        erase (added);
        refresh();
        told.emplace_back ("number");
    }

    void remove (const Events& removed)
    {
        erase (removed);
        selected.clear();
        refresh();
        told.insert (told.end(), { "number", "selection" });
    }

    void undoRemove (const Events& removed)
    {
        append (removed);
        selected.clear();
        refresh();
        told.insert (told.end(), { "number", "selection" });
    }

    // ---- filter and selection ------------------------------------------------------------------------------------

    void setFilter (const FilterQuestion& question)
    {
        filter = question;
        refresh();
        Events kept;
        for (const auto& each : selected)
            if (std::find (listed.begin(), listed.end(), each) != listed.end())
                kept.push_back (each);
        selected = kept;
        told.insert (told.end(), { "filtered", "selection" });
    }

    void select (const Events& chosen)
    {
        if (chosen == selected)
            return;
        selected = chosen;
        shownSelected = chosen;
        std::stable_sort (shownSelected.begin(), shownSelected.end(), SlowSortOrder (sortKey, down));
        sortSelectionAndTell();
    }

    void clearSelection()
    {
        if (selected.empty())
            return;
        selected.clear();
        told.emplace_back ("selection");
    }

    /** @param direction  1 down the list, -1 up */
    void step (int direction)
    {
        if (events.size() < 3 || shown.empty())
            return;
        int place = selected.empty() ? (direction > 0 ? -1 : length()) : placeOf (selected[0]);
        for (place += direction; place >= 0 && place < length(); place += direction)
            if (! isDimmed (place))
            {
                selected = { at (place) };
                break;
            }
        told.emplace_back ("selection");
    }

    void stepByCueNumber (int direction)
    {
        if (events.size() < 3 || shown.empty())
            return;
        if (selected.empty() || selected[0]->getCueNumber().isEmpty())
        {
            step (direction);
            return;
        }
        const auto present = selected[0]->getCueNumber();
        int place = placeOf (selected[0]);
        if (direction < 0 && place == length())
            --place;
        selected.clear();
        std::optional<juce::String> wanted;
        for (; place >= 0 && place < length(); place += direction)
        {
            const auto number = at (place)->getCueNumber();
            if (isDimmed (place) || (wanted.has_value() ? number != *wanted : number == present))
                continue;
            selected.push_back (at (place));
            if (number.isNotEmpty())
                wanted = number;
        }
        sortSelectionAndTell();
    }

    void widenDown()
    {
        int lowest = -1;
        for (const auto& each : selected)
            lowest = std::max (lowest, placeOf (each));
        if (lowest < 0 || lowest + 1 >= length())
            return;
        selected.push_back (at (lowest + 1));
        sortSelectionAndTell();
    }

    void widenUp()
    {
        if (selected.empty() || shown.empty())
            return;
        int highest = length();
        for (const auto& each : selected)
            highest = std::min (highest, placeOf (each));
        selected.push_back (at (highest == 0 ? 0 : highest - 1));
        sortSelectionAndTell();
    }

private:
    int length() const { return static_cast<int> (shown.size()); }
    const std::shared_ptr<Event>& at (int place) const { return shown[static_cast<std::size_t> (place)]; }
    bool isDimmed (int place) const { return dimmed.contains (at (place).get()); }

    int placeOf (const std::shared_ptr<Event>& wanted) const
    {
        return static_cast<int> (std::find (shown.begin(), shown.end(), wanted) - shown.begin());
    }

    void sortSelectionAndTell()
    {
        std::stable_sort (selected.begin(), selected.end(), startTextBefore);
        told.emplace_back ("selection");
    }
};

} // namespace ZEP::Overmarks::Testing
