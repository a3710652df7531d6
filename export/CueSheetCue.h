// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "event/Event.h"
#include "export/frame/EventExportSettingsSet.h"

#include <memory>
#include <string>

namespace ZEP::Overmarks
{

/** The files of the icons beside a cue's character, in point and out point, in the folder of the resources. */
struct CueSheetIcons
{
    static constexpr auto character = "pdf-export-character-icon.png"; ///< before the character's name
    static constexpr auto inPoint = "pdf-export-in-point-icon.png";    ///< before the time of the in point
    static constexpr auto outPoint = "pdf-export-out-point-icon.png";  ///< before the time of the end
};

/** Appends one cue: its text, notes and boxes for takes on the left; number, character and times on the right. */
OVERMARKS_API void appendCue (std::string& page, const std::shared_ptr<Event>& event,
                              const EventExportSettingsSet& settings);

} // namespace ZEP::Overmarks
