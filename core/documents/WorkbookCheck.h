// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstddef>
#include <string_view>

namespace ZEP::Core
{

/** Whether a new workbook is whole: every part can be read to its end and is well-formed, and the rows of its first sheet take as many
    bytes of XML as were written. A disk that is full while a part waits in a temporary file cuts it short, and the library that
    writes workbooks doesn't notice. */
[[nodiscard]] bool isWholeWorkbook (std::string_view bytes, std::size_t bytesOfRows);

} // namespace ZEP::Core
