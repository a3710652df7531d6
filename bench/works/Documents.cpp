// SPDX-License-Identifier: GPL-3.0-only
// Cue sheets for the stage: Word documents and paper.
#include "SeasonDocument.h"

#include "export/EventPDFExporter.h"
#include "export/print/DrawnCueSheetExporter.h"
#include "export/print/ZEP_EventPDFExporter.h"
#include "import/DublaneDocxEventFileImporter.h"
#include "preferences/UserDefaultsRegistrar.h"

#include <expat.h>
#include <libdeflate.h>

#include <algorithm>
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

constexpr auto mainPartName = "word/document.xml";
constexpr auto tableOfACue = "<w:tbl>"; // the head is one more

long long cuesOfWord (const juce::File& file) { return numberOf (tableOfACue, file, mainPartName) - 1; }

WorkDone writeWord (const WorkOrder& order)
{
    return exportWithFactory ({ order, EventExportTypeWord }, ".docx", cuesOfWord);
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
        archive.createStreamForEntry (archive.getIndexOfFileName (mainPartName)));

    if (stream == nullptr)
        giveUp ("sheet.docx has no main part");

    return stream->readEntireStreamAsString().toStdString();
}

/** The same markup put together from the pieces of each cue, and packed. @param pack  makes a stream of zlib of a text */
WorkDone packMainPart (const WorkOrder& order, void (*pack) (const std::string&, juce::MemoryBlock&))
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

            pack (xml, packed);
        });
    const auto file = order.out.getChildFile ("floor.zlib");
    file.replaceWithData (packed.getData(), packed.getSize());
    juce::FileInputStream stream (file);
    juce::GZIPDecompressorInputStream unpacked (stream);
    return { seconds, numberOf (tableOfACue, unpacked) - 1 };
}

constexpr int usualLevel = 6;

WorkDone packWithZlib (const WorkOrder& order)
{
    return packMainPart (
        order,
        [] (const std::string& xml, juce::MemoryBlock& packed)
        {
            juce::MemoryOutputStream bytes (packed, false);
            juce::GZIPCompressorOutputStream (bytes, usualLevel).write (xml.data(), xml.size());
        });
}

WorkDone packWithLibdeflate (const WorkOrder& order)
{
    return packMainPart (order,
                         [] (const std::string& xml, juce::MemoryBlock& packed)
                         {
                             auto* const compressor = libdeflate_alloc_compressor (usualLevel);
                             packed.setSize (libdeflate_zlib_compress_bound (compressor, xml.size()));
                             packed.setSize (libdeflate_zlib_compress (compressor, xml.data(), xml.size(),
                                                                       packed.getData(), packed.getSize()));
                             libdeflate_free_compressor (compressor);
                         });
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
    juce::MemoryInputStream stream (texts.data(), texts.size(), false);
    return { seconds, numberOf ("NOTES", stream) }; // a label that each cue has once
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
    return { seconds, std::nullopt };
}

WorkDone printSheet (const WorkOrder& order)
{
    const SeasonDocument document (order, EventExportTypePDF);
    EventPDFExporter exporter (document.settings);
    const auto seconds = secondsOf ([&] { exporter.exportEventsByTimecode(); });

    if (! exporter.printFailures.empty())
        giveUp (exporter.printFailures[0].reason.toStdString());

    sizeOf (document.file (".pdf"));
    return { seconds, std::nullopt };
}

constexpr Work works[] = {
    { "docx-out", writeWord },          { "docx-in", readWord },
    { "docx-out.floor", packWithZlib }, { "docx-out.floor-libdeflate", packWithLibdeflate },
    { "docx-in.floor", parseMainPart }, { "pdf-drawn", drawSheet },
    { "pdf-browser", printSheet }
};

} // namespace

std::span<const Work> worksOfDocuments() { return works; }

} // namespace bench
