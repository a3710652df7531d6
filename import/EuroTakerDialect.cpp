// SPDX-License-Identifier: GPL-3.0-only
// The EuroTaker dialect of CSVEventFileImporter: a row for each take, with a column for each marker.
//
// title       content
// TakeNr      name of the take
// In, Out     timecodes of the take
// ...Marker.. any number of columns with the timecode of a subcue each; case matters
// Text        the pieces of dialogue, separated by "(X)": the first for the take, then one for each marker column; optional
#include "import/CSVEventFileImporter.h"

#include "import/TakerTable.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace ZEP::Overmarks
{
namespace
{

constexpr std::string_view kSeparator = "(X)";
constexpr auto kEventType = "ADR Cue";

/** The pieces of a text between the separators; the whole text if there is none. */
std::vector<juce::String> cutAtSeparators (const juce::String& dialogue)
{
    const std::string_view text (dialogue.toRawUTF8());
    std::vector<juce::String> pieces;

    for (std::size_t begin = 0; begin <= text.size();)
    {
        const auto end = std::min (text.find (kSeparator, begin), text.size());
        pieces.push_back (juce::String::fromUTF8 (text.data() + begin, static_cast<int> (end - begin)));
        begin = end == text.size() ? end + 1 : end + kSeparator.size();
    }

    return pieces;
}

void putText (TakerRow& row, std::int32_t column, const juce::String& text)
{
    if (column >= 0 && static_cast<std::size_t> (column) < row.size())
        row[static_cast<std::size_t> (column)] = text;
}

} // namespace

void CSVEventFileImporter::parseEuroTakerCSV()
{
    inColumn = outColumn = takeColumn = dialogColumn = -1;
    const auto markerColumns = findEuroTakerColumns();

    const auto rowsOfFile = rows.size();
    for (std::size_t index = 1; index < rowsOfFile; ++index)
        unfoldEuroTakerRow (index, markerColumns);

    sortTakerRows (rows, inColumn);
}

/** Sets the columns from the titles.
    @returns the columns of the markers, from the left */
std::vector<std::int32_t> CSVEventFileImporter::findEuroTakerColumns()
{
    std::vector<std::int32_t> markerColumns;
    const std::pair<const char*, std::int32_t*> titles[] = {
        { "In", &inColumn }, { "Out", &outColumn }, { "TakeNr", &takeColumn }, { "Text", &dialogColumn }
    };
    if (rows.empty())
        return markerColumns;

    std::int32_t column = 0;
    for (const auto& cell : rows.front())
    {
        if (cell.getText().contains ("Marker"))
            markerColumns.push_back (column);

        for (const auto& [title, destination] : titles)
            if (cell.getText() == title)
                *destination = column;

        ++column;
    }

    return markerColumns;
}

/** Leaves the first piece of the dialogue in the row, and adds a row for each marker that is set. */
void CSVEventFileImporter::unfoldEuroTakerRow (std::size_t index,
                                               const std::vector<std::int32_t>& markerColumns)
{
    const auto row = rows[index];
    const auto pieces = cutAtSeparators (takerCellText (row, dialogColumn));
    if (pieces.size() > 1)
        putText (rows[index], dialogColumn, pieces.front());

    for (std::size_t marker = 0; marker < markerColumns.size(); ++marker)
    {
        const auto& timecode = takerCellText (row, markerColumns[marker]);
        if (timecode.isEmpty())
            continue;
        if (! mayUnfold (1, row.size() + 1))
            return;

        auto subcue = row;
        for (const auto column : markerColumns)
            if (column != markerColumns[marker])
                putText (subcue, column, {});
        putText (subcue, inColumn, timecode);
        putText (subcue, dialogColumn, marker + 1 < pieces.size() ? pieces[marker + 1] : juce::String());
        subcue.emplace_back (juce::String (kEventType));
        rows.push_back (std::move (subcue));
    }
}

} // namespace ZEP::Overmarks
