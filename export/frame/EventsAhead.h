// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "list/EventPlace.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace ZEP::Overmarks
{

/** Asks the memory for the whole event, but for what lies outside of it. */
inline void fetchEvent (const Event& event) noexcept
{
    for (std::size_t offset = 0; offset < sizeof (Event); offset += memoryLine)
        fetch (reinterpret_cast<const char*> (&event) + offset);
}

/** Asks the memory for the texts of an event; it waits for the event itself. */
inline void fetchTexts (const Event& event) noexcept
{
    for (const auto* text : { &event.getText(), &event.getNotes(), &event.getEngineeringNotes() })
        fetchText (text->getText());

    for (const auto* text : { &event.getCueNumber(), &event.getCharacterID() })
        fetch (text->getCharPointer().getAddress());
}

/** Shows the events of a document to `visit` in their order, and asks the memory for them and their texts some rows before. */
template <typename Visit>
void visitRows (const std::vector<std::shared_ptr<Event>>& events, Visit visit)
{
    constexpr std::size_t together = 8; // each is a dozen lines of memory, and twice as many are waiting
    visitAhead<together> (events, visit, fetchEvent, fetchTexts);
}

} // namespace ZEP::Overmarks
