// SPDX-License-Identifier: GPL-3.0-only
// Which events of the list the filter lets through.
#include "list/EventArray.h"

#include "list/EventArrayNews.h"
#include "preferences/PreferenceKeys.h"

#include <deque>
#include <unordered_set>

namespace ZEP::Overmarks
{

namespace
{

/** The four texts that an event has to match; an empty one matches everything. */
struct FilterTexts
{
    juce::String character;
    juce::String text;
    juce::String cueNumber;
    juce::String actor;

    bool letsThrough (const Event& event) const
    {
        if (text.isNotEmpty() && event.getText().getText().indexOf (text) < 0)
            return false;

        if (cueNumber.isNotEmpty() && event.getCueNumber().indexOf (cueNumber) < 0)
            return false;

        if (character.isEmpty() && actor.isEmpty())
            return true;

        const auto who = event.character();
        return who != nullptr && (character.isEmpty() || who->name == character)
               && (actor.isEmpty() || who->actor == actor);
    }
};

/** One walk through a list in the order of time, which picks what matches, its neighbours, and the streamers and flutters
    that belong to a matching cue. */
class FilterWalk final
{
public:
    FilterWalk (FilterTexts textsToMatch, int numberOfNeighbours, EventArray::Events& result)
        : texts (std::move (textsToMatch)),
          numAdjacent (numberOfNeighbours),
          listed (result)
    {
    }

    void visit (const std::shared_ptr<Event>& event)
    {
        event->setHiddenByFilter (false);

        if (event->getType() == EventTypeFadeIn || event->getType() == EventTypeFadeOut)
            return;

        if (belongsToMatchingCue (*event))
        {
            listed.push_back (event);
            waiting.clear();
        }
        else if (texts.letsThrough (*event))
            take (event);
        else
            keepAsNeighbour (event);
    }

private:
    bool belongsToMatchingCue (const Event& event) const
    {
        const bool isStreamerOrFlutter =
            event.getType() == EventTypeStreamer || event.getType() == EventTypeFlutter;
        return isStreamerOrFlutter && event.getInPointFrameIndex() >= cueStart
               && event.getInPointFrameIndex() <= cueEnd;
    }

    void take (const std::shared_ptr<Event>& event)
    {
        for (const auto& neighbour : waiting)
            listAsNeighbour (neighbour);

        waiting.clear();
        listed.push_back (event);
        remaining = numAdjacent;

        if (event->getType() == EventTypeADRCue)
        {
            cueStart = event->getInPointFrameIndex();
            cueEnd = event->getEndFrameIndex();
        }
    }

    void keepAsNeighbour (const std::shared_ptr<Event>& event)
    {
        if (remaining >= 1)
        {
            listAsNeighbour (event);
            --remaining;
        }

        if (numAdjacent < 1)
            return;

        waiting.push_back (event);

        if (static_cast<std::int64_t> (waiting.size()) > numAdjacent)
            waiting.pop_front();
    }

    void listAsNeighbour (const std::shared_ptr<Event>& event)
    {
        event->setHiddenByFilter (true);

        if (alreadyAdded.insert (event).second)
            listed.push_back (event);
    }

    const FilterTexts texts;
    const std::int64_t numAdjacent;
    EventArray::Events& listed;
    std::deque<std::shared_ptr<Event>> waiting;
    std::unordered_set<std::shared_ptr<Event>> alreadyAdded;
    std::int64_t remaining = 0;
    // Before the first matching cue the range is one frame wide, at the index of an event without a time.
    std::int64_t cueStart = -1;
    std::int64_t cueEnd = -1;
};

} // namespace

void EventArray::setFilterParameters (const std::map<juce::String, juce::String>& parameters)
{
    filterParameters = parameters;
    sortContentAndUpdateFilteredEvents();
    dropUnlistedFromSelection();
    post<EventArrayFilteredEventsChangedNotification>();
    post<EventArraySelectedEventsChangedNotification>();
}

juce::String EventArray::filterValue (const std::string& key) { return filterParameters[juce::String (key)]; }

void EventArray::updateFilteredEvents()
{
    const int numAdjacent = filterValue (EventNumAdjacentCuesKey).getIntValue();
    FilterWalk walk ({ filterValue (EventCharacterFilterKey), filterValue (EventTextFilterKey),
                       filterValue (EventCueNumberFilterKey), filterValue (EventActorFilterKey) },
                     numAdjacent, filteredEvents);

    for (const auto& event : events)
        walk.visit (event);

    sortFilteredEventsByTimecode();
}

} // namespace ZEP::Overmarks
