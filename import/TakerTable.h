// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/text/RichTextString.h"

#include <juce_core/juce_core.h>

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace ZEP::Overmarks
{

using TakerRow = std::vector<Core::RichTextString>;

/** The text of a cell; empty where the row or the table has no such column. */
[[nodiscard]] const juce::String& takerCellText (const TakerRow& row, std::int32_t column);

/** Puts rows in the order of their "In" timecodes, which are text of fixed width. The title "In" comes first, so that the row of
    titles stays where it is; rows of the same timecode keep their order. */
void sortTakerRows (std::vector<TakerRow>& rows, std::int32_t inColumn);

/** The table of a recording tool's file while its takes are being unfolded.

    A line of a take is removed together with all its doubles, and its pieces are added at the end. Finding the doubles by
    walking the table would take minutes for a season of takes, so rows are looked up by what they say, and removed rows stay
    in their places until the end: the positions of the file's own rows hold throughout.

    Works on the vector that it was given, which must not be changed by anyone else until finish(). */
class TakerTable final
{
public:
    explicit TakerTable (std::vector<TakerRow>& tableRows);

    /** Marks every row that equals this one as removed. */
    void removeEqual (const TakerRow& row);

    /** Adds a row at the end. References to rows don't survive this. */
    void append (TakerRow row);

    /** Takes the removed rows out. */
    void finish();

private:
    [[nodiscard]] static std::size_t hashOf (const TakerRow& row);

    std::vector<TakerRow>& rows;
    std::vector<bool> removed;
    std::unordered_map<std::size_t, std::vector<std::size_t>>
        positions; // of the rows that are left, by their hash
};

} // namespace ZEP::Overmarks
