// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "DocumentOptions.h"
#include "Session.h"

#include "list/Project.h"

#include <string>
#include <vector>

namespace overmarks
{

/** What of the shown list a document in this format leaves out, with how many: "2 markers", "actors (3 events)". */
std::vector<std::string> lostContent (const DocumentFormat& format, const ZEP::Overmarks::Project& project,
                                      bool hasFileForEachCharacter);

/** All that a document in this format may leave out, whatever the list, for a catalogue. */
std::vector<std::string> possibleLosses (const DocumentFormat& format);

/** Says, once for each format, what of this list is lost in it: a list without its reasons is noticed too late. Then what
    else is to be known of the document, such as how it has to be read again. */
void sayWhatIsLost (const std::vector<const DocumentFormat*>& formats, const ZEP::Overmarks::Project& project,
                    const DocumentOptions& options, const Session& session);

} // namespace overmarks
