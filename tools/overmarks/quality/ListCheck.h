// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ListSource.h"
#include "quality/CheckRule.h"

#include "event/Event.h"
#include "list/Project.h"

#include <juce_core/juce_core.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace overmarks
{

/** Something that is wrong, or likely to be, with an event. */
struct Finding
{
    CheckRule rule;
    std::shared_ptr<ZEP::Overmarks::Event> event;
    juce::String message; ///< a sentence for the person who has made the list
};

/** What is checked, and how. */
struct CheckOrder
{
    CheckRuleSet rules;
    CheckLimits limits;
    bool withDisabled = false;
};

/** A list as it is being checked.

    Events that the filter hides count where an event is compared with others, since a cue overlaps also with one that isn't
    shown, but what is found belongs to a shown event. Disabled events are left out unless the order says otherwise; only what
    documents would lose is told of them as well, because documents hold them. The fades are never looked at. */
class CheckedList final
{
public:
    using Events = ZEP::Overmarks::EventArray::Events;

    CheckedList (const ZEP::Overmarks::Project& project, const CheckOrder& order);

    const ZEP::Overmarks::Project& project;
    const CheckOrder& order;

    bool looksFor (CheckRule rule) const { return order.rules.count (rule) > 0; }
    bool isChecked (const ZEP::Overmarks::Event& event) const;

    /** All events that the filter lets through, in the order of the list that the user sees. */
    const Events& shown() const { return project.list->sortedFilteredEvents; }

    /** The ADR cues of the whole list that are checked, by timecode. */
    Events cues() const;

    /** The end of this event was made up on import, because what stands in the file is no end. */
    void doubtEnd (const ZEP::Overmarks::Event& event) { doubtfulEnds.insert (&event); }
    bool isEndDoubtful (const ZEP::Overmarks::Event& event) const { return doubtfulEnds.count (&event) > 0; }

    /** Whether the times of the event are a stretch of the picture: both set, one behind the other. */
    bool hasStretch (const ZEP::Overmarks::Event& event) const;

    /** Nothing more is to be said of the event's times. */
    void settleTimes (const ZEP::Overmarks::Event& event) { settled.insert (&event); }
    bool areTimesSettled (const ZEP::Overmarks::Event& event) const { return settled.count (&event) > 0; }

    /** Keeps what was found, if the rule is looked for and the event is shown.
        @param other  the other event that it's about: gets the finding where the first is not shown */
    void add (CheckRule rule, const std::shared_ptr<ZEP::Overmarks::Event>& event,
              const juce::String& message, const std::shared_ptr<ZEP::Overmarks::Event>& other = nullptr);

    /** All that was found, in the order of the list. */
    std::vector<Finding> takeFindings();

private:
    std::vector<Finding> findings;
    std::unordered_map<const ZEP::Overmarks::Event*, std::size_t> places; ///< among the shown events
    std::unordered_set<const ZEP::Overmarks::Event*> doubtfulEnds;
    std::unordered_set<const ZEP::Overmarks::Event*> settled;
};

/** What was found in a list, and how much was looked at. */
struct CheckResult
{
    std::vector<Finding> findings;  ///< in the order of the list
    std::vector<Problem> problems;  ///< cells of the file that no rule is about
    std::size_t checkedEvents = 0;  ///< shown and not left out
    std::size_t disabledEvents = 0; ///< shown, but left out
};

/** Checks the events that the project's filter lets through.
    @param cells  what could not be taken over from the file, and so is no longer to be seen in the events */
CheckResult checkList (const ZEP::Overmarks::Project& project, const CheckOrder& order,
                       const std::vector<CellProblem>& cells);

// The rules, by what they look at. Each adds what it finds.

/** Cells of the file that are no times; what no rule is about is handed back. */
std::vector<Problem> checkCells (CheckedList& list, const std::vector<CellProblem>& cells);

void checkTimes (CheckedList& list);     ///< of each event
void checkLines (CheckedList& list);     ///< text, character and takes of each cue
void checkCast (CheckedList& list);      ///< cues against each other
void checkDocuments (CheckedList& list); ///< what documents would lose

/** A number with no more than two decimals. */
juce::String shortNumber (double number);

/** "1 second", "2.5 seconds". */
juce::String inSeconds (double seconds);

/** Frames from the in point to the end. */
std::int64_t lengthOf (const ZEP::Overmarks::Event& event);

/** Seconds that a number of frames lasts, at the exact rate of the picture. */
double secondsOf (std::int64_t frames, const ZEP::Core::_TCDef& def);

} // namespace overmarks
