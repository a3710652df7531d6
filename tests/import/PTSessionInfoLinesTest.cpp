// SPDX-License-Identifier: GPL-3.0-only
#include "import/PTSessionInfoLines.h"

#include "import/frame/ImportedBytes.h"
#include "import/protools/SessionSupport.h"

#include <gtest/gtest.h>

using namespace ZEP::Overmarks;
using namespace SessionSupport;
using Outcome = PTSessionInfoLineReader::Outcome;

namespace
{

class SessionLines : public testing::Test
{
protected:
    /** Takes lines, each of which ends with "\n", up to the first that isn't taken. */
    Outcome take (const std::string& text)
    {
        for (std::size_t at = 0; at < text.size();)
        {
            const auto end = text.find ('\n', at);
            const auto outcome = reader.take (std::string_view (text).substr (at, end - at));
            if (outcome != Outcome::goesOn)
                return outcome;
            at = end + 1;
        }
        return Outcome::goesOn;
    }

    /** The clips of a track that was closed: name, start, end. */
    std::vector<std::vector<std::string>> clipsOf (std::size_t number) const
    {
        std::vector<std::vector<std::string>> clips;
        for (const auto& region : reader.tracks().at (number)->regions)
            clips.push_back ({ region->regionName, region->startTC, region->endTC });
        return clips;
    }

    std::vector<std::string> names() const { return namesOf (reader.tracks()); }

    PTSessionInfoLineReader reader { 0 };
};

using Names = std::vector<std::string>;
using Clips = std::vector<std::vector<std::string>>;

const std::string one = clip ("One", "01:00:00:00", "01:00:01:00");
const std::string two = clip ("Two", "01:00:02:00", "01:00:03:00");

const Clips oneAlone { { "One", "01:00:00:00", "01:00:01:00" } };

} // namespace

TEST_F (SessionLines, aTrackHasTheClipsBelowItsHeading)
{
    EXPECT_EQ (take (heading + track ("ANNA {B}", one + two)), Outcome::goesOn);
    EXPECT_EQ (names(), (Names { "ANNA {B}" }));
    EXPECT_EQ (clipsOf (0), (Clips { oneAlone[0], { "Two", "01:00:02:00", "01:00:03:00" } }));
    EXPECT_EQ (reader.numberOfLostTracks(), 0u);
}

TEST_F (SessionLines, tracksComeInTheOrderOfTheFile)
{
    EXPECT_EQ (take (track ("ANNA", one) + track ("TOM", two) + track ("Music")), Outcome::goesOn);
    EXPECT_EQ (names(), (Names { "ANNA", "TOM", "Music" }));
    EXPECT_EQ (clipsOf (1), (Clips { { "Two", "01:00:02:00", "01:00:03:00" } }));
    EXPECT_EQ (clipsOf (2), Clips());
}

TEST_F (SessionLines, emptyLinesBeforeTheFirstTrackDoNoHarm)
{
    EXPECT_EQ (take ("\n\n" + heading + "\n\n\n" + track ("ANNA", one)), Outcome::goesOn);
    EXPECT_EQ (names(), (Names { "ANNA" }));
}

TEST_F (SessionLines, moreThanTwoEmptyLinesCloseATrackOnce)
{
    EXPECT_EQ (take (track ("ANNA", one, "\n\n\n\n\n") + track ("TOM", two)), Outcome::goesOn);
    EXPECT_EQ (names(), (Names { "ANNA", "TOM" }));
}

TEST_F (SessionLines, emptyLinesApartDoNotCloseATrack)
{
    EXPECT_EQ (take (track ("ANNA", "\n" + one + "\n" + two)), Outcome::goesOn);
    EXPECT_EQ (clipsOf (0).size(), 2u);
}

TEST_F (SessionLines, oneEmptyLineBetweenTwoTracksLosesTheFirst)
{
    EXPECT_EQ (take (track ("ANNA", one, "\n") + track ("TOM", two)), Outcome::goesOn);
    EXPECT_EQ (names(), (Names { "TOM" }));
    EXPECT_EQ (clipsOf (0), (Clips { { "Two", "01:00:02:00", "01:00:03:00" } }));
    EXPECT_EQ (reader.numberOfLostTracks(), 1u);
    EXPECT_EQ (reader.firstLostTrack(), "ANNA");
}

