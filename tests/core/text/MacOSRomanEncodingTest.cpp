// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/MacOSRomanEncoding.h"

#include <Poco/TextConverter.h>
#include <Poco/UTF8Encoding.h>
#include <array>
#include <gtest/gtest.h>
#include <string>

using namespace ZEP::Core;

namespace
{

std::string toUTF8 (const std::string& bytes)
{
    const macOSRomanEncoding roman;
    const Poco::UTF8Encoding utf8;
    std::string result;
    Poco::TextConverter (roman, utf8).convert (bytes, result);
    return result;
}

std::string toRoman (const std::string& text)
{
    const macOSRomanEncoding roman;
    const Poco::UTF8Encoding utf8;
    std::string result;
    Poco::TextConverter (utf8, roman).convert (text, result);
    return result;
}

} // namespace

TEST (MacOSRoman, keepsTabsAndLineBreaks)
{
    EXPECT_EQ (toUTF8 ("a\tb\r\nc\x7f"), "a\tb\r\nc\x7f");
    EXPECT_EQ (toRoman ("a\tb\r\nc"), "a\tb\r\nc");
}

TEST (MacOSRoman, readsAccentsAndTypography)
{
    EXPECT_EQ (toUTF8 ("M\x8a"
                       "dchen \xd2ja\xd3 \xc9"),
               "Mädchen “ja” …");
    EXPECT_EQ (toUTF8 ("\x80\xdb\xff"), "Ä€ˇ");
}

TEST (MacOSRoman, writesWhatItReads)
{
    std::string all;

    for (int byte = 1; byte < 256; ++byte)
        all += static_cast<char> (byte);

    EXPECT_EQ (toRoman (toUTF8 (all)), all);
}

TEST (MacOSRoman, hasNoChineseCharacters)
{
    std::array<unsigned char, 4> bytes {};
    EXPECT_EQ (macOSRomanEncoding().convert (0x4E2D, bytes.data(), 4), 0);
}

TEST (MacOSRoman, countsWithoutAPlaceToWriteTo)
{
    const macOSRomanEncoding roman;

    EXPECT_EQ (roman.convert ('\n', nullptr, 0), 1);
    EXPECT_EQ (roman.convert (0xE4, nullptr, 0), 1);
}

TEST (MacOSRoman, asksForMoreWhenThereAreNoBytes)
{
    const macOSRomanEncoding roman;
    const unsigned char byte = 0x8a;

    EXPECT_EQ (roman.sequenceLength (&byte, 1), 1);
    EXPECT_EQ (roman.sequenceLength (&byte, 0), -1);
    EXPECT_EQ (roman.queryConvert (&byte, 1), 0xE4);
    EXPECT_EQ (roman.queryConvert (&byte, 0), -1);
    EXPECT_EQ (roman.convert (&byte), 0xE4);
}

TEST (MacOSRoman, answersToItsNames)
{
    const macOSRomanEncoding roman;

    EXPECT_STREQ (roman.canonicalName(), "MacRoman");
    EXPECT_TRUE (roman.isA ("macroman"));
    EXPECT_TRUE (roman.isA ("Mac OS Roman"));
    EXPECT_TRUE (roman.isA ("macintosh"));
    EXPECT_FALSE (roman.isA ("UTF-8"));
}
