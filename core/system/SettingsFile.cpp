// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/SettingsFile.h"

#include "core/system/FileInput.h"
#include "core/system/SettingsFileCheck.h"
#include "core/system/SettingsLimits.h"
#include "core/system/WholeFile.h"
#include "core/text/StringUtil.h"

#include <juce_graphics/juce_graphics.h>

#include <array>
#include <charconv>
#include <optional>
#include <string_view>

namespace ZEP::Core
{
namespace
{
constexpr auto fileTag = "PROPERTIES";
constexpr auto valueTag = "VALUE";
constexpr auto nameAttribute = "name";
constexpr auto valueAttribute = "val";

template <typename Number>
std::string textOf (Number number)
{
    std::array<char, 40> digits {};
    const auto result = std::to_chars (digits.data(), digits.data() + digits.size(), number);
    return { digits.data(), result.ptr };
}

template <typename Number>
std::optional<Poco::Any> numberFrom (const std::string& text)
{
    Number number {};
    const auto end = text.data() + text.size();
    const auto result = std::from_chars (text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end)
        return std::nullopt;
    return Poco::Any (number);
}

std::string boolText (const Poco::Any& value) { return Poco::RefAnyCast<bool> (value) ? "true" : "false"; }

std::optional<Poco::Any> boolFrom (const std::string& text)
{
    if (text != "true" && text != "false")
        return std::nullopt;
    return Poco::Any (text == "true");
}

template <typename Number>
std::string numberText (const Poco::Any& value)
{
    return textOf (Poco::RefAnyCast<Number> (value));
}

std::string plainText (const Poco::Any& value)
{
    return Poco::RefAnyCast<juce::String> (value).toStdString();
}

std::optional<Poco::Any> plainTextFrom (const std::string& text) { return Poco::Any (juce::String (text)); }

std::string colourText (const Poco::Any& value)
{
    return juce::String::formatted ("%08x", Poco::RefAnyCast<juce::Colour> (value).getARGB()).toStdString();
}

std::optional<Poco::Any> colourFrom (const std::string& text)
{
    juce::uint32 argb = 0;
    const auto end = text.data() + text.size();
    const auto result = std::from_chars (text.data(), end, argb, 16);
    if (text.size() != 8 || result.ec != std::errc() || result.ptr != end)
        return std::nullopt;
    return Poco::Any (juce::Colour (argb));
}

/** One type of value: how it is called in the file, and the way there and back. */
struct ValueType
{
    std::string_view name;
    const std::type_info& type;
    std::string (*toText) (const Poco::Any&);
    std::optional<Poco::Any> (*fromText) (const std::string&);
};

const std::array<ValueType, 6>& valueTypes()
{
    static const std::array<ValueType, 6> types { {
        { "bool", typeid (bool), boolText, boolFrom },
        { "int", typeid (int), numberText<int>, numberFrom<int> },
        { "float", typeid (float), numberText<float>, numberFrom<float> },
        { "double", typeid (double), numberText<double>, numberFrom<double> },
        { "text", typeid (juce::String), plainText, plainTextFrom },
        { "colour", typeid (juce::Colour), colourText, colourFrom },
    } };
    return types;
}

std::string typedText (const Poco::Any& value)
{
    for (const auto& type : valueTypes())
        if (value.type() == type.type)
            return std::string (type.name) + ":" + type.toText (value);
    return {};
}

std::optional<Poco::Any> valueFromTypedText (const std::string& text)
{
    const auto colon = text.find (':');
    for (const auto& type : valueTypes())
        if (colon != std::string::npos && text.substr (0, colon) == type.name)
            return type.fromText (text.substr (colon + 1));
    return std::nullopt;
}

juce::String quoted (const juce::File& file) { return "\"" + file.getFullPathName() + "\""; }

juce::Result damaged (const juce::File& file)
{
    return juce::Result::fail ("The settings file " + quoted (file) + " is damaged");
}
} // namespace

SettingsLimits& SettingsLimits::limits()
{
    static SettingsLimits current;
    return current;
}

bool SettingsFile::canHold (const Poco::Any& value)
{
    for (const auto& type : valueTypes())
        if (value.type() == type.type)
            return true;
    return false;
}

juce::Result SettingsFile::read (const juce::File& file, Values& values)
{
    std::string bytes;
    if (const auto result =
            FileInput::readWhole (file.getFullPathName(), bytes, SettingsLimits::limits().bytesOfFile);
        result.failed())
        return juce::Result::fail ("The settings file " + quoted (file)
                                   + " can't be read: " + result.getErrorMessage());
    if (! SettingsFileCheck::isSound (bytes))
        return damaged (file);

    const auto document = juce::parseXML (StringUtil::fromUTF8 (bytes));
    if (document == nullptr)
        return damaged (file);

    Values found;
    for (const auto* element : document->getChildWithTagNameIterator (valueTag))
    {
        const auto name = element->getStringAttribute (nameAttribute);
        auto value = valueFromTypedText (element->getStringAttribute (valueAttribute).toStdString());
        if (! value.has_value())
            return juce::Result::fail ("The settings file " + quoted (file) + " is damaged: the value of \""
                                       + name + "\" can't be understood");
        found[name.toStdString()] = std::move (*value);
    }
    values.swap (found);
    return juce::Result::ok();
}

juce::Result SettingsFile::write (const juce::File& file, const Values& values)
{
    juce::XmlElement document (fileTag);
    for (const auto& [name, value] : values)
    {
        auto* element = document.createNewChildElement (valueTag);
        element->setAttribute (nameAttribute, juce::String (name));
        element->setAttribute (valueAttribute, juce::String (typedText (value)));
    }

    // The framework's own way of writing takes a disk that is full in the middle for a success.
    if (file.getParentDirectory().createDirectory().failed() || WholeFile::isDeviceOrPipe (file)
        || WholeFile::write (file, document.toString().toStdString()).failed())
        return juce::Result::fail ("Error writing the settings file " + quoted (file));
    return juce::Result::ok();
}
} // namespace ZEP::Core
