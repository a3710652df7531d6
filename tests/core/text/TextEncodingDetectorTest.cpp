// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/TextEncodingDetector.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <string_view>

using namespace ZEP::Core;
using namespace std::string_literals;

namespace
{

int found (std::string_view bytes)
{
    return TextEncodingDetector().DetectEncoding (reinterpret_cast<const unsigned char*> (bytes.data()),
                                                  bytes.size());
}

std::string utf16 (std::u16string_view text, bool bigEndian)
{
    std::string bytes;

    for (const auto unit : text)
    {
        const auto high = static_cast<char> (unit >> 8U);
        const auto low = static_cast<char> (unit & 0xFFU);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }

    return bytes;
}

struct Finding
{
    const char* name;
    std::string bytes;
    int code;
};

void PrintTo (const Finding& finding, std::ostream* out) { *out << finding.name; }

} // namespace

class DetectedEncoding : public testing::TestWithParam<Finding>
{
};

TEST_P (DetectedEncoding, isToldFromTheBytes) { EXPECT_EQ (found (GetParam().bytes), GetParam().code); }

INSTANTIATE_TEST_SUITE_P (
    Texts, DetectedEncoding,
    testing::Values (
        Finding { "empty", "", 0 }, Finding { "binary", "RIFF\x24\0\0\0WAVEfmt \x10\0\0\0\x01"s, 0 },
        Finding { "text with one zero", "Hello\0 world"s, 0 },
        Finding { "utf8 with a zero", "caf\xc3\xa9\0 au lait"s, 0 }, Finding { "only zeros", "\0\0\0\0"s, 0 },
        Finding { "one zero", "\0"s, 0 }, Finding { "latin", "caf\xe9 au lait", 1 },
        Finding { "mac roman",
                  "M\x8a"
                  "dchen",
                  1 },
        Finding { "a lone high byte", "\x80", 1 }, Finding { "utf8 cut off", "caf\xc3", 1 },
        Finding { "overlong form", "a\xc0\x80z", 1 }, Finding { "overlong slash", "\xe0\x80\xaf", 1 },
        Finding { "surrogate in utf8", "\xed\xa0\x80", 1 },
        Finding { "above the last character", "\xf4\x90\x80\x80", 1 },
        Finding { "long lead byte", "\xf8\x88\x80\x80\x80", 1 }, Finding { "ascii", "CUE 1\tHello\r\n", 2 },
        Finding { "one letter", "A", 2 }, Finding { "utf8 with mark", "\xef\xbb\xbf"s + "Hello", 3 },
        Finding { "mark alone", "\xef\xbb\xbf", 3 },
        Finding { "mark before garbage", "\xef\xbb\xbf\xff\xc0", 3 }, Finding { "utf8", "caf\xc3\xa9", 4 },
        Finding { "utf8 of three bytes", "\xe4\xb8\xad\xe6\x96\x87", 4 },
        Finding { "utf8 of four bytes", "\xf0\x9f\x8e\xac", 4 },
        Finding { "the last character", "\xf4\x8f\xbf\xbf", 4 },
        Finding { "last before the surrogates", "\xed\x9f\xbf", 4 },
        Finding { "little endian with mark", "\xff\xfe"s + utf16 (u"Hi", false), 5 },
        Finding { "little endian mark alone", "\xff\xfe", 5 },
        Finding { "little endian", utf16 (u"Hello", false), 6 },
        Finding { "little endian with accents", utf16 (u"caf\u00e9", false), 6 },
        Finding { "big endian with mark", "\xfe\xff"s + utf16 (u"Hi", true), 7 },
        Finding { "big endian", utf16 (u"Hello", true), 8 },
        Finding { "utf16 of odd length", utf16 (u"Hello", false) + "x", 0 }),
    [] (const testing::TestParamInfo<Finding>& row)
    {
        std::string name = row.param.name;
        std::replace (name.begin(), name.end(), ' ', '_');
        return name;
    });

TEST (TextEncodingDetector, knowsUTF16ByItsLatinLettersWhenTypographyRunsThroughIt)
{
    const std::u16string_view text =
        u"1\r\n00:00:01,000 --> 00:00:02,000\r\n\u201cDon\u2019t look back\u201d \u2026\r\n";

    EXPECT_EQ (found (utf16 (text, false)), 6);
    EXPECT_EQ (found (utf16 (text, true)), 8);
}

TEST (TextEncodingDetector, looksAtTheLastByteToo)
{
    std::string text (100003, 'x');
    EXPECT_EQ (found (text), 2);

    text.back() = '\xe9';
    EXPECT_EQ (found (text), 1);

    text.back() = '\0';
    EXPECT_EQ (found (text), 0);
}

TEST (TextEncodingDetector, findsAHighByteAtEveryPlaceOfABlock)
{
    for (std::size_t place = 0; place < 24; ++place)
    {
        std::string text (24, 'x');
        text[place] = '\xe9';
        EXPECT_EQ (found (text), 1) << place;

        text[place] = '\0';
        EXPECT_EQ (found (text), 0) << place;
    }
}

TEST (TextEncodingDetector, findsASequenceThatCrossesBlocks)
{
    for (std::size_t before = 0; before < 20; ++before)
        EXPECT_EQ (found (std::string (before, 'x') + "\xf0\x9f\x8e\xac" + std::string (20, 'y')), 4)
            << before;
}

TEST (TextEncodingDetector, findsNothingWithoutBytes)
{
    EXPECT_EQ (TextEncodingDetector().DetectEncoding (nullptr, 0), 0);
    EXPECT_EQ (TextEncodingDetector().DetectEncoding (nullptr, 10), 0);
}
