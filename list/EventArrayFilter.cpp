// SPDX-License-Identifier: GPL-3.0-only
// Which events of the list the filter lets through.
#include "list/EventArray.h"

#include "list/EventArrayNews.h"
#include "preferences/PreferenceKeys.h"

#include <cstring>
#include <deque>
#include <unordered_set>

namespace ZEP::Overmarks
{

namespace
{

/** In UTF-8 a text holds a part if its bytes do. */
bool contains (const juce::String& whole, const juce::String& part)
{
    return part.isEmpty() || std::strstr (whole.toRawUTF8(), part.toRawUTF8()) != nullptr;
}

/** The four texts that an event has to match; an empty one matches everything. */
struct FilterTexts
{
    juce::String character;
    juce::String text;
    juce::String cueNumber;
    juce::String actor;

    /** Asks the memory for what letsThrough() is going to read. */
    void fetch (const Event& event) const
    {
        if (text.isNotEmpty())
            __builtin_prefetch (event.getText().getText().toRawUTF8());
        if (cueNumber.isNotEmpty())
            __builtin_prefetch (event.getCueNumber().toRawUTF8());
    }

    bool letsThrough (const Event& event) const
    {
        if (! contains (event.getText().getText(), text) || ! contains (event.getCueNumber(), cueNumber))
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
    FilterWalk (FilterTexts textsToMatch, int numberOfNeighbours, std::vector<EventPlace>& result)
        : texts (std::move (textsToMatch)),
          numAdjacent (numberOfNeighbours),
          listed (result)
    {
    }

    void visit (const std::shared_ptr<Event>& listedEvent)
    {
        const auto place = &listedEvent;
        const auto& event = *listedEvent;
        listedEvent->setHiddenByFilter (false);

        if (event.getType() == EventTypeFadeIn || event.getType() == EventTypeFadeOut)
            return;

        if (belongsToMatchingCue (event))
        {
            listed.push_back (place);
            waiting.clear();
        }
        else if (texts.letsThrough (event))
            take (place);
        else
            keepAsNeighbour (place);
    }

private:
    bool belongsToMatchingCue (const Event& event) const
    {
        const bool isStreamerOrFlutter =
            event.getType() == EventTypeStreamer || event.getType() == EventTypeFlutter;
        return isStreamerOrFlutter && event.getInPointFrameIndex() >= cueStart
               && event.getInPointFrameIndex() <= cueEnd;
    }

    void take (EventPlace place)
    {
        for (const auto neighbour : waiting)
            listAsNeighbour (neighbour);

        waiting.clear();
        listed.push_back (place);
        remaining = numAdjacent;

        if (const auto& event = **place; event.getType() == EventTypeADRCue)
        {
            cueStart = event.getInPointFrameIndex();
            cueEnd = event.getEndFrameIndex();
        }
    }

    void keepAsNeighbour (EventPlace place)
    {
        if (remaining >= 1)
        {
            listAsNeighbour (place);
            --remaining;
        }

        if (numAdjacent < 1)
            return;

        waiting.push_back (place);

        if (static_cast<std::int64_t> (waiting.size()) > numAdjacent)
            waiting.pop_front();
    }

    void listAsNeighbour (EventPlace place)
    {
        (*place)->setHiddenByFilter (true);

        if (alreadyAdded.insert (place->get()).second)
            listed.push_back (place);
    }

    const FilterTexts texts;
    const std::int64_t numAdjacent;
    std::vector<EventPlace>& listed;
    std::deque<EventPlace> waiting;
    std::unordered_set<const Event*> alreadyAdded;
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
    std::vector<EventPlace> listed;
    filterInto (listed);

    for (const auto place : listed)
        filteredEvents.push_back (*place);

    sortFilteredEventsByTimecode();
}

void EventArray::filterInto (std::vector<EventPlace>& listed)
{
    const int numAdjacent = filterValue (EventNumAdjacentCuesKey).getIntValue();
    const FilterTexts texts { filterValue (EventCharacterFilterKey), filterValue (EventTextFilterKey),
                              filterValue (EventCueNumberFilterKey), filterValue (EventActorFilterKey) };
    FilterWalk walk (texts, numAdjacent, listed);
    visitAhead (
        events, [&walk] (const auto& event) { walk.visit (event); },
        [&texts] (const Event& event) { texts.fetch (event); });
}

} // namespace ZEP::Overmarks
