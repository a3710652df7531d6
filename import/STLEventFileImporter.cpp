// SPDX-License-Identifier: GPL-3.0-only
#include "import/STLEventFileImporter.h"

#include "core/system/LargePages.h"
#include "core/system/Logger.h"
#include "core/text/StringUtil.h"
#include "core/timecode/TCToolbox.h"
#include "import/EBUSubtitleBlocks.h"
#include "import/EBUTextField.h"
#include "import/TextSTLLine.h"
#include "import/frame/FileBuffer.h"
#include "import/frame/ImportLimits.h"
#include "import/frame/ImportedBytes.h"

#include <array>
#include <istream>
#include <utility>

namespace ZEP::Overmarks
{

using Core::StringUtil;

namespace
{

/** The columns in the order of their cells. */
constexpr std::array kColumns { "Start TC", "End TC", "Text" };

/** Reads a block. False if the file ends before the block does, or can't be read, which leaves the stream bad(). */
template <std::size_t length>
bool readBlock (std::istream& stream, std::array<char, length>& block)
{
    block.fill (0);
    return stream.read (block.data(), length).good();
}

/** "1 line", "2 lines". */
juce::String counted (int number, const char* thing)
{
    return juce::String (number) + " " + thing + (number == 1 ? "" : "s");
}

std::string_view withoutCarriageReturn (std::string_view line)
{
    return line.ends_with ('\r') ? line.substr (0, line.size() - 1) : line;
}

bool isBlank (std::string_view line) { return line.find_first_not_of (" \t") == std::string_view::npos; }

} // namespace

STLEventFileImporter::STLEventFileImporter (const juce::String& path, juce::String& errorMessage)
    : EventFileImporter (path, errorMessage, {})
{
    parse (errorMessage, Core::TextEncodingUnknown);
}

STLEventFileImporter::~STLEventFileImporter() = default;

bool STLEventFileImporter::userMappingEnabled() const { return false; }

int STLEventFileImporter::type() { return 4; }

void STLEventFileImporter::parse (juce::String& /*errorMessage*/, Core::TextEncoding textEncoding)
{
    rows.clear();
    readingFailure.clear();

    std::array<char, EBUSubtitles::kLengthToTellFormat> firstBytes {};
    FileBuffer file (filePath);
    std::istream start (&file);
    if (! readBlock (start, firstBytes) && start.gcount() == 0 && ! start.bad())
        note ("is empty");

    for (std::size_t column = 0; column < kColumns.size(); ++column)
        columnMap[kColumns[column]] = static_cast<int> (column);

    if (start.bad()) // nobody knows which of the two formats it is
        fail (file.getStatus().failed() ? "can't be read: " + file.getStatus().getErrorMessage()
                                        : juce::String (kFailedRead));
    else if (EBUSubtitles::isDiskFormatCode ({ firstBytes.data(), firstBytes.size() }))
        parseEBUN19STLFile (textEncoding);
    else
        parseASCIISTLFile (textEncoding);
}

void STLEventFileImporter::parseEBUN19STLFile (Core::TextEncoding textEncoding)
{
    encoding = textEncoding == Core::TextEncodingUnknown ? Core::TextEncodingASCII : textEncoding;

    FileBuffer file (filePath);
    std::istream stream (&file);
    EBUSubtitles::GSI head;

    if (! readBlock (stream, head))
    {
        if (stream.bad())
            fail (kFailedRead);
        else
            note ("the file ends before its subtitles begin");

        return;
    }

    const auto promised = EBUSubtitles::totalNumberOfBlocks (head);
    if (promised < 1)
    {
        note ("the file says that it has no subtitles");
        return;
    }

    if (! canDecodeEBUText (encoding))
        note ("texts of this format can't be read in this encoding and are left out");

    readBlocks (stream, promised);
}

void STLEventFileImporter::readBlocks (std::istream& stream, int promised)
{
    using Core::TCToolbox;

    Core::HeapRoom room;
    for (int number = 0; number < promised; ++number)
    {
        EBUSubtitles::TTI block;
        if (! readBlock (stream, block))
        {
            if (stream.bad()) // the disk failed: nobody knows what is missing
            {
                fail (kFailedRead);
                rows.clear();
                return;
            }

            note ("the file says that it has " + counted (promised, "block") + " but ends after "
                  + juce::String (number));
            return;
        }

        addRow (TCToolbox::stringFromTCTime (EBUSubtitles::timeCodeIn (block), false),
                TCToolbox::stringFromTCTime (EBUSubtitles::timeCodeOut (block), false),
                decodedEBUText (EBUSubtitles::textField (block), encoding));
        room.keepAheadOf (rows.back().data());
    }
}

void STLEventFileImporter::parseASCIISTLFile (Core::TextEncoding textEncoding)
{
    std::string bytes;
    const auto result = Core::FileInput::readWhole (filePath, bytes, ImportLimits::limits().bytesOfFile);
    if (result.failed())
        fail ("can't be read: " + result.getErrorMessage());

    encoding = textEncoding == Core::TextEncodingUnknown ? detectEncoding (bytes) : textEncoding;

    // A line break in UTF-16 is two bytes, of which the second would spoil the next line.
    auto utf8 = Core::TextEncodingUTF8;
    const bool isUTF16 = encoding == Core::TextEncodingUTF16;
    if (isUTF16)
        bytes =
            StringUtil::toUTF8 (StringUtil::stringWithTextEncoding (bytes.data(), bytes.size(), encoding));

    readLines (bytes, isUTF16 ? utf8 : encoding);
}

void STLEventFileImporter::readLines (std::string_view bytes, Core::TextEncoding& lineEncoding)
{
    TextLines lines (bytes);
    std::string_view lineBytes;
    std::size_t firstSkipped = 0;
    int skipped = 0;

    while (lines.next (lineBytes))
    {
        const auto decoded =
            StringUtil::stringWithTextEncoding (lineBytes.data(), lineBytes.size(), lineEncoding);
        const auto line = withoutCarriageReturn ({ decoded.toRawUTF8(), decoded.getNumBytesAsUTF8() });

        if (isTextSTLRemark (line))
            continue;

        if (const auto subtitle = subtitleOfTextSTLLine (std::string (line)))
            addRow (StringUtil::fromUTF8 (subtitle->start), StringUtil::fromUTF8 (subtitle->end),
                    StringUtil::fromUTF8 (subtitle->text));
        else if (! isBlank (line) && skipped++ == 0)
            firstSkipped = lines.lineNumber();
    }

    if (skipped > 0)
        note (counted (skipped, "line")
              + (skipped == 1 ? " is no subtitle and was" : " are no subtitles and were")
              + " skipped, the first is line " + juce::String (firstSkipped));
}

void STLEventFileImporter::addRow (juce::String start, juce::String end, juce::String text)
{
    auto& row = rows.emplace_back();
    row.reserve (kColumns.size());
    row.emplace_back (std::move (start));
    row.emplace_back (std::move (end));
    row.emplace_back (std::move (text));
}

void STLEventFileImporter::fail (const juce::String& reason)
{
    readingFailure = reason;
    note (reason);
}

void STLEventFileImporter::note (const juce::String& whatWasLeftOut) const
{
    Core::Logger::error (filePath + ": " + whatWasLeftOut);
}

} // namespace ZEP::Overmarks
