// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <juce_core/juce_core.h>

#include <string>

namespace ZEP::Core
{

/** An object as JSON, in the framework's form but for one letter: a bell, which it writes as "\a" and which then no reader of JSON takes,
    stands as "\u0007". Fractions have 16 digits at most, as the framework writes them. */
[[nodiscard]] ZEP_CORE_API std::string jsonTextOf (juce::DynamicObject& object, bool allOnOneLine);

} // namespace ZEP::Core
