// SPDX-License-Identifier: GPL-3.0-only
// Cue lists as workbooks, beside the libraries that make workbooks and nothing else.
#include "LibraryWorkbook.h"
#include "Peers.h"
#include "SampleLists.h"

#include "core/documents/ExcelFileHandler.h"
#include "export/EventExcelExporter.h"

#include <benchmark/benchmark.h>
#include <juce_core/juce_core.h>

#include <memory>
#include <string>
#include <vector>

namespace
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

using Rows = std::vector<std::vector<RichTextString>>;

/** A season's list, one word of every tenth text in bold. */
EventArray::Events sampleEvents (int number)
{
    auto events = bench::sampleProject (number).list->filteredEvents;

    for (std::size_t i = 0; i < events.size(); i += 10)
    {
        auto text = events[i]->getText();
        text.applyAttributes ({ { { 3, 9 }, juce::Font().boldened(), juce::Colours::black } });
        events[i]->setUndoBypass (true);
        events[i]->setText (text);
    }

    return events;
}

std::shared_ptr<EventExportSettingsSet> settingsFor (const EventArray::Events& events)
{
    auto settings = std::make_shared<EventExportSettingsSet>();
    settings->exportType = EventExportTypeExcel;
    settings->events = events;
    return settings;
}

Rows sampleRows (int number)
{
    return EventExcelExporter (settingsFor ({})).buildFileContent (sampleEvents (number));
}

/** A file that is gone again with this object. */
class SampleFile final
{
public:
    explicit SampleFile (const char* extension) : file (juce::File::createTempFile (extension)) {}
    ~SampleFile() { file.deleteFile(); }

    SampleFile (const SampleFile&) = delete;
    SampleFile& operator= (const SampleFile&) = delete;

    juce::String path() const { return file.getFullPathName(); }

    const juce::File file;
};

void finish (benchmark::State& state, const SampleFile& out)
{
    if (out.file.getSize() == 0)
        state.SkipWithError ("the workbook can't be written");

    state.SetBytesProcessed (state.iterations() * out.file.getSize());
    state.SetItemsProcessed (state.iterations() * state.range (0));
}

// ---- ours ------------------------------------------------------------------------------------------------------------------

/** From events to a workbook. */
void exportXLSX (benchmark::State& state)
{
    const SampleFile out (".xlsx");
    const auto settings = settingsFor (sampleEvents (static_cast<int> (state.range (0))));
    settings->outputDirectory = out.file.getParentDirectory().getFullPathName();
    settings->fileName = out.file.getFileNameWithoutExtension();
    const auto work = [&settings] { return EventExcelExporter (settings).exportEventsByTimecode(); };

    for (auto _ : state)
        benchmark::DoNotOptimize (work());

    bench::notePeak (state, work);
    finish (state, out);
}
BENCHMARK (exportXLSX)->Apply (bench::rowsOfAList);

/** From a table to a workbook. */
void writeXLSX (benchmark::State& state)
{
    const SampleFile out (".xlsx");
    auto rows = sampleRows (static_cast<int> (state.range (0)));
    const auto work = [&]
    {
        juce::String error;
        ExcelFileHandler().writeFileContent (out.file.getFullPathName(), rows, error);
    };

    for (auto _ : state)
        work();

    bench::notePeak (state, work);
    finish (state, out);
}
BENCHMARK (writeXLSX)->Apply (bench::rowsOfAList);

// ---- libxlsxwriter alone -----------------------------------------------------------------------------------------------------

void writeXLSXWithLibrary (benchmark::State& state)
{
    const SampleFile out (".xlsx");
    auto rows = bench::plainRows (sampleRows (static_cast<int> (state.range (0))));
    const auto work = [&] { bench::writeWithLibrary (out.path(), rows, bench::WorkbookMemory::oneRow); };

    for (auto _ : state)
        work();

    bench::notePeak (state, work);
    finish (state, out);
}
BENCHMARK (writeXLSXWithLibrary)
    ->Name (bench::peerOf ("writeXLSX", "libxlsxwriter"))
    ->Apply (bench::rowsOfAList);

// ---- openpyxl ----------------------------------------------------------------------------------------------------------------

/** The table as lists of texts. */
void writeJSON (const Rows& rows, const juce::File& file)
{
    juce::Array<juce::var> table;

    for (const auto& row : rows)
    {
        juce::Array<juce::var> cells;

        for (const auto& cell : row)
            cells.add (cell.getText());

        table.add (cells);
    }

    file.replaceWithText (juce::JSON::toString (table, true));
}

void writeXLSXWithPython (benchmark::State& state)
{
    const SampleFile table (".json"), out (".xlsx");
    writeJSON (sampleRows (static_cast<int> (state.range (0))), table.file);
    bench::timePython (state, "openpyxl_write.py", { table.path(), out.path() });
    finish (state, out);
}

const auto* const withPython =
    bench::pythonHas ("openpyxl")
        ? benchmark::RegisterBenchmark (bench::peerOf ("writeXLSX", "openpyxl").c_str(), writeXLSXWithPython)
              -> Apply (bench::rowsOfAList) -> UseManualTime() -> Iterations (1)
        : nullptr;

} // namespace
