// SPDX-License-Identifier: GPL-3.0-only
// What a session finds before its operator has changed anything. Written out here once more, apart from the
// table that registers it, so that no default changes unnoticed.
#include "preferences/PreferenceKeys.h"

#include "core/system/UserDefaults.h"
#include "preferences/PreferenceTable.h"
#include "preferences/UserDefaultsRegistrar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace
{
using namespace ZEP::Overmarks;
using ZEP::Core::UserDefaults;

juce::Colour rgba (float red, float green, float blue, float alpha)
{
    return juce::Colour::fromFloatRGBA (red, green, blue, alpha);
}

template <typename Value>
struct Default
{
    const std::string* key;
    const char* text;
    Value value;
};

template <typename Value>
std::string nameOf (const testing::TestParamInfo<Default<Value>>& info)
{
    return info.param.text;
}

const std::vector<Default<bool>> boolDefaults {
    { &EventBlackScreenBeforeInPointPrefKey, "EventBlackScreenBeforeInPoint", false },
    { &EventBlackScreenAfterOutPointPrefKey, "EventBlackScreenAfterOutPoint", false },
    { &StreamerDrawFinishingLinePrefKey, "StreamerDrawFinishingLine", false },
    { &StreamerPlayAudioBeepsPrefKey, "StreamerPlayAudioBeeps", true },
    { &PunchAfterStreamerPrefKey, "PunchAfterStreamer", true },
    { &ADRCueOverlayTextEnabledPrefKey, "ADRCueOverlayTextEnabled", true },
    { &ADRCueProgBarEnabledPrefKey, "ADRCueProgBarEnabled", true },
    { &ADRCuePlayAudioBeepsPrefKey, "ADRCuePlayAudioBeeps", true },
    { &CueNumberEnabledPrefKey, "CueNumberEnabled", true },
    { &ModeOverlayEnabledPrefKey, "ModeOverlayEnabled", true },
};

const std::vector<Default<int>> intDefaults {
    { &StreamerReferenceUnitPrefKey, "StreamerReferenceUnit", 1 },
    { &StreamerDefaultTempoPrefKey, "StreamerDefaultTempo", 120 },
    { &StreamerDefaultDurationPrefKey, "StreamerDefaultDuration", 2 },
    { &FlutterDefaultDurationPrefKey, "FlutterDefaultDuration", 1 },
    { &ADRCueDefaultDurationPrefKey, "ADRCueDefaultDuration", 2 },
    { &ADRCueDefaultPrimaryPrerollDurationPrefKey, "ADRCueDefaultPrimaryPrerollDuration", 3 },
    { &MarkerDefaultDurationPrefKey, "MarkerDefaultDuration", 2 },
    { &EventGoToModePrefKey, "EventGoToMode", 1 },
    { &EventDisplayModePrefKey, "EventDisplayMode", 0 },
    { &EventRecordModePrefKey, "EventRecordMode", 0 },
    { &StreamerDirectionPrefKey, "StreamerDirection", 0 },
    { &PunchFlutterSizePrefKey, "PunchFlutterSize", 2 },
    { &AudioBeepPitchPrefKey, "AudioBeepPitch", 1000 },
    { &ADRCueProgBarDirectionPrefKey, "ADRCueProgBarDirection", 1 },
    { &ADRCuePrerollStylePrefKey, "ADRCuePrerollStyle", 0 },
    { &ADRCueExpansionFramesAtInPointPrefKey, "ADRCueExpansionFramesAtInPoint", 0 },
    { &ADRCueExpansionFramesAtOutPointPrefKey, "ADRCueExpansionFramesAtOutPoint", 0 },
    { &ADRCueDefaultSecondaryPrerollDurationPrefKey, "ADRCueDefaultSecondaryPrerollDuration", 1 },
    { &ADRCuePrimaryStreamerDirectionPrefKey, "ADRCuePrimaryStreamerDirection", 1 },
    { &ADRCueSecondaryStreamerDirectionPrefKey, "ADRCueSecondaryStreamerDirection", 1 },
    { &CharActorOverlayModePrefKey, "CharActorOverlayMode", 1 },
    { &FadeInDurationInFramesPrefKey, "FadeInDurationInFrames", 0 },
    { &FadeOutDurationInFramesPrefKey, "FadeOutDurationInFrames", 0 },
};

const std::vector<Default<float>> floatDefaults {
    { &StreamerWidthPrefKey, "StreamerWidth", 0.06f },
    { &StreamerHeightPrefKey, "StreamerHeight", 1.0f },
    { &StreamerPosYPrefKey, "StreamerPosY", 0.0f },
    { &AudioBeepLevelPrefKey, "AudioBeepLevel", 1.0f },
    { &ADRCueFontSizeFactorPrefKey, "ADRCueFontSizeFactor", 0.08f },
    { &ADRCueOverlayYPosFactorPrefKey, "ADRCueOverlayYPosFactor", 0.1f },
    { &ADRCueOverlayXOffsetFactorPrefKey, "ADRCueOverlayXOffsetFactor", 0.0f },
    { &ADRCuePrimaryStreamerWidthPrefKey, "ADRCuePrimaryStreamerWidth", 0.02f },
    { &ADRCueSecondaryStreamerWidthPrefKey, "ADRCueSecondaryStreamerWidth", 0.01f },
    { &ADRCuePrimaryStreamerHeightPrefKey, "ADRCuePrimaryStreamerHeight", 0.8f },
    { &ADRCueSecondaryStreamerHeightPrefKey, "ADRCueSecondaryStreamerHeight", 0.4f },
    { &ADRCuePrimaryStreamerPosYPrefKey, "ADRCuePrimaryStreamerPosY", 0.1f },
    { &ADRCueSecondaryStreamerPosYPrefKey, "ADRCueSecondaryStreamerPosY", 0.3f },
    { &MarkerPosXPrefKey, "MarkerPosX", 0.5f },
    { &MarkerPosYPrefKey, "MarkerPosY", 0.25f },
    { &MarkerSizeFactorPrefKey, "MarkerSizeFactor", 0.15f },
    { &CharacterPosXPrefKey, "CharacterPosX", 0.05f },
    { &CharacterPosYPrefKey, "CharacterPosY", 0.9f },
    { &CharacterSizeFactorPrefKey, "CharacterSizeFactor", 0.07f },
    { &CueNumberPosXPrefKey, "CueNumberPosX", 0.85f },
    { &CueNumberPosYPrefKey, "CueNumberPosY", 0.9f },
    { &CueNumberSizeFactorPrefKey, "CueNumberSizeFactor", 0.05f },
    { &ModeOverlayPosXPrefKey, "ModeOverlayPosX", 0.5f },
    { &ModeOverlayPosYPrefKey, "ModeOverlayPosY", 0.9f },
    { &ModeOverlaySizeFactorPrefKey, "ModeOverlaySizeFactor", 0.08f },
};

const std::vector<Default<juce::Colour>> colourDefaults {
    { &StreamerColorPrefKey, "StreamerColor", rgba (0.0f, 1.0f, 0.0f, 1.0f) },
    { &PunchFlutterColorPrefKey, "PunchFlutterColor", rgba (1.0f, 1.0f, 1.0f, 1.0f) },
    { &ADRCueTextBackgroundColorPrefKey, "ADRCueTextBannerColor", rgba (0.1f, 0.1f, 0.1f, 1.0f) },
    { &ADRCueTextColorPrefKey, "ADRCueTextColor", rgba (1.0f, 1.0f, 1.0f, 1.0f) },
    { &ADRCueProgBarColorPrefKey, "ADRCueProgBarColor", rgba (0.3f, 0.3f, 0.3f, 1.0f) },
    { &ADRCuePrimaryStreamerColorPrefKey, "ADRCuePrimaryStreamerColor", rgba (0.0f, 1.0f, 0.0f, 1.0f) },
    { &ADRCueSecondaryStreamerColorPrefKey, "ADRCueSecondaryStreamerColor", rgba (1.0f, 1.0f, 0.0f, 1.0f) },
    { &MarkerTextBGColorPrefKey, "MarkerTextBGColor", rgba (0.2f, 0.2f, 0.2f, 1.0f) },
    { &MarkerTextColorPrefKey, "MarkerTextColor", rgba (1.0f, 1.0f, 1.0f, 1.0f) },
    { &CharacterTextColorPrefKey, "CharacterTextColor", rgba (1.0f, 0.0f, 0.0f, 1.0f) },
    { &CharacterTextBGColorPrefKey, "CharacterTextBGColor", rgba (0.4f, 0.4f, 0.4f, 0.8f) },
    { &CueNumberTextColorPrefKey, "CueNumberTextColor", rgba (0.0f, 0.0f, 1.0f, 1.0f) },
    { &CueNumberTextBGColorPrefKey, "CueNumberTextBGColor", rgba (0.4f, 0.4f, 0.4f, 0.8f) },
    { &ModeOverlayRecordColorPrefKey, "ModeOverlayRecordColor", rgba (1.0f, 0.0f, 0.0f, 1.0f) },
    { &ModeOverlayRehearseColorPrefKey, "ModeOverlayRehearseColor", rgba (1.0f, 1.0f, 0.0f, 1.0f) },
    { &ModeOverlayReviewColorPrefKey, "ModeOverlayReviewColor", rgba (0.0f, 1.0f, 0.0f, 1.0f) },
};

const std::vector<Default<const char*>> textDefaults {
    { &AudioBeepOutIdentifierPrefKey, "AudioBeepOutIdentifier", "" },
    { &ADRCueFontNamePrefKey, "ADRCueFontName", "Arial" },
    { &MarkerFontNamePrefKey, "MarkerFontName", "Arial" },
    { &CharacterFontNamePrefKey, "CharacterFontName", "Arial" },
    { &CueNumberFontNamePrefKey, "CueNumberFontName", "Arial" },
    { &ModeOverlayFontNamePrefKey, "ModeOverlayFontName", "Arial" },
    { &ModeOverlayRecordTextPrefKey, "ModeOverlayRecordText", "Recording" },
    { &ModeOverlayRehearseTextPrefKey, "ModeOverlayRehearseText", "Rehearsing" },
    { &ModeOverlayReviewTextPrefKey, "ModeOverlayReviewText", "Reviewing" },
};

class Registered : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE (UserDefaults::removeAllStoredValues());
        UserDefaultsRegistrar::registerUserDefaults();
    }
};

