// SPDX-License-Identifier: GPL-3.0-only
// overmarks diff --apply: the new cut's list with the work that was done on the old one.
#include "overmarks/ProgramDiffFixture.h"

#include <gmock/gmock.h>

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class ProgramDiffApplyTest : public ProgramDiffFixture
{
protected:
    static constexpr auto cue =
        R"("cueNumber": "A1", "characterID": "a", "text": "Hello", "inPointFrameIndex": 75, "endFrameIndex": 99)";

    ProgramResult apply (const std::string& old = "old.json", const std::string& now = "new.json",
                         std::vector<std::string> options = {}) const
    {
        options.insert (options.begin(), { "diff", "--apply", old, now, "-o", "merged.json", "--force" });
        return run (options);
    }

    /** The merged event with a cue number. */
    nlohmann::ordered_json merged (const std::string& number = "A1") const
    {
        const auto project = nlohmann::ordered_json::parse (read ("merged.json"));

        for (const auto& event : project["events"])
            if (event["cueNumber"] == number)
                return event;

        return {};
    }

    /** Two projects with one cue, which has these further members. */
    void writeCue (const std::string& oldMembers, const std::string& newMembers) const
    {
        writeProject ("old.json", { cue + oldMembers });
        writeProject ("new.json", { cue + newMembers });
    }
};

TEST_F (ProgramDiffApplyTest, everythingThatWasDoneInTheStudioGoesOver)
{
    writeCue (
        R"(, "done": true, "numRecordedTakes": 3, "selectedTake": 1, "altTake": 2, "recTrackIndex": 4, "reason": 5,
              "notes": "softer", "engineeringNotes": "boom", "storedFlag": true)",
        "");
    const auto result = apply();
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_EQ (result.output, "");
    EXPECT_THAT (result.errors, HasSubstr ("Carried over to 1 event\n"));
    const auto event = merged();
    EXPECT_EQ (event["done"], true);
    EXPECT_EQ (event["numRecordedTakes"], 3);
    EXPECT_EQ (event["selectedTake"], 1);
    EXPECT_EQ (event["altTake"], 2);
    EXPECT_EQ (event["recTrackIndex"], 4);
    EXPECT_EQ (event["reason"], 5);
    EXPECT_EQ (event["notes"]["text"], "softer");
    EXPECT_EQ (event["engineeringNotes"]["text"], "boom");
    EXPECT_EQ (event["storedFlag"], true);
}

TEST_F (ProgramDiffApplyTest, theNewCutKeepsItsTimesTextsAndCharacters)
{
    writeProject ("old.json",
                  { std::string (cue) + R"(, "done": true, "enabled": false, "streamerDuration": 5)" });
    writeProject (
        "new.json",
        { R"("cueNumber": "A1", "characterID": "a", "text": "Hello there", "inPointFrameIndex": 175, "endFrameIndex": 200)" });
    EXPECT_EQ (apply().status, 0);
    const auto event = merged();
    EXPECT_EQ (event["text"]["text"], "Hello there");
    EXPECT_EQ (event["inPointFrameIndex"], 175);
    EXPECT_EQ (event["endFrameIndex"], 200);
    EXPECT_EQ (event["done"], true);
    EXPECT_EQ (event["enabled"], true);
    EXPECT_NE (event["streamerDuration"], 5);
}

TEST_F (ProgramDiffApplyTest, ofACueListTheOldProjectLendsIdentitiesCastAndDocuments)
{
    writeProject (
        "old.json",
        { R"("uuid": "u1", "cueNumber": "A1", "characterID": "a", "text": "Hello", "inPointFrameIndex": 75, "endFrameIndex": 99, "done": true)" },
        R"("sortKey": "CueNumber", "documents": {"title": "Northern Lights"}, "timeInfo": {"framesPerSecond": 24,
                     "frameRateNumerator": 24, "frameRateDenominator": 1, "timeOrigin": "01:00:00:00"}, )");
    write (
        "new.csv",
        "Start TC,Character,Text,Cue Number\n01:00:05:00,ANNA,\"Hello \"\"uuid\"\":\"\"x\"\"\",A1\n01:00:07:00,MARIE,Moi,M1\n");
    const auto result = apply ("old.json", "new.csv");
    EXPECT_EQ (result.status, 0) << result.errors;
    const auto project = nlohmann::ordered_json::parse (read ("merged.json"));
    EXPECT_EQ (project["name"], "merged");
    EXPECT_EQ (project["sortKey"], "CueNumber");
    EXPECT_EQ (project["documents"]["title"], "Northern Lights");
    EXPECT_EQ (project["timeInfo"]["framesPerSecond"], 24);
    EXPECT_EQ (project["timeInfo"]["timeOrigin"], "01:00:00:00");
    EXPECT_EQ (project["characters"][0]["actor"], "B. Miller");
    EXPECT_EQ (project["characters"][0]["prefix"], "A");
    EXPECT_EQ (merged()["uuid"], "u1");
    EXPECT_EQ (merged()["inPointFrameIndex"], 120);
    EXPECT_EQ (merged()["text"]["text"], "Hello \"uuid\":\"x\"");
    EXPECT_EQ (merged ("M1")["uuid"].get<std::string>().size(), 36u) << "one of its own";
    EXPECT_THAT (kinds ({}, "old.json", "merged.json"), ElementsAre ("retimed A1", "text A1", "added M1"));
}

