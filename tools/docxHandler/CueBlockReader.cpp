// SPDX-License-Identifier: GPL-3.0-only
#include "CueBlockReader.h"

#include "CharacterText.h"
#include "CueDraft.h"
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

/* The kinds of details that a cell has styles for, whether there is anything in them or not. */
std::set<Field> detailsIn (const Cell& cell)
{
    std::set<Field> fields;

    for (const auto& paragraph : cell.paragraphs)
        if (! paragraph.isNested && isDetail (paragraph.field))
            fields.insert (paragraph.field);

    return fields;
}

/* How much a cell looks like the one with the details; 0 if it doesn't. */
std::size_t likenessToDetails (const Cell& cell)
{
    if (cell.continuesAbove)
        return 0;

    if (const auto fields = detailsIn (cell); ! fields.empty())
        return fields.size();

    const auto isPlain = std::none_of (cell.paragraphs.begin(), cell.paragraphs.end(), isStyled);
    return isPlain && hasDetailShape (cell) ? 2 : 0;
}

/* The cell with the details. A line of them may have been pasted anywhere: where several cells look like it, it is the one that
   does so most, and a single detail counts in the last column alone. Beside a cell that goes on from above there is none. */
const Cell* detailsCellOf (const Row& row)
{
    if (std::any_of (row.cells.begin(), row.cells.end(),
                     [] (const Cell& cell) { return cell.continuesAbove; }))
        return nullptr;

    const Cell* best = nullptr;
    std::size_t most = 0;

    for (const auto& cell : row.cells)
        if (const auto likeness = likenessToDetails (cell);
            likeness > 0 && likeness >= most && (likeness > 1 || &cell == &row.cells.back()))
        {
            best = &cell;
            most = likeness;
        }

    return best;
}

/* A row that a word processor has added takes over one style of each cell beside it, without the words. */
bool isAddedRow (const Cell& details) { return details.isBlank() && detailsIn (details).size() < 2; }

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

void addWords (std::string& field, std::string_view words)
{
    if (const auto core = onOneLine (trimmed (words)); ! core.empty())
        field += (field.empty() ? "" : " ") + core;
}

void addTo (CueDraft& draft, Field field, const RichText& text)
{
    switch (field)
    {
        case Field::text: return draft.text.appendLine (text);
        case Field::notes: return draft.notes.appendLine (text);
        case Field::engineeringNotes: return draft.engineeringNotes.appendLine (text);
        case Field::reason: return addWords (draft.cue.reason, text.text);
        case Field::region: return addWords (draft.cue.region, text.text);
        case Field::number: return addWords (draft.cue.number, text.text);
        case Field::character: return addWords (draft.cue.character, text.text);
        case Field::inPoint: return addWords (draft.cue.inPoint, text.text);
        case Field::outPoint: return addWords (draft.cue.outPoint, text.text);
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
    explicit DetailsReader (CueDraft& destination) : draft (destination) {}

    void read (const Cell& cell)
    {
        for (const auto& paragraph : cell.paragraphs)
            if (! paragraph.isBlank() && isDetail (paragraph.field))
                taken.insert (paragraph.field);

        if (lacksNumber (cell))
            taken.insert (Field::number);

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
    /* Without styles the number's empty line tells that the other one is the name. */
    static bool lacksNumber (const Cell& cell)
    {
        if (! detailsIn (cell).empty() || cell.paragraphs.size() < 2)
            return false;

        const auto& second = cell.paragraphs[1];
        return cell.paragraphs[0].isBlank() && ! second.isBlank() && ! isTimecode (second.text.text);
    }

    void add (Field field, const RichText& text)
    {
        addTo (draft, field, text);
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

    CueDraft& draft;
    std::set<Field> taken;
    Field last = Field::number;
};

class BlockTableReader final
{
public:
    void read (const Row& row)
    {
        const auto* details = detailsCellOf (row);
        const auto isAdded = details != nullptr && isAddedRow (*details);
        const auto begins = ! isAdded && (details != nullptr || beginsWithoutDetails (row));

        if (begins)
            begin();

        if (isAdded)
            return addRemarks (row);

        if (cues.empty())
            return;

        if (details != nullptr)
            DetailsReader (cues.back()).read (*details);

        auto announced = Field::none;

        for (const auto& cell : row.cells)
        {
            if (cell.continuesAbove || &cell == details)
                continue;

            if (cell.isBlank())
                announced = Field::none; // the value of the label before it was deleted
            else
                readCell (row, cell, begins, announced);
        }
    }

    std::vector<CueDraft> cues;

private:
    void begin()
    {
        cues.emplace_back();
        cues.back().notes = std::exchange (remarks, {});
    }

    /* A row that somebody has added says something about the cue: the one above it, or else the one below. */
    void addRemarks (const Row& row)
    {
        for (const auto& cell : row.cells)
            if (! cell.isBlank())
                (cues.empty() ? remarks : cues.back().notes).appendLine (joinedText (cell.paragraphs));
    }

    /* Somebody may have deleted the details' cell; the text still begins a cue. */
    [[nodiscard]] bool beginsWithoutDetails (const Row& row) const
    {
        if (row.cells.empty() || firstStyle (row.cells.front()) != Field::text
            || std::any_of (row.cells.begin(), row.cells.end(),
                            [] (const Cell& cell) { return cell.continuesAbove; }))
            return false;

        return cues.empty() || ! cues.back().text.isEmpty();
    }

    /* A label stands before a value; the text stands before the details. */
    [[nodiscard]] static bool canBeLabel (const Row& row, const Cell& cell)
    {
        const auto style = firstStyle (cell);
        return (style == Field::none || style == Field::label) && &cell != &row.cells.back()
               && &cell + 1 != detailsCellOf (row);
    }

    void readCell (const Row& row, const Cell& cell, bool isFirstRow, Field& announced)
    {
        const auto style = firstStyle (cell);
        const auto text = joinedText (cell.paragraphs);

        if (! isFirstRow && isTakeBox (row, cell))
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

        // A row that somebody has added to the block says something about the cue, also in the text's style.
        if (style == Field::none || (style == Field::text && ! cues.back().text.isEmpty()))
            return addTo (cues.back(), Field::notes, text);

        addTo (cues.back(), style, text);
    }

    RichTextBuilder remarks; ///< that stand above the first cue
};

} // namespace

bool holdsCueBlocks (const Table& table)
{
    return std::any_of (table.rows.begin(), table.rows.end(),
                        [] (const Row& row)
                        {
                            return std::any_of (row.cells.begin(), row.cells.end(),
                                                [] (const Cell& cell) {
                                                    return ! detailsIn (cell).empty()
                                                           || firstStyle (cell) == Field::text;
                                                });
                        });
}

bool looksLikeCueBlocks (const Table& table)
{
    constexpr std::size_t fewestCells = 2;

    return ! table.rows.empty() && table.rows.front().cells.size() >= fewestCells
           && std::any_of (table.rows.begin(), table.rows.end(),
                           [] (const Row& row) { return detailsCellOf (row) != nullptr; });
}

std::vector<ImportedCue> readCueBlocks (const Table& table)
{
    BlockTableReader reader;

    for (const auto& row : table.rows)
        reader.read (row);

    // What is left of a cue whose words were all deleted is none.
    auto cues = cuesOf (std::move (reader.cues));
    std::erase (cues, ImportedCue());
    return cues;
}

} // namespace DocxHandler
