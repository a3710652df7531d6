// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "event/Event.h"

#include <string>

namespace ZEP::Overmarks
{

/** Appends the boxes with the numbers of a cue's takes: 1 to 25, and a second row up to 50 from the 26th take on. The chosen
    take's box says "Sel", the alternative's "Alt".

    The rule that is easily missed: the stored numbers of those two takes are compared with what is printed, as they stand. */
OVERMARKS_API void appendTakeNumberBoxes (std::string& page, const Event& event);

} // namespace ZEP::Overmarks
