// SPDX-License-Identifier: GPL-3.0-only
#include "midi/MIDITriggerEventFile.h"

#include "midi/TriggerFolder.h"
#include "proto/midi.pb.h"
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
    EXPECT_EQ (MIDITriggerEventFile::write ({}).getErrorMessage(),
               "Can't write " + folder.directory() + "/midiEventsV3.bin: what it holds can't be read");
    EXPECT_THAT (folder.names(), ElementsAre (fileName));
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
