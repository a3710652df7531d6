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
    explicit ADRCharacter (const juce::String& name); ///< With no prefix and no actor yet.

    juce::String name;   ///< as in the script; several characters of a map may share one
    juce::String prefix; ///< letters before the cue numbers; may be empty
    juce::String actor;  ///< who speaks the part; empty while nobody is cast
};
} // namespace ZEP::Core
