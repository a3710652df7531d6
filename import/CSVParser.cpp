// SPDX-License-Identifier: GPL-3.0-only
#include "import/CSVParser.h"

#include "core/system/LargePages.h"
#include "core/system/Logger.h"
#include "core/text/StringUtil.h"
#include "import/frame/EventFileImporter.h"
#include "import/frame/FileStream.h"
#include "import/frame/ImportLimits.h"
#include "import/frame/ImportedBytes.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <utility>

namespace ZEP::Overmarks
{
namespace
{

constexpr char kQuote = '"';
constexpr char kDelimiters[] = { ',', ';', '\t' };

bool isLineEnd (char byte) { return byte == '\n' || byte == '\r'; }

/** Hands out the lines of a text one by one. An end of line at the end of the text begins no further line. */
class LineReader
{
public:
    explicit LineReader (std::string_view textToRead) : text (textToRead) {}

    bool next (std::string_view& line)
    {
        if (at >= text.size())
            return false;

        const auto end = std::min (text.find ('\n', at), text.size());
        line = text.substr (at, end - at);
        at = end + 1;
        return true;
    }

private:
    std::string_view text;
    std::size_t at = 0;
};

/** The first end of line at or behind `at`, or the end of the text. */
std::size_t findLineEnd (const std::string& text, std::size_t at, bool hasCarriageReturns)
{
    const auto end = hasCarriageReturns ? text.find_first_of ("\r\n", at, 2) : text.find ('\n', at);
    return std::min (end, text.size());
}

/** Makes every line end "\n", and one of up to four in a row, so that a Windows line end counts once and an editor's blank lines
    vanish. In one pass: what taking each "\r" for "\n" and then replacing "\n\n" by "\n" twice comes to. */
void unifyLineEnds (std::string& text)
{
    const bool hasCarriageReturns = text.find ('\r') != std::string::npos;
    std::size_t read = 0;
    std::size_t written = 0;

    while (read < text.size())
    {
        const auto end = findLineEnd (text, read, hasCarriageReturns);
        if (written != read)
            std::memmove (text.data() + written, text.data() + read, end - read);
        written += end - read;

        read = end;
        while (read < text.size() && isLineEnd (text[read]))
            ++read;

        const auto lineEnds = (read - end + 3) / 4;
        std::fill_n (text.begin() + static_cast<std::ptrdiff_t> (written), lineEnds, '\n');
        written += lineEnds;
    }

    text.resize (written);
}

std::uint64_t bytesOf (const CSVParser::Row& row)
{
    auto bytes = CSVParser::kBytesOfRow + CSVParser::kBytesOfCell * row.size();
    for (const auto& cell : row)
        bytes += cell.size();
    return bytes;
}

/** By the mark, else by the half of the units in which Latin letters and delimiters have their zeros. */
bool isBigEndianUTF16 (std::string_view text)
{
    if (text.starts_with ("\xFE\xFF") || text.starts_with ("\xFF\xFE"))
        return text.front() == '\xFE';

    std::array<std::size_t, 2> zeros {};
    for (auto place = std::min (text.find ('\0'), text.size()); place < text.size(); ++place)
        if (text[place] == '\0')
            ++zeros[place % 2];
    return zeros[0] > zeros[1];
}

/** Keeps the rows as they are. */
class TableOfRows final : public CSVParser::RowTaker
{
public:
    explicit TableOfRows (CSVParser::Table& tableToFill) : table (tableToFill) {}

