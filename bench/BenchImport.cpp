// SPDX-License-Identifier: GPL-3.0-only
// From the bytes of a cue list to events.
#include "SampleLists.h"

#include "import/ADRStudioEventFileImporter.h"
#include "import/CSVEventFileImporter.h"
#include "import/CSVParser.h"
#include "import/DBFEventFileImporter.h"
#include "import/PTSessionInfoFileImporter.h"
#include "import/SRTEventFileImporter.h"
#include "import/STLEventFileImporter.h"
#include "import/TTALEventFileImporter.h"
#include "import/frame/EventRowReader.h"

#include <benchmark/benchmark.h>

#include <algorithm>

namespace
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;

void sizes (benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier (10)->Range (1000, 100000)->Unit (benchmark::kMillisecond);
}

/** A sample as a file, gone again with this object. */
class SampleFile final
{
public:
    explicit SampleFile (int rows) : SampleFile (".csv", bench::sampleCSV (rows)) {}

    SampleFile (const char* extension, const std::string& bytes) : file (extension)
    {
        file.getFile().replaceWithData (bytes.data(), bytes.size());
    }

    juce::String path() const { return file.getFile().getFullPathName(); }
    long long size() const { return file.getFile().getSize(); }

private:
    juce::TemporaryFile file;
};

/** The least that any reader does: one pass over the bytes that makes a string of each cell. */
void cellsInOnePass (benchmark::State& state)
{
    const auto csv = bench::sampleCSV (static_cast<int> (state.range (0)));

    for (auto _ : state)
    {
        std::vector<std::vector<std::string>> rows (1);
        const char* start = csv.data();

        for (const char* p = start; p < csv.data() + csv.size(); ++p)
        {
            if (*p != ',' && *p != '\n')
                continue;

            rows.back().emplace_back (start, p);
            start = p + 1;

            if (*p == '\n')
                rows.emplace_back();
        }

        benchmark::DoNotOptimize (rows);
    }

    state.SetBytesProcessed (state.iterations() * static_cast<long long> (csv.size()));
}
BENCHMARK (cellsInOnePass)->Apply (sizes);

void parseCSV (benchmark::State& state)
{
    const SampleFile file (static_cast<int> (state.range (0)));

    for (auto _ : state)
    {
        CSVParser parser;
        auto encoding = TextEncodingUnknown;

        if (! parser.open (file.path().toStdString()) || parser.parse (encoding).empty())
            state.SkipWithError ("the sample can't be read");
    }

    state.SetBytesProcessed (state.iterations() * file.size());
}
BENCHMARK (parseCSV)->Apply (sizes);

void importCSV (benchmark::State& state)
{
    const SampleFile file (static_cast<int> (state.range (0)));

    for (auto _ : state)
    {
        juce::String error;
        const CSVEventFileImporter importer (file.path(), error);

        if (error.isNotEmpty())
            state.SkipWithError ("the sample can't be read");
    }

    state.SetBytesProcessed (state.iterations() * file.size());
}
BENCHMARK (importCSV)->Apply (sizes);

/** Reads a sample with an importer. @param titleRows rows of the table beside the cues */
template <typename Importer>
void importSample (benchmark::State& state, const SampleFile& file, int rows, int titleRows)
{
    for (auto _ : state)
    {
        juce::String error;
        const Importer importer (file.path(), error);

        if (error.isNotEmpty() || static_cast<int> (importer.rows.size()) != rows + titleRows)
            state.SkipWithError ("the sample can't be read");
    }

    state.SetBytesProcessed (state.iterations() * file.size());
    state.SetItemsProcessed (state.iterations() * rows);
}

void importSRT (benchmark::State& state)
{
    const auto rows = static_cast<int> (state.range (0));
    importSample<SRTEventFileImporter> (state, { ".srt", bench::sampleSRT (rows) }, rows, 0);
}
BENCHMARK (importSRT)->Apply (sizes);

void importTextSTL (benchmark::State& state)
{
    const auto rows = static_cast<int> (state.range (0));
    importSample<STLEventFileImporter> (state, { ".stl", bench::sampleTextSTL (rows) }, rows, 0);
}
BENCHMARK (importTextSTL)->Apply (sizes);

void importEBUSTL (benchmark::State& state)
{
    constexpr int most = 99999;
    const auto rows = std::min (static_cast<int> (state.range (0)), most);
    importSample<STLEventFileImporter> (state, { ".stl", bench::sampleEBUSTL (rows) }, rows, 0);
}
BENCHMARK (importEBUSTL)->Apply (sizes);

void importDBF (benchmark::State& state)
{
    const auto rows = static_cast<int> (state.range (0));
    importSample<DBFEventFileImporter> (state, { ".dbf", bench::sampleDBF (rows) }, rows, 1);
}
BENCHMARK (importDBF)->Apply (sizes);

void importSession (benchmark::State& state)
{
    const auto rows = static_cast<int> (state.range (0));
    const SampleFile file (".txt", bench::sampleSession (rows));
    PTSessionInfoFileImporter::chooseTracks = [] (const auto& tracks) { return tracks; };

    for (auto _ : state)
    {
        juce::String error;
        const PTSessionInfoFileImporter importer (file.path(), error, {});

        if (error.isNotEmpty() || static_cast<int> (importer.rows.size()) != rows)
            state.SkipWithError ("the sample can't be read");
    }

    state.SetBytesProcessed (state.iterations() * file.size());
    state.SetItemsProcessed (state.iterations() * rows);
}
BENCHMARK (importSession)->Apply (sizes);

void importADRStudio (benchmark::State& state)
{
    const auto rows = static_cast<int> (state.range (0));
    importSample<ADRStudioEventFileImporter> (state, { ".xml", bench::sampleADRStudio (rows) }, rows, 0);
}
BENCHMARK (importADRStudio)->Apply (sizes);

void importTTAL (benchmark::State& state)
{
    const auto rows = static_cast<int> (state.range (0));
    const auto project = bench::sampleProject (1);
    const SampleFile file (".ttal", bench::sampleTTAL (rows));

    for (auto _ : state)
    {
        juce::String error;
        const TTALEventFileImporter importer (file.path(), error, project.timeInfo);

        if (error.isNotEmpty() || static_cast<int> (importer.rows.size()) != rows)
            state.SkipWithError ("the sample can't be read");
    }

    state.SetBytesProcessed (state.iterations() * file.size());
    state.SetItemsProcessed (state.iterations() * rows);
}
BENCHMARK (importTTAL)->Apply (sizes);

void rowsToEvents (benchmark::State& state)
{
    const auto project = bench::sampleProject (1);
    const SampleFile file (static_cast<int> (state.range (0)));
    juce::String error;
    CSVEventFileImporter importer (file.path(), error);

    for (auto _ : state)
    {
        const auto result =
            EventRowReader (project.timeInfo, std::make_shared<ADRCharacterMap>()).read (importer);

        if (! result.problems.empty())
            state.SkipWithError ("the sample has problems");
    }
}
BENCHMARK (rowsToEvents)->Apply (sizes);

} // namespace
