// SPDX-License-Identifier: GPL-3.0-only
#include "midi/MIDITriggerEventManager.h"

#include "midi/TriggerFolder.h"
#include "support/CollectedLog.h"
#include "support/FailingLog.h"

#include <Poco/AutoPtr.h>
#include <Poco/NotificationCenter.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

namespace ZEP::Overmarks::Testing
{
namespace
{

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using ZEP::MIDIIO::MIDISystem;
using News = ZEP::MIDIIO::UserEventTriggerReceivedNotification;

class MIDITriggerEventManagerTest : public TriggerFolder
{
protected:
    /** What an earlier session has left in the user's folder. */
    void hasStored (const std::vector<std::shared_ptr<MIDITriggerEvent>>& triggers) const
    {
        const CollectedLog log;
        FiringManager manager;
        manager.events = triggers;
        manager.writeTriggerEventsToFile();
    }

    static Poco::AutoPtr<News> news (const std::string& message, double time)
    {
        return new News ({ { ZEP::MIDIIO::UserTriggerEventNotificationEventDictKey, message },
                           { ZEP::MIDIIO::UserTriggerEventTimestampDictKey, time } });
    }

    static void post (const std::string& message, double time)
    {
        Poco::NotificationCenter::defaultCenter().postNotification (news (message, time));
    }

