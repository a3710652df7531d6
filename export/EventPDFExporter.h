// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"
#include "core/text/RichTextString.h"
#include "export/frame/EventExporter.h"

#include <juce_core/juce_core.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ZEP::Overmarks
{

class ByCharacterWalk;
class PDFPrintAdapter;

/** Writes the events as a cue sheet for the stage: an HTML page, built piece by piece, which a print adapter turns into a PDF.

    The rule that is easily missed: what goes wrong while a page is printed is no error of the export. It is logged, the file
    is missing, and printFailures tells of it.

    Blocks its caller, on any thread, until the files are written. cancel() may come from another thread. */
class OVERMARKS_API EventPDFExporter final : public EventExporter
{
public:
    using MakeAdapter = std::function<std::unique_ptr<PDFPrintAdapter>()>; ///< a new one for each document

    /** A document that could not be printed, and why. */
    struct PrintFailure
    {
        juce::File file;     ///< to be written
        juce::String reason; ///< for a person
    };

    explicit EventPDFExporter (std::shared_ptr<EventExportSettingsSet> settingsSet); ///< Not null; shared.
    ~EventPDFExporter() override;

    /** A document for each character; or one for all, in which each begins a page with its own head. Ends early after cancel():
        documents that are printed stay, a single one that isn't yet is dropped. */
    juce::String exportEventsByCharacter() override;

    /** One document, whether cancelled or not. */
    juce::String exportEventsByTimecode() override;

    EventExportType type() const override; ///< EventExportTypePDF.

    /** Ends an export by character before its next character. For good: the object serves one export. */
    void cancel() override;

    // The pieces of the page.
    juce::String documentHeader(); ///< The page before the head of its first part.
    juce::String htmlFooter();     ///< The end of the page.
    juce::String firstPageHeader (const juce::String& charactersAndActors); ///< Project, picture, characters.
    juce::String oneCueContent (std::shared_ptr<Event> event);              ///< A whole cue with its boxes.
    /** Below the text, as the layout wants it. */
    juce::String oneCueNotesSection (std::shared_ptr<Event> event);
    juce::String oneCueTakeNumberBoxes (std::shared_ptr<Event> event); ///< The numbered boxes.
    juce::String htmlStringFromRichText (
        const Core::RichTextString& text); ///< With its looks; its words as they stand.

    /** Makes the adapter of each document: what prints, on this machine. Never empty. */
    MakeAdapter makePrintAdapter;

    /** Of the files, with its dot; for an adapter that makes another kind of file. */
    juce::String fileExtension { ".pdf" };

    /** Is told of each failure, on the export's thread. Writes it to the log, unless an application has another way. */
    std::function<void (const PrintFailure&)> printFailed;

    /** In the order in which they were tried. To be read when the export has ended. */
    std::vector<PrintFailure> printFailures;

private:
    void appendStartOfDocument (std::string& page, const juce::String& charactersAndActors) const;
    void print (const std::string& page, const juce::File& file);
    void tellFailure (const juce::File& file, const juce::String& reason);
    juce::String exportIntoSingleFile (const ByCharacterWalk& walk);

    std::atomic<bool> cancelled { false };
    int timesWaitedInVain = 0;
    juce::String appIconIdentifier { "AppIcon" };
};

} // namespace ZEP::Overmarks
