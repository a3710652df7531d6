// SPDX-License-Identifier: GPL-3.0-only
#include "import/DocxCueList.h"

#include "import/ImportSupport.h"

#include <gmock/gmock.h>

#include <random>

using namespace ZEP::Overmarks;
using namespace ImportSupport;
using ZEP::Core::RichTextString;

namespace
{

using Row = std::vector<std::string>;
using Outcome = DocxCueList::Outcome;

juce::String text (const std::string& utf8) { return juce::String::fromUTF8 (utf8.c_str()); }

TextTable rowsOf (const std::string& json, Outcome expected = Outcome::whole)
{
    std::vector<DocxCueList::Row> rows;
    EXPECT_EQ (DocxCueList::addRows (text (json), rows), expected) << json;
    return textsOf (rows);
}

/** A rich text "abcdef" with these runs. */
RichTextString rich (const std::string& fonts, const std::string& colours = "[]",
                     const std::string& words = "abcdef")
{
    return DocxCueList::richTextOf (
        juce::JSON::parse (text (R"({"text": ")" + words + R"(", "fontAttributeList": )" + fonts
                                 + R"(, "colourAttributeList": )" + colours + "}")));
}

std::string font (int start, int end, int style)
{
    return R"({"range_start": )" + std::to_string (start) + R"(, "range_end": )" + std::to_string (end)
           + R"(, "font_type": )" + std::to_string (style) + "}";
}

std::string colour (int start, int end, const std::string& parts)
{
    return R"({"range_start": )" + std::to_string (start) + R"(, "range_end": )" + std::to_string (end)
           + R"(, "colour": )" + parts + "}";
}

/** "0-2 16 bold; 2-4 ...": the formatted runs. */
std::string runsOf (const RichTextString& text)
{
    std::string words;

    for (const auto& run : text.formattedRuns())
        words += std::to_string (run.range.getStart()) + "-" + std::to_string (run.range.getEnd()) + " "
                 + juce::String (run.font.getHeight()).toStdString() + (run.font.isBold() ? " bold" : "")
                 + (run.font.isItalic() ? " italic" : "") + (run.font.isUnderlined() ? " underlined" : "")
                 + " " + run.colour.toString().toStdString() + "; ";

    return words;
}

} // namespace

TEST (DocxCueList, eachCueIsARowOfTenCells)
{
    EXPECT_EQ (rowsOf (R"({"cueList": [{"startTC": "01:00:00:00", "endTC": "01:00:01:00", "charName": "ANNA",
                   "cueNumber": "A1", "reason": "Noise", "text": {"text": "Hello?"}, "note": {"text": "softly"},
                   "engineeringNotes": {"text": "boom"}, "forcedNarrativeRegion": "Top"}, {"cueNumber": "A2"}]})"),
               (TextTable { { "01:00:00:00", "01:00:01:00", "ANNA", "Hello?", "A1", "softly", "boom", "Noise",
                              "Yes", "Top" },
                            { "--:--:--:--", "--:--:--:--", "", "", "A2", "", "", "", "No", "" } }));
}

TEST (DocxCueList, theTitlesAreThoseOfTheColumns)
{
    EXPECT_EQ (
        DocxCueList::titles().joinIntoString ("|"),
        "Start TC|End TC|Character|Text|Cue Number|Notes|Engineering Notes|Reason|Forced Narrative|FN Region");
    EXPECT_EQ (DocxCueList::titles().size(), DocxCueList::numberOfColumns);
}

TEST (DocxCueList, whatIsNoListOfCuesGivesNoRows)
{
    for (const auto* json : { "", " ", "{", "{}", "[]", "x", R"({"cueList": {}})", R"({"cueList": "x"})",
                              R"({"cueList": null})", R"({"cuelist": [{}]})", R"({"cueList": [{})", "[-" })
        EXPECT_TRUE (rowsOf (json, Outcome::noCueList).empty()) << json;

    EXPECT_TRUE (rowsOf (R"({"cueList": []})").empty());
}

