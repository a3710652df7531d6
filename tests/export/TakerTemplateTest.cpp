// SPDX-License-Identifier: GPL-3.0-only
#include "export/TakerTemplate.h"

#include "export/EventCSVExporter.h"
#include "export/ExportSupport.h"

using namespace ExportSupport;

namespace
{

const std::string header = "Take,Sub,In,Out,Sprecher,Marker,Spur,Anmerkung,Duration";

class TakerExportTest : public ExportTest
{
protected:
    TakerExportTest()
    {
        settings->options[EventExportCSVTemplateKey] = 1;
        exporter.askToContinue = [this] (const juce::String& title, const juce::String& question)
        {
            questions.emplace_back (title.toStdString(), question.toStdString());
            return answer;
        };
    }

    std::string exported (const Events& list)
    {
        settings->events = list;
        EXPECT_EQ (exporter.exportEventsByTimecode(), "");
        return folder.bytes ("Reel 2.csv");
    }

    /** As many cues of one number as asked for, a second apart, each a second long. */
    Events subcues (const std::string& cueNumber, int number) const
    {
        std::vector<Line> lines;

        for (int i = 0; i < number; ++i)
            lines.push_back ({ cueNumber, oneHour + i * 25, oneHour + (i + 1) * 25 });

        return events (lines);
    }

    bool answer = true;
    std::vector<std::pair<std::string, std::string>> questions;
    EventCSVExporter exporter { settings };
};

/** A cue that comes last in list and file, so that the rows before it have their line breaks. */
const Line lastCue { "99", 2 * oneHour, 2 * oneHour + 25 };
const std::string lastRow = "\n\"99\",\"\",\"02:00:00:00\",\"02:00:01:00\",\"\",,2,\"\",\"00:00:01:00\",";

struct Split
{
    const char* cueNumber;
    const char* take;
    const char* sub;
};

class CueNumbers : public ::testing::TestWithParam<Split>
{
};

TEST_P (CueNumbers, areSplitAtTheLastBlankBeforeASubcuesLetter)
{
    const auto [take, sub] = splitCueNumber (GetParam().cueNumber);
    EXPECT_EQ (take, GetParam().take);
    EXPECT_EQ (sub, GetParam().sub);
}

INSTANTIATE_TEST_SUITE_P (
    TakerTemplate, CueNumbers,
    ::testing::Values (Split { "12 A", "12", "A" }, Split { "12 34", "12 34", "" },
                       Split { "1 2 X", "12", "X" }, Split { "12 S1", "12", "S1" }, Split { "12", "12", "" },
                       Split { "12A", "12A", "" }, Split { "12 a", "12 a", "" }, Split { "", "", "" },
                       Split { "A", "A", "" }, Split { "12 A ", "12 A ", "" }, Split { "12 ~", "12 ~", "" },
                       Split { "~1 2~ A", "~12~", "A" }, Split { "12  A", "12", "A" },
                       Split { " A", "", "A" }, Split { "A 12", "A 12", "" }, Split { "12 B", "12 B", "" },
                       Split { "\"1 2\" A", "\"1 2\"", "A" }, Split { "\"12 A", "\"12 A", "" }));

} // namespace

TEST_F (TakerExportTest, aCueIsARowInISO88591)
{
    addCharacter ("a", "Zo\xc3\xab \"Z\"", "ZO", "Mary");
    settings->options[EventExportCSVDelimiterKey] = 3;
    EXPECT_EQ (
        exported (
            { event ({ "12 A", oneHour, oneHour + 63, "a", "words", "a \"loud\"\nscene \xe2\x82\xac" }) }),
        header
            + "\n\"12\",\"A\",\"01:00:00:00\",\"01:00:02:13\",\"Zo\xeb \"\"Z\"\"\",,1,\"a loud scene ?\",\"00:00:02:13\",");
    EXPECT_EQ (exporter.delimiter, 1);
    EXPECT_EQ (exporter.textEncoding, 6);
}

