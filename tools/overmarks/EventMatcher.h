// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/EventAttribute.h"

#include <juce_core/juce_core.h>

#include <functional>
#include <string>
#include <vector>

namespace overmarks
{

/** A condition that a user puts to events: "KEY=VALUE", where the value means what it means when it is set, so words and
    numbers of types, reasons and flags are the same, or "KEY~PART", a part of the cell's text in large or small letters. */
class EventMatcher final
{
public:
    /** @param option  whose condition this is, for messages. Throws WrongUsage for one that can't be understood */
    EventMatcher (const std::string& option, const std::string& condition);

    /** Throws CommandFailure for a cue reason that the project doesn't have. */
    bool matches (ZEP::Overmarks::Event& event) const { return test (event); }

private:
    using Test = std::function<bool (ZEP::Overmarks::Event&)>;

    Test test;
};

/** The event fulfils all conditions; none at all let everything through. */
bool matchesAll (const std::vector<EventMatcher>& conditions, ZEP::Overmarks::Event& event);

} // namespace overmarks
