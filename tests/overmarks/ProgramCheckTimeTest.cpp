// SPDX-License-Identifier: GPL-3.0-only
// What `overmarks check` finds in the times of a list. Each rule fires once and keeps silent once.
#include "overmarks/ProgramCheckFixture.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{

// ---- tc-invalid -----------------------------------------------------------------------------------------------------------

TEST_F (ProgramCheckTest, aTextThatIsNoTimecodeIsFoundWithItsRow)
{
    EXPECT_THAT (foundInRows ("tc-invalid", "01:00:01:00,01:00:02:00,ANNA,Hello,A1\n"
                                            "soon,01:00:04:00,ANNA,Hello,A2\n"
                                            "01:00:61:00,01:01:02:00,ANNA,Hello,A3\n"
                                            "01:00:05:00,later,ANNA,Hello,A4\n"),
                 ElementsAre ("A4: Row 5: the end \"later\" is not a timecode such as 01:02:03:04",
                              "A2: Row 3: the start \"soon\" is not a timecode such as 01:02:03:04",
                              "A3: Row 4: the start \"01:00:61:00\" is not a timecode such as 01:02:03:04"))
        << "what has no time stands at the end of the list";
}

TEST_F (ProgramCheckTest, aFrameNumberThatTheRateDoesNotHaveIsFound)
{
    const auto* const rows = "01:00:01:24,01:00:02:25,ANNA,Hello,A1\n";
    EXPECT_THAT (
        foundInRows ("tc-invalid", rows),
        ElementsAre (
            "A1: Row 2: the end \"01:00:02:25\" has a frame number that doesn't exist at 25 frames per second"));
    EXPECT_THAT (foundInRows ("tc-invalid", rows, { "--fps", "30" }), IsEmpty());
}

TEST_F (ProgramCheckTest, anEventWithoutTimesIsFound)
{
    EXPECT_THAT (
        foundInRows ("tc-invalid", ",,ANNA,Hello,A1\n"
                                   "--:--:--:--,,ANNA,Hello,A2\n"
                                   ",01:00:04:00,ANNA,Hello,A3\n"),
        ElementsAre ("A1: It has no timecode", "A2: It has no timecode",
                     "A3: Row 4: the end \"01:00:04:00\" is not used, because the event has no start"));
}

TEST_F (ProgramCheckTest, anEventOfAProjectWithHalfItsTimesIsFound)
{
    EXPECT_THAT (foundInProject ("tc-invalid", cue ("A1", -1, 50) + "," + cue ("A2", 100, -1)),
                 ElementsAre ("A1: It has an end, but no start", "A2: It has a start, but no end"));
}

TEST_F (ProgramCheckTest, aTimecodeBeyondTheLastHourIsFound)
{
    EXPECT_THAT (
        foundInRows ("tc-invalid", "23:59:59:00,24:00:00:01,ANNA,Hello,A1\n"
                                   "31:00:00:00,31:00:01:00,ANNA,Hello,A2\n"
                                   "23:00:00:00,23:59:59:24,ANNA,Hello,A3\n"),
        testing::UnorderedElementsAre ("A1: The end 24:00:00:01 is beyond the last hour of timecode, 23",
                                       "A2: The start 31:00:00:00 is beyond the last hour of timecode, 23"));
}

TEST_F (ProgramCheckTest, timecodesInAllTheirFormsAreNoFinding)
{
    EXPECT_THAT (foundInRows ("tc-invalid", "01:00:01:00,01:00:02:00,ANNA,Hello,A1\n"
                                            "01:00:03;00,01:00:04;00,ANNA,Hello,A2\n"
                                            "\"01:00:05,500\",01:00:06.500,ANNA,Hello,A3\n"
                                            "00:00:00:00,00:00:01:00,ANNA,Hello,A4\n"),
                 IsEmpty());
}

// ---- drop-frame-illegal ---------------------------------------------------------------------------------------------------

TEST_F (ProgramCheckTest, aTimecodeThatDropFrameLeavesOutIsFound)
{
    const auto* const rows = "00:00:59;29,00:01:00;02,ANNA,Hello,A1\n"
                             "00:01:00;00,00:01:02;00,ANNA,Hello,A2\n"
                             "00:01:58;00,00:02:00;01,ANNA,Hello,A3\n"
                             "00:10:00;00,00:10:02;00,ANNA,Hello,A4\n";
    EXPECT_THAT (
        foundInRows ("drop-frame-illegal", rows, { "--fps", "29.97df" }),
        ElementsAre (
            "A3: Row 4: the end \"00:02:00;01\" is a timecode that drop-frame counting leaves out",
            "A2: Row 3: the start \"00:01:00;00\" is a timecode that drop-frame counting leaves out"));
    EXPECT_THAT (foundInRows ("tc-invalid", rows, { "--fps", "29.97df" }), IsEmpty());
}

TEST_F (ProgramCheckTest, withoutDropFrameEveryTimecodeIsThere)
{
    const auto* const rows = "00:01:00;00,00:01:02;00,ANNA,Hello,A1\n";
    EXPECT_THAT (foundInRows ("drop-frame-illegal", rows, { "--fps", "29.97" }), IsEmpty());
    EXPECT_THAT (foundInRows ("drop-frame-illegal", rows), IsEmpty());
}