TEST_F (SessionLines, theEndOfTheFileClosesNothing)
{
    EXPECT_EQ (take (track ("ANNA", one) + track ("TOM", two, "\n") + track ("EVE", two, "")),
               Outcome::goesOn);
    reader.finish();
    EXPECT_EQ (names(), (Names { "ANNA" }));
    EXPECT_EQ (reader.numberOfLostTracks(), 2u);
    EXPECT_EQ (reader.firstLostTrack(), "TOM");
}

TEST_F (SessionLines, aCarriageReturnIsNoEmptyLine)
{
    EXPECT_EQ (take ("TRACK NAME:\tANNA\r\n" + clipHeading + one + "\r\n\r\n"), Outcome::goesOn);
    EXPECT_EQ (names(), Names());
    EXPECT_EQ (take ("\n\n"), Outcome::goesOn);
    EXPECT_EQ (names(), (Names { "ANNA\r" }));
}

TEST_F (SessionLines, lineOfATabIsNotEmpty)
{
    EXPECT_EQ (take ("TRACK NAME:\tANNA\n\t\n\n\t\n\n"), Outcome::goesOn);
    EXPECT_EQ (names(), Names());
}

//==============================================================================
TEST_F (SessionLines, headingsAreFoundInsideTheFirstCell)
{
    EXPECT_EQ (take ("  old TRACK NAME: \tANNA\tmore\nAUDIO CHANNELS\n" + one + "\n\n"), Outcome::goesOn);
    EXPECT_EQ (names(), (Names { "ANNA" }));
    EXPECT_EQ (clipsOf (0), oneAlone);
}

TEST_F (SessionLines, headingsInOtherCellsOrLettersAreNone)
{
    EXPECT_EQ (take ("x\tTRACK NAME:\tANNA\ntrack name:\tANNA\nTRACK NAME\tANNA\n\n\n"), Outcome::goesOn);
    EXPECT_EQ (names(), Names());
    EXPECT_EQ (take ("TRACK NAME:\tANNA\nx\tCHANNEL\nchannel\n" + one + "\n\n"), Outcome::goesOn);
    EXPECT_EQ (clipsOf (0), Clips());
}

TEST_F (SessionLines, aTrackLineWithoutASecondCellChangesNothing)
{
    EXPECT_EQ (take (track ("ANNA", "TRACK NAME:\n" + one)), Outcome::goesOn);
    EXPECT_EQ (names(), (Names { "ANNA" }));
    EXPECT_EQ (clipsOf (0), oneAlone);
    EXPECT_EQ (reader.numberOfLostTracks(), 0u);
}

TEST_F (SessionLines, aTrackMayHaveNoName)
{
    EXPECT_EQ (take ("TRACK NAME:\t\n\n\n"), Outcome::goesOn);
    EXPECT_EQ (names(), (Names { "" }));
}

TEST_F (SessionLines, clipsBeforeTheFirstTrackAreSkipped)
{
    EXPECT_EQ (take (clipHeading + one + "TRACK NAME:\tANNA\n" + two + "\n\n"), Outcome::goesOn);
    EXPECT_EQ (clipsOf (0), (Clips { { "Two", "01:00:02:00", "01:00:03:00" } }));
}

TEST_F (SessionLines, clipsOfAClosedTrackAreSkipped)
{
    EXPECT_EQ (take (track ("ANNA", one) + two), Outcome::goesOn);
    EXPECT_EQ (clipsOf (0), oneAlone);
}

TEST_F (SessionLines, anyLineBelowAClipHeadingIsAClip)
{
    EXPECT_EQ (take (track ("ANNA", "COMMENTS:\tx\tName\t01:00:00:00\t01:00:01:00\n")), Outcome::goesOn);
    EXPECT_EQ (clipsOf (0), (Clips { { "Name", "01:00:00:00", "01:00:01:00" } }));
}

TEST_F (SessionLines, aShortLineAddsNothing)
{
    EXPECT_EQ (take (track ("ANNA", "1\t1\tLost\t01:00:00:00\n1\t1\tLost\n1\n" + one)), Outcome::goesOn);
    EXPECT_EQ (clipsOf (0), oneAlone);
}

