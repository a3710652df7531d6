// SPDX-License-Identifier: GPL-3.0-only
#include "CellWords.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "event/EventType.h"

#include <utility>

namespace overmarks
{

using namespace ZEP::Overmarks;
using ZEP::Core::ADRCueReasonsManager;

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

template <std::size_t size>
juce::String nameOf (const std::pair<const char*, int> (&names)[size], int value)
{
    for (const auto& [name, number] : names)
        if (number == value)
            return name;

    return juce::String (value);
}

template <std::size_t size>
std::optional<int> valueOf (const std::pair<const char*, int> (&names)[size], const juce::String& text)
{
    for (const auto& [name, number] : names)
        if (text.equalsIgnoreCase (name) || text == juce::String (number))
            return number;

    return std::nullopt;
}

template <std::size_t size>
std::vector<std::string> allNames (const std::pair<const char*, int> (&names)[size])
{
    std::vector<std::string> all;

    for (const auto& [name, number] : names)
        all.emplace_back (name);

    return all;
}

bool isAnyOf (const juce::String& text, std::initializer_list<const char*> words)
{
    for (const auto* word : words)
        if (text.equalsIgnoreCase (word))
            return true;

    return false;
}

} // namespace

std::optional<bool> yesOrNo (const juce::String& text)
{
    const bool saysYes = isAnyOf (text, { "yes", "true", "1", "on" });

    if (! saysYes && ! isAnyOf (text, { "no", "false", "0", "off" }))
        return std::nullopt;

    return saysYes;
}

std::optional<int> wholeNumber (const juce::String& text)
{
    constexpr int mostDigits = 9;
    const auto digits = text.startsWithChar ('-') ? text.substring (1) : text;

    if (digits.isEmpty() || digits.length() > mostDigits || ! digits.containsOnly ("0123456789"))
        return std::nullopt;

    return text.getIntValue();
}

std::optional<int> eventTypeNamed (const juce::String& text) { return valueOf (typeNames, text); }

std::optional<int> regionNamed (const juce::String& text) { return valueOf (regionNames, text); }

std::optional<int> reasonNamed (const juce::String& text)
{
    const auto* reasons = ADRCueReasonsManager::sharedManager();

    if (const auto number = wholeNumber (text); number && reasons->isReasonCodeValid (*number))
        return number;

    for (const auto& reason : reasons->allReasons())
        if (reason.name.equalsIgnoreCase (text.isEmpty() ? juce::String ("None") : text))
            return reason.code;

    const int byName = reasons->getReasonFromString (text);
    const int code = byName > 0 ? byName : reasons->codeForCodeText (text);
    return code > 0 ? std::optional (code) : std::nullopt;
}

bool meansNoTime (const juce::String& text)
{
    return text.isEmpty() || text.equalsIgnoreCase ("none") || text.containsOnly ("-:;");
}

juce::String nameOfEventType (int type) { return nameOf (typeNames, type); }
juce::String nameOfRegion (int item) { return nameOf (regionNames, item); }

std::vector<std::string> namesOfEventTypes() { return allNames (typeNames); }
std::vector<std::string> namesOfRegions() { return allNames (regionNames); }

} // namespace overmarks
