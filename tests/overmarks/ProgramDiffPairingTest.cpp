// SPDX-License-Identifier: GPL-3.0-only
// overmarks diff: which cue of the old list is which of the new one.
#include "overmarks/ProgramDiffFixture.h"

#include <gmock/gmock.h>

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class ProgramDiffPairingTest : public ProgramDiffFixture
{
protected:
    /** Lists of one character's lines without numbers, each at a second of the first hour. */
    void writeLines (const std::vector<std::pair<int, std::string>>& olds,
                     const std::vector<std::pair<int, std::string>>& news) const
    {
        write ("old.csv", listOf (olds));
        write ("new.csv", listOf (news));
    }

    static std::string listOf (const std::vector<std::pair<int, std::string>>& lines)
    {
        std::string list ("Start TC,Character,Text\n");

        for (const auto& [second, text] : lines)
            list += timecode (second) + ",ANNA," + text + "\n";

        return list;
    }

    static std::string timecode (int second)
    {
        return juce::String::formatted ("01:%02d:%02d:00", second / 60, second % 60).toStdString();
    }

    /** "retimed 10 +00:00:05:00": each change with the second at which it stands. */
    std::vector<std::string> told() const
    {
        std::vector<std::string> result;

        for (const auto& change : changes())
        {
            const auto& event = change["new"].is_null() ? change["old"] : change["new"];
            const juce::String start (event["startTC"].get<std::string>());
            const int second =
                start.substring (3, 5).getIntValue() * 60 + start.substring (6, 8).getIntValue();
            result.push_back (change["kind"].get<std::string>() + " " + std::to_string (second)
                              + (change.contains ("shift") ? " " + change["shift"].get<std::string>() : ""));
        }

        return result;
    }
};

TEST_F (ProgramDiffPairingTest, oneIdentityIsOneCueWhateverElseItIs)
{
    writeProject (
        "old.json",
        { R"("uuid": "u1", "cueNumber": "A1", "characterID": "a", "text": "Hello", "inPointFrameIndex": 75, "endFrameIndex": 99)" });
    writeProject (
        "new.json",
        { R"("uuid": "u1", "cueNumber": "T9", "characterID": "t", "text": "Bye", "inPointFrameIndex": 9000, "endFrameIndex": 9024)" });
    EXPECT_THAT (kinds ({}, "old.json", "new.json"),
                 ElementsAre ("retimed T9", "text T9", "character T9", "other T9"));
}

TEST_F (ProgramDiffPairingTest, anIdentityWinsOverTheNumber)
{
    writeProject ("old.json", { R"("uuid": "u1", "cueNumber": "A1", "text": "One")",
                                R"("uuid": "u2", "cueNumber": "A2", "text": "Two")" });
    writeProject ("new.json", { R"("uuid": "u1", "cueNumber": "A2", "text": "One")",
                                R"("uuid": "u2", "cueNumber": "A1", "text": "Two")" });
    EXPECT_THAT (kinds ({}, "old.json", "new.json"), ElementsAre ("other A2", "other A1"));
}

TEST_F (ProgramDiffPairingTest, importedListsPairAlthoughTheirIdentitiesAreFresh)
{
    write ("x.csv", threeCues);
    EXPECT_THAT (changes ({}, "x.csv", "x.csv"), IsEmpty());
}

TEST_F (ProgramDiffPairingTest, theNumberAndTheCharacterFindARewrittenLineAnywhere)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Hello,A1\n", "01:10:02:00,01:10:04:00,ANNA,Goodbye then,A1\n");
    EXPECT_THAT (kinds(), ElementsAre ("retimed A1", "text A1"));
}

TEST_F (ProgramDiffPairingTest, oneNumberOfTwoCharactersIsTwoCues)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,One,1\n01:00:02:00,01:00:04:00,TOM,Two,1\n",
                "01:00:02:00,01:00:04:00,TOM,Two indeed,1\n01:00:02:00,01:00:04:00,ANNA,One indeed,1\n");
    EXPECT_THAT (kinds(), ElementsAre ("text 1", "text 1"));
}

TEST_F (ProgramDiffPairingTest, linesOfOneNumberPairByTheirTextsFirst)
{
    writeLists (
        "01:00:02:00,01:00:03:00,ANNA,One,1\n01:00:04:00,01:00:05:00,ANNA,Two,1\n01:00:06:00,01:00:07:00,ANNA,Three,1\n",
        "01:00:04:00,01:00:05:00,ANNA,Two,1\n01:00:06:00,01:00:07:00,ANNA,Three,1\n");
    EXPECT_THAT (kinds(), ElementsAre ("removed 1"));
    EXPECT_EQ (changes()[0]["old"]["text"]["text"], "One");
}

