// SPDX-License-Identifier: GPL-3.0-only
#include "export/word/WordDocument.h"

#include <gtest/gtest.h>

using namespace ZEP::Overmarks;
using ZEP::Core::RichTextString;

namespace
{

template <typename Part>
std::string jsonOf (const Part& part)
{
    return juce::JSON::toString (juce::var (part.toJSONDynamicObject().get()), true).toStdString();
}

void addCue (WordDocument& document, const juce::String& number, const RichTextString& text = { "Hello?" })
{
    document.addCueContent ("char.png", "in.png", "out.png", 13, "ANNA", 14, text, 8,
                            RichTextString ("softly"), 7, RichTextString ("boom"), 6, "Noise", 12, number, 5,
                            "Top", 4, "01:00:00:00", 3, "01:00:01:00");
}

/** A cue as addCue() makes it. @param end  of the object */
std::string cueJSON (const std::string& number, const std::string& end = "}")
{
    return R"({"charIconFilePath": "char.png", "startTCIconFilePath": "in.png", "endTCIconFilePath": "out.png", )"
           R"("charNameFontSize": 13, "charName": "ANNA", "cueTextFontSize": 14, )"
           R"("cueText": {"text": "Hello?", "runs": []}, "cueNotesFontSize": 8, )"
           R"("cueNotes": {"text": "softly", "runs": []}, "cueEngNotesFontSize": 7, )"
           R"("cueEngNotes": {"text": "boom", "runs": []}, "reasonStringFontSize": 6, "reasonString": "Noise", )"
           R"("cueNumberFontSize": 12, "cueNumber": ")"
           + number
           + R"(", "forcedNarrativeRegionFontSize": 5, "forcedNarrativeRegion": "Top", "startTCFontSize": 4, )"
             R"("startTC": "01:00:00:00", "endTCFontSize": 3, "endTC": "01:00:01:00")"
           + end;
}

const EventExportProjectSettings project { "/p/film", "Film", "Studio", "Supervisor", "Company" };
const EventExportTimelineSettings timeline { "Reel two", "R2", "v3", "de", {} };

constexpr auto frontMatterJSON =
    R"({"fontSize": 5, "projectName": "Film", "projectFilePath": "/p/film", "soundSupervisor": "Supervisor", )"
    R"("productionCompany": "Company", "studioName": "Studio", "timelineName": "Reel two", "episodeReel": "R2", )"
    R"json("pictureVersion": "v3", "charAndActor": "ANNA (B. Miller)"})json";

constexpr auto footerJSON = R"({"fontSize": 8, "appIconFilePath": "icon.png", "currentDate": "21/11/2026", )"
                            R"("appVersion": "1.2", "wordLayout": "Actor Layout"})";

} // namespace

TEST (WordDocument, anEmptyOneIsAnObjectWithoutKeys)
{
    const WordDocument document;
    EXPECT_EQ (document.footer, nullptr);
    EXPECT_EQ (document.frontMatter, nullptr);
    EXPECT_EQ (jsonOf (document), "{}");
}

TEST (WordDocument, theHeaderLeavesNoTrace)
{
    WordDocument document;
    document.setHeader();
    EXPECT_EQ (jsonOf (document), "{}");
}

TEST (WordDocument, withFooterAndFrontMatterAloneItHasTheseTwoKeys)
{
    WordDocument document;
    document.setFrontMatter (5, project, timeline, "ANNA (B. Miller)");
    document.setFooter (8, "icon.png", "21/11/2026", "1.2", "Actor Layout");
    EXPECT_EQ (jsonOf (document),
               R"({"footer": )" + std::string (footerJSON) + R"(, "frontMatter": )" + frontMatterJSON + "}");
}

TEST (WordDocument, footerAndFrontMatterAreReplaced)
{
    WordDocument document;
    document.setFooter (1, "a", "b", "c", "d");
    document.setFooter (8, "icon.png", "21/11/2026", "1.2", "Actor Layout");
    document.setFrontMatter (1, {}, {}, {});
    document.setFrontMatter (5, project, timeline, "ANNA (B. Miller)");
    EXPECT_EQ (jsonOf (*document.footer), footerJSON);
    EXPECT_EQ (jsonOf (*document.frontMatter), frontMatterJSON);
}

