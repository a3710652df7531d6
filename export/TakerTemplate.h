// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <vector>

namespace ZEP::Overmarks
{

// The tables for the recording tools DS Taker and EuroTaker, and what EventCSVExporter's cells need of them.

inline constexpr int csvTemplateDublane = 0;
inline constexpr int csvTemplateDSTaker = 1;
inline constexpr int csvTemplateEuroTaker = 2;

// Columns that only these tables have.
inline const juce::String DSTakerMarker { "DSTakerMarker" };
inline const juce::String DSTakerSub { "DSTakerSub" };
inline const juce::String DSTakerTrack { "DSTakerTrack" };
inline const juce::String EuroTakerSpur { "EuroTakerSpur" };
inline const juce::String EuroTakerBand { "EuroTakerBand" };
inline const juce::String EuroTakerMarker1 { "EuroTakerMarker1" };
inline const juce::String EuroTakerMarker2 { "EuroTakerMarker2" };

[[nodiscard]] juce::String dsTakerHeader();
[[nodiscard]] std::vector<juce::String> dsTakerColumnKeys();
[[nodiscard]] juce::String euroTakerHeader();
[[nodiscard]] std::vector<juce::String> euroTakerColumnKeys();

/** A cue number as DS Taker sees it. */
struct CueNumberParts
{
    juce::String take; ///< the number
    juce::String sub;  ///< the letters of the subcue behind its last blank; empty without any
};

/** "12 A" is subcue A of take 12; without one of the letters X, A and S behind the last blank all of it is the take. */
[[nodiscard]] CueNumberParts splitCueNumber (const juce::String& cueNumber);

} // namespace ZEP::Overmarks
