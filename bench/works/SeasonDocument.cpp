// SPDX-License-Identifier: GPL-3.0-only
#include "SeasonDocument.h"

#include "export/frame/EventExporterFactory.h"

#include <algorithm>
#include <array>

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

WorkDone exportWithFactory (const SeasonDocument& document, const char* extension,
                            long long (*rowsOf) (const juce::File&))
{
    document.file (extension).deleteFile();
    juce::String error;
    const auto seconds = secondsOf (
        [&] { error = EventExporterFactory::eventExporter (document.settings)->exportEventsByTimecode(); });

    if (error.isNotEmpty())
        giveUp (error.toStdString());

    sizeOf (document.file (extension));
    return { seconds, rowsOf (document.file (extension)) };
}

long long numberOf (std::string_view piece, juce::InputStream& stream)
{
    std::array<char, 65536> block;
    std::string text;
    long long number = 0;

    while (const auto length = stream.read (block.data(), static_cast<int> (block.size())))
    {
        text.append (block.data(), static_cast<std::size_t> (length));
        std::size_t searched = 0;

        for (auto place = text.find (piece); place != std::string::npos; place = text.find (piece, searched))
        {
            ++number;
            searched = place + piece.size();
        }

        // A piece may lie across two blocks.
        text.erase (0, std::max (searched, text.size() - std::min (text.size(), piece.size() - 1)));
    }

    return number;
}

long long numberOf (std::string_view piece, const juce::File& archive, const char* part)
{
    juce::ZipFile file (archive);
    const std::unique_ptr<juce::InputStream> stream (
        file.createStreamForEntry (file.getIndexOfFileName (part)));

    if (stream == nullptr)
        giveUp (archive.getFullPathName().toStdString() + " has no " + part);

    return numberOf (piece, *stream);
}

long long sizeOf (const juce::File& file)
{
    if (file.getSize() == 0)
        giveUp (file.getFullPathName().toStdString() + " wasn't written");

    return file.getSize();
}

} // namespace bench
