// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "event/Event.h"

#include <juce_core/juce_core.h>

#include <set>

namespace ZEP::Overmarks
{

/** How much one character has to speak, as the trade counts it: an ADR cue is a line, and all lines under one cue number are one
    cue. Every overview of a list counts by this class, so that no two of them differ.

    The rule that is easily missed: an empty cue number is a number as any other, and the cues of several characters are added,
    since each of them comes into the studio for his own. Streamers, flutters, markers and fades are no lines. One thread at a
    time. */
class OVERMARKS_API LineCount final
{
public:
    /** Whether the event is a line of dialogue, disabled or not. */
    [[nodiscard]] static bool isLine (const Event& event) noexcept
    {
        return event.getType() == EventTypeADRCue;
    }

    /** Counts one event of the character if it is a line; any other changes nothing. */
    void add (const Event& event);

    [[nodiscard]] int lines() const noexcept { return numberOfLines; } ///< All that were added.
    [[nodiscard]] int done() const noexcept { return numberOfDone; }   ///< Those of them that are recorded.
    /** Different cue numbers among them. */
    [[nodiscard]] int cues() const noexcept { return static_cast<int> (cueNumbers.size()); }

    /** Share of the lines that is done, from 0 to 1; 0 if there are none. */
    [[nodiscard]] float doneRatio() const noexcept;

private:
    int numberOfLines = 0;
    int numberOfDone = 0;
    std::set<juce::String> cueNumbers;
};

} // namespace ZEP::Overmarks
