// SPDX-License-Identifier: GPL-3.0-only
#include "import/TakerTable.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace ZEP::Overmarks
{

const juce::String& takerCellText (const TakerRow& row, std::int32_t column)
{
    static const juce::String none;

    if (column < 0 || static_cast<std::size_t> (column) >= row.size())
        return none;

    return row[static_cast<std::size_t> (column)].getText();
}

void sortTakerRows (std::vector<TakerRow>& rows, std::int32_t inColumn)
{
    const auto comesBefore = [inColumn] (const TakerRow& a, const TakerRow& b)
    {
        const auto& textOfA = takerCellText (a, inColumn);
        const auto& textOfB = takerCellText (b, inColumn);

        if (textOfB == "In")
            return false;
        return textOfA == "In" || textOfA < textOfB;
    };
    std::stable_sort (rows.begin(), rows.end(), comesBefore);
}

TakerTable::TakerTable (std::vector<TakerRow>& tableRows)
    : rows (tableRows),
      removed (tableRows.size(), false)
{
    for (std::size_t position = 0; position < rows.size(); ++position)
        positions[hashOf (rows[position])].push_back (position);
}

void TakerTable::removeEqual (const TakerRow& row)
{
    const auto alike = positions.find (hashOf (row));
    if (alike == positions.end())
        return;

    std::erase_if (alike->second,
                   [&] (std::size_t position)
                   {
                       const bool equal = rows[position] == row;
                       removed[position] = removed[position] || equal;
                       return equal;
                   });
}

void TakerTable::append (TakerRow row)
{
    positions[hashOf (row)].push_back (rows.size());
    removed.push_back (false);
    rows.push_back (std::move (row));
}

void TakerTable::finish()
{
    std::size_t kept = 0;
    for (std::size_t position = 0; position < rows.size(); ++position)
    {
        if (removed[position])
            continue;
        if (kept != position)
            rows[kept] = std::move (rows[position]);
        ++kept;
    }

    rows.resize (kept);
    removed.assign (kept, false);
    positions.clear();
}

std::size_t TakerTable::hashOf (const TakerRow& row)
{
    std::size_t hash = row.size();
    for (const auto& cell : row)
        hash = hash * 31 + std::hash<std::string_view>() (cell.getText().toRawUTF8());
    return hash;
}

} // namespace ZEP::Overmarks
