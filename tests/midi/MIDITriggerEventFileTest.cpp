// SPDX-License-Identifier: GPL-3.0-only
#include "midi/MIDITriggerEventFile.h"

#include "midi/TriggerFolder.h"
#include "proto/midi.pb.h"
#include "support/ChildProcess.h"
#include "support/CollectedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace ZEP::Overmarks::Testing
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using Triggers = MIDITriggerEventFile::Triggers;

class MIDITriggerEventFileTest : public TriggerFolder
{
protected:
    ~MIDITriggerEventFileTest() override { MIDITriggerEventFile::limits() = {}; }

    void store (const Triggers& triggers) const
    {
        EXPECT_TRUE (MIDITriggerEventFile::write (triggers).wasOk());
    }
};

TEST_F (MIDITriggerEventFileTest, liesInTheUsersFolder)
{
    EXPECT_EQ (MIDITriggerEventFile::path(), folder.directory() + "/midiEventsV3.bin");
}

TEST_F (MIDITriggerEventFileTest, holdsOneRecordAndNothingElse)
{
    store ({ trigger ("NoteOn 1 60", "a"), trigger ("PC 1 5", "b") });
    tessera1::ProtoMIDITriggerEventList list;
    ASSERT_TRUE (list.ParseFromString (folder.bytes (fileName)));
    ASSERT_EQ (list.events_size(), 2);
    EXPECT_EQ (list.events (0).triggermessage(), "NoteOn 1 60");
    EXPECT_EQ (list.events (1).label(), "b");
    EXPECT_EQ (list.SerializeAsString(), folder.bytes (fileName));
}

TEST_F (MIDITriggerEventFileTest, whatWasWrittenIsReadInItsOrder)
{
    store ({ trigger ("NoteOn 1 60", "a"), trigger ("NoteOn 1 60", "b") });
    const auto read = MIDITriggerEventFile::read();
    ASSERT_EQ (read.size(), 2u);
    EXPECT_EQ (read[0]->label, "a");
    EXPECT_EQ (read[1]->label, "b");
}

TEST_F (MIDITriggerEventFileTest, anEmptyListMakesAnEmptyFileWhichIsReadWithoutAWord)
{
    const CollectedLog log;
    store ({});
    EXPECT_THAT (folder.names(), ElementsAre (fileName));
    EXPECT_EQ (folder.bytes (fileName), "");
    EXPECT_THAT (MIDITriggerEventFile::read(), IsEmpty());
    EXPECT_THAT (log.lines(), IsEmpty());
}

TEST_F (MIDITriggerEventFileTest, withoutAFileTheLogIsTold)
{
    const CollectedLog log;
    EXPECT_THAT (MIDITriggerEventFile::read(), IsEmpty());
    EXPECT_THAT (log.lines(), ElementsAre ("Couldn't read MIDI Trigger Events from file at path: "
                                           + folder.directory().toStdString() + "/midiEventsV3.bin"));
}

TEST_F (MIDITriggerEventFileTest, aFolderOrAPipeOfThatNameIsNoFile)
{
    const CollectedLog log;
    folder.file (fileName).createDirectory();
    EXPECT_THAT (MIDITriggerEventFile::read(), IsEmpty());
    EXPECT_TRUE (MIDITriggerEventFile::write ({}).failed());
    folder.file (fileName).deleteRecursively();
    ASSERT_EQ (::mkfifo (folder.file (fileName).getFullPathName().toRawUTF8(), 0600), 0);
    EXPECT_THAT (MIDITriggerEventFile::read(), IsEmpty());
    EXPECT_EQ (log.lines().size(), 2u);
    EXPECT_EQ (MIDITriggerEventFile::write ({}).getErrorMessage(),
               "Can't write " + folder.directory() + "/midiEventsV3.bin: it is a device or a pipe");
}

TEST_F (MIDITriggerEventFileTest, aDamagedFileGivesNothingAndNoWord)
{
    const CollectedLog log;
    store ({ trigger ("NoteOn 1 60") });
    const auto whole = folder.bytes (fileName);
    folder.write (fileName, whole.substr (0, whole.size() - 1));
    EXPECT_THAT (MIDITriggerEventFile::read(), IsEmpty());
    folder.write (fileName, std::string (1000, '\xFF'));
    EXPECT_THAT (MIDITriggerEventFile::read(), IsEmpty());
    EXPECT_THAT (log.lines(), IsEmpty());
}

