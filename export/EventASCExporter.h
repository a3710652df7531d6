// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "event/Event.h"

#include <juce_core/juce_core.h>

#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** Writes the ADR cues of a list as ASC, a text of fixed columns in ISO 8859-1: character, line, cue number. There are no
    times in it.

    The rule that is easily missed: it doesn't report failures. An old file is gone then, and no new one is there. */
class OVERMARKS_API EventASCExporter final
{
public:
    /** Replaces the file.
        @param events  in the order of the file; what is no ADR cue is passed over
        @param path    full path of the file
        @returns the empty string always */
    juce::String exportEvents (const std::vector<std::shared_ptr<Event>>& events, const juce::String& path);
};

} // namespace ZEP::Overmarks
