// SPDX-License-Identifier: GPL-3.0-only
#include "preferences/UserDefaultsRegistrar.h"

#include "core/system/UserDefaults.h"
#include "preferences/PreferenceTable.h"

namespace ZEP::Overmarks
{
void UserDefaultsRegistrar::registerUserDefaults()
{
    std::map<juce::String, Poco::Any> defaults;
    for (const auto& entry : preferenceTable())
        defaults[juce::String (entry.key)] = entry.defaultValue;
    Core::UserDefaults::registerUserDefaults (defaults);
}
} // namespace ZEP::Overmarks
