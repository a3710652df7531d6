// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/system/CappedNumbers.h"
#include "core/text/TextEncoding.h"

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace ZEP::Overmarks
{

/** Replaces every occurrence of `from`, left to right, going on behind each replacement: replacing "\n\n" by "\n" once leaves
    "\n\n" where three stood. An empty `from` replaces nothing. */
OVERMARKS_API void stringReplaceAll (std::string& text, const std::string& from, const std::string& to);

/** Splits delimited text into a table of cells, finding the delimiter by trial: comma, then semicolon, then tab.

    A delimiter fits when a later row has as many cells as the first and none of the first lines disagrees. Cells are the bytes
    of the file, undecoded, so that delimiters are searched in bytes; the client decodes them.

    Oddities that cue lists of the trade rely on: lines of a quoted cell are joined without a line break; a quoted cell over
    three lines or more yields its row again with every further line; an empty line ends the table; a row of empty cells is
    dropped; a short row further down is padded to one cell more than the first row has.

    One parser reads one file: open(), then parse(), once. It has no messages. No locks: one thread at a time. */
class OVERMARKS_API CSVParser
{
public:
    using Row = std::vector<std::string>; ///< cells, undecoded
    using Table = std::vector<Row>;       ///< rows from the first line on

    /** Takes the rows while they are parsed, so that the bytes of a large list needn't be held beside what they become. */
    class RowTaker
    {
    public:
        RowTaker() = default;
        RowTaker (const RowTaker&) = delete;
        RowTaker& operator= (const RowTaker&) = delete;
        virtual ~RowTaker() = default;

        /** The next row, which may be moved away. One that is left where it is saves the parser the making of the next. */
        virtual void take (Row&& row) = 0;

        /** No row so far counts: another delimiter is tried, or the table was given up. */
        virtual void startAgain() = 0;
    };

    /** How large a table may become.

        A few bytes of a damaged or hostile file can ask for terabytes: an open quote repeats its growing row with every line,
        and a wide first row widens every short row below. A row counts with kBytesOfRow, kBytesOfCell for each of its
        cells, and its text. */
    struct Limits
    {
        std::uint64_t tableBytesPerFileByte; ///< a table may have this many times the bytes of its file ...
        std::uint64_t spareTableBytes;       ///< ... and these on top
        std::size_t cellsPerRow;             ///< a line of more cells is no row of a cue list

        /** What the table of a file may come to, in bytes. */
        [[nodiscard]] std::uint64_t tableBytes (std::uint64_t fileBytes) const
        {
            return Core::cappedSum (Core::cappedProduct (tableBytesPerFileByte, fileBytes), spareTableBytes);
        }
    };

    static constexpr std::uint64_t kBytesOfRow = 40;  ///< what a row counts with, empty or not
    static constexpr std::uint64_t kBytesOfCell = 32; ///< what a cell counts with, besides its text

    /** What the parsed table becomes, a rich text for each cell, takes much more: these for a cell, an empty one the fewer.
        Its limit is kRichTableFactor times that of the parsed table. */
    static constexpr std::uint64_t kBytesOfRichCell = 320;
    static constexpr std::uint64_t kBytesOfEmptyRichCell = 48; ///< one without a text
    static constexpr std::uint64_t kRichTableFactor = 4;       ///< see kBytesOfRichCell

    /** 8 times the file and 256 MiB; 16 384 cells */
    static constexpr Limits kDefaultLimits { 8, std::uint64_t { 256 } << 20, 16384 };

    /** The limits of all parsers of the process, kDefaultLimits unless the application has changed them. Change them only
        while no file is being read. */
    static Limits& limits();

    CSVParser();
    ~CSVParser();

    /** Opens a file for parse(). The path goes to the system as it is, whatever its encoding. False if there is none, if it can't be read, or if it isn't an ordinary file: a folder or a
        pipe is never waited for. */
    [[nodiscard]] bool open (const std::string& path);

    /** Reads the whole file and splits it.
        @param textEncoding  TextEncodingUnknown asks the parser to find the encoding, which it then leaves here; any other
                             value is taken as given
        @returns `parsedRows`, empty when no delimiter fits, when all lines are one cell wide, when the file can't be read to its
                 end (`readFailed`), and when it or the table went beyond the limits (`fileTooLarge`, `limitExceeded`) */
    Table& parse (Core::TextEncoding& textEncoding);

    /** The same, with the rows given to a taker; `parsedRows` stays empty. `encoding` is settled before the first row. */
    void parse (Core::TextEncoding& textEncoding, RowTaker& taker);

    /** Splits one line. When it ends inside a quoted cell, `outsideQuotes` is false afterwards, and the next line continues
        that cell. */
    [[nodiscard]] Row parseRow (std::string& line, char delimiter);

    std::string filePath;       ///< as given to open()
    Table parsedRows;           ///< the result
    std::ifstream stream;       ///< the open file, wherever it stands; failed without one, closed by parse()
    std::string fileContent;    ///< the whole file, its line ends made "\n" by parse()
    std::uint64_t fileSize = 0; ///< bytes
    Core::TextEncoding encoding = Core::TextEncodingUTF8; ///< the encoding used
    bool utf16IsBigEndian =
        false; ///< byte order of UTF-16 content, from its mark or else from where its zeros are
    bool outsideQuotes = true;           ///< survives from line to line and from delimiter to delimiter
    std::int32_t minConsistentLines = 5; ///< so many lines must not disagree in their number of cells
    bool limitExceeded = false;          ///< the table went beyond the limits and was given up
    bool fileTooLarge = false; ///< the file has more bytes than ImportLimits allow, and nothing of it is kept
    bool readFailed = false;   ///< the file couldn't be read to its end, and nothing of it is kept

private:
    struct Attempt;

    void readFile();
    void settleEncoding (Core::TextEncoding& textEncoding);
    void dropRows();
    [[nodiscard]] bool tryDelimiter (char delimiter);
    [[nodiscard]] bool takeLine (std::string_view line, Attempt& attempt);
    void continueLastCell (std::string_view line, Attempt& attempt);
    [[nodiscard]] bool settleWidth (Attempt& attempt);
    void keepRow (Attempt& attempt);

    void splitLine (std::string_view line, char delimiter, Row& row);
    static void splitPlainLine (std::string_view line, char delimiter, Row& row, std::size_t mostCells);
    void splitLineWithQuotes (std::string_view line, char delimiter, Row& row, std::size_t mostCells);
    [[nodiscard]] std::size_t takeQuoted (std::string_view line, std::size_t at, std::string& cell);
    void giveUp();

    RowTaker* rowTaker = nullptr; // while parsing
    std::size_t rowCount = 0;     // of those that it has
    std::uint64_t tableBytesAllowed = 0;
};

} // namespace ZEP::Overmarks