TEST_F (TakerExportTest, theEncodingStaysForTheExportersLaterFiles)
{
    exported ({});
    settings->options[EventExportCSVTemplateKey] = 2;
    EXPECT_EQ (exported ({}), "TakeNr;In;Out;Typ;Spur;Band;Marker1;Marker2;Rolle;Band (Rolle);Text\n");
}

TEST_F (TakerExportTest, theHeaderNamesItsKeys)
{
    EXPECT_EQ (exporter.csvHeaderString().toStdString(), header + "\n");
    EXPECT_EQ (
        exporter.columnKeys,
        (std::vector<juce::String> { "CueNumber", "DSTakerSub", "StartTCString", "EndTCString", "CharacterID",
                                     "DSTakerMarker", "DSTakerTrack", "Notes", "DurationTCString" }));
}

TEST_F (TakerExportTest, anEmptyListIsAHeaderWithoutItsLineBreak) { EXPECT_EQ (exported ({}), header); }

TEST_F (TakerExportTest, cuesOfOneNumberShareARow)
{
    EXPECT_EQ (
        exported (events ({ { "7", oneHour, oneHour + 50 }, { "7", oneHour + 125, oneHour + 200 } })),
        header
            + "\n\"7\",\"\",\"01:00:00:00\",\"01:00:08:00\",\"\",\"M1 01:00:05:00\",1,\"\",\"00:00:02:00\",");
}

TEST_F (TakerExportTest, aSharedRowTellsOfItsFirstCue)
{
    addCharacter ("a", "Ann \"A\"**");
    addCharacter ("b", "Bob");
    auto list = events ({ { "7 X", oneHour, oneHour + 50, "a", "", "**say \"a\"\r\nb" },
                          { "7 X", oneHour + 25, oneHour + 40, "b", "", "no" } });
    EXPECT_EQ (exported (list),
               header
                   + "\n\"7\",\"X\",\"01:00:00:00\",\"01:00:02:00\",\"Ann \"\"A\"\"**\",\"M1 01:00:01:00\",1,"
                     "\"**say \"a\"\r b\",\"00:00:02:00\",");
}

TEST_F (TakerExportTest, quotesOfACueNumberAreDoubledInARowOfItsOwnOnly)
{
    EXPECT_NE (exported (events ({ { "7\"", 0, 25 } })).find ("\n\"7\"\"\",\"\","), std::string::npos);
    EXPECT_NE (exported (events ({ { "7\"", 0, 25 }, { "7\"", 50, 75 } })).find ("\n\"7\"\",\"\","),
               std::string::npos);
}

TEST_F (TakerExportTest, aCueAtTheSharedStartTakesNoMarker)
{
    EXPECT_EQ (
        exported (events ({ { "7", 0, 50 }, { "7", 0, 75 }, { "7", 25, 50 } })),
        header
            + "\n\"7\",\"\",\"00:00:00:00\",\"00:00:03:00\",\"\",\"M1 00:00:01:00\",1,\"\",\"00:00:02:00\",");
}

TEST_F (TakerExportTest, anEarlierCueMovesTheStartAndTakesNoMarker)
{
    EXPECT_EQ (
        exported (events ({ { "7", 50, 75 }, { "7", 100, 125 }, { "7", 25, 50 }, { "7", 50, 60 } })),
        header
            + "\n\"7\",\"\",\"00:00:01:00\",\"00:00:05:00\",\"\",\"M1 00:00:04:00/M2 00:00:02:00\",1,\"\",\"00:00:01:00\",");
}

