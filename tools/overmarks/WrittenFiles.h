// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "Session.h"

#include <juce_core/juce_core.h>

#include <vector>

namespace overmarks
{

/** Says which files were, or in a dry run would be, written; with --json as the command's document, with what has been said and
    reported before. The last that a command does. */
void tellOfFiles (const std::vector<juce::File>& files, bool isDryRun, const Session& session);

} // namespace overmarks
