// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Progress.h"
#include "StopSignals.h"

#include "export/frame/BatchEventExportSession.h"

#include <condition_variable>
#include <mutex>

namespace overmarks
{

/** The writing of several documents as one batch, with one bar on the terminal. A signal that stops the program ends it before
    its next document, or its next character. The batch works on a thread of its own, while the caller waits. */
class DocumentRun final : private ZEP::Overmarks::BatchEventExportSession::Delegate
{
public:
    /** @param bar          of all documents; for this object alone until run() has returned
        @param stepsBefore  of documents that are no part of the batch and are done already
        @param sets         whose steps are counted behind them */
    DocumentRun (Progress& bar, int stepsBefore, ZEP::Overmarks::BatchEventExportSession::SettingsSets sets);

    static int stepsOf (const ZEP::Overmarks::BatchEventExportSession::SettingsSets& sets);

    /** What makes the exporters, and is told of their ends, on the batch's thread; to be set before run(). */
    ZEP::Overmarks::BatchEventExportSession& batch() noexcept { return exports; }

    /** Takes the bar away for a question. Any thread. */
    void hideBar();

    /** @returns whether every document was tried  @param signals  to be met with patience meanwhile */
    bool run (const StopSignals& signals);

private:
    void batchProgressChanged (int current, int total) override;
    void batchFinished() override;
    void batchCancelled() override;
    void end (bool wasFinished);

    const int before;
    std::mutex lock;
    std::condition_variable change;
    Progress& progress; ///< under lock, as what follows
    bool hasEnded = false;
    bool isFinished = false;
    ZEP::Overmarks::BatchEventExportSession exports; ///< last: its thread ends before all else goes
};

} // namespace overmarks
