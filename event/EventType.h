// SPDX-License-Identifier: GPL-3.0-only
#pragma once

namespace ZEP::Overmarks
{

/** What an event is. The values are single bits, so that a set of types fits one mask. They are stored in project files;
    an event that has not been given a type yet, or that comes from a damaged file, may hold any other number. */
enum EventType : int
{
    EventTypeStreamer = 1, ///< a line that runs across the picture towards the in point
    EventTypeMarker = 2,   ///< text shown from the in point to the end
    EventTypeFlutter = 4,  ///< short flashes, counted in frames
    EventTypeADRCue = 8,   ///< a line of dialogue with its preroll streamer
    EventTypeFadeIn = 16,  ///< a point event: the picture fades in
    EventTypeFadeOut = 32  ///< a point event: the picture fades out
};

/** The type of an event that nothing has set yet. */
inline constexpr EventType eventTypeUnset = static_cast<EventType> (-1);

/** Where on the picture a forced-narrative line is placed. */
enum ForcedNarrativeRegion : int
{
    ForcedNarrativeRegionBottom = 0,
    ForcedNarrativeRegionTop = 1,
    ForcedNarrativeRegionLeft = 2,
    ForcedNarrativeRegionRight = 3
};

} // namespace ZEP::Overmarks
