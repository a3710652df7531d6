// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "statistics/ReelRule.h"

#include "core/timecode/TimeInfo.h"
#include "list/Project.h"

#include <juce_core/juce_core.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace overmarks
{

/** How much there is to record, and how much of it is. */
struct Amount
{
    int lines = 0;
    int cues = 0;     ///< different cue numbers of a character; several characters are added
    int done = 0;     ///< lines
    int disabled = 0; ///< lines, which count all the same
    juce::int64 words = 0;
    juce::int64 frames = 0; ///< from in point to end, each line for itself, also where lines overlap

    Amount& operator+= (const Amount& other);

    [[nodiscard]] int open() const noexcept { return lines - done; }
};

/** Where a line lies, in frames from the time origin; never empty. */
struct Stretch
{
    juce::int64 from = 0;
    juce::int64 to = 0;
    bool isDone = false;
};

struct CharacterWork
{
    struct InReel
    {
        std::size_t reel; ///< place in Statistics::reels
        Amount amount;
    };

    juce::String id; ///< empty for the lines that nobody of the cast speaks
    juce::String name;
    juce::String actor;
    juce::String prefix;
    Amount amount;
    std::vector<InReel> reels;      ///< those that the character speaks in
    std::vector<Stretch> stretches; ///< the lines that have a time, as they come

    [[nodiscard]] bool isNobody() const noexcept { return id.isEmpty(); }

    /** The name, and "<no char>" for nobody. */
    [[nodiscard]] juce::String shownName() const;
};

struct ActorWork
{
    juce::String name;
    std::vector<std::size_t> characters; ///< places in Statistics::characters
    Amount amount;

    /** The name, and "<no actor>" where it is empty. */
    [[nodiscard]] juce::String shownName() const;
};

struct ReelWork
{
    juce::String name;
    juce::String shownName;
    juce::String firstStart; ///< timecode of the first line; empty without any time
    juce::String lastEnd;    ///< timecode
    int characters = 0;      ///< that speak in it, nobody not counted
    Amount amount;
};

/** What is asked of a list. */
struct StatisticsQuestion
{
    ReelRule reelRule = ReelRule::hour;
    bool withIdleCharacters = true; ///< also characters without a line
    bool inOrderOfLines = false;    ///< characters in the order of their first shown lines, not of the cast
};

/** The numbers of a list: of what its filter lets through, without the neighbours of a match. Only ADR cues are lines. */
struct Statistics
{
    Statistics (const ZEP::Overmarks::Project& project, const StatisticsQuestion& question);

    /** The amount's length in seconds, by the exact rate of the list. */
    [[nodiscard]] double secondsOf (const Amount& amount) const noexcept;

    /** The amount's part of all lines of the list, whatever the filter lets through; from 0 to 1. */
    [[nodiscard]] double shareOf (const Amount& amount) const noexcept;

    /** The names of an actor's characters as a person reads them, "ANNA, EVE". */
    [[nodiscard]] juce::String namesOfCharacters (const ActorWork& actor) const;

    ReelRule reelRule;
    std::vector<CharacterWork> characters; ///< nobody last, and only if there are such lines
    std::vector<ActorWork> actors;         ///< in the order of their first characters
    std::vector<ReelWork> reels;           ///< by time; the one without a name last
    Amount total;
    int linesOfList = 0;
    int linesWithoutTime = 0;
    std::shared_ptr<ZEP::Core::TimeInfo> timeInfo;
};

/** What a reader of the numbers should know: lines that are disabled or have no time. */
[[nodiscard]] std::vector<juce::String> notesOn (const Statistics& statistics);

/** "1:02:03": hours, minutes and seconds, to the nearest second. */
[[nodiscard]] juce::String hoursMinutesSeconds (double seconds);

/** "33 %", to the nearest; 100 and 0 only where it is all or nothing. */
[[nodiscard]] juce::String percentOf (double share);

/** "33.3 %", for parts of a whole. */
[[nodiscard]] juce::String percentWithTenth (double share);

/** The share of the lines that is done, from 0 to 1; 0 without a line. */
[[nodiscard]] double doneShare (const Amount& amount) noexcept;

} // namespace overmarks
