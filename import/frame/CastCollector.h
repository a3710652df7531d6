// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/cast/ADRCharacterMap.h"

#include <juce_core/juce_core.h>

#include <map>
#include <memory>
#include <optional>

namespace ZEP::Overmarks
{

/** Finds the characters of a foreign cue list in the cast of the project, and adds those that are new to it.

    Characters are the same when their names are exactly equal. Each has one prefix and one actor: the first
    that any row tells stays, and a row that tells another one is told so.

    While it lives nobody may rename a character of the two casts. One thread at a time. */
class CastCollector final
{
public:
    /** @param projectCast  the map that gets the new characters
        @param fileCast     cast of the file, whose identifiers new characters keep; may be null
        Both must outlive this. */
    CastCollector (Core::ADRCharacterMap& projectCast, const Core::ADRCharacterMap* fileCast);

    /** What a row says of one character. */
    struct Role
    {
        juce::String id;            ///< empty without a name
        juce::String prefixProblem; ///< why the row's prefix is not used; else empty
        juce::String actorProblem;  ///< why the row's actor is not used; else empty
    };

    /** The texts are those of the cells; white space around them plays no part. */
    [[nodiscard]] Role role (const juce::String& name, const juce::String& prefix, const juce::String& actor);

private:
    struct Member
    {
        juce::String id;
        std::shared_ptr<Core::ADRCharacter> character;
    };

    [[nodiscard]] const Member& memberNamed (const juce::String& name);
    [[nodiscard]] juce::String idForName (const juce::String& name);

    Core::ADRCharacterMap& cast;
    const Core::ADRCharacterMap* castOfFile;
    Core::ADRCharacterMap::NamesAtRest namesAtRest;
    std::optional<Core::ADRCharacterMap::NamesAtRest> namesOfFileAtRest;
    std::map<juce::String, Member> members; ///< whom the rows have named so far
};

} // namespace ZEP::Overmarks
