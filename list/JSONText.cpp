// SPDX-License-Identifier: GPL-3.0-only
#include "list/JSONText.h"

#include "core/text/TextDecoding.h"
#include "list/JSONNumber.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>

namespace ZEP::Overmarks
{

namespace
{

/** Whether a text stands in JSON as it is. */
bool needsNoEscape (std::string_view text)
{
    constexpr unsigned char blank = ' ', deleteCode = 0x7F;
    bool isASCII = true;

    for (const char c : text)
    {
        const auto byte = static_cast<unsigned char> (c);

        if (byte < blank || byte == '"' || byte == '\\' || byte == deleteCode)
            return false;

        isASCII = isASCII && byte < deleteCode;
    }

    return isASCII || ZEP::Core::ByteSurvey (text).isUTF8;
}

} // namespace

void JSONText::append (std::string& json, const juce::String& value)
{
    const std::string_view text = value.toRawUTF8(); // whose end is found faster than the framework counts

    if (needsNoEscape (text))
        json.append (1, '"').append (text).append (1, '"');
    else
        append (json, nlohmann::ordered_json (text));
}

void JSONText::append (std::string& json, bool value) { json += value ? "true" : "false"; }

void JSONText::append (std::string& json, int value)
{
    char digits[16];
    json.append (digits, std::to_chars (std::begin (digits), std::end (digits), value).ptr);
}

void JSONText::append (std::string& json, float value)
{
    if (value == -1.0f)
        json += "-1.0";
    else
        append (json, nlohmann::ordered_json (shortestJSONNumber (value)));
}

void JSONText::append (std::string& json, const nlohmann::ordered_json& value)
{
    json += value.dump (-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

} // namespace ZEP::Overmarks
