// SPDX-License-Identifier: GPL-3.0-only
#include "CueTableReader.h"

#include "CharacterText.h"
#include "CueDraft.h"
#include "CueTitles.h"
#include "Failure.h"
#include "TimecodeText.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace DocxHandler
{

namespace
{

/* The text of one timecode: what is found in the cell, else whatever stands there. */
std::string timecodeIn (std::string_view text, std::size_t number)
{
    const auto found = findTimecodes (text);

    if (number < found.size())
        return std::string (text.substr (found[number].start, found[number].end - found[number].start));

    if (number > 0)
        return {};

    const auto seconds = timecodeOfSeconds (text);
    return seconds.empty() ? onOneLine (trimmed (text)) : seconds;
}

/* What a field holds already stays: a title may stand over several cells. */
void addWords (std::string& field, const std::string& words)
{
    if (field.empty())
        field = words;
}

void put (CueDraft& draft, Role role, const RichText& text)
{
    auto& cue = draft.cue;
    const auto words = onOneLine (trimmed (text.text));

    switch (role)
    {
        case Role::inPoint:
        case Role::bothPoints:
            addWords (cue.inPoint, timecodeIn (text.text, 0));
            addWords (cue.outPoint, timecodeIn (text.text, 1));
            return;
        case Role::outPoint: return addWords (cue.outPoint, timecodeIn (text.text, 0));
        case Role::character: return addWords (cue.character, words);
        case Role::text: return draft.text.appendLine (text);
        case Role::number: return addWords (cue.number, words);
        case Role::notes: return draft.notes.appendLine (text);
        case Role::engineeringNotes: return draft.engineeringNotes.appendLine (text);
        case Role::reason: return addWords (cue.reason, words);
        case Role::region: return addWords (cue.region, words);
        case Role::duration: return;
    }
}

bool isNamed (const ImportedCue& cue) { return ! cue.number.empty() || ! cue.character.empty(); }
bool holdsTime (const ImportedCue& cue) { return ! findTimecodes (cue.inPoint).empty(); }

bool isCue (const CueDraft& draft)
{
    return holdsTime (draft.cue) || (! draft.text.isEmpty() && isNamed (draft.cue));
}

/* How many columns a table has. */
int widthOf (const Table& table)
{
    int width = 0;

    for (const auto& row : table.rows)
        if (! row.cells.empty())
            width = std::max (width, row.cells.back().column + row.cells.back().span);

    return width;
}

/* The words of a row, for telling the same titles again. */
std::vector<std::string> wordsOf (const Row& row)
{
    std::vector<std::string> words;

    for (const auto& cell : row.cells)
        words.emplace_back (trimmed (joinedText (cell.paragraphs).text));

    return words;
}

/* Titles, and what is known of the list that stands under them. */
struct TitledList
{
    Titles titles;
    std::vector<std::string> words; ///< of the titles
    int width = 0;                  ///< of the table, in columns
    bool hasTimes = false;
    std::optional<std::size_t> lastCue; ///< its place among all cues
};

/* Reads one table after the other: a list that was split, at a page or for a heading, has its titles above the first part. */
class TitledTableReader final
{
public:
    void read (const Table& table)
    {
        if (! table.isPartOfCell)
            return readTable (table);

        // A list within a cell ends with that cell.
        auto around = std::exchange (list, {});
        readTable (table);
        list = std::move (around);
    }

    std::vector<CueDraft> cues;

private:
    void readTable (const Table& table)
    {
        const auto titleRow = std::find_if (table.rows.begin(), table.rows.end(),
                                            [] (const Row& row) { return ! titlesOf (row).empty(); });
        auto row = table.rows.begin();
        above.clear();

        if (titleRow != table.rows.end())
        {
            list = { titlesOf (*titleRow), wordsOf (*titleRow), widthOf (table), false, {} };
            row = titleRow + 1;
        }
        else if (! goesOnIn (table))
        {
            return;
        }

        for (; row != table.rows.end(); ++row)
            if (wordsOf (*row) != list.words) // again on each page, in some programs
                readRow (*row);
    }

    /* Whether a table without titles is a further part of the list above it. */
    [[nodiscard]] bool goesOnIn (const Table& table) const
    {
        return ! list.titles.empty() && widthOf (table) == list.width
               && (! list.hasTimes
                   || std::any_of (table.rows.begin(), table.rows.end(),
                                   [this] (const Row& row) { return showsTime (row); }));
    }

    /* Whether there is a time where the titles say, or where they say nothing that is known. */
    [[nodiscard]] bool showsTime (const Row& row) const
    {
        return std::any_of (
            row.cells.begin(), row.cells.end(),
            [this] (const Cell& cell)
            {
                const auto* title = titleAt (list.titles, cell.column);
                const auto mayBeTime = title == nullptr || ! title->role || title->role == Role::inPoint
                                       || title->role == Role::bothPoints;
                const auto text = joinedText (cell.paragraphs).text;
                return mayBeTime && ! (timecodesAlone (text).empty() && timecodeOfSeconds (text).empty());
            });
    }

    void readRow (const Row& row)
    {
        CueDraft draft;

        for (const auto& cell : row.cells)
        {
            if (cell.continuesAbove)
                countRepetition (above[cell.column]);
            else
                above[cell.column] = joinedText (cell.paragraphs);

            if (const auto* title = titleAt (list.titles, cell.column); title != nullptr && title->role)
                put (draft, *title->role, above[cell.column]);
        }

        addUntitledTimes (draft.cue, row);

        if (row.cells.size() < 2)
            return;

        if (! isCue (draft))
            return goOnWithText (draft.cue, row);

        list.hasTimes = list.hasTimes || holdsTime (draft.cue);
        list.lastCue = cues.size();
        cues.push_back (std::move (draft));
    }

    /* A row of nothing but text goes on with the cue above it. */
    void goOnWithText (const ImportedCue& cue, const Row& row)
    {
        if (! list.lastCue || isNamed (cue))
            return;

        for (const auto& cell : row.cells)
            if (const auto* title = titleAt (list.titles, cell.column);
                ! cell.continuesAbove && title != nullptr && title->role && isOfLines (*title->role))
                put (cues[*list.lastCue], *title->role, above[cell.column]);
    }

    static bool isOfLines (Role role)
    {
        return role == Role::text || role == Role::notes || role == Role::engineeringNotes;
    }

    /* Times under titles in a language that isn't known here. An out point alone is looked for beside the in point. */
    void addUntitledTimes (ImportedCue& cue, const Row& row)
    {
        if (holdsRole (list.titles, Role::bothPoints)
            || (holdsRole (list.titles, Role::inPoint) && holdsRole (list.titles, Role::outPoint)))
            return;

        const auto isInTitled = holdsRole (list.titles, Role::inPoint);
        auto follows = false;

        for (const auto& cell : row.cells)
        {
            const auto* title = titleAt (list.titles, cell.column);
            const auto isUntitled = title == nullptr || ! title->role;

            if (isUntitled && (follows || ! isInTitled))
                for (const auto& timecode : timecodesAlone (above[cell.column].text))
                    addTime (cue, timecode);

            follows = ! isUntitled && title->role == Role::inPoint;
        }
    }

    static void addTime (ImportedCue& cue, const std::string& timecode)
    {
        if (cue.inPoint.empty())
            cue.inPoint = timecode;
        else if (timecode > cue.inPoint)
            addWords (cue.outPoint, timecode);
    }

    /* A merged cell may stand beside a million rows. */
    void countRepetition (const RichText& text)
    {
        constexpr std::size_t mostRepeated = std::size_t { 64 } << 20U;
        repeated += text.text.size() + text.runs.size() * sizeof (Run);

        if (repeated > mostRepeated)
            throw Failure ("is too large when unpacked");
    }

    TitledList list;
    std::map<int, RichText> above; ///< by column; what merged cells go on showing
    std::size_t repeated = 0;      ///< bytes
};

/* How much a column holds that is no timecode. */
struct ColumnContent
{
    std::size_t characters = 0;
    std::size_t cells = 0;
    std::size_t cellsWithDigits = 0;
};

using Roles = std::map<int, Role>; // by column

/* The times of a row, from left to right. A timecode within a sentence is none of them. */
std::vector<std::string> timesOf (const Row& row)
{
    std::vector<std::string> times;

    for (const auto& cell : row.cells)
        if (! cell.continuesAbove)
            for (auto& timecode : timecodesAlone (joinedText (cell.paragraphs).text))
                times.push_back (std::move (timecode));

    return times;
}

bool holdsCue (const Row& row) { return timesOf (row).size() >= 2; }

std::map<int, ColumnContent> contentOfColumns (const Table& table)
{
    std::map<int, ColumnContent> columns;

    for (const auto& row : table.rows)
    {
        if (! holdsCue (row))
            continue;

        for (const auto& cell : row.cells)
        {
            const auto text = joinedText (cell.paragraphs).text;

            if (cell.isBlank() || ! timecodesAlone (text).empty())
                continue;

            auto& column = columns[cell.column];
            column.characters += text.size();
            ++column.cells;
            column.cellsWithDigits += text.find_first_of ("0123456789") != std::string::npos ? 1 : 0;
        }
    }

    return columns;
}

Roles guessedRoles (const Table& table)
{
    constexpr std::size_t mostCharactersOfNumber = 12;
    auto columns = contentOfColumns (table);
    Roles roles;

    const auto longest = std::max_element (columns.begin(), columns.end(),
                                           [] (const auto& a, const auto& b)
                                           { return a.second.characters < b.second.characters; });

    if (longest != columns.end())
    {
        roles.emplace (longest->first, Role::text);
        columns.erase (longest);
    }

    for (const auto& [column, content] : columns)
        if (content.cellsWithDigits == content.cells
            && content.characters <= content.cells * mostCharactersOfNumber)
        {
            roles.emplace (column, Role::number);
            columns.erase (column);
            break;
        }

    for (auto role = Role::character; const auto& [column, content] : columns)
        roles.emplace (column, std::exchange (role, Role::notes));

    return roles;
}

ImportedCue cueOfRow (const Row& row, const Roles& roles, const std::vector<std::string>& times)
{
    CueDraft draft;

    for (const auto& cell : row.cells)
    {
        if (cell.continuesAbove)
            continue;

        const auto text = joinedText (cell.paragraphs);

        if (const auto role = roles.find (cell.column);
            role != roles.end() && timecodesAlone (text.text).empty())
            put (draft, role->second, text);
    }

    draft.cue.inPoint = times[0];
    draft.cue.outPoint = times[1];
    return draft.take();
}

} // namespace

std::vector<ImportedCue> readTitledTables (const std::vector<const Table*>& tables)
{
    TitledTableReader reader;

    for (const auto* table : tables)
        reader.read (*table);

    return cuesOf (std::move (reader.cues));
}

std::vector<ImportedCue> readTimecodeTable (const Table& table)
{
    const auto roles = guessedRoles (table);
    std::vector<ImportedCue> cues;

    for (const auto& row : table.rows)
        if (const auto times = timesOf (row); times.size() >= 2)
            cues.push_back (cueOfRow (row, roles, times));

    return cues;
}

} // namespace DocxHandler
