// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "event/Event.h"

#include <juce_core/juce_core.h>

#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** Writes a list for Arendis, a script of fixed columns in ISO 8859-1: the cue number where a new one begins, and for each
    event its character and its line. There are no times in it.

    The rules that are easily missed: the title goes into the file as UTF-8, and failures aren't reported. An old file is
    gone then, and no new one is there. */
class OVERMARKS_API EventArendisTXTExporter final
{
public:
    /** Replaces the file.
        @param events  in the order of the file, of any type
        @param path    full path of the file
        @param title   first line of the file
        @returns the empty string always */
    juce::String exportEvents (const std::vector<std::shared_ptr<Event>>& events, const juce::String& path,
                               const juce::String& title);
};

} // namespace ZEP::Overmarks
