// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/cast/ADRCharacter.h"
#include "event/Event.h"

#include <juce_core/juce_core.h>

#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** How the head of a document names its characters. */
struct CharacterHeaderRule
{
    bool trimName = false;  ///< without blanks around it
    bool trimActor = false; ///< without blanks around it
    bool eachOnce = true;   ///< a text that was there already isn't repeated
};

/** "Ann (Mary Miller)", or the name alone while nobody speaks the role; empty without a character. */
[[nodiscard]] OVERMARKS_API juce::String characterHeaderText (
    const std::shared_ptr<ZEP::Core::ADRCharacter>& character, CharacterHeaderRule rule = {});

/** The texts of several characters, joined with ", "; what is no character is left out. */
[[nodiscard]] OVERMARKS_API juce::String joinedCharacterHeaderText (
    const std::vector<std::shared_ptr<ZEP::Core::ADRCharacter>>& characters, CharacterHeaderRule rule = {});

/** The texts of the characters of several events, in the order of the events. */
[[nodiscard]] OVERMARKS_API juce::String joinedCharacterHeaderTextOfEvents (
    const std::vector<std::shared_ptr<Event>>& events, CharacterHeaderRule rule = {});

} // namespace ZEP::Overmarks
