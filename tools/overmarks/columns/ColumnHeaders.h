// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "import/frame/EventFileImporter.h"

#include <juce_core/juce_core.h>

#include <optional>
#include <string>
#include <vector>

namespace overmarks
{

/** The titles that a column can be used for. */
std::vector<std::string> usableColumnTitles();

/** Index of the column that is meant by a header, or by #3 counted from 1. */
std::optional<int> columnWithHeader (const ZEP::Overmarks::EventFileImporter& importer,
                                     const std::string& header);

/** Throws WrongUsage for a header that an option names and the list doesn't have, with a suggestion. @param option  "--map" */
[[noreturn]] void refuseHeader (const std::string& option, const ZEP::Overmarks::EventFileImporter& importer,
                                const std::string& header);

/** The title that a column's header stands for in the trade, as far as that is known; it may mean something else to this studio, so
    nobody uses the column for it unasked. */
std::optional<std::string> titleHintedAtBy (const juce::String& header);

/** What is lost of a table: a line for each column that nobody reads, with what its header hints at. A column without any text is
    no loss. Nothing for a format whose columns are fixed. */
std::vector<juce::String> unusedColumns (ZEP::Overmarks::EventFileImporter& importer);

} // namespace overmarks
