// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <optional>
#include <vector>

namespace ZEP::Overmarks
{

// Marks in the plain text of a cue sheet that has come through a word processor. They are found in one pass, whatever stands in
// the text. Positions count characters.

/** Where each cue begins: at two timecodes "00:00:00:00" with a line separator (U+2028) between, those that overlap one before left
    out. A cue with the timecodes of an earlier one has the place where these stand first in the text. */
[[nodiscard]] std::vector<int> cueStarts (const juce::String& text);

/** Where the printed boxes of the take numbers begin: at the line feed before the first of fifty lines in a row that hold one to
    three letters or digits each; the last of them may go on. Nothing without such lines. */
[[nodiscard]] std::optional<int> takeBoxesStart (const juce::String& text);

} // namespace ZEP::Overmarks
