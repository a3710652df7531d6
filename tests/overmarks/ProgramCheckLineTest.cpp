// SPDX-License-Identifier: GPL-3.0-only
// What `overmarks check` finds in texts, characters, cue numbers, takes and documents. Each rule fires once and keeps silent once.
#include "overmarks/ProgramCheckFixture.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{

// ---- character and text ---------------------------------------------------------------------------------------------------

TEST_F (ProgramCheckTest, aCueWithoutACharacterIsFound)
{
    EXPECT_THAT (foundInRows ("no-character", "01:00:02:00,01:00:04:00,,Hello,A1\n"
                                              "01:00:05:00,01:00:06:00,ANNA,Hello,A2\n"),
                 ElementsAre ("A1: It has no character"));
}

TEST_F (ProgramCheckTest, aCharacterWithoutANameIsNoCharacter)
{
    write ("x.json", R"({"overmarks": 1, "characters": [{"id": "c1", "name": " "}], "events": [)"
                         + cue ("A1", 0, 50) + "]}");
    EXPECT_THAT (found ("no-character", { "x.json" }), ElementsAre ("A1: Its character has no name"));
}

TEST_F (ProgramCheckTest, aMarkerNeedsNoCharacterNoTextAndNoCueNumber)
{
    writeProject (
        R"({"type": 2, "startFrameIndex": 0, "inPointFrameIndex": 0, "endFrameIndex": 50}, {"type": 1,
            "startFrameIndex": 0, "inPointFrameIndex": 50, "endFrameIndex": 50}, {"type": 4,
            "startFrameIndex": 60, "inPointFrameIndex": 60, "endFrameIndex": 64})");
    const auto result = check ({ "x.json" });
    EXPECT_THAT (result.json()["findings"], IsEmpty());
    EXPECT_EQ (result.status, 0);
}

TEST_F (ProgramCheckTest, aCharacterThatTheCastDoesNotHaveIsFound)
{
    EXPECT_THAT (foundInProject ("unknown-character", cue ("A1", 0, 50, {}, "c9") + "," + cue ("A2", 75, 100)
                                                          + "," + cue ("A3", 125, 150, {}, "")),
                 ElementsAre ("A1: Its character has the identifier \"c9\", which nobody in the cast has"));
}

TEST_F (ProgramCheckTest, aCueWithoutTextIsFound)
{
    EXPECT_THAT (foundInRows ("empty-text", "01:00:02:00,01:00:04:00,ANNA,,A1\n"
                                            "01:00:05:00,01:00:06:00,ANNA,\"   \",A2\n"
                                            "01:00:07:00,01:00:08:00,ANNA,?,A3\n"),
                 ElementsAre ("A1: It has no text", "A2: It has no text"));
}

TEST_F (ProgramCheckTest, tooManyLinesOfTextAreFound)
{
    const auto* const rows = "01:00:02:00,01:00:04:00,ANNA,1**2**3**4**5**6,A1\n"
                             "01:00:05:00,01:00:06:00,ANNA,1**2**3**4**5**,A2\n";
    EXPECT_THAT (foundInRows ("line-count", rows, { "--line-breaks" }),
                 ElementsAre ("A1: The text has 6 lines, more than 5"));
    EXPECT_THAT (foundInRows ("line-count", rows, { "--line-breaks", "--max-lines", "4" }), SizeIs (2));
    EXPECT_THAT (foundInRows ("line-count", rows, { "--line-breaks", "--max-lines", "6" }), IsEmpty());
}

// ---- cue numbers ----------------------------------------------------------------------------------------------------------

TEST_F (ProgramCheckTest, aCueWithoutANumberIsFound)
{
    EXPECT_THAT (foundInRows ("cue-number-missing", "01:00:02:00,01:00:04:00,ANNA,Hello,\n"
                                                    "01:00:05:00,01:00:06:00,ANNA,Hello,A2\n"),
                 ElementsAre (": It has no cue number"));
}

