// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

namespace overmarks
{

/** Columns of a terminal that a text takes: two for CJK and emoji, none for combining marks. */
int displayWidth (const juce::String& text);

/** The same of a single character. */
int displayWidth (juce::juce_wchar character);

/** The text in exactly `width` columns: filled with blanks, or cut with an ellipsis. */
juce::String fitted (const juce::String& text, int width);

} // namespace overmarks
