// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "export/frame/EventExporter.h"

#include <juce_core/juce_core.h>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace ZEP::Overmarks
{

/** Writes several documents one after the other on a thread of its own, with one count of steps over all of them: a step is a
    document by timecode, or one character's part of a document by character.

    A settings set with events is exported by timecode, one without them by character. A set whose kind has no exporter is
    skipped, and so is what an exporter gives up on by throwing: both are logged, and their steps count as done.

    The rule that is easily missed: an error of a single document stops nothing and is told to nobody but exportEnded.

    Delegate and functions are called on the session's thread, progress perhaps on another one of a running exporter; they are
    set before start() and outlive the session. A session is for one run. Its end waits for the thread, so it must not come from
    there. start() and cancel() are for any thread. */
class OVERMARKS_API BatchEventExportSession final : public juce::Thread, public EventExporter::Delegate
{
public:
    using SettingsSets = std::vector<std::shared_ptr<EventExportSettingsSet>>; ///< one for each document
    /** Makes the exporter of a set; null where its kind has none. */
    using MakeExporter =
        std::function<std::shared_ptr<EventExporter> (std::shared_ptr<EventExportSettingsSet>)>;

    /** Is told how a batch gets on. Not destroyed through this interface. */
    class OVERMARKS_API Delegate
    {
    public:
        /** @param current  steps done so far  @param total  steps in all */
        virtual void batchProgressChanged (int current, int total) = 0;

        /** All documents have been tried. The last call. */
        virtual void batchFinished() = 0;

        /** The batch was ended before a document. Documents that are done stay. The last call. */
        virtual void batchCancelled() = 0;

    protected:
        ~Delegate() = default;
    };

    explicit BatchEventExportSession (SettingsSets sets); ///< @param sets none of them null; shared
    ~BatchEventExportSession() override;

    /** Begins the run, on the caller's own thread where the system has no other left. A second time it does nothing, whoever
        calls it. */
    void start();

    /** Ends the batch before its next document, and the running one early where its exporter can be cancelled. */
    void cancel();

    void run() override; ///< What the thread does. Call start() instead.

    /** From the running exporter. */
    void progressChanged (EventExporter* exporter, int current, int total) override;

    Delegate* delegate = nullptr; ///< not owned; may stay null

    /** Makes the exporter of a settings set. The factory, unless an application has something to set in its exporters. */
    MakeExporter makeExporter;

    /** Is told of each document that was tried, with the text of its error, empty for success. May stay empty. */
    std::function<void (EventExporter& exporter, const juce::String& error)> exportEnded;

private:
    static int stepsOf (const EventExportSettingsSet& settings);
    std::shared_ptr<EventExporter> takeExporterFor (const std::shared_ptr<EventExportSettingsSet>& settings);
    void exportDocument (const std::shared_ptr<EventExportSettingsSet>& settings);
    void writeDocument (const std::shared_ptr<EventExportSettingsSet>& settings);
    void tellProgress (int current);

    const SettingsSets settingsSets;
    std::atomic<int> totalSteps { 0 };
    std::atomic<int> completedSteps { 0 };
    std::atomic<bool> isBegun { false };
    std::atomic<bool> cancelled { false };
    std::mutex exporterLock;
    std::shared_ptr<EventExporter> currentExporter; ///< under exporterLock
};

} // namespace ZEP::Overmarks
