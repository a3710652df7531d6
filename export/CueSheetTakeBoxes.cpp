// SPDX-License-Identifier: GPL-3.0-only
#include "export/CueSheetTakeBoxes.h"

#include <string_view>

namespace ZEP::Overmarks
{
namespace
{

constexpr int boxesInRow = 25;

void appendBox (std::string& page, const Event& event, int number, std::string_view style)
{
    const bool isSelected = number == event.getSelectedTake();
    const bool isAlternative = ! isSelected && number == event.getAltTake();
    page += R"(<div class="takeNumberBox)";
    page += isSelected ? "Selected" : isAlternative ? "Alt" : "";
    page += '"';
    page += style;
    page += '>';
    page += isSelected ? "Sel" : isAlternative ? "Alt" : std::to_string (number);
    page += "</div>";
}

} // namespace

void appendTakeNumberBoxes (std::string& page, const Event& event)
{
    const int rows = event.getNumRecordedTakes() <= boxesInRow ? 1 : 2;

    for (int row = 0; row < rows; ++row)
    {
        page += R"(<div class="takeNumberBoxContainer">)";

        for (int position = 0; position < boxesInRow; ++position)
        {
            std::string_view style;

            // The corner of the cue's frame is round, and the frame closes the row.
            if (position == 0 && row == rows - 1)
                style = R"(style="border-radius: 0px 0px 0px 10px;")";
            else if (position == boxesInRow - 1)
                style = R"(style="border-right: 0px;")";

            appendBox (page, event, row * boxesInRow + position + 1, style);
        }

        page += "</div>";
    }
}

} // namespace ZEP::Overmarks
