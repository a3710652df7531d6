// SPDX-License-Identifier: GPL-3.0-only
#include "FilterOptions.h"

#include "AttributeText.h"
#include "OptionValues.h"
#include "Suggestion.h"

#include "preferences/PreferenceKeys.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

void FilterOptions::addTo (CLI::App& command)
{
    command.add_option ("--character", character, "Only events of this character")->type_name ("NAME");
    command.add_option ("--actor", actor, "Only events of this actor")->type_name ("NAME");
    command.add_option ("--text", text, "Only events with this in their text")->type_name ("PART");
    command.add_option ("--cue", cueNumber, "Only events with this in their cue number")->type_name ("PART");
    command.add_option ("--adjacent", adjacent, "Also so many neighbours on each side of a match")
        ->check (CLI::Range (0, 1000000));
    takesOneOf (
        command.add_option ("--sort", sortKey, "Attribute to sort by, such as CueNumber (StartTCString)"),
        attributeKeys())
        ->type_name ("KEY");
    command.add_flag ("--descending", descending, "Sort downwards");
}

void FilterOptions::sort (EventArray& list) const
{
    if (! sortKey.empty())
    {
        list.sortKey = attributeWithKey (sortKey).key;
        list.sortDescending = descending;
    }
    else if (descending)
    {
        list.sortDescending = true;
    }
}

void FilterOptions::sayWhatIsUnknown (const ADRCharacterMap& cast, const Session& session) const
{
    std::vector<std::string> names, actors;

    for (const auto& member : cast.characters())
    {
        names.push_back (member->name.toStdString());
        actors.push_back (member->actor.toStdString());
    }

    const auto check =
        [&session] (const char* option, const std::string& wanted, const std::vector<std::string>& known)
    {
        if (! wanted.empty() && std::find (known.begin(), known.end(), wanted) == known.end())
            session.say (option + (": the list has no \"" + wanted + "\"." + didYouMean (wanted, known)));
    };
    check ("--character", character, names);
    check ("--actor", actor, actors);

    if (adjacent > 0 && ! hasFilter())
        session.say ("--adjacent makes no difference without a filter");
}

void FilterOptions::applyTo (const Project& project, const Session& session) const
{
    sort (*project.list);
    sayWhatIsUnknown (*project.characters, session);
    project.list->setFilterParameters ({ { EventCharacterFilterKey, juce::String (character) },
                                         { EventActorFilterKey, juce::String (actor) },
                                         { EventTextFilterKey, juce::String (text) },
                                         { EventCueNumberFilterKey, juce::String (cueNumber) },
                                         { EventNumAdjacentCuesKey, juce::String (adjacent) } });
}

juce::String FilterOptions::inWords() const
{
    const std::pair<const char*, const std::string&> conditions[] = {
        { "character ", character }, { "actor ", actor }, { "text ", text }, { "cue number ", cueNumber }
    };
    juce::StringArray words;

    for (const auto& [name, value] : conditions)
        if (! value.empty())
            words.add (name + juce::String (value));

    if (! words.isEmpty() && adjacent > 0)
        words.add (counted (static_cast<std::size_t> (adjacent), "neighbour") + " on each side");

    return words.joinIntoString (", ");
}

} // namespace overmarks
