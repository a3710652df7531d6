// SPDX-License-Identifier: GPL-3.0-only
// overmarks diff: what has changed, and how it is told.
#include "overmarks/ProgramDiffFixture.h"

#include <gmock/gmock.h>

namespace
{

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

using ProgramDiffTest = ProgramDiffFixture;

// ---- kinds ---------------------------------------------------------------------------------------------------------------

TEST_F (ProgramDiffTest, equalListsEndWithNoughtAndSayNothingOnStandardOutput)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Hello?,A1\n", "01:00:02:00,01:00:04:00,ANNA,Hello?,A1\n");
    const auto result = diff();
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.output, "");
    EXPECT_THAT (result.errors, EndsWith ("no differences; 1 unchanged\n"));
    EXPECT_THAT (changes(), IsEmpty());
}

TEST_F (ProgramDiffTest, aCueOfTheNewListAloneIsAdded)
{
    writeLists ("", "01:00:02:00,01:00:04:00,ANNA,Hello?,A1\n");
    const auto found = changes();
    ASSERT_EQ (found.size(), 1u);
    EXPECT_EQ (found[0]["kind"], "added");
    EXPECT_TRUE (found[0]["old"].is_null());
    EXPECT_EQ (found[0]["new"]["cueNumber"], "A1");
    EXPECT_EQ (found[0]["new"]["character"], "ANNA");
    EXPECT_EQ (found[0]["new"]["startTC"], "01:00:02:00");
    EXPECT_THAT (found[0]["fields"], IsEmpty());
}

TEST_F (ProgramDiffTest, aCueOfTheOldListAloneIsRemoved)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Hello?,A1\n", "");
    const auto found = changes();
    ASSERT_EQ (found.size(), 1u);
    EXPECT_EQ (found[0]["kind"], "removed");
    EXPECT_TRUE (found[0]["new"].is_null());
    EXPECT_EQ (found[0]["old"]["text"]["text"], "Hello?");
}

TEST_F (ProgramDiffTest, aMovedCueShowsItsShift)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Hello?,A1\n", "01:00:04:10,01:00:06:10,ANNA,Hello?,A1\n");
    const auto found = changes();
    ASSERT_EQ (found.size(), 1u);
    EXPECT_EQ (found[0]["kind"], "retimed");
    EXPECT_EQ (found[0]["fields"], (nlohmann::json { "startTC", "endTC" }));
    EXPECT_EQ (found[0]["shift"], "+00:00:02:10");
    EXPECT_EQ (found[0]["shiftFrames"], 60);
    EXPECT_EQ (found[0]["longerFrames"], 0);
    EXPECT_THAT (diff().output, HasSubstr ("moved by +00:00:02:10\n"));
}

TEST_F (ProgramDiffTest, aCueThatComesEarlierHasAMinus)
{
    writeLists ("01:00:04:10,01:00:06:10,ANNA,Hello?,A1\n", "01:00:02:00,01:00:04:00,ANNA,Hello?,A1\n");
    EXPECT_THAT (diff().output, HasSubstr ("moved by -00:00:02:10\n"));
    EXPECT_EQ (changes()[0]["shiftFrames"], -60);
}

TEST_F (ProgramDiffTest, anotherLengthIsNoMove)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Hello?,A1\n01:00:12:00,01:00:14:00,ANNA,Me.,A2\n",
                "01:00:02:00,01:00:04:05,ANNA,Hello?,A1\n01:00:12:00,01:00:13:00,ANNA,Me.,A2\n");
    const auto found = changes();
    ASSERT_EQ (found.size(), 2u);
    EXPECT_EQ (found[0]["fields"], (nlohmann::json { "endTC" }));
    EXPECT_EQ (found[0]["shiftFrames"], 0);
    EXPECT_EQ (found[0]["longerFrames"], 5);
    EXPECT_EQ (found[1]["longerFrames"], -25);
    const auto table = diff().output;
    EXPECT_THAT (table, HasSubstr ("00:00:00:05 longer\n"));
    EXPECT_THAT (table, HasSubstr ("00:00:01:00 shorter\n"));
    EXPECT_THAT (table, Not (HasSubstr ("moved")));
}

TEST_F (ProgramDiffTest, oneCueMayMoveAndBecomeShorter)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Hello?,A1\n", "01:00:03:00,01:00:04:00,ANNA,Hello?,A1\n");
    EXPECT_THAT (diff().output, HasSubstr ("moved by +00:00:01:00, 00:00:01:00 shorter\n"));
    EXPECT_EQ (changes()[0]["fields"], (nlohmann::json { "startTC" })) << "the end has stayed";
}

