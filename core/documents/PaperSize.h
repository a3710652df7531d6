// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

namespace ZEP::Core
{

/** A sheet of paper, upright unless its measures say otherwise. */
struct ZEP_CORE_API PaperSize
{
    float width = 595.0f;  ///< points
    float height = 842.0f; ///< points

    bool operator== (const PaperSize&) const = default; ///< Exact: a rounded measure is another paper.

    [[nodiscard]] static PaperSize a4() { return {}; }                     ///< 595 by 842 points.
    [[nodiscard]] static PaperSize letter() { return { 612.0f, 792.0f }; } ///< 612 by 792 points.

    /** The sheet of these measures, in whole points; A4 for measures that no sheet has. */
    [[nodiscard]] static PaperSize ofMillimetres (int width, int height);

    /** The paper that is usual where the user lives, as the environment tells (LC_PAPER); A4 where it says nothing. */
    [[nodiscard]] static PaperSize ofLocale();
};

} // namespace ZEP::Core
