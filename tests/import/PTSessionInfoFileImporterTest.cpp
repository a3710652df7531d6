// SPDX-License-Identifier: GPL-3.0-only
#include "import/PTSessionInfoFileImporter.h"

#include "import/frame/EventFileImporterFactory.h"
#include "import/frame/EventRowReader.h"
#include "import/protools/SessionImport.h"
#include "support/MakeEvents.h"

#include <gtest/gtest.h>

using namespace ZEP::Overmarks;
using namespace ZEP::Core;
using namespace SessionSupport;

TEST_F (SessionImport, isFormatNoughtWithColumnsOfItsOwn)
{
    importFile ("harbour.txt");
    EXPECT_EQ (importer->type(), 0);
    EXPECT_FALSE (importer->userMappingEnabled());
    EXPECT_EQ (importer->languageCode(), "");
    EXPECT_EQ (importer->timeInfo, nullptr);
    EXPECT_EQ (importer->characterMap, nullptr);
    EXPECT_EQ (importer->columnMap, nineColumns);
    EXPECT_EQ (importer->customReasons, reasonNames);
}

TEST_F (SessionImport, everyClipOfTheChosenTracksIsARowInTheOrderOfTime)
{
    user.answer = cueTracksOf;
    EXPECT_EQ (importFile ("harbour.txt"), harbour);
    EXPECT_EQ (message, "");
    EXPECT_EQ (importer->encoding, TextEncodingASCII);
    EXPECT_EQ (log.lines(), std::vector<std::string>());
    EXPECT_EQ (namesOf (importer->selectedTracks),
               (std::vector<std::string> { "ANNA [A] {B. Miller} (close mic)", "CAPTAIN {C. Berg} [C]" }));
}

TEST_F (SessionImport, allTracksAreOfferedAndTheCueTracksAreTicked)
{
    importFile ("harbour.txt");
    EXPECT_EQ (user.questions, 1);
    EXPECT_EQ (namesOf (user.offered),
               (std::vector<std::string> { "ANNA [A] {B. Miller} (close mic)", "CAPTAIN {C. Berg} [C]",
                                           "Music (stereo)", "Spare" }));
    EXPECT_TRUE (user.offered[0]->selected);
    EXPECT_TRUE (user.offered[1]->selected);
    EXPECT_FALSE (user.offered[2]->selected);
    EXPECT_FALSE (user.offered[3]->selected);
}

TEST_F (SessionImport, tracksWithoutClipsGiveNoRows)
{
    const auto rows = importFile ("harbour.txt");
    ASSERT_EQ (rows.size(), 7u);
    EXPECT_EQ (rows[0], (std::vector<std::string> { "01:00:00:00", "01:01:00:00", "0001", "Harbour theme.L",
                                                    "Music", "", "", "", "" }));
}

TEST_F (SessionImport, theEndOfTheFileMayCloseTheLastTrack)
{
    user.answer = cueTracksOf;
    EXPECT_EQ (importFile ("no_markers.txt"), harbour);
    EXPECT_EQ (log.lines(), std::vector<std::string>());
}

TEST_F (SessionImport, cellsArePlainText)
{
    importFile ("harbour.txt");
    for (const auto& row : importer->rows)
        for (const auto& cell : row)
            EXPECT_TRUE (cell.isPlain());
}

TEST_F (SessionImport, theFactoryHandsOnTheReasons)
{
    const auto made = EventFileImporterFactory::fileImporterWithFilepath (
        dataFile ("protools/harbour.txt"), message, { "Noise" }, std::make_shared<TimeInfo>());
    ASSERT_NE (made, nullptr);
    EXPECT_EQ (made->type(), 0);
    EXPECT_EQ (made->timeInfo, nullptr);
    EXPECT_EQ (textsOf (made->rows)[4][8], "Noise (UR1)");
}

//==============================================================================
TEST_F (SessionImport, timesKeepTheBlanksBehindThem)
{
    const auto rows = importTracks ("TRACK NAME:\tANNA\nCHANNEL\n1\t1\tx\t  01:00:00:00 \t  \n\n\n");
    EXPECT_EQ (rows.at (0).at (0), "01:00:00:00 ");
    EXPECT_EQ (rows.at (0).at (1), "  ");
}

TEST_F (SessionImport, rowsAreSortedAsText)
{
    const auto rows = importTracks (track ("Spare")
                                    + track ("ANNA", clip ("a", "b", "") + clip ("b", "B", "")
                                                         + clip ("c", "10", "") + clip ("d", "9", "")));
    std::vector<std::string> starts;
    for (const auto& row : rows)
        starts.push_back (row[0]);
    EXPECT_EQ (starts, (std::vector<std::string> { "10", "9", "B", "b" }));
}

