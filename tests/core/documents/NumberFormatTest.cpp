// SPDX-License-Identifier: GPL-3.0-only
#include "core/documents/NumberFormat.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

using namespace ZEP::Core;

namespace
{

struct Shown
{
    const char* code;
    double value;
    const char* text;
};

class NumberFormats : public testing::TestWithParam<Shown>
{
};

constexpr double oneHour = 1.0 / 24.0;
constexpr double oneSecond = 1.0 / 86400.0;

/** hh:mm:ss as the fraction of a day. */
constexpr double clock (int hours, int minutes, double seconds)
{
    return (hours * 3600.0 + minutes * 60.0 + seconds) / 86400.0;
}

} // namespace

TEST_P (NumberFormats, showTheNumberAsASpreadsheetDoes)
{
    const auto& [code, value, text] = GetParam();
    EXPECT_EQ (NumberFormat (code).shown (value, false), text) << code << " of " << value;
}

INSTANTIATE_TEST_SUITE_P (
    Plain, NumberFormats,
    testing::Values (Shown { "General", 12, "12" }, Shown { "General", -12.5, "-12.5" },
                     Shown { "General", 0, "0" }, Shown { "General", 0.1 + 0.2, "0.3" },
                     Shown { "General", 1234567890123, "1234567890123" }, Shown { "General", 1e15, "1E+15" },
                     Shown { "General", 1.5e-12, "1.5E-12" }, Shown { "General", -2e200, "-2E+200" },
                     Shown { "General", 100, "100" }, Shown { "General", 1.0 / 3.0, "0.3333333333" },
                     Shown { "GENERAL", 3, "3" }, Shown { "@", 42, "42" },
                     Shown { "\"Cue \"General", 7, "Cue 7" }));

INSTANTIATE_TEST_SUITE_P (
    Digits, NumberFormats,
    testing::Values (Shown { "0", 2.5, "3" }, Shown { "0", -2.5, "-3" }, Shown { "0", 0.4, "0" },
                     Shown { "0", -0.4, "0" }, Shown { "0.00", 1.005, "1.01" },
                     Shown { "0.00", 99.999, "100.00" }, Shown { "00000", 123, "00123" },
                     Shown { "0000", 123456, "123456" }, Shown { "#", 0, "" }, Shown { "0.##", 1.5, "1.5" },
                     Shown { "#,##0", 1234567, "1,234,567" }, Shown { "#,##0", 12, "12" },
                     Shown { "#,##0.00", 1234.5, "1,234.50" }, Shown { "#,##0.00", -1234.5, "-1,234.50" },
                     Shown { "0,000", 12, "0,012" }, Shown { "0.0,", 12345, "12.3" },
                     Shown { ".00", 12.345, "12.35" }, Shown { "???0", 12, "12" },
                     Shown { "0.0??", 1.5, "1.5" },
                     Shown { "0000000000000000000000", 5, "0000000000000000000005" }));

INSTANTIATE_TEST_SUITE_P (
    PercentagesAndPowers, NumberFormats,
    testing::Values (Shown { "0%", 0.5, "50%" }, Shown { "0.00%", 0.01234, "1.23%" },
                     Shown { "0%", -0.25, "-25%" }, Shown { "0.00E+00", 12345, "1.23E+04" },
                     Shown { "0.00E+00", 0.00012, "1.20E-04" }, Shown { "0.00E+00", 0, "0.00E+00" },
                     Shown { "0.0E+0", 99.99, "1.0E+2" }, Shown { "##0.0E+0", 12345, "12.3E+3" },
                     Shown { "##0.0E+0", 999.96, "1.0E+3" }, Shown { "##0.0E+0", 999.94, "999.9E+0" },
                     Shown { "##0E+0", 999.6, "1E+3" }, Shown { "##0E+0", 999.4, "999E+0" },
                     Shown { "##0.0E+0", 0.00099996, "1.0E-3" }, Shown { "##0.0E+0", 99.96, "100.0E+0" },
                     Shown { "#0.0E+0", 99.96, "1.0E+2" }, Shown { "0E+0", 9.5, "1E+1" },
                     Shown { "##0.0E+0", -999.96, "-1.0E+3" }, Shown { "0.00E+00", 5e-324, "4.94E-324" },
                     Shown { "##0.0E+0", 5e-324, "4.9E-324" }, Shown { "0.00E+00", 2.5e-310, "2.50E-310" },
                     Shown { "#0.0E+0", -3e-301, "-30.0E-302" }, Shown { "0.00E+00", 1e308, "1.00E+308" },
                     Shown { "0.0E+0,,", 5e-324, "0.0E+0" }, Shown { "##0.0E+0%", 9e307, "#NUM!" },
                     Shown { "##0.0E+0%", -9e307, "#NUM!" }, Shown { "0%%", 9e307, "#NUM!" },
                     Shown { "##0.0E+0%", 9e305, "90.0E+306%" }));

