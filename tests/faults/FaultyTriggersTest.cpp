// SPDX-License-Identifier: GPL-3.0-only
// The user's MIDI triggers on a disk that fails: what was read in vain is never lost to the next edit.
#include "faults/FailingFiles.h"
#include "midi/MIDITriggerEventFile.h"
#include "midi/TriggerFolder.h"

#include <gmock/gmock.h>

#include <cerrno>

namespace ZEP::Overmarks::Testing
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using Call = FileFault::Call;

constexpr auto keptName = "midiEventsV3.damaged.bin";

class FaultyTriggers : public TriggerFolder
{
protected:
    FaultyTriggers()
    {
        EXPECT_TRUE (MIDITriggerEventFile::write ({ trigger ("PC 1 5") }).wasOk());
        stored = folder.bytes (fileName);
    }

    /** Reads while the disk fails once. */
    void readInVain() const
    {
        const FailingFiles failing (fileName, { { .call = Call::read, .error = EIO } });
        EXPECT_THAT (MIDITriggerEventFile::read(), IsEmpty());
        EXPECT_EQ (failing.struck(), 1);
    }

    std::string stored;
};

TEST_F (FaultyTriggers, whatCouldNotBeReadIsKeptBesideWhatReplacesIt)
{
    readInVain();
    EXPECT_TRUE (MIDITriggerEventFile::write ({ trigger ("PC 1 6") }).wasOk());
    EXPECT_THAT (folder.names(), ElementsAre (fileName, keptName));
    EXPECT_EQ (folder.bytes (keptName), stored);
}

TEST_F (FaultyTriggers, aListThatWasReadInTheEndIsReplacedWithoutALeftover)
{
    readInVain();
    EXPECT_EQ (MIDITriggerEventFile::read().size(), 1u);
    EXPECT_TRUE (MIDITriggerEventFile::write ({ trigger ("PC 1 6") }).wasOk());
    EXPECT_THAT (folder.names(), ElementsAre (fileName));
}

TEST_F (FaultyTriggers, onlyTheFirstListThatIsWrittenBehindAFailureKeepsTheOldOne)
{
    readInVain();
    EXPECT_TRUE (MIDITriggerEventFile::write ({ trigger ("PC 1 6") }).wasOk());
    EXPECT_TRUE (MIDITriggerEventFile::write ({ trigger ("PC 1 7") }).wasOk());
    EXPECT_THAT (folder.names(), ElementsAre (fileName, keptName));
    EXPECT_EQ (folder.bytes (keptName), stored);
}

TEST_F (FaultyTriggers, anEditOfAnApplicationLosesNothingThatCouldNotBeRead)
{
    const FailingFiles failing (fileName, { { .call = Call::read, .error = EIO } });
    FiringManager manager;
    EXPECT_THAT (manager.events, IsEmpty());
    manager.events.push_back (trigger ("PC 1 6"));
    manager.writeTriggerEventsToFile();
    EXPECT_EQ (folder.bytes (keptName), stored);
}

} // namespace
} // namespace ZEP::Overmarks::Testing
