// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "comparison/ComparedList.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace overmarks
{

/** Which event of an old list is which of the new one. */
struct Pairing
{
    static constexpr int none = -1;

    std::vector<int> ofOld;    ///< for each old event the index of the new one, or none
    std::vector<int> ofNew;    ///< the other way round
    bool isRenumbered = false; ///< most lines have another cue number now, so numbers came after the texts
};

/** Pairs the events of two lists. Surer signs come first, and whoever has a partner keeps it:

        the fades, and events of one identity (an imported list has identities of its own, which are found nowhere else)
        one cue number and one character; those of one text before the others
        one character and one text
        one text, or one cue number, close by: another character speaks it
        no text at all, close by: streamers, flutters
        one character at the same place, or close by with half of its words: a rewritten line

    Where several are alike, they pair in the order of time: first those that stand where the lines around them have moved to, then
    the nearest between these. "Close by" is within ten seconds of that place, for a rewritten line within one second.
    The time taken grows little faster than the lists. Both have to be counted alike (ComparedList::countAs()). */
Pairing pairEvents (const ComparedList& old, const ComparedList& now);

/** Gives each of `few` the nearest of `many`, in order and at most once each, but so that as many as possible get one.
    @param few, many  places in ascending order, the first not longer than the second
    @param farthest   what is farther away counts as none
    @returns pairs of indices */
std::vector<std::pair<std::size_t, std::size_t>> nearestInOrder (const std::vector<std::int64_t>& few,
                                                                 const std::vector<std::int64_t>& many,
                                                                 std::optional<std::int64_t> farthest);

} // namespace overmarks
