// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <cstddef>
#include <string_view>

namespace ZEP::Core
{

/** What a worksheet holds, counted. */
struct WorksheetContent
{
    std::size_t cells = 0;
    std::size_t bytesOfText = 0; ///< UTF-8, with the escapes of a workbook

    [[nodiscard]] bool operator== (const WorksheetContent&) const = default;
};

/** Whether a new workbook is whole: every part is well-formed, and its first sheet holds this content. A disk that is full while
    a part waits in a temporary file cuts it short, and the library that writes workbooks doesn't notice. */
[[nodiscard]] bool isWholeWorkbook (std::string_view bytes, const WorksheetContent& content);

} // namespace ZEP::Core
