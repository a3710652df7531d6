// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <juce_core/juce_core.h>
#include <nlohmann/json.hpp>

#include <string>

namespace ZEP::Overmarks
{

/** Writes the values of a JSON text, one behind the other.

    What no UTF-8 text can hold, such as half of a surrogate pair, becomes U+FFFD. */
class OVERMARKS_API JSONText final
{
public:
    JSONText() = delete;

    static void append (std::string& json, const juce::String& value); ///< In quotation marks.
    static void append (std::string& json, bool value);                ///< "true" or "false".
    static void append (std::string& json, int value);                 ///< In digits.

    /** @param value  as shortestJSONNumber() has it */
    static void append (std::string& json, float value);

    static void append (std::string& json, const nlohmann::ordered_json& value); ///< On one line.
};

} // namespace ZEP::Overmarks
