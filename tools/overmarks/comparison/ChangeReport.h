// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "HTMLPage.h"
#include "comparison/ChangeRows.h"

#include <string>

namespace overmarks
{

/** The changes as a table with marked words, "[-old-]{+new+}". @param colours  red and green besides, for a terminal */
std::string changeTable (const ListChanges& changes, bool colours);

/** {"changes": [{"kind", "old", "new", "fields"}]}, one entry for each change. The events as overmarks list --json writes them; null
    for the missing side. A retimed event has "shift" besides. @param members  what else the document tells, an object */
std::string changesAsJSON (const ListChanges& changes, const json& members);

/** One row for each change, under a row of titles. */
std::string changesAsCSV (const ListChanges& changes);

/** The table as a page. @param oldName, newName  what the lists are called. @param remarks  what has to be known besides */
HTMLPage changePage (const ListChanges& changes, const juce::String& oldName, const juce::String& newName,
                     const std::vector<juce::String>& remarks);

} // namespace overmarks
