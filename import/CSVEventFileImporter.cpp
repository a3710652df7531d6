// SPDX-License-Identifier: GPL-3.0-only
#include "import/CSVEventFileImporter.h"

#include "core/system/LargePages.h"
#include "core/text/RecentTexts.h"
#include "core/text/StringUtil.h"
#include "core/text/TextDecoding.h"
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

/** Makes rich texts of the cells as they come, so that the bytes of a table aren't held beside it. */
class CellDecoder final : public CSVParser::RowTaker
{
public:
    explicit CellDecoder (const CSVParser& source) : parser (source) {}

    void take (CSVParser::Row&& row) override
    {
        if (titles.empty())
            titles = row;

        bytes += bytesOf (row);
        if (bytes <= allowed)
            decode (row);
        else
            rows.clear();
    }

    void startAgain() override
    {
        titles.clear();
        rows.clear();
        bytes = 0;
        allowed = bytesAllowed();
        encoding = parser.encoding;
    }

    /** How many bytes the limits allow for. */
    [[nodiscard]] std::uint64_t bytesAllowed() const
    {
        return Core::cappedProduct (CSVParser::kRichTableFactor,
                                    CSVParser::limits().tableBytes (parser.fileSize));
    }

    /** Whether the table is beyond the limits once its cells are rich texts; there are no rows then. */
    [[nodiscard]] bool isTooLarge() const { return bytes > allowed; }

    CSVParser::Row titles;                               ///< the first row, undecoded
    std::vector<std::vector<Core::RichTextString>> rows; ///< with the first one
    std::uint64_t bytes = 0;                             ///< of the rows, as the limits count them
    Core::TextEncoding encoding = Core::TextEncodingUnknown;

private:
    [[nodiscard]] static std::uint64_t bytesOf (const CSVParser::Row& row)
    {
        auto sum = CSVParser::kBytesOfRow;
        for (const auto& cell : row)
            sum +=
                cell.empty() ? CSVParser::kBytesOfEmptyRichCell : CSVParser::kBytesOfRichCell + cell.size();
        return sum;
    }

    void decode (CSVParser::Row& cells)
    {
        auto& row = rows.emplace_back();
        row.reserve (cells.size());
        room.keepAheadOf (row.data());

        for (auto& cell : cells)
        {
            if (parser.encoding == Core::TextEncodingUTF16)
                mendUTF16Cell (cell, parser.utf16IsBigEndian);
            row.emplace_back (textOf (cell));
        }
    }

    [[nodiscard]] juce::String textOf (const std::string& cell)
    {
        const bool meansTheSameInAll = encoding != Core::TextEncodingUTF16
                                       && cell.size() <= Core::RecentTexts::mostBytes
                                       && Core::isPlainASCII (cell);

        return meansTheSameInAll
                   ? texts.textOf (cell)
                   : Core::StringUtil::stringWithTextEncoding (cell.data(), cell.size(), encoding);
    }

    const CSVParser& parser;
    Core::RecentTexts texts;
    Core::HeapRoom room;
    std::uint64_t allowed = 0;
};

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

    CellDecoder decoder (parser);
    parser.parse (textEncoding, decoder);
    parser.fileContent = {};

    if (parser.readFailed || parser.fileTooLarge)
    {
        errorMessage += parser.readFailed ? juce::String (kCantBeOpened) : wordsOfFileTooLarge();
        return;
    }

    const bool tooLarge = parser.limitExceeded || decoder.isTooLarge();
    encoding = decoder.rows.empty() ? textEncoding : decoder.encoding;
    richBytesLeft = decoder.bytesAllowed() - (tooLarge ? 0 : decoder.bytes);
    unfoldingLimitExceeded = false;

    if (tooLarge || decoder.rows.empty())
        errorMessage += tooLarge ? kTableTooLarge : kNothingToImport;
    else
        detectDialect (decoder.titles);

    rows = std::move (decoder.rows);

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
