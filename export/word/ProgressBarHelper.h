// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "export/frame/EventExporter.h"

#include <juce_core/juce_core.h>

namespace ZEP::Overmarks
{

class EventWordExporter;

/** Tells the delegate of a Word export how far docxHandler is, while the export's own thread waits for it.

    It looks into the progress file five times a second, on a thread of its own: from there the delegate is called. The thread
    ends with this object, when the tool has reached 100 per cent, or when the export is cancelled. */
class OVERMARKS_API ProgressBarHelper final : public juce::Thread
{
public:
    /** Starts the thread, unless there is no exporter. Exporter and delegate must outlive this object.
        @param numFiles  documents of the export: what the delegate is told counts them */
    ProgressBarHelper (EventWordExporter* exporter, EventExporter::Delegate* delegate, int numFiles);

    /** Waits for the thread as long as it takes. */
    ~ProgressBarHelper() override;

    void run() override; ///< What the thread does. Made for it alone.

    EventExporter::Delegate* delegate; ///< may be null
    EventWordExporter* exporter;       ///< not null while the thread runs
    int numFiles;                      ///< documents of the export

private:
    bool look (const juce::File& progressFile);
    void tell (int level);
};

} // namespace ZEP::Overmarks
