// SPDX-License-Identifier: GPL-3.0-only
// Cue lists as workbooks, beside the libraries that make workbooks and nothing else.
#include "Peers.h"
#include "SampleLists.h"

#include "core/documents/ExcelFileHandler.h"
#include "export/EventExcelExporter.h"

#include <benchmark/benchmark.h>
#include <juce_core/juce_core.h>
#include <xlsxwriter.h>

#include <memory>
#include <string>
#include <utility>
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

/** A cell as the library wants it: one text, or the texts of its runs and whether they are bold. */
using PlainCell = std::vector<std::pair<std::string, bool>>;

PlainCell plainCell (const RichTextString& cell)
{
    PlainCell runs;

    for (int i = 0; i < cell.getNumAttributes(); ++i)
    {
        const auto& run = cell.getAttribute (i);
        runs.emplace_back (cell.getText().substring (run.range.getStart(), run.range.getEnd()).toStdString(),
                           run.font.isBold());
    }

    return runs;
}

std::vector<std::vector<PlainCell>> plainRows (const Rows& rows)
{
    std::vector<std::vector<PlainCell>> plain;

    for (const auto& row : rows)
    {
        plain.emplace_back();

        for (const auto& cell : row)
            plain.back().push_back (plainCell (cell));
    }

    return plain;
}

struct LibraryFormats
{
    lxw_format* cell;
    lxw_format* bold;
};

void writeCell (lxw_worksheet* sheet, lxw_row_t row, lxw_col_t column, PlainCell& cell,
                const LibraryFormats& formats)
{
    if (cell.size() == 1)
        worksheet_write_string (sheet, row, column, cell[0].first.c_str(), formats.cell);

    if (cell.size() < 2)
        return;

    std::vector<lxw_rich_string_tuple> runs;

    for (auto& [text, bold] : cell)
        runs.push_back ({ bold ? formats.bold : nullptr, text.data() });

    std::vector<lxw_rich_string_tuple*> pointers;

    for (auto& run : runs)
        pointers.push_back (&run);

    pointers.push_back (nullptr);
    worksheet_write_rich_string (sheet, row, column, pointers.data(), formats.cell);
}

void writeWithLibrary (const juce::String& path, std::vector<std::vector<PlainCell>>& rows)
{
    lxw_workbook_options options {};
    options.constant_memory = LXW_TRUE;
    auto* const book = workbook_new_opt (path.toRawUTF8(), &options);
    auto* const sheet = workbook_add_worksheet (book, "Cues");
    const LibraryFormats formats { workbook_add_format (book), workbook_add_format (book) };
    format_set_text_wrap (formats.cell);
    format_set_bold (formats.bold);

    for (std::size_t row = 0; row < rows.size(); ++row)
        for (std::size_t column = 0; column < rows[row].size(); ++column)
            writeCell (sheet, static_cast<lxw_row_t> (row), static_cast<lxw_col_t> (column),
                       rows[row][column], formats);

    workbook_close (book);
}

void writeXLSXWithLibrary (benchmark::State& state)
{
    const SampleFile out (".xlsx");
    auto rows = plainRows (sampleRows (static_cast<int> (state.range (0))));
    const auto work = [&] { writeWithLibrary (out.path(), rows); };

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
