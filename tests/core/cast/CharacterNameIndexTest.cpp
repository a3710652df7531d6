// SPDX-License-Identifier: GPL-3.0-only
#include "core/cast/CharacterNameIndex.h"

#include <gtest/gtest.h>

namespace
{
using ZEP::Core::CharacterNameIndex;
} // namespace

TEST (CharacterNameIndex, noticesAnEditAtTheUpdateAndNotBefore)
{
    juce::String name ("Anna");
    CharacterNameIndex index;
    index.set (0, name);

    name = "Hannah";
    EXPECT_EQ (index.firstPosition ("Anna"), 0u);
    EXPECT_EQ (index.firstPosition ("Hannah"), std::nullopt);

    index.update();
    EXPECT_EQ (index.firstPosition ("Anna"), std::nullopt);
    EXPECT_EQ (index.firstPosition ("Hannah"), 0u);
}

TEST (CharacterNameIndex, forgetsTheNameThatStoodAtAPositionBefore)
{
    const juce::String anna ("Anna");
    const juce::String bob ("Bob");
    CharacterNameIndex index;
    index.set (0, anna);
    index.set (0, bob);

    EXPECT_EQ (index.firstPosition ("Anna"), std::nullopt);
    EXPECT_EQ (index.firstPosition ("Bob"), 0u);
}

TEST (CharacterNameIndex, givesTheLowestOfSeveralPositions)
{
    juce::String first ("Guard");
    const juce::String second ("Guard");
    CharacterNameIndex index;
    index.set (0, first);
    index.set (1, second);
    EXPECT_EQ (index.firstPosition ("Guard"), 0u);

    first = "Captain";
    index.update();
    EXPECT_EQ (index.firstPosition ("Guard"), 1u);
}
