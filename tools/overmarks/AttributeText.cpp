// SPDX-License-Identifier: GPL-3.0-only
#include "AttributeText.h"

#include "Session.h"
#include "Suggestion.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "core/timecode/TCToolbox.h"
#include "event/EventKeyValueEditor.h"

#include <utility>
#include <vector>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;
using KV = EventKeyValueEditor;

namespace
{

constexpr std::pair<const char*, int> typeNames[] = {
    { "Streamer", EventTypeStreamer }, { "Marker", EventTypeMarker },  { "Flutter", EventTypeFlutter },
    { "ADR Cue", EventTypeADRCue },    { "Fade In", EventTypeFadeIn }, { "Fade Out", EventTypeFadeOut },
};

// As the menu counts them, from 1.
constexpr std::pair<const char*, int> regionNames[] = {
    { "Bottom", 1 }, { "Top", 2 }, { "Left", 3 }, { "Right", 4 }
};

constexpr int itemOfNoCharacter = 1, itemOfFirstCharacter = 2;
constexpr int slowestTempo = 21, fastestTempo = 299;

bool isWholeNumber (const juce::String& text)
{
    const auto digits = text.startsWithChar ('-') ? text.substring (1) : text;
    return digits.isNotEmpty() && digits.length() < 10 && digits.containsOnly ("0123456789");
}

template <std::size_t size>
juce::String nameOf (const std::pair<const char*, int> (&names)[size], int value)
{
    for (const auto& [name, number] : names)
        if (number == value)
            return name;

    return juce::String (value);
}

template <std::size_t size>
int valueOf (const std::pair<const char*, int> (&names)[size], const juce::String& text)
{
    std::vector<std::string> known;

    for (const auto& [name, number] : names)
    {
        if (text.equalsIgnoreCase (name) || text == juce::String (number))
            return number;

        known.emplace_back (name);
    }

    throw CommandFailure ("\"" + text + "\" can't be understood." + didYouMean (text.toStdString(), known));
}

int characterItem (const juce::String& text)
{
    if (text.isEmpty())
        return itemOfNoCharacter;

    std::vector<std::string> names;
    const auto& characters = Event::getADRCharacterMap()->characters();

    for (std::size_t i = 0; i < characters.size(); ++i)
    {
        if (characters[i]->name == text)
            return static_cast<int> (i) + itemOfFirstCharacter;

        names.push_back (characters[i]->name.toStdString());
    }

    throw CommandFailure ("There is no character \"" + text + "\"." + didYouMean (text.toStdString(), names));
}

int reasonCode (const juce::String& text)
{
    const auto* reasons = ADRCueReasonsManager::sharedManager();

    if (isWholeNumber (text) && reasons->isReasonCodeValid (text.getIntValue()))
        return text.getIntValue();

    const int byName = reasons->getReasonFromString (text.isEmpty() ? juce::String ("None") : text);
    const int code = byName > 0 ? byName : reasons->codeForCodeText (text);

    if (code <= 0)
        throw CommandFailure ("\"" + text + "\" is no cue reason; `overmarks reasons` lists them");

    return code;
}

bool flag (const juce::String& text)
{
    for (const auto* yes : { "yes", "true", "1", "on" })
        if (text.equalsIgnoreCase (yes))
            return true;

    for (const auto* no : { "no", "false", "0", "off" })
        if (text.equalsIgnoreCase (no))
            return false;

    throw CommandFailure ("\"" + text + "\" is neither yes nor no");
}

juce::String timecode (const Event& event, const juce::String& text)
{
    if (text.isEmpty() || text == "none" || text.containsOnly ("-:;"))
        return "--:--:--:--";

    const auto time = TCToolbox::tcTimeFromString (text);

    if (time.invalid || ! TCToolbox::existsUnder (time, event.getTimeInfo()->tcDef))
        throw CommandFailure ("There is no timecode \"" + text + "\" at "
                              + TCToolbox::rateNameForTCDef (event.getTimeInfo()->tcDef)
                              + " frames per second; \"none\" takes the time away");

    return text;
}

juce::String wholeNumber (const juce::String& text, int lowest, int highest)
{
    if (! isWholeNumber (text) || text.getIntValue() < lowest || text.getIntValue() > highest)
        throw CommandFailure ("\"" + text + "\" is no whole number from " + juce::String (lowest) + " to "
                              + juce::String (highest));

    return text;
}

juce::String stringValue (const Event& event, const juce::String& key, const juce::String& text)
{
    constexpr int mostTakes = 1000000;

    if (key == KV::KV_StartTCString || key == KV::KV_EndTCString)
        return timecode (event, text);
    if (key == KV::KV_NumRecordedTakes)
        return wholeNumber (text, 0, mostTakes);
    if (key == KV::KV_BeatsPerMinute)
        return wholeNumber (text, slowestTempo, fastestTempo);

    return text;
}

int integerValue (const juce::String& key, const juce::String& text)
{
    if (key == KV::KV_Type)
        return valueOf (typeNames, text);
    if (key == KV::KV_ForcedNarrativeRegion)
        return valueOf (regionNames, text);
    if (key == KV::KV_CharacterID)
        return characterItem (text);
    if (key == KV::KV_Reason)
        return reasonCode (text);

    if (! isWholeNumber (text))
        throw CommandFailure ("\"" + text + "\" is no whole number");

    return text.getIntValue();
}

juce::String integerText (Event& event, const juce::String& key, int value)
{
    if (key == KV::KV_Type)
        return nameOf (typeNames, value);
    if (key == KV::KV_ForcedNarrativeRegion)
        return nameOf (regionNames, value);
    if (key == KV::KV_Reason)
        return ADRCueReasonsManager::sharedManager()->getReasonFromInteger (value);

    if (key == KV::KV_CharacterID)
    {
        const auto character = event.character();
        return character != nullptr ? character->name : juce::String();
    }

    return juce::String (value);
}

} // namespace

juce::String attributeText (Event& event, const EventAttribute& attribute)
{
    if (attribute.get == nullptr)
        return {};

    const auto value = attribute.get (event);

    if (const auto* flagValue = Poco::AnyCast<bool> (&value))
        return *flagValue ? "yes" : "no";
    if (const auto* number = Poco::AnyCast<int> (&value))
        return integerText (event, attribute.key, *number);
    if (const auto* string = Poco::AnyCast<juce::String> (&value))
        return *string;
    if (const auto* rich = Poco::AnyCast<RichTextString> (&value))
        return rich->getText();

    return {};
}

Poco::Any attributeValue (const Event& event, const EventAttribute& attribute, const juce::String& text)
{
    switch (attribute.cellType)
    {
        case CellType::flag: return flag (text);
        case CellType::integer: return integerValue (attribute.key, text);
        case CellType::string: return stringValue (event, attribute.key, text);
        case CellType::richText: return RichTextString (text);
        case CellType::none: break;
    }

    throw CommandFailure ("\"" + attribute.key + "\" has no value");
}

const EventAttribute& attributeWithKey (const juce::String& key)
{
    std::vector<std::string> known;

    for (const auto& attribute : EventAttribute::all())
    {
        if (attribute.key.equalsIgnoreCase (key))
            return attribute;

        known.push_back (attribute.key.toStdString());
    }

    throw WrongUsage ("There is no attribute \"" + key + "\"; `overmarks keys` lists them."
                      + didYouMean (key.toStdString(), known));
}

} // namespace overmarks
