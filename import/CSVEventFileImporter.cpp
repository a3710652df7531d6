// SPDX-License-Identifier: GPL-3.0-only
#include "import/CSVEventFileImporter.h"

#include "core/text/StringUtil.h"
#include "import/frame/ColumnGuess.h"
#include "import/frame/ImportLimits.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace ZEP::Overmarks
{
namespace
{

constexpr auto kCantBeOpened = "Error parsing the CSV file";
constexpr auto kNothingToImport = "The CSV file you tried to import doesn't contain any parsable content";
constexpr auto kTableTooLarge =
    "The CSV file you tried to import grows into a table that is too large. Perhaps a closing "
    "quotation mark is missing";

juce::String wordsOfFileTooLarge()
{
    return "The CSV file you tried to import is larger than "
           + juce::String (ImportLimits::limits().bytesOfFile) + " bytes and isn't read";
}

/** The titles by which the file of a recording tool is known. */
const std::vector<std::string_view> kDSTakerTitles { "Take", "In", "Out", "Marker" };
const std::vector<std::string_view> kEuroTakerTitles { "TakeNr", "In", "Out" };

/** Lines are cut at bytes, so that a cell of UTF-16 text has the other half of a delimiter at one of its ends. That goes,
    and the byte order stands in front instead, which a single cell can't always tell. Quotation marks leave halves of
    themselves on both sides; such cells stay as they are. */
void mendUTF16Cell (std::string& cell, bool bigEndian)
{
    using namespace std::string_view_literals;
    constexpr auto twoHalves = "\0\0"sv;

    if (cell.empty() || cell.starts_with (twoHalves) || cell.ends_with (twoHalves))
        return;
    if (cell.size() % 2 != 0)
        cell.erase (bigEndian ? cell.size() - 1 : 0, 1);
    cell.insert (0, bigEndian ? "\xFE\xFF" : "\xFF\xFE");
}

} // namespace

CSVEventFileImporter::CSVEventFileImporter (const juce::String& path, juce::String& errorMessage)
    : EventFileImporter (path, errorMessage, {})
{
    parse (errorMessage, Core::TextEncodingUnknown);
}

CSVEventFileImporter::~CSVEventFileImporter() = default;

bool CSVEventFileImporter::userMappingEnabled() const { return true; }

int CSVEventFileImporter::type() { return 2; }

void CSVEventFileImporter::parse (juce::String& errorMessage, Core::TextEncoding textEncoding)
{
    CSVParser parser;
    if (! parser.open (filePath.toStdString()))
    {
        errorMessage += kCantBeOpened;
        return;
    }

    auto& table = parser.parse (textEncoding);
    parser.fileContent = {};

    if (parser.readFailed || parser.fileTooLarge)
    {
        errorMessage += parser.readFailed ? juce::String (kCantBeOpened) : wordsOfFileTooLarge();
        return;
    }

    encoding = textEncoding;
    richBytesLeft =
        Core::cappedProduct (CSVParser::kRichTableFactor, CSVParser::limits().tableBytes (parser.fileSize));
    unfoldingLimitExceeded = false;

    const bool tooLarge = parser.limitExceeded || ! mayConvert (table);
    if (tooLarge)
        table.clear();

    if (table.empty())
        errorMessage += tooLarge ? kTableTooLarge : kNothingToImport;
    else
        detectDialect (table.front());

    if (encoding == Core::TextEncodingUTF16)
        for (auto& row : table)
            for (auto& cell : row)
                mendUTF16Cell (cell, parser.utf16IsBigEndian);

    convertTable (std::move (table));

    if (textEncoding != Core::TextEncodingUTF16)
        unfoldDialect (errorMessage);

    guessMapping();
}

/** Strikes the titles off both lists; the list that is finished first, from the left, decides. */
void CSVEventFileImporter::detectDialect (const CSVParser::Row& titles)
{
    auto missingForDSTaker = kDSTakerTitles;
    auto missingForEuroTaker = kEuroTakerTitles;

    for (const auto& title : titles)
    {
        std::erase (missingForDSTaker, title);
        std::erase (missingForEuroTaker, title);

        if (missingForDSTaker.empty())
        {
            isDSTaker = true;
            return;
        }

        if (missingForEuroTaker.empty())
        {
            isEuroTaker = true;
            return;
        }
    }
}

/** Whether the table is within the limits once its cells are rich texts. */
bool CSVEventFileImporter::mayConvert (const CSVParser::Table& table)
{
    std::uint64_t bytes = 0;
    for (const auto& row : table)
    {
        bytes += CSVParser::kBytesOfRow;
        for (const auto& cell : row)
            bytes +=
                cell.empty() ? CSVParser::kBytesOfEmptyRichCell : CSVParser::kBytesOfRichCell + cell.size();
    }

    if (bytes > richBytesLeft)
        return false;
    richBytesLeft -= bytes;
    return true;
}

/** Decodes the cells into `rows`, and lets go of the bytes row by row, so that a table isn't held twice. */
void CSVEventFileImporter::convertTable (CSVParser::Table&& table)
{
    rows.clear();
    rows.reserve (table.size());

    for (auto& cells : table)
    {
        auto& row = rows.emplace_back();
        row.reserve (cells.size());
        for (const auto& cell : cells)
            row.emplace_back (Core::StringUtil::stringWithTextEncoding (cell.data(), cell.size(), encoding));
        cells = {};
    }
}

void CSVEventFileImporter::unfoldDialect (juce::String& errorMessage)
{
    if (isDSTaker)
        parseDSTakerCSV();
    else if (isEuroTaker)
        parseEuroTakerCSV();

    if (unfoldingLimitExceeded)
    {
        rows.clear();
        errorMessage += kTableTooLarge;
    }
}

/** Whether so many new rows are within the limits of a table; from the first refusal on, nothing is. */
bool CSVEventFileImporter::mayUnfold (std::size_t rowCount, std::size_t cellsPerRow)
{
    const auto bytes = rowCount * (CSVParser::kBytesOfRow + CSVParser::kBytesOfRichCell * cellsPerRow);
    unfoldingLimitExceeded = unfoldingLimitExceeded || bytes > richBytesLeft;

    if (! unfoldingLimitExceeded)
        richBytesLeft -= bytes;
    return ! unfoldingLimitExceeded;
}

void CSVEventFileImporter::guessMapping()
{
    if (! rows.empty())
        columnMap = guessColumns (rows.front(), columnSynonyms());
}

} // namespace ZEP::Overmarks
