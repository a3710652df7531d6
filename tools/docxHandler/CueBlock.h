// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Icons.h"
#include "Paper.h"
#include "Sheet.h"
#include "SheetStyles.h"
#include "XMLText.h"

#include <array>

namespace DocxHandler
{

/** Which sides of a cell have a line of their own. */
struct CellBorders
{
    bool left = false;
    bool top = false;
    bool right = false;
};

/** Writes the block of a cue: one table with a border.

        +---------------------------------------------+----------------+
        | text                                        | number         |
        |                                             | ------         |
        +----------+----------------------------------+ icon character |
        | NOTES    | ...                              | icon in point  |
        +----------+-----------+-----------+----------+ icon out point |
        | REASON   | ...       | FN REGION | ...      |                |
        +---+---+--+---+---+---+---+---+---+-+--+--+--+                |
        | 1 | 2 | Sel  | 4 | Alt | ...             25|                |
        +---+---+------+---+-----+-------------------+----------------+

    The left part is a grid of 25 columns, the number of take boxes in a row. */
class CueBlock final
{
public:
    CueBlock (XMLText& destination, const Sheet& wholeSheet, const Paper& paper, Icons& icons);

    void write (const SheetCue& cue);

private:
    [[nodiscard]] int heightBelowText (const SheetCue& cue) const;
    [[nodiscard]] int leastHeight (const SheetCue& cue) const;
    [[nodiscard]] double estimatedHeight (const SheetCue& cue) const;
    void writeTableHead();
    void openRow (int leastHeight);
    void openCell (int width, int columns, CellBorders borders = {}, std::string_view fill = {},
                   std::string_view vertical = {});
    void openDetailsCell (bool isFirstRow);
    void openParagraph (Field field, std::string_view textForDirection = {});
    void endRow();

    void writeTextRow (const SheetCue& cue);
    void writeDetails (const SheetCue& cue);
    void writeDetail (Field field, const SizedText& text, const std::string& icon,
                      std::string_view description);
    void writeNotesRows (const SheetCue& cue);
    void writeRow (Field field, const SizedRichText& text);
    void writeRow (Field field, const SizedText& text);
    void writeShortFields (const SheetCue& cue);
    void writeLabelCell (Field field);
    template <typename Text>
    void writeValueCell (Field field, const Text& text, int columns);
    void writeTakeRows (const Takes& takes);
    void writeTakeBox (const Takes& takes, int index, int boxesInRow, int place);

    [[nodiscard]] int size (Field field) const { return sizes[static_cast<std::size_t> (field)]; }

    XMLText& xml;
    Icons& iconStore;
    Layout layout;
    int columnWidth;
    int detailsWidth;
    int width;
    int pageHeight;
    bool tall = false; ///< the cue at hand is too long for one page and has to flow over several
    std::array<int, static_cast<std::size_t> (Field::footer) + 1> sizes {};
    std::string tableHead;
};

} // namespace DocxHandler
