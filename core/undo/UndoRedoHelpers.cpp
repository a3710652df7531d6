// SPDX-License-Identifier: GPL-3.0-only
#include "core/undo/UndoRedoHelpers.h"

#include "core/system/ProcessLifetime.h"

namespace ZEP::Core
{
UndoManager* UndoRedoHelpers::sharedUndoManager()
{
    static const ProcessLifetime<UndoManager> manager;
    return &manager.get();
}

UndoRedoHelpers::CompoundStep::CompoundStep (const juce::String& name)
{
    sharedUndoManager()->beginCompoundStep (name);
}

UndoRedoHelpers::CompoundStep::~CompoundStep() { sharedUndoManager()->endCompoundStep(); }
} // namespace ZEP::Core
