// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>
#include <nlohmann/json.hpp>

#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace ZEP::Overmarks
{

/** A value of a JSON text together with its place, such as "events[3].cueNumber", so that every complaint names it.

    Each reading operation takes exactly one kind of value and throws std::invalid_argument, with a message for people, for
    any other. Refers to the value, which has to outlive it. */
class JSONMember final
{
public:
    JSONMember (const nlohmann::ordered_json& valueToRead, std::string placeOfValue);

    juce::String text() const;
    bool flag() const;
    float number() const;
    float numberAboveZero() const;
    int integer (int lowest = std::numeric_limits<int>::min(),
                 int highest = std::numeric_limits<int>::max()) const;
    unsigned int unsignedInteger (unsigned int lowest, unsigned int highest) const;

    /** The elements of an array. */
    std::vector<JSONMember> elements() const;

    /** Visits the members of an object in the order of the text. */
    void forEachMember (
        const std::function<void (const std::string& name, const JSONMember& member)>& visit) const;

    const nlohmann::ordered_json& element() const noexcept { return *value; }
    const std::string& where() const noexcept { return place; }

    /** A text from a stranger for a message, in quotes: control codes escaped, cut behind a hundred characters. */
    static std::string quoted (const std::string& text);

    [[noreturn]] void fail (const std::string& reason) const;
    [[noreturn]] void failUnknown() const;

private:
    long long whole (long long lowest, long long highest) const;

    const nlohmann::ordered_json* value;
    std::string place;
};

} // namespace ZEP::Overmarks
