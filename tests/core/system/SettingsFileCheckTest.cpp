// SPDX-License-Identifier: GPL-3.0-only
#include "core/system/SettingsFileCheck.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
using ZEP::Core::SettingsFileCheck;

const std::string sound =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n\n<PROPERTIES>\n"
    "  <VALUE name=\"a\" val=\"int:1\"/>\n"
    "  <VALUE name=\"b &amp; &#10;&lt;\"\n         val=\"text:&quot;&gt;&apos;&#128512;\"/>\n"
    "</PROPERTIES>\n";
} // namespace

TEST (SettingsFileCheck, acceptsWhatIsWritten)
{
    EXPECT_TRUE (SettingsFileCheck::isSound (sound));
    EXPECT_TRUE (SettingsFileCheck::isSound ("<PROPERTIES/>"));
    EXPECT_TRUE (SettingsFileCheck::isSound ("<PROPERTIES></PROPERTIES>"));
    EXPECT_TRUE (SettingsFileCheck::isSound ("<PROPERTIES><VALUE name=\"\xc3\xa4\" val=\"\"/></PROPERTIES>"));
}

TEST (SettingsFileCheck, refusesEveryTornFile)
{
    for (std::size_t length = 0; length + 1 < sound.size(); ++length)
        EXPECT_FALSE (SettingsFileCheck::isSound (std::string_view (sound).substr (0, length))) << length;
}

class UnsoundFile : public testing::TestWithParam<std::string_view>
{
};

TEST_P (UnsoundFile, isRefused) { EXPECT_FALSE (SettingsFileCheck::isSound (GetParam())); }

using namespace std::string_view_literals;

INSTANTIATE_TEST_SUITE_P (
    SettingsFileCheck, UnsoundFile,
    testing::Values ("", "garbage", "<PROPERTIES>", "<PROPERTIES/><PROPERTIES/>", "<PROPERTIES/>x",
                     "<OTHER></OTHER>", "<?xml ?><?xml ?><PROPERTIES/>", "<?xml <!ENTITY ?><PROPERTIES/>",
                     "<!DOCTYPE P SYSTEM \"/etc/passwd\"><PROPERTIES/>", "<PROPERTIES>text</PROPERTIES>",
                     "<PROPERTIES><?x?>b</PROPERTIES>", "<PROPERTIES><VALUE/></PROPERTIES>",
                     "<PROPERTIES><VALUE name=\"a\"/></PROPERTIES>",
                     "<PROPERTIES><VALUE val=\"a\" name=\"b\"/></PROPERTIES>",
                     "<PROPERTIES><VALUE name=\"a\"val=\"b\"/></PROPERTIES>",
                     "<PROPERTIES><VALUE name='a' val='b'/></PROPERTIES>",
                     "<PROPERTIES><VALUE name=\"a\" val=\"<\"/></PROPERTIES>",
                     "<PROPERTIES><VALUE name=\"a\" val=\"&\"/></PROPERTIES>",
                     "<PROPERTIES><VALUE name=\"a\" val=\"&other;\"/></PROPERTIES>",
                     "<PROPERTIES><VALUE name=\"a\" val=\"&#;\"/></PROPERTIES>",
                     "<PROPERTIES><VALUE name=\"a\" val=\"&#0;\"/></PROPERTIES>",
                     "<PROPERTIES><VALUE name=\"a\" val=\"&#1114112;\"/></PROPERTIES>",
                     "<PROPERTIES><VALUE name=\"a\" val=\"&#99999999999999999999;\"/></PROPERTIES>",
                     "<PROPERTIES><VALUE name=\"a\" val=\"&#12\"/></PROPERTIES>",
                     "<PROPERTIES><VALUE name=\"a\" val=\"\xff\"/></PROPERTIES>",
                     "<PROPERTIES><VALUE name=\"a\" val=\"\xc0\x80\"/></PROPERTIES>",
                     "<PROPERTIES><VALUE name=\"a\" val=\"\0\"/></PROPERTIES>"sv,
                     "<PROPERTIES><VALUE name=\"a\" val=\"b\"><VALUE/></VALUE></PROPERTIES>"));