    MIDISystem& system = *MIDISystem::sharedMIDISystem();
};

TEST_F (MIDITriggerEventManagerTest, withoutAFileItStartsEmptyTellsTheLogAndClearsTheSystem)
{
    system.addMIDIEventTrigger ("NoteOn 1 60");
    const CollectedLog log;
    const FiringManager manager;
    EXPECT_THAT (manager.events, IsEmpty());
    EXPECT_THAT (system.midiEventTriggers(), IsEmpty());
    EXPECT_THAT (log.lines(), ElementsAre ("Couldn't read MIDI Trigger Events from file at path: "
                                           + folder.directory().toStdString() + "/midiEventsV3.bin"));
    EXPECT_THAT (folder.names(), IsEmpty());
}

TEST_F (MIDITriggerEventManagerTest, registersWhatIsInTheFileAndNothingElse)
{
    hasStored ({ trigger ("NoteOn 1 60"), trigger ("PC 1 5"), trigger ("NoteOn 1 60") });
    system.addMIDIEventTrigger ("MMC 02");
    const FiringManager manager;
    EXPECT_EQ (manager.events.size(), 3u);
    EXPECT_THAT (system.midiEventTriggers(), ElementsAre ("NoteOn 1 60", "PC 1 5"));
}

TEST_F (MIDITriggerEventManagerTest, anEmptyListIsWrittenAndReadWithoutAWord)
{
    hasStored ({});
    const CollectedLog log;
    const FiringManager manager;
    EXPECT_THAT (manager.events, IsEmpty());
    EXPECT_THAT (log.lines(), IsEmpty());
    EXPECT_THAT (folder.names(), ElementsAre (fileName));
}

TEST_F (MIDITriggerEventManagerTest, readingAppends)
{
    hasStored ({ trigger ("NoteOn 1 60", "stored") });
    FiringManager manager;
    manager.events.push_back (trigger ("PC 1 5", "new"));
    manager.readTriggerEventsFromFile();
    ASSERT_EQ (manager.events.size(), 3u);
    EXPECT_EQ (manager.events[1]->label, "new");
    EXPECT_EQ (manager.events[2]->label, "stored");
}

TEST_F (MIDITriggerEventManagerTest, readingWithoutAFileLeavesTheListAsItWas)
{
    const CollectedLog log;
    FiringManager manager;
    manager.events.push_back (trigger ("PC 1 5"));
    manager.readTriggerEventsFromFile();
    EXPECT_EQ (manager.events.size(), 1u);
    EXPECT_EQ (log.lines().size(), 2u);
}

TEST_F (MIDITriggerEventManagerTest, aDamagedFileGivesAnEmptyListAndNoWordAndIsKept)
{
    folder.write (fileName, "\xFF\xFF");
    const CollectedLog log;
    FiringManager manager;
    EXPECT_THAT (manager.events, IsEmpty());
    manager.events.push_back (trigger ("PC 1 5"));
    manager.writeTriggerEventsToFile();
    EXPECT_THAT (log.lines(), IsEmpty());
    EXPECT_EQ (folder.bytes ("midiEventsV3.damaged.bin"), "\xFF\xFF");
}

TEST_F (MIDITriggerEventManagerTest, aFailureToWriteIsNotReported)
{
    const CollectedLog log;
    FiringManager manager;
    folder.write ("taken", "x");
    settingsLieIn (folder.directory() + "/taken");
    manager.writeTriggerEventsToFile();
    EXPECT_EQ (log.lines().size(), 1u); // from the start, without a file
}

TEST_F (MIDITriggerEventManagerTest, aMessageFiresItsTrigger)
{
    hasStored ({ trigger ("NoteOn 1 60", "a"), trigger ("PC 1 5", "b") });
    FiringManager manager;
    post ("PC 1 5", 4.5);
    ASSERT_EQ (manager.fired.size(), 1u);
    EXPECT_EQ (manager.fired[0], manager.events[1]);
    EXPECT_EQ (manager.events[1]->lastTriggerTimestamp, 4.5);
    EXPECT_EQ (manager.events[0]->lastTriggerTimestamp, -1.0);
}

TEST_F (MIDITriggerEventManagerTest, ofTwoEqualMessagesTheLaterOneFires)
{
    hasStored ({ trigger ("NoteOn 1 60", "earlier"), trigger ("NoteOn 1 60", "later"), trigger ("PC 1 5") });
    FiringManager manager;
    post ("NoteOn 1 60", 2.0);
    ASSERT_EQ (manager.fired.size(), 1u);
    EXPECT_EQ (manager.fired[0]->label, "later");
    EXPECT_EQ (manager.events[1]->lastTriggerTimestamp, 2.0);
    EXPECT_EQ (manager.events[0]->lastTriggerTimestamp, -1.0);
}

TEST_F (MIDITriggerEventManagerTest, messagesAreComparedByteForByte)
{
    hasStored ({ trigger ("NoteOn 1 60"), trigger (std::string ("NoteOn 1 60\0x", 13)) });
    FiringManager manager;
    post ("NoteOn 1 60", 2.0);
    ASSERT_EQ (manager.fired.size(), 1u);
    EXPECT_EQ (manager.fired[0], manager.events[0]);
    post ("noteon 1 60", 2.0);
    EXPECT_EQ (manager.fired.size(), 1u);
}

TEST_F (MIDITriggerEventManagerTest, theTimeOfTheLastArrivalIsNotStored)
{
    hasStored ({ trigger ("NoteOn 1 60") });

    {
        FiringManager manager;
        post ("NoteOn 1 60", 2.0);
        EXPECT_EQ (manager.events[0]->lastTriggerTimestamp, 2.0);
        manager.writeTriggerEventsToFile();
    }

    const FiringManager restarted;
    EXPECT_EQ (restarted.events.at (0)->lastTriggerTimestamp, -1.0);
}

TEST_F (MIDITriggerEventManagerTest, theColourComesBackFromTheFile)
{
    auto stored = trigger ("NoteOn 1 60");
    stored->colour = juce::Colour (0x01FE8040);
    hasStored ({ stored });
    const FiringManager manager;
    EXPECT_EQ (manager.events.at (0)->colour.getARGB(), 0x01FE8040u);
}

TEST_F (MIDITriggerEventManagerTest, aMessageThatIsNoLongerInTheListFiresNothing)
{
    hasStored ({ trigger ("NoteOn 1 60") });
    FiringManager manager;
    manager.events = { nullptr };
    post ("NoteOn 1 60", 2.0);
    EXPECT_THAT (manager.fired, IsEmpty());
}

TEST_F (MIDITriggerEventManagerTest, newsWithoutAMessageOrTimeAreThrownBackAtTheSender)
{
    hasStored ({ trigger ("NoteOn 1 60") });
    FiringManager manager;
    auto& center = Poco::NotificationCenter::defaultCenter();
    const std::string message = "NoteOn 1 60";
    const auto& messageKey = ZEP::MIDIIO::UserTriggerEventNotificationEventDictKey;
    const auto& timeKey = ZEP::MIDIIO::UserTriggerEventTimestampDictKey;
    const auto postInfo = [&center] (const std::map<std::string, Poco::Any>& userInfo)
    { center.postNotification (new News (userInfo)); };

    EXPECT_THROW (postInfo ({ { timeKey, 2.0 } }), std::out_of_range);
    EXPECT_THROW (postInfo ({ { messageKey, message } }), std::out_of_range);
    EXPECT_THROW (postInfo ({ { messageKey, 5 }, { timeKey, 2.0 } }), Poco::BadCastException);
    EXPECT_THROW (postInfo ({ { messageKey, message }, { timeKey, 2 } }), Poco::BadCastException);
    EXPECT_THAT (manager.fired, IsEmpty());
    EXPECT_EQ (manager.events[0]->lastTriggerTimestamp, -1.0);
}

TEST_F (MIDITriggerEventManagerTest, theReferenceOfTheNewsIsReleasedAlsoAfterAFailure)
{
    hasStored ({ trigger ("NoteOn 1 60") });
    FiringManager manager;
    auto& center = Poco::NotificationCenter::defaultCenter();
    const auto good = news ("NoteOn 1 60", 2.0);
    center.postNotification (good);
    EXPECT_EQ (good->referenceCount(), 1);
    const Poco::AutoPtr<News> bad (new News (std::map<std::string, Poco::Any>()));
    EXPECT_THROW (center.postNotification (bad), std::out_of_range);
    EXPECT_EQ (bad->referenceCount(), 1);
}

TEST_F (MIDITriggerEventManagerTest, aManagerThatIsGoneHearsNothing)
{
    const CollectedLog log;
    const auto before = Poco::NotificationCenter::defaultCenter().countObservers();
    {
        const FiringManager manager;
        EXPECT_EQ (Poco::NotificationCenter::defaultCenter().countObservers(), before + 1);
    }
    EXPECT_EQ (Poco::NotificationCenter::defaultCenter().countObservers(), before);
    post ("NoteOn 1 60", 2.0);
}

TEST_F (MIDITriggerEventManagerTest, aKeyFiresFromTheMIDISystemsThread)
{
    hasStored ({ trigger ("NoteOn 1 60") });

    class Manager final : public MIDITriggerEventManager
    {
    public:
        void onMIDITriggerEventFired (std::shared_ptr<MIDITriggerEvent>) override
        {
            thread = std::this_thread::get_id();
        }

        std::thread::id thread;
    };

    const Manager manager;
    system.receive (std::vector<std::uint8_t> { 0x90, 60, 100 }, 7.0);
    ASSERT_TRUE (system.waitUntilDelivered (10s));
    EXPECT_NE (manager.thread, std::thread::id());
    EXPECT_NE (manager.thread, std::this_thread::get_id());
    EXPECT_EQ (manager.events.at (0)->lastTriggerTimestamp, 7.0);
}

TEST_F (MIDITriggerEventManagerTest, tenThousandTriggersAreStoredAndFound)
{
    std::vector<std::shared_ptr<MIDITriggerEvent>> many;

    for (int i = 0; i < 10000; ++i)
        many.push_back (trigger ("message " + std::to_string (i)));

    hasStored (many);
    FiringManager manager;
    ASSERT_EQ (manager.events.size(), 10000u);
    post ("message 7777", 1.0);
    ASSERT_EQ (manager.fired.size(), 1u);
    EXPECT_EQ (manager.fired[0]->triggerMessage, "message 7777");
}

TEST_F (MIDITriggerEventManagerTest, aManagerThatCouldntBeMadeObservesNothing)
{
    const auto observers = Poco::NotificationCenter::defaultCenter().countObservers();
    {
        const FailingLog log; // of the missing file it can't be told
        EXPECT_THROW (FiringManager(), std::runtime_error);
    }
    EXPECT_EQ (Poco::NotificationCenter::defaultCenter().countObservers(), observers);
    post ("NoteOn 1 60", 1);
}

TEST_F (MIDITriggerEventManagerTest, whoClosesTheInputsFirstMayEditAndEndInTheMiddleOfABurst)
{
    constexpr std::size_t burst = 300;
    constexpr int rounds = 20;
    hasStored ({ trigger ("NoteOn 1 60"), trigger ("NoteOn 1 61") });

    for (int round = 0; round < rounds; ++round)
    {
        FiringManager manager;
        const std::vector<std::uint8_t> notes { 0x90, 60, 100, 61, 100 };

        for (std::size_t sent = 0; sent < burst; ++sent)
            system.receive (notes, 0);

        ASSERT_TRUE (system.closeAllInputs());
        EXPECT_EQ (manager.fired.size(), 2 * burst);
        manager.events.pop_back();
        system.openAllInputs();

        for (std::size_t sent = 0; sent < burst; ++sent)
            system.receive (notes, 0);

        ASSERT_TRUE (system.closeAllInputs());
        EXPECT_EQ (manager.fired.size(), 3 * burst);
    }
}

} // namespace
} // namespace ZEP::Overmarks::Testing
