// SPDX-License-Identifier: GPL-3.0-only
#include "core/undo/StateBuffer.h"

#include <gtest/gtest.h>
#include <juce_core/juce_core.h>

namespace
{
using ZEP::Core::StateBuffer;

enum Colour
{
    red = -1,
    green = 7
};
} // namespace

TEST (StateBuffer, givesBackInTheOrderOfSaving)
{
    StateBuffer state;
    state.save (1);
    state.save (2);

    EXPECT_EQ (state.restore<int>(), 1);
    EXPECT_EQ (state.restore<int>(), 2);
    EXPECT_TRUE (state.empty());
}

TEST (StateBuffer, holdsValuesOfAllTypesSideBySide)
{
    const auto shared = std::make_shared<int> (3);
    StateBuffer state;
    state.save (true);
    state.save (1.5f);
    state.save (juce::String ("text"));
    state.save (green);
    state.save (std::vector<std::shared_ptr<int>> { shared });
    EXPECT_EQ (shared.use_count(), 2);

    EXPECT_TRUE (state.restore<bool>());
    EXPECT_EQ (state.restore<float>(), 1.5f);
    EXPECT_EQ (state.restore<juce::String>(), "text");
    EXPECT_EQ (state.restore<Colour>(), green);
    EXPECT_EQ (state.restore<std::vector<std::shared_ptr<int>>>().front(), shared);
    EXPECT_EQ (shared.use_count(), 1);
}

TEST (StateBuffer, keepsACopyOfWhatItSaved)
{
    StateBuffer state;
    std::string text = "before";
    state.save (text);
    text = "after";

    EXPECT_EQ (state.restore<std::string>(), "before");
}

TEST (StateBuffer, aWrongTypeThrowsAndLeavesTheValue)
{
    StateBuffer state;
    state.save (1);

    try
    {
        static_cast<void> (state.restore<float>());
        FAIL() << "a float came out of an int";
    }
    catch (const Poco::BadCastException& exception)
    {
        EXPECT_EQ (exception.message(), "RefAnyCast: Failed to convert between Any types (i => f)");
    }
    EXPECT_EQ (state.restore<int>(), 1);
}

TEST (StateBuffer, restoringMoreThanWasSavedThrows)
{
    StateBuffer state;
    state.save (1);
    EXPECT_EQ (state.restore<int>(), 1);

    EXPECT_THROW (static_cast<void> (state.restore<int>()), Poco::BadCastException);
}
