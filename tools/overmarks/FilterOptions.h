// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Session.h"

#include "list/Project.h"

#include <CLI/CLI.hpp>

#include <string>

namespace overmarks
{

/** Which events of a list a command takes, and in which order. */
class FilterOptions final
{
public:
    void addTo (CLI::App& command);

    /** Filters and sorts the project's list, and says which filter can't match anything.
        Throws WrongUsage for an unknown sort column. */
    void applyTo (const ZEP::Overmarks::Project& project, const Session& session) const;

    /** Whether only some events are wanted. */
    bool hasFilter() const
    {
        return ! (character.empty() && actor.empty() && text.empty() && cueNumber.empty());
    }

    /** Whether an order is wanted. */
    bool hasOrder() const { return ! sortKey.empty() || descending; }

    /** What the filter lets through, "character ANNA, text tomorrow"; empty without a filter. */
    juce::String inWords() const;

private:
    void sort (ZEP::Overmarks::EventArray& list) const;
    void sayWhatIsUnknown (const ZEP::Core::ADRCharacterMap& cast, const Session& session) const;

    std::string character;
    std::string actor;
    std::string text;
    std::string cueNumber;
    int adjacent = 0;
    std::string sortKey;
    bool descending = false;
};

} // namespace overmarks
