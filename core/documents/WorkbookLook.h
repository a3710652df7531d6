// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/text/RichTextString.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace ZEP::Core
{

/** How a piece of text looks in a workbook. The default is what the cell's own format says: there is nothing to be written. */
struct WorkbookLook
{
    bool bold = false;
    bool italic = false;
    bool underlined = false;
    bool struckThrough = false;
    int hundredthPoints = 0; ///< its size; 0 for that of the workbook's default font
    std::uint32_t colour =
        0;                ///< red, green, blue; black is the default. Text in a workbook is never translucent
    std::string typeface; ///< empty for the workbook's default font

    [[nodiscard]] auto operator<=> (const WorkbookLook&) const = default;

    /** The look of a run of a rich text. */
    [[nodiscard]] static WorkbookLook of (const RichTextString::Attribute& attribute);
};

/** A piece of a cell's text that has one look. */
struct WorkbookRun
{
    std::string_view text; ///< UTF-8, part of the rich text's own
    WorkbookLook look;
};

/** The pieces of a text from left to right, none empty, neighbours of one look as one. Valid as long as the text is.
    @param allBold  for the cells of a heading */
[[nodiscard]] std::vector<WorkbookRun> workbookRunsOf (const RichTextString& text, bool allBold);

/** The content of the element `is` of a cell with these runs. */
[[nodiscard]] std::string workbookXMLOf (const std::vector<WorkbookRun>& runs);

/** The same for a text that looks like its cell. */
[[nodiscard]] std::string workbookXMLOf (std::string_view text);

} // namespace ZEP::Core
