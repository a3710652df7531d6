// SPDX-License-Identifier: GPL-3.0-only
#include "core/cast/ADRCueReasonsManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace
{
using testing::ElementsAre;
using ZEP::Core::ADRCueReasonsManager;

class Reasons : public testing::Test
{
protected:
    void SetUp() override { forget(); }
    void TearDown() override { forget(); }

    ADRCueReasonsManager& manager = *ADRCueReasonsManager::sharedManager();

private:
    void forget()
    {
        manager.resetCounters();
        manager.setUserReasonNames ({});
    }
};

struct DefaultReason
{
    int code;
    const char* codeText;
    const char* name;
};

const std::vector<DefaultReason> defaultReasons {
    { 2, "AR1", "New Line (AR1)" },
    { 3, "AR2", "Line Change (AR2)" },
    { 4, "AR3", "Alt Delivery (AR3)" },
    { 5, "AR4", "Clarity (AR4)" },
    { 6, "AR5", "Pronounciation (AR5)" },
    { 7, "AR6", "Projection (AR6)" },
    { 8, "AR7", "Accent (AR7)" },
    { 9, "AR8", "ADR Continuity (AR8)" },
    { 10, "AR9", "Dialogue Overlap (AR9)" },
    { 11, "AR10", "Breaths/Efforts (AR10)" },
    { 12, "AR11", "Voice Over (AR11)" },
    { 13, "AR12", "Temp ADR (AR12)" },
    { 14, "AR13", "Swearing (AR13)" },
    { 15, "AR14", "Revoice (AR14)" },
    { 16, "AR15", "Foreign Dubbing (AR15)" },
    { 17, "SR1", "Mic Off-Axis (SR1)" },
    { 18, "SR2", "Low Level (SR2)" },
    { 19, "SR3", "Distortion (SR3)" },
    { 20, "SR4", "Wind on Mic (SR4)" },
    { 21, "SR5", "Radio Mic Rustling (SR5)" },
    { 22, "SR6", "Boom Handling (SR6)" },
    { 23, "SR7", "Mic Drop-Out (SR7)" },
    { 24, "SR8", "Mic Interference (SR8)" },
    { 25, "SR9", "Missing Channel (SR9)" },
    { 26, "SR10", "Audible Sound Edit (SR10)" },
    { 27, "SR11", "Incorrect Sync Sound (SR11)" },
    { 28, "SR12", "No Sync Sound (SR12)" },
    { 29, "LR1", "Noisy Background (LR1)" },
    { 30, "LR2", "Camera & Crew (LR2)" },
    { 31, "LR3", "Footsteps (LR3)" },
    { 32, "LR4", "Props (LR4)" },
    { 33, "LR5", "Modern Sounds (LR5)" },
};

class EveryDefaultReason : public Reasons, public testing::WithParamInterface<DefaultReason>
{
};

class EveryUserReason : public Reasons, public testing::WithParamInterface<int>
{
protected:
    int code = GetParam() + 33;
    juce::String codeText = "UR" + juce::String (GetParam());
};
} // namespace

TEST_P (EveryDefaultReason, hasItsCodeAndItsName)
{
    const auto& reason = GetParam();

    EXPECT_TRUE (manager.isReasonCodeValid (reason.code));
    EXPECT_EQ (manager.getReasonFromInteger (reason.code), reason.name);
    EXPECT_EQ (manager.getReasonFromString (reason.name), reason.code);
    EXPECT_EQ (manager.codeText (reason.code), reason.codeText);
}

TEST_P (EveryDefaultReason, isKnownByItsShortFormInAnyCase)
{
    const juce::String codeText (GetParam().codeText);

    EXPECT_EQ (manager.codeForCodeText (codeText), GetParam().code);
    EXPECT_EQ (manager.codeForCodeText (codeText.toLowerCase()), GetParam().code);
    EXPECT_EQ (manager.codeForCodeText ("  " + codeText + "\t"), GetParam().code);
}

