// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <string>
#include <vector>

namespace overmarks
{

/** A table for a person: aligned columns under their titles, which fit the terminal, or whole lines into a pipe. */
class TextTable final
{
public:
    /** @param titles  one for each column; the columns that give way first when the line is too long are the widest */
    explicit TextTable (std::vector<juce::String> titles);

    /** @param isDimmed  shown faintly on a terminal, for what is there for orientation only */
    void addRow (const std::vector<juce::String>& cells, bool isDimmed = false);

    /** The whole table. @param lineWidth  columns of the terminal; 0 for no limit. @param colours  whether to dim rows */
    std::string text (int lineWidth, bool colours) const;

    /** The table for standard output as it is: fitted and dimmed on a terminal, plain otherwise. */
    std::string textForStandardOutput() const;

private:
    struct Row
    {
        std::vector<juce::String> cells;
        bool isDimmed;
    };

    std::vector<int> columnWidths (int lineWidth) const;

    std::vector<juce::String> columnTitles;
    std::vector<Row> rows;
};

} // namespace overmarks
