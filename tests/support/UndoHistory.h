// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/undo/UndoRedoHelpers.h"

#include <string>
#include <vector>

namespace ZEP::Overmarks::Testing
{

inline ZEP::Core::UndoManager& undoManager() { return *ZEP::Core::UndoRedoHelpers::sharedUndoManager(); }

/** The names that the Edit menu would show, the latest step first. */
inline std::vector<std::string> undoNames()
{
    std::vector<std::string> names;
    for (const auto& name : undoManager().getUndoDescriptions())
        names.push_back (name.toStdString());
    return names;
}

inline std::size_t undoSteps() { return undoNames().size(); }

} // namespace ZEP::Overmarks::Testing