TEST_P (EveryDefaultReason, passesThroughTheEdiCueExchangeInUpperCase)
{
    const juce::String codeText (GetParam().codeText);

    EXPECT_EQ (manager.mapEdiCueReasonCodeToDublaneReason (codeText), codeText);
    EXPECT_EQ (manager.mapEdiCueReasonCodeToDublaneReason (" " + codeText.toLowerCase() + " "), codeText);
}

INSTANTIATE_TEST_SUITE_P (Reasons, EveryDefaultReason, testing::ValuesIn (defaultReasons),
                          [] (const auto& reason) { return std::string (reason.param.codeText); });

TEST_P (EveryUserReason, isValidAndReadsNoneWithoutAName)
{
    EXPECT_TRUE (manager.isReasonCodeValid (code));
    EXPECT_EQ (manager.getReasonFromInteger (code), "None");
    EXPECT_EQ (manager.codeText (code), codeText);
    EXPECT_EQ (manager.codeForCodeText (codeText.toLowerCase()), code);
    EXPECT_EQ (manager.mapEdiCueReasonCodeToDublaneReason (codeText.toLowerCase()), codeText);
}

TEST_P (EveryUserReason, isNamedByTheApplication)
{
    std::vector<juce::String> names (8);
    names[static_cast<std::size_t> (GetParam() - 1)] = "Rights";
    manager.setUserReasonNames (names);

    EXPECT_EQ (manager.getReasonFromInteger (code), "Rights");
    EXPECT_EQ (manager.getReasonFromString ("Rights"), code);
    EXPECT_EQ (manager.getReasonFromString ("Rights (" + codeText + ")"), code);
    EXPECT_EQ (manager.userReasonNames(), names);
}

INSTANTIATE_TEST_SUITE_P (Reasons, EveryUserReason, testing::Range (1, 9),
                          [] (const auto& reason) { return "UR" + std::to_string (reason.param); });

TEST_F (Reasons, noneIsCodeOne)
{
    EXPECT_EQ (manager.getReasonFromInteger (1), "None");
    EXPECT_EQ (manager.getReasonFromString ("None"), 1);
    EXPECT_TRUE (manager.isReasonCodeValid (1));
    EXPECT_EQ (manager.codeText (1), "");
}

TEST_F (Reasons, codesOutsideTheTableAreNotValidAndReadNone)
{
    for (const int code :
         { 0, -1, 42, 1000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max() })
    {
        EXPECT_FALSE (manager.isReasonCodeValid (code)) << code;
        EXPECT_EQ (manager.getReasonFromInteger (code), "None") << code;
        EXPECT_EQ (manager.codeText (code), "") << code;
    }
}

TEST_F (Reasons, anUnknownNameIsUnset)
{
    for (const auto* name : { "", "none", "Clarity", "clarity (AR4)", "AR4", " None", "(UR1)", " (UR1)" })
        EXPECT_EQ (manager.getReasonFromString (name), 0) << name;
}

TEST_F (Reasons, anUnknownShortFormIsUnset)
{
    for (const auto* text :
         { "", "  ", "AR", "AR0", "AR16", "SR13", "LR6", "UR0", "UR9", "AR 4", "AR04", "SUP" })
        EXPECT_EQ (manager.codeForCodeText (text), 0) << text;
}

TEST_F (Reasons, aUserReasonCannotTakeTheNameOfADefault)
{
    manager.setUserReasonNames ({ "None", "Clarity (AR4)", "Same", "Same" });

    EXPECT_EQ (manager.getReasonFromString ("None"), 1);
    EXPECT_EQ (manager.getReasonFromString ("Clarity (AR4)"), 5);
    EXPECT_EQ (manager.getReasonFromString ("Same"), 36);
    EXPECT_EQ (manager.getReasonFromString ("Same (UR4)"), 37);
}

