// SPDX-License-Identifier: GPL-3.0-only
#include "core/undo/UndoManager.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace ZEP::Core
{
UndoManager::UndoManager() = default;
UndoManager::~UndoManager() = default;

bool UndoManager::perform (juce::UndoableAction* action, const juce::String& name)
{
    std::unique_ptr<juce::UndoableAction> owned (action);
    if (owned == nullptr || isPerformingUndoRedo())
        return false;

    // What a listener edits while an action runs belongs to the step of that action, which is still to be
    // entered.
    if (performing)
        return juce::UndoManager::perform (owned.release());

    const juce::ScopedValueSetter<bool> isPerforming (performing, true);
    return performInStep (owned.release(), compoundDepth > 0 ? compoundName : name);
}

bool UndoManager::performInStep (juce::UndoableAction* action, const juce::String& name)
{
    if (compoundDepth == 0 || ! compoundHasBegun)
        juce::UndoManager::beginNewTransaction (name);
    if (! juce::UndoManager::perform (action))
        return false;

    // A new step has the name already, except where an undo came between the edits of a compound step.
    setCurrentTransactionName (name);
    compoundHasBegun = compoundDepth > 0;
    return true;
}

void UndoManager::beginNewTransaction (const juce::String& name)
{
    if (compoundDepth == 0 && ! performing)
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
    if (compoundDepth > 0 && --compoundDepth == 0 && ! performing)
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
