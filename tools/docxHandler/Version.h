// SPDX-License-Identifier: GPL-3.0-only
#pragma once

namespace DocxHandler
{

/** The version of the whole system, "1.0.0". */
[[nodiscard]] const char* version() noexcept;

} // namespace DocxHandler
