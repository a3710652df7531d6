// SPDX-License-Identifier: GPL-3.0-only
#include "core/undo/UndoRedoHelpers.h"

#include "core/undo/UndoableAction.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace
{
using ZEP::Core::UndoRedoHelpers;
using Action = ZEP::Core::UndoableAction<int>;

class SharedHistory : public testing::Test
{
protected:
    void SetUp() override { history().clearUndoHistory(); }
    void TearDown() override { history().clearUndoHistory(); }

    static ZEP::Core::UndoManager& history() { return *UndoRedoHelpers::sharedUndoManager(); }

    void add (int amount, const juce::String& name)
    {
        auto action = std::make_unique<Action>();
        action->target = sum;
        action->performFunction = [amount] (Action& self) { *self.target += amount; };
        action->undoFunction = [amount] (const Action& self) { *self.target -= amount; };
        history().perform (action.release(), name);
    }

    std::shared_ptr<int> sum = std::make_shared<int> (0);
};

/** Looks at the history when everything else of the program is gone. */
struct LateGuest
{
    ~LateGuest() { std::_Exit (UndoRedoHelpers::sharedUndoManager()->canUndo() ? 7 : 8); }
};

void exitWithAFullHistory()
{
    static const LateGuest guest;
    auto action = std::make_unique<Action>();
    action->performFunction = [] (Action&) {};
    action->undoFunction = [] (const Action&) {};
    UndoRedoHelpers::sharedUndoManager()->perform (action.release(), "Last");
    std::exit (0);
}
} // namespace

TEST_F (SharedHistory, thereIsOneHistory)
{
    EXPECT_EQ (UndoRedoHelpers::sharedUndoManager(), UndoRedoHelpers::sharedUndoManager());
}

TEST_F (SharedHistory, aCommandWithManyEditsIsUndoneAtOnce)
{
    add (1, "Before");
    {
        const UndoRedoHelpers::CompoundStep step ("Renumber Cues");
        add (10, "Changing Cue Number");
        {
            const UndoRedoHelpers::CompoundStep inner ("Inner");
            add (100, "Changing Text");
        }
        add (1000, "Changing Cue Number");
    }
    add (10000, "After");

    EXPECT_EQ (history().getUndoDescriptions(), juce::StringArray ("After", "Renumber Cues", "Before"));
    history().undo();
    history().undo();
    EXPECT_EQ (*sum, 1);
    history().redo();
    EXPECT_EQ (*sum, 1111);
}

TEST_F (SharedHistory, aCommandThatChangesNothingLeavesNoStep)
{
    add (1, "Before");
    {
        const UndoRedoHelpers::CompoundStep step ("Renumber Cues");
    }

    EXPECT_EQ (history().getUndoDescriptions(), juce::StringArray ("Before"));
}

TEST_F (SharedHistory, aCommandThatThrowsEndsItsStep)
{
    try
    {
        const UndoRedoHelpers::CompoundStep step ("Renumber Cues");
        add (10, "Changing Cue Number");
        throw std::runtime_error ("stop");
    }
    catch (const std::runtime_error&)
    {
        add (100, "After");
    }

    EXPECT_EQ (history().getUndoDescriptions(), juce::StringArray ("After", "Renumber Cues"));
}

TEST (SharedHistoryDeathTest, outlivesTheObjectsThatAreDestroyedAtExit)
{
    EXPECT_EXIT (exitWithAFullHistory(), testing::ExitedWithCode (7), "");
}