TEST (DocxCueList, valuesOfOtherKindsAreNoTexts)
{
    const Row empty { "--:--:--:--", "--:--:--:--", "", "", "", "", "", "", "No", "" };
    for (const auto* json :
         { R"({"cueList": [1]})", R"({"cueList": [null]})", R"({"cueList": [[]]})", R"({"cueList": ["x"]})" })
        EXPECT_EQ (rowsOf (json), TextTable { empty }) << json;

    EXPECT_EQ (rowsOf (R"({"cueList": [{"startTC": null, "endTC": 5, "charName": {}, "cueNumber": [1],
                   "reason": true, "text": "x", "note": [], "engineeringNotes": {"text": {}}}]})"),
               (TextTable { { "", "5", "", "", "", "", "", "1", "No", "" } }));
}

TEST (DocxCueList, textsMayHoldAnything)
{
    EXPECT_EQ (
        rowsOf (
            R"({"cueList": [{"charName": "J\u00e4ger \"x\"\n", "text": {"text": "\ud83c\udfac"}}]})")[0][2],
        "J\xc3\xa4ger \"x\"\n");
}

TEST (DocxCueList, theFirstOfFourWordsDecidesTheRegion)
{
    const std::vector<std::pair<std::string, std::string>> table {
        { "Left", "Left" },          { "left", "Left" },
        { "RIGHT", "Right" },        { "top", "Top" },
        { "bottom", "Bottom" },      { "top left", "Left" },
        { "Right or left", "Left" }, { "top right", "Right" },
        { "bottom top", "Top" },     { "FN Region: Top", "Top" },
        { "elsewhere", "Bottom" },   { " ", "Bottom" },
        { "stopped", "Top" },        { "", "" }
    };

    for (const auto& [words, region] : table)
    {
        EXPECT_EQ (DocxCueList::regionOf (words), text (region)) << words;
        const auto row = rowsOf (R"({"cueList": [{"forcedNarrativeRegion": ")" + words + "\"}]}").at (0);
        EXPECT_EQ (row[8], region.empty() ? "No" : "Yes") << words;
        EXPECT_EQ (row[9], region) << words;
    }
}

TEST (DocxCueList, fontsHaveTheirStyleAndSixteenPoints)
{
    EXPECT_EQ (runsOf (rich ("[]")), "");
    EXPECT_EQ (runsOf (rich ("[" + font (0, 2, 0) + "]")), "0-2 16 ff000000; ");
    EXPECT_EQ (runsOf (rich ("[" + font (0, 1, 1) + "," + font (1, 2, 2) + "," + font (2, 3, 4) + ","
                             + font (3, 4, 7) + "]")),
               "0-1 16 bold ff000000; 1-2 16 italic ff000000; 2-3 16 underlined ff000000; "
               "3-4 16 bold italic underlined ff000000; ");
    EXPECT_EQ (runsOf (rich ("[" + font (0, 1, 9) + "]")), "0-1 16 bold ff000000; ");
}

TEST (DocxCueList, coloursTakeTheLowEightBitsOfEachPart)
{
    EXPECT_EQ (
        runsOf (rich ("[]", "[" + colour (0, 2, R"({"red": 1, "green": 2, "blue": 255})") + "]")),
        runsOf (rich ("[]", "[" + colour (0, 2, R"({"red": 257, "green": -254, "blue": 511})") + "]")));
    const auto text = rich ("[]", "[" + colour (2, 4, R"({"red": 256, "green": 18, "blue": -1})") + "]");
    ASSERT_EQ (text.formattedRuns().size(), 1u);
    EXPECT_EQ (text.formattedRuns()[0].colour, juce::Colour (0xff0012ff));
    EXPECT_EQ (text.formattedRuns()[0].range, juce::Range<int> (2, 4));
    EXPECT_EQ (text.formattedRuns()[0].font.getHeight(), RichTextString::defaultFont().getHeight());
    EXPECT_EQ (runsOf (rich ("[]", "[" + colour (0, 2, "{}") + "]")), "") << "black is the usual colour";
    EXPECT_EQ (runsOf (rich ("[]", R"([{"range_start": 0, "range_end": 2}])")), "");
}

TEST (DocxCueList, laterRunsLieOverEarlierOnesAndColoursBesideFonts)
{
    EXPECT_EQ (
        runsOf (rich ("[" + font (0, 6, 1) + "," + font (2, 4, 2) + "]",
                      "[" + colour (3, 6, R"({"red": 255})") + "]")),
        "0-2 16 bold ff000000; 2-3 16 italic ff000000; 3-4 16 italic ffff0000; 4-6 16 bold ffff0000; ");
}

