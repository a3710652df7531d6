// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <string>

namespace ZEP::Overmarks
{

/** A text whose bytes compare as juce::String::compareNatural (..., false) compares the texts: cue 2 before cue 10, letters of either
    case alike, a run of blanks as one. The letters of English have one capital each here, whatever the locale of the process: in a Turkish
    one the framework's order tells i from I. Made once for each cue, it spares a sort taking both texts apart at every comparison.

    @returns bytes without a zero, to be compared as unsigned ones, as std::string and TextKey do; equal where the texts count as
             equal */
[[nodiscard]] std::string naturalKeyOf (const juce::String& text);

} // namespace ZEP::Overmarks
