// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/WorkbookText.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

using ZEP::Core::WorkbookText;

namespace
{

struct Escape
{
    const char* name;
    std::string text;
    std::string written;
};

void PrintTo (const Escape& escape, std::ostream* stream) { *stream << escape.name; }

class WorkbookTextEscapes : public testing::TestWithParam<Escape>
{
};

TEST_P (WorkbookTextEscapes, areWritten)
{
    EXPECT_EQ (WorkbookText::escaped (GetParam().text), GetParam().written);
    EXPECT_EQ (WorkbookText::needsEscapes (GetParam().text), GetParam().text != GetParam().written);
}

INSTANTIATE_TEST_SUITE_P (
    , WorkbookTextEscapes,
    testing::Values (
        Escape { "nothing", "", "" }, Escape { "plain", "Größe 少女 🎬 _x_ <&>\"", "Größe 少女 🎬 _x_ <&>\"" },
        Escape { "breaksAndTabs", "a\n\tb", "a\n\tb" }, Escape { "carriageReturn", "a\r\nb", "a_x000D_\nb" },
        Escape { "controlCodes", "\x01\x1b\x1f\x7f", "_x0001__x001B__x001F_\x7f" },
        Escape { "noCharacters", "\xef\xbf\xbe\xef\xbf\xbf\xef\xbf\xbd", "_xFFFE__xFFFF_\xef\xbf\xbd" },
        Escape { "halfPairs", "\xed\xa0\xbd\xed\xb8\x80\xed\x9f\xbf", "_xD83D__xDE00_\xed\x9f\xbf" },
        Escape { "literalEscape", "_x000D_", "_x005F_x000D_" },
        Escape { "smallLetters", "_x000d_", "_x005F_x000d_" },
        Escape { "literalEscapes", "_x0041_x0042_", "_x005F_x0041_x005F_x0042_" },
        Escape { "escapedEscape", "_x005F_x000D_", "_x005F_x005F_x005F_x000D_" },
        Escape { "tooShort", "_x00D_", "_x00D_" }, Escape { "noDigits", "_x00G0_", "_x00G0_" },
        Escape { "capitalX", "_X000D_", "_X000D_" }, Escape { "notClosed", "_x000D", "_x000D" },
        Escape { "closedByAnEscape", "_x0041\r", "_x005F_x0041_x000D_" },
        Escape { "underscoresInFront", "___x000D_", "___x005F_x000D_" },
        Escape { "behindAControlCode", "\rx000D_", "_x000D_x000D_" }),
    [] (const auto& test) { return std::string (test.param.name); });

TEST (WorkbookText, anEscapeMayEndInTheFollowingRun)
{
    EXPECT_EQ (WorkbookText::escaped ("_x00", "0D_"), "_x005F_x00");
    EXPECT_EQ (WorkbookText::escaped ("_x0041", "\r"), "_x005F_x0041");
    EXPECT_EQ (WorkbookText::escaped ("_x00", "0D"), "_x00");
    EXPECT_EQ (WorkbookText::escaped ("a", "_x000D_"), "a");
}

TEST (WorkbookText, isMadeXML) { EXPECT_EQ (WorkbookText::asXML ("<a & \"b\">"), "&lt;a &amp; \"b\"&gt;"); }

TEST (WorkbookText, lengthCountsUnitsOfUTF16)
{
    EXPECT_EQ (WorkbookText::length (""), 0u);
    EXPECT_EQ (WorkbookText::length ("aé少"), 3u);
    EXPECT_EQ (WorkbookText::length ("🎬"), 2u);
}

TEST (WorkbookText, widthIsThatOfTheLongestLine)
{
    EXPECT_EQ (WorkbookText::width (""), 0u);
    EXPECT_EQ (WorkbookText::width ("a\nabc\nab"), 3u);
    EXPECT_EQ (WorkbookText::width ("é少女"), 5u);
    EXPECT_EQ (WorkbookText::width ("“a”"), 3u);
}

TEST (WorkbookText, linesAreWrapped)
{
    EXPECT_EQ (WorkbookText::lines ("", 10), 1u);
    EXPECT_EQ (WorkbookText::lines ("1234567890", 10), 1u);
    EXPECT_EQ (WorkbookText::lines ("12345678901", 10), 2u);
    EXPECT_EQ (WorkbookText::lines ("a\nb\n", 10), 3u);
    EXPECT_EQ (WorkbookText::lines ("12345678901\n12345678901\n", 10), 5u);
    EXPECT_EQ (WorkbookText::lines ("少女少女少女", 10), 2u);
    EXPECT_EQ (WorkbookText::lines ("ab", 0), 3u); // a letter a line
}

} // namespace
