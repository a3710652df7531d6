// SPDX-License-Identifier: GPL-3.0-only
#include "core/undo/UndoManager.h"

#include "core/undo/UndoableAction.h"

#include <gtest/gtest.h>
#include <juce_gui_basics/juce_gui_basics.h>

#include <stdexcept>
#include <utility>

namespace
{
using ZEP::Core::UndoManager;

struct Take
{
    int number = 0;
};

using Action = ZEP::Core::UndoableAction<Take>;

/** Edits one number; says in one line what the Edit menu and the number show. */
class History : public testing::Test
{
protected:
    Action* newNumber (int number)
    {
        auto action = std::make_unique<Action>();
        action->target = take;
        action->performFunction = [number] (Action& self)
        {
            self.state.save (self.target->number);
            self.target->number = number;
        };
        action->undoFunction = [] (const Action& self) { self.target->number = self.state.restore<int>(); };
        return action.release();
    }

    /** As newNumber, with a listener that hears of the change while the edit still runs. */
    Action* newNumberAnswered (int number, const std::function<void()>& listener)
    {
        std::unique_ptr<Action> action (newNumber (number));
        action->performFunction =
            [set = action->performFunction, listener, redone = false] (Action& self) mutable
        {
            set (self);
            if (! std::exchange (redone, true))
                listener();
        };
        return action.release();
    }

    juce::String steps()
    {
        return juce::String (take->number) + " | undo: " + manager.getUndoDescriptions().joinIntoString (", ")
               + " | redo: " + manager.getRedoDescriptions().joinIntoString (", ");
    }

    std::shared_ptr<Take> take = std::make_shared<Take>();
    UndoManager manager;
};

class CommandListener final : public juce::ApplicationCommandManagerListener
{
public:
    void applicationCommandInvoked (const juce::ApplicationCommandTarget::InvocationInfo&) override {}
    void applicationCommandListChanged() override { ++changes; }

    int changes = 0;
};
} // namespace

TEST_F (History, everyEditIsAStepOfItsOwnWithItsName)
{
    EXPECT_TRUE (manager.perform (newNumber (1), "First"));
    EXPECT_TRUE (manager.perform (newNumber (2), "Second"));
    EXPECT_TRUE (manager.perform (newNumber (3), "Second"));
    EXPECT_EQ (steps(), "3 | undo: Second, Second, First | redo: ");

    EXPECT_TRUE (manager.undo());
    EXPECT_EQ (steps(), "2 | undo: Second, First | redo: Second");
    EXPECT_TRUE (manager.undo());
    EXPECT_TRUE (manager.undo());
    EXPECT_EQ (steps(), "0 | undo:  | redo: First, Second, Second");
    EXPECT_FALSE (manager.undo());
    EXPECT_TRUE (manager.redo());
    EXPECT_EQ (steps(), "1 | undo: First | redo: Second, Second");
}

TEST_F (History, anEditAfterAnUndoEndsWhatCouldBeRedone)
{
    manager.perform (newNumber (1), "First");
    manager.perform (newNumber (2), "Second");
    manager.undo();
    manager.perform (newNumber (3), "Third");

    EXPECT_EQ (steps(), "3 | undo: Third, First | redo: ");
}

TEST_F (History, whatIsOpenedBehindAStepNeitherSwallowsNorRenamesTheNextEdit)
{
    manager.perform (newNumber (1), "Remove Event");
    manager.beginNewTransaction ("Remove Events");
    EXPECT_EQ (steps(), "1 | undo: Remove Event | redo: ");

    manager.perform (newNumber (2), "Changing Text");
    EXPECT_EQ (steps(), "2 | undo: Changing Text, Remove Event | redo: ");
    manager.undo();
    EXPECT_EQ (steps(), "1 | undo: Remove Event | redo: Changing Text");
}

