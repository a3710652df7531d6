// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <Poco/Any.h>
#include <juce_graphics/juce_graphics.h>

#include <concepts>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace ZEP::Core
{
/** The preferences: named values that the user stored, above the defaults that the program registered.

    Numbers (bool, int, float, double) convert into each other: a fraction is cut off, a value outside the
    range of int becomes the nearest int, and whatever isn't 0 is true. A key that nobody stored or
    registered, or whose value is no number (no text, no colour) where one is asked for, reads 0, false, the
    empty text or transparent black. Reading costs a table lookup.

    Values live in memory until the application names a settings file. No lock: many threads may read, one may
    change while none reads.
*/
class ZEP_CORE_API UserDefaults final
{
public:
    UserDefaults() = delete;

    /** Adds these to the defaults; of a key that has a default already, the new one counts. What the user
        stored stays.
    */
    static void registerUserDefaults (const std::map<juce::String, Poco::Any>& defaults);

    [[nodiscard]] static int getIntForKey (const juce::String& key);     ///< The nearest int; 0 if unknown.
    [[nodiscard]] static float getFloatForKey (const juce::String& key); ///< 0 if unknown.
    [[nodiscard]] static bool getBoolForKey (const juce::String& key);   ///< False if unknown.
    [[nodiscard]] static juce::String getStringForKey (const juce::String& key); ///< Empty if there's none.
    [[nodiscard]] static juce::Colour getColourForKey (const juce::String& key); ///< Else fully transparent.

    /** The same for keys that are a std::string, as all key globals are, without making a juce::String of
        each.
    */
    template <std::same_as<std::string> Key>
    [[nodiscard]] static int getIntForKey (const Key& key)
    {
        return intForKey (key);
    }

    template <std::same_as<std::string> Key>
    [[nodiscard]] static float getFloatForKey (const Key& key)
    {
        return floatForKey (key);
    } ///< As getFloatForKey() of a juce::String.

    template <std::same_as<std::string> Key>
    [[nodiscard]] static bool getBoolForKey (const Key& key)
    {
        return boolForKey (key);
    } ///< As getBoolForKey() of a juce::String.

    /** The stored value, else the default, else an empty Any. */
    [[nodiscard]] static Poco::Any valueForKey (const juce::String& key);

    /** Stores a bool, int, float, double, juce::String or juce::Colour. Any other type fails and changes
        nothing. With a settings file the file is written at once; if that fails the value still holds for
        this run.
    */
    static juce::Result setValueForKey (const juce::String& key, const Poco::Any& value);

    /** Goes back to the default. */
    static juce::Result removeValueForKey (const juce::String& key);

    /** Goes back to all defaults. */
    static juce::Result removeAllStoredValues();

    [[nodiscard]] static bool hasStoredValue (const juce::String& key); ///< Registered ones don't count.

    /** The keys with a default, in alphabetical order of their characters' codes. */
    [[nodiscard]] static std::vector<juce::String> registeredKeys();

    /** Keeps what the user stores in this file from now on. What the file holds is added to the stored
        values, and wins; a file that isn't there yet is written with the first value. A file that can't be
        used gives a message, and everything is as before: the values and the file that was in use. An empty
        File goes back to memory alone. From one file straight to another, the values of the first stay
        with it.
    */
    [[nodiscard]] static juce::Result setSettingsFile (const juce::File& file);

private:
    static int intForKey (std::string_view key);
    static float floatForKey (std::string_view key);
    static bool boolForKey (std::string_view key);
};
} // namespace ZEP::Core
