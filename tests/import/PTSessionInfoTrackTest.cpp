// SPDX-License-Identifier: GPL-3.0-only
#include "import/PTSessionInfoTrack.h"

#include <gtest/gtest.h>

using namespace ZEP::Overmarks;

namespace
{

struct ClipName
{
    const char* what;
    const char* name;
    const char* text;
    const char* notes;
    const char* reason;
};

struct TrackName
{
    const char* what;
    const char* name;
    const char* character;
    const char* prefix;
    const char* actor;
};

class ClipNames : public testing::TestWithParam<ClipName>
{
};

class TrackNames : public testing::TestWithParam<TrackName>
{
};

const auto whatItIs = [] (const auto& info) { return info.param.what; };

} // namespace

TEST_P (ClipNames, areTakenApart)
{
    PTSessionInfoRegion clip;
    clip.setRegionName (GetParam().name);
    EXPECT_EQ (clip.regionName, GetParam().name);
    EXPECT_EQ (clip.text, GetParam().text);
    EXPECT_EQ (clip.notes, GetParam().notes);
    EXPECT_EQ (clip.reason, GetParam().reason);
}

INSTANTIATE_TEST_SUITE_P (
    Table, ClipNames,
    testing::Values (ClipName { "textAlone", "Who says so?", "Who says so?", "", "" },
                     ClipName { "notesThenReason", "Harbour {whisper} [AR4]", "Harbour", "whisper", "AR4" },
                     ClipName { "reasonThenNotes", "Harbour [AR4] {whisper}", "Harbour", "whisper", "AR4" },
                     ClipName { "reasonAlone", "Harbour [AR4]", "Harbour", "", "AR4" },
                     ClipName { "notesAlone", "Harbour {whisper}", "Harbour", "whisper", "" },
                     ClipName { "reasonEndsAtTheFirstBracket", "Go [AR4] home]", "Go", "", "AR4" },
                     ClipName { "reasonBeginsAtTheFirstBracket", "Go [[AR4]", "Go", "", "[AR4" },
                     ClipName { "reasonsAreNotJoined", "Go [AR4] [SR1]", "Go", "", "AR4" },
                     ClipName { "notesEndAtTheLastBrace", "Go {a} home {b}", "Go", "a} home {b", "" },
                     ClipName { "notesBeginAtTheFirstBrace", "Go {{a}}", "Go", "{a}", "" },
                     ClipName { "openBracketAlone", "Go [AR4 {a}", "Go [AR4", "a", "" },
                     ClipName { "closedBracketAlone", "Go AR4] {a}", "Go AR4]", "a", "" },
                     ClipName { "openBraceAlone", "Go {a [AR4]", "Go {a", "", "AR4" },
                     ClipName { "closedBraceAlone", "Go a} [AR4]", "Go a}", "", "AR4" },
                     ClipName { "noPairAtAll", "Go {home [now  ", "Go {home [now", "", "" },
                     ClipName { "closedBracketFirst", "Go ] home [AR4]", "Go ] home [AR4]", "", "" },
                     ClipName { "closedBraceFirst", "Go } home { now", "Go } home { now", "", "" },
                     ClipName { "laterBraceClosesIt", "Go } home { now }", "Go } home", " now ", "" },
                     ClipName { "bracketsInBraces", "Go {slowly [AR4] now}", "Go", "slowly [AR4] now",
                                "AR4" },
                     ClipName { "emptyPairs", "Go {} []", "Go", "", "" },
                     ClipName { "nothingBeforeThePairs", "{whisper} [AR4]", "", "whisper", "AR4" },
                     ClipName { "wordsBehindThePairsAreLost", "Go {a} home", "Go", "a", "" },
                     ClipName { "blanksAtTheEndAreCut", "Go home    ", "Go home", "", "" },
                     ClipName { "blanksAtTheBeginningStay", "  Go home", "  Go home", "", "" },
                     ClipName { "blanksBeforeThePairAreCut", "  Go   {a}", "  Go", "a", "" },
                     ClipName { "blanksAloneStay", "    ", "    ", "", "" },
                     ClipName { "blanksAloneBeforeAPairStay", "   [AR4]", "   ", "", "AR4" },
                     ClipName { "blanksInThePairsStay", "Go { a } [ AR4 ]", "Go", " a ", " AR4 " },
                     ClipName { "roundBracketsAreText", "Go (home)", "Go (home)", "", "" },
                     ClipName { "carriageReturnIsNoBlank", "Go \r", "Go \r", "", "" },
                     ClipName { "nothing", "", "", "", "" }),
    whatItIs);

