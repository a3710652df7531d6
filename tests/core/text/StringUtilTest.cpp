// SPDX-License-Identifier: GPL-3.0-only
#include "core/text/StringUtil.h"

#include <gtest/gtest.h>
#include <ostream>
#include <random>
#include <string>
#include <string_view>

using namespace ZEP::Core;
using namespace std::string_literals;

namespace
{

juce::String text (std::string_view utf8) { return StringUtil::fromUTF8 (utf8); }

std::string plain (std::string_view utf8)
{
    return StringUtil::toUTF8 (StringUtil::replaceIllegalASCIICharacters (text (utf8)));
}

std::string character (juce::juce_wchar code) { return juce::String::charToString (code).toStdString(); }

struct Decoded
{
    std::string text;
    int encoding;

    bool operator== (const Decoded&) const = default;
};

void PrintTo (const Decoded& decoded, std::ostream* out)
{
    *out << '"' << decoded.text << "\" in " << decoded.encoding;
}

Decoded decoded (const std::string& bytes, int encoding)
{
    auto reference = static_cast<TextEncoding> (encoding);
    const auto result = StringUtil::stringWithTextEncoding (bytes.data(), bytes.size(), reference);
    return { result.toStdString(), reference };
}

const std::string replacement = "\xef\xbf\xbd";

} // namespace

// ---- Plain counterparts

struct Replaced
{
    juce::juce_wchar first;
    juce::juce_wchar last;
    const char* by;
};

void PrintTo (const Replaced& row, std::ostream* out)
{
    *out << std::hex << "U+" << static_cast<unsigned> (row.first) << " to U+"
         << static_cast<unsigned> (row.last);
}

class PlainCounterparts : public testing::TestWithParam<Replaced>
{
};

TEST_P (PlainCounterparts, stand)
{
    for (auto code = GetParam().first; code <= GetParam().last; ++code)
    {
        EXPECT_EQ (plain ("a" + character (code) + "b"), "a"s + GetParam().by + "b")
            << static_cast<unsigned> (code);
        EXPECT_TRUE (StringUtil::hasIllegalASCIICharacters (text (character (code))));
        EXPECT_STREQ (StringUtil::plainCounterpart (code), GetParam().by);
    }
}

INSTANTIATE_TEST_SUITE_P (
    Characters, PlainCounterparts,
    testing::Values (
        // quotes and primes
        Replaced { 0x2018, 0x201B, "'" }, Replaced { 0x201C, 0x201F, "\"" }, Replaced { 0x2039, 0x203A, "'" },
        Replaced { 0x275B, 0x275C, "'" }, Replaced { 0x275D, 0x275E, "\"" }, Replaced { 0x2032, 0x2032, "'" },
        Replaced { 0x2033, 0x2033, "\"" }, Replaced { 0x2034, 0x2034, "'''" },
        Replaced { 0x2035, 0x2035, "'" }, Replaced { 0x2036, 0x2036, "\"" },
        Replaced { 0x2037, 0x2037, "'''" }, Replaced { 0x2057, 0x2057, "''''" },
        // dashes
        Replaced { 0x2010, 0x2015, "-" }, Replaced { 0x2212, 0x2212, "-" }, Replaced { 0x2E3A, 0x2E3A, "--" },
        Replaced { 0x2E3B, 0x2E3B, "---" }, Replaced { 0xFE58, 0xFE58, "-" },
        Replaced { 0xFE63, 0xFE63, "-" },
        // dots and bullets
        Replaced { 0x2024, 0x2024, "." }, Replaced { 0x2025, 0x2025, ".." },
        Replaced { 0x2026, 0x2026, "..." }, Replaced { 0x2022, 0x2023, "-" },
        Replaced { 0x2043, 0x2043, "-" }, Replaced { 0x204C, 0x204D, "-" }, Replaced { 0x2219, 0x2219, "-" },
        Replaced { 0x25E6, 0x25E6, "-" },
        // spaces and breaks
        Replaced { 0x00A0, 0x00A0, " " }, Replaced { 0x1680, 0x1680, " " }, Replaced { 0x2000, 0x200A, " " },
        Replaced { 0x202F, 0x202F, " " }, Replaced { 0x205F, 0x205F, " " }, Replaced { 0x3000, 0x3000, " " },
        Replaced { 0x000B, 0x000C, "\n" }, Replaced { 0x2028, 0x2029, "\n" },
        // what can't be seen
        Replaced { 0x00AD, 0x00AD, "" }, Replaced { 0x061C, 0x061C, "" }, Replaced { 0x180E, 0x180E, "" },
        Replaced { 0x200B, 0x200B, "" }, Replaced { 0x200E, 0x200F, "" }, Replaced { 0x202A, 0x202E, "" },
        Replaced { 0x2060, 0x206F, "" }, Replaced { 0xFEFF, 0xFEFF, "" }, Replaced { 0xFFF9, 0xFFFC, "" },
        // control codes
        Replaced { 0x0001, 0x0008, "" }, Replaced { 0x000E, 0x001F, "" }, Replaced { 0x007F, 0x0081, "" },
        Replaced { 0x0083, 0x0083, "" }, Replaced { 0x0086, 0x008A, "" }, Replaced { 0x008C, 0x0090, "" },
        Replaced { 0x0098, 0x009A, "" }, Replaced { 0x009C, 0x009F, "" },
        // Windows typography that was read as Latin-1
        Replaced { 0x0082, 0x0082, "'" }, Replaced { 0x0084, 0x0084, "\"" },
        Replaced { 0x0085, 0x0085, "..." }, Replaced { 0x008B, 0x008B, "'" },
        Replaced { 0x0091, 0x0092, "'" }, Replaced { 0x0093, 0x0094, "\"" }, Replaced { 0x0095, 0x0097, "-" },
        Replaced { 0x009B, 0x009B, "'" }));

