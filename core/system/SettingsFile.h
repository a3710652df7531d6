// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <Poco/Any.h>
#include <juce_core/juce_core.h>

#include <map>
#include <string>

namespace ZEP::Core
{
/** The preferences of one user as a file: the XML of a juce::PropertiesFile, each value with its type before
    it.

        <PROPERTIES>
          <VALUE name="StreamerWidth" val="float:0.06"/>
        </PROPERTIES>

    Types are bool (true, false), int, float, double, text, and colour (eight hexadecimal digits: alpha, red,
    green, blue). Numbers are written in the shortest form that reads back as the same number. Any thread, one
    at a time for a file.
*/
class SettingsFile final
{
public:
    using Values = std::map<std::string, Poco::Any>;

    SettingsFile() = delete;

    /** Whether a value is of one of the types above. */
    [[nodiscard]] static bool canHold (const Poco::Any& value);

    /** Replaces the values by those of the file. A file that is damaged, larger than SettingsLimits allow, or no file but a
        pipe or the like, gives a message and leaves them alone. */
    [[nodiscard]] static juce::Result read (const juce::File& file, Values& values);

    /** Writes all values, each of which canHold must accept. At every moment the file is the old or the new
        one, whole. Makes missing folders.
    */
    [[nodiscard]] static juce::Result write (const juce::File& file, const Values& values);
};
} // namespace ZEP::Core
