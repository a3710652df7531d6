// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "midi/MIDITriggerEventFile.h"

namespace overmarks
{

/** Why nothing can be read from the user's stored triggers; empty if it can, or if nothing has been stored yet. */
juce::String storedMIDITriggersProblem();

/** The user's stored triggers. A first start, without a file, is nothing to complain of. */
ZEP::Overmarks::MIDITriggerEventFile::Triggers storedMIDITriggers();

} // namespace overmarks
