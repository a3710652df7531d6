// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"
#include "core/undo/UndoManager.h"

namespace ZEP::Core
{
/** The way to the process's one undo history. */
class ZEP_CORE_API UndoRedoHelpers final
{
public:
    UndoRedoHelpers() = delete;

    /** Never null, never destroyed. */
    static UndoManager* sharedUndoManager();

    /** A command of the user that makes several edits and is undone at once ("Renumber Cues").

        Everything performed while the scope lasts becomes one step with this name. A compound step inside
        another belongs to the outer one and its name is dropped. Without an edit no step comes to be, and the
        name touches no other step.
    */
    class ZEP_CORE_API CompoundStep final
    {
    public:
        explicit CompoundStep (const juce::String& name); ///< The step's name in the Edit menu.
        ~CompoundStep();

        CompoundStep (const CompoundStep&) = delete;
        CompoundStep& operator= (const CompoundStep&) = delete;
    };
};
} // namespace ZEP::Core
