// SPDX-License-Identifier: GPL-3.0-only
#include "AttributeText.h"

#include "CellWords.h"
#include "Session.h"
#include "Suggestion.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "core/system/UserDefaults.h"
#include "core/timecode/TCToolbox.h"
#include "event/EventKeyValueEditor.h"
#include "preferences/PreferenceKeys.h"

#include <algorithm>
#include <vector>

namespace overmarks
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;
using KV = EventKeyValueEditor;

namespace
{

constexpr int itemOfNoCharacter = 1, itemOfFirstCharacter = 2;
constexpr int itemOfNoTake = 1, mostTakes = 1000000;
constexpr int mostTracks = 999;
constexpr int slowestTempo = 21, fastestTempo = 299;

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

    throw WrongUsage ("There is no character \"" + text + "\"." + didYouMean (text.toStdString(), names));
}

int reasonCode (const juce::String& text)
{
    const auto code = reasonNamed (text);

    if (! code)
        throw WrongUsage ("\"" + text + "\" is no cue reason; `overmarks reasons` lists them");

    return *code;
}

bool flag (const juce::String& key, const juce::String& text)
{
    const auto value = yesOrNo (text);

    if (! value)
        throw WrongUsage (key + ": \"" + text + "\" is neither yes nor no");

    return *value;
}

juce::String timecode (const Event& event, const juce::String& text)
{
    if (meansNoTime (text))
        return "--:--:--:--";

    const auto time = TCToolbox::tcTimeFromString (text);

    if (time.invalid || ! TCToolbox::existsUnder (time, event.getTimeInfo()->tcDef))
        throw WrongUsage ("There is no timecode \"" + text + "\" at "
                          + TCToolbox::rateNameForTCDef (event.getTimeInfo()->tcDef)
                          + " frames per second; \"none\" takes the time away");

    return text;
}

int numberBetween (const juce::String& key, const juce::String& text, int lowest, int highest)
{
    const auto number = wholeNumber (text);

    if (! number || *number < lowest || *number > highest)
        throw WrongUsage (key + ": \"" + text + "\" is no whole number from " + juce::String (lowest) + " to "
                          + juce::String (highest));

    return *number;
}

int takeItem (const Event& event, const juce::String& key, const juce::String& text)
{
    const int takes = std::clamp (event.getNumRecordedTakes(), 0, mostTakes);
    const auto number = wholeNumber (text);

    if (! number || *number < itemOfNoTake || *number > takes + itemOfNoTake)
        throw WrongUsage (key + ": \"" + text + "\" is no item of the menu of takes: 1 is none"
                          + (takes > 0 ? ", 2 to " + juce::String (takes + itemOfNoTake) + " the takes"
                                       : juce::String (", and there are no takes")));

    return *number;
}

bool isFade (int type) { return type == EventTypeFadeIn || type == EventTypeFadeOut; }

/** The lengths that a streamer of the event's type can have, as they are coded. -1 leaves it to the preferences. */
std::vector<int> durationCodes (EventType type)
{
    const bool inBars = UserDefaults::getIntForKey (StreamerReferenceUnitPrefKey) == 0;
    const std::vector<int> seconds { -1, 1, 2, 3, 5, 267, 333 }, bars { -1, 1, 2, 4 },
        frames { -1, 1, 4, 8, 12 };

    switch (type)
    {
        case EventTypeADRCue: return seconds;
        case EventTypeStreamer: return inBars ? bars : seconds;
        case EventTypeFlutter: return frames;
        case EventTypeMarker:
        case EventTypeFadeIn:
        case EventTypeFadeOut: break;
    }

    return {};
}

int duration (const Event& event, const juce::String& key, const juce::String& text)
{
    const auto known = durationCodes (event.getType());
    const auto number = wholeNumber (text);

    if (isFade (event.getType()))
        throw CommandFailure (key + ": a " + event.typeString() + " has no streamer");

    // Where there is no streamer the editor says so itself.
    if (number && (known.empty() || std::find (known.begin(), known.end(), *number) != known.end()))
        return *number;

    std::vector<std::string> codes;

    for (const int code : known)
        codes.push_back (std::to_string (code));

    throw WrongUsage (key + ": \"" + text + "\" is no code of a streamer's length; for the type "
                      + event.typeString() + " there are " + joined (codes));
}

int eventType (const Event& event, const juce::String& key, const juce::String& text)
{
    const auto type = eventTypeNamed (text);

    if (! type)
        throw WrongUsage (key + ": \"" + text + "\" is none of " + joined (namesOfEventTypes()) + "."
                          + didYouMean (text.toStdString(), namesOfEventTypes()));

    if (*type != event.getType() && (isFade (*type) || isFade (event.getType())))
        throw WrongUsage (key
                          + ": a list has exactly one Fade In and one Fade Out; no event becomes one, "
                            "and they become nothing else");

    return *type;
}

juce::String stringValue (const Event& event, const juce::String& key, const juce::String& text)
{
    if (key == KV::KV_StartTCString || key == KV::KV_EndTCString)
        return timecode (event, text);
    if (key == KV::KV_NumRecordedTakes)
        return juce::String (numberBetween (key, text, 0, mostTakes));
    if (key == KV::KV_BeatsPerMinute)
        return juce::String (numberBetween (key, text, slowestTempo, fastestTempo));

    return text;
}

int region (const juce::String& key, const juce::String& text)
{
    const auto item = regionNamed (text);

    if (! item)
        throw WrongUsage (key + ": \"" + text + "\" is none of " + joined (namesOfRegions()) + "."
                          + didYouMean (text.toStdString(), namesOfRegions()));

    return *item;
}

int integerValue (const Event& event, const juce::String& key, const juce::String& text)
{
    if (key == KV::KV_Type)
        return eventType (event, key, text);
    if (key == KV::KV_ForcedNarrativeRegion)
        return region (key, text);
    if (key == KV::KV_CharacterID)
        return characterItem (text);
    if (key == KV::KV_Reason)
        return reasonCode (text);
    if (key == KV::KV_StreamerDuration)
        return duration (event, key, text);
    if (key == KV::KV_RecTrackIndex)
        return numberBetween (key, text, 0, mostTracks);

    return takeItem (event, key, text);
}

juce::String integerText (const Event& event, const juce::String& key, int value)
{
    if (key == KV::KV_Type)
        return nameOfEventType (value);
    if (key == KV::KV_ForcedNarrativeRegion)
        return nameOfRegion (value);
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
        case CellType::flag: return flag (attribute.key, text);
        case CellType::integer: return integerValue (event, attribute.key, text);
        case CellType::string: return stringValue (event, attribute.key, text);
        case CellType::richText: return RichTextString (text);
        case CellType::none: break;
    }

    throw WrongUsage ("\"" + attribute.key + "\" has no value");
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

const EventAttribute& settableAttributeWithKey (const juce::String& key)
{
    const auto& attribute = attributeWithKey (key);

    if (! attribute.isSettable())
        throw WrongUsage (attribute.key + " can't be set; `overmarks keys` tells what can");

    return attribute;
}

std::vector<std::string> attributeKeys()
{
    std::vector<std::string> keys;

    for (const auto& attribute : EventAttribute::all())
        keys.push_back (attribute.key.toStdString());

    return keys;
}

std::vector<std::string> settableAttributeKeys()
{
    std::vector<std::string> keys;

    for (const auto& attribute : EventAttribute::all())
        if (attribute.isSettable())
            keys.push_back (attribute.key.toStdString());

    return keys;
}

} // namespace overmarks
