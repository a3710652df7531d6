// SPDX-License-Identifier: GPL-3.0-only
#include "core/cast/ADRCharacter.h"

namespace ZEP::Core
{
ADRCharacter::ADRCharacter (const juce::String& characterName) : name (characterName) {}
} // namespace ZEP::Core
