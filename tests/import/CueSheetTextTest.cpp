// SPDX-License-Identifier: GPL-3.0-only
#include "import/CueSheetText.h"

#include <gmock/gmock.h>

#include <random>
#include <regex>
#include <string>

using namespace ZEP::Overmarks;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

const std::string separator = "\xE2\x80\xA8";

juce::String text (const std::string& utf8) { return juce::String::fromUTF8 (utf8.c_str()); }

std::string pair (const std::string& start, const std::string& end) { return start + separator + end; }

std::vector<int> startsOf (const std::string& utf8) { return cueStarts (text (utf8)); }
std::optional<int> boxesOf (const std::string& utf8) { return takeBoxesStart (text (utf8)); }

std::string boxes (int number, const std::string& box = "1")
{
    std::string lines;
    for (int i = 0; i < number; ++i)
        lines += "\n" + box;
    return lines;
}

/** The same by regular expressions, which is how the marks are defined. */
std::vector<int> startsByExpression (const std::string& bytes)
{
    const std::regex expression ("(\\d{2}:\\d{2}:\\d{2}:\\d{2}" + separator + "\\d{2}:\\d{2}:\\d{2}:\\d{2})");
    const auto whole = text (bytes);
    std::vector<int> starts;

    for (std::sregex_iterator match (bytes.begin(), bytes.end(), expression), end; match != end; ++match)
        starts.push_back (whole.indexOf (text (match->str())));

    return starts;
}

std::optional<int> boxesByExpression (const std::string& bytes)
{
    static const std::regex expression ("((\n[a-zA-Z0-9]{1,3}){50})");
    std::smatch match;

    if (! std::regex_search (bytes, match, expression))
        return std::nullopt;

    return text (bytes).indexOf (text (match.str()));
}

} // namespace

TEST (CueSheetText, aCueBeginsAtTwoTimecodesWithALineSeparatorBetween)
{
    const auto cue = pair ("01:00:00:00", "01:00:01:00");
    EXPECT_THAT (startsOf (cue), ElementsAre (0));
    EXPECT_THAT (startsOf ("ab\n" + cue + " x"), ElementsAre (3));
    EXPECT_THAT (startsOf (cue + "\nA\n1\nHi\n" + pair ("01:00:02:00", "01:00:03:00")), ElementsAre (0, 31));
    EXPECT_THAT (startsOf ("01:00:00:00\n01:00:01:00"), IsEmpty());
    EXPECT_THAT (startsOf (pair ("01:00:00;00", "01:00:01:00")), IsEmpty());
    EXPECT_THAT (startsOf (pair ("01:00:00:00", "01:00:01:0")), IsEmpty());
    EXPECT_THAT (startsOf (pair ("01:00:00:00 ", "01:00:01:00")), IsEmpty());
    EXPECT_THAT (startsOf (""), IsEmpty());
}

TEST (CueSheetText, placesCountCharactersAndNotBytes)
{
    EXPECT_THAT (startsOf ("\xc3\xa4\xf0\x9f\x8e\xac\n" + pair ("01:00:00:00", "01:00:01:00")),
                 ElementsAre (3));
    EXPECT_EQ (boxesOf ("\xc3\xa4\xf0\x9f\x8e\xac" + boxes (50)), 2);
}

TEST (CueSheetText, moreDigitsBeforeAndBehindBelongToTheText)
{
    EXPECT_THAT (startsOf ("101:00:00:00" + separator + "01:00:01:009"), ElementsAre (1));
}

TEST (CueSheetText, aCueOfTheSameTimesHasThePlaceOfTheFirst)
{
    const auto one = pair ("01:00:00:00", "01:00:01:00");
    const auto two = pair ("01:00:02:00", "01:00:03:00");
    EXPECT_THAT (startsOf (one + "\n" + two + "\n" + one + "\n" + two), ElementsAre (0, 26 - 2, 0, 26 - 2));
}

