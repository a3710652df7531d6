// SPDX-License-Identifier: GPL-3.0-only
#include "core/cast/ADRCueReasonsManager.h"
#include "export/word/WordExportSupport.h"
#include "support/CollectedLog.h"
#include "support/CueLists.h"

#include <gmock/gmock.h>

using namespace WordExportSupport;
using testing::ElementsAre;
using testing::IsEmpty;
using ZEP::Overmarks::Testing::CollectedLog;
using ZEP::Overmarks::Testing::setField;

// ---- the object ----------------------------------------------------------------------------------------------------------

TEST_F (WordExportTest, isOfTypeTwoAndKnowsTheTwoFilesOfTheTalk)
{
    EXPECT_EQ (exporter.type(), 2);
    EXPECT_EQ (exporter.wordDocument, nullptr);
    EXPECT_FALSE (exporter.cancelled);
    EXPECT_THAT (exporter.getComFilePaths(),
                 ElementsAre (text (tool.inTemporary ("P2CcomWordExporter.txt")),
                              text (tool.inTemporary ("C2PcomWordExporter.txt"))));
    EXPECT_THAT (exporter.getTmpJSONFilePaths(), IsEmpty());
}

TEST_F (WordExportTest, withoutADocumentThePartsOfOneAreNotMissed)
{
    exporter.setDocumentHeader();
    exporter.setDocumentFooter();
    exporter.setDocumentFirstPageHeader ("ANNA");
    exporter.addOneCueContent (event ({}));
    EXPECT_EQ (exporter.wordDocument, nullptr);
}

TEST_F (WordExportTest, withoutADocumentTheFileIsEmptyAndNotRegistered)
{
    tool.plant ("WordDocumentJSON_x.txt", "old");
    EXPECT_EQ (exporter.writeAndRegisterJSONFile ("x"), text (tool.inTemporary ("WordDocumentJSON_x.txt")));
    EXPECT_TRUE (tool.has ("WordDocumentJSON_x.txt"));
    EXPECT_EQ (tool.bytes ("WordDocumentJSON_x.txt"), "");
    EXPECT_THAT (exporter.getTmpJSONFilePaths(), IsEmpty());
}

TEST_F (WordExportTest, aDocumentIsWrittenOnOneLineInThePlaceOfAnOldFileAndRegistered)
{
    tool.plant ("WordDocumentJSON_x.txt", std::string (5000, 'x'));
    exporter.wordDocument = std::make_unique<WordDocument>();
    exporter.wordDocument->setFooter (8, "a\nb", "c\"d", text ("J\xc3\xa4ger"), "");
    const auto path = exporter.writeAndRegisterJSONFile ("x");
    EXPECT_EQ (tool.bytes ("WordDocumentJSON_x.txt"),
               R"({"footer": {"fontSize": 8, "appIconFilePath": "a\nb", "currentDate": "c\"d", )"
               R"("appVersion": "J\u00e4ger", "wordLayout": ""}})");
    EXPECT_THAT (exporter.getTmpJSONFilePaths(), ElementsAre (path));
}

TEST_F (WordExportTest, numbersHaveAtMostOneDecimalPlace)
{
    exporter.wordDocument = std::make_unique<WordDocument>();
    ZEP::Core::RichTextString words ("abc");
    words.setFont ({ 0, 1 }, juce::Font (12.3456f));
    words.setFont ({ 1, 2 }, juce::Font (12.96f));
    words.setFont ({ 2, 3 }, juce::Font (20.0f));
    exporter.wordDocument->addCueContent ({}, {}, {}, 1, {}, 1, words, 1, {}, 1, {}, 1, {}, 1, {}, 1, {}, 1,
                                          {}, 1, {});
    exporter.wordDocument->createContinuousPagesBlock();
    exporter.writeAndRegisterJSONFile ("x");
    const auto written = tool.bytes ("WordDocumentJSON_x.txt");
    EXPECT_THAT (written, testing::HasSubstr ("\"height\": 12.3,"));
    EXPECT_THAT (written, testing::HasSubstr ("\"height\": 13.0,"));
    EXPECT_THAT (written, testing::HasSubstr ("\"height\": 20.0,"));
}