TEST (PlainText, replacesNothingElse)
{
    int listed = 0;

    for (const auto& row : StringUtil::plainCounterparts())
        listed += row.last - row.first + 1;

    int replaced = 0;

    for (juce::juce_wchar code = 1; code <= 0x10FFFF; ++code)
        replaced += StringUtil::plainCounterpart (code) != nullptr ? 1 : 0;

    EXPECT_EQ (replaced, listed);
    EXPECT_EQ (replaced, 153);
}

TEST (PlainText, keepsLettersOfAnyLanguage)
{
    for (const auto* kept : { "Hello, World! ~", "tab\tline\nreturn\r\n", "Ünïcödé ß ñ œ Ž", "Привет", "Γειά",
                              "שלום", "مرحبا", "中文 日本語 한국어", "l·l", "п'ять пʼять", "« Bonjour »",
                              "e\xcc\x81", "¿Qué? ¡No!", "†‡ ™ € £", "می‌خواهم" })
        EXPECT_EQ (plain (kept), kept);
}

TEST (PlainText, keepsEmojiAndMusicNotes)
{
    for (const auto* kept : { "♪ la la ♫ ♬ ♩", "😀 🎬", "👨‍👩‍👧", "❤️", "𝄞" })
        EXPECT_EQ (plain (kept), kept);
}

TEST (PlainText, makesAScriptLinePlain)
{
    EXPECT_EQ (plain ("\xef\xbb\xbf“Don’t – ever – look back…”\xc2\xa0♪"),
               "\"Don't - ever - look back...\" ♪");
    EXPECT_EQ (plain ("…"), "...");
    EXPECT_EQ (plain ("’’"), "''");
    EXPECT_EQ (plain ("\xe2\x80\x8b"), "");
}

TEST (PlainText, withNothingToReplaceIsNotCopied)
{
    for (const auto* kept : { "Hello", "日本語", "" })
    {
        const auto before = text (kept);
        const auto after = StringUtil::replaceIllegalASCIICharacters (before);

        EXPECT_EQ (after.getCharPointer().getAddress(), before.getCharPointer().getAddress());
        EXPECT_FALSE (StringUtil::hasIllegalASCIICharacters (before));
    }
}

TEST (PlainText, replacesAtEachPlaceOfATextOfAnyLength)
{
    for (std::size_t length = 1; length < 20; ++length)
        for (std::size_t place = 0; place < length; ++place)
            for (const auto& [from, to] : { std::pair { "\x01", "" },
                                            { "\x08", "" },
                                            { "\t", "\t" },
                                            { "\n", "\n" },
                                            { "\x0c", "\n" },
                                            { "\x1f", "" },
                                            { " ", " " },
                                            { "~", "~" },
                                            { "\x7f", "" },
                                            { "\xc2\x81", "" },
                                            { "é", "é" },
                                            { "…", "..." } })
            {
                auto before = std::string (length, 'x');
                auto after = before;
                before.replace (place, 1, from);
                after.replace (place, 1, to);
                ASSERT_EQ (plain (before.c_str()), after) << length << " " << place;
                ASSERT_EQ (StringUtil::hasIllegalASCIICharacters (text (before.c_str())), before != after);
            }
}

TEST (PlainText, staysTheSameWhenMadePlainAgain)
{
    std::string all;

    for (const auto& row : StringUtil::plainCounterparts())
        all += "x" + character (row.first);

    EXPECT_EQ (plain (plain (all)), plain (all));
}

// ---- Decoding

struct Bytes
{
    const char* name;
    std::string bytes;
    int encoding;
    std::string text;
    int encodingAfterwards;
};

void PrintTo (const Bytes& bytes, std::ostream* out) { *out << bytes.name; }

class DecodedText : public testing::TestWithParam<Bytes>
{
};

