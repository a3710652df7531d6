// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>
#include <nlohmann/json.hpp>

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

namespace ZEP::Overmarks
{

/** A value of a JSON text together with its place, such as "events[3].cueNumber", so that every complaint names it.

    Each reading operation takes exactly one kind of value and throws std::invalid_argument, with a message for people, for
    any other. Refers to the value, to its name and to what it is a part of, which all have to outlive it; the words for the
    place are put together only when there is something to complain about. */
class JSONMember final
{
public:
    using json = nlohmann::ordered_json;

    /** A value that is part of nothing. @param nameToShow  what complaints call it; empty for the outermost object */
    JSONMember (const json& valueToRead, std::string_view nameToShow)
        : value (&valueToRead),
          name (nameToShow)
    {
    }

    /** A member of an object. */
    JSONMember (const json& valueToRead, const JSONMember& object, std::string_view nameInObject)
        : value (&valueToRead),
          outer (&object),
          name (nameInObject)
    {
    }

    /** An element of an array. @param indexInArray  counted from 0 */
    JSONMember (const json& valueToRead, const JSONMember& array, std::size_t indexInArray)
        : value (&valueToRead),
          outer (&array),
          index (static_cast<std::ptrdiff_t> (indexInArray))
    {
    }

    juce::String text() const;
    bool flag() const;
    float number() const;
    float numberAboveZero() const;
    int integer (int lowest = std::numeric_limits<int>::min(),
                 int highest = std::numeric_limits<int>::max()) const;
    unsigned int unsignedInteger (unsigned int lowest, unsigned int highest) const;

    /** Calls visit (element) for each element of an array. */
    template <typename Visitor>
    void forEachElement (Visitor&& visit) const
    {
        requireArray();

        for (std::size_t i = 0; i < value->size(); ++i)
            visit (JSONMember ((*value)[i], *this, i));
    }

    /** Calls visit (name, member) for each member of an object in the order of the text. */
    template <typename Visitor>
    void forEachMember (Visitor&& visit) const
    {
        requireObject();

        for (const auto& [memberName, member] : value->get_ref<const json::object_t&>())
            visit (memberName, JSONMember (member, *this, memberName));
    }

    const json& element() const noexcept { return *value; }

    /** A text from a stranger for a message, in quotes: control codes escaped, cut behind a hundred characters. */
    static std::string quoted (const std::string& text);

    [[noreturn]] void fail (const std::string& reason) const;
    [[noreturn]] void failUnknown() const;

private:
    std::string place() const;
    void requireArray() const;
    void requireObject() const;
    long long wholeNumber (long long lowest, long long highest) const;

    const json* value;
    const JSONMember* outer = nullptr;
    std::string_view name;
    std::ptrdiff_t index = -1; ///< -1 for what is no element
};

} // namespace ZEP::Overmarks
