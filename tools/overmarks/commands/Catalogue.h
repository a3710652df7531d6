// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Session.h"

#include <juce_core/juce_core.h>

#include <string>
#include <vector>

namespace overmarks
{

/** Shows what there is of something: as a table, or with --json as objects under one name.
    @param titles   of the columns, in the order of the objects' members
    @param objects  one for each row */
void showCatalogue (Session& session, const std::string& name, const std::vector<juce::String>& titles,
                    const json& objects);

} // namespace overmarks
