// SPDX-License-Identifier: GPL-3.0-only
#include "import/TTALEventFileImporter.h"

#include "import/ImportSupport.h"
#include "import/frame/EventFileImporterFactory.h"
#include "import/frame/EventRowReader.h"
#include "import/ttal/TTALSupport.h"

using namespace TTALSupport;

namespace
{

const TextTable threeLines {
    { "01:00:02:00", "01:00:04:00", "Schönen Abend, Frau Weiß.", "ANNA", "AN1", "Atmer davor", "no", "" },
    { "01:00:06:00", "01:00:07:24", "Äh …\ndoch? 🎬", "PAUL", "P1", "", "no", "" },
    { "01:00:10:00", "01:00:11:24", "HAFEN, 1912", "", "", "", "yes", "top" },
};

} // namespace

TEST_F (TTALImport, isFormatSevenWithColumnsOfItsOwn)
{
    importFile ("ttal/three_lines.ttal", timeInfoAt ("00:00:00:00"));
    EXPECT_EQ (importer->type(), 7);
    EXPECT_FALSE (importer->userMappingEnabled());
    EXPECT_EQ (importer->columnMap, (std::map<juce::String, int> { { "Start TC", 0 },
                                                                   { "End TC", 1 },
                                                                   { "Text", 2 },
                                                                   { "Character", 3 },
                                                                   { "Cue Number", 4 },
                                                                   { "Notes", 5 },
                                                                   { "Forced Narrative", 6 },
                                                                   { "FN Region", 7 } }));
}

TEST_F (TTALImport, aListComesWithItsCastItsLanguageAndItsRate)
{
    importFile ("ttal/three_lines.ttal", timeInfoAt ("00:00:00:00"));
    EXPECT_EQ (message, "");
    EXPECT_EQ (textsOf (importer->rows), threeLines);
    EXPECT_EQ (importer->languageCode(), "de-DE");
    EXPECT_EQ (importer->language, "de-DE");
    EXPECT_EQ (importer->fps, 2);
    EXPECT_NE (importer->jsonRoot.getDynamicObject(), nullptr);
    EXPECT_EQ (castOf (*importer), (Texts { "c-anna=ANNA", "c-paul=PAUL", "c-kid=KID" }));
}

TEST_F (TTALImport, theFactoryHandsTheProjectsTimeOn)
{
    const auto time = timeInfoAt ("10:00:00:00");
    const auto made = EventFileImporterFactory::fileImporterWithFilepath (dataFile ("ttal/three_lines.ttal"),
                                                                          message, {}, time);
    ASSERT_NE (made, nullptr);
    EXPECT_EQ (made->timeInfo, time);
    EXPECT_EQ (made->languageCode(), "de-DE");
    EXPECT_EQ (made->rows.at (0).at (0).getText(), "11:00:02:00");
}

TEST_F (TTALImport, stylesAreFontsOfTheText)
{
    importFile ("ttal/three_lines.ttal");
    EXPECT_EQ (looksOf (importer->rows[0][2]), (Texts { "0-8 bold", "9-14 italic" }));
    EXPECT_TRUE (importer->rows[1][2].isPlain());
    EXPECT_TRUE (importer->rows[0][5].isPlain());
}

// ---- times ---------------------------------------------------------------------------------------------------------------

TEST_F (TTALImport, framesAreCountedFromTheTimeOrigin)
{
    import (file (event ({ { "start", "50" }, { "end", "75" } })), timeInfoAt ("01:00:00:00"));
    EXPECT_EQ (cell (0, 0), "01:00:02:00");
    EXPECT_EQ (cell (0, 1), "01:00:02:24");
}

TEST_F (TTALImport, aFirstFrameOfActionPlaysNoPart)
{
    const auto time = timeInfoAt ("00:00:00:00");
    time->setFirstFrameOfAction (TCToolbox::tcTimeFromString ("01:00:00:00"));
    import (file (event ({ { "start", "50" }, { "end", "75" } })), time);
    EXPECT_EQ (cell (0, 0), "00:00:02:00");
}

TEST_F (TTALImport, theRateOfTheFileDoesNotChangeTheTimes)
{
    import (replaced (file (event (
                          { { "start",
                              "50" } })),
                      "FPS_2500", "FPS_6000"),
            timeInfoAt ("00:00:00:00"));
    EXPECT_EQ (importer->fps, 11);
    EXPECT_EQ (cell (0, 0), "00:00:02:00");
}

