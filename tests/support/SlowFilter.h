// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/Event.h"
#include "list/EventArray.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <set>
#include <vector>

namespace ZEP::Overmarks::Testing
{

/** What a filter asks for; empty texts ask for nothing. */
struct FilterQuestion
{
    juce::String character, actor, text, cueNumber;
    int neighbours = 0;
};

/** The filter of a list said as a rule for one event at a time, slowly: it looks at the whole list for each event.

    Every event is a fade, one that belongs to the matching ADR cue before it, a match, or a miss. Listed are the second and
    third, and each miss that is near a match: fewer than `neighbours` misses lie between it and the match before it, or
    fewer than `neighbours` misses and nothing that belongs to a cue between it and the match behind it. */
class SlowFilter final
{
public:
    SlowFilter (const EventArray::Events& eventsByTimecode, const FilterQuestion& whatIsAsked)
        : events (eventsByTimecode),
          question (whatIsAsked)
    {
        for (std::size_t i = 0; i < events.size(); ++i)
            kinds.push_back (kindOf (i));
    }

    /** The listed ones, in the order of the whole list. */
    EventArray::Events listed() const
    {
        EventArray::Events result;
        for (std::size_t i = 0; i < events.size(); ++i)
            if (kinds[i] == Kind::match || kinds[i] == Kind::belongsToCue || isNeighbour (i))
                result.push_back (events[i]);
        return result;
    }

    /** Those that are listed only as neighbours. */
    std::set<const Event*> dimmed() const
    {
        std::set<const Event*> result;
        for (std::size_t i = 0; i < events.size(); ++i)
            if (isNeighbour (i))
                result.insert (events[i].get());
        return result;
    }

private:
    enum class Kind
    {
        fade,
        belongsToCue,
        match,
        miss
    };

    bool matches (const Event& event) const
    {
        const auto character = event.character();
        const auto holds = [] (const juce::String& whole, const juce::String& part)
        { return part.isEmpty() || whole.indexOf (part) >= 0; };
        return (question.character.isEmpty()
                || (character != nullptr && character->name == question.character))
               && (question.actor.isEmpty() || (character != nullptr && character->actor == question.actor))
               && holds (event.getText().getText(), question.text)
               && holds (event.getCueNumber(), question.cueNumber);
    }

    /** Looks back for the last matching ADR cue; before the first one, what has no in point belongs. */
    bool liesInTheMatchingCueBefore (std::size_t place) const
    {
        const int inPoint = events[place]->getInPointFrameIndex();
        for (std::size_t i = place; i-- > 0;)
            if (kinds[i] == Kind::match && events[i]->getType() == EventTypeADRCue)
                return events[i]->getInPointFrameIndex() <= inPoint
                       && inPoint <= events[i]->getEndFrameIndex();
        return inPoint == -1;
    }

    Kind kindOf (std::size_t place) const
    {
        const auto type = events[place]->getType();
        if (type == EventTypeFadeIn || type == EventTypeFadeOut)
            return Kind::fade;
        if ((type == EventTypeStreamer || type == EventTypeFlutter) && liesInTheMatchingCueBefore (place))
            return Kind::belongsToCue;
        return matches (*events[place]) ? Kind::match : Kind::miss;
    }

    bool isNeighbour (std::size_t place) const
    {
        return kinds[place] == Kind::miss && (followsMatch (place) || precedesMatch (place));
    }

    bool followsMatch (std::size_t place) const
    {
        int misses = 0;
        for (std::size_t i = place; i-- > 0;)
        {
            if (kinds[i] == Kind::match)
                return misses < question.neighbours;
            misses += kinds[i] == Kind::miss ? 1 : 0;
        }
        return false;
    }

    bool precedesMatch (std::size_t place) const
    {
        int misses = 0;
        for (std::size_t i = place + 1; i < events.size() && kinds[i] != Kind::belongsToCue; ++i)
        {
            if (kinds[i] == Kind::match)
                return misses < question.neighbours;
            misses += kinds[i] == Kind::miss ? 1 : 0;
        }
        return false;
    }

    const EventArray::Events& events;
    FilterQuestion question;
    std::vector<Kind> kinds;
};

} // namespace ZEP::Overmarks::Testing
