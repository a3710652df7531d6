// SPDX-License-Identifier: GPL-3.0-only
#include "CueTableReader.h"

#include "CharacterText.h"
#include "TimecodeText.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace DocxHandler
{

namespace
{

/* What a column holds, by its title. */
enum class Role
{
    inPoint,
    outPoint,
    bothPoints,
    character,
    text,
    number,
    notes,
    engineeringNotes,
    reason,
    region
};

using Roles = std::map<int, Role>; // by the column where the title's cell begins

std::optional<Role> roleOfTitle (std::string_view title)
{
    static const std::map<std::string, Role, std::less<>> titles {
        { "start", Role::inPoint },
        { "starttc", Role::inPoint },
        { "starttimecode", Role::inPoint },
        { "starttime", Role::inPoint },
        { "tcstart", Role::inPoint },
        { "tcin", Role::inPoint },
        { "timecodein", Role::inPoint },
        { "timein", Role::inPoint },
        { "in", Role::inPoint },
        { "intc", Role::inPoint },
        { "inpoint", Role::inPoint },
        { "from", Role::inPoint },
        { "tc", Role::inPoint },
        { "timecode", Role::inPoint },
        { "end", Role::outPoint },
        { "endtc", Role::outPoint },
        { "endtimecode", Role::outPoint },
        { "endtime", Role::outPoint },
        { "tcend", Role::outPoint },
        { "tcout", Role::outPoint },
        { "timecodeout", Role::outPoint },
        { "timeout", Role::outPoint },
        { "out", Role::outPoint },
        { "outtc", Role::outPoint },
        { "outpoint", Role::outPoint },
        { "to", Role::outPoint },
        { "stop", Role::outPoint },
        { "inout", Role::bothPoints },
        { "tcinout", Role::bothPoints },
        { "startend", Role::bothPoints },
        { "timecodes", Role::bothPoints },
        { "character", Role::character },
        { "charactername", Role::character },
        { "char", Role::character },
        { "role", Role::character },
        { "name", Role::character },
        { "speaker", Role::character },
        { "text", Role::text },
        { "cuetext", Role::text },
        { "dialogue", Role::text },
        { "dialog", Role::text },
        { "line", Role::text },
        { "lines", Role::text },
        { "script", Role::text },
        { "subtitle", Role::text },
        { "number", Role::number },
        { "cue", Role::number },
        { "cuenumber", Role::number },
        { "cueno", Role::number },
        { "cuenr", Role::number },
        { "cueid", Role::number },
        { "no", Role::number },
        { "nr", Role::number },
        { "id", Role::number },
        { "loop", Role::number },
        { "notes", Role::notes },
        { "note", Role::notes },
        { "comment", Role::notes },
        { "comments", Role::notes },
        { "remarks", Role::notes },
        { "engnotes", Role::engineeringNotes },
        { "engineeringnotes", Role::engineeringNotes },
        { "engineernotes", Role::engineeringNotes },
        { "reason", Role::reason },
        { "region", Role::region },
        { "fnregion", Role::region },
        { "forcednarrativeregion", Role::region },
    };

    if (title == "#")
        return Role::number;

    const auto found = titles.find (skeleton (title));
    return found == titles.end() ? std::nullopt : std::optional (found->second);
}

Roles rolesOfTitles (const Row& row)
{
    Roles roles;
    std::set<Role> seen;

    for (const auto& cell : row.cells)
        if (const auto role = roleOfTitle (trimmed (joinedText (cell.paragraphs).text));
            role && seen.insert (*role).second)
            roles.emplace (cell.column, *role);

    const auto tellsCues =
        seen.contains (Role::text) || seen.contains (Role::inPoint) || seen.contains (Role::bothPoints);
    return seen.size() >= 2 && tellsCues ? roles : Roles();
}

/* The text of one timecode: what is found in the cell, else whatever stands there. */
std::string timecodeIn (std::string_view text, std::size_t number)
{
    const auto found = findTimecodes (text);

    if (number < found.size())
        return std::string (text.substr (found[number].start, found[number].end - found[number].start));

    return number == 0 ? std::string (trimmed (text)) : std::string();
}

void put (ImportedCue& cue, Role role, const RichText& text)
{
    const auto words = std::string (trimmed (text.text));

    switch (role)
    {
        case Role::inPoint:
        case Role::bothPoints:
            cue.inPoint = timecodeIn (text.text, 0);

            if (cue.outPoint.empty())
                cue.outPoint = timecodeIn (text.text, 1);

            return;
        case Role::outPoint: cue.outPoint = timecodeIn (text.text, 0); return;
        case Role::character: cue.character = words; return;
        case Role::text: cue.text = text; return;
        case Role::number: cue.number = words; return;
        case Role::notes: cue.notes = text; return;
        case Role::engineeringNotes: cue.engineeringNotes = text; return;
        case Role::reason: cue.reason = words; return;
        case Role::region: cue.region = words; return;
    }
}

/* A cell counts for the title that begins at its column or to the left of it. */
std::optional<Role> roleAt (const Roles& roles, int column)
{
    const auto next = roles.upper_bound (column);
    return next == roles.begin() ? std::nullopt : std::optional (std::prev (next)->second);
}

bool isCue (const ImportedCue& cue)
{
    const auto hasText = ! trimmed (cue.text.text).empty();
    return ! findTimecodes (cue.inPoint).empty()
           || (hasText && ! (cue.number.empty() && cue.character.empty()));
}

class TitledTableReader final
{
public:
    void read (const Table& table)
    {
        for (const auto& row : table.rows)
        {
            auto titles = rolesOfTitles (row); // again on each page, in some programs

            if (! titles.empty())
                roles = std::move (titles);
            else if (! roles.empty())
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
            if (! cell.continuesAbove)
                above[cell.column] = joinedText (cell.paragraphs);

            if (const auto role = roleAt (roles, cell.column))
                put (cue, *role, above[cell.column]);
        }

        if (row.cells.size() > 1 && isCue (cue))
            cues.push_back (std::move (cue));
    }

    Roles roles;
    std::map<int, RichText> above; ///< by column; what merged cells go on showing
};

/* How much a column holds that is no timecode. */
struct ColumnContent
{
    std::size_t characters = 0;
    std::size_t cells = 0;
    std::size_t cellsWithDigits = 0;
};

std::size_t countTimecodes (const Row& row)
{
    std::size_t count = 0;

    for (const auto& cell : row.cells)
        count += cell.continuesAbove ? 0 : findTimecodes (joinedText (cell.paragraphs).text).size();

    return count;
}

bool holdsCue (const Row& row) { return countTimecodes (row) >= 2; }

std::map<int, ColumnContent> contentOfColumns (const Table& table)
{
    std::map<int, ColumnContent> columns;

    for (const auto& row : table.rows)
        for (const auto& cell : row.cells)
        {
            const auto text = joinedText (cell.paragraphs).text;

            if (! holdsCue (row) || cell.isBlank() || ! findTimecodes (text).empty())
                continue;

            auto& column = columns[cell.column];
            column.characters += text.size();
            ++column.cells;
            column.cellsWithDigits += text.find_first_of ("0123456789") != std::string::npos ? 1 : 0;
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

ImportedCue cueOfRow (const Row& row, const Roles& roles)
{
    ImportedCue cue;
    std::vector<std::string> timecodes;

    for (const auto& cell : row.cells)
    {
        if (cell.continuesAbove)
            continue;

        const auto text = joinedText (cell.paragraphs);
        const auto found = findTimecodes (text.text);

        for (const auto& timecode : found)
            timecodes.push_back (text.text.substr (timecode.start, timecode.end - timecode.start));

        if (const auto role = roles.find (cell.column); found.empty() && role != roles.end())
            put (cue, role->second, text);
    }

    cue.inPoint = timecodes[0];
    cue.outPoint = timecodes[1];
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
        if (holdsCue (row))
            cues.push_back (cueOfRow (row, roles));

    return cues;
}

} // namespace DocxHandler
