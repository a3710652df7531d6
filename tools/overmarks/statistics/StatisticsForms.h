// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Session.h"
#include "statistics/Statistics.h"

#include <string>

namespace overmarks
{

// The numbers of a list for a person at a terminal, for a program, and for a spreadsheet.

/** Tables of the characters, the actors and the reels, with an empty line between them. */
[[nodiscard]] std::string statisticsTables (const Statistics& statistics);

/** {"characters": [...], "actors": [...], "reels": [...], "total": {...}}. Names that nobody has are empty. */
[[nodiscard]] json statisticsAsJSON (const Statistics& statistics);

/** One table, whose first column tells what a row is about. */
[[nodiscard]] std::string statisticsAsCSV (const Statistics& statistics);

} // namespace overmarks
