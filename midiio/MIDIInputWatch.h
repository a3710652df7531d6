// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "midiio/MIDIInputs.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace ZEP::MIDIIO
{

/** Looks again and again which inputs are there, on a thread of its own, and tells when one has come or gone. The system
    itself doesn't say so.

    The end of this object waits until nobody is being told any more, unless it is who is told that ends it. The inputs have to
    outlive it. Any thread. */
class MIDIInputWatch final
{
public:
    MIDIInputWatch (MIDIInputs& inputsToWatch, std::chrono::milliseconds timeBetweenLooks);
    ~MIDIInputWatch();

    MIDIInputWatch (const MIDIInputWatch&) = delete;
    MIDIInputWatch& operator= (const MIDIInputWatch&) = delete;

    /** Begins, if it hasn't yet. What is there at that moment is not told. */
    void begin();

    /** @param whatToDo  called on the thread of the watch; may be empty */
    void setChanged (std::function<void()> whatToDo);

    /** Ends for good: nothing is looked for any more. Waits a moment for whoever is being told, but not for ever. */
    void end();

private:
    struct State;

    /** @param patience  how long to wait for whoever is being told; as long as it takes if there is none */
    void end (std::optional<std::chrono::milliseconds> patience);

    std::shared_ptr<State> state;
    std::once_flag begun;
};

} // namespace ZEP::MIDIIO