TEST_F (WordExportTest, itsTemporaryFilesAreDeletedAndForgotten)
{
    exporter.wordDocument = std::make_unique<WordDocument>();
    exporter.writeAndRegisterJSONFile ("x");
    exporter.writeAndRegisterJSONFile ("y");
    tool.plant ("P2CcomWordExporter.txt", "x");
    tool.plant ("C2PcomWordExporter.txt", "x");
    tool.plant ("other", "x");
    exporter.deleteTemporaryFiles();
    EXPECT_THAT (tool.temporaryFiles(), ElementsAre ("other"));
    EXPECT_THAT (exporter.getTmpJSONFilePaths(), IsEmpty());
}

TEST_F (WordExportTest, itsTemporaryFilesGoWithIt)
{
    {
        EventWordExporter other (settings);
        other.wordDocument = std::make_unique<WordDocument>();
        other.writeAndRegisterJSONFile ("x");
        other.cancel();
        EXPECT_EQ (tool.temporaryFiles().size(), 2u);
    }

    EXPECT_THAT (tool.temporaryFiles(), IsEmpty());
}

TEST_F (WordExportTest, cancellingWritesTheFileForTheToolAndSetsTheFlag)
{
    exporter.cancel();
    EXPECT_TRUE (exporter.cancelled);
    EXPECT_EQ (tool.bytes ("C2PcomWordExporter.txt"), std::string ("cancel\n\0", 8));
    exporter.cancel();
    EXPECT_EQ (tool.bytes ("C2PcomWordExporter.txt"), std::string ("cancel\n\0cancel\n\0", 16));
}

// ---- by timecode ---------------------------------------------------------------------------------------------------------

TEST_F (WordExportTest, byTimecodeTheToolGetsOneDocument)
{
    settings->events = events ({ { "A1" } });
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (tool.runs(), 1);
    EXPECT_EQ (tool.words(),
               (Names { toolPath(), "export", "json=" + tool.inTemporary ("WordDocumentJSON_timecode.txt"),
                        "output=" + output ("Reel 2.docx"), com() }));
    EXPECT_EQ (listener.all(), (Reports { { 1, 1 } }));
    EXPECT_EQ (folder.names(), (Names { "Reel 2.docx" }));
    EXPECT_THAT (tool.temporaryFiles(), IsEmpty());
    EXPECT_THAT (exporter.getTmpJSONFilePaths(), IsEmpty());
}

TEST_F (WordExportTest, aDocumentByTimecodeHasFooterFrontMatterAndCues)
{
    addCharacter ("a", "ANNA", {}, "B. Miller");
    settings->events = { event ({ "A1", oneHour, oneHour + 25, "a", "Hello?", "softly" }) };
    const auto today = juce::Time::getCurrentTime().formatted ("%d/%m/%Y").toStdString();
    exporter.exportEventsByTimecode();

    const auto expected = ordered_json::parse (R"json({
        "footer": {"fontSize": 8, "appIconFilePath": "RESOURCES/dbln-app-icon.png", "currentDate": "TODAY",
            "appVersion": "1.2.3", "wordLayout": "Director Layout"},
        "frontMatter": {"fontSize": 5, "projectName": "Film", "projectFilePath": "/p/film",
            "soundSupervisor": "Supervisor", "productionCompany": "Company", "studioName": "Studio",
            "timelineName": "Reel two", "episodeReel": "R2", "pictureVersion": "v3",
            "charAndActor": "ANNA (B. Miller)"},
        "cueContentList": [{
            "charIconFilePath": "RESOURCES/pdf-export-character-icon.png",
            "startTCIconFilePath": "RESOURCES/pdf-export-in-point-icon.png",
            "endTCIconFilePath": "RESOURCES/pdf-export-out-point-icon.png",
            "charNameFontSize": 13, "charName": "ANNA",
            "cueTextFontSize": 14, "cueText": {"text": "Hello?", "runs": []},
            "cueNotesFontSize": 8, "cueNotes": {"text": "softly", "runs": []},
            "cueEngNotesFontSize": 8, "cueEngNotes": {"text": "", "runs": []},
            "reasonStringFontSize": 8, "reasonString": "", "cueNumberFontSize": 12, "cueNumber": "A1",
            "forcedNarrativeRegionFontSize": 8, "forcedNarrativeRegion": "",
            "startTCFontSize": 8, "startTC": "01:00:00:00", "endTCFontSize": 8, "endTC": "01:00:01:00"}]})json")
                              .dump();
    EXPECT_EQ (kept ("timecode").dump(), text (expected)
                                             .replace ("RESOURCES", text (tool.resources.string()))
                                             .replace ("TODAY", text (today))
                                             .toStdString());
    EXPECT_EQ (tool.note ("WordDocumentJSON_timecode.txt").find ('\n'), std::string::npos);
}

