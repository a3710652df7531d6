// SPDX-License-Identifier: GPL-3.0-only
#include "midiio/MIDIInputWatch.h"

#include "midiio/SafeCall.h"

#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace ZEP::MIDIIO
{

/** Belongs to the watch and to its thread. */
struct MIDIInputWatch::State final
{
    using Names = std::vector<std::pair<std::string, std::string>>;

    State (MIDIInputs& inputsToWatch, std::chrono::milliseconds timeBetweenLooks)
        : inputs (inputsToWatch),
          pause (timeBetweenLooks)
    {
    }

    /** What is there, be it open or not. */
    Names names() const
    {
        Names found;

        for (const auto& input : inputs.list())
            found.emplace_back (input.identifier, input.name);

        return found;
    }

    void watch (Names told)
    {
        std::unique_lock lock (mutex);
        thread = std::this_thread::get_id();

        while (! isOver)
        {
            inputs.look();

            if (auto now = names(); now != told)
            {
                told = std::move (now);
                auto tell = changed;
                isTelling = true;
                lock.unlock();

                if (tell != nullptr)
                    callSafely ("A change of the MIDI inputs wasn't handled: ", tell);

                tell = {}; // what it holds may go now, and may want this lock
                lock.lock();
                isTelling = false;
                over.notify_all();
            }

            over.wait_for (lock, pause, [this] { return isOver; });
        }
    }

    MIDIInputs& inputs;
    const std::chrono::milliseconds pause;
    std::mutex mutex; ///< held while looking; guards what follows
    std::condition_variable over;
    std::function<void()> changed;
    std::thread::id thread; ///< of the watch
    bool isOver = false;
    bool isTelling = false;
};

MIDIInputWatch::MIDIInputWatch (MIDIInputs& inputsToWatch, std::chrono::milliseconds timeBetweenLooks)
    : state (std::make_shared<State> (inputsToWatch, timeBetweenLooks))
{
}

MIDIInputWatch::~MIDIInputWatch() { end (std::nullopt); }

void MIDIInputWatch::begin()
{
    std::call_once (begun,
                    [this]
                    {
                        state->inputs.look();
                        std::thread ([kept = state, told = state->names()] { kept->watch (told); }).detach();
                    });
}

void MIDIInputWatch::setChanged (std::function<void()> whatToDo)
{
    // The former one goes with the argument, without the lock.
    const std::lock_guard lock (state->mutex);
    state->changed.swap (whatToDo);
}

void MIDIInputWatch::end() { end (std::chrono::seconds (1)); }

void MIDIInputWatch::end (std::optional<std::chrono::milliseconds> patience)
{
    const auto nobodyIsTold = [this] { return ! state->isTelling; };
    std::unique_lock lock (state->mutex);
    state->isOver = true;
    state->over.notify_all();

    if (std::this_thread::get_id() == state->thread)
        return;

    if (patience.has_value())
        state->over.wait_for (lock, *patience, nobodyIsTold);
    else
        state->over.wait (lock, nobodyIsTold);
}

} // namespace ZEP::MIDIIO
