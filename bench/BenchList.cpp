// SPDX-License-Identifier: GPL-3.0-only
// What a list costs between two key strokes: sorting, filtering, searching, selecting, adding, removing, undoing.
#include "SampleLists.h"

#include "core/undo/UndoRedoHelpers.h"
#include "event/EventKeyValueEditor.h"
#include "list/ProjectJSON.h"
#include "preferences/PreferenceKeys.h"

#include <benchmark/benchmark.h>

#include <map>

namespace
{

using namespace ZEP::Core;
using namespace ZEP::Overmarks;
using KV = EventKeyValueEditor;

void sizes (benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier (10)->Range (1000, 100000)->Unit (benchmark::kMillisecond);
}

/** For what is done at every key stroke in a search field, or with a key held down. */
void sizesUpToAMillion (benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier (10)->Range (1000, 1000000)->Unit (benchmark::kMillisecond);
}

/** For what looks through the list, or through a growing selection, at each step. */
void sizesForSteps (benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier (10)->Range (1000, 10000)->Unit (benchmark::kMillisecond);
}

void sortContent (benchmark::State& state)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));

    for (auto _ : state)
        project.list->sortContentAndUpdateFilteredEvents();
}
BENCHMARK (sortContent)->Apply (sizes);

void setFilter (benchmark::State& state, const std::map<juce::String, juce::String>& parameters)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));

    for (auto _ : state)
        project.list->setFilterParameters (parameters);
}
BENCHMARK_CAPTURE (setFilter, none, {})->Apply (sizesUpToAMillion);
BENCHMARK_CAPTURE (setFilter, character, { { EventCharacterFilterKey, "CHARACTER 7" } })
    ->Apply (sizesUpToAMillion);
BENCHMARK_CAPTURE (setFilter, actor, { { EventActorFilterKey, "Actor 7" } })->Apply (sizesUpToAMillion);
BENCHMARK_CAPTURE (setFilter, text, { { EventTextFilterKey, "captain never" } })->Apply (sizesUpToAMillion);
BENCHMARK_CAPTURE (setFilter, cueNumber, { { EventCueNumberFilterKey, "R3 12" } })->Apply (sizesUpToAMillion);
BENCHMARK_CAPTURE (setFilter, neighbours,
                   { { EventCharacterFilterKey, "CHARACTER 7" }, { EventNumAdjacentCuesKey, "3" } })
    ->Apply (sizesUpToAMillion);

void search (benchmark::State& state, const char* searchString)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));
    project.list->sortKey = KV::KV_Text;
    project.list->sortContentAndUpdateFilteredEvents();

    for (auto _ : state)
        benchmark::DoNotOptimize (project.list->itemsForSearchString (searchString));
}
BENCHMARK_CAPTURE (search, word, "captain never")->Apply (sizesUpToAMillion);
BENCHMARK_CAPTURE (search, wholeCueNumber, "#R3 1200")->Apply (sizesUpToAMillion);
BENCHMARK_CAPTURE (search, everything, "")->Apply (sizesUpToAMillion);

void setSelectedEvents (benchmark::State& state)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));
    project.list->sortKey = KV::KV_Text;
    project.list->sortContentAndUpdateFilteredEvents();
    // By text: not the order in which the selection is kept, so that it is a change each time.
    const auto all = project.list->sortedFilteredEvents;

    for (auto _ : state)
        project.list->setSelectedEvents (all, false);
}
BENCHMARK (setSelectedEvents)->Apply (sizesUpToAMillion);

/** From no selection through the whole list, in the order of the cue numbers; the list was sorted just before. */
void stepThroughList (benchmark::State& state, void (EventArray::*step)())
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));
    auto& list = *project.list;
    list.sortKey = KV::KV_CueNumber;

    for (auto _ : state)
    {
        state.PauseTiming();
        list.sortContentAndUpdateFilteredEvents();
        list.clearSelectedEvents();
        list.selectNextEvent();
        state.ResumeTiming();

        for (std::size_t i = 1; i < list.sortedFilteredEvents.size(); ++i)
            (list.*step)();

        benchmark::DoNotOptimize (list.selectedEvents.data());
    }
}
BENCHMARK_CAPTURE (stepThroughList, byEvent, &EventArray::selectNextEvent)->Apply (sizesUpToAMillion);
BENCHMARK_CAPTURE (stepThroughList, byCueNumber, &EventArray::selectNextEventByCueNumber)
    ->Apply (sizesForSteps);
BENCHMARK_CAPTURE (stepThroughList, widening, &EventArray::expandSelectionByNextEvent)->Apply (sizesForSteps);

void overviewOfOneCharacter (benchmark::State& state)
{
    const auto project = bench::sampleProject (static_cast<int> (state.range (0)));
    const auto character = project.characters->characterForID ("c7");
    int lines = 0;
    int cues = 0;
    float done = 0.0f;

    for (auto _ : state)
    {
        project.list->adrOverviewDataForCharacter (character, lines, cues, done);
        benchmark::DoNotOptimize (lines);
    }
}
BENCHMARK (overviewOfOneCharacter)->Apply (sizesUpToAMillion);

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
