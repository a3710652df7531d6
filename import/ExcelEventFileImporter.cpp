// SPDX-License-Identifier: GPL-3.0-only
#include "import/ExcelEventFileImporter.h"

#include "core/documents/ExcelFileHandler.h"
#include "import/frame/ColumnGuess.h"

#include <utility>
#include <vector>

namespace ZEP::Overmarks
{
namespace
{

using Table = std::vector<std::vector<Core::RichTextString>>;

constexpr auto kFailed = "Error parsing the Excel file.";
constexpr auto kOnlyEmptyCells =
    "Error parsing the Excel file. The file you have selected contains only empty cells in the "
    "active sheet.";

/** What the templates of the trade call a column, beside the headers of delimited text. */
const ColumnSynonymTable& synonymsOfTemplates()
{
    static const ColumnSynonymTable table =
        withMoreSynonyms (columnSynonyms(), {
                                                { "Start TC", { "CUE START" } },
                                                { "End TC", { "CUE END" } },
                                                { "Text", { "LINE" } },
                                                { "Character", { "CHAR NAME" } },
                                                { "Char Prefix", { "CHAR ID" } },
                                                { "Actor", { "ACTOR NAME" } },
                                                { "Cue Number", { "CUE NO" } },
                                                { "Notes", { "NOTE" } },
                                                { "Reason", { "REASON" } },
                                            });
    return table;
}

/** Reads a table with some work that takes the table and a message. */
template <typename Read>
void readTable (ExcelEventFileImporter& importer, juce::String& errorMessage, Read read)
{
    try
    {
        Core::ExcelFileHandler handler;
        Table table;
        juce::String error;
        read (handler, table, error);

        if (error.isNotEmpty())
        {
            errorMessage = kFailed + (" " + error);
            return;
        }

        if (table.empty() || table.front().empty())
        {
            errorMessage = kOnlyEmptyCells;
            return;
        }

        importer.rows = std::move (table);
        importer.guessMapping();
    }
    catch (...)
    {
        errorMessage = kFailed;
    }
}

} // namespace

ExcelEventFileImporter::ExcelEventFileImporter (const juce::String& path, juce::String& errorMessage)
    : EventFileImporter (path, errorMessage, {})
{
    parse (errorMessage, Core::TextEncodingWindows1252);
}

ExcelEventFileImporter::~ExcelEventFileImporter() = default;

bool ExcelEventFileImporter::userMappingEnabled() const { return true; }

int ExcelEventFileImporter::type() { return 6; }

void ExcelEventFileImporter::parse (juce::String& errorMessage, Core::TextEncoding)
{
    readTable (*this, errorMessage,
               [this] (auto& handler, auto& table, auto& error)
               { handler.readFileContent (filePath, table, error); });
}

void ExcelEventFileImporter::parseSheet (const juce::String& sheet, juce::String& errorMessage)
{
    readTable (*this, errorMessage,
               [this, &sheet] (auto& handler, auto& table, auto& error)
               { handler.readSheetContent (filePath, sheet, table, error); });
}

void ExcelEventFileImporter::guessMapping()
{
    if (! rows.empty())
        columnMap = guessColumns (rows.front(), synonymsOfTemplates());
}

} // namespace ZEP::Overmarks
