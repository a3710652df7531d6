// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "list/Project.h"

#include <juce_core/juce_core.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace overmarks
{

/** How a project is kept: as a project file (.overmarks), or as its JSON form (.json) for other programs. */
enum class ProjectForm
{
    binary,
    text
};

/** The form that a name or an extension without its dot stands for: "overmarks" or "json", in any case. */
std::optional<ProjectForm> projectFormNamed (const juce::String& name);

/** The names of both forms. */
const std::vector<std::string>& projectFormNames();

/** What a project's LIST and -o are called in the help. */
inline constexpr const char* projectOrCueList = "Project (.overmarks, .json) or cue list";

/** Reads a project of either form. It isn't sorted and not the current one yet. Throws CommandFailure.
    @param shownPath  what the user calls the file */
ZEP::Overmarks::Project readProject (const juce::File& file, const juce::String& shownPath, ProjectForm form);

/** Writes a project, as a whole or not at all. Throws CommandFailure. */
void writeProject (const ZEP::Overmarks::Project& project, const juce::File& file, ProjectForm form);

} // namespace overmarks