TEST (DocxCueList, anEmptyRangeFormatsNothing)
{
    for (const auto& run :
         { font (2, 2, 1), font (4, 2, 1), font (6, 9, 1), font (99, 100, 1), font (-3, 0, 1),
           font (-1, -5, 1), std::string ("{}"), std::string (R"({"font_type": 1})") })
        EXPECT_EQ (runsOf (rich ("[" + run + "]")), "") << run;

    EXPECT_EQ (runsOf (rich ("[]", "[" + colour (3, 1, R"({"red": 9})") + "]")), "");
    EXPECT_EQ (runsOf (rich ("[" + font (0, 3, 1) + "]", "[]", "")), "");
}

TEST (DocxCueList, aRangeBeyondTheTextEndsWithIt)
{
    EXPECT_EQ (runsOf (rich ("[" + font (-5, 2, 1) + "]")), "0-2 16 bold ff000000; ");
    EXPECT_EQ (runsOf (rich ("[" + font (4, 999, 1) + "]")), "4-6 16 bold ff000000; ");
    EXPECT_EQ (
        runsOf (rich (R"([{"range_start": -1e300, "range_end": 99999999999999999999, "font_type": 1e300}])")),
        "0-6 16 ff000000; ");
    EXPECT_EQ (runsOf (rich (R"([{"range_start": 1.9, "range_end": 3.2, "font_type": 1}])")),
               "1-3 16 bold ff000000; ");
}

TEST (DocxCueList, rangesCountCharacters)
{
    const auto text = rich ("[" + font (1, 2, 1) + "]", "[]",
                            "\xc3\xa4\xf0\x9f\x8e\xac"
                            "b");
    EXPECT_EQ (runsOf (text), "1-2 16 bold ff000000; ");
    EXPECT_EQ (text.length(), 3);
}

/** The way that the framework offers, run after run. */
TEST (DocxCueList, runsComeOutAsIfTheyWereSetOneAfterTheOther)
{
    for (unsigned seed = 1; seed <= 300; ++seed)
    {
        std::mt19937 random (seed);
        const auto below = [&random] (unsigned limit) { return static_cast<int> (random() % limit); };
        RichTextString expected ("abcdefghijklmnop");
        std::string fonts, colours;

        for (int i = below (6); i > 0; --i)
        {
            const auto start = below (20) - 2, end = below (20) - 2, style = below (8);
            fonts += (fonts.empty() ? "" : ",") + font (start, end, style);
            const auto range =
                juce::Range<int> (start, std::max (start, end)).getIntersectionWith ({ 0, 16 });
            if (! range.isEmpty())
                expected.setFont (range, juce::Font (16.0f, style));
        }

        for (int i = below (6); i > 0; --i)
        {
            const auto start = below (20) - 2, end = below (20) - 2, red = below (3);
            colours += (colours.empty() ? "" : ",")
                       + colour (start, end, R"({"red": )" + std::to_string (red) + "}");
            const auto range =
                juce::Range<int> (start, std::max (start, end)).getIntersectionWith ({ 0, 16 });
            if (! range.isEmpty())
                expected.setColour (range, juce::Colour (static_cast<juce::uint8> (red), 0, 0));
        }

        const auto made = rich ("[" + fonts + "]", "[" + colours + "]", "abcdefghijklmnop");
        ASSERT_TRUE (made == expected) << "seed " << seed << "\n"
                                       << runsOf (made) << "\n"
                                       << runsOf (expected);
    }
}

TEST (DocxCueList, aHundredThousandRunsAreRead)
{
    std::string runs;
    for (int i = 0; i < 100000; ++i)
        runs += (i == 0 ? "" : ",") + font (i, 100000, i % 8);

    const auto text = rich ("[" + runs + "]", "[]", std::string (100000, 'x'));
    EXPECT_EQ (text.length(), 100000);
}

TEST (DocxCueList, endlessEmptyCuesAreCutOff)
{
    // Each takes two bytes and a comma, and ten cells.
    std::string cues = "{}";
    for (int i = 0; i < 110000; ++i)
        cues += ",1";

    std::vector<DocxCueList::Row> rows;
    EXPECT_EQ (DocxCueList::addRows (text (R"({"cueList": [)" + cues + "]}"), rows), Outcome::cutOff);
    EXPECT_LT (rows.size(), 110001u);
}
