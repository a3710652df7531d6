// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/text/RichTextString.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace ZEP::Core
{

class PartAttributes;

/** How characters look, as a workbook says it. */
struct CellLook
{
    bool bold = false;          ///< heavier than the workbook's other text
    bool italic = false;        ///< slanted
    bool underlined = false;    ///< by any kind of line, single or double
    bool struckThrough = false; ///< crossed out by a single or double line
    double points = 0.0;        ///< 0 where the workbook doesn't say
    std::uint32_t colour = 0;   ///< alpha first, always opaque; 0 for the colour of plain text

    bool operator== (const CellLook&) const = default; ///< Compares what the workbook says, not what is seen.
};

/** The colours of a workbook: by their own value, by a place in its theme, or by a number in the old palette. */
class WorkbookColours final
{
public:
    WorkbookColours();

    /** Reads the colours of a theme, its part's bytes. What can't be read leaves the usual ones. */
    void readTheme (std::string_view xml);

    /** Reads the palette of a workbook that has one of its own.
        @param xml  the part of its styles; what can't be read leaves the usual one */
    void readPalette (std::string_view xml);

    /** The opaque colour of a "color" element; 0 where it leaves the choice to the program. */
    [[nodiscard]] std::uint32_t colourOf (const PartAttributes& attributes) const;

    static constexpr std::size_t themeColours = 12;   ///< how many a theme has
    static constexpr std::size_t paletteColours = 64; ///< how many the old palette has

private:
    std::array<std::uint32_t, themeColours> theme;
    std::array<std::uint32_t, paletteColours> palette;
};

/** Takes what an element within a "font" or "rPr" says of the look of characters. */
void applyToLook (CellLook& look, std::string_view element, const PartAttributes& attributes,
                  const WorkbookColours& colours);

/** A colour made lighter, or darker where the tint is below zero, between -1 and 1. */
[[nodiscard]] std::uint32_t tinted (std::uint32_t colour, double tint);

/** Makes fonts and colours of looks. Size and colour of the workbook's own plain text are those of ours, so that it has no
    attributes. */
class WorkbookFonts final
{
public:
    /** `plainText`: without attributes */
    explicit WorkbookFonts (const CellLook& plainText) : plain (plainText) {}

    /** Whether a look is that of plain text. */
    [[nodiscard]] bool isPlain (const CellLook& look) const;
    /** Plain text's size is the default font's. */
    [[nodiscard]] juce::Font fontOf (const CellLook& look) const;
    [[nodiscard]] juce::Colour colourOf (const CellLook& look) const; ///< The colour of ours; opaque.

private:
    CellLook plain;
};

} // namespace ZEP::Core