TEST_F (ProgramDiffTest, aTimeThatIsGainedOrLostHasNoShift)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Hello?,A1\n,,ANNA,Me.,A2\n",
                ",,ANNA,Hello?,A1\n01:00:02:00,01:00:04:00,ANNA,Me.,A2\n");
    const auto table = diff().output;
    EXPECT_THAT (table, HasSubstr ("has no time any more\n"));
    EXPECT_THAT (table, HasSubstr ("has a time now\n"));
    EXPECT_FALSE (changes()[0].contains ("shift"));
}

TEST_F (ProgramDiffTest, changedWordsAreMarked)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Who's there now?,A1\n",
                "01:00:02:00,01:00:04:00,ANNA,Who is there?,A1\n");
    EXPECT_THAT (diff().output, HasSubstr ("[-Who's-]{+Who is+} there[- now-]?\n"));
    const auto found = changes();
    ASSERT_EQ (found.size(), 1u);
    EXPECT_EQ (found[0]["kind"], "text");
    EXPECT_EQ (found[0]["fields"], (nlohmann::json { "text" }));
    EXPECT_EQ (found[0]["old"]["text"]["text"], "Who's there now?");
    EXPECT_EQ (found[0]["new"]["text"]["text"], "Who is there?");
}

TEST_F (ProgramDiffTest, wordsOfAnyScriptAreMarked)
{
    writeLists (
        "01:00:02:00,01:00:04:00,ANNA,Grüß Größe über,A1\n01:00:12:00,01:00:14:00,ANNA,我在这里,A2\n",
        "01:00:02:00,01:00:04:00,ANNA,Grüß Größen über,A1\n01:00:12:00,01:00:14:00,ANNA,我在那里,A2\n");
    const auto table = diff().output;
    EXPECT_THAT (table, HasSubstr ("Grüß [-Größe-]{+Größen+} über\n"));
    EXPECT_THAT (table, HasSubstr ("我在[-这-]{+那+}里\n"));
}

TEST_F (ProgramDiffTest, blanksThatCannotBeSeenAreToldInWords)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Who  is there?,A1\n",
                "01:00:02:00,01:00:04:00,ANNA,Who is there?,A1\n");
    EXPECT_THAT (diff().output, HasSubstr ("only blanks or line breaks differ: Who is there?\n"));
    EXPECT_EQ (kinds(), std::vector<std::string> { "text A1" });
}

TEST_F (ProgramDiffTest, anotherCharacterIsToldWithBothNames)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Hello?,A1\n", "01:00:02:00,01:00:04:00,TOM,Hello?,A1\n");
    EXPECT_THAT (diff().output, HasSubstr ("ANNA -> TOM\n"));
    EXPECT_EQ (kinds(), std::vector<std::string> { "character A1" });
}

TEST_F (ProgramDiffTest, aCharacterThatIsGoneIsNone)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Hello?,A1\n", "01:00:02:00,01:00:04:00,,Hello?,A1\n");
    EXPECT_THAT (diff().output, HasSubstr ("ANNA -> (none)\n"));
}

TEST_F (ProgramDiffTest, whatHappenedToOneCueInSeveralWaysIsSeveralChanges)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Hello there,A1\n",
                "01:00:03:00,01:00:05:00,ANNA,Hello here,A1\n");
    EXPECT_THAT (kinds(), ElementsAre ("retimed A1", "text A1"));
}

