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
    file.reset();

    if (table.empty())
        return;

    rows.reserve (table.size());

    for (auto& cells : table)
    {
        auto& row = rows.emplace_back();
        row.reserve (cells.size());
        for (auto& cell : cells)
            row.emplace_back (textOfField (std::move (cell), textEncoding));
        cells = {}; // so that the table isn't held twice
    }

    encoding = textEncoding;
}

} // namespace ZEP::Overmarks
