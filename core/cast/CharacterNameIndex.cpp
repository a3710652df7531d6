// SPDX-License-Identifier: GPL-3.0-only
#include "core/cast/CharacterNameIndex.h"

namespace ZEP::Core
{
namespace
{
const char* charactersOf (const juce::String& text) { return text.getCharPointer().getAddress(); }
} // namespace

void CharacterNameIndex::set (std::size_t position, const juce::String& name)
{
    if (position < entries.size())
    {
        entries[position].name = &name;
        reenter (position);
        return;
    }

    jassert (position == entries.size());
    entries.push_back ({ &name, name });
    positionsByName[name].insert (position);
}

void CharacterNameIndex::update()
{
    for (std::size_t position = 0; position < entries.size(); ++position)
        if (charactersOf (*entries[position].name) != charactersOf (entries[position].seen))
            reenter (position);
}

std::optional<std::size_t> CharacterNameIndex::firstPosition (const juce::String& name) const
{
    const auto found = positionsByName.find (name);
    if (found == positionsByName.end())
        return std::nullopt;
    return *found->second.begin();
}

void CharacterNameIndex::reenter (std::size_t position)
{
    auto& entry = entries[position];
    const auto former = positionsByName.find (entry.seen);
    former->second.erase (position);
    if (former->second.empty())
        positionsByName.erase (former);

    entry.seen = *entry.name;
    positionsByName[entry.seen].insert (position);
}
} // namespace ZEP::Core
