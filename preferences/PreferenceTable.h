// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <Poco/Any.h>

#include <string>
#include <vector>

namespace ZEP::Overmarks
{
/** What a preference holds: a bool, an int, a float, a juce::String or a juce::Colour. */
enum class PreferenceType
{
    boolean, ///< bool
    integer, ///< int
    real,    ///< float
    text,    ///< juce::String
    colour   ///< juce::Colour
};

/** One preference: the title of the group it belongs to, the text of its key, and the default, which has the
    type told.
*/
struct PreferenceEntry
{
    std::string group;      ///< title on the settings page
    std::string key;        ///< under which UserDefaults has it
    PreferenceType type;    ///< of every value
    Poco::Any defaultValue; ///< of that type
};

/** All preferences with a default, group by group, in the order in which a settings page shows them. Any
    thread, and also before main.
*/
[[nodiscard]] OVERMARKS_API const std::vector<PreferenceEntry>& preferenceTable();
} // namespace ZEP::Overmarks
