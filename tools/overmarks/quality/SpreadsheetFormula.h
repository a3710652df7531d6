// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

namespace overmarks
{

/** Whether a spreadsheet that opens delimited text would work with this cell instead of showing it.

        first sign     a formula when
        =              anything but another "=" and signs that mean nothing follows
        + - @          it calls a function, reaches out of the sheet, or is arithmetic: numbers and cells with signs between them

    Tabs and line ends before it are passed over, and the wide forms of these signs count as well. A dash before a line of dialogue is
    no formula, nor is a number with its sign. */
bool isSpreadsheetFormula (const juce::String& cell);

} // namespace overmarks
