// SPDX-License-Identifier: GPL-3.0-only
#include "export/EventTTALExporter.h"

#include "core/system/SystemUtility.h"
#include "core/timecode/TCToolbox.h"
#include "export/ExportSupport.h"
#include "export/GoldenFiles.h"
#include "export/frame/EventExporterFactory.h"
#include "support/CueLists.h"
#include "support/NotificationCounter.h"
#include "support/UndoHistory.h"

#include <limits>

using namespace ExportSupport;
using namespace ZEP::Core;

namespace
{

using Names = std::vector<std::string>;

std::string written (const juce::var& value) { return juce::JSON::toString (value, true).toStdString(); }

class TTALExportTest : public ExportTest
{
protected:
    TTALExportTest()
    {
        settings->exportType = EventExportTypeTTAL;
        settings->timelineSettings.language = "de-DE";
        exporter.delegate = &progress;
    }

    juce::var read (const std::string& name = "Reel 2.ttal") const
    {
        return juce::JSON::parse (text (folder.bytes (name)));
    }

    /** The object of the only event of a list by timecode. */
    juce::var written (const std::shared_ptr<Event>& event)
    {
        settings->events = { event };
        EXPECT_EQ (exporter.exportEventsByTimecode(), "");
        return read()["events"].getProperty (event->getUuid(), {});
    }

    /** The cue numbers of a file in their order. */
    Names cueNumbers (const std::string& name = "Reel 2.ttal") const
    {
        Names numbers;
        const auto root = read (name);
        for (const auto& event : root["events"].getDynamicObject()->getProperties())
            numbers.push_back (event.value["cue"].toString().toStdString());
        return numbers;
    }

    static Names membersOf (const juce::var& object)
    {
        Names names;
        for (const auto& member : object.getDynamicObject()->getProperties())
            names.push_back (member.name.toString().toStdString());
        return names;
    }

    std::string rateNameAt (const TimeInfo& info)
    {
        return exporter.buildMetaBlock (std::make_shared<TimeInfo> (info), {})["fps"]
            .toString()
            .toStdString();
    }

    void giveCharacters()
    {
        addCharacter ("1", "Cora");
        addCharacter ("2", "Ann");
        settings->eventsByCharacter["1"] = events ({ { "C1", 0, 25, "1" } });
        settings->eventsByCharacter["2"] = events ({ { "A1", 100, 125, "2" }, { "A2", 50, 75, "2" } });
        settings->eventsByCharacter["none"] = events ({ { "N1" }, { "N2" } });
    }

    EventTTALExporter exporter { settings };
};

const std::string nobody = "00000000-0000-0000-0000-000000000000";

} // namespace

TEST_F (TTALExportTest, isMadeByTheFactory)
{
    const auto made = EventExporterFactory::eventExporter (settings);
    ASSERT_NE (dynamic_cast<EventTTALExporter*> (made.get()), nullptr);
    EXPECT_EQ (made->type(), EventExportTypeTTAL);
}

// ---- the file ------------------------------------------------------------------------------------------------------------

TEST_F (TTALExportTest, aFileHasItsBlocksAndMembersInTheOrderOfTheFormat)
{
    addCharacter ("a", "Ann");
    settings->events = { event ({ "A1", 100, 150, "a", "Line", "Note" }) };
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    const auto id = settings->events[0]->getUuid().toStdString();

    EXPECT_EQ (
        ::written (read()),
        R"({"meta": {"tool": "Dublane )" + SystemUtility::executableVersion().toStdString()
            + R"(", "fps": "FPS_2500", "lang": "de-DE", "timeFormat": "FRAMES"}, "events": {")" + id
            + R"(": {"start": 100, "end": 151, "cue": "A1", "txt": "Line", "styles": [], "characterId": "a", )"
            + R"("dubAnnotations": {"types": [], "text": "Note"}}}, "characters": {"a": {"name": "Ann"}}})");
}

