// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/undo/UndoRedoHelpers.h"
#include "core/undo/UndoableAction.h"
#include "event/Event.h"

#include <memory>
#include <utility>

namespace ZEP::Overmarks
{

/** Which of the two notifications tells of a change. */
enum class Event::News
{
    attribute,
    timing
};

/** The one implementation of an undoable change; all setters of Event come down to it.

    Under undo bypass the change is made and told, and that is all. Otherwise the change becomes a step that saves the named
    fields, makes the change and tells of it; undoing it writes the fields back in the order of saving and tells again. */
template <typename Change, typename... Values>
void Event::change (const char* undoName, News news, Change makeChange, Values Event::*... saved)
{
    if (undoBypass)
    {
        makeChange (*this);
        announce (news);
        return;
    }

    using Action = ZEP::Core::UndoableAction<Event>;
    auto action = std::make_unique<Action>();
    action->target = shared_from_this();
    action->performFunction = [this, news, makeChange = std::move (makeChange), saved...] (Action& step)
    {
        (step.state.template save<Values> (this->*saved), ...);
        makeChange (*this);
        announce (news);
    };
    action->undoFunction = [this, news, saved...] (const Action& step)
    {
        ((this->*saved = step.state.template restore<Values>()), ...);
        announce (news);
    };

    auto* undoManager = ZEP::Core::UndoRedoHelpers::sharedUndoManager();
    undoManager->perform (action.release(), undoName);
    undoManager->commandStatusChanged();
}

/** The change of a single field. */
template <typename Value>
void Event::changeField (Value Event::*field, Value newValue, const char* undoName)
{
    change (
        undoName, News::attribute,
        [field, value = std::move (newValue)] (Event& event) { event.*field = value; }, field);
}

} // namespace ZEP::Overmarks
