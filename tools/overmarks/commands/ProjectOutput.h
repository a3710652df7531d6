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
    /** @param isEditor  the command edits projects, so the named one may be replaced without --force */
    void addTo (CLI::App& command, bool isEditor = false);

    /** -o alone, which may be left out, for a command that has --force and --dry-run already. */
    void addTo (CLI::App& command, const CLI::Option& forceOption, const CLI::Option& dryRunOption);

    /** Whether the project can be written, before any work is done. Throws CommandFailure or WrongUsage.
        @param sources  what the command reads: none of it may be overwritten by a command that doesn't edit */
    void check (const std::vector<std::string>& sources) const;

    void write (const ZEP::Overmarks::Project& project, const Session& session) const;

    /** With --json: the document that tells what was written.
        @param members  what the command has to say itself, an object */
    void tell (const Session& session, const json& members) const;

    std::string path;

private:
    OutputPolicy getPolicy() const;

    OutputPolicy policy;
    const CLI::Option* force = nullptr;  ///< the command's own, which it owns
    const CLI::Option* dryRun = nullptr; ///< likewise
    bool replacesItsProject = false;
    mutable json messagesBefore = json::array(); ///< what was said before the project was written
};

} // namespace overmarks