TEST_F (TTALExportTest, aListIsAsItsGoldenFile)
{
    SystemUtility::Configuration program;
    program.executableVersion = "1.0";
    SystemUtility::configure (program);
    timeInfo->setFirstFrameOfAction (TCToolbox::tcTimeFromString ("01:00:00:00"));
    addCharacter ("c1", "ANNA");
    addCharacter ("c2", "Frau Größe");
    const auto first =
        event ({ "AN 1", oneHour + 50, oneHour + 100, "c1", "Good evening.", "softly\n\"really\"" });
    RichTextString words (text ("Schöne Grüße\nvon der Straße - für 5 € 🎬"));
    words.setFont ({ 0, 6 }, juce::Font().boldened());
    words.setFont ({ 7, 12 }, juce::Font().italicised());
    first->setText (words);
    const auto sign = event ({ "", oneHour + 120, oneHour + 150, "", "HARBOUR" });
    sign->setIsForcedNarrative (true);
    sign->setForcedNarrativeRegion (ForcedNarrativeRegionTop);
    settings->events = { first, sign, event ({ "FG 2", oneHour - 25, oneHour, "c2" }, EventTypeMarker) };

    for (std::size_t i = 0; i < settings->events.size(); ++i)
        ZEP::Overmarks::Testing::setField (*settings->events[i], "uuid", "event-" + juce::String (i + 1));

    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    SystemUtility::configure ({});
    expectGoldenFile ("ttal/list.ttal", folder.bytes ("Reel 2.ttal"));
}

TEST_F (TTALExportTest, aFileIsWrittenAMemberALine)
{
    settings->events = { event ({ "A1" }) };
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_TRUE (folder.bytes ("Reel 2.ttal").starts_with ("{\r\n  \"meta\": {\r\n    \"tool\": \"Dublane "));
}

TEST_F (TTALExportTest, textOfAnyKindComesBack)
{
    const std::string words = "Größe \"quoted\" 少女\nsecond line\t\\ /end";
    EXPECT_EQ (written (event ({ words, 0, 25, "", words, words }))["txt"].toString().toStdString(), words);
    EXPECT_EQ (cueNumbers(), Names { words });
}

TEST_F (TTALExportTest, withoutEventsNoFileIsMadeAndAnOlderOneStays)
{
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (folder.names(), Names());
    folder.write ("Reel 2.ttal", "older");
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (folder.bytes ("Reel 2.ttal"), "older");
}

TEST_F (TTALExportTest, anOlderFileIsReplaced)
{
    folder.write ("Reel 2.ttal", std::string (100000, 'x'));
    settings->events = events ({ { "A1" } });
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (cueNumbers(), Names { "A1" });
}

TEST_F (TTALExportTest, aFolderThatIsNotThereIsTold)
{
    timeInfo->setFirstFrameOfAction (TCToolbox::tcTimeFromString ("01:00:00:00"));
    settings->outputDirectory = folder.directory() + "/missing";
    settings->events = events ({ { "A1", oneHour + 50, oneHour + 75 } });
    EXPECT_EQ (exporter.exportEventsByTimecode(),
               "Error writing file to " + folder.directory() + "/missing/Reel 2.ttal");
    EXPECT_EQ (settings->events[0]->getInPointFrameIndex(), oneHour + 50);
    EXPECT_EQ (settings->events[0]->getEndFrameIndex(), oneHour + 75);
}

TEST_F (TTALExportTest, aListByTimecodeTellsNoProgress)
{
    settings->events = events ({ { "A1" } });
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_TRUE (progress.reports.empty());
}

// ---- meta ----------------------------------------------------------------------------------------------------------------

