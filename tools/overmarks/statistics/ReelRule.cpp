// SPDX-License-Identifier: GPL-3.0-only
#include "statistics/ReelRule.h"

namespace overmarks
{

using ZEP::Overmarks::Event;

namespace
{

constexpr const char* signsInNumbers = "-_./: ";

juce::String beginningOf (const juce::String& cueNumber)
{
    const auto number = cueNumber.trim();
    const auto length = number.indexOfAnyOf (signsInNumbers);
    return length > 0 ? number.substring (0, length) : juce::String();
}

} // namespace

bool hasTime (const Event& event) noexcept
{
    return event.getStartFrameIndex() != -1 || event.getInPointFrameIndex() != -1
           || event.getEndFrameIndex() != -1;
}

juce::String reelOf (const Event& line, ReelRule rule)
{
    switch (rule)
    {
        case ReelRule::hour:
            return hasTime (line) ? line.getStartTCString().upToFirstOccurrenceOf (":", false, false)
                                  : juce::String();
        case ReelRule::cueNumber: return beginningOf (line.getCueNumber());
        case ReelRule::none: break;
    }

    return {};
}

juce::String nameOfUnknownReel (ReelRule rule) { return rule == ReelRule::hour ? "<no time>" : "<no reel>"; }

} // namespace overmarks
