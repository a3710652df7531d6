// SPDX-License-Identifier: GPL-3.0-only
#include "CueTableReader.h"

#include "CharacterText.h"
#include "CueTitles.h"
#include "Failure.h"
#include "TimecodeText.h"

#include <algorithm>
#include <map>
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

void addText (RichText& field, const RichText& text)
{
    RichTextBuilder builder;
    builder.append (field);

    if (! field.text.empty() && ! text.text.empty())
        builder.append ("\n", {});

    builder.append (text);
    field = builder.take();
}

void put (ImportedCue& cue, Role role, const RichText& text)
{
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
        case Role::text: return addText (cue.text, text);
        case Role::number: return addWords (cue.number, words);
        case Role::notes: return addText (cue.notes, text);
        case Role::engineeringNotes: return addText (cue.engineeringNotes, text);
        case Role::reason: return addWords (cue.reason, words);
        case Role::region: return addWords (cue.region, words);
        case Role::duration: return;
    }
}

bool isCue (const ImportedCue& cue)
{
    const auto hasText = ! trimmed (cue.text.text).empty();
    return ! findTimecodes (cue.inPoint).empty()
           || (hasText && ! (cue.number.empty() && cue.character.empty()));
}

/* The words of a row, for telling the same titles again. */
std::vector<std::string> wordsOf (const Row& row)
{
    std::vector<std::string> words;

    for (const auto& cell : row.cells)
        words.emplace_back (trimmed (joinedText (cell.paragraphs).text));

    return words;
}

class TitledTableReader final
{
public:
    void read (const Table& table)
    {
        for (const auto& row : table.rows)
        {
            if (titles.empty())
            {
                titles = titlesOf (row);
                words = titles.empty() ? words : wordsOf (row);
            }
            else if (wordsOf (row) != words) // again on each page, in some programs
                readRow (row);
        }
    }

    std::vector<ImportedCue> cues;

private:
    void readRow (const Row& row)
    {
        ImportedCue cue;

        for (const auto& cell : row.cells)
        {
            if (cell.continuesAbove)
                countRepetition (above[cell.column]);
            else
                above[cell.column] = joinedText (cell.paragraphs);

            if (const auto* title = titleAt (titles, cell.column); title != nullptr && title->role)
                put (cue, *title->role, above[cell.column]);
        }

        addUntitledTimes (cue, row);

        if (row.cells.size() > 1 && isCue (cue))
            cues.push_back (std::move (cue));
    }

    /* Times under titles in a language that isn't known here. An out point alone is looked for beside the in point. */
    void addUntitledTimes (ImportedCue& cue, const Row& row)
    {
        if (holdsRole (titles, Role::bothPoints)
            || (holdsRole (titles, Role::inPoint) && holdsRole (titles, Role::outPoint)))
            return;

        const auto isInTitled = holdsRole (titles, Role::inPoint);
        auto follows = false;

        for (const auto& cell : row.cells)
        {
            const auto* title = titleAt (titles, cell.column);
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

    Titles titles;
    std::vector<std::string> words;
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
    ImportedCue cue;

    for (const auto& cell : row.cells)
    {
        if (cell.continuesAbove)
            continue;

        const auto text = joinedText (cell.paragraphs);

        if (const auto role = roles.find (cell.column);
            role != roles.end() && timecodesAlone (text.text).empty())
            put (cue, role->second, text);
    }

    cue.inPoint = times[0];
    cue.outPoint = times[1];
    return cue;
}

} // namespace

std::vector<ImportedCue> readTitledTable (const Table& table)
{
    TitledTableReader reader;
    reader.read (table);
    return std::move (reader.cues);
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
