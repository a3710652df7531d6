// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <juce_core/juce_core.h>

#include <map>
#include <optional>
#include <set>
#include <vector>

namespace ZEP::Core
{
/** Finds the first of many names by its text while the names may be edited behind its back.

    It keeps a copy of each name as last seen. A juce::String shares its characters with its copies and never
    changes shared characters, so a name is unedited exactly as long as it points to the same characters as
    the copy: update() compares addresses and touches only the entries of names that did change.

    It reads the names through pointers, which must stay valid. One thread at a time.
*/
class ZEP_CORE_API CharacterNameIndex final
{
public:
    /** Enters the name at a position: the next free one, or one that is taken, whose former name is
        forgotten.
    */
    void set (std::size_t position, const juce::String& name);

    /** Takes notice of all names that were edited since the last call. */
    void update();

    /** The lowest position that has this name, as of the last update. */
    [[nodiscard]] std::optional<std::size_t> firstPosition (const juce::String& name) const;

private:
    struct Entry
    {
        const juce::String* name;
        juce::String seen;
    };

    void reenter (std::size_t position);

    std::vector<Entry> entries;
    std::map<juce::String, std::set<std::size_t>> positionsByName; // not hashed: strangers choose the names
};
} // namespace ZEP::Core
