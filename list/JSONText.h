// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <juce_core/juce_core.h>
#include <nlohmann/json.hpp>

#include <cstddef>
#include <functional>
#include <string>

namespace ZEP::Overmarks
{

/** Writes the values of a JSON text, one behind the other.

    What no UTF-8 text can hold, such as half of a surrogate pair, becomes U+FFFD. */
class OVERMARKS_API JSONText final
{
public:
    JSONText() = delete;

    static void append (std::string& json, const juce::String& value);
    static void append (std::string& json, bool value);
    static void append (std::string& json, int value);

    /** @param value  as shortestJSONNumber() has it */
    static void append (std::string& json, float value);

    static void append (std::string& json, const nlohmann::ordered_json& value);
};

/** A text on its way: what there is of it goes to the sink as soon as it is long enough, so that it never stands in memory as a whole. */
class TextInParts final
{
public:
    using Sink = std::function<void (const std::string& part)>;

    explicit TextInParts (const Sink& takesParts) : sink (takesParts) {}

    void passOn (std::size_t longEnough = partSize)
    {
        if (text.size() < longEnough)
            return;

        sink (text);
        text.clear();
    }

    std::string text; ///< what the sink hasn't yet

private:
    static constexpr std::size_t partSize = 1 << 16;
    const Sink& sink;
};

} // namespace ZEP::Overmarks
