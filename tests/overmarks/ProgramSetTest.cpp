// SPDX-License-Identifier: GPL-3.0-only
// overmarks set: what a condition means, and which values are refused.
#include "overmarks/ProgramFixture.h"

#include <gmock/gmock.h>

#include <set>

using nlohmann::ordered_json;
using testing::HasSubstr;
using testing::Not;

namespace
{

TEST_F (ProgramTest, setEditsWhatTheFilterMeansAndSaysHowManySteps)
{
    write ("x.csv", threeCues);
    ASSERT_EQ (run ({ "import", "x.csv", "-o", "film.json" }).status, 0);
    const auto result = run ({ "set", "film.json", "-o", "film.json", "--where", "CharacterID=ANNA",
                               "Done=yes", "Notes=softer", "--json" });
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (result.json()["events"], 2);
    EXPECT_EQ (result.json()["steps"], 4);

    const auto list = run ({ "list", "film.json", "--json" }).json();

    for (const auto& event : list["events"])
    {
        EXPECT_EQ (event["done"], event["character"] == "ANNA");
        EXPECT_EQ (event["notes"]["text"], event["character"] == "ANNA" ? "softer" : "");
    }
}

TEST_F (ProgramTest, setTakesOneEventByItsIdentityAndMovesItInTime)
{
    write ("x.csv", threeCues);
    ASSERT_EQ (run ({ "import", "x.csv", "-o", "film.json" }).status, 0);
    const auto uuid = run ({ "list", "film.json", "--json" }).json()["events"][0]["uuid"].get<std::string>();
    ASSERT_EQ (run ({ "set", "film.json", "-o", "film.json", "--uuid", uuid, "StartTCString=01:00:30:00",
                      "Reason=AR4" })
                   .status,
               0);
    const auto moved = run ({ "list", "film.json", "--json" }).json()["events"][2];
    EXPECT_EQ (moved["uuid"], uuid);
    EXPECT_EQ (moved["startTC"], "01:00:30:00");
    EXPECT_EQ (moved["endTC"], "01:00:32:00");
    EXPECT_EQ (moved["reason"], 4);
}

TEST_F (ProgramTest, aTypingMistakeInATimecodeNeverClearsATime)
{
    write ("x.csv", threeCues);
    ASSERT_EQ (run ({ "import", "x.csv", "-o", "film.json" }).status, 0);
    const auto before = read ("film.json");
    const auto result = run ({ "set", "film.json", "-o", "film.json", "StartTCString=01:00:0x:00" });
    EXPECT_EQ (result.status, 2);
    EXPECT_THAT (result.errors, HasSubstr ("There is no timecode \"01:00:0x:00\" at 25 frames per second"));
    EXPECT_EQ (read ("film.json"), before);
}

TEST_F (ProgramTest, setReplacesOnlyTheProjectThatItEdits)
{
    write ("x.csv", threeCues);
    write ("other.json", "precious");
    ASSERT_EQ (run ({ "import", "x.csv", "-o", "film.json" }).status, 0);
    EXPECT_EQ (run ({ "set", "film.json", "-o", "other.json", "Done=yes" }).status, 1);
    EXPECT_EQ (read ("other.json"), "precious");
}

TEST_F (ProgramTest, setOnNothingWritesNothing)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "set", "x.csv", "-o", "film.json", "--where", "CueNumber=Z9", "Done=yes" });
    EXPECT_EQ (result.status, 1);
    EXPECT_FALSE (file ("film.json").exists());
}

TEST_F (ProgramTest, setSuggestsTheKeyThatWasMeant)
{
    write ("x.csv", threeCues);
    const auto result = run ({ "set", "x.csv", "-o", "film.json", "CueNumbr=1" });
    EXPECT_EQ (result.status, 2);
    EXPECT_THAT (
        result.errors,
        HasSubstr (
            "There is no attribute \"CueNumbr\"; `overmarks keys` lists them. Did you mean \"CueNumber\"?"));
}

/** A list on which conditions are tried, as a project. */
class ProgramConditionTest : public ProgramTest
{
protected:
    ProgramConditionTest()
    {
        write ("x.csv",
               "Start TC,End TC,Event Type,Character,Text,Cue Number,Done,Number of Takes,Reason,FN Region\n"
               "00:00:02:00,00:00:04:00,ADR Cue,ANNA,Hello,1,yes,3,Clarity (AR4),Top\n"
               "00:00:05:00,00:00:07:00,ADR Cue,TOM,Who's there,2,no,0,,\n"
               "00:00:08:00,00:00:08:00,Marker,,Slate,3,no,0,,\n"
               ",,ADR Cue,ANNA,Somewhere,4,no,0,,\n");
        EXPECT_EQ (run ({ "import", "x.csv", "-o", "film.json" }).status, 0);
    }

