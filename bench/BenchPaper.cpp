// SPDX-License-Identifier: GPL-3.0-only
// From events to paper.
#include "SampleLists.h"

#include "export/ADROverviewPDFExporter.h"
#include "export/print/DrawnCueSheetExporter.h"

#include <benchmark/benchmark.h>

namespace
{

using namespace ZEP::Overmarks;
using ZEP::Core::PaperSize;
using ZEP::Core::PDFDocument;

/** A cue sheet for the director, with the boxes of the takes. */
void drawCueSheet (benchmark::State& state)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));
    const bench::SampleFolder output;
    auto settings = std::make_shared<EventExportSettingsSet>();
    settings->exportType = EventExportTypePDF;
    settings->events = project.list->filteredEvents;
    settings->showTakeNumbers = true;
    settings->outputDirectory = output.folder.getFullPathName();
    settings->fileName = "bench";

    for (auto _ : state)
        if (DrawnCueSheetExporter (settings, PaperSize::a4()).exportEventsByTimecode().isNotEmpty())
            state.SkipWithError ("the sheet can't be written");

    state.SetBytesProcessed (state.iterations() * output.folder.getChildFile ("bench.pdf").getSize());
}
BENCHMARK (drawCueSheet)->Arg (100)->Arg (1000)->Arg (2000)->Unit (benchmark::kMillisecond);

void drawOverview (benchmark::State& state)
{
    std::vector<ADROverviewDataSet> characters;

    for (int i = 0; i < state.range (0); ++i)
        characters.push_back ({ "CHARACTER " + juce::String (i), "Actor " + juce::String (i),
                                "C" + juce::String (i), i, i / 2, static_cast<float> (i % 101) / 100.0f });

    const bench::SampleFolder output;
    const auto path = output.folder.getChildFile ("overview.pdf").getFullPathName();

    for (auto _ : state)
    {
        ZEP::Orvelle::ADROverviewPDFExporter exporter (path, PaperSize::a4());
        exporter.openFile = nullptr;
        exporter.exportPDF (characters, "Season 1", path, "Reel 3", "J. Doe", "Studio 7");

        if (exporter.document->saveResult().failed())
            state.SkipWithError ("the sheet can't be written");
    }
}
BENCHMARK (drawOverview)->Arg (60)->Arg (2000)->Unit (benchmark::kMillisecond);

} // namespace
