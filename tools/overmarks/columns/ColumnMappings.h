// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include <juce_core/juce_core.h>

#include <map>
#include <string>

namespace overmarks
{

/** Which column of a cue list is used for which title: for each title the header of the column, or its number as "#3". */
using ColumnMapping = std::map<std::string, std::string>;

/** "Loop #=Cue Number, Line=Text" */
juce::String inWords (const ColumnMapping& mapping);

// The mappings that a user keeps under names. They lie in the preferences file, which has to be in use already; without one there
// are none. Each throws CommandFailure where what is kept there isn't understood.

std::map<std::string, ColumnMapping> keptMappings (const juce::File& settings);

/** Throws WrongUsage for an unknown name, with a suggestion. */
ColumnMapping keptMapping (const std::string& name, const juce::File& settings);

/** Puts a mapping in the place of what is kept under its name. */
void keepMapping (const std::string& name, const ColumnMapping& mapping, const juce::File& settings);

/** Throws WrongUsage for an unknown name, with a suggestion. */
void forgetMapping (const std::string& name, const juce::File& settings);

} // namespace overmarks
