// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "export/frame/EventExportSettingsSet.h"

#include <juce_core/juce_core.h>

#include <string>

namespace ZEP::Overmarks
{

/** Appends the head of a cue sheet's first page: the project's title, and a table of what is known of project and picture.
    Only the row of reel and picture version and the one of the cast are always there.
    @param charactersAndActors  for the last row */
OVERMARKS_API void appendCueSheetHeader (std::string& page, const EventExportSettingsSet& settings,
                                         const juce::String& charactersAndActors);

} // namespace ZEP::Overmarks
