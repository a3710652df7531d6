// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <juce_core/juce_core.h>

namespace ZEP::Core
{
/** One role of a project: the name in the script, the letters its cue numbers begin with, and who speaks it.

    Its identifier belongs to the ADRCharacterMap it stands in, not to the role, so that renaming a role keeps
    all its cues. Fields are read and written directly. Held by std::shared_ptr; one thread at a time.
*/
class ZEP_CORE_API ADRCharacter final
{
public:
    explicit ADRCharacter (const juce::String& name);

    juce::String name;
    juce::String prefix;
    juce::String actor;
};
} // namespace ZEP::Core
