// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

namespace overmarks
{

/** How many words a person has to speak, in any script.

    A word is a row of letters and digits. Apostrophes, hyphens and dots within it belong to it ("don't", "mother-in-law",
    "U.S.A", "3.50"), and so do commas and colons between digits ("10,000", "9:30"). Chinese characters and Japanese kana count
    one each, since these scripts leave no blanks; sound marks and punctuation don't count. Korean is counted by its blanks,
    and so are Thai, Lao, Khmer and Burmese, whose words only a dictionary would find. What isn't spoken, such as emoji, notes
    of music and the "**" for line breaks, is no word.

    Needs the character classes of the process's locale to be those of Unicode, as main() sets them. */
[[nodiscard]] int numberOfWords (const juce::String& text);

} // namespace overmarks
