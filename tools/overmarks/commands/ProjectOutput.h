// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "OutputFile.h"
#include "Session.h"

#include "list/Project.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace overmarks
{

/** The project that a command writes: -o, --force and --dry-run. */
class ProjectOutput final
{
public:
    void addTo (CLI::App& command); ///< With --force and --dry-run.

    /** -o alone, which may be left out, for a command that has --force and --dry-run already. */
    void addTo (CLI::App& command, const CLI::Option& forceOption, const CLI::Option& dryRunOption);

    /** Whether the project can be written, before any work is done. Throws CommandFailure or WrongUsage.
        @param sources         what the command reads, none of which may be overwritten
        @param isBeingEdited  they are a project that the command edits, which may be replaced without --force */
    void check (const std::vector<std::string>& sources, bool isBeingEdited = false) const;

    void write (const ZEP::Overmarks::Project& project, const Session& session) const;

    /** With --json: the document that tells what was written.
        @param members  what the command has to say itself, an object */
    void tell (const Session& session, const json& members) const;

    std::string path;

private:
    OutputPolicy getPolicy() const;

    OutputPolicy policy;
    const CLI::Option* force = nullptr;          ///< the command's own, which it owns
    const CLI::Option* dryRun = nullptr;         ///< likewise
    mutable json messagesBefore = json::array(); ///< what was said before the project was written
};

} // namespace overmarks
