// SPDX-License-Identifier: GPL-3.0-only
// From events to documents.
#include "SampleLists.h"

#include "export/EventASCExporter.h"
#include "export/EventArendisTXTExporter.h"
#include "export/EventPDFExporter.h"
#include "export/frame/EventExporter.h"
#include "export/frame/EventExporterFactory.h"
#include "export/print/ZEP_EventPDFExporter.h"

#include <benchmark/benchmark.h>

#include <chrono>

namespace
{

using namespace ZEP::Overmarks;

void sizes (benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier (10)->Range (1000, 100000)->Unit (benchmark::kMillisecond);
}

void exportWithFactory (benchmark::State& state, EventExportType type, const char* extension)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));
    const bench::SampleFolder output;
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

/** The usual print adapter, which adds up what the browser itself needs. */
class TimedAdapter final : public PDFPrintAdapter
{
public:
    explicit TimedAdapter (double& secondsToAddTo) : seconds (secondsToAddTo) {}

    void initWithCallerObject (EventPDFExporter* exporter) override
    {
        adapter.initWithCallerObject (exporter);
    }

    void exportHTMLString (const std::string& html, const std::string& toFilePath) override
    {
        adapter.exportHTMLString (html, toFilePath);
        seconds += adapter.browsersOwnTime().count();
    }

    juce::String failure() const override { return adapter.failure(); }

private:
    ZEP_EventPDFExporter adapter;
    double& seconds;
};

/** Sheets through the browser: beside the whole time the part of the browser, and what we need above it, in seconds. */
void printPDF (benchmark::State& state)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));
    const bench::SampleFolder output;
    auto settings = std::make_shared<EventExportSettingsSet>();
    settings->exportType = EventExportTypePDF;
    settings->events = project.list->filteredEvents;
    settings->outputDirectory = output.folder.getFullPathName();
    settings->fileName = "bench";
    settings->showTakeNumbers = true;
    double browser = 0;
    double total = 0;

    for (auto _ : state)
    {
        const auto start = std::chrono::steady_clock::now();
        EventPDFExporter exporter (settings);
        exporter.makePrintAdapter = [&browser] { return std::make_unique<TimedAdapter> (browser); };
        exporter.exportEventsByTimecode();
        total += std::chrono::duration<double> (std::chrono::steady_clock::now() - start).count();

        if (! exporter.printFailures.empty())
            state.SkipWithError (exporter.printFailures[0].reason.toRawUTF8());
    }

    state.counters["browser_s"] = benchmark::Counter (browser, benchmark::Counter::kAvgIterations);
    state.counters["above_s"] = benchmark::Counter (total - browser, benchmark::Counter::kAvgIterations);
}
BENCHMARK (printPDF)->Arg (100)->Arg (1000)->Arg (2000)->Unit (benchmark::kMillisecond)->UseRealTime();

/** The exporters that write to a path. */
template <typename Export>
void exportToPath (benchmark::State& state, Export exportEvents)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));
    const bench::SampleFolder output;
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