TEST_F (MIDITriggerEventFileTest, aDamagedTextIsNotToldOnStandardErrorEither)
{
    folder.write (fileName, "\x0A\x03\x0A\x01\xFF"); // a message that is no UTF-8
    testing::internal::CaptureStderr();
    EXPECT_THAT (MIDITriggerEventFile::read(), IsEmpty());
    EXPECT_EQ (MIDITriggerEventFile::state(), MIDITriggerEventFile::State::damaged);
    EXPECT_EQ (testing::internal::GetCapturedStderr(), "");
}

TEST_F (MIDITriggerEventFileTest, aSmallFileThatFillsTheMemoryIsNotReadIn)
{
    std::string triggers;

    for (int i = 0; i < 200000; ++i)
        triggers += std::string ("\x0A\x00", 2);

    folder.write (fileName, triggers);
    EXPECT_THAT (MIDITriggerEventFile::read(), IsEmpty());
}

TEST_F (MIDITriggerEventFileTest, whatWouldFillTheMemoryIsNotWrittenEither)
{
    const auto small = trigger ("PC 1 5");
    small->event = nullptr;
    MIDITriggerEventFile::limits().spareMemory = 0;
    EXPECT_EQ (MIDITriggerEventFile::write ({ small }).getErrorMessage(),
               "Can't write " + folder.directory()
                   + "/midiEventsV3.bin: it would be too large to be read again");
    EXPECT_THAT (folder.names(), IsEmpty());
}

TEST_F (MIDITriggerEventFileTest, aCutFileNeverBreaksAnything)
{
    store ({ trigger ("NoteOn 1 60", "a"), trigger ("PC 1 5", "b") });
    const auto whole = folder.bytes (fileName);

    for (std::size_t length = 0; length < whole.size(); ++length)
    {
        folder.write (fileName, whole.substr (0, length));
        EXPECT_LE (MIDITriggerEventFile::read().size(), 1u) << length;
    }
}

TEST_F (MIDITriggerEventFileTest, aDamagedFileIsKeptBesideBeforeItIsReplaced)
{
    folder.write (fileName, "\xFF nobody knows");
    EXPECT_THAT (MIDITriggerEventFile::read(), IsEmpty());
    store ({ trigger ("NoteOn 1 60") });
    EXPECT_THAT (folder.names(), ElementsAre (fileName, "midiEventsV3.damaged.bin"));
    EXPECT_EQ (folder.bytes ("midiEventsV3.damaged.bin"), "\xFF nobody knows");
    EXPECT_EQ (MIDITriggerEventFile::read().size(), 1u);
}

TEST_F (MIDITriggerEventFileTest, aSecondDamagedFileDoesntReplaceTheFirst)
{
    folder.write (fileName, "\xFF one");
    store ({});
    folder.write (fileName, "\xFF two");
    store ({});
    ASSERT_EQ (folder.names().size(), 3u);
    EXPECT_EQ (folder.bytes ("midiEventsV3.damaged.bin"), "\xFF one");
    EXPECT_EQ (folder.bytes (folder.names().back()), "\xFF two");
}

TEST_F (MIDITriggerEventFileTest, aFileOfForeignFieldsIsKeptAsADamagedOne)
{
    folder.write (fileName, "\x78\x01"); // field 15 with the number 1, and no trigger
    EXPECT_THAT (MIDITriggerEventFile::read(), IsEmpty());
    store ({});
    EXPECT_EQ (folder.bytes ("midiEventsV3.damaged.bin"), "\x78\x01");
}

TEST_F (MIDITriggerEventFileTest, aSoundFileIsReplacedWithoutALeftover)
{
    store ({ trigger ("NoteOn 1 60"), trigger ("NoteOn 1 61") });
    store ({ trigger ("PC 1 5") });
    EXPECT_THAT (folder.names(), ElementsAre (fileName));
    EXPECT_EQ (MIDITriggerEventFile::read().size(), 1u);
}

TEST_F (MIDITriggerEventFileTest, theFolderIsMadeWhenItIsNeeded)
{
    settingsLieIn (folder.directory() + "/new/er");
    store ({ trigger ("PC 1 5") });
    EXPECT_EQ (MIDITriggerEventFile::read().size(), 1u);
}

TEST_F (MIDITriggerEventFileTest, aFolderThatCantBeMadeIsAFailure)
{
    folder.write ("taken", "x");
    settingsLieIn (folder.directory() + "/taken");
    const auto result = MIDITriggerEventFile::write ({});
    EXPECT_TRUE (result.failed());
    EXPECT_EQ (result.getErrorMessage(),
               "Can't write " + folder.directory() + "/taken/midiEventsV3.bin: File exists");
    EXPECT_EQ (folder.bytes ("taken"), "x");
}