TEST_P (DecodedText, isWhatTheBytesSay)
{
    EXPECT_EQ (decoded (GetParam().bytes, GetParam().encoding),
               (Decoded { GetParam().text, GetParam().encodingAfterwards }));
}

INSTANTIATE_TEST_SUITE_P (
    Unknown, DecodedText,
    testing::Values (Bytes { "ascii leaves the question open", "Hello\r\n", 0, "Hello\r\n", 0 },
                     Bytes { "nothing", "", 0, "", 0 }, Bytes { "utf8", "caf\xc3\xa9", 0, "café", 2 },
                     Bytes { "utf8 mark", "\xef\xbb\xbfHi", 0, "Hi", 2 },
                     Bytes { "utf8 mark alone", "\xef\xbb\xbf", 0, "", 2 },
                     Bytes { "windows", "caf\xe9 \x93ja\x94", 0, "café “ja”", 5 },
                     Bytes { "little endian mark", "\xff\xfeH\0i\0"s, 0, "Hi", 3 },
                     Bytes { "big endian mark", "\xfe\xff\0H\0i"s, 0, "Hi", 3 },
                     Bytes { "little endian", "H\0i\0"s, 0, "Hi", 3 },
                     Bytes { "big endian", "\0H\0i"s, 0, "Hi", 3 },
                     Bytes { "field filled up with a zero", "A\0"s, 0, "A", 0 },
                     Bytes { "field filled up with zeros", "Anna\0\0\0\0"s, 0, "Anna", 0 },
                     Bytes { "windows field filled up with zeros", "Ren\xe9\0\0\0\0"s, 0, "René", 5 },
                     Bytes { "utf8 field filled up with zeros", "Ren\xc3\xa9\0\0\0"s, 0, "René", 2 },
                     Bytes { "only zeros", "\0\0\0\0"s, 0, "", 0 },
                     Bytes { "zeros inside", "a\0bc"s, 0, "abc", 0 },
                     Bytes { "number out of range", "caf\xe9", 99, "café", 5 },
                     Bytes { "negative number", "caf\xc3\xa9", -1, "café", 2 }));

INSTANTIATE_TEST_SUITE_P (Single, DecodedText,
                          testing::Values (Bytes { "ascii", "Hello", 1, "Hello", 1 },
                                           Bytes { "ascii with a high byte", "caf\xe9 \x80", 1, "café €", 1 },
                                           Bytes { "ascii with a zero", "a\0b"s, 1, "ab", 1 },
                                           Bytes { "mac roman",
                                                   "M\x8a"
                                                   "dchen\t\xd2ja\xd3\r\n",
                                                   4, "Mädchen\t“ja”\r\n", 4 },
                                           Bytes { "mac roman ascii", "a\tb", 4, "a\tb", 4 },
                                           Bytes { "mac roman zero", "\x8a\0\x8a"s, 4, "ää", 4 },
                                           Bytes { "windows", "\x80\x85\x99\xe4", 5, "€…™ä", 5 },
                                           Bytes { "windows open code", "\x81", 5, "\xc2\x81", 5 },
                                           Bytes { "latin", "\xa4\xe4\xff", 6, "¤äÿ", 6 },
                                           Bytes { "latin control code", "\x85", 6, "\xc2\x85", 6 },
                                           Bytes { "windows with a mark of utf8", "\xef\xbb\xbf", 5, "ï»¿",
                                                   5 }));

INSTANTIATE_TEST_SUITE_P (
    UTF8, DecodedText,
    testing::Values (Bytes { "text", "\xe4\xb8\xad \xf0\x9f\x8e\xac", 2, "中 🎬", 2 },
                     Bytes { "mark",
                             "\xef\xbb\xbf"
                             "é",
                             2, "é", 2 },
                     Bytes { "second mark", "\xef\xbb\xbf\xef\xbb\xbfx", 2, "\xef\xbb\xbfx", 2 },
                     Bytes { "lone high byte", "a\xe4z", 2, "a" + replacement + "z", 2 },
                     Bytes { "cut off", "a\xe4\xb8", 2, "a" + replacement, 2 },
                     Bytes { "cut off before a letter", "\xf0\x9f\x8ez", 2, replacement + "z", 2 },
                     Bytes { "overlong zero", "\xc0\x80", 2, replacement + replacement, 2 },
                     Bytes { "surrogate", "\xed\xa0\x80", 2, replacement + replacement + replacement, 2 },
                     Bytes { "too large", "\xf4\x90\x80\x80", 2,
                             replacement + replacement + replacement + replacement, 2 },
                     Bytes { "lone continuation", "\x80\xbf", 2, replacement + replacement, 2 },
                     Bytes { "zero between letters", "a\0\xc3\xa9"s, 2, "aé", 2 }));