TEST (PTSessionInfoRegion, aNewNameLeavesNothingOfTheOldOne)
{
    PTSessionInfoRegion clip;
    clip.setRegionName ("Harbour {whisper} [AR4]");
    clip.setRegionName ("Light");
    EXPECT_EQ (clip.text, "Light");
    EXPECT_EQ (clip.notes, "");
    EXPECT_EQ (clip.reason, "");
}

TEST (PTSessionInfoRegion, timesLoseTheBlanksBeforeThem)
{
    PTSessionInfoRegion clip;
    std::string start = "   01:00:00:00  ", end = "   01:00:02:00 ";
    clip.setStartTC (start);
    clip.setEndTC (end);
    EXPECT_EQ (clip.startTC, "01:00:00:00  ");
    EXPECT_EQ (clip.endTC, "01:00:02:00 ");
    EXPECT_EQ (start, clip.startTC);
    EXPECT_EQ (end, clip.endTC);
}

TEST (PTSessionInfoRegion, timesOfBlanksAloneStayAsTheyAre)
{
    PTSessionInfoRegion clip;
    std::string blanks = "   ", nothing;
    clip.setStartTC (blanks);
    clip.setEndTC (nothing);
    EXPECT_EQ (clip.startTC, "   ");
    EXPECT_EQ (clip.endTC, "");
}

//==============================================================================
TEST_P (TrackNames, areTakenApart)
{
    const PTSessionInfoTrack track (GetParam().name);
    EXPECT_EQ (track.name, GetParam().name);
    EXPECT_EQ (track.characterName, GetParam().character);
    EXPECT_EQ (track.charPrefix, GetParam().prefix);
    EXPECT_EQ (track.actorName, GetParam().actor);
    EXPECT_EQ (track.selected, ! std::string (GetParam().actor).empty());
    EXPECT_TRUE (track.regions.empty());
}

INSTANTIATE_TEST_SUITE_P (
    Table, TrackNames,
    testing::Values (TrackName { "all", "ANNA [A] {B. Miller} (close)", "ANNA", "A", "B. Miller" },
                     TrackName { "otherOrder", "ANNA (close) {B. Miller} [A]", "ANNA", "A", "B. Miller" },
                     TrackName { "nameAlone", "Music", "Music", "", "" },
                     TrackName { "commentAlone", "Music (stereo)", "Music", "", "" },
                     TrackName { "prefixAlone", "ANNA [A]", "ANNA", "A", "" },
                     TrackName { "actorAlone", "ANNA {B. Miller}", "ANNA", "", "B. Miller" },
                     TrackName { "emptyActor", "ANNA {}", "ANNA", "", "" },
                     TrackName { "blankActor", "ANNA { }", "ANNA", "", " " },
                     TrackName { "prefixEndsAtTheLastBracket", "ANNA [A] x]", "ANNA", "A] x", "" },
                     TrackName { "actorEndsAtTheLastBrace", "ANNA {B} {C}", "ANNA", "", "B} {C" },
                     TrackName { "commentEndsAtTheLastBracket", "ANNA (a) b) {C}", "ANNA", "", "C" },
                     TrackName { "prefixInTheComment", "ANNA (old [A]) {C}", "ANNA", "A", "C" },
                     TrackName { "openBracketAlone", "ANNA [A {C}", "ANNA [A", "", "C" },
                     TrackName { "openBraceAlone", "ANNA {C [A]", "ANNA {C", "A", "" },
                     TrackName { "openCommentAlone", "ANNA (close {C}", "ANNA (close", "", "C" },
                     TrackName { "closedFirst", "ANNA ] } ) [ { (", "ANNA ] } ) [ { (", "", "" },
                     TrackName { "blanksAround", "  ANNA MARIA   [A]", "ANNA MARIA", "A", "" },
                     TrackName { "blanksAroundANameAlone", "  ANNA  ", "ANNA", "", "" },
                     TrackName { "blanksAlone", "   ", "", "", "" },
                     TrackName { "blanksBeforeAPair", "  [A]", "", "A", "" },
                     TrackName { "nothingBeforeThePairs", "{C} ANNA", "", "", "C" },
                     TrackName { "nothing", "", "", "", "" }),
    whatItIs);

//==============================================================================
TEST (TextOfSessionTime, everyByteIsACharacter)
{
    EXPECT_EQ (textOfSessionTime ("01:00:00:00"), "01:00:00:00");
    EXPECT_EQ (textOfSessionTime ("1\xe4\xc3\xa4"), juce::CharPointer_UTF8 ("1\xc3\xa4\xc3\x83\xc2\xa4"));
    EXPECT_EQ (textOfSessionTime (""), "");
}