TEST_F (History, anEditWithoutANameDoesNotInheritOne)
{
    manager.perform (newNumber (1), "First");
    manager.beginNewTransaction ("Opened");
    manager.perform (newNumber (2), {});

    EXPECT_EQ (manager.getUndoDescription(), "");
    manager.undo();
    EXPECT_EQ (steps(), "1 | undo: First | redo: ");
}

TEST_F (History, aCompoundStepIsOneStepUnderItsOwnName)
{
    manager.perform (newNumber (1), "First");
    manager.beginCompoundStep ("Renumber");
    manager.perform (newNumber (2), "Changing Number");
    manager.perform (newNumber (3), "Changing Number");
    manager.endCompoundStep();
    manager.perform (newNumber (4), "Last");
    EXPECT_EQ (steps(), "4 | undo: Last, Renumber, First | redo: ");

    manager.undo();
    manager.undo();
    EXPECT_EQ (steps(), "1 | undo: First | redo: Renumber, Last");
    manager.redo();
    EXPECT_EQ (steps(), "3 | undo: Renumber, First | redo: Last");
}

TEST_F (History, compoundStepsWithinOneJoinTheOutermost)
{
    manager.beginCompoundStep ("Outer");
    manager.perform (newNumber (1), "a");
    manager.beginCompoundStep ("Inner");
    manager.perform (newNumber (2), "b");
    manager.endCompoundStep();
    manager.perform (newNumber (3), "c");
    manager.endCompoundStep();

    EXPECT_EQ (steps(), "3 | undo: Outer | redo: ");
    manager.undo();
    EXPECT_EQ (steps(), "0 | undo:  | redo: Outer");
}

TEST_F (History, anEmptyCompoundStepLeavesNoStepAndRenamesNone)
{
    manager.beginCompoundStep ("Empty");
    manager.endCompoundStep();
    EXPECT_EQ (steps(), "0 | undo:  | redo: ");

    manager.perform (newNumber (1), "First");
    manager.beginCompoundStep ("Empty");
    manager.endCompoundStep();
    EXPECT_EQ (steps(), "1 | undo: First | redo: ");
    manager.perform (newNumber (2), "Second");
    EXPECT_EQ (steps(), "2 | undo: Second, First | redo: ");
}

TEST_F (History, anEmptyCompoundStepKeepsWhatCanBeRedone)
{
    manager.perform (newNumber (1), "First");
    manager.undo();
    manager.beginCompoundStep ("Empty");
    manager.endCompoundStep();

    EXPECT_EQ (steps(), "0 | undo:  | redo: First");
}

TEST_F (History, nothingSplitsACompoundStep)
{
    manager.beginCompoundStep ("Clean Up");
    manager.perform (newNumber (1), "Remove Event");
    manager.beginNewTransaction ("Remove Events");
    manager.perform (newNumber (2), "Changing Text");
    manager.endCompoundStep();

    EXPECT_EQ (steps(), "2 | undo: Clean Up | redo: ");
}

TEST_F (History, anUndoInsideACompoundStepKeepsTheName)
{
    manager.beginCompoundStep ("Batch");
    manager.perform (newNumber (1), "a");
    manager.undo();
    manager.perform (newNumber (2), "b");
    manager.perform (newNumber (3), "c");
    manager.endCompoundStep();

    EXPECT_EQ (steps(), "3 | undo: Batch | redo: ");
}

TEST_F (History, anEndWithoutABeginningIsHarmless)
{
    manager.endCompoundStep();
    manager.perform (newNumber (1), "First");
    manager.perform (newNumber (2), "Second");

    EXPECT_EQ (steps(), "2 | undo: Second, First | redo: ");
}

TEST_F (History, theEditOfAListenerJoinsTheStepItAnswers)
{
    manager.perform (newNumber (1), "Before");
    auto outer = std::make_unique<Action>();
    outer->performFunction = [this] (Action&) { manager.perform (newNumber (2), "Answer"); };
    outer->undoFunction = [] (const Action&) {};

    manager.perform (outer.release(), "Changing Text");
    EXPECT_EQ (steps(), "2 | undo: Changing Text, Before | redo: ");
    manager.undo();
    EXPECT_EQ (steps(), "1 | undo: Before | redo: Changing Text");
}

