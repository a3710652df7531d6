// SPDX-License-Identifier: GPL-3.0-only
#include "EventMatcher.h"

#include "AttributeText.h"
#include "CellWords.h"
#include "Session.h"
#include "Suggestion.h"

#include "core/timecode/TCToolbox.h"
#include "event/EventKeyValueEditor.h"

#include <algorithm>
#include <optional>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;
using KV = EventKeyValueEditor;
using Test = std::function<bool (Event&)>;

namespace
{

struct Condition
{
    std::string option;
    const EventAttribute* attribute;
    juce::String value;

    [[noreturn]] void refuse (const juce::String& expected) const
    {
        throw WrongUsage (juce::String (option) + ": " + attribute->key + ": \"" + value + "\" " + expected);
    }
};

/** The cell holds exactly this value. */
template <typename Value>
Test holds (const EventAttribute& attribute, Value expected)
{
    return [&attribute, expected] (Event& event)
    {
        const auto cell = attribute.get (event);
        const auto* value = Poco::AnyCast<Value> (&cell);
        return value != nullptr && *value == expected;
    };
}

/** The cell reads so. */
Test reads (const EventAttribute& attribute, const juce::String& text)
{
    return [&attribute, text] (Event& event) { return attributeText (event, attribute) == text; };
}

Test flagTest (const Condition& condition)
{
    const auto value = yesOrNo (condition.value);

    if (! value)
        condition.refuse ("is neither yes nor no");

    return holds<bool> (*condition.attribute, *value);
}

/** A number, or a name of which there are few. A number without a name may still stand in a file. */
Test namedNumberTest (const Condition& condition, std::optional<int> named,
                      const std::vector<std::string>& names)
{
    const auto value = named ? named : wholeNumber (condition.value);

    if (! value)
        condition.refuse ("is none of " + joined (names) + "."
                          + didYouMean (condition.value.toStdString(), names));

    return holds<int> (*condition.attribute, *value);
}

/** The names of the user's reasons are known when the project is. */
Test reasonTest (const Condition& condition)
{
    return [attribute = condition.attribute, text = condition.value] (Event& event)
    {
        const auto code = reasonNamed (text);

        if (! code)
            throw WrongUsage ("\"" + text + "\" is no cue reason; `overmarks reasons` lists them");

        return holds<int> (*attribute, *code) (event);
    };
}

Test integerTest (const Condition& condition)
{
    const auto& key = condition.attribute->key;

    if (key == KV::KV_Type)
        return namedNumberTest (condition, eventTypeNamed (condition.value), namesOfEventTypes());
    if (key == KV::KV_ForcedNarrativeRegion)
        return namedNumberTest (condition, regionNamed (condition.value), namesOfRegions());
    if (key == KV::KV_CharacterID)
        return reads (*condition.attribute, condition.value);
    if (key == KV::KV_Reason)
        return reasonTest (condition);

    const auto number = wholeNumber (condition.value);

    if (! number)
        condition.refuse ("is no whole number");

    return holds<int> (*condition.attribute, *number);
}

/** Colons and semicolons, and an event without any time, are no matter of spelling. */
Test timeTest (const Condition& condition)
{
    const auto wanted = TCToolbox::tcTimeFromString (condition.value);
    const bool wantsNone = meansNoTime (condition.value);

    if (wanted.invalid && ! wantsNone)
        condition.refuse ("is no timecode such as 01:00:00:00");

    return [attribute = condition.attribute, wanted, wantsNone] (Event& event)
    {
        const auto time = TCToolbox::tcTimeFromString (attributeText (event, *attribute));
        return wantsNone ? time.invalid : time == wanted;
    };
}

Test numberInTextTest (const Condition& condition)
{
    constexpr auto unset = "--";
    const auto number = wholeNumber (condition.value);

    if (! number && ! meansNoTime (condition.value))
        condition.refuse ("is no whole number");

    return reads (*condition.attribute, number ? juce::String (*number) : juce::String (unset));
}

Test equalityTest (const Condition& condition)
{
    const auto& key = condition.attribute->key;

    switch (condition.attribute->cellType)
    {
        case CellType::flag: return flagTest (condition);
        case CellType::integer: return integerTest (condition);
        case CellType::richText: return reads (*condition.attribute, condition.value);
        case CellType::none: break;
        case CellType::string:
            if (key == KV::KV_StartTCString || key == KV::KV_EndTCString || key == KV::KV_DurationTCString)
                return timeTest (condition);
            if (key == KV::KV_NumRecordedTakes || key == KV::KV_BeatsPerMinute)
                return numberInTextTest (condition);
            return reads (*condition.attribute, condition.value);
    }

    throw WrongUsage (juce::String (condition.option) + ": " + key + " has no value");
}

} // namespace

EventMatcher::EventMatcher (const std::string& option, const std::string& condition)
{
    const auto sign = condition.find_first_of ("=~");

    if (sign == std::string::npos || sign == 0)
        throw WrongUsage (option + ": \"" + condition + "\" is not of the form KEY=VALUE or KEY~PART");

    const Condition parsed { option, &attributeWithKey (juce::String (condition.substr (0, sign))),
                             juce::String (condition.substr (sign + 1)) };

    if (condition[sign] == '=' || parsed.attribute->cellType == CellType::none)
        test = equalityTest (parsed);
    else
        test = [attribute = parsed.attribute, part = parsed.value] (Event& event)
        { return attributeText (event, *attribute).containsIgnoreCase (part); };
}

bool matchesAll (const std::vector<EventMatcher>& conditions, Event& event)
{
    return std::all_of (conditions.begin(), conditions.end(),
                        [&event] (const EventMatcher& condition) { return condition.matches (event); });
}

} // namespace overmarks
