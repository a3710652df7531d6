// SPDX-License-Identifier: GPL-3.0-only
// Opening and saving a project file, and what an event takes there and in memory.
#include "SampleLists.h"

#include "list/ProjectFile.h"

#include <benchmark/benchmark.h>

#include <malloc.h>

namespace
{

using namespace ZEP::Overmarks;

void sizes (benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier (10)->Range (1000, 1000000)->Unit (benchmark::kMillisecond);
}

double bytesInUse() { return static_cast<double> (mallinfo2().uordblks + mallinfo2().hblkhd); }

void saveProject (benchmark::State& state)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));
    const juce::TemporaryFile file (ProjectFile::extension);

    for (auto _ : state)
        if (ProjectFile::save (project, file.getFile()).isNotEmpty())
            state.SkipWithError ("the project can't be saved");

    state.counters["bytesPerEventInFile"] =
        static_cast<double> (file.getFile().getSize()) / static_cast<double> (state.range (0));
}
BENCHMARK (saveProject)->Apply (sizes);

void loadProject (benchmark::State& state)
{
    const juce::TemporaryFile file (ProjectFile::extension);

    if (ProjectFile::save (bench::sampleProject (static_cast<int> (state.range (0))), file.getFile())
            .isNotEmpty())
        state.SkipWithError ("the project can't be saved");

    double bytes = 0;

    for (auto _ : state)
    {
        const auto before = bytesInUse();
        Project project;

        if (ProjectFile::load (file.getFile(), project).isNotEmpty())
            state.SkipWithError ("the project can't be read");

        state.PauseTiming();
        bytes = bytesInUse() - before;
        project = {};
        state.ResumeTiming();
    }

    state.counters["bytesPerEventInMemory"] = bytes / static_cast<double> (state.range (0));
}
BENCHMARK (loadProject)->Apply (sizes);

} // namespace