TEST_F (ProgramDiffApplyTest, ofTwoProjectsTheNewOneKeepsItsOwnIdentity)
{
    writeProject ("old.json", { R"("uuid": "u1", "cueNumber": "A1", "text": "Hello", "done": true)" },
                  R"("name": "first cut", )");
    writeProject ("new.json", { R"("uuid": "u2", "cueNumber": "A1", "text": "Hello")" },
                  R"("name": "second cut", )");
    EXPECT_EQ (apply().status, 0);
    EXPECT_EQ (merged()["uuid"], "u2");
    EXPECT_EQ (nlohmann::json::parse (read ("merged.json"))["name"], "second cut");
}

TEST_F (ProgramDiffApplyTest, recordedWorkWithoutAPartnerIsAProblem)
{
    writeProject (
        "old.json",
        { cue,
          R"("cueNumber": "T1", "characterID": "t", "text": "Gone", "inPointFrameIndex": 175, "endFrameIndex": 199, "done": true,
                                       "numRecordedTakes": 2, "selectedTake": 0, "altTake": 1)" });
    writeProject ("new.json", { cue });
    const auto result = apply();
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (
        result.errors,
        HasSubstr (
            "old.json: T1 (TOM, 00:00:07:00) is not in the new list: done, 2 takes, take 1 selected, take 2 "
            "as the alternative\n"));
    EXPECT_EQ (merged()["text"]["text"], "Hello") << "written all the same";
}

TEST_F (ProgramDiffApplyTest, aCueWithoutRecordingsMayGo)
{
    writeProject ("old.json", { cue, R"("cueNumber": "T1", "text": "Gone")" });
    writeProject ("new.json", { cue });
    EXPECT_EQ (apply().status, 0);
}

TEST_F (ProgramDiffApplyTest, notesOfCuesThatAreGoneAreCounted)
{
    writeProject ("old.json", { cue, R"("cueNumber": "T1", "text": "Gone", "notes": "softer")",
                                R"("cueNumber": "T2", "text": "Too", "reason": 3)" });
    writeProject ("new.json", { cue });
    const auto result = apply();
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (
        result.errors,
        HasSubstr ("2 old events with notes or a reason, but without recordings, are not in the new list\n"));
}

TEST_F (ProgramDiffApplyTest, bothNotesAreKept)
{
    writeCue (R"(, "notes": {"text": "softer", "runs": [{"start": 0, "end": 6, "bold": true}]})",
              R"(, "notes": "new line")");
    const auto result = apply();
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (
        result.errors,
        HasSubstr ("A1 (ANNA, 00:00:03:00): both lists have notes; the old ones stand below the new ones\n"));
    EXPECT_EQ (merged()["notes"]["text"], "new line\nsofter");
    EXPECT_EQ (merged()["notes"]["runs"][0]["start"], 9);
    EXPECT_EQ (merged()["notes"]["runs"][0]["bold"], true);
}

TEST_F (ProgramDiffApplyTest, carryingOverAgainAddsNothing)
{
    writeCue (R"(, "notes": "softer", "done": true)", R"(, "notes": "new line")");
    EXPECT_EQ (apply().status, 0);
    const auto once = read ("merged.json");
    write ("new.json", once);
    const auto again = apply();
    EXPECT_THAT (again.errors, HasSubstr ("Carried over to 0 events\n"));
    EXPECT_EQ (read ("merged.json"), once);
}

TEST_F (ProgramDiffApplyTest, doneInEitherListIsDone)
{
    writeCue ("", R"(, "done": true, "storedFlag": true)");
    EXPECT_EQ (apply().status, 0);
    EXPECT_EQ (merged()["done"], true);
    EXPECT_EQ (merged()["storedFlag"], true);
}

TEST_F (ProgramDiffApplyTest, takesOfTheNewListStayAndTheOldOnesAreTold)
{
    writeCue (R"(, "numRecordedTakes": 3, "selectedTake": 2)", R"(, "numRecordedTakes": 1)");
    const auto result = apply();
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (
        result.errors,
        HasSubstr (
            "A1 (ANNA, 00:00:03:00): takes: the new list's stays, 1 take; the old list has 3 takes, take 3 "
            "selected\n"));
    EXPECT_EQ (merged()["numRecordedTakes"], 1);
    EXPECT_EQ (merged()["selectedTake"], -1);
}

TEST_F (ProgramDiffApplyTest, trackAndReasonOfTheNewListStayAndTheOldOnesAreTold)
{
    writeCue (R"(, "recTrackIndex": 3, "reason": 2)", R"(, "recTrackIndex": 0, "reason": 1)");
    const auto result = apply();
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, HasSubstr ("recording track: the new list's stays, 1; the old list has 4\n"));
    EXPECT_THAT (result.errors, HasSubstr ("(AR1); the old list has "));
    EXPECT_EQ (merged()["recTrackIndex"], 0);
    EXPECT_EQ (merged()["reason"], 1);
}

