// SPDX-License-Identifier: GPL-3.0-only
#include "midiio/SpannerMessage.h"

#include "support/SpannerBytes.h"

#include <gtest/gtest.h>

namespace
{

using namespace ZEP::Overmarks::Testing;
using ZEP::MIDIIO::SpannerMessage;
using Command = SpannerMessage::Command;

SpannerMessage read (const SpannerBytes& bytes)
{
    const auto message = SpannerMessage::fromBytes (bytes.text());
    EXPECT_TRUE (message.has_value());
    return message.value_or (SpannerMessage());
}

TEST (SpannerMessage, theIdentityIsFiveDigitsOfSevenBits)
{
    EXPECT_EQ (read ({ .identity = { 0, 0, 0, 0, 1 } }).lineID, 1u);
    EXPECT_EQ (read ({ .identity = { 0, 0, 0, 1, 2 } }).lineID, 130u);
    EXPECT_EQ (read ({ .identity = { 0, 1, 2, 3, 4 } }).lineID, ((1u * 128 + 2) * 128 + 3) * 128 + 4);
    EXPECT_EQ (read ({ .identity = { 15, 127, 127, 127, 127 } }).lineID, 0xFFFFFFFFu);
}

TEST (SpannerMessage, aTopDigitBeyondThirtyTwoBitsIsLost)
{
    EXPECT_EQ (read ({ .identity = { 16, 0, 0, 0, 9 } }).lineID, 9u);
    EXPECT_EQ (read ({ .identity = { 17, 0, 0, 0, 9 } }).lineID, (1u << 28) + 9u);
}

TEST (SpannerMessage, theCommandIsZeroTwoOrARemoval)
{
    EXPECT_EQ (read ({ .command = 0 }).command, Command::create);
    EXPECT_EQ (read ({ .command = 2 }).command, Command::update);

    for (const int other : { 1, 3, 64, 127 })
        EXPECT_EQ (read ({ .command = other }).command, Command::removeAll) << other;
}

TEST (SpannerMessage, theHighestValueIsExactlyOne)
{
    EXPECT_EQ (read ({ .position = 127 }).position, 1.0f);
    EXPECT_EQ (read ({ .position = 0 }).position, 0.0f);
    EXPECT_EQ (read ({ .position = 1 }).position, static_cast<float> (1 / 127.0));
    const auto white = read ({ .colour = { 127, 127, 127 } });
    EXPECT_EQ (white.red, 1.0f);
    EXPECT_EQ (white.green, 1.0f);
    EXPECT_EQ (white.blue, 1.0f);
}

TEST (SpannerMessage, theHeaderIsNotReadWithTheRest)
{
    auto text = SpannerBytes().text();
    EXPECT_TRUE (SpannerMessage::hasHeader (text));
    text[3] = 'X';
    EXPECT_FALSE (SpannerMessage::hasHeader (text));
    EXPECT_TRUE (SpannerMessage::fromBytes (text).has_value());
    EXPECT_FALSE (SpannerMessage::hasHeader ("\xF0\x7D\x53"));
    EXPECT_FALSE (SpannerMessage::hasHeader (""));
}

TEST (SpannerMessage, eachCommandNeedsTheBytesThatItReads)
{
    const std::pair<int, std::size_t> needs[] { { createsLine, 15 },
                                                { updatesLines, 12 },
                                                { removesLines, 11 } };

    for (const auto& [command, length] : needs)
    {
        const auto text = SpannerBytes { .command = command }.text();
        EXPECT_TRUE (SpannerMessage::fromBytes (text.substr (0, length)).has_value()) << command;

        for (std::size_t shorter = 0; shorter < length; ++shorter)
            EXPECT_FALSE (SpannerMessage::fromBytes (text.substr (0, shorter)).has_value())
                << command << " " << shorter;
    }
}

TEST (SpannerMessage, onlyTheLengthOfWhatIsHandedOverCounts)
{
    const auto text = SpannerBytes { .group = 0xF7, .command = 0xF7 }.text();
    const auto message = SpannerMessage::fromBytes (text);
    ASSERT_TRUE (message.has_value());
    EXPECT_EQ (message->command, SpannerMessage::Command::removeAll);
    EXPECT_EQ (message->group, 0xF7u);
}

} // namespace