INSTANTIATE_TEST_SUITE_P (
    LiteralTexts, NumberFormats,
    testing::Values (Shown { "0\" s\"", 5, "5 s" }, Shown { "0\\x", 5, "5x" },
                     Shown { "[$€-407] 0.00", 2, "€ 2.00" }, Shown { "[Red]0", 2, "2" },
                     Shown { "_(0_)", 2, "2" }, Shown { "* 0", 2, "2" }, Shown { "0;(0)", -3, "(3)" },
                     Shown { "0;;\"none\"", 0, "none" }, Shown { ";;;", 5, "" }, Shown { "0;", -5, "" },
                     Shown { "[>=100]\"many\";0", 150, "many" }, Shown { "[>=100]\"many\";0", 50, "50" },
                     Shown { "[<1]\"few\";[=1]\"one\"", 7, "7" }, Shown { "0\"/\"00", 101, "1/01" },
                     Shown { "0\\/00", 101, "1/01" }));

INSTANTIATE_TEST_SUITE_P (Fractions, NumberFormats,
                          testing::Values (Shown { "# ?/?", 0.5, "1/2" }, Shown { "# ?/?", 1.75, "1 3/4" },
                                           Shown { "# ?/?", -0.5, "-1/2" }, Shown { "# ?/?", 0, "0" },
                                           Shown { "# ?/?", 2, "2" }, Shown { "# ?/?", 0.999, "1" },
                                           Shown { "# ?/?", -0.001, "0" },
                                           Shown { "# ?"
                                                   "?/??",
                                                   3.14159, "3 14/99" },
                                           Shown { "# ?/?", 3.14159, "3 1/7" }, Shown { "?/?", 1.75, "7/4" },
                                           Shown { "?/?", 2, "2/1" }, Shown { "0 ?/?", 0.5, "0 1/2" },
                                           Shown { "# ?/8", 0.5, "4/8" }, Shown { "# ?/8", 1.99, "2" },
                                           Shown { "# ?"
                                                   "?/100",
                                                   1.75, "1 75/100" },
                                           Shown { "# 00/00", 1.5, "1 01/02" },
                                           Shown { "# ?/?\" cm\"", 1.5, "1 1/2 cm" },
                                           Shown { "# ?/?", 1e12 + 0.5, "1000000000000.5" },
                                           Shown { "# ?"
                                                   "?"
                                                   "?/???",
                                                   2.718281828, "2 385/536" }));

INSTANTIATE_TEST_SUITE_P (SectionsOfTexts, NumberFormats,
                          testing::Values (Shown { "0;@", -5, "-5" }, Shown { "0;@", 5, "5" },
                                           Shown { "0.00\" x\";@", -1, "-1.00 x" },
                                           Shown { "0:00;@", -12, "-0:12" },
                                           Shown { "[h]:mm:ss;@", -0.5, "-12:00:00" },
                                           Shown { "[h]:mm:ss;-[h]:mm:ss;@", 0, "00:00:00" },
                                           Shown { "[h]:mm:ss;-[h]:mm:ss;@", -0.5, "-12:00:00" },
                                           Shown { "00;-00;@", 0, "00" }, Shown { "00;-00;@", -7, "-07" },
                                           Shown { "0;(0);\"-\";@", 0, "-" }, Shown { "0;-0;;@", 0, "" },
                                           Shown { "@;@", -5, "-5" }));

