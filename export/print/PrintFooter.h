// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "export/print/BrowserPage.h"

#include <juce_core/juce_core.h>

#include <ctime>
#include <string>

namespace ZEP::Overmarks
{

/** What the band at the foot of each page says. */
struct PrintFooter
{
    static constexpr int height = 24; ///< points, between the content and the bottom margin

    juce::String version;     ///< of the program, as printed
    juce::String dateAndTime; ///< as printed
    juce::String layoutName;  ///< as printed
    std::string icon;         ///< bytes of a PNG file; may be empty

    /** The band as HTML of the size of the whole sheet, for a layout whose bottom margin holds it already. Where the page's number
        and that of the last page stand, there are elements of the classes "pageNumber" and "totalPages". */
    [[nodiscard]] OVERMARKS_API std::string html (const PrintLayout& layout) const;
};

/** A moment as the environment's locale writes it in short: "21.11.2026, 20:13" or "11/21/2026, 08:13 PM". */
[[nodiscard]] OVERMARKS_API juce::String shortDateAndTime (std::time_t moment);

} // namespace ZEP::Overmarks
