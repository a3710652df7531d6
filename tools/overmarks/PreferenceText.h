// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "preferences/PreferenceTable.h"

#include <Poco/Any.h>
#include <juce_core/juce_core.h>

#include <string>

namespace overmarks
{

/** The value of a preference as text: true or false, a number in its shortest form, a colour as eight hexadecimal digits. */
juce::String preferenceText (const Poco::Any& value);

/** The value that a text stands for. Throws WrongUsage for one that isn't wholly of the preference's type. */
Poco::Any preferenceValue (const ZEP::Overmarks::PreferenceEntry& entry, const std::string& text);

/** The preference of a key. Throws WrongUsage, with a suggestion. */
const ZEP::Overmarks::PreferenceEntry& preferenceWithKey (const std::string& key);

} // namespace overmarks