INSTANTIATE_TEST_SUITE_P (
    Conditions, NumberFormats,
    testing::Values (Shown { "[<0]-0.0;0.0", -5, "-5.0" }, Shown { "[<0]-0.0;0.0", 5, "5.0" },
                     Shown { "[<0](0);0", -5, "(5)" },
                     Shown { "[>=1000]#,##0,\"K\";[<=-1000]-#,##0,\"K\";0", -5000, "-5K" },
                     Shown { "[>=1000]#,##0,\"K\";[<=-1000]-#,##0,\"K\";0", -5, "-5" },
                     Shown { "[>=1000]0.0,\"K\";[<=-1000]0.0,\"K\";0", -5000, "5.0K" },
                     Shown { "[>100]\"A\";\"B\";\"C\"", 50, "C" },
                     Shown { "[>100]\"A\";\"B\";\"C\"", 101, "A" },
                     Shown { "[>100]\"A\";\"B\";\"C\"", -1, "B" }, Shown { "0;[<-5]\"B\"", -3, "-3" },
                     Shown { "0;[<-5]\"B\"", -6, "B" }, Shown { "[>=100]\"many\";0", -5, "-5" },
                     Shown { "[>0]0;0", -5, "5" }, Shown { "[>=0]0;(0)", -5, "(5)" },
                     Shown { "[<100]0.0;0", -5, "-5.0" }));

INSTANTIATE_TEST_SUITE_P (
    TimesBelowZero, NumberFormats,
    testing::Values (Shown { "[h]:mm:ss", -0.5, "-12:00:00" }, Shown { "[h]:mm:ss", -5, "-120:00:00" },
                     Shown { "[h]:mm:ss", -1e-9, "00:00:00" }, Shown { "hh:mm:ss", -0.5, "12:00:00" },
                     Shown { "hh:mm:ss", -1e-9, "00:00:00" },
                     Shown { "h:mm:ss;-h:mm:ss", -0.25, "-06:00:00" },
                     Shown { "[h]:mm:ss;([h]:mm:ss)", -0.5, "-12:00:00" },
                     Shown { "hh:mm:ss;hh:mm:ss", -0.25, "06:00:00" }, Shown { "dd.mm.yyyy", -0.5, "-0.5" },
                     Shown { "[h]:mm", -1e300, "-1E+300" }));

TEST (NumberFormat, aTimeBelowZeroHasItsMinusWhereDaysCountFrom1904)
{
    EXPECT_EQ (NumberFormat ("hh:mm:ss").shown (-0.25, true), "-06:00:00");
    EXPECT_EQ (NumberFormat ("hh:mm:ss.000").shown (-oneSecond / 2, true), "-00:00:00.500");
}

// A timecode that somebody has typed as a number of eight digits.
INSTANTIATE_TEST_SUITE_P (TimecodesOfDigits, NumberFormats,
                          testing::Values (Shown { "00\":\"00\":\"00\":\"00", 1020304, "01:02:03:04" },
                                           Shown { "00\\:00\\:00\\:00", 10000000, "10:00:00:00" },
                                           Shown { "00\":\"00\":\"00\":\"00", 0, "00:00:00:00" },
                                           Shown { "##\":\"##\":\"##\":\"##", 1020304, "1:02:03:04" }));

