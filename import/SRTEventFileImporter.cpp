// SPDX-License-Identifier: GPL-3.0-only
#include "import/SRTEventFileImporter.h"

#include "core/system/LargePages.h"
#include "core/system/Logger.h"
#include "core/system/SystemUtility.h"
#include "core/text/StringUtil.h"
#include "import/SubRipBlocks.h"
#include "import/frame/ImportedBytes.h"
#include "import/frame/TableBudget.h"

#include <array>

namespace ZEP::Overmarks
{
namespace
{

constexpr auto kCantBeParsed = "The file can't be parsed properly";

/** The columns in the order of their cells. */
constexpr std::array kColumns { "Start TC", "End TC", "Text", "Cue Number" };

/** The application that wants "**" for a line break. */
constexpr int kApplicationWithStars = 0;

} // namespace

SRTEventFileImporter::SRTEventFileImporter (const juce::String& path, juce::String& errorMessage)
    : EventFileImporter (path, errorMessage, {})
{
    parse (errorMessage, Core::TextEncodingUnknown);
}

SRTEventFileImporter::~SRTEventFileImporter() = default;

bool SRTEventFileImporter::userMappingEnabled() const { return false; }

int SRTEventFileImporter::type() { return 3; }

void SRTEventFileImporter::parse (juce::String& errorMessage, Core::TextEncoding textEncoding)
{
    rows.clear();
    auto bytes = bytesOfFile (filePath);
    encoding = textEncoding == Core::TextEncodingUnknown ? detectEncoding (bytes) : textEncoding;
    replaceEach (bytes, "\r\n", "\n");

    if (bytes.empty())
    {
        errorMessage += kCantBeParsed;
        return;
    }

    for (std::size_t column = 0; column < kColumns.size(); ++column)
        columnMap[kColumns[column]] = static_cast<int> (column);

    if (! readBlocks (bytes))
    {
        rows.clear();
        errorMessage += kCantBeParsed;
    }
}

/** False for a file of nothing but empty subtitles by the million. */
bool SRTEventFileImporter::readBlocks (std::string_view bytes)
{
    using Outcome = SubRipBlockReader::Outcome;

    const bool starsForLineBreaks = Core::SystemUtility::getApplicationType() == kApplicationWithStars;
    TableBudget budget (bytes.size());
    Core::HeapRoom room;
    SubRipBlockReader reader;
    TextLines lines (bytes);
    std::string_view line;

    while (lines.next (line))
    {
        const auto outcome = reader.take (line);

        if (outcome == Outcome::arrowIsMissing)
        {
            Core::Logger::error (filePath + ": line " + juce::String (lines.lineNumber())
                                 + " has no \" --> \" between two times; nothing is read from there on");
            return true;
        }

        if (outcome == Outcome::blockIsComplete)
        {
            if (! budget.takeRow (kColumns.size()))
            {
                Core::Logger::error (filePath + ": " + budget.wordsOfRefusal());
                return false;
            }

            addRow (reader.block(), starsForLineBreaks);
            room.keepAheadOf (rows.back().data());
        }
    }

    if (reader.isInsideBlock())
        Core::Logger::error (filePath
                             + ": the last subtitle has no line break behind its text and is left out");
    return true;
}

void SRTEventFileImporter::addRow (const SubRipBlock& block, bool starsForLineBreaks)
{
    using Core::StringUtil;

    const auto text = plainSubRipText (block.text, starsForLineBreaks);
    auto& row = rows.emplace_back();
    row.reserve (kColumns.size());
    row.emplace_back (StringUtil::fromUTF8 (block.start));
    row.emplace_back (StringUtil::fromUTF8 (block.end));
    row.emplace_back (StringUtil::stringWithTextEncoding (text.data(), text.size(), encoding));
    row.emplace_back (StringUtil::fromUTF8 (block.cueNumber));
}

} // namespace ZEP::Overmarks
