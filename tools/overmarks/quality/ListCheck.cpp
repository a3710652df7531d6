// SPDX-License-Identifier: GPL-3.0-only
#include "quality/ListCheck.h"

#include <algorithm>
#include <utility>

namespace overmarks
{

using namespace ZEP::Overmarks;

CheckedList::CheckedList (const Project& checkedProject, const CheckOrder& checkOrder)
    : project (checkedProject),
      order (checkOrder)
{
    places.reserve (shown().size());

    for (std::size_t i = 0; i < shown().size(); ++i)
        places.emplace (shown()[i].get(), i);
}

bool CheckedList::isChecked (const Event& event) const
{
    return (event.isEnabled() || order.withDisabled) && event.getType() != EventTypeFadeIn
           && event.getType() != EventTypeFadeOut;
}

CheckedList::Events CheckedList::cues() const
{
    Events cues;

    for (const auto& event : project.list->events)
        if (event->getType() == EventTypeADRCue && isChecked (*event))
            cues.push_back (event);

    return cues;
}

bool CheckedList::hasStretch (const Event& event) const
{
    constexpr int unset = -1;
    return event.getInPointFrameIndex() != unset && event.getEndFrameIndex() != unset
           && event.getInPointFrameIndex() < event.getEndFrameIndex() && ! isEndDoubtful (event);
}

void CheckedList::add (CheckRule rule, const std::shared_ptr<Event>& event, const juce::String& message,
                       const std::shared_ptr<Event>& other)
{
    if (! looksFor (rule))
        return;

    if (places.count (event.get()) > 0)
        findings.push_back ({ rule, event, message });
    else if (other != nullptr && places.count (other.get()) > 0)
        findings.push_back ({ rule, other, message });
}

std::vector<Finding> CheckedList::takeFindings()
{
    const auto place = [this] (const Finding& finding)
    { return std::make_pair (places.at (finding.event.get()), finding.rule); };
    std::stable_sort (findings.begin(), findings.end(),
                      [&place] (const Finding& a, const Finding& b) { return place (a) < place (b); });
    return std::move (findings);
}

CheckResult checkList (const Project& project, const CheckOrder& order, const std::vector<CellProblem>& cells)
{
    CheckedList list (project, order);
    CheckResult result;
    result.problems = checkCells (list, cells);
    checkTimes (list);
    checkLines (list);
    checkCast (list);
    checkDocuments (list);
    result.findings = list.takeFindings();

    for (const auto& event : list.shown())
        ++(list.isChecked (*event) ? result.checkedEvents : result.disabledEvents);

    return result;
}

juce::String shortNumber (double number)
{
    const auto rounded = juce::String (number, 2);
    return rounded.containsChar ('.') ? rounded.trimCharactersAtEnd ("0").trimCharactersAtEnd (".") : rounded;
}

juce::String inSeconds (double seconds)
{
    const auto number = shortNumber (seconds);
    return number + (number == "1" ? " second" : " seconds");
}

std::int64_t lengthOf (const Event& event)
{
    return std::int64_t { event.getEndFrameIndex() } - event.getInPointFrameIndex();
}

double secondsOf (std::int64_t frames, const ZEP::Core::_TCDef& def)
{
    if (def.frameRateNumerator != 0 && def.frameRateDenominator != 0)
        return static_cast<double> (frames) * def.frameRateDenominator / def.frameRateNumerator;

    constexpr int usualRate = 25;
    return static_cast<double> (frames) / (def.framesPerSecond != 0 ? def.framesPerSecond : usualRate);
}

} // namespace overmarks
