// SPDX-License-Identifier: GPL-3.0-only
#include "preferences/PreferenceKeys.h"

#include "preferences/PreferenceRows.h"

namespace ZEP::Overmarks
{
const std::string StreamerReferenceUnitPrefKey = registeredKey ("StreamerReferenceUnit");
const std::string StreamerDefaultTempoPrefKey = registeredKey ("StreamerDefaultTempo");
const std::string StreamerDefaultDurationPrefKey = registeredKey ("StreamerDefaultDuration");
const std::string FlutterDefaultDurationPrefKey = registeredKey ("FlutterDefaultDuration");
const std::string ADRCueDefaultDurationPrefKey = registeredKey ("ADRCueDefaultDuration");
const std::string ADRCueDefaultPrimaryPrerollDurationPrefKey =
    registeredKey ("ADRCueDefaultPrimaryPrerollDuration");
const std::string MarkerDefaultDurationPrefKey = registeredKey ("MarkerDefaultDuration");

const std::string EventBlackScreenBeforeInPointPrefKey = registeredKey ("EventBlackScreenBeforeInPoint");
const std::string EventBlackScreenAfterOutPointPrefKey = registeredKey ("EventBlackScreenAfterOutPoint");
const std::string EventGoToModePrefKey = registeredKey ("EventGoToMode");
const std::string EventDisplayModePrefKey = registeredKey ("EventDisplayMode");
const std::string EventRecordModePrefKey = registeredKey ("EventRecordMode");

const std::string StreamerWidthPrefKey = registeredKey ("StreamerWidth");
const std::string StreamerHeightPrefKey = registeredKey ("StreamerHeight");
const std::string StreamerPosYPrefKey = registeredKey ("StreamerPosY");
const std::string StreamerColorPrefKey = registeredKey ("StreamerColor");
const std::string StreamerDirectionPrefKey = registeredKey ("StreamerDirection");
const std::string StreamerDrawFinishingLinePrefKey = registeredKey ("StreamerDrawFinishingLine");
const std::string StreamerPlayAudioBeepsPrefKey = registeredKey ("StreamerPlayAudioBeeps");

const std::string PunchFlutterColorPrefKey = registeredKey ("PunchFlutterColor");
const std::string PunchFlutterSizePrefKey = registeredKey ("PunchFlutterSize");
const std::string PunchAfterStreamerPrefKey = registeredKey ("PunchAfterStreamer");

const std::string AudioBeepLevelPrefKey = registeredKey ("AudioBeepLevel");
const std::string AudioBeepOutIdentifierPrefKey = registeredKey ("AudioBeepOutIdentifier");
const std::string AudioBeepPitchPrefKey = registeredKey ("AudioBeepPitch");

const std::string ADRCueOverlayTextEnabledPrefKey = registeredKey ("ADRCueOverlayTextEnabled");
// The one key whose text differs from its name: users have the old text in their settings.
const std::string ADRCueTextBackgroundColorPrefKey = registeredKey ("ADRCueTextBannerColor");
const std::string ADRCueTextColorPrefKey = registeredKey ("ADRCueTextColor");
const std::string ADRCueFontNamePrefKey = registeredKey ("ADRCueFontName");
const std::string ADRCueFontSizeFactorPrefKey = registeredKey ("ADRCueFontSizeFactor");
const std::string ADRCueOverlayYPosFactorPrefKey = registeredKey ("ADRCueOverlayYPosFactor");
const std::string ADRCueOverlayXOffsetFactorPrefKey = registeredKey ("ADRCueOverlayXOffsetFactor");
const std::string ADRCueProgBarEnabledPrefKey = registeredKey ("ADRCueProgBarEnabled");
const std::string ADRCueProgBarColorPrefKey = registeredKey ("ADRCueProgBarColor");
const std::string ADRCueProgBarDirectionPrefKey = registeredKey ("ADRCueProgBarDirection");
const std::string ADRCuePlayAudioBeepsPrefKey = registeredKey ("ADRCuePlayAudioBeeps");
const std::string ADRCuePrerollStylePrefKey = registeredKey ("ADRCuePrerollStyle");
const std::string ADRCueExpansionFramesAtInPointPrefKey = registeredKey ("ADRCueExpansionFramesAtInPoint");
const std::string ADRCueExpansionFramesAtOutPointPrefKey = registeredKey ("ADRCueExpansionFramesAtOutPoint");

const std::string ADRCueDefaultSecondaryPrerollDurationPrefKey =
    registeredKey ("ADRCueDefaultSecondaryPrerollDuration");
const std::string ADRCuePrimaryStreamerDirectionPrefKey = registeredKey ("ADRCuePrimaryStreamerDirection");
const std::string ADRCueSecondaryStreamerDirectionPrefKey =
    registeredKey ("ADRCueSecondaryStreamerDirection");
const std::string ADRCuePrimaryStreamerColorPrefKey = registeredKey ("ADRCuePrimaryStreamerColor");
const std::string ADRCueSecondaryStreamerColorPrefKey = registeredKey ("ADRCueSecondaryStreamerColor");
const std::string ADRCuePrimaryStreamerWidthPrefKey = registeredKey ("ADRCuePrimaryStreamerWidth");
const std::string ADRCueSecondaryStreamerWidthPrefKey = registeredKey ("ADRCueSecondaryStreamerWidth");
const std::string ADRCuePrimaryStreamerHeightPrefKey = registeredKey ("ADRCuePrimaryStreamerHeight");
const std::string ADRCueSecondaryStreamerHeightPrefKey = registeredKey ("ADRCueSecondaryStreamerHeight");
const std::string ADRCuePrimaryStreamerPosYPrefKey = registeredKey ("ADRCuePrimaryStreamerPosY");
const std::string ADRCueSecondaryStreamerPosYPrefKey = registeredKey ("ADRCueSecondaryStreamerPosY");

const std::string MarkerTextBGColorPrefKey = registeredKey ("MarkerTextBGColor");
const std::string MarkerTextColorPrefKey = registeredKey ("MarkerTextColor");
const std::string MarkerFontNamePrefKey = registeredKey ("MarkerFontName");
const std::string MarkerPosXPrefKey = registeredKey ("MarkerPosX");
const std::string MarkerPosYPrefKey = registeredKey ("MarkerPosY");
const std::string MarkerSizeFactorPrefKey = registeredKey ("MarkerSizeFactor");

const std::string CharActorOverlayModePrefKey = registeredKey ("CharActorOverlayMode");
const std::string CharacterFontNamePrefKey = registeredKey ("CharacterFontName");
const std::string CharacterTextColorPrefKey = registeredKey ("CharacterTextColor");
const std::string CharacterTextBGColorPrefKey = registeredKey ("CharacterTextBGColor");
const std::string CharacterPosXPrefKey = registeredKey ("CharacterPosX");
const std::string CharacterPosYPrefKey = registeredKey ("CharacterPosY");
const std::string CharacterSizeFactorPrefKey = registeredKey ("CharacterSizeFactor");

const std::string CueNumberEnabledPrefKey = registeredKey ("CueNumberEnabled");
const std::string CueNumberFontNamePrefKey = registeredKey ("CueNumberFontName");
const std::string CueNumberTextColorPrefKey = registeredKey ("CueNumberTextColor");
const std::string CueNumberTextBGColorPrefKey = registeredKey ("CueNumberTextBGColor");
const std::string CueNumberPosXPrefKey = registeredKey ("CueNumberPosX");
const std::string CueNumberPosYPrefKey = registeredKey ("CueNumberPosY");
const std::string CueNumberSizeFactorPrefKey = registeredKey ("CueNumberSizeFactor");

const std::string FadeInDurationInFramesPrefKey = registeredKey ("FadeInDurationInFrames");
const std::string FadeOutDurationInFramesPrefKey = registeredKey ("FadeOutDurationInFrames");

const std::string ModeOverlayEnabledPrefKey = registeredKey ("ModeOverlayEnabled");
const std::string ModeOverlayFontNamePrefKey = registeredKey ("ModeOverlayFontName");
const std::string ModeOverlayPosXPrefKey = registeredKey ("ModeOverlayPosX");
const std::string ModeOverlayPosYPrefKey = registeredKey ("ModeOverlayPosY");
const std::string ModeOverlaySizeFactorPrefKey = registeredKey ("ModeOverlaySizeFactor");
const std::string ModeOverlayRecordTextPrefKey = registeredKey ("ModeOverlayRecordText");
const std::string ModeOverlayRehearseTextPrefKey = registeredKey ("ModeOverlayRehearseText");
const std::string ModeOverlayReviewTextPrefKey = registeredKey ("ModeOverlayReviewText");
const std::string ModeOverlayRecordColorPrefKey = registeredKey ("ModeOverlayRecordColor");
const std::string ModeOverlayRehearseColorPrefKey = registeredKey ("ModeOverlayRehearseColor");
const std::string ModeOverlayReviewColorPrefKey = registeredKey ("ModeOverlayReviewColor");

const std::string EventImportIgnoreOpenEndedPrefKey = "EventImportIgnoreOpenEnded";
const std::string EventSubcueImportModePrefKey = "EventSubcueImportMode";

const std::string EventTextFilterKey = "EventTextFilter";
const std::string EventCueNumberFilterKey = "EventCueNumberFilter";
const std::string EventCharacterFilterKey = "EventCharacterFilter";
const std::string EventActorFilterKey = "EventActorFilter";
const std::string EventNumAdjacentCuesKey = "EventNumAdjacentCues";
} // namespace ZEP::Overmarks