TEST (WordDocument, byTimecodeItHasCuesAndNoBlocks)
{
    WordDocument document;
    addCue (document, "A1");
    addCue (document, "A2");
    EXPECT_EQ (jsonOf (document), R"({"cueContentList": [)" + cueJSON ("A1") + ", " + cueJSON ("A2") + "]}");
}

TEST (WordDocument, aBlockTakesTheCuesAndLeavesTheListEmpty)
{
    WordDocument document;
    addCue (document, "A1");
    document.createContinuousPagesBlock();
    EXPECT_TRUE (document.cueContentList.empty());
    ASSERT_EQ (document.continuousPagesBlocks.size(), 1u);
    ASSERT_EQ (document.continuousPagesBlocks[0]->cueContentList.size(), 1u);
    EXPECT_EQ (document.continuousPagesBlocks[0]->cueContentList[0]->cueNumber, "A1");

    addCue (document, "T1");
    document.createContinuousPagesBlock();
    EXPECT_EQ (jsonOf (document), R"({"continuousPagesBlockList": [{"cueContentList": [)" + cueJSON ("A1")
                                      + R"(]}, {"cueContentList": [)" + cueJSON ("T1") + "]}]}");
}

TEST (WordDocument, cuesBehindTheLastBlockStandBehindTheBlocks)
{
    WordDocument document;
    document.createContinuousPagesBlock();
    addCue (document, "A1");
    document.setFooter (8, "icon.png", "21/11/2026", "1.2", "Actor Layout");
    EXPECT_EQ (jsonOf (document), R"({"footer": )" + std::string (footerJSON)
                                      + R"(, "continuousPagesBlockList": [{}], "cueContentList": [)"
                                      + cueJSON ("A1") + "]}");
}

TEST (WordDocument, anEmptyBlockIsAnObjectWithoutKeys)
{
    WordDocument document;
    document.createContinuousPagesBlock();
    EXPECT_EQ (jsonOf (document), R"({"continuousPagesBlockList": [{}]})");
}

TEST (WordDocument, aBlockKeepsItsOwnListOfTheCues)
{
    auto cues = std::vector { std::make_shared<WordDocumentCueContent> (
        "char.png", "in.png", "out.png", 13, "ANNA", 14, RichTextString ("Hello?"), 8,
        RichTextString ("softly"), 7, RichTextString ("boom"), 6, "Noise", 12, "A1", 5, "Top", 4,
        "01:00:00:00", 3, "01:00:01:00") };
    const ContinuousPagesBlock block (cues);
    cues.clear();
    EXPECT_EQ (jsonOf (block), R"({"cueContentList": [)" + cueJSON ("A1") + "]}");
}

TEST (WordDocument, aCueWithTakesEndsWithThem)
{
    WordDocument document;
    document.addCueContentWithTakes ("char.png", "in.png", "out.png", 13, "ANNA", 14,
                                     RichTextString ("Hello?"), 8, RichTextString ("softly"), 7,
                                     RichTextString ("boom"), 6, "Noise", 12, "A1", 5, "Top", 4,
                                     "01:00:00:00", 3, "01:00:01:00", 26, 2, -1, 50, 2);
    EXPECT_EQ (jsonOf (*document.cueContentList.at (0)),
               cueJSON ("A1",
                        R"(, "cueTakes": {"numRecordedTakes": 26, "selectedTake": 2, "alternativeTake": -1, )"
                        R"("numberTakesToDisplay": 50, "numberRowsToDisplay": 2}})"));
}

TEST (WordDocument, aCueWithoutTakesHasNoKeyForThemAndGetsOneWithTheNextSet)
{
    WordDocument document;
    addCue (document, "A1");
    auto& cue = *document.cueContentList.at (0);
    EXPECT_EQ (cue.cueTakes, nullptr);
    EXPECT_EQ (jsonOf (cue), cueJSON ("A1"));

    cue.setTakes (1, 2, 3, 4, 5);
    cue.setTakes (6, 7, 8, 9, 10);
    EXPECT_EQ (jsonOf (*cue.cueTakes), R"({"numRecordedTakes": 6, "selectedTake": 7, "alternativeTake": 8, )"
                                       R"("numberTakesToDisplay": 9, "numberRowsToDisplay": 10})");
}

TEST (WordDocument, eachCallMakesANewObject)
{
    const WordDocument document;
    const auto one = document.toJSONDynamicObject();
    EXPECT_NE (one, document.toJSONDynamicObject());
    EXPECT_EQ (one->getReferenceCount(), 1);
}
