// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "list/EventArray.h"

#include <CLI/CLI.hpp>

#include <string>

namespace overmarks
{

/** Which events of a list a command takes, and in which order. */
class FilterOptions final
{
public:
    void addTo (CLI::App& command);

    /** Filters and sorts the list. Throws WrongUsage for an unknown sort column. */
    void applyTo (ZEP::Overmarks::EventArray& list) const;

private:
    std::string character;
    std::string actor;
    std::string text;
    std::string cueNumber;
    int adjacent = 0;
    std::string sortKey;
    bool descending = false;
};

} // namespace overmarks
