// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/CastCollector.h"

#include "import/frame/CellReading.h"

namespace ZEP::Overmarks
{

using Core::ADRCharacter;
using Core::ADRCharacterMap;

namespace
{

/** Gives a character what it doesn't have yet.
    @returns why it can't have the value; else the empty string */
juce::String tell (ADRCharacter& character, juce::String ADRCharacter::*field, const juce::String& value,
                   const char* called)
{
    auto& known = character.*field;

    if (value.isEmpty() || value == known)
        return {};

    if (known.isEmpty())
    {
        known = value;
        return {};
    }

    return "the " + juce::String (called) + " " + quotedCell (value) + " is not used, because the character "
           + quotedCell (character.name) + " already has " + quotedCell (known);
}

juce::String withoutCharacter (const juce::String& value, const char* called)
{
    if (value.isEmpty())
        return {};

    return "the " + juce::String (called) + " " + quotedCell (value)
           + " is not used, because the row names no character";
}

} // namespace

CastCollector::CastCollector (ADRCharacterMap& projectCast, const ADRCharacterMap* fileCast)
    : cast (projectCast),
      castOfFile (fileCast),
      namesAtRest (projectCast)
{
    if (fileCast != nullptr)
        namesOfFileAtRest.emplace (*fileCast);
}

CastCollector::Role CastCollector::role (const juce::String& name, const juce::String& prefix,
                                         const juce::String& actor)
{
    const auto ownName = trimmedText (name);
    const auto ownPrefix = trimmedText (prefix);
    const auto ownActor = trimmedText (actor);

    if (ownName.isEmpty())
        return { {}, withoutCharacter (ownPrefix, "prefix"), withoutCharacter (ownActor, "actor") };

    const auto& [id, character] = memberNamed (ownName);
    return { id, tell (*character, &ADRCharacter::prefix, ownPrefix, "prefix"),
             tell (*character, &ADRCharacter::actor, ownActor, "actor") };
}

const CastCollector::Member& CastCollector::memberNamed (const juce::String& name)
{
    const auto [place, isNew] = members.try_emplace (name);
    auto& member = place->second;

    if (isNew)
    {
        member.id = idForName (name);
        member.character = cast.characterForID (member.id);
    }

    return member;
}

juce::String CastCollector::idForName (const juce::String& name)
{
    const auto known = cast.characterIDForCharacterWithName (name);

    if (known.isNotEmpty())
        return known;

    const auto idInFile =
        castOfFile != nullptr ? castOfFile->characterIDForCharacterWithName (name) : juce::String();
    const bool keepsID = idInFile.isNotEmpty() && ! cast.contains (idInFile);
    return cast.addCharacter (std::make_shared<ADRCharacter> (name), keepsID, idInFile);
}

} // namespace ZEP::Overmarks
