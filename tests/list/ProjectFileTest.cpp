// SPDX-License-Identifier: GPL-3.0-only
#include "list/ProjectFile.h"

#include "list/ProjectFileSupport.h"
#include "support/ChildProcess.h"
#include "support/FullDisk.h"
#include "support/NotificationCounter.h"
#include "support/UndoHistory.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace ZEP::Overmarks::Testing
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/** A number and a text under field numbers that no record has yet. */
const std::string fieldsOfTheFuture = "\xc0\x3e\x07\xca\x3e\x03new";

// ---- what comes back -----------------------------------------------------------------------------------------------

TEST_F (ProjectFileTest, whatIsSavedIsLoaded)
{
    for (unsigned int seed = 1; seed <= 300; ++seed)
    {
        const auto project = RandomProjects (seed).make();
        repair (project);
        const auto bytes = bytesOf (project);
        const auto back = loaded (bytes);
        ASSERT_EQ (differenceOf (project, back), "") << "seed " << seed;
        ASSERT_EQ (bytesOf (back), bytes) << "seed " << seed << ": and again the same bytes";
    }
}

TEST_F (ProjectFileTest, whatIsSavedIsLoadedThroughAFile)
{
    for (unsigned int seed = 1; seed <= 10; ++seed)
    {
        const auto project = RandomProjects (seed).make();
        repair (project);
        ASSERT_EQ (save (project), "");
        Project back;
        ASSERT_EQ (load (back), "");
        ASSERT_EQ (differenceOf (project, back), "") << "seed " << seed;
    }
    EXPECT_THAT (folder.names(), ElementsAre ("reel.overmarks"));
}

TEST_F (ProjectFileTest, everyEventOfALoadedProjectCountsByItsTimeInfo)
{
    const auto back = loaded (bytesOf (smallProject()));
    for (const auto& event : back.list->events)
        EXPECT_EQ (event->getTimeInfo(), back.timeInfo);
    EXPECT_EQ (back.list->events[2]->getStartTCString(), juce::String ("01:00:04:00"));
}

TEST_F (ProjectFileTest, aTimeReferenceThatNobodyHasChosenComesBackAsSuch)
{
    auto project = Project::createEmpty (std::make_shared<ZEP::Core::TimeInfo>());
    EXPECT_TRUE (loaded (bytesOf (project)).timeInfo->tcDef.undefined);
    project.timeInfo->tcDef.undefined = false;
    project.timeInfo->tcDef.framesPerSecond = 0;
    project.timeInfo->tcDef.frameRateDenominator = 0;
    project.timeInfo->timeOrigin.hours = -1;
    project.timeInfo->timeOrigin.subFrames = 40;
    project.timeInfo->timeOrigin.subFramesPerFrame = 100;
    const auto back = loaded (bytesOf (project));
    EXPECT_EQ (back.timeInfo->tcDef, project.timeInfo->tcDef);
    EXPECT_EQ (back.timeInfo->timeOrigin, project.timeInfo->timeOrigin);
}

TEST_F (ProjectFileTest, theFirstFrameOfActionFollowsTheOriginUnlessItIsAnother)
{
    auto project = Project::createEmpty (timeInfoAt ("25", "01:00:00:00"));
    auto back = loaded (bytesOf (project));
    back.timeInfo->timeOrigin.hours = 2;
    EXPECT_EQ (back.timeInfo->getFirstFrameOfAction().hours, 2);

    ZEP::Core::_TCTime action;
    action.hours = 10;
    project.timeInfo->setFirstFrameOfAction (action);
    EXPECT_EQ (loaded (bytesOf (project)).timeInfo->getFirstFrameOfAction(), action);
}

TEST_F (ProjectFileTest, aFirstFrameOfActionThatWasSetStaysAlsoWhereItIsTheOrigin)
{
    auto project = Project::createEmpty (timeInfoAt ("25", "01:00:00:00"));
    const auto origin = project.timeInfo->timeOrigin;
    project.timeInfo->setFirstFrameOfAction (origin);

    auto back = loaded (bytesOf (project));
    back.timeInfo->timeOrigin.hours = 2;
    EXPECT_EQ (back.timeInfo->getFirstFrameOfAction(), origin);
    EXPECT_EQ (loaded (bytesOf (back)).timeInfo->getFirstFrameOfAction(), origin);
}