TEST_F (WordExportTest, byTimecodeEachCharacterIsNamedOnceAndTrimmed)
{
    addCharacter ("a", " ANNA ", {}, " B. Miller ");
    addCharacter ("b", "ANNA", {}, "B. Miller");
    addCharacter ("c", "anna");
    settings->events = events (
        { { {}, 0, 1, "a" }, { {}, 0, 1, "b" }, { {}, 0, 1, "c" }, { {}, 0, 1, "none" }, { {}, 0, 1, "a" } });
    exporter.exportEventsByTimecode();
    EXPECT_EQ (kept ("timecode")["frontMatter"]["charAndActor"], "ANNA (B. Miller), anna");
}

TEST_F (WordExportTest, withoutEventsTheDocumentHasNoCues)
{
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_THAT (keysOf (kept ("timecode")), ElementsAre ("footer", "frontMatter"));
}

TEST_F (WordExportTest, whatAnEarlierRunLeftIsRemovedBeforeTheToolStarts)
{
    tool.install (R"(ls "${progress%/*}" > "$here/seen")");
    tool.plant ("P2CcomWordExporter.txt", "completionLevel=100");
    tool.plant ("C2PcomWordExporter.txt", "cancel");
    exporter.exportEventsByTimecode();
    EXPECT_EQ (tool.note ("seen"), "WordDocumentJSON_timecode.txt\n");
}

TEST_F (WordExportTest, aMissingOrFailingToolIsNoError)
{
    const CollectedLog log;
    tool.install ("exit 7");
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    tool.install ("kill -9 $$");
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (listener.all(), (Reports { { 1, 1 }, { 0, 0 }, { 1, 1 } }));
    EXPECT_THAT (folder.names(), IsEmpty());
    EXPECT_THAT (log.lines(), IsEmpty());
}

TEST_F (WordExportTest, aMissingOptionEndsTheExport)
{
    settings->options.erase (EventExportAppVersionKey);
    EXPECT_THROW (exporter.exportEventsByTimecode(), std::out_of_range);
    settings->options[EventExportAppVersionKey] = "1";
    settings->options.erase (EventExportCombineIntoSingleFileKey);
    EXPECT_THROW (exporter.exportEventsByCharacter(), std::out_of_range);
    EXPECT_EQ (tool.runs(), 0);
}

TEST_F (WordExportTest, withoutADelegateNobodyIsTold)
{
    exporter.delegate = nullptr;
    settings->eventsByCharacter["a"] = events ({ { "A1" } });
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    combine();
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (tool.runs(), 3);
}

// ---- cues ----------------------------------------------------------------------------------------------------------------

TEST_F (WordExportTest, theLayoutChangesItsNameAndTheSizeOfTheText)
{
    const std::vector<std::tuple<int, std::string, int>> table { { 1, "Director Layout", 14 },
                                                                 { 2, "Actor Layout", 15 },
                                                                 { 3, "Engineer Layout", 14 },
                                                                 { 0, "Engineer Layout", 14 },
                                                                 { 99, "Engineer Layout", 14 } };

    for (const auto& [layout, name, size] : table)
    {
        settings->layout = static_cast<EventExportLayout> (layout);
        EXPECT_EQ (cueOf (event ({}))["cueTextFontSize"], size) << layout;
        EXPECT_EQ (kept ("timecode")["footer"]["wordLayout"], name) << layout;
    }
}

TEST_F (WordExportTest, theRegionStandsOnlyForForcedNarratives)
{
    const auto cue = event ({});
    cue->setForcedNarrativeRegion (ForcedNarrativeRegionTop);
    EXPECT_EQ (cueOf (cue)["forcedNarrativeRegion"], "");
    cue->setIsForcedNarrative (true);

    const std::vector<std::pair<int, std::string>> table { { 0, "Bottom" }, { 1, "Top" },   { 2, "Left" },
                                                           { 3, "Right" },  { 4, "Right" }, { -1, "Right" } };
    for (const auto& [region, name] : table)
    {
        setField (*cue, "forcedNarrativeRegion", static_cast<ForcedNarrativeRegion> (region));
        EXPECT_EQ (cueOf (cue)["forcedNarrativeRegion"], name) << region;
    }
}

TEST_F (WordExportTest, theReasonIsItsNameAndNoneIsEmpty)
{
    const auto cue = event ({});
    EXPECT_EQ (cueOf (cue)["reasonString"], "");
    cue->setReason (4);
    EXPECT_EQ (cueOf (cue)["reasonString"],
               ZEP::Core::ADRCueReasonsManager::sharedManager()->getReasonFromInteger (5).toStdString());
    EXPECT_NE (cueOf (cue)["reasonString"], "None");
    cue->setReason (35); // a user reason without a name
    EXPECT_EQ (cueOf (cue)["reasonString"], "");
    ZEP::Core::ADRCueReasonsManager::sharedManager()->setUserReasonNames ({ "A", "B", "Wind" });
    EXPECT_EQ (cueOf (cue)["reasonString"], "Wind");
    ZEP::Core::ADRCueReasonsManager::sharedManager()->setUserReasonNames ({});
}

TEST_F (WordExportTest, typographyOfTheThreeTextsIsMadePlainAndTheirLooksStay)
{
    const auto cue = event ({ "A\xe2\x80\x93"
                              "1" });
    ZEP::Core::RichTextString words (text ("\xe2\x80\x9cHi\xe2\x80\x9d"));
    words.setFont ({ 1, 3 }, juce::Font (18.0f, juce::Font::bold));
    cue->setText (words);
    cue->setNotes (text ("a\xe2\x80\xa6"));
    cue->setEngineeringNotes (text ("b\xe2\x80\x99"));
    const auto json = cueOf (cue);
    EXPECT_EQ (json["cueText"]["text"], "\"Hi\"");
    ASSERT_EQ (json["cueText"]["runs"].size(), 1u);
    EXPECT_EQ (json["cueText"]["runs"][0]["start"], 1);
    EXPECT_EQ (json["cueText"]["runs"][0]["end"], 3);
    EXPECT_EQ (json["cueText"]["runs"][0]["bold"], true);
    EXPECT_EQ (json["cueNotes"]["text"], "a...");
    EXPECT_EQ (json["cueEngNotes"]["text"], "b'");
    EXPECT_EQ (json["cueNumber"], cue->getCueNumber().toStdString());
}

TEST_F (WordExportTest, aCueWithoutACharacterHasAnEmptyName)
{
    EXPECT_EQ (cueOf (event ({ "A1", 0, 1, "nobody" }))["charName"], "");
}

TEST_F (WordExportTest, boxesForTakesAreThereWhenAskedFor)
{
    const auto cue = event ({});
    EXPECT_FALSE (cueOf (cue).contains ("cueTakes"));
    settings->showTakeNumbers = true;
    cue->setNumRecordedTakes (3);
    cue->setSelectedTake (1);
    cue->setAltTake (2);
    EXPECT_EQ (cueOf (cue)["cueTakes"].dump(),
               R"({"numRecordedTakes":3,"selectedTake":1,"alternativeTake":2,"numberTakesToDisplay":25,)"
               R"("numberRowsToDisplay":1})");
}

TEST_F (WordExportTest, moreThanTwentyFiveTakesHaveASecondRow)
{
    settings->showTakeNumbers = true;
    const auto cue = event ({});

    for (const auto& [takes, rows] :
         { std::pair (0, 1), std::pair (25, 1), std::pair (26, 2), std::pair (99, 2) })
    {
        cue->setNumRecordedTakes (takes);
        const auto boxes = cueOf (cue)["cueTakes"];
        EXPECT_EQ (boxes["numRecordedTakes"], takes);
        EXPECT_EQ (boxes["numberTakesToDisplay"], 25 * rows) << takes;
        EXPECT_EQ (boxes["numberRowsToDisplay"], rows) << takes;
    }
}

// ---- by character --------------------------------------------------------------------------------------------------------

TEST_F (WordExportTest, byCharacterOneRunMakesAFileForEachInTheOrderOfTheNames)
{
    addCharacter ("id1", "TOM", {}, " C. Berg ");
    addCharacter ("id2", "Smith, J/R");
    settings->eventsByCharacter["id1"] = events ({ { "T1", 0, 1, "id1" } });
    settings->eventsByCharacter["id2"] = events ({ { "S1", 0, 1, "id2" }, { "S2", 0, 1, "id2" } });
    settings->eventsByCharacter["none"] = events ({ { "N1" } });
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");

    EXPECT_EQ (tool.runs(), 1);
    EXPECT_EQ (tool.words(),
               (Names { toolPath(), "export",
                        "json=" + tool.inTemporary ("WordDocumentJSON_none.txt") + ","
                            + tool.inTemporary ("WordDocumentJSON_id2.txt") + ","
                            + tool.inTemporary ("WordDocumentJSON_id1.txt"),
                        "output=" + output ("Reel 2_<no char>.docx") + "," + output ("Reel 2_Smith  J_R.docx")
                            + "," + output ("Reel 2_TOM.docx"),
                        com() }));
    EXPECT_EQ (kept ("none")["frontMatter"]["charAndActor"], "");
    EXPECT_EQ (kept ("id2")["frontMatter"]["charAndActor"], "Smith, J/R");
    EXPECT_EQ (kept ("id1")["frontMatter"]["charAndActor"], "TOM ( C. Berg )");
    EXPECT_EQ (kept ("id2")["cueContentList"].size(), 2u);
    EXPECT_EQ (kept ("id1")["cueContentList"].at (0)["cueNumber"], "T1");
    EXPECT_EQ (kept ("id1")["footer"]["appVersion"], "1.2.3");
    EXPECT_EQ (folder.names(),
               (Names { "Reel 2_<no char>.docx", "Reel 2_Smith  J_R.docx", "Reel 2_TOM.docx" }));
    EXPECT_EQ (listener.all().back(), std::pair (3, 3));
}

TEST_F (WordExportTest, theJSONFilesOfAnExportByCharacterStayUntilTheNextOne)
{
    settings->eventsByCharacter["id1"] = events ({ { "T1" } });
    exporter.exportEventsByCharacter();
    EXPECT_THAT (tool.temporaryFiles(), ElementsAre ("WordDocumentJSON_id1.txt"));
    EXPECT_THAT (exporter.getTmpJSONFilePaths(),
                 ElementsAre (text (tool.inTemporary ("WordDocumentJSON_id1.txt"))));

    settings->eventsByCharacter.clear();
    exporter.exportEventsByCharacter();
    EXPECT_THAT (tool.temporaryFiles(), IsEmpty());
}

TEST_F (WordExportTest, withoutACharacterTheToolGetsTwoEmptyPartsAndNobodyIsCounted)
{
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (tool.words(), (Names { toolPath(), "export", "", "", com() }));
    EXPECT_EQ (listener.all(), (Reports { { 0, 0 } }));
    EXPECT_THAT (folder.names(), IsEmpty());
}

TEST_F (WordExportTest, identifiersFromAStrangersListStayInTheTemporaryFolder)
{
    settings->eventsByCharacter["../x,y/z"] = events ({ { "T1" } });
    settings->eventsByCharacter["$(touch x)\"`\n"] = events ({ { "T2" } });
    exporter.exportEventsByCharacter();
    EXPECT_THAT (tool.temporaryFiles(),
                 ElementsAre ("WordDocumentJSON_$(touch x)\"`\n.txt", "WordDocumentJSON_..%2Fx%2Cy%2Fz.txt"));
    EXPECT_EQ (tool.words().at (2), "json=" + tool.inTemporary ("WordDocumentJSON_$(touch x)\"`\n.txt") + ","
                                        + tool.inTemporary ("WordDocumentJSON_..%2Fx%2Cy%2Fz.txt"));
    EXPECT_EQ (folder.names().size(), 2u);
}

TEST_F (WordExportTest, combinedAllCharactersHaveABlockInOneFile)
{
    combine();
    addCharacter ("id1", " TOM ", {}, " C. Berg ");
    addCharacter ("id2", "ANNA");
    addCharacter ("id3", "ANNA");
    settings->eventsByCharacter["id1"] = events ({ { "T1", 0, 1, "id1" } });
    settings->eventsByCharacter["id2"] = events ({ { "A1", 0, 1, "id2" }, { "A2", 0, 1, "id2" } });
    settings->eventsByCharacter["id3"] = {};
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");

    EXPECT_EQ (tool.words(),
               (Names { toolPath(), "export", "json=" + tool.inTemporary ("WordDocumentJSON_singlefile.txt"),
                        "output=" + output ("Reel 2.docx"), com() }));
    const auto document = kept ("singlefile");
    EXPECT_THAT (keysOf (document), ElementsAre ("footer", "frontMatter", "continuousPagesBlockList"));
    EXPECT_EQ (document["frontMatter"]["charAndActor"], "TOM ( C. Berg ), ANNA, ANNA")
        << "doubles stay, and actors aren't trimmed";
    const auto& blocks = document["continuousPagesBlockList"];
    ASSERT_EQ (blocks.size(), 3u);
    EXPECT_EQ (blocks[0]["cueContentList"][0]["cueNumber"], "T1");
    EXPECT_EQ (blocks[1]["cueContentList"].size(), 2u);
    EXPECT_EQ (blocks[2].dump(), "{}");
    EXPECT_EQ (listener.all(), (Reports { { 1, 1 } }));
    EXPECT_THAT (tool.temporaryFiles(), ElementsAre ("WordDocumentJSON_singlefile.txt"));
}

TEST_F (WordExportTest, combinedWithoutACharacterTheToolGetsAnEmptyFile)
{
    combine();
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (tool.words().at (2), "json=" + tool.inTemporary ("WordDocumentJSON_singlefile.txt"));
    EXPECT_EQ (tool.note ("WordDocumentJSON_singlefile.txt"), "");
    EXPECT_EQ (listener.all(), (Reports { { 1, 1 } }));
}

TEST_F (WordExportTest, aCancelledExportByCharacterEndsBeforeTheNextCharacter)
{
    settings->eventsByCharacter["id1"] = events ({ { "T1" } });
    exporter.cancel();
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (tool.runs(), 0);
    EXPECT_EQ (exporter.wordDocument, nullptr);
    EXPECT_THAT (listener.all(), IsEmpty());
    EXPECT_THAT (tool.temporaryFiles(), IsEmpty());
}
