// SPDX-License-Identifier: GPL-3.0-only
// From events to files, beside the least that such a file costs.
#include "LibraryWorkbook.h"
#include "SeasonDocument.h"

#include "core/timecode/TCToolbox.h"
#include "export/EventExcelExporter.h"

#include <array>
#include <fstream>
#include <string_view>

namespace bench
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

namespace
{

/** The line of titles ends with the sign, the last line doesn't. */
long long rowsOfCSV (const juce::File& file)
{
    juce::FileInputStream stream (file);
    return numberOf ("\n", stream);
}

long long rowsOfXLSX (const juce::File& file)
{
    return numberOf ("<row ", file, "xl/worksheets/sheet1.xml") - 1; // the titles
}

WorkDone writeCSV (const WorkOrder& order)
{
    return exportWithFactory ({ order, EventExportTypeCSV }, ".csv", rowsOfCSV);
}

WorkDone writeXLSX (const WorkOrder& order)
{
    return exportWithFactory ({ order, EventExportTypeExcel }, ".xlsx", rowsOfXLSX);
}

std::string_view utf8 (const juce::String& text) { return { text.toRawUTF8(), text.getNumBytesAsUTF8() }; }

void addQuoted (std::string& out, std::string_view text)
{
    out += '"';

    for (auto quote = text.find ('"'); quote != std::string_view::npos; quote = text.find ('"'))
    {
        out += text.substr (0, quote + 1);
        out += '"';
        text.remove_prefix (quote + 1);
    }

    out += text;
    out += "\",";
}

/** The same columns one behind the other, and one write: without titles, all in quotes, and with the numbers of reasons and regions in
    place of their words. */
WorkDone cellsOneBehindTheOther (const WorkOrder& order)
{
    const SeasonDocument shown (order, EventExportTypeCSV);
    const auto path = order.out.getChildFile ("floor.csv").getFullPathName().toStdString();
    const auto seconds = secondsOf (
        [&]
        {
            std::string csv;
            std::array<char, TCToolbox::longestTimecode> time;

            for (const auto& event : shown.settings->events)
            {
                addQuoted (csv, { time.data(), event->writeStartTC (time.data()) });
                addQuoted (csv, { time.data(), event->writeEndTC (time.data()) });
                addQuoted (csv, utf8 (event->getText().getText()));

                if (const auto character = event->character())
                    for (const auto* text : { &character->name, &character->prefix, &character->actor })
                        addQuoted (csv, utf8 (*text));

                addQuoted (csv, utf8 (event->getCueNumber()));
                addQuoted (csv, event->isDone() ? "Yes" : "No");
                addQuoted (csv, utf8 (event->getNotes().getText()));
                addQuoted (csv, utf8 (event->getEngineeringNotes().getText()));
                addQuoted (csv, utf8 (event->typeString()));
                addQuoted (csv, std::to_string (event->getStreamerDuration()));
                addQuoted (csv, event->isEnabled() ? "Yes" : "No");
                addQuoted (csv, std::to_string (event->getNumRecordedTakes()));
                addQuoted (csv, std::to_string (event->getReason()));
                addQuoted (csv, event->getBeatsPerMinute() > 0.0f
                                    ? std::to_string (event->getBeatsPerMinute())
                                    : "");
                addQuoted (csv, event->isForcedNarrative() ? "Yes" : "No");
                addQuoted (csv, std::to_string (event->getForcedNarrativeRegion()));
                csv.back() = '\n';
            }

            std::ofstream (path, std::ios::binary) << csv;
        });
    return { seconds, rowsOfCSV (juce::File (path)) };
}

WorkDone writeXLSXWithLibrary (const WorkOrder& order, WorkbookMemory memory)
{
    const SeasonDocument shown (order, EventExportTypeExcel);
    auto rows = plainRows (EventExcelExporter (shown.settings).buildFileContent (shown.settings->events));
    const auto file = order.out.getChildFile ("library.xlsx");
    const auto seconds = secondsOf ([&] { writeWithLibrary (file.getFullPathName(), rows, memory); });
    return { seconds, rowsOfXLSX (file) };
}

WorkDone writeXLSXByRows (const WorkOrder& order)
{
    return writeXLSXWithLibrary (order, WorkbookMemory::oneRow);
}

WorkDone writeXLSXAtOnce (const WorkOrder& order)
{
    return writeXLSXWithLibrary (order, WorkbookMemory::wholeSheet);
}

constexpr Work works[] = { { "csv-out", writeCSV },
                           { "csv-out.floor", cellsOneBehindTheOther },
                           { "xlsx-out", writeXLSX },
                           { "xlsx-out.floor", writeXLSXByRows },
                           { "xlsx-out.whole-sheet", writeXLSXAtOnce } };

} // namespace

std::span<const Work> worksOfWriting() { return works; }

} // namespace bench