TEST_F (ProgramDiffTest, allOtherAttributesAreOneChange)
{
    const std::string time =
        R"("cueNumber": "A1", "text": "Hello", "inPointFrameIndex": 75, "startFrameIndex": 0, "endFrameIndex": 99)";
    writeProject ("old.json", { time });
    writeProject (
        "new.json",
        { time + R"(, "done": true, "numRecordedTakes": 3, "selectedTake": 1, "altTake": 0, "reason": 4,
        "notes": "softer", "engineeringNotes": "boom", "enabled": false, "storedFlag": true, "recTrackIndex": 2,
        "streamerDuration": 5, "isForcedNarrative": true, "forcedNarrativeRegion": 1)" });
    const auto found = changes ({}, "old.json", "new.json");
    ASSERT_EQ (found.size(), 1u);
    EXPECT_EQ (found[0]["kind"], "other");
    EXPECT_EQ (found[0]["fields"],
               (nlohmann::json { "notes", "engineeringNotes", "reason", "enabled", "done", "numRecordedTakes",
                                 "selectedTake", "altTake", "recTrackIndex", "storedFlag", "streamerDuration",
                                 "isForcedNarrative", "forcedNarrativeRegion" }));
    EXPECT_THAT (diff ({}, "old.json", "new.json").output,
                 HasSubstr ("Notes: {+softer+}; Engineering notes: {+boom+}; Reason: None -> "));
    EXPECT_THAT (
        diff ({}, "old.json", "new.json").output,
        HasSubstr (
            "Enabled: yes -> no; Done: no -> yes; Takes: 0 -> 3; Selected take: none -> 2; Alternative take: none -> 1; "
            "Recording track: none -> 3; Flag: no -> yes; Streamer: 3 -> 5; Forced narrative: no -> yes; "
            "Region: Bottom -> Top\n"));
}

TEST_F (ProgramDiffTest, markedWordsOfOneTextAreAnotherLook)
{
    writeProject ("old.json", { R"("cueNumber": "A1", "text": "Hello")" });
    writeProject (
        "new.json",
        { R"("cueNumber": "A1", "text": {"text": "Hello", "runs": [{"start": 0, "end": 2, "bold": true}]})" });
    const auto found = changes ({}, "old.json", "new.json");
    ASSERT_EQ (found.size(), 1u);
    EXPECT_EQ (found[0]["kind"], "other");
    EXPECT_EQ (found[0]["fields"], (nlohmann::json { "text.runs" }));
    EXPECT_THAT (diff ({}, "old.json", "new.json").output,
                 HasSubstr ("Look of the text: same words, marked otherwise\n"));
}

// ---- what a list can't tell ----------------------------------------------------------------------------------------------

TEST_F (ProgramDiffTest, whatACueListHasNoColumnForIsNoChange)
{
    writeProject (
        "old.json",
        { R"("cueNumber": "A1", "characterID": "a", "text": "Hello", "inPointFrameIndex": 75, "endFrameIndex": 99,
                                  "done": true, "notes": "softer", "numRecordedTakes": 2, "streamerDuration": 5)" });
    write ("new.csv", "Start TC,Character,Text\n00:00:03:00,ANNA,Hello\n");
    EXPECT_THAT (changes ({}, "old.json"), IsEmpty());
    write ("new.csv", "Start TC,Character,Text,Done\n00:00:03:00,ANNA,Hello,no\n");
    EXPECT_EQ (changes ({}, "old.json")[0]["fields"], (nlohmann::json { "done" }));
}

TEST_F (ProgramDiffTest, fadesAreMissedBetweenProjectsAlone)
{
    writeProject ("old.json", { R"("cueNumber": "A1", "text": "Hello")" });
    writeProject ("new.json",
                  { R"("cueNumber": "A1", "text": "Hello")",
                    R"("type": 16, "startFrameIndex": 0, "inPointFrameIndex": 0, "endFrameIndex": 0)" });
    write (
        "new.json",
        juce::String (read ("new.json")).replace ("\"type\": 8, \"type\": 16", "\"type\": 16").toStdString());
    const auto found = changes ({}, "old.json", "new.json");
    ASSERT_EQ (found.size(), 1u);
    EXPECT_EQ (found[0]["kind"], "added");
    EXPECT_EQ (found[0]["new"]["type"], 16);
    write ("list.csv", "Text,Cue Number\nHello,A1\n");
    EXPECT_THAT (changes ({}, "new.json", "list.csv"), IsEmpty());
    EXPECT_THAT (changes ({}, "list.csv", "new.json"), IsEmpty());
}

TEST_F (ProgramDiffTest, theOwnProjectIsEqualToTheListThatItIsMadeFrom)
{
    write ("x.csv", threeCues);
    ASSERT_EQ (
        run ({ "import", "x.csv", "-o", "film.overmarks", "--fps", "24", "--origin", "01:00:00:00" }).status,
        0);
    const auto result = diff ({}, "film.overmarks", "x.csv");
    EXPECT_EQ (result.status, 0) << result.output;
    EXPECT_THAT (result.errors,
                 HasSubstr ("x.csv: its times are read at 24 frames per second from 01:00:00:00, as those of "
                            "film.overmarks\n"));
    EXPECT_EQ (diff ({}, "x.csv", "film.overmarks").status, 0) << "the other way round";
}

// ---- rates and origins ---------------------------------------------------------------------------------------------------

TEST_F (ProgramDiffTest, theOriginPlaysNoPart)
{
    writeProject (
        "old.json",
        { R"("cueNumber": "A1", "startFrameIndex": 90000, "inPointFrameIndex": 90000, "endFrameIndex": 90050)" });
    writeProject (
        "new.json",
        { R"("cueNumber": "A1", "startFrameIndex": 0, "inPointFrameIndex": 0, "endFrameIndex": 50)" },
        R"("timeInfo": {"timeOrigin": "01:00:00:00"}, )");
    EXPECT_THAT (changes ({}, "old.json", "new.json"), IsEmpty());
}

TEST_F (ProgramDiffTest, ratesThatDifferAreSaidAndTheTimecodesCompared)
{
    writeLists ("01:00:02:12,01:00:04:00,ANNA,Hello?,A1\n", "01:00:02:12,01:00:04:00,ANNA,Hello?,A1\n");
    const auto result = diff ({ "--old-fps", "23.976", "--fps", "24" });
    EXPECT_EQ (result.status, 0) << result.output;
    EXPECT_THAT (
        result.errors,
        HasSubstr ("The frame rates differ, 23.976 and 24: the timecodes are compared as they are shown, "
                   "not the running times\n"));
}

TEST_F (ProgramDiffTest, theFramesOfARateAreAPartOfTheirSecond)
{
    writeLists ("01:00:02:12,01:00:04:00,ANNA,Hello?,A1\n", "01:00:02:24,01:00:04:01,ANNA,Hello?,A1\n");
    EXPECT_EQ (diff ({ "--old-fps", "25", "--fps", "50" }).status, 0)
        << "half a frame of the slower one is nothing";
    writeLists ("01:00:02:12,01:00:04:00,ANNA,Hello?,A1\n", "01:00:03:24,01:00:05:00,ANNA,Hello?,A1\n");
    EXPECT_EQ (changes ({ "--old-fps", "25", "--fps", "50" })[0]["shift"], "+00:00:01:00");
}

TEST_F (ProgramDiffTest, shiftsOfDropFrameTimecodeCountItsLabels)
{
    writeLists ("01:00:59;28,01:02:00;02,ANNA,Hello?,A1\n", "01:01:00;02,01:02:00;04,ANNA,Hello?,A1\n");
    const auto found = changes ({ "--fps", "29.97df" });
    EXPECT_EQ (found[0]["shiftFrames"], 2) << "01:01:00;00 and 01:01:00;01 don't exist";
    EXPECT_EQ (found[0]["shift"], "+00:00:00;02");
}

// ---- runs ----------------------------------------------------------------------------------------------------------------

TEST_F (ProgramDiffTest, neighboursWithOneShiftAreToldAsOne)
{
    writeLists (
        "01:00:02:00,01:00:04:00,ANNA,One,A1\n01:00:12:00,01:00:14:00,TOM,Two,T1\n01:00:22:00,01:00:24:00,ANNA,Three,A2\n",
        "01:00:02:00,01:00:04:00,ANNA,One,A1\n01:00:14:10,01:00:16:10,TOM,Two,T1\n01:00:24:10,01:00:26:10,ANNA,Three,A2\n");
    EXPECT_THAT (diff().output, EndsWith ("retimed  T1 - A2  01:00:14:10  2 cues moved by +00:00:02:10\n"));
    EXPECT_THAT (kinds(), ElementsAre ("retimed T1", "retimed A2")) << "nothing is hidden in JSON";
}

TEST_F (ProgramDiffTest, aCueThatHasStayedEndsARun)
{
    writeLists (
        "01:00:02:00,01:00:04:00,ANNA,One,A1\n01:00:12:00,01:00:14:00,TOM,Two,T1\n01:00:22:00,01:00:24:00,ANNA,Three,A2\n",
        "01:00:03:00,01:00:05:00,ANNA,One,A1\n01:00:12:00,01:00:14:00,TOM,Two,T1\n01:00:23:00,01:00:25:00,ANNA,Three,A2\n");
    const auto table = diff().output;
    EXPECT_THAT (table, Not (HasSubstr ("cues moved")));
    EXPECT_THAT (table, HasSubstr ("A1   01:00:03:00  ANNA       moved by +00:00:01:00\n"));
}

TEST_F (ProgramDiffTest, aNewCueInBetweenDoesNotEndARun)
{
    writeLists (
        "01:00:02:00,01:00:04:00,ANNA,One,A1\n01:00:22:00,01:00:24:00,ANNA,Three,A2\n",
        "01:00:03:00,01:00:05:00,ANNA,One,A1\n01:00:12:00,01:00:14:00,TOM,Two,T1\n01:00:23:00,01:00:25:00,ANNA,Three,A2\n");
    const auto table = diff().output;
    EXPECT_THAT (table, HasSubstr ("2 cues moved by +00:00:01:00\n"));
    EXPECT_THAT (table, HasSubstr ("added    T1"));
}

TEST_F (ProgramDiffTest, aCueOfARunThatIsLongerTooIsToldInBothWays)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,One,A1\n01:00:22:00,01:00:24:00,ANNA,Three,A2\n",
                "01:00:03:00,01:00:05:00,ANNA,One,A1\n01:00:23:00,01:00:25:03,ANNA,Three,A2\n");
    const auto table = diff().output;
    EXPECT_THAT (table, HasSubstr ("2 cues moved by +00:00:01:00\n"));
    EXPECT_THAT (table, HasSubstr ("A2       01:00:23:00  ANNA       00:00:00:03 longer\n"));
}

