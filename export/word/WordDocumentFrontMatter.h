// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "export/frame/EventExportSettingsSet.h"

#include <juce_core/juce_core.h>

namespace ZEP::Overmarks
{

/** The table on the first page of a Word document: production, picture, and whose cues these are. */
struct OVERMARKS_API WordDocumentFrontMatter final
{
    /** The language and the timecode of the timeline aren't printed and have no key. */
    [[nodiscard]] juce::DynamicObject::Ptr toJSONDynamicObject() const;

    int fontSize;                                 ///< points
    EventExportProjectSettings projectSettings;   ///< a copy
    EventExportTimelineSettings timelineSettings; ///< a copy
    juce::String charAndActor; ///< "ANNA (Mary Miller)", several of them with commas between
};

} // namespace ZEP::Overmarks