    /** The cue numbers of the events that a condition means, one after the other. */
    std::string meant (const std::string& condition) const
    {
        const auto result = run ({ "set", "film.json", "-o", "out.json", "--force", "--where", condition,
                                   "EngineeringNotes=!", "--json" });

        if (result.status != 0)
            return std::to_string (result.status);

        std::set<std::string> numbers;
        const auto project = ordered_json::parse (read ("out.json"));

        for (const auto& event : project["events"])
            if (event["engineeringNotes"]["text"] == "!")
                numbers.insert (event["cueNumber"].get<std::string>());

        std::string all;

        for (const auto& number : numbers)
            all += "#" + number;

        return all;
    }

    /** The refusal of an edit of the first cue, which leaves the project as it is. */
    std::string refusal (const std::string& assignment) const
    {
        const auto before = read ("film.json");
        const auto error =
            errorOf ({ "set", "film.json", "-o", "film.json", "--where", "CueNumber=1", assignment }, 2);
        EXPECT_EQ (read ("film.json"), before);
        return error;
    }
};

TEST_F (ProgramConditionTest, flagsAreMeantByAnyWordForYesAndNo)
{
    for (const auto* yes : { "Done=yes", "Done=true", "Done=1", "done=ON" })
        EXPECT_EQ (meant (yes), "#1") << yes;

    EXPECT_EQ (meant ("Done=false"), "#2#3#4");
    EXPECT_EQ (meant ("Done=perhaps"), "2") << "wrong usage";
}

TEST_F (ProgramConditionTest, typesAndRegionsAreMeantByNameOrNumber)
{
    EXPECT_EQ (meant ("Type=8"), "#1#2#4");
    EXPECT_EQ (meant ("Type=adr cue"), "#1#2#4");
    EXPECT_EQ (meant ("Type=Marker"), "#3");
    EXPECT_EQ (meant ("Type=2"), "#3");
    EXPECT_EQ (meant ("ForcedNarrativeRegion=Top"), meant ("ForcedNarrativeRegion=2"));
    EXPECT_EQ (meant ("Type=Markr"), "2") << "wrong usage";
}

TEST_F (ProgramConditionTest, reasonsAreMeantByNameShortFormOrCode)
{
    EXPECT_EQ (meant ("Reason=AR4"), "#1");
    EXPECT_EQ (meant ("Reason=clarity (ar4)"), "#1");
    EXPECT_EQ (meant ("Reason=5"), "#1");
    EXPECT_EQ (meant ("Reason=None"), "#2#3#4");
    EXPECT_EQ (meant ("Reason=Whim"), "2") << "wrong usage";
}

TEST_F (ProgramConditionTest, numbersAndTimesAreMeantHoweverTheyAreWritten)
{
    EXPECT_EQ (meant ("NumRecordedTakes=3"), "#1");
    EXPECT_EQ (meant ("NumRecordedTakes=03"), "#1");
    EXPECT_EQ (meant ("StartTCString=00:00:05;00"), "#2");
    EXPECT_EQ (meant ("StartTCString=none"), "#4");
    EXPECT_EQ (meant ("StartTCString=soon"), "2") << "wrong usage";
    EXPECT_EQ (meant ("SelectedTake=many"), "2") << "wrong usage";
}

TEST_F (ProgramConditionTest, textsAreMeantWholeOrInPart)
{
    EXPECT_EQ (meant ("Text=Hello"), "#1");
    EXPECT_EQ (meant ("Text=hello"), "1") << "no event";
    EXPECT_EQ (meant ("Text~WHO"), "#2");
    EXPECT_EQ (meant ("CharacterID="), "#3");
    EXPECT_EQ (meant ("CharacterID~an"), "#1#4");
}

TEST_F (ProgramConditionTest, aConditionThatIsNoneIsWrongUsage)
{
    EXPECT_EQ (errorOf ({ "set", "film.json", "-o", "film.json", "--where", "Done", "Done=yes" }, 2),
               "--where: \"Done\" is not of the form KEY=VALUE or KEY~PART");
    EXPECT_EQ (errorOf ({ "set", "film.json", "-o", "film.json", "--where", "Takes=1", "Done=yes" }, 2),
               "--where: Takes has no value");
    EXPECT_EQ (errorOf ({ "set", "film.json", "-o", "film.json", "--where", "Dne=1", "Done=yes" }, 2),
               "There is no attribute \"Dne\"; `overmarks keys` lists them. Did you mean \"Done\"?");
}

