// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "midi/MIDITriggerEventFile.h"

namespace overmarks
{

/** The user's stored triggers, from one reading. A first start, without a file, is nothing to complain of. */
struct StoredMIDITriggers
{
    ZEP::Overmarks::MIDITriggerEventFile::Triggers triggers;
    juce::String problem {};   ///< why nothing was read; empty if all is well
    bool isUnreadable = false; ///< nobody knows what the file holds, so it must not be replaced
};

StoredMIDITriggers storedMIDITriggers();

} // namespace overmarks
