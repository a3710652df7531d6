// SPDX-License-Identifier: GPL-3.0-only
// overmarks rows: what an importer sees in a file.
#include "ListSource.h"
#include "TextTable.h"
#include "commands/Commands.h"
#include "core/text/ObjectJSON.h"
#include "list/JSONText.h"
#include "list/TextInParts.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

namespace overmarks
{

using namespace ZEP::Overmarks;

namespace
{

struct RowsOptions
{
    std::string file;
    ListOptions list;
    bool rich = false;
};

/** A cell with its looks, where it stands in the rows of the document. */
std::string richCell (const ZEP::Core::RichTextString& cell)
{
    const auto look = cell.toJSONDynamicObject();
    auto text = indentedJSON (json::parse (ZEP::Core::jsonTextOf (*look, true)));

    for (auto end = text.find ('\n'); end != std::string::npos; end = text.find ('\n', end + 1))
        text.insert (end + 1, 3, ' ');

    return text;
}

void appendCell (std::string& document, const ZEP::Core::RichTextString& cell, bool rich)
{
    if (rich)
        document += richCell (cell);
    else
        JSONText::append (document, cell.getText());
}

void appendRow (std::string& document, const std::vector<ZEP::Core::RichTextString>& row, bool rich)
{
    const char* separator = "[\n   ";

    for (const auto& cell : row)
    {
        document += separator;
        appendCell (document, cell, rich);
        separator = ",\n   ";
    }

    document += row.empty() ? "[]" : "\n  ]";
}

/** Writes the rows as they are made into JSON, so that a season's table doesn't stand in memory twice; with their looks it does. */
void appendRows (TextInParts& document, const std::vector<std::vector<ZEP::Core::RichTextString>>& rows,
                 bool rich)
{
    auto& text = document.text;
    const char* separator = "[\n  ";

    for (const auto& row : rows)
    {
        text += separator;
        appendRow (text, row, rich);
        separator = ",\n  ";

        // Looks that JSON can't tell end the command, and its answer then is one document.
        if (! rich)
            document.passOn();
    }

    text += rows.empty() ? "[]" : "\n ]";
}

/** What the document tells before the rows. */
json headAsJSON (const ReadFile& read)
{
    auto& importer = *read.importer;
    auto columnMap = json::object();

    for (const auto& [title, column] : importer.columnMap)
        columnMap[title.toStdString()] = column;

    return { { "file", read.shownPath.toStdString() },
             { "type", importer.type() },
             { "userMappingEnabled", importer.userMappingEnabled() },
             { "error", read.error.toStdString() },
             { "encoding", static_cast<int> (importer.encoding) },
             { "languageCode", importer.languageCode().toStdString() },
             { "columnMap", std::move (columnMap) } };
}

/** What it tells behind them. */
json tailAsJSON (const ReadFile& read, const Session& session)
{
    const auto& importer = *read.importer;
    auto characters = json::array();

    if (importer.characterMap != nullptr)
        for (const auto& id : importer.characterMap->characterIDs())
        {
            const auto character = importer.characterMap->characterForID (id);
            characters.push_back ({ { "id", id.toStdString() },
                                    { "name", character->name.toStdString() },
                                    { "prefix", character->prefix.toStdString() },
                                    { "actor", character->actor.toStdString() } });
        }

    json document { { "characters", std::move (characters) } };

    if (read.sheets.has_value())
    {
        auto& sheets = document["sheets"] = json::array();

        for (const auto& name : read.sheets->names)
            sheets.push_back (name.toStdString());

        document["sheet"] = read.sheets->sheetRead.toStdString();
    }

    document["messages"] = session.messagesAsJSON();
    return document;
}

void writeAsJSON (const ReadFile& read, bool rich, const Session& session)
{
    TextInParts document ([&session] (const std::string& part) { session.partOfJSON (part); });
    auto& text = document.text;
    text = indentedJSON (headAsJSON (read));
    text.erase (text.rfind ('\n')); // the closing brace comes behind the tail
    text += ",\n \"rows\": ";
    appendRows (document, read.importer->rows, rich);
    text += "," + indentedJSON (tailAsJSON (read, session)).substr (1) + "\n";
    document.passOn (1);
}

/** What there is to know of the reading besides the rows. */
juce::String howItWasRead (const ReadFile& read)
{
    if (read.sheets.has_value())
        return read.sheets->words();

    constexpr int wordCueSheet = 8;

    if (read.importer->type() == wordCueSheet) // whatever text it holds, docxHandler has read it
        return "read by docxHandler";

    const auto encoding = encodingName (read.importer->encoding);
    return "read as " + (encoding.empty() ? juce::String ("unknown encoding") : juce::String (encoding));
}

std::string rowsAsText (const EventFileImporter& importer)
{
    std::size_t columns = 0;

    for (const auto& row : importer.rows)
        columns = std::max (columns, row.size());

    // What each column is taken for stands above it.
    std::vector<juce::String> titles { "Row" };

    for (std::size_t i = 0; i < columns; ++i)
        titles.push_back ("(" + juce::String (i + 1) + ")");

    for (const auto& [title, column] : importer.columnMap)
        if (column >= 0 && static_cast<std::size_t> (column) < columns)
            titles[static_cast<std::size_t> (column) + 1] = title + " (" + juce::String (column + 1) + ")";

    TextTable table (titles);

    for (std::size_t i = 0; i < importer.rows.size(); ++i)
    {
        std::vector<juce::String> cells { juce::String (i + 1) };

        for (const auto& cell : importer.rows[i])
            cells.push_back (cell.getText());

        table.addRow (cells);
    }

    return table.textForStandardOutput();
}

/** Of a list that could be read. */
void tellOfColumns (const ReadFile& read, const ListOptions& options, const Session& session)
{
    if (read.error.isNotEmpty())
        return;

    sayWhichColumns (read, session);
    options.saveMapping (session);
}

void showRows (const RowsOptions& options, Session& session)
{
    options.list.applyToProcess (session);
    const auto read = readCueList (options.file, options.list, session);
    Session::keep (read.importer);

    if (read.tracks.has_value())
        refuseMissingTracks (options.list.optionName ("tracks"), { *read.tracks });

    if (session.wantsJSON)
    {
        tellOfColumns (read, options.list, session);
        writeAsJSON (read, options.rich, session);
    }
    else
    {
        session.say (read.shownPath + ": " + counted (read.importer->rows.size(), "row") + ", "
                     + howItWasRead (read));
        sayWhichTracks (read, session);
        tellOfColumns (read, options.list, session);
        session.data (rowsAsText (*read.importer));
    }

    if (read.error.isNotEmpty())
        session.report ({ {}, 0, {}, failureInWords (read) });
}

} // namespace

void addRowsCommand (CLI::App& program, Session& session)
{
    auto options = std::make_shared<RowsOptions>();
    auto* command = program.add_subcommand (
        "rows", "Show what the importer sees: the table, the columns, the encoding, the message");
    command->footer ("Example:\n  overmarks rows reel-2.csv");
    command->add_option ("FILE", options->file, "Cue list, or - for standard input")->required();
    command->add_flag ("--rich", options->rich, "With --json: cells with their formatted runs");
    options->list.addTo (*command);
    session.addOutputOptions (*command);
    command->callback ([options, &session] { showRows (*options, session); });
}

} // namespace overmarks
