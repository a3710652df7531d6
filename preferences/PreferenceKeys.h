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
OVERMARKS_API extern const std::string StreamerReferenceUnitPrefKey;   ///< int: 1 seconds, 0 bars
OVERMARKS_API extern const std::string StreamerDefaultTempoPrefKey;    ///< int: beats a minute
OVERMARKS_API extern const std::string StreamerDefaultDurationPrefKey; ///< int: coded seconds
OVERMARKS_API extern const std::string FlutterDefaultDurationPrefKey;  ///< int: frames
OVERMARKS_API extern const std::string ADRCueDefaultDurationPrefKey;   ///< int: 1 to 5: 1, 3, 5, 10, 30 s
OVERMARKS_API extern const std::string ADRCueDefaultPrimaryPrerollDurationPrefKey; ///< int: coded seconds
OVERMARKS_API extern const std::string MarkerDefaultDurationPrefKey;               ///< int: seconds

// Playback and display of events
OVERMARKS_API extern const std::string EventBlackScreenBeforeInPointPrefKey; ///< bool
OVERMARKS_API extern const std::string EventBlackScreenAfterOutPointPrefKey; ///< bool
OVERMARKS_API extern const std::string EventGoToModePrefKey;                 ///< int: the application's
OVERMARKS_API extern const std::string EventDisplayModePrefKey;              ///< int: the application's
OVERMARKS_API extern const std::string EventRecordModePrefKey;               ///< int: the application's

// Plain streamers
OVERMARKS_API extern const std::string StreamerWidthPrefKey;             ///< float: share of picture
OVERMARKS_API extern const std::string StreamerHeightPrefKey;            ///< float: share of picture
OVERMARKS_API extern const std::string StreamerPosYPrefKey;              ///< float: share of picture
OVERMARKS_API extern const std::string StreamerColorPrefKey;             ///< colour
OVERMARKS_API extern const std::string StreamerDirectionPrefKey;         ///< int: the application's
OVERMARKS_API extern const std::string StreamerDrawFinishingLinePrefKey; ///< bool
OVERMARKS_API extern const std::string StreamerPlayAudioBeepsPrefKey;    ///< bool

// Punch and flutter
OVERMARKS_API extern const std::string PunchFlutterColorPrefKey;  ///< colour
OVERMARKS_API extern const std::string PunchFlutterSizePrefKey;   ///< int: the application's
OVERMARKS_API extern const std::string PunchAfterStreamerPrefKey; ///< bool

// Audio beeps
OVERMARKS_API extern const std::string AudioBeepLevelPrefKey;         ///< float: the application's
OVERMARKS_API extern const std::string AudioBeepOutIdentifierPrefKey; ///< text: the application's
OVERMARKS_API extern const std::string AudioBeepPitchPrefKey;         ///< int: the application's

// ADR cue overlay
OVERMARKS_API extern const std::string ADRCueOverlayTextEnabledPrefKey;        ///< bool
OVERMARKS_API extern const std::string ADRCueTextBackgroundColorPrefKey;       ///< colour
OVERMARKS_API extern const std::string ADRCueTextColorPrefKey;                 ///< colour
OVERMARKS_API extern const std::string ADRCueFontNamePrefKey;                  ///< text: a family
OVERMARKS_API extern const std::string ADRCueFontSizeFactorPrefKey;            ///< float: share of picture
OVERMARKS_API extern const std::string ADRCueOverlayYPosFactorPrefKey;         ///< float: share of picture
OVERMARKS_API extern const std::string ADRCueOverlayXOffsetFactorPrefKey;      ///< float: share of picture
OVERMARKS_API extern const std::string ADRCueProgBarEnabledPrefKey;            ///< bool
OVERMARKS_API extern const std::string ADRCueProgBarColorPrefKey;              ///< colour
OVERMARKS_API extern const std::string ADRCueProgBarDirectionPrefKey;          ///< int: the application's
OVERMARKS_API extern const std::string ADRCuePlayAudioBeepsPrefKey;            ///< bool
OVERMARKS_API extern const std::string ADRCuePrerollStylePrefKey;              ///< int: the application's
OVERMARKS_API extern const std::string ADRCueExpansionFramesAtInPointPrefKey;  ///< int: frames
OVERMARKS_API extern const std::string ADRCueExpansionFramesAtOutPointPrefKey; ///< int: frames