TEST_F (TakerExportTest, theSharedTimeGoesFromTheEarliestToTheLatestByTheClock)
{
    constexpr int second = 25, minute = 60 * second, hour = 60 * minute;
    const std::vector<std::pair<int, int>> moments { { 5, 10 },
                                                     { second - 1, second },
                                                     { 59 * second, minute },
                                                     { minute - 1, minute },
                                                     { 2 * minute + 1, 10 * minute },
                                                     { 59 * minute + 59 * second, hour },
                                                     { hour - 1, hour },
                                                     { 9 * hour + 59 * minute, 10 * hour + 1 } };

    for (const auto& [earlier, later] : moments)
    {
        const Line one { "7", earlier, earlier }, other { "7", later, later };
        const auto clock = [this] (int frame) {
            return event ({ "7", frame, frame })->getStartTCString().toStdString();
        };
        const auto span = "\"" + clock (earlier) + "\",\"" + clock (later) + "\"";
        EXPECT_NE (exported (events ({ one, other })).find (span), std::string::npos) << span;
        EXPECT_NE (exported (events ({ other, one })).find (span), std::string::npos) << span;
    }
}

TEST_F (TakerExportTest, aCueWithoutATimeMovesNeitherStartNorEnd)
{
    EXPECT_EQ (
        exported (events ({ { "7", 50, 75 }, { "7", -1, -1 } })),
        header
            + "\n\"7\",\"\",\"00:00:02:00\",\"00:00:03:00\",\"\",\"M1 --:--:--:--\",1,\"\",\"00:00:01:00\",");
    EXPECT_EQ (
        exported (events ({ { "7", -1, -1 }, { "7", 50, 75 } })),
        header
            + "\n\"7\",\"\",\"00:00:02:00\",\"00:00:03:00\",\"\",\"M1 --:--:--:--\",1,\"\",\"00:00:00:00\",");
}

TEST_F (TakerExportTest, aDropFrameTimeNeverLooksLikeTheSharedStart)
{
    timeInfo->tcDef = { true, 30000, 1001, 30, false };
    EXPECT_EQ (
        exported (events ({ { "7", 0, 30 }, { "7", 60, 90 } })),
        header
            + "\n\"7\",\"\",\"00:00:00:00\",\"00:00:03:00\",\"\",\"M1 00:00:00;00/M2 00:00:02;00\",1,\"\",\"00:00:01:00\",");
}

TEST_F (TakerExportTest, rowsFollowTheTextOfTheNumbersAndAlternateTheirTracks)
{
    auto list = events ({ { "10", 0, 25 }, { "2", 25, 50 }, { "3", 50, 75 } });
    EXPECT_EQ (exported (list),
               header
                   + "\n\"10\",\"\",\"00:00:00:00\",\"00:00:01:00\",\"\",,1,\"\",\"00:00:01:00\","
                     "\n\"2\",\"\",\"00:00:01:00\",\"00:00:02:00\",\"\",,2,\"\",\"00:00:01:00\","
                     "\n\"3\",\"\",\"00:00:02:00\",\"00:00:03:00\",\"\",,1,\"\",\"00:00:01:00\",");
}

TEST_F (TakerExportTest, theListsLastCueEndsItsRowWithoutABreakWhereverItStands)
{
    auto list = events ({ { "2", 0, 25 }, { "10", 25, 50 } });
    EXPECT_EQ (exported (list),
               header
                   + "\n\"10\",\"\",\"00:00:01:00\",\"00:00:02:00\",\"\",,1,\"\",\"00:00:01:00\","
                     "\"2\",\"\",\"00:00:00:00\",\"00:00:01:00\",\"\",,2,\"\",\"00:00:01:00\",");
}

TEST_F (TakerExportTest, theMapHasTheCuesOfEachNumberInListOrder)
{
    const auto list = events ({ { "2" }, { "10" }, { "2" }, { "2" } });
    exporter.createCueBySubcueMap (list);
    exporter.createCueBySubcueMap (list);
    EXPECT_EQ (exporter.maxSubcueCount, 2);
    ASSERT_EQ (exporter.cueBySubcueMap.size(), 2u);
    EXPECT_EQ (exporter.cueBySubcueMap.at ("2"), (Events { list[0], list[2], list[3] }));
    EXPECT_EQ (exporter.cueBySubcueMap.at ("10"), Events { list[1] });
    exporter.createCueBySubcueMap ({});
    EXPECT_EQ (exporter.maxSubcueCount, 0);
    EXPECT_TRUE (exporter.cueBySubcueMap.empty());
}

