// SPDX-License-Identifier: GPL-3.0-only
// Cue sheets for the stage: Word documents and paper.
#include "SeasonDocument.h"

#include "export/EventPDFExporter.h"
#include "export/print/DrawnCueSheetExporter.h"
#include "export/print/ZEP_EventPDFExporter.h"
#include "import/DublaneDocxEventFileImporter.h"
#include "preferences/UserDefaultsRegistrar.h"

#include <expat.h>

#include <algorithm>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace bench
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

// ---- Word --------------------------------------------------------------------------------------------------------------------

WorkDone writeWord (const WorkOrder& order)
{
    return exportWithFactory (order, { order, EventExportTypeWord }, ".docx");
}

WorkDone readWord (const WorkOrder& order)
{
    UserDefaultsRegistrar::registerUserDefaults();
    juce::String error;
    std::optional<DublaneDocxEventFileImporter> importer;
    const auto seconds = secondsOf ([&] { importer.emplace (order.list ("sheet.docx"), error); });

    if (error.isNotEmpty())
        giveUp (error.toStdString());

    return { seconds, static_cast<long long> (importer->rows.size()) };
}

std::string mainPart (const WorkOrder& order)
{
    juce::ZipFile archive { juce::File (order.list ("sheet.docx")) };
    const std::unique_ptr<juce::InputStream> stream (
        archive.createStreamForEntry (archive.getIndexOfFileName ("word/document.xml")));

    if (stream == nullptr)
        giveUp ("sheet.docx has no main part");

    return stream->readEntireStreamAsString().toStdString();
}

/** The same markup put together from the pieces of each cue, and packed. */
WorkDone packMainPart (const WorkOrder& order)
{
    const auto part = mainPart (order);
    std::vector<std::string> pieces;

    for (std::size_t place = 0; place < part.size();)
    {
        const auto next = std::min (part.size(), part.find ("<w:tr>", place + 1));
        pieces.push_back (part.substr (place, next - place));
        place = next;
    }

    juce::MemoryBlock packed;
    const auto seconds = secondsOf (
        [&]
        {
            std::string xml;

            for (const auto& piece : pieces)
                xml += piece;

            constexpr int usualLevel = 6;
            juce::MemoryOutputStream bytes (packed, false);
            juce::GZIPCompressorOutputStream (bytes, usualLevel).write (xml.data(), xml.size());
        });
    std::ofstream (order.out.getChildFile ("floor.gz").getFullPathName().toStdString(), std::ios::binary)
        .write (static_cast<const char*> (packed.getData()), static_cast<std::streamsize> (packed.getSize()));
    return { seconds, packed.getSize() > 0 ? order.rows : 0 };
}

/** All texts of the main part, and nothing made of them. */
WorkDone parseMainPart (const WorkOrder& order)
{
    const auto part = mainPart (order);
    std::string texts;
    const auto seconds = secondsOf (
        [&]
        {
            auto* const parser = XML_ParserCreate (nullptr);
            XML_SetUserData (parser, &texts);
            XML_SetCharacterDataHandler (
                parser, [] (void* all, const char* text, int length)
                { static_cast<std::string*> (all)->append (text, static_cast<std::size_t> (length)); });

            if (XML_Parse (parser, part.data(), static_cast<int> (part.size()), 1) != XML_STATUS_OK)
                giveUp ("sheet.docx can't be parsed");

            XML_ParserFree (parser);
        });
    return { seconds, texts.empty() ? 0 : order.rows };
}

// ---- paper -------------------------------------------------------------------------------------------------------------------

WorkDone drawSheet (const WorkOrder& order)
{
    const SeasonDocument document (order, EventExportTypePDF);
    juce::String error;
    const auto seconds = secondsOf (
        [&] { error = DrawnCueSheetExporter (document.settings, PaperSize::a4()).exportEventsByTimecode(); });

    if (error.isNotEmpty())
        giveUp (error.toStdString());

    sizeOf (document.file (".pdf"));
    return { seconds, order.rows };
}

WorkDone printSheet (const WorkOrder& order)
{
    const SeasonDocument document (order, EventExportTypePDF);
    EventPDFExporter exporter (document.settings);
    const auto seconds = secondsOf ([&] { exporter.exportEventsByTimecode(); });

    if (! exporter.printFailures.empty())
        giveUp (exporter.printFailures[0].reason.toStdString());

    sizeOf (document.file (".pdf"));
    return { seconds, order.rows };
}

constexpr Work works[] = { { "docx-out", writeWord },          { "docx-in", readWord },
                           { "docx-out.floor", packMainPart }, { "docx-in.floor", parseMainPart },
                           { "pdf-drawn", drawSheet },         { "pdf-browser", printSheet } };

} // namespace

std::span<const Work> worksOfDocuments() { return works; }

} // namespace bench
