// SPDX-License-Identifier: GPL-3.0-only
// The search over what the filter lists, and the questions about the whole list.
#include "list/EventArray.h"

#include "list/CaselessPart.h"
#include "list/LineCount.h"

#include <algorithm>
#include <map>
#include <utility>

namespace ZEP::Overmarks
{

namespace
{

using Result = std::shared_ptr<EventSearchResultProxy>;

/** What the user types into the search field. */
class SearchQuestion final
{
public:
    explicit SearchQuestion (const juce::String& searchString)
        : part (searchString),
          wholeNumber (searchString.substring (1)),
          isForWholeNumber (searchString.startsWithChar ('#'))
    {
    }

    bool matches (const Event& event) const
    {
        if (isForWholeNumber)
            return wholeNumber.isNotEmpty() && event.getCueNumber() == wholeNumber;

        return part.isIn (event.getCueNumber()) || part.isIn (event.getText().getText());
    }

private:
    CaselessPart part;
    juce::String wholeNumber;
    bool isForWholeNumber;
};

/** The lines of a cue number: an ADR cue may be cut into several events, which are spoken in one go. */
class CueGroups final
{
public:
    void add (const std::shared_ptr<Event>& event)
    {
        const auto& cueNumber = event->getCueNumber();

        if (event->getType() != EventTypeADRCue || cueNumber.isEmpty() || cueNumber == "--")
            return;

        const auto [place, isNew] = groupOf.try_emplace (cueNumber, groups.size());

        if (isNew)
            groups.emplace_back();

        groups[place->second].push_back (event);
    }

    /** Those of several lines, by cue number. */
    std::vector<EventArray::Events> takeAll()
    {
        std::erase_if (groups, [] (const auto& group) { return group.size() == 1; });
        std::sort (groups.begin(), groups.end(),
                   [] (const auto& a, const auto& b)
                   { return a.front()->getCueNumber() < b.front()->getCueNumber(); });
        return std::move (groups);
    }

private:
    std::map<juce::String, std::size_t> groupOf;
    std::vector<EventArray::Events> groups;
};

Result resultFor (const std::shared_ptr<Event>& event)
{
    auto result = std::make_shared<EventSearchResultProxy>();
    result->text = event->getText().getText();
    result->startTC = event->getStartTCString();
    result->endTC = event->getEndTCString();
    result->cueNumber = event->getCueNumber();
    result->type = event->getType();
    result->events = { event };

    if (const auto character = event->character())
    {
        result->character = character->name;
        result->actor = character->actor;
    }

    return result;
}

/** A group shows a name that all its members share; those without one have no say. */
void join (juce::String& shared, const juce::String& name)
{
    if (name.isEmpty() || name == shared)
        return;

    shared = shared.isEmpty() ? name : juce::String ("<multiple>");
}

Result resultFor (const EventArray::Events& group)
{
    auto result = resultFor (group.front());
    result->text += "...";
    result->type = CueGroupResultType;
    result->character = {};
    result->actor = {};

    for (const auto& event : group)
        if (const auto character = event->character())
        {
            join (result->character, character->name);
            join (result->actor, character->actor);
        }

    result->events = group;
    return result;
}

/** By in point, a group before the rows of its members. */
void sortByInPoint (std::vector<Result>& results)
{
    struct Row
    {
        int inPoint;
        bool isSingle;
        Result result;
    };

    std::vector<Row> rows;
    rows.reserve (results.size());

    for (auto& result : results)
    {
        const int inPoint = result->events.front()->getInPointFrameIndex();
        const bool isSingle = result->events.size() == 1;
        rows.push_back ({ inPoint, isSingle, std::move (result) });
    }

    std::stable_sort (rows.begin(), rows.end(),
                      [] (const Row& a, const Row& b)
                      { return a.inPoint != b.inPoint ? a.inPoint < b.inPoint : a.isSingle < b.isSingle; });
    std::transform (rows.begin(), rows.end(), results.begin(),
                    [] (Row& row) { return std::move (row.result); });
}

} // namespace

std::vector<Result> EventArray::itemsForSearchString (const juce::String& searchString) const
{
    const SearchQuestion question (searchString);
    std::vector<Result> results;
    CueGroups groups;

    for (const auto& event : sortedFilteredEvents)
        if (question.matches (*event))
        {
            results.push_back (resultFor (event));
            groups.add (event);
        }

    for (const auto& group : groups.takeAll())
        results.push_back (resultFor (group));

    sortByInPoint (results);
    return results;
}

EventArray::Events EventArray::eventsWithTypeMask (int mask) const
{
    Events found;

    for (const auto& event : events)
        if ((event->getType() & mask) >= 1)
            found.push_back (event);

    return found;
}

void EventArray::adrOverviewDataForCharacter (std::shared_ptr<ZEP::Core::ADRCharacter> character,
                                              int& numberOfLines, int& numberOfCues, float& doneRatio) const
{
    LineCount count;

    for (const auto& event : events)
        if (LineCount::isLine (*event) && event->character() == character)
            count.add (*event);

    numberOfLines = count.lines();
    numberOfCues = count.cues();
    doneRatio = count.doneRatio();
}

} // namespace ZEP::Overmarks
