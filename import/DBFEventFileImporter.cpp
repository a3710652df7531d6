// SPDX-License-Identifier: GPL-3.0-only
#include "import/DBFEventFileImporter.h"

#include "core/system/LargePages.h"
#include "core/text/RecentTexts.h"
#include "core/text/StringUtil.h"
#include "import/DBFFile.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace ZEP::Overmarks
{
namespace
{

using Row = std::vector<Core::RichTextString>;

constexpr std::string_view kADRCue = "ADR Cue";
constexpr std::string_view kEventTypeTitle = "Event Type";

/** The fields of a table without their blanks. */
class BareFields final
{
public:
    /** Lasts until the next one. Nothing for a field that holds anything but ASCII, or a zero. */
    std::optional<std::string_view> withoutBlanks (std::string_view field)
    {
        auto* end = bytes.data();
        bool isASCII = true;

        for (const char byte : withoutPadding (field))
        {
            *end = byte;
            end += byte != ' ' ? 1 : 0;
            isASCII &= static_cast<signed char> (byte) > 0;
        }

        return isASCII ? std::optional (std::string_view (bytes.data(), end)) : std::nullopt;
    }

private:
    /** Only whole eights of it go, which is all of it but a few, and at once. */
    static std::string_view withoutPadding (std::string_view field)
    {
        constexpr std::string_view blanks ("        ");

        while (field.ends_with (blanks))
            field.remove_suffix (blanks.size());

        return field;
    }

    std::array<char, 256> bytes; // a field has 255 at most
};

/** Makes the rows of a table, in their order: the first field that shows how the text is encoded decides for those behind it. */
class RowMaker final
{
public:
    explicit RowMaker (Core::TextEncoding encodingOfTexts) : encoding (encodingOfTexts) {}

    /** A row of fields. The last cell is none of them but our own word for all rows, whatever the file is encoded in. */
    Row rowOf (const std::vector<std::string_view>& cells) { return rowOf (cells, encoding); }

    /** The names of the fields. A name ends at its first zero, so it never is in UTF-16. */
    Row titleRowOf (const std::vector<std::string>& titles)
    {
        auto shown = Core::TextEncodingUnknown;
        return rowOf ({ titles.begin(), titles.end() },
                      encoding == Core::TextEncodingUTF16 ? shown : encoding);
    }

    Core::TextEncoding encoding; ///< unknown until a field shows it

private:
    Row rowOf (const std::vector<std::string_view>& cells, Core::TextEncoding& shown)
    {
        Row row;
        row.reserve (cells.size());

        for (std::size_t i = 0; i + 1 < cells.size(); ++i)
            row.emplace_back (textOf (cells[i], shown));

        row.emplace_back (recent.textOf (cells.back()));
        return row;
    }

    /** The text of a field without its padding, and without any other blank. */
    juce::String textOf (std::string_view field, Core::TextEncoding& shown)
    {
        if (shown != Core::TextEncodingUTF16)
        {
            if (field == kEventTypeTitle || field == kADRCue)
                return recent.textOf (field);

            // Almost every field, and its bytes are its text.
            if (const auto bare = bareFields.withoutBlanks (field); bare.has_value())
                return recent.textOf (*bare);
        }

        const auto text = Core::StringUtil::stringWithTextEncoding (field.data(), field.size(), shown);
        return field == kEventTypeTitle || text == kADRCue.data() ? text : text.removeCharacters (" ");
    }

    BareFields bareFields;
    Core::RecentTexts recent;
};

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

    DBFFile file (filePath.toRawUTF8());
    RowMaker maker (textEncoding);

    if (! file.table.empty())
        rows.push_back (maker.titleRowOf (file.table.front()));

    Core::HeapRoom room;
    const bool isWhole = file.readRows (
        [&] (const auto& cells)
        {
            rows.push_back (maker.rowOf (cells));
            room.keepAheadOf (rows.back().data());
        });
    columnMap = file.columnMap;
    readingFailure = file.failure;

    if (! isWhole)
        rows.clear();
    else if (! rows.empty())
        encoding = maker.encoding;
}

} // namespace ZEP::Overmarks
