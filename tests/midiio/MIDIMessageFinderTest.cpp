// SPDX-License-Identifier: GPL-3.0-only
#include "midiio/MIDIMessageFinder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

namespace
{

using ZEP::MIDIIO::MIDIMessageFinder;
using Bytes = std::vector<std::uint8_t>;
using testing::ElementsAre;
using testing::IsEmpty;

/** The bytes lie in memory of just their size, so that a check of addresses sees every step beyond. */
std::vector<Bytes> messagesIn (const Bytes& bytes)
{
    const auto exact = std::make_unique<std::uint8_t[]> (bytes.size());
    std::copy (bytes.begin(), bytes.end(), exact.get());
    MIDIMessageFinder finder ({ exact.get(), bytes.size() });
    std::vector<Bytes> found;

    for (auto message = finder.next(); ! message.empty(); message = finder.next())
        found.emplace_back (message.begin(), message.end());

    return found;
}

Bytes exclusiveOf (std::size_t length)
{
    Bytes bytes (length, 0x01);
    bytes.front() = 0xF0;
    bytes.back() = 0xF7;
    return bytes;
}

TEST (MIDIMessageFinder, oneMessageIsOne)
{
    EXPECT_THAT (messagesIn ({ 0x90, 60, 100 }), ElementsAre (Bytes { 0x90, 60, 100 }));
}

TEST (MIDIMessageFinder, messagesFollowEachOther)
{
    EXPECT_THAT (messagesIn ({ 0x90, 60, 100, 0xC1, 5, 0xF0, 1, 0xF7, 0x80, 60, 0 }),
                 ElementsAre (Bytes { 0x90, 60, 100 }, Bytes { 0xC1, 5 }, Bytes { 0xF0, 1, 0xF7 },
                              Bytes { 0x80, 60, 0 }));
}

TEST (MIDIMessageFinder, aRunningStatusStandsBeforeEachMessage)
{
    EXPECT_THAT (messagesIn ({ 0x90, 60, 100, 62, 100, 60, 0 }),
                 ElementsAre (Bytes { 0x90, 60, 100 }, Bytes { 0x90, 62, 100 }, Bytes { 0x90, 60, 0 }));
    EXPECT_THAT (messagesIn ({ 0xC0, 1, 2 }), ElementsAre (Bytes { 0xC0, 1 }, Bytes { 0xC0, 2 }));
}

TEST (MIDIMessageFinder, anExclusiveOrCommonMessageEndsTheRunningStatus)
{
    EXPECT_THAT (messagesIn ({ 0x90, 60, 100, 0xF0, 1, 0xF7, 62, 100 }),
                 ElementsAre (Bytes { 0x90, 60, 100 }, Bytes { 0xF0, 1, 0xF7 }));
    EXPECT_THAT (messagesIn ({ 0x90, 60, 100, 0xF3, 1, 62, 100 }),
                 ElementsAre (Bytes { 0x90, 60, 100 }, Bytes { 0xF3, 1 }));
    EXPECT_THAT (messagesIn ({ 0x90, 60, 100, 0xF7, 62, 100 }), ElementsAre (Bytes { 0x90, 60, 100 }));
}

TEST (MIDIMessageFinder, realTimeBytesMayStandAnywhere)
{
    EXPECT_THAT (messagesIn ({ 0xF8, 0x90, 0xFE, 60, 0xF8, 100, 0xFA, 62, 0xF8, 1 }),
                 ElementsAre (Bytes { 0x90, 60, 100 }, Bytes { 0x90, 62, 1 }));
    EXPECT_THAT (messagesIn ({ 0xF0, 1, 0xF8, 2, 0xF7 }), ElementsAre (Bytes { 0xF0, 1, 2, 0xF7 }));
}

TEST (MIDIMessageFinder, dataWithoutAStatusIsPassedOver)
{
    EXPECT_THAT (messagesIn ({ 60, 100, 0x90, 61, 100 }), ElementsAre (Bytes { 0x90, 61, 100 }));
}

TEST (MIDIMessageFinder, aMessageThatAnotherCutsShortIsPassedOver)
{
    EXPECT_THAT (messagesIn ({ 0x90, 60, 0x80, 61, 0 }), ElementsAre (Bytes { 0x80, 61, 0 }));
    EXPECT_THAT (messagesIn ({ 0xF0, 1, 2, 0x90, 61, 1 }), ElementsAre (Bytes { 0x90, 61, 1 }));
    EXPECT_THAT (messagesIn ({ 0xF0, 1, 0xF0, 2, 0xF7 }), ElementsAre (Bytes { 0xF0, 2, 0xF7 }));
}

TEST (MIDIMessageFinder, theRestAtTheEndIsPassedOver)
{
    EXPECT_THAT (messagesIn ({}), IsEmpty());
    EXPECT_THAT (messagesIn ({ 0x90 }), IsEmpty());
    EXPECT_THAT (messagesIn ({ 0x90, 60 }), IsEmpty());
    EXPECT_THAT (messagesIn ({ 0x90, 60, 1, 62 }), ElementsAre (Bytes { 0x90, 60, 1 }));
    EXPECT_THAT (messagesIn ({ 0xF0, 0x7D, 0x53 }), IsEmpty());
    EXPECT_THAT (messagesIn ({ 0xF7 }), IsEmpty());
}

TEST (MIDIMessageFinder, messagesWithoutDataDontHoldOthersUp)
{
    EXPECT_THAT (messagesIn ({ 0xF6, 0x90, 60, 1, 0xF2, 1, 2 }),
                 ElementsAre (Bytes { 0xF6 }, Bytes { 0x90, 60, 1 }, Bytes { 0xF2, 1, 2 }));
}

TEST (MIDIMessageFinder, theLongestExclusiveIsTakenAndALongerOneIsPassedOver)
{
    const auto longest = exclusiveOf (MIDIMessageFinder::longestExclusive);
    EXPECT_THAT (messagesIn (longest), ElementsAre (longest));

    auto longer = exclusiveOf (MIDIMessageFinder::longestExclusive + 1);
    EXPECT_THAT (messagesIn (longer), IsEmpty());
    longer.insert (longer.end(), { 0x90, 60, 1 });
    EXPECT_THAT (messagesIn (longer), ElementsAre (Bytes { 0x90, 60, 1 }));

    EXPECT_THAT (messagesIn (Bytes (100000, 0x01)), IsEmpty());
}

TEST (MIDIMessageFinder, anyBytesGiveMessagesThatAreWhole)
{
    std::mt19937 random (1);

    for (int run = 0; run < 2000; ++run)
    {
        Bytes bytes (random() % 64);

        for (auto& byte : bytes)
            byte = static_cast<std::uint8_t> (random() % 3 == 0 ? 0x80 + random() % 128 : random() % 128);

        for (const auto& message : messagesIn (bytes))
        {
            ASSERT_GE (message.front(), 0x80);
            const auto end = message.front() == 0xF0 ? message.end() - 1 : message.end();
            ASSERT_TRUE (std::all_of (message.begin() + 1, end, [] (auto byte) { return byte < 0x80; }));
            ASSERT_EQ (message.front() == 0xF0, message.back() == 0xF7);
        }
    }
}

TEST (MIDIMessageFinder, aStreamGoesOnInItsNextPiece)
{
    MIDIMessageFinder finder ({});
    const auto messagesIn = [&finder] (const std::vector<std::uint8_t>& piece)
    {
        std::vector<std::vector<std::uint8_t>> found;
        finder.goOn (piece);

        for (auto message = finder.next(); ! message.empty(); message = finder.next())
            found.emplace_back (message.begin(), message.end());

        return found;
    };
    using Found = std::vector<std::vector<std::uint8_t>>;
    EXPECT_EQ (messagesIn ({ 0x90, 60 }), Found());
    EXPECT_EQ (messagesIn ({ 100, 61 }), (Found { { 0x90, 60, 100 } }));
    EXPECT_EQ (messagesIn ({ 0 }), (Found { { 0x90, 61, 0 } }));
    EXPECT_EQ (messagesIn ({ 62, 1, 0xF0, 0x7F }), (Found { { 0x90, 62, 1 } }));
    EXPECT_EQ (messagesIn ({}), Found());
    EXPECT_EQ (messagesIn ({ 0x01, 0xF7 }), (Found { { 0xF0, 0x7F, 0x01, 0xF7 } }));
    EXPECT_EQ (messagesIn ({ 60, 100 }), Found());
}

} // namespace