TEST_F (TTALExportTest, everyRateHasItsName)
{
    const std::vector<std::pair<std::string, std::string>> names {
        { "23.976", "FPS_2397" }, { "24", "FPS_2400" },      { "25", "FPS_2500" },
        { "29.97", "FPS_2997" },  { "29.97df", "FPS_2997" }, { "30", "FPS_3000" },
        { "30df", "FPS_3000" },   { "48", "unsupported" },   { "50", "FPS_5000" },
        { "59.94", "FPS_5994" },  { "59.94df", "FPS_5994" }, { "60", "FPS_6000" },
    };

    for (const auto& [rate, name] : names)
        EXPECT_EQ (rateNameAt (TimeInfo (*TCToolbox::tcDefForRateName (rate))), name) << rate;
}

TEST_F (TTALExportTest, aRateThatIsNoneIsUnsupported)
{
    EXPECT_EQ (rateNameAt (TimeInfo ({ false, 25, 0, 25, false })), "unsupported");
    EXPECT_EQ (rateNameAt (TimeInfo ({ false, 0, 0, 25, false })), "unsupported");
    EXPECT_EQ (rateNameAt (TimeInfo ({ false, 12, 1, 12, false })), "unsupported");
    EXPECT_EQ (exporter.buildMetaBlock (nullptr, "x")["fps"].toString(), "FPS_2500");
}

// ---- times ---------------------------------------------------------------------------------------------------------------

TEST_F (TTALExportTest, framesAreCountedFromTheFirstFrameOfAction)
{
    timeInfo->setFirstFrameOfAction (TCToolbox::tcTimeFromString ("01:00:00:00"));
    const auto cue = event ({ "A1", oneHour + 50, oneHour + 75 });
    const auto object = written (cue);
    EXPECT_EQ (static_cast<int> (object["start"]), 50);
    EXPECT_EQ (static_cast<int> (object["end"]), 76);
}

TEST_F (TTALExportTest, theOriginItselfPlaysNoPart)
{
    timeInfo->timeOrigin = TCToolbox::tcTimeFromString ("10:00:00:00");
    EXPECT_EQ (static_cast<int> (written (event ({ "A1", 50, 75 }))["start"]), 50);
    timeInfo->setFirstFrameOfAction (TCToolbox::tcTimeFromString ("10:00:01:00"));
    EXPECT_EQ (static_cast<int> (written (event ({ "A1", 50, 75 }))["start"]), 25);
}

TEST_F (TTALExportTest, aFirstFrameOfActionBeforeTheOriginMovesEventsLater)
{
    timeInfo->timeOrigin = TCToolbox::tcTimeFromString ("01:00:00:00");
    timeInfo->setFirstFrameOfAction (TCToolbox::tcTimeFromString ("00:59:59:00"));
    const auto object = written (event ({ "A1", 50, 75 }));
    EXPECT_EQ (static_cast<int> (object["start"]), 75);
    EXPECT_EQ (static_cast<int> (object["end"]), 101);
}

TEST_F (TTALExportTest, inDropFrameTheLabelsThatAreLeftOutAreNoFrames)
{
    *timeInfo = TimeInfo (*TCToolbox::tcDefForRateName ("29.97df"));
    timeInfo->setFirstFrameOfAction (TCToolbox::tcTimeFromString ("00:01:00;02"));
    EXPECT_EQ (static_cast<int> (written (event ({ "A1", 1850, 1900 }))["start"]), 50);
    timeInfo->setFirstFrameOfAction (TCToolbox::tcTimeFromString ("00:10:00;00"));
    EXPECT_EQ (static_cast<int> (written (event ({ "A1", 18000, 18050 }))["start"]), 18);
}

TEST_F (TTALExportTest, anUnsetEndIsWrittenAsItStands)
{
    timeInfo->setFirstFrameOfAction (TCToolbox::tcTimeFromString ("00:00:04:00"));
    const auto untimed = Event::create (EventTypeADRCue, timeInfo, -1, -1, -1.0f, 3);
    const auto object = written (untimed);
    EXPECT_EQ (static_cast<int> (object["start"]), -101);
    EXPECT_EQ (static_cast<int> (object["end"]), -100);
}