INSTANTIATE_TEST_SUITE_P (Times, NumberFormats,
                          testing::Values (Shown { "h:mm:ss", clock (1, 2, 3), "01:02:03" },
                                           Shown { "hh:mm:ss", 0, "00:00:00" },
                                           Shown { "h:mm", clock (14, 40, 30), "14:40:30" },
                                           Shown { "h:mm:ss AM/PM", clock (13, 0, 5), "13:00:05" },
                                           Shown { "mm:ss", clock (0, 3, 4), "00:03:04" },
                                           Shown { "hh:mm:ss", 1.5, "12:00:00" },
                                           Shown { "[h]:mm:ss", 1.5, "36:00:00" },
                                           Shown { "[hh]:mm:ss", 100 * oneHour, "100:00:00" },
                                           Shown { "[mm]:ss", clock (2, 0, 1), "02:00:01" },
                                           Shown { "[s]", clock (0, 2, 1), "00:02:01" },
                                           Shown { "hh:mm:ss", clock (1, 0, 0) - 1e-9, "01:00:00" },
                                           Shown { "hh:mm:ss", 1.0 - 1e-9, "00:00:00" },
                                           Shown { "hh:mm:ss.000", clock (1, 2, 3.456), "01:02:03.456" },
                                           Shown { "hh:mm:ss.00", clock (1, 2, 3.4), "01:02:03.400" },
                                           Shown { "mm:ss.0", clock (0, 0, 7.5), "00:00:07.500" },
                                           Shown { "hh:mm:ss.000", clock (0, 0, 59.9996), "00:01:00.000" },
                                           Shown { "hh:mm:ss\":00\"", clock (1, 2, 3), "01:02:03:00" },
                                           Shown { "hh:mm:ss\":\"00", clock (1, 2, 3), "01:02:03:00" },
                                           Shown { "hh:mm:ss;@", clock (1, 2, 3), "01:02:03" },
                                           Shown { "hh:mm:ss\\:12", clock (1, 2, 3), "01:02:03:12" },
                                           Shown { "hh:mm:ss:ff", clock (1, 2, 3.5), "01:02:03.500" },
                                           Shown { "[$-409]h:mm:ss AM/PM;@", clock (0, 0, 1), "00:00:01" },
                                           Shown { "h:mm:ss", -0.25, "18:00:00" },
                                           Shown { "h \"Uhr\" mm", clock (9, 30, 0), "09:30:00" },
                                           Shown { "hh:mm:ss", 1e300, "1E+300" }));

INSTANTIATE_TEST_SUITE_P (
    Dates, NumberFormats,
    testing::Values (Shown { "dd.mm.yyyy", 45382, "2024-03-31" }, Shown { "m/d/yy", 1, "1900-01-01" },
                     Shown { "yyyy", 60, "1900-02-29" }, Shown { "d-mmm", 61, "1900-03-01" },
                     Shown { "mmmm", 0, "1900-01-00" }, Shown { "yyyy-mm-dd", 2958465, "9999-12-31" },
                     Shown { "yyyy-mm-dd hh:mm:ss", 45382.75, "2024-03-31 18:00:00" },
                     Shown { "yyyy-mm-dd hh:mm", 0.75, "18:00:00" }, Shown { "dddd", 45382.9, "2024-03-31" },
                     Shown { "yyyy-mm-dd", 2958466, "2958466" },
                     Shown { "[$-411]ge.m.d", 45382, "2024-03-31" }));

TEST (NumberFormat, withoutACodeShowsTheNumberAsItIs)
{
    EXPECT_EQ (NumberFormat().shown (0.25, false), "0.25");
    EXPECT_EQ (NumberFormat ("").shown (0.25, false), "");
}

TEST (NumberFormat, daysCanCountFrom1904)
{
    EXPECT_EQ (NumberFormat ("yyyy-mm-dd").shown (0, true), "1904-01-01");
    EXPECT_EQ (NumberFormat ("yyyy-mm-dd").shown (60, true), "1904-03-01");
    EXPECT_EQ (NumberFormat ("yyyy-mm-dd").shown (43920, true), "2024-03-31");
}

TEST (NumberFormat, whatIsNoNumberIsAnErrorOfTheSheet)
{
    EXPECT_EQ (NumberFormat ("0.00").shown (std::numeric_limits<double>::infinity(), false), "#NUM!");
    EXPECT_EQ (NumberFormat().shown (std::nan (""), false), "#NUM!");
    EXPECT_EQ (NumberFormat ("hh:mm").shown (std::nan (""), false), "#NUM!");
}