TEST_F (Reasons, blankNamesAreNoNamesAndNamesBeyondTheEighthAreDropped)
{
    manager.setUserReasonNames ({ "  Rights  ", "   ", "", "4", "5", "6", "7", "8", "9" });

    EXPECT_THAT (manager.userReasonNames(), ElementsAre ("Rights", "", "", "4", "5", "6", "7", "8"));
    EXPECT_EQ (manager.getReasonFromInteger (35), "None");
    EXPECT_EQ (manager.getReasonFromString ("9"), 0);
}

TEST_F (Reasons, aNewListOfNamesReplacesTheFormerOne)
{
    manager.setUserReasonNames ({ "A", "B" });
    manager.setUserReasonNames ({ "C" });

    EXPECT_EQ (manager.getReasonFromInteger (34), "C");
    EXPECT_EQ (manager.getReasonFromInteger (35), "None");
}

TEST_F (Reasons, countsUses)
{
    manager.incrementReasonCounter (5);
    manager.incrementReasonCounter (5);
    manager.incrementReasonCounter (41);

    EXPECT_EQ (manager.reasonCount (5), 2);
    EXPECT_EQ (manager.reasonCount (41), 1);
    EXPECT_EQ (manager.reasonCount (6), 0);

    manager.resetCounters();
    EXPECT_EQ (manager.reasonCount (5), 0);
}

TEST_F (Reasons, codesThatAreNotValidCountNothing)
{
    for (const int code : { 0, -1, 42, std::numeric_limits<int>::max() })
    {
        manager.incrementReasonCounter (code);
        EXPECT_EQ (manager.reasonCount (code), 0) << code;
    }
}

TEST_F (Reasons, ranksByUseAndThenByCode)
{
    manager.setUserReasonNames ({ {}, "Rights" });
    for (const int code : { 5, 5, 35, 35, 35, 3, 36 })
        manager.incrementReasonCounter (code);

    const auto ranked = manager.codesRankedByUse();

    ASSERT_EQ (ranked.size(), 34u);
    EXPECT_THAT (std::vector<int> (ranked.begin(), ranked.begin() + 6), ElementsAre (35, 5, 3, 1, 2, 4));
    EXPECT_EQ (ranked.back(), 33);
}

TEST_F (Reasons, listsWhatCanBeChosen)
{
    EXPECT_EQ (manager.allReasons().size(), 33u);
    manager.setUserReasonNames ({ {}, {}, "Rights" });

    const auto reasons = manager.allReasons();

    ASSERT_EQ (reasons.size(), 34u);
    EXPECT_EQ (reasons.front().code, 1);
    EXPECT_EQ (reasons.front().codeText, "");
    EXPECT_EQ (reasons.front().name, "None");
    EXPECT_EQ (reasons[4].code, 5);
    EXPECT_EQ (reasons[4].codeText, "AR4");
    EXPECT_EQ (reasons[4].name, "Clarity (AR4)");
    EXPECT_EQ (reasons.back().code, 36);
    EXPECT_EQ (reasons.back().codeText, "UR3");
    EXPECT_EQ (reasons.back().name, "Rights");
}

TEST_F (Reasons, everySpellingOfASupplementBecomesSup)
{
    for (const auto* text : { "S", "s", "SUP", "Sup", "SUPP", "supp", "SUPPLEMENT", "Supplement", "  sup\t" })
        EXPECT_EQ (manager.mapEdiCueReasonCodeToDublaneReason (text), "SUP") << text;
}

TEST_F (Reasons, otherEdiCueCodesComeBackAsGiven)
{
    for (const auto* text : { "", "  ", " tail ", "None", "SU", "SUPPL", "AR99", "%s%n", "new line" })
        EXPECT_EQ (manager.mapEdiCueReasonCodeToDublaneReason (text), text);
}

TEST_F (Reasons, thereIsOneManager)
{
    EXPECT_EQ (ADRCueReasonsManager::sharedManager(), ADRCueReasonsManager::sharedManager());
}
