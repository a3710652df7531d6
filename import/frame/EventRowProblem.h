// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

namespace ZEP::Overmarks
{

/** What is wrong with a cell, for a program that sorts problems. */
enum class EventRowProblemKind
{
    other,           ///< no matter of times
    noTimecode,      ///< a time cell without a time, or a time that no frame of the picture has
    droppedTimecode, ///< a timecode that drop-frame counting leaves out
    beforePicture,   ///< the frame before the picture's first
    endBeforeStart,  ///< the end lies before the start, and is not used
    endWithoutStart  ///< an end without a start, which is not used either
};

/** A cell of a cue list that could not be understood, for the person who made the list. */
struct EventRowProblem
{
    int row;              ///< index in the importer's rows, counted from 0, the row of titles included
    juce::String column;  ///< one of EventFileImporter::columnTitles(); empty for the whole row
    juce::String message; ///< for a person
    EventRowProblemKind kind = EventRowProblemKind::other; ///< for a program
};

} // namespace ZEP::Overmarks
