// SPDX-License-Identifier: GPL-3.0-only
#include "core/undo/UndoableAction.h"

#include <gtest/gtest.h>

namespace
{
struct Cue
{
    int take = 1;
    juce::String text { "old" };
};

using Action = ZEP::Core::UndoableAction<Cue>;

std::unique_ptr<Action> newTextAndTake (const std::shared_ptr<Cue>& cue, const juce::String& text, int take)
{
    auto* target = cue.get();
    return std::make_unique<Action> (
        cue,
        [text, take] (Action& action)
        {
            action.state.save (action.target->take);
            action.state.save (action.target->text);
            action.target->take = take;
            action.target->text = text;
        },
        [target] (const Action& action)
        {
            target->take = action.state.restore<int>();
            target->text = action.state.restore<juce::String>();
        });
}
} // namespace

TEST (UndoableAction, anActionWithoutFunctionsThrows)
{
    Action action;

    EXPECT_THROW (action.perform(), std::bad_function_call);
    EXPECT_THROW (action.undo(), std::bad_function_call);
}

TEST (UndoableAction, performsAndUndoesAndRedoes)
{
    const auto cue = std::make_shared<Cue>();
    const auto action = newTextAndTake (cue, "new", 5);

    EXPECT_TRUE (action->perform());
    EXPECT_EQ (cue->text, "new");
    EXPECT_EQ (cue->take, 5);
    EXPECT_FALSE (action->state.empty());

    EXPECT_TRUE (action->undo());
    EXPECT_EQ (cue->text, "old");
    EXPECT_EQ (cue->take, 1);
    EXPECT_TRUE (action->state.empty());

    EXPECT_TRUE (action->perform());
    EXPECT_EQ (cue->text, "new");
    EXPECT_FALSE (action->state.empty());
}

TEST (UndoableAction, aRedoSavesWhatHoldsThen)
{
    const auto cue = std::make_shared<Cue>();
    const auto action = newTextAndTake (cue, "new", 5);
    action->perform();
    action->undo();
    cue->text = "in between";

    action->perform();
    action->undo();

    EXPECT_EQ (cue->text, "in between");
}

TEST (UndoableAction, countsAsOneStepAndKeepsItsTargetAlive)
{
    auto cue = std::make_shared<Cue>();
    auto action = newTextAndTake (cue, "new", 5);
    const std::weak_ptr<Cue> observer = cue;

    EXPECT_EQ (action->getSizeInUnits(), 1);
    cue.reset();
    EXPECT_FALSE (observer.expired());
    action->perform();
    action->undo();
    action.reset();
    EXPECT_TRUE (observer.expired());
}

TEST (UndoableAction, isFilledThroughItsMembersToo)
{
    Action action;
    int performed = 0;
    action.target = std::make_shared<Cue>();
    action.performFunction = [&] (Action& self) { performed += self.target->take; };
    action.undoFunction = [&] (const Action&) { performed = 0; };

    action.perform();
    EXPECT_EQ (performed, 1);
    action.undo();
    EXPECT_EQ (performed, 0);
}