TEST_F (ProgramCheckTest, aCueNumberOfTwoCharactersIsFound)
{
    EXPECT_THAT (
        foundInRows ("cue-number-duplicate", "01:00:02:00,01:00:04:00,ANNA,Hello,A1\n"
                                             "01:00:05:00,01:00:06:00,TOM,Hello,A1\n"),
        ElementsAre ("A1: Cue number A1 is used for ANNA at 01:00:02:00 and for TOM at 01:00:05:00"));
}

TEST_F (ProgramCheckTest, aCueNumberThatComesBackIsFound)
{
    EXPECT_THAT (
        foundInRows ("cue-number-duplicate", "01:00:02:00,01:00:04:00,ANNA,Hello,A1\n"
                                             "01:00:05:00,01:00:06:00,TOM,Hello,T1\n"
                                             "01:00:07:00,01:00:08:00,ANNA,Hello,A1\n"),
        ElementsAre (
            "A1: Cue number A1 is used at 01:00:02:00 and again at 01:00:07:00, with other cues between them"));
}

TEST_F (ProgramCheckTest, linesOfOneCharacterThatFollowEachOtherAreOneCue)
{
    EXPECT_THAT (foundInRows ("cue-number-duplicate", "01:00:02:00,01:00:04:00,ANNA,Hello,A1\n"
                                                      "01:00:05:00,01:00:06:00,ANNA,Hello,A1\n"
                                                      "01:00:07:00,01:00:08:00,ANNA,Hello,A1\n"
                                                      "01:00:09:00,01:00:10:00,ANNA,Hello,\n"
                                                      "01:00:11:00,01:00:12:00,TOM,Hello,\n"),
                 IsEmpty());
}

// ---- takes ----------------------------------------------------------------------------------------------------------------

TEST_F (ProgramCheckTest, aChosenTakeThatWasNotRecordedIsFound)
{
    EXPECT_THAT (foundInProject ("takes-inconsistent",
                                 cue ("A1", 0, 50, R"("numRecordedTakes": 2, "selectedTake": 2)") + ","
                                     + cue ("A2", 75, 100, R"("numRecordedTakes": 1, "altTake": 3)") + ","
                                     + cue ("A3", 125, 150, R"("numRecordedTakes": 0, "selectedTake": 0)")),
                 ElementsAre ("A1: The chosen take is take 3, but only 2 were recorded",
                              "A2: The alternative take is take 4, but only 1 was recorded",
                              "A3: The chosen take is take 1, but none was recorded"));
}

TEST_F (ProgramCheckTest, takesThatNoListCanHaveAreFound)
{
    EXPECT_THAT (foundInProject (
                     "takes-inconsistent",
                     cue ("A1", 0, 50, R"("numRecordedTakes": -2)") + ","
                         + cue ("A2", 75, 100, R"("numRecordedTakes": 2, "selectedTake": -5)") + ","
                         + cue ("A3", 125, 150, R"("numRecordedTakes": 2, "selectedTake": 1, "altTake": 1)")),
                 ElementsAre ("A1: The number of takes is -2",
                              "A2: The chosen take has the number -5, which no take can have",
                              "A3: The chosen take and the alternative are the same"));
}

TEST_F (ProgramCheckTest, takesThatWereRecordedAndChosenAreNoFinding)
{
    EXPECT_THAT (
        foundInProject ("takes-inconsistent",
                        cue ("A1", 0, 50, R"("numRecordedTakes": 2, "selectedTake": 1, "altTake": 0)") + ","
                            + cue ("A2", 75, 100, R"("numRecordedTakes": 3)") + ","
                            + cue ("A3", 125, 150, R"("done": true)")),
        IsEmpty());
}

// ---- documents ------------------------------------------------------------------------------------------------------------