TEST_F (TTALImport, anEmptyEventEndsOneFrameBeforeItStarts)
{
    import (file (event ({ { "start", "100" }, { "end", "100" } })));
    EXPECT_EQ (message, "");
    EXPECT_EQ (cell (0, 0), "00:00:04:00");
    EXPECT_EQ (cell (0, 1), "00:00:03:24");
}

TEST_F (TTALImport, dropFrameIsCountedAndPrintedWithColons)
{
    const auto rate = *TCToolbox::tcDefForRateName ("29.97df");
    import (file (event ({ { "start", "1800" }, { "end", "17982" } })), std::make_shared<TimeInfo> (rate));
    EXPECT_EQ (cell (0, 0), "00:01:00:02");
    EXPECT_EQ (cell (0, 1), "00:09:59:29");
}

TEST_F (TTALImport, withoutAProjectFramesCountFromZeroAtTwentyFive)
{
    import (file (event ({ { "start", "50" }, { "end", "51" } })), nullptr);
    EXPECT_EQ (message, "");
    EXPECT_EQ (cell (0, 0), "00:00:02:00");
    EXPECT_EQ (cell (0, 1), "00:00:02:00");
}

TEST_F (TTALImport, framesMayBeTexts)
{
    import (file (event ({ { "start", "\"50\"" }, { "end", "\"75\"" } })));
    EXPECT_EQ (cell (0, 0), "00:00:02:00");
    EXPECT_EQ (cell (0, 1), "00:00:02:24");
}

TEST_F (TTALImport, framesOfAnyKindAndSizeAreSomeTime)
{
    for (const auto* number :
         { "-1", "1.9", "1e300", "-1e300", "99999999999", "-99999999999", "123456789012345678901234",
           "-2147483648", "2147483647", "true", "null", "[]", "{}", "\"many\"", "\"99999999999999999999\"" })
    {
        import (file (event ({ { "start", number }, { "end", number } })));
        EXPECT_EQ (message, "") << number;
        ASSERT_EQ (importer->rows.size(), 1u) << number;
        EXPECT_NE (cell (0, 0), "") << number;
    }

    import (file (event ({ { "start", "-1" }, { "end", "1.9" } })));
    EXPECT_EQ (cell (0, 0), "23:59:59:24");
    EXPECT_EQ (cell (0, 1), "00:00:00:00");
}

// ---- members of an event -------------------------------------------------------------------------------------------------

TEST_F (TTALImport, anEventNeedsFourMembersOnly)
{
    import (file (event ({})));
    EXPECT_EQ (message, "");
    EXPECT_EQ (textsOf (importer->rows),
               (TextTable { { "00:00:00:00", "00:00:00:24", "Line.", "", "", "", "no", "" } }));
}

TEST_F (TTALImport, anythingIsAText)
{
    import (file (event ({ { "txt", "12" }, { "cue", "7" }, { "rgn", "true" }, {
                              "dubAnnotations",
                              "{\"text\": 3}"
                          } })));
    EXPECT_EQ (textsOf (importer->rows),
               (TextTable { { "00:00:00:00", "00:00:00:24", "12", "", "7", "3", "no", "1" } }));
}

TEST_F (TTALImport, listsAndObjectsHaveTextsThatAreTheSameEveryTime)
{
    import (file (event ({ { "txt", "{}" }, { "cue", "{\"a\": 1}" }, { "rgn", "[1]" }, { "type", "{}" }, {
                              "dubAnnotations",
                              "{\"text\": {}}"
                          } })));
    EXPECT_EQ (message, "");
    EXPECT_EQ (textsOf (importer->rows), (TextTable { { "00:00:00:00", "00:00:00:24", "[Object]", "",
                                                        "[Object]", "[Object]", "no", "[Array]" } }));
}

TEST_F (TTALImport, aStyleWhoseTypeIsAListIsOneOfAnotherType)
{
    import (file (event ({ { "txt", "\"Hello\"" },
                           { "styles",
                             R"([{"from": 0, "to": 3, "type": ["bold"]},)"
                             R"({"from": 3, "to": 5, "type": "italic"}])" } })));
    const auto attributes = importer->richTextAttributesFromStylesObject (
        juce::Array<juce::var> { juce::JSON::fromString (R"({"from": 0, "to": 3, "type": ["bold"]})") });
    ASSERT_EQ (attributes.size(), 1u);
    EXPECT_EQ (attributes[0].range, juce::Range<int> (0, 3));
    EXPECT_EQ (attributes[0].font, ZEP::Core::RichTextString::defaultFont());
    ASSERT_EQ (importer->rows.size(), 1u);
    EXPECT_EQ (importer->rows[0][2].formattedRuns().size(), 1u);
}

