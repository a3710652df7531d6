// SPDX-License-Identifier: GPL-3.0-only
//
// A panel, in units that become half a pixel on a screen and 0.14 mm on paper:
//
//     0             380                            1840    2000
//     |              | 01:00:00   01:05:00   ...    |       |   heading   48
//     | ANNA         |    -- -   ----               |  3/12 |   row       40
//     |              |-------------------------------       |
//     |              |  --         -                |       |
#include "statistics/WorkPicture.h"

#include "DisplayWidth.h"
#include "HTMLPage.h"
#include "statistics/TimeAxis.h"

#include <algorithm>
#include <utility>

namespace overmarks
{

namespace
{

constexpr int width = 2000, left = 380, right = 1840, heading = 48, rowHeight = 40, narrowestMark = 3;
constexpr int columnsOfAName = 24, columnsOfItsEnd = 8;

using Rows = std::vector<const CharacterWork*>;

std::string number (int value) { return std::to_string (value); }

std::string attribute (const char* name, int value)
{
    return std::string (" ") + name + "=\"" + number (value) + "\"";
}

std::string textAt (int x, int y, const char* anchor, const juce::String& words)
{
    return "<text" + attribute ("x", x) + attribute ("y", y) + " text-anchor=\"" + anchor + "\">"
           + HTMLPage::escaped (words) + "</text>";
}

/** The lines of a row that are done, or those that are open, as they fall into the columns of the picture. */
std::vector<std::pair<int, int>> marksOf (const CharacterWork& character, bool areDone, const TimeAxis& axis)
{
    std::vector<std::pair<int, int>> all, merged;

    for (const auto& line : character.stretches)
        if (line.isDone == areDone)
        {
            const auto from = axis.columnOf (line.from);
            all.emplace_back (from, std::max (axis.columnOf (line.to), from + narrowestMark));
        }

    std::sort (all.begin(), all.end());

    for (const auto& mark : all)
        if (merged.empty() || mark.first >= merged.back().second)
            merged.push_back (mark);
        else
            merged.back().second = std::max (merged.back().second, mark.second);

    return merged;
}

/** Strokes along a row. A wide one leaves a hair's breadth to its neighbour. */
std::string strokes (const std::vector<std::pair<int, int>>& marks, int y)
{
    constexpr int wide = 8;
    std::string path;

    for (const auto& [from, to] : marks)
        path +=
            "M" + number (from) + " " + number (y) + "h" + number (to - from - (to - from > wide ? 1 : 0));

    return path;
}

std::string lineOfPath (const char* look, const std::string& path)
{
    return path.empty() ? std::string() : std::string ("<path class=\"") + look + "\" d=\"" + path + "\"/>";
}

/** A name as it fits before its row. What it begins and ends with tells it from others, "POLICEMAN 12" from "POLICEMAN 13". */
juce::String shortened (const juce::String& name)
{
    if (displayWidth (name) <= columnsOfAName)
        return name;

    auto start = name.substring (0, columnsOfAName), end = name.getLastCharacters (columnsOfAName);

    while (displayWidth (start) >= columnsOfAName - columnsOfItsEnd)
        start = start.dropLastCharacters (1);
    while (end.isNotEmpty()
           && (displayWidth (end) > columnsOfItsEnd || displayWidth (end.substring (0, 1)) == 0))
        end = end.substring (1);

    return start + juce::String::charToString (0x2026) + end;
}

std::string row (const CharacterWork& character, const TimeAxis& axis, int top)
{
    const auto middle = top + rowHeight / 2;
    const auto& amount = character.amount;
    const auto name = character.shownName().replaceCharacters ("\r\n\t", "   ");
    const auto tally = juce::String (amount.done) + "/" + juce::String (amount.lines);
    return "<g><title>" + HTMLPage::escaped (name + ": " + tally + " done") + "</title>"
           + textAt (0, middle + 7, "start", shortened (name)) + textAt (width, middle + 7, "end", tally)
           + lineOfPath ("apart", "M" + number (left) + " " + number (top) + "H" + number (right))
           + lineOfPath ("base", "M" + number (left) + " " + number (middle) + "H" + number (right))
           + lineOfPath ("open", strokes (marksOf (character, false, axis), middle - 7))
           + lineOfPath ("done", strokes (marksOf (character, true, axis), middle + 7)) + "</g>\n";
}

/** What stands behind the rows: the stretches of time that the picture shows, and its ticks. */
std::string background (const TimeAxis& axis, int height)
{
    std::string svg, ticks, labels;

    for (const auto& segment : axis.getSegments())
        svg += "<rect class=\"time\"" + attribute ("x", segment.left) + attribute ("y", heading)
               + attribute ("width", segment.right - segment.left) + attribute ("height", height - heading)
               + "/>";

    for (const auto& tick : axis.getTicks())
    {
        ticks += "M" + number (tick.column) + " " + number (heading - 8) + "V" + number (height);

        if (tick.label.isNotEmpty())
            labels += textAt (tick.column, heading - 16, "middle", tick.label);
    }

    return svg + lineOfPath ("tick", ticks) + labels + "\n";
}

std::string panel (Rows::const_iterator first, Rows::const_iterator end, const TimeAxis& axis)
{
    const auto height = heading + rowHeight * static_cast<int> (end - first);
    std::string svg = "<figure class=\"panel\"><svg viewBox=\"0 0 " + number (width) + " " + number (height)
                      + "\" role=\"img\" aria-label=\"Characters against time\">\n"
                      + background (axis, height);

    for (auto top = heading; first != end; ++first, top += rowHeight)
        svg += row (**first, axis, top);

    return svg + "</svg></figure>";
}

/** The characters that have something to draw; of too many those with the most lines, in their order. */
Rows rowsOf (const Statistics& statistics, std::size_t& leftOut)
{
    Rows rows;

    for (const auto& character : statistics.characters)
        if (! character.stretches.empty())
            rows.push_back (&character);

    leftOut = rows.size() > WorkPicture::mostRows ? rows.size() - WorkPicture::mostRows : 0;

    if (leftOut > 0)
    {
        std::stable_sort (rows.begin(), rows.end(),
                          [] (const CharacterWork* a, const CharacterWork* b)
                          { return a->amount.lines > b->amount.lines; });
        rows.resize (WorkPicture::mostRows);
        std::sort (rows.begin(), rows.end()); // all of one vector
    }

    return rows;
}

/** The two parts of a bar; what there is at all is seen. */
std::string partsOf (const Amount& amount, int length, int height)
{
    if (amount.lines == 0)
        return {};

    const auto exact = juce::roundToInt (doneShare (amount) * length);
    const auto done = amount.done == 0     ? 0
                      : amount.open() == 0 ? length
                                           : juce::jlimit (2, length - 2, exact);
    const auto part = [height] (const char* look, int x, int partLength)
    {
        return partLength == 0
                   ? std::string()
                   : std::string ("<rect class=\"") + look + "\"" + attribute ("x", x) + " y=\"0\""
                         + attribute ("width", partLength) + attribute ("height", height) + "/>";
    };
    return part ("done", 0, done) + part ("open", done, length - done)
           + lineOfPath ("hatch",
                         [&]
                         {
                             std::string hatching;
                             const auto step = height;

                             for (int x = done + step / 2; x + step / 2 < length; x += step)
                                 hatching += "M" + number (x) + " " + number (height) + "l"
                                             + number (step / 2) + "-" + number (height);

                             return hatching;
                         }());
}

} // namespace

WorkPicture::WorkPicture (const Statistics& statistics)
{
    const auto rows = rowsOf (statistics, rowsLeftOut);

    if (rows.empty())
        return;

    TimeAxis::Stretches lines;

    for (const auto* character : rows)
        for (const auto& line : character->stretches)
            lines.emplace_back (line.from, line.to);

    const TimeAxis axis (std::move (lines), statistics.timeInfo, left, right - left);

    // No panel of a few rows behind full ones.
    const auto number = (rows.size() + rowsOfAPanel - 1) / rowsOfAPanel;

    for (std::size_t i = 0; i < number; ++i)
    {
        const auto at = [&] (std::size_t place)
        { return rows.begin() + static_cast<Rows::difference_type> (rows.size() * place / number); };
        panels.push_back (panel (at (i), at (i + 1), axis));
    }
}

std::string WorkPicture::bar (const Amount& amount)
{
    return "<svg class=\"bar\" viewBox=\"0 0 120 12\" aria-hidden=\"true\">" + partsOf (amount, 120, 12)
           + "</svg>";
}

std::string WorkPicture::legend (const Amount& total)
{
    const auto part = [&total] (int lines, const char* word)
    {
        return juce::String (lines) + " " + word + " ("
               + percentOf (total.lines > 0 ? static_cast<double> (lines) / total.lines : 0.0) + ")";
    };
    return "<svg class=\"all\" viewBox=\"0 0 2000 40\" role=\"img\" aria-label=\"Done and open lines\">"
           + partsOf (total, 2000, 40)
           + "</svg>\n<p class=\"legend\"><svg class=\"key\" viewBox=\"0 0 24 12\" aria-hidden=\"true\">"
           + partsOf ({ 1, 0, 1, 0, 0, 0 }, 24, 12) + "</svg> "
           + HTMLPage::escaped (part (total.done, "done"))
           + " <svg class=\"key\" viewBox=\"0 0 24 12\" aria-hidden=\"true\">"
           + partsOf ({ 1, 0, 0, 0, 0, 0 }, 24, 12) + "</svg> "
           + HTMLPage::escaped (part (total.open(), "open")) + "</p>";
}

} // namespace overmarks
