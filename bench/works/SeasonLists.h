// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "list/Project.h"

#include <array>
#include <string>
#include <vector>

#include <juce_core/juce_core.h>

namespace bench
{

/** A row of a season's list, the eleven columns that studios send: start, end, text, character, prefix, actor, cue number, notes,
    engineering notes, reason, done. About 170 bytes. */
using SeasonRow = std::array<std::string, 11>;

/** The list in the order of time. The same for the same number, on every machine. */
std::vector<SeasonRow> seasonRows (int number);

/** Writes the list in every form that is compared into a folder: list.csv, list.srt, list.stl, list.dbf, list.ttal, list.md, list.xlsx, and
    shuffled.csv, the same rows in no order. */
void makeLists (const juce::File& folder, int rows);

/** The project of a table, in the order of its rows, sorted by nothing yet. It is the current one afterwards. */
ZEP::Overmarks::Project projectOfTable (const juce::String& path);

/** What a user types into the filter. Every seventieth text has it. */
inline constexpr auto filteredWords = "captain never";

} // namespace bench
