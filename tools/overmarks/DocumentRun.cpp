// SPDX-License-Identifier: GPL-3.0-only
#include "DocumentRun.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace overmarks
{

using namespace ZEP::Overmarks;

DocumentRun::DocumentRun (Progress& bar, int stepsBefore, BatchEventExportSession::SettingsSets sets)
    : before (stepsBefore),
      progress (bar),
      exports (std::move (sets))
{
    exports.delegate = this;
}

int DocumentRun::stepsOf (const BatchEventExportSession::SettingsSets& sets)
{
    int steps = 0;

    for (const auto& settings : sets)
        steps += std::max (static_cast<int> (settings->eventsByCharacter.size()), 1);

    return steps;
}

void DocumentRun::hideBar()
{
    const std::scoped_lock locked (lock);
    progress.hide();
}

bool DocumentRun::run (const StopSignals& signals)
{
    constexpr auto look = std::chrono::milliseconds (50);
    bool isCancelled = false;
    exports.start();
    std::unique_lock locked (lock);

    while (! change.wait_for (locked, look, [this] { return hasEnded; }))
        if (signals.haveCome() && ! std::exchange (isCancelled, true))
        {
            locked.unlock();
            exports.cancel();
            locked.lock();
        }

    progress.hide();
    return isFinished;
}

void DocumentRun::batchProgressChanged (int current, int)
{
    const std::scoped_lock locked (lock);
    progress.reached (before + current);
}

void DocumentRun::batchFinished() { end (true); }

void DocumentRun::batchCancelled() { end (false); }

void DocumentRun::end (bool wasFinished)
{
    const std::scoped_lock locked (lock);
    isFinished = wasFinished;
    hasEnded = true;
    change.notify_all();
}

} // namespace overmarks
