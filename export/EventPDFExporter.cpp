// SPDX-License-Identifier: GPL-3.0-only
#include "export/EventPDFExporter.h"

#include "core/system/Logger.h"
#include "export/CueSheetCue.h"
#include "export/CueSheetHeader.h"
#include "export/CueSheetNotes.h"
#include "export/CueSheetTakeBoxes.h"
#include "export/CueSheetTemplates.h"
#include "export/RichTextHTML.h"
#include "export/frame/ByCharacterWalk.h"
#include "export/frame/CharacterHeaderText.h"
#include "export/frame/OutputFileNames.h"
#include "export/print/PDFPrintAdapter.h"
#include "export/print/ZEP_EventPDFExporter.h"

#include <utility>

namespace ZEP::Overmarks
{

using namespace CueSheetTemplates;

namespace
{

juce::String text (std::string_view utf8)
{
    return juce::String::fromUTF8 (utf8.data(), static_cast<int> (utf8.size()));
}

void logFailure (const EventPDFExporter::PrintFailure& failure)
{
    ZEP::Core::Logger::error ("Error printing " + failure.file.getFullPathName() + ": " + failure.reason);
}

std::unique_ptr<PDFPrintAdapter> makeBrowserAdapter() { return std::make_unique<ZEP_EventPDFExporter>(); }

} // namespace

EventPDFExporter::EventPDFExporter (std::shared_ptr<EventExportSettingsSet> settingsSet)
    : EventExporter (std::move (settingsSet)),
      makePrintAdapter (makeBrowserAdapter),
      printFailed (logFailure)
{
}

EventPDFExporter::~EventPDFExporter() = default;

EventExportType EventPDFExporter::type() const { return EventExportTypePDF; }

void EventPDFExporter::cancel() { cancelled = true; }

juce::String EventPDFExporter::exportEventsByTimecode()
{
    const auto events = settings->events;
    std::string page;
    appendStartOfDocument (page, joinedCharacterHeaderTextOfEvents (events));

    for (const auto& event : events)
        appendCue (page, event, *settings);

    page += documentEnd;
    print (page, OutputFileNames (settings->outputDirectory, settings->fileName, fileExtension).single());

    if (delegate != nullptr)
        delegate->progressChanged (this, 1, 1);

    return {};
}

juce::String EventPDFExporter::exportEventsByCharacter()
{
    const ByCharacterWalk walk (*settings, fileExtension);

    if (walk.isCombined())
        return exportIntoSingleFile (walk);

    const auto printBlock = [this] (const ByCharacterWalk::Block& block)
    {
        std::string page;
        appendStartOfDocument (page, characterHeaderText (block.character));

        for (const auto& event : block.events)
            appendCue (page, event, *settings);

        page += documentEnd;
        print (page, block.file);
        return juce::String();
    };

    return walk.writeFiles (*this, ByCharacterWalk::AfterFailure::goOn, printBlock,
                            [this] { return cancelled.load(); });
}

juce::String EventPDFExporter::exportIntoSingleFile (const ByCharacterWalk& walk)
{
    const auto total = static_cast<int> (walk.blocks().size());
    std::string page;

    for (const auto& block : walk.blocks())
    {
        if (cancelled)
            return {};

        // A head of its own for each character, one inside the other's body.
        appendStartOfDocument (page, characterHeaderText (block.character));

        for (const auto& event : block.events)
            appendCue (page, event, *settings);

        page += characterEnd;
    }

    page += documentEnd;
    print (page, walk.singleFile());

    if (delegate != nullptr)
        delegate->progressChanged (this, total, total);

    return {};
}

void EventPDFExporter::appendStartOfDocument (std::string& page,
                                              const juce::String& charactersAndActors) const
{
    page += documentHead;
    appendCueSheetHeader (page, *settings, charactersAndActors);
    page += spaceBelowHeader;
}

void EventPDFExporter::print (const std::string& page, const juce::File& file)
{
    // Once may be the fault of one character's cues.
    constexpr int oftenEnoughInVain = 2;
    const auto adapter = makePrintAdapter();

    if (timesWaitedInVain >= oftenEnoughInVain)
        adapter->expectLittle();

    adapter->initWithCallerObject (this);
    adapter->exportHTMLString (page, file.getFullPathName().toStdString());
    timesWaitedInVain += adapter->hasWaitedInVain() ? 1 : 0;

    if (const auto reason = adapter->failure(); reason.isNotEmpty())
        tellFailure (file, reason);
}

void EventPDFExporter::tellFailure (const juce::File& file, const juce::String& reason)
{
    printFailures.push_back ({ file, reason });

    if (printFailed)
        printFailed (printFailures.back());
}

juce::String EventPDFExporter::documentHeader() { return text (documentHead); }

juce::String EventPDFExporter::htmlFooter() { return text (documentEnd); }

juce::String EventPDFExporter::firstPageHeader (const juce::String& charactersAndActors)
{
    std::string page;
    appendCueSheetHeader (page, *settings, charactersAndActors);
    return text (page);
}

juce::String EventPDFExporter::oneCueContent (std::shared_ptr<Event> event)
{
    std::string page;
    appendCue (page, event, *settings);
    return text (page);
}

juce::String EventPDFExporter::oneCueNotesSection (std::shared_ptr<Event> event)
{
    std::string page;
    appendCueSheetNotes (page, event, settings->layout);
    return text (page);
}

juce::String EventPDFExporter::oneCueTakeNumberBoxes (std::shared_ptr<Event> event)
{
    std::string page;
    appendTakeNumberBoxes (page, *event);
    return text (page);
}

juce::String EventPDFExporter::htmlStringFromRichText (const Core::RichTextString& richText)
{
    return text (htmlOfRichText (richText));
}

} // namespace ZEP::Overmarks
