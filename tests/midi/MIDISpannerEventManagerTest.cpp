// SPDX-License-Identifier: GPL-3.0-only
#include "midi/MIDISpannerEventManager.h"

#include "midi/PanLineSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ZEP::Overmarks::Testing
{
namespace
{

using testing::IsEmpty;

TEST_F (PanLines, thereAreNoneAtFirst)
{
    ASSERT_NE (manager.panLines, nullptr);
    EXPECT_THAT (*manager.panLines, IsEmpty());
    EXPECT_EQ (listener.calls, 0);
    EXPECT_EQ (MIDISpannerEventManager().listener.load(), nullptr);
}

TEST_F (PanLines, creatingMakesALineThatIsAlive)
{
    send ({ .identity = { 0, 0, 0, 1, 2 }, .group = 5, .position = 127, .colour = { 127, 64, 0 } });
    ASSERT_EQ (manager.panLines->size(), 1u);
    EXPECT_EQ (line (0).lineID, 130u);
    EXPECT_EQ (line (0).group, 5u);
    EXPECT_EQ (line (0).position, 1.0f);
    EXPECT_EQ (line (0).colour,
               juce::Colour::fromFloatRGBA (1.0f, static_cast<float> (64 / 127.0), 0.0f, alive));
    EXPECT_TRUE (manager.isTimerRunning (130));
    EXPECT_EQ (manager.getTimerInterval (130), 5000);
    EXPECT_EQ (listener.calls, 1);
}

TEST_F (PanLines, linesAreNotUniqueByIdentity)
{
    send ({ .position = 1 });
    send ({ .position = 2 });
    ASSERT_EQ (manager.panLines->size(), 2u);
    EXPECT_EQ (line (0).lineID, line (1).lineID);
    EXPECT_EQ (listener.calls, 2);
}

TEST_F (PanLines, theVectorStaysTheSame)
{
    const auto lines = manager.panLines;
    send ({});
    send ({ .command = removesLines });
    send ({});
    EXPECT_EQ (manager.panLines, lines);
}

TEST_F (PanLines, anUpdateMovesAllLinesOfItsIdentityAndGroup)
{
    send ({ .position = 10, .colour = { 127, 0, 0 } });
    send ({ .position = 20, .colour = { 0, 127, 0 } });
    send ({ .identity = { 0, 0, 0, 0, 8 }, .position = 30 });
    send ({ .command = updatesLines, .position = 127, .colour = { 0, 0, 127 } });
    EXPECT_EQ (line (0).position, 1.0f);
    EXPECT_EQ (line (1).position, 1.0f);
    EXPECT_EQ (line (2).position, static_cast<float> (30 / 127.0));
    EXPECT_EQ (line (0).colour.withAlpha (1.0f), juce::Colours::red);
    EXPECT_EQ (line (1).colour.withAlpha (1.0f), juce::Colours::lime);
    EXPECT_EQ (listener.calls, 4);
}

TEST_F (PanLines, anUpdateOfAnotherGroupOnlyBringsTheLineBack)
{
    send ({ .group = 1, .position = 10 });
    manager.timerCallback (7);
    ASSERT_EQ (alpha(), faded);
    manager.stopTimer (7); // a running one would be started again
    send ({ .group = 2, .command = updatesLines, .position = 127 });
    EXPECT_FLOAT_EQ (alpha(), alive);
    EXPECT_EQ (line (0).position, static_cast<float> (10 / 127.0));
    EXPECT_EQ (line (0).group, 1u);
    EXPECT_FALSE (manager.isTimerRunning (7));
}

TEST_F (PanLines, anUpdateOfItsGroupStartsTheTimerAgain)
{
    send ({});
    manager.stopTimer (7);
    send ({ .command = updatesLines });
    EXPECT_TRUE (manager.isTimerRunning (7));
    EXPECT_EQ (manager.getTimerInterval (7), 5000);
}

TEST_F (PanLines, anUpdateOfAnUnknownIdentityOnlyTellsTheListener)
{
    send ({ .identity = { 0, 0, 0, 0, 9 }, .command = updatesLines });
    EXPECT_THAT (*manager.panLines, IsEmpty());
    EXPECT_FALSE (manager.isTimerRunning (9));
    EXPECT_EQ (listener.calls, 1);
}

TEST_F (PanLines, aRemovalEmptiesTheListAndStopsItsOwnTimer)
{
    send ({ .identity = { 0, 0, 0, 0, 7 } });
    send ({ .identity = { 0, 0, 0, 0, 8 } });
    send ({ .identity = { 0, 0, 0, 0, 7 }, .command = removesLines });
    EXPECT_THAT (*manager.panLines, IsEmpty());
    EXPECT_FALSE (manager.isTimerRunning (7));
    EXPECT_TRUE (manager.isTimerRunning (8));
    EXPECT_EQ (listener.calls, 3);
}

TEST_F (PanLines, anyOtherCommandIsARemoval)
{
    for (const int command : { 1, 3, 0x7F, 0x80, 0xF7, 0xFF })
    {
        send ({});
        const int before = listener.calls;
        send ({ .command = command });
        EXPECT_THAT (*manager.panLines, IsEmpty()) << command;
        EXPECT_EQ (listener.calls, before + 1) << command;
    }
}

TEST_F (PanLines, theFirstFourBytesAreNotRead)
{
    auto bytes = SpannerBytes().text();
    bytes.replace (0, 4, "\xF7\xF7\xF7\xF7");
    sendBytes (bytes);
    EXPECT_EQ (manager.panLines->size(), 1u);
    EXPECT_EQ (line (0).lineID, 7u);
}

TEST_F (PanLines, theGroupIsTheValueOfItsByte)
{
    send ({ .group = 0xF7 });
    ASSERT_EQ (manager.panLines->size(), 1u);
    EXPECT_EQ (line (0).group, 0xF7u);
}

TEST_F (PanLines, aRemovalOfAnUnknownIdentityLeavesAllTimersRunning)
{
    send ({ .identity = { 0, 0, 0, 0, 7 } });
    send ({ .identity = { 0, 0, 0, 0, 8 } });
    send ({ .identity = { 0, 0, 0, 0, 99 }, .command = removesLines });
    EXPECT_THAT (*manager.panLines, IsEmpty());
    EXPECT_TRUE (manager.isTimerRunning (7));
    EXPECT_TRUE (manager.isTimerRunning (8));
}

TEST_F (PanLines, aRemovalWithoutLinesLeavesItsTimerRunning)
{
    send ({ .identity = { 0, 0, 0, 0, 7 } });
    send ({ .identity = { 0, 0, 0, 0, 99 }, .command = removesLines });
    send ({ .identity = { 0, 0, 0, 0, 7 }, .command = removesLines });
    EXPECT_TRUE (manager.isTimerRunning (7));
}

TEST_F (PanLines, anyCommandButZeroAndTwoRemoves)
{
    for (const int command : { 1, 3, 127 })
    {
        send ({});
        send ({ .command = command });
        EXPECT_THAT (*manager.panLines, IsEmpty()) << command;
    }
}

TEST_F (PanLines, theTimerFadesTheLinesOfItsNumberAndRunsOn)
{
    send ({ .identity = { 0, 0, 0, 0, 7 }, .colour = { 127, 64, 1 } });
    send ({ .identity = { 0, 0, 0, 0, 8 } });
    const auto former = line (0).colour;
    manager.timerCallback (7);
    EXPECT_EQ (line (0).colour, former.withAlpha (0.0f));
    EXPECT_FLOAT_EQ (alpha (1), alive);
    EXPECT_TRUE (manager.isTimerRunning (7));
    EXPECT_EQ (listener.calls, 3);
    EXPECT_EQ (manager.panLines->size(), 2u);
}

TEST_F (PanLines, aFadedLineComesBackWithItsColour)
{
    send ({ .colour = { 127, 64, 1 } });
    const auto former = line (0).colour;
    manager.timerCallback (7);
    send ({ .command = updatesLines });
    EXPECT_EQ (line (0).colour, former);
}

TEST_F (PanLines, aTimerWithoutALineStillTellsTheListener)
{
    manager.timerCallback (12345);
    EXPECT_EQ (listener.calls, 1);
}

TEST_F (PanLines, anIdentityBeyondTheSignedNumbersHasItsTimer)
{
    send ({ .identity = { 15, 127, 127, 127, 127 } });
    EXPECT_EQ (line (0).lineID, 0xFFFFFFFFu);
    EXPECT_TRUE (manager.isTimerRunning (-1));
    manager.timerCallback (-1);
    EXPECT_EQ (alpha(), faded);
}

TEST_F (PanLines, aTopDigitBeyondThirtyTwoBitsIsLost)
{
    send ({ .identity = { 16, 0, 0, 0, 7 } });
    EXPECT_EQ (line (0).lineID, 7u);
    EXPECT_TRUE (manager.isTimerRunning (7));
}

TEST_F (PanLines, theHeaderAndTheEndAreNotRead)
{
    auto bytes = SpannerBytes().text();
    bytes.replace (0, 4, "abcd");
    bytes.pop_back();
    sendBytes (bytes);
    EXPECT_EQ (manager.panLines->size(), 1u);
}

TEST_F (PanLines, aMessageThatIsTooShortChangesNothing)
{
    send ({});
    const auto whole = SpannerBytes().text();

    for (std::size_t length = 0; length < 15; ++length)
        sendBytes (whole.substr (0, length));

    EXPECT_EQ (manager.panLines->size(), 1u);
    EXPECT_EQ (listener.calls, 1);
}

TEST_F (PanLines, newsWithoutAMessageOrTimeAreThrownBackAtTheSender)
{
    auto& center = Poco::NotificationCenter::defaultCenter();
    const auto& messageKey = ZEP::MIDIIO::SpannerEventNotificationMIDIMsgDictKey;
    const auto& timeKey = ZEP::MIDIIO::SpannerEventNotificationTimestampDictKey;
    const auto postInfo = [&center] (const std::map<std::string, Poco::Any>& userInfo)
    { center.postNotification (new SpannerNews (userInfo)); };

    EXPECT_THROW (postInfo ({ { timeKey, 1.0 } }), Poco::BadCastException);
    EXPECT_THROW (postInfo ({ { messageKey, SpannerBytes().text() } }), Poco::BadCastException);
    EXPECT_THROW (postInfo ({ { messageKey, 5 }, { timeKey, 1.0 } }), Poco::BadCastException);
    EXPECT_THROW (postInfo ({ { messageKey, SpannerBytes().text() }, { timeKey, 1 } }),
                  Poco::BadCastException);
    EXPECT_THAT (*manager.panLines, IsEmpty());
    EXPECT_EQ (listener.calls, 0);
}

TEST_F (PanLines, withoutAListenerEverythingGoesOn)
{
    manager.listener = nullptr;
    send ({});
    manager.timerCallback (7);
    EXPECT_EQ (alpha(), faded);
    EXPECT_EQ (listener.calls, 0);
}

TEST_F (PanLines, aManagerThatIsGoneHearsNothing)
{
    const auto before = Poco::NotificationCenter::defaultCenter().countObservers();
    {
        const MIDISpannerEventManager another;
        EXPECT_EQ (Poco::NotificationCenter::defaultCenter().countObservers(), before + 1);
    }
    EXPECT_EQ (Poco::NotificationCenter::defaultCenter().countObservers(), before);
}

TEST_F (PanLines, aListenerMayReadTheLinesWhileATimerTellsIt)
{
    struct Reader final : public MIDISpannerEventManager::Listener
    {
        explicit Reader (MIDISpannerEventManager& read) : lines (read) {}

        void panLinesChanged() override
        {
            const std::lock_guard lock (lines.mutex);
            seen = lines.panLines->size();
        }

        MIDISpannerEventManager& lines;
        std::size_t seen = 0;
    };

    Reader reader (manager);
    send ({});
    manager.listener = &reader;
    manager.timerCallback (7);
    EXPECT_EQ (reader.seen, 1u);
    manager.listener = nullptr;
}

} // namespace
} // namespace ZEP::Overmarks::Testing
