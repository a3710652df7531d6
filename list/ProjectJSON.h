// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "list/Project.h"

#include <juce_core/juce_core.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace ZEP::Overmarks
{

/** A project as JSON, for other programs and for looking into: writing and reading back loses nothing.

    Frame indices stand in it as they are, so another time reference shows other timecodes. Reading is strict: a member that
    nobody knows is an error that names it, since a misspelt attribute would otherwise be lost unseen. What may be left out is
    told at fromText(). All text is UTF-8. One thread at a time; reading follows the registered preferences. */
class OVERMARKS_API ProjectJSON final
{
public:
    ProjectJSON() = delete;

    /** The version of the form, the value of its first member "overmarks". */
    static constexpr int formatVersion = 1;

    /** How much a text may hold. No project comes near these numbers; a damaged or hostile text asks for more. */
    struct Limits
    {
        std::uint64_t bytes = std::uint64_t { 1 } << 30; ///< of the text; 1 GB

        /** Objects and lists within each other; a project has six. With a stack of 8 MB not more than ten thousand. */
        std::size_t nesting = 16;
        std::size_t members = 64; ///< of one object; an event has some twenty

        /** Memory that the events, texts and characters of a text may take however short it is, in bytes, beside twenty for each of its
            bytes; 128 MB. */
        std::uint64_t spareMemory = std::uint64_t { 1 } << 27;
    };

    /** The limits of the process, as they stand above unless the application has changed them. Change them only while no text
        is being read. */
    static Limits& limits();

    /** Gets a text in parts, one behind the other, none of which cuts a character in two. */
    using Sink = std::function<void (const std::string& part)>;

    /** The whole project; the events in the order of EventArray::events. */
    static std::string toText (const Project& project);

    /** The same in parts of some 64 KB, so that a season's list never stands in memory twice. */
    static void write (const Project& project, const Sink& sink);

    /** The events as a table shows them, {"events": [...]}: each as in toText(), with its timecodes, the names of its
        character and actor, and whether it is listed only as a neighbour. The project has to be the current one. */
    static std::string shownEvents (const EventArray::Events& events);

    /** The same in parts of some 64 KB. */
    static void writeShownEvents (const EventArray::Events& events, const Sink& sink);

    /** Reads a project. A missing member takes the value of a new event, a missing fade is made, and a rich text may be a
        plain string. Nothing is sorted; the project isn't made current.
        @param project  replaced on success, untouched on failure
        @returns the reason of a failure in words, with the place in the text; empty on success */
    [[nodiscard]] static juce::String fromText (const std::string& text, Project& project);
};

} // namespace ZEP::Overmarks