TEST_F (ProjectFileTest, ofTwoCharactersUnderOneIdentifierNoneIsLost)
{
    auto record = recordIn (bytesOf (smallProject()));
    auto& second = *record.add_characters();
    second.set_id ("c1");
    second.set_name ("BEN");
    auto& third = *record.add_characters();
    third.set_id (std::string ("c\0"
                               "1",
                               3)); // the same, once what no string can hold is left out
    third.set_name ("CLARA");
    ASSERT_TRUE (third.ParseFromString (third.SerializeAsString() + fieldsOfTheFuture));

    const auto back = loaded (fileAround (record.SerializeAsString()));

    const auto& ids = back.characters->characterIDs();
    ASSERT_EQ (ids.size(), 3u);
    EXPECT_EQ (back.characters->characters()[0]->name, juce::String ("ANNA"));
    EXPECT_EQ (back.characters->characters()[1]->name, juce::String ("BEN"));
    EXPECT_EQ (back.characters->characters()[2]->name, juce::String ("CLARA"));
    EXPECT_EQ (ids[0], juce::String ("c1"));
    EXPECT_EQ (ids[1].length(), 36);
    EXPECT_EQ (ids[2].length(), 36);
    EXPECT_EQ (back.newerFields.characters.at (ids[2]), fieldsOfTheFuture);
    EXPECT_EQ (back.list->events[2]->getCharacterID(), juce::String ("c1")) << "the cues stay with the first";
    EXPECT_EQ (differenceOf (loaded (bytesOf (back)), back), "");
}

TEST_F (ProjectFileTest, loadingNeitherSortsNorTellsNorMakesTheProjectCurrent)
{
    auto project = smallProject();
    std::swap (project.list->events[0], project.list->events[3]);
    const auto bytes = bytesOf (project);
    const auto cast = Event::getADRCharacterMap();
    const EventNews news;

    const auto back = loaded (bytes);

    EXPECT_THAT (namesOf (back.list->events), ElementsAre ("A2", "", "A1", ""));
    EXPECT_THAT (back.list->filteredEvents, IsEmpty());
    EXPECT_EQ (Event::getADRCharacterMap(), cast);
    EXPECT_EQ (news.count(), 0);
    EXPECT_EQ (undoSteps(), 0u);
}

TEST_F (ProjectFileTest, aLoadedProjectIsReadyForItsTable)
{
    auto project = loaded (bytesOf (smallProject()));
    project.makeCurrent();
    project.list->sortContentAndUpdateFilteredEvents();
    EXPECT_THAT (namesOf (project.list->sortedFilteredEvents), ElementsAre ("A1", "A2"));
    EXPECT_EQ (project.list->sortedFilteredEvents[0]->character()->name, juce::String ("ANNA"));
}

TEST_F (ProjectFileTest, aFadeThatTheListHasLostIsStoredAllTheSame)
{
    auto project = smallProject();
    setField (*project.list->fadeInEvent, "cueNumber", juce::String ("the lost one"));
    project.list->removeEvent (project.list->fadeInEvent, false);
    project.list->removeEvent (project.list->fadeOutEvent, false);
    project.list->fadeOutEvent = nullptr;

    const auto back = loaded (bytesOf (project));

    ASSERT_EQ (back.list->events.size(), 4u);
    EXPECT_EQ (back.list->fadeInEvent->getCueNumber(), juce::String ("the lost one"));
    EXPECT_EQ (back.list->fadeOutEvent->getType(), EventTypeFadeOut);
    EXPECT_EQ (project.list->events.size(), 2u) << "saving changes nothing";
}

TEST_F (ProjectFileTest, anEventOfSeveralTypesIsTheFadeThatItWasOpenedAs)
{
    // The types are bits, and a damaged file may set several.
    auto project = loaded (fileAround (field (listOfProject, "\x0a\x02\x50\x50\x0a\x02\x50\x20")));
    ASSERT_EQ (project.list->fadeInEvent->getType(), 80);

    EXPECT_EQ (differenceOf (loaded (bytesOf (project)), project), "");
    EXPECT_EQ (recordIn (bytesOf (project)).list().events_size(), 2);
}

