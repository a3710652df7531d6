// SPDX-License-Identifier: GPL-3.0-only
#include "export/CueSheetTakeBoxes.h"

#include "export/ExportSupport.h"

using namespace ExportSupport;

namespace
{

class CueSheetTakeBoxesTest : public ExportTest
{
protected:
    std::string boxes (int takes, int selected = -1, int alternative = -1) const
    {
        const auto cue = event ({});
        cue->setNumRecordedTakes (takes);
        cue->setSelectedTake (selected);
        cue->setAltTake (alternative);
        std::string page;
        appendTakeNumberBoxes (page, *cue);
        return page;
    }

    static std::size_t count (const std::string& page, const std::string& part)
    {
        std::size_t found = 0;

        for (auto at = page.find (part); at != std::string::npos; at = page.find (part, at + 1))
            ++found;

        return found;
    }
};

std::string box (int number, const std::string& style = {})
{
    return "<div class=\"takeNumberBox\"" + style + ">" + std::to_string (number) + "</div>";
}

const std::string rounded = "style=\"border-radius: 0px 0px 0px 10px;\"";
const std::string closing = "style=\"border-right: 0px;\"";

} // namespace

TEST_F (CueSheetTakeBoxesTest, anEventWithTwentyFiveTakesHasOneRow)
{
    std::string row = "<div class=\"takeNumberBoxContainer\">" + box (1, rounded);

    for (int number = 2; number < 25; ++number)
        row += box (number);

    EXPECT_EQ (boxes (25), row + box (25, closing) + "</div>");
}

TEST_F (CueSheetTakeBoxesTest, anEventWithTwentySixTakesHasTwoRowsOfWhichTheSecondIsRound)
{
    std::string rows = "<div class=\"takeNumberBoxContainer\">";

    for (int number = 1; number < 25; ++number)
        rows += box (number);

    rows += box (25, closing) + "</div><div class=\"takeNumberBoxContainer\">" + box (26, rounded);

    for (int number = 27; number < 50; ++number)
        rows += box (number);

    EXPECT_EQ (boxes (26), rows + box (50, closing) + "</div>");
}

TEST_F (CueSheetTakeBoxesTest, anEventWithoutTakesStillHasAllOfTheFirstRow)
{
    EXPECT_EQ (boxes (0), boxes (25));
}

TEST_F (CueSheetTakeBoxesTest, moreThanFiftyTakesHaveFiftyBoxes) { EXPECT_EQ (boxes (80), boxes (26)); }

TEST_F (CueSheetTakeBoxesTest, theChosenTakesAreMarkedAsTheirNumbersStand)
{
    const auto page = boxes (10, 3, 7);
    EXPECT_EQ (count (page, "<div class=\"takeNumberBox\">2</div>"
                            "<div class=\"takeNumberBoxSelected\">Sel</div>"
                            "<div class=\"takeNumberBox\">4</div>"),
               1u);
    EXPECT_EQ (count (page, "<div class=\"takeNumberBoxAlt\">Alt</div><div class=\"takeNumberBox\">8</div>"),
               1u);
    EXPECT_EQ (count (page, "Sel</div>") + count (page, "Alt</div>"), 2u);
}

TEST_F (CueSheetTakeBoxesTest, selectedTakeSixtyMarksNoBox) { EXPECT_EQ (boxes (60, 60), boxes (60)); }

TEST_F (CueSheetTakeBoxesTest, takeZeroMarksNoBox) { EXPECT_EQ (boxes (5, 0, 0), boxes (5)); }

TEST_F (CueSheetTakeBoxesTest, aTakeThatIsBothIsTheSelectedOne)
{
    EXPECT_EQ (boxes (5, 2, 2), boxes (5, 2, -1));
}

TEST_F (CueSheetTakeBoxesTest, aMarkedBoxAtTheEdgeKeepsItsStyle)
{
    EXPECT_EQ (count (boxes (5, 1, 25), "<div class=\"takeNumberBoxSelected\"" + rounded + ">Sel</div>"), 1u);
    EXPECT_EQ (count (boxes (5, 1, 25), "<div class=\"takeNumberBoxAlt\"" + closing + ">Alt</div>"), 1u);
}