// ---- more subcues than markers -----------------------------------------------------------------------------------------

TEST_F (TakerExportTest, fourSubcuesBeyondTheFirstFit)
{
    auto list = subcues ("7", 5);
    list.push_back (event (lastCue));
    EXPECT_EQ (exported (list),
               header
                   + "\n\"7\",\"\",\"01:00:00:00\",\"01:00:05:00\",\"\","
                     "\"M1 01:00:01:00/M2 01:00:02:00/M3 01:00:03:00/M4 01:00:04:00\",1,\"\",\"00:00:01:00\","
                   + lastRow);
    EXPECT_TRUE (questions.empty());
}

TEST_F (TakerExportTest, aSixthCueLosesItsMarkerButWidensTheRow)
{
    auto list = subcues ("7", 6);
    list.push_back (event (lastCue));
    EXPECT_EQ (exported (list),
               header
                   + "\n\"7\",\"\",\"01:00:00:00\",\"01:00:06:00\",\"\","
                     "\"M1 01:00:01:00/M2 01:00:02:00/M3 01:00:03:00/M4 01:00:04:00\",1,\"\",\"00:00:01:00\","
                   + lastRow);
    ASSERT_EQ (questions.size(), 1u);
    EXPECT_EQ (questions[0].first, "DS ADR CSV Export");
    EXPECT_EQ (
        questions[0].second,
        "There are some cues in your event list with more than four subcues: \n\n- 7\n\nDSTaker can only handle four Markers "
        "per cue number so these cues will not be represented correctly. \n\nDo you want to continue?");
}

TEST_F (TakerExportTest, aSixthCueAtTheSharedStartOverflowsToo)
{
    auto list = subcues ("7", 5);
    list.push_back (event ({ "7", oneHour, oneHour + 10 }));
    exported (list);
    EXPECT_EQ (questions.size(), 1u);
}

TEST_F (TakerExportTest, theQuestionNamesEveryNumberThatOverflowsInOrder)
{
    auto list = subcues ("9", 6);

    for (const auto& [number, count] : { std::pair ("10", 7), std::pair ("fits", 5), std::pair ("1 A", 9) })
        for (const auto& cue : subcues (number, count))
            list.push_back (cue);

    exported (list);
    ASSERT_EQ (questions.size(), 1u);
    EXPECT_EQ (
        questions[0].second,
        "There are some cues in your event list with more than four subcues: \n\n- 1 A\n- 10\n- 9\n\nDSTaker can only handle "
        "four Markers per cue number so these cues will not be represented correctly. \n\nDo you want to continue?");
}

TEST_F (TakerExportTest, whoDeclinesGetsNoFileAndNoError)
{
    answer = false;
    folder.write ("Reel 2.csv", "older");
    EXPECT_EQ (exported (subcues ("7", 6)), "older");
    EXPECT_EQ (questions.size(), 1u);
}

TEST_F (TakerExportTest, byCharacterEachFileIsAskedForAndTheWalkGoesOn)
{
    answer = false;
    exporter.delegate = &progress;
    addCharacter ("a", "Ann");
    addCharacter ("b", "Bob");
    settings->eventsByCharacter["a"] = subcues ("7", 6);
    settings->eventsByCharacter["b"] = subcues ("8", 2);
    EXPECT_EQ (exporter.exportEventsByCharacter(), "");
    EXPECT_EQ (folder.names(), std::vector<std::string> { "Reel 2_Bob.csv" });
    EXPECT_EQ (progress.reports, (std::vector<std::pair<int, int>> { { 1, 2 }, { 2, 2 } }));
}

TEST_F (TakerExportTest, linesAreFalseWhenDeclined)
{
    answer = false;
    std::ignore = exporter.csvHeaderString();
    EXPECT_FALSE (exporter.createCSVLinesForTemplateDSTaker (subcues ("7", 6)));
    EXPECT_TRUE (exporter.createCSVLinesForTemplateDSTaker (subcues ("7", 5)));
}