TEST_F (TTALExportTest, afterwardsEveryEventHasTheIndicesItHad)
{
    timeInfo->setFirstFrameOfAction (TCToolbox::tcTimeFromString ("01:00:00:00"));
    giveCharacters();
    auto all = settings->eventsByCharacter["2"];
    all.push_back (Event::create (EventTypeADRCue, timeInfo, -1, -1, -1.0f, 3));
    settings->eventsByCharacter["2"] = all;
    std::vector<int> before;
    for (const auto& each : all)
        before.insert (before.end(), { each->getStartFrameIndex(), each->getInPointFrameIndex(),
                                       each->getEndFrameIndex() });

    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    std::vector<int> after;
    for (const auto& each : all)
        after.insert (after.end(),
                      { each->getStartFrameIndex(), each->getInPointFrameIndex(), each->getEndFrameIndex() });
    EXPECT_EQ (after, before);
}

TEST_F (TTALExportTest, anExportSwitchesUndoAndNotificationsOn)
{
    settings->events = events ({ { "A1" } });
    settings->events[0]->setNotificationsSuppressed (true);
    ASSERT_TRUE (settings->events[0]->isUndoBypassed());
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_FALSE (settings->events[0]->isUndoBypassed());
    EXPECT_FALSE (settings->events[0]->areNotificationsSuppressed());
}

TEST_F (TTALExportTest, anExportTellsNobodyAndMakesNoUndoStep)
{
    using namespace ZEP::Overmarks::Testing;
    timeInfo->setFirstFrameOfAction (TCToolbox::tcTimeFromString ("01:00:00:00"));
    settings->events = events ({ { "A1", oneHour, oneHour + 25 } });
    settings->events[0]->setUndoBypass (false);
    const auto steps = undoSteps();
    const EventNews news;
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (news.count(), 0);
    EXPECT_EQ (undoSteps(), steps);

    settings->events[0]->setDone (true); // both are heard of when there is something to tell
    EXPECT_EQ (news.count(), 1);
    EXPECT_EQ (undoSteps(), steps + 1);
    undoManager().clearUndoHistory();
}

TEST_F (TTALExportTest, eventsWithoutTimeInfoAreWrittenAsTheyStand)
{
    const auto cue = event ({ "A1", 50, 75 });
    cue->setTimeInfo (nullptr);
    EXPECT_EQ (static_cast<int> (written (cue)["start"]), 50);
    EXPECT_EQ (read()["meta"]["fps"].toString(), "FPS_2500");
}

TEST_F (TTALExportTest, theEventsBlockTakesTheIndicesAsTheyAre)
{
    timeInfo->setFirstFrameOfAction (TCToolbox::tcTimeFromString ("01:00:00:00"));
    const auto cue = event ({ "A1", 50, 75 });
    EXPECT_EQ (
        static_cast<int> (exporter.buildEventsBlock ({ cue })[juce::Identifier (cue->getUuid())]["start"]),
        50);
}

// ---- events --------------------------------------------------------------------------------------------------------------

TEST_F (TTALExportTest, aForcedNarrativeHasTypeAndRegionInsteadOfStyles)
{
    const auto cue = event ({ "A1" });
    RichTextString bold ("Bold");
    bold.setFont (juce::Font().boldened());
    cue->setText (bold);
    cue->setIsForcedNarrative (true);
    cue->setForcedNarrativeRegion (ForcedNarrativeRegionTop);
    const auto object = written (cue);
    EXPECT_EQ (membersOf (object),
               (Names { "start", "end", "cue", "txt", "type", "rgn", "characterId", "dubAnnotations" }));
    EXPECT_EQ (object["type"].toString(), "fn");
    EXPECT_EQ (object["rgn"].toString(), "top");
}

TEST_F (TTALExportTest, regionsHaveNames)
{
    const std::vector<std::pair<int, std::string>> names {
        { 0, "bottom" }, { 1, "top" }, { 2, "left" }, { 3, "right" }, { 4, "bottom" }, { -1, "bottom" }
    };
    const auto cue = event ({ "A1" });
    for (const auto& [region, name] : names)
    {
        cue->setForcedNarrativeRegion (static_cast<ForcedNarrativeRegion> (region));
        EXPECT_EQ (exporter.TTALStringForForcedNarrativeRegion (cue).toStdString(), name);
    }
}