TEST_F (ProgramCheckTest, lettersThatSomeDocumentsLoseAreNamed)
{
    EXPECT_THAT (
        foundInRows ("non-latin1", "01:00:02:00,01:00:04:00,ŁUCJA,Ñandú Łódź,Ł1,Ω\n"
                                   "01:00:05:00,01:00:06:00,ANNA,abcdefg,A2,\n"),
        ElementsAre ("Ł1: Letters of the text (Ł ź), the cue number (Ł), the character's name (Ł), the "
                     "notes (Ω) become \"?\" in lists for ASC, Arendis or DS Taker"));
}

TEST_F (ProgramCheckTest, typographyOfTextIsAFindingSinceSomeDocumentsTakeItAsItStands)
{
    EXPECT_THAT (
        foundInProject ("non-latin1", cue ("A1", 0, 50, R"("text": "“Hello” – you")")),
        ElementsAre ("A1: Letters of the text (“ ” –) become \"?\" in lists for ASC, Arendis or DS Taker"));
    EXPECT_THAT (
        foundInProject ("non-latin1", cue ("A1", 0, 50, R"("text": "Hi", "notes": {"text": "“softer” –"})")),
        IsEmpty())
        << "that of notes is replaced by plain signs";
}

TEST_F (ProgramCheckTest, lettersThatAllDocumentsHoldAreNoFinding)
{
    EXPECT_THAT (foundInRows ("non-latin1", "01:00:02:00,01:00:04:00,ÉMILE,Ñandú für 5 £ ÿ,É1,ß\n"),
                 IsEmpty());
}

TEST_F (ProgramCheckTest, ofManyLettersTheFirstAreNamed)
{
    const auto lines = foundInRows ("non-latin1", "01:00:02:00,01:00:04:00,ANNA,абвгдежзиклмн,A1\n");
    ASSERT_THAT (lines, SizeIs (1));
    EXPECT_THAT (lines[0], HasSubstr ("the text (а б в г д е ж з ...)"));
}

TEST_F (ProgramCheckTest, aCueWithMoreLinesThanDSTakerHasMarkersIsFound)
{
    std::string rows;

    for (int line = 1; line <= 5; ++line)
        rows += "01:00:0" + std::to_string (line) + ":00,,ANNA,Hello,A1\n";

    EXPECT_THAT (foundInRows ("ds-taker-overflow", rows), IsEmpty()) << "the first needs no marker";
    EXPECT_THAT (foundInRows ("ds-taker-overflow", rows + "01:00:07:00,,ANNA,Hello,A1\n"),
                 ElementsAre ("A1: Cue number A1 has 6 events, which DS Taker takes for one cue; it has four "
                              "markers for them, and this event finds none"));
}

TEST_F (ProgramCheckTest, itIsTheExportToDSTakerThatWarnsOfTheSameCues)
{
    for (const int lines : { 5, 6 })
    {
        std::string rows;

        for (int line = 1; line <= lines; ++line)
            rows += "00:01:0" + std::to_string (line) + ":00,,ANNA,Hello,A1\n";

        for (const auto* rate : { "25", "29.97df" })
        {
            writeRows (rows);
            const auto exported = run ({ "export", "x.csv", "--fps", rate, "-o", ".", "--format", "ds-taker",
                                         "--name", "out", "--force" });
            const bool warned = exported.errors.find ("more than four subcues") != std::string::npos;
            EXPECT_EQ (warned, ! found ("ds-taker-overflow", { "x.csv", "--fps", rate }).empty())
                << lines << " at " << rate << exported.errors;
        }
    }
}

TEST_F (ProgramCheckTest, eventsWithoutANumberAreOneCueForDSTaker)
{
    std::string rows;

    for (int line = 1; line <= 6; ++line)
        rows += "01:00:0" + std::to_string (line) + ":00,,ANNA,Hello,\n";

    const auto lines = foundInRows ("ds-taker-overflow", rows);
    ASSERT_THAT (lines, SizeIs (1));
    EXPECT_THAT (lines[0], HasSubstr ("Without a cue number there are 6 events"));
}

} // namespace
