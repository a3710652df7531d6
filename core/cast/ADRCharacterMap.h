// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"
#include "core/cast/ADRCharacter.h"
#include "core/cast/CharacterNameIndex.h"

#include <map>
#include <memory>
#include <vector>

namespace ZEP::Core
{
/** The cast of a project: all its characters under lasting identifiers, in the order in which they were
    added.

    A cue refers to its character by identifier alone. Names may be edited in the character at any time, and a
    lookup by name follows at once. Finding out about an edit costs a glance at each character, so whoever
    looks up thousands of names in one go (an import, a document) holds a NamesAtRest meanwhile.

    Characters are shared with the caller. One thread at a time: a lookup by name may bring the map's index up
    to date.
*/
class ZEP_CORE_API ADRCharacterMap final
{
public:
    ADRCharacterMap();
    ~ADRCharacterMap();

    ADRCharacterMap (const ADRCharacterMap&) = delete;
    ADRCharacterMap& operator= (const ADRCharacterMap&) = delete;

    /** Adds a character at the end and returns the identifier under which it stands.

        With keepGivenID, that is the given one; a character which already has it gives way, and the new one
        takes its place in the order. Otherwise, or if the given identifier is empty (which means "no
        character" in a cue), it is a new random UUID in lower case. A null pointer adds nothing and returns
        the empty string.
    */
    juce::String addCharacter (std::shared_ptr<ADRCharacter> character, bool keepGivenID,
                               const juce::String& id);

    /** The character with this identifier (upper and lower case differ), or a null pointer. */
    [[nodiscard]] std::shared_ptr<ADRCharacter> characterForID (const juce::String& id) const;

    [[nodiscard]] bool contains (const juce::String& id) const; ///< Upper and lower case differ.

    /** The identifier of the first character in the order that now has exactly this name, or the empty
        string.
    */
    [[nodiscard]] juce::String characterIDForCharacterWithName (const juce::String& name) const;

    /** All characters in display order. The reference holds as long as the map, the places in it until the
        next addCharacter.
    */
    [[nodiscard]] const std::vector<std::shared_ptr<ADRCharacter>>& characters() const;

    /** The identifiers in the same order, one for each entry of characters(). */
    [[nodiscard]] const std::vector<juce::String>& characterIDs() const;

    /** A promise that nobody edits the name of a character of this map while the scope lasts; characters may
        be added.

        Lookups by name then cost the same however large the cast is. Scopes may be nested. The map must
        outlive the scope.
    */
    class ZEP_CORE_API NamesAtRest final
    {
    public:
        explicit NamesAtRest (const ADRCharacterMap& map); ///< Brings the index of names up to date.
        ~NamesAtRest();

        NamesAtRest (const NamesAtRest&) = delete;
        NamesAtRest& operator= (const NamesAtRest&) = delete;

    private:
        const ADRCharacterMap& map;
    };

private:
    std::vector<std::shared_ptr<ADRCharacter>> inOrder;
    std::vector<juce::String> idsInOrder;
    struct ByBytes
    {
        bool operator() (const juce::String& a, const juce::String& b) const noexcept;
    };

    std::map<juce::String, std::size_t, ByBytes> positions; // not hashed: strangers choose the identifiers
    mutable CharacterNameIndex names;
    mutable int scopesAtRest = 0;
};
} // namespace ZEP::Core