template <typename Value>
class RegisteredDefault : public Registered, public testing::WithParamInterface<Default<Value>>
{
protected:
    /** The default as the store holds it, which throws if it has another type. */
    template <typename Stored>
    Stored stored() const
    {
        return Poco::AnyCast<Stored> (UserDefaults::valueForKey (juce::String (*this->GetParam().key)));
    }
};

using BoolDefault = RegisteredDefault<bool>;
using IntDefault = RegisteredDefault<int>;
using FloatDefault = RegisteredDefault<float>;
using ColourDefault = RegisteredDefault<juce::Colour>;
using TextDefault = RegisteredDefault<const char*>;
} // namespace

TEST_P (BoolDefault, isRegisteredUnderItsKey)
{
    EXPECT_EQ (*GetParam().key, GetParam().text);
    EXPECT_EQ (stored<bool>(), GetParam().value);
    EXPECT_EQ (UserDefaults::getBoolForKey (*GetParam().key), GetParam().value);
}

TEST_P (IntDefault, isRegisteredUnderItsKey)
{
    EXPECT_EQ (*GetParam().key, GetParam().text);
    EXPECT_EQ (stored<int>(), GetParam().value);
    EXPECT_EQ (UserDefaults::getIntForKey (*GetParam().key), GetParam().value);
}