TEST (CueSheetText, ofTimesThatOverlapOnlyTheFirstCount)
{
    const std::string a = "01:00:00:00", b = "02:00:00:00", c = "03:00:00:00";
    EXPECT_THAT (startsOf (a + separator + b + separator + c), ElementsAre (0));
    EXPECT_THAT (startsOf (a + separator + b + separator + c + "\n" + b + separator + c), ElementsAre (0, 12))
        << "but they are found as the first place of a later one";
}

TEST (CueSheetText, fiftyShortLinesAreTheBoxesOfTheTakes)
{
    EXPECT_EQ (boxesOf ("Hi" + boxes (50)), 2);
    EXPECT_EQ (boxesOf (boxes (50, "Sel")), 0);
    EXPECT_EQ (boxesOf ("Hi" + boxes (60) + "\nmore"), 2);
    EXPECT_EQ (boxesOf ("Hi" + boxes (49)), std::nullopt);
    EXPECT_EQ (boxesOf ("Hi" + boxes (49) + "\n"), std::nullopt);
    EXPECT_EQ (boxesOf ("Hi" + boxes (49) + "\nlonger line"), 2) << "the last one may go on";
    EXPECT_EQ (boxesOf ("Hi" + boxes (25) + "\n" + boxes (25)), std::nullopt);
    EXPECT_EQ (boxesOf ("Hi" + boxes (25) + "\nfour" + boxes (50)), 2 + 50 + 5);
    EXPECT_EQ (boxesOf (boxes (50, "1234")), std::nullopt);
    EXPECT_EQ (boxesOf (boxes (50, "-")), std::nullopt);
    EXPECT_EQ (boxesOf (boxes (50, "\xc3\xa4")), std::nullopt);
    EXPECT_EQ (boxesOf (""), std::nullopt);
}

TEST (CueSheetText, bothAreFoundAsRegularExpressionsFindThem)
{
    constexpr unsigned seeds = 3000;
    const std::string pieces[] = { pair ("01:00:00:00", "01:00:01:00"),
                                   pair ("01:00:01:00", "01:00:00:00"),
                                   "01:00:00:00",
                                   "01:00:01:00",
                                   separator,
                                   "\xc3\xa4",
                                   "\n",
                                   "1",
                                   ":",
                                   "\nab",
                                   "\nabcd",
                                   "\n12 ",
                                   boxes (10),
                                   boxes (24, "Alt"),
                                   boxes (49, "zZ9"),
                                   boxes (50) };

    for (unsigned seed = 1; seed <= seeds; ++seed)
    {
        std::mt19937 random (seed);
        std::string bytes;

        for (auto parts = random() % 12; parts > 0; --parts)
            bytes += pieces[random() % std::size (pieces)];

        ASSERT_EQ (startsOf (bytes), startsByExpression (bytes)) << "seed " << seed;
        ASSERT_EQ (boxesOf (bytes), boxesByExpression (bytes)) << "seed " << seed;
    }
}

TEST (CueSheetText, randomLettersToo)
{
    constexpr unsigned seeds = 3000;
    const std::string letters = "\n\nab1";

    for (unsigned seed = 1; seed <= seeds; ++seed)
    {
        std::mt19937 random (seed);
        auto bytes = boxes (static_cast<int> (40 + random() % 15));

        for (auto changes = random() % 4; changes > 0; --changes)
            bytes.insert (random() % bytes.size(), 1, letters[random() % letters.size()]);

        ASSERT_EQ (boxesOf (bytes), boxesByExpression (bytes)) << "seed " << seed;
    }
}

TEST (CueSheetText, megabytesOfThemAreFound)
{
    std::string cues, lines (1 << 23, '\n'), almost;

    for (int i = 0; i < 100000; ++i)
        cues += pair ("01:00:00:00", "01:00:01:00") + "\nANNA\nA1\nHello?\n";
    while (almost.size() < (1 << 23))
        almost += boxes (49) + "\n\n";

    EXPECT_EQ (startsOf (cues).size(), 100000u);
    EXPECT_EQ (boxesOf (lines), std::nullopt);
    EXPECT_EQ (boxesOf (almost), std::nullopt);
}
