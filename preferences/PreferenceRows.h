// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <array>
#include <string_view>
#include <variant>

namespace ZEP::Overmarks
{
/** A colour as four parts from 0 to 1, of a kind that needs no code at start. */
struct Rgba
{
    float red;
    float green;
    float blue;
    float alpha;
};

/** One preference with its default, as written in the table below. */
struct PreferenceRow
{
    const char* group;
    const char* key;
    std::variant<bool, int, float, const char*, Rgba> defaultValue;
};

// Every preference that has a default. Registration, the key globals and the documents are made from this one
// list.
//
// Positions, sizes, widths and heights are fractions of the picture. Modes and directions are numbers of the
// application. Of the timing: a reference unit of 1 is seconds, 0 bars; streamers and prerolls are codes in
// seconds, a flutter is in frames, a marker in seconds, the length of a cue is a code of its own; the tempo
// is in beats a minute.
inline constexpr auto preferenceRows = std::to_array<PreferenceRow> ({
    { "Timing", "StreamerReferenceUnit", 1 },
    { "Timing", "StreamerDefaultTempo", 120 },
    { "Timing", "StreamerDefaultDuration", 2 },
    { "Timing", "FlutterDefaultDuration", 1 },
    { "Timing", "ADRCueDefaultDuration", 2 },
    { "Timing", "ADRCueDefaultPrimaryPrerollDuration", 3 },
    { "Timing", "MarkerDefaultDuration", 2 },

    { "Playback and display of events", "EventBlackScreenBeforeInPoint", false },
    { "Playback and display of events", "EventBlackScreenAfterOutPoint", false },
    { "Playback and display of events", "EventGoToMode", 1 },
    { "Playback and display of events", "EventDisplayMode", 0 },
    { "Playback and display of events", "EventRecordMode", 0 },

    { "Plain streamers", "StreamerWidth", 0.06f },
    { "Plain streamers", "StreamerHeight", 1.0f },
    { "Plain streamers", "StreamerPosY", 0.0f },
    { "Plain streamers", "StreamerColor", Rgba { 0.0f, 1.0f, 0.0f, 1.0f } },
    { "Plain streamers", "StreamerDirection", 0 },
    { "Plain streamers", "StreamerDrawFinishingLine", false },
    { "Plain streamers", "StreamerPlayAudioBeeps", true },

    { "Punch and flutter", "PunchFlutterColor", Rgba { 1.0f, 1.0f, 1.0f, 1.0f } },
    { "Punch and flutter", "PunchFlutterSize", 2 },
    { "Punch and flutter", "PunchAfterStreamer", true },

    { "Audio beeps", "AudioBeepLevel", 1.0f },
    { "Audio beeps", "AudioBeepOutIdentifier", "" },
    { "Audio beeps", "AudioBeepPitch", 1000 },

    { "ADR cue overlay", "ADRCueOverlayTextEnabled", true },
    { "ADR cue overlay", "ADRCueTextBannerColor", Rgba { 0.1f, 0.1f, 0.1f, 1.0f } },
    { "ADR cue overlay", "ADRCueTextColor", Rgba { 1.0f, 1.0f, 1.0f, 1.0f } },
    { "ADR cue overlay", "ADRCueFontName", "Arial" },
    { "ADR cue overlay", "ADRCueFontSizeFactor", 0.08f },
    { "ADR cue overlay", "ADRCueOverlayYPosFactor", 0.1f },
    { "ADR cue overlay", "ADRCueOverlayXOffsetFactor", 0.0f },
    { "ADR cue overlay", "ADRCueProgBarEnabled", true },
    { "ADR cue overlay", "ADRCueProgBarColor", Rgba { 0.3f, 0.3f, 0.3f, 1.0f } },
    { "ADR cue overlay", "ADRCueProgBarDirection", 1 },
    { "ADR cue overlay", "ADRCuePlayAudioBeeps", true },
    { "ADR cue overlay", "ADRCuePrerollStyle", 0 },
    { "ADR cue overlay", "ADRCueExpansionFramesAtInPoint", 0 },
    { "ADR cue overlay", "ADRCueExpansionFramesAtOutPoint", 0 },

    { "ADR cue streamers", "ADRCueDefaultSecondaryPrerollDuration", 1 },
    { "ADR cue streamers", "ADRCuePrimaryStreamerDirection", 1 },
    { "ADR cue streamers", "ADRCueSecondaryStreamerDirection", 1 },
    { "ADR cue streamers", "ADRCuePrimaryStreamerColor", Rgba { 0.0f, 1.0f, 0.0f, 1.0f } },
    { "ADR cue streamers", "ADRCueSecondaryStreamerColor", Rgba { 1.0f, 1.0f, 0.0f, 1.0f } },
    { "ADR cue streamers", "ADRCuePrimaryStreamerWidth", 0.02f },
    { "ADR cue streamers", "ADRCueSecondaryStreamerWidth", 0.01f },
    { "ADR cue streamers", "ADRCuePrimaryStreamerHeight", 0.8f },
    { "ADR cue streamers", "ADRCueSecondaryStreamerHeight", 0.4f },
    { "ADR cue streamers", "ADRCuePrimaryStreamerPosY", 0.1f },
    { "ADR cue streamers", "ADRCueSecondaryStreamerPosY", 0.3f },

    { "Markers", "MarkerTextBGColor", Rgba { 0.2f, 0.2f, 0.2f, 1.0f } },
    { "Markers", "MarkerTextColor", Rgba { 1.0f, 1.0f, 1.0f, 1.0f } },
    { "Markers", "MarkerFontName", "Arial" },
    { "Markers", "MarkerPosX", 0.5f },
    { "Markers", "MarkerPosY", 0.25f },
    { "Markers", "MarkerSizeFactor", 0.15f },

    { "Character overlay", "CharActorOverlayMode", 1 },
    { "Character overlay", "CharacterFontName", "Arial" },
    { "Character overlay", "CharacterTextColor", Rgba { 1.0f, 0.0f, 0.0f, 1.0f } },
    { "Character overlay", "CharacterTextBGColor", Rgba { 0.4f, 0.4f, 0.4f, 0.8f } },
    { "Character overlay", "CharacterPosX", 0.05f },
    { "Character overlay", "CharacterPosY", 0.9f },
    { "Character overlay", "CharacterSizeFactor", 0.07f },

    { "Cue number overlay", "CueNumberEnabled", true },
    { "Cue number overlay", "CueNumberFontName", "Arial" },
    { "Cue number overlay", "CueNumberTextColor", Rgba { 0.0f, 0.0f, 1.0f, 1.0f } },
    { "Cue number overlay", "CueNumberTextBGColor", Rgba { 0.4f, 0.4f, 0.4f, 0.8f } },
    { "Cue number overlay", "CueNumberPosX", 0.85f },
    { "Cue number overlay", "CueNumberPosY", 0.9f },
    { "Cue number overlay", "CueNumberSizeFactor", 0.05f },

    { "Fades", "FadeInDurationInFrames", 0 },
    { "Fades", "FadeOutDurationInFrames", 0 },

    { "Mode overlay", "ModeOverlayEnabled", true },
    { "Mode overlay", "ModeOverlayFontName", "Arial" },
    { "Mode overlay", "ModeOverlayPosX", 0.5f },
    { "Mode overlay", "ModeOverlayPosY", 0.9f },
    { "Mode overlay", "ModeOverlaySizeFactor", 0.08f },
    { "Mode overlay", "ModeOverlayRecordText", "Recording" },
    { "Mode overlay", "ModeOverlayRehearseText", "Rehearsing" },
    { "Mode overlay", "ModeOverlayReviewText", "Reviewing" },
    { "Mode overlay", "ModeOverlayRecordColor", Rgba { 1.0f, 0.0f, 0.0f, 1.0f } },
    { "Mode overlay", "ModeOverlayRehearseColor", Rgba { 1.0f, 1.0f, 0.0f, 1.0f } },
    { "Mode overlay", "ModeOverlayReviewColor", Rgba { 0.0f, 1.0f, 0.0f, 1.0f } },
});

/** The key itself, if the table above has it; a key that isn't there doesn't compile. */
consteval const char* registeredKey (std::string_view key)
{
    for (const auto& row : preferenceRows)
        if (key == row.key)
            return row.key;
    throw "no such preference";
}
} // namespace ZEP::Overmarks
