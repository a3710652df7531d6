// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "comparison/ComparedList.h"
#include "comparison/EventPairing.h"

#include "list/Project.h"

#include <juce_core/juce_core.h>

#include <cstddef>
#include <vector>

namespace overmarks
{

/** What has become of the work in an old list when its recordings went over to a new one. */
struct TransferResult
{
    std::size_t carried = 0;           ///< events that have got something from the old list
    std::vector<juce::String> lost;    ///< what of the old list's work isn't in the new one, in words
    std::vector<juce::String> remarks; ///< what somebody may want to look at, in words
};

/** Carries what was done in the studio over to the new cut's events: done, takes with the chosen ones, recording track, reason, notes for
    studio and engineer, and the application's flag.

    Nothing that the new list says is overwritten. A note that both have becomes one, the old text below the new one; done in either
    list is done. Takes, track and reason of the new list stay where it has its own, and what the old list had instead is told as
    lost, as is an old event with recordings that has no partner. A cue list, which has neither, also gets the settings of the old
    project's documents, and the actors and prefixes of its characters. */
TransferResult carryRecordings (const ComparedList& old, ComparedList& now, const Pairing& pairing);

/** The new list's project with the old list's identities, for a cue list that has none of its own. */
ZEP::Overmarks::Project withOldIdentities (const ComparedList& old, const ComparedList& now,
                                           const Pairing& pairing);

} // namespace overmarks
