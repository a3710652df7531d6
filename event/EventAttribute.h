// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "event/Event.h"

#include <Poco/Any.h>
#include <juce_core/juce_core.h>

#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** What the Poco::Any of an attribute's cell holds. */
enum class CellType
{
    none,    ///< no cell: a column that exporters compose themselves
    flag,    ///< bool
    integer, ///< int
    string,  ///< juce::String
    richText ///< ZEP::Core::RichTextString
};

/** One row of the table of an event's attributes: what a table view, an importer, an exporter and a command line call it,
    and how its cell is read and written. The key-value editor, the column titles of cue lists and the command line all walk
    this one table. */
struct OVERMARKS_API EventAttribute
{
    juce::String key;         ///< one of EventKeyValueEditor's keys
    juce::String columnTitle; ///< title of its column in a cue list; empty if cue lists have no such column
    juce::String explanation; ///< what the cell holds, in the words of the trade
    CellType cellType;        ///< what get() returns and set() expects

    /** The cell's value; null where there is no cell. */
    Poco::Any (*get) (Event&);

    /** Sets the value and tells whether it was acted on; null where the cell can't be written. */
    bool (*set) (Event&, const Poco::Any&);

    [[nodiscard]] bool isSettable() const noexcept { return set != nullptr; } ///< Else set() is null.

    /** The whole table, in the order of the keys. Made at the first call; any thread. */
    static const std::vector<EventAttribute>& all();

    /** The row of a key, or null for a key that is none. */
    static const EventAttribute* withKey (const juce::String& key);
};

/** What a typed timecode is set as: in the project's own spelling, with ";" before the frames of drop-frame, whatever
    separators were typed; dashes for a text that is no timecode. */
[[nodiscard]] OVERMARKS_API juce::String timecodeInProjectsSpelling (const Event& event,
                                                                     const juce::String& typed);

} // namespace ZEP::Overmarks
