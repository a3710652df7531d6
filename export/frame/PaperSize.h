// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "export/frame/EventExportSettingsSet.h"

namespace ZEP::Overmarks
{

/** A sheet of paper, upright, in whole points. */
struct PaperSize
{
    int width;
    int height;

    bool operator== (const PaperSize&) const = default;
};

inline constexpr PaperSize paperA4 { 595, 842 };
inline constexpr PaperSize paperLetter { 612, 792 };

/** The sheet of these measures; A4 for measures that no sheet has. */
[[nodiscard]] OVERMARKS_API PaperSize paperSizeFromMillimetres (int width, int height);

/** What is usual at the place that the environment's locale names; A4 where it says nothing. */
[[nodiscard]] OVERMARKS_API PaperSize localPaperSize();

/** What the settings ask for (EventExportPaperKey), else localPaperSize(). */
[[nodiscard]] OVERMARKS_API PaperSize paperSizeFor (const EventExportSettingsSet& settings);

} // namespace ZEP::Overmarks
