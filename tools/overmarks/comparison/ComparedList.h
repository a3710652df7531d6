// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ListSource.h"

#include "core/timecode/TCDef.h"
#include "list/Project.h"

#include <juce_core/juce_core.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace overmarks
{

/** A timecode as a person reads it off the sheet: lists are compared by what they show, not by where their frame 0 lies. */
struct ShownTime
{
    std::int64_t frames = 0; ///< from 00:00:00:00, counted as the newer list counts
    double seconds =
        0.0; ///< the label's own hours, minutes, seconds and frames, the frames as a part of their second
};

/** One event of a list, with what it takes to find it again in another version of the list. */
struct ComparedEvent
{
    std::shared_ptr<ZEP::Overmarks::Event> event;
    juce::String character; ///< name
    juce::String actor;
    juce::String reason;                 ///< in words
    std::string number;                  ///< empty for none, and for "--"
    std::string role;                    ///< the character's name in lower case, since sheets differ in that
    std::string words;                   ///< the text with single blanks
    std::optional<ShownTime> start, end; ///< nothing for an event without a time

    bool isFade() const;
};

/** A list as it is compared: its events by time, those without one behind them. A fade that nobody has placed is left out.

    It has to be made while its project is the current one, since reasons get their names from it. */
struct ComparedList
{
    ComparedList (const ZEP::Overmarks::Project& projectToCompare, ListScope scopeOfList);

    /** Works out the times of all events and sorts by them. @param counting  the rate of the newer list */
    void countAs (const ZEP::Core::_TCDef& counting);

    ZEP::Overmarks::Project project;
    ListScope scope;
    std::vector<ComparedEvent> events;
    bool hasLooks; ///< whether it can tell bold from plain text
};

/** Whether two lists show the same time, half a frame of the slower one apart at most where their rates differ. */
bool showSameTime (const ShownTime& old, const ShownTime& now, const ComparedList& oldList,
                   const ComparedList& newList);

/** Whether timecodes of both count up in the same way; 23.976 and 24 do. */
bool countAlike (const ZEP::Core::_TCDef& one, const ZEP::Core::_TCDef& other);

/** Frames of one timecode second. */
int framesPerSecond (const ZEP::Core::_TCDef& def);

/** What an event is called in a message: "A1 (ANNA, 01:00:02:00)". */
juce::String nameInMessage (const ComparedEvent& event);

} // namespace overmarks