TEST_F (MIDITriggerEventFileTest, anEmptyPlaceInTheListIsLeftOut)
{
    store ({ nullptr, trigger ("PC 1 5") });
    EXPECT_EQ (MIDITriggerEventFile::read().size(), 1u);
}

TEST_F (MIDITriggerEventFileTest, tellsInWhichStateItIs)
{
    using State = MIDITriggerEventFile::State;
    EXPECT_EQ (MIDITriggerEventFile::state(), State::missing);
    store ({});
    EXPECT_EQ (MIDITriggerEventFile::state(), State::sound);
    store ({ trigger ("PC 1 5") });
    EXPECT_EQ (MIDITriggerEventFile::state(), State::sound);
    folder.write (fileName, "\xFF nobody knows");
    EXPECT_EQ (MIDITriggerEventFile::state(), State::damaged);
    folder.file (fileName).deleteFile();
    folder.file (fileName).createDirectory();
    EXPECT_EQ (MIDITriggerEventFile::state(), State::unreadable);
}

TEST_F (MIDITriggerEventFileTest, aFileThatCantBeReadIsNotReplaced)
{
    folder.write (fileName, "x");
    ASSERT_EQ (::truncate (folder.file (fileName).getFullPathName().toRawUTF8(), off_t { 3 } << 30), 0);
    EXPECT_EQ (MIDITriggerEventFile::state(), MIDITriggerEventFile::State::unreadable);
    EXPECT_EQ (MIDITriggerEventFile::load().reason, "it is larger than 16777216 bytes");
    EXPECT_EQ (MIDITriggerEventFile::write ({}).getErrorMessage(),
               "Can't write " + folder.directory() + "/midiEventsV3.bin: what it holds can't be read");
    EXPECT_THAT (folder.names(), ElementsAre (fileName));
}

TEST_F (MIDITriggerEventFileTest, aFolderThatMayNotBeSearchedIsNoEmptyList)
{
    store ({ trigger ("PC 1 5") });
    const auto bytes = folder.bytes (fileName);
    std::filesystem::permissions (folder.path, static_cast<std::filesystem::perms> (0));
    const auto outcome = inChildProcess (
        []() -> std::string
        {
            if (! becomeOrdinaryUser())
                return "still an administrator";

            const auto content = MIDITriggerEventFile::load();
            const auto written = MIDITriggerEventFile::write ({});
            return std::string (content.state == MIDITriggerEventFile::State::unreadable ? "unreadable" : "")
                   + "|" + content.reason.toStdString() + "|" + written.getErrorMessage().toStdString();
        });
    std::filesystem::permissions (folder.path, static_cast<std::filesystem::perms> (0700));
    EXPECT_EQ (outcome, "unreadable|Permission denied|Can't write " + folder.directory().toStdString()
                            + "/midiEventsV3.bin: what it holds can't be read");
    EXPECT_EQ (folder.bytes (fileName), bytes);
}

TEST_F (MIDITriggerEventFileTest, whatCouldNotBeReachedIsKeptBesideWhatReplacesIt)
{
    store ({ trigger ("PC 1 5") });
    const auto bytes = folder.bytes (fileName);
    const auto place = folder.path / fileName;
    std::filesystem::remove (place);
    std::filesystem::create_symlink (fileName, place); // a circle
    EXPECT_EQ (MIDITriggerEventFile::load().state, MIDITriggerEventFile::State::unreadable);
    std::filesystem::remove (place);
    folder.write (fileName, bytes);
    store ({ trigger ("PC 1 6") });
    EXPECT_THAT (folder.names(), ElementsAre (fileName, "midiEventsV3.damaged.bin"));
    EXPECT_EQ (folder.bytes ("midiEventsV3.damaged.bin"), bytes);
}

TEST_F (MIDITriggerEventFileTest, belowAFileThereIsNone)
{
    folder.write ("taken", "x");
    settingsLieIn (folder.directory() + "/taken");
    EXPECT_EQ (MIDITriggerEventFile::state(), MIDITriggerEventFile::State::missing);
}