TEST_F (TTALImport, onlyTheTextOfAnnotationsIsRead)
{
    import (file (event (
                      { { "dubAnnotations",
                          R"({"types": ["x"]})" } })
                  + ","
                  + event ({ { "dubAnnotations",
                               "\"x\"" } },
                           "e2")));
    EXPECT_EQ (message, "");
    EXPECT_EQ (cell (0, 5), "");
    EXPECT_EQ (cell (1, 5), "");
}

TEST_F (TTALImport, aForcedNarrativeWithoutARegionHasAnEmptyOne)
{
    import (file (event ({ { "type", "\"fn\"" } })));
    EXPECT_EQ (cell (0, 6), "yes");
    EXPECT_EQ (cell (0, 7), "");
}

TEST_F (TTALImport, anyOtherTypeIsNoForcedNarrative)
{
    import (file (event ({ { "type", "\"FN\"" } }) + "," + event ({ { "type", "\"dialogue\"" } }, "e2")));
    EXPECT_EQ (cell (0, 6), "no");
    EXPECT_EQ (cell (1, 6), "no");
}

TEST_F (TTALImport, aRegionIsCarriedAsText)
{
    import (file (event ({ { "rgn", "\"upper left\"" } })));
    EXPECT_EQ (cell (0, 6), "no");
    EXPECT_EQ (cell (0, 7), "upper left");
}

TEST_F (TTALImport, keysAreComparedWithCase)
{
    import (file (event ({ { "Cue", "\"A1\"" }, { "CUE", "\"A2\"" }, { "Type", "\"fn\"" } })));
    EXPECT_EQ (message, "");
    EXPECT_EQ (cell (0, 4), "");
    EXPECT_EQ (cell (0, 6), "no");
}

// ---- styles --------------------------------------------------------------------------------------------------------------

TEST_F (TTALImport, theOrderOfTextAndStylesPlaysNoPart)
{
    const std::string before =
        R"("e1": {"styles": [{"from": 0, "to": 2, "type": "bold"}], "start": 0, "end": 25, )"
        R"("characterId": "00000000-0000-0000-0000-000000000000", "txt": "Line."})";
    import (file (before));
    EXPECT_EQ (looksOf (importer->rows[0][2]), (Texts { "0-2 bold" }));
}

TEST_F (TTALImport, aLaterStyleReplacesAnEarlierOne)
{
    EXPECT_EQ (looks (R"({"from": 0, "to": 5, "type": "bold"}, {"from": 2, "to": 3, "type": "italic"})"),
               (Texts { "0-2 bold", "2-3 italic", "3-5 bold" }));
}

TEST_F (TTALImport, anUnknownStyleIsTheLookOfPlainText)
{
    EXPECT_EQ (looks (R"({"from": 0, "to": 2, "type": "underline"})"), Texts());
    const auto attributes = importer->richTextAttributesFromStylesObject (
        juce::JSON::parse (R"([{"from": 0, "to": 2, "type": "underline"}])"));
    ASSERT_EQ (attributes.size(), 1u);
    EXPECT_EQ (attributes[0].range, juce::Range<int> (0, 2));
    EXPECT_FALSE (attributes[0].font.isBold());
    EXPECT_FALSE (attributes[0].font.isItalic());
    EXPECT_FALSE (attributes[0].font.isUnderlined());
    EXPECT_EQ (attributes[0].colour, juce::Colour (0xff000000));
}

TEST_F (TTALImport, aStyleThatLacksSomethingIsDropped)
{
    for (const auto* style :
         { R"({"from": -1, "to": 2, "type": "bold"})", R"({"from": 0, "to": -1, "type": "bold"})",
           R"({"to": 2, "type": "bold"})", R"({"from": 0, "type": "bold"})", R"({"from": 0, "to": 2})",
           R"({"from": 0, "to": 2, "type": ""})", "null", "7", R"("bold")", "[]", "{}" })
    {
        EXPECT_EQ (looks (style), Texts()) << style;
        const auto styles = juce::JSON::parse ("[" + juce::String (style) + "]");
        EXPECT_TRUE (importer->richTextAttributesFromStylesObject (styles).empty()) << style;
    }
    EXPECT_EQ (message, "");
}

TEST_F (TTALImport, aStyleThatEndsBeforeItStartsChangesNothing)
{
    EXPECT_EQ (looks (R"({"from": 3, "to": 1, "type": "bold"}, {"from": 2, "to": 2, "type": "bold"})"),
               Texts());
    const auto attributes = importer->richTextAttributesFromStylesObject (
        juce::JSON::parse (R"([{"from": 3, "to": 1, "type": "bold"}])"));
    ASSERT_EQ (attributes.size(), 1u);
    EXPECT_EQ (attributes[0].range, juce::Range<int> (3, 3));
}

