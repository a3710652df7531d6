// SPDX-License-Identifier: GPL-3.0-only
// What the times of a single event, or the cells that they come from, may have wrong.
#include "quality/ListCheck.h"

#include "core/timecode/TCToolbox.h"

#include <cstdint>
#include <optional>

namespace overmarks
{

using namespace ZEP::Overmarks;
using ZEP::Core::TCToolbox;
using ZEP::Core::TimeInfo;

namespace
{

constexpr int unset = -1;
constexpr int lastHour = 23;

// ---- cells of the file ---------------------------------------------------------------------------------------------------

/** The rule that a refused cell breaks; none for a cell that isn't a time. */
std::optional<CheckRule> ruleOf (EventRowProblemKind kind)
{
    switch (kind)
    {
        case EventRowProblemKind::other: break;
        case EventRowProblemKind::noTimecode:
        case EventRowProblemKind::endWithoutStart: return CheckRule::tcInvalid;
        case EventRowProblemKind::droppedTimecode: return CheckRule::dropFrameIllegal;
        case EventRowProblemKind::beforePicture: return CheckRule::beforeOrigin;
        case EventRowProblemKind::endBeforeStart: return CheckRule::endBeforeStart;
    }

    return std::nullopt;
}

bool isFade (const Event& event)
{
    return event.getType() == EventTypeFadeIn || event.getType() == EventTypeFadeOut;
}

/** What the event has for the refused cell is the import's making: no time at all without a start, else an end. */
void addCell (CheckedList& list, const CellProblem& cell, CheckRule rule)
{
    if (cell.event->getInPointFrameIndex() == unset)
        list.settleTimes (*cell.event);
    else
        list.doubtEnd (*cell.event);

    const auto place = cell.problem.column == "Start TC" ? "the start " : "the end ";

    if (list.isChecked (*cell.event))
        list.add (rule, cell.event,
                  "Row " + juce::String (cell.problem.row) + ": " + place + cell.problem.message);
}

// ---- events --------------------------------------------------------------------------------------------------------------

/** A fade and a streamer are a point of the picture. */
bool hasLength (const Event& event)
{
    return event.getType() == EventTypeADRCue || event.getType() == EventTypeMarker
           || event.getType() == EventTypeFlutter;
}

bool isBehindMidnight (int frame, const TimeInfo& info)
{
    return TCToolbox::tcTimeForFrameIndex (frame, info).hours > lastHour;
}

juce::String originInWords (const TimeInfo& info)
{
    return TCToolbox::stringFromTCTime (info.timeOrigin, info.tcDef.dropFrame);
}

/** Why there is no telling where the event is; empty if it has a start and an end. */
juce::String whatIsMissing (const Event& event)
{
    const bool hasStart = event.getInPointFrameIndex() != unset;
    const bool hasEnd = event.getEndFrameIndex() != unset;

    if (! hasStart && ! hasEnd)
        return "It has no timecode";
    if (! hasStart)
        return "It has an end, but no start";
    if (! hasEnd)
        return "It has a start, but no end";

    return {};
}

void checkPlace (CheckedList& list, const std::shared_ptr<Event>& event)
{
    const auto& info = *list.project.timeInfo;

    if (event->getInPointFrameIndex() < 0 || event->getEndFrameIndex() < 0)
        list.add (CheckRule::beforeOrigin, event,
                  "It begins at " + event->getStartTCString() + ", and the picture at "
                      + originInWords (info));

    if (isBehindMidnight (event->getInPointFrameIndex(), info))
        list.add (CheckRule::tcInvalid, event,
                  "The start " + event->getStartTCString() + " is beyond the last hour of timecode, 23");
    else if (isBehindMidnight (event->getEndFrameIndex(), info))
        list.add (CheckRule::tcInvalid, event,
                  "The end " + event->getEndTCString() + " is beyond the last hour of timecode, 23");
}

void checkLength (CheckedList& list, const std::shared_ptr<Event>& event)
{
    const auto length = lengthOf (*event);

    if (length < 0)
        list.add (CheckRule::endBeforeStart, event,
                  "It ends at " + event->getEndTCString() + ", before it begins at "
                      + event->getStartTCString());
    else if (length == 0 && hasLength (*event))
        list.add (CheckRule::zeroLength, event, "It begins and ends at " + event->getStartTCString());
}

/** How long a line lasts says something of cues alone: markers may stand for a reel, and flutters for a frame. */
void checkDuration (CheckedList& list, const std::shared_ptr<Event>& event)
{
    if (event->getType() != EventTypeADRCue || ! list.hasStretch (*event))
        return;

    const auto& limits = list.order.limits;
    const auto seconds = secondsOf (lengthOf (*event), list.project.timeInfo->tcDef);
    const auto lasts = "It lasts " + inSeconds (seconds) + ", ";

    if (seconds < limits.minSeconds)
        list.add (CheckRule::tooShort, event, lasts + "less than " + shortNumber (limits.minSeconds));
    if (seconds > limits.maxSeconds)
        list.add (CheckRule::tooLong, event, lasts + "more than " + shortNumber (limits.maxSeconds));
}

} // namespace

std::vector<Problem> checkCells (CheckedList& list, const std::vector<CellProblem>& cells)
{
    std::vector<Problem> others;

    for (const auto& cell : cells)
    {
        const auto rule = ruleOf (cell.kind);

        if (rule.has_value() && cell.event != nullptr && ! isFade (*cell.event))
            addCell (list, cell, *rule);
        else
            others.push_back (cell.problem);
    }

    return others;
}

void checkTimes (CheckedList& list)
{
    for (const auto& event : list.shown())
    {
        if (! list.isChecked (*event) || list.areTimesSettled (*event))
            continue;

        if (const auto missing = whatIsMissing (*event); missing.isNotEmpty())
        {
            list.add (CheckRule::tcInvalid, event, missing);
            continue;
        }

        checkPlace (list, event);

        if (! list.isEndDoubtful (*event))
            checkLength (list, event);

        checkDuration (list, event);
    }
}

} // namespace overmarks
