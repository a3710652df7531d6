// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <limits>
#include <string>
#include <vector>

namespace overmarks
{

/** A table for a person: aligned columns under their titles, which fit the terminal, or whole lines into a pipe. */
class TextTable final
{
public:
    static constexpr int keepsItsWidth = std::numeric_limits<int>::max();

    /** How a column behaves on a terminal that is too narrow for the table. Widest columns give way first. */
    struct Column
    {
        juce::String title;
        int narrowest = 6; ///< the width down to which it gives way; keepsItsWidth for whole cells only
        int isLeftOutAs =
            0; ///< when all have given way, the greatest of these numbers goes first; 0 always stays.
               ///< Where it stands empty it goes in any case.
    };

    explicit TextTable (const std::vector<juce::String>& titles);
    explicit TextTable (std::vector<Column> columnsToShow);

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

    std::vector<int> widestCells (int limit) const;
    std::vector<int> fittedWidths (int lineWidth) const;
    void squeeze (std::vector<int>& widths, int lineWidth) const;
    bool isEmpty (std::size_t column) const;
    bool leaveOutOne (std::vector<int>& widths) const;
    std::string line (const std::vector<juce::String>& cells, const std::vector<int>& widths,
                      bool cutsCells) const;

    std::vector<Column> columns;
    std::vector<Row> rows;
};

/** Whether standard output is a terminal that shows colours, and its user wants them. */
bool standardOutputTakesColours();

} // namespace overmarks
