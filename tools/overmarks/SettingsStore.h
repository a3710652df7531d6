// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <Poco/Any.h>
#include <juce_core/juce_core.h>

#include <string>
#include <utility>
#include <vector>

namespace overmarks
{

/** Stores all values in the preferences file or none: each is written to a copy, which then takes the file's place. The file is the
    one in use afterwards. Throws CommandFailure. */
void storeSettings (const std::vector<std::pair<std::string, Poco::Any>>& values, const juce::File& file);

} // namespace overmarks
