// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/Event.h"

#include <juce_core/juce_core.h>

namespace overmarks
{

/** How it is known to which reel a line belongs. A list remembers no files that it was made from. */
enum class ReelRule
{
    hour, ///< the hour of its start, as the trade gives reel 1 the timecode 01:00:00:00, reel 2 02:00:00:00
    cueNumber, ///< what stands before the first sign in its cue number, "R2" of "R2-014"
    none       ///< there are no reels
};

/** The name of the reel that a line belongs to; empty if its time or its number doesn't tell. */
[[nodiscard]] juce::String reelOf (const ZEP::Overmarks::Event& line, ReelRule rule);

/** What a person reads where the name is empty. */
[[nodiscard]] juce::String nameOfUnknownReel (ReelRule rule);

/** Whether the event has a time at all. */
[[nodiscard]] bool hasTime (const ZEP::Overmarks::Event& event) noexcept;

} // namespace overmarks
