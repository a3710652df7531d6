// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/ColumnGuess.h"

namespace ZEP::Overmarks
{

const ColumnSynonymTable& columnSynonyms()
{
    static const ColumnSynonymTable table {
        { "Start TC",
          { "Start TC", "TC Start", "In TC", "TC In", "Start Timecode", "In Timecode", "Start", "In" } },
        { "End TC",
          { "End TC", "TC End", "Out TC", "TC Out", "End Timecode", "Out Timecode", "End", "Out" } },
        { "Text", { "Text", "Text Overlay", "Dialog" } },
        { "Character", { "Role", "Character", "Rolle", "Sprecher" } },
        { "Char Prefix", { "Char Prefix" } },
        { "Actor", { "Actor" } },
        { "Cue Number", { "Cue Number", "Cue No", "Clip Number", "Clip No", "TakeNr", "Take" } },
        { "Notes", { "Notes", "Typ", "Sub" } },
        { "Engineering Notes", { "Engineering Notes", "Anmerkung" } },
        { "Event Type", { "Event Type" } },
        { "Streamer Duration", { "Streamer Duration" } },
        { "Enabled", { "Enabled" } },
        { "Number of Takes", { "Number of Takes" } },
        { "BPM", { "BPM" } },
        { "Done", { "Done" } },
        { "Reason", { "Reason" } },
        { "Forced Narrative", { "Forced Narrative" } },
        { "FN Region", { "FN Region" } },
    };
    return table;
}

ColumnSynonymTable withMoreSynonyms (ColumnSynonymTable table, const ColumnSynonymTable& more)
{
    for (auto& line : table)
        for (const auto& addition : more)
            if (addition.columnTitle == line.columnTitle)
                line.headers.addArray (addition.headers);

    return table;
}

std::map<juce::String, int> guessColumns (const std::vector<Core::RichTextString>& titleRow,
                                          const ColumnSynonymTable& table)
{
    std::map<juce::String, int> columnMap;
    for (const auto& line : table)
        columnMap[line.columnTitle] = -1;

    for (std::size_t column = 0; column < titleRow.size(); ++column)
    {
        const auto title = titleRow[column].getText().removeCharacters ("\"[]");

        for (const auto& line : table)
            if (line.headers.contains (title, true))
                columnMap[line.columnTitle] = static_cast<int> (column);
    }

    return columnMap;
}

} // namespace ZEP::Overmarks
