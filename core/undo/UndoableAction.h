// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/undo/StateBuffer.h"

#include <juce_data_structures/juce_data_structures.h>

#include <functional>
#include <memory>

namespace ZEP::Core
{
/** One step of the Edit menu on one object, made of two functions.

    The perform function runs at once and again at each redo: it saves what it is about to change into the
    state, in any order, and the undo function takes it back in the same order, which leaves the state empty
    for a redo. What both need they capture by copy; the target keeps the changed object alive while the
    history holds the step, so a raw pointer to it is safe in them.

    An action with an empty function throws std::bad_function_call. The undo manager owns the action; one
    thread at a time.
*/
template <typename T>
class UndoableAction : public juce::UndoableAction
{
public:
    using PerformFunction = std::function<void (UndoableAction<T>&)>;
    using UndoFunction = std::function<void (const UndoableAction<T>&)>;

    UndoableAction() = default;

    UndoableAction (std::shared_ptr<T> targetToKeep, PerformFunction toPerform, UndoFunction toUndo)
        : performFunction (std::move (toPerform)),
          undoFunction (std::move (toUndo)),
          target (std::move (targetToKeep))
    {
    }

    ~UndoableAction() override = default;

    bool perform() override
    {
        performFunction (*this);
        return true;
    }

    bool undo() override
    {
        undoFunction (*this);
        return true;
    }

    /** 1, so that the limit of the history counts steps. */
    int getSizeInUnits() override { return 1; }

    PerformFunction performFunction;
    UndoFunction undoFunction;
    std::shared_ptr<T> target;
    mutable StateBuffer state;
};
} // namespace ZEP::Core
