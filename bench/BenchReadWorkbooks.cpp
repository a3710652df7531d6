// SPDX-License-Identifier: GPL-3.0-only
// Workbooks as tables, beside the library that reads the cells and nothing else, and a reader in Python.
#include "Peers.h"

#include "core/documents/ExcelFileHandler.h"
#include "import/ExcelEventFileImporter.h"

#include <benchmark/benchmark.h>
#include <juce_core/juce_core.h>
#include <orcus/orcus_xlsx.hpp>
#include <orcus/spreadsheet/import_interface.hpp>
#include <xlsxwriter.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace
{

namespace iface = orcus::spreadsheet::iface;
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

/** The texts, and which of them each cell has: the least that is of any use. */
class PlainDocument final : public iface::import_factory,
                            public iface::import_shared_strings,
                            public iface::import_sheet
{
public:
    std::vector<std::string> texts;
    std::vector<std::vector<std::size_t>> rows;

    // import_factory
    iface::import_shared_strings* get_shared_strings() override { return this; }
    iface::import_reference_resolver* get_reference_resolver (
        orcus::spreadsheet::formula_ref_context_t) override
    {
        return &places;
    }
    iface::import_sheet* append_sheet (orcus::spreadsheet::sheet_t, std::string_view) override
    {
        return this;
    }
    iface::import_sheet* get_sheet (std::string_view) override { return this; }
    iface::import_sheet* get_sheet (orcus::spreadsheet::sheet_t) override { return this; }
    void finalize() override {}

    // import_shared_strings
    std::size_t append (std::string_view text) override
    {
        texts.emplace_back (text);
        return texts.size() - 1;
    }
    std::size_t add (std::string_view text) override { return append (text); }
    void set_segment_font (std::size_t) override {}
    void set_segment_bold (bool) override {}
    void set_segment_italic (bool) override {}
    void set_segment_font_name (std::string_view) override {}
    void set_segment_font_size (double) override {}
    void set_segment_font_color (std::uint8_t, std::uint8_t, std::uint8_t, std::uint8_t) override {}
    void append_segment (std::string_view text) override { segments += text; }
    std::size_t commit_segments() override
    {
        texts.push_back (std::move (segments));
        segments.clear();
        return texts.size() - 1;
    }

    // import_sheet
    void set_auto (int, int, std::string_view) override {}
    void set_string (int row, int column, std::uint32_t text) override
    {
        const auto place = static_cast<std::size_t> (row);

        if (place >= rows.size())
            rows.resize (place + 1);
        if (static_cast<std::size_t> (column) >= rows[place].size())
            rows[place].resize (static_cast<std::size_t> (column) + 1);

        rows[place][static_cast<std::size_t> (column)] = text;
    }
    void set_value (int, int, double) override {}
    void set_bool (int, int, bool) override {}
    void set_date_time (int, int, int, int, int, int, int, double) override {}
    void set_format (int, int, std::size_t) override {}
    void set_format (int, int, int, int, std::size_t) override {}
    void fill_down_cells (int, int, int) override {}
    orcus::spreadsheet::range_size_t get_sheet_size() const override { return { 1048576, 16384 }; }

private:
    class Places final : public iface::import_reference_resolver
    {
    public:
        orcus::spreadsheet::src_address_t resolve_address (std::string_view text) override
        {
            orcus::spreadsheet::src_address_t address { 0, 0, 0 };

            for (const char sign : text)
                if (sign >= 'A')
                    address.column = address.column * 26 + (sign - 'A' + 1);
                else
                    address.row = address.row * 10 + (sign - '0');

            --address.row;
            --address.column;
            return address;
        }

        orcus::spreadsheet::src_range_t resolve_range (std::string_view) override { return {}; }
    };

    Places places;
    std::string segments;
};

void orcusAlone (benchmark::State& state)
{
    const SampleWorkbook book (static_cast<int> (state.range (0)), true);
    std::size_t rowsRead = 0;
    const auto work = [&]
    {
        PlainDocument document;
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
