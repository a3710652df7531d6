// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <benchmark/benchmark.h>
#include <juce_core/juce_core.h>

#include <functional>
#include <string>
#include <vector>

namespace bench
{

/** What else does the same work: its benchmark is called "ours|peer", such as "writeXLSX|libxlsxwriter", and stands below ours in
    the table of scripts/bench, which prints the ratios too. */
inline std::string peerOf (const char* ours, const char* peer)
{
    std::string name (ours);
    name += '|';
    return name += peer;
}

/** 1 000, 10 000 and 100 000 rows. */
void rowsOfAList (benchmark::internal::Benchmark* benchmark);

/** Whether the machine's own Python has a module. */
bool pythonHas (const char* module);

/** Times a script of bench/peers, which prints the seconds that its work took; what it does before, such as being started,
    doesn't count. For a benchmark with UseManualTime(). */
void timePython (benchmark::State& state, const char* script, const std::vector<juce::String>& arguments);

/** Notes how much more memory than now the work takes at its height, for each row ("peakBytesPerRow"). It runs once more, in a process
    of its own. */
void notePeak (benchmark::State& state, const std::function<void()>& work);

} // namespace bench
