// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "export/frame/EventExportSettingsSet.h"

#include <juce_core/juce_core.h>

#include <vector>

namespace overmarks
{

/** The files that an exporter makes for these settings, in their order; known before it begins.
    @param extension  with its dot */
std::vector<juce::File> filesOfExport (const ZEP::Overmarks::EventExportSettingsSet& settings,
                                       const juce::String& extension, bool byCharacter);

/** The events of each of them. */
std::vector<ZEP::Overmarks::EventExportSettingsSet::Events> eventsOfFiles (
    const ZEP::Overmarks::EventExportSettingsSet& settings, bool byCharacter);

} // namespace overmarks
