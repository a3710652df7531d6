// SPDX-License-Identifier: GPL-3.0-only
// Workbooks as tables, beside the library that reads the cells and nothing else, and a reader in Python.
#include "OrcusAlone.h"
#include "Peers.h"

#include "core/documents/ExcelFileHandler.h"
#include "import/ExcelEventFileImporter.h"

#include <benchmark/benchmark.h>
#include <juce_core/juce_core.h>
#include <orcus/orcus_xlsx.hpp>
#include <xlsxwriter.h>

#include <functional>
#include <string>
#include <vector>

namespace
{

using ZEP::Core::ExcelFileHandler;
using ZEP::Core::RichTextString;

constexpr int columns = 10;

/** Ten texts a row, a third of them in many rows; as most programs keep them, or each in its cell. A file that is gone again with
    this object. */
class SampleWorkbook final
{
public:
    SampleWorkbook (int rows, bool sharesTexts) : file (juce::File::createTempFile (".xlsx"))
    {
        lxw_workbook_options options {};
        options.constant_memory = sharesTexts ? LXW_FALSE : LXW_TRUE;
        auto* book = workbook_new_opt (path().c_str(), &options);
        auto* sheet = workbook_add_worksheet (book, nullptr);

        for (int row = 0; row < rows; ++row)
            for (int column = 0; column < columns; ++column)
                worksheet_write_string (sheet, static_cast<lxw_row_t> (row), static_cast<lxw_col_t> (column),
                                        textOf (row, column).c_str(), nullptr);

        workbook_close (book);
    }

    ~SampleWorkbook() { file.deleteFile(); }

    SampleWorkbook (const SampleWorkbook&) = delete;
    SampleWorkbook& operator= (const SampleWorkbook&) = delete;

    std::string path() const { return file.getFullPathName().toStdString(); }

    const juce::File file;

private:
    static std::string textOf (int row, int column)
    {
        const auto number = std::to_string (row);

        switch (column)
        {
            case 0: return "A" + number;
            case 1:
                return "01:" + std::to_string (10 + row / 60 % 50) + ":" + std::to_string (10 + row % 50)
                       + ":00";
            case 2: return "CHARACTER " + std::to_string (row % 40);
            case 3: return "Actor " + std::to_string (row % 25);
            case 4: return "No";
            default: return "Line " + number + " of what somebody says, column " + std::to_string (column);
        }
    }
};

void finish (benchmark::State& state, const SampleWorkbook& book)
{
    state.SetBytesProcessed (state.iterations() * book.file.getSize());
    state.SetItemsProcessed (state.iterations() * state.range (0));
}

// ---- ours ------------------------------------------------------------------------------------------------------------------

void readBook (benchmark::State& state, bool sharesTexts)
{
    const SampleWorkbook book (static_cast<int> (state.range (0)), sharesTexts);
    std::size_t rowsRead = 0;
    const auto work = [&]
    {
        std::vector<std::vector<RichTextString>> rows;
        juce::String error;
        ExcelFileHandler().readFileContent (book.file.getFullPathName(), rows, error);
        rowsRead = rows.size();
    };

    for (auto _ : state)
        work();

    if (rowsRead != static_cast<std::size_t> (state.range (0)))
        state.SkipWithError ("the sample can't be read");

    bench::notePeak (state, work);
    finish (state, book);
}

void readXLSX (benchmark::State& state) { readBook (state, true); }
BENCHMARK (readXLSX)->Apply (bench::rowsOfAList);

/** Orcus alone leaves such cells out. */
void readXLSXOfInlineTexts (benchmark::State& state) { readBook (state, false); }
BENCHMARK (readXLSXOfInlineTexts)->Apply (bench::rowsOfAList);

/** With the columns guessed. */
void importXLSX (benchmark::State& state)
{
    const SampleWorkbook book (static_cast<int> (state.range (0)), true);

    for (auto _ : state)
    {
        juce::String error;
        const ZEP::Overmarks::ExcelEventFileImporter importer (book.file.getFullPathName(), error);

        if (error.isNotEmpty())
            state.SkipWithError ("the sample can't be read");
    }

    finish (state, book);
}
BENCHMARK (importXLSX)->Apply (bench::rowsOfAList);

// ---- Orcus alone -----------------------------------------------------------------------------------------------------------

void orcusAlone (benchmark::State& state)
{
    const SampleWorkbook book (static_cast<int> (state.range (0)), true);
    std::size_t rowsRead = 0;
    const auto work = [&]
    {
        bench::PlainDocument document;
        orcus::orcus_xlsx reader (&document);
        reader.read_file (book.path());
        rowsRead = document.rows.size();
    };

    for (auto _ : state)
        work();

    if (rowsRead != static_cast<std::size_t> (state.range (0)))
        state.SkipWithError ("the sample can't be read");

    bench::notePeak (state, work);
    finish (state, book);
}
BENCHMARK (orcusAlone)->Name (bench::peerOf ("readXLSX", "Orcus"))->Apply (bench::rowsOfAList);

// ---- a reader in Python ----------------------------------------------------------------------------------------------------

void readInPython (benchmark::State& state)
{
    const SampleWorkbook book (static_cast<int> (state.range (0)), true);
    bench::timePython (state, "openpyxl_read.py", { book.path() });
    finish (state, book);
}

} // namespace

int main (int argumentCount, char** arguments)
{
    if (bench::pythonHas ("openpyxl"))
        benchmark::RegisterBenchmark (bench::peerOf ("readXLSX", "openpyxl").c_str(), readInPython)
            ->Apply (bench::rowsOfAList)
            ->Iterations (1)
            ->UseManualTime();

    benchmark::Initialize (&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
