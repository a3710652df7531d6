// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/EventFileImporter.h"

#include "core/text/TextEncodingDetector.h"

#include <array>
#include <utility>

namespace ZEP::Overmarks
{
namespace
{

std::vector<juce::String> __columnTitles;

/** What to make of an answer of TextEncodingDetector, which is the index. */
struct DetectedEncoding
{
    Core::TextEncoding encoding;
    std::size_t lengthOfMark; // bytes
};

constexpr std::array<DetectedEncoding, 9> detectedEncodings { {
    { Core::TextEncodingUnknown, 0 },    // nothing found
    { Core::TextEncodingMacOSRoman, 0 }, // 8-bit text
    { Core::TextEncodingASCII, 0 },
    { Core::TextEncodingUTF8, 3 },  // with mark
    { Core::TextEncodingUTF8, 0 },  // without
    { Core::TextEncodingUTF16, 2 }, // little endian with mark
    { Core::TextEncodingUTF16, 0 }, // little endian without
    { Core::TextEncodingUTF16, 2 }, // big endian with mark
    { Core::TextEncodingUTF16, 0 }, // big endian without
} };

} // namespace

EventFileImporter::EventFileImporter (const juce::String& path, juce::String& /*errorMessage*/,
                                      std::shared_ptr<Core::TimeInfo> projectTime)
    : filePath (path),
      encoding (Core::TextEncodingUTF8),
      timeInfo (std::move (projectTime))
{
}

EventFileImporter::~EventFileImporter() = default;

juce::String EventFileImporter::languageCode() { return {}; }

std::vector<juce::String>& EventFileImporter::columnTitles()
{
    if (__columnTitles.empty())
        __columnTitles = { "- unused -",
                           "Start TC",
                           "End TC",
                           "Text",
                           "Character",
                           "Char Prefix",
                           "Actor",
                           "Cue Number",
                           "Notes",
                           "Engineering Notes",
                           "Done",
                           "Event Type",
                           "Streamer Duration",
                           "Enabled",
                           "Number of Takes",
                           "BPM",
                           "Reason",
                           "Forced Narrative",
                           "FN Region" };

    return __columnTitles;
}

Core::TextEncoding EventFileImporter::detectEncoding (std::string& text)
{
    const auto* bytes = reinterpret_cast<const unsigned char*> (text.data());
    const auto code = Core::TextEncodingDetector().DetectEncoding (bytes, text.size());

    if (code < 0 || code >= static_cast<int> (detectedEncodings.size()))
        return Core::TextEncodingUnknown;

    const auto& detected = detectedEncodings[static_cast<std::size_t> (code)];
    text.erase (0, detected.lengthOfMark);
    return detected.encoding;
}

} // namespace ZEP::Overmarks
