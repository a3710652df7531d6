// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "comparison/ListChanges.h"
#include "comparison/WordDifference.h"

#include <juce_core/juce_core.h>

#include <cstdint>
#include <string>
#include <vector>

namespace overmarks
{

/** A line of the table of changes, for people: what many cues have in common is told once. */
struct ChangeRow
{
    juce::String kind;
    juce::String cue;       ///< number, or first and last number of a run
    juce::String start;     ///< in the new list; of a removed event in the old one
    juce::String character; ///< empty for several
    TextPieces change;
};

/** The changes in the order of the new list. Neighbouring cues that have moved by the same number of frames are one row, and so are
    those that have become longer by the same number; a cue that has moved with its neighbours and has become longer too stands in
    both. A character that has another name or another actor throughout is one row. */
std::vector<ChangeRow> changeRows (const ListChanges& changes);

/** "+00:00:02:10", in frames of the list's rate. */
juce::String shiftText (std::int64_t frames, const ZEP::Core::_TCDef& def);

/** What has become of the times of one event: "moved by +00:00:02:10, 00:00:00:05 longer". */
juce::String timingText (const ListChange& change, const ZEP::Core::_TCDef& def);

/** "3 added, 412 retimed; 20 unchanged". */
juce::String summaryText (const ListChanges& changes);

} // namespace overmarks
