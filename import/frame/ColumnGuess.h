// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "core/text/RichTextString.h"

#include <juce_core/juce_core.h>

#include <map>
#include <vector>

namespace ZEP::Overmarks
{

/** The headers under which the trade knows a column. */
struct ColumnSynonyms
{
    juce::String columnTitle;  ///< one of EventFileImporter::columnTitles()
    juce::StringArray headers; ///< what a file may call it, in English and German; case plays no part
};

/** One line for every column title but "- unused -". No header stands in two lines. */
using ColumnSynonymTable = std::vector<ColumnSynonyms>;

/** The headers of delimited text, which templates of other formats extend. */
[[nodiscard]] const ColumnSynonymTable& columnSynonyms();

/** A copy of a table with more headers added behind those of their lines.
    @param more  lines of `table` with what is to be added; a line whose title isn't in `table` is ignored */
[[nodiscard]] ColumnSynonymTable withMoreSynonyms (ColumnSynonymTable table, const ColumnSynonymTable& more);

/** Guesses from the row of titles which column holds what.

    Quotes and square brackets around or inside a title are passed over, blanks are not. Where two columns match one title,
    the one further right is taken.
    @returns an entry for every line of the table; -1 where no column matched */
[[nodiscard]] std::map<juce::String, int> guessColumns (const std::vector<Core::RichTextString>& titleRow,
                                                        const ColumnSynonymTable& table);

} // namespace ZEP::Overmarks