TEST_F (ProgramConditionTest, numbersOutOfRangeAreRefusedInWords)
{
    EXPECT_EQ (refusal ("NumRecordedTakes=-1"),
               "NumRecordedTakes: \"-1\" is no whole number from 0 to 1000000");
    EXPECT_EQ (refusal ("NumRecordedTakes=99999999999"),
               "NumRecordedTakes: \"99999999999\" is no whole number from 0 to 1000000");
    EXPECT_EQ (refusal ("RecTrackIndex=-7"), "RecTrackIndex: \"-7\" is no whole number from 0 to 999");
    EXPECT_EQ (refusal ("SelectedTake=5"),
               "SelectedTake: \"5\" is no item of the menu of takes: 1 is none, 2 to 4 the takes");
    EXPECT_EQ (refusal ("AltTake=0"),
               "AltTake: \"0\" is no item of the menu of takes: 1 is none, 2 to 4 the takes");
    EXPECT_EQ (
        refusal ("StreamerDuration=4"),
        "StreamerDuration: \"4\" is no code of a streamer's length; for the type ADR Cue there are -1, 1, 2, 3, 5, 267, 333");
    EXPECT_EQ (refusal ("BeatsPerMinute=300"), "BeatsPerMinute: \"300\" is no whole number from 21 to 299");
    EXPECT_EQ (refusal ("ForcedNarrativeRegion=9"),
               "ForcedNarrativeRegion: \"9\" is none of Bottom, Top, Left, Right.");
    EXPECT_EQ (refusal ("Done=2"), "Done: \"2\" is neither yes nor no");
    EXPECT_EQ (refusal ("Reason=42"), "\"42\" is no cue reason; `overmarks reasons` lists them");
}

TEST_F (ProgramConditionTest, aMarkerHasNoStreamerAndTheOthersGetTheirs)
{
    const auto result =
        run ({ "set", "film.json", "-o", "film.json", "StreamerDuration=5", "--where", "Cue~", "--json" });
    EXPECT_EQ (result.status, 2) << "a key is written out";
    const auto edited = run ({ "set", "film.json", "-o", "film.json", "StreamerDuration=5", "--json" });
    EXPECT_EQ (edited.status, 1);
    ASSERT_EQ (edited.json()["problems"].size(), 1u);
    EXPECT_THAT (edited.json()["problems"][0]["message"].get<std::string>(),
                 testing::EndsWith ("StreamerDuration can't be set on a Marker"));
    EXPECT_EQ (edited.json()["steps"], 3);
}

TEST_F (ProgramConditionTest, noEventBecomesAFade)
{
    EXPECT_EQ (refusal ("Type=Fade In"),
               "Type: a list has exactly one Fade In and one Fade Out; no event becomes "
               "one, and they become nothing else");
}

TEST_F (ProgramConditionTest, aTakeCanBeChosenAsSoonAsItIsThere)
{
    EXPECT_EQ (run ({ "set", "film.json", "-o", "film.json", "--where", "CueNumber=2", "NumRecordedTakes=2",
                      "SelectedTake=3" })
                   .status,
               0);
    EXPECT_EQ (run ({ "list", "film.json", "--cue", "2", "--json" }).json()["events"][0]["selectedTake"], 1);
}

TEST_F (ProgramConditionTest, whatCannotBeSetIsFoundBeforeTheListIsRead)
{
    EXPECT_EQ (errorOf ({ "set", "missing.json", "-o", "film.json", "Actor=C. Berg" }, 2),
               "Actor can't be set; `overmarks keys` tells what can");
    EXPECT_EQ (errorOf ({ "set", "missing.json", "-o", "film.json", "Done" }, 2),
               "\"Done\" is not of the form KEY=VALUE");
    EXPECT_EQ (errorOf ({ "set", "missing.json", "-o", "film.json", "--where", "Type=8x", "Done=yes" }, 2),
               "--where: Type: \"8x\" is none of Streamer, Marker, Flutter, ADR Cue, Fade In, Fade Out.");
}

TEST_F (ProgramTest, aValueThatAKeyCantTakeIsWrongUsage)
{
    write ("x.csv", threeCues);
    ASSERT_EQ (run ({ "import", "x.csv", "-o", "film.json" }).status, 0);
    const auto before = read ("film.json");

    for (const auto* assignment :
         { "Done=maybe", "Reason=Foo", "CharacterID=EVA", "Type=Cue", "NumRecordedTakes=-1",
           "BeatsPerMinute=x", "SelectedTake=9", "StreamerDuration=4", "ForcedNarrativeRegion=middle",
           "RecTrackIndex=1000", "StartTCString=soon", "EndTCString=01:00:02:25", "Type=Fade In" })
        EXPECT_NE (errorOf ({ "set", "film.json", "-o", "film.json", assignment }, 2), "") << assignment;

    EXPECT_EQ (errorOf ({ "set", "film.json", "-o", "film.json", "--where", "Reason=Foo", "Done=yes" }, 2),
               "\"Foo\" is no cue reason; `overmarks reasons` lists them");
    EXPECT_EQ (read ("film.json"), before);
}

TEST_F (ProgramTest, noneStillTakesATimeAway)
{
    write ("x.csv", threeCues);
    ASSERT_EQ (run ({ "import", "x.csv", "-o", "film.json" }).status, 0);
    ASSERT_EQ (
        run ({ "set", "film.json", "-o", "film.json", "--where", "CueNumber=A1", "StartTCString=none" })
            .status,
        0);

    const auto list = run ({ "list", "film.json", "--json" }).json();

    for (const auto& event : list["events"])
        EXPECT_EQ (event["startTC"] == "--:--:--:--", event["cueNumber"] == "A1") << event;
}

} // namespace
