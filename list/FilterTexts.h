// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/Event.h"
#include "list/EventPlace.h"
#include "list/TextPart.h"

#include <juce_core/juce_core.h>

namespace ZEP::Overmarks
{

/** The four texts that an event has to match; an empty one matches everything. */
struct FilterTexts
{
    juce::String character;
    TextPart text { juce::String() };
    TextPart cueNumber { juce::String() };
    juce::String actor;

    /** Asks the memory for the texts that letsThrough() is going to read; the event itself is there. */
    void fetchTexts (const Event& event) const
    {
        if (! text.isEmpty())
            fetchText (event.getText().getText());
        if (! cueNumber.isEmpty())
            fetchText (event.getCueNumber());
        if (character.isNotEmpty() || actor.isNotEmpty())
            fetchText (event.getCharacterID());
    }

    bool letsThrough (const Event& event) const
    {
        if (! text.isIn (event.getText().getText()) || ! cueNumber.isIn (event.getCueNumber()))
            return false;

        if (character.isEmpty() && actor.isEmpty())
            return true;

        const auto who = event.character();
        return who != nullptr && (character.isEmpty() || who->name == character)
               && (actor.isEmpty() || who->actor == actor);
    }
};

} // namespace ZEP::Overmarks