TEST_F (ProgramDiffTest, aRunOfOneNewLengthIsToldAsOne)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,One,A1\n01:00:22:00,01:00:24:00,ANNA,Three,A2\n",
                "01:00:02:00,01:00:05:00,ANNA,One,A1\n01:00:22:00,01:00:25:00,ANNA,Three,A2\n");
    EXPECT_THAT (diff().output, HasSubstr ("2 cues are 00:00:01:00 longer\n"));
}

TEST_F (ProgramDiffTest, aRunWithOtherEventsInItIsOfEvents)
{
    writeProject (
        "old.json",
        { R"("cueNumber": "A1", "inPointFrameIndex": 75, "startFrameIndex": 0, "endFrameIndex": 99)",
          R"("cueNumber": "M1", "inPointFrameIndex": 175, "startFrameIndex": 100, "endFrameIndex": 199)" });
    write ("old.json", juce::String (read ("old.json"))
                           .replace (R"("type": 8, "cueNumber": "M1")", R"("type": 2, "cueNumber": "M1")")
                           .toStdString());
    write ("new.json",
           juce::String (read ("old.json")).replace ("75,", "76,").replace ("99}", "100}").toStdString());
    EXPECT_THAT (diff ({}, "old.json", "new.json").output, HasSubstr ("2 events moved by +00:00:00:01\n"));
}

