// SPDX-License-Identifier: GPL-3.0-only
#include "list/TextKey.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>

namespace ZEP::Overmarks::Testing
{
namespace
{

int sign (int value) { return (value > 0) - (value < 0); }

std::string textByChance (std::mt19937& random)
{
    static const std::string bytes { "ab\x01\x7f\xc3\xff" };
    const bool isLong = random() % 2 == 0; // alike in all that a key holds of it
    std::string text (isLong ? 32 + random() % 9 : random() % 20, 'a');
    for (std::size_t i = random() % (isLong ? 3 : 30); i > 0; --i)
        text += bytes[random() % bytes.size()];
    return text;
}

/** By the words alone, as far as they tell: 0 where they don't. */
int byWords (const TextKey& a, const TextKey& b)
{
    for (std::size_t i = 0;; ++i)
    {
        const auto ofA = a.word (i), ofB = b.word (i);
        EXPECT_EQ (ofA.has_value(), ofB.has_value());
        if (! ofA || ! ofB)
            return 0;
        if (*ofA != *ofB)
            return *ofA < *ofB ? -1 : 1;
    }
}

TEST (TextKey, comparesAsItsTextDoes)
{
    std::mt19937 random (4);

    for (int i = 0; i < 20000; ++i)
    {
        const auto a = textByChance (random), b = textByChance (random);
        const TextKey keyOfA (a.c_str()), keyOfB (b.c_str());
        const int expected = sign (a.compare (b));
        ASSERT_EQ (sign (keyOfA.compare (keyOfB)), expected) << a << " and " << b;

        if (const int judged = byWords (keyOfA, keyOfB); judged != 0)
            ASSERT_EQ (judged, expected) << a << " and " << b;
        else
            ASSERT_TRUE (expected == 0 || ! keyOfA.isWhole() || ! keyOfB.isWhole()) << a << " and " << b;
    }
}

TEST (TextKey, aShortTextNeedntStayWhereItIs)
{
    std::string text (31, 'x');
    const TextKey key (text.c_str());
    ASSERT_TRUE (key.isWhole());
    text = "y";
    EXPECT_EQ (key.compare (TextKey (std::string (31, 'x').c_str())), 0);
    EXPECT_FALSE (TextKey (std::string (32, 'x').c_str()).isWhole());
}

TEST (TextKey, anEmptyTextGoesFirst)
{
    EXPECT_EQ (TextKey().compare (TextKey ("")), 0);
    EXPECT_LT (TextKey(), TextKey ("\x01"));
    EXPECT_EQ (TextKey().word (0), std::uint64_t { 0 });
    EXPECT_FALSE (TextKey().word (1));
}

} // namespace
} // namespace ZEP::Overmarks::Testing
