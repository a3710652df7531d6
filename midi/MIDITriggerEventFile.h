// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "midi/MIDITriggerEvent.h"

#include <juce_core/juce_core.h>

#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** The user's triggers as they lie in the folder of the user's settings, "midiEventsV3.bin": one
    tessera1::ProtoMIDITriggerEventList with nothing before or behind it. No triggers make an empty file.

    It belongs to no project. One thread at a time; of two programs that write it the later one wins. */
class OVERMARKS_API MIDITriggerEventFile final
{
public:
    using Triggers = std::vector<std::shared_ptr<MIDITriggerEvent>>; ///< in the order of the list

    MIDITriggerEventFile() = delete;

    static juce::String path(); ///< Full path, whether or not there is a file.

    /** What there is to be read. */
    enum class State
    {
        missing,   ///< nothing stored yet
        sound,     ///< it can be read, empty or not
        damaged,   ///< what it holds is no list
        unreadable ///< it may not be read, is far too large, or is no file
    };

    [[nodiscard]] static State state(); ///< Looks at it now, reading it whole.

    /** The triggers in the order of the list. None without a file, of which the log is told, and none of one that is
        damaged or can't be read. */
    [[nodiscard]] static Triggers read();

    /** Replaces the file, or leaves it as it was; makes the folder. A damaged file is first kept beside it, once, for the user
        alone, as "midiEventsV3.damaged.bin" or with a number behind that. Into a device or a pipe nothing is written.
        @returns on failure "Can't write PATH: " and what the system says */
    [[nodiscard]] static juce::Result write (const Triggers& triggers);
};

} // namespace ZEP::Overmarks
