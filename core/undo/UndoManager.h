// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Core/Export.h"

#include <juce_data_structures/juce_data_structures.h>

#include <memory>

namespace juce
{
class ApplicationCommandManager;
}

namespace ZEP::Core
{
/** The history behind the Edit menu, in which every edit is a step of its own under its own name.

    Inside a compound step the edits share a step. An edit that a listener makes in answer to another one belongs
    to the step of that one: it is undone before it and redone after it, and goes if the first edit fails. No edit
    can be made from within undo() or redo(): it is refused, since the history has no place for it. Call through
    this class, not through its base, whose perform() joins whatever step came last.

    What an observer throws during undo() or redo() goes to the log and no further: the step is made.

    One thread at a time; usually the process's one manager, see UndoRedoHelpers.
*/
class ZEP_CORE_API UndoManager final : public juce::UndoManager
{
public:
    UndoManager();
    ~UndoManager() override;

    UndoManager (const UndoManager&) = delete;
    UndoManager& operator= (const UndoManager&) = delete;

    /** Performs the action now and takes ownership of it in any case. False if the action is null or fails,
        or during undo and redo; nothing enters the history then. What the action throws passes through, and
        the action is gone.
    */
    bool perform (juce::UndoableAction* action, const juce::String& name);

    /** Ends the present step. The name is that of a step only until the next perform() gives its own: nothing
        that this opens swallows or renames a later edit. No effect inside a compound step, which stays one.
    */
    void beginNewTransaction (const juce::String& name = {});

    /** Makes all performs up to the matching endCompoundStep() one step. The outermost name counts; use
        UndoRedoHelpers::CompoundStep, which cannot forget the end.
    */
    void beginCompoundStep (const juce::String& name);
    void endCompoundStep(); ///< Without a beginning it does nothing.

    /** The application's commands, whose undo and redo entries follow the history. Not owned: the application
        sets it back to null before it destroys them. Null where there are no menus.
    */
    void setCommandManager (juce::ApplicationCommandManager* manager);
    [[nodiscard]] juce::ApplicationCommandManager* commandManager() const; ///< Null where none is set.

    /** Lets the application's menus follow the history; does nothing without a command manager. */
    void commandStatusChanged();

private:
    class AnsweredEdit;

    bool performAsAnswer (std::unique_ptr<AnsweredEdit> edit);
    bool performInStep (std::unique_ptr<AnsweredEdit> edit, const juce::String& name);

    AnsweredEdit* editInProgress = nullptr;
    juce::ApplicationCommandManager* commands = nullptr;
    juce::String compoundName;
    int compoundDepth = 0;
    bool compoundHasBegun = false;
};
} // namespace ZEP::Core