TEST_F (TTALExportTest, boldAndItalicRunsAreStyles)
{
    RichTextString words ("bold italic both underlined plain");
    words.setFont ({ 0, 4 }, juce::Font().boldened());
    words.setFont ({ 5, 11 }, juce::Font().italicised());
    words.setFont ({ 12, 16 }, juce::Font().boldened().italicised());
    juce::Font underlined;
    underlined.setUnderline (true);
    words.setFont ({ 17, 27 }, underlined);
    const auto cue = event ({ "A1" });
    cue->setText (words);
    EXPECT_EQ (::written (written (cue)["styles"]),
               R"([{"from": 0, "to": 4, "type": "bold"}, {"from": 5, "to": 11, "type": "italic"}, )"
               R"({"from": 12, "to": 16, "type": "bold"}])");
}

TEST_F (TTALExportTest, aPlainTextHasAnEmptyListOfStyles)
{
    EXPECT_EQ (::written (written (event ({ "A1", 0, 25, "", "plain" }))["styles"]), "[]");
    EXPECT_EQ (::written (written (event ({ "A1" }))["styles"]), "[]");
}

TEST_F (TTALExportTest, anEventWithoutACharacterNamesNobody)
{
    EXPECT_EQ (written (event ({ "A1" }))["characterId"].toString().toStdString(), nobody);
    EXPECT_EQ (written (event ({ "A1", 0, 25, "unknown" }))["characterId"].toString().toStdString(), nobody);
    Event::setADRCharacterMap (nullptr);
    EXPECT_EQ (written (event ({ "A1", 0, 25, "a" }))["characterId"].toString().toStdString(), nobody);
    EXPECT_EQ (::written (read()["characters"]), "{}");
}

TEST_F (TTALExportTest, charactersOfOneNameAreOneCharacter)
{
    addCharacter ("a", "Ann");
    addCharacter ("b", "Ann");
    EXPECT_EQ (written (event ({ "A1", 0, 25, "b" }))["characterId"].toString(), "a");
    EXPECT_EQ (::written (read()["characters"]), R"({"a": {"name": "Ann"}})");
}

TEST_F (TTALExportTest, theWholeCastIsInEveryFile)
{
    giveCharacters();
    addCharacter ("0", "Zed");
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    for (const auto& name : folder.names())
        EXPECT_EQ (::written (read (name)["characters"]),
                   R"({"1": {"name": "Cora"}, "2": {"name": "Ann"}, "0": {"name": "Zed"}})")
            << name;
}

TEST_F (TTALExportTest, noEventTakesThePlaceOfAnother)
{
    auto twin = event ({ "B" });
    const auto nameless = std::make_shared<Event>();
    settings->events = { event ({ "A" }), twin, twin, nameless, nameless };
    ASSERT_TRUE (nameless->getUuid().isEmpty());
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (cueNumbers(), (Names { "A", "B", "B", "", "" }));
    EXPECT_EQ (membersOf (read()["events"])[1], twin->getUuid().toStdString());
}

TEST_F (TTALExportTest, aLongListIsWrittenInItsOrder)
{
    Names expected;
    for (int i = 0; i < 1000; ++i)
    {
        expected.push_back ("R" + std::to_string (i));
        settings->events.push_back (event ({ expected.back(), i * 10, i * 10 + 5 }));
    }
    EXPECT_EQ (exporter.exportEventsByTimecode(), "");
    EXPECT_EQ (cueNumbers(), expected);
}

// ---- by character --------------------------------------------------------------------------------------------------------