TEST_F (ProgramDiffApplyTest, whatIsTheSameInBothIsNoProblem)
{
    constexpr auto work =
        R"(, "numRecordedTakes": 3, "selectedTake": 2, "recTrackIndex": 3, "reason": 2, "notes": "softer", "done": true)";
    writeCue (work, work);
    const auto result = apply();
    EXPECT_EQ (result.status, 0) << result.errors;
    EXPECT_THAT (result.errors, HasSubstr ("Carried over to 0 events\n"));
}

TEST_F (ProgramDiffApplyTest, reasonsOfTheUserGoOverByTheirNames)
{
    writeProject ("old.json",
                  { std::string (cue) + R"(, "reason": 33)", R"("cueNumber": "A2", "reason": 34)" },
                  R"("userReasons": ["Dentist", "Cold"], )");
    writeProject ("new.json", { cue, R"("cueNumber": "A2")" }, R"("userReasons": ["Cold"], )");
    EXPECT_EQ (apply().status, 0);
    const auto project = nlohmann::json::parse (read ("merged.json"));
    EXPECT_EQ (merged ("A2")["reason"], 33) << "Cold is the new list's first";
    EXPECT_EQ (merged ("A1")["reason"], 34);
    EXPECT_EQ (project["userReasons"][0], "Cold");
    EXPECT_EQ (project["userReasons"][1], "Dentist");
}

TEST_F (ProgramDiffApplyTest, aReasonWithoutRoomIsTold)
{
    writeProject ("old.json", { std::string (cue) + R"(, "reason": 33)" }, R"("userReasons": ["Dentist"], )");
    writeProject ("new.json", { cue }, R"("userReasons": ["1", "2", "3", "4", "5", "6", "7", "8"], )");
    const auto result = apply();
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.errors, HasSubstr ("reason: the new list's stays, None; the old list has Dentist"));
    EXPECT_EQ (merged()["reason"], 0);
}

TEST_F (ProgramDiffApplyTest, jsonTellsWhatWasDone)
{
    writeProject ("old.json", { std::string (cue) + R"(, "done": true)",
                                R"("cueNumber": "T1", "text": "Gone", "done": true)" });
    writeProject ("new.json", { cue });
    const auto result = apply ("old.json", "new.json", { "--json" });
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.json()["project"], "merged.json");
    EXPECT_EQ (result.json()["events"], 1);
    EXPECT_EQ (result.json()["carried"], 1);
    EXPECT_EQ (result.json()["problems"].size(), 1u);
}

TEST_F (ProgramDiffApplyTest, theProjectIsWrittenInTheFormOfItsExtension)
{
    writeCue (R"(, "done": true)", "");
    EXPECT_EQ (run ({ "diff", "--apply", "old.json", "new.json", "-o", "merged.overmarks" }).status, 0);
    EXPECT_THAT (run ({ "dump", "merged.overmarks" }).output, HasSubstr ("\"done\":true"));
    EXPECT_EQ (errorOf ({ "diff", "--apply", "old.json", "new.json", "-o", "merged.csv" }, 2),
               "merged.csv: a project has the extension .overmarks, or .json for its JSON form");
}

TEST_F (ProgramDiffApplyTest, noListIsReplaced)
{
    writeCue (R"(, "done": true)", "");
    EXPECT_EQ (errorOf ({ "diff", "--apply", "old.json", "new.json", "-o", "new.json", "--force" }, 1),
               "new.json: the project would replace the list that it is made from");
    write ("merged.json", "mine");
    EXPECT_EQ (errorOf ({ "diff", "--apply", "old.json", "new.json", "-o", "merged.json" }, 1),
               path ("merged.json") + " exists already; --force replaces it");
    EXPECT_EQ (read ("merged.json"), "mine");
}

TEST_F (ProgramDiffApplyTest, aDryRunTellsAndWritesNothing)
{
    writeCue (R"(, "done": true)", "");
    const auto result = run ({ "diff", "--apply", "old.json", "new.json", "-o", "merged.json", "--dry-run" });
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.errors, HasSubstr ("Would write " + path ("merged.json") + ": 1 event\n"));
    EXPECT_FALSE (file ("merged.json").exists());
}

TEST_F (ProgramDiffApplyTest, applyAndOutputBelongTogether)
{
    writeCue ("", "");
    EXPECT_EQ (errorOf ({ "diff", "--apply", "old.json", "new.json" }, 2),
               "--apply needs -o, the project to write");
    EXPECT_EQ (errorOf ({ "diff", "old.json", "new.json", "-o", "merged.json" }, 2),
               "-o belongs to --apply; --html and --csv write what has changed");
}

TEST_F (ProgramDiffApplyTest, thePageOfTheChangesCanBeHadAtOnce)
{
    writeCue (R"(, "done": true)", "");
    EXPECT_EQ (apply ("old.json", "new.json", { "--html", "changes.html" }).status, 0);
    EXPECT_THAT (read ("changes.html"), HasSubstr ("Done: yes -&gt; no"));
}

} // namespace
