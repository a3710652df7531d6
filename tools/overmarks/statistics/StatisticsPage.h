// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "HTMLPage.h"
#include "statistics/Statistics.h"

#include <juce_core/juce_core.h>

namespace overmarks
{

/** The numbers of a list as a page: how far the work has come, who speaks when, and the tables. */
[[nodiscard]] HTMLPage statisticsPage (const Statistics& statistics, const juce::String& nameOfList);

} // namespace overmarks
