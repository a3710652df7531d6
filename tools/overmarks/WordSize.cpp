// SPDX-License-Identifier: GPL-3.0-only
#include "WordSize.h"

#include "../docxHandler/ImportLimits.h" // the tool is no library, but what it refuses to read is its to say

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

namespace overmarks
{

namespace
{

constexpr auto partWithText = "word/document.xml";

std::int64_t marksIn (juce::InputStream& text)
{
    constexpr int bytesAtOnce = 1 << 18;
    std::vector<char> piece (bytesAtOnce);
    std::int64_t marks = 0;

    for (auto length = text.read (piece.data(), bytesAtOnce); length > 0;
         length = text.read (piece.data(), bytesAtOnce))
        marks += std::count_if (piece.begin(), piece.begin() + length,
                                [] (char sign) { return sign == '<' || sign == '='; });

    return marks;
}

} // namespace

bool isTooLargeToImport (const juce::File& document)
{
    namespace Limits = DocxHandler::ImportLimits;

    if (static_cast<std::uint64_t> (document.getSize()) > Limits::bytesOfFile)
        return true;

    juce::ZipFile package (document);
    const auto place = package.getIndexOfFileName (partWithText);

    if (place < 0 || package.getEntry (place)->uncompressedSize <= Limits::marksOfText)
        return false; // a mark has a byte at least
    if (static_cast<std::uint64_t> (package.getEntry (place)->uncompressedSize) > Limits::bytesOfText)
        return true;

    const std::unique_ptr<juce::InputStream> text (package.createStreamForEntry (place));
    return text != nullptr && marksIn (*text) > Limits::marksOfText;
}

} // namespace overmarks
