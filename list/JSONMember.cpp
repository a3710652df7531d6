// SPDX-License-Identifier: GPL-3.0-only
#include "list/JSONMember.h"

#include "core/text/StringUtil.h"

#include <cmath>
#include <stdexcept>

namespace ZEP::Overmarks
{

std::string JSONMember::place() const
{
    if (outer == nullptr)
        return std::string (name);

    const auto start = outer->place();

    if (index >= 0)
        return start + "[" + std::to_string (index) + "]";

    return start.empty() ? std::string (name) : start + "." + std::string (name);
}

void JSONMember::fail (const std::string& reason) const
{
    throw std::invalid_argument (place() + ": " + reason);
}

void JSONMember::failUnknown() const
{
    throw std::invalid_argument ("There is no member " + quoted (place()));
}

std::string JSONMember::quoted (const std::string& text)
{
    constexpr int mostCharacters = 100;
    const auto escaped =
        ZEP::Core::StringUtil::fromUTF8 (json (text).dump (-1, ' ', false, json::error_handler_t::replace));

    if (escaped.length() <= mostCharacters + 2)
        return escaped.toStdString();

    return escaped.substring (0, mostCharacters + 1).toStdString() + "...\"";
}

juce::String JSONMember::text() const
{
    if (! value->is_string())
        fail ("a text is expected");

    const auto& bytes = value->get_ref<const std::string&>();

    if (bytes.find ('\0') != std::string::npos)
        fail ("the text holds a NUL character");

    return ZEP::Core::StringUtil::fromUTF8 (bytes);
}

bool JSONMember::flag() const
{
    if (! value->is_boolean())
        fail ("true or false is expected");

    return value->get<bool>();
}

float JSONMember::number() const
{
    if (! value->is_number())
        fail ("a number is expected");

    const auto number = value->get<double>();

    if (! std::isfinite (number) || std::abs (number) > double { std::numeric_limits<float>::max() })
        fail ("the number is too large");

    return static_cast<float> (number);
}

float JSONMember::numberAboveZero() const
{
    const auto found = number();

    if (found <= 0.0f)
        fail ("a number above 0 is expected");

    return found;
}

long long JSONMember::wholeNumber (long long lowest, long long highest) const
{
    const bool fits = value->is_number_unsigned()
                          ? value->get<unsigned long long>()
                                <= static_cast<unsigned long long> (std::numeric_limits<long long>::max())
                          : value->is_number_integer();
    const auto number = fits ? value->get<long long>() : 0;

    if (! fits || number < lowest || number > highest)
        fail ("a whole number from " + std::to_string (lowest) + " to " + std::to_string (highest)
              + " is expected");

    return number;
}

int JSONMember::integer (int lowest, int highest) const
{
    return static_cast<int> (wholeNumber (lowest, highest));
}

unsigned int JSONMember::unsignedInteger (unsigned int lowest, unsigned int highest) const
{
    return static_cast<unsigned int> (wholeNumber (lowest, highest));
}

void JSONMember::requireArray() const
{
    if (! value->is_array())
        fail ("a list in square brackets is expected");
}

void JSONMember::requireObject() const
{
    if (! value->is_object())
        fail ("an object in braces is expected");
}

} // namespace ZEP::Overmarks