TEST_F (TTALExportTest, eachCharacterHasAFileAndSoDoEventsWithoutOne)
{
    giveCharacters();
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (folder.names(), (Names { "Reel 2_<no char>.ttal", "Reel 2_Ann.ttal", "Reel 2_Cora.ttal" }));
    EXPECT_EQ (cueNumbers ("Reel 2_<no char>.ttal"), (Names { "N1", "N2" }));
    EXPECT_EQ (cueNumbers ("Reel 2_Ann.ttal"), (Names { "A1", "A2" }));
    EXPECT_EQ (cueNumbers ("Reel 2_Cora.ttal"), Names { "C1" });
    const auto noChar = read ("Reel 2_<no char>.ttal")["events"];
    for (const auto& each : noChar.getDynamicObject()->getProperties())
        EXPECT_EQ (each.value["characterId"].toString().toStdString(), nobody);
}

TEST_F (TTALExportTest, aSlashInANameIsAnUnderscoreInTheFileName)
{
    addCharacter ("1", "Ann/Cora");
    settings->eventsByCharacter["1"] = events ({ { "A1", 0, 25, "1" } });
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (folder.names(), Names { "Reel 2_Ann_Cora.ttal" });
    EXPECT_EQ (read ("Reel 2_Ann_Cora.ttal")["characters"]["1"]["name"].toString(), "Ann/Cora");
}

TEST_F (TTALExportTest, progressIsToldAfterEachFileAlsoOneWithoutEvents)
{
    giveCharacters();
    settings->eventsByCharacter["empty"] = {};
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (progress.reports,
               (std::vector<std::pair<int, int>> { { 1, 4 }, { 2, 4 }, { 3, 4 }, { 4, 4 } }));
    EXPECT_EQ (progress.senders[0], &exporter);
    EXPECT_EQ (folder.names().size(), 3u);
}

TEST_F (TTALExportTest, withoutADelegateNobodyIsTold)
{
    giveCharacters();
    exporter.delegate = nullptr;
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (folder.names().size(), 3u);
}

TEST_F (TTALExportTest, theFirstFileThatFailsEndsTheRun)
{
    giveCharacters();
    settings->outputDirectory = folder.directory() + "/missing";
    EXPECT_EQ (exporter.exportEventsByCharacter(),
               "Error writing file to " + folder.directory() + "/missing/Reel 2_<no char>.ttal");
    EXPECT_EQ (progress.reports, (std::vector<std::pair<int, int>> { { 1, 3 } }));
}

TEST_F (TTALExportTest, aLaterFileThatFailsEndsTheRunThere)
{
    giveCharacters();
    std::filesystem::create_directory (folder.path / "Reel 2_Ann.ttal");
    EXPECT_EQ (exporter.exportEventsByCharacter(),
               "Error writing file to " + folder.directory() + "/Reel 2_Ann.ttal");
    EXPECT_EQ (progress.reports, (std::vector<std::pair<int, int>> { { 1, 3 }, { 2, 3 } }));
    EXPECT_EQ (folder.names(), (Names { "Reel 2_<no char>.ttal", "Reel 2_Ann.ttal" }));
}

TEST_F (TTALExportTest, oneFileForAllGoesThroughTheIdentifiers)
{
    giveCharacters();
    settings->options[EventExportCombineIntoSingleFileKey] = true;
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (folder.names(), Names { "Reel 2.ttal" });
    EXPECT_EQ (cueNumbers(), (Names { "C1", "A1", "A2", "N1", "N2" }));
    EXPECT_TRUE (progress.reports.empty());
}

TEST_F (TTALExportTest, nobodyToWriteForMeansNoFile)
{
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    settings->options[EventExportCombineIntoSingleFileKey] = true;
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (folder.names(), Names());
}

TEST_F (TTALExportTest, aMissingOptionEndsTheExport)
{
    settings->options.clear();
    EXPECT_THROW (exporter.exportEventsByCharacter(), std::out_of_range);
}

TEST_F (TTALExportTest, anExportCannotBeCancelled)
{
    giveCharacters();
    exporter.cancel();
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (folder.names().size(), 3u);
}
