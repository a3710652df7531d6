// SPDX-License-Identifier: GPL-3.0-only
#include "import/DBFEventFileImporter.h"

#include "core/text/StringUtil.h"
#include "import/DBFFile.h"

#include <algorithm>
#include <memory>

namespace ZEP::Overmarks
{
namespace
{

using Row = std::vector<Core::RichTextString>;

constexpr auto kADRCue = "ADR Cue";
constexpr auto kEventTypeTitle = "Event Type";

bool isASCII (const std::string& bytes)
{
    return std::all_of (bytes.begin(), bytes.end(),
                        [] (char byte) { return byte != 0 && static_cast<unsigned char> (byte) < 128; });
}

/** The text of a field without its padding, and without any other blank.
    @param encoding  unknown until a field shows it */
juce::String textOfField (std::string bytes, Core::TextEncoding& encoding)
{
    using Core::StringUtil;

    if (bytes == kEventTypeTitle)
        return StringUtil::stringWithTextEncoding (bytes.data(), bytes.size(), encoding);

    // Almost every field, and its bytes are its text: one string is enough.
    if (isASCII (bytes) && encoding != Core::TextEncodingUTF16)
    {
        if (bytes != kADRCue)
            std::erase (bytes, ' ');
        return StringUtil::stringWithTextEncoding (bytes.data(), bytes.size(), encoding);
    }

    const auto text = StringUtil::stringWithTextEncoding (bytes.data(), bytes.size(), encoding);
    return text == kADRCue ? text : text.removeCharacters (" ");
}

/** A row of fields. The last cell is none of them but our own word for all rows, whatever the file is encoded in. */
Row rowOf (std::vector<std::string> cells, Core::TextEncoding& encoding)
{
    Row row;
    row.reserve (cells.size());

    for (std::size_t i = 0; i + 1 < cells.size(); ++i)
        row.emplace_back (textOfField (std::move (cells[i]), encoding));

    row.emplace_back (juce::String (cells.back()));
    return row;
}

/** The names of the fields. A name ends at its first zero, so it never is in UTF-16. */
Row titleRowOf (std::vector<std::string> titles, Core::TextEncoding& encoding)
{
    if (encoding != Core::TextEncodingUTF16)
        return rowOf (std::move (titles), encoding);

    auto shown = Core::TextEncodingUnknown;
    return rowOf (std::move (titles), shown);
}

} // namespace

DBFEventFileImporter::DBFEventFileImporter (const juce::String& path, juce::String& errorMessage)
    : EventFileImporter (path, errorMessage, {})
{
    parse (errorMessage, Core::TextEncodingUnknown);
}

DBFEventFileImporter::~DBFEventFileImporter() = default;

bool DBFEventFileImporter::userMappingEnabled() const { return true; }

int DBFEventFileImporter::type() { return 1; }

void DBFEventFileImporter::parse (juce::String& /*errorMessage*/, Core::TextEncoding textEncoding)
{
    rows.clear();

    auto file = std::make_shared<DBFFile> (filePath.toRawUTF8());
    auto table = file->Parse (columnMap);
    readingFailure = file->failure;
    file.reset();

    if (table.empty())
        return;

    rows.reserve (table.size());
    rows.push_back (titleRowOf (std::move (table.front()), textEncoding));

    // A row that has been moved away is freed with it, so that the table isn't held twice.
    for (std::size_t i = 1; i < table.size(); ++i)
        rows.push_back (rowOf (std::move (table[i]), textEncoding));

    encoding = textEncoding;
}

} // namespace ZEP::Overmarks
