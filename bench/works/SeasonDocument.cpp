// SPDX-License-Identifier: GPL-3.0-only
#include "SeasonDocument.h"

#include "export/frame/EventExporterFactory.h"

namespace bench
{

using namespace ZEP::Overmarks;

SeasonDocument::SeasonDocument (const WorkOrder& order, EventExportType type)
    : project (projectOfTable (order.list ("list.csv"))),
      settings (std::make_shared<EventExportSettingsSet>())
{
    project.list->sortContentAndUpdateFilteredEvents();
    order.out.createDirectory();
    settings->exportType = type;
    settings->events = project.list->sortedFilteredEvents;
    settings->showTakeNumbers = type == EventExportTypePDF;
    settings->outputDirectory = order.out.getFullPathName();
    settings->fileName = "ours";
    settings->options[EventExportCSVDelimiterKey] = 1;
    settings->options[EventExportCSVTemplateKey] = 0;
    settings->options[EventExportAppVersionKey] = "1";
    settings->options[EventExportPaperKey] = "a4";
}

juce::File SeasonDocument::file (const char* extension) const
{
    return juce::File (settings->outputDirectory).getChildFile (settings->fileName + extension);
}

WorkDone exportWithFactory (const WorkOrder& order, const SeasonDocument& document, const char* extension)
{
    document.file (extension).deleteFile();
    juce::String error;
    const auto seconds = secondsOf (
        [&] { error = EventExporterFactory::eventExporter (document.settings)->exportEventsByTimecode(); });

    if (error.isNotEmpty())
        giveUp (error.toStdString());

    sizeOf (document.file (extension));
    return { seconds, order.rows };
}

long long sizeOf (const juce::File& file)
{
    if (file.getSize() == 0)
        giveUp (file.getFullPathName().toStdString() + " wasn't written");

    return file.getSize();
}

} // namespace bench
