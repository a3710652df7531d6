// SPDX-License-Identifier: GPL-3.0-only
#include "FilterOptions.h"

#include "AttributeText.h"

#include "preferences/PreferenceKeys.h"

namespace overmarks
{

using namespace ZEP::Overmarks;

void FilterOptions::addTo (CLI::App& command)
{
    command.add_option ("--character", character, "Only events of this character");
    command.add_option ("--actor", actor, "Only events of this actor");
    command.add_option ("--text", text, "Only events with this in their text");
    command.add_option ("--cue", cueNumber, "Only events with this in their cue number");
    command.add_option ("--adjacent", adjacent, "Also so many neighbours on each side of a match")
        ->check (CLI::Range (0, 1000000));
    command.add_option ("--sort", sortKey, "Attribute to sort by, such as CueNumber (StartTCString)");
    command.add_flag ("--descending", descending, "Sort downwards");
}

void FilterOptions::applyTo (EventArray& list) const
{
    list.filterParameters[juce::String (EventCharacterFilterKey)] = juce::String (character);
    list.filterParameters[juce::String (EventActorFilterKey)] = juce::String (actor);
    list.filterParameters[juce::String (EventTextFilterKey)] = juce::String (text);
    list.filterParameters[juce::String (EventCueNumberFilterKey)] = juce::String (cueNumber);
    list.filterParameters[juce::String (EventNumAdjacentCuesKey)] = juce::String (adjacent);

    if (! sortKey.empty())
    {
        list.sortKey = attributeWithKey (sortKey).key;
        list.sortDescending = descending;
    }
    else if (descending)
    {
        list.sortDescending = true;
    }

    list.sortContentAndUpdateFilteredEvents();
}

} // namespace overmarks