TEST_F (History, aCompoundStepOfAListenerJoinsTheStepItAnswers)
{
    manager.perform (newNumber (1), "Before");
    auto outer = std::make_unique<Action>();
    outer->performFunction = [this] (Action&)
    {
        manager.beginCompoundStep ("Answers");
        manager.perform (newNumber (2), "Answer");
        manager.perform (newNumber (3), "Another Answer");
        manager.endCompoundStep();
    };
    outer->undoFunction = [] (const Action&) {};

    manager.perform (outer.release(), "Changing Text");
    EXPECT_EQ (steps(), "3 | undo: Changing Text, Before | redo: ");
    manager.undo();
    EXPECT_EQ (steps(), "1 | undo: Before | redo: Changing Text");
}

TEST_F (History, anAnswerOnTheSameValueIsUndoneBeforeWhatItAnsweredAndRedoneAfterIt)
{
    manager.perform (newNumber (1), "Before");
    manager.perform (newNumberAnswered (2, [this] { manager.perform (newNumber (3), "Answer"); }), "Outer");

    EXPECT_EQ (steps(), "3 | undo: Outer, Before | redo: ");
    manager.undo();
    EXPECT_EQ (steps(), "1 | undo: Before | redo: Outer");
    manager.redo();
    EXPECT_EQ (steps(), "3 | undo: Outer, Before | redo: ");
    manager.undo();
    EXPECT_EQ (steps(), "1 | undo: Before | redo: Outer");
}

TEST_F (History, anAnswerToAnAnswerIsUndoneFirst)
{
    manager.perform (newNumberAnswered (1,
                                        [this] {
                                            manager.perform (
                                                newNumberAnswered (
                                                    2, [this] { manager.perform (newNumber (3), "Third"); }),
                                                "Second");
                                        }),
                     "First");

    EXPECT_EQ (steps(), "3 | undo: First | redo: ");
    manager.undo();
    EXPECT_EQ (steps(), "0 | undo:  | redo: First");
    manager.redo();
    EXPECT_EQ (steps(), "3 | undo: First | redo: ");
}

TEST_F (History, anEditThatFailsTakesItsAnswersWithIt)
{
    class FailingAfterAnAnswer final : public juce::UndoableAction
    {
    public:
        explicit FailingAfterAnAnswer (std::function<void()> toAnswer) : answer (std::move (toAnswer)) {}
        bool perform() override
        {
            answer();
            return false;
        }
        bool undo() override { return true; }

    private:
        std::function<void()> answer;
    };

    manager.perform (newNumber (1), "First");
    auto failing =
        std::make_unique<FailingAfterAnAnswer> ([this] { manager.perform (newNumber (2), "Answer"); });

    EXPECT_FALSE (manager.perform (failing.release(), "Failing"));
    EXPECT_EQ (steps(), "1 | undo: First | redo: ");
}

TEST_F (History, anEditThatThrowsTakesItsAnswersWithIt)
{
    manager.perform (newNumber (1), "First");
    auto throwing = newNumberAnswered (5,
                                       [this]
                                       {
                                           take->number = 1;
                                           manager.perform (newNumber (2), "Answer");
                                           throw std::runtime_error ("a listener gave up");
                                       });

    EXPECT_THROW (manager.perform (throwing, "Throwing"), std::runtime_error);
    EXPECT_EQ (steps(), "1 | undo: First | redo: ");
    manager.perform (newNumber (3), "Next");
    EXPECT_EQ (steps(), "3 | undo: Next, First | redo: ");
}

