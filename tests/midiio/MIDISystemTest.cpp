// SPDX-License-Identifier: GPL-3.0-only
#include "midiio/MIDISystem.h"

#include "midiio/MIDINotifications.h"
#include "support/CollectedLog.h"
#include "support/FailingLog.h"
#include "support/SpannerBytes.h"

#include <Poco/Any.h>
#include <Poco/NObserver.h>
#include <Poco/NotificationCenter.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <future>
#include <stdexcept>
#include <thread>

namespace
{

using namespace std::chrono_literals;
using namespace ZEP::MIDIIO;
using namespace ZEP::Overmarks::Testing;
using testing::ElementsAre;
using testing::IsEmpty;
using Bytes = std::vector<std::uint8_t>;

/** An application's window on what is posted. Reading it needs a wait for delivery before. */
class Posted final
{
public:
    Posted()
    {
        Poco::NotificationCenter::defaultCenter().addObserver (triggerObserver);
        Poco::NotificationCenter::defaultCenter().addObserver (spannerObserver);
    }

    ~Posted()
    {
        Poco::NotificationCenter::defaultCenter().removeObserver (triggerObserver);
        Poco::NotificationCenter::defaultCenter().removeObserver (spannerObserver);
    }

    Posted (const Posted&) = delete;
    Posted& operator= (const Posted&) = delete;

    std::vector<std::string> triggers, spanners;
    std::vector<double> times;
    std::thread::id thread;
    std::function<void()> whatToDo = [] {};

private:
    void takeTrigger (const Poco::AutoPtr<UserEventTriggerReceivedNotification>& news)
    {
        thread = std::this_thread::get_id();
        triggers.push_back (
            Poco::AnyCast<std::string> (news->userInfo.at (UserTriggerEventNotificationEventDictKey)));
        times.push_back (Poco::AnyCast<double> (news->userInfo.at (UserTriggerEventTimestampDictKey)));
        whatToDo();
    }

    void takeSpanner (const Poco::AutoPtr<SpannerEventReceivedNotification>& news)
    {
        thread = std::this_thread::get_id();
        spanners.push_back (
            Poco::AnyCast<std::string> (news->userInfo.at (SpannerEventNotificationMIDIMsgDictKey)));
        times.push_back (
            Poco::AnyCast<double> (news->userInfo.at (SpannerEventNotificationTimestampDictKey)));
    }

    Poco::NObserver<Posted, UserEventTriggerReceivedNotification> triggerObserver { *this,
                                                                                    &Posted::takeTrigger };
    Poco::NObserver<Posted, SpannerEventReceivedNotification> spannerObserver { *this, &Posted::takeSpanner };
};

class MIDISystemTest : public testing::Test
{
protected:
    MIDISystemTest() { system.clearMIDITriggerEvents(); }

    ~MIDISystemTest() override
    {
        system.setMonitor ({});
        system.setInputsChanged ({});
        system.clearMIDITriggerEvents();
    }

    void receive (const Bytes& bytes, double time = 0)
    {
        system.receive (bytes, time);
        EXPECT_TRUE (system.waitUntilDelivered (10s));
    }

    void receiveText (const std::string& bytes, double time = 0)
    {
        receive (Bytes (bytes.begin(), bytes.end()), time);
    }

