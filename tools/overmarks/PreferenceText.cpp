// SPDX-License-Identifier: GPL-3.0-only
#include "PreferenceText.h"

#include "Session.h"
#include "Suggestion.h"

#include <juce_graphics/juce_graphics.h>

#include <charconv>
#include <cmath>
#include <optional>
#include <vector>

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

/** The number that the whole text is. */
template <typename Number>
std::optional<Number> numberIn (const std::string& text)
{
    Number number {};
    const auto* const end = text.data() + text.size();
    const auto read = std::from_chars (text.data(), end, number);

    if (read.ec != std::errc() || read.ptr != end)
        return std::nullopt;

    return number;
}

juce::String shortest (float number)
{
    char digits[64];
    const auto written = std::to_chars (std::begin (digits), std::end (digits), number);
    return { std::string (std::begin (digits), written.ptr) };
}

[[noreturn]] void refuse (const PreferenceEntry& entry, const std::string& text, const char* expected)
{
    throw WrongUsage (entry.key + ": \"" + text + "\" is not " + expected);
}

bool flag (const PreferenceEntry& entry, const std::string& text)
{
    if (text != "true" && text != "false")
        refuse (entry, text, "true or false");

    return text == "true";
}

int integer (const PreferenceEntry& entry, const std::string& text)
{
    const auto number = numberIn<int> (text);

    if (! number)
        refuse (entry, text, "a whole number");

    return *number;
}

float real (const PreferenceEntry& entry, const std::string& text)
{
    const auto number = numberIn<float> (text);

    if (! number || ! std::isfinite (*number))
        refuse (entry, text, "a number");

    return *number;
}

juce::Colour colour (const PreferenceEntry& entry, const std::string& text)
{
    if (text.size() != 8 || text.find_first_not_of ("0123456789abcdefABCDEF") != std::string::npos)
        refuse (entry, text, "a colour of eight hexadecimal digits, alpha first");

    return juce::Colour::fromString (juce::String (text));
}

} // namespace

juce::String preferenceText (const Poco::Any& value)
{
    if (const auto* flagValue = Poco::AnyCast<bool> (&value))
        return *flagValue ? "true" : "false";
    if (const auto* whole = Poco::AnyCast<int> (&value))
        return juce::String (*whole);
    if (const auto* number = Poco::AnyCast<float> (&value))
        return shortest (*number);
    if (const auto* text = Poco::AnyCast<juce::String> (&value))
        return *text;
    if (const auto* shade = Poco::AnyCast<juce::Colour> (&value))
        return shade->toDisplayString (true).toLowerCase();

    return {};
}

Poco::Any preferenceValue (const PreferenceEntry& entry, const std::string& text)
{
    switch (entry.type)
    {
        case PreferenceType::boolean: return flag (entry, text);
        case PreferenceType::integer: return integer (entry, text);
        case PreferenceType::real: return real (entry, text);
        case PreferenceType::colour: return colour (entry, text);
        case PreferenceType::text: break;
    }

    return juce::String (text);
}

const PreferenceEntry& preferenceWithKey (const std::string& key)
{
    std::vector<std::string> known;

    for (const auto& entry : preferenceTable())
    {
        if (entry.key == key)
            return entry;

        known.push_back (entry.key);
    }

    throw WrongUsage ("There is no preference \"" + key + "\"." + didYouMean (key, known));
}

} // namespace overmarks