TEST_P (FloatDefault, isRegisteredUnderItsKey)
{
    EXPECT_EQ (*GetParam().key, GetParam().text);
    EXPECT_EQ (stored<float>(), GetParam().value);
    EXPECT_EQ (UserDefaults::getFloatForKey (*GetParam().key), GetParam().value);
}

TEST_P (ColourDefault, isRegisteredUnderItsKey)
{
    EXPECT_EQ (*GetParam().key, GetParam().text);
    EXPECT_EQ (stored<juce::Colour>(), GetParam().value);
    EXPECT_EQ (UserDefaults::getColourForKey (juce::String (*GetParam().key)), GetParam().value);
}

TEST_P (TextDefault, isRegisteredUnderItsKey)
{
    EXPECT_EQ (*GetParam().key, GetParam().text);
    EXPECT_EQ (stored<juce::String>(), GetParam().value);
    EXPECT_EQ (UserDefaults::getStringForKey (juce::String (*GetParam().key)), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P (Preferences, BoolDefault, testing::ValuesIn (boolDefaults), nameOf<bool>);
INSTANTIATE_TEST_SUITE_P (Preferences, IntDefault, testing::ValuesIn (intDefaults), nameOf<int>);
INSTANTIATE_TEST_SUITE_P (Preferences, FloatDefault, testing::ValuesIn (floatDefaults), nameOf<float>);
INSTANTIATE_TEST_SUITE_P (Preferences, ColourDefault, testing::ValuesIn (colourDefaults),
                          nameOf<juce::Colour>);
INSTANTIATE_TEST_SUITE_P (Preferences, TextDefault, testing::ValuesIn (textDefaults), nameOf<const char*>);

TEST_F (Registered, nothingElseIsRegistered)
{
    std::set<juce::String> expected;
    const auto add = [&] (const auto& defaults)
    {
        for (const auto& one : defaults)
            expected.insert (one.text);
    };
    add (boolDefaults);
    add (intDefaults);
    add (floatDefaults);
    add (colourDefaults);
    add (textDefaults);

    EXPECT_EQ (expected.size(), 83u);
    EXPECT_THAT (UserDefaults::registeredKeys(), testing::ElementsAreArray (expected));
}

TEST_F (Registered, theStoreConvertsTheTempo)
{
    EXPECT_EQ (UserDefaults::getIntForKey (StreamerDefaultDurationPrefKey), 2);
    EXPECT_EQ (UserDefaults::getFloatForKey (StreamerDefaultTempoPrefKey), 120.0f);
}

TEST_F (Registered, theBackgroundOfTheCueTextKeepsItsOldKey)
{
    EXPECT_EQ (ADRCueTextBackgroundColorPrefKey, "ADRCueTextBannerColor");
    EXPECT_TRUE (UserDefaults::valueForKey ("ADRCueTextBackgroundColor").empty());
    EXPECT_EQ (UserDefaults::getColourForKey ("ADRCueTextBannerColor"), rgba (0.1f, 0.1f, 0.1f, 1.0f));
}

TEST_F (Registered, whatTheUserStoredStays)
{
    ASSERT_TRUE (UserDefaults::setValueForKey (juce::String (StreamerDefaultDurationPrefKey), 333));
    UserDefaultsRegistrar::registerUserDefaults();
    EXPECT_EQ (UserDefaults::getIntForKey (StreamerDefaultDurationPrefKey), 333);

    ASSERT_TRUE (UserDefaults::removeValueForKey (juce::String (StreamerDefaultDurationPrefKey)));
    EXPECT_EQ (UserDefaults::getIntForKey (StreamerDefaultDurationPrefKey), 2);
}

TEST_F (Registered, theKeysWithoutADefaultAreUnknownUntilTheUserStoresThem)
{
    EXPECT_EQ (EventImportIgnoreOpenEndedPrefKey, "EventImportIgnoreOpenEnded");
    EXPECT_EQ (EventSubcueImportModePrefKey, "EventSubcueImportMode");
    EXPECT_TRUE (UserDefaults::valueForKey (juce::String (EventImportIgnoreOpenEndedPrefKey)).empty());
    EXPECT_TRUE (UserDefaults::valueForKey (juce::String (EventSubcueImportModePrefKey)).empty());
    EXPECT_FALSE (UserDefaults::getBoolForKey (EventImportIgnoreOpenEndedPrefKey));

    ASSERT_TRUE (UserDefaults::setValueForKey (juce::String (EventImportIgnoreOpenEndedPrefKey), true));
    EXPECT_TRUE (UserDefaults::getBoolForKey (EventImportIgnoreOpenEndedPrefKey));
    ASSERT_TRUE (UserDefaults::removeAllStoredValues());
}

TEST_F (Registered, theKeysOfTheFilterAreNoPreferences)
{
    const std::vector<std::pair<const std::string*, const char*>> keys {
        { &EventTextFilterKey, "EventTextFilter" },
        { &EventCueNumberFilterKey, "EventCueNumberFilter" },
        { &EventCharacterFilterKey, "EventCharacterFilter" },
        { &EventActorFilterKey, "EventActorFilter" },
        { &EventNumAdjacentCuesKey, "EventNumAdjacentCues" },
    };
    for (const auto& [key, text] : keys)
    {
        EXPECT_EQ (*key, text);
        EXPECT_TRUE (UserDefaults::valueForKey (text).empty());
    }
}