TEST_F (ProgramCheckTest, fourTimecodesAreLeftOutAtTheDoubleRate)
{
    EXPECT_THAT (
        foundInRows ("drop-frame-illegal",
                     "00:01:00;03,00:01:02;00,ANNA,Hello,A1\n"
                     "00:01:04;00,00:01:05;59,ANNA,Hello,A2\n"
                     "00:02:00;04,00:02:02;00,ANNA,Hello,A3\n",
                     { "--fps", "59.94df" }),
        ElementsAre (
            "A1: Row 2: the start \"00:01:00;03\" is a timecode that drop-frame counting leaves out"));
}

// ---- before-origin --------------------------------------------------------------------------------------------------------

TEST_F (ProgramCheckTest, aCueBeforeThePictureIsFound)
{
    const auto* const rows = "00:59:58:00,00:59:59:00,ANNA,Hello,A1\n"
                             "01:00:00:00,01:00:02:00,ANNA,Hello,A2\n";
    EXPECT_THAT (foundInRows ("before-origin", rows, { "--origin", "01:00:00:00" }),
                 ElementsAre ("A1: It begins at 00:59:58:00, and the picture at 01:00:00:00"));
    EXPECT_THAT (foundInRows ("before-origin", rows), IsEmpty()) << "the picture begins at 00:00:00:00";
}

TEST_F (ProgramCheckTest, theFrameBeforeThePictureIsFoundThoughNoEventCanHoldIt)
{
    EXPECT_THAT (
        foundInRows ("before-origin", "00:59:59:24,01:00:01:00,ANNA,Hello,A1\n",
                     { "--origin", "01:00:00:00" }),
        ElementsAre (
            "A1: Row 2: the start \"00:59:59:24\" is the frame before the picture starts, which a cue list "
            "can't hold"));
}

TEST_F (ProgramCheckTest, aStreamerThatBeginsBeforeThePictureIsNoFinding)
{
    EXPECT_THAT (foundInProject ("before-origin", cue ("A1", 10, 60)), IsEmpty());
}

// ---- end-before-start and zero-length -------------------------------------------------------------------------------------

TEST_F (ProgramCheckTest, anEndBeforeTheStartIsFoundInAFile)
{
    EXPECT_THAT (foundInRows ("end-before-start", "01:00:02:00,01:00:01:00,ANNA,Hello,A1\n"
                                                  "01:00:03:00,01:00:03:00,ANNA,Hello,A2\n"
                                                  "01:00:04:00,01:00:05:00,ANNA,Hello,A3\n"),
                 ElementsAre ("A1: Row 2: the end \"01:00:01:00\" is before the start of the event"));
}

TEST_F (ProgramCheckTest, anEndBeforeTheStartIsFoundInSubtitles)
{
    write ("x.srt", "1\n00:00:05,000 --> 00:00:04,000\nHello\n\n2\n00:00:06,000 --> 00:00:07,000\nYou\n\n");
    EXPECT_THAT (found ("end-before-start", { "x.srt" }),
                 ElementsAre ("1: Row 1: the end \"00:00:04,000\" is before the start of the event"));
    EXPECT_THAT (found ("tc-invalid", { "x.srt" }), IsEmpty());
}

TEST_F (ProgramCheckTest, anEndBeforeTheStartIsFoundInAProject)
{
    EXPECT_THAT (foundInProject ("end-before-start", cue ("A1", 50, 25) + "," + cue ("A2", 75, 100)),
                 ElementsAre ("A1: It ends at 01:00:01:00, before it begins at 01:00:02:00"));
}

TEST_F (ProgramCheckTest, anEventWithoutLengthIsFound)
{
    EXPECT_THAT (foundInRows ("zero-length", "01:00:02:00,01:00:02:00,ANNA,Hello,A1\n"
                                             "01:00:03:00,01:00:03:01,ANNA,Hello,A2\n"),
                 ElementsAre ("A1: It begins and ends at 01:00:02:00"));
}

TEST_F (ProgramCheckTest, aStreamerAndTheFadesArePointsByNature)
{
    EXPECT_THAT (foundInProject ("zero-length", R"({"type": 1, "startFrameIndex": 0, "inPointFrameIndex": 50,
                     "endFrameIndex": 50}, {"type": 16, "startFrameIndex": 5, "inPointFrameIndex": 5,
                     "endFrameIndex": 5}, {"type": 2, "startFrameIndex": 90, "inPointFrameIndex": 90,
                     "endFrameIndex": 90, "cueNumber": "M"})"),
                 ElementsAre ("M: It begins and ends at 01:00:03:15"));
}

TEST_F (ProgramCheckTest, anEndThatTheImportHasMadeUpIsNotJudged)
{
    EXPECT_THAT (rulesIn ("01:00:02:00,later,ANNA,Hello,A1\n01:00:03:00,01:00:04:00,ANNA,Hello,A2\n"),
                 ElementsAre ("A1 tc-invalid"))
        << "the event would overlap with the next one";
}

