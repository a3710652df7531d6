// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "HTMLPage.h"
#include "Session.h"
#include "quality/ListCheck.h"

#include <juce_core/juce_core.h>

#include <string>
#include <vector>

namespace overmarks
{

/** All that a report tells of a check. */
struct CheckReport
{
    juce::String listName; ///< as a reader knows the list: without its folders
    const ZEP::Overmarks::Project& project;
    const CheckOrder& order;
    const CheckResult& result;
    juce::String filter; ///< what the filter lets through, in words; empty without a filter

    /** The table for standard output. */
    std::string table() const;

    /** The "findings". */
    json findings() const;

    /** A row for each finding. */
    std::string csv() const;

    /** A page for somebody who doesn't know the program: what was checked, the totals, the findings under their rules. */
    HTMLPage page() const;

    /** "2 findings in 3 events", or that there are none. */
    juce::String summary() const;

private:
    void addWhatWasChecked (HTMLPage& page) const;
    void addTotals (HTMLPage& page) const;
    void addFindings (HTMLPage& page, CheckRule rule) const;
    void addProblems (HTMLPage& page) const;
    std::size_t countOf (CheckRule rule) const;
};

} // namespace overmarks
