// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Session.h"

#include "list/EventArray.h"

#include <string>
#include <vector>

namespace overmarks
{

struct DocumentFormat;

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
    reasons,
    durations,
    tempo,
    forcedNarratives
};

/** "times", "characters", ... for people and for JSON. */
std::vector<std::string> namesOf (const std::vector<Content>& contents);

/** What the format doesn't carry although the events have it. */
std::vector<std::string> lostContent (const DocumentFormat& format,
                                      const ZEP::Overmarks::EventArray::Events& events);

/** Says for each format what of these events is lost in it: a list without its reasons is noticed too late. */
void sayWhatIsLost (const std::vector<const DocumentFormat*>& formats,
                    const ZEP::Overmarks::EventArray::Events& events, const Session& session);

} // namespace overmarks
