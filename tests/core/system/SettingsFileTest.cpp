// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/SettingsFile.h"

#include "core/system/SettingsLimits.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <juce_graphics/juce_graphics.h>

#include <sys/stat.h>

#include <limits>

namespace
{
using ZEP::Core::SettingsFile;

class Settings : public testing::Test
{
protected:
    template <typename Value>
    void comesBack (const Value& value)
    {
        ASSERT_TRUE (SettingsFile::write (file, { { "key", value } }));
        SettingsFile::Values read;
        ASSERT_TRUE (SettingsFile::read (file, read));
        ASSERT_EQ (read.size(), 1u);
        EXPECT_EQ (Poco::AnyCast<Value> (read.at ("key")), value);
    }

    const ZEP::Overmarks::Testing::TemporaryFolder folder;
    const juce::File file = folder.file ("settings.xml");
};

struct DamagedValue
{
    const char* title;
    const char* text;
};

class EveryDamagedValue : public Settings, public testing::WithParamInterface<DamagedValue>
{
};
} // namespace

TEST_F (Settings, everyTypeComesBackAsItWas)
{
    comesBack (true);
    comesBack (false);
    for (const int value : { 0, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max() })
        comesBack (value);
    for (const float value : { 0.06f, -1.0f / 3.0f, std::numeric_limits<float>::max(),
                               std::numeric_limits<float>::denorm_min(), 16777217.0f })
        comesBack (value);
    for (const double value : { 0.1, 1.0 / 3.0, std::numeric_limits<double>::max() })
        comesBack (value);
    comesBack (juce::Colour (0x00123456));
    comesBack (juce::Colour (0xffffffff));
}

TEST_F (Settings, everyTextComesBackAsItWas)
{
    for (const auto* text :
         { "", " ", "Arial", "int:5", "<a><?x?>b", "\"quoted\" & 'more'", "a\tb\nc\r\nd\re", "&#10;",
           "\x01\x1f\x7f", "\xc3\xa4\xe2\x99\xaa\xf0\x9f\x8e\xac", "  both ends  " })
        comesBack (juce::String (juce::CharPointer_UTF8 (text)));
}

TEST_F (Settings, keysMayHoldAnyText)
{
    const std::string key = "a \"b\" <c> & \xc3\xa4\n";
    ASSERT_TRUE (SettingsFile::write (file, { { key, 1 } }));

    SettingsFile::Values read;
    ASSERT_TRUE (SettingsFile::read (file, read));
    EXPECT_EQ (read.count (key), 1u);
}

TEST_F (Settings, aPersonCanReadTheFile)
{
    ASSERT_TRUE (SettingsFile::write (file, { { "MarkerPosX", 0.5f },
                                              { "ADRCueFontName", juce::String ("Arial") },
                                              { "StreamerColor", juce::Colour (0xff00ff00) } }));

    const auto text = file.loadFileAsString().removeCharacters ("\r");
    EXPECT_TRUE (text.contains ("<VALUE name=\"ADRCueFontName\" val=\"text:Arial\"/>\n"
                                "  <VALUE name=\"MarkerPosX\" val=\"float:0.5\"/>\n"
                                "  <VALUE name=\"StreamerColor\" val=\"colour:ff00ff00\"/>"))
        << text;
}

TEST_F (Settings, replacesWhatItReadInto)
{
    ASSERT_TRUE (SettingsFile::write (file, { { "key", 1 } }));
    SettingsFile::Values read { { "other", 2 } };
    ASSERT_TRUE (SettingsFile::read (file, read));

    EXPECT_EQ (read.count ("other"), 0u);
    EXPECT_EQ (read.count ("key"), 1u);
}

TEST_F (Settings, leavesNothingBesideTheFile)
{
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE (SettingsFile::write (file, { { "key", i } }));

    EXPECT_EQ (folder.names(), std::vector<std::string> { "settings.xml" });
}

TEST_F (Settings, makesMissingFolders)
{
    const auto deep = folder.file ("a/b/settings.xml");

    EXPECT_TRUE (SettingsFile::write (deep, {}));
    EXPECT_TRUE (deep.existsAsFile());
}

TEST_F (Settings, aPlaceThatCannotBeWrittenGivesAMessage)
{
    ASSERT_TRUE (file.replaceWithText ("a file"));
    const auto below = file.getChildFile ("settings.xml");

    EXPECT_EQ (SettingsFile::write (below, {}).getErrorMessage(),
               "Error writing the settings file \"" + below.getFullPathName() + "\"");
}

TEST_F (Settings, aFileThatCannotBeReadGivesAMessage)
{
    SettingsFile::Values read { { "other", 2 } };
    for (const auto& [place, reason] : { std::pair (file, "No such file or directory"),
                                         std::pair (juce::File (folder.directory()), "it is no file") })
        EXPECT_EQ (SettingsFile::read (place, read).getErrorMessage(),
                   "The settings file \"" + place.getFullPathName() + "\" can't be read: " + reason);
    EXPECT_EQ (read.count ("other"), 1u);
}

