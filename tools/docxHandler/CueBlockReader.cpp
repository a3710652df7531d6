// SPDX-License-Identifier: GPL-3.0-only
#include "CueBlockReader.h"

#include "CharacterText.h"
#include "TimecodeText.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace DocxHandler
{

namespace
{

bool isDetail (Field field)
{
    return field == Field::number || field == Field::character || field == Field::inPoint
           || field == Field::outPoint;
}

bool isStyled (const Paragraph& paragraph) { return ! paragraph.isNested && paragraph.field != Field::none; }

bool hasDetailStyle (const Cell& cell)
{
    return std::any_of (cell.paragraphs.begin(), cell.paragraphs.end(),
                        [] (const Paragraph& paragraph)
                        { return ! paragraph.isNested && isDetail (paragraph.field); });
}

/* The lines of a plain field; line breaks count as ends of paragraphs. */
std::vector<std::string> linesOf (const Paragraph& paragraph)
{
    std::vector<std::string> lines;
    const std::string_view text = paragraph.text.text;

    for (std::size_t start = 0; start <= text.size();)
    {
        const auto end = std::min (text.find ('\n', start), text.size());

        if (const auto line = trimmed (text.substr (start, end - start)); ! line.empty())
            lines.emplace_back (line);

        start = end + 1;
    }

    return lines;
}

bool hasDetailShape (const Cell& cell)
{
    constexpr long mostLines = 8;
    long lines = 0;
    long timecodes = 0;

    for (const auto& paragraph : cell.paragraphs)
        for (const auto& line : linesOf (paragraph))
        {
            ++lines;
            timecodes += isTimecode (line) ? 1 : 0;
        }

    return timecodes == 2 && lines <= mostLines;
}

bool isDetailsCell (const Cell& cell)
{
    if (cell.continuesAbove)
        return false;

    return hasDetailStyle (cell)
           || (std::none_of (cell.paragraphs.begin(), cell.paragraphs.end(), isStyled)
               && hasDetailShape (cell));
}

Field firstStyle (const Cell& cell)
{
    const auto found = std::find_if (cell.paragraphs.begin(), cell.paragraphs.end(), isStyled);
    return found == cell.paragraphs.end() ? Field::none : found->field;
}

bool isTakeBox (const Row& row, const Cell& cell)
{
    constexpr std::size_t fewestBoxes = 12;
    return firstStyle (cell) == Field::take || row.cells.size() >= fewestBoxes;
}

void addText (RichText& field, const RichText& text)
{
    RichTextBuilder builder;
    builder.append (field);

    if (! field.text.empty() && ! text.text.empty())
        builder.append ("\n", {});

    builder.append (text);
    field = builder.take();
}

void addWords (std::string& field, std::string_view words)
{
    if (const auto core = trimmed (words); ! core.empty())
        field += (field.empty() ? "" : " ") + std::string (core);
}

void addTo (ImportedCue& cue, Field field, const RichText& text)
{
    switch (field)
    {
        case Field::text: return addText (cue.text, text);
        case Field::notes: return addText (cue.notes, text);
        case Field::engineeringNotes: return addText (cue.engineeringNotes, text);
        case Field::reason: return addWords (cue.reason, text.text);
        case Field::region: return addWords (cue.region, text.text);
        case Field::number: return addWords (cue.number, text.text);
        case Field::character: return addWords (cue.character, text.text);
        case Field::inPoint: return addWords (cue.inPoint, text.text);
        case Field::outPoint: return addWords (cue.outPoint, text.text);
        case Field::none:
        case Field::label:
        case Field::take:
        case Field::spacing:
        case Field::blockHeading:
        case Field::frontMatterTitle:
        case Field::frontMatterLabel:
        case Field::frontMatterValue:
        case Field::footer: break;
    }
}

/* Fills number, character, in and out point from the cell that shows them. A line that has lost its style takes the first place
   that no styled line has. */
class DetailsReader final
{
public:
    explicit DetailsReader (ImportedCue& destination) : cue (destination) {}

    void read (const Cell& cell)
    {
        for (const auto& paragraph : cell.paragraphs)
            if (! paragraph.isBlank() && isDetail (paragraph.field))
                taken.insert (paragraph.field);

        for (const auto& paragraph : cell.paragraphs)
        {
            if (isDetail (paragraph.field))
                add (paragraph.field, paragraph.text);
            else
                for (const auto& line : linesOf (paragraph))
                    add (placeOf (line), { line, {} });
        }
    }

private:
    void add (Field field, const RichText& text)
    {
        addTo (cue, field, text);
        taken.insert (field);
        last = field;
    }

    [[nodiscard]] Field placeOf (const std::string& line) const
    {
        const auto places = isTimecode (line) ? std::array { Field::inPoint, Field::outPoint }
                                              : std::array { Field::number, Field::character };

        for (const auto place : places)
            if (! taken.contains (place))
                return place;

        return last;
    }

    ImportedCue& cue;
    std::set<Field> taken;
    Field last = Field::number;
};

class BlockTableReader final
{
public:
    void read (const Row& row)
    {
        const auto details = std::find_if (row.cells.begin(), row.cells.end(), isDetailsCell);
        const auto hasDetails = details != row.cells.end();
        const auto begins = hasDetails || beginsWithoutDetails (row);

        if (begins)
            cues.emplace_back();

        if (cues.empty())
            return;

        if (hasDetails)
            DetailsReader (cues.back()).read (*details);

        auto announced = Field::none;

        for (const auto& cell : row.cells)
            if (! cell.continuesAbove && ! cell.isBlank() && ! (hasDetails && &cell == &*details))
                readCell (row, cell, begins, announced);
    }

    std::vector<ImportedCue> cues;

private:
    /* Somebody may have deleted the details' cell; the text still begins a cue. */
    [[nodiscard]] bool beginsWithoutDetails (const Row& row) const
    {
        if (row.cells.empty() || row.cells.front().continuesAbove
            || firstStyle (row.cells.front()) != Field::text)
            return false;

        return cues.empty() || ! cues.back().text.text.empty();
    }

    /* A label stands before a value; the text stands before the details. */
    [[nodiscard]] static bool canBeLabel (const Row& row, const Cell& cell)
    {
        const auto style = firstStyle (cell);
        return (style == Field::none || style == Field::label) && &cell != &row.cells.back()
               && ! isDetailsCell (*(&cell + 1));
    }

    void readCell (const Row& row, const Cell& cell, bool isFirstRow, Field& announced)
    {
        const auto style = firstStyle (cell);
        const auto text = joinedText (cell.paragraphs);

        if (isTakeBox (row, cell))
            return;

        if (announced != Field::none)
            return addTo (cues.back(), std::exchange (announced, Field::none), text);

        if (const auto label = fieldOfLabel (text.text); label != Field::none && canBeLabel (row, cell))
        {
            announced = label;
            return;
        }

        if (isFirstRow)
            return addTo (cues.back(), Field::text, text);

        // A row that somebody has added to the block says something about the cue.
        if (style == Field::none)
            return addTo (cues.back(), Field::notes, text);

        addTo (cues.back(), style, text);
    }
};

} // namespace

bool holdsCueBlocks (const Table& table)
{
    return std::any_of (table.rows.begin(), table.rows.end(),
                        [] (const Row& row)
                        {
                            return std::any_of (row.cells.begin(), row.cells.end(),
                                                [] (const Cell& cell) {
                                                    return hasDetailStyle (cell)
                                                           || firstStyle (cell) == Field::text;
                                                });
                        });
}

bool looksLikeCueBlocks (const Table& table)
{
    constexpr std::size_t fewestCells = 2;

    return ! table.rows.empty() && table.rows.front().cells.size() >= fewestCells
           && std::any_of (table.rows.begin(), table.rows.end(),
                           [] (const Row& row)
                           { return std::any_of (row.cells.begin(), row.cells.end(), isDetailsCell); });
}

std::vector<ImportedCue> readCueBlocks (const Table& table)
{
    BlockTableReader reader;

    for (const auto& row : table.rows)
        reader.read (row);

    return std::move (reader.cues);
}

} // namespace DocxHandler