TEST (NumberFormat, theUsualOnesAreKnownByTheirNumbers)
{
    const std::vector<std::pair<int, std::string>> codes { { 0, "General" },
                                                           { 1, "0" },
                                                           { 2, "0.00" },
                                                           { 3, "#,##0" },
                                                           { 9, "0%" },
                                                           { 10, "0.00%" },
                                                           { 14, "mm-dd-yy" },
                                                           { 20, "h:mm" },
                                                           { 21, "h:mm:ss" },
                                                           { 22, "m/d/yy h:mm" },
                                                           { 37, "#,##0 ;(#,##0)" },
                                                           { 45, "mm:ss" },
                                                           { 46, "[h]:mm:ss" },
                                                           { 47, "mm:ss.0" },
                                                           { 48, "##0.0E+0" },
                                                           { 49, "@" },
                                                           { 58, "yyyy-mm-dd" } };

    for (const auto& [number, code] : codes)
        EXPECT_EQ (NumberFormat::usualCode (number), code) << number;

    for (const int number : { -1, 5, 23, 59, 163, 164, 2000000000 })
        EXPECT_EQ (NumberFormat::usualCode (number), "General") << number;
}

TEST (NumberFormat, ofMoreDecimalsThanANumberHasIsFilledUpWithZeros)
{
    EXPECT_EQ (NumberFormat ("0." + std::string (40, '0')).shown (1.5, false), "1.5" + std::string (39, '0'));
    EXPECT_EQ (NumberFormat ("0." + std::string (40, '#')).shown (1.5, false), "1.5");
}

TEST (NumberFormat, longerThanAnySpreadsheetTakesShowsTheNumberAsItIs)
{
    EXPECT_EQ (NumberFormat ("\"" + std::string (252, 'x') + "\"0").shown (2, false),
               std::string (252, 'x') + "2");
    EXPECT_EQ (NumberFormat ("\"" + std::string (253, 'x') + "\"0").shown (2, false), "2");

    std::string umlauts;

    for (int i = 0; i < 252; ++i)
        umlauts += "ü";

    EXPECT_EQ (NumberFormat ("\"" + umlauts + "\"0").shown (2, false), umlauts + "2");
}

TEST (NumberFormat, anyCodeAtAllShowsSomethingSound)
{
    const std::vector<std::string> codes { "\"",
                                           "\\",
                                           "_",
                                           "*",
                                           "[",
                                           "[]",
                                           "[$",
                                           "[$-",
                                           "[>",
                                           "[>x]0",
                                           "[h",
                                           ";",
                                           ";;;;;;",
                                           "E",
                                           "E+",
                                           "0E+0E+0",
                                           "....",
                                           ",,,,",
                                           "0,0,0,",
                                           "%%%%0",
                                           "am/p",
                                           "hh:mm:ss.",
                                           "ss.0.0.0",
                                           "[hm]",
                                           "\xE2\x82",
                                           "0\xFF",
                                           std::string (5000, '0'),
                                           std::string (5000, ';'),
                                           std::string (100000, 's'),
                                           "#?#?0.0#?",
                                           "0/0/0",
                                           "ffff" };

    for (const auto& code : codes)
        for (const double value : { 0.0, -0.0, 1.5, -1.5, oneSecond, 1e-300, 1e300, 45000.25 })
            EXPECT_LT (NumberFormat (code).shown (value, false).size(), 10000u) << code.substr (0, 20);
}

TEST (RoundedNumber, isRoundedAsAPersonDoes)
{
    EXPECT_EQ (roundedNumber (0.5, 0), "1");
    EXPECT_EQ (roundedNumber (0.05, 1), "0.1");
    EXPECT_EQ (roundedNumber (0.04, 1), "0.0");
    EXPECT_EQ (roundedNumber (-0.04, 1), "0.0");
    EXPECT_EQ (roundedNumber (9.995, 2), "10.00");
    EXPECT_EQ (roundedNumber (123456789012345678.0, 0), "123456789012346000");
    EXPECT_EQ (roundedNumber (1e-20, 3), "0.000");
}
