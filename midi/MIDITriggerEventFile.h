// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "midi/MIDITriggerEvent.h"

#include <juce_core/juce_core.h>

#include <cstdint>
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

    /** How large a list may be. No user's comes near these numbers; a damaged or hostile file does. */
    struct Limits
    {
        std::uint64_t bytesOfFile = std::uint64_t { 1 }
                                    << 24; ///< A file that has more isn't read into memory; 16 MB.

        /** Memory that the triggers of a file may take however small it is, in bytes, beside twenty for each byte of the file; 64 MB. */
        std::uint64_t spareMemory = std::uint64_t { 1 } << 26;
    };

    /** The limits of the process, as they stand above unless the application has changed them. Change them only while no list is being
        read or written. */
    static Limits& limits();

    static juce::String path(); ///< Full path, whether or not there is a file.

    /** What there is to be read. */
    enum class State
    {
        missing,   ///< nothing stored yet
        sound,     ///< it can be read, empty or not
        damaged,   ///< what it holds is no list
        unreadable ///< it may not be read, can't be reached, goes beyond the limits, or is no file
    };

    [[nodiscard]] static State state(); ///< Looks at it now, reading it whole.

    /** What one reading has found. */
    struct Content
    {
        State state = State::missing; ///< what there is
        Triggers triggers {};         ///< in the order of the list; none unless it is sound
        juce::String reason {};       ///< why it is unreadable, in words; empty otherwise
    };

    /** The state and the triggers of one and the same reading, for whoever must not take a failing disk for an empty list. */
    [[nodiscard]] static Content load();

    /** The triggers in the order of the list. None without a file and of one that can't be read, of which the log is told, and
        none of one that is damaged. */
    [[nodiscard]] static Triggers read();

    /** Replaces the file, or leaves it as it was; makes the folder. A damaged file is first kept beside it, once, for the user
        alone, as "midiEventsV3.damaged.bin" or with a number behind that; and so is one that the last load() or read() couldn't read,
        although it can be read now, since nobody has seen what it holds. Into a device or a pipe nothing is written, nor more than the
        limits allow.
        @returns on failure "Can't write PATH: " and what the system says */
    [[nodiscard]] static juce::Result write (const Triggers& triggers);
};

} // namespace ZEP::Overmarks
