// SPDX-License-Identifier: GPL-3.0-only
#include "import/DBFFile.h"

#include "core/system/Logger.h"
#include "import/frame/FileStream.h"
#include "import/frame/ImportLimits.h"
#include "import/frame/ImportedBytes.h"
#include "import/frame/TableBudget.h"

#include <algorithm>
#include <utility>

namespace ZEP::Overmarks
{
namespace
{

constexpr char kEndOfDescriptors = 13;
constexpr char kDeleted = '*';
constexpr char kEndOfFile = 26;
constexpr std::size_t kOffsetOfFieldLength = 16;
constexpr std::size_t kOffsetOfHeaderLength = 8; // two bytes, the lower one first
constexpr std::size_t kPiecesOfTimecode = 4;

constexpr auto kEventTypeTitle = "Event Type";
constexpr auto kCueNumberTitle = "Cue Number";
constexpr auto kTypeOfAllRows = "ADR Cue";

std::size_t unsignedByte (char byte) { return static_cast<unsigned char> (byte); }

std::size_t lengthOf (const DBFFile::FieldDescriptor& field)
{
    return unsignedByte (field[kOffsetOfFieldLength]);
}

std::string nameOf (const DBFFile::FieldDescriptor& field)
{
    return { field.begin(), std::find (field.begin(), field.end(), '\0') };
}

/** One that is cut while it is read is as bad as a disk that fails. */
void judgeEnd (std::ifstream& file, std::uint64_t length)
{
    if (hasEndedBefore (length, file))
        file.setstate (std::ios::badbit);
}

} // namespace

std::vector<std::string> split (std::string text, char separator)
{
    std::vector<std::string> pieces;

    for (std::size_t at = 0; at < text.size();)
    {
        const auto end = std::min (text.find (separator, at), text.size());
        pieces.push_back (text.substr (at, end - at));
        at = end + 1;
    }

    return pieces;
}

//==============================================================================
DBFFile::DBFFile (const char* path) : filePath (juce::String::fromUTF8 (path))
{
    openFile();

    if (! good())
        return;

    if (read (header.data(), header.size()))
        readDescriptors();

    judgeEnd (*this, fileLength);

    if (good())
        noteOtherHeaderLength();
    else if (bad()) // Parse() tells
        return;
    else if (eof())
        note ("it ends before the list of its fields does; it may be no dBase table of the older kind");
    else
        note ("it has more than " + juce::String (ImportLimits::limits().fieldsOfDBase)
              + " fields, and no record is read; it may be no dBase table of the older kind");
}

DBFFile::~DBFFile() = default;

/** Leaves the stream in a bad state if there is nothing to read. */
void DBFFile::openFile()
{
    juce::String reason;

    if (! openOrdinaryFile (filePath.toStdString(), *this, fileLength))
        reason = isOrdinaryFile (filePath) ? "it can't be opened" : "there is no such file";
    else if (const auto most = ImportLimits::limits().bytesOfFile; fileLength > most)
        reason = "it is larger than " + juce::String (most) + " bytes and is not read";

    if (reason.isNotEmpty())
    {
        refuse (reason);
        setstate (std::ios::failbit);
    }
}

void DBFFile::readDescriptors()
{
    std::vector<std::string> titles;
    char firstByte = 0;

    while (get (firstByte) && firstByte != kEndOfDescriptors && readDescriptor (firstByte))
        titles.push_back (nameOf (fieldDescriptors.back()));

    addTitles (std::move (titles));
}

/** False if the file ends inside the descriptor, or there are more of them than any table has. */
bool DBFFile::readDescriptor (char firstByte)
{
    if (fieldDescriptors.size() >= ImportLimits::limits().fieldsOfDBase)
    {
        setstate (std::ios::failbit);
        return false;
    }

    FieldDescriptor field {};
    field[0] = firstByte;
    if (! read (field.data() + 1, field.size() - 1))
        return false;

    recogniseName (nameOf (field), static_cast<int> (fieldDescriptors.size()));
    const auto length = static_cast<std::int64_t> (lengthOf (field));
    recordLength += length;
    maxFieldLength = std::max (maxFieldLength, length);
    fieldDescriptors.push_back (field);
    return true;
}

void DBFFile::recogniseName (const std::string& name, int index)
{
    const auto holds = [&name] (const char* text) { return name.find (text) != std::string::npos; };

    if (holds ("MARKER"))
        markerFieldIndices.push_back (index);
    if (holds ("TC_IN"))
        columnMap["Start TC"] = tcInFieldIndex = index;
    if (holds ("TC_OUT"))
        columnMap["End TC"] = tcOutFieldIndex = index;
    if (holds ("SUB"))
        columnMap["Text"] = index;
    if (holds ("TAKE"))
        columnMap[kCueNumberTitle] = index;
}

void DBFFile::addTitles (std::vector<std::string> titles)
{
    columnMap[kEventTypeTitle] = static_cast<int> (titles.size());
    titles.emplace_back (kEventTypeTitle);
    table.push_back (std::move (titles));
}

/** Many tables have something between descriptors and records, a zero byte at least, which shifts all of their fields. */
void DBFFile::noteOtherHeaderLength() const
{
    const auto said = unsignedByte (header[kOffsetOfHeaderLength])
                      + (unsignedByte (header[kOffsetOfHeaderLength + 1]) << 8U);
    const auto found = header.size() + sizeof (FieldDescriptor) * fieldDescriptors.size() + 1;

    if (said != found)
        note ("its records should begin at byte " + juce::String (said) + " but are read from byte "
              + juce::String (found) + " on; if fields are shifted, save it as delimited text");
}

//==============================================================================
/** The reading of the records. */
struct DBFFile::Reading
{
    TableBudget budget;
    const TakeRow& take;
    std::size_t rows;                           ///< so far, with the titles
    std::vector<std::size_t> markerFields;      ///< in their order
    std::string record {};                      ///< the fields of the record that was read last
    std::vector<std::string_view> cells {};     ///< of `record`, and the type of all rows
    std::vector<std::string_view> markerRow {}; ///< a further row, of what `cells` has
};

bool DBFFile::readRows (const TakeRow& take)
{
    if (good())
        readRecords (take);

    judgeEnd (*this, fileLength);

    if (bad()) // the disk failed: nobody knows what is missing
        refuse (kFailedRead);

    return ! bad();
}

DBFFile::Table DBFFile::Parse (std::map<juce::String, int>& columns)
{
    const auto add = [this] (const std::vector<std::string_view>& cells)
    { table.emplace_back (cells.begin(), cells.end()); };

    if (! readRows (add))
        table.clear();

    columns = columnMap;
    return table;
}

void DBFFile::readRecords (const TakeRow& take)
{
    Reading reading { TableBudget (fileLength, fileBytesPerCell), take, table.size(), {} };

    if (tcInFieldIndex != -1 && tcOutFieldIndex != -1)
        for (const auto index : markerFieldIndices)
            reading.markerFields.push_back (static_cast<std::size_t> (index));

    if (! fieldDescriptors.empty())
        columnMap.try_emplace (kCueNumberTitle, 0);

    reading.record.resize (static_cast<std::size_t> (recordLength));
    std::string_view rest = reading.record;

    for (const auto& field : fieldDescriptors)
    {
        reading.cells.push_back (rest.substr (0, lengthOf (field)));
        rest.remove_prefix (lengthOf (field));
    }

    reading.cells.emplace_back (kTypeOfAllRows);

    while (readRecord (reading))
        ;
}

/** False at the end of the file, and where the table becomes too large. A record that isn't whole is left out. */
bool DBFFile::readRecord (Reading& reading)
{
    char flag = 0;
    if (! get (flag))
        return false;

    if (flag == kDeleted)
        return static_cast<bool> (ignore (recordLength));

    if (! read (reading.record.data(), recordLength))
    {
        if (flag != kEndOfFile && ! bad())
            note ("it ends inside a record, which is left out");
        return false;
    }

    return handOut (reading, reading.cells) && handOutMarkers (reading);
}

/** A row for each marker of the record that was read last. */
bool DBFFile::handOutMarkers (Reading& reading) const
{
    const auto& cells = reading.cells;

    for (const auto field : reading.markerFields)
    {
        if (split (std::string (cells[field]), ':').size() != kPiecesOfTimecode)
            continue;

        auto& row = reading.markerRow;
        row.assign (cells.size(), {});
        const auto endField = static_cast<std::size_t> (tcOutFieldIndex);
        const auto cueNumber = static_cast<std::size_t> (columnMap.at (kCueNumberTitle));
        row[endField] = cells[endField];
        row[static_cast<std::size_t> (tcInFieldIndex)] = cells[field];
        row[cueNumber] = cells[cueNumber];
        row.back() = kTypeOfAllRows;

        if (! handOut (reading, row))
            return false;
    }

    return true;
}

bool DBFFile::handOut (Reading& reading, const std::vector<std::string_view>& cells) const
{
    if (! reading.budget.takeRow (cells.size()))
    {
        note (reading.budget.wordsOfRefusal() + "; nothing is read from row "
              + juce::String (reading.rows + 1) + " on");
        return false;
    }

    ++reading.rows;
    reading.take (cells);
    return true;
}

void DBFFile::refuse (const juce::String& reason)
{
    failure = reason;
    note (reason);
}

void DBFFile::note (const juce::String& whatIsOdd) const
{
    Core::Logger::error (filePath + ": " + whatIsOdd);
}

} // namespace ZEP::Overmarks
