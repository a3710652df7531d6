// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

namespace overmarks
{

/** Whether a Word document that was written is too large to be imported again. Word processors go on where docxHandler stops.

    The text of a large one, some thousand cues, is unpacked and counted. */
bool isTooLargeToImport (const juce::File& document);

} // namespace overmarks