// ADR cue streamers
OVERMARKS_API extern const std::string ADRCueDefaultSecondaryPrerollDurationPrefKey; ///< int: coded seconds
OVERMARKS_API extern const std::string ADRCuePrimaryStreamerDirectionPrefKey;   ///< int: the application's
OVERMARKS_API extern const std::string ADRCueSecondaryStreamerDirectionPrefKey; ///< int: the application's
OVERMARKS_API extern const std::string ADRCuePrimaryStreamerColorPrefKey;       ///< colour
OVERMARKS_API extern const std::string ADRCueSecondaryStreamerColorPrefKey;     ///< colour
OVERMARKS_API extern const std::string ADRCuePrimaryStreamerWidthPrefKey;       ///< float: share of picture
OVERMARKS_API extern const std::string ADRCueSecondaryStreamerWidthPrefKey;     ///< float: share of picture
OVERMARKS_API extern const std::string ADRCuePrimaryStreamerHeightPrefKey;      ///< float: share of picture
OVERMARKS_API extern const std::string ADRCueSecondaryStreamerHeightPrefKey;    ///< float: share of picture
OVERMARKS_API extern const std::string ADRCuePrimaryStreamerPosYPrefKey;        ///< float: share of picture
OVERMARKS_API extern const std::string ADRCueSecondaryStreamerPosYPrefKey;      ///< float: share of picture

// Markers
OVERMARKS_API extern const std::string MarkerTextBGColorPrefKey; ///< colour
OVERMARKS_API extern const std::string MarkerTextColorPrefKey;   ///< colour
OVERMARKS_API extern const std::string MarkerFontNamePrefKey;    ///< text: a family
OVERMARKS_API extern const std::string MarkerPosXPrefKey;        ///< float: share of picture
OVERMARKS_API extern const std::string MarkerPosYPrefKey;        ///< float: share of picture
OVERMARKS_API extern const std::string MarkerSizeFactorPrefKey;  ///< float: share of picture

// Character overlay
OVERMARKS_API extern const std::string CharActorOverlayModePrefKey; ///< int: the application's
OVERMARKS_API extern const std::string CharacterFontNamePrefKey;    ///< text: a family
OVERMARKS_API extern const std::string CharacterTextColorPrefKey;   ///< colour
OVERMARKS_API extern const std::string CharacterTextBGColorPrefKey; ///< colour
OVERMARKS_API extern const std::string CharacterPosXPrefKey;        ///< float: share of picture
OVERMARKS_API extern const std::string CharacterPosYPrefKey;        ///< float: share of picture
OVERMARKS_API extern const std::string CharacterSizeFactorPrefKey;  ///< float: share of picture

// Cue number overlay
OVERMARKS_API extern const std::string CueNumberEnabledPrefKey;     ///< bool
OVERMARKS_API extern const std::string CueNumberFontNamePrefKey;    ///< text: a family
OVERMARKS_API extern const std::string CueNumberTextColorPrefKey;   ///< colour
OVERMARKS_API extern const std::string CueNumberTextBGColorPrefKey; ///< colour
OVERMARKS_API extern const std::string CueNumberPosXPrefKey;        ///< float: share of picture
OVERMARKS_API extern const std::string CueNumberPosYPrefKey;        ///< float: share of picture
OVERMARKS_API extern const std::string CueNumberSizeFactorPrefKey;  ///< float: share of picture

// Fades
OVERMARKS_API extern const std::string FadeInDurationInFramesPrefKey;  ///< int: frames
OVERMARKS_API extern const std::string FadeOutDurationInFramesPrefKey; ///< int: frames

// Mode overlay
OVERMARKS_API extern const std::string ModeOverlayEnabledPrefKey;       ///< bool
OVERMARKS_API extern const std::string ModeOverlayFontNamePrefKey;      ///< text: a family
OVERMARKS_API extern const std::string ModeOverlayPosXPrefKey;          ///< float: share of picture
OVERMARKS_API extern const std::string ModeOverlayPosYPrefKey;          ///< float: share of picture
OVERMARKS_API extern const std::string ModeOverlaySizeFactorPrefKey;    ///< float: share of picture
OVERMARKS_API extern const std::string ModeOverlayRecordTextPrefKey;    ///< text to be shown
OVERMARKS_API extern const std::string ModeOverlayRehearseTextPrefKey;  ///< text to be shown
OVERMARKS_API extern const std::string ModeOverlayReviewTextPrefKey;    ///< text to be shown
OVERMARKS_API extern const std::string ModeOverlayRecordColorPrefKey;   ///< colour
OVERMARKS_API extern const std::string ModeOverlayRehearseColorPrefKey; ///< colour
OVERMARKS_API extern const std::string ModeOverlayReviewColorPrefKey;   ///< colour

// Without a registered default: the value of an unknown key holds until the user stores one.

/** bool: an imported cue that is marked as open ended keeps the end that stands in its file. */
OVERMARKS_API extern const std::string EventImportIgnoreOpenEndedPrefKey;

/** For the application alone. */
OVERMARKS_API extern const std::string EventSubcueImportModePrefKey;

// Not preferences: the parameters of the filter of a list.
OVERMARKS_API extern const std::string EventTextFilterKey;      ///< a part of it, case counts
OVERMARKS_API extern const std::string EventCueNumberFilterKey; ///< a part of it, case counts
OVERMARKS_API extern const std::string EventCharacterFilterKey; ///< the whole name
OVERMARKS_API extern const std::string EventActorFilterKey;     ///< the whole name
OVERMARKS_API extern const std::string EventNumAdjacentCuesKey; ///< neighbours of a match; digits
} // namespace ZEP::Overmarks
