// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/documents/PaperSize.h"
#include "export/frame/EventExportSettingsSet.h"

namespace ZEP::Overmarks
{

/** What the settings ask for (EventExportPaperKey), else the paper of the locale. */
[[nodiscard]] OVERMARKS_API Core::PaperSize paperOf (const EventExportSettingsSet& settings);

} // namespace ZEP::Overmarks
