// SPDX-License-Identifier: GPL-3.0-only
#include "TextTable.h"

#include "DisplayWidth.h"
#include "Session.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace overmarks
{

namespace
{

constexpr int gapBetweenColumns = 2;
constexpr int leftOut = -1;

// In a pipe a longer cell stands out of its column, so that one long text doesn't fill all other lines with blanks.
constexpr int widestInAPipe = 100;

/** What the shown columns take, with the gaps between them. */
int lengthOfLine (const std::vector<int>& widths)
{
    int length = 0;

    for (const int width : widths)
        if (width != leftOut)
            length += width + (length > 0 ? gapBetweenColumns : 0);

    return length;
}

} // namespace

bool standardOutputTakesColours()
{
    const auto setting = [] (const char* name)
    {
        const auto* value = std::getenv (name);
        return std::string_view (value != nullptr ? value : "");
    };
    return isatty (STDOUT_FILENO) != 0 && setting ("NO_COLOR").empty() && setting ("TERM") != "dumb";
}

TextTable::TextTable (const std::vector<juce::String>& titles)
{
    for (const auto& title : titles)
        columns.push_back ({ title });
}

TextTable::TextTable (std::vector<Column> columnsToShow) : columns (std::move (columnsToShow)) {}

void TextTable::addRow (const std::vector<juce::String>& cells, bool isDimmed)
{
    Row row { {}, isDimmed };

    for (std::size_t i = 0; i < columns.size(); ++i)
        row.cells.push_back (i < cells.size() ? printable (cells[i]) : juce::String());

    rows.push_back (std::move (row));
}

// ---- widths --------------------------------------------------------------------------------------------------------------

std::vector<int> TextTable::widestCells (int limit) const
{
    std::vector<int> widths;

    for (std::size_t i = 0; i < columns.size(); ++i)
    {
        int width = displayWidth (columns[i].title);

        for (const auto& row : rows)
            width = std::max (width, displayWidth (row.cells[i]));

        widths.push_back (std::min (width, limit));
    }

    return widths;
}

bool TextTable::isEmpty (std::size_t column) const
{
    return std::all_of (rows.begin(), rows.end(),
                        [column] (const Row& row) { return row.cells[column].isEmpty(); });
}

bool TextTable::leaveOutOne (std::vector<int>& widths) const
{
    int greatest = 0;
    std::size_t goes = 0;

    for (std::size_t i = 0; i < columns.size(); ++i)
        if (widths[i] != leftOut && columns[i].isLeftOutAs > greatest)
        {
            greatest = columns[i].isLeftOutAs;
            goes = i;
        }

    if (greatest > 0)
        widths[goes] = leftOut;

    return greatest > 0;
}

void TextTable::squeeze (std::vector<int>& widths, int lineWidth) const
{
    for (int excess = lengthOfLine (widths) - lineWidth; excess > 0; --excess)
    {
        int* widest = nullptr;

        for (std::size_t i = 0; i < widths.size(); ++i)
            if (widths[i] > columns[i].narrowest && (widest == nullptr || widths[i] > *widest))
                widest = &widths[i];

        if (widest == nullptr)
            return;

        --*widest;
    }
}

std::vector<int> TextTable::fittedWidths (int lineWidth) const
{
    auto shown = widestCells (lineWidth);

    for (std::size_t i = 0; i < columns.size(); ++i)
        if (columns[i].isLeftOutAs > 0 && isEmpty (i))
            shown[i] = leftOut;

    for (;;)
    {
        auto widths = shown;
        squeeze (widths, lineWidth);

        if (lengthOfLine (widths) <= lineWidth || ! leaveOutOne (shown))
            return widths;
    }
}

// ---- writing -------------------------------------------------------------------------------------------------------------

std::string TextTable::line (const std::vector<juce::String>& cells, const std::vector<int>& widths,
                             bool cutsCells) const
{
    std::string result;

    for (std::size_t i = 0; i < cells.size(); ++i)
        if (widths[i] != leftOut)
        {
            const auto blanks = widths[i] - displayWidth (cells[i]);
            const auto cell = blanks < 0 && cutsCells ? fitted (cells[i], widths[i]) : cells[i];
            result += cell.toRawUTF8();
            result.append (static_cast<std::size_t> (std::max (blanks, 0) + gapBetweenColumns), ' ');
        }

    result.erase (result.find_last_not_of (' ') + 1);
    return result;
}

std::string TextTable::text (int lineWidth, bool colours) const
{
    const bool fits = lineWidth > 0;
    const auto widths = fits ? fittedWidths (lineWidth) : widestCells (widestInAPipe);
    std::vector<juce::String> titles;

    for (const auto& column : columns)
        titles.push_back (column.title);

    auto result = line (titles, widths, fits) + "\n";

    for (const auto& row : rows)
    {
        const bool dim = row.isDimmed && colours;
        result += (dim ? "\033[2m" : "") + line (row.cells, widths, fits) + (dim ? "\033[0m" : "") + "\n";
    }

    return result;
}

std::string TextTable::textForStandardOutput() const
{
    constexpr int usualWidth = 80;

    if (isatty (STDOUT_FILENO) == 0)
        return text (0, false);

    winsize size {};
    const bool isKnown = ioctl (STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return text (isKnown ? size.ws_col : usualWidth, standardOutputTakesColours());
}

} // namespace overmarks
