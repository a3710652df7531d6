// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/DrawnCueSheetExporter.h"

#include "core/system/SystemUtility.h"
#include "export/frame/ByCharacterWalk.h"
#include "export/frame/CharacterHeaderText.h"
#include "export/frame/OutputFileNames.h"

#include <utility>

namespace ZEP::Overmarks
{

using ZEP::Core::PaperSize;
using ZEP::Core::PDFDocument;

namespace
{

constexpr auto extension = ".pdf";

juce::Image iconOfApplication()
{
    return juce::ImageFileFormat::loadFrom (
        juce::File (ZEP::Core::SystemUtility::bundleResourcePath()).getChildFile ("dbln-app-icon.png"));
}

} // namespace

/** One document on its way. */
class DrawnCueSheetExporter::Sheet final
{
public:
    /** @param settings  with reasons */
    Sheet (const DrawnCueSheetExporter& exporter, std::shared_ptr<EventExportSettingsSet> settings,
           const juce::File& target)
        : file (target),
          cancelled (exporter.cancelled),
          document (std::make_shared<PDFDocument> (target.getFullPathName(), exporter.pageSize)),
          sheet (document, std::move (settings))
    {
        sheet.appIcon = exporter.appIcon;
        sheet.isCancelled = [this] { return cancelled.load(); };
    }

    void addPart (const juce::String& characters, const EventExportSettingsSet::Events& events,
                  bool isCharacter)
    {
        sheet.addPart (characters, events, isCharacter);
    }

    /** @returns the text of the error */
    juce::String write()
    {
        sheet.draw();

        if (cancelled)
            return {};

        document->saveToPath();
        const auto& result = document->saveResult();
        const auto path = file.getFullPathName();
        return result.wasOk()
                   ? juce::String()
                   : "Error writing file to " + path + ": "
                         + result.getErrorMessage().fromFirstOccurrenceOf (path + ": ", false, false);
    }

private:
    juce::File file;
    const std::atomic<bool>& cancelled;
    std::shared_ptr<PDFDocument> document;
    DrawnCueSheet sheet;
};

DrawnCueSheetExporter::DrawnCueSheetExporter (std::shared_ptr<EventExportSettingsSet> settingsSet,
                                              PaperSize paper)
    : EventExporter (std::move (settingsSet)),
      appIcon (iconOfApplication()),
      pageSize (paper)
{
}

DrawnCueSheetExporter::~DrawnCueSheetExporter() = default;

EventExportType DrawnCueSheetExporter::type() const { return EventExportTypePDF; }

void DrawnCueSheetExporter::cancel() { cancelled = true; }

/** Once for an export, however many documents: the list may be long. */
std::shared_ptr<EventExportSettingsSet> DrawnCueSheetExporter::settingsWithReasons() const
{
    auto complete = std::make_shared<EventExportSettingsSet> (*settings);
    complete->events.clear();
    complete->eventsByCharacter.clear();
    DrawnCueSheet::addReasons (*complete);
    return complete;
}

juce::String DrawnCueSheetExporter::exportEventsByTimecode()
{
    Sheet sheet (*this, settingsWithReasons(),
                 OutputFileNames (settings->outputDirectory, settings->fileName, extension).single());
    sheet.addPart (joinedCharacterHeaderTextOfEvents (settings->events), settings->events, false);
    const auto error = sheet.write();

    if (delegate != nullptr && ! cancelled)
        delegate->progressChanged (this, 1, 1);

    return error;
}

juce::String DrawnCueSheetExporter::exportEventsByCharacter()
{
    const ByCharacterWalk walk (*settings, extension);
    const auto complete = settingsWithReasons();
    const auto addTo = [] (Sheet& sheet, const ByCharacterWalk::Block& block)
    { sheet.addPart (characterHeaderText (block.character), block.events, true); };

    if (! walk.isCombined())
        return walk.writeFiles (
            *this, ByCharacterWalk::AfterFailure::stop,
            [this, &addTo, &complete] (const ByCharacterWalk::Block& block)
            {
                Sheet sheet (*this, complete, block.file);
                addTo (sheet, block);
                return sheet.write();
            },
            [this] { return cancelled.load(); });

    Sheet sheet (*this, complete, walk.singleFile());

    for (const auto& block : walk.blocks())
        addTo (sheet, block);

    if (walk.blocks().empty())
        sheet.addPart ({}, {}, false);

    const auto error = sheet.write();
    const auto count = static_cast<int> (walk.blocks().size());

    if (delegate != nullptr && ! cancelled)
        delegate->progressChanged (this, count, count);

    return error;
}

} // namespace ZEP::Overmarks