    MIDISystem& system = *MIDISystem::sharedMIDISystem();
    Posted posted;
};

TEST_F (MIDISystemTest, thereIsOneInTheProcess) { EXPECT_EQ (&system, MIDISystem::sharedMIDISystem()); }

TEST_F (MIDISystemTest, aRegisteredMessageIsPostedWithItsTime)
{
    system.addMIDIEventTrigger ("NoteOn 1 60");
    receive ({ 0x90, 60, 100 }, 12.25);
    EXPECT_THAT (posted.triggers, ElementsAre ("NoteOn 1 60"));
    EXPECT_THAT (posted.times, ElementsAre (12.25));
}

TEST_F (MIDISystemTest, newsComeOnTheSystemsOwnThread)
{
    system.addMIDIEventTrigger ("NoteOn 1 60");
    receive ({ 0x90, 60, 100 });
    EXPECT_NE (posted.thread, std::thread::id());
    EXPECT_NE (posted.thread, std::this_thread::get_id());
    const auto thread = posted.thread;
    receiveText (SpannerBytes().text());
    EXPECT_EQ (posted.thread, thread);
}

TEST_F (MIDISystemTest, anUnregisteredMessageIsNotPosted)
{
    system.addMIDIEventTrigger ("NoteOn 1 60");
    receive ({ 0x90, 61, 100, 0x91, 60, 100, 0x80, 60, 0, 0xE0, 1, 2 });
    EXPECT_THAT (posted.triggers, IsEmpty());
}

TEST_F (MIDISystemTest, clearingForgetsAllMessages)
{
    system.addMIDIEventTrigger ("NoteOn 1 60");
    system.clearMIDITriggerEvents();
    EXPECT_THAT (system.midiEventTriggers(), IsEmpty());
    receive ({ 0x90, 60, 100 });
    EXPECT_THAT (posted.triggers, IsEmpty());
}

TEST_F (MIDISystemTest, aMessageThatIsRegisteredTwiceIsPostedOnce)
{
    for (const auto* message : { "PC 1 5", "NoteOn 1 60", "PC 1 5", "" })
        system.addMIDIEventTrigger (message);

    EXPECT_THAT (system.midiEventTriggers(), ElementsAre ("PC 1 5", "NoteOn 1 60", ""));
    receive ({ 0xC0, 5 });
    EXPECT_THAT (posted.triggers, ElementsAre ("PC 1 5"));
}

TEST_F (MIDISystemTest, messagesArePostedInTheirOrder)
{
    system.addMIDIEventTrigger ("NoteOn 1 60");
    system.addMIDIEventTrigger ("NoteOff 1 60");
    system.addMIDIEventTrigger ("MMC 02");
    receive ({ 0x90, 60, 100, 60, 0, 0xF0, 0x7F, 0x7F, 0x06, 0x02, 0xF7, 0x90, 60, 1 });
    EXPECT_THAT (posted.triggers, ElementsAre ("NoteOn 1 60", "NoteOff 1 60", "MMC 02", "NoteOn 1 60"));
}

TEST_F (MIDISystemTest, aSpannerMessageIsPostedWithAllItsBytes)
{
    const auto text = SpannerBytes().text();
    receiveText (text, 3.5);
    EXPECT_THAT (posted.spanners, ElementsAre (text));
    EXPECT_THAT (posted.times, ElementsAre (3.5));
}

TEST_F (MIDISystemTest, aSpannerMessageThatIsTooShortIsNotPosted)
{
    for (const int command : { createsLine, updatesLines, removesLines })
    {
        const auto whole = SpannerBytes { .command = command }.text();
        const std::size_t needed = command == createsLine ? 15 : command == updatesLines ? 12 : 11;

        for (std::size_t length = 0; length < needed; ++length)
            receiveText (whole.substr (0, length) + '\xF7');

        EXPECT_THAT (posted.spanners, IsEmpty()) << command;
        receiveText (whole.substr (0, needed) + '\xF7');
        EXPECT_EQ (posted.spanners.size(), 1u) << command;
        posted.spanners.clear();
    }
}

TEST_F (MIDISystemTest, anExclusiveMessageOfAnotherMakerIsNotPosted)
{
    receive (Bytes { 0xF0, 0x41, 0x53, 0x50, 0, 0, 0, 0, 1, 1, 0, 1, 1, 1, 1, 0xF7 });
    EXPECT_THAT (posted.spanners, IsEmpty());
}

TEST_F (MIDISystemTest, anObserverThatFailsIsLoggedAndTheNextMessageArrives)
{
    const CollectedLog log;
    system.addMIDIEventTrigger ("NoteOn 1 60");
    posted.whatToDo = [] { throw std::runtime_error ("no such streamer"); };
    receive ({ 0x90, 60, 100 });
    posted.whatToDo = [] { throw Poco::BadCastException ("no text"); };
    receive ({ 0x90, 60, 100 });
    posted.whatToDo = [] { throw 5; };
    receive ({ 0x90, 60, 100 });
    posted.whatToDo = [] {};
    receive ({ 0x90, 60, 100 });
    EXPECT_EQ (posted.triggers.size(), 4u);
    EXPECT_THAT (log.lines(), ElementsAre ("A MIDI message wasn't handled: no such streamer",
                                           "A MIDI message wasn't handled: Bad cast exception: no text",
                                           "A MIDI message wasn't handled: unknown reason"));
}

TEST_F (MIDISystemTest, anObserverMayRegisterAndReceiveButNotWait)
{
    std::optional<std::string> learnt = "x";
    bool hasWaited = true;
    system.addMIDIEventTrigger ("NoteOn 1 60");
    posted.whatToDo = [&]
    {
        if (posted.triggers.size() > 1)
            return;

        system.addMIDIEventTrigger ("PC 1 5");
        system.receive (Bytes { 0xC0, 5 }, 0);
        hasWaited = system.waitUntilDelivered (10s);
        learnt = system.learnMessage (10s);
    };
    receive ({ 0x90, 60, 100 });
    EXPECT_TRUE (system.waitUntilDelivered (10s));
    EXPECT_THAT (posted.triggers, ElementsAre ("NoteOn 1 60", "PC 1 5"));
    EXPECT_FALSE (hasWaited);
    EXPECT_EQ (learnt, std::nullopt);
}

TEST_F (MIDISystemTest, theMonitorSeesWhatIsNotRegistered)
{
    std::vector<std::pair<std::string, double>> seen;
    system.setMonitor (
        [&seen] (const std::string& message, double time) {
            seen.push_back ({ message, time });
        });
    receive ({ 0x90, 60, 100, 0xE0, 1, 2 }, 2.0);
    EXPECT_THAT (seen, ElementsAre (std::pair<std::string, double> ("NoteOn 1 60", 2.0)));
    EXPECT_THAT (posted.triggers, IsEmpty());
    system.setMonitor ({});
    receive ({ 0x90, 60, 100 });
    EXPECT_EQ (seen.size(), 1u);
}

TEST_F (MIDISystemTest, aMonitorThatFailsIsLoggedAndTheMessageIsPosted)
{
    const CollectedLog log;
    system.addMIDIEventTrigger ("NoteOn 1 60");
    system.setMonitor ([] (const std::string&, double) { throw std::runtime_error ("no window"); });
    receive ({ 0x90, 60, 100 });
    EXPECT_THAT (posted.triggers, ElementsAre ("NoteOn 1 60"));
    EXPECT_THAT (log.lines(), ElementsAre ("A MIDI message wasn't shown: no window"));
}

TEST_F (MIDISystemTest, aLogThatFailsEndsNothing)
{
    const FailingLog log;
    system.addMIDIEventTrigger ("NoteOn 1 60");
    posted.whatToDo = [] { throw std::runtime_error ("no such streamer"); };
    system.setMonitor ([] (const std::string&, double) { throw std::runtime_error ("no window"); });
    receive ({ 0x90, 60, 100 });
    receive ({ 0x90, 60, 100 });
    EXPECT_EQ (posted.triggers.size(), 2u);
}

/** Runs something when its last copy goes. */
std::shared_ptr<void> whenItGoes (const std::function<void()>& whatToDo)
{
    return { nullptr, [whatToDo] (void*) { whatToDo(); } };
}

TEST_F (MIDISystemTest, whatAMonitorHoldsMayAskTheSystemWhenItGoes)
{
    std::size_t registered = 0;
    system.addMIDIEventTrigger ("NoteOn 1 60");
    system.setMonitor ([held = whenItGoes ([&] { registered = system.midiEventTriggers().size(); })] (
                           const std::string&, double) {});
    system.setMonitor ({});
    EXPECT_EQ (registered, 1u);
}

TEST_F (MIDISystemTest, closingAllInputsWaitsUntilEverythingIsDelivered)
{
    constexpr std::size_t burst = 20;
    system.addMIDIEventTrigger ("NoteOn 1 60");
    posted.whatToDo = [] { std::this_thread::sleep_for (2ms); };

    for (std::size_t sent = 0; sent < burst; ++sent)
        system.receive (Bytes { 0x90, 60, 100 }, 0);

    EXPECT_TRUE (system.closeAllInputs());
    EXPECT_EQ (posted.triggers.size(), burst);
}

TEST_F (MIDISystemTest, anObserverMayCloseTheInputsButDoesntWaitForItself)
{
    bool isQuiet = true;
    system.addMIDIEventTrigger ("NoteOn 1 60");
    posted.whatToDo = [&] { isQuiet = system.closeAllInputs(); };
    receive ({ 0x90, 60, 100 });
    EXPECT_FALSE (isQuiet);
}

/** Sends until somebody has learnt it. */
std::optional<std::string> learnWhileSending (MIDISystem& system, const Bytes& bytes)
{
    auto learnt = std::async (std::launch::async, [&system] { return system.learnMessage (10s); });

    while (learnt.wait_for (1ms) != std::future_status::ready)
        system.receive (bytes, 0);

    return learnt.get();
}

TEST_F (MIDISystemTest, theNextMessageIsLearnt)
{
    EXPECT_EQ (learnWhileSending (system, { 0xE0, 1, 2, 0xB3, 64, 127 }), "CC 4 64");
}

TEST_F (MIDISystemTest, whatIsLearntFiresNothing)
{
    system.addMIDIEventTrigger ("NoteOn 1 60");
    auto learnt = std::async (std::launch::async, [this] { return system.learnMessage (10s); });
    std::size_t sent = 0;

    for (; learnt.wait_for (1ms) != std::future_status::ready; ++sent)
        receive ({ 0x90, 60, 100 });

    EXPECT_EQ (learnt.get(), "NoteOn 1 60");
    EXPECT_EQ (posted.triggers.size(), sent - 1);
}

TEST_F (MIDISystemTest, learningEndsWithTheGivenTime)
{
    EXPECT_EQ (system.learnMessage (5ms), std::nullopt);
    system.addMIDIEventTrigger ("NoteOn 1 60");
    receive ({ 0x90, 60, 100 });
    EXPECT_EQ (posted.triggers.size(), 1u);
}

TEST_F (MIDISystemTest, learningCanBeCancelled)
{
    auto learnt = std::async (std::launch::async, [this] { return system.learnMessage (1min); });

    while (learnt.wait_for (1ms) != std::future_status::ready)
        system.cancelLearning();

    EXPECT_EQ (learnt.get(), std::nullopt);
}

TEST_F (MIDISystemTest, waitingForEverIsATimeToo)
{
    auto learnt = std::async (std::launch::async,
                              [this] { return system.learnMessage (std::chrono::milliseconds::max()); });
    EXPECT_EQ (learnt.wait_for (50ms), std::future_status::timeout);

    while (learnt.wait_for (1ms) != std::future_status::ready)
        system.cancelLearning();

    system.addMIDIEventTrigger ("NoteOn 1 60");
    posted.whatToDo = [] { std::this_thread::sleep_for (20ms); };
    system.receive (Bytes { 0x90, 60, 100 }, 0);
    EXPECT_TRUE (system.waitUntilDelivered (std::chrono::milliseconds::max()));
    EXPECT_EQ (posted.triggers.size(), 1u);
}

TEST_F (MIDISystemTest, aMachineWithoutInputsIsNoFailure)
{
    system.openAllInputs();
    EXPECT_FALSE (system.openInput ("no such input"));
    system.closeInput ("no such input");
    system.setInputsChanged ([] {});

    for (const auto& input : system.inputs())
        EXPECT_FALSE (input.identifier.empty());

    system.closeAllInputs();
}

TEST_F (MIDISystemTest, anyBytesAreTaken)
{
    receive (Bytes());
    receive ({ 0x90 });
    receive ({ 60, 100 });
    receive (Bytes (100000, 0xF0));
    receive (Bytes (100000, 0x00));
    receive (Bytes (100000, 0xFF));
    EXPECT_THAT (posted.triggers, IsEmpty());
    EXPECT_THAT (posted.spanners, IsEmpty());
}

TEST_F (MIDISystemTest, severalInputsMaySendAtOnce)
{
    system.addMIDIEventTrigger ("NoteOn 1 60");
    std::vector<std::thread> inputs;

    for (int i = 0; i < 4; ++i)
        inputs.emplace_back (
            [this]
            {
                for (int sent = 0; sent < 500; ++sent)
                    system.receive (Bytes { 0x90, 60, 100 }, sent);
            });

    for (auto& input : inputs)
        input.join();

    ASSERT_TRUE (system.waitUntilDelivered (30s));
    EXPECT_EQ (posted.triggers.size(), 2000u);
}

TEST_F (MIDISystemTest, whatAHangingObserverLeavesNoRoomForIsLostAndLoggedOnce)
{
    const CollectedLog log;
    std::promise<void> hangs, release;
    system.addMIDIEventTrigger ("NoteOn 1 60");
    posted.whatToDo = [&]
    {
        hangs.set_value();
        release.get_future().wait();
    };
    system.receive (Bytes { 0x90, 60, 100 }, 0);
    hangs.get_future().wait();

    auto text = SpannerBytes { .command = updatesLines }.text();
    text.insert (text.size() - 1, 400, '\x01');
    const Bytes message (text.begin(), text.end());
    constexpr std::size_t flood = 12000; // more than four megabytes

    for (std::size_t sent = 0; sent < flood; ++sent)
        system.receive (message, 0);

    EXPECT_THAT (log.lines(),
                 ElementsAre ("MIDI messages were lost: they come in faster than they are handled"));
    release.set_value();
    ASSERT_TRUE (system.waitUntilDelivered (30s));
    EXPECT_LT (posted.spanners.size(), flood);
    EXPECT_GT (posted.spanners.size(), flood / 2);
}

/** Whether a message comes in when the process has all but ended. It is asked behind whatever was set up later. */
bool hasLateMessage = false;
const bool isSetUp = std::atexit (
                         []
                         {
                             if (hasLateMessage)
                                 MIDISystem::sharedMIDISystem()->receive (Bytes { 0x90, 60, 100 }, 0);
                         })
                     == 0;

/** Begins a process that ends while messages are on their way. */
class MIDISystemDeathTest : public MIDISystemTest
{
protected:
    MIDISystemDeathTest() { GTEST_FLAG_SET (death_test_style, "threadsafe"); }