TEST_F (Settings, aDamagedFileGivesAMessageAndNoValues)
{
    SettingsFile::Values read { { "other", 2 } };
    for (const auto* text : { "", "garbage", "<PROPERTIES><VALUE name=\"a\" val=\"int:1\"/>", "<a><?x?>b" })
    {
        ASSERT_TRUE (file.replaceWithText (text));
        EXPECT_EQ (SettingsFile::read (file, read).getErrorMessage(),
                   "The settings file \"" + file.getFullPathName() + "\" is damaged");
    }
    EXPECT_EQ (read.size(), 1u);
    EXPECT_EQ (read.count ("other"), 1u);
}

TEST_F (Settings, aFileWithoutEndGivesAMessage)
{
    SettingsFile::Values read;

    EXPECT_EQ (SettingsFile::read (juce::File ("/dev/zero"), read).getErrorMessage(),
               "The settings file \"/dev/zero\" can't be read: it is no file");
}

TEST_F (Settings, aFileMayHaveExactlySoManyBytes)
{
    ASSERT_TRUE (SettingsFile::write (file, { { "key", 1 } }));
    const auto size = static_cast<std::uint64_t> (file.getSize());
    SettingsFile::Values read;
    auto& limits = ZEP::Core::SettingsLimits::limits();
    EXPECT_EQ (limits.bytesOfFile, 16777216u);

    limits.bytesOfFile = size;
    EXPECT_TRUE (SettingsFile::read (file, read));
    limits.bytesOfFile = size - 1;
    EXPECT_EQ (SettingsFile::read (file, read).getErrorMessage(),
               "The settings file \"" + file.getFullPathName() + "\" can't be read: it is larger than "
                   + juce::String (size - 1) + " bytes");
    limits = {};
    EXPECT_EQ (read.size(), 1u) << "what was read before";
}

TEST_F (Settings, aPipeIsNeverWaitedFor)
{
    ASSERT_EQ (::mkfifo (file.getFullPathName().toRawUTF8(), 0600), 0);
    SettingsFile::Values read;
    EXPECT_EQ (SettingsFile::read (file, read).getErrorMessage(),
               "The settings file \"" + file.getFullPathName() + "\" can't be read: it is no file");
    EXPECT_EQ (SettingsFile::write (file, {}).getErrorMessage(),
               "Error writing the settings file \"" + file.getFullPathName() + "\"");
}

TEST_P (EveryDamagedValue, givesAMessageAndNoValues)
{
    const auto value = juce::String (GetParam().text);
    ASSERT_TRUE (
        file.replaceWithText ("<PROPERTIES><VALUE name=\"good\" val=\"int:1\"/><VALUE name=\"bad\" val=\""
                              + value + "\"/></PROPERTIES>"));
    SettingsFile::Values read;

    EXPECT_EQ (SettingsFile::read (file, read).getErrorMessage(),
               "The settings file \"" + file.getFullPathName()
                   + "\" is damaged: the value of \"bad\" can't be understood");
    EXPECT_TRUE (read.empty());
}

INSTANTIATE_TEST_SUITE_P (
    Settings, EveryDamagedValue,
    testing::Values (DamagedValue { "empty", "" }, DamagedValue { "noType", "5" },
                     DamagedValue { "unknownType", "long:5" }, DamagedValue { "noNumber", "int:" },
                     DamagedValue { "letters", "int:abc" }, DamagedValue { "tail", "int:5x" },
                     DamagedValue { "blank", "int: 5" }, DamagedValue { "tooLarge", "int:99999999999" },
                     DamagedValue { "fraction", "int:1.5" }, DamagedValue { "noFloat", "float:,5" },
                     DamagedValue { "noBool", "bool:1" }, DamagedValue { "shortColour", "colour:fff" },
                     DamagedValue { "longColour", "colour:ff00ff00ff" },
                     DamagedValue { "noColour", "colour:ff00gg00" }),
    [] (const auto& damage) { return std::string (damage.param.title); });

TEST_F (Settings, holdsSixTypes)
{
    EXPECT_TRUE (SettingsFile::canHold (true));
    EXPECT_TRUE (SettingsFile::canHold (1));
    EXPECT_TRUE (SettingsFile::canHold (1.0f));
    EXPECT_TRUE (SettingsFile::canHold (1.0));
    EXPECT_TRUE (SettingsFile::canHold (juce::String()));
    EXPECT_TRUE (SettingsFile::canHold (juce::Colour()));

    EXPECT_FALSE (SettingsFile::canHold (Poco::Any()));
    EXPECT_FALSE (SettingsFile::canHold (1L));
    EXPECT_FALSE (SettingsFile::canHold (std::string ("text")));
}
