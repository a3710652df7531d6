// SPDX-License-Identifier: GPL-3.0-only
#include "export/frame/CellTexts.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "export/ExportSupport.h"

using namespace ExportSupport;

namespace
{

class CellTextsTest : public ExportTest
{
};

TEST_F (CellTextsTest, flagsAreYesOrNo)
{
    EXPECT_STREQ (CellTexts::yesOrNo (true), "Yes");
    EXPECT_STREQ (CellTexts::yesOrNo (false), "No");
}

TEST_F (CellTextsTest, regionsHaveTheirNames)
{
    const std::pair<int, const char*> names[] = { { 0, "Bottom" }, { 1, "Top" },   { 2, "Left" },
                                                  { 3, "Right" },  { 4, "Right" }, { -1, "Right" } };

    for (const auto& [region, name] : names)
        EXPECT_STREQ (CellTexts::region (static_cast<ForcedNarrativeRegion> (region)), name);
}

TEST_F (CellTextsTest, aDurationIsATimecode)
{
    EXPECT_EQ (CellTexts::duration (event ({ "1", 100, 137 })), "00:00:01:12");
}

TEST_F (CellTextsTest, aReasonHasItsName)
{
    const auto cue = event ({ "1" });
    EXPECT_EQ (CellTexts::reason (cue), "None");
    cue->setReason (4);
    EXPECT_EQ (CellTexts::reason (cue),
               ZEP::Core::ADRCueReasonsManager::sharedManager()->getReasonFromInteger (5));
}

} // namespace
