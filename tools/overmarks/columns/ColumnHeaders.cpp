// SPDX-License-Identifier: GPL-3.0-only
#include "columns/ColumnHeaders.h"

#include "Session.h"
#include "Suggestion.h"

#include "import/frame/EventRowReader.h"

#include <algorithm>
#include <utility>

namespace overmarks
{

using ZEP::Overmarks::EventFileImporter;
using ZEP::Overmarks::EventRowReader;

namespace
{

int numberOfColumns (const EventFileImporter& importer)
{
    return importer.rows.empty() ? 0 : static_cast<int> (importer.rows.front().size());
}

std::vector<std::string> headersOf (const EventFileImporter& importer)
{
    std::vector<std::string> headers;

    for (int i = 0; i < numberOfColumns (importer); ++i)
        headers.push_back (importer.rows.front()[static_cast<std::size_t> (i)].getText().toStdString());

    return headers;
}

/** Whether "#3" is meant: the sign and nothing but figures. */
bool isNumberOfColumn (const std::string& header)
{
    constexpr std::size_t mostFigures = 9;
    return header.size() > 1 && header.size() <= 1 + mostFigures && header.front() == '#'
           && header.find_first_not_of ("0123456789", 1) == std::string::npos;
}

// ---- hints ---------------------------------------------------------------------------------------------------------------

/** Words that mean the same in headers become one, signs become blanks: "Loop-No." is "loop number". */
juce::String plainHeader (const juce::String& header)
{
    const auto small = header.toLowerCase();
    juce::String plain;

    for (auto p = small.getCharPointer(); ! p.isEmpty();)
    {
        const auto character = p.getAndAdvance();

        if (character == '#')
            plain << " number ";
        else
            plain << (juce::CharacterFunctions::isLetterOrDigit (character)
                          ? juce::String::charToString (character)
                          : juce::String (" "));
    }

    auto words = juce::StringArray::fromTokens (plain, " ", {});
    words.removeEmptyStrings();

    for (auto& word : words)
    {
        if (juce::StringArray { "no", "nr", "num", "nummer" }.contains (word))
            word = "number";
        else if (word == "timecode")
            word = "tc";
    }

    return words.joinIntoString (" ");
}

using Hints = std::vector<std::pair<std::string, std::vector<std::string>>>;

/** Headers of lists from many studios, as plainHeader() writes them, that the importers take for nothing. */
const Hints& hints()
{
    static const Hints known {
        { "Start TC",
          { "tc", "start time", "time in", "in time", "tcin", "tc start in", "begin", "beginning", "from",
            "anfang", "beginn", "ein", "d\u00e9but", "entr\u00e9e", "inizio", "inicio", "entrada" } },
        { "End TC",
          { "end time", "time out", "out time", "tcout", "finish", "to", "ende", "aus", "fin", "sortie",
            "fine", "salida" } },
        { "Text",
          { "dialogue", "line", "lines", "line text", "script", "subtitle", "translation", "adaptation",
            "loop text", "dialogtext", "\u00fcbersetzung", "texte", "testo", "texto", "di\u00e1logo" } },
        { "Character",
          { "char", "name", "character name", "role name", "speaker", "part", "figur", "rollenname",
            "personnage", "personaggio", "personaje" } },
        { "Char Prefix", { "prefix", "character prefix", "abbreviation", "k\u00fcrzel" } },
        { "Actor",
          { "talent", "artist", "voice", "voice actor", "voice talent", "performer", "actor name",
            "schauspieler", "darsteller", "com\u00e9dien", "attore", "actriz" } },
        { "Cue Number",
          { "number", "loop", "loop number", "cue", "cue id", "adr", "adr number", "adr cue",
            "adr cue number", "line number", "take number", "loop id", "boucle", "num\u00e9ro", "numero",
            "n\u00famero" } },
        { "Notes",
          { "note", "comment", "comments", "remark", "remarks", "direction", "notiz", "notizen", "bemerkung",
            "bemerkungen", "kommentar", "remarque", "remarques", "nota", "notas" } },
        { "Engineering Notes",
          { "engineer notes", "engineering", "tech notes", "technical notes", "mixer notes",
            "recordist notes", "technik" } },
        { "Done", { "recorded", "complete", "completed", "finished", "shot", "erledigt", "fertig" } },
        { "Event Type", { "type", "event", "kind" } },
        { "Streamer Duration", { "streamer", "streamer length" } },
        { "Enabled", { "active", "aktiv" } },
        { "Number of Takes", { "takes", "take count", "number takes", "number of takes recorded" } },
        { "BPM", { "tempo", "beats per minute" } },
        { "Reason", { "adr reason", "reasons", "reason for adr", "cause", "why", "grund", "raison" } },
        { "Forced Narrative", { "fn", "forced" } },
        { "FN Region", { "region" } },
    };
    return known;
}

// ---- unused columns ------------------------------------------------------------------------------------------------------

bool isUsed (const EventFileImporter& importer, int column)
{
    return std::any_of (importer.columnMap.begin(), importer.columnMap.end(),
                        [column] (const auto& entry) { return entry.second == column; });
}

bool hasText (const EventFileImporter& importer, int column)
{
    const auto place = static_cast<std::size_t> (column);
    return std::any_of (importer.rows.begin(), importer.rows.end(),
                        [place] (const auto& row)
                        { return place < row.size() && row[place].getText().containsNonWhitespaceChars(); });
}

/** What --map can call the column: its header where that is the first of its kind and easily typed, else its number. */
juce::String wordForMap (const EventFileImporter& importer, int column, const juce::String& header)
{
    const bool isTyped = ! header.containsAnyOf ("\"\\$`!") && header == header.trim()
                         && ! isNumberOfColumn (header.toStdString());
    const bool isFirst = columnWithHeader (importer, header.toStdString()) == column;
    return isTyped && isFirst ? header : "#" + juce::String (column + 1);
}

juce::String hintFor (const EventFileImporter& importer, int column, const juce::String& header)
{
    const auto title = titleHintedAtBy (header);

    if (! title.has_value())
        return {};

    const auto assigned = importer.columnMap.find (juce::String (*title));

    if (assigned != importer.columnMap.end() && assigned->second >= 0)
        return {};

    return "; --map \"" + wordForMap (importer, column, header) + "=" + juce::String (*title)
           + "\" would take it as " + juce::String (*title);
}

juce::String lineFor (const EventFileImporter& importer, int column, bool hasTitles)
{
    const auto place = static_cast<std::size_t> (column);
    const auto& first = importer.rows.front();
    const auto header = hasTitles && place < first.size() ? first[place].getText() : juce::String();
    const auto name = "column " + juce::String (column + 1);

    if (! header.containsNonWhitespaceChars())
        return name + " is not used" + (hasTitles ? "; it has no title" : "");

    return name + " \"" + header + "\" is not used" + hintFor (importer, column, header);
}

} // namespace

std::vector<std::string> usableColumnTitles()
{
    // The first title stands for a column that isn't used.
    std::vector<std::string> titles;

    for (const auto& title : EventFileImporter::columnTitles())
        titles.push_back (title.toStdString());

    titles.erase (titles.begin());
    return titles;
}

std::optional<int> columnWithHeader (const EventFileImporter& importer, const std::string& header)
{
    if (isNumberOfColumn (header))
    {
        const int number = juce::String (header.substr (1)).getIntValue();
        return number >= 1 && number <= numberOfColumns (importer) ? std::optional (number - 1)
                                                                   : std::nullopt;
    }

    const auto headers = headersOf (importer);

    for (std::size_t i = 0; i < headers.size(); ++i)
        if (juce::String (headers[i]).trim().equalsIgnoreCase (juce::String (header).trim()))
            return static_cast<int> (i);

    return std::nullopt;
}

void refuseHeader (const std::string& option, const EventFileImporter& importer, const std::string& header)
{
    if (isNumberOfColumn (header))
        throw WrongUsage (option + ": there is no column " + header + "; the file has "
                          + std::to_string (numberOfColumns (importer)));

    throw WrongUsage (option + ": the file has no column \"" + header + "\"."
                      + didYouMean (header, headersOf (importer)));
}

std::optional<std::string> titleHintedAtBy (const juce::String& header)
{
    const auto plain = plainHeader (header).toStdString();

    for (const auto& [title, headers] : hints())
        if (std::find (headers.begin(), headers.end(), plain) != headers.end())
            return title;

    return std::nullopt;
}

std::vector<juce::String> unusedColumns (EventFileImporter& importer)
{
    constexpr std::size_t mostNamed = 40;
    std::vector<juce::String> lines;
    std::size_t columns = 0, further = 0;

    if (! importer.userMappingEnabled())
        return lines;

    for (const auto& row : importer.rows)
        columns = std::max (columns, row.size());

    for (int i = 0; i < static_cast<int> (columns); ++i)
    {
        if (isUsed (importer, i) || ! hasText (importer, i))
            continue;

        if (lines.size() < mostNamed)
            lines.push_back (lineFor (importer, i, EventRowReader::firstDataRow (importer) > 0));
        else
            ++further;
    }

    if (further > 0)
        lines.push_back (counted (further, "further column") + (further == 1 ? " is" : " are") + " not used");

    return lines;
}

} // namespace overmarks