TEST_F (ProgramDiffPairingTest, rewrittenLinesOfOneNumberPairInTheOrderOfTime)
{
    writeLists ("01:00:02:00,01:00:03:00,ANNA,One,1\n01:00:04:00,01:00:05:00,ANNA,Two,1\n",
                "01:00:04:00,01:00:05:00,ANNA,Zwei,1\n01:00:02:00,01:00:03:00,ANNA,Eins,1\n");
    const auto found = changes();
    ASSERT_EQ (found.size(), 2u);
    EXPECT_EQ (found[0]["old"]["text"]["text"], "One");
    EXPECT_EQ (found[0]["new"]["text"]["text"], "Eins");
    EXPECT_EQ (found[1]["new"]["text"]["text"], "Zwei");
}

TEST_F (ProgramDiffPairingTest, dashesAreNoNumber)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Hello,--\n", "01:00:52:00,01:00:54:00,ANNA,Goodbye,--\n");
    EXPECT_THAT (kinds(), ElementsAre ("removed --", "added --"));
}

TEST_F (ProgramDiffPairingTest, aLineWithAnotherNumberIsFoundByItsText)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Hello,A1\n", "01:00:52:00,01:00:54:00,ANNA,Hello,A7\n");
    EXPECT_THAT (kinds(), ElementsAre ("retimed A7", "other A7"));
}

TEST_F (ProgramDiffPairingTest, aRenumberedListPairsByItsTexts)
{
    writeLists (
        "01:00:02:00,01:00:03:00,ANNA,One,1\n01:00:04:00,01:00:05:00,ANNA,Two,2\n01:00:06:00,01:00:07:00,ANNA,Three,3\n",
        "01:00:01:00,01:00:02:00,ANNA,Nought,1\n01:00:02:00,01:00:03:00,ANNA,One,2\n"
        "01:00:04:00,01:00:05:00,ANNA,Two,3\n01:00:06:00,01:00:07:00,ANNA,Three,4\n");
    EXPECT_THAT (kinds(), ElementsAre ("added 1", "other 2", "other 3", "other 4"));
    EXPECT_THAT (
        diff().errors,
        HasSubstr ("Most lines have another cue number: lines were found by their texts first, not by their "
                   "numbers\n"));
}

TEST_F (ProgramDiffPairingTest, whereMostNumbersHoldTheyAreTrusted)
{
    writeLists (
        "01:00:02:00,01:00:03:00,ANNA,One,1\n01:00:04:00,01:00:05:00,ANNA,Two,2\n01:00:06:00,01:00:07:00,ANNA,Three,3\n",
        "01:00:02:00,01:00:03:00,ANNA,One,1\n01:00:04:00,01:00:05:00,ANNA,Three,2\n01:00:06:00,01:00:07:00,ANNA,Two,3\n");
    EXPECT_THAT (kinds(), ElementsAre ("text 2", "text 3"));
}

TEST_F (ProgramDiffPairingTest, theNearestOfEqualLinesIsTheSame)
{
    writeLines ({ { 10, "Ja." }, { 100, "Ja." } }, { { 10, "Ja." }, { 50, "Ja." }, { 101, "Ja." } });
    EXPECT_THAT (told(), ElementsAre ("added 50", "retimed 101 +00:00:01:00"));
}

TEST_F (ProgramDiffPairingTest, equalLinesKeepTheirOrder)
{
    writeLines ({ { 10, "Ja." }, { 20, "Ja." }, { 30, "Ja." } },
                { { 13, "Ja." }, { 24, "Ja." }, { 35, "Ja." } });
    EXPECT_THAT (told(), ElementsAre ("retimed 13 +00:00:03:00", "retimed 24 +00:00:04:00",
                                      "retimed 35 +00:00:05:00"));
}

TEST_F (ProgramDiffPairingTest, equalLinesMoveWithTheLinesAroundThem)
{
    writeLines ({ { 10, "Ja." }, { 20, "Well then" }, { 30, "Ja." }, { 40, "Ja." } },
                { { 10, "Ja." }, { 40, "Ja." }, { 60, "Well then" }, { 70, "Ja." }, { 80, "Ja." } });
    EXPECT_THAT (told(), ElementsAre ("added 40", "retimed 60 +00:00:40:00", "retimed 70 +00:00:40:00",
                                      "retimed 80 +00:00:40:00"));
}

TEST_F (ProgramDiffPairingTest, aLineGoneAtTheStartAndOneNewAtTheEndAreTwo)
{
    writeLines ({ { 10, "Ja." }, { 21, "Ja." }, { 33, "Ja." }, { 46, "Ja." } },
                { { 21, "Ja." }, { 33, "Ja." }, { 46, "Ja." }, { 90, "Ja." } });
    EXPECT_THAT (told(), ElementsAre ("removed 10", "added 90"));
}

TEST_F (ProgramDiffPairingTest, oneLinePutInAmongEqualOnesMovesTheOthersBehindIt)
{
    writeLines ({ { 10, "Ja." }, { 21, "Ja." }, { 33, "Ja." }, { 46, "Ja." } },
                { { 10, "Ja." }, { 21, "Ja." }, { 27, "Ja." }, { 63, "Ja." }, { 76, "Ja." } });
    EXPECT_THAT (told(), ElementsAre ("added 27", "retimed 63 +00:00:30:00", "retimed 76 +00:00:30:00"));
}

