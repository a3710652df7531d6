// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <optional>
#include <string>
#include <vector>

namespace overmarks
{

// The words and numbers that a person types for the value of a cell. Each gives nothing for a text that stands for no value;
// letters' case never matters.

/** yes, true, 1 or on; no, false, 0 or off. */
std::optional<bool> yesOrNo (const juce::String& text);

/** Digits with or without a minus sign before them. */
std::optional<int> wholeNumber (const juce::String& text);

/** The type with this name or number. */
std::optional<int> eventTypeNamed (const juce::String& text);

/** The region, as the menu counts them from 1, with this name or number. */
std::optional<int> regionNamed (const juce::String& text);

/** The code of the cue reason with this name, short form or code; the empty text is "None". */
std::optional<int> reasonNamed (const juce::String& text);

/** Whether a text stands for a time that isn't there: "none", dashes, or nothing at all. */
bool meansNoTime (const juce::String& text);

/** The name of a type or a region, or its number where it has none. */
juce::String nameOfEventType (int type);
juce::String nameOfRegion (int item);

/** All names, for a message. */
std::vector<std::string> namesOfEventTypes();
std::vector<std::string> namesOfRegions();

} // namespace overmarks
