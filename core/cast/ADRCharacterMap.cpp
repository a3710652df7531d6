// SPDX-License-Identifier: GPL-3.0-only
#include "core/cast/ADRCharacterMap.h"

#include "core/system/RandomIdentity.h"

#include <cstring>

namespace ZEP::Core
{
ADRCharacterMap::ADRCharacterMap() = default;
ADRCharacterMap::~ADRCharacterMap() = default;

juce::String ADRCharacterMap::addCharacter (std::shared_ptr<ADRCharacter> character, bool keepGivenID,
                                            const juce::String& id)
{
    if (character == nullptr)
        return {};

    const auto idInUse = keepGivenID && id.isNotEmpty() ? id : randomIdentity();
    const auto [place, isNew] = positions.try_emplace (idInUse, inOrder.size());
    const auto position = place->second;

    // The index reads the name through a pointer: let go of the former character only when it has let go.
    names.set (position, character->name);
    if (isNew)
    {
        inOrder.push_back (std::move (character));
        idsInOrder.push_back (idInUse);
    }
    else
    {
        inOrder[position] = std::move (character);
    }
    return idInUse;
}

bool ADRCharacterMap::ByBytes::operator() (const juce::String& a, const juce::String& b) const noexcept
{
    return std::strcmp (a.getCharPointer().getAddress(), b.getCharPointer().getAddress()) < 0;
}

std::shared_ptr<ADRCharacter> ADRCharacterMap::characterForID (const juce::String& id) const
{
    const auto found = positions.find (id);
    return found == positions.end() ? nullptr : inOrder[found->second];
}

bool ADRCharacterMap::contains (const juce::String& id) const
{
    return positions.find (id) != positions.end();
}

juce::String ADRCharacterMap::characterIDForCharacterWithName (const juce::String& name) const
{
    if (scopesAtRest == 0)
        names.update();

    const auto position = names.firstPosition (name);
    return position.has_value() ? idsInOrder[*position] : juce::String();
}

const std::vector<std::shared_ptr<ADRCharacter>>& ADRCharacterMap::characters() const { return inOrder; }

const std::vector<juce::String>& ADRCharacterMap::characterIDs() const { return idsInOrder; }

ADRCharacterMap::NamesAtRest::NamesAtRest (const ADRCharacterMap& mapAtRest) : map (mapAtRest)
{
    if (map.scopesAtRest++ == 0)
        map.names.update();
}

ADRCharacterMap::NamesAtRest::~NamesAtRest() { --map.scopesAtRest; }
} // namespace ZEP::Core
