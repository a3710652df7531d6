// SPDX-License-Identifier: GPL-3.0-only
#include "import/frame/ReasonCellReader.h"

#include "core/cast/ADRCueReasonsManager.h"
#include "support/OvermarksTest.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ZEP::Overmarks::Testing
{
namespace
{

using Core::ADRCueReasonsManager;

class ReasonCellReaderTest : public OvermarksTest
{
protected:
    static void name (const std::vector<juce::String>& names)
    {
        ADRCueReasonsManager::sharedManager()->setUserReasonNames (names);
    }

    static void expectCodes (const std::vector<std::pair<std::string, std::optional<int>>>& cases)
    {
        ReasonCellReader reader;
        for (const auto& [cell, code] : cases)
            EXPECT_EQ (reader.read (cell), code) << cell;
    }

    // Codes of the table.
    static constexpr int none = 1, clarity = 5, breaths = 11, wind = 20, camera = 30, firstUser = 34,
                         secondUser = 35;
};

TEST_F (ReasonCellReaderTest, everyReasonIsFoundByItsNameAndItsCode)
{
    name ({ "Fan noise", "Second unit" });
    ReasonCellReader reader;

    for (const auto& reason : ADRCueReasonsManager::sharedManager()->allReasons())
    {
        EXPECT_EQ (reader.read (reason.name), reason.code) << reason.name;
        EXPECT_EQ (reader.read (reason.name.toUpperCase()), reason.code) << reason.name;

        if (reason.codeText.isNotEmpty())
        {
            EXPECT_EQ (reader.read (reason.codeText), reason.code) << reason.codeText;
            EXPECT_EQ (reader.read (" " + reason.codeText.toLowerCase() + " "), reason.code)
                << reason.codeText;
        }
    }
}

TEST_F (ReasonCellReaderTest, aReasonIsFoundByItsWordsAlone)
{
    expectCodes ({ { "Clarity", clarity },
                   { "clarity", clarity },
                   { "Breaths/Efforts", breaths },
                   { "  Wind on Mic ", wind },
                   { "Camera & Crew", camera } });
}

TEST_F (ReasonCellReaderTest, aCodeInBracketsCountsWhateverTheWordsBeforeIt)
{
    expectCodes ({ { "Clarity (AR4)", clarity },
                   { "Clarity [AR4]", clarity },
                   { "Deutlichkeit (ar4)", clarity },
                   { "[AR4]", clarity },
                   { "(AR4)", clarity },
                   { "Mumbles (a bit) (AR4)", clarity },
                   { "Clarity (AR4", std::nullopt },
                   { "Clarity AR4)", std::nullopt },
                   { "Clarity (AR99)", std::nullopt },
                   { "Clarity ()", std::nullopt } });
}

TEST_F (ReasonCellReaderTest, noneEmptyAndTheMarkOfASupplementAreNoReason)
{
    expectCodes ({ { "None", none },
                   { "none", none },
                   { "", none },
                   { "  ", none },
                   { "SUP", none },
                   { "sup", none } });
}

TEST_F (ReasonCellReaderTest, unknownWordsAndBareNumbersAreNotGuessedAt)
{
    expectCodes ({ { "Because", std::nullopt },
                   { "5", std::nullopt },
                   { "41", std::nullopt },
                   { "AR", std::nullopt },
                   { "AR16", std::nullopt },
                   { "UR9", std::nullopt } });
}

TEST_F (ReasonCellReaderTest, userReasonsWithNames)
{
    name ({ "Fan noise", "Clarity" });
    expectCodes ({ { "Fan noise", firstUser },
                   { "FAN NOISE", firstUser },
                   { "Fan noise (UR1)", firstUser },
                   { "fan noise [ur1]", firstUser },
                   { "UR1", firstUser },
                   { "Clarity (UR2)", secondUser },
                   { "Clarity (AR4)", clarity } });
}

TEST_F (ReasonCellReaderTest, aUserReasonWithoutANameIsFoundByItsCode)
{
    expectCodes ({ { "UR1", firstUser }, { " (UR1)", firstUser }, { "Fan noise (UR1)", firstUser } });
}

TEST_F (ReasonCellReaderTest, anotherProjectsUserReasonIsNotTakenForOneOfThisProject)
{
    name ({ "Fan noise" });
    expectCodes ({ { "Train passing (UR1)", std::nullopt }, { "Train passing (UR2)", secondUser } });
}

TEST_F (ReasonCellReaderTest, reasonsOfOtherLanguages)
{
    name ({ juce::String (juce::CharPointer_UTF8 ("L\xC3\xBC"
                                                  "fter")) });
    expectCodes ({ { "L\xC3\xBC"
                     "fter",
                     firstUser },
                   { "l\xC3\xBC"
                     "FTER",
                     firstUser } });
}

} // namespace
} // namespace ZEP::Overmarks::Testing