// ---- too-short, too-long, too-fast ----------------------------------------------------------------------------------------

TEST_F (ProgramCheckTest, aVeryShortCueIsFound)
{
    const auto* const rows = "01:00:02:00,01:00:02:04,ANNA,No,A1\n01:00:03:00,01:00:03:05,ANNA,No,A2\n";
    EXPECT_THAT (foundInRows ("too-short", rows), ElementsAre ("A1: It lasts 0.16 seconds, less than 0.2"));
    EXPECT_THAT (foundInRows ("too-short", rows, { "--min-seconds", "0.5" }), SizeIs (2));
    EXPECT_THAT (foundInRows ("too-short", rows, { "--min-seconds", "0" }), IsEmpty());
}

TEST_F (ProgramCheckTest, aVeryLongCueIsFound)
{
    const auto* const rows = "01:00:00:00,01:00:30:00,ANNA,No,A1\n01:01:00:00,01:01:30:01,ANNA,No,A2\n";
    EXPECT_THAT (foundInRows ("too-long", rows), ElementsAre ("A2: It lasts 30.04 seconds, more than 30"));
    EXPECT_THAT (foundInRows ("too-long", rows, { "--max-seconds", "29.5" }), SizeIs (2));
}

TEST_F (ProgramCheckTest, moreTextThanAnybodyCanSpeakIsFound)
{
    const auto* const rows = "01:00:00:00,01:00:01:00,ANNA,Twenty letters are ok,A1\n"
                             "01:00:02:00,01:00:03:00,ANNA,These are a few letters more,A2\n";
    EXPECT_THAT (foundInRows ("too-fast", rows),
                 ElementsAre ("A1: 21 characters in 1 second: 21 a second, more than 20",
                              "A2: 28 characters in 1 second: 28 a second, more than 20"));
    EXPECT_THAT (foundInRows ("too-fast", rows, { "--max-cps", "21" }), SizeIs (1));
    EXPECT_THAT (foundInRows ("too-fast", rows, { "--max-cps", "28" }), IsEmpty());
}

TEST_F (ProgramCheckTest, speedIsMeasuredInRealTimeAndWhatIsSpoken)
{
    // Blanks around and between the words count once, a mark on a letter not at all.
    EXPECT_THAT (foundInRows ("too-fast", "01:00:00:00,01:00:01:00,ANNA,  a   b  e\xcc\x81  ,A1\n",
                              { "--max-cps", "4.9" }),
                 ElementsAre ("A1: 5 characters in 1 second: 5 a second, more than 4.9"));
    EXPECT_THAT (foundInRows ("too-fast", "01:00:00:00,01:00:10:00,ANNA,1234567890,A1\n",
                              { "--max-cps", "1", "--fps", "23.976" }),
                 IsEmpty())
        << "ten seconds of timecode last 10.01 seconds";
}

TEST_F (ProgramCheckTest, ofAMarkerNobodyWantsToKnowHowLongItIs)
{
    EXPECT_THAT (foundInProject ("too-long", R"({"type": 2, "startFrameIndex": 0, "inPointFrameIndex": 0,
                     "endFrameIndex": 9000})"),
                 IsEmpty());
}

// ---- overlap-same-character -----------------------------------------------------------------------------------------------

TEST_F (ProgramCheckTest, twoCuesOfOneCharacterAtATimeAreFound)
{
    EXPECT_THAT (foundInRows ("overlap-same-character", "01:00:02:00,01:00:04:00,ANNA,Hello,A1\n"
                                                        "01:00:03:00,01:00:05:00,ANNA,Hello,A2\n"),
                 ElementsAre ("A2: ANNA speaks A1 (01:00:02:00 to 01:00:04:00) and A2 (01:00:03:00 to "
                              "01:00:05:00) at the same time, for 1 second"));
}

TEST_F (ProgramCheckTest, charactersMaySpeakAtTheSameTimeAndOneAfterTheOther)
{
    EXPECT_THAT (foundInRows ("overlap-same-character", "01:00:02:00,01:00:04:00,ANNA,Hello,A1\n"
                                                        "01:00:03:00,01:00:05:00,TOM,Hello,T1\n"
                                                        "01:00:03:12,01:00:05:00,,Hello,1\n"
                                                        "01:00:03:13,01:00:05:00,,Hello,2\n"
                                                        "01:00:04:00,01:00:05:00,ANNA,Hello,A2\n"),
                 IsEmpty())
        << "who has no character may be anybody";
}

TEST_F (ProgramCheckTest, aLongCueIsFoundToOverlapWithAllThatItCovers)
{
    const auto lines = foundInRows ("overlap-same-character", "01:00:00:00,01:00:20:00,ANNA,Hello,A1\n"
                                                              "01:00:01:00,01:00:02:00,ANNA,Hello,A2\n"
                                                              "01:00:03:00,01:00:04:00,ANNA,Hello,A3\n");
    ASSERT_THAT (lines, SizeIs (2));
    EXPECT_THAT (lines[1], testing::HasSubstr ("A1 (01:00:00:00 to 01:00:20:00) and A3 "));
}

} // namespace
