// SPDX-License-Identifier: GPL-3.0-only
// From events to documents.
#include "SampleLists.h"

#include "export/frame/EventExporter.h"
#include "export/frame/EventExporterFactory.h"

#include <benchmark/benchmark.h>

namespace
{

using namespace ZEP::Overmarks;

void sizes (benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier (10)->Range (1000, 100000)->Unit (benchmark::kMillisecond);
}

void exportCSV (benchmark::State& state)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));
    const auto folder = juce::File::createTempFile ("bench");
    folder.createDirectory();
    auto settings = std::make_shared<EventExportSettingsSet>();
    settings->exportType = EventExportTypeCSV;
    settings->events = project.list->filteredEvents;
    settings->outputDirectory = folder.getFullPathName();
    settings->fileName = "bench";
    settings->options[EventExportCSVDelimiterKey] = 1;
    settings->options[EventExportCSVTemplateKey] = 0;

    for (auto _ : state)
        if (EventExporterFactory::eventExporter (settings)->exportEventsByTimecode().isNotEmpty())
            state.SkipWithError ("the document can't be written");

    state.SetBytesProcessed (state.iterations() * folder.getChildFile ("bench.csv").getSize());
    folder.deleteRecursively();
}
BENCHMARK (exportCSV)->Apply (sizes);

} // namespace
