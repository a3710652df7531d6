// SPDX-License-Identifier: GPL-3.0-only
// What a list costs between two key strokes: sorting, adding, removing, undoing.
#include "SampleLists.h"

#include "core/undo/UndoRedoHelpers.h"
#include "event/EventKeyValueEditor.h"
#include "list/ProjectJSON.h"

#include <benchmark/benchmark.h>

namespace
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;
using KV = EventKeyValueEditor;

void sizes (benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier (10)->Range (1000, 100000)->Unit (benchmark::kMillisecond);
}

void sortContent (benchmark::State& state)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));

    for (auto _ : state)
        project.list->sortContentAndUpdateFilteredEvents();
}
BENCHMARK (sortContent)->Apply (sizes);

/** Every other event, in an order that has nothing to do with time. */
EventArray::Events half (const EventArray& list)
{
    EventArray::Events chosen;

    for (std::size_t i = 0; i < list.events.size(); i += 2)
        if (list.events[i] != list.fadeInEvent && list.events[i] != list.fadeOutEvent)
            chosen.push_back (list.events[i]);

    return chosen;
}

void sortByKey (benchmark::State& state, const juce::String& key)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));
    project.list->sortKey = key;

    for (auto _ : state)
    {
        project.list->sortDescending = ! project.list->sortDescending;
        project.list->sortContentAndUpdateFilteredEvents();
    }
}

void addEvents (benchmark::State& state)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));
    const auto added = half (*project.list);

    for (auto _ : state)
    {
        state.PauseTiming();
        project.list->removeEvents (added, false);
        state.ResumeTiming();
        project.list->addEvents (added, true);
    }

    UndoRedoHelpers::sharedUndoManager()->clearUndoHistory();
}
BENCHMARK (addEvents)->Apply (sizes);

void undoOfAddEvents (benchmark::State& state)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));
    const auto added = half (*project.list);
    project.list->removeEvents (added, false);
    auto* history = UndoRedoHelpers::sharedUndoManager();

    for (auto _ : state)
    {
        state.PauseTiming();
        project.list->addEvents (added, true);
        state.ResumeTiming();
        history->undo();
    }

    history->clearUndoHistory();
}
BENCHMARK (undoOfAddEvents)->Apply (sizes);

void removeEvents (benchmark::State& state)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));
    const auto removed = half (*project.list);
    auto* history = UndoRedoHelpers::sharedUndoManager();

    for (auto _ : state)
    {
        project.list->removeEvents (removed, true);
        state.PauseTiming();
        history->undo();
        state.ResumeTiming();
    }

    history->clearUndoHistory();
}
BENCHMARK (removeEvents)->Apply (sizes);

void undoOfRemoveEvents (benchmark::State& state)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));
    const auto removed = half (*project.list);
    auto* history = UndoRedoHelpers::sharedUndoManager();

    for (auto _ : state)
    {
        state.PauseTiming();
        project.list->removeEvents (removed, true);
        state.ResumeTiming();
        history->undo();
    }

    history->clearUndoHistory();
}
BENCHMARK (undoOfRemoveEvents)->Apply (sizes);

void dumpJSON (benchmark::State& state)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));

    for (auto _ : state)
        benchmark::DoNotOptimize (ProjectJSON::toText (project));
}
BENCHMARK (dumpJSON)->Apply (sizes);

void loadJSON (benchmark::State& state)
{
    const auto text = ProjectJSON::toText (bench::sampleProject (static_cast<int> (state.range (0))));
    Project project;

    for (auto _ : state)
        if (ProjectJSON::fromText (text, project).isNotEmpty())
            state.SkipWithError ("the project can't be read");
}
BENCHMARK (loadJSON)->Apply (sizes);

/** Each sort column has a benchmark of its own. */
const bool areSortsRegistered = []
{
    for (const auto& key :
         { KV::KV_StartTCString, KV::KV_EndTCString, KV::KV_Enabled, KV::KV_Done, KV::KV_StreamerDuration,
           KV::KV_BeatsPerMinute, KV::KV_RecTrackIndex, KV::KV_CueNumber, KV::KV_EngineeringNotes,
           KV::KV_Text, KV::KV_Notes, KV::KV_CharacterID, KV::KV_Type, KV::KV_Actor, KV::KV_CharPrefix,
           KV::KV_Reason, KV::KV_NumRecordedTakes })
        sizes (benchmark::RegisterBenchmark (("sortBy" + key.toStdString()).c_str(),
                                             [key] (benchmark::State& state) { sortByKey (state, key); }));

    return true;
}();

} // namespace
