// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/Event.h"
#include "list/ScratchMemory.h"

#include <juce_core/juce_core.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace ZEP::Overmarks
{

/** Where a list keeps one of its events. While a list is put in order its events are handled as these: a shared pointer that is copied
    or released reaches into the event, and a long list waits for the memory each time. Good until that list changes. */
using EventPlace = const std::shared_ptr<Event>*;
using EventPlaces = ScratchVector<EventPlace>; ///< Of events in some order.

inline const Event& eventOf (const std::shared_ptr<Event>& event) { return *event; } ///< The event itself.
inline const Event& eventOf (EventPlace place) { return **place; }                   ///< The event itself.

/** Asks the memory for what stands at a place, or nowhere. Not without a word of assembler: a compiler takes a function that does no more
    than ask for one without any effect, and leaves out its calls. */
inline void fetch (const void* place) noexcept
{
    __builtin_prefetch (place);
    asm volatile("");
}

inline constexpr std::size_t memoryLine = 64; ///< Bytes that the memory hands over together.

/** Asks the memory for a text; most lines of dialogue end in the second line of it. Nothing is read, so a shorter one does no harm. */
inline void fetchText (const juce::String& text) noexcept
{
    const auto bytes = reinterpret_cast<std::uintptr_t> (text.getCharPointer().getAddress());
    fetch (reinterpret_cast<const void*> (bytes));
    fetch (reinterpret_cast<const void*> (bytes + memoryLine));
}

/** For so many events the memory is asked one after the other, unless said otherwise: it looks for several together, but not while
    something else is done with one of them in between. */
inline constexpr std::size_t askedTogether = 16;

/** Shows each event of a list to `visit`, in the list's order. Events lie all over the memory; each is asked for some steps before it
    is its turn, since a long list would wait for every single one otherwise.
    @param ask      is shown the events, but the first ones, some steps before, and asks the memory for what will be looked at in them, but
                    looks at nothing
    @param askMore  is shown them halfway, and may ask for what they lead to
    @tparam Together  for how many the memory is asked at a time: few where it is asked for much of each, since the processor's cache has to
                      hold that until it is their turn */
template <std::size_t Together = askedTogether, typename Items, typename Visit, typename Ask,
          typename AskMore>
void visitAhead (const Items& events, Visit visit, Ask ask, AskMore askMore)
{
    const auto showFrom = [&events] (std::size_t begin, auto show)
    {
        for (auto i = begin; i < std::min (begin + Together, events.size()); ++i)
            show (events[i]);
    };

    for (std::size_t begin = 0; begin < events.size(); begin += Together)
    {
        showFrom (begin + 2 * Together, [&ask] (const auto& item) { ask (eventOf (item)); });
        showFrom (begin + Together, [&askMore] (const auto& item) { askMore (eventOf (item)); });
        showFrom (begin, visit);
    }
}

/** The same for what looks at nothing that the events lead to. */
template <typename Items, typename Visit, typename Ask>
void visitAhead (const Items& events, Visit visit, Ask ask)
{
    visitAhead (events, visit, ask, [] (const Event&) {});
}

} // namespace ZEP::Overmarks