TEST_F (TTALImport, aStyleEndsWithItsText)
{
    EXPECT_EQ (
        looks (
            R"({"from": 3, "to": 2000000000, "type": "bold"}, {"from": -2000000000, "to": 1, "type": "italic"},)"
            R"({"from": 70, "to": 80, "type": "italic"})"),
        (Texts { "0-1 italic", "3-5 bold" }));
}

TEST_F (TTALImport, styleRangesMayBeTexts)
{
    EXPECT_EQ (looks (R"({"from": "1", "to": "2", "type": "bold"})"), (Texts { "1-2 bold" }));
}

// ---- cast ----------------------------------------------------------------------------------------------------------------

TEST_F (TTALImport, theCastMayStandBeforeTheEventsOrBehindThem)
{
    const auto events = block ("events", event ({ { "characterId", "\"c1\"" } }));
    const auto cast = block ("characters", R"("c1": {"name": "ANNA"})");
    import ("{" + cast + "," + events + "," + meta() + "}");
    const auto before = textsOf (importer->rows);
    EXPECT_EQ (message, "");
    EXPECT_EQ (cell (0, 3), "ANNA");
    import ("{" + events + "," + meta() + "," + cast + "}");
    EXPECT_EQ (message, "");
    EXPECT_EQ (textsOf (importer->rows), before);
}

TEST_F (TTALImport, anEmptyListIsFine)
{
    import (file (""));
    EXPECT_EQ (message, "");
    EXPECT_TRUE (importer->rows.empty());
    EXPECT_EQ (importer->columnMap.size(), 8u);
}

TEST_F (TTALImport, anEmptyCastIsFineUntilAnEventNamesACharacter)
{
    import (file (event ({}), ""));
    EXPECT_EQ (message, "");
    ASSERT_NE (importer->characterMap, nullptr);
    EXPECT_TRUE (importer->characterMap->characters().empty());

    import (file (event ({ { "characterId", "\"c1\"" } }), ""));
    EXPECT_EQ (message, "An event uses a character with ID c1 but no character with this ID exists");
    ASSERT_NE (importer->characterMap, nullptr);
    EXPECT_TRUE (importer->characterMap->characters().empty());
}

TEST_F (TTALImport, nameAndIdentifierMayBeOfAnyKind)
{
    import (file (event ({ { "characterId", "12" } }), R"("12": {"name": 7})"));
    EXPECT_EQ (message, "");
    EXPECT_EQ (cell (0, 3), "7");
}

// ---- read again ----------------------------------------------------------------------------------------------------------

TEST_F (TTALImport, readAgainTheRowsComeOnceMoreWithANewCast)
{
    importFile ("ttal/three_lines.ttal");
    const auto cast = importer->characterMap;
    const auto once = textsOf (importer->rows);
    importer->parse (message, TextEncodingWindows1252);
    EXPECT_EQ (message, "");
    EXPECT_NE (importer->characterMap, cast);
    auto twice = once;
    twice.insert (twice.end(), once.begin(), once.end());
    EXPECT_EQ (textsOf (importer->rows), twice);
}

TEST_F (TTALImport, whatTheMessageHeldBeforeStays)
{
    message = "Before. ";
    const TTALEventFileImporter failed ((folder.path / "missing.ttal").string(), message, {});
    EXPECT_EQ (message, "Before. The file could not be opened.");
}

// ---- into a project ------------------------------------------------------------------------------------------------------

TEST_F (TTALImport, rowsBecomeEventsThatKeepTheFilesIdentifiers)
{
    const auto time = timeInfoAt ("00:00:00:00");
    importFile ("ttal/three_lines.ttal", time);
    const auto cast = std::make_shared<ADRCharacterMap>();
    const auto result = EventRowReader (time, cast).read (*importer);
    EXPECT_TRUE (result.problems.empty());
    ASSERT_EQ (result.events.size(), 3u);
    EXPECT_EQ (result.events[0]->getInPointFrameIndex(), 90050);
    EXPECT_EQ (result.events[0]->getEndFrameIndex(), 90100);
    EXPECT_EQ (result.events[0]->getCharacterID(), "c-anna");
    EXPECT_EQ (looksOf (result.events[0]->getText()), (Texts { "0-8 bold", "9-14 italic" }));
    EXPECT_FALSE (result.events[0]->isForcedNarrative());
    EXPECT_TRUE (result.events[2]->isForcedNarrative());
    EXPECT_EQ (result.events[2]->getForcedNarrativeRegion(), ForcedNarrativeRegionTop);
}