TEST_F (ProjectFileTest, aTextThatIsNoUnicodeDoesNotLoseTheProject)
{
    const auto half = "a" + juce::String::charToString (0xd83d) + "b";
    auto project = smallProject (half);
    project.userReasons = { half };
    project.documents.title = half;
    project.list->sortKey = half;
    auto character = std::make_shared<ZEP::Core::ADRCharacter> (half);
    character->actor = character->prefix = half;
    project.characters->addCharacter (character, true, half);

    const auto back = loaded (bytesOf (project));

    EXPECT_TRUE (back.name.startsWith ("a") && back.name.endsWith ("b"));
    EXPECT_EQ (back.userReasons[0], back.name);
    EXPECT_EQ (back.documents.title, back.name);
    EXPECT_TRUE (back.characters->contains (back.name));
}

TEST_F (ProjectFileTest, aProjectThatIsNoneIsNotSaved)
{
    folder.write ("reel.overmarks", "old");
    EXPECT_EQ (save (Project()), "There is no project to save");
    EXPECT_EQ (folder.bytes ("reel.overmarks"), "old");

    std::string bytes = "as it was";
    auto withoutList = smallProject(), withoutCast = smallProject(), withoutTime = smallProject();
    withoutList.list = nullptr;
    withoutCast.characters = nullptr;
    withoutTime.timeInfo = nullptr;
    for (const auto& project : { withoutList, withoutCast, withoutTime })
        EXPECT_EQ (ProjectFile::toBytes (project, bytes), juce::String ("There is no project to save"));
    EXPECT_EQ (bytes, "as it was");
}

// ---- newer and older versions --------------------------------------------------------------------------------------

TEST_F (ProjectFileTest, whatANewerVersionHasStoredComesBackEverywhere)
{
    auto record = recordIn (bytesOf (smallProject()));
    record.mutable_timeinfo()->mutable_firstframeofaction()->set_hours (10);
    record.mutable_timeinfo()->mutable_firstframeofaction()->set_subframesperframe (80);
    const auto add = [] (google::protobuf::Message& part)
    { ASSERT_TRUE (part.ParseFromString (part.SerializeAsString() + fieldsOfTheFuture)); };
    add (*record.mutable_characters (0));
    add (*record.mutable_timeinfo()->mutable_timeorigin());
    add (*record.mutable_timeinfo()->mutable_firstframeofaction());
    add (*record.mutable_timeinfo());
    add (*record.mutable_documentsettings());
    add (*record.mutable_list()->mutable_events (2));
    add (*record.mutable_list());
    add (record);
    const auto bytes = fileAround (record.SerializeAsString());
    ASSERT_GT (bytes.size(), bytesOf (smallProject()).size() + 8 * fieldsOfTheFuture.size());

    auto project = loaded (bytes);
    EXPECT_EQ (bytesOf (project), bytes);

    project.list->removeEvent (project.list->events[2], false);
    EXPECT_EQ (loaded (bytesOf (project)).list->events.size(), 3u);
}

TEST_F (ProjectFileTest, subframesThatAFileDoesNotCountAreEightiethsOfAFrame)
{
    auto record = recordIn (bytesOf (smallProject()));
    record.mutable_timeinfo()->mutable_timeorigin()->clear_subframesperframe();
    EXPECT_EQ (loaded (fileAround (record.SerializeAsString())).timeInfo->timeOrigin.subFramesPerFrame, 80);

    record.mutable_timeinfo()->mutable_timeorigin()->set_subframesperframe (1);
    EXPECT_EQ (loaded (fileAround (record.SerializeAsString())).timeInfo->timeOrigin.subFramesPerFrame, 1);
}

TEST_F (ProjectFileTest, theRecordSaysWhichVersionHasWrittenIt)
{
    auto record = recordIn (bytesOf (smallProject()));
    EXPECT_EQ (record.formatversion(), 1);
    record.set_formatversion (99);
    const auto project = loaded (fileAround (record.SerializeAsString()));
    EXPECT_EQ (recordIn (bytesOf (project)).formatversion(), 1);
}