    void take (CSVParser::Row&& row) override { table.push_back (std::move (row)); }
    void startAgain() override { table.clear(); }

private:
    CSVParser::Table& table;
};

bool hasText (const CSVParser::Row& row)
{
    return std::any_of (row.begin(), row.end(), [] (const std::string& cell) { return ! cell.empty(); });
}

/** The place behind the last byte; 0 for a file of the system itself, which has none. The stream stands at the first byte then,
    whatever was read from it. */
std::uint64_t endOf (std::ifstream& stream)
{
    stream.clear();
    const std::streamoff end = stream.seekg (0, std::ios::end).tellg();
    stream.clear();
    stream.seekg (0);
    return end > 0 ? static_cast<std::uint64_t> (end) : 0;
}

/** Reads on to the end, but no more than one byte beyond `most`, which tells that there are too many. */
std::string restOf (std::ifstream& stream, std::uint64_t expected, std::uint64_t most)
{
    // Files of the system itself tell no length, and others may grow meanwhile.
    constexpr std::uint64_t piece = 16384, largestPiece = std::uint64_t { 1 } << 28;
    std::string bytes;
    bytes.reserve (expected + piece);
    Core::useLargePages (bytes.data(), bytes.capacity());

    while (stream.good() && bytes.size() <= most)
    {
        const auto start = bytes.size();
        const auto room = expected > start ? std::min (expected - start, largestPiece) : piece;
        bytes.resize (start + room);
        stream.read (&bytes[start], static_cast<std::streamsize> (room));
        bytes.resize (start + static_cast<std::size_t> (stream.gcount()));
    }

    return bytes;
}

} // namespace

//==============================================================================
void stringReplaceAll (std::string& text, const std::string& from, const std::string& to)
{
    replaceEach (text, std::string (from), std::string (to)); // either may be the text itself
}

//==============================================================================
/** One delimiter on trial. */
struct CSVParser::Attempt
{
    char delimiter;
    std::size_t columnCount = 0; // cells of the first row
    bool columnCountKnown = false;
    bool consistent = false;
    std::int32_t lineNumber = 0;
    Row row = {};          // the row under work
    std::size_t width = 0; // its cells, with empty ones at its end that aren't made before they are needed
    bool rowHasText = false;
    std::uint64_t tableBytes = 0; // what the limits allow for is counted here
};

CSVParser::Limits& CSVParser::limits()
{
    static Limits current = kDefaultLimits;
    return current;
}

CSVParser::CSVParser() = default;
CSVParser::~CSVParser() = default;

bool CSVParser::open (const std::string& path)
{
    filePath = path;
    parsedRows.clear();
    stream.close();
    stream.clear();
    std::uint64_t length = 0; // asked for anew when it is read
    return openOrdinaryFile (path, stream, length);
}

CSVParser::Table& CSVParser::parse (Core::TextEncoding& textEncoding)
{
    TableOfRows table (parsedRows);
    parse (textEncoding, table);
    return parsedRows;
}

void CSVParser::parse (Core::TextEncoding& textEncoding, RowTaker& taker)
{
    readFile();
    if (fileContent.empty())
        return;

    settleEncoding (textEncoding);
    unifyLineEnds (fileContent);

    tableBytesAllowed = limits().tableBytes (fileSize);
    rowTaker = &taker;
    rowCount = 0;

    for (const auto delimiter : kDelimiters)
    {
        // A single row fits whatever delimiter made it: no second row was there to agree or disagree.
        if (rowCount == 1 || tryDelimiter (delimiter) || limitExceeded)
            return;
    }

    if (rowCount >= 2)
        dropRows();
}

void CSVParser::dropRows()
{
    rowTaker->startAgain();
    rowCount = 0;
}

void CSVParser::readFile()
{
    fileContent.clear();
    fileSize = 0;
    fileTooLarge = false;
    readFailed = stream.fail() && ! stream.is_open();

    if (! stream.is_open())
        return;

    const auto most = ImportLimits::limits().bytesOfFile;
    fileSize = endOf (stream);

    if (fileSize <= most)
        fileContent = restOf (stream, fileSize, most);

    readFailed = stream.bad() || hasEndedBefore (fileSize, stream);
    fileSize = std::max<std::uint64_t> (fileSize, fileContent.size());
    fileTooLarge = ! readFailed && fileSize > most;
    stream.close();
    stream.clear();

    if (! readFailed && ! fileTooLarge)
        return;

    fileContent = {};
    const auto reason =
        readFailed ? juce::String (kFailedRead) : "it is larger than " + juce::String (most) + " bytes";
    Core::Logger::error (Core::StringUtil::fromUTF8 (filePath) + " can't be read: " + reason);
}

void CSVParser::settleEncoding (Core::TextEncoding& textEncoding)
{
    utf16IsBigEndian = isBigEndianUTF16 (fileContent);

    if (textEncoding == Core::TextEncodingUnknown)
        textEncoding = EventFileImporter::detectEncoding (fileContent);

    encoding = textEncoding;
}

//==============================================================================
/** True if the delimiter fits: the table is settled then, also when it is empty. */
bool CSVParser::tryDelimiter (char delimiter)
{
    Attempt attempt { delimiter };
    LineReader lines (fileContent);
    std::string_view line;

    dropRows();
    while (lines.next (line))
        if (! takeLine (line, attempt))
            break;

    return attempt.consistent;
}

/** False if this is where the table ends for this delimiter. */
bool CSVParser::takeLine (std::string_view line, Attempt& attempt)
{
    if (outsideQuotes)
    {
        attempt.row.clear();
        attempt.row.reserve (attempt.columnCount);
        splitLine (line, attempt.delimiter, attempt.row);
        attempt.width = attempt.row.size();
        attempt.rowHasText = hasText (attempt.row);

        if (! outsideQuotes)
            return ! limitExceeded;
    }
    else
    {
        continueLastCell (line, attempt);
    }

    if (limitExceeded || attempt.width == 1 || ! settleWidth (attempt))
        return false;

    if (attempt.rowHasText)
        keepRow (attempt);

    ++attempt.lineNumber;
    return ! limitExceeded;
}

/** Adds the first cell of a line to the last cell of the row under work, which is inside a quote. A quote that was left open
    by the delimiter tried before has no row to be added to. */
void CSVParser::continueLastCell (std::string_view line, Attempt& attempt)
{
    Row continuation;
    splitLine (line, attempt.delimiter, continuation);

    if (attempt.width == 0 || continuation.empty() || continuation.front().empty())
        return;

    attempt.row.resize (attempt.width);
    attempt.row.back() += continuation.front();
    attempt.rowHasText = true;
}

/** Compares the row with the first one and pads it where it is short. False if it disagrees too early. */
bool CSVParser::settleWidth (Attempt& attempt)
{
    if (! attempt.columnCountKnown)
    {
        attempt.columnCountKnown = true;
        attempt.columnCount = attempt.width;
    }
    else if (attempt.width == attempt.columnCount)
    {
        attempt.consistent = true;
    }
    else if (attempt.lineNumber < minConsistentLines)
    {
        dropRows();
        return false;
    }
    else
    {
        attempt.width = std::max (attempt.width, attempt.columnCount + 1);
    }

    return true;
}

/** A row whose quote is still open is kept as far as it goes, and stays under work. */
void CSVParser::keepRow (Attempt& attempt)
{
    attempt.row.resize (attempt.width);
    attempt.tableBytes += bytesOf (attempt.row);

    if (attempt.tableBytes > tableBytesAllowed)
    {
        giveUp();
        return;
    }

    if (outsideQuotes)
        rowTaker->take (std::move (attempt.row));
    else
        rowTaker->take (Row (attempt.row));

    ++rowCount;
}

void CSVParser::giveUp()
{
    limitExceeded = true;
    dropRows();
}

//==============================================================================
CSVParser::Row CSVParser::parseRow (std::string& line, char delimiter)
{
    Row row;
    splitLineWithQuotes (line, delimiter, row, std::numeric_limits<std::size_t>::max());
    return row;
}

/** For a line of the file, without its line end. */
void CSVParser::splitLine (std::string_view line, char delimiter, Row& row)
{
    const auto mostCells = limits().cellsPerRow;

    if (! outsideQuotes || line.find (kQuote) != std::string_view::npos)
        splitLineWithQuotes (line, delimiter, row, mostCells);
    else
        splitPlainLine (line, delimiter, row, mostCells);

    if (row.size() > mostCells)
        giveUp();
}

/** What nearly all lines of nearly all files come through. */
void CSVParser::splitPlainLine (std::string_view line, char delimiter, Row& row, std::size_t mostCells)
{
    std::size_t at = 0;
    auto end = line.find (delimiter);

    while (end != std::string_view::npos && row.size() <= mostCells)
    {
        row.emplace_back (line.substr (at, end - at));
        at = end + 1;
        end = line.find (delimiter, at);
    }

    row.emplace_back (line.substr (at));
}

/** With more than `mostCells` cells the rest of the line is left out. */
void CSVParser::splitLineWithQuotes (std::string_view line, char delimiter, Row& row, std::size_t mostCells)
{
    const auto isPlain = [delimiter] (char byte)
    { return byte != kQuote && byte != delimiter && ! isLineEnd (byte); };
    std::string cell;
    std::size_t at = 0;

    while (at < line.size() && row.size() <= mostCells)
    {
        if (! outsideQuotes)
        {
            at = takeQuoted (line, at, cell);
            continue;
        }

        const auto begin = at;
        while (at < line.size() && isPlain (line[at]))
            ++at;
        cell.append (line, begin, at - begin);

        if (at == line.size())
            break;

        const auto byte = line[at++];
        if (byte == kQuote)
        {
            outsideQuotes = false;
            continue;
        }

        row.push_back (std::move (cell));
        cell.clear();
        if (byte != delimiter)
            return;
    }

    row.push_back (std::move (cell));
}

/** Takes what stands inside the quotes, as far as the closing or doubled quote or the end of the line.
    @returns where to go on */
std::size_t CSVParser::takeQuoted (std::string_view line, std::size_t at, std::string& cell)
{
    const auto quote = line.find (kQuote, at);
    cell.append (line, at, quote - at); // to the end of the line if there is no quote

    if (quote == std::string_view::npos)
        return line.size();

    if (quote + 1 < line.size() && line[quote + 1] == kQuote)
    {
        cell += kQuote;
        return quote + 2;
    }

    outsideQuotes = true;
    return quote + 1;
}

} // namespace ZEP::Overmarks
