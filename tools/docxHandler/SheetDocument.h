// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "DocumentParts.h"

namespace DocxHandler
{

/** The bytes of the Word document that shows a sheet.
    @param progress  is told the share that is done, 0 to 1, now and then */
[[nodiscard]] std::string wordDocument (const Sheet& sheet, const Surroundings& surroundings,
                                        const std::function<void (double)>& progress);

} // namespace DocxHandler
