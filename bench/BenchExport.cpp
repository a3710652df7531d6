// SPDX-License-Identifier: GPL-3.0-only
// From events to documents.
#include "SampleLists.h"

#include "export/EventASCExporter.h"
#include "export/EventArendisTXTExporter.h"
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

/** A folder that is gone again with this object. */
class SampleFolder final
{
public:
    SampleFolder() : folder (juce::File::createTempFile ("bench")) { folder.createDirectory(); }
    ~SampleFolder() { folder.deleteRecursively(); }

    SampleFolder (const SampleFolder&) = delete;
    SampleFolder& operator= (const SampleFolder&) = delete;

    const juce::File folder;
};

void exportWithFactory (benchmark::State& state, EventExportType type, const char* extension)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));
    const SampleFolder output;
    auto settings = std::make_shared<EventExportSettingsSet>();
    settings->exportType = type;
    settings->events = project.list->filteredEvents;
    settings->outputDirectory = output.folder.getFullPathName();
    settings->fileName = "bench";
    settings->options[EventExportCSVDelimiterKey] = 1;
    settings->options[EventExportCSVTemplateKey] = 0;

    for (auto _ : state)
        if (EventExporterFactory::eventExporter (settings)->exportEventsByTimecode().isNotEmpty())
            state.SkipWithError ("the document can't be written");

    state.SetBytesProcessed (state.iterations()
                             * output.folder.getChildFile ("bench" + juce::String (extension)).getSize());
}

void exportCSV (benchmark::State& state) { exportWithFactory (state, EventExportTypeCSV, ".csv"); }
BENCHMARK (exportCSV)->Apply (sizes);

void exportTTAL (benchmark::State& state) { exportWithFactory (state, EventExportTypeTTAL, ".ttal"); }
BENCHMARK (exportTTAL)->Apply (sizes);

/** The exporters that write to a path. */
template <typename Export>
void exportToPath (benchmark::State& state, Export exportEvents)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));
    const SampleFolder output;
    const auto file = output.folder.getChildFile ("bench.txt");

    for (auto _ : state)
        exportEvents (project.list->filteredEvents, file.getFullPathName());

    if (file.getSize() == 0)
        state.SkipWithError ("the document can't be written");

    state.SetBytesProcessed (state.iterations() * file.getSize());
}

void exportASC (benchmark::State& state)
{
    exportToPath (state, [] (const auto& events, const auto& path)
                  { return EventASCExporter().exportEvents (events, path); });
}
BENCHMARK (exportASC)->Apply (sizes);

void exportArendis (benchmark::State& state)
{
    exportToPath (state, [] (const auto& events, const auto& path)
                  { return EventArendisTXTExporter().exportEvents (events, path, "Season 1"); });
}
BENCHMARK (exportArendis)->Apply (sizes);

} // namespace
