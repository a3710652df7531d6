// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "StopSignals.h"

#include <juce_core/juce_core.h>

namespace overmarks
{

/** Asks on a terminal; without one there is nobody to ask, and the answer is no, as it is when the program is stopped. Lines
    stay lines, but nothing that a cue list says steers the terminal. Any thread. */
bool askOnTerminal (const juce::String& question, const StopSignals& signals);

} // namespace overmarks