TEST_F (ProjectFileTest, aFileOfANewerFormIsRefusedInWords)
{
    EXPECT_EQ (
        messageOfFile (fileAround ("whatever it holds", 2)),
        thisFile (
            "was made by a newer version of Overmarks: it has form 2, and this version reads up to form 1"));
    EXPECT_EQ (
        messageOf (fileAround ("", 0xFFFFFFFF)),
        "The project file x was made by a newer version of Overmarks: it has form 4294967295, and this "
        "version reads up to form 1");
}

TEST_F (ProjectFileTest, aRecordWithNothingButItsFadesIsAProject)
{
    tessera1::ProtoProject record;
    record.mutable_list()->add_events()->set_type (EventTypeFadeIn);
    record.mutable_list()->add_events()->set_type (EventTypeFadeOut);

    const auto project = loaded (fileAround (record.SerializeAsString()));

    EXPECT_EQ (project.list->sortKey, juce::String ("StartTCString"));
    EXPECT_EQ (project.timeInfo->tcDef, ZEP::Core::_TCDef());
    EXPECT_EQ (project.documents, DocumentSettings());
    EXPECT_TRUE (project.characters->characters().empty());
}

TEST_F (ProjectFileTest, moreReasonsThanThereAreComeBack)
{
    auto project = smallProject();
    project.userReasons.assign (12, "Reason");
    EXPECT_EQ (loaded (bytesOf (project)).userReasons.size(), 12u);
}

// ---- what is refused -----------------------------------------------------------------------------------------------

/** Files of each kind that is refused. */
std::vector<std::string> refusedFiles()
{
    const auto good = bytesOf (smallProject ("theirs"));
    const auto replaced = [&good] (std::size_t place, const std::string& bytes)
    { return std::string (good).replace (place, bytes.size(), bytes); };
    auto noFade = recordIn (good), fastRate = noFade, subframes = noFade;
    noFade.mutable_list()->mutable_events()->DeleteSubrange (1, 1);
    fastRate.mutable_timeinfo()->set_framespersecond (256);
    subframes.mutable_timeinfo()->mutable_timeorigin()->set_subframesperframe (256);
    std::string manyEvents;
    for (int i = 0; i < 1'000'000; ++i)
        manyEvents += std::string ("\x3a\x02\x0a\x00", 4);
    return { "",
             good.substr (0, 5),
             good.substr (0, 100),
             "no project at all",
             std::string (good).replace (4, 2, "\n"),
             good + "x",
             replaced (8, littleEndian (2, 4)),
             replaced (8, littleEndian (0, 4)),
             replaced (12, "\xff\xff\xff\xff"),
             replaced (16, littleEndian (0x80000000, 8)),
             replaced (good.size() - 3, "\xff\xff\xff"),
             fileAround (good.substr (headerLength) + "\x0a\x7f"),
             fileAround (good.substr (headerLength) + manyEvents),
             fileAround (noFade.SerializeAsString()),
             fileAround (fastRate.SerializeAsString()),
             fileAround (subframes.SerializeAsString()) };
}

TEST_F (ProjectFileTest, aRefusedFileLeavesTheProjectAlone)
{
    auto project = smallProject ("mine");
    project.makeCurrent();
    const auto list = project.list;
    const auto characters = project.characters;
    const auto timeInfo = project.timeInfo;
    const auto before = bytesOf (project);

    for (const auto& bytes : refusedFiles())
    {
        folder.write ("reel.overmarks", bytes);
        const auto message = load (project);
        EXPECT_NE (message, "");
        EXPECT_EQ (project.list, list) << message;
        EXPECT_EQ (project.characters, characters) << message;
        EXPECT_EQ (project.timeInfo, timeInfo) << message;
        EXPECT_EQ (bytesOf (project), before) << message;
        EXPECT_EQ (Event::getADRCharacterMap(), characters) << message;
        EXPECT_EQ (ZEP::Core::ADRCueReasonsManager::sharedManager()->getReasonFromInteger (34),
                   juce::String ("Dentist"))
            << message;
    }
}

TEST_F (ProjectFileTest, aMissingFileIsSaid)
{
    Project project;
    EXPECT_EQ (load (project),
               "Can't read " + file.getFullPathName().toStdString() + ": No such file or directory");
}

