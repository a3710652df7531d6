// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "list/EventArray.h"
#include "list/Project.h"

#include <string>
#include <vector>

namespace overmarks
{

/** What of an event a document carries. The order is that of the table of names. */
enum class Content
{
    times,
    types,
    characters,
    prefixes,
    actors,
    cueNumbers,
    text,
    lineBreaks,
    boldAndItalic,
    otherLooks,
    notes,
    engineeringNotes,
    done,
    disabled,
    takes,
    chosenTakes,
    recordTracks,
    storedFlags,
    reasons,
    durations,
    tempo,
    forcedNarratives
};

/** What a document may still lose of the content that it carries. The order is that of the table of names. */
enum class Detail
{
    castWithoutEvents,
    equalNames,
    quotesOfNames,
    namesBeyond22,
    namesBeyond15,
    cueNumbersBeyond16,
    foldedCues,
    looksOfForcedNarratives,
    italicOfBold,
    doubleStars,
    doubleBlanks,
    typographyOfText,
    foreignLetters,
    foreignLettersOfTable,
    looksOfNotes,
    breaksOfNotes,
    typographyOfNotes,
    quotesOfNotes,
    looksOfEngineeringNotes,
    breaksOfEngineeringNotes,
    typographyOfEngineeringNotes,
    namelessReasons,
    fractionsOfTempo,
    regionsOfOthers
};

/** The list that a document is made of. */
struct WrittenList
{
    const ZEP::Overmarks::Project& project;
    ZEP::Overmarks::EventArray::Events events; ///< those that the document writes
    bool hasFileForEach;                       ///< each character has a file
};

/** Something of a list that a document may lose. */
struct ContentRow
{
    const char* name;                  ///< for people and for JSON
    Content whole;                     ///< what it is a part of: with that it's gone anyway
    int (*count) (const WrittenList&); ///< how many have it
    const char* one = "event";         ///< what is counted
    const char* many = "events";
};

const ContentRow& rowOf (Content content);
const ContentRow& rowOf (Detail detail);

/** All that an event may have, in the order of the enumeration. */
std::vector<Content> allContent();

/** "times", "characters", ... in the order of the enumeration. */
std::vector<std::string> namesOf (const std::vector<Content>& contents);

} // namespace overmarks
