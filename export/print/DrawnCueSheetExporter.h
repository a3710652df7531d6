// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/documents/PDFDocument.h"
#include "export/frame/EventExporter.h"
#include "export/print/DrawnCueSheet.h"

#include <juce_core/juce_core.h>
#include <juce_graphics/juce_graphics.h>

#include <atomic>
#include <memory>

namespace ZEP::Overmarks
{

/** Writes cue sheets as PDF without a browser: each cue drawn as a box, in the files that a PDF export has.

    By timecode one document; by character one document for each, or one for all in which each character begins on a fresh page. The
    reasons of the cues are the process's own, as they are when the export begins, unless the options name others.

    The factory doesn't make it: whoever wants drawn sheets does. cancel() comes from any thread, ends the document in hand, which is
    not written then, and leaves those that are there. */
class OVERMARKS_API DrawnCueSheetExporter final : public EventExporter
{
public:
    /** Not null; shared. */
    explicit DrawnCueSheetExporter (std::shared_ptr<EventExportSettingsSet> settingsSet,
                                    ZEP::Core::PaperSize paper = ZEP::Core::PaperSize::ofLocale());
    ~DrawnCueSheetExporter() override;

    /** @returns "Error writing file to ", the path, ": " and the reason for the first file that can't be written */
    juce::String exportEventsByCharacter() override;
    juce::String exportEventsByTimecode() override;
    EventExportType type() const override; ///< EventExportTypePDF.
    void cancel() override;

    /** The footer's picture. By default the application's, as it lies in the resource folder. */
    juce::Image appIcon;

private:
    class Sheet;

    std::shared_ptr<EventExportSettingsSet> settingsWithReasons() const;

    ZEP::Core::PaperSize pageSize;
    std::atomic<bool> cancelled { false };
};

} // namespace ZEP::Overmarks