TEST_F (History, anObserverThatThrowsDoesNotStopTheHistory)
{
    manager.perform (newNumber (1), "First");
    std::unique_ptr<Action> second (newNumber (2));
    second->undoFunction = [undo = second->undoFunction] (const Action& self)
    {
        undo (self);
        throw std::runtime_error ("an observer's mistake");
    };
    manager.perform (second.release(), "Second");

    EXPECT_NO_THROW (manager.undo());
    EXPECT_EQ (steps(), "1 | undo: First | redo: Second");
    manager.undo();
    EXPECT_EQ (steps(), "0 | undo:  | redo: First, Second");
    manager.redo();
    manager.redo();
    EXPECT_EQ (steps(), "2 | undo: Second, First | redo: ");
}

TEST_F (History, anEditDuringAnUndoIsRefused)
{
    bool refused = false;
    auto outer = std::make_unique<Action>();
    outer->performFunction = [] (Action&) {};
    outer->undoFunction = [&] (const Action&) { refused = ! manager.perform (newNumber (9), "Answer"); };
    manager.perform (outer.release(), "Outer");

    manager.undo();

    EXPECT_TRUE (refused);
    EXPECT_EQ (steps(), "0 | undo:  | redo: Outer");
}

TEST_F (History, anActionThatThrowsLeavesNoStep)
{
    manager.perform (newNumber (1), "First");
    auto empty = std::make_unique<Action>();
    empty->target = take;
    EXPECT_THROW (manager.perform (empty.release(), "Empty"), std::bad_function_call);
    EXPECT_EQ (take.use_count(), 2);

    EXPECT_EQ (steps(), "1 | undo: First | redo: ");
    manager.perform (newNumber (2), "Second");
    EXPECT_EQ (steps(), "2 | undo: Second, First | redo: ");
}

TEST_F (History, anActionThatFailsLeavesNoStep)
{
    class Failing final : public juce::UndoableAction
    {
    public:
        bool perform() override { return false; }
        bool undo() override { return true; }
    };

    manager.perform (newNumber (1), "First");
    EXPECT_FALSE (manager.perform (std::make_unique<Failing>().release(), "Failing"));
    EXPECT_FALSE (manager.perform (nullptr, "Nothing"));

    EXPECT_EQ (steps(), "1 | undo: First | redo: ");
}

TEST_F (History, aHundredThousandEditsOfOneCommandAreUndoneAtOnce)
{
    manager.beginCompoundStep ("Batch");
    for (int number = 1; number <= 100000; ++number)
        manager.perform (newNumber (number), "Changing Number");
    manager.endCompoundStep();
    EXPECT_EQ (steps(), "100000 | undo: Batch | redo: ");

    manager.undo();
    EXPECT_EQ (steps(), "0 | undo:  | redo: Batch");
}

TEST_F (History, theHistoryLetsGoOfWhatItHeld)
{
    manager.perform (newNumber (1), "First");
    EXPECT_EQ (take.use_count(), 2);
    manager.clearUndoHistory();
    EXPECT_EQ (take.use_count(), 1);
}

TEST_F (History, withoutACommandManagerTheStatusCallDoesNothing)
{
    EXPECT_EQ (manager.commandManager(), nullptr);
    manager.commandStatusChanged();
    EXPECT_EQ (steps(), "0 | undo:  | redo: ");
}

TEST_F (History, theCommandManagerHearsOfAChange)
{
    const juce::ScopedJuceInitialiser_GUI messages;
    juce::ApplicationCommandManager commands;
    CommandListener listener;
    commands.addListener (&listener);

    manager.setCommandManager (&commands);
    EXPECT_EQ (manager.commandManager(), &commands);
    manager.commandStatusChanged();
    for (int i = 0; i < 100 && listener.changes == 0; ++i)
        juce::MessageManager::getInstance()->runDispatchLoopUntil (10);
    EXPECT_EQ (listener.changes, 1);

    manager.setCommandManager (nullptr);
    commands.removeListener (&listener);
}