TEST_F (SessionLines, whatAShortLineFilledDoesNotShowInTheNextClip)
{
    EXPECT_EQ (take (track ("ANNA", "1\t1\tLost {note} [AR4]\t01:00:00:00\n" + one)), Outcome::goesOn);
    EXPECT_EQ (reader.tracks()[0]->regions[0]->notes, "");
    EXPECT_EQ (reader.tracks()[0]->regions[0]->reason, "");
}

TEST_F (SessionLines, fiveCellsMakeAClip)
{
    EXPECT_EQ (take (track ("ANNA", "\t\tName\t01:00:00:00\t\n")), Outcome::goesOn);
    EXPECT_EQ (clipsOf (0), (Clips { { "Name", "01:00:00:00", "" } }));
}

//==============================================================================
TEST_F (SessionLines, aFirstTrackThatIsNotInTimecodeEndsIt)
{
    EXPECT_EQ (take (track ("ANNA", one + clip ("Two", "90+12", "91+02"))), Outcome::startIsNoTimecode);
    EXPECT_EQ (names(), Names());
}

TEST_F (SessionLines, laterTracksAreNotTested)
{
    EXPECT_EQ (take (track ("ANNA", one) + track ("TOM", clip ("Two", "90+12", "x"))), Outcome::goesOn);
    EXPECT_EQ (clipsOf (1), (Clips { { "Two", "90+12", "x" } }));
}

TEST_F (SessionLines, aFirstTrackWithoutClipsEndsTheTest)
{
    EXPECT_EQ (take (track ("Empty") + track ("TOM", clip ("Two", "90+12", "x"))), Outcome::goesOn);
    EXPECT_EQ (names(), (Names { "Empty", "TOM" }));
}

TEST_F (SessionLines, aFirstTrackThatIsLostLeavesTheNextToBeTested)
{
    EXPECT_EQ (take (track ("ANNA", one, "\n") + track ("TOM", clip ("Two", "90+12", "x"))),
               Outcome::startIsNoTimecode);
}

TEST_F (SessionLines, theTestConcernsTheStartAlone)
{
    EXPECT_EQ (take (track ("ANNA", clip ("One", "01:00:00:00", "90+12"))), Outcome::goesOn);
    EXPECT_EQ (clipsOf (0), (Clips { { "One", "01:00:00:00", "90+12" } }));
}

TEST_F (SessionLines, theTestComesAlsoWhereTheLineEndsBehindTheStart)
{
    EXPECT_EQ (take (track ("ANNA", "1\t1\tOne\t90+12\n")), Outcome::startIsNoTimecode);
}

TEST_F (SessionLines, clipsWithoutATrackAreTestedToo)
{
    EXPECT_EQ (take (clipHeading + clip ("One", "90+12", "91+02")), Outcome::startIsNoTimecode);
}

TEST_F (SessionLines, dropFrameIsTimecode)
{
    EXPECT_EQ (take (track ("ANNA", clip ("One", "01:00:00;02", "01:00:01;00"))), Outcome::goesOn);
    EXPECT_EQ (clipsOf (0)[0][1], "01:00:00;02");
}

//==============================================================================
TEST_F (SessionLines, tracksByTheMillionAreTooMuch)
{
    std::string text;
    for (int i = 0; i < 200000; ++i)
        text += "TRACK NAME:\t\n\n\n";
    EXPECT_EQ (take (text), Outcome::tooMuch);
}

TEST_F (SessionLines, clipsByTheMillionAreTooMuch)
{
    std::string text = "TRACK NAME:\tANNA\nCHANNEL\n";
    for (int i = 0; i < 200000; ++i)
        text += "\t\t\t01:00:00:00\t\n";
    EXPECT_EQ (take (text), Outcome::tooMuch);
}

TEST_F (SessionLines, aPrefixOfAMegabyteIsNotRepeatedForEver)
{
    std::string text = "TRACK NAME:\tANNA [" + std::string (1 << 20, 'x') + "]\nCHANNEL\n";
    for (int i = 0; i < 1000; ++i)
        text += "\t\t\t01:00:00:00\t\n";
    EXPECT_EQ (take (text), Outcome::tooMuch);
}