TEST_F (SessionImport, tracksOfOnePrefixCountOnInTheOrderOfTime)
{
    const auto rows = importTracks (
        track ("ANNA [A]", clip ("1", "01:00:00:00", "") + clip ("3", "01:00:02:00", ""))
        + track ("ANNA young [A]", clip ("2", "01:00:01:00", "") + clip ("4", "01:00:03:00", "")));
    ASSERT_EQ (rows.size(), 4u);
    for (std::size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ (rows[i][2], "A000" + rows[i][3]);
}

TEST_F (SessionImport, supplementsAreNumberedByTheReasonThatTheyBecome)
{
    const auto rows = importTracks (
        track ("ANNA [A]", clip ("1 [supp]", "01:00:00:00", "") + clip ("2 [SUPPLEMENT]", "01:00:01:00", "")
                               + clip ("3", "01:00:02:00", "") + clip ("4 [s]", "01:00:03:00", "")
                               + clip ("5 [AR1]", "01:00:04:00", "")));
    std::vector<std::string> numbers;
    for (const auto& row : rows)
        numbers.push_back (row[2] + " " + row[8]);
    EXPECT_EQ (numbers, (std::vector<std::string> { "A0001 SUP", "A0001 SUP", "A0002 ", "A0002 SUP",
                                                    "A0003 New Line (AR1)" }));
}

//==============================================================================
TEST_F (SessionImport, aClipOfTextAloneHasNoNotesAndNoReason)
{
    EXPECT_EQ (importTracks (track ("ANNA", clip ("Harbour", "01:00:00:00", "01:00:01:00"))),
               (TextTable { { "01:00:00:00", "01:00:01:00", "0001", "Harbour", "ANNA", "", "", "", "" } }));
}

TEST_F (SessionImport, notesAndReasonMayStandInEitherOrder)
{
    for (const auto* name : { "Harbour {whisper} [AR4]", "Harbour [AR4] {whisper}" })
        EXPECT_EQ (importTracks (track ("ANNA", clip (name, "01:00:00:00", "01:00:01:00"))),
                   (TextTable { { "01:00:00:00", "01:00:01:00", "0001", "Harbour", "ANNA", "", "", "whisper",
                                  "Clarity (AR4)" } }))
            << name;
}

TEST_F (SessionImport, reasonsAreFoundWhateverTheirCaseAndBlanks)
{
    EXPECT_EQ (reasonOf (" ar4 "), "Clarity (AR4)");
    EXPECT_EQ (reasonOf ("ur2"), "Legal (UR2)");
    EXPECT_EQ (reasonOf ("Sup"), "SUP");
}

TEST_F (SessionImport, aReasonThatNobodyKnowsStaysAsItStands)
{
    EXPECT_EQ (reasonOf (" my own "), " my own ");
    EXPECT_EQ (reasonOf ("AR16"), "AR16");
    EXPECT_EQ (reasonOf ("Clarity (AR4)"), "Clarity (AR4)");
    EXPECT_EQ (reasonOf (""), "");
}

TEST_F (SessionImport, aUserReasonWithoutANameKeepsItsCode) { EXPECT_EQ (reasonOf ("UR3"), "UR3"); }

TEST_F (SessionImport, allEightUserReasonsHaveTheirNames)
{
    reasonNames = { "a", "b", "c", "d", "e", "f", "g", "h" };
    importFile ("harbour.txt");
    for (int i = 1; i <= 8; ++i)
    {
        const auto code = "UR" + juce::String (i);
        EXPECT_EQ (importer->mapDublaneReason (code),
                   juce::String::charToString ('a' + i - 1) + " (" + code + ")");
    }
    EXPECT_EQ (importer->mapDublaneReason ("UR9"), "UR9");
    EXPECT_EQ (importer->mapDublaneReason ("UR0"), "UR0");
}

//==============================================================================
struct ReasonCase
{
    const char* code;
    const char* name;
};

class SessionReasons : public SessionImport, public testing::WithParamInterface<ReasonCase>
{
};

TEST_P (SessionReasons, haveTheNamesOfTheTrade)
{
    EXPECT_EQ (reasonOf (GetParam().code), GetParam().name);
    EXPECT_EQ (importer->mapDublaneReason (GetParam().code), GetParam().name);
    EXPECT_EQ (importer->mapDublaneReason (juce::String (GetParam().code).toLowerCase()),
               juce::String (GetParam().code).toLowerCase());
}

INSTANTIATE_TEST_SUITE_P (
    Table, SessionReasons,
    testing::Values (
        ReasonCase { "AR1", "New Line (AR1)" }, ReasonCase { "AR2", "Line Change (AR2)" },
        ReasonCase { "AR3", "Alt Delivery (AR3)" }, ReasonCase { "AR4", "Clarity (AR4)" },
        ReasonCase { "AR5", "Pronounciation (AR5)" }, ReasonCase { "AR6", "Projection (AR6)" },
        ReasonCase { "AR7", "Accent (AR7)" }, ReasonCase { "AR8", "ADR Continuity (AR8)" },
        ReasonCase { "AR9", "Dialogue Overlap (AR9)" }, ReasonCase { "AR10", "Breaths/Efforts (AR10)" },
        ReasonCase { "AR11", "Voice Over (AR11)" }, ReasonCase { "AR12", "Temp ADR (AR12)" },
        ReasonCase { "AR13", "Swearing (AR13)" }, ReasonCase { "AR14", "Revoice (AR14)" },
        ReasonCase { "AR15", "Foreign Dubbing (AR15)" }, ReasonCase { "SR1", "Mic Off-Axis (SR1)" },
        ReasonCase { "SR2", "Low Level (SR2)" }, ReasonCase { "SR3", "Distortion (SR3)" },
        ReasonCase { "SR4", "Wind on Mic (SR4)" }, ReasonCase { "SR5", "Radio Mic Rustling (SR5)" },
        ReasonCase { "SR6", "Boom Handling (SR6)" }, ReasonCase { "SR7", "Mic Drop-Out (SR7)" },
        ReasonCase { "SR8", "Mic Interference (SR8)" }, ReasonCase { "SR9", "Missing Channel (SR9)" },
        ReasonCase { "SR10", "Audible Sound Edit (SR10)" },
        ReasonCase { "SR11", "Incorrect Sync Sound (SR11)" }, ReasonCase { "SR12", "No Sync Sound (SR12)" },
        ReasonCase { "LR1", "Noisy Background (LR1)" }, ReasonCase { "LR2", "Camera & Crew (LR2)" },
        ReasonCase { "LR3", "Footsteps (LR3)" }, ReasonCase { "LR4", "Props (LR4)" },
        ReasonCase { "LR5", "Modern Sounds (LR5)" }),
    [] (const auto& rowOfTable) { return std::string (rowOfTable.param.code); });

//==============================================================================
TEST_F (SessionImport, aUserWhoClosesTheWindowGetsNoRowsAndNoMessage)
{
    user.answer = noneOf;
    EXPECT_EQ (importFile ("harbour.txt"), TextTable());
    EXPECT_EQ (message, "");
    EXPECT_TRUE (importer->selectedTracks.empty());
    EXPECT_EQ (importer->columnMap, nineColumns);
}

TEST_F (SessionImport, anEmptyListOfTracksIsOfferedToo)
{
    EXPECT_EQ (import (heading), TextTable());
    EXPECT_EQ (user.questions, 1);
    EXPECT_TRUE (user.offered.empty());
    EXPECT_EQ (message, "");
}

TEST_F (SessionImport, theOrderOfTheTracksPlaysNoPartForTheRows)
{
    user.answer = [] (const Tracks& tracks) { return Tracks (tracks.rbegin(), tracks.rend()); };
    EXPECT_EQ (importFile ("harbour.txt").size(), 7u);
    EXPECT_EQ (textsOf (importer->rows)[1], harbour[0]);
}

TEST_F (SessionImport, noTrackAtAllIsPassedOver)
{
    user.answer = [] (const Tracks& tracks) { return Tracks { nullptr, tracks[0], nullptr }; };
    EXPECT_EQ (importFile ("harbour.txt").size(), 3u);
    EXPECT_EQ (importer->selectedTracks.size(), 1u);
}

TEST_F (SessionImport, whereNobodyCanBeAskedItIsSaid)
{
    const juce::String nobody =
        "The tracks to import can't be chosen, since no window can be opened to ask for them";
    ASSERT_EQ (juce::MessageManager::getInstanceWithoutCreating(), nullptr);

    for (const auto& choice :
         { PTSessionInfoFileImporter::TrackChoice (PTSessionInfoFileImporter::askWithDialog),
           PTSessionInfoFileImporter::TrackChoice() })
    {
        PTSessionInfoFileImporter::chooseTracks = choice;
        EXPECT_EQ (importFile ("harbour.txt"), TextTable());
        EXPECT_EQ (message, nobody);
        EXPECT_TRUE (importer->columnMap.empty());
        EXPECT_TRUE (importer->selectedTracks.empty());
    }
}

//==============================================================================
TEST_F (SessionImport, rowsBecomeCues)
{
    user.answer = cueTracksOf;
    ADRCueReasonsManager::sharedManager()->setUserReasonNames (reasonNames);
    importFile ("harbour.txt");
    EventRowReader reader (Testing::timeInfoAt ("25", "01:00:00:00"), {});
    const auto result = reader.read (*importer);

    ASSERT_EQ (result.events.size(), 6u);
    ASSERT_EQ (result.problems.size(), 1u);
    EXPECT_EQ (result.problems[0].column, "Reason");
    EXPECT_EQ (result.problems[0].row, 5);
    EXPECT_EQ (result.events[0]->getStartTCString(), "01:00:02:00");
    EXPECT_EQ (result.events[0]->getEndTCString(), "01:00:04:00");
    EXPECT_EQ (result.events[0]->getCueNumber(), "A0001");
    EXPECT_EQ (result.events[0]->getNotes().getText(), "tired");
    EXPECT_EQ (ADRCueReasonsManager::sharedManager()->codeText (result.events[3]->getReason() + 1), "UR1");
    EXPECT_EQ (reader.characterMap()->characterIDs().size(), 2u);
}
