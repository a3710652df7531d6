// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <juce_core/juce_core.h>

namespace ZEP::Core
{

/** The text of a new random UUID in lower case, the identity of an event or a character. Any thread. */
[[nodiscard]] ZEP_CORE_API juce::String randomIdentity();

} // namespace ZEP::Core