TEST_F (ProjectFileTest, aFolderOrADeviceIsNoFile)
{
    Project project;
    ASSERT_TRUE (file.createDirectory());
    EXPECT_EQ (load (project), "Can't read " + file.getFullPathName().toStdString() + ": it is no file");
    EXPECT_EQ (ProjectFile::load (juce::File ("/dev/zero"), project),
               juce::String ("Can't read /dev/zero: it is no file"));
}

TEST_F (ProjectFileTest, aPipeIsNotWaitedFor)
{
    ASSERT_EQ (::mkfifo ((folder.path / "reel.overmarks").c_str(), 0600), 0);
    Project project;
    EXPECT_EQ (load (project), "Can't read " + file.getFullPathName().toStdString() + ": it is no file");
}

TEST_F (ProjectFileTest, aFileThatMayNotBeReadIsSaid)
{
    ASSERT_EQ (save (smallProject()), "");
    std::filesystem::permissions (folder.path, std::filesystem::perms (0755));
    std::filesystem::permissions (folder.path / "reel.overmarks", std::filesystem::perms (0000));
    const auto error = inChildProcess (
        [this]
        {
            Project project;
            return becomeOrdinaryUser() ? load (project) : "still root";
        });
    EXPECT_EQ (error, "Can't read " + file.getFullPathName().toStdString() + ": Permission denied");
}

TEST_F (ProjectFileTest, anEmptyFileIsSaid) { EXPECT_EQ (messageOfFile (""), thisFile ("is empty")); }

TEST_F (ProjectFileTest, aForeignFileIsToldApart)
{
    for (const std::string foreign : { "O", "{\"overmarks\": 1}", "PK\x03\x04", "\x89PNG\r\n\x1a\n",
                                       "\x89OV no", "Start TC,End TC\n01:00:00:00,01:00:01:00\n" })
        EXPECT_EQ (messageOfFile (foreign), thisFile ("is no Overmarks project")) << foreign;
}

TEST_F (ProjectFileTest, aCopyMadeAsTextIsToldApart)
{
    auto bytes = bytesOf (smallProject());
    bytes.replace (4, 2, "\n");
    EXPECT_EQ (messageOfFile (bytes), thisFile ("is damaged: it was copied as if it were text"));
}

TEST_F (ProjectFileTest, aCutFileTellsHowMuchIsThere)
{
    const auto bytes = bytesOf (smallProject());
    EXPECT_EQ (messageOfFile (bytes.substr (0, 5)), thisFile ("is cut off"));
    EXPECT_EQ (messageOfFile (bytes.substr (0, 23)), thisFile ("is cut off"));
    EXPECT_EQ (messageOfFile (bytes.substr (0, 24)),
               thisFile ("is cut off: 24 of its " + std::to_string (bytes.size()) + " bytes are there"));
}

TEST_F (ProjectFileTest, somethingBehindTheEndIsDamage)
{
    EXPECT_EQ (messageOfFile (bytesOf (smallProject()) + "x"),
               thisFile ("is damaged: something follows behind its end"));
}

TEST_F (ProjectFileTest, oneWrongByteIsDamage)
{
    auto bytes = bytesOf (smallProject());
    bytes.back() = static_cast<char> (bytes.back() ^ 1);
    EXPECT_EQ (messageOfFile (bytes), thisFile ("is damaged: its content is not what was saved"));
    bytes = bytesOf (smallProject());
    bytes[8] = 0; // no version has this number
    EXPECT_EQ (messageOfFile (bytes), thisFile ("is damaged: its content is not what was saved"));
}

TEST_F (ProjectFileTest, aSizeBeyondAllMeasureIsOnlyAClaim)
{
    auto bytes = bytesOf (smallProject());
    bytes.replace (16, 8, littleEndian (0x80000000, 8));
    const std::string words = " bytes, and a project has at most 1 GB";
    EXPECT_EQ (messageOfFile (bytes),
               thisFile ("is damaged or too large: it claims to hold 2147483648" + words));

    // A file that is as long as it claims takes no room on the disk and must take none in memory.
    std::filesystem::resize_file (folder.path / "reel.overmarks", 24 + 0x80000000ull);
    Project project;
    EXPECT_EQ (load (project), thisFile ("is damaged or too large: it claims to hold 2147483648" + words));

    bytes.replace (16, 8, std::string (8, '\xff'));
    EXPECT_EQ (messageOfFile (bytes),
               thisFile ("is damaged or too large: it claims to hold 18446744073709551615" + words));
    bytes.replace (16, 8, littleEndian (0x40000000 - 24, 8));
    EXPECT_EQ (messageOfFile (bytes), thisFile ("is cut off: " + std::to_string (bytes.size())
                                                + " of its 1073741824 bytes are there"));
    bytes.replace (16, 8, littleEndian (0x40000000 - 23, 8));
    EXPECT_EQ (messageOfFile (bytes),
               thisFile ("is damaged or too large: it claims to hold 1073741801" + words));
}

