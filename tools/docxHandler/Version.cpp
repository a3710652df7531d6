// SPDX-License-Identifier: GPL-3.0-only
#include "Version.h"

namespace DocxHandler
{

const char* version() noexcept { return OVERMARKS_VERSION; }

} // namespace DocxHandler
