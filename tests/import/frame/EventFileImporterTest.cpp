// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/EventFileImporter.h"

#include <gtest/gtest.h>

using namespace ZEP::Overmarks;
using namespace ZEP::Core;

namespace
{

class ImporterOfNothing final : public EventFileImporter
{
public:
    using EventFileImporter::EventFileImporter;

    void parse (juce::String&, TextEncoding) override { parsed = true; }
    bool userMappingEnabled() const override { return false; }
    int type() override { return 99; }

    bool parsed = false;
};

} // namespace

TEST (EventFileImporter, startsWithNothingButItsPathAndTimeAndDoesNotParse)
{
    const auto time = std::make_shared<TimeInfo>();
    juce::String message ("from before");
    ImporterOfNothing importer ("/lists/reel 1.csv", message, time);

    EXPECT_EQ (importer.filePath, "/lists/reel 1.csv");
    EXPECT_EQ (importer.timeInfo, time);
    EXPECT_EQ (importer.encoding, TextEncodingUTF8);
    EXPECT_TRUE (importer.rows.empty());
    EXPECT_TRUE (importer.columnMap.empty());
    EXPECT_EQ (importer.characterMap, nullptr);
    EXPECT_EQ (importer.languageCode(), "");
    EXPECT_FALSE (importer.parsed);
    EXPECT_EQ (message, "from before");
}

TEST (EventFileImporter, offersNineteenColumnTitlesAndOnlyOnce)
{
    const std::vector<juce::String> titles { "- unused -",
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
    const auto& first = EventFileImporter::columnTitles();
    EXPECT_EQ (first, titles);
    EXPECT_EQ (&EventFileImporter::columnTitles(), &first);
    EXPECT_EQ (EventFileImporter::columnTitles().size(), 19u);
}

//==============================================================================
struct DetectionCase
{
    const char* name;
    std::string bytes;
    TextEncoding encoding;
    std::string withoutMark;
};

class DetectedEncoding : public testing::TestWithParam<DetectionCase>
{
};

TEST_P (DetectedEncoding, isTakenFromTheBytesAndTheMarkIsCutOff)
{
    auto text = GetParam().bytes;
    EXPECT_EQ (EventFileImporter::detectEncoding (text), GetParam().encoding);
    EXPECT_EQ (text, GetParam().withoutMark);
}

namespace
{
const std::string littleEndian ("I\0n\0", 4);
const std::string bigEndian ("\0I\0n", 4);
const std::string binary ("a\0b\0\0\0c\x01\0\0\0\0d", 13);
} // namespace

INSTANTIATE_TEST_SUITE_P (
    Texts, DetectedEncoding,
    testing::Values (DetectionCase { "empty", "", TextEncodingUnknown, "" },
                     DetectionCase { "binary", binary, TextEncodingUnknown, binary },
                     DetectionCase { "eightBit", "Sch\x9an", TextEncodingMacOSRoman, "Sch\x9an" },
                     DetectionCase { "ascii", "In,Out", TextEncodingASCII, "In,Out" },
                     DetectionCase { "utf8WithMark", "\xef\xbb\xbfIn", TextEncodingUTF8, "In" },
                     DetectionCase { "utf8", "Sch\xc3\xb6n", TextEncodingUTF8, "Sch\xc3\xb6n" },
                     DetectionCase { "utf16LittleEndianWithMark", "\xff\xfe" + littleEndian,
                                     TextEncodingUTF16, littleEndian },
                     DetectionCase { "utf16LittleEndian", littleEndian, TextEncodingUTF16, littleEndian },
                     DetectionCase { "utf16BigEndianWithMark", "\xfe\xff" + bigEndian, TextEncodingUTF16,
                                     bigEndian },
                     DetectionCase { "utf16BigEndian", bigEndian, TextEncodingUTF16, bigEndian }),
    [] (const auto& rowOfTable) { return rowOfTable.param.name; });