TEST_F (ProjectFileTest, aRecordThatIsNoneIsDamage)
{
    EXPECT_EQ (messageOfFile (fileAround ("\x0a\x7f")),
               thisFile ("is damaged: its records can't be understood"));
}

TEST_F (ProjectFileTest, nestingWithoutEndIsDamage)
{
    std::string groups;
    for (int i = 0; i < 100000; ++i)
        groups += "\xa3\x06"; // the start of a group that nobody knows
    EXPECT_EQ (messageOfFile (fileAround (groups)), thisFile ("is damaged: its records can't be understood"));
}

TEST_F (ProjectFileTest, aListWithoutAFadeCannotBeLoaded)
{
    const std::string words = "can't be loaded: its list has no Fade In or no Fade Out";
    EXPECT_EQ (messageOfFile (fileAround ("")), thisFile (words));
    for (const int missing : { 0, 1 })
    {
        auto record = recordIn (bytesOf (smallProject()));
        record.mutable_list()->mutable_events()->DeleteSubrange (missing, 1);
        EXPECT_EQ (messageOfFile (fileAround (record.SerializeAsString())), thisFile (words));
    }
}

TEST_F (ProjectFileTest, aFrameRateBeyondAllMeasureCannotBeLoaded)
{
    auto record = recordIn (bytesOf (smallProject()));
    record.mutable_timeinfo()->set_framespersecond (256);
    EXPECT_EQ (messageOfFile (fileAround (record.SerializeAsString())),
               thisFile ("can't be loaded: its time reference has 256 frames in a second"));
    record.mutable_timeinfo()->set_framespersecond (255);
    record.mutable_timeinfo()->mutable_timeorigin()->set_subframesperframe (1000);
    EXPECT_EQ (messageOfFile (fileAround (record.SerializeAsString())),
               thisFile ("can't be loaded: its time reference has 1000 subframes in a frame"));
}

// ---- saving where it is hard ---------------------------------------------------------------------------------------

TEST_F (ProjectFileTest, withoutRoomTheOldProjectStays)
{
    ASSERT_EQ (save (smallProject ("old")), "");
    {
        const FullDisk disk (100);
        EXPECT_EQ (save (smallProject ("new")),
                   "Can't write " + file.getFullPathName().toStdString() + ": File too large");
    }
    Project project;
    EXPECT_EQ (load (project), "");
    EXPECT_EQ (project.name, juce::String ("old"));
    EXPECT_THAT (folder.names(), ElementsAre ("reel.overmarks"));
}

TEST_F (ProjectFileTest, aFullDeviceIsAFailure)
{
    EXPECT_EQ (ProjectFile::save (smallProject(), juce::File ("/dev/full")),
               juce::String ("Can't write /dev/full: No space left on device"));
}

TEST_F (ProjectFileTest, inAFolderThatMayNotBeWrittenTheOldProjectStays)
{
    ASSERT_EQ (save (smallProject ("old")), "");
    std::filesystem::permissions (folder.path / "reel.overmarks", std::filesystem::perms (0666));
    std::filesystem::permissions (folder.path, std::filesystem::perms (0555));
    const auto error =
        inChildProcess ([this] { return becomeOrdinaryUser() ? save (smallProject ("new")) : "still root"; });
    std::filesystem::permissions (folder.path, std::filesystem::perms (0755));
    EXPECT_EQ (error, "Can't write " + file.getFullPathName().toStdString() + ": Permission denied");
    Project project;
    EXPECT_EQ (load (project), "");
    EXPECT_EQ (project.name, juce::String ("old"));
}

} // namespace
} // namespace ZEP::Overmarks::Testing
