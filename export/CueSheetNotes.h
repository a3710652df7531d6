// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "event/Event.h"
#include "export/frame/EventExportTypes.h"

#include <memory>
#include <string>

namespace ZEP::Overmarks
{

/** Appends what stands below a cue's text. An actor sees the notes, a director the reason too; an engineer also sees the
    engineering notes and the region of a forced narrative, each pair of which shares a row.

    The rule that is easily missed: an engineer's cue with a reason, engineering notes and a region shows none of the three. */
OVERMARKS_API void appendCueSheetNotes (std::string& page, const std::shared_ptr<Event>& event,
                                        EventExportLayout layout);

} // namespace ZEP::Overmarks
