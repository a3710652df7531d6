// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/CharacterHeaderText.h"

#include <set>

namespace ZEP::Overmarks
{

using ZEP::Core::ADRCharacter;

juce::String characterHeaderText (const std::shared_ptr<ADRCharacter>& character, CharacterHeaderRule rule)
{
    if (character == nullptr)
        return {};

    const auto name = rule.trimName ? character->name.trim() : character->name;
    const auto actor = rule.trimActor ? character->actor.trim() : character->actor;
    return actor.isEmpty() ? name : name + " (" + actor + ")";
}

juce::String joinedCharacterHeaderText (const std::vector<std::shared_ptr<ADRCharacter>>& characters,
                                        CharacterHeaderRule rule)
{
    juce::StringArray texts;
    std::set<juce::String> seen;

    for (const auto& character : characters)
    {
        if (character == nullptr)
            continue;

        auto text = characterHeaderText (character, rule);

        if (! rule.eachOnce || seen.insert (text).second)
            texts.add (text);
    }

    return texts.joinIntoString (", ");
}

juce::String joinedCharacterHeaderTextOfEvents (const std::vector<std::shared_ptr<Event>>& events,
                                                CharacterHeaderRule rule)
{
    std::vector<std::shared_ptr<ADRCharacter>> characters;
    characters.reserve (events.size());

    for (const auto& event : events)
        characters.push_back (event->character());

    return joinedCharacterHeaderText (characters, rule);
}

} // namespace ZEP::Overmarks
