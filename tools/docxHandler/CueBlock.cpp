// SPDX-License-Identifier: GPL-3.0-only
#include "CueBlock.h"

#include "CharacterText.h"
#include "RunWriter.h"

#include <algorithm>
#include <cmath>

namespace DocxHandler
{

namespace
{

/* Lengths in twentieths of a point. */
constexpr int columns = 25;
constexpr int labelColumns = 4;
constexpr int leastDetailsWidth = 2550;
constexpr int detailsHeight = 940; ///< without the character's name
constexpr int rowHeight = 380;     ///< of notes
constexpr int sideMargin = 90;
constexpr int takeHeight = 290;

constexpr std::string_view selectedFill = "1B9C39";
constexpr std::string_view alternativeFill = "FFCC00";
constexpr std::string_view recordedFill = "D4D4D4";

bool isBlank (const SizedText& text) { return trimmed (text.text).empty(); }
bool isBlank (const SizedRichText& text) { return trimmed (text.text.text).empty(); }

std::string_view textOf (const SizedText& text) { return text.text; }
std::string_view textOf (const SizedRichText& text) { return text.text.text; }

/* The height that a text needs at most, roughly; a character is taken to be as wide as 0.55 of its size. */
double estimatedHeight (std::string_view text, int halfPointsOfStyle, int width)
{
    constexpr double relativeWidth = 0.55;
    constexpr double relativeHeight = 1.25;
    const auto size = 10.0 * halfPointsOfStyle;
    const auto charactersInLine = std::max (1.0, width / (size * relativeWidth));
    double lines = 0.0;

    for (std::size_t start = 0; start <= text.size();)
    {
        const auto end = std::min (text.find ('\n', start), text.size());
        lines += 1.0
                 + std::floor (static_cast<double> (countCharacters (text.substr (start, end - start)))
                               / charactersInLine);
        start = end + 1;
    }

    return lines * size * relativeHeight;
}

/* The rows of boxes that are printed. */
int rowsOf (const Takes& takes)
{
    constexpr int mostRows = 4;
    return std::clamp (takes.rows, 0, mostRows);
}

} // namespace

CueBlock::CueBlock (XMLText& destination, const Sheet& wholeSheet, const Paper& paper, Icons& icons)
    : xml (destination),
      iconStore (icons),
      layout (layoutOf (wholeSheet)),
      columnWidth ((paper.textWidth() - leastDetailsWidth) / columns),
      detailsWidth (paper.textWidth() - columns * columnWidth),
      width (paper.textWidth()),
      pageHeight (paper.height - 2 * Paper::margin)
{
    for (auto field = Field::text; field <= Field::outPoint;
         field = static_cast<Field> (static_cast<int> (field) + 1))
        sizes[static_cast<std::size_t> (field)] = styleSize (field, wholeSheet);

    XMLText head;
    std::swap (head, xml);
    writeTableHead();
    std::swap (head, xml);
    tableHead = head.take();
}

void CueBlock::write (const SheetCue& cue)
{
    constexpr double mostOfPage = 0.8;
    tall = estimatedHeight (cue) > mostOfPage * pageHeight;
    xml.open ("w:tbl");
    xml.markup (tableHead);
    writeTextRow (cue);
    writeNotesRows (cue);

    if (cue.takes)
        writeTakeRows (*cue.takes);

    xml.close();
    openParagraph (Field::spacing);
    xml.close();
}

/* Of the rows below the text, at least. */
int CueBlock::heightBelowText (const SheetCue& cue) const
{
    const auto hasShortFields = ! isBlank (cue.reason) || ! isBlank (cue.region);
    const auto rows =
        (isBlank (cue.notes) ? 0 : 1) + (isBlank (cue.engineeringNotes) ? 0 : 1) + (hasShortFields ? 1 : 0);
    return rows * rowHeight + (cue.takes ? rowsOf (*cue.takes) * takeHeight : 0);
}

/* So that the details beside text and notes fit and don't stretch the last row. */
int CueBlock::leastHeight (const SheetCue& cue) const
{
    constexpr double relativeWidthOfCapitals = 0.7;
    constexpr int iconWidth = 340;
    constexpr int mostLines = 8;
    const auto unit = 10 * size (Field::character);
    const auto length =
        static_cast<double> (countCharacters (textOf (cue.character))) * relativeWidthOfCapitals * unit;
    const auto lines =
        std::clamp (std::ceil (length / (detailsWidth - 2 * sideMargin - iconWidth)), 1.0, 1.0 * mostLines);
    return detailsHeight + static_cast<int> (lines) * unit * 6 / 5;
}

double CueBlock::estimatedHeight (const SheetCue& cue) const
{
    const auto textWidth = columns * columnWidth;
    const auto notesWidth = (columns - labelColumns) * columnWidth;
    const auto height = [this] (Field field, std::string_view text, int available)
    { return DocxHandler::estimatedHeight (text, size (field), available); };

    return std::max (height (Field::text, textOf (cue.text), textWidth)
                         + height (Field::notes, textOf (cue.notes), notesWidth)
                         + height (Field::engineeringNotes, textOf (cue.engineeringNotes), notesWidth),
                     height (Field::character, textOf (cue.character), detailsWidth)
                         + height (Field::number, textOf (cue.number), detailsWidth));
}

void CueBlock::writeTableHead()
{
    xml.open ("w:tblPr");
    xml.leaf ("w:bidiVisual",
              { { "w:val", 0 } }); // the details stay on the right, whatever the text's direction
    xml.leaf ("w:tblW", { { "w:w", width }, { "w:type", "dxa" } });
    xml.leaf ("w:jc", { { "w:val", "center" } });
    xml.open ("w:tblBorders");

    for (const auto* side : { "w:top", "w:left", "w:bottom", "w:right" })
        xml.leaf (side, { { "w:val", "single" }, { "w:sz", 8 }, { "w:space", 0 }, { "w:color", "000000" } });

    xml.close();
    xml.leaf ("w:tblLayout", { { "w:type", "fixed" } });
    xml.open ("w:tblCellMar");

    const auto margin = [this] (const char* side, int space) {
        xml.leaf (side, { { "w:w", space }, { "w:type", "dxa" } });
    };

    margin ("w:top", 40);
    margin ("w:left", sideMargin);
    margin ("w:bottom", 40);
    margin ("w:right", sideMargin);

    xml.close();
    xml.close();
    xml.open ("w:tblGrid");

    for (int i = 0; i < columns; ++i)
        xml.leaf ("w:gridCol", { { "w:w", columnWidth } });

    xml.leaf ("w:gridCol", { { "w:w", detailsWidth } });
    xml.close();
}

void CueBlock::openRow (int leastHeight)
{
    xml.open ("w:tr");
    xml.open ("w:trPr");

    if (! tall)
        xml.leaf ("w:cantSplit");

    if (leastHeight > 0)
        xml.leaf ("w:trHeight", { { "w:val", leastHeight }, { "w:hRule", "atLeast" } });

    xml.close();
}

void CueBlock::openCell (int cellWidth, int columnCount, CellBorders borders, std::string_view fill,
                         std::string_view vertical)
{
    const auto border = [this] (const char* side) {
        xml.leaf (side, { { "w:val", "single" }, { "w:sz", 4 }, { "w:space", 0 }, { "w:color", "000000" } });
    };

    xml.open ("w:tc");
    xml.open ("w:tcPr");
    xml.leaf ("w:tcW", { { "w:w", cellWidth }, { "w:type", "dxa" } });

    if (columnCount > 1)
        xml.leaf ("w:gridSpan", { { "w:val", columnCount } });

    if (! vertical.empty())
        xml.leaf ("w:vMerge", { { "w:val", vertical } });

    if (borders.left || borders.top || borders.right)
    {
        xml.open ("w:tcBorders");

        if (borders.top)
            border ("w:top");

        if (borders.left)
            border ("w:left");

        if (borders.right)
            border ("w:right");

        xml.close();
    }

    if (! fill.empty())
        xml.leaf ("w:shd", { { "w:val", "clear" }, { "w:color", "auto" }, { "w:fill", fill } });
}

void CueBlock::openDetailsCell (bool isFirstRow)
{
    openCell (detailsWidth, 1, { .left = true, .top = false, .right = false }, {},
              isFirstRow ? "restart" : "continue");
    xml.close();
}

void CueBlock::openParagraph (Field field, std::string_view textForDirection)
{
    xml.open ("w:p");
    xml.open ("w:pPr");
    xml.leaf ("w:pStyle", { { "w:val", styleIdentifier (field) } });

    if (tall && field != Field::spacing)
        xml.leaf ("w:keepNext", { { "w:val", 0 } });

    if (readsRightToLeft (textForDirection))
        xml.leaf ("w:bidi");

    xml.close();
}

/* The rest of the details stands in the first row; further rows only continue their cell. */
void CueBlock::endRow()
{
    openDetailsCell (false);
    openParagraph (Field::label);
    xml.close();
    xml.close();
    xml.close();
}

void CueBlock::writeTextRow (const SheetCue& cue)
{
    openRow (std::max (takeHeight, leastHeight (cue) - heightBelowText (cue)));
    openCell (columns * columnWidth, columns);
    xml.close();
    openParagraph (Field::text, textOf (cue.text));
    writeRuns (xml, cue.text, size (Field::text));
    xml.close();
    xml.close();

    openDetailsCell (true);
    writeDetails (cue);
    xml.close();
    xml.close();
}

void CueBlock::writeDetails (const SheetCue& cue)
{
    openParagraph (Field::number);
    writeRuns (xml, cue.number, size (Field::number));
    xml.close();

    writeDetail (Field::character, cue.character, cue.characterIcon, "Character");
    writeDetail (Field::inPoint, cue.inPoint, cue.inPointIcon, "In point");
    writeDetail (Field::outPoint, cue.outPoint, cue.outPointIcon, "Out point");
}

void CueBlock::writeDetail (Field field, const SizedText& text, const std::string& icon,
                            std::string_view description)
{
    constexpr double characterIconHeight = 12.0;
    constexpr double pointIconHeight = 8.5;

    openParagraph (field);
    iconStore.write (xml, icon, field == Field::character ? characterIconHeight : pointIconHeight,
                     description);
    xml.markup ("<w:r><w:tab/></w:r>"); // to where the text's other lines begin
    writeRuns (xml, text, size (field));
    xml.close();
}

void CueBlock::writeNotesRows (const SheetCue& cue)
{
    const auto engineeringNotesFirst = weightOf (Field::engineeringNotes, layout) == Weight::prominent;

    if (engineeringNotesFirst)
        writeRow (Field::engineeringNotes, cue.engineeringNotes);

    writeRow (Field::notes, cue.notes);
    writeShortFields (cue);

    if (! engineeringNotesFirst)
        writeRow (Field::engineeringNotes, cue.engineeringNotes);
}

void CueBlock::writeRow (Field field, const SizedRichText& text)
{
    if (isBlank (text))
        return;

    openRow (0);
    writeLabelCell (field);
    writeValueCell (field, text, columns - labelColumns);
    endRow();
}

void CueBlock::writeRow (Field field, const SizedText& text)
{
    openRow (0);
    writeLabelCell (field);
    writeValueCell (field, text, columns - labelColumns);
    endRow();
}

/* Reason and region are a word each and share a row. */
void CueBlock::writeShortFields (const SheetCue& cue)
{
    constexpr int reasonColumns = 9;

    if (isBlank (cue.reason) && isBlank (cue.region))
        return;

    if (isBlank (cue.region))
        return writeRow (Field::reason, cue.reason);

    if (isBlank (cue.reason))
        return writeRow (Field::region, cue.region);

    openRow (0);
    writeLabelCell (Field::reason);
    writeValueCell (Field::reason, cue.reason, reasonColumns);
    writeLabelCell (Field::region);
    writeValueCell (Field::region, cue.region, columns - reasonColumns - 2 * labelColumns);
    endRow();
}

void CueBlock::writeLabelCell (Field field)
{
    openCell (labelColumns * columnWidth, labelColumns);
    xml.close();
    openParagraph (Field::label);
    writeWords (xml, labelOf (field));
    xml.close();
    xml.close();
}

template <typename Text>
void CueBlock::writeValueCell (Field field, const Text& text, int columnCount)
{
    auto shown = text;

    if (weightOf (field, layout) == Weight::small) // as small as its style
        shown.size = 0;

    openCell (columnCount * columnWidth, columnCount);
    xml.close();
    openParagraph (field, textOf (text));
    writeRuns (xml, shown, size (field));
    xml.close();
    xml.close();
}

void CueBlock::writeTakeRows (const Takes& takes)
{
    const auto rows = rowsOf (takes);
    const auto boxes = rows == 0 ? 0 : std::clamp ((takes.boxes + rows - 1) / rows, 0, columns);

    for (int row = 0; row < rows && boxes > 0; ++row)
    {
        openRow (takeHeight);

        for (int place = 0; place < boxes; ++place)
            writeTakeBox (takes, row * boxes + place, boxes, place);

        endRow();
    }
}

void CueBlock::writeTakeBox (const Takes& takes, int index, int boxesInRow, int place)
{
    const auto isSelected = index == takes.selected;
    const auto isAlternative = index == takes.alternative && ! isSelected;
    const auto isRecorded = index < takes.recorded;
    const auto fill = isSelected      ? selectedFill
                      : isAlternative ? alternativeFill
                      : isRecorded    ? recordedFill
                                      : "";
    const auto isLast = place + 1 == boxesInRow;
    const auto columnCount = isLast ? columns - place : 1; // a short row ends where the others do

    openCell (columnCount * columnWidth, columnCount, { .left = false, .top = true, .right = ! isLast },
              fill);
    xml.markup (R"(<w:vAlign w:val="center"/>)");
    xml.close();
    openParagraph (Field::take);
    xml.open ("w:r");

    if (isSelected || isAlternative || isRecorded)
        xml.markup (isSelected ? R"(<w:rPr><w:b/><w:bCs/><w:color w:val="FFFFFF"/></w:rPr>)"
                               : "<w:rPr><w:b/><w:bCs/></w:rPr>");

    xml.leafWithText ("w:t", isSelected ? "Sel" : isAlternative ? "Alt" : std::to_string (index + 1));
    xml.close();
    xml.close();
    xml.close();
}

} // namespace DocxHandler
