// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/UserDefaults.h"

#include "core/system/MissingFile.h"
#include "core/system/ProcessLifetime.h"
#include "core/system/SettingsFile.h"
#include "core/system/SharedFolder.h"
#include "core/text/StringUtil.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <system_error>
#include <unordered_map>

namespace ZEP::Core
{
namespace
{
struct KeyHash
{
    using is_transparent = void;

    std::size_t operator() (std::string_view key) const { return std::hash<std::string_view> {}(key); }
};

using Table = std::unordered_map<std::string, Poco::Any, KeyHash, std::equal_to<>>;

struct Store
{
    Table defaults;
    Table stored;
    juce::File settingsFile;
};

Store& store()
{
    static const ProcessLifetime<Store> theStore;
    return theStore.get();
}

std::string_view viewOf (const juce::String& text) { return text.toRawUTF8(); }

const Poco::Any* valueIn (const Table& table, std::string_view key)
{
    const auto found = table.find (key);
    return found != table.end() ? &found->second : nullptr;
}

const Poco::Any* find (std::string_view key)
{
    const auto* stored = valueIn (store().stored, key);
    return stored != nullptr ? stored : valueIn (store().defaults, key);
}

template <typename Value>
std::optional<Value> valueAs (const Poco::Any* value)
{
    const auto* found = Poco::AnyCast<Value> (value);
    return found != nullptr ? std::optional (*found) : std::nullopt;
}

std::optional<double> numberOf (const Poco::Any* value)
{
    if (const auto* whole = Poco::AnyCast<int> (value))
        return *whole;
    if (const auto* single = Poco::AnyCast<float> (value))
        return static_cast<double> (*single);
    if (const auto* flag = Poco::AnyCast<bool> (value))
        return *flag ? 1.0 : 0.0;
    if (const auto* real = Poco::AnyCast<double> (value))
        return *real;
    return std::nullopt;
}

/** What the file leads to: settings are neither read nor saved through a link that somebody else has put into a folder of everybody's. */
juce::Result findPlace (const juce::File& file, juce::File& place)
{
    if (file == juce::File())
        return juce::Result::ok();

    try
    {
        place = juce::File (StringUtil::fromUTF8 (
            SharedFolder::placeBehindLinks (file.getFullPathName().toStdString()).string()));
        return juce::Result::ok();
    }
    catch (const std::system_error& error)
    {
        return juce::Result::fail ("The settings file " + file.getFullPathName().quoted()
                                   + " can't be read: " + juce::String (error.code().message()));
    }
}

/** The stored value, or the default where nothing is stored or something that the key can't mean: a settings file that
    somebody has edited by hand must not turn every cue's length into nothing. */
template <typename Reading>
auto readingOf (std::string_view key, Reading&& reading)
{
    const auto stored = reading (valueIn (store().stored, key));
    return stored ? stored : reading (valueIn (store().defaults, key));
}

template <typename Value>
Value valueOr (const juce::String& key, Value otherwise)
{
    return readingOf (viewOf (key), valueAs<Value>).value_or (otherwise);
}

double numberForKey (std::string_view key) { return readingOf (key, numberOf).value_or (0.0); }

juce::Result write (const Table& stored, const juce::File& file)
{
    return file == juce::File() ? juce::Result::ok()
                                : SettingsFile::write (file, { stored.begin(), stored.end() });
}

juce::Result writeStored() { return write (store().stored, store().settingsFile); }
} // namespace

void UserDefaults::registerUserDefaults (const std::map<juce::String, Poco::Any>& defaults)
{
    for (const auto& [key, value] : defaults)
        store().defaults.insert_or_assign (key.toStdString(), value);
}

int UserDefaults::intForKey (std::string_view key)
{
    using Limits = std::numeric_limits<int>;
    const auto number = numberForKey (key);
    if (std::isnan (number))
        return 0;
    return static_cast<int> (std::clamp<double> (number, Limits::min(), Limits::max()));
}

float UserDefaults::floatForKey (std::string_view key) { return static_cast<float> (numberForKey (key)); }

bool UserDefaults::boolForKey (std::string_view key)
{
    return std::fpclassify (numberForKey (key)) != FP_ZERO;
}

int UserDefaults::getIntForKey (const juce::String& key) { return intForKey (viewOf (key)); }

float UserDefaults::getFloatForKey (const juce::String& key) { return floatForKey (viewOf (key)); }

bool UserDefaults::getBoolForKey (const juce::String& key) { return boolForKey (viewOf (key)); }

juce::String UserDefaults::getStringForKey (const juce::String& key) { return valueOr (key, juce::String()); }

juce::Colour UserDefaults::getColourForKey (const juce::String& key) { return valueOr (key, juce::Colour()); }

Poco::Any UserDefaults::valueForKey (const juce::String& key)
{
    const auto* value = find (viewOf (key));
    return value != nullptr ? *value : Poco::Any();
}

juce::Result UserDefaults::setValueForKey (const juce::String& key, const Poco::Any& value)
{
    if (! SettingsFile::canHold (value))
        return juce::Result::fail ("The value of \"" + key + "\" is of no type that can be stored");
    store().stored.insert_or_assign (key.toStdString(), value);
    return writeStored();
}

juce::Result UserDefaults::removeValueForKey (const juce::String& key)
{
    return store().stored.erase (key.toStdString()) > 0 ? writeStored() : juce::Result::ok();
}

juce::Result UserDefaults::removeAllStoredValues()
{
    if (store().stored.empty())
        return juce::Result::ok();
    store().stored.clear();
    return writeStored();
}

bool UserDefaults::hasStoredValue (const juce::String& key) { return store().stored.contains (viewOf (key)); }

std::vector<juce::String> UserDefaults::registeredKeys()
{
    std::vector<juce::String> keys;
    for (const auto& [key, value] : store().defaults)
        keys.emplace_back (key);
    std::sort (keys.begin(), keys.end());
    return keys;
}

juce::Result UserDefaults::setSettingsFile (const juce::File& file)
{
    juce::File target;
    if (const auto result = findPlace (file, target); result.failed())
        return result;

    SettingsFile::Values found;
    if (! isMissing (target))
        if (const auto result = SettingsFile::read (target, found); result.failed())
            return result;

    // What was set while there was no file goes into the file; what another file holds stays there.
    const juce::File none;
    const bool changesFiles =
        store().settingsFile != none && target != none && store().settingsFile != target;
    auto stored = changesFiles ? Table() : store().stored;
    for (const auto& [key, value] : found)
        stored.insert_or_assign (key, value);

    if (stored.size() > found.size())
        if (const auto result = write (stored, target); result.failed())
            return result;

    store().stored = std::move (stored);
    store().settingsFile = target;
    return juce::Result::ok();
}
} // namespace ZEP::Core
