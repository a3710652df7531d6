// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

#include <string>

namespace ZEP::Overmarks
{
// The names of the preferences in ZEP::Core::UserDefaults. Their types and defaults stand in
// preferenceTable().
//
// Other global objects must not use these in their constructors: nothing says which of them is made first.

// Timing
OVERMARKS_API extern const std::string StreamerReferenceUnitPrefKey;
OVERMARKS_API extern const std::string StreamerDefaultTempoPrefKey;
OVERMARKS_API extern const std::string StreamerDefaultDurationPrefKey;
OVERMARKS_API extern const std::string FlutterDefaultDurationPrefKey;
OVERMARKS_API extern const std::string ADRCueDefaultDurationPrefKey;
OVERMARKS_API extern const std::string ADRCueDefaultPrimaryPrerollDurationPrefKey;
OVERMARKS_API extern const std::string MarkerDefaultDurationPrefKey;

// Playback and display of events
OVERMARKS_API extern const std::string EventBlackScreenBeforeInPointPrefKey;
OVERMARKS_API extern const std::string EventBlackScreenAfterOutPointPrefKey;
OVERMARKS_API extern const std::string EventGoToModePrefKey;
OVERMARKS_API extern const std::string EventDisplayModePrefKey;
OVERMARKS_API extern const std::string EventRecordModePrefKey;

// Plain streamers
OVERMARKS_API extern const std::string StreamerWidthPrefKey;
OVERMARKS_API extern const std::string StreamerHeightPrefKey;
OVERMARKS_API extern const std::string StreamerPosYPrefKey;
OVERMARKS_API extern const std::string StreamerColorPrefKey;
OVERMARKS_API extern const std::string StreamerDirectionPrefKey;
OVERMARKS_API extern const std::string StreamerDrawFinishingLinePrefKey;
OVERMARKS_API extern const std::string StreamerPlayAudioBeepsPrefKey;

// Punch and flutter
OVERMARKS_API extern const std::string PunchFlutterColorPrefKey;
OVERMARKS_API extern const std::string PunchFlutterSizePrefKey;
OVERMARKS_API extern const std::string PunchAfterStreamerPrefKey;

// Audio beeps
OVERMARKS_API extern const std::string AudioBeepLevelPrefKey;
OVERMARKS_API extern const std::string AudioBeepOutIdentifierPrefKey;
OVERMARKS_API extern const std::string AudioBeepPitchPrefKey;

// ADR cue overlay
OVERMARKS_API extern const std::string ADRCueOverlayTextEnabledPrefKey;
OVERMARKS_API extern const std::string ADRCueTextBackgroundColorPrefKey;
OVERMARKS_API extern const std::string ADRCueTextColorPrefKey;
OVERMARKS_API extern const std::string ADRCueFontNamePrefKey;
OVERMARKS_API extern const std::string ADRCueFontSizeFactorPrefKey;
OVERMARKS_API extern const std::string ADRCueOverlayYPosFactorPrefKey;
OVERMARKS_API extern const std::string ADRCueOverlayXOffsetFactorPrefKey;
OVERMARKS_API extern const std::string ADRCueProgBarEnabledPrefKey;
OVERMARKS_API extern const std::string ADRCueProgBarColorPrefKey;
OVERMARKS_API extern const std::string ADRCueProgBarDirectionPrefKey;
OVERMARKS_API extern const std::string ADRCuePlayAudioBeepsPrefKey;
OVERMARKS_API extern const std::string ADRCuePrerollStylePrefKey;
OVERMARKS_API extern const std::string ADRCueExpansionFramesAtInPointPrefKey;
OVERMARKS_API extern const std::string ADRCueExpansionFramesAtOutPointPrefKey;

// ADR cue streamers
OVERMARKS_API extern const std::string ADRCueDefaultSecondaryPrerollDurationPrefKey;
OVERMARKS_API extern const std::string ADRCuePrimaryStreamerDirectionPrefKey;
OVERMARKS_API extern const std::string ADRCueSecondaryStreamerDirectionPrefKey;
OVERMARKS_API extern const std::string ADRCuePrimaryStreamerColorPrefKey;
OVERMARKS_API extern const std::string ADRCueSecondaryStreamerColorPrefKey;
OVERMARKS_API extern const std::string ADRCuePrimaryStreamerWidthPrefKey;
OVERMARKS_API extern const std::string ADRCueSecondaryStreamerWidthPrefKey;
OVERMARKS_API extern const std::string ADRCuePrimaryStreamerHeightPrefKey;
OVERMARKS_API extern const std::string ADRCueSecondaryStreamerHeightPrefKey;
OVERMARKS_API extern const std::string ADRCuePrimaryStreamerPosYPrefKey;
OVERMARKS_API extern const std::string ADRCueSecondaryStreamerPosYPrefKey;

// Markers
OVERMARKS_API extern const std::string MarkerTextBGColorPrefKey;
OVERMARKS_API extern const std::string MarkerTextColorPrefKey;
OVERMARKS_API extern const std::string MarkerFontNamePrefKey;
OVERMARKS_API extern const std::string MarkerPosXPrefKey;
OVERMARKS_API extern const std::string MarkerPosYPrefKey;
OVERMARKS_API extern const std::string MarkerSizeFactorPrefKey;

// Character overlay
OVERMARKS_API extern const std::string CharActorOverlayModePrefKey;
OVERMARKS_API extern const std::string CharacterFontNamePrefKey;
OVERMARKS_API extern const std::string CharacterTextColorPrefKey;
OVERMARKS_API extern const std::string CharacterTextBGColorPrefKey;
OVERMARKS_API extern const std::string CharacterPosXPrefKey;
OVERMARKS_API extern const std::string CharacterPosYPrefKey;
OVERMARKS_API extern const std::string CharacterSizeFactorPrefKey;

// Cue number overlay
OVERMARKS_API extern const std::string CueNumberEnabledPrefKey;
OVERMARKS_API extern const std::string CueNumberFontNamePrefKey;
OVERMARKS_API extern const std::string CueNumberTextColorPrefKey;
OVERMARKS_API extern const std::string CueNumberTextBGColorPrefKey;
OVERMARKS_API extern const std::string CueNumberPosXPrefKey;
OVERMARKS_API extern const std::string CueNumberPosYPrefKey;
OVERMARKS_API extern const std::string CueNumberSizeFactorPrefKey;

// Fades
OVERMARKS_API extern const std::string FadeInDurationInFramesPrefKey;
OVERMARKS_API extern const std::string FadeOutDurationInFramesPrefKey;

// Mode overlay
OVERMARKS_API extern const std::string ModeOverlayEnabledPrefKey;
OVERMARKS_API extern const std::string ModeOverlayFontNamePrefKey;
OVERMARKS_API extern const std::string ModeOverlayPosXPrefKey;
OVERMARKS_API extern const std::string ModeOverlayPosYPrefKey;
OVERMARKS_API extern const std::string ModeOverlaySizeFactorPrefKey;
OVERMARKS_API extern const std::string ModeOverlayRecordTextPrefKey;
OVERMARKS_API extern const std::string ModeOverlayRehearseTextPrefKey;
OVERMARKS_API extern const std::string ModeOverlayReviewTextPrefKey;
OVERMARKS_API extern const std::string ModeOverlayRecordColorPrefKey;
OVERMARKS_API extern const std::string ModeOverlayRehearseColorPrefKey;
OVERMARKS_API extern const std::string ModeOverlayReviewColorPrefKey;

// Without a registered default: the value of an unknown key holds until the user stores one.

/** bool: an imported cue that is marked as open ended keeps the end that stands in its file. */
OVERMARKS_API extern const std::string EventImportIgnoreOpenEndedPrefKey;

/** For the application alone. */
OVERMARKS_API extern const std::string EventSubcueImportModePrefKey;

// Not preferences: the parameters of the filter of a list.
OVERMARKS_API extern const std::string EventTextFilterKey;
OVERMARKS_API extern const std::string EventCueNumberFilterKey;
OVERMARKS_API extern const std::string EventCharacterFilterKey;
OVERMARKS_API extern const std::string EventActorFilterKey;
OVERMARKS_API extern const std::string EventNumAdjacentCuesKey;
} // namespace ZEP::Overmarks
