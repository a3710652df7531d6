// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "comparison/ComparedList.h"
#include "comparison/EventPairing.h"

#include <juce_core/juce_core.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace overmarks
{

enum class ChangeKind
{
    added,
    removed,
    retimed,
    text,
    character,
    other
};

inline constexpr std::array everyChangeKind { ChangeKind::added, ChangeKind::removed,   ChangeKind::retimed,
                                              ChangeKind::text,  ChangeKind::character, ChangeKind::other };

/** The kind as it stands in tables and in JSON: "retimed". */
std::string nameOf (ChangeKind kind);

/** An attribute that two versions of a list are compared by. */
struct ComparedField
{
    const char* name;  ///< as a member of an event in JSON
    const char* words; ///< what a person calls it
    const char*
        column; ///< title of the column that a cue list has to have for it; empty if only projects tell
    ChangeKind kind;
    juce::String (*value) (const ComparedEvent&); ///< in words
    bool goesWithCharacter = false; ///< differs with the character, which is no change of its own then
};

/** One thing that has become of one event. An event that was moved and rewritten has two changes. */
struct ListChange
{
    ChangeKind kind;
    const ComparedEvent* old = nullptr; ///< null for an added event
    const ComparedEvent* now = nullptr; ///< null for a removed event
    std::vector<const ComparedField*> fields {};

    /** Of a retimed event that has had a time and has one: by how many frames of the new list its start has moved, and how many more its
        length has. */
    std::optional<std::int64_t> shift {}, longer {};
};

/** What has changed between two lists, in the order of the new one. What only one of them can tell, because the other is a cue list
    without a column for it, is no change. Both lists have to live as long as their changes. */
class ListChanges final
{
public:
    ListChanges (const ComparedList& oldList, const ComparedList& newList, const Pairing& pairs);

    const std::vector<ListChange>& all() const { return changes; }
    std::size_t numberOf (ChangeKind kind) const;
    std::size_t numberOfUnchanged() const { return unchanged; }

    const ComparedList& old;
    const ComparedList& now;
    const Pairing& pairing;

private:
    bool bothTell (const ComparedField& field) const;
    void addUnpaired (ChangeKind kind, const ComparedList& list, const ComparedEvent& event);
    void comparePair (const ComparedEvent& one, const ComparedEvent& other);
    void compareTimes (const ComparedEvent& one, const ComparedEvent& other);
    void compareRest (const ComparedEvent& one, const ComparedEvent& other);

    std::vector<const ComparedField*> fields; ///< those that both lists can tell, but for the times
    std::vector<ListChange> changes;
    std::size_t unchanged = 0;
    bool comparesStarts = false, comparesEnds = false, comparesLooks = false;
};

} // namespace overmarks
