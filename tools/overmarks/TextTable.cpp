// SPDX-License-Identifier: GPL-3.0-only
#include "TextTable.h"

#include "DisplayWidth.h"
#include "Session.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <utility>

namespace overmarks
{

namespace
{

constexpr int gapBetweenColumns = 2;
constexpr int narrowestColumn = 6;

} // namespace

TextTable::TextTable (std::vector<juce::String> titles) : columnTitles (std::move (titles)) {}

void TextTable::addRow (const std::vector<juce::String>& cells, bool isDimmed)
{
    Row row { {}, isDimmed };

    for (std::size_t i = 0; i < columnTitles.size(); ++i)
        row.cells.push_back (i < cells.size() ? printable (cells[i]) : juce::String());

    rows.push_back (std::move (row));
}

std::vector<int> TextTable::columnWidths (int lineWidth) const
{
    std::vector<int> widths;

    for (std::size_t i = 0; i < columnTitles.size(); ++i)
    {
        int width = displayWidth (columnTitles[i]);

        for (const auto& row : rows)
            width = std::max (width, displayWidth (row.cells[i]));

        widths.push_back (width);
    }

    if (lineWidth <= 0 || widths.empty())
        return widths;

    const int gaps = gapBetweenColumns * (static_cast<int> (widths.size()) - 1);
    int excess = std::accumulate (widths.begin(), widths.end(), gaps) - lineWidth;

    while (excess > 0)
    {
        const auto widest = std::max_element (widths.begin(), widths.end());

        if (*widest <= narrowestColumn)
            break;

        --*widest;
        --excess;
    }

    return widths;
}

std::string TextTable::text (int lineWidth, bool colours) const
{
    const auto widths = columnWidths (lineWidth);
    const auto line = [&widths] (const std::vector<juce::String>& cells)
    {
        juce::String result;

        for (std::size_t i = 0; i < cells.size(); ++i)
            result += fitted (cells[i], widths[i]) + juce::String::repeatedString (" ", gapBetweenColumns);

        return result.trimEnd().toStdString();
    };

    auto result = line (columnTitles) + "\n";

    for (const auto& row : rows)
    {
        const bool dim = row.isDimmed && colours;
        result += (dim ? "\033[2m" : "") + line (row.cells) + (dim ? "\033[0m" : "") + "\n";
    }

    return result;
}

std::string TextTable::textForStandardOutput() const
{
    if (isatty (STDOUT_FILENO) == 0)
        return text (0, false);

    winsize size {};
    const bool isKnown = ioctl (STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    const auto* noColour = std::getenv ("NO_COLOR");
    return text (isKnown ? size.ws_col : 80, noColour == nullptr || *noColour == 0);
}

} // namespace overmarks