INSTANTIATE_TEST_SUITE_P (
    UTF16, DecodedText,
    testing::Values (Bytes { "little endian", "H\0i\0"s, 3, "Hi", 3 },
                     Bytes { "big endian", "\0H\0i"s, 3, "Hi", 3 },
                     Bytes { "little endian mark", "\xff\xfeH\0"s, 3, "H", 3 },
                     Bytes { "big endian mark", "\xfe\xff\0H"s, 3, "H", 3 },
                     Bytes { "big endian by most zeros", "\0A\0B\x01\0"s, 3, "ABĀ", 3 },
                     Bytes { "without zeros it is little endian", "\x2d\x4e"s, 3, "中", 3 },
                     Bytes { "pair of surrogates", "\x3c\xd8\xac\xdf"s, 3, "🎬", 3 },
                     Bytes { "lead surrogate alone",
                             "\x3c\xd8"
                             "A\0"s,
                             3, replacement + "A", 3 },
                     Bytes { "trail surrogate alone",
                             "\xac\xdf"
                             "A\0"s,
                             3, replacement + "A", 3 },
                     Bytes { "lead surrogate at the end", "A\0\x3c\xd8"s, 3, "A" + replacement, 3 },
                     Bytes { "two lead surrogates", "\x3c\xd8\x3c\xd8\xac\xdf"s, 3, replacement + "🎬", 3 },
                     Bytes { "half a unit", "A\0B"s, 3, "A" + replacement, 3 },
                     Bytes { "half a unit of zero", "A\0\0"s, 3, "A", 3 },
                     Bytes { "zeros at the end", "A\0\0\0\0\0"s, 3, "A", 3 },
                     Bytes { "one byte", "A", 3, replacement, 3 }));

TEST (DecodedText, ofNoBytesIsEmpty)
{
    auto encoding = TextEncodingUnknown;

    EXPECT_TRUE (StringUtil::stringWithTextEncoding (nullptr, 0, encoding).isEmpty());
    EXPECT_TRUE (StringUtil::stringWithTextEncoding (nullptr, 12, encoding).isEmpty());
    EXPECT_EQ (encoding, TextEncodingUnknown);
}

TEST (DecodedText, letsALaterCellDecideTheEncodingOfTheFile)
{
    auto encoding = TextEncodingUnknown;

    EXPECT_EQ (StringUtil::stringWithTextEncoding ("ANNA", 4, encoding), "ANNA");
    EXPECT_EQ (encoding, TextEncodingUnknown);

    EXPECT_EQ (StringUtil::stringWithTextEncoding ("REN\xc9", 4, encoding), text ("RENÉ"));
    EXPECT_EQ (encoding, TextEncodingWindows1252);
}

TEST (DecodedText, readsNoFurtherThanItsLength)
{
    auto encoding = TextEncodingUTF8;

    EXPECT_EQ (StringUtil::stringWithTextEncoding ("Hello", 4, encoding), "Hell");
    EXPECT_EQ (StringUtil::stringWithTextEncoding ("\xc3\xa9", 1, encoding).toStdString(), replacement);
}

TEST (DecodedText, ofAnyBytesInAnyEncodingIsAValidText)
{
    std::mt19937 random (4);
    std::uniform_int_distribution<int> anyByte (-128, 127);
    std::uniform_int_distribution<std::size_t> anyLength (0, 40);

    for (int round = 0; round < 20000; ++round)
    {
        std::string bytes (anyLength (random), 'x');

        for (auto& byte : bytes)
            byte = static_cast<char> (round % 3 == 0 ? anyByte (random) : anyByte (random) | 0x80);

        auto encoding = static_cast<TextEncoding> (round % 7);
        const auto result = StringUtil::stringWithTextEncoding (bytes.data(), bytes.size(), encoding);
        const auto utf8 = result.toStdString();

        ASSERT_TRUE (juce::CharPointer_UTF8::isValidString (utf8.data(), static_cast<int> (utf8.size())));
        ASSERT_EQ (StringUtil::fromUTF8 (utf8), result);
    }
}

TEST (UTF8, thatIsDamagedBecomesAValidText)
{
    EXPECT_EQ (StringUtil::fromUTF8 ("a\xff"
                                     "b")
                   .toStdString(),
               "a" + replacement + "b");
    EXPECT_EQ (StringUtil::fromUTF8 (std::string_view ("a\0b", 3)), "ab");
    EXPECT_EQ (StringUtil::fromUTF8 ("\xef\xbb\xbfx").length(), 2);
    EXPECT_TRUE (StringUtil::fromUTF8 ({}).isEmpty());
}

TEST (UTF8, comesOutAsItWentIn)
{
    EXPECT_EQ (StringUtil::toUTF8 (StringUtil::fromUTF8 ("中 🎬 é")), "中 🎬 é");
    EXPECT_EQ (StringUtil::toUTF8 ({}), "");
}
