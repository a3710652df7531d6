// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <map>

namespace ZEP::Overmarks
{

/** Numbers cues in the order of time, each character prefix on its own: A0001, A0002, B0001. Characters that share a prefix
    share its numbers, and those without one the bare numbers.

    A supplement, whose reason is "SUP", repeats the number of the cue before it; the first cue of a prefix is 0001 whatever its
    reason. Past 9999 a number has more digits. */
class PrefixCueNumbers final
{
public:
    /** The number of the next cue. The reason is compared as it stands. */
    [[nodiscard]] juce::String next (const juce::String& prefix, const juce::String& reason);

private:
    std::map<juce::String, int> counts;
};

} // namespace ZEP::Overmarks
