// SPDX-License-Identifier: GPL-3.0-only
#include "core/undo/UndoManager.h"

#include "core/system/Logger.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <algorithm>
#include <exception>
#include <utility>
#include <vector>

namespace ZEP::Core
{
/** An edit with the edits that listeners made in answer to it while it ran, each with its own answers. */
class UndoManager::AnsweredEdit final : public juce::UndoableAction
{
public:
    AnsweredEdit (std::unique_ptr<juce::UndoableAction> toPerform, AnsweredEdit*& placeOfEditInProgress)
        : action (std::move (toPerform)),
          editInProgress (placeOfEditInProgress)
    {
    }

    bool perform() override { return answersAreComplete ? redo() : performFirst(); }

    bool undo() override
    {
        return undoAnswers() && inHistory ([this] { return action->undo(); });
    }

    int getSizeInUnits() override
    {
        int units = action->getSizeInUnits();
        for (const auto& answer : answers)
            units += answer->getSizeInUnits();
        return units;
    }

    void add (std::unique_ptr<AnsweredEdit> answer) { answers.push_back (std::move (answer)); }

private:
    bool performFirst()
    {
        const juce::ScopedValueSetter<AnsweredEdit*> inProgress (editInProgress, this);
        try
        {
            answersAreComplete = action->perform();
        }
        catch (...)
        {
            undoAnswers();
            throw;
        }
        if (! answersAreComplete)
            undoAnswers();
        return answersAreComplete;
    }

    bool redo()
    {
        return inHistory ([this] { return action->perform(); })
               && std::all_of (answers.begin(), answers.end(),
                               [] (auto& answer) { return answer->perform(); });
    }

    /** An observer that throws must not stop the history where it stands: no step could be undone any more. */
    template <typename Move>
    static bool inHistory (Move&& move)
    {
        try
        {
            return move();
        }
        catch (const std::exception& fault)
        {
            Logger::error ("Undo: an observer failed: " + juce::String::fromUTF8 (fault.what()));
            return true;
        }
    }

    bool undoAnswers()
    {
        return std::all_of (answers.rbegin(), answers.rend(), [] (auto& answer) { return answer->undo(); });
    }

    std::unique_ptr<juce::UndoableAction> action;
    std::vector<std::unique_ptr<AnsweredEdit>> answers;
    AnsweredEdit*& editInProgress;
    bool answersAreComplete = false;
};

UndoManager::UndoManager() = default;
UndoManager::~UndoManager() = default;

bool UndoManager::perform (juce::UndoableAction* action, const juce::String& name)
{
    std::unique_ptr<juce::UndoableAction> owned (action);
    if (owned == nullptr || isPerformingUndoRedo())
        return false;

    auto edit = std::make_unique<AnsweredEdit> (std::move (owned), editInProgress);
    return editInProgress != nullptr
               ? performAsAnswer (std::move (edit))
               : performInStep (std::move (edit), compoundDepth > 0 ? compoundName : name);
}

bool UndoManager::performAsAnswer (std::unique_ptr<AnsweredEdit> edit)
{
    auto& answered = *editInProgress;
    if (! edit->perform())
        return false;
    answered.add (std::move (edit));
    return true;
}

bool UndoManager::performInStep (std::unique_ptr<AnsweredEdit> edit, const juce::String& name)
{
    if (compoundDepth == 0 || ! compoundHasBegun)
        juce::UndoManager::beginNewTransaction (name);
    if (! juce::UndoManager::perform (edit.release()))
        return false;

    // A new step has the name already, except where an undo came between the edits of a compound step.
    setCurrentTransactionName (name);
    compoundHasBegun = compoundDepth > 0;
    return true;
}

void UndoManager::beginNewTransaction (const juce::String& name)
{
    if (compoundDepth == 0 && editInProgress == nullptr)
        juce::UndoManager::beginNewTransaction (name);
}

void UndoManager::beginCompoundStep (const juce::String& name)
{
    if (compoundDepth++ > 0)
        return;
    compoundName = name;
    compoundHasBegun = false;
}

void UndoManager::endCompoundStep()
{
    if (compoundDepth > 0 && --compoundDepth == 0 && editInProgress == nullptr)
        juce::UndoManager::beginNewTransaction();
}

void UndoManager::setCommandManager (juce::ApplicationCommandManager* manager) { commands = manager; }

juce::ApplicationCommandManager* UndoManager::commandManager() const { return commands; }

void UndoManager::commandStatusChanged()
{
    if (commands != nullptr)
        commands->commandStatusChanged();
}
} // namespace ZEP::Core