TEST_F (ProgramDiffTest, aCharacterWithAnotherNameThroughoutIsToldOnce)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,One,A1\n01:00:22:00,01:00:24:00,ANNA,Three,A2\n",
                "01:00:02:00,01:00:04:00,ANNA-MARIE,One,A1\n01:00:22:00,01:00:24:00,ANNA-MARIE,Three,A2\n");
    EXPECT_THAT (diff().output, HasSubstr ("all 2 lines: ANNA -> ANNA-MARIE\n"));
    EXPECT_THAT (kinds(), ElementsAre ("character A1", "character A2"));
}

TEST_F (ProgramDiffTest, anotherActorThroughoutIsToldOnce)
{
    write ("old.csv",
           "Start TC,Character,Actor,Text\n01:00:02:00,ANNA,B. Miller,One\n01:00:05:00,ANNA,B. Miller,Two\n");
    write ("new.csv",
           "Start TC,Character,Actor,Text\n01:00:02:00,ANNA,C. Berg,One\n01:00:05:00,ANNA,C. Berg,Two\n");
    EXPECT_THAT (diff().output, HasSubstr ("all 2 lines: Actor: B. Miller -> C. Berg\n"));
    EXPECT_THAT (kinds(), ElementsAre ("other One", "other Two"));
}

TEST_F (ProgramDiffTest, anotherActorOfAnotherCharacterIsNoChangeOfItsOwn)
{
    const std::string columns = "Start TC,End TC,Character,Actor,Text,Cue Number\n";
    const std::string anna = "01:00:02:00,01:00:03:00,ANNA,B. Miller,Hello?,A1\n";
    write ("old.csv", columns + anna + "01:00:08:00,01:00:09:00,ANNA,B. Miller,Me.,A3\n");
    write ("new.csv", columns + anna + "01:00:08:00,01:00:09:00,BOB,,Me.,A3\n");
    EXPECT_THAT (kinds(), ElementsAre ("character A3"));
    EXPECT_EQ (changes()[0]["fields"], std::vector<std::string> { "character" });
}

TEST_F (ProgramDiffTest, anotherActorOfTheSameCharacterIsAChange)
{
    const std::string columns = "Start TC,End TC,Character,Actor,Text,Cue Number\n";
    write ("old.csv", columns + "01:00:08:00,01:00:09:00,ANNA,B. Miller,Me.,A3\n");
    write ("new.csv", columns + "01:00:08:00,01:00:09:00,ANNA,C. Berg,Me.,A3\n");
    EXPECT_THAT (kinds(), ElementsAre ("other A3"));
    EXPECT_EQ (changes()[0]["fields"], std::vector<std::string> { "actor" });
}

} // namespace