TEST_F (MIDITriggerEventFileTest, theLimitsAreGenerousUnlessTheyAreChanged)
{
    EXPECT_EQ (MIDITriggerEventFile::limits().bytesOfFile, 16777216u);
    EXPECT_EQ (MIDITriggerEventFile::limits().spareMemory, 67108864u);
    std::vector<std::shared_ptr<MIDITriggerEvent>> allMessages;

    for (int number = 0; number < 16 * 4 * 128; ++number) // every note on, note off, controller and program
        allMessages.push_back (trigger ("NoteOn 16 127", "a label"));

    store (allMessages);
    EXPECT_EQ (MIDITriggerEventFile::read().size(), allMessages.size());
}

TEST_F (MIDITriggerEventFileTest, aFileMayHaveExactlySoManyBytes)
{
    store ({ trigger ("PC 1 5") });
    MIDITriggerEventFile::limits().bytesOfFile = folder.bytes (fileName).size();
    EXPECT_EQ (MIDITriggerEventFile::read().size(), 1u);
    store ({ trigger ("PC 1 6") });

    --MIDITriggerEventFile::limits().bytesOfFile;
    EXPECT_EQ (MIDITriggerEventFile::state(), MIDITriggerEventFile::State::unreadable);
    EXPECT_EQ (MIDITriggerEventFile::write ({}).getErrorMessage(),
               "Can't write " + folder.directory() + "/midiEventsV3.bin: what it holds can't be read");
    EXPECT_EQ (MIDITriggerEventFile::write ({ trigger ("PC 1 5") }).getErrorMessage(),
               "Can't write " + folder.directory()
                   + "/midiEventsV3.bin: it would be too large to be read again");
}

TEST_F (MIDITriggerEventFileTest, triggersWithNothingInThemMayTakeTheSpareMemory)
{
    constexpr std::uint64_t triggers = 100, weight = 1100, lengthTimesTwenty = 40;
    std::string bytes;

    for (std::uint64_t i = 0; i < triggers; ++i)
        bytes += std::string ("\x0A\x00", 2);

    folder.write (fileName, bytes);
    MIDITriggerEventFile::limits().spareMemory = triggers * (weight - lengthTimesTwenty);
    EXPECT_EQ (MIDITriggerEventFile::read().size(), triggers);

    --MIDITriggerEventFile::limits().spareMemory;
    const auto content = MIDITriggerEventFile::load();
    EXPECT_EQ (content.state, MIDITriggerEventFile::State::unreadable);
    EXPECT_THAT (content.triggers, IsEmpty());
    EXPECT_EQ (content.reason, "it claims to hold more bindings than its 200 bytes have room for");
    EXPECT_TRUE (MIDITriggerEventFile::write ({}).failed());
    EXPECT_EQ (folder.bytes (fileName), bytes);
}

TEST_F (MIDITriggerEventFileTest, oneReadingTellsStateAndTriggers)
{
    using State = MIDITriggerEventFile::State;
    EXPECT_EQ (MIDITriggerEventFile::load().state, State::missing);
    store ({ trigger ("PC 1 5") });
    EXPECT_EQ (MIDITriggerEventFile::load().state, State::sound);
    EXPECT_EQ (MIDITriggerEventFile::load().triggers.size(), 1u);
    EXPECT_EQ (MIDITriggerEventFile::load().reason, "");
    folder.write (fileName, "\xFF nobody knows");
    EXPECT_EQ (MIDITriggerEventFile::load().state, State::damaged);
    EXPECT_THAT (MIDITriggerEventFile::load().triggers, IsEmpty());
}

TEST_F (MIDITriggerEventFileTest, aDamagedFileIsKeptOnceHoweverOftenItIsDamagedInTheSameWay)
{
    for (int attempt = 0; attempt < 3; ++attempt)
    {
        folder.write (fileName, "\xFF one");
        store ({});
    }

    EXPECT_THAT (folder.names(), ElementsAre (fileName, "midiEventsV3.damaged.bin"));
}

TEST_F (MIDITriggerEventFileTest, whatIsKeptOfADamagedFileIsForTheUserAlone)
{
    folder.write (fileName, "\xFF one");
    ASSERT_EQ (::chmod (folder.file (fileName).getFullPathName().toRawUTF8(), 0600), 0);
    store ({});
    struct stat status
    {
    };
    ASSERT_EQ (::stat (folder.file ("midiEventsV3.damaged.bin").getFullPathName().toRawUTF8(), &status), 0);
    EXPECT_EQ (status.st_mode & 0777, 0600u);
    EXPECT_EQ (folder.bytes ("midiEventsV3.damaged.bin"), "\xFF one");
}

} // namespace
} // namespace ZEP::Overmarks::Testing
