// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "event/EventType.h"

#include <juce_core/juce_core.h>

#include <optional>
#include <string_view>

namespace ZEP::Overmarks
{

// What the cells of a cue list mean, one function for each kind of cell. They take a cell as trimmedCell()
// gives it and answer with nothing where a person would have to look. Case and the number of blanks play no
// part; a whole number may carry a decimal fraction of zeros, since spreadsheets write 8 as "8.0", and the
// decimal sign may be a comma. Any thread.

/** The UTF-8 bytes of a cell without the white space around it, no-break spaces and byte order marks
    included. The view lasts as long as the text. */
[[nodiscard]] std::string_view trimmedCell (const juce::String& text);

/** The same as a text of its own, which shares its characters with a text that has no such white space. */
[[nodiscard]] juce::String trimmedText (const juce::String& text);

/** Whether two texts are the same for a person: ASCII case and blanks play no part. */
[[nodiscard]] bool isSameWord (std::string_view one, std::string_view other);

/** A cell in quotes for a message: at most 40 characters, line breaks as blanks, and nothing that moves a
    terminal's cursor or the direction of the text. */
[[nodiscard]] juce::String quotedCell (const juce::String& text);

/** A whole number in the range of int. */
[[nodiscard]] std::optional<int> wholeNumberInCell (std::string_view cell);

/** yes, true, 1, x, ja and fn; no, false, 0 and nein. */
[[nodiscard]] std::optional<bool> flagInCell (std::string_view cell);

/** A name of Event::typeString(), or the number of the type. */
[[nodiscard]] std::optional<EventType> eventTypeInCell (std::string_view cell);

/** A side of the picture by its name, or its number from 0. */
[[nodiscard]] std::optional<ForcedNarrativeRegion> regionInCell (std::string_view cell);

/** Beats per minute from 21 to 299, decimals cut, with or without "BPM"; -1 for "--", "-1" and an empty
    cell. */
[[nodiscard]] std::optional<int> tempoInCell (std::string_view cell);

/** What a coded streamer duration counts. */
enum class DurationUnit
{
    seconds, ///< ADR cues, and streamers in seconds
    bars,    ///< streamers in bars
    frames,  ///< flutters
    none     ///< types that have no use for a duration and only carry it
};

/** @param inBars  whether the project's streamers are counted in bars */
[[nodiscard]] DurationUnit durationUnitOf (EventType type, bool inBars);

/** The code of Event::setStreamerDuration(); -1 for "-1", "No streamer duration" and an empty cell.

    A bare number is a code, and so are 2.67 and 3.33. A number with its unit is what Event::description()
    writes; 4 seconds is refused there, because the code 4 stands for two. */
[[nodiscard]] std::optional<int> durationInCell (std::string_view cell, DurationUnit unit);

} // namespace ZEP::Overmarks
