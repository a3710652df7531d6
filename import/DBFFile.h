// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <juce_core/juce_core.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace ZEP::Overmarks
{

/** The pieces between the separators. A separator at the end begins no further, empty piece. */
[[nodiscard]] OVERMARKS_API std::vector<std::string> split (std::string text, char separator);

/* A dBase table, as far as it is read:

    offset           length          field
    0                32              header; kept, and nothing is made of it: neither record count nor header length
    32               32 a field      field descriptors, see below
    behind the last  1               13, the end of the descriptors; the records follow at once
    then             1 + the sum of  records: a deletion flag ("*": deleted), and the fields one behind the other,
                     the lengths     filled up with blanks
    at the end       1               26, if the writer put it there

   A field descriptor:

    offset  length   field
    0       up to 32 name, ended by a zero
    16      1        length of the field, 0 to 255

   Not read: types, decimal places, memo files. */

/** A dBase table as a table of texts. Every field is text here, whatever its type.

    Knows the trade's names of fields, which may be part of longer names, in capitals:

        MARKER  a further start of the line, as timecode; such a marker is a row of its own behind its record
        TC_IN   start of the line        TC_OUT  end of the line
        SUB     text                     TAKE    cue number

    The rule that callers get wrong: without a TAKE field the first field counts as cue number.

    A file that ends too early gives what was whole before, one whose list of fields doesn't end gives their names alone, and
    one that can't be read, to its end or at all, becomes shorter meanwhile, or is larger than ImportLimits allow gives an empty table. The log is told. No
    locks: one thread at a time. */
class OVERMARKS_API DBFFile : public std::ifstream
{
public:
    using Table = std::vector<std::vector<std::string>>; ///< rows of cells, undecoded
    using FieldDescriptor = std::array<char, 32>;        ///< bytes as in the file

    static constexpr std::uint64_t fileBytesPerCell = 8; ///< what the TableBudget of a large file goes by

    /** Opens the file, reads header and descriptors, and makes the row of titles.
        @param path  in UTF-8 */
    explicit DBFFile (const char* path);
    ~DBFFile() override;

    /** Is shown a row: its cells undecoded and with their padding, in the order of the titles. They last until it returns. */
    using TakeRow = std::function<void (const std::vector<std::string_view>& cells)>;

    /** Hands the rows of the records out, one by one, and keeps none of them in `table`.
        @returns false if the file can't be read to its end, so that nothing of it is to be taken */
    [[nodiscard]] bool readRows (const TakeRow& take);

    /** Reads the records.
        @param columns  becomes a copy of `columnMap`
        @returns a copy of `table`, its cells undecoded and with their padding */
    [[nodiscard]] Table Parse (std::map<juce::String, int>& columns);

    std::array<char, 32> header {};                ///< as it stands in the file; zeros without a file
    std::vector<FieldDescriptor> fieldDescriptors; ///< in the order of the file
    Table table;                                   ///< row 0 holds the titles, the last of them "Event Type"
    std::vector<int> markerFieldIndices;           ///< one for each MARKER field, in order
    std::map<juce::String, int> columnMap;         ///< column title to index of a cell
    std::int32_t tcInFieldIndex = -1;              ///< -1: there is none
    std::int32_t tcOutFieldIndex = -1;             ///< -1: there is none
    std::int64_t recordLength = 0;                 ///< bytes of a record without its deletion flag
    std::int64_t maxFieldLength = 0;               ///< bytes
    juce::String failure; ///< why the file couldn't be read, to its end or at all; empty if it could

private:
    struct Reading;

    void openFile();
    void readDescriptors();
    [[nodiscard]] bool readDescriptor (char firstByte);
    void recogniseName (const std::string& name, int index);
    void addTitles (std::vector<std::string> titles);
    void noteOtherHeaderLength() const;

    void readRecords (const TakeRow& take);
    [[nodiscard]] bool readRecord (Reading& reading);
    [[nodiscard]] bool handOut (Reading& reading, const std::vector<std::string_view>& cells) const;
    [[nodiscard]] bool handOutMarkers (Reading& reading) const;
    void refuse (const juce::String& reason);
    void note (const juce::String& whatIsOdd) const;

    juce::String filePath;
    std::uint64_t fileLength = 0; ///< bytes of the file, as the system said when it was opened
};

} // namespace ZEP::Overmarks