    [[noreturn]] void endAmongMessages()
    {
        system.addMIDIEventTrigger ("NoteOn 1 60");
        system.openAllInputs();

        for (int sent = 0; sent < 10000; ++sent)
            system.receive (Bytes { 0x90, 60, 100 }, sent);

        std::exit (4);
    }

    [[noreturn]] static void endWithALateMessage()
    {
        hasLateMessage = isSetUp;
        std::exit (6);
    }

    [[noreturn]] void letAnObserverEnd()
    {
        posted.whatToDo = [] { std::exit (5); };
        system.addMIDIEventTrigger ("NoteOn 1 60");
        system.receive (Bytes { 0x90, 60, 100 }, 0);
        std::this_thread::sleep_for (1min);
        std::abort();
    }
};

TEST_F (MIDISystemDeathTest, aProcessMayEndWhileMessagesAreDelivered)
{
    EXPECT_EXIT (endAmongMessages(), testing::ExitedWithCode (4), "");
}

TEST_F (MIDISystemDeathTest, anObserverMayEndTheProcess)
{
    EXPECT_EXIT (letAnObserverEnd(), testing::ExitedWithCode (5), "");
}

TEST_F (MIDISystemDeathTest, aMessageThatComesTooLateIsLoggedAsThat)
{
    EXPECT_EXIT (endWithALateMessage(), testing::ExitedWithCode (6),
                 "MIDI messages were lost: the program is ending");
}

} // namespace
