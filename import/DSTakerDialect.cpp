// SPDX-License-Identifier: GPL-3.0-only
// The DS Taker dialect of CSVEventFileImporter: a row for each take or for each of its lines, the timecodes of the subcues packed
// into one cell, their dialogue run together in another.
//
// title       content
// Take        name of the take; lines that follow one another with the same name are one take
// In, Out     timecodes of the take
// Marker      "label timecode" of each subcue, separated by "/", on the first line of the take
// Dialog      the text of all subcues, cut by separators (DSTakerTake); optional
// Sprecher    the character; optional
#include "import/CSVEventFileImporter.h"

#include "core/system/Logger.h"
#include "import/DSTakerTake.h"
#include "import/TakerTable.h"

#include <utility>

namespace ZEP::Overmarks
{
namespace
{

/** The markers' cell with every two blanks made one; what was typed by hand has some too many. */
juce::String tidyMarkers (const juce::String& cell)
{
    auto text = cell.toStdString();
    stringReplaceAll (text, "  ", " ");
    return juce::String::fromUTF8 (text.data(), static_cast<int> (text.size()));
}

} // namespace

void CSVEventFileImporter::parseDSTakerCSV()
{
    inColumn = outColumn = takeColumn = speakerColumn = -1;
    const auto markerColumn = findDSTakerColumns();
    if (markerColumn < 0)
        return;

    pendingLines.clear();
    pendingMarkers.clear();
    juce::String currentTake;
    TakerTable table (rows);

    const auto rowsOfFile = rows.size();
    for (std::size_t index = 1; index < rowsOfFile; ++index)
    {
        const auto take = takerCellText (rows[index], takeColumn);

        if (! pendingMarkers.isEmpty() && take != currentTake)
        {
            unfoldPendingTake (table);
            pendingLines.clear();
            pendingMarkers.clear();
        }

        if (pendingMarkers.isEmpty())
        {
            pendingMarkers.addTokens (tidyMarkers (takerCellText (rows[index], markerColumn)), "/", "");
            if (pendingMarkers.isEmpty())
                continue;

            currentTake = take;
            pendingLines.clear();
        }

        pendingLines.push_back (rows[index]);
        table.removeEqual (pendingLines.back());
    }

    if (! pendingLines.empty())
        unfoldPendingTake (table);

    table.finish();
    sortTakerRows (rows, inColumn);
}

void CSVEventFileImporter::processDSTakerMarkers()
{
    TakerTable table (rows);
    unfoldPendingTake (table);
    sortTakerRows (rows, inColumn);
}

/** Sets the columns from the titles.
    @returns the column of the markers, -1 if there is none */
std::int32_t CSVEventFileImporter::findDSTakerColumns()
{
    std::int32_t markerColumn = -1;
    const std::pair<const char*, std::int32_t*> titles[] = {
        { "Marker", &markerColumn }, { "In", &inColumn },         { "Out", &outColumn },
        { "Take", &takeColumn },     { "Dialog", &dialogColumn }, { "Sprecher", &speakerColumn }
    };
    if (rows.empty())
        return markerColumn;

    const auto& titleRow = rows.front();
    for (std::size_t column = 0; column < titleRow.size(); ++column)
        for (const auto& [title, destination] : titles)
            if (titleRow[column].getText() == title)
                *destination = static_cast<std::int32_t> (column);

    return markerColumn;
}

/** Adds a row for each piece of the take's dialogue. */
void CSVEventFileImporter::unfoldPendingTake (TakerTable& table)
{
    Core::Logger::debug ("---------------------------------------------------");
    Core::Logger::debug ("Lines to process: ");
    Core::Logger::debug ("Markers: " + pendingMarkers.joinIntoString (", "));

    const bool onlyLine = pendingLines.size() == 1; // a piece for each marker then, however many were claimed
    const auto cells = pendingLines.empty() ? 0 : pendingLines.front().size();
    if (onlyLine && ! mayUnfold (static_cast<std::size_t> (pendingMarkers.size()) + 1, cells))
        return;

    const DSTakerTake take (pendingLines, pendingMarkers,
                            { inColumn, outColumn, takeColumn, dialogColumn, speakerColumn });
    const auto tokens = take.cutDialogue();
    if (! onlyLine && ! mayUnfold (tokens.size(), cells))
        return;

    for (const auto& token : tokens)
        table.append (take.rowFor (*token));
}

} // namespace ZEP::Overmarks
