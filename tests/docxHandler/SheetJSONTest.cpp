// SPDX-License-Identifier: GPL-3.0-only
#include "SheetJSON.h"

#include "Failure.h"
#include "SheetSupport.h"
#include "core/text/RichTextString.h"

#include <gtest/gtest.h>

namespace DocxHandler::Testing
{

namespace
{

std::string refusalOf (const std::string& json)
{
    try
    {
        static_cast<void> (sheetFromJSON (json));
        return {};
    }
    catch (const Failure& failure)
    {
        return failure.what();
    }
}

RichText textOf (const JSON& rich)
{
    return sheetFromJSON (sheetJSON ({ cueJSON ({ { "cueText", rich } }) }).dump())
        .blocks.at (0)
        .at (0)
        .text.text;
}

} // namespace

TEST (SheetJSON, halfACharacterIsReplacedAndLosesNothingElse)
{
    const auto text = [] (const std::string& escaped)
    {
        return sheetFromJSON (R"({"cueContentList":[{"cueText":")" + escaped + "\"}]}")
            .blocks.at (0)
            .at (0)
            .text.text.text;
    };

    const std::string replacement = "\xef\xbf\xbd";
    EXPECT_EQ (text (R"(B \ud83d C)"), "B " + replacement + " C");
    EXPECT_EQ (text (R"(\uDE00)"), replacement);
    EXPECT_EQ (text (R"(\ud83d\ud83d\ude00)"), replacement + "\xf0\x9f\x98\x80");
    EXPECT_EQ (text (R"(\\ud83d \" \n\u0041)"), "\\ud83d \" \nA");
    EXPECT_EQ (refusalOf (R"({"a":"\ud8)"), "The cue sheet is no JSON");
    EXPECT_EQ (refusalOf (R"({"a":"\)"), "The cue sheet is no JSON");
}

TEST (SheetJSON, aNumberThatIsTooLargeCountsAsNone)
{
    const auto cue = [] (const std::string& number)
    {
        return sheetFromJSON (R"({"cueContentList":[{"cueTextFontSize":)" + number
                              + R"(,"cueText":{"text":"ab","runs":[{"start":0,"end":1,"bold":true,"height":)"
                              + number + "}]}}]}")
            .blocks.at (0)
            .at (0)
            .text;
    };

    for (const auto& number : std::vector<std::string> { "1e400", "-1E+400", "1" + std::string (400, '0') })
    {
        EXPECT_EQ (cue (number).text.text, "ab") << number;
        EXPECT_EQ (cue (number).text.runs.at (0).look.height, Look::usualHeight) << number;
        EXPECT_EQ (cue (number).size, 0) << number;
    }

    for (const auto& number : std::vector<std::string> { "2.0e1", "20", "20." + std::string (400, '0') })
        EXPECT_EQ (cue (number).text.runs.at (0).look.height, 20.0) << number;

    EXPECT_EQ (cue ("1" + std::string (308, '0')).text.runs.at (0).look.height, 1e308);
}

TEST (SheetJSON, asDeepAsASheetMayBeCountsWhatIsOpen)
{
    const auto nested = [] (int depth)
    { return "{\"a\":" + std::string (depth - 1, '[') + std::string (depth - 1, ']') + "}"; };
    EXPECT_EQ (refusalOf (nested (32)), "");
    EXPECT_EQ (refusalOf (nested (33)), "The cue sheet's JSON is nested too deeply");

    std::string manyInARow = "[]";

    for (int i = 0; i < 100; ++i)
        manyInARow += ",{}";

    EXPECT_EQ (refusalOf ("{\"a\":[" + manyInARow + "]}"), "");
    EXPECT_EQ (refusalOf (R"({"a":"\"\\)" + std::string (100, '{') + R"(","b":1})"), "") << "in a text";
}

TEST (SheetJSON, readsEveryField)
{
    const auto sheet = sheetFromJSON (sheetJSON ({ fullCueJSON() }).dump());
    EXPECT_EQ (sheet.footer->layout, "Director Layout");
    EXPECT_EQ (sheet.footer->size, 8);
    EXPECT_EQ (sheet.frontMatter->charactersAndActors, "ANNA (Mia Berg), PAUL");
    EXPECT_FALSE (sheet.combined);
    const auto& cue = sheet.blocks.at (0).at (0);
    EXPECT_EQ (cue.character.text, "ANNA");
    EXPECT_EQ (cue.character.size, 13);
    EXPECT_EQ (cue.reason.text, "Aeroplane");
    EXPECT_EQ (cue.region.text, "Top");
    EXPECT_EQ (cue.engineeringNotes.text.text, "Use the lavalier.");
    EXPECT_EQ (cue.takes->recorded, 5);
    EXPECT_EQ (cue.takes->alternative, 0);
}

TEST (SheetJSON, readsRichTextAsTheLibraryWritesIt)
{
    ZEP::Core::RichTextString rich (juce::String::fromUTF8 ("No \xe2\x99\xaa.\n\"Yes\" \xf0\x9f\x8e\xac"));
    rich.setFont ({ 3, 5 }, juce::Font (20.0F, juce::Font::bold | juce::Font::underlined));
    rich.setColour ({ 13, 14 }, juce::Colour (0xffc00010));
    const juce::var object (rich.toJSONDynamicObject().get());

    const auto text = textOf (JSON::parse (juce::JSON::toString (object, true, 1).toStdString()));
    EXPECT_EQ (text.text, "No \xe2\x99\xaa.\n\"Yes\" \xf0\x9f\x8e\xac");
    ASSERT_EQ (text.runs.size(), 1U + (rich.length() > 13 ? 1U : 0U));
    EXPECT_EQ (text.runs[0].start, 3U);
    EXPECT_EQ (text.runs[0].end, 5U);
    EXPECT_TRUE (text.runs[0].look.bold && text.runs[0].look.underlined && ! text.runs[0].look.italic);
    EXPECT_EQ (text.runs[0].look.height, 20.0);
}

TEST (SheetJSON, runsThatOverlapOrLeaveTheTextAreTidied)
{
    const auto bold = JSON { { "bold", true } };
    const auto text = textOf (richJSON (
        "abcdef",
        JSON::array ({ runJSON (4, 99, bold), runJSON (0, 3, bold), runJSON (2, 4, { { "italic", true } }),
                       runJSON (5, 2, bold), runJSON (-7, 1, bold), runJSON (50, 60, bold) })));
    ASSERT_EQ (text.runs.size(), 3U);
    EXPECT_EQ (text.runs[0].end, text.runs[1].start);
    EXPECT_EQ (text.runs[2].end, 6U);
}

TEST (SheetJSON, otherTypesCountAsMissing)
{
    const auto sheet = sheetFromJSON (
        R"({"footer": 3, "frontMatter": [], "continuousPagesBlockList": "x", "cueContentList": [7, {"charName": 5, "cueText": [], "cueTakes": "no", "charNameFontSize": "13", "startTC": null}]})");
    EXPECT_FALSE (sheet.footer);
    EXPECT_FALSE (sheet.frontMatter);
    ASSERT_EQ (sheet.blocks.size(), 1U);
    EXPECT_EQ (sheet.blocks[0].at (0).character.text, "");
    EXPECT_FALSE (sheet.blocks[0].at (0).takes);
}

TEST (SheetJSON, numbersMayBeOfAnySize)
{
    const auto cue =
        sheetFromJSON (
            R"({"cueContentList": [{"charNameFontSize": 1e300, "cueTextFontSize": -99999999999999999999, "cueTakes": {"numRecordedTakes": 2.7}}]})")
            .blocks.at (0)
            .at (0);
    EXPECT_EQ (cue.character.size, 1000000000);
    EXPECT_EQ (cue.text.size, -1000000000);
    EXPECT_EQ (cue.takes->recorded, 2);
}

TEST (SheetJSON, whatIsNoSheetIsRefused)
{
    EXPECT_EQ (refusalOf (""), "The cue sheet is no JSON");
    EXPECT_EQ (refusalOf ("{\"footer\": "), "The cue sheet is no JSON");
    EXPECT_EQ (refusalOf ("{\"a\": \"\xff\"}"), "The cue sheet is no JSON");
    EXPECT_EQ (refusalOf ("[]"), "The cue sheet's JSON is no object");
    EXPECT_EQ (refusalOf (std::string (1000000, '[')), "The cue sheet's JSON is nested too deeply");
}

} // namespace DocxHandler::Testing
