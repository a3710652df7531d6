// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Sheet.h"

#include <filesystem>
#include <string_view>

namespace DocxHandler
{

/** The sheet that a JSON object describes. What is missing or of another type is empty; what isn't known is passed over.
    Throws a Failure for a text that is no JSON object, or one that is nested deeper than any sheet. */
[[nodiscard]] Sheet sheetFromJSON (std::string_view json);

/** The same for a file, whose name the Failure tells. */
[[nodiscard]] Sheet readSheet (const std::filesystem::path& file);

} // namespace DocxHandler