TEST_F (ProgramDiffPairingTest, blanksAndLineBreaksDoNotMakeAnotherText)
{
    writeProject ("old.json", { R"("text": "Hello   there", "inPointFrameIndex": 75, "endFrameIndex": 99)" });
    writeProject ("new.json",
                  { R"("text": "Hello\nthere", "inPointFrameIndex": 1575, "endFrameIndex": 1599)" });
    const auto found = changes ({}, "old.json", "new.json");
    ASSERT_EQ (found.size(), 2u);
    EXPECT_EQ (found[0]["kind"], "retimed");
    EXPECT_EQ (found[1]["kind"], "text");
}

TEST_F (ProgramDiffPairingTest, theNameOfACharacterMayBeWrittenInOtherLetters)
{
    writeLists ("01:00:02:00,01:00:04:00,Anna,Hello,A1\n", "01:00:52:00,01:00:54:00,ANNA,Goodbye,A1\n");
    EXPECT_THAT (kinds(), ElementsAre ("retimed A1", "text A1", "character A1"));
}

TEST_F (ProgramDiffPairingTest, anotherCharactersLineHasToBeCloseBy)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Ja.,\n", "01:00:11:00,01:00:13:00,TOM,Ja.,\n");
    EXPECT_THAT (kinds(), ElementsAre ("retimed Ja.", "character Ja."));
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Ja.,\n", "01:00:13:00,01:00:15:00,TOM,Ja.,\n");
    EXPECT_THAT (kinds(), ElementsAre ("removed Ja.", "added Ja."));
}

TEST_F (ProgramDiffPairingTest, anotherTextOfTheSameCharacterAtTheSamePlaceIsARewrittenLine)
{
    writeLines ({ { 10, "Ja." } }, { { 10, "Nein!" } });
    EXPECT_THAT (told(), ElementsAre ("text 10"));
    writeLines ({ { 10, "Ja." } }, { { 11, "Nein!" } });
    EXPECT_THAT (told(), ElementsAre ("removed 10", "added 11"));
    writeLines ({ { 10, "Who is there?" } }, { { 11, "Who was there?" } });
    EXPECT_THAT (told(), ElementsAre ("retimed 11 +00:00:01:00", "text 11"));
}

TEST_F (ProgramDiffPairingTest, aRewrittenLineMovesWithTheLinesAroundIt)
{
    writeLines ({ { 10, "One" }, { 20, "Two" } }, { { 40, "One" }, { 50, "Zwei" } });
    EXPECT_THAT (told(), ElementsAre ("retimed 40 +00:00:30:00", "retimed 50 +00:00:30:00", "text 50"));
}

TEST_F (ProgramDiffPairingTest, twoNumbersAtOnePlaceAreTwoCues)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,Hello,A1\n", "01:00:02:00,01:00:04:00,ANNA,Goodbye,A2\n");
    EXPECT_THAT (kinds(), ElementsAre ("removed A1", "added A2"));
}

TEST_F (ProgramDiffPairingTest, cuesWithoutTextOrNumberPairCloseBy)
{
    writeLines ({ { 10, "" }, { 40, "" } }, { { 15, "" }, { 70, "" } });
    EXPECT_THAT (told(), ElementsAre ("retimed 15 +00:00:05:00", "removed 40", "added 70"));
}

TEST_F (ProgramDiffPairingTest, cuesWithoutATimePairInTheirOrder)
{
    writeLists (",,ANNA,Ja.,\n,,ANNA,Ja.,\n", ",,ANNA,Ja.,\n,,ANNA,Ja.,\n,,ANNA,Ja.,\n");
    EXPECT_THAT (kinds(), ElementsAre ("added Ja."));
}

TEST_F (ProgramDiffPairingTest, rowsInAnotherOrderAreNoChange)
{
    writeLists ("01:00:02:00,01:00:04:00,ANNA,One,A1\n01:00:12:00,01:00:14:00,TOM,Two,T1\n",
                "01:00:12:00,01:00:14:00,TOM,Two,T1\n01:00:02:00,01:00:04:00,ANNA,One,A1\n");
    EXPECT_THAT (changes(), IsEmpty());
}

TEST_F (ProgramDiffPairingTest, aCueNeverBecomesAMarker)
{
    writeProject ("old.json", { R"("text": "Hello", "inPointFrameIndex": 75, "endFrameIndex": 99)" });
    write ("new.json",
           juce::String (read ("old.json")).replace (R"("type": 8)", R"("type": 2)").toStdString());
    EXPECT_THAT (kinds ({}, "old.json", "new.json"), ElementsAre ("removed Hello", "added Hello"));
}

} // namespace
